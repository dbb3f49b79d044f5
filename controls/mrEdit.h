// Edit controls: the text that the user leaves in them, typed or set with their up-down control.
#pragma once

#include "framework/mrApi.h"
#include "hooks/mrHookedMessage.h"
#include "model/mrBaseWindow.h"
#include "model/mrBaseWindowFactory.h"

#include <cstddef>
#include <cstdint>

enum mrEditRecKind : uint32_t {
  editTextChanged = 0,
};

// What the host uploads; 16 bytes, little-endian.
struct mrEditRec {
  uint32_t kind;      // mrEditRecKind
  uint32_t reserved;  // not written, not read
  HWND window;        // the edit
};
static_assert(sizeof(mrEditRec) == 16, "travels between processes");
static_assert(offsetof(mrEditRec, window) == 8, "travels between processes");

class MR_API mrEdit : public mrBaseWindow {
public:
  mrEdit(HWND edit, mrBaseWindowFactory* factory);
};

class MR_API mrEditFactory : public mrBaseWindowFactory {
public:
  mrEditFactory();

  mrFactoryType get_factory_type() override;
  // Claims every message to an edit, the EN_CHANGE of one and whatever a hidden or disabled one tells, and
  // what an up-down control with a buddy receives; the end of a spin is uploaded and left to the others.
  bool handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) override;
  // Reads the text from the edit itself, as it is when the record arrives: at most 259 characters.
  void copy_data(void* data) override;
  // 2 for an edit: what is chosen from its own context menu comes as a change of its text.
  mrContextMenuRes context_menu_invoke(HWND window, const char* class_name, const CPoint& point) override;

private:
  bool on_message(const mrHookedMessage& msg);
  bool on_notification(HWND edit, int code);
  bool on_scroll(const mrHookedMessage& msg);
  void send_text_changed(HWND edit);
};
