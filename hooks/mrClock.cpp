#include "hooks/mrClock.h"

static mrTickSource tick_source = GetTickCount;

DWORD mr_tick_count() { return tick_source(); }

void set_tick_source(mrTickSource source) { tick_source = source ? source : GetTickCount; }
