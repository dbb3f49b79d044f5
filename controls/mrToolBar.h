// Toolbars and menus: a toolbar button, a command of a button's drop-down toolbar, of the menu bar or of a
// context menu becomes one statement on the chosen item, reached through everything that was opened on the
// way.
//
// The host half (mrToolBarGesture.cpp, mrToolBarItems.cpp) follows a gesture over many messages, from the
// press of a button or the start of a menu loop to the WM_COMMAND, and ships the whole path at once. The
// recorder half (mrToolBar.cpp) makes a chain of pseudo windows of it, one level per button and per popup,
// which the script declares like other windows.
#pragma once

#include "framework/CPoint.h"
#include "framework/mrApi.h"
#include "hooks/mrHookedMessage.h"
#include "model/mrBaseWindow.h"
#include "model/mrBaseWindowFactory.h"

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <vector>

// The gesture being followed.
enum mrToolbarTracking : uint32_t {
  mrTrackNone = 0,
  mrTrackToolbarClick = 1,  // the left button went down or up on a toolbar button
  mrTrackToolbarFocus = 2,  // a toolbar of the BCG library received the keyboard focus
  mrTrackMainMenu = 3,      // the menu bar entered its menu loop
  mrTrackContextMenu = 4,   // a context menu is asked for, or a popup appeared while nothing was followed
};

// One level of an open toolbar or popup menu, and the item that is current in it; 576 bytes, little-endian.
struct mrToolbarRec {
  HWND hwnd;         // the toolbar, the popup menu's window, or the frame of a menu bar
  HMENU hmenu;       // null: a toolbar; all bits set: a popup whose menu is not known yet
  LONG_PTR ctrl_id;  // the window's GWLP_ID
  char window_text[mr_max_text];
  int32_t item_index;  // position of the current item; -1: none
  int32_t item_id;     // command id of the current item; 0: none
  char item_text[mr_max_text];
  uint32_t item_type;   // menu item: fType; toolbar button: fsStyle
  uint32_t item_state;  // menu item: fState; toolbar button: fsState
  int32_t hit_x;        // client pixels at which the item was hit
  int32_t hit_y;
  uint8_t is_new_bcg;  // 1: the window's class begins with "BCGPToolBar"
  uint8_t padding_569[7];
};
static_assert(sizeof(mrToolbarRec) == 576, "travels between processes");
static_assert(offsetof(mrToolbarRec, hmenu) == 8 && offsetof(mrToolbarRec, ctrl_id) == 16 &&
                  offsetof(mrToolbarRec, window_text) == 24 && offsetof(mrToolbarRec, item_index) == 284 &&
                  offsetof(mrToolbarRec, item_id) == 288 && offsetof(mrToolbarRec, item_text) == 292 &&
                  offsetof(mrToolbarRec, item_type) == 552 && offsetof(mrToolbarRec, item_state) == 556 &&
                  offsetof(mrToolbarRec, hit_x) == 560 && offsetof(mrToolbarRec, hit_y) == 564 &&
                  offsetof(mrToolbarRec, is_new_bcg) == 568,
              "travels between processes");

// What stands before the levels of an upload; 32 bytes, little-endian. count levels (mrToolbarRec) follow,
// outermost first; the current item of the last one is the chosen command.
struct mrToolbarHeader {
  mrToolbarTracking state;  // 1 to 4
  uint32_t padding_4;
  HWND start_hwnd;  // where the gesture began; the window that a context menu is for
  int32_t start_x;  // a context menu's client pixels of start_hwnd; negative when not opened with the mouse
  int32_t start_y;
  uint64_t count;
};
static_assert(sizeof(mrToolbarHeader) == 32, "travels between processes");
static_assert(offsetof(mrToolbarHeader, start_hwnd) == 8 && offsetof(mrToolbarHeader, start_x) == 16 &&
                  offsetof(mrToolbarHeader, start_y) == 20 && offsetof(mrToolbarHeader, count) == 24,
              "travels between processes");

// The levels of a received upload, header.count of them; they stand directly behind the header.
inline const mrToolbarRec* levels_of(const mrToolbarHeader& header) {
  return reinterpret_cast<const mrToolbarRec*>(&header + 1);
}

// Window classes of the pseudo levels: names that no real window has.
constexpr const char* mr_toolbar_button_class = "mrToolbarButtonClass";  // a toolbar button or a menu item
constexpr const char* mr_popup_toolbar_class = "mrPopupToolbarClass";    // what that button or item opened
constexpr const char* mr_main_menu_class = "mrMainMenuClass";            // the menu bar of the frame
constexpr const char* mr_context_menu_class = "mrContextMenuClass";      // the context menu that is open

// Flag of a pseudo level: its id is a position, not a command id. (In a real window's level the same bit says
// something else.)
constexpr int mr_window_id_is_position = 0x10;

class MR_API mrToolBarFactory : public mrBaseWindowFactory {
public:
  mrToolBarFactory();

  mrFactoryType get_factory_type() override;
  // The same as reset. Deliberate: the run-command stack is left to the generic window recorder.
  void on_start_record() override;
  // While a gesture is followed: claims what belongs to it, uploads when its command comes or is overdue;
  // leaves a foreign command, and the message that finds the time run out, whatever it is. Else claims what
  // begins a gesture, except the right button. Other messages are claimed if they go to a bar. Out of
  // memory: the gesture is lost.
  bool handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) override;
  // Takes a mrToolbarHeader and its levels.
  void copy_data(void* data) override;
  // Declares toolbars and the four pseudo classes.
  mrDeclarationRes get_declaration(const mrWindowInfo* info, CString& declaration, CString& search,
                                   CString& identifier) override;
  // Always 0: it is this recorder that asks the others.
  mrContextMenuRes context_menu_invoke(HWND window, const char* name, const CPoint& point) override;

  // The gesture. Host process, GUI thread.

  // Ends the gesture: nothing is followed, the stack is empty, the timer is stopped. The snapshot stays.
  void reset();
  // The gesture begins here: start and mouse place, state; the timer is stopped, stack and snapshot stay.
  void set_start_event(HWND window, const CPoint& point, mrToolbarTracking state);
  // The last place where the mouse moved or clicked inside the gesture, client pixels of the window.
  void set_mouse(HWND window, const CPoint& point);
  bool is_tracking() const { return m_header.state != mrTrackNone; }
  // A popup is open: a context menu has any level, every other gesture at least two.
  bool is_tracking_popup() const;

  // The stack: toolbars and popups that are open, outermost first.
  bool is_in_stack(HWND window) const;
  // Pops levels from the top down to the topmost one of this window, that one included; nothing when the
  // window has no level.
  void remove_from(HWND window);
  // Likewise, but keeps that level.
  void remove_from_excl(HWND window);
  // The outermost level of this window or menu; null when there is none. Borrowed until the stack changes.
  mrToolbarRec* get_window_by_hwnd(HWND window);
  mrToolbarRec* get_window_by_hmenu(HMENU menu);

  // Copies the stack, after asking the toolbars on it which button is hot: moving through a toolbar with the
  // keyboard sends no clicks. Toolbars of the new BCG library are not asked.
  void make_snapshot();
  // Uploads the snapshot; nothing is followed from then on.
  void command_invoked();
  // A place for a breakpoint of whoever looks for a lost level; does nothing.
  void dump_state(const std::vector<mrToolbarRec>& levels);

  static bool is_bcg_toolbar_class(const char* class_name);      // either of the two below
  static bool is_old_bcg_toolbar_class(const char* class_name);  // begins with "BCGToolBar"
  static bool is_new_bcg_toolbar_class(const char* class_name);  // begins with "BCGPToolBar"

private:
  // What a step of the gesture says of the message at hand.
  enum mrVerdict {
    verdictClaim,  // claimed: no other recorder sees it
    verdictLeave,  // left to the other recorders
    verdictGoOn,   // not decided: the next step looks at it
  };

  // A gesture is being followed, in this order.
  mrVerdict follow_gesture(const mrHookedMessage& msg);
  void on_timeout();
  bool is_leaving_start(const mrHookedMessage& msg) const;
  mrVerdict on_command(const mrHookedMessage& msg);
  bool on_window_created(HWND window);
  bool on_menu_select(const mrHookedMessage& msg);
  void on_stack_message(const mrHookedMessage& msg);
  void on_level_closed(HWND window);
  void on_level_moved(HWND window);
  void on_level_clicked(HWND window, const CPoint& point);
  void on_popup_message(const mrHookedMessage& msg);
  void on_item_chosen(const mrToolbarRec& level);

  // A gesture may begin, in this order; true when the message is claimed.
  bool begin_gesture(const mrHookedMessage& msg);
  bool begin_toolbar_click(const mrHookedMessage& msg);
  bool begin_toolbar_focus(const mrHookedMessage& msg);
  bool begin_main_menu(const mrHookedMessage& msg);
  bool begin_context_menu(const mrHookedMessage& msg);
  bool begin_keyboard_context_menu(const mrHookedMessage& msg);

  bool is_first_level(HWND window) const { return !m_stack.empty() && m_stack.front().hwnd == window; }
  void push_level(HWND window, HMENU menu);
  void restart_with(const mrToolbarRec& level);
  void hit_test_top();

  // Recorder process.
  bool is_context_menu_recorded(const mrToolbarHeader& header) const;
  void declare_toolbar(const mrWindowInfo& info, CString& declaration, CString& search,
                       CString& identifier) const;
  void declare_item(const mrWindowInfo& info, CString& declaration, CString& identifier) const;

  std::vector<mrToolbarRec> m_stack;     // open toolbars and popups, outermost first
  std::vector<mrToolbarRec> m_snapshot;  // the stack when the current item was last known: what is shipped
  HWND m_mouse_window = nullptr;         // last window of the gesture under the mouse
  CPoint m_mouse_point;                  // there, client pixels
  uint32_t m_command_pending = 0;        // 1: a popup's item was chosen, its WM_COMMAND has not come yet
  mrToolbarHeader m_header = {};         // state and start of the gesture, as they are shipped
};

// A command chosen from a toolbar or a menu. Its path begins with the pseudo levels, from the chosen item
// outward.
class MR_API mrToolBar : public mrBaseWindow {
public:
  // Builds path and statement from an upload, of at least one level, borrowed for the call.
  mrToolBar(const mrToolbarHeader& header, mrBaseWindowFactory* factory);

  ~mrToolBar() override;

  // Appends one pseudo level: the button or item of the level (popup 0), or what it opened (popup not 0).
  void add_window_info(const mrToolbarRec& level, int popup);

private:
  void add_root_info(const char* class_name);
};
