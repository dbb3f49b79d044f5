#include "controls/mrTreeView.h"

#include "hooks/mrChannel.h"

#include <cstring>
#include <string>

namespace {

// Tree views of every name that begins like this are recorded; the declarations of a derived recorder have a
// class name of their own.
constexpr const char tree_class[] = "SysTreeView32";

// The record and its one buffer: filled and sent within one hook call.
mrTreeViewRec record;

}  // namespace

mrTreeViewFactory::mrTreeViewFactory() : mrTreeViewFactory("TreeCtrl", tree_class) {}

mrTreeViewFactory::mrTreeViewFactory(const char* script_name, const char* class_name)
    : mrBaseWindowFactory(script_name, class_name) {}

mrFactoryType mrTreeViewFactory::get_factory_type() { return factoryTreeView; }

bool mrTreeViewFactory::is_tree_class(const char* class_name) {
  return strncmp(class_name, tree_class, sizeof tree_class - 1) == 0;
}

// ---- recogniser: host process, GUI thread, inside a hook ------------------------------------------

bool mrTreeViewFactory::handle_message(int kind, int /*code*/, WPARAM /*wparam*/, LPARAM lparam) {
  mrHookedMessage msg;
  if (kind == hookCallWndProcRet || !read_hooked_message(kind, lparam, msg))
    return false;
  // Whatever a tree gets is its own: nobody else records clicks on it.
  if (is_wrapped_window(msg.window))
    return true;
  // The box in which a label is edited is a child of the tree, which hands its notifications on to its own
  // parent.
  if (const HWND control = command_control(msg))
    return is_wrapped_window(GetParent(control));

  MSG notification = {msg.window, msg.message, msg.wparam, msg.lparam, 0, {}};
  const HWND tree = is_tree_message(&notification);
  return tree && handle_tree_message(tree, &notification);
}

HWND mrTreeViewFactory::is_tree_message(MSG* msg) const {
  if (msg->message != WM_NOTIFY || !msg->lParam)
    return nullptr;
  const HWND sender = reinterpret_cast<const NMHDR*>(msg->lParam)->hwndFrom;
  return sender && is_tree_class(hooked_class_name(sender)) ? sender : nullptr;
}

bool mrTreeViewFactory::handle_tree_message(HWND tree, MSG* msg) {
  // Not the user's doing.
  if (!is_operable(tree))
    return true;
  switch (reinterpret_cast<const NMHDR*>(msg->lParam)->code) {
  case TVN_SELCHANGEDA:
    return upload_selection(tree, *reinterpret_cast<const NMTREEVIEWA*>(msg->lParam));
  case TVN_ENDLABELEDITA:
    return upload_label(tree, *reinterpret_cast<const NMTVDISPINFOA*>(msg->lParam));
  default:
    return false;
  }
}

bool mrTreeViewFactory::upload_selection(HWND tree, const NMTREEVIEWA& selection) {
  record.type = treeSelection;
  record.tree = tree;
  record.item = selection.itemNew.hItem;
  send_data(sizeof record, &record);
  return true;
}

bool mrTreeViewFactory::upload_label(HWND tree, const NMTVDISPINFOA& edited) {
  // Without a text the user gave the edit up.
  if (!(edited.item.mask & TVIF_TEXT) || !edited.item.pszText)
    return false;
  record.type = treeLabelEdit;
  record.tree = tree;
  record.item = edited.item.hItem;
  lstrcpynA(record.text, edited.item.pszText, mr_max_text);
  send_data(sizeof record, &record);
  return true;
}

// ---- builder: recorder process --------------------------------------------------------------------

namespace {

HTREEITEM next_item(HWND tree, UINT direction, HTREEITEM item) {
  return reinterpret_cast<HTREEITEM>(
      SendMessageA(tree, TVM_GETNEXTITEM, direction, reinterpret_cast<LPARAM>(item)));
}

// 1-based place of an item among its siblings; 0 for a null item.
int place_of(HWND tree, HTREEITEM item) {
  int place = 0;
  for (; item; item = next_item(tree, TVGN_PREVIOUS, item))
    ++place;
  return place;
}

CString make_statement(const mrTreeViewRec& rec, const CString& path) {
  CString statement;
  switch (rec.type) {
  case treeSelection:
    statement.Format("SelectItem(\"%s\");", path.GetString());
    break;
  case treeLabelEdit:
    // Deliberate: the label stands as it is, without escapes, and no semicolon ends the statement.
    statement.Format("ItemByNumPath(\"%s\").Text = \"%s\"", path.GetString(), rec.text);
    break;
  }
  return statement;
}

}  // namespace

CString mrTreeViewFactory::get_num_path(HWND tree, HTREEITEM item) {
  std::string path = std::to_string(place_of(tree, item));
  while ((item = next_item(tree, TVGN_PARENT, item)) != nullptr)
    path = std::to_string(place_of(tree, item)) + "|" + path;
  return path;
}

mrTreeView* mrTreeViewFactory::get_action(HWND tree) { return make_action<mrTreeView>(tree, this); }

void mrTreeViewFactory::copy_data(void* data) {
  const mrTreeViewRec& rec = *static_cast<const mrTreeViewRec*>(data);
  const CString statement = make_statement(rec, get_num_path(rec.tree, rec.item));

  // A run of selections ends as its last item, a run of label edits as its last label.
  mrTreeView* const last = last_action_on<mrTreeView>(rec.tree);
  if (last && last->get_type() == rec.type) {
    last->set_action_string(statement);
    return;
  }
  mrTreeView* const action = get_action(rec.tree);
  if (action)
    action->set_type(static_cast<mrTreeViewActionType>(rec.type));
  append_action(action, statement);
}

mrContextMenuRes mrTreeViewFactory::context_menu_invoke(HWND window, const char* class_name,
                                                        const CPoint& point) {
  return is_wrapped_type(class_name) ? record_context_menu(window, point) : contextMenuNotClaimed;
}

// The rectangle of an item's whole row in the tree's client pixels; false when the tree does not tell it.
static bool get_row(HWND tree, HTREEITEM item, RECT& row) {
  // The message reads the item's handle where it writes the rectangle.
  static_assert(sizeof(RECT) == 16 && sizeof(HTREEITEM) <= sizeof(RECT), "one buffer, in and out");
  memcpy(&row, &item, sizeof(HTREEITEM));
  return send_remotely(tree, TVM_GETITEMRECT, FALSE, &row, sizeof row) != 0;
}

mrContextMenuRes mrTreeViewFactory::record_context_menu(HWND tree, const CPoint& point) {
  const HTREEITEM selected = next_item(tree, TVGN_CARET, nullptr);
  RECT row = {};
  const bool on_selected = selected && get_row(tree, selected, row) && PtInRect(&row, point);
  append_action(get_action(tree), on_selected ? "ContextMenu(true);" : "ContextMenu(false);");
  return contextMenuRecorded;
}
