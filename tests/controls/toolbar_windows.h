// Toolbars, menus and popups for the tests of the toolbar recorder, and what is expected of them as bytes.
#pragma once

#include "controls/mrToolBar.h"
#include "tests/support/tape.h"
#include "tests/support/test_window.h"

#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

constexpr DWORD visible_child = WS_CHILD | WS_VISIBLE;
constexpr UINT get_menu_of_popup = 0x1E1;   // MN_GETHMENU
constexpr UINT button_up_in_popup = 0x1EF;  // MN_BUTTONUP

// ---- expected bytes ------------------------------------------------------------------------------

// A level as it stands before anything is current in it.
inline mrToolbarRec empty_level(HWND window, HMENU menu, LONG_PTR id, const char* text,
                                bool new_bcg = false) {
  mrToolbarRec level = {};
  level.hwnd = window;
  level.hmenu = menu;
  level.ctrl_id = id;
  strcpy(level.window_text, text);
  level.item_index = -1;
  level.is_new_bcg = new_bcg;
  return level;
}

// With a current item.
inline mrToolbarRec on_item(mrToolbarRec level, int index, int id, const char* text, unsigned type,
                            unsigned state) {
  level.item_index = index;
  level.item_id = id;
  strcpy(level.item_text, text);
  level.item_type = type;
  level.item_state = state;
  return level;
}

// Found under the mouse.
inline mrToolbarRec hit_at(mrToolbarRec level, int x, int y) {
  level.hit_x = x;
  level.hit_y = y;
  return level;
}

// The one upload of a gesture.
inline mrTapeUploads gesture(mrToolbarTracking state, HWND start, int x, int y,
                             const std::vector<mrToolbarRec>& levels) {
  const mrToolbarHeader header = {state, 0, start, x, y, levels.size()};
  std::string bytes(reinterpret_cast<const char*>(&header), sizeof header);
  bytes.append(reinterpret_cast<const char*>(levels.data()), levels.size() * sizeof(mrToolbarRec));
  return {bytes};
}

inline bool operator==(const mrToolbarRec& a, const mrToolbarRec& b) { return memcmp(&a, &b, sizeof a) == 0; }

// ---- the common-controls toolbar -----------------------------------------------------------------

// New (101, text), Grid (102, check, down, text from the string pool), a separator, Front (103, group), 104
// without text, Colour (105, drop-down), Print (106, disabled), a button without id.
class CommonToolbar : public mrTestWindow {
public:
  enum Button { first, grid, separator, front, textless, colour, print, without_id };

  explicit CommonToolbar(HWND parent, int id = 50)
      : mrTestWindow((InitCommonControls(), TOOLBARCLASSNAMEA), "Drawing", visible_child | TBSTYLE_FLAT,
                     parent, id) {
    SendMessageA(*this, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageA(*this, TB_ADDSTRINGA, 0, reinterpret_cast<LPARAM>("Unused\0Grid\0"));
    add(101, BTNS_BUTTON, TBSTATE_ENABLED, reinterpret_cast<INT_PTR>("New"));
    add(102, BTNS_CHECK, TBSTATE_ENABLED | TBSTATE_CHECKED, 1);
    add(0, BTNS_SEP, TBSTATE_ENABLED, 0);
    add(103, BTNS_CHECKGROUP, TBSTATE_ENABLED, reinterpret_cast<INT_PTR>("Front"));
    add(104, BTNS_BUTTON, TBSTATE_ENABLED, -1);
    add(105, BTNS_DROPDOWN, TBSTATE_ENABLED, reinterpret_cast<INT_PTR>("Colour"));
    add(106, BTNS_BUTTON, 0, reinterpret_cast<INT_PTR>("Print"));
    add(-1, BTNS_BUTTON, TBSTATE_ENABLED, reinterpret_cast<INT_PTR>("Nothing"));
  }

  RECT place_of(Button button) const {
    RECT place = {};
    SendMessageA(*this, TB_GETITEMRECT, button, reinterpret_cast<LPARAM>(&place));
    return place;
  }
  CPoint middle_of(Button button) const {
    const RECT place = place_of(button);
    return CPoint((place.left + place.right) / 2, (place.top + place.bottom) / 2);
  }
  // A point that no button holds.
  CPoint beside() const { return CPoint(place_of(without_id).right + 1, 1); }
  void make_hot(int button) const { SendMessageA(*this, TB_SETHOTITEM, static_cast<WPARAM>(button), 0); }

private:
  void add(int id, int style, int state, INT_PTR text) {
    TBBUTTON button = {};
    button.idCommand = id;
    button.fsStyle = static_cast<BYTE>(style);
    button.fsState = static_cast<BYTE>(state);
    button.iString = text;
    SendMessageA(*this, TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&button));
  }
};

// ---- a toolbar of the outside library ------------------------------------------------------------

// Answers the toolbar messages from a list; every button is 20 pixels wide and high, with 10 pixels between.
class LookAlikeToolbar : public mrTestWindow {
public:
  struct Button {
    int id;
    int style;
    int state;
    std::string text;    // what TB_GETBUTTONTEXTA answers; empty: nothing
    INT_PTR string = 0;  // iString
  };

  LookAlikeToolbar(const char* class_name, HWND parent, std::vector<Button> buttons, const char* text = "Bar")
      : mrTestWindow((register_test_class(class_name), class_name), text, parent ? visible_child : WS_POPUP,
                     parent, parent ? 60 : 0),
        m_buttons(std::move(buttons)) {
    set_answer([this](UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
      return answer(message, wparam, lparam, result);
    });
  }

  static CPoint middle_of(int index) { return CPoint(index * 30 + 10, 10); }
  static CPoint gap_after(int index) { return CPoint(index * 30 + 25, 10); }

  int hot = -1;
  bool mirrored = false;          // rectangles with left and right, top and bottom swapped
  int hidden = -1;                // button without a rectangle
  std::string pool_text;          // answered to TB_GETSTRINGA
  WPARAM pool_wparam = 0;         // with which that was asked last
  std::map<UINT, int> questions;  // how often each toolbar message came
  int asked() const {
    int all = 0;
    for (const auto& question : questions)
      all += question.second;
    return all;
  }

private:
  bool answer(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
    if (message < WM_USER || message > WM_USER + 200)
      return false;
    ++questions[message];
    switch (message) {
    case TB_BUTTONCOUNT:
      result = static_cast<LRESULT>(m_buttons.size());
      return true;
    case TB_GETITEMRECT:
      result = get_place(static_cast<int>(wparam), *reinterpret_cast<RECT*>(lparam));
      return true;
    case TB_GETBUTTON: {
      const Button& button = m_buttons[wparam];
      TBBUTTON& answered = *reinterpret_cast<TBBUTTON*>(lparam);
      answered.idCommand = button.id;
      answered.fsStyle = static_cast<BYTE>(button.style);
      answered.fsState = static_cast<BYTE>(button.state);
      answered.iString = button.string;
      result = TRUE;
      return true;
    }
    case TB_GETBUTTONTEXTA:
      for (const Button& button : m_buttons) {
        if (button.id == static_cast<int>(wparam) && !button.text.empty())
          strcpy(reinterpret_cast<char*>(lparam), button.text.c_str());
      }
      return true;
    case TB_GETSTRINGA:
      pool_wparam = wparam;
      strcpy(reinterpret_cast<char*>(lparam), pool_text.c_str());
      return true;
    case TB_GETHOTITEM:
      result = hot;
      return true;
    default:
      return false;
    }
  }

  LRESULT get_place(int index, RECT& place) const {
    if (index == hidden)
      return FALSE;
    place = {index * 30, 0, index * 30 + 20, 20};
    if (mirrored) {
      std::swap(place.left, place.right);
      std::swap(place.top, place.bottom);
    }
    return TRUE;
  }

  std::vector<Button> m_buttons;
};

// ---- menus ---------------------------------------------------------------------------------------

// A menu of one's own, destroyed with the object unless it is a submenu of another one.
class TestMenu {
public:
  explicit TestMenu(bool is_bar = false) : m_menu(is_bar ? CreateMenu() : CreatePopupMenu()) {}
  ~TestMenu() { DestroyMenu(m_menu); }
  TestMenu(const TestMenu&) = delete;
  TestMenu& operator=(const TestMenu&) = delete;

  operator HMENU() const { return m_menu; }
  TestMenu& item(int id, const char* text, UINT state = 0) {
    AppendMenuA(m_menu, MF_STRING | state, static_cast<UINT_PTR>(id), text);
    return *this;
  }
  TestMenu& separator() {
    AppendMenuA(m_menu, MF_SEPARATOR, 0, nullptr);
    return *this;
  }
  // The submenu has an id of its own, as one of a MENUEX resource has: without one its handle would be the
  // id.
  TestMenu& submenu(int id, const char* text, HMENU submenu) {
    std::string name = text;
    MENUITEMINFOA info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_ID | MIIM_SUBMENU | MIIM_STRING;
    info.wID = static_cast<UINT>(id);
    info.hSubMenu = submenu;
    info.dwTypeData = name.data();
    InsertMenuItemA(m_menu, static_cast<UINT>(GetMenuItemCount(m_menu)), TRUE, &info);
    return *this;
  }

private:
  HMENU m_menu;
};

// The window of a popup menu, as the system makes it: it answers MN_GETHMENU.
class PopupWindow {
public:
  explicit PopupWindow(HMENU menu)
      : m_window(
            CreateWindowExA(0, "#32768", nullptr, WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, menu)) {}
  ~PopupWindow() { DestroyWindow(m_window); }
  PopupWindow(const PopupWindow&) = delete;
  PopupWindow& operator=(const PopupWindow&) = delete;
  operator HWND() const { return m_window; }

private:
  HWND m_window;
};

// wParam of a WM_MENUSELECT: a command, a position (of an item with a submenu), the end.
inline WPARAM highlight(int id) { return MAKEWPARAM(id, 0x80); }
inline WPARAM highlight_submenu(int position) { return MAKEWPARAM(position, MF_POPUP | 0x80); }
constexpr WPARAM menu_is_closed = 0xFFFF0000;
inline LPARAM as_lparam(HMENU menu) { return reinterpret_cast<LPARAM>(menu); }
