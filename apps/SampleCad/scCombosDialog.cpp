// The gallery's combo boxes: each style, owner-drawn ones, extended ones and a group combo.
#include "apps/SampleCad/gallery.dev/gallery.h"
#include "apps/SampleCad/scDialogs.h"
#include "apps/SampleCad/scGallery.h"
#include "host/dlxGroupComboHelpers.h"

#include <windows.h>
#include <commctrl.h>

namespace {

class CombosDialog : public scGalleryDialog {
public:
  CombosDialog() : scGalleryDialog(IDD_COMBOS, "dialog:combos") {}

protected:
  void on_init() override {
    for (const int id : {IDC_COMBO_EDIT, IDC_COMBO_LIST, IDC_COMBO_SIMPLE, IDC_COMBO_DRAWN_TEXT,
                         IDC_COMBO_DISABLED, IDC_COMBO_HIDDEN})
      add_materials(id, CB_ADDSTRING);
    add_colours(IDC_COMBO_DRAWN_COLOR, CB_ADDSTRING);
    fill_group_combo();
    for (const char* name : {"First", "Second", "Third"})
      add_extended(IDC_COMBO_EXTENDED, name, 0, 0);
    for (const int id : {IDC_COMBO_LIST, IDC_COMBO_DRAWN_TEXT, IDC_COMBO_DRAWN_COLOR, IDC_COMBO_GROUP,
                         IDC_COMBO_EXTENDED, IDC_COMBO_DISABLED, IDC_COMBO_HIDDEN})
      send(id, CB_SETCURSEL, 0);
  }

  void on_control(int id, int code) override {
    // Opening and closing lists tells nothing new.
    if (code == CBN_SELCHANGE)
      report("Selected", id);
    else if (code == CBN_EDITCHANGE)
      report("Typed", id);
  }

  void change_by_program() override {
    for (const int id :
         {IDC_COMBO_EDIT, IDC_COMBO_LIST, IDC_COMBO_SIMPLE, IDC_COMBO_DRAWN_TEXT, IDC_COMBO_DRAWN_COLOR,
          IDC_COMBO_GROUP, IDC_COMBO_EXTENDED, IDC_COMBO_DISABLED, IDC_COMBO_HIDDEN})
      send(id, CB_SETCURSEL, 2);
    // The program may also tell itself of the change; nobody can have made it in a box that is disabled or
    // hidden.
    for (const int id : {IDC_COMBO_DISABLED, IDC_COMBO_HIDDEN})
      SendMessageA(handle(), WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE), reinterpret_cast<LPARAM>(item(id)));
  }

private:
  // Appends an item; data is what tells a heading.
  void add_extended(int id, const char* name, int indent, LPARAM data) {
    COMBOBOXEXITEMA added = {};
    added.mask = CBEIF_TEXT | CBEIF_INDENT | CBEIF_LPARAM;
    added.iItem = -1;
    added.pszText = const_cast<char*>(name);
    added.iIndent = indent;
    added.lParam = data;
    send(id, CBEM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&added));
  }

  // One item above all headings, then two groups.
  void fill_group_combo() {
    SetPropA(item(IDC_COMBO_GROUP), dlx_group_combo_property, reinterpret_cast<HANDLE>(1));
    add_extended(IDC_COMBO_GROUP, "None", 0, 0);
    add_extended(IDC_COMBO_GROUP, "Metric", 0, dlx_heading_item);
    for (const char* name : {"M6", "M8", "M10"})
      add_extended(IDC_COMBO_GROUP, name, 1, 0);
    add_extended(IDC_COMBO_GROUP, "Inch", 0, dlx_heading_item);
    for (const char* name : {"1/4\"", "3/8\""})
      add_extended(IDC_COMBO_GROUP, name, 1, 0);
  }
};

}  // namespace

void show_combos_dialog() {
  static CombosDialog dialog;
  dialog.show();
}
