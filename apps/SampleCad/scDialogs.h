// The program's dialogs by command and by name.
#pragma once

// Opens the dialog of a menu command; modal ones return when they are closed. False: no dialog has this
// command.
bool open_dialog(int command);
bool is_dialog_command(int command);
// Command of the dialog with this name ("shape"), 0 when there is none.
int dialog_command(const char* name);
// All names, one blank between them: for messages.
const char* dialog_names();

// Each dialog has a source file of its own.
void show_shape_dialog();
void show_find_dialog();
void show_properties_dialog();
void show_note_dialog();
void show_about_dialog();
void show_open_dialog();
void show_save_as_dialog();
void show_system_open_dialog();
void show_system_save_dialog();
void show_options_dialog();
void show_ribbon_dialog();
void show_table_dialog();
void show_buttons_dialog();
void show_edits_dialog();
void show_combos_dialog();
void show_lists_dialog();
void show_trees_dialog();
void show_tabs_dialog();
void show_sliders_dialog();

// Saves the active document where it was saved last, or asks where.
void save_document();
// The active document is another one, or has changed.
void refresh_table_dialog();
