#include "controls/mrComboBox.h"

#include "host/dlxListHelpers.h"
#include "model/mrRecorder.h"

#include <cstring>

// The record and its one buffer: filled and sent within one hook call.
static mrComboBoxRec record;

mrComboBox::mrComboBox(HWND combo, mrBaseWindowFactory* factory) : mrBaseWindow(combo, factory) {}

mrComboBoxFactory::mrComboBoxFactory() : mrComboBoxFactory("ComboBox", "") {}

mrComboBoxFactory::mrComboBoxFactory(const char* script_name, const char* class_name)
    : mrBaseWindowFactory(script_name, class_name) {}

mrFactoryType mrComboBoxFactory::get_factory_type() { return factoryComboBox; }

// ---- recogniser: host process, GUI thread, inside a hook ------------------------------------------

bool mrComboBoxFactory::is_combo_class(HWND window) const {
  // The list that drops down is a window of its own, outside the combo box.
  return window && (is_wrapped_window(window) || strcmp(hooked_class_name(window), "ComboLBox") == 0);
}

bool mrComboBoxFactory::handle_message(int kind, int /*code*/, unsigned __int64 /*wparam*/, __int64 lparam) {
  mrHookedMessage msg;
  if (kind == hookCallWndProcRet || !read_hooked_message(kind, lparam, msg))
    return false;
  return is_combo_class(msg.window) || on_message(msg);
}

bool mrComboBoxFactory::on_message(const mrHookedMessage& msg) {
  const HWND combo = command_control(msg);
  if (!combo || !is_combo_class(combo))
    return false;
  if (!is_operable(combo))
    return true;
  if (HIWORD(msg.wparam) != CBN_SELCHANGE)
    return false;
  record.kind = comboSelectionChanged;
  record.window = combo;
  record.index = SendMessageA(combo, CB_GETCURSEL, 0, 0);
  send_data(sizeof record, &record);
  return true;
}

// ---- builder: recorder process --------------------------------------------------------------------

void mrComboBoxFactory::copy_data(void* data) {
  const mrComboBoxRec& rec = *static_cast<const mrComboBoxRec*>(data);
  if (rec.kind != comboSelectionChanged)
    return;
  const int index = static_cast<int>(rec.index);
  const CString text = dlxListHelpers::get_combo_item(rec.window, index, false);
  CString statement;
  if (text.IsEmpty())
    statement.Format("SelectItem(%d);", index);
  else
    statement.Format("SelectItemByName(\"%s\");", mrRecorder::quote_string(text).GetString());
  append_statement<mrComboBox>(rec.window, statement);
}

mrContextMenuRes mrComboBoxFactory::context_menu_invoke(HWND /*window*/, const char* /*class_name*/,
                                                        const CPoint& /*point*/) {
  return contextMenuNotClaimed;
}
