// Reads toolbars and menus into levels. Host process, GUI thread: the controls fill buffers of this process,
// and menu handles mean nothing in another one.
#pragma once

#include "controls/mrToolBar.h"

// Begins with the prefix, byte for byte.
MR_API bool has_class_prefix(const char* class_name, const char* prefix);
// The common-controls toolbar or one of the BCG library.
MR_API bool is_toolbar_class(const char* class_name);
// The system's popup menu window.
MR_API bool is_popup_menu_class(const char* class_name);

// The menu of a popup window that has not told it yet.
MR_API HMENU unknown_menu();

// A fresh level for a window: no current item.
MR_API mrToolbarRec init_record(HWND window, HMENU menu);

// Makes the button at a point (client pixels) the level's current item. False for a level with a menu, which
// stays as it is, and where there is no button or a separator: the level has no current item then.
MR_API bool hit_test_button(mrToolbarRec& level, const CPoint& point);

// Makes the item at a position the level's current one. False for a separator, or a position that the menu
// does not have (it was changed while open); the level stays as it is then.
MR_API bool fill_item(mrToolbarRec& level, int index);

// Makes the item of a WM_MENUSELECT the level's current one; false as above and for a command that the menu
// does not have.
MR_API bool select_menu_item(mrToolbarRec& level, WPARAM wparam);

// The level's current item opens a submenu.
MR_API bool has_submenu(const mrToolbarRec& level);
