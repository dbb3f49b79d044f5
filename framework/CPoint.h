// A point in pixels, as Windows has it, with a constructor and comparison.
#pragma once

#include <windows.h>

class CPoint : public POINT {
public:
  CPoint() : CPoint(0, 0) {}
  CPoint(LONG x_pixels, LONG y_pixels) {
    x = x_pixels;
    y = y_pixels;
  }
  // The two signed words of a mouse message's lParam: a captured mouse leaves the window to the left and top.
  explicit CPoint(LPARAM mouse_lparam)
      : CPoint(static_cast<short>(LOWORD(mouse_lparam)), static_cast<short>(HIWORD(mouse_lparam))) {}
};

inline bool operator==(const CPoint& a, const CPoint& b) { return a.x == b.x && a.y == b.y; }
inline bool operator!=(const CPoint& a, const CPoint& b) { return !(a == b); }
