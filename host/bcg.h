// Stand-in for the outside control library of the host: the message number of its grid.
//
// Registered under exactly this name in every process that loads the library (or compiles this file in), at
// load.
#pragma once

#include "framework/mrApi.h"

// Sent to a grid window when the user selected another entry of it.
extern MR_API unsigned int BCGM_GRID_SEL_CHANGED;
