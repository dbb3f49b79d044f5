// The find dialog, modeless: selects the next object whose name holds a text.
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "apps/SampleCad/scDialog.h"
#include "apps/SampleCad/scDialogs.h"
#include "apps/SampleCad/scFrame.h"

#include <windows.h>
#include <shlwapi.h>

namespace {

class FindDialog : public scDialog {
public:
  FindDialog() : scDialog(IDD_FIND, "dialog:find") {}

protected:
  void on_init() override {
    RECT frame = {};
    GetWindowRect(main_frame().handle(), &frame);
    SetWindowPos(handle(), nullptr, frame.left + 500, frame.top + 90, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  }

  bool on_command(int id, int /*code*/, HWND /*control*/) override {
    if (id != IDC_FIND_NEXT)
      return false;
    find_next();
    return true;
  }

private:
  bool matches(const CString& name, const CString& wanted) const {
    return checked(IDC_FIND_CASE) ? name.Find(wanted) >= 0 : StrStrIA(name, wanted) != nullptr;
  }

  void find_next() {
    scDocument* document = main_frame().active_document();
    const CString wanted = text(IDC_FIND_TEXT);
    if (!document || wanted.IsEmpty())
      return;
    // From the object after the one found last, once around.
    const auto& shapes = document->model().shapes();
    for (size_t i = 0; i < shapes.size(); ++i) {
      const size_t index = (m_next + i) % shapes.size();
      if (!matches(shapes[index].name, wanted))
        continue;
      document->view().select({shapes[index].id});
      set_text(IDC_FIND_RESULT, "Found: " + shapes[index].name);
      m_next = index + 1;
      return;
    }
    set_text(IDC_FIND_RESULT, "Nothing found");
  }

  size_t m_next = 0;  // where the next search begins
};

}  // namespace

void show_find_dialog() {
  // One for the program's life; opening it again brings it to the front.
  static FindDialog dialog;
  if (dialog.handle())
    SetForegroundWindow(dialog.handle());
  else
    dialog.open(main_frame().handle());
}
