#include "tests/apps/mrrec_run.h"

#include "tests/support/test_window.h"

#include <algorithm>
#include <stdexcept>

static constexpr DWORD end_limit_ms = 30000;

static HANDLE create_inherited(const std::string& path) {
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  return CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                     &inherited, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

mrMrrecRun::mrMrrecRun(const std::string& arguments) {
  const HANDLE out = create_inherited(m_folder.path("out.txt"));
  const HANDLE err = create_inherited(m_folder.path("err.txt"));
  std::string command = "\"" + own_folder() + "mrrec.exe\" " + arguments;
  STARTUPINFOA startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = out;
  startup.hStdError = err;
  const bool started =
      CreateProcessA(nullptr, &command[0], nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &m_process);
  CloseHandle(out);
  CloseHandle(err);
  if (!started)
    throw std::runtime_error("cannot start " + command);
}

mrMrrecRun::~mrMrrecRun() {
  kill();
  CloseHandle(m_process.hThread);
  CloseHandle(m_process.hProcess);
}

void mrMrrecRun::kill() {
  TerminateProcess(m_process.hProcess, 9);
  WaitForSingleObject(m_process.hProcess, end_limit_ms);
}

std::vector<std::string> mrMrrecRun::lines() const {
  std::vector<std::string> lines;
  const std::string text = out();
  for (size_t start = 0; start < text.size();) {
    const size_t end = std::min(text.find("\r\n", start), text.size());
    lines.push_back(text.substr(start, end - start));
    start = end + 2;
  }
  return lines;
}

bool mrMrrecRun::wait_for_line(const std::string& part) const {
  const auto is_there = [&] { return out().find(part) != std::string::npos; };
  wait_until([&] { return has_ended() || is_there(); }, end_limit_ms);
  return is_there();
}

int mrMrrecRun::wait_for_end() const {
  if (!wait_until([&] { return has_ended(); }, end_limit_ms))
    return -1;
  DWORD status = 0;
  GetExitCodeProcess(m_process.hProcess, &status);
  return static_cast<int>(status);
}

void mrTestHost::kill() const {
  TerminateProcess(process(), 9);
  WaitForSingleObject(process(), end_limit_ms);
}
