// Base of the program's dialogs; see the header.
#include "apps/SampleCad/scDialog.h"

#include "apps/SampleCad/samplecad.dev/resource.h"
#include "apps/SampleCad/scIdentity.h"
#include "apps/SampleCad/scReadyFile.h"

#include <algorithm>
#include <vector>

namespace {

// Windows of the open modeless dialogs: their keyboard messages need IsDialogMessage.
std::vector<HWND>& modeless_dialogs() {
  static std::vector<HWND> windows;
  return windows;
}

// The messages whose answer a dialog procedure returns itself; every other answer goes through
// DWLP_MSGRESULT.
bool answers_directly(UINT message) {
  return (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC) || message == WM_COMPAREITEM ||
         message == WM_VKEYTOITEM || message == WM_CHARTOITEM;
}

}  // namespace

INT_PTR scDialog::run(HWND owner) {
  m_modal = true;
  return DialogBoxParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(m_template_id), owner, procedure,
                         reinterpret_cast<LPARAM>(this));
}

bool scDialog::open(HWND owner) {
  m_modal = false;
  const HWND window = CreateDialogParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(m_template_id), owner,
                                         procedure, reinterpret_cast<LPARAM>(this));
  if (!window)
    return false;
  if (!(GetWindowLongPtrA(window, GWL_STYLE) & WS_CHILD)) {
    modeless_dialogs().push_back(window);
    const HICON icon = LoadIconA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDR_MAIN_ICON));
    SendMessageA(window, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(icon));
  }
  ShowWindow(window, SW_SHOW);
  return true;
}

bool scDialog::dispatch(MSG& message) {
  // A copy, because the message may open or close dialogs.
  const std::vector<HWND> windows = modeless_dialogs();
  for (const HWND window : windows)
    if (IsDialogMessageA(window, &message))
      return true;
  return false;
}

void scDialog::close(INT_PTR result) {
  if (m_modal)
    EndDialog(m_window, result);
  else
    DestroyWindow(m_window);
}

void scDialog::rename_place(const char* place) {
  m_place = place;
  name_place(m_window, place);
}

CString scDialog::text(int id) const {
  const HWND control = item(id);
  std::string buffer(static_cast<size_t>(GetWindowTextLengthA(control)) + 1, '\0');
  GetWindowTextA(control, &buffer[0], static_cast<int>(buffer.size()));
  return CString(buffer.c_str());
}

INT_PTR CALLBACK scDialog::procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* self = reinterpret_cast<scDialog*>(GetWindowLongPtrA(window, DWLP_USER));
  if (message == WM_INITDIALOG) {
    self = reinterpret_cast<scDialog*>(lparam);
    self->m_window = window;
    SetWindowLongPtrA(window, DWLP_USER, lparam);
    name_place(window, self->m_place);
    self->on_init();
    // TRUE lets the system put the focus on the first control; not when the dialog has chosen one itself.
    return !IsChild(window, GetFocus());
  }
  if (!self)
    return FALSE;
  const INT_PTR handled = self->handle_message(message, wparam, lparam);
  if (message == WM_NCDESTROY) {
    auto& windows = modeless_dialogs();
    windows.erase(std::remove(windows.begin(), windows.end(), window), windows.end());
    SetWindowLongPtrA(window, DWLP_USER, 0);
    self->m_window = nullptr;
    self->on_gone();
  }
  return handled;
}

INT_PTR scDialog::handle_message(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_ENTERIDLE)
    update_ready_file();  // a context menu of this dialog, or a dialog above it, waits for input
  LRESULT result = 0;
  bool handled = (answers_identity() && answer_dialog_identity(message, m_template_id, result)) ||
                 answer_identity(message, lparam, result) || on_message(message, wparam, lparam, result);
  if (!handled && message == WM_NOTIFY)
    handled = on_notify(*reinterpret_cast<NMHDR*>(lparam), result);
  if (!handled && message == WM_COMMAND)
    handled = handle_command(wparam, lparam);
  if (handled && answers_directly(message))
    return result;
  if (handled)
    SetWindowLongPtrA(m_window, DWLP_MSGRESULT, result);
  return handled;
}

bool scDialog::handle_command(WPARAM wparam, LPARAM lparam) {
  const int id = LOWORD(wparam);
  if (on_command(id, HIWORD(wparam), reinterpret_cast<HWND>(lparam)))
    return true;
  const bool is_child = GetWindowLongPtrA(m_window, GWL_STYLE) & WS_CHILD;
  if ((id != IDOK && id != IDCANCEL) || is_child)
    return false;
  close(id);
  return true;
}
