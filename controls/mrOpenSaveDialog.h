// Standard file dialogs: the file that was chosen, or that none was. Reported once, when the dialog is
// destroyed.
#pragma once

#include "framework/mrApi.h"
#include "hooks/mrHookedMessage.h"
#include "model/mrBaseWindowFactory.h"

#include <cstddef>
#include <cstdint>

enum mrOpenSaveRecType : uint32_t {
  openSaveFile = 0,
  openSaveClosed = 1,
};

// What the host uploads; 24 bytes, little-endian.
struct mrOpenSaveDialogRec {
  uint32_t type;  // mrOpenSaveRecType
  uint32_t padding_4;
  HWND dialog;
  ATOM atom;  // file: a global atom whose name is the full path; the recorder deletes it
  uint16_t padding_18[3];
};
static_assert(sizeof(mrOpenSaveDialogRec) == 24, "travels between processes");
static_assert(offsetof(mrOpenSaveDialogRec, dialog) == 8 && offsetof(mrOpenSaveDialogRec, atom) == 16,
              "travels between processes");

// The controls of one file dialog, null where there is none.
struct mrOpenSaveHandlers {
  HWND dialog;
  HWND file_edit;     // "Edit" 1001 or 1148
  HWND type_combo;    // "ComboBox" 1136
  HWND shell_view;    // "SHELLDLL_DefView" 1121
  HWND path_toolbar;  // "ToolbarWindow32" 1001: the address bar
};

class MR_API mrOpenSaveDialog : public mrBaseWindow {
public:
  // The dialog's own level is declared as a file dialog. Raises CInvalidArgException for a null window,
  // which has no path.
  mrOpenSaveDialog(HWND dialog, mrBaseWindowFactory* factory);
};

class MR_API mrOpenSaveDialogFactory : public mrBaseWindowFactory {
public:
  mrOpenSaveDialogFactory();

  mrFactoryType get_factory_type() override;
  // Claims every message to a file dialog and the windows in it, returned ones too. Reads the path when the
  // file name is edited, the focus is lost or OK comes; uploads when the pending dialog is destroyed.
  bool handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) override;
  // A chosen file is a statement of its own; its atom is deleted. A closed dialog is one unless the last
  // action is on the same dialog, which is still there to be asked for the action's path.
  void copy_data(void* data) override;
  // Declares a file dialog as OpenSaveDialog(), directly under the top-level window.
  mrDeclarationRes get_declaration(const mrWindowInfo* info, CString& declaration, CString& search,
                                   CString& identifier) override;
  // Always 0: file dialogs have no context menu action of their own.
  mrContextMenuRes context_menu_invoke(HWND window, const char* name, const CPoint& point) override;

  // Finds the file dialog that a window belongs to and its controls; true when it has a file name edit and a
  // shell view. Host process.
  bool is_open_save_dialog_message(HWND window, mrOpenSaveHandlers& handlers);
  // Composes the path from the folder shown and the name typed; the dialog becomes the pending one. Host
  // process.
  void set_last_path(const mrOpenSaveHandlers& handlers);

private:
  bool belongs_to_file_dialog(const mrHookedMessage& msg, mrOpenSaveHandlers& handlers);
  void report();
  void on_dialog_message(const mrHookedMessage& msg, const mrOpenSaveHandlers& handlers);

  static constexpr int max_path_text = 1040;

  char m_last_path[max_path_text] = "";  // composed so far
  int m_closed = 0;                      // 1 once the user cancelled or closed the dialog
  HWND m_pending_dialog = nullptr;       // whose outcome is still to be reported
};
