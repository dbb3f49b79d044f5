#include "tests/support/peer.h"

#include "tests/support/test_window.h"

#include <stdexcept>

// A pipe whose one end the peer inherits.
static void make_pipe(HANDLE& read, HANDLE& write, HANDLE& ours) {
  SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
  if (!CreatePipe(&read, &write, &inheritable, 0))
    throw std::runtime_error("no pipe");
  SetHandleInformation(ours, HANDLE_FLAG_INHERIT, 0);
}

mrPeer::mrPeer() {
  HANDLE its_input = nullptr;
  HANDLE its_output = nullptr;
  make_pipe(its_input, m_to_peer, m_to_peer);
  make_pipe(m_from_peer, its_output, m_from_peer);

  char path[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, path, MAX_PATH);
  std::string command = path;
  command = "\"" + command.substr(0, command.find_last_of('\\') + 1) + "test_peer.exe\"";
  STARTUPINFOA startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = its_input;
  startup.hStdOutput = its_output;
  startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  const BOOL started =
      CreateProcessA(nullptr, &command[0], nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &m_process);
  CloseHandle(its_input);
  CloseHandle(its_output);
  if (!started)
    throw std::runtime_error("cannot start " + command);
}

mrPeer::~mrPeer() {
  CloseHandle(m_to_peer);  // the end of its input is the end of it
  if (WaitForSingleObject(m_process.hProcess, 10000) != WAIT_OBJECT_0)
    TerminateProcess(m_process.hProcess, 1);
  CloseHandle(m_from_peer);
  CloseHandle(m_process.hThread);
  CloseHandle(m_process.hProcess);
}

std::string mrPeer::ask(const std::string& line) {
  send(line);
  return answer();
}

void mrPeer::send(const std::string& line) {
  const std::string text = line + "\n";
  DWORD written = 0;
  WriteFile(m_to_peer, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

bool mrPeer::has_answer() const {
  DWORD available = 0;
  return PeekNamedPipe(m_from_peer, nullptr, 0, nullptr, &available, nullptr) && available > 0;
}

std::string mrPeer::answer() {
  std::string line;
  while (line.find('\n') == std::string::npos) {
    if (!wait_until([this] { return has_answer(); }))
      throw std::runtime_error("no answer from the peer");
    char ch = 0;
    DWORD read = 0;
    while (has_answer() && line.find('\n') == std::string::npos &&
           ReadFile(m_from_peer, &ch, 1, &read, nullptr))
      line += ch;
  }
  line.pop_back();
  return line;
}
