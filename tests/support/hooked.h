// Feeds recognisers what the hooks would see.
#pragma once

#include "hooks/mrHookKind.h"
#include "model/mrActionFactory.h"

#include <windows.h>

// Offers one message to a factory as the hook of this kind delivers it; true when it was claimed.
inline bool feed(mrActionFactory& factory, int kind, HWND window, UINT message, WPARAM wparam = 0,
                 LPARAM lparam = 0, LRESULT result = 0) {
  MSG msg = {};
  msg.hwnd = window;
  msg.message = message;
  msg.wParam = wparam;
  msg.lParam = lparam;
  CWPSTRUCT call = {lparam, wparam, message, window};
  CWPRETSTRUCT returned = {result, lparam, wparam, message, window};
  void* const data = kind == hookGetMessage    ? static_cast<void*>(&msg)
                     : kind == hookCallWndProc ? static_cast<void*>(&call)
                                               : static_cast<void*>(&returned);
  return factory.handle_message(kind, HC_ACTION, kind == hookGetMessage ? PM_REMOVE : 1,
                                reinterpret_cast<LPARAM>(data));
}

// The wParam of a control's WM_COMMAND.
inline WPARAM notify(int id, int code) { return MAKEWPARAM(id, code); }

// The lParam of a mouse message.
inline LPARAM at(int x, int y) { return MAKELPARAM(x, y); }

inline LPARAM as_lparam(HWND window) { return reinterpret_cast<LPARAM>(window); }
