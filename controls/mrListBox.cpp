#include "controls/mrListBox.h"

#include "host/dlxListHelpers.h"
#include "model/mrRecorder.h"

#include <algorithm>
#include <new>

namespace {

// The record and its one buffer: filled and sent within one hook call.
mrListBoxRec record;

// Deliberate: the extended style alone (selection with Shift and Ctrl) is not looked at.
bool is_multiple_selection(HWND list) { return GetWindowLongPtrA(list, GWL_STYLE) & LBS_MULTIPLESEL; }

}  // namespace

mrListBox::mrListBox(HWND list, mrBaseWindowFactory* factory) : mrBaseWindow(list, factory) {}

mrListBoxFactory::mrListBoxFactory() : mrBaseWindowFactory("ListBox", "") {}

mrListBoxFactory::~mrListBoxFactory() { delete[] m_selected_items; }

mrFactoryType mrListBoxFactory::get_factory_type() { return factoryListBox; }

// ---- recogniser: host process, GUI thread, inside a hook ------------------------------------------

bool mrListBoxFactory::handle_message(int kind, int /*code*/, unsigned __int64 /*wparam*/, __int64 lparam) {
  mrHookedMessage msg;
  if (kind == hookCallWndProcRet || !read_hooked_message(kind, lparam, msg))
    return false;
  if (!is_wrapped_window(msg.window))
    return on_message(msg);
  if (msg.message == WM_SETFOCUS && is_multiple_selection(msg.window))
    fill_selected(msg.window, m_selected_count, m_selected_items);
  return true;
}

bool mrListBoxFactory::on_message(const mrHookedMessage& msg) {
  const HWND list = command_control(msg);
  if (!is_wrapped_window(list))
    return false;
  if (!is_operable(list))
    return true;
  if (HIWORD(msg.wparam) != LBN_SELCHANGE)
    return false;
  if (is_multiple_selection(list))
    update_selected(list);
  else
    send_selection_changed(list, static_cast<int>(SendMessageA(list, LB_GETCURSEL, 0, 0)));
  return true;
}

void mrListBoxFactory::fill_selected(HWND list, int& count, int*& items) {
  delete[] items;
  items = nullptr;
  count = static_cast<int>(SendMessageA(list, LB_GETSELCOUNT, 0, 0));
  if (count <= 0)
    return;
  // Nothing may be thrown into the hook chain: without memory the selection reads as empty.
  items = new (std::nothrow) int[static_cast<size_t>(count)]();
  const LRESULT filled =
      items ? SendMessageA(list, LB_GETSELITEMS, static_cast<WPARAM>(count), reinterpret_cast<LPARAM>(items))
            : 0;
  count = static_cast<int>(std::clamp<LRESULT>(filled, 0, count));
}

void mrListBoxFactory::update_selected(HWND list) {
  int count = 0;
  int* items = nullptr;
  fill_selected(list, count, items);
  check_list(list, count, items, m_selected_count, m_selected_items);
  check_list(list, m_selected_count, m_selected_items, count, items);
  delete[] m_selected_items;
  m_selected_count = count;
  m_selected_items = items;
}

void mrListBoxFactory::check_list(HWND list, int count_a, int* a, int count_b, int* b) {
  const int* const end = b + std::max(count_b, 0);
  const int* last_found = b;  // both are ascending as a rule: the next index is found a step further on
  for (int i = 0; i < count_a; ++i) {
    const int* found = std::find(last_found, end, a[i]);
    if (found == end)
      found = std::find(static_cast<const int*>(b), end, a[i]);
    if (found == end)
      send_selection_changed(list, a[i]);
    else
      last_found = found;
  }
}

void mrListBoxFactory::send_selection_changed(HWND list, int index) {
  record.kind = listBoxSelectionChanged;
  record.window = list;
  record.index = index;
  send_data(sizeof record, &record);
}

// ---- builder: recorder process --------------------------------------------------------------------

static CString make_statement(const CString& text, int index, bool selected) {
  CString statement;
  if (text.IsEmpty())
    statement.Format(selected ? "SelectItem(%d);" : "UnselectItem(%d);", index);
  else
    statement.Format(selected ? "SelectItemByName(\"%s\");" : "UnselectItemByName(\"%s\");",
                     mrRecorder::quote_string(text).GetString());
  return statement;
}

void mrListBoxFactory::copy_data(void* data) {
  const mrListBoxRec& rec = *static_cast<const mrListBoxRec*>(data);
  if (rec.kind != listBoxSelectionChanged)
    return;
  const WPARAM item = static_cast<WPARAM>(rec.index);
  const bool selected =
      !is_multiple_selection(rec.window) || SendMessageA(rec.window, LB_GETSEL, item, 0) != 0;
  const CString text = dlxListHelpers::get_list_item(rec.window, rec.index, true);
  append_statement<mrListBox>(rec.window, make_statement(text, rec.index, selected));
}

// Whether a point, in client pixels, lies on a selected item and not beside or below the items.
static bool is_on_selected_item(HWND list, const CPoint& point) {
  const LRESULT hit = SendMessageA(list, LB_ITEMFROMPOINT, 0, MAKELPARAM(point.x, point.y));
  const WPARAM item = LOWORD(hit);  // the nearest one
  RECT place = {};
  SendMessageA(list, LB_GETITEMRECT, item, reinterpret_cast<LPARAM>(&place));
  const LRESULT selected = SendMessageA(list, LB_GETSEL, item, 0);
  return selected != LB_ERR && PtInRect(&place, point) && selected;
}

mrContextMenuRes mrListBoxFactory::context_menu_invoke(HWND window, const char* class_name,
                                                       const CPoint& point) {
  if (!is_wrapped_type(class_name))
    return contextMenuNotClaimed;
  append_statement<mrListBox>(window, is_on_selected_item(window, point) ? "ContextMenu(true);"
                                                                         : "ContextMenu(false);");
  return contextMenuRecorded;
}
