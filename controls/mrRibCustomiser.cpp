#include "controls/mrRibCustomiser.h"

#include "hooks/mrHostMessages.h"
#include "hooks/mrIdentity.h"
#include "host/bcg.h"
#include "model/mrRecorder.h"
#include "script/mrDeclarations.h"

#include <cstring>

namespace {

// The class name under which widgets are declared; no real window has it.
constexpr const char widget_class[] = "RibCustomiserClass";

// The record and its one buffer: filled and sent within one hook call.
mrRibCustomiserRec record;

// A widget is told by its answer alone, and a claim decides what every other recorder sees. So both windows
// have to be asked about each message that somebody could record.
bool is_widget(HWND window, const mrHookedMessage& msg) {
  return is_identified(window, host_messages().request_rib_customisation, msg);
}

}  // namespace

mrRibCustomiser::mrRibCustomiser(HWND widget, mrBaseWindowFactory* factory) : mrBaseWindow(widget, factory) {
  strcpy(m_path[0]->class_name, widget_class);
}

mrRibCustomiserFactory::mrRibCustomiserFactory()
    : mrBaseWindowFactory("RibCustomisationWidget", widget_class) {}

mrFactoryType mrRibCustomiserFactory::get_factory_type() { return factoryRibCustomiser; }

// ---- recogniser: host process, GUI thread, inside a hook ------------------------------------------

bool mrRibCustomiserFactory::handle_message(int kind, int /*code*/, WPARAM /*wparam*/, LPARAM lparam) {
  mrHookedMessage msg;
  if (kind == hookCallWndProcRet || !read_hooked_message(kind, lparam, msg))
    return false;
  // Messages of a widget and of its children are nobody else's.
  const HWND parent = GetParent(msg.window);
  if (parent && is_widget(parent, msg))
    return true;
  if (!is_widget(msg.window, msg))
    return false;
  if (msg.message == BCGM_GRID_SEL_CHANGED)
    upload_selected(msg.window);
  return true;
}

void mrRibCustomiserFactory::upload_selected(HWND widget) {
  record.widget = widget;
  memset(record.selected, 0, sizeof record.selected);  // stays empty when the widget does not fill it
  const mrRibTextRequest block = {record.selected, mr_max_text};
  SendMessageA(widget, host_messages().request_rib_customisation, ribSelected,
               reinterpret_cast<LPARAM>(&block));
  record.selected[mr_max_text - 1] = '\0';
  send_data(sizeof record, &record);
}

// ---- builder: recorder process --------------------------------------------------------------------

void mrRibCustomiserFactory::copy_data(void* data) {
  const mrRibCustomiserRec& rec = *static_cast<const mrRibCustomiserRec*>(data);
  // Only the last selection of a run counts.
  replace_or_append_statement<mrRibCustomiser>(
      rec.widget, "Selected = \"" + mrRecorder::quote_string(rec.selected) + "\";");
}

mrContextMenuRes mrRibCustomiserFactory::context_menu_invoke(HWND /*window*/, const char* /*class_name*/,
                                                             const CPoint& /*point*/) {
  return contextMenuNotClaimed;
}

// ---- declaration: recorder process ----------------------------------------------------------------

mrDeclarationRes mrRibCustomiserFactory::get_declaration(const mrWindowInfo* info, CString& declaration,
                                                         CString& search, CString& identifier) {
  if (!is_wrapped_type(info->class_name))
    return declaredNot;
  if (get_named_declaration(info, declaration, search, identifier) == declaredByName)
    return declaredByName;

  const CString id_name = get_id_name(info);
  const CString text = mrRecorder::quote_string(info->text);
  declaration.Format("%s(\"%s\", %s)", get_script_name(), text.GetString(), id_name.GetString());
  search.Format("%s(\"%s\", %s, %s)", get_script_name(), text.GetString(), id_name.GetString(),
                mr_recursive_search);
  if (*info->text)
    identifier = info->text;
  else
    identifier.Format("%s_%s", get_script_name(), id_name.GetString());
  return declaredByControlId;
}
