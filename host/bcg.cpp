// Stand-in for the outside control library of the host; see the header.
#include "host/bcg.h"

#include <windows.h>

unsigned int BCGM_GRID_SEL_CHANGED = RegisterWindowMessageA("BCGM_GRID_SEL_CHANGED");
