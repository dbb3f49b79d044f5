// Asking a host window what it is, and not asking it again for every mouse move.
//
// The host's own controls are told by their answer to a request message (165). Every such question is a sent
// message and with it two more hook calls in the host's GUI thread. Recorders that must know for each message
// of a window whether to claim it ask here.
#pragma once

#include "framework/mrApi.h"
#include "hooks/mrHookedMessage.h"

#include <windows.h>

// Whether a window answers the request message (wParam 0, lParam 0) with 165: the window is asked. Host
// process, GUI thread, inside a hook.
MR_API bool is_identified(HWND window, UINT request);

// The same for a recorder that claims the messages of such windows. The window is asked for a message that
// may be recorded, so that nothing that shows in the script rests on memory; for every other message, of
// which there are many and whose claim changes nothing that is recorded, its last answer counts.
MR_API bool is_identified(HWND window, UINT request, const mrHookedMessage& msg);

// The window's last answer, asked only when there is none: where it does not show in what is recorded.
MR_API bool was_identified(HWND window, UINT request);

// Whether some recorder records such messages or remembers something because of them, but for timers and
// tracking that do not depend on the window.
MR_API bool may_be_recorded(const mrHookedMessage& msg);

// Whether a message of this number is one of those that flood past a window at rest: none of them comes first
// after something has changed.
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

// Counts the windows of this process that came and went, and the recordings, between which windows come and
// go unseen: as long as it stands, what was learnt about a dialog's controls holds. Host process, GUI thread.
MR_API unsigned window_generation();

// Turns every shortcut of the hook path off (each question is asked, each class name read anew) and on again.
// For the test that compares the two; per process, on at load.
MR_API void set_shortcuts(bool on);
MR_API bool shortcuts_enabled();
