// Stand-in for the host's dialog-framework library: group combos, extended combo boxes with headings.
//
// A host tells a group combo by two marks. The ComboBoxEx32 window has the property dlx_group_combo_property
// (any value but null), and each of its heading items has the item data (lParam of COMBOBOXEXITEM)
// dlx_heading_item. Both can be read from another process, without memory of the host.
#pragma once

#include "framework/mrApi.h"

#include <windows.h>

// Name of the window property that makes a ComboBoxEx32 a group combo.
constexpr char dlx_group_combo_property[] = "dlxGroupCombo";
// Item data of a heading: "HEAD" in memory. Other items may have any other item data.
constexpr LPARAM dlx_heading_item = 0x44414548;

class MR_API dlxGroupComboHelpers {
public:
  // Whether the window, a ComboBoxEx32, is marked as a group combo. Called in the host process (inside a
  // hook) and in the recorder process; sends no message.
  static bool check_combo_type(HWND combo);

  // Index of the heading above item `index`: the index itself when that item is a heading, -1 when there is
  // no heading above it (or no such item). Called in the recorder process; sends at most index + 1 messages.
  static int get_item_heading(HWND combo, int index);
};
