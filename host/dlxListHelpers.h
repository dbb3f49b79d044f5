// Stand-in for the host's dialog-framework library: texts of combo box and list box items.
//
// Runs in the recorder process and reads the controls of the host across processes.
#pragma once

#include "framework/CString.h"
#include "framework/mrApi.h"

#include <windows.h>

class MR_API dlxListHelpers {
public:
  // Text of item `index` of a combo box (a ComboBox or a ComboBoxEx32), in the ANSI code page, whole.
  // Empty when the window is no combo box, there is no such item, the item has no text, or the box is
  // owner-drawn and keeps no strings: its items are then plain numbers of the host that must not be read as
  // text. `from_list` is the third argument of the library's own function; nothing here depends on it. Any
  // thread; may wait for the window's thread.
  static CString get_combo_item(HWND combo, int index, bool from_list);

  // The same for a list box.
  static CString get_list_item(HWND list, int index, bool from_list);
};
