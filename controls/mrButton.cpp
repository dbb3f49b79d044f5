#include "controls/mrButton.h"

#include "model/mrRecorder.h"
#include "script/mrDeclarations.h"

namespace {

// A notification of the parent and a change of an owner-drawn button's state that come within this time after
// a click belong to it.
constexpr unsigned long button_watch_ms = 100;

// The record and its one buffer: filled and sent within one hook call.
mrButtonRec record;

// The kind of button, one of the BS_ numbers.
LONG_PTR button_type(LONG_PTR style) { return style & BS_TYPEMASK; }
LONG_PTR button_type(HWND button) { return button_type(GetWindowLongPtrA(button, GWL_STYLE)); }

LONG_PTR check_state(HWND button) { return SendMessageA(button, BM_GETCHECK, 0, 0); }

bool is_three_state(LONG_PTR type) { return type == BS_3STATE || type == BS_AUTO3STATE; }

// Deliberate: radio buttons are not among them, choosing one is recorded as a click.
bool is_check_box(LONG_PTR type) {
  return type == BS_CHECKBOX || type == BS_AUTOCHECKBOX || is_three_state(type);
}

}  // namespace

mrButton::mrButton(HWND button, mrBaseWindowFactory* factory) : mrBaseWindow(button, factory) {}

mrButtonFactory::mrButtonFactory() : mrBaseWindowFactory("Button", "") { set_timeout(button_watch_ms); }

mrFactoryType mrButtonFactory::get_factory_type() { return factoryButton; }

void mrButtonFactory::on_start_record() { end_watch(); }

// ---- recogniser: host process, GUI thread, inside a hook ------------------------------------------

bool mrButtonFactory::handle_message(int kind, int /*code*/, unsigned __int64 /*wparam*/, __int64 lparam) {
  mrHookedMessage msg;
  if (!read_hooked_message(kind, lparam, msg))
    return false;
  // First, whatever the message is: a watch lives on the traffic that follows the click.
  poll_watched_button();
  if (is_wrapped_window(msg.window)) {
    on_button_message(kind, msg);
    return true;
  }
  return on_command(kind, msg);
}

// The host changes the state of an owner-drawn button somewhere in its handling of the click; the button
// itself tells nobody.
void mrButtonFactory::poll_watched_button() {
  if (!is_timer_set())
    return;
  const bool is_over = is_timeout();
  if (!is_over && !has_watched_button_changed())
    return;
  if (!is_over) {
    record.kind = buttonCheckState;
    record.window = m_tracked_button;
    send_data(sizeof record, &record);
  }
  end_watch();
}

bool mrButtonFactory::has_watched_button_changed() {
  // Nothing to ask when only a plain button was clicked. Deliberate: one that was destroyed while nobody
  // watched has no state either; a record of it would be a statement on a window that nobody finds again.
  if (!IsWindow(m_tracked_button))
    return false;
  const LONG_PTR state = check_state(m_tracked_button);
  if (state != m_last_check_state)
    m_changed = 1;
  m_last_check_state = state;
  return m_changed != 0;
}

void mrButtonFactory::end_watch() {
  m_tracked_button = nullptr;
  m_last_check_state = 0;
  m_changed = 0;
  stop_timer();
}

void mrButtonFactory::on_button_message(int kind, const mrHookedMessage& msg) {
  // The user's letters and arrow keys press and release the mouse button by sent messages (BM_CLICK): the
  // release that returns is the one that has been uploaded already.
  if (msg.message == WM_LBUTTONUP && kind != hookCallWndProcRet) {
    record.kind = buttonClick;
    record.window = msg.window;
    send_data(sizeof record, &record);
    m_changed = 0;
    set_timer();
  }
  if (!is_timer_set()) {
    if (button_type(msg.window) == BS_OWNERDRAW)
      remember_check_state(msg.window);
  } else if (msg.window == m_tracked_button && (msg.message == WM_DESTROY || msg.message == WM_SHOWWINDOW)) {
    end_watch();
  }
}

// Between watches every message to an owner-drawn button brings its state up to date, so that a watch
// compares with the state just before the click.
void mrButtonFactory::remember_check_state(HWND button) {
  const LONG_PTR state = check_state(button);
  if (button != m_tracked_button) {
    m_tracked_button = button;
    m_changed = 0;
  } else if (state != m_last_check_state) {
    m_changed = 1;
  }
  m_last_check_state = state;
}

bool mrButtonFactory::on_command(int kind, const mrHookedMessage& msg) {
  const HWND button = command_control(msg);
  if (!button || HIWORD(msg.wparam) != BN_CLICKED || !is_wrapped_window(button))
    return false;
  on_clicked(kind, button);
  return true;
}

void mrButtonFactory::on_clicked(int kind, HWND button) {
  const LONG_PTR type = button_type(button);
  const bool has_check_state = is_check_box(type);
  if (!has_check_state) {
    if (is_timer_set())
      return;  // the click was recorded when the mouse button came up
    if (type == BS_OWNERDRAW)
      set_timer();
  }
  record.kind = has_check_state ? buttonCheckState : buttonClick;
  record.window = button;
  // Deliberate: a check box is uploaded before and after its parent handled the click, since a parent may
  // set the state itself. The builder keeps the later one.
  if (has_check_state || kind != hookCallWndProcRet)
    send_data(sizeof record, &record);
}

// ---- builder: recorder process --------------------------------------------------------------------

namespace {

const char* three_state_statement(LONG_PTR state) {
  switch (state) {
  case BST_UNCHECKED:
    return "CheckedState = tsUNCHECKED;";
  case BST_CHECKED:
    return "CheckedState = tsCHECKED;";
  case BST_INDETERMINATE:
    return "CheckedState = tsINDETERMINATE;";
  default:
    return "";
  }
}

const char* check_statement(LONG_PTR type, LONG_PTR state) {
  if (is_three_state(type))
    return three_state_statement(state);
  return state ? "Checked = true;" : "Checked = false;";
}

// Deliberate: an unknown kind or state gives an empty statement and is recorded all the same.
CString make_statement(const mrButtonRec& rec) {
  switch (rec.kind) {
  case buttonClick:
    return "Click();";
  case buttonCheckState:
    return check_statement(button_type(rec.window), check_state(rec.window));
  default:
    return CString();
  }
}

}  // namespace

void mrButtonFactory::copy_data(void* data) {
  const mrButtonRec& rec = *static_cast<const mrButtonRec*>(data);
  const CString statement = make_statement(rec);
  mrButton* const last = last_action_on<mrButton>(rec.window);
  // A check state takes the place of the click that made it and of the state before the parent's handling.
  if (last && rec.kind == buttonCheckState)
    last->set_action_string(statement);
  else
    append_statement<mrButton>(rec.window, statement);
}

mrContextMenuRes mrButtonFactory::context_menu_invoke(HWND /*window*/, const char* /*class_name*/,
                                                      const CPoint& /*point*/) {
  return contextMenuNotClaimed;
}

// ---- declaration: recorder process ----------------------------------------------------------------

// Every button that can have a check state is a CheckBox to the player, radio buttons too.
static const char* declared_type(LONG_PTR type) {
  const bool can_be_checked =
      is_check_box(type) || type == BS_RADIOBUTTON || type == BS_AUTORADIOBUTTON || type == BS_OWNERDRAW;
  return can_be_checked ? "CheckBox" : "Button";
}

mrDeclarationRes mrButtonFactory::get_declaration(const mrWindowInfo* info, CString& declaration,
                                                  CString& search, CString& identifier) {
  if (!is_wrapped_type(info->class_name))
    return declaredNot;
  const char* const type = declared_type(button_type(static_cast<LONG_PTR>(info->style)));
  if (get_named_declaration(info, declaration, search, identifier, type) == declaredByName)
    return declaredByName;

  const CString id_name = get_id_name(info);
  const CString text = mrRecorder::quote_string(info->text);
  declaration.Format("%s(\"%s\", %s)", type, text.GetString(), id_name.GetString());
  search.Format("%s(\"%s\", %s, %s)", type, text.GetString(), id_name.GetString(), mr_recursive_search);
  if (*info->text)
    identifier = info->text;
  else
    identifier.Format("%s_%s", type, id_name.GetString());
  return declaredByControlId;
}
