// The gallery's tabs: the common tab control and two look-alikes of other libraries.
#include "apps/SampleCad/gallery.dev/gallery.h"
#include "apps/SampleCad/scDialogs.h"
#include "apps/SampleCad/scGallery.h"
#include "apps/SampleCad/scTabWindow.h"

#include <windows.h>
#include <commctrl.h>

namespace {

class TabsDialog : public scGalleryDialog {
public:
  TabsDialog() : scGalleryDialog(IDD_TABS, "dialog:tabs") {}

protected:
  void on_init() override {
    // The third tab has no caption.
    for (const int id : {IDC_TABS, IDC_TABS_BCG, IDC_TABS_GX}) {
      int position = 0;
      for (const char* caption : {"Part", "Assembly", "", "Drawing"}) {
        TCITEMA tab = {};
        tab.mask = TCIF_TEXT;
        tab.pszText = const_cast<char*>(caption);
        send(id, TCM_INSERTITEMA, position++, reinterpret_cast<LPARAM>(&tab));
      }
    }
    show_page();
    // The page's text lies on the tab control, not behind it.
    SetWindowPos(item(IDC_TAB_PAGE), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
  }

  bool on_notify(NMHDR& header, LRESULT& /*result*/) override {
    if (header.code != static_cast<UINT>(TCN_SELCHANGE))
      return false;
    show_page();
    report("Selected", static_cast<int>(header.idFrom));
    return true;
  }

  bool on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override {
    // Both give the tab window in lParam.
    if (message == bcg_tab_changed() || message == gx_tab_changed) {
      report("Selected", GetDlgCtrlID(reinterpret_cast<HWND>(lparam)));
      return true;
    }
    if (message == WM_CTLCOLORSTATIC && reinterpret_cast<HWND>(lparam) == item(IDC_TAB_PAGE)) {
      result = reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
      SetBkMode(reinterpret_cast<HDC>(wparam), TRANSPARENT);
      return true;
    }
    return scGalleryDialog::on_message(message, wparam, lparam, result);
  }

  void change_by_program() override {
    // None of the three tells of it.
    for (const int id : {IDC_TABS, IDC_TABS_BCG, IDC_TABS_GX})
      send(id, TCM_SETCURSEL, 1);
    show_page();
  }

private:
  void show_page() {
    CString text;
    text.Format("This is page %d.", static_cast<int>(send(IDC_TABS, TCM_GETCURSEL)) + 1);
    set_text(IDC_TAB_PAGE, text);
  }
};

}  // namespace

void show_tabs_dialog() {
  static TabsDialog dialog;
  register_tab_windows();
  dialog.show();
}
