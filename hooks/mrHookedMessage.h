// One hooked message, whatever hook delivered it: the one place where the hooks' own structures are read.
#pragma once

#include "framework/mrApi.h"
#include "hooks/mrHookKind.h"

#include <windows.h>

// The longest class name, window text or item text that travels, with its final zero.
constexpr int mr_max_text = 260;

// Valid only during the hook call.
struct mrHookedMessage {
  HWND window;
  UINT message;
  WPARAM wparam;
  LPARAM lparam;
  LRESULT result;  // what the window procedure returned; 0 unless the message was handled already
};

// Reads the hook's structure behind lparam. False for a CBT notification (and any other kind) and for a
// message without a window: nothing there to record; out is then untouched. Host process, GUI thread.
MR_API bool read_hooked_message(int kind, LPARAM lparam, mrHookedMessage& out);

// The same, also for a message without a window (posted to the thread): the message logger wants those too.
MR_API bool read_any_hooked_message(int kind, LPARAM lparam, mrHookedMessage& out);

// The control behind a WM_COMMAND notification; null for a menu or accelerator command and for every other
// message. Its code is the high word of the wParam.
inline HWND command_control(const mrHookedMessage& msg) {
  return msg.message == WM_COMMAND ? reinterpret_cast<HWND>(msg.lparam) : nullptr;
}

// What a WM_NOTIFY tells, borrowed for the hook call; null for every other message.
inline const NMHDR* notification(const mrHookedMessage& msg) {
  return msg.message == WM_NOTIFY ? reinterpret_cast<const NMHDR*>(msg.lparam) : nullptr;
}

// The class name of a window (GetClassNameA), empty for an invalid one. Host process, GUI thread, inside a
// hook. While one hooked message is dispatched the names of the first four windows that are asked about are
// read once and kept, so that seventeen recorders cost one look-up. Borrowed until the message has been
// dispatched; the name of a further window, or outside a dispatch, until the next call.
MR_API const char* hooked_class_name(HWND window);

// Marks one hooked message, for the dispatcher: names read before it are forgotten, and again at its end.
class MR_API mrClassNameScope {
public:
  mrClassNameScope();
  ~mrClassNameScope();
  mrClassNameScope(const mrClassNameScope&) = delete;
  mrClassNameScope& operator=(const mrClassNameScope&) = delete;
};
