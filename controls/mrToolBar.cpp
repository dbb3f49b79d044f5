#include "controls/mrToolBar.h"

#include "controls/mrToolBarItems.h"
#include "hooks/mrDispatcher.h"
#include "model/mrRecorder.h"
#include "script/mrDeclarations.h"

#include <windows.h>
#include <commctrl.h>

#include <cstring>

// A command follows the end of its popups, focus or menu loop within this time, or it is none of the gesture.
constexpr DWORD gesture_end_ms = 1000;

mrToolBarFactory::mrToolBarFactory() : mrBaseWindowFactory("ToolBar", "") { set_timeout(gesture_end_ms); }

mrFactoryType mrToolBarFactory::get_factory_type() { return factoryToolBar; }

// ---- builder: recorder process -------------------------------------------------------------------

namespace {

// A context menu that the mouse opened belongs to the window under it, whose recorder may have a say.
bool is_mouse_context_menu(const mrToolbarHeader& header) {
  return header.state == mrTrackContextMenu && header.start_x >= 0 && header.start_y >= 0;
}

HWND window_of(const mrToolbarHeader& header) {
  return header.state == mrTrackContextMenu ? header.start_hwnd : levels_of(header)->hwnd;
}

bool is_checked(const mrToolbarRec& level) {
  return level.item_state & (level.hmenu ? MFS_CHECKED : TBSTATE_CHECKED);
}

// Deliberate: every menu item is toggled, whether or not it has a check mark; a program that sets the mark
// only when the menu opens does not tell them apart earlier.
const char* statement_of(const mrToolbarRec& chosen) {
  if (!chosen.hmenu && !(chosen.item_type & BTNS_CHECK))
    return "Click();";
  return is_checked(chosen) ? "Checked = false;" : "Checked = true;";
}

}  // namespace

void mrToolBarFactory::copy_data(void* data) {
  const mrToolbarHeader& header = *static_cast<const mrToolbarHeader*>(data);
  if (!header.count)
    return;
  if (is_mouse_context_menu(header) && !is_context_menu_recorded(header))
    return;
  get_recorder()->get_actions().AddTail(make_action<mrToolBar>(header, this));
}

// The first recorder that claims the menu decides.
bool mrToolBarFactory::is_context_menu_recorded(const mrToolbarHeader& header) const {
  char class_name[mr_max_text] = "";
  GetClassNameA(header.start_hwnd, class_name, mr_max_text);
  const CPoint point(header.start_x, header.start_y);
  for (int type = last_recorded_factory_type; type >= first_factory_type; --type) {
    mrActionFactory* const factory = get_factory(type, true);
    if (!factory)
      continue;
    const mrContextMenuRes answer = factory->context_menu_invoke(header.start_hwnd, class_name, point);
    if (answer != contextMenuNotClaimed)
      return answer == contextMenuRecorded;
  }
  return false;
}

mrContextMenuRes mrToolBarFactory::context_menu_invoke(HWND /*window*/, const char* /*name*/,
                                                       const CPoint& /*point*/) {
  return contextMenuNotClaimed;
}

// From the chosen item outward: item, what opened it, the item that did, ..., the menu's root, the windows.
mrToolBar::mrToolBar(const mrToolbarHeader& header, mrBaseWindowFactory* factory)
    : mrBaseWindow(nullptr, factory) {
  m_window = window_of(header);
  const mrToolbarRec* const levels = levels_of(header);
  const uint64_t chosen = header.count - 1;
  add_window_info(levels[chosen], 0);
  for (uint64_t level = chosen; level-- > 0;) {
    add_window_info(levels[level], 1);
    add_window_info(levels[level], 0);
  }
  if (header.state == mrTrackMainMenu)
    add_root_info(mr_main_menu_class);
  if (header.state == mrTrackContextMenu)
    add_root_info(mr_context_menu_class);
  fill_hierarchy(m_window);
  set_action_string(statement_of(levels[chosen]));
}

mrToolBar::~mrToolBar() = default;

void mrToolBar::add_window_info(const mrToolbarRec& level, int popup) {
  mrWindowInfo* const info = new mrWindowInfo;
  m_path.Add(info);
  info->window = level.hwnd;
  strcpy(info->class_name, popup ? mr_popup_toolbar_class : mr_toolbar_button_class);
  if (level.item_id || *level.item_text) {
    lstrcpynA(info->text, level.item_text, mr_window_text_size);
    info->id = level.item_id;
  } else {
    info->id = level.item_index;
    info->flags |= mr_window_id_is_position;
  }
}

void mrToolBar::add_root_info(const char* class_name) {
  mrWindowInfo* const info = new mrWindowInfo;
  m_path.Add(info);
  info->window = m_window;
  strcpy(info->class_name, class_name);
}

// ---- declaration: recorder process ---------------------------------------------------------------

namespace {

bool is_position(const mrWindowInfo& info) { return info.flags & mr_window_id_is_position; }

// What the id of an item is called in the script: a command's name, or a position in decimal.
CString item_name(const mrWindowInfo& info, const mrIDNamer& namer) {
  if (!is_position(info))
    return namer.get_definition(info.id, "IDM_", 0, "");
  CString position;
  position.Format("%d", static_cast<int>(info.id));
  return position;
}

// The text after the first prefix, or the name of the id after the second when there is no text.
CString text_identifier(const mrWindowInfo& info, const char* text_prefix, const char* id_prefix,
                        const CString& id_name) {
  return *info.text ? CString(text_prefix) + info.text : CString(id_prefix) + id_name;
}

}  // namespace

mrDeclarationRes mrToolBarFactory::get_declaration(const mrWindowInfo* info, CString& declaration,
                                                   CString& search, CString& identifier) {
  const char* const class_name = info->class_name;
  if (is_toolbar_class(class_name)) {
    declare_toolbar(*info, declaration, search, identifier);
    return declaredByControlId;
  }
  if (strcmp(class_name, mr_main_menu_class) == 0) {
    declaration = search = "MainMenu()";
    identifier = "MainMenu";
    return declaredActiveDialog;
  }
  if (strcmp(class_name, mr_context_menu_class) == 0) {
    declaration = search = "CurrentContextMenu()";
    identifier = "CurrentContextMenu";
    return declaredActiveDialog;
  }
  if (strcmp(class_name, mr_toolbar_button_class) == 0) {
    declare_item(*info, declaration, identifier);
    search = declaration;
    return declaredByControlId;
  }
  if (strcmp(class_name, mr_popup_toolbar_class) == 0) {
    declaration = search = "Expand()";
    identifier =
        text_identifier(*info, "PT_", "PopupToolbar_", item_name(*info, get_recorder()->get_namer()));
    return declaredByControlId;
  }
  return declaredNot;
}

void mrToolBarFactory::declare_toolbar(const mrWindowInfo& info, CString& declaration, CString& search,
                                       CString& identifier) const {
  const CString text = mrRecorder::quote_string(info.text);
  const CString id_name = get_id_name(&info);
  declaration.Format("Toolbar(\"%s\", %s)", text.GetString(), id_name.GetString());
  search.Format("Toolbar(\"%s\", %s, %s)", text.GetString(), id_name.GetString(), mr_recursive_search);
  identifier = text_identifier(info, "", "Toolbar_", id_name);
}

void mrToolBarFactory::declare_item(const mrWindowInfo& info, CString& declaration,
                                    CString& identifier) const {
  const CString id_name = item_name(info, get_recorder()->get_namer());
  if (is_position(info))
    declaration.Format("GetItem(%s)", id_name.GetString());
  else
    declaration.Format("GetItemByID(\"%s\", %s)", mrRecorder::quote_string(info.text).GetString(),
                       id_name.GetString());
  identifier = text_identifier(info, "TBB_", "ToolbarButton_", id_name);
}
