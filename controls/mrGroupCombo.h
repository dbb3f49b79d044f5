// Group combos: extended combo boxes of the host whose items stand in groups, under headings. Choosing an
// item is recorded with the heading above it.
//
// They are recognised like combo boxes, whose recorder would take them too: this one is asked first.
#pragma once

#include "controls/mrComboBox.h"
#include "framework/mrApi.h"

class MR_API mrGroupCombo : public mrComboBox {
public:
  // Gives the control its own class name in the path, since its window class is that of every extended combo
  // box. Raises CInvalidArgException for a null window, which has no path.
  mrGroupCombo(HWND combo, mrBaseWindowFactory* factory);
};

class MR_API mrGroupComboFactory : public mrComboBoxFactory {
public:
  mrGroupComboFactory();

  mrFactoryType get_factory_type() override;
  // Every choice is a statement of its own; a heading is none. Asks the combo box for the heading above the
  // item and for both texts, as they are when the record arrives.
  void copy_data(void* data) override;
  // Asks the host's dialog framework; no message is sent.
  bool is_combo_class(HWND window) const override;
};
