// Combo boxes: choosing an item.
#pragma once

#include "framework/mrApi.h"
#include "hooks/mrHookedMessage.h"
#include "model/mrBaseWindow.h"
#include "model/mrBaseWindowFactory.h"

#include <cstddef>
#include <cstdint>

enum mrComboBoxRecKind : uint32_t {
  comboSelectionChanged = 0,
};

// What the host uploads, for group combos too; 24 bytes, little-endian.
struct mrComboBoxRec {
  uint32_t kind;      // mrComboBoxRecKind
  uint32_t reserved;  // not written, not read
  HWND window;        // the combo box
  int64_t index;      // of the selected item, -1 for none; the recorder uses the low 32 bits, signed
};
static_assert(sizeof(mrComboBoxRec) == 24, "travels between processes");
static_assert(offsetof(mrComboBoxRec, window) == 8 && offsetof(mrComboBoxRec, index) == 16,
              "travels between processes");

class MR_API mrComboBox : public mrBaseWindow {
public:
  mrComboBox(HWND combo, mrBaseWindowFactory* factory);
};

class MR_API mrComboBoxFactory : public mrBaseWindowFactory {
public:
  mrComboBoxFactory();
  // For recorders of other combo boxes; the names are those of the base.
  mrComboBoxFactory(const char* script_name, const char* class_name);

  mrFactoryType get_factory_type() override;
  // Claims every message to a combo box, every notification of one that is hidden or disabled, and
  // CBN_SELCHANGE.
  bool handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) override;
  // Every change of selection is a statement of its own, the same item twice too.
  void copy_data(void* data) override;
  // Always 0: combo boxes have no context menu of their own.
  mrContextMenuRes context_menu_invoke(HWND window, const char* class_name, const CPoint& point) override;

  // Slot 9. Whether messages of this window are this recorder's. Host process, inside a hook.
  virtual bool is_combo_class(HWND window) const;

private:
  bool on_message(const mrHookedMessage& msg);
};
