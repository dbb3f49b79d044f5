// Buttons, check boxes, radio buttons and owner-drawn buttons: clicks and changes of check state.
#pragma once

#include "framework/mrApi.h"
#include "hooks/mrHookedMessage.h"
#include "model/mrBaseWindow.h"
#include "model/mrBaseWindowFactory.h"

#include <cstddef>
#include <cstdint>

enum mrButtonRecKind : uint32_t {
  buttonClick = 0,
  buttonCheckState = 1,
};

// What the host uploads; 16 bytes, little-endian.
struct mrButtonRec {
  uint32_t kind;      // mrButtonRecKind
  uint32_t reserved;  // not written, not read
  HWND window;        // the button
};
static_assert(sizeof(mrButtonRec) == 16, "travels between processes");
static_assert(offsetof(mrButtonRec, window) == 8, "travels between processes");

class MR_API mrButton : public mrBaseWindow {
public:
  mrButton(HWND button, mrBaseWindowFactory* factory);
};

class MR_API mrButtonFactory : public mrBaseWindowFactory {
public:
  mrButtonFactory();

  mrFactoryType get_factory_type() override;
  // Ends a watch that was going on.
  void on_start_record() override;
  // Claims every message to a button and BN_CLICKED of one.
  bool handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) override;
  // Reads the check state from the button itself, as it is when the record arrives.
  void copy_data(void* data) override;
  // Buttons are declared with their text: Button("OK", id), CheckBox("Grid", id).
  mrDeclarationRes get_declaration(const mrWindowInfo* info, CString& declaration, CString& search,
                                   CString& identifier) override;
  // Always 0: buttons have no context menu of their own.
  mrContextMenuRes context_menu_invoke(HWND window, const char* class_name, const CPoint& point) override;

private:
  void poll_watched_button();
  bool has_watched_button_changed();
  void end_watch();
  void remember_check_state(HWND button);

  void on_button_message(int kind, const mrHookedMessage& msg);
  bool on_command(int kind, const mrHookedMessage& msg);
  void on_clicked(int kind, HWND button);

  HWND m_tracked_button = nullptr;  // owner-drawn button whose check state is watched; null when none
  LONG_PTR m_last_check_state = 0;  // its last BM_GETCHECK answer
  int32_t m_changed = 0;            // 1: its check state was seen to change
};
