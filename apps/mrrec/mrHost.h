// Finding the host: the process to record and its GUI thread.
#pragma once

#include "apps/mrrec/mrArguments.h"
#include "apps/mrrec/mrHandle.h"

#include <windows.h>

#include <string>
#include <vector>

// How long a host may take to show its first window, milliseconds.
constexpr DWORD window_wait_ms = 30000;

struct mrHost {
  mrHandle process;  // to wait for its end
  DWORD pid = 0;
  DWORD thread = 0;  // of the first visible top-level window
  std::string name;  // the executable's base name, "SampleCad.exe"
};

// Finds (or starts) the host of the command line and waits for its window. Throws mrFailure (exitFailed) when
// there is no such process, when it cannot be recorded, or when no window shows in time.
mrHost find_host(const mrArguments& arguments, DWORD wait_ms = window_wait_ms);

// A 32-bit process cannot load the 64-bit library: hooks on it are never called, and nothing would say so.
// ask is IsWow64Process but in tests. False when the system does not say.
bool is_32_bit_process(HANDLE process, BOOL(WINAPI* ask)(HANDLE, PBOOL) = IsWow64Process);

// The processes whose executable has this base name (with or without ".exe"), in any case.
std::vector<DWORD> processes_named(const std::string& name);

// The first visible top-level window, in the order from front to back, of one of these processes; null when
// there is none. Console windows do not count: another process serves them.
HWND first_visible_window(const std::vector<DWORD>& processes);
