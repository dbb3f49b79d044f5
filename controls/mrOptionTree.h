// Option trees, the host's control for settings: the user changes an item's value. Items are named in the
// script by the labels from the root down to them.
#pragma once

#include "framework/mrApi.h"
#include "hooks/mrHookedMessage.h"
#include "model/mrBaseWindowFactory.h"

#include <windows.h>

#include <cstddef>
#include <cstdint>

// What the host uploads; 544 bytes, little-endian.
struct mrOptionTreeRec {
  HWND tree;
  void* item;              // the host's own handle of the item
  int32_t is_check;        // 1: a check box, 0: a text value
  char path[mr_max_text];  // labels from the root to the item, joined by "|", zero-terminated
  char value[264];         // zero-terminated, 259 characters at most
};
static_assert(sizeof(mrOptionTreeRec) == 544, "travels between processes");
static_assert(offsetof(mrOptionTreeRec, item) == 8 && offsetof(mrOptionTreeRec, is_check) == 16 &&
                  offsetof(mrOptionTreeRec, path) == 20 && offsetof(mrOptionTreeRec, value) == 280,
              "travels between processes");

// wParam of "MSG_OT_RequestInformation".
enum mrOptionTreeRequest : WPARAM {
  optionLabel = 1,   // lParam: an mrOptionTextRequest, whose buffer the tree fills
  optionParent = 5,  // lParam: the item; the answer is its parent, 0 at the root
  optionKind = 6,    // lParam: the item; the answer is 2 for a check box
  optionValue = 8,   // lParam: an mrOptionTextRequest; the value as text
};
constexpr LRESULT mr_option_check_box = 2;

// Lies in the host's memory, as the tree does.
struct mrOptionTextRequest {
  void* item;
  char* buffer;
  uint32_t size;  // bytes of the buffer, 260
};

// What an option tree sends to its parent when the user changed a value.
struct mrOptionTreeNotification {
  NMHDR header;  // code mr_option_value_changed
  void* item;
};
static_assert(offsetof(mrOptionTreeNotification, item) == 24, "the host's layout");
constexpr UINT mr_option_value_changed = static_cast<UINT>(-1105);

class MR_API mrOptionTree : public mrBaseWindow {
public:
  mrOptionTree(HWND tree, mrBaseWindowFactory* factory, const void* item)
      : mrBaseWindow(tree, factory), m_item(item) {}

  // Whether the action is about this item of this tree.
  bool is(HWND tree, const void* item) const { return get_window() == tree && m_item == item; }

private:
  const void* m_item;  // of the host, only compared
};

class MR_API mrOptionTreeFactory : public mrBaseWindowFactory {
public:
  mrOptionTreeFactory();

  mrFactoryType get_factory_type() override;
  // Claims every message to an option tree or to a window up to three levels below one (its in-place
  // editors), and mr_option_value_changed of a tree, which is asked for the item's value, kind and labels.
  bool handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) override;
  // Changes of one item in a row end as its last value. Labels and value travel in the record.
  void copy_data(void* data) override;
  // 0: option trees offer no context menu action.
  mrContextMenuRes context_menu_invoke(HWND window, const char* class_name, const CPoint& point) override;

  // Whether a window is an option tree; false for a null one. Host process, inside a hook.
  bool check_hwnd(HWND window) const;

private:
  bool is_in_option_tree(HWND window) const;
  void upload_value(HWND tree, void* item);
};
