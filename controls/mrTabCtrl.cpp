#include "controls/mrTabCtrl.h"

#include "hooks/mrChannel.h"
#include "hooks/mrHostMessages.h"

#include <commctrl.h>

#include <cstring>

namespace {

constexpr const char system_tab_class[] = "SysTabControl32";
constexpr const char bcg_tab_prefix[] = "BCGTab";
constexpr const char tab_beam_prefix[] = "GXTabBeam";

// Posted when the user chose another tab of a GX tab beam, by whatever window of the host; lParam is the
// beam.
constexpr UINT tab_beam_changed = WM_USER + 901;
static_assert(tab_beam_changed == 1925, "the host's number");

// The record and its one buffer: filled and sent within one hook call.
mrTabCtrlRec record;

template <size_t SIZE>
bool begins_with(const char* text, const char (&prefix)[SIZE]) {
  return strncmp(text, prefix, SIZE - 1) == 0;
}

bool is_system_tab(HWND window) { return window && strcmp(hooked_class_name(window), system_tab_class) == 0; }

// The tab window on which the user chose another tab; null for every other message.
HWND changed_tab(int kind, const mrHookedMessage& msg) {
  if (const NMHDR* const header = notification(msg))
    return header->code == TCN_SELCHANGE && is_system_tab(header->hwndFrom) ? header->hwndFrom : nullptr;
  // Sent, the number of the tab beam is something else.
  const bool names_a_tab = msg.message == host_messages().bcg_change_active_tab ||
                           (msg.message == tab_beam_changed && kind == hookGetMessage);
  const HWND tab = reinterpret_cast<HWND>(msg.lparam);
  // Deliberate: 1925 is a number that other programs use for themselves, with whatever they like in its
  // lParam.
  return names_a_tab && IsWindow(tab) ? tab : nullptr;
}

}  // namespace

mrTabCtrlFactory::mrTabCtrlFactory() : mrBaseWindowFactory("TabCtrl", "") {}

mrFactoryType mrTabCtrlFactory::get_factory_type() { return factoryTabCtrl; }

bool mrTabCtrlFactory::is_wrapped_type(const char* class_name) const {
  return strcmp(class_name, system_tab_class) == 0 || begins_with(class_name, bcg_tab_prefix) ||
         begins_with(class_name, tab_beam_prefix);
}

// ---- recogniser: host process, GUI thread, inside a hook ------------------------------------------

bool mrTabCtrlFactory::handle_message(int kind, int /*code*/, WPARAM /*wparam*/, LPARAM lparam) {
  mrHookedMessage msg;
  if (kind == hookCallWndProcRet || !read_hooked_message(kind, lparam, msg))
    return false;
  // A tab control's own messages: clicks on it are nobody else's. Notifications go on, they come from the
  // controls on its pages.
  if (msg.message != WM_NOTIFY && is_wrapped_window(msg.window))
    return true;
  const HWND tab = changed_tab(kind, msg);
  if (!tab)
    return false;
  upload_current_tab(tab);
  return true;
}

void mrTabCtrlFactory::upload_current_tab(HWND tab) {
  record.tab = tab;
  record.index = SendMessageA(tab, TCM_GETCURSEL, 0, 0);
  memset(record.text, 0, sizeof record.text);  // stays empty when the caption cannot be read

  TCITEMA item = {};
  item.mask = TCIF_TEXT;
  item.pszText = record.text;
  item.cchTextMax = mr_max_text;
  SendMessageA(tab, TCM_GETITEMA, static_cast<WPARAM>(record.index), reinterpret_cast<LPARAM>(&item));
  // A control may point at a text of its own instead of filling the buffer.
  if (item.pszText != record.text && item.pszText && item.pszText != LPSTR_TEXTCALLBACKA)
    lstrcpynA(record.text, item.pszText, mr_max_text);
  record.text[mr_max_text - 1] = '\0';
  send_data(sizeof record, &record);
}

// ---- builder: recorder process --------------------------------------------------------------------

void mrTabCtrlFactory::copy_data(void* data) {
  const mrTabCtrlRec& rec = *static_cast<const mrTabCtrlRec*>(data);
  CString statement;
  // The caption stands as it is, without escapes.
  if (*rec.text)
    statement.Format("SelectItemByName(\"%s\");", rec.text);
  else
    statement.Format("SelectItem(%d);", static_cast<int>(rec.index));
  append_statement<mrTabCtrl>(rec.tab, statement);
}

mrContextMenuRes mrTabCtrlFactory::context_menu_invoke(HWND window, const char* class_name,
                                                       const CPoint& point) {
  if (!is_wrapped_type(class_name))
    return contextMenuNotClaimed;
  const LRESULT index = SendMessageA(window, TCM_GETCURSEL, 0, 0);
  RECT tab = {};
  // Deliberate: the first tab is never measured, a menu opened on it always counts as opened beside it.
  const bool on_current =
      index > 0 &&
      send_remotely(window, TCM_GETITEMRECT, static_cast<WPARAM>(index), &tab, sizeof tab) != 0 &&
      PtInRect(&tab, point);
  append_statement<mrTabCtrl>(window, on_current ? "ContextMenu(true);" : "ContextMenu(false);");
  return contextMenuRecorded;
}
