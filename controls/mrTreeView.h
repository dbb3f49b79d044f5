// Tree views: the user selects an item or finishes editing its label. Items are named in the script by their
// places among their siblings, from the root down.
#pragma once

#include "framework/mrApi.h"
#include "hooks/mrHookedMessage.h"
#include "model/mrBaseWindowFactory.h"

#include <windows.h>
#include <commctrl.h>

#include <cstddef>
#include <cstdint>

enum mrTreeViewActionType : int32_t {
  treeNoAction = -1,  // an action made for a context menu, or by a derived recorder
  treeSelection = 0,
  treeLabelEdit = 1,
};

// What the host uploads; 288 bytes, little-endian. A selection keeps the previous record's text.
struct mrTreeViewRec {
  int32_t type;  // mrTreeViewActionType
  uint32_t padding_4;
  HWND tree;
  HTREEITEM item;          // handle of the host's tree
  char text[mr_max_text];  // the new label, zero-terminated
  uint32_t padding_284;
};
static_assert(sizeof(mrTreeViewRec) == 288, "travels between processes");
static_assert(offsetof(mrTreeViewRec, tree) == 8 && offsetof(mrTreeViewRec, item) == 16 &&
                  offsetof(mrTreeViewRec, text) == 24,
              "travels between processes");

class MR_API mrTreeView : public mrBaseWindow {
public:
  mrTreeView(HWND tree, mrBaseWindowFactory* factory) : mrBaseWindow(tree, factory) {}

  // What the statement is about: only statements of one type replace each other.
  mrTreeViewActionType get_type() const { return m_type; }
  void set_type(mrTreeViewActionType type) { m_type = type; }

private:
  mrTreeViewActionType m_type = treeNoAction;
};

class MR_API mrTreeViewFactory : public mrBaseWindowFactory {
public:
  mrTreeViewFactory();
  // For derived recorders: their own name in declarations and the class name that their actions write into
  // the path. Whose notifications are recorded stays as it is.
  mrTreeViewFactory(const char* script_name, const char* class_name);

  mrFactoryType get_factory_type() override;
  // Claims every message to a tree, the commands of a control in it (its label editor), which a tree hands
  // on to its parent, and of a tree's notifications those that handle_tree_message claims.
  bool handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) override;
  // Asks the tree where the item stands when the record arrives; a label travels in the record.
  void copy_data(void* data) override;
  // Records whether the menu was opened on the selected row. 1, or 0 for a class that is no tree's.
  mrContextMenuRes context_menu_invoke(HWND window, const char* class_name, const CPoint& point) override;

  // Slot 9. A new action for a tree, of type treeNoAction, owned by the caller; null
  // when it cannot be made. Recorder process.
  virtual mrTreeView* get_action(HWND tree);

  // The tree that a WM_NOTIFY comes from; null for every other message. Host process, inside a hook.
  HWND is_tree_message(MSG* msg) const;

  // Uploads a selection or an edited label. True claims the message: one that was uploaded, and everything
  // that a hidden or disabled tree tells. Host process, inside a hook.
  bool handle_tree_message(HWND tree, MSG* msg);

protected:
  // Whether a window class is a tree view's: it begins with "SysTreeView32", whatever class name a derived
  // recorder has. Both processes.
  static bool is_tree_class(const char* class_name);

  // The 1-based places of an item and its ancestors among their siblings, from the root down, such as "1|3".
  // Asks the host's tree. Recorder process.
  static CString get_num_path(HWND tree, HTREEITEM item);

  // Appends the statement of a context menu opened at point (the tree's client pixels). Recorder process.
  mrContextMenuRes record_context_menu(HWND tree, const CPoint& point);

private:
  bool upload_selection(HWND tree, const NMTREEVIEWA& selection);
  bool upload_label(HWND tree, const NMTVDISPINFOA& edited);
};
