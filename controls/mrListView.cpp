#include "controls/mrListView.h"

#include "model/mrRecorder.h"

#include <windows.h>
#include <commctrl.h>

#include <cstring>

// The record and its one buffer: filled and sent within one hook call.
static mrListViewRec record;

mrListView::mrListView(HWND list, mrBaseWindowFactory* factory) : mrBaseWindow(list, factory) {}

mrListViewFactory::mrListViewFactory() : mrBaseWindowFactory("ListView", "SysListView32") {}

mrFactoryType mrListViewFactory::get_factory_type() { return factoryListView; }

// The selected item after another one, -1 for the first; -1 when there is none. Both processes.
static int next_selected(HWND list, int item) {
  return static_cast<int>(
      SendMessageA(list, LVM_GETNEXTITEM, static_cast<WPARAM>(item), MAKELPARAM(LVNI_SELECTED, 0)));
}

// ---- recogniser: host process, GUI thread, inside a hook ------------------------------------------

bool mrListViewFactory::handle_message(int kind, int /*code*/, unsigned __int64 /*wparam*/, __int64 lparam) {
  mrHookedMessage msg;
  if (kind == hookCallWndProcRet || !read_hooked_message(kind, lparam, msg))
    return false;
  if (is_wrapped_window(msg.window))
    return true;
  const NMHDR* const header = notification(msg);
  if (!header || !is_wrapped_window(header->hwndFrom))
    return false;
  return !is_operable(header->hwndFrom) || on_notification(*header);
}

static bool is_selection_change(const NMLISTVIEW& change) {
  // The focus moves through the items without selecting them when Ctrl and an arrow key move it.
  return (change.uChanged & LVIF_STATE) && ((change.uNewState ^ change.uOldState) & LVIS_SELECTED);
}

bool mrListViewFactory::on_notification(const NMHDR& header) {
  switch (header.code) {
  case LVN_ITEMCHANGED:
    if (!is_selection_change(reinterpret_cast<const NMLISTVIEW&>(header)))
      return false;
    update_selected(header.hwndFrom);
    return true;
  case NM_DBLCLK:
  case NM_RETURN:
    send_record(header.hwndFrom, listViewActivated);
    return false;  // other recorders still see it
  default:
    return false;
  }
}

void mrListViewFactory::update_selected(HWND list) {
  const LRESULT count = SendMessageA(list, LVM_GETSELECTEDCOUNT, 0, 0);
  mrListViewRecKind kind = listViewFirstSelected;
  int item = -1;
  for (LRESULT i = 0; i < count; ++i) {
    item = next_selected(list, item);
    if (item < 0)
      return;
    record.index = item;
    get_name(list, item, record.text, sizeof record.text);
    send_record(list, kind);
    kind = listViewFurtherSelected;
  }
}

void mrListViewFactory::get_name(HWND list, int item, char* text, size_t size) {
  memset(text, 0, size);
  LVITEMA request = {};
  request.pszText = text;
  request.cchTextMax = static_cast<int>(size);
  SendMessageA(list, LVM_GETITEMTEXTA, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&request));
  // A list view may answer with a place of its own instead of filling ours.
  if (request.pszText && request.pszText != text && request.pszText != LPSTR_TEXTCALLBACKA)
    lstrcpynA(text, request.pszText, static_cast<int>(size));
  text[size - 1] = '\0';
}

void mrListViewFactory::send_record(HWND list, mrListViewRecKind kind) {
  record.kind = kind;
  record.window = list;
  send_data(sizeof record, &record);
}

// ---- builder: recorder process --------------------------------------------------------------------

static CString make_statement(const mrListViewRec& rec) {
  const bool is_first = rec.kind == listViewFirstSelected;
  CString statement;
  if (*rec.text)
    statement.Format(is_first ? "SelectItemByName(\"%s\");" : "AddToSelectionByName(\"%s\");",
                     mrRecorder::quote_string(rec.text).GetString());
  else  // Deliberate: the index of a further item stands between quotes.
    statement.Format(is_first ? "SelectItem(%d);" : "AddToSelection(\"%d\");", rec.index);
  return statement;
}

void mrListViewFactory::copy_data(void* data) {
  const mrListViewRec& rec = *static_cast<const mrListViewRec*>(data);
  switch (rec.kind) {
  case listViewFirstSelected:
    drop_last_selection(rec.window);
    append_statement<mrListView>(rec.window, make_statement(rec));
    break;
  case listViewFurtherSelected:
    append_statement<mrListView>(rec.window, make_statement(rec));
    break;
  case listViewActivated:
    append_statement<mrListView>(rec.window, "Select();");
    break;
  }
}

// Each change uploads the whole selection again, so the statements of the one before it go. Deliberate: all
// of this list view's at the end of the list, whatever they say.
void mrListViewFactory::drop_last_selection(HWND list) {
  while (mrListView* const last = last_action_on<mrListView>(list)) {
    get_recorder()->get_actions().RemoveTail();
    delete last;
  }
}

mrContextMenuRes mrListViewFactory::context_menu_invoke(HWND window, const char* class_name,
                                                        const CPoint& /*point*/) {
  if (!is_wrapped_type(class_name))
    return contextMenuNotClaimed;
  append_statement<mrListView>(window,
                               next_selected(window, -1) >= 0 ? "ContextMenu(true);" : "ContextMenu(false);");
  return contextMenuRecorded;
}
