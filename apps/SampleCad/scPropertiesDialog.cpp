// The document properties, modal: two pages that are child dialogs without caption and without id.
//
// The first page's label is visible, the second page's is hidden: the two ways in which a child dialog that
// has nothing of its own is found by the text inside it.
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "apps/SampleCad/scDialog.h"
#include "apps/SampleCad/scDialogs.h"
#include "apps/SampleCad/scFrame.h"
#include "apps/SampleCad/scIdentity.h"

namespace {

class GeneralPage : public scDialog {
public:
  GeneralPage() : scDialog(IDD_PAGE_GENERAL, "dialog:properties:general") {}

protected:
  void on_init() override {
    set_text(IDC_AUTHOR, "Workshop");
    CheckRadioButton(handle(), IDC_UNITS_MM, IDC_UNITS_INCH, IDC_UNITS_MM);
    // A control that the host names: scripts find it by this name whatever its id.
    set_window_name(item(IDC_LOCKED), "DocumentLocked");
  }
};

class NotesPage : public scDialog {
public:
  NotesPage() : scDialog(IDD_PAGE_NOTES, "dialog:properties:notes") {}

protected:
  void on_init() override { set_text(IDC_NOTES, "First line\r\nSecond line"); }

  bool on_command(int id, int /*code*/, HWND /*control*/) override {
    if (id == IDC_CLEAR_NOTES)
      set_text(IDC_NOTES, "");
    return id == IDC_CLEAR_NOTES;
  }
};

class PropertiesDialog : public scDialog {
public:
  PropertiesDialog() : scDialog(IDD_PROPERTIES, "dialog:properties") {}

protected:
  void on_init() override {
    RECT frame = {};
    GetWindowRect(item(IDC_PAGE_FRAME), &frame);
    MapWindowPoints(nullptr, handle(), reinterpret_cast<POINT*>(&frame), 2);
    int top = frame.top + 12;
    for (scDialog* page : {static_cast<scDialog*>(&m_general), static_cast<scDialog*>(&m_notes)}) {
      page->open(handle());
      RECT size = {};
      GetWindowRect(page->handle(), &size);
      SetWindowPos(page->handle(), HWND_TOP, frame.left + 6, top, 0, 0, SWP_NOSIZE);
      top += size.bottom - size.top + 4;
    }
  }

private:
  GeneralPage m_general;
  NotesPage m_notes;
};

}  // namespace

void show_properties_dialog() { PropertiesDialog().run(main_frame().handle()); }
