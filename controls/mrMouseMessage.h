// A mouse button message taken apart: shared by the recorders that record the mouse itself. Both processes.
#pragma once

#include "framework/CPoint.h"
#include "model/mrBaseWindow.h"

#include <windows.h>

// WM_LBUTTONDOWN to WM_MBUTTONDBLCLK: presses, releases and double clicks of the three buttons.
constexpr bool is_mouse_button_message(UINT message) {
  return message >= WM_LBUTTONDOWN && message <= WM_MBUTTONDBLCLK;
}

enum mrMouseGesture { mousePress, mouseRelease, mouseDoubleClick };

constexpr mrMouseGesture mouse_gesture(UINT message) {
  return static_cast<mrMouseGesture>((message - WM_LBUTTONDOWN) % 3);
}

// Button, place and key state of a mouse button message; kind is the caller's.
inline mrBaseWindowActionStruct mouse_action(int kind, UINT message, WPARAM wparam, LPARAM lparam) {
  static constexpr int button_flags[] = {MK_LBUTTON, MK_RBUTTON, MK_MBUTTON};
  const int button = static_cast<int>(message - WM_LBUTTONDOWN) / 3;
  const CPoint point(lparam);
  mrBaseWindowActionStruct action;
  action.kind = kind;
  action.button = button + 1;
  action.x = point.x;
  action.y = point.y;
  action.key_state = static_cast<int>(wparam) & ~button_flags[button];
  return action;
}

inline bool is_same_button_and_place(const mrBaseWindowActionStruct& a, const mrBaseWindowActionStruct& b) {
  return a.button == b.button && a.x == b.x && a.y == b.y;
}
