#include "tests/support/e2e.h"

#include "hooks/mrChannel.h"
#include "hooks/mrClock.h"
#include "hooks/mrSharedBlock.h"
#include "tests/support/files.h"

#include <windows.h>
#include <psapi.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <stdexcept>

// ---- the program --------------------------------------------------------------------------------

static std::string class_of(HWND window) {
  char name[256] = "";
  GetClassNameA(window, name, sizeof name);
  return name;
}

static std::string text_of(HWND window) {
  char text[1024] = "";
  SendMessageTimeoutA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text), SMTO_ABORTIFHUNG, 5000,
                      nullptr);
  return text;
}

mrProgram::mrProgram(const std::string& name, const std::string& arguments) {
  std::string command = "\"" + own_folder() + name + ".exe\" " + arguments;
  STARTUPINFOA startup = {};
  startup.cb = sizeof startup;
  if (!CreateProcessA(nullptr, &command[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &m_process))
    throw std::runtime_error("cannot start " + command);
  // Its windows stand when it waits for input for the first time.
  WaitForInputIdle(m_process.hProcess, 10000);
  m_frame = wait_for_window("");
  if (!m_frame)
    throw std::runtime_error("no window from " + command);
  // A background program would not get the keyboard.
  SetForegroundWindow(m_frame);
}

mrProgram::~mrProgram() {
  // A host that has loaded the library is never used again: it may hold the state of this test.
  TerminateProcess(m_process.hProcess, 0);
  WaitForSingleObject(m_process.hProcess, 10000);
  CloseHandle(m_process.hThread);
  CloseHandle(m_process.hProcess);
}

DWORD mrProgram::thread_id() const { return GetWindowThreadProcessId(m_frame, nullptr); }

bool mrProgram::is_running() const { return WaitForSingleObject(m_process.hProcess, 0) == WAIT_TIMEOUT; }

HWND mrProgram::find_window(const std::string& title, const std::string& class_name) const {
  for (HWND window = GetTopWindow(nullptr); window; window = GetWindow(window, GW_HWNDNEXT)) {
    DWORD process_id = 0;
    GetWindowThreadProcessId(window, &process_id);
    if (process_id != m_process.dwProcessId || !IsWindowVisible(window))
      continue;
    if (!class_name.empty() && class_of(window) != class_name)
      continue;
    if (title.empty() || text_of(window).find(title) != std::string::npos)
      return window;
  }
  return nullptr;
}

HWND mrProgram::wait_for_window(const std::string& title, const std::string& class_name) const {
  HWND window = nullptr;
  wait_until([&] { return (window = find_window(title, class_name)) != nullptr; });
  return window;
}

// A window is painted when its thread has no input left, so that is what is waited for.
void mrProgram::finish_input() const {
  const RECT corner = {0, 0, 1, 1};
  InvalidateRect(m_frame, &corner, FALSE);
  EXPECT_TRUE(wait_until([this] { return !GetUpdateRect(m_frame, nullptr, FALSE); })) << "input is left";
}

HWND find_child(HWND parent, const std::string& class_name, const std::string& text) {
  for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    if (class_of(child) == class_name && (text.empty() || text_of(child) == text))
      return child;
    if (const HWND found = find_child(child, class_name, text))
      return found;
  }
  return nullptr;
}

// ---- its clock ----------------------------------------------------------------------------------

// Where a module of the process is loaded; null when it is not.
static char* base_of(HANDLE process, const std::string& module_name) {
  HMODULE modules[256] = {};
  DWORD bytes = 0;
  K32EnumProcessModules(process, modules, sizeof modules, &bytes);
  const size_t count = std::min<size_t>(bytes, sizeof modules) / sizeof modules[0];
  for (size_t i = 0; i < count; ++i) {
    char name[MAX_PATH] = "";
    K32GetModuleBaseNameA(process, modules[i], name, MAX_PATH);
    if (lstrcmpiA(name, module_name.c_str()) == 0)
      return reinterpret_cast<char*>(modules[i]);
  }
  return nullptr;
}

void stop_clock_of(const mrProgram& host) {
  const std::string library = "RecorderHooks.dll";
  // The library comes into the host with the first message that the hooks see.
  SendMessageA(host.frame(), WM_GETTEXTLENGTH, 0, 0);
  char* const there = base_of(host.process(), library);
  char* const here = reinterpret_cast<char*>(GetModuleHandleA(library.c_str()));
  if (!there || !here)
    throw std::runtime_error("the host has not loaded " + library);
  // A function of the system that stands at the same address everywhere and always answers the same: never 0.
  const auto stopped_clock =
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "GetCurrentProcessId"));
  const auto set_source =
      reinterpret_cast<LPTHREAD_START_ROUTINE>(there + (reinterpret_cast<char*>(&set_tick_source) - here));
  const HANDLE thread = CreateRemoteThread(host.process(), nullptr, 0, set_source, stopped_clock, 0, nullptr);
  if (!thread || WaitForSingleObject(thread, 10000) != WAIT_OBJECT_0)
    throw std::runtime_error("the host's clock cannot be stopped");
  CloseHandle(thread);
}

// ---- the recording ------------------------------------------------------------------------------

static const char* recorder_class() {
  register_test_class("EndToEndRecorder");
  return "EndToEndRecorder";
}

mrRecording::mrRecording(const mrProgram& host)
    : m_window(recorder_class(), "Recorder", WS_OVERLAPPEDWINDOW) {
  m_window.set_answer([this](UINT message, WPARAM, LPARAM lparam, LRESULT& result) {
    if (message == mr_stop_notification)
      ++m_stop_notifications;
    if (message != WM_COPYDATA)
      return false;
    const COPYDATASTRUCT& data = *reinterpret_cast<const COPYDATASTRUCT*>(lparam);
    m_recorder.copy_data(data.dwData, data.lpData);
    result = 1;
    return true;
  });
  if (!m_recorder.start_recording(m_window, host.thread_id()))
    throw std::runtime_error("a recording already runs");
}

mrRecording::~mrRecording() {
  if (shared_block().recorder_window == m_window)
    m_recorder.stop_recording();
}

bool mrRecording::wait_for_statements(size_t count) {
  return wait_until([&] { return statements().size() >= count; });
}

std::vector<std::string> mrRecording::finish() {
  user.key(VK_CANCEL, {VK_CONTROL});
  EXPECT_TRUE(wait_until([this] { return m_stop_notifications > 0; }))
      << "no stop notification after Ctrl+Break";
  return statements();
}

std::string mrRecording::script() {
  CString text;
  m_recorder.get_script(text);
  return text.str();
}

std::vector<std::string> mrRecording::script_lines() {
  const std::string text = script();
  const std::string begin = "  // Script begin\r\n";
  const size_t first = text.find(begin) + begin.size();
  const size_t last = text.find("  // Script end\r\n");
  std::vector<std::string> lines;
  for (size_t start = first; start < last;) {
    const size_t end = text.find("\r\n", start);
    lines.push_back(text.substr(start, end - start));
    start = end + 2;
  }
  return lines;
}
