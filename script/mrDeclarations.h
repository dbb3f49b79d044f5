// What the declarations of all factories have in common.
#pragma once

// The player's flag, defined by the script job, that looks for a window at any depth.
constexpr const char* mr_recursive_search = "mpRECURSIVE_SEARCH";
