// Names of the program's ids, for the ready file: the headers' own #define names, found by number.
#pragma once

// Name of a control or window id, "" when it has none.
const char* control_name(int id);
// Name of a command id, "" when it has none.
const char* command_name(int id);
