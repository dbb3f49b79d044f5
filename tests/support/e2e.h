// End to end: SampleCad in a process of its own, a recorder in the test process, and a user between them.
//
//   mrSampleCad host("--dialog buttons");
//   mrRecording recording(host);
//   HWND dialog = host.dialog("Buttons");
//   recording.user.click(control_of(dialog, IDC_OK));
//   EXPECT_EQ((std::vector<std::string>{"Click();"}), recording.finish());
//
// finish() ends the recording with Ctrl+Break in the host. Input arrives in order, so whatever the gestures
// before it recorded has been uploaded by then, and nothing comes later.
#pragma once

#include "tests/support/recording.h"
#include "tests/support/test_window.h"
#include "tests/support/user.h"

#include <windows.h>

#include <string>
#include <vector>

// A program that stands beside the test program, started and ended with the object.
class mrProgram {
public:
  // Starts NAME.exe of the test program's folder and waits for its first visible top-level window.
  explicit mrProgram(const std::string& name, const std::string& arguments = "");
  ~mrProgram();
  mrProgram(const mrProgram&) = delete;
  mrProgram& operator=(const mrProgram&) = delete;

  DWORD process_id() const { return m_process.dwProcessId; }
  DWORD thread_id() const;
  HANDLE process() const { return m_process.hProcess; }
  // The first visible top-level window.
  HWND frame() const { return m_frame; }
  // Waits for a visible top-level window of the program with this title (a part of it) and, when not empty,
  // class. Null after the limit.
  HWND wait_for_window(const std::string& title, const std::string& class_name = "") const;
  HWND wait_for_dialog(const std::string& title) const { return wait_for_window(title, "#32770"); }
  bool is_running() const;
  // Waits until all input that was sent so far has been handled, before a test sends or posts a message that
  // would overtake it.
  void finish_input() const;

private:
  HWND find_window(const std::string& title, const std::string& class_name) const;

  PROCESS_INFORMATION m_process = {};
  HWND m_frame = nullptr;
};

class mrSampleCad : public mrProgram {
public:
  explicit mrSampleCad(const std::string& arguments = "") : mrProgram("SampleCad", arguments) {}
};

// Stops the clock that the recorders of a program measure their short waits with; the program must be
// recorded already. What follows a click by itself then belongs to it however slow the machine is at that
// moment. For gestures whose end does not depend on time.
void stop_clock_of(const mrProgram& host);

// A recording of a program by this process, from construction to finish().
class mrRecording {
public:
  explicit mrRecording(const mrProgram& host);
  ~mrRecording();

  mrUser user;

  mrTestRecorder& recorder() { return m_recorder; }
  HWND recorder_window() const { return m_window; }
  // Waits until so many statements are there, for gestures whose next step depends on them.
  bool wait_for_statements(size_t count);
  std::vector<std::string> statements() { return m_recorder.statements(); }

  // Presses Ctrl+Break, waits for the stop notification, and answers the statements. Call it with the host in
  // the foreground, once.
  std::vector<std::string> finish();
  // The lines of main() after finish(): window expression and statement, as in "  Button_OK().Click();".
  std::vector<std::string> script_lines();
  std::string script();

private:
  mrTestRecorder m_recorder;
  mrTestWindow m_window;
  int m_stop_notifications = 0;
};

// The first descendant of a window with this class (and text, when given), in any process.
HWND find_child(HWND parent, const std::string& class_name, const std::string& text = "");
