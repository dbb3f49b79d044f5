#include "controls/mrEdit.h"

#include "model/mrRecorder.h"

#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

// The record and its one buffer: filled and sent within one hook call.
mrEditRec record;

// Edits whose text the program is changing at this moment, by WM_SETTEXT or EM_REPLACESEL: their EN_CHANGE is
// not the user's. An edit stands here once for each such call that has not returned. Host process, GUI
// thread. Deliberate: five, and a sixth call at the same time is not noted, its change then counts as the
// user's.
HWND edits_being_set[5];

// Puts an edit into the place that held `old`; a null one is free.
void replace_in_table(HWND old, HWND edit) {
  HWND* const place = std::find(std::begin(edits_being_set), std::end(edits_being_set), old);
  if (place != std::end(edits_being_set))
    *place = edit;
}

bool is_being_set(HWND edit) {
  return std::find(std::begin(edits_being_set), std::end(edits_being_set), edit) != std::end(edits_being_set);
}

bool is_text_set_by_program(UINT message) { return message == WM_SETTEXT || message == EM_REPLACESEL; }

// The edit beside an up-down control; null for none.
HWND buddy_of(HWND up_down) { return reinterpret_cast<HWND>(SendMessageA(up_down, UDM_GETBUDDY, 0, 0)); }

}  // namespace

mrEdit::mrEdit(HWND edit, mrBaseWindowFactory* factory) : mrBaseWindow(edit, factory) {}

mrEditFactory::mrEditFactory() : mrBaseWindowFactory("Edit", "") {}

mrFactoryType mrEditFactory::get_factory_type() { return factoryEdit; }

// ---- recogniser: host process, GUI thread, inside a hook ------------------------------------------

bool mrEditFactory::handle_message(int kind, int /*code*/, unsigned __int64 /*wparam*/, __int64 lparam) {
  mrHookedMessage msg;
  if (!read_hooked_message(kind, lparam, msg))
    return false;
  const bool is_set_text = is_text_set_by_program(msg.message) && is_wrapped_window(msg.window);
  if (kind == hookCallWndProcRet) {
    // By the handle alone: an edit that was destroyed meanwhile has no class any more, and must not stay.
    if (is_text_set_by_program(msg.message))
      replace_in_table(msg.window, nullptr);
    return is_set_text;
  }
  // Only a sent message has a return that can be waited for.
  if (kind == hookCallWndProc && is_set_text) {
    replace_in_table(nullptr, msg.window);
    return true;
  }
  return on_message(msg);
}

bool mrEditFactory::on_message(const mrHookedMessage& msg) {
  if (is_wrapped_window(msg.window))
    return true;
  const HWND control = command_control(msg);
  if (is_wrapped_window(control))
    return on_notification(control, HIWORD(msg.wparam));
  // The arrows of an edit are part of it: a click on them is no action of its own. A command that names a
  // control is judged by that one.
  const HWND up_down = control ? control : msg.window;
  if (strcmp(hooked_class_name(up_down), UPDOWN_CLASSA) == 0 && buddy_of(up_down))
    return true;
  return on_scroll(msg);
}

bool mrEditFactory::on_notification(HWND edit, int code) {
  if (!is_operable(edit))
    return true;
  if (code != EN_CHANGE)
    return false;
  if (!is_being_set(edit))
    send_text_changed(edit);
  return true;
}

// The user let go of an up-down control. It has set its buddy's text itself, which counted as the program's
// doing. Deliberate: not claimed, the end of a scroll may concern other recorders too.
bool mrEditFactory::on_scroll(const mrHookedMessage& msg) {
  if (msg.message != WM_VSCROLL || LOWORD(msg.wparam) != SB_ENDSCROLL || !msg.lparam)
    return false;
  const HWND buddy = buddy_of(reinterpret_cast<HWND>(msg.lparam));
  // A scroll bar of another kind may understand the question differently.
  if (IsWindow(buddy))
    send_text_changed(buddy);
  return false;
}

void mrEditFactory::send_text_changed(HWND edit) {
  record.kind = editTextChanged;
  record.window = edit;
  send_data(sizeof record, &record);
}

// ---- builder: recorder process --------------------------------------------------------------------

void mrEditFactory::copy_data(void* data) {
  const mrEditRec& rec = *static_cast<const mrEditRec*>(data);
  if (rec.kind != editTextChanged)
    return;
  char text[mr_max_text] = "";
  SendMessageA(rec.window, WM_GETTEXT, mr_max_text, reinterpret_cast<LPARAM>(text));
  CString statement;
  statement.Format("Text = \"%s\";", mrRecorder::quote_string(text).GetString());
  // A run of changes in one edit ends as one statement with the final text.
  replace_or_append_statement<mrEdit>(rec.window, statement);
}

mrContextMenuRes mrEditFactory::context_menu_invoke(HWND /*window*/, const char* class_name,
                                                    const CPoint& /*point*/) {
  return is_wrapped_type(class_name) ? contextMenuRefused : contextMenuNotClaimed;
}
