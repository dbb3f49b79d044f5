// The ready file; see the header.
#include "apps/SampleCad/scReadyFile.h"

#include "apps/SampleCad/scIdNames.h"
#include "apps/SampleCad/scWindow.h"

#include <windows.h>
#include <commctrl.h>

#include <cstdio>
#include <cstring>

namespace {

constexpr char place_property[] = "SampleCad.Place";
constexpr char items_property[] = "SampleCad.Items";
constexpr UINT get_menu_handle = 0x1E1;  // MN_GETHMENU
constexpr UINT retry_ms = 20;
constexpr int max_items = 100;  // of one control: what a screen can show

CString g_path;     // empty: no file is kept
CString g_content;  // the lines last written
unsigned g_revision = 0;
bool g_retry_pending = false;  // a timer runs that writes the file again

// ---- lines --------------------------------------------------------------------------------------

void add_line(CString& out, const CString& place, const CString& name, HWND window, const RECT& rect) {
  out.AppendFormat("%s %s 0x%llX %ld %ld %ld %ld\n", place.GetString(), name.GetString(),
                   reinterpret_cast<unsigned long long>(window), rect.left, rect.top, rect.right,
                   rect.bottom);
}

bool has_class(HWND window, const char* prefix) {
  char name[64] = "";
  GetClassNameA(window, name, sizeof(name));
  return std::strncmp(name, prefix, std::strlen(prefix)) == 0;
}

// A text as one word: no accelerator mark, no shortcut, underscores for blanks.
CString as_word(const char* text) {
  CString word;
  for (; *text && *text != '\t'; ++text)
    if (*text == ' ')
      word += '_';
    else if (*text != '&')
      word += *text;
  return word;
}

struct ItemLines {
  CString& out;
  const CString& place;
  const CString& name;  // of the control
  HWND window;

  // rect in the control's client coordinates
  void add(const CString& item, RECT rect) const {
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&rect), 2);
    add_line(out, place, name + "[" + item + "]", window, rect);
  }
  void add(int index, const RECT& rect) const {
    CString item;
    item.Format("%d", index);
    add(item, rect);
  }
  LRESULT send(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const {
    return SendMessageA(window, message, wparam, lparam);
  }
};

// ---- parts of controls, by class ----------------------------------------------------------------

void list_toolbar(const ItemLines& lines) {
  const int count = static_cast<int>(lines.send(TB_BUTTONCOUNT));
  for (int index = 0; index < count && index < max_items; ++index) {
    TBBUTTON button = {};
    RECT rect;
    lines.send(TB_GETBUTTON, index, reinterpret_cast<LPARAM>(&button));
    if ((button.fsState & TBSTATE_HIDDEN) ||
        !lines.send(TB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&rect)))
      continue;
    const char* command = command_name(button.idCommand);
    if (*command && !(button.fsStyle & BTNS_SEP))
      lines.add(command, rect);
    else
      lines.add(index, rect);
  }
}

void list_tabs(const ItemLines& lines) {
  const int count = static_cast<int>(lines.send(TCM_GETITEMCOUNT));
  RECT rect;
  for (int index = 0; index < count && index < max_items; ++index)
    if (lines.send(TCM_GETITEMRECT, index, reinterpret_cast<LPARAM>(&rect)))
      lines.add(index, rect);
}

void list_box_items(const ItemLines& lines) {
  const int count = static_cast<int>(lines.send(LB_GETCOUNT));
  const int first = static_cast<int>(lines.send(LB_GETTOPINDEX));
  const RECT client = client_rect(lines.window);
  RECT rect;
  for (int index = first; index < count && index < first + max_items; ++index)
    if (lines.send(LB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&rect)) != LB_ERR &&
        rect.top < client.bottom)
      lines.add(index, rect);
}

void list_view_items(const ItemLines& lines) {
  const int count = static_cast<int>(lines.send(LVM_GETITEMCOUNT));
  for (int index = 0; index < count && index < max_items; ++index) {
    RECT rect = {LVIR_LABEL, 0, 0, 0};
    if (lines.send(LVM_GETITEMRECT, index, reinterpret_cast<LPARAM>(&rect)))
      lines.add(index, rect);
  }
}

// Position among siblings from the root down, counted from 1: 1|3.
CString tree_path(const ItemLines& lines, LRESULT item) {
  int position = 1;
  for (LRESULT i = item; (i = lines.send(TVM_GETNEXTITEM, TVGN_PREVIOUS, i)) != 0;)
    ++position;
  CString path;
  if (const LRESULT parent = lines.send(TVM_GETNEXTITEM, TVGN_PARENT, item))
    path = tree_path(lines, parent) + "|";
  path.AppendFormat("%d", position);
  return path;
}

void list_tree_items(const ItemLines& lines) {
  LRESULT item = lines.send(TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE);
  for (int left = max_items; item && left;
       --left, item = lines.send(TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, item)) {
    RECT rect;
    // The item handle travels in the rectangle.
    std::memcpy(&rect, &item, sizeof(item));
    if (lines.send(TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&rect)))
      lines.add(tree_path(lines, item), rect);
  }
}

void list_spin_arrows(const ItemLines& lines) {
  RECT up = client_rect(lines.window);
  RECT down = up;
  if (GetWindowLongPtrA(lines.window, GWL_STYLE) & UDS_HORZ)
    down.right = up.left = (up.left + up.right) / 2;
  else
    up.bottom = down.top = (up.top + up.bottom) / 2;
  lines.add("up", up);
  lines.add("down", down);
}

void list_track_bar_parts(const ItemLines& lines) {
  RECT rect = {};
  lines.send(TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(&rect));
  lines.add("thumb", rect);
  lines.send(TBM_GETCHANNELRECT, 0, reinterpret_cast<LPARAM>(&rect));
  // Some systems answer for a vertical bar as if it were horizontal.
  const bool is_vertical = GetWindowLongPtrA(lines.window, GWL_STYLE) & TBS_VERT;
  if (is_vertical && rect.right - rect.left > rect.bottom - rect.top)
    rect = {rect.top, rect.left, rect.bottom, rect.right};
  lines.add("channel", rect);
}

struct ClassItems {
  const char* class_prefix;
  void (*list)(const ItemLines&);
};
constexpr ClassItems class_items[] = {
    {"ToolbarWindow32", list_toolbar},
    {"BCGToolBar", list_toolbar},
    {"BCGPToolBar", list_toolbar},
    {"SysTabControl32", list_tabs},
    {"BCGTab", list_tabs},
    {"GXTabBeam", list_tabs},
    {"ListBox", list_box_items},
    {"ComboLBox", list_box_items},
    {"SysListView32", list_view_items},
    {"SysTreeView32", list_tree_items},
    {"msctls_updown32", list_spin_arrows},
    {"msctls_trackbar32", list_track_bar_parts},
};

void list_parts(const ItemLines& lines) {
  for (const ClassItems& entry : class_items)
    if (has_class(lines.window, entry.class_prefix))
      entry.list(lines);
  if (const auto* source = static_cast<const scItemSource*>(GetPropA(lines.window, items_property)))
    source->list_items([&lines](const CString& name, const RECT& rect) { lines.add(name, rect); });
}

// ---- windows ------------------------------------------------------------------------------------

// Place of the nearest window upwards that has one.
CString place_of(HWND window) {
  for (HWND up = window; up; up = GetAncestor(up, GA_PARENT))
    if (const char* place = static_cast<const char*>(GetPropA(up, place_property)))
      return place;
  const HWND root = GetAncestor(window, GA_ROOT);
  if (has_class(root, "ComboLBox"))
    return "combolist";  // the list that a combo box has dropped down
  char name[64] = "";
  GetClassNameA(root, name, sizeof(name));
  return CString("other:") + as_word(name);
}

bool is_place(HWND window) {
  return GetPropA(window, place_property) || GetAncestor(window, GA_ROOT) == window;
}

// A window is named by its id; one whose id has no name by its class and the number, a part of another
// control by its class.
CString name_of(HWND window) {
  if (is_place(window))
    return "window";
  const HWND parent = GetAncestor(window, GA_PARENT);
  const int id = static_cast<int>(GetWindowLongPtrA(window, GWLP_ID));
  if (*control_name(id) && is_place(parent))
    return control_name(id);
  char class_name[64] = "";
  GetClassNameA(window, class_name, sizeof(class_name));
  CString name = as_word(class_name);
  if (!is_place(parent))
    return name_of(parent) + "/" + name;
  if (id != 0)
    name.AppendFormat("#%d", id);
  return name;
}

void list_window(CString& out, HWND window) {
  // Labels and frames have nothing that one could click.
  const bool is_label = static_cast<int>(GetWindowLongPtrA(window, GWLP_ID)) == -1;
  if (!IsWindowVisible(window) || is_label)
    return;
  const CString place = place_of(window);
  const CString name = name_of(window);
  RECT rect = {};
  GetWindowRect(window, &rect);
  add_line(out, place, name, window, rect);
  list_parts({out, place, name, window});
}

BOOL CALLBACK list_descendant(HWND window, LPARAM lparam) {
  list_window(*reinterpret_cast<CString*>(lparam), window);
  return TRUE;
}

// ---- menus --------------------------------------------------------------------------------------

void list_menu(CString& out, const char* place, HWND window, HWND menu_window, HMENU menu) {
  const int count = GetMenuItemCount(menu);
  for (int index = 0; index < count; ++index) {
    char text[128] = "";
    MENUITEMINFOA item = {};
    item.cbSize = sizeof(item);
    item.fMask = MIIM_ID | MIIM_SUBMENU | MIIM_STRING;
    item.dwTypeData = text;
    item.cch = sizeof(text);
    RECT rect;
    if (!GetMenuItemInfoA(menu, index, TRUE, &item) || !GetMenuItemRect(menu_window, menu, index, &rect))
      continue;
    const char* command = item.hSubMenu ? "" : command_name(static_cast<int>(item.wID));
    const CString name = *command ? CString(command) : as_word(text);
    if (!name.IsEmpty())
      add_line(out, place, name, window, rect);
  }
}

BOOL CALLBACK list_top_level(HWND window, LPARAM lparam) {
  CString& out = *reinterpret_cast<CString*>(lparam);
  if (!IsWindowVisible(window))
    return TRUE;
  if (has_class(window, "#32768")) {
    list_menu(out, "menu", window, nullptr,
              reinterpret_cast<HMENU>(SendMessageA(window, get_menu_handle, 0, 0)));
    return TRUE;
  }
  list_window(out, window);
  if (HMENU bar = GetMenu(window))
    list_menu(out, "menubar", window, window, bar);
  EnumChildWindows(window, list_descendant, lparam);
  return TRUE;
}

// Written beside the file and renamed over it. False when a reader holds the old file open.
bool write_file(const CString& content) {
  const CString beside = g_path + ".new";
  FILE* file = std::fopen(beside, "wb");
  if (!file)
    return false;
  std::fprintf(file, "ready %u %lu %lu\n", g_revision + 1, GetCurrentProcessId(), GetCurrentThreadId());
  const bool written =
      std::fwrite(content.GetString(), 1, content.str().size(), file) == content.str().size();
  return (std::fclose(file) == 0) & written && MoveFileExA(beside, g_path, MOVEFILE_REPLACE_EXISTING);
}

void CALLBACK try_again(HWND /*window*/, UINT /*message*/, UINT_PTR timer, DWORD /*tick*/) {
  KillTimer(nullptr, timer);
  g_retry_pending = false;
  update_ready_file();
}

}  // namespace

void name_place(HWND window, const char* place) {
  SetPropA(window, place_property, const_cast<char*>(place));
}

void set_item_source(HWND window, const scItemSource* source) {
  SetPropA(window, items_property, const_cast<scItemSource*>(source));
}

void start_ready_file(const char* path) { g_path = path; }

void update_ready_file() {
  if (g_path.IsEmpty())
    return;
  CString content;
  EnumThreadWindows(GetCurrentThreadId(), list_top_level, reinterpret_cast<LPARAM>(&content));
  if (content == g_content)
    return;
  if (!write_file(content)) {
    // A reader is at it. The program may stay idle from here on, so a timer tries again: one timer, because
    // its message ends in an idle moment, too, which comes here once more.
    if (!g_retry_pending)
      g_retry_pending = SetTimer(nullptr, 0, retry_ms, try_again) != 0;
    return;
  }
  g_content = content;
  ++g_revision;
}

void remove_ready_file() {
  if (!g_path.IsEmpty())
    DeleteFileA(g_path);
}
