// The gallery's buttons: push buttons, check boxes, radio buttons, owner-drawn ones.
#include "apps/SampleCad/gallery.dev/gallery.h"
#include "apps/SampleCad/scDialogs.h"
#include "apps/SampleCad/scGallery.h"
#include "apps/SampleCad/scIdentity.h"
#include "apps/SampleCad/scOwnerDraw.h"

namespace {

class ButtonsDialog : public scGalleryDialog {
public:
  ButtonsDialog() : scGalleryDialog(IDD_BUTTONS, "dialog:buttons") {}

protected:
  void on_init() override {
    set_window_name(item(IDC_PUSH_NAMED), "NamedButton");
    make_toggle(item(IDC_DRAWN_TOGGLE));
    CheckRadioButton(handle(), IDC_RADIO_STEEL, IDC_RADIO_COPPER, IDC_RADIO_STEEL);
    CheckRadioButton(handle(), IDC_RADIO_ROUGH, IDC_RADIO_FINE, IDC_RADIO_ROUGH);
  }

  void on_control(int id, int code) override {
    if (code != BN_CLICKED)
      return;
    // Some buttons keep their state themselves, the others are set here, after the click was told.
    if (id == IDC_CHECK_MANUAL || id == IDC_DRAWN_TOGGLE)
      send(id, BM_SETCHECK, send(id, BM_GETCHECK) == BST_UNCHECKED ? BST_CHECKED : BST_UNCHECKED);
    else if (id == IDC_CHECK_3STATE_MANUAL)
      send(id, BM_SETCHECK, (send(id, BM_GETCHECK) + 1) % 3);
    else if (id == IDC_RADIO_ROUGH || id == IDC_RADIO_FINE)
      CheckRadioButton(handle(), IDC_RADIO_ROUGH, IDC_RADIO_FINE, id);
    report("Clicked", id);
  }

  void change_by_program() override {
    for (const int id : {IDC_CHECK, IDC_CHECK_MANUAL, IDC_CHECK_DISABLED, IDC_DRAWN_TOGGLE})
      send(id, BM_SETCHECK, BST_CHECKED);
    for (const int id : {IDC_CHECK_3STATE, IDC_CHECK_3STATE_MANUAL})
      send(id, BM_SETCHECK, BST_INDETERMINATE);
    CheckRadioButton(handle(), IDC_RADIO_STEEL, IDC_RADIO_COPPER, IDC_RADIO_COPPER);
  }
};

}  // namespace

void show_buttons_dialog() {
  static ButtonsDialog dialog;
  dialog.show();
}
