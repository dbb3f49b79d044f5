// The diagnostic build end to end: SampleCad, a real mouse and keyboard, and the lines that come out.
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "hooks/mrDispatcher.h"
#include "hooks/mrSharedBlock.h"
#include "tests/support/e2e.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

namespace {

HWND status_bar_of(const mrProgram& host) { return find_child(host.frame(), "msctls_statusbar32"); }

// The first line of a message that begins with a kind letter.
bool has_line(const std::vector<std::string>& lines, char kind, const std::string& message) {
  return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
    return line.size() > 3 && line[0] == kind && line.find(" " + message + ":\t") != std::string::npos;
  });
}

class LoggerEndToEnd : public testing::Test {
protected:
  LoggerEndToEnd() {
    // The session leaves the logger out, in this build too.
    mrActionFactory* const logger = get_factory(factoryLogger, true);
    logger->on_start_record();
    logger->set_recorder(&recording.recorder());
  }
  ~LoggerEndToEnd() override { get_factory(factoryLogger, true)->set_recorder(nullptr); }

  mrSampleCad host;
  mrRecording recording{host};
  mrUser& user = recording.user;
  const HWND bar = status_bar_of(host);
};

}  // namespace

TEST_F(LoggerEndToEnd, CtrlLogsTheWindowUnderTheMouseAndShiftStops) {
  user.click(client_place(bar, 20, 5));
  EXPECT_TRUE(recording.statements().empty());
  user.key(VK_CONTROL);
  ASSERT_TRUE(wait_until([&] { return shared_block().logger_window == bar; }));
  user.click(client_place(bar, 30, 6));
  ASSERT_TRUE(wait_until([&] { return has_line(recording.statements(), 'P', "WM_LBUTTONUP"); }));
  user.key(VK_SHIFT);
  ASSERT_TRUE(wait_until([] { return shared_block().logger_window == nullptr; }));
  const size_t logged = recording.statements().size();
  user.click(client_place(bar, 40, 7));

  const std::vector<std::string> lines = recording.finish();
  EXPECT_EQ(logged, lines.size());
  EXPECT_TRUE(has_line(lines, 'P', "WM_LBUTTONDOWN"));
  EXPECT_FALSE(has_line(lines, 'P', "WM_PAINT"));
  EXPECT_FALSE(has_line(lines, 'S', "WM_NCHITTEST"));
  char window[40];
  snprintf(window, sizeof window, ": %08llX ", reinterpret_cast<unsigned long long>(bar));
  for (const std::string& line : lines)
    EXPECT_EQ(1u, line.find(window)) << line;
}

TEST_F(LoggerEndToEnd, LogsWhatIsSentAndWhatReturns) {
  user.move_to(client_place(bar, 20, 5));
  user.key(VK_CONTROL);
  ASSERT_TRUE(wait_until([&] { return shared_block().logger_window == bar; }));
  SendMessageA(bar, WM_GETTEXTLENGTH, 0, 0);
  const std::vector<std::string> lines = recording.finish();
  EXPECT_TRUE(has_line(lines, 'S', "WM_GETTEXTLENGTH"));
  EXPECT_TRUE(has_line(lines, 'R', "WM_GETTEXTLENGTH"));
}

// The first window that is created keeps the logging to itself, also after Shift has ended it.
TEST_F(LoggerEndToEnd, CtrlChoosesNothingAnyMoreOnceANewWindowTookTheLogging) {
  user.move_to(client_place(bar, 20, 5));
  user.key(VK_CONTROL);
  ASSERT_TRUE(wait_until([&] { return shared_block().logger_window == bar; }));
  host.finish_input();
  PostMessageA(host.frame(), WM_COMMAND, IDM_EDIT_FIND, 0);
  ASSERT_NE(nullptr, host.wait_for_dialog("Find"));
  ASSERT_TRUE(wait_until([] { return shared_block().logger_latch == 1; }));
  EXPECT_NE(bar, shared_block().logger_window);

  user.move_to(client_place(bar, 30, 5));
  user.key(VK_CONTROL);
  host.finish_input();
  EXPECT_NE(bar, shared_block().logger_window);
  user.key(VK_SHIFT);
  ASSERT_TRUE(wait_until([] { return shared_block().logger_window == nullptr; }));
  user.move_to(client_place(bar, 40, 5));
  user.key(VK_CONTROL);
  host.finish_input();
  EXPECT_EQ(bar, shared_block().logger_candidate_window);
  EXPECT_EQ(nullptr, shared_block().logger_window);
  EXPECT_TRUE(has_line(recording.finish(), 'S', "WM_CREATE"));
}

TEST(LoggerProgram, PrintsTheLinesAsTheyComeAndKeepsThemInAFile) {
  mrSampleCad host;
  const HWND bar = status_bar_of(host);
  char folder[MAX_PATH] = "";
  GetTempPathA(MAX_PATH, folder);
  const std::string file = std::string(folder) + "logger_e2e_test.txt";
  DeleteFileA(file.c_str());

  std::string command =
      "mrrec.exe log --pid " + std::to_string(host.process_id()) + " --out \"" + file + "\"";
  char own[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, own, MAX_PATH);
  const std::string own_path = own;
  const std::string program = own_path.substr(0, own_path.find_last_of('\\') + 1) + "mrrec.exe";
  STARTUPINFOA startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  ASSERT_TRUE(CreateProcessA(program.c_str(), &command[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                             &startup, &process));
  ASSERT_TRUE(wait_until([] { return shared_block().recorder_window != nullptr; }));

  mrUser user;
  SetForegroundWindow(host.frame());
  user.move_to(client_place(bar, 20, 5));
  // The recorder window is set before the hooks are: the key may come too early for them.
  EXPECT_TRUE(wait_until([&] {
    user.move_to(client_place(bar, 21, 5));
    user.key(VK_CONTROL);
    return shared_block().logger_window == bar;
  }));
  user.click(client_place(bar, 30, 6));
  user.key(VK_CANCEL, {VK_CONTROL});
  ASSERT_EQ(WAIT_OBJECT_0, WaitForSingleObject(process.hProcess, 20000));
  DWORD status = 99;
  GetExitCodeProcess(process.hProcess, &status);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  EXPECT_EQ(0u, status);

  std::ifstream stream(file, std::ios::binary);
  std::stringstream text;
  text << stream.rdbuf();
  EXPECT_NE(std::string::npos, text.str().find(" WM_LBUTTONDOWN:\t")) << text.str();
  EXPECT_NE(std::string::npos, text.str().find(" HotItem: ")) << text.str();
}
