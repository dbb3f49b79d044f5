// The tick count that recognisers measure their short waits with.
#pragma once

#include "framework/mrApi.h"

#include <windows.h>

// Milliseconds since the system started, wrapping at 32 bits. Any thread.
MR_API DWORD mr_tick_count();

// Replaces the source of the ticks in this process; null brings GetTickCount back. For tests, which cannot
// wait for a wrap of the clock.
using mrTickSource = DWORD(WINAPI*)();
MR_API void set_tick_source(mrTickSource source);
