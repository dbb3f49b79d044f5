// Host process, GUI thread.
#include "hooks/mrIdentity.h"

#include "hooks/mrHostMessages.h"
#include "hooks/mrSharedBlock.h"

#include <commctrl.h>

#include <cstdint>

namespace {

bool shortcuts = true;

// A window's last answer to one request. Direct-mapped: a window that takes another one's place is asked
// anew.
struct mrAnswer {
  HWND window;
  UINT request;
  bool identified;
};

constexpr size_t place_count = 256;  // a power of two
mrAnswer answers[place_count];

// The recording that the answers belong to, told by its hook: a new one starts with none, also when it has
// the same recorder window.
HHOOK answered_for = nullptr;

unsigned generation = 1;

mrAnswer& place_of(HWND window, UINT request) {
  // Handles of one process differ in their low bits, above the lowest, which is always 0.
  const size_t number = (reinterpret_cast<uintptr_t>(window) >> 1) * 5 + request;
  return answers[number % place_count];
}

bool ask(HWND window, UINT request) { return SendMessageA(window, request, 0, 0) == mr_identity_answer; }

void start_anew_for_another_recording() {
  const HHOOK recording = shared_block().get_message_hook;
  if (answered_for == recording)
    return;
  for (mrAnswer& answer : answers)
    answer = {};
  ++generation;  // nobody saw the windows that came and went between the recordings
  answered_for = recording;
}

}  // namespace

// What trees, lists, tabs and option trees tell that becomes a statement.
static bool is_recorded_notification(const NMHDR* header) {
  if (!header)
    return false;
  switch (header->code) {
  case TVN_SELCHANGEDA:
  case TVN_ENDLABELEDITA:
  case LVN_ITEMCHANGED:
  case NM_DBLCLK:
  case NM_RETURN:
  case TCN_SELCHANGE:
  case static_cast<UINT>(-1105):  // an option's value changed
    return true;
  default:
    return false;
  }
}

bool may_be_recorded(const mrHookedMessage& msg) {
  constexpr UINT first_of_programs = WM_APP;  // chosen by the host's libraries, or registered
  switch (msg.message) {
  case WM_NOTIFY:
    return is_recorded_notification(notification(msg));
  // The generic recorder, buttons, edits, lists, sliders.
  case WM_COMMAND:
  case WM_SYSCOMMAND:
  case WM_SETTEXT:
  case EM_REPLACESEL:
  case WM_SETFOCUS:
  case WM_HSCROLL:
  case WM_VSCROLL:
  // Gestures on toolbars and menus.
  case WM_CREATE:
  case WM_DESTROY:
  case WM_CLOSE:
  case WM_SHOWWINDOW:
  case WM_MOVE:
  case WM_KILLFOCUS:
  case WM_KEYDOWN:
  case WM_CONTEXTMENU:
  case WM_MENUSELECT:
  case WM_ENTERMENULOOP:
  case WM_EXITMENULOOP:
  case 0x1EF:  // MN_BUTTONUP
  // What the host's own controls tell.
  case WM_USER + 901:  // a tab beam's tab was chosen
  case WM_USER + 925:  // a grid's cell was changed
    return true;
  default:
    return (msg.message >= WM_LBUTTONDOWN && msg.message <= WM_MBUTTONDBLCLK) ||
           msg.message >= first_of_programs;
  }
}

bool is_identified(HWND window, UINT request) {
  const bool identified = ask(window, request);
  start_anew_for_another_recording();
  place_of(window, request) = {window, request, identified};
  return identified;
}

bool was_identified(HWND window, UINT request) {
  start_anew_for_another_recording();
  const mrAnswer& known = place_of(window, request);
  const bool may_remember = shortcuts && known.window == window && known.request == request;
  return may_remember ? known.identified : is_identified(window, request);
}

bool is_identified(HWND window, UINT request, const mrHookedMessage& msg) {
  return may_be_recorded(msg) ? is_identified(window, request) : was_identified(window, request);
}

unsigned window_generation() {
  start_anew_for_another_recording();
  return generation;
}

void forget_identity(HWND window) {
  ++generation;
  for (mrAnswer& answer : answers) {
    if (answer.window == window)
      answer = {};
  }
}

void set_shortcuts(bool on) { shortcuts = on; }

bool shortcuts_enabled() { return shortcuts; }
