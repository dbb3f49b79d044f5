// Base of the program's dialogs: modal, modeless and child dialogs made from the resource script.
#pragma once

#include <windows.h>

#include "framework/CString.h"

class scDialog {
public:
  // place: the name under which the dialog is found in the ready file and opened with --dialog.
  scDialog(int template_id, const char* place) : m_template_id(template_id), m_place(place) {}
  virtual ~scDialog() = default;
  scDialog(const scDialog&) = delete;
  scDialog& operator=(const scDialog&) = delete;

  HWND handle() const { return m_window; }
  // Runs the dialog; the result is the id of the button that closed it.
  INT_PTR run(HWND owner);
  // Opens the dialog beside its owner (or inside its parent, for WS_CHILD templates).
  bool open(HWND owner);

  // Gives a message of the queue to the modeless dialog that it belongs to. False when there is none.
  static bool dispatch(MSG& message);

protected:
  virtual void on_init() {}
  // A menu item, button or control; false lets OK and Cancel close the dialog.
  virtual bool on_command(int /*id*/, int /*code*/, HWND /*control*/) { return false; }
  // result: what the notification answers, for those that ask.
  virtual bool on_notify(NMHDR& /*header*/, LRESULT& /*result*/) { return false; }
  virtual bool on_message(UINT /*message*/, WPARAM /*wparam*/, LPARAM /*lparam*/, LRESULT& /*result*/) {
    return false;
  }
  // False: the dialog leaves the questions about itself to its top-level window.
  virtual bool answers_identity() const { return true; }
  // After the last message; a modeless dialog that was made with new deletes itself here.
  virtual void on_gone() {}
  // For dialogs that are open several times: the place of this one, borrowed for the dialog's life.
  void rename_place(const char* place);
  // Closes the dialog, whichever way it was opened.
  void close(INT_PTR result);

  HWND item(int id) const { return GetDlgItem(m_window, id); }
  CString text(int id) const;
  void set_text(int id, const char* text) { SetDlgItemTextA(m_window, id, text); }
  bool checked(int id) const { return IsDlgButtonChecked(m_window, id) == BST_CHECKED; }
  void set_check(int id, bool on) { CheckDlgButton(m_window, id, on ? BST_CHECKED : BST_UNCHECKED); }
  LRESULT send(int id, UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const {
    return SendDlgItemMessageA(m_window, id, message, wparam, lparam);
  }

private:
  static INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  INT_PTR handle_message(UINT message, WPARAM wparam, LPARAM lparam);
  bool handle_command(WPARAM wparam, LPARAM lparam);

  int m_template_id;
  const char* m_place;
  bool m_modal = false;
  HWND m_window = nullptr;
};
