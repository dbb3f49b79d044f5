// List boxes: selecting items, deselecting them in a multiple-selection one, and where a context menu was
// opened.
#pragma once

#include "framework/mrApi.h"
#include "hooks/mrHookedMessage.h"
#include "model/mrBaseWindow.h"
#include "model/mrBaseWindowFactory.h"

#include <cstddef>
#include <cstdint>

enum mrListBoxRecKind : uint32_t {
  listBoxSelectionChanged = 0,
};

// What the host uploads; 24 bytes, little-endian.
struct mrListBoxRec {
  uint32_t kind;      // mrListBoxRecKind
  uint32_t reserved;  // not written, not read
  HWND window;        // the list box
  int32_t index;      // of the item whose selection changed
  uint32_t reserved_20;
};
static_assert(sizeof(mrListBoxRec) == 24, "travels between processes");
static_assert(offsetof(mrListBoxRec, window) == 8 && offsetof(mrListBoxRec, index) == 16,
              "travels between processes");

class MR_API mrListBox : public mrBaseWindow {
public:
  mrListBox(HWND list, mrBaseWindowFactory* factory);
};

class MR_API mrListBoxFactory : public mrBaseWindowFactory {
public:
  mrListBoxFactory();
  ~mrListBoxFactory() override;
  // The snapshot has one owner.
  mrListBoxFactory(const mrListBoxFactory&) = delete;
  mrListBoxFactory& operator=(const mrListBoxFactory&) = delete;

  mrFactoryType get_factory_type() override;
  // Claims every message to a list box, every notification of one that is hidden or disabled, and
  // LBN_SELCHANGE.
  bool handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) override;
  // Asks the list box itself whether the item is selected, as it is when the record arrives.
  void copy_data(void* data) override;
  // 1 for a list box: records whether the menu was opened on a selected item.
  mrContextMenuRes context_menu_invoke(HWND window, const char* class_name, const CPoint& point) override;

protected:
  // Reads the selection of a multiple-selection list box: the number of selected items, -1 when the list box
  // answers with an error, and their indices, ascending, in a new array that takes the place of the old one;
  // null for none. Host process.
  void fill_selected(HWND list, int& count, int*& items);
  // Uploads what was selected and what was deselected since the snapshot, and renews it. Host process.
  void update_selected(HWND list);
  // Uploads each index of a that is not in b, in the order of a. Host process.
  void check_list(HWND list, int count_a, int* a, int count_b, int* b);

private:
  bool on_message(const mrHookedMessage& msg);
  void send_selection_changed(HWND list, int index);

  // The selection of the multiple-selection list box that last got the focus or changed. Host process.
  int m_selected_count = 0;
  int* m_selected_items = nullptr;  // owned
};
