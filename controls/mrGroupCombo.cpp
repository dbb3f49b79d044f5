#include "controls/mrGroupCombo.h"

#include "host/dlxGroupComboHelpers.h"
#include "host/dlxListHelpers.h"
#include "model/mrRecorder.h"

#include <cstring>

// The class under which group combos are declared; no window has it.
static constexpr char group_combo_class[] = "dlxGroupComboClass";

mrGroupCombo::mrGroupCombo(HWND combo, mrBaseWindowFactory* factory) : mrComboBox(combo, factory) {
  strcpy(m_path[0]->class_name, group_combo_class);
}

mrGroupComboFactory::mrGroupComboFactory() : mrComboBoxFactory("GroupCombo", group_combo_class) {}

mrFactoryType mrGroupComboFactory::get_factory_type() { return factoryGroupCombo; }

// ---- recogniser: host process, GUI thread, inside a hook ------------------------------------------

bool mrGroupComboFactory::is_combo_class(HWND window) const {
  static constexpr char extended_combo[] = "ComboBoxEx32";
  return strncmp(hooked_class_name(window), extended_combo, sizeof extended_combo - 1) == 0 &&
         dlxGroupComboHelpers::check_combo_type(window);
}

// ---- builder: recorder process --------------------------------------------------------------------

// The text of an item between quotes; empty for an item that is not there.
static CString quoted_item(HWND combo, int index) {
  return mrRecorder::quote_string(dlxListHelpers::get_combo_item(combo, index, false));
}

void mrGroupComboFactory::copy_data(void* data) {
  const mrComboBoxRec& rec = *static_cast<const mrComboBoxRec*>(data);
  if (rec.kind != comboSelectionChanged) {
    mrComboBoxFactory::copy_data(data);
    return;
  }
  const int index = static_cast<int>(rec.index);
  const int heading = dlxGroupComboHelpers::get_item_heading(rec.window, index);
  if (heading == index)
    return;  // a heading is no choice
  const CString heading_text = heading == -1 ? CString() : quoted_item(rec.window, heading);
  CString statement;
  statement.Format("SelectItemByName(\"%s\", \"%s\");", heading_text.GetString(),
                   quoted_item(rec.window, index).GetString());
  append_statement<mrGroupCombo>(rec.window, statement);
}
