// List views: the selection, activating it by double click or Return, and whether a context menu was opened
// on one.
#pragma once

#include "framework/mrApi.h"
#include "hooks/mrHookedMessage.h"
#include "model/mrBaseWindow.h"
#include "model/mrBaseWindowFactory.h"

#include <cstddef>
#include <cstdint>

enum mrListViewRecKind : uint32_t {
  listViewFirstSelected = 0,
  listViewFurtherSelected = 1,
  listViewActivated = 2,
};

// What the host uploads; 280 bytes, little-endian. An activation keeps the index and text of the record
// before it.
struct mrListViewRec {
  uint32_t kind;           // mrListViewRecKind
  uint32_t reserved;       // not written, not read
  HWND window;             // the list view
  int32_t index;           // of the item
  char text[mr_max_text];  // of the item's first column, ended by a zero
};
static_assert(sizeof(mrListViewRec) == 280, "travels between processes");
static_assert(offsetof(mrListViewRec, window) == 8 && offsetof(mrListViewRec, index) == 16 &&
                  offsetof(mrListViewRec, text) == 20,
              "travels between processes");

class MR_API mrListView : public mrBaseWindow {
public:
  mrListView(HWND list, mrBaseWindowFactory* factory);
};

class MR_API mrListViewFactory : public mrBaseWindowFactory {
public:
  mrListViewFactory();

  mrFactoryType get_factory_type() override;
  // Claims every message to a list view, every notification of one that is hidden or disabled, and changes of
  // the selection.
  bool handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) override;
  // A new selection takes the place of this list view's statements at the end of the list.
  void copy_data(void* data) override;
  // 1 for a list view: records whether anything is selected. The point is not used.
  mrContextMenuRes context_menu_invoke(HWND window, const char* class_name, const CPoint& point) override;

protected:
  // Uploads the whole selection, item by item. Host process.
  void update_selected(HWND list);
  // Text of an item's first column, cut to size - 1 characters; empty when there is none. Host process.
  void get_name(HWND list, int item, char* text, size_t size);

private:
  bool on_notification(const NMHDR& header);
  void send_record(HWND list, mrListViewRecKind kind);
  void drop_last_selection(HWND list);
};
