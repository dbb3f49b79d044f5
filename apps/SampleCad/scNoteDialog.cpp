// The annotation dialog, modeless, from one template as often as the user likes.
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "apps/SampleCad/scDialog.h"
#include "apps/SampleCad/scDialogs.h"
#include "apps/SampleCad/scFrame.h"

namespace {

class NoteDialog : public scDialog {
public:
  explicit NoteDialog(int number) : scDialog(IDD_NOTE, ""), m_number(number) { s_open |= 1u << number; }
  ~NoteDialog() override { s_open &= ~(1u << m_number); }

  // Smallest number that no open dialog has; 0 when there are too many.
  static int free_number() {
    for (int number = 1; number < max_open; ++number)
      if (!(s_open & 1u << number))
        return number;
    return 0;
  }

protected:
  void on_init() override {
    m_place.Format("dialog:note:%d", m_number);
    rename_place(m_place);
    CString title;
    title.Format("Annotation %d", m_number);
    SetWindowTextA(handle(), title);
    // Beside each other, so that all of them can be used.
    RECT frame = {};
    GetWindowRect(main_frame().handle(), &frame);
    SetWindowPos(handle(), nullptr, frame.left + 120 + m_number * 40, frame.top + m_number * 130, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER);
  }

  bool on_command(int id, int /*code*/, HWND /*control*/) override {
    if (id != IDC_NOTE_APPLY)
      return false;
    main_frame().prompt("Annotation: " + text(IDC_NOTE_TEXT));
    return true;
  }

  void on_gone() override { delete this; }

private:
  static constexpr int max_open = 6;
  static unsigned s_open;  // bit n: number n is taken

  int m_number;
  CString m_place;
};

unsigned NoteDialog::s_open = 0;

}  // namespace

void show_note_dialog() {
  const int number = NoteDialog::free_number();
  if (!number) {
    main_frame().prompt("Close an annotation first");
    return;
  }
  auto* dialog = new NoteDialog(number);
  if (!dialog->open(main_frame().handle()))
    delete dialog;
}
