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
  mrCADView* mouse = nullptr;
  switch (mouse_gesture(rec.message)) {
  case mousePress:
    mouse = build_press(rec, state);
    break;
  case mouseRelease:
    mouse = build_release(rec, state);
    break;
  case mouseDoubleClick:
    mouse = build_double_click(rec, state);
    break;
  }
  // A changed camera comes before the mouse statement that depends on it.
  record_camera(rec.window, state);
  if (mouse)
    get_recorder()->get_actions().AddTail(mouse);
}

mrCADView* mrCADViewFactory::new_mouse_action(const mrBaseWindowActionStruct& mouse, HWND view,
                                              const mrViewState& state) {
  mrCADView* const action = new mrCADView(view, this);
  action->set_action_struct(mouse);
  action->set_action_string(mouse_statement(mouse, state.width, state.height));
  return action;
}

mrCADView* mrCADViewFactory::build_press(const mrCADViewRec& rec, const mrViewState& state) {
  return new_mouse_action(mouse_action(actionMouseDown, rec.message, rec.wparam, rec.lparam), rec.window,
                          state);
}

mrCADView* mrCADViewFactory::build_release(const mrCADViewRec& rec, const mrViewState& state) {
  mrCADView* const press = last_action_on<mrCADView>(rec.window);
  if (!press || press->get_action_struct().kind != actionMouseDown)
    return nullptr;

  mrBaseWindowActionStruct mouse = mouse_action(actionClick, rec.message, rec.wparam, rec.lparam);
  if (is_same_button_and_place(press->get_action_struct(), mouse)) {
    press->set_action_struct(mouse);
    press->set_action_string(mouse_statement(mouse, state.width, state.height));
    return nullptr;
  }
  if (!has_moved(rec.window, state)) {
    mouse.kind = actionMouseUp;
    return new_mouse_action(mouse, rec.window, state);
  }
  // The drag moved the camera: the camera statement says all there is to say.
  delete get_recorder()->get_actions().RemoveTail();
  return nullptr;
}

mrCADView* mrCADViewFactory::build_double_click(const mrCADViewRec& rec, const mrViewState& state) {
  const mrBaseWindowActionStruct mouse = mouse_action(actionDoubleClick, rec.message, rec.wparam, rec.lparam);
  mrBaseWindow* const click = last_action_on<mrBaseWindow>(rec.window);
  if (click && click->get_action_struct().kind == actionClick &&
      is_same_button_and_place(click->get_action_struct(), mouse)) {
    click->set_action_struct(mouse);
    click->set_action_string(mouse_statement(mouse, state.width, state.height));
    return nullptr;
  }
  return new_mouse_action(mouse, rec.window, state);
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
