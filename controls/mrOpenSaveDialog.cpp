#include "controls/mrOpenSaveDialog.h"

#include "hooks/mrIdentity.h"
#include "model/mrRecorder.h"

#include <windows.h>
#include <shlwapi.h>

#include <cstring>

namespace {

constexpr const char* dialog_class = "mrOpenSaveDialogClass";

// Notification of the file name box, a combo box: its text has changed.
constexpr WORD file_name_changed = CBN_EDITCHANGE;

// The record's one buffer: filled and sent within one hook call.
mrOpenSaveDialogRec record;

}  // namespace

mrOpenSaveDialog::mrOpenSaveDialog(HWND dialog, mrBaseWindowFactory* factory)
    : mrBaseWindow(dialog, factory) {
  strcpy(m_path[0]->class_name, dialog_class);
}

mrOpenSaveDialogFactory::mrOpenSaveDialogFactory() : mrBaseWindowFactory("OpenSaveDialog", dialog_class) {}

mrFactoryType mrOpenSaveDialogFactory::get_factory_type() { return factoryOpenSaveDialog; }

// ---- finding the dialog: host process -------------------------------------------------------------

namespace {

HWND modal_ancestor(HWND window) {
  // The window itself counts: an edit has the same style bit for another purpose, and the climb ends there.
  while (window && !(GetWindowLongPtrA(window, GWL_STYLE) & DS_MODALFRAME))
    window = GetParent(window);
  return window;
}

bool is_class(HWND window, const char* class_name) {
  char name[mr_max_text] = "";
  GetClassNameA(window, name, mr_max_text);
  return strcmp(name, class_name) == 0;
}

BOOL CALLBACK take_handler(HWND child, LPARAM handlers_address) {
  mrOpenSaveHandlers& found = *reinterpret_cast<mrOpenSaveHandlers*>(handlers_address);
  // The ids first: of the hundreds of windows in a file dialog few have one of these.
  switch (GetWindowLongPtrA(child, GWLP_ID)) {
  case 1001:
    if (is_class(child, "Edit"))
      found.file_edit = child;
    else if (is_class(child, "ToolbarWindow32"))
      found.path_toolbar = child;
    break;
  case 1148:
    if (is_class(child, "Edit"))
      found.file_edit = child;
    break;
  case 1136:
    if (is_class(child, "ComboBox"))
      found.type_combo = child;
    break;
  case 1121:
    if (is_class(child, "SHELLDLL_DefView"))
      found.shell_view = child;
    break;
  }
  return !(found.file_edit && found.type_combo && found.shell_view && found.path_toolbar);
}

}  // namespace

bool mrOpenSaveDialogFactory::is_open_save_dialog_message(HWND window, mrOpenSaveHandlers& handlers) {
  handlers = {};
  handlers.dialog = modal_ancestor(window);
  if (!handlers.dialog)
    return false;
  EnumChildWindows(handlers.dialog, take_handler, reinterpret_cast<LPARAM>(&handlers));
  return handlers.file_edit && handlers.shell_view;
}

// A dialog's controls do not change while messages flood past it, no window comes or goes and the recording
// is the same.
bool mrOpenSaveDialogFactory::belongs_to_file_dialog(const mrHookedMessage& msg,
                                                     mrOpenSaveHandlers& handlers) {
  static struct {
    unsigned generation;
    HWND dialog;
    mrOpenSaveHandlers handlers;
  } known = {};
  if (shortcuts_enabled() && is_flood_message(msg.message)) {
    const HWND dialog = modal_ancestor(msg.window);
    if (!dialog)
      return false;
    if (known.dialog != dialog || known.generation != window_generation()) {
      is_open_save_dialog_message(dialog, known.handlers);
      known.dialog = dialog;
      known.generation = window_generation();
    }
    handlers = known.handlers;
    return handlers.file_edit && handlers.shell_view;
  }
  return is_open_save_dialog_message(msg.window, handlers);
}

// ---- recogniser: host process, GUI thread, inside a hook ------------------------------------------

bool mrOpenSaveDialogFactory::handle_message(int kind, int /*code*/, WPARAM /*wparam*/, LPARAM lparam) {
  mrHookedMessage msg;
  if (!read_hooked_message(kind, lparam, msg))
    return false;
  if (kind == hookCallWndProc && msg.message == WM_DESTROY && msg.window == m_pending_dialog)
    report();
  mrOpenSaveHandlers handlers;
  if (!belongs_to_file_dialog(msg, handlers))
    return false;
  if (kind != hookCallWndProcRet && msg.window == handlers.dialog)
    on_dialog_message(msg, handlers);
  return true;
}

void mrOpenSaveDialogFactory::report() {
  record.dialog = m_pending_dialog;
  record.type = m_closed ? openSaveClosed : openSaveFile;
  if (!m_closed)
    record.atom = GlobalAddAtomA(m_last_path);  // 0 for a path longer than an atom's name
  send_data(sizeof record, &record);
  m_pending_dialog = nullptr;
  m_closed = 0;
}

void mrOpenSaveDialogFactory::on_dialog_message(const mrHookedMessage& msg,
                                                const mrOpenSaveHandlers& handlers) {
  // A dialog that is being destroyed has been reported: it must not wait for another report.
  if (msg.message == WM_DESTROY)
    return;
  m_pending_dialog = handlers.dialog;
  switch (msg.message) {
  case WM_KILLFOCUS:
    set_last_path(handlers);
    break;
  case WM_COMMAND:
    if (msg.wparam == IDOK) {
      set_last_path(handlers);
      m_closed = 0;
    } else if (msg.wparam == IDCANCEL) {
      m_closed = 1;
    } else if (HIWORD(msg.wparam) == file_name_changed) {
      set_last_path(handlers);
    }
    break;
  case WM_SYSCOMMAND:
    if (msg.wparam == SC_CLOSE)
      m_closed = 1;
    break;
  }
}

void mrOpenSaveDialogFactory::set_last_path(const mrOpenSaveHandlers& handlers) {
  char folder[max_path_text] = "";
  if (handlers.path_toolbar) {
    // "Address: C:\models", whatever the word is in the user's language.
    GetWindowTextA(handlers.path_toolbar, folder, max_path_text);
    if (const char* separator = strstr(folder, ": "))
      memmove(folder, separator + 2, strlen(separator + 2) + 1);
  } else {
    GetCurrentDirectoryA(max_path_text, folder);
  }
  char file[max_path_text] = "";
  GetWindowTextA(handlers.file_edit, file, max_path_text);
  if (!PathCombineA(m_last_path, folder, file))
    m_last_path[0] = '\0';
  m_pending_dialog = handlers.dialog;
}

// ---- builder: recorder process --------------------------------------------------------------------

namespace {

CString take_atom(ATOM atom) {
  char text[mr_max_text] = "";
  GlobalGetAtomNameA(atom, text, mr_max_text);
  GlobalDeleteAtom(atom);
  return text;
}

CString escape_path(const CString& path) {
  CString escaped;
  for (const char ch : path.str()) {
    if (ch == '\\' || ch == '"')
      escaped += '\\';
    escaped += ch;
  }
  return escaped;
}

}  // namespace

void mrOpenSaveDialogFactory::copy_data(void* data) {
  const mrOpenSaveDialogRec& rec = *static_cast<const mrOpenSaveDialogRec*>(data);
  switch (rec.type) {
  case openSaveFile: {
    const CString path = take_atom(rec.atom);  // first: the atom goes whatever becomes of the action
    append_statement<mrOpenSaveDialog>(rec.dialog, "File(\"" + escape_path(path) + "\");");
    break;
  }
  case openSaveClosed:
    // A close after a chosen file is no cancelling.
    if (!last_action_on<mrOpenSaveDialog>(rec.dialog))
      append_statement<mrOpenSaveDialog>(rec.dialog, "Close();");
    break;
  }
}

mrContextMenuRes mrOpenSaveDialogFactory::context_menu_invoke(HWND /*window*/, const char* /*name*/,
                                                              const CPoint& /*point*/) {
  return contextMenuNotClaimed;
}

// ---- declaration: recorder process ----------------------------------------------------------------

mrDeclarationRes mrOpenSaveDialogFactory::get_declaration(const mrWindowInfo* info, CString& declaration,
                                                          CString& search, CString& identifier) {
  if (strcmp(info->class_name, dialog_class) != 0)
    return declaredNot;
  declaration = search = "OpenSaveDialog()";
  identifier = "OpenSaveDialog";
  // Script assembly goes on directly with the top-level window, as for an active dialog.
  return declaredActiveDialog;
}
