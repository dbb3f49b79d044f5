// Stand-in for the host's tool library; see the header.
#include "host/kvttools.h"

#include <windows.h>

unsigned int kvtWM_REQUEST_CAD_TREE_INFORMATION =
    RegisterWindowMessageA("kvtWM_REQUEST_CAD_TREE_INFORMATION");
unsigned int kvtWM_CAD_TREE_CHANGED = RegisterWindowMessageA("kvtWM_CAD_TREE_CHANGED");
