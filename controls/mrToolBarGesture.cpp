// Follows the gesture on a toolbar or menu, message by message. Host process, GUI thread, inside a hook.
//
// handle_message stands at the end; before it, in the order in which a message meets them, the steps of a
// gesture that is being followed and then the ways in which a gesture begins.
#include "controls/mrToolBarItems.h"
#include "hooks/mrIdentity.h"

#include <windows.h>
#include <commctrl.h>

#include <cstring>
#include <new>

namespace {

// A popup menu's own messages, which the headers leave out.
constexpr UINT popup_get_menu = 0x1E1;   // MN_GETHMENU
constexpr UINT popup_button_up = 0x1EF;  // MN_BUTTONUP

// High word of WM_MENUSELECT when a menu was closed.
constexpr WORD menu_closed = 0xFFFF;

// Start point of a gesture that no place belongs to.
const CPoint no_point(0, 0);
const CPoint keyboard_point(-1, -1);

bool is_left_button(const mrHookedMessage& msg) {
  return msg.message == WM_LBUTTONDOWN || msg.message == WM_LBUTTONUP;
}

bool is_closing(const mrHookedMessage& msg) {
  return msg.message == WM_DESTROY || msg.message == WM_CLOSE ||
         (msg.message == WM_SHOWWINDOW && !msg.wparam);
}

// A popup menu's item is chosen: with the mouse, or with the keyboard.
bool is_choosing(const mrHookedMessage& msg) {
  return msg.message == popup_button_up ||
         (msg.message == WM_KEYDOWN && (msg.wparam == VK_RETURN || msg.wparam == VK_SPACE));
}

bool is_popup_menu(HWND window) { return is_popup_menu_class(hooked_class_name(window)); }

bool is_bcg_toolbar(HWND window) { return mrToolBarFactory::is_bcg_toolbar_class(hooked_class_name(window)); }

// Bars on which nobody else records clicks.
bool is_bar(HWND window) {
  const char* const class_name = hooked_class_name(window);
  return is_toolbar_class(class_name) || strcmp(class_name, "AfxWnd42u") == 0 ||
         strcmp(class_name, "MsoCommandBar") == 0;
}

// A popup knows its menu only after its creation, and may be used for another one: it is asked at every
// message but those that flood past an open menu, none of which comes first after a change.
bool must_ask_for_menu(const mrToolbarRec& level, UINT message) {
  const bool is_known = level.hmenu && level.hmenu != unknown_menu();
  return !is_known || !is_flood_message(message) || !shortcuts_enabled();
}

void ask_for_menu(mrToolbarRec& level) {
  if (const LRESULT menu = SendMessageA(level.hwnd, popup_get_menu, 0, 0))
    level.hmenu = reinterpret_cast<HMENU>(menu);
}

// Top-level ancestor of the active window of the popup's thread; null when none is active.
HWND active_top_level(HWND popup) {
  GUITHREADINFO info = {};
  info.cbSize = sizeof info;
  static_assert(sizeof info == 72, "the size by which the system knows the structure");
  GetGUIThreadInfo(GetWindowThreadProcessId(popup, nullptr), &info);
  HWND window = info.hwndActive;
  while (const HWND parent = window ? GetParent(window) : nullptr)
    window = parent;
  return window;
}

}  // namespace

// ---- state ---------------------------------------------------------------------------------------

void mrToolBarFactory::on_start_record() { reset(); }

void mrToolBarFactory::reset() {
  m_mouse_window = nullptr;
  m_header.state = mrTrackNone;
  m_command_pending = 0;
  m_stack.clear();
  stop_timer();
}

void mrToolBarFactory::set_start_event(HWND window, const CPoint& point, mrToolbarTracking state) {
  m_header.start_hwnd = window;
  m_header.start_x = point.x;
  m_header.start_y = point.y;
  m_header.state = state;
  set_mouse(window, point);
  stop_timer();
}

void mrToolBarFactory::set_mouse(HWND window, const CPoint& point) {
  m_mouse_window = window;
  m_mouse_point = point;
}

bool mrToolBarFactory::is_tracking_popup() const {
  // A context menu has no level below its first popup.
  return m_stack.size() >= (m_header.state == mrTrackContextMenu ? 1 : 2);
}

// ---- stack ---------------------------------------------------------------------------------------

bool mrToolBarFactory::is_in_stack(HWND window) const {
  for (const mrToolbarRec& level : m_stack) {
    if (level.hwnd == window)
      return true;
  }
  return false;
}

void mrToolBarFactory::remove_from(HWND window) {
  if (!is_in_stack(window))
    return;
  remove_from_excl(window);
  m_stack.pop_back();
}

void mrToolBarFactory::remove_from_excl(HWND window) {
  if (!is_in_stack(window))
    return;
  while (m_stack.back().hwnd != window)
    m_stack.pop_back();
}

mrToolbarRec* mrToolBarFactory::get_window_by_hwnd(HWND window) {
  for (mrToolbarRec& level : m_stack) {
    if (level.hwnd == window)
      return &level;
  }
  return nullptr;
}

mrToolbarRec* mrToolBarFactory::get_window_by_hmenu(HMENU menu) {
  for (mrToolbarRec& level : m_stack) {
    if (level.hmenu == menu)
      return &level;
  }
  return nullptr;
}

void mrToolBarFactory::push_level(HWND window, HMENU menu) { m_stack.push_back(init_record(window, menu)); }

void mrToolBarFactory::restart_with(const mrToolbarRec& level) { m_stack.assign(1, level); }

// What is current in the innermost bar is what opens the next one.
void mrToolBarFactory::hit_test_top() {
  if (!m_stack.empty())
    hit_test_button(m_stack.back(), m_mouse_point);
}

void mrToolBarFactory::dump_state(const std::vector<mrToolbarRec>& /*levels*/) {}

// ---- snapshot and upload -------------------------------------------------------------------------

void mrToolBarFactory::make_snapshot() {
  for (mrToolbarRec& level : m_stack) {
    if (level.hmenu || level.is_new_bcg)
      continue;
    const int hot = static_cast<int>(SendMessageA(level.hwnd, TB_GETHOTITEM, 0, 0));
    if (hot >= 0 && hot != level.item_index)
      fill_item(level, hot);
  }
  m_snapshot = m_stack;
}

void mrToolBarFactory::command_invoked() {
  m_header.count = m_snapshot.size();
  const size_t levels_size = m_snapshot.size() * sizeof(mrToolbarRec);
  std::vector<char> record(sizeof m_header + levels_size);
  memcpy(record.data(), &m_header, sizeof m_header);
  memcpy(record.data() + sizeof m_header, m_snapshot.data(), levels_size);
  send_data(record.size(), record.data());
  m_header.state = mrTrackNone;
}

// ---- a gesture is being followed -----------------------------------------------------------------

mrToolBarFactory::mrVerdict mrToolBarFactory::follow_gesture(const mrHookedMessage& msg) {
  if (is_timeout()) {
    on_timeout();
    return verdictLeave;
  }
  if (is_leaving_start(msg)) {
    set_timer();  // the gesture ends, unless its command is on the way
    return verdictClaim;
  }
  if (msg.message == WM_COMMAND && !m_snapshot.empty())
    return on_command(msg);
  if (msg.message == WM_CREATE && on_window_created(msg.window))
    return verdictClaim;
  if (msg.message == WM_MENUSELECT && on_menu_select(msg))
    return verdictClaim;
  if (is_in_stack(msg.window)) {
    on_stack_message(msg);
    return verdictClaim;
  }
  if (is_left_button(msg) && !GetParent(msg.window))
    return verdictClaim;
  if (msg.window == m_header.start_hwnd)
    return verdictClaim;
  return verdictGoOn;
}

// Deliberate: the message that finds the time run out is no one's, whatever it is; the next one may begin a
// gesture.
void mrToolBarFactory::on_timeout() {
  if (m_command_pending)
    command_invoked();
  reset();
}

bool mrToolBarFactory::is_leaving_start(const mrHookedMessage& msg) const {
  const bool leaves_toolbar = m_header.state == mrTrackToolbarFocus && msg.message == WM_KILLFOCUS;
  const bool leaves_menu = m_header.state == mrTrackMainMenu && msg.message == WM_EXITMENULOOP;
  return (leaves_toolbar || leaves_menu) && is_first_level(msg.window);
}

// Compared with the snapshot: the popups are closed by now and their levels are off the stack.
mrToolBarFactory::mrVerdict mrToolBarFactory::on_command(const mrHookedMessage& msg) {
  const int32_t id = static_cast<int32_t>(msg.wparam);  // all 32 bits: a notification code makes it differ
  if (id != m_snapshot.back().item_id)
    return verdictLeave;
  add_run_command(msg.window, id);
  if (!is_ignore(id))
    command_invoked();
  reset();
  return verdictClaim;
}

// A popup menu or a drop-down toolbar opens.
bool mrToolBarFactory::on_window_created(HWND window) {
  if (is_popup_menu(window)) {
    push_level(window, unknown_menu());
  } else if (is_bcg_toolbar(window)) {
    hit_test_top();
    push_level(window, nullptr);
  } else {
    return false;
  }
  stop_timer();
  return true;
}

bool mrToolBarFactory::on_menu_select(const mrHookedMessage& msg) {
  mrToolbarRec* const level = get_window_by_hmenu(reinterpret_cast<HMENU>(msg.lparam));
  if (!level)
    return false;
  if (HIWORD(msg.wparam) != menu_closed) {
    select_menu_item(*level, msg.wparam);
    make_snapshot();
  }
  return true;
}

// ---- a message of a window in the stack ----------------------------------------------------------

void mrToolBarFactory::on_stack_message(const mrHookedMessage& msg) {
  const CPoint point(msg.lparam);
  if (is_closing(msg))
    on_level_closed(msg.window);
  else if (msg.message == WM_MOVE && !is_first_level(msg.window))
    on_level_moved(msg.window);
  else if (msg.message == WM_MOUSEMOVE)
    set_mouse(msg.window, point);
  else if (is_left_button(msg))
    on_level_clicked(msg.window, point);
  else if (msg.message == WM_KEYDOWN)
    make_snapshot();

  if (is_popup_menu(msg.window))
    on_popup_message(msg);
  if (msg.message == WM_SETFOCUS && m_header.state == mrTrackToolbarClick && is_first_level(msg.window) &&
      is_bcg_toolbar(msg.window))
    m_header.state = mrTrackToolbarFocus;
}

void mrToolBarFactory::on_level_closed(HWND window) {
  remove_from(window);
  if (!is_tracking_popup())
    set_timer();
}

// A popup is placed, or a drop-down toolbar is used again: it opens anew from where the mouse is.
void mrToolBarFactory::on_level_moved(HWND window) {
  remove_from(window);
  hit_test_top();
  push_level(window, nullptr);
}

void mrToolBarFactory::on_level_clicked(HWND window, const CPoint& point) {
  set_mouse(window, point);
  hit_test_button(*get_window_by_hwnd(window), point);
  make_snapshot();
}

void mrToolBarFactory::on_popup_message(const mrHookedMessage& msg) {
  mrToolbarRec* const level = get_window_by_hwnd(msg.window);
  if (!level)
    return;  // it has just closed
  if (must_ask_for_menu(*level, msg.message))
    ask_for_menu(*level);
  if (is_choosing(msg))
    on_item_chosen(*level);
}

void mrToolBarFactory::on_item_chosen(const mrToolbarRec& level) {
  if (has_submenu(level) || !level.item_id)
    return;
  m_command_pending = 1;
  make_snapshot();
}

// ---- a gesture may begin -------------------------------------------------------------------------

bool mrToolBarFactory::begin_gesture(const mrHookedMessage& msg) {
  return begin_toolbar_click(msg) || begin_toolbar_focus(msg) || begin_main_menu(msg) ||
         begin_context_menu(msg) || begin_keyboard_context_menu(msg) || is_bar(msg.window);
}

bool mrToolBarFactory::begin_toolbar_click(const mrHookedMessage& msg) {
  if (!is_left_button(msg) || !is_toolbar_class(hooked_class_name(msg.window)))
    return false;
  const CPoint point(msg.lparam);
  mrToolbarRec level = init_record(msg.window, nullptr);
  if (!hit_test_button(level, point))
    return true;  // between the buttons, or on a separator: a gesture that is being followed goes on
  restart_with(level);
  make_snapshot();
  set_start_event(msg.window, point, mrTrackToolbarClick);
  set_timer();
  return true;
}

bool mrToolBarFactory::begin_toolbar_focus(const mrHookedMessage& msg) {
  if (msg.message != WM_SETFOCUS || !is_bcg_toolbar(msg.window))
    return false;
  restart_with(init_record(msg.window, nullptr));
  make_snapshot();
  set_start_event(msg.window, no_point, mrTrackToolbarFocus);
  return true;
}

// wParam 0: the menu bar; a menu that the program opens by itself says otherwise.
bool mrToolBarFactory::begin_main_menu(const mrHookedMessage& msg) {
  if (msg.message != WM_ENTERMENULOOP || msg.wparam)
    return false;
  restart_with(init_record(msg.window, GetMenu(msg.window)));
  make_snapshot();
  set_start_event(msg.window, no_point, mrTrackMainMenu);
  return true;
}

// The request of a context menu is claimed, the right button itself is not. Deliberate: levels that a gesture
// of the last second left on the stack stay there.
bool mrToolBarFactory::begin_context_menu(const mrHookedMessage& msg) {
  const bool is_request = msg.message == WM_CONTEXTMENU;
  if (!is_request && msg.message != WM_RBUTTONDOWN && msg.message != WM_RBUTTONUP)
    return false;
  HWND window = msg.window;
  CPoint point(msg.lparam);
  if (is_request) {
    // A parent is asked after its child: what is known of the menu came from there.
    if (m_header.state == mrTrackContextMenu && !m_snapshot.empty())
      return true;
    // Deliberate: in this order. The point is the message window's, also when the menu is for a child of it.
    // A request from the keyboard has no place to convert.
    if (point != keyboard_point)
      ScreenToClient(window, &point);
    window = reinterpret_cast<HWND>(msg.wparam);
  }
  set_start_event(window, point, mrTrackContextMenu);
  set_timer();
  return is_request;
}

// A popup that no mouse button and no request came before.
bool mrToolBarFactory::begin_keyboard_context_menu(const mrHookedMessage& msg) {
  if (msg.message != WM_CREATE || is_tracking() || !is_popup_menu(msg.window))
    return false;
  set_start_event(active_top_level(msg.window), keyboard_point, mrTrackContextMenu);
  push_level(msg.window, unknown_menu());
  return true;
}

// ---- all of it -----------------------------------------------------------------------------------

bool mrToolBarFactory::handle_message(int kind, int /*code*/, WPARAM /*wparam*/, LPARAM lparam) {
  mrHookedMessage msg;
  if ((kind != hookGetMessage && kind != hookCallWndProc) || !read_hooked_message(kind, lparam, msg))
    return false;
  try {
    if (is_tracking()) {
      const mrVerdict verdict = follow_gesture(msg);
      if (verdict != verdictGoOn)
        return verdict == verdictClaim;
      // With the time running the gesture may be over, and another one may begin.
      if (!is_timer_set())
        return is_bar(msg.window);
    }
    return begin_gesture(msg);
  } catch (const std::bad_alloc&) {
    reset();  // the host is out of memory: the gesture is lost, the host is not
    return false;
  }
}
