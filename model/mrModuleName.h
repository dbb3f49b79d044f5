// The name of a host program in the script.
#pragma once

#include "framework/mrApi.h"

// Cuts a module's file name, in place, at its first "." unless that is its first character: "host.exe" and
// its debug build "hostg.exe" are both "host". Any process, any thread.
MR_API void cut_module_name(char* module);
