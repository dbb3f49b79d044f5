// The gallery's edits: typed, filled by the program, read-only, spun.
#include "apps/SampleCad/gallery.dev/gallery.h"
#include "apps/SampleCad/scDialogs.h"
#include "apps/SampleCad/scGallery.h"
#include "apps/SampleCad/scIdentity.h"

#include <windows.h>
#include <commctrl.h>

namespace {

class EditsDialog : public scGalleryDialog {
public:
  EditsDialog() : scGalleryDialog(IDD_EDITS, "dialog:edits") {}

protected:
  void on_init() override {
    set_window_name(item(IDC_EDIT_NAMED), "NamedEdit");
    set_text(IDC_EDIT_READ_ONLY, "Cannot be typed over");
    send(IDC_SPIN, UDM_SETBUDDY, reinterpret_cast<WPARAM>(item(IDC_EDIT_SPUN)));
    send(IDC_SPIN, UDM_SETRANGE32, 0, 359);
    send(IDC_SPIN_ALONE, UDM_SETRANGE32, 0, 10);
  }

  void on_control(int id, int code) override {
    if (id == IDC_APPEND && code == BN_CLICKED)
      append();
    if (code != EN_CHANGE)
      return;
    report("Changed", id);
    // The program follows the user: the copy is no typing.
    if (id == IDC_EDIT)
      set_text(IDC_EDIT_MIRROR, text(IDC_EDIT));
  }

  void change_by_program() override {
    for (const int id : {IDC_EDIT, IDC_EDIT_NUMBER, IDC_EDIT_PASSWORD, IDC_EDIT_NAMED, IDC_EDIT_MULTILINE,
                         IDC_EDIT_DISABLED, IDC_EDIT_HIDDEN})
      set_text(id, "1234");
    // Through the edit's own input: an EN_CHANGE of an edit that nobody can type into.
    send(IDC_EDIT_DISABLED, WM_CHAR, '5', 1);
    send(IDC_EDIT_HIDDEN, WM_CHAR, '5', 1);
    send(IDC_SPIN, UDM_SETPOS32, 0, 45);
  }

private:
  void append() {
    send(IDC_EDIT_MULTILINE, EM_SETSEL, static_cast<WPARAM>(-2), -1);
    send(IDC_EDIT_MULTILINE, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>("Appended\r\n"));
  }
};

}  // namespace

void show_edits_dialog() {
  static EditsDialog dialog;
  dialog.show();
}
