// The program's dialogs by command and by name; see the header.
#include "apps/SampleCad/scDialogs.h"

#include "apps/SampleCad/gallery.dev/gallery.h"
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "framework/CString.h"

#include <cstring>

namespace {

struct DialogEntry {
  const char* name;
  int command;
  void (*show)();
};

// One row per dialog: a new one needs its file, a row here and, when it has one, its menu item.
constexpr DialogEntry dialogs[] = {
    {"shape", IDM_DRAW_SHAPE, show_shape_dialog},
    {"find", IDM_EDIT_FIND, show_find_dialog},
    {"properties", IDM_FILE_PROPERTIES, show_properties_dialog},
    {"note", IDM_TOOLS_NOTE, show_note_dialog},
    {"about", IDM_HELP_ABOUT, show_about_dialog},
    {"open", IDM_FILE_OPEN, show_open_dialog},
    {"save", IDM_FILE_SAVE_AS, show_save_as_dialog},
    {"system-open", IDM_FILE_SYSTEM_OPEN, show_system_open_dialog},
    {"system-save", IDM_FILE_SYSTEM_SAVE, show_system_save_dialog},
    {"options", IDM_TOOLS_OPTIONS, show_options_dialog},
    {"ribbon", IDM_TOOLS_RIBBON, show_ribbon_dialog},
    {"table", IDM_VIEW_TABLE, show_table_dialog},
    {"buttons", IDM_GALLERY_BUTTONS, show_buttons_dialog},
    {"edits", IDM_GALLERY_EDITS, show_edits_dialog},
    {"combos", IDM_GALLERY_COMBOS, show_combos_dialog},
    {"lists", IDM_GALLERY_LISTS, show_lists_dialog},
    {"trees", IDM_GALLERY_TREES, show_trees_dialog},
    {"tabs", IDM_GALLERY_TABS, show_tabs_dialog},
    {"sliders", IDM_GALLERY_SLIDERS, show_sliders_dialog},
};

const DialogEntry* find_entry(int command) {
  for (const DialogEntry& entry : dialogs)
    if (entry.command == command)
      return &entry;
  return nullptr;
}

}  // namespace

bool open_dialog(int command) {
  const DialogEntry* entry = find_entry(command);
  if (entry)
    entry->show();
  return entry != nullptr;
}

bool is_dialog_command(int command) { return find_entry(command) != nullptr; }

int dialog_command(const char* name) {
  for (const DialogEntry& entry : dialogs)
    if (std::strcmp(entry.name, name) == 0)
      return entry.command;
  return 0;
}

const char* dialog_names() {
  // Put together once; the text lives as long as the program.
  static const CString names = [] {
    CString all;
    for (const DialogEntry& entry : dialogs)
      all += (all.IsEmpty() ? CString() : CString(" ")) + entry.name;
    return all;
  }();
  return names;
}
