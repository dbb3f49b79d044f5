#include "apps/mrrec/mrHost.h"

#include "apps/mrrec/mrFailure.h"

#include <windows.h>
#include <tlhelp32.h>

#include <algorithm>
#include <cstring>
#include <functional>

namespace {

constexpr DWORD poll_ms = 50;
constexpr DWORD patience_ms = 2000;  // after which the user is told what the program is waiting for

[[noreturn]] void fail(const std::string& reason) { throw mrFailure{exitFailed, reason}; }

std::string base_name(const std::string& path) { return path.substr(path.find_last_of("\\/") + 1); }

DWORD process_of(HWND window) {
  DWORD pid = 0;
  GetWindowThreadProcessId(window, &pid);
  return pid;
}

std::string class_of(HWND window) {
  char name[256] = "";
  GetClassNameA(window, name, sizeof name);
  return name;
}

std::string title_of(HWND window) {
  char title[1024] = "";
  GetWindowTextA(window, title, sizeof title);
  return title;
}

// ---- windows ------------------------------------------------------------------------------------

using WindowTest = std::function<bool(HWND)>;

struct WindowSearch {
  const WindowTest& is_it;
  HWND found;
};

BOOL CALLBACK test_window(HWND window, LPARAM lparam) {
  WindowSearch& search = *reinterpret_cast<WindowSearch*>(lparam);
  if (!IsWindowVisible(window) || class_of(window) == "ConsoleWindowClass" || !search.is_it(window))
    return TRUE;
  search.found = window;
  return FALSE;
}

HWND find_visible_window(const WindowTest& is_it) {
  WindowSearch search = {is_it, nullptr};
  EnumWindows(test_window, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

// ---- processes ----------------------------------------------------------------------------------

mrHandle open_process(DWORD pid) {
  mrHandle process(OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, pid));
  if (process)
    return process;
  if (GetLastError() == ERROR_ACCESS_DENIED)
    fail("process " + std::to_string(pid) +
         " cannot be opened (access denied); give mrrec the rights that the program runs with");
  fail("there is no process " + std::to_string(pid));
}

std::string executable_name(HANDLE process, DWORD pid) {
  char path[MAX_PATH] = "";
  DWORD size = sizeof path;
  if (!QueryFullProcessImageNameA(process, 0, path, &size))
    return "process " + std::to_string(pid);
  return base_name(path);
}

bool has_ended(HANDLE process) { return WaitForSingleObject(process, 0) == WAIT_OBJECT_0; }

// The host but for its thread.
mrHost describe_process(DWORD pid, mrHandle process) {
  if (pid == GetCurrentProcessId())
    fail("mrrec cannot record itself");
  mrHost host;
  host.process = std::move(process);
  host.pid = pid;
  host.name = executable_name(host.process, pid);
  if (is_32_bit_process(host.process))
    fail(host.name + " (pid " + std::to_string(pid) +
         ") is a 32-bit program; only 64-bit programs can be recorded");
  return host;
}

// ---- waiting ------------------------------------------------------------------------------------

// Asks again and again for a window, until there is one or the time is over (null).
HWND wait_for_window(const std::string& awaited, DWORD wait_ms, const std::function<HWND()>& find) {
  const ULONGLONG start = GetTickCount64();
  bool told = false;
  for (;;) {
    if (const HWND window = find())
      return window;
    const ULONGLONG waited = GetTickCount64() - start;
    if (waited >= wait_ms)
      return nullptr;
    if (waited >= patience_ms && !told) {
      print_note("waiting for " + awaited);
      told = true;
    }
    Sleep(poll_ms);
  }
}

std::string in_seconds(DWORD ms) { return std::to_string(ms / 1000) + " s"; }

// Waits for the window of a process that is known already.
mrHost with_window(mrHost host, DWORD wait_ms) {
  const std::string who = host.name + " (pid " + std::to_string(host.pid) + ")";
  const HWND window = wait_for_window("a window of " + who, wait_ms, [&] {
    const HWND found = first_visible_window({host.pid});
    if (!found && has_ended(host.process))
      fail(who + " ended without showing a window");
    return found;
  });
  if (!window)
    fail(who + " showed no window within " + in_seconds(wait_ms));
  host.thread = GetWindowThreadProcessId(window, nullptr);
  return host;
}

// The window shows first which process it is.
mrHost of_window(HWND window) {
  const DWORD pid = process_of(window);
  mrHost host = describe_process(pid, open_process(pid));
  // A title may belong to a window of another thread than the process's first one.
  const HWND first = first_visible_window({pid});
  host.thread = GetWindowThreadProcessId(first ? first : window, nullptr);
  return host;
}

// ---- the four ways to name a host ---------------------------------------------------------------

mrHost launch(const std::string& command_line, DWORD wait_ms) {
  std::string text = command_line;  // CreateProcess writes into it
  STARTUPINFOA startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION info = {};
  // A group of its own: Ctrl+C in this console ends the recording, not a host that has the console too.
  if (!CreateProcessA(nullptr, &text[0], nullptr, nullptr, FALSE, CREATE_NEW_PROCESS_GROUP, nullptr, nullptr,
                      &startup, &info))
    fail("cannot start " + command_line + ": " + system_error_text());
  CloseHandle(info.hThread);
  return with_window(describe_process(info.dwProcessId, mrHandle(info.hProcess)), wait_ms);
}

mrHost of_executable(const std::string& name, DWORD wait_ms) {
  std::vector<DWORD> processes = processes_named(name);
  if (processes.empty())
    fail("no process " + name + " runs");
  // With a single one it is known now whether it can be recorded at all.
  if (processes.size() == 1)
    return with_window(describe_process(processes[0], open_process(processes[0])), wait_ms);
  const HWND window = wait_for_window("a window of " + name, wait_ms, [&] {
    processes = processes_named(name);
    if (processes.empty())
      fail("every process " + name + " ended without showing a window");
    return first_visible_window(processes);
  });
  if (!window)
    fail("no process " + name + " showed a window within " + in_seconds(wait_ms));
  return of_window(window);
}

mrHost of_title(const std::string& part, DWORD wait_ms) {
  const auto is_it = [&](HWND window) {
    return process_of(window) != GetCurrentProcessId() && title_of(window).find(part) != std::string::npos;
  };
  const HWND window = wait_for_window("a window with \"" + part + "\" in its title", wait_ms,
                                      [&] { return find_visible_window(is_it); });
  if (!window)
    fail("no window with \"" + part + "\" in its title showed within " + in_seconds(wait_ms));
  return of_window(window);
}

}  // namespace

bool is_32_bit_process(HANDLE process, BOOL(WINAPI* ask)(HANDLE, PBOOL)) {
  BOOL is_wow64 = FALSE;
  return ask(process, &is_wow64) && is_wow64;
}

std::vector<DWORD> processes_named(const std::string& name) {
  std::vector<DWORD> found;
  const mrHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  PROCESSENTRY32 entry = {};
  entry.dwSize = sizeof entry;
  if (!snapshot || !Process32First(snapshot, &entry))
    return found;
  do {
    const std::string executable = base_name(entry.szExeFile);
    const bool is_it = _stricmp(executable.c_str(), name.c_str()) == 0 ||
                       _stricmp(executable.c_str(), (name + ".exe").c_str()) == 0;
    if (is_it && entry.th32ProcessID != GetCurrentProcessId())
      found.push_back(entry.th32ProcessID);
  } while (Process32Next(snapshot, &entry));
  return found;
}

HWND first_visible_window(const std::vector<DWORD>& processes) {
  return find_visible_window([&](HWND window) {
    return std::find(processes.begin(), processes.end(), process_of(window)) != processes.end();
  });
}

mrHost find_host(const mrArguments& arguments, DWORD wait_ms) {
  switch (arguments.host_option) {
  case hostLaunch:
    return launch(arguments.host, wait_ms);
  case hostPid:
    return with_window(describe_process(arguments.pid, open_process(arguments.pid)), wait_ms);
  case hostProcess:
    return of_executable(arguments.host, wait_ms);
  case hostTitle:
  case hostNone:
    break;
  }
  return of_title(arguments.host, wait_ms);
}
