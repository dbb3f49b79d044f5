// Stand-in for the host's dialog-framework library; see the header.
#include "host/dlxGroupComboHelpers.h"

bool dlxGroupComboHelpers::check_combo_type(HWND combo) {
  return GetPropA(combo, dlx_group_combo_property) != nullptr;
}

int dlxGroupComboHelpers::get_item_heading(HWND combo, int index) {
  if (index >= SendMessageA(combo, CB_GETCOUNT, 0, 0))
    return -1;
  // CB_ERR, the answer for an item that does not exist, is no heading's data.
  for (int item = index; item >= 0; --item)
    if (SendMessageA(combo, CB_GETITEMDATA, static_cast<WPARAM>(item), 0) == dlx_heading_item)
      return item;
  return -1;
}
