// mrrec.exe and its host as processes of their own.
#pragma once

#include "tests/support/e2e.h"
#include "tests/support/files.h"

#include <windows.h>

#include <string>
#include <vector>

// One run of mrrec.exe, its output in files that can be read while it is written.
class mrMrrecRun {
public:
  explicit mrMrrecRun(const std::string& arguments);
  ~mrMrrecRun();
  mrMrrecRun(const mrMrrecRun&) = delete;
  mrMrrecRun& operator=(const mrMrrecRun&) = delete;

  std::string out() const { return read_file(m_folder.path("out.txt")); }
  std::string err() const { return read_file(m_folder.path("err.txt")); }
  // The lines of stdout.
  std::vector<std::string> lines() const;

  // Waits until stdout holds the text; false when the program ends or the limit is over before that.
  bool wait_for_line(const std::string& part) const;
  // The hooks are in place when this is true.
  bool wait_for_recording() const { return wait_for_line("recording "); }
  bool has_ended() const { return WaitForSingleObject(m_process.hProcess, 0) == WAIT_OBJECT_0; }
  // The exit status; -1 when it has not ended within the limit.
  int wait_for_end() const;
  // As a crash would.
  void kill();

private:
  mrTestFolder m_folder;
  PROCESS_INFORMATION m_process = {};
};

// mrrec_test_host.exe. What is posted to its window is seen by the hooks as a user's input is.
class mrTestHost : public mrProgram {
public:
  explicit mrTestHost(const std::string& arguments = "") : mrProgram("mrrec_test_host", arguments) {}

  std::string pid() const { return std::to_string(process_id()); }
  void post(UINT message, WPARAM wparam = 0, LPARAM lparam = 0) const {
    PostMessageA(frame(), message, wparam, lparam);
  }
  void command(int id) const { post(WM_COMMAND, static_cast<WPARAM>(id)); }
  void click(int x, int y) const {
    post(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    post(WM_LBUTTONUP, 0, MAKELPARAM(x, y));
  }
  void press_ctrl_break() const { post(WM_KEYDOWN, VK_CANCEL, 1); }
  void kill() const;
};
