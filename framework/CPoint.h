// A point in pixels, as Windows has it, with a constructor and comparison.
#pragma once

#include <windows.h>

class CPoint : public POINT {
public:
  CPoint() : POINT{0, 0} {}
  CPoint(LONG x_pixels, LONG y_pixels) : POINT{x_pixels, y_pixels} {}
  // The two signed words of a mouse message's lParam: a captured mouse leaves the window to the left and the top.
  explicit CPoint(LPARAM mouse_lparam)
      : POINT{static_cast<short>(LOWORD(mouse_lparam)), static_cast<short>(HIWORD(mouse_lparam))} {}
};

inline bool operator==(const CPoint& a, const CPoint& b) { return a.x == b.x && a.y == b.y; }
inline bool operator!=(const CPoint& a, const CPoint& b) { return !(a == b); }
