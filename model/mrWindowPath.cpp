// Describes a window by its path. Recorder process, recorder window's thread; the host answers the questions
// on its GUI thread, while it waits for the upload that brought the window here.
#include "hooks/mrHostMessages.h"
#include "model/mrBaseWindow.h"
#include "model/mrModuleName.h"

#include <windows.h>
#include <psapi.h>

#include <cstdlib>
#include <cstring>

namespace {

// A label's top must lie less than this far below the dialog's top edge.
constexpr LONG label_search_depth = 64;  // pixels

HWND top_level_ancestor(HWND window) {
  while (const HWND parent = GetParent(window))
    window = parent;
  return window;
}

// Takes the text that the host put into a global atom. The host only adds atoms, the recorder deletes them.
void take_atom_text(LRESULT reply, char (&text)[mr_window_text_size]) {
  if (!(reply & mr_atom_bits))
    return;
  const ATOM atom = static_cast<ATOM>(reply);
  GlobalGetAtomNameA(atom, text, mr_window_text_size);
  GlobalDeleteAtom(atom);
}

// Base file name of the main module of the window's process; empty when the process cannot be opened.
void read_module(HWND window, char (&module)[mr_window_text_size]) {
  DWORD process_id = 0;
  GetWindowThreadProcessId(window, &process_id);
  const HANDLE process = OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, process_id);
  if (!process)
    return;
  HMODULE main_module = nullptr;  // room for one: the first module is the main one
  DWORD needed = 0;
  if (K32EnumProcessModules(process, &main_module, sizeof main_module, &needed)) {
    char path[mr_window_text_size] = "";
    K32GetModuleBaseNameA(process, main_module, path, mr_window_text_size);
    char file[_MAX_FNAME] = "";
    char extension[_MAX_EXT] = "";
    _splitpath(path, nullptr, nullptr, file, extension);
    snprintf(module, mr_window_text_size, "%s%s", file, extension);
  }
  CloseHandle(process);
}

void ask_for_dialog(HWND parent, mrWindowInfo& info) {
  const mrHostMessages& host = host_messages();
  info.dialog_template_id = static_cast<unsigned>(SendMessageA(parent, host.get_dialog_template_id, 0, 0));
  if (info.dialog_template_id) {
    take_atom_text(SendMessageA(parent, host.get_dialog_res_library, 0, 0), info.resource_library);
    return;
  }
  info.dialog_template_id = static_cast<unsigned>(
      SendMessageA(top_level_ancestor(parent), host.get_window_idd, 0, reinterpret_cast<LPARAM>(parent)));
}

bool is_label(HWND candidate) {
  char class_name[mr_window_text_size] = "";
  GetClassNameA(candidate, class_name, mr_window_text_size);
  if (strcmp(class_name, "Static") == 0)
    return true;
  return strcmp(class_name, "Button") == 0 && (GetWindowLongPtrA(candidate, GWL_STYLE) & 0xF) == BS_GROUPBOX;
}

// The topmost label wins, among equally high ones the leftmost.
BOOL CALLBACK take_better_label(HWND candidate, LPARAM dialog_info) {
  mrWindowInfo& info = *reinterpret_cast<mrWindowInfo*>(dialog_info);
  if (GetParent(candidate) != info.window || !is_label(candidate))
    return TRUE;
  char text[mr_window_text_size] = "";
  if (!GetWindowTextA(candidate, text, mr_window_text_size))
    return TRUE;

  RECT label = {};
  RECT dialog = {};
  GetWindowRect(candidate, &label);
  GetWindowRect(info.window, &dialog);
  const POINT offset = {label.left - dialog.left, label.top - dialog.top};
  const POINT best = info.label_position;
  if (offset.y >= label_search_depth || offset.y > best.y || (offset.y == best.y && offset.x >= best.x))
    return TRUE;

  info.label_position = offset;
  info.id = GetWindowLongPtrA(candidate, GWLP_ID);
  strcpy(info.text, text);
  strcpy(info.class_name,
         IsWindowVisible(candidate) ? mr_dialog_by_visible_control_class : mr_dialog_by_control_class);
  return TRUE;
}

bool is_untitled_child_dialog(const mrWindowInfo& info) {
  return strcmp(info.class_name, "#32770") == 0 && (info.style & WS_CHILD) && info.id == 0 && !*info.text;
}

void describe_window(HWND window, HWND parent, mrWindowInfo& info) {
  info.window = window;
  if (IsWindow(window))
    read_module(window, info.module);
  GetWindowTextA(window, info.text, mr_window_text_size);
  GetClassNameA(window, info.class_name, mr_window_text_size);
  take_atom_text(SendMessageA(top_level_ancestor(window), host_messages().get_window_name, 0,
                              reinterpret_cast<LPARAM>(window)),
                 info.name);
  info.id = GetWindowLongPtrA(window, GWLP_ID);
  info.style = GetWindowLongPtrA(window, GWL_STYLE);
  info.ex_style = GetWindowLongPtrA(window, GWL_EXSTYLE);
  if (parent)
    ask_for_dialog(parent, info);
  cut_module_name(info.module);
  if (!(info.style & WS_CHILD)) {
    info.flags |= mr_window_not_child;
    info.id = 0;  // for a window with a menu it is the menu's handle
  }
  if (is_untitled_child_dialog(info)) {
    info.label_position = {32767, label_search_depth};
    EnumChildWindows(window, take_better_label, reinterpret_cast<LPARAM>(&info));
  }
  info.top_level = parent ? 0 : 1;
}

}  // namespace

void cut_module_name(char* module) {
  char* const dot = strchr(module, '.');
  if (!dot || dot == module)
    return;
  // Deliberate: the letter before the point goes whenever it is a "g", in names that merely end in one too.
  const bool debug_letter = dot[-1] == 'G' || dot[-1] == 'g';
  dot[debug_letter ? -1 : 0] = '\0';
}

void mrBaseWindow::fill_hierarchy(HWND window) {
  while (window) {
    const HWND parent = GetParent(window);
    mrWindowInfo* const info = new mrWindowInfo;
    m_path.Add(info);
    describe_window(window, parent, *info);
    window = parent;
  }
}
