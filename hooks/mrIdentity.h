// Asking a host window what it is, and not asking it again for every mouse move.
//
// The host's own controls are told by their answer to a request message (165). Every such question is a sent
// message and with it two more hook calls in the host's GUI thread. Recorders that must know for each message
// of a window whether to claim it ask here.
#pragma once

#include "framework/mrApi.h"

#include <windows.h>

// Whether a window answers the request message (wParam 0, lParam 0) with 165. Host process, GUI thread,
// inside a hook. message is the hooked message for which it is asked. For the flood of messages that nobody
// records (moves, paints, timers, hit tests) the window's last answer counts, since a claim of those changes
// nothing that is recorded; for every other message the window itself is asked, so that no decision that
// shows in the script rests on memory.
MR_API bool is_identified(HWND window, UINT request, UINT message);

// The same where the answer does not show in what is recorded, whatever the message: the window's last
// answer, asked only when there is none. Host process, GUI thread, inside a hook.
MR_API bool was_identified(HWND window, UINT request);

// Whether no recorder records a message of this number or changes its state over it, but for timers and
// tracking that do not depend on the window.
constexpr bool is_flood_message(UINT message) {
  switch (message) {
  case WM_MOUSEMOVE:
  case WM_NCMOUSEMOVE:
  case WM_MOUSELEAVE:
  case WM_NCHITTEST:
  case WM_SETCURSOR:
  case WM_TIMER:
  case WM_PAINT:
  case WM_NCPAINT:
  case WM_ERASEBKGND:
  case WM_ENTERIDLE:
    return true;
  default:
    return false;
  }
}

// Tells that a window of this process is created or gone: its answers are forgotten. Called by the
// dispatcher.
void forget_identity(HWND window);

// Counts the windows of this process that came and went: as long as it stands, what was learnt about a
// dialog's controls holds. Host process, GUI thread.
unsigned window_generation();

// Turns every shortcut of the hook path off (each question is asked, each class name read anew) and on again.
// For the test that compares the two; per process, on at load.
MR_API void set_shortcuts(bool on);
MR_API bool shortcuts_enabled();
