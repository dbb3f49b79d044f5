#include "controls/mrCADTree.h"

#include "hooks/mrHostMessages.h"
#include "hooks/mrIdentity.h"

#include <cstring>

namespace {

// The class name under which CAD trees are declared; no real window has it.
constexpr const char cad_tree_class[] = "CADTreeClass";

// The record and its one buffer: filled and sent within one hook call.
mrCADTreeRec record;

}  // namespace

mrCADTree::mrCADTree(HWND tree, mrBaseWindowFactory* factory) : mrTreeView(tree, factory) {
  strcpy(m_path[0]->class_name, cad_tree_class);
}

mrCADTreeFactory::mrCADTreeFactory() : mrTreeViewFactory("CADTree", cad_tree_class) {}

mrFactoryType mrCADTreeFactory::get_factory_type() { return factoryCadTree; }

// ---- recogniser: host process, GUI thread, inside a hook ------------------------------------------

bool mrCADTreeFactory::handle_message(int kind, int /*code*/, WPARAM /*wparam*/, LPARAM lparam) {
  mrHookedMessage msg;
  if (kind == hookCallWndProcRet || !read_hooked_message(kind, lparam, msg))
    return false;
  if (msg.message == kvtWM_CAD_TREE_CHANGED && msg.lparam) {
    record.kind = mr_cad_tree_change;
    record.change = *reinterpret_cast<const kvtCADTreeChange*>(msg.lparam);
    send_data(sizeof record, &record);
    return true;
  }
  MSG notified = {msg.window, msg.message, msg.wparam, msg.lparam, 0, {}};
  const HWND tree = is_tree_message(&notified);
  // Every tree of the host tells its parent much while it is painted: only what may become a statement asks
  // the tree anew.
  if (!tree || !is_identified(tree, kvtWM_REQUEST_CAD_TREE_INFORMATION, msg))
    return false;
  return handle_tree_message(tree, &notified);
}

// ---- builder: recorder process --------------------------------------------------------------------

// Nothing for a change that is not known.
static CString make_change(const kvtCADTreeChange& change) {
  CString colour;
  switch (change.change) {
  case kvtObjectShown:
    return "Visible = true;";
  case kvtObjectHidden:
    return "Visible = false;";
  case kvtObjectChecked:
    return "Checked = true;";
  case kvtObjectUnchecked:
    return "Checked = false;";
  case kvtObjectColoured:
    colour.Format("Color = %d;", change.value);
    return colour;
  case kvtObjectStarred:
    return "Starred = true;";
  case kvtObjectUnstarred:
    return "Starred = false;";
  default:
    return "";
  }
}

mrTreeView* mrCADTreeFactory::get_action(HWND tree) { return make_action<mrCADTree>(tree, this); }

void mrCADTreeFactory::copy_data(void* data) {
  const mrCADTreeRec& rec = *static_cast<const mrCADTreeRec*>(data);
  if (rec.kind == mr_cad_tree_change)
    build_change(rec.change);
  else
    mrTreeViewFactory::copy_data(data);
}

// Changes are never merged: an object shown, hidden and shown again is three statements.
void mrCADTreeFactory::build_change(const kvtCADTreeChange& change) {
  const HWND tree = static_cast<HWND>(change.tree);
  const CString path = get_num_path(tree, static_cast<HTREEITEM>(change.item));
  append_action(get_action(tree), "ItemByNumPath(\"" + path + "\")." + make_change(change));
}

mrContextMenuRes mrCADTreeFactory::context_menu_invoke(HWND window, const char* class_name,
                                                       const CPoint& point) {
  // The window's own class is the tree view's; this recorder's class name is that of its declarations.
  if ((!is_tree_class(class_name) && !is_wrapped_type(class_name)) ||
      SendMessageA(window, kvtWM_REQUEST_CAD_TREE_INFORMATION, 0, 0) != mr_identity_answer)
    return contextMenuNotClaimed;
  return record_context_menu(window, point);
}
