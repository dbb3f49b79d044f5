// CAD trees, the host's tree views of the model's objects: the user shows or hides an object, checks it,
// changes its colour or stars it. Everything else of a CAD tree is recorded as a tree view's.
#pragma once

#include "controls/mrTreeView.h"
#include "framework/mrApi.h"
#include "host/kvttools.h"

#include <windows.h>

#include <cstddef>
#include <cstdint>

// Marks a change among the tree records, where the type of a tree action stands.
constexpr uint32_t mr_cad_tree_change = 1234321;

// What the host uploads for a change; 32 bytes, little-endian.
struct mrCADTreeRec {
  uint32_t kind;            // mr_cad_tree_change
  uint32_t reserved;        // 0
  kvtCADTreeChange change;  // as the tree tells it
};
static_assert(sizeof(mrCADTreeRec) == 32 && offsetof(mrCADTreeRec, change) == 8, "travels between processes");
static_assert(sizeof(kvtCADTreeChange) == 24 && offsetof(kvtCADTreeChange, tree) == 0 &&
                  offsetof(kvtCADTreeChange, item) == 8 && offsetof(kvtCADTreeChange, change) == 16 &&
                  offsetof(kvtCADTreeChange, value) == 20,
              "the host's layout travels as it is");

class MR_API mrCADTree : public mrTreeView {
public:
  // Raises CInvalidArgException for a null tree: there is no window to name.
  mrCADTree(HWND tree, mrBaseWindowFactory* factory);
};

class MR_API mrCADTreeFactory : public mrTreeViewFactory {
public:
  mrCADTreeFactory();

  mrFactoryType get_factory_type() override;
  // Claims kvtWM_CAD_TREE_CHANGED (wherever it goes, lParam not null), uploading the change as it stands,
  // and of what a CAD tree tells its parent all that handle_tree_message claims. Messages to the tree itself
  // are left to the tree views' recorder.
  bool handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) override;
  // A change is a statement of its own, never merged, and names the item by its places in the tree, which is
  // asked now; an unknown change names the item alone. The other records are a tree view's.
  void copy_data(void* data) override;
  // As a tree view's, for a tree that says it is a CAD tree; else 0.
  mrContextMenuRes context_menu_invoke(HWND window, const char* class_name, const CPoint& point) override;
  // A new mrCADTree, owned by the caller; null when there is no memory for it. Raises CInvalidArgException
  // for a null tree. Recorder process.
  mrTreeView* get_action(HWND tree) override;

private:
  void build_change(const kvtCADTreeChange& change);
};
