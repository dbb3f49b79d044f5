#include "controls/mrWindow.h"

#include "controls/mrMouseMessage.h"
#include "hooks/mrChannel.h"
#include "hooks/mrSharedBlock.h"
#include "model/mrRecorder.h"
#include "script/mrDeclarations.h"

#include <cstring>

namespace {

// The menu and accelerator commands; a control's notification has a window or a higher code.
constexpr WORD last_command_code = 1;

// The record and its one buffer: filled and sent within one hook call.
mrWindowRec record;

void send_record() { send_copy_data(sizeof record, &record, factoryWindow); }

}  // namespace

mrWindowFactory::mrWindowFactory() : mrBaseWindowFactory("Window", "Window") {}

mrFactoryType mrWindowFactory::get_factory_type() { return factoryWindow; }

// ---- recogniser: host process, GUI thread, inside a hook ------------------------------------------

bool mrWindowFactory::handle_message(int kind, int /*code*/, WPARAM /*wparam*/, LPARAM lparam) {
  mrHookedMessage msg;
  if (!read_hooked_message(kind, lparam, msg))
    return false;
  if (kind == hookCallWndProcRet) {
    on_return(msg);
    return false;
  }
  return on_message(kind, msg);
}

bool mrWindowFactory::on_message(int kind, const mrHookedMessage& msg) {
  if (is_mouse_button_message(msg.message)) {
    record.kind = windowMouse;
    record.window = msg.window;
    record.message = msg.message;
    record.wparam = msg.wparam;
    record.lparam = msg.lparam;
    send_record();
    return true;
  }
  if (msg.message == WM_COMMAND)
    return on_command(kind, msg);
  if (msg.message == WM_SYSCOMMAND && msg.wparam == SC_CLOSE) {
    record.kind = windowClose;
    record.window = msg.window;
    send_record();
    return true;
  }
  return false;
}

bool mrWindowFactory::on_command(int kind, const mrHookedMessage& msg) {
  const int command = LOWORD(msg.wparam);
  if (HIWORD(msg.wparam) > last_command_code || msg.lparam || !IsWindowVisible(msg.window))
    return false;
  if (kind == hookCallWndProc) {
    // The same command travelling up the parent chain while the child's window procedure is at work on it.
    if (!mr_commands_stack.empty()) {
      const HWND running = mr_commands_stack.back().window;
      if (running == msg.window || IsChild(msg.window, running))
        return true;
    }
    add_run_command(msg.window, command);
  }
  if (is_ignore(command) || shared_block().raw_mode)
    return true;
  record.kind = windowCommand;
  record.window = msg.window;
  record.message = static_cast<uint32_t>(command);
  send_record();
  return true;
}

// A window procedure returned. Deliberate: the message number is not compared, any message that returns from
// the window with the command in its wParam ends it.
void mrWindowFactory::on_return(const mrHookedMessage& msg) {
  if (mr_commands_stack.empty())
    return;
  const mrCommandRec& running = mr_commands_stack.back();
  if (msg.window == running.window && LOWORD(msg.wparam) == running.command)
    mr_commands_stack.pop_back();
}

// ---- builder: recorder process --------------------------------------------------------------------

void mrWindowFactory::copy_data(void* data) {
  const mrWindowRec& rec = *static_cast<const mrWindowRec*>(data);
  switch (rec.kind) {
  case windowMouse:
    build_mouse(rec);
    break;
  case windowCommand: {
    const CString name =
        get_recorder()->get_namer().get_definition(static_cast<int32_t>(rec.message), "IDM_", 0, "");
    append_statement<mrBaseWindow>(rec.window, "Command(" + name + ");");
    break;
  }
  case windowClose:
    append_statement<mrBaseWindow>(rec.window, "Close();");
    break;
  }
}

static CString mouse_statement(const mrBaseWindowActionStruct& mouse) {
  static constexpr const char* operations[] = {"MouseDown", "MouseUp", "Click", "DoubleClick"};
  CString statement;
  statement.Format("%s(%d, %d, %d, %d);", operations[mouse.kind], mouse.button, mouse.x, mouse.y,
                   mouse.key_state);
  return statement;
}

void mrWindowFactory::build_mouse(const mrWindowRec& rec) {
  if (!is_mouse_button_message(rec.message))
    return;
  mrBaseWindowActionStruct mouse = mouse_action(actionMouseDown, rec.message, rec.wparam, rec.lparam);
  if (mouse_gesture(rec.message) == mousePress) {
    append_mouse_action(rec.window, mouse);
    return;
  }
  mrBaseWindow* const last = last_action_on<mrBaseWindow>(rec.window);
  // Deliberate: no time limit. Same window, button and place decide that messages are one click.
  const bool same_place = last && is_same_button_and_place(last->get_action_struct(), mouse);
  const int last_kind = last ? last->get_action_struct().kind : actionNone;

  const bool is_release = mouse_gesture(rec.message) == mouseRelease;
  // Deliberate: a release that follows no press on the same window is dropped.
  if (is_release && last_kind != actionMouseDown)
    return;
  const bool completes_last = same_place && last_kind == (is_release ? actionMouseDown : actionClick);
  mouse.kind = !is_release ? actionDoubleClick : completes_last ? actionClick : actionMouseUp;
  if (completes_last)
    turn_into(last, mouse);
  else
    append_mouse_action(rec.window, mouse);
}

void mrWindowFactory::turn_into(mrBaseWindow* action, const mrBaseWindowActionStruct& mouse) {
  action->set_action_struct(mouse);
  action->set_action_string(mouse_statement(mouse));
}

void mrWindowFactory::append_mouse_action(HWND window, const mrBaseWindowActionStruct& mouse) {
  append_mouse_statement<mrBaseWindow>(window, mouse, mouse_statement(mouse));
}

mrContextMenuRes mrWindowFactory::context_menu_invoke(HWND window, const char* /*name*/,
                                                      const CPoint& point) {
  if (mrBaseWindow* const last = last_action_on<mrBaseWindow>(window)) {
    const mrBaseWindowActionStruct& mouse = last->get_action_struct();
    const bool is_click = mouse.kind >= actionMouseDown && mouse.kind <= actionClick;
    // The right click that opened the menu. Deliberate: taken off the list but not destroyed.
    if (is_click && mouse.button == 2 && mouse.x == point.x && mouse.y == point.y)
      get_recorder()->get_actions().RemoveTail();
  }
  CString statement;
  statement.Format("ContextMenu(%ld, %ld);", point.x, point.y);
  append_statement<mrBaseWindow>(window, statement);
  return contextMenuRecorded;
}

// ---- declaration: recorder process ----------------------------------------------------------------

mrDeclarationRes mrWindowFactory::get_declaration(const mrWindowInfo* info, CString& declaration,
                                                  CString& search, CString& identifier) {
  const CString class_name = mrRecorder::quote_string(filter_class_name(info->class_name));
  if (info->top_level) {
    const CString module(info->module);
    const int dot = module.Find('.');
    declaration.Format("MainWindow(\"%s\", \"\", \"%s\")", info->module, class_name.GetString());
    search = declaration;
    identifier = "Main_" + (dot < 0 ? module : module.Left(dot));
    return declaredMainWindow;
  }
  if (get_named_declaration(info, declaration, search, identifier, "Window") == declaredByName)
    return declaredByName;

  constexpr __int64 modal_popup = static_cast<__int64>(WS_POPUP | DS_MODALFRAME);
  if ((info->style & modal_popup) == modal_popup) {
    declaration = search = "ActiveDialog()";
    identifier = "ActiveDialog";
    return declaredActiveDialog;
  }
  if (info->ex_style & WS_EX_MDICHILD) {
    declaration = search = "ActiveDocument()";
    identifier = "ActiveDocument";
    return declaredActiveDocument;
  }
  return declare_child_window(info, class_name, declaration, search, identifier);
}

namespace {

// A player call: what it finds ("ChildWindow"), the arguments before the id, the id's name (empty: none), and
// for the search at any depth the flag behind an id that is always there.
void child_call(const char* function, const CString& texts, const CString& id_name, CString& declaration) {
  declaration.Format("%s(%s%s%s)", function, texts.GetString(), id_name.IsEmpty() ? "" : ", ",
                     id_name.GetString());
}

void child_search(const char* function, const CString& texts, const CString& id_name, CString& search) {
  search.Format("%s(%s, %s, %s)", function, texts.GetString(), id_name.IsEmpty() ? "0" : id_name.GetString(),
                mr_recursive_search);
}

}  // namespace

mrDeclarationRes mrWindowFactory::declare_child_window(const mrWindowInfo* info, const CString& class_name,
                                                       CString& declaration, CString& search,
                                                       CString& identifier) {
  // A control bar's caption changes with its place.
  const CString text = class_name == "AfxControlBar" ? CString() : mrRecorder::quote_string(info->text);
  const CString id_name = info->id ? get_id_name(info) : CString();
  const CString quoted_text = "\"" + text + "\"";

  if (class_name == mr_dialog_by_control_class) {
    child_call("ChildDialogByControl", quoted_text, id_name, declaration);
    search = declaration;
  } else if (class_name == mr_dialog_by_visible_control_class) {
    child_call("ChildDialogByVisibleControl", quoted_text, id_name, declaration);
    search = declaration;
  } else if (class_name == "#32770") {
    child_call("ChildDialog", quoted_text, id_name, declaration);
    child_search("ChildDialog", quoted_text, id_name, search);
  } else {
    const CString text_and_class = quoted_text + ", \"" + class_name + "\"";
    child_call("ChildWindow", text_and_class, id_name, declaration);
    child_search("ChildWindow", text_and_class, id_name, search);
  }

  if (*info->text) {
    identifier = info->text;
  } else if (strcmp(info->class_name, "#32770") == 0) {
    identifier = "Dialog_" + id_name;
    if (!info->id)
      return declaredUntitledDialog;
  } else if (info->id) {
    identifier = class_name + "_" + id_name;
  } else {
    identifier = class_name;
  }
  return declaredByControlId;
}
