// The about dialog, modal.
#include "apps/SampleCad/common_ids.h"
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "apps/SampleCad/scDialog.h"
#include "apps/SampleCad/scDialogs.h"
#include "apps/SampleCad/scFrame.h"

namespace {

class AboutDialog : public scDialog {
public:
  AboutDialog() : scDialog(IDD_ABOUT, "dialog:about") {}

protected:
  void on_init() override { set_text(IDC_LABEL, "SampleCad " SC_VERSION); }
};

}  // namespace

void show_about_dialog() { AboutDialog().run(main_frame().handle()); }
