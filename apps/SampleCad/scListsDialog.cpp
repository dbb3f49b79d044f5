// The gallery's list boxes and list views, with a context menu for their items.
#include "apps/SampleCad/gallery.dev/gallery.h"
#include "apps/SampleCad/scDialogs.h"
#include "apps/SampleCad/scGallery.h"

#include <windows.h>
#include <commctrl.h>

namespace {

struct Part {
  const char* name;  // empty: an item without a text
  const char* material;
  const char* mass;
};
// Texts with a backslash and without any: the last part is recorded by its index.
constexpr Part parts[] = {
    {"Base plate", "Steel", "4.2 kg"},
    {"Bearing A", "Steel", "0.8 kg"},
    {"Bearing B", "Steel", "0.6 kg"},
    {"Wheel 20", "Brass", "1.9 kg"},
    {"Pinion 12", "Brass", "0.7 kg"},
    {"Seal \\ ring", "Rubber", "0.1 kg"},
    {"", "Oil", "0.3 kg"},
};

class ListsDialog : public scGalleryDialog {
public:
  ListsDialog() : scGalleryDialog(IDD_LISTS, "dialog:lists") {}

protected:
  void on_init() override {
    for (const int id : {IDC_LIST_SINGLE, IDC_LIST_MULTIPLE, IDC_LIST_EXTENDED, IDC_LIST_DISABLED})
      add_materials(id, LB_ADDSTRING);
    for (const int id : {IDC_LIST_DRAWN_COLOR, IDC_LIST_DRAWN_MULTIPLE})
      add_colours(id, LB_ADDSTRING);
    for (const int id : {IDC_LIST_VIEW, IDC_LIST_VIEW_DISABLED, IDC_LIST_VIEW_HIDDEN})
      fill_list_view(id);
  }

  void on_control(int /*id*/, int /*code*/) override {}

  bool on_command(int id, int code, HWND control) override {
    // The two codes are those of list boxes only; buttons tell 0.
    if (control && (code == LBN_SELCHANGE || code == LBN_DBLCLK) && id != IDC_BY_PROGRAM && id != IDCANCEL)
      report(code == LBN_SELCHANGE ? "Selected" : "Double click", id);
    return scGalleryDialog::on_command(id, code, control);
  }

  bool on_notify(NMHDR& header, LRESULT& /*result*/) override {
    const int id = static_cast<int>(header.idFrom);
    if (header.code == LVN_ITEMCHANGED)
      report("Selected", id);
    else if (header.code == NM_DBLCLK)
      report("Double click", id);
    return false;
  }

  void change_by_program() override {
    for (const int id : {IDC_LIST_SINGLE, IDC_LIST_DRAWN_COLOR, IDC_LIST_DISABLED})
      send(id, LB_SETCURSEL, 2);
    for (const int id : {IDC_LIST_MULTIPLE, IDC_LIST_EXTENDED})
      send(id, LB_SETSEL, TRUE, 3);
    // The program may tell itself of a change; nobody can have made it in a list that is disabled.
    SendMessageA(handle(), WM_COMMAND, MAKEWPARAM(IDC_LIST_DISABLED, LBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(item(IDC_LIST_DISABLED)));
    // A list view tells of every change, whoever makes it; the disabled and the hidden one tell of one that
    // no user can have made.
    for (const int id : {IDC_LIST_VIEW_DISABLED, IDC_LIST_VIEW_HIDDEN})
      ListView_SetItemState(item(id), 1, LVIS_SELECTED, LVIS_SELECTED);
  }

private:
  void fill_list_view(int id) {
    const HWND list = item(id);
    // A click anywhere in the row selects it.
    SendMessageA(list, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
    int position = 0;
    for (const char* title : {"Part", "Material", "Mass"}) {
      LVCOLUMNA column = {};
      column.mask = LVCF_TEXT | LVCF_WIDTH;
      column.pszText = const_cast<char*>(title);
      column.cx = 96;
      SendMessageA(list, LVM_INSERTCOLUMNA, position++, reinterpret_cast<LPARAM>(&column));
    }
    for (const Part& part : parts) {
      LVITEMA row = {};
      row.mask = LVIF_TEXT;
      row.iItem = static_cast<int>(&part - parts);
      row.pszText = const_cast<char*>(part.name);
      SendMessageA(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&row));
      set_cell(list, row.iItem, 1, part.material);
      set_cell(list, row.iItem, 2, part.mass);
    }
  }

  static void set_cell(HWND list, int row, int column, const char* text) {
    LVITEMA cell = {};
    cell.iSubItem = column;
    cell.pszText = const_cast<char*>(text);
    SendMessageA(list, LVM_SETITEMTEXTA, row, reinterpret_cast<LPARAM>(&cell));
  }
};

}  // namespace

void show_lists_dialog() {
  static ListsDialog dialog;
  dialog.show();
}
