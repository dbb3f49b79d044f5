// Host process, GUI thread, inside a hook.
#include "controls/mrToolBarItems.h"

#include <windows.h>
#include <commctrl.h>

#include <cstring>
#include <utility>

// ---- window classes ------------------------------------------------------------------------------

bool has_class_prefix(const char* class_name, const char* prefix) {
  return strncmp(class_name, prefix, strlen(prefix)) == 0;
}

bool mrToolBarFactory::is_old_bcg_toolbar_class(const char* class_name) {
  return has_class_prefix(class_name, "BCGToolBar");
}

bool mrToolBarFactory::is_new_bcg_toolbar_class(const char* class_name) {
  return has_class_prefix(class_name, "BCGPToolBar");
}

bool mrToolBarFactory::is_bcg_toolbar_class(const char* class_name) {
  return is_old_bcg_toolbar_class(class_name) || is_new_bcg_toolbar_class(class_name);
}

bool is_toolbar_class(const char* class_name) {
  return strcmp(class_name, TOOLBARCLASSNAMEA) == 0 || mrToolBarFactory::is_bcg_toolbar_class(class_name);
}

bool is_popup_menu_class(const char* class_name) { return strcmp(class_name, "#32768") == 0; }

// ---- a level -------------------------------------------------------------------------------------

HMENU unknown_menu() { return reinterpret_cast<HMENU>(static_cast<INT_PTR>(-1)); }

mrToolbarRec init_record(HWND window, HMENU menu) {
  mrToolbarRec level = {};
  level.hwnd = window;
  level.hmenu = menu;
  level.item_index = -1;
  level.is_new_bcg = mrToolBarFactory::is_new_bcg_toolbar_class(hooked_class_name(window));
  level.ctrl_id = GetWindowLongPtrA(window, GWLP_ID);
  GetWindowTextA(window, level.window_text, mr_max_text);
  return level;
}

// ---- the item at a position ----------------------------------------------------------------------

namespace {

// What the toolbar's text messages write into: they know no size, or take it from the high word of their
// wParam. One per process, filled and read within one call.
char control_text[0x10000];

// One of the toolbar's text messages into a level's text, cut to its size.
void read_text(const mrToolbarRec& level, UINT message, WPARAM wparam, char (&text)[mr_max_text]) {
  control_text[0] = '\0';
  SendMessageA(level.hwnd, message, wparam, reinterpret_cast<LPARAM>(control_text));
  lstrcpynA(text, control_text, mr_max_text);
}

bool fill_button(mrToolbarRec& level, int index) {
  TBBUTTON button = {};
  SendMessageA(level.hwnd, TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
  if (button.fsStyle & BTNS_SEP)
    return false;
  level.item_index = index;
  level.item_id = button.idCommand == -1 ? 0 : button.idCommand;
  level.item_state = button.fsState;
  level.item_type = button.fsStyle;
  memset(level.item_text, 0, sizeof level.item_text);
  if (level.item_id)
    read_text(level, TB_GETBUTTONTEXTA, static_cast<WPARAM>(level.item_id), level.item_text);
  // Deliberate: iString as it stands, not the index and size that the message means. A toolbar of the BCG
  // library takes it so.
  if (!*level.item_text && button.iString)
    read_text(level, TB_GETSTRINGA, static_cast<WPARAM>(button.iString), level.item_text);
  return true;
}

bool fill_menu_item(mrToolbarRec& level, int position) {
  char text[mr_max_text] = "";
  MENUITEMINFOA item = {};
  item.cbSize = sizeof item;
  static_assert(sizeof item == 80, "the size by which the system knows the structure");
  item.fMask = MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_STRING | MIIM_FTYPE;
  item.dwTypeData = text;
  item.cch = mr_max_text;
  if (!GetMenuItemInfoA(level.hmenu, static_cast<UINT>(position), TRUE, &item) ||
      (item.fType & MFT_SEPARATOR))
    return false;
  text[mr_max_text - 1] = '\0';  // not every system ends a text that it cuts
  level.item_id = static_cast<int32_t>(item.wID);
  level.item_type = item.fType;
  level.item_state = item.fState;
  level.item_index = position;
  memcpy(level.item_text, text, sizeof text);
  return true;
}

}  // namespace

bool fill_item(mrToolbarRec& level, int index) {
  return level.hmenu ? fill_menu_item(level, index) : fill_button(level, index);
}

// ---- the button under the mouse ------------------------------------------------------------------

namespace {

void clear_item(mrToolbarRec& level) {
  memset(level.item_text, 0, sizeof level.item_text);
  level.hit_x = 0;
  level.hit_y = 0;
  level.item_type = 0;
  level.item_state = 0;
  level.item_index = -1;
  level.item_id = 0;
}

// Position of the button whose rectangle holds the point; -1 when none does.
int find_button(HWND toolbar, const CPoint& point) {
  const LRESULT count = SendMessageA(toolbar, TB_BUTTONCOUNT, 0, 0);
  for (int index = 0; index < count; ++index) {
    RECT place = {};
    if (!SendMessageA(toolbar, TB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&place)))
      continue;
    if (place.left > place.right)
      std::swap(place.left, place.right);
    if (place.top > place.bottom)
      std::swap(place.top, place.bottom);
    if (PtInRect(&place, point))
      return index;
  }
  return -1;
}

}  // namespace

bool hit_test_button(mrToolbarRec& level, const CPoint& point) {
  if (level.hmenu)
    return false;
  clear_item(level);
  const int index = find_button(level.hwnd, point);
  if (index < 0 || !fill_item(level, index))
    return false;
  level.hit_x = point.x;
  level.hit_y = point.y;
  return true;
}

// ---- the item that a menu highlights -------------------------------------------------------------

namespace {

// Position of a command in a menu; -1 when it is not there.
int find_command(HMENU menu, UINT id) {
  const int count = GetMenuItemCount(menu);
  for (int position = 0; position < count; ++position) {
    MENUITEMINFOA item = {};
    item.cbSize = sizeof item;
    item.fMask = MIIM_ID;
    if (GetMenuItemInfoA(menu, static_cast<UINT>(position), TRUE, &item) && item.wID == id)
      return position;
  }
  return -1;
}

}  // namespace

bool select_menu_item(mrToolbarRec& level, WPARAM wparam) {
  const UINT item = LOWORD(wparam);
  const bool is_position = HIWORD(wparam) & MF_POPUP;
  const int position = is_position ? static_cast<int>(item) : find_command(level.hmenu, item);
  return position >= 0 && fill_item(level, position);
}

bool has_submenu(const mrToolbarRec& level) {
  MENUITEMINFOA item = {};
  item.cbSize = sizeof item;
  item.fMask = MIIM_SUBMENU;
  GetMenuItemInfoA(level.hmenu, static_cast<UINT>(level.item_index), TRUE, &item);
  return item.hSubMenu != nullptr;
}
