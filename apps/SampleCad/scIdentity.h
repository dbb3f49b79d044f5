// What the program tells about its windows when a recorder asks with the four identity messages.
//
// "MSG_ZQ_GetDialogTemplateID" and "MSG_ZQ_GetDialogResLibrary" are asked of a dialog; "MSG_ZQ_GetWindowName"
// and "MSG_ZQ_GetWindowIDD" are asked of a top-level window about a window given in lParam. Texts travel as
// global atoms that this program adds and whoever asks deletes.
#pragma once

#include <windows.h>

// Name of the resource library of all dialogs: the resource script's file name.
constexpr char sc_resource_library[] = "samplecad";

// Gives a window a name by which scripts find it. The text is borrowed for the life of the window.
void set_window_name(HWND window, const char* name);
// Gives a window that is no dialog the dialog number that its controls belong to.
void set_window_idd(HWND window, int dialog_id);

// For top-level windows: answers the two messages about other windows. False for every other message.
bool answer_identity(UINT message, LPARAM lparam, LRESULT& answer);
// For dialogs made from a template: answers the two messages about itself. False for every other message.
bool answer_dialog_identity(UINT message, int template_id, LRESULT& answer);
