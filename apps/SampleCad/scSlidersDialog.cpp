// The gallery's track bars: horizontal, vertical, disabled.
#include "apps/SampleCad/gallery.dev/gallery.h"
#include "apps/SampleCad/scDialogs.h"
#include "apps/SampleCad/scGallery.h"

#include <windows.h>
#include <commctrl.h>

namespace {

class SlidersDialog : public scGalleryDialog {
public:
  SlidersDialog() : scGalleryDialog(IDD_SLIDERS, "dialog:sliders") {}

protected:
  void on_init() override {
    // In the middle of a round range: tests know every position beforehand.
    for (const int id : {IDC_SLIDER_HORIZONTAL, IDC_SLIDER_VERTICAL, IDC_SLIDER_DISABLED}) {
      send(id, TBM_SETRANGE, TRUE, MAKELPARAM(0, 100));
      send(id, TBM_SETTICFREQ, 10);
      send(id, TBM_SETPAGESIZE, 0, 20);
    }
    set_positions(50);
  }

  bool on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override {
    // Both directions alike; lParam is the slider.
    if (message != WM_HSCROLL && message != WM_VSCROLL)
      return scGalleryDialog::on_message(message, wparam, lparam, result);
    show_values();
    report("Moved", GetDlgCtrlID(reinterpret_cast<HWND>(lparam)));
    return true;
  }

  void change_by_program() override { set_positions(30); }

private:
  void set_positions(int position) {
    for (const int id : {IDC_SLIDER_HORIZONTAL, IDC_SLIDER_VERTICAL, IDC_SLIDER_DISABLED})
      send(id, TBM_SETPOS, TRUE, position);
    show_values();
  }

  // Of the two that the user can move.
  void show_values() {
    CString text;
    text.Format("Zoom %d, height %d", static_cast<int>(send(IDC_SLIDER_HORIZONTAL, TBM_GETPOS)),
                static_cast<int>(send(IDC_SLIDER_VERTICAL, TBM_GETPOS)));
    set_text(IDC_SLIDER_VALUE, text);
  }
};

}  // namespace

void show_sliders_dialog() {
  static SlidersDialog dialog;
  dialog.show();
}
