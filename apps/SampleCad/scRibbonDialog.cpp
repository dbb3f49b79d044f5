// The dialog that customises the ribbon, modal: the commands to choose from and those chosen.
#include "apps/SampleCad/common_ids.h"
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "apps/SampleCad/scDialog.h"
#include "apps/SampleCad/scDialogs.h"
#include "apps/SampleCad/scFrame.h"
#include "apps/SampleCad/scRibbonWidget.h"

namespace {

class RibbonDialog : public scDialog {
public:
  RibbonDialog() : scDialog(IDD_RIBBON, "dialog:ribbon") {}

protected:
  void on_init() override { show_selected(); }

  bool on_command(int id, int code, HWND /*control*/) override {
    if (id == IDC_RIBBON_COMMANDS && code == LBN_SELCHANGE)
      show_selected();
    else if (id == IDC_RIBBON_ADD)
      send(IDC_RIBBON_CHOSEN, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(selected().GetString()));
    else if (id == IDC_RIBBON_REMOVE)  // with nothing selected the list refuses by itself
      send(IDC_RIBBON_CHOSEN, LB_DELETESTRING, static_cast<WPARAM>(send(IDC_RIBBON_CHOSEN, LB_GETCURSEL)));
    else
      return false;
    return true;
  }

private:
  // Asked of the widget's object: inside the program there is no need for its messages.
  const CString& selected() const { return scRibbonWidget::of(item(IDC_RIBBON_COMMANDS)).selected(); }
  void show_selected() { set_text(IDC_COMMENT, "Selected: " + selected()); }
};

}  // namespace

void show_ribbon_dialog() {
  scRibbonWidget::register_widget();
  RibbonDialog().run(main_frame().handle());
}
