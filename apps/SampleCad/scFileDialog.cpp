// The program's own open and save dialogs, and the system's.
//
// Their controls are those of the system's newer file dialogs: a box for the file name whose edit has the id
// 1001, a box for the type (1136), the list of files (1121, class "SHELLDLL_DefView") and a toolbar (1001)
// whose text is "Address: " and the folder.
#include "apps/SampleCad/common_ids.h"
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "apps/SampleCad/scDialog.h"
#include "apps/SampleCad/scDialogs.h"
#include "apps/SampleCad/scFolderView.h"
#include "apps/SampleCad/scFrame.h"

#include <windows.h>
#include <commctrl.h>
#include <commdlg.h>
#include <shlwapi.h>

namespace {

// The system's number; it has no name among the ids.
constexpr int address_bar_id = 1001;
constexpr char model_ending[] = ".scm";

// The folder shown last, by all file dialogs; at first the current one.
CString& last_folder() {
  static CString folder = [] {
    char path[MAX_PATH] = "";
    GetCurrentDirectoryA(sizeof(path), path);
    return CString(path);
  }();
  return folder;
}

// The path functions take 259 characters; longer names cannot be combined and are refused by accept.
bool is_folder(const CString& path) { return PathIsDirectoryA(path); }
bool is_file(const CString& path) { return PathFileExistsA(path) && !is_folder(path); }

class FileDialog : public scDialog {
public:
  explicit FileDialog(bool saving)
      : scDialog(IDD_FILE, saving ? "dialog:save" : "dialog:open"), m_saving(saving),
        m_folder(last_folder()) {}

  // The chosen file.
  const CString& path() const { return m_path; }

protected:
  void on_init() override {
    SetWindowTextA(handle(), m_saving ? "Save as" : "Open");
    set_text(IDOK, m_saving ? "&Save" : "&Open");
    // The first type shows models only, the second everything.
    for (const char* type : {"Models (*.scm)", "All files"})
      send(IDC_FILE_TYPE, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(type));
    send(IDC_FILE_TYPE, CB_SETCURSEL, 0);
    add_up_button();
    show_folder();
    SetFocus(item(IDC_FILE_NAME));
  }

  bool on_command(int id, int code, HWND /*control*/) override {
    switch (id) {
    case IDM_FILE_UP:
      enter("..");
      return true;
    case IDC_FILE_TYPE:
      if (code == CBN_SELCHANGE)
        show_folder();
      return true;
    case IDC_FILE_VIEW:
      on_view(code);
      return true;
    case IDOK:
      return !accept();
    default:
      return false;
    }
  }

private:
  scFolderView& view() const { return scFolderView::of(item(IDC_FILE_VIEW)); }
  HWND address_bar() const { return item(address_bar_id); }

  void add_up_button() {
    const HWND bar = address_bar();
    TBBUTTON button = {};
    button.iBitmap = I_IMAGENONE;
    button.idCommand = IDM_FILE_UP;
    button.fsState = TBSTATE_ENABLED;
    button.fsStyle = BTNS_BUTTON | BTNS_AUTOSIZE;
    button.iString = reinterpret_cast<INT_PTR>("Up");
    SendMessageA(bar, TB_BUTTONSTRUCTSIZE, sizeof(button), 0);
    SendMessageA(bar, TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&button));
  }

  // The toolbar's text is what recorders read the folder from; the label is what the user reads.
  void show_folder() {
    SetWindowTextA(address_bar(), "Address: " + m_folder);
    set_text(IDC_COMMENT, m_folder);
    view().show(m_folder, send(IDC_FILE_TYPE, CB_GETCURSEL) == 0 ? model_ending : "");
    set_text(IDC_FILE_MESSAGE, "");
  }

  CString full_path(const CString& name) const {
    char combined[MAX_PATH] = "";
    return PathCombineA(combined, m_folder, name) ? CString(combined) : CString();
  }

  // Goes into a folder; names that are none are ignored.
  void enter(const CString& name) {
    const CString folder = full_path(name);
    if (!is_folder(folder))
      return;
    m_folder = folder;
    show_folder();
  }

  void on_view(int code) {
    const CString name = view().selected();
    const bool folder = view().selected_is_folder();
    if (code == LBN_SELCHANGE && !folder)
      set_text(IDC_FILE_NAME, name);
    else if (code == LBN_DBLCLK && folder)
      enter(name);
    else if (code == LBN_DBLCLK)
      // As if the button had been pressed, wParam exactly IDOK.
      SendMessageA(handle(), WM_COMMAND, IDOK, reinterpret_cast<LPARAM>(item(IDOK)));
  }

  // False keeps the dialog open and says why.
  bool accept() {
    CString path = full_path(text(IDC_FILE_NAME));
    if (text(IDC_FILE_NAME).IsEmpty() || path.IsEmpty()) {
      set_text(IDC_FILE_MESSAGE, "Which file?");
      return false;
    }
    // A folder typed as file name is opened, as file dialogs do.
    if (is_folder(path)) {
      enter(path);
      set_text(IDC_FILE_NAME, "");
      return false;
    }
    // An existing file is replaced without a question: nothing here is precious.
    if (m_saving && !*PathFindExtensionA(path))
      path += model_ending;
    if (!m_saving && !is_file(path)) {
      set_text(IDC_FILE_MESSAGE, "There is no such file.");
      return false;
    }
    m_path = path;
    last_folder() = m_folder;
    return true;
  }

  bool m_saving;
  CString m_folder;
  CString m_path;
};

// Both give the full path of the file, "" when the user has cancelled.
CString ask_in_own_dialog(bool saving) {
  scFolderView::register_view();
  FileDialog dialog(saving);
  return dialog.run(main_frame().handle()) == IDOK ? dialog.path() : CString();
}

CString ask_in_system_dialog(bool saving) {
  char path[MAX_PATH] = "";
  OPENFILENAMEA asked = {};
  asked.lStructSize = sizeof(asked);
  asked.hwndOwner = main_frame().handle();
  asked.lpstrFilter = "Models (*.scm)\0*.scm\0All files\0*.*\0";
  asked.lpstrFile = path;
  asked.nMaxFile = sizeof(path);
  asked.lpstrDefExt = model_ending + 1;
  asked.lpstrInitialDir = last_folder();
  // The current directory stays: recorders read a folder from it when there is no address bar.
  asked.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  const BOOL chosen = saving ? GetSaveFileNameA(&asked) : GetOpenFileNameA(&asked);
  return chosen ? CString(path) : CString();
}

// A model opens in a document of its own.
void open_model(const CString& path) {
  if (path.IsEmpty())
    return;
  scDocument* document = main_frame().new_document();
  if (!document)
    return;
  if (document->load(path)) {
    main_frame().prompt("Opened " + path);
    return;
  }
  SendMessageA(document->handle(), WM_CLOSE, 0, 0);
  main_frame().prompt("Not a model that can be read: " + path);
}

void save_model(const CString& path) {
  scDocument* document = main_frame().active_document();
  if (path.IsEmpty() || !document)
    return;
  main_frame().prompt((document->save(path) ? "Saved " : "Could not be written: ") + path);
}

}  // namespace

void show_open_dialog() { open_model(ask_in_own_dialog(false)); }
void show_save_as_dialog() { save_model(ask_in_own_dialog(true)); }
void show_system_open_dialog() { open_model(ask_in_system_dialog(false)); }
void show_system_save_dialog() { save_model(ask_in_system_dialog(true)); }

void save_document() {
  const scDocument* document = main_frame().active_document();
  if (!document)
    return;
  if (document->path().IsEmpty())
    show_save_as_dialog();
  else
    save_model(CString(document->path()));
}
