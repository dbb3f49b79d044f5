// The gallery's tree views: one with labels that can be edited and a context menu, one that is disabled.
#include "apps/SampleCad/gallery.dev/gallery.h"
#include "apps/SampleCad/scDialogs.h"
#include "apps/SampleCad/scGallery.h"

#include <windows.h>
#include <commctrl.h>

namespace {

class TreesDialog : public scGalleryDialog {
public:
  TreesDialog() : scGalleryDialog(IDD_TREES, "dialog:trees") {}

protected:
  void on_init() override {
    for (const int id : {IDC_TREE, IDC_TREE_DISABLED})
      fill(id);
    // Selected here, or the tree would do it itself as soon as it gets the focus.
    TreeView_SelectItem(item(IDC_TREE), TreeView_GetRoot(item(IDC_TREE)));
  }

  void on_control(int id, int code) override {
    if (code != BN_CLICKED)
      return;
    const HWND tree = item(IDC_TREE);
    if (id == IDC_TREE_EXPAND)
      expand(tree, TreeView_GetRoot(tree));
    else if (id == IDC_TREE_RENAME) {
      SetFocus(tree);
      SendMessageA(tree, TVM_EDITLABELA, 0, reinterpret_cast<LPARAM>(TreeView_GetSelection(tree)));
    }
  }

  bool on_command(int id, int code, HWND control) override {
    // While a label is edited, Return and Escape belong to it.
    const HWND editor = TreeView_GetEditControl(item(IDC_TREE));
    if (editor && !control && (id == IDOK || id == IDCANCEL)) {
      TreeView_EndEditLabelNow(item(IDC_TREE), id == IDCANCEL);
      return true;
    }
    return scGalleryDialog::on_command(id, code, control);
  }

  bool on_notify(NMHDR& header, LRESULT& result) override {
    const int id = static_cast<int>(header.idFrom);
    if (header.code == TVN_SELCHANGEDA) {
      report("Selected", id);
    } else if (header.code == TVN_ENDLABELEDITA) {
      const auto& info = reinterpret_cast<const NMTVDISPINFOA&>(header);
      result = info.item.pszText != nullptr;  // the tree keeps the new label
      report("Renamed", id);
      return true;
    }
    return false;
  }

  void change_by_program() override {
    // A tree tells of every selection, whoever makes it.
    const HWND tree = item(IDC_TREE_DISABLED);
    SendMessageA(tree, TVM_SELECTITEM, TVGN_CARET,
                 reinterpret_cast<LPARAM>(TreeView_GetChild(tree, TreeView_GetRoot(tree))));
  }

private:
  HTREEITEM add(int id, HTREEITEM parent, const char* text) {
    TVINSERTSTRUCTA added = {};
    added.hParent = parent;
    added.hInsertAfter = TVI_LAST;
    added.item.mask = TVIF_TEXT;
    added.item.pszText = const_cast<char*>(text);
    return reinterpret_cast<HTREEITEM>(send(id, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&added)));
  }

  // Three roots, one of them empty, and paths of up to four levels.
  void fill(int id) {
    const HTREEITEM gearbox = add(id, TVI_ROOT, "Gearbox");
    const HTREEITEM housing = add(id, gearbox, "Housing");
    add(id, housing, "Base plate");
    add(id, housing, "Bearing A");
    add(id, housing, "Bearing B");
    const HTREEITEM drive = add(id, gearbox, "Drive");
    add(id, drive, "Shaft");
    const HTREEITEM wheels = add(id, drive, "Wheels");
    add(id, wheels, "Wheel 20");
    add(id, wheels, "Pinion 12");
    const HTREEITEM flange = add(id, TVI_ROOT, "Flange");
    add(id, flange, "Disc");
    add(id, flange, "Neck");
    add(id, TVI_ROOT, "Sketches");
    SendMessageA(item(id), TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(gearbox));
  }

  // An item, its later siblings, and everything below them.
  static void expand(HWND tree, HTREEITEM first) {
    for (HTREEITEM i = first; i; i = TreeView_GetNextSibling(tree, i)) {
      TreeView_Expand(tree, i, TVE_EXPAND);
      expand(tree, TreeView_GetChild(tree, i));
    }
  }
};

}  // namespace

void show_trees_dialog() {
  static TreesDialog dialog;
  dialog.show();
}
