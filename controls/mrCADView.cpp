#include "controls/mrCADView.h"

#include "controls/mrMouseMessage.h"
#include "hooks/mrHostMessages.h"
#include "model/mrRecorder.h"

#include <cstring>

namespace {

constexpr const char* view_class = "CADViewClass";

// Codes of the host's view request.
constexpr WPARAM request_position = 0;
constexpr WPARAM request_is_view = 1;

bool is_cad_view(HWND window) {
  return SendMessageA(window, host_messages().get_view_position, request_is_view, 0) == 1;
}

// The record's one buffer: filled and sent within one hook call.
mrCADViewRec record;

}  // namespace

mrCADView::mrCADView(HWND window, mrBaseWindowFactory* factory) : mrBaseWindow(window, factory) {
  strcpy(m_path[0]->class_name, view_class);
}

mrCADViewFactory::mrCADViewFactory() : mrBaseWindowFactory("CADView", view_class) {}

mrFactoryType mrCADViewFactory::get_factory_type() { return factoryCadView; }

// ---- recogniser: host process, GUI thread, inside a hook ------------------------------------------

bool mrCADViewFactory::handle_message(int kind, int /*code*/, WPARAM /*wparam*/, LPARAM lparam) {
  mrHookedMessage msg;
  if (kind == hookCallWndProcRet || !read_hooked_message(kind, lparam, msg))
    return false;
  // Only mouse buttons are recorded or claimed, so only for them the window is asked.
  if (!is_mouse_button_message(msg.message) || !is_cad_view(msg.window))
    return false;
  record.window = msg.window;
  record.message = msg.message;
  record.wparam = msg.wparam;
  record.lparam = msg.lparam;
  send_data(sizeof record, &record);
  return true;
}

// ---- builder: recorder process --------------------------------------------------------------------

mrCADViewFactory::mrViewState mrCADViewFactory::read_view(HWND view) {
  mrViewState state;
  const LRESULT reply = SendMessageA(view, host_messages().get_view_position, request_position, 0);
  if ((reply & ~0x3FFFLL) == mr_atom_bits) {
    // The host only adds the atom, the recorder deletes it.
    char text[mr_max_text] = "";
    GlobalGetAtomNameA(static_cast<ATOM>(reply), text, mr_max_text);
    GlobalDeleteAtom(static_cast<ATOM>(reply));
    state.position = text;
  }
  RECT client = {};
  GetClientRect(view, &client);
  // Deliberate: one more than the client size, here and in every statement.
  state.width = client.right - client.left + 1;
  state.height = client.bottom - client.top + 1;
  state.key.Format("%s_%d_%d", state.position.GetString(), state.width, state.height);
  return state;
}

static CString mouse_statement(const mrBaseWindowActionStruct& mouse, int width, int height) {
  static constexpr const char* operations[] = {"MouseDown", "MouseUp", "Click", "DoubleClick"};
  CString statement;
  statement.Format("%s(%d, %d, %d, %d, %d, %d);", operations[mouse.kind], mouse.button, mouse.x, mouse.y,
                   width, height, mouse.key_state);
  return statement;
}

void mrCADViewFactory::copy_data(void* data) {
  const mrCADViewRec& rec = *static_cast<const mrCADViewRec*>(data);
  if (!is_mouse_button_message(rec.message))
    return;
  const mrViewState state = read_view(rec.window);
  mrBaseWindowActionStruct mouse = mouse_action(actionMouseDown, rec.message, rec.wparam, rec.lparam);
  const bool is_new_action = build_mouse(rec, state, mouse);
  // A changed camera comes before the mouse statement that depends on it.
  record_camera(rec.window, state);
  if (is_new_action)
    append_mouse_statement<mrCADView>(rec.window, mouse, mouse_statement(mouse, state.width, state.height));
}

bool mrCADViewFactory::build_mouse(const mrCADViewRec& rec, const mrViewState& state,
                                   mrBaseWindowActionStruct& mouse) {
  switch (mouse_gesture(rec.message)) {
  case mouseRelease:
    return build_release(rec.window, state, mouse);
  case mouseDoubleClick:
    return build_double_click(rec.window, state, mouse);
  case mousePress:
    break;
  }
  return true;
}

bool mrCADViewFactory::build_release(HWND view, const mrViewState& state, mrBaseWindowActionStruct& mouse) {
  mrCADView* const press = last_action_on<mrCADView>(view);
  if (!press || press->get_action_struct().kind != actionMouseDown)
    return false;
  if (is_same_button_and_place(press->get_action_struct(), mouse)) {
    mouse.kind = actionClick;
    turn_into(*press, mouse, state);
    return false;
  }
  if (!has_moved(view, state)) {
    mouse.kind = actionMouseUp;
    return true;
  }
  // The drag moved the camera: the camera statement says all there is to say.
  delete get_recorder()->get_actions().RemoveTail();
  return false;
}

bool mrCADViewFactory::build_double_click(HWND view, const mrViewState& state,
                                          mrBaseWindowActionStruct& mouse) {
  mouse.kind = actionDoubleClick;
  mrBaseWindow* const click = last_action_on<mrBaseWindow>(view);
  const bool completes_click = click && click->get_action_struct().kind == actionClick &&
                               is_same_button_and_place(click->get_action_struct(), mouse);
  if (completes_click)
    turn_into(*click, mouse, state);
  return !completes_click;
}

void mrCADViewFactory::turn_into(mrBaseWindow& action, const mrBaseWindowActionStruct& mouse,
                                 const mrViewState& state) {
  action.set_action_struct(mouse);
  action.set_action_string(mouse_statement(mouse, state.width, state.height));
}

bool mrCADViewFactory::has_moved(HWND view, const mrViewState& state) const {
  const auto known = m_cameras.find(view);
  return known == m_cameras.end() || known->second != state.key.str();
}

void mrCADViewFactory::record_camera(HWND view, const mrViewState& state) {
  if (!has_moved(view, state))
    return;
  // An earlier camera with nothing after it never mattered. (A context menu of the view, which has no kind
  // either, is taken off with it.)
  mrCADView* const last = last_action_on<mrCADView>(view);
  if (last && last->get_action_struct().kind == actionNone)
    delete get_recorder()->get_actions().RemoveTail();

  CString statement;
  statement.Format("SetCameraPosition(\"%s\", %d, %d);", state.position.GetString(), state.width,
                   state.height);
  append_statement<mrCADView>(view, statement);
  m_cameras[view] = state.key.str();
}

mrContextMenuRes mrCADViewFactory::context_menu_invoke(HWND view, const char* /*name*/, const CPoint& point) {
  if (!is_cad_view(view))
    return contextMenuNotClaimed;
  if (mrBaseWindow* const last = last_action_on<mrBaseWindow>(view)) {
    const mrBaseWindowActionStruct& mouse = last->get_action_struct();
    const bool is_click = mouse.kind >= actionMouseDown && mouse.kind <= actionClick;
    // The right click that opened the menu: taken off the list, not destroyed.
    if (is_click && mouse.button == 2 && mouse.x == point.x && mouse.y == point.y)
      get_recorder()->get_actions().RemoveTail();
  }
  RECT client = {};
  GetClientRect(view, &client);
  CString statement;
  statement.Format("ContextMenu(%ld, %ld, %ld, %ld);", point.x, point.y, client.right - client.left + 1,
                   client.bottom - client.top + 1);
  append_statement<mrCADView>(view, statement);
  return contextMenuRecorded;
}

// ---- declaration: recorder process ----------------------------------------------------------------

mrDeclarationRes mrCADViewFactory::get_declaration(const mrWindowInfo* info, CString& declaration,
                                                   CString& search, CString& identifier) {
  if (!is_wrapped_type(info->class_name))
    return declaredNot;
  if (get_named_declaration(info, declaration, search, identifier) == declaredByName)
    return declaredByName;
  declaration = search = "CADView()";
  identifier = "CADView";
  return declaredByName;
}
