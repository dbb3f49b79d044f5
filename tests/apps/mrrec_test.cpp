// mrrec as a user has it: a process beside a host, told by its messages, its exit status and its script.
//
// The input is posted to the host's window: the hooks see it as they see a user's.
#include "hooks/mrChannel.h"
#include "hooks/mrSharedBlock.h"
#include "tests/support/e2e.h"
#include "tests/support/files.h"
#include "tests/support/hooked.h"
#include "tests/support/test_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr DWORD end_limit_ms = 30000;

// One run of mrrec.exe, its output in files that can be read while it is written.
class Mrrec {
public:
  explicit Mrrec(const std::string& arguments) {
    const HANDLE out = create_inherited(m_folder.path("out.txt"));
    const HANDLE err = create_inherited(m_folder.path("err.txt"));
    std::string command = "\"" + own_folder() + "mrrec.exe\" " + arguments;
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = out;
    startup.hStdError = err;
    if (!CreateProcessA(nullptr, &command[0], nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &m_process))
      throw std::runtime_error("cannot start " + command);
    CloseHandle(out);
    CloseHandle(err);
  }
  ~Mrrec() {
    kill();
    CloseHandle(m_process.hThread);
    CloseHandle(m_process.hProcess);
  }
  Mrrec(const Mrrec&) = delete;
  Mrrec& operator=(const Mrrec&) = delete;

  std::string out() const { return read_file(m_folder.path("out.txt")); }
  std::string err() const { return read_file(m_folder.path("err.txt")); }
  // The lines of stdout.
  std::vector<std::string> lines() const {
    std::vector<std::string> lines;
    const std::string text = out();
    for (size_t start = 0; start < text.size();) {
      const size_t end = std::min(text.find("\r\n", start), text.size());
      lines.push_back(text.substr(start, end - start));
      start = end + 2;
    }
    return lines;
  }

  bool wait_for_line(const std::string& part) const {
    return wait_until([&] { return has_ended() || out().find(part) != std::string::npos; }) &&
           out().find(part) != std::string::npos;
  }
  // The hooks are in place when this is true.
  bool wait_for_recording() const { return wait_for_line("recording "); }
  bool has_ended() const { return WaitForSingleObject(m_process.hProcess, 0) == WAIT_OBJECT_0; }
  // The exit status; -1 when it has not ended within the limit.
  int wait_for_end() const {
    if (!wait_until([&] { return has_ended(); }, end_limit_ms))
      return -1;
    DWORD status = 0;
    GetExitCodeProcess(m_process.hProcess, &status);
    return static_cast<int>(status);
  }
  // As a crash would.
  void kill() {
    TerminateProcess(m_process.hProcess, 9);
    WaitForSingleObject(m_process.hProcess, end_limit_ms);
  }

private:
  static HANDLE create_inherited(const std::string& path) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    return CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                       &inherited, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  }

  mrTestFolder m_folder;
  PROCESS_INFORMATION m_process = {};
};

class TestHost : public mrProgram {
public:
  explicit TestHost(const std::string& arguments = "") : mrProgram("mrrec_test_host", arguments) {}

  std::string pid() const { return std::to_string(process_id()); }
  void command(int id) const { PostMessageA(frame(), WM_COMMAND, notify(id, 0), 0); }
  void click(int x, int y) const {
    PostMessageA(frame(), WM_LBUTTONDOWN, MK_LBUTTON, at(x, y));
    PostMessageA(frame(), WM_LBUTTONUP, 0, at(x, y));
  }
  void press_ctrl_break() const { PostMessageA(frame(), WM_KEYDOWN, VK_CANCEL, 1); }
  void kill() const {
    TerminateProcess(process(), 9);
    WaitForSingleObject(process(), 10000);
  }
};

// What the script does, statement by statement.
std::vector<std::string> statements_of(const std::string& script) {
  std::vector<std::string> statements;
  const std::string begin = "  // Script begin\r\n";
  const size_t end = script.find("  // Script end\r\n");
  if (end == std::string::npos)
    return statements;
  for (size_t start = script.find(begin) + begin.size(); start < end;) {
    const size_t line_end = script.find("\r\n", start);
    statements.push_back(script.substr(start, line_end - start));
    start = line_end + 2;
  }
  return statements;
}

constexpr char focus_line[] = "  Main_mrrec_test_host().SetFocus();";

class MrrecRun : public testing::Test {
protected:
  std::string out_option() const { return " --out \"" + m_folder.path("a.wsf") + "\""; }
  std::string record(const TestHost& host) const { return "record --pid " + host.pid() + out_option(); }
  std::string script() const { return read_file(m_folder.path("a.wsf")); }
  std::vector<std::string> statements() const { return statements_of(script()); }

  mrTestFolder m_folder;
};

}  // namespace

// ---- what is recorded, and how it is told -----------------------------------------------------------

TEST_F(MrrecRun, TellsEachActionAndWritesTheScriptAtCtrlBreak) {
  const TestHost host;
  const Mrrec mrrec(record(host));
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  host.command(100);
  host.click(10, 20);
  host.press_ctrl_break();
  EXPECT_EQ(0, mrrec.wait_for_end()) << mrrec.err();
  EXPECT_THAT(mrrec.lines(), ElementsAre("recording mrrec_test_host.exe (pid " + host.pid() + ", thread " +
                                             std::to_string(host.thread_id()) + ")",
                                         "Main_mrrec_test_host().Command(100);",
                                         "Main_mrrec_test_host().MouseDown(1, 10, 20, 0);",
                                         "Main_mrrec_test_host().Click(1, 10, 20, 0);",
                                         "saved " + m_folder.path("a.wsf") + " (2 actions)"));
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Command(100);",
                                        "  Main_mrrec_test_host().Click(1, 10, 20, 0);"));
  EXPECT_THAT(script(), StartsWith("<job>\r\n"));
  EXPECT_THAT(script(), EndsWith("</script>\r\n</job>"));
  EXPECT_THAT(m_folder.names(), ElementsAre("a.wsf"));
}

TEST_F(MrrecRun, WarnsOnceThatIdsStayNumbersWithoutAResourceMap) {
  const TestHost host;
  const Mrrec mrrec(record(host));
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  host.press_ctrl_break();
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(mrrec.err(), StartsWith("mrrec: warning: no names from "));
  EXPECT_EQ(mrrec.err().find("\r\n"), mrrec.err().size() - 2) << mrrec.err();
}

TEST_F(MrrecRun, QuietTellsNoActions) {
  const TestHost host;
  const Mrrec mrrec(record(host) + " --quiet");
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  host.command(100);
  host.press_ctrl_break();
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(mrrec.lines(), ElementsAre(StartsWith("recording mrrec_test_host.exe (pid ")));
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Command(100);"));
}

TEST_F(MrrecRun, IgnoredCommandsAreLeftOut) {
  const TestHost host;
  const Mrrec mrrec(record(host) + " --ignore 100 --ignore 0x66");
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  for (const int id : {100, 101, 102, 103})
    host.command(id);
  host.press_ctrl_break();
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Command(101);",
                                        "  Main_mrrec_test_host().Command(103);"));
}

TEST_F(MrrecRun, RawLeavesCommandsOutAndIsGoneAfterwards) {
  const TestHost host;
  {
    const Mrrec mrrec(record(host) + " --raw");
    ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
    host.command(100);
    host.click(1, 2);
    host.press_ctrl_break();
    EXPECT_EQ(0, mrrec.wait_for_end());
    EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Click(1, 1, 2, 0);"));
  }
  const Mrrec mrrec(record(host));
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  host.command(100);
  host.press_ctrl_break();
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Command(100);"));
}

TEST_F(MrrecRun, AnOldScriptStaysUntilTheNewOneIsComplete) {
  write_file(m_folder.path("a.wsf"), "old script");
  const TestHost host;
  const Mrrec mrrec(record(host));
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  EXPECT_EQ("old script", script());
  host.press_ctrl_break();
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(script(), StartsWith("<job>"));
}

// ---- finding the host -------------------------------------------------------------------------------

TEST_F(MrrecRun, FindsAProcessByItsNameInAnyCase) {
  const TestHost host;
  for (const char* name : {"MRREC_TEST_HOST.EXE", "mrrec_test_host"}) {
    const Mrrec mrrec(std::string("record --process ") + name + out_option() + " --for 0.1");
    ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
    EXPECT_THAT(mrrec.out(), HasSubstr("(pid " + host.pid() + ","));
    EXPECT_EQ(0, mrrec.wait_for_end());
  }
}

TEST_F(MrrecRun, FindsAmongProcessesOfOneNameTheOneWithAWindow) {
  const Mrrec mrrec("record --process mrrec_test_host.exe" + out_option() + " --for 0.1");
  // Nothing of that name runs.
  EXPECT_EQ(1, mrrec.wait_for_end());
  EXPECT_THAT(mrrec.err(), HasSubstr("mrrec: no process mrrec_test_host.exe runs\r\n"));

  STARTUPINFOA startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION windowless = {};
  std::string command = own_folder() + "mrrec_test_host.exe --end-after 60000";
  ASSERT_TRUE(CreateProcessA(nullptr, &command[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                             &windowless));
  const TestHost host;
  const Mrrec again("record --process mrrec_test_host.exe" + out_option() + " --for 0.1");
  EXPECT_EQ(0, again.wait_for_end()) << again.err();
  EXPECT_THAT(again.out(), HasSubstr("(pid " + host.pid() + ","));
  TerminateProcess(windowless.hProcess, 0);
  CloseHandle(windowless.hThread);
  CloseHandle(windowless.hProcess);
}

TEST_F(MrrecRun, FindsAWindowByAPartOfItsTitle) {
  const TestHost other("--title \"Quite another drawing\"");
  const TestHost host("--title \"Drawing 17 - Test host\"");
  const Mrrec mrrec("record --title \"ing 17 -\"" + out_option() + " --for 0.1");
  EXPECT_EQ(0, mrrec.wait_for_end()) << mrrec.err();
  EXPECT_THAT(mrrec.out(), HasSubstr("(pid " + host.pid() + ","));
}

TEST_F(MrrecRun, WaitsForTheFirstWindowOfALaunchedProgram) {
  const Mrrec mrrec("record --launch \"\\\"" + own_folder() + "mrrec_test_host.exe\\\" --show-after 700\"" +
                    out_option());
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  const HWND window = FindWindowA("MrrecTestHost", nullptr);
  ASSERT_NE(nullptr, window);
  EXPECT_TRUE(IsWindowVisible(window));
  PostMessageA(window, WM_COMMAND, notify(100, 0), 0);
  PostMessageA(window, WM_CLOSE, 0, 0);  // the launched program is nobody else's to end
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Command(100);"));
}

TEST_F(MrrecRun, AProgramThatCannotBeStartedIsAFailure) {
  const Mrrec mrrec("record --launch no_such_program.exe" + out_option());
  EXPECT_EQ(1, mrrec.wait_for_end());
  EXPECT_THAT(mrrec.err(), HasSubstr("mrrec: cannot start no_such_program.exe: "));
}

TEST_F(MrrecRun, AProcessThatDoesNotExistIsAFailure) {
  const Mrrec mrrec("record --pid 4294967292" + out_option());
  EXPECT_EQ(1, mrrec.wait_for_end());
  EXPECT_THAT(mrrec.err(), HasSubstr("mrrec: there is no process 4294967292\r\n"));
  EXPECT_THAT(mrrec.out(), IsEmpty());
  EXPECT_THAT(m_folder.names(), IsEmpty());
}

TEST_F(MrrecRun, AHostThatEndsWithoutAWindowIsAFailure) {
  const Mrrec mrrec("record --launch \"" + own_folder() + "mrrec_test_host.exe --end-after 200\"" +
                    out_option());
  EXPECT_EQ(1, mrrec.wait_for_end());
  EXPECT_THAT(mrrec.err(), HasSubstr("ended without showing a window"));
  EXPECT_THAT(m_folder.names(), IsEmpty());
}

// ---- ways to stop -----------------------------------------------------------------------------------

TEST_F(MrrecRun, StopEndsTheRecordingOfAnotherProcessAndWaitsForItsScript) {
  const TestHost host;
  const Mrrec mrrec(record(host));
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  host.command(100);
  ASSERT_TRUE(mrrec.wait_for_line("Command(100)"));
  const Mrrec stop("stop");
  EXPECT_EQ(0, stop.wait_for_end()) << stop.err();
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Command(100);"));
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_EQ(nullptr, shared_block().recorder_window);
}

TEST_F(MrrecRun, StopWithoutARecordingIsAFailure) {
  const Mrrec stop("stop");
  EXPECT_EQ(1, stop.wait_for_end());
  EXPECT_THAT(stop.err(), HasSubstr("mrrec: no recording runs\r\n"));
}

TEST_F(MrrecRun, StopEndsTheRecordingOfAnotherRecorderToo) {
  int notifications = 0;
  mrTestFrame recorder("AnotherRecorder", "Another recorder");
  recorder.set_answer([&](UINT message, WPARAM, LPARAM, LRESULT&) {
    if (message != mr_stop_notification)
      return false;
    ++notifications;
    shared_block().recorder_window = nullptr;
    return true;
  });
  shared_block().recorder_window = recorder;
  const Mrrec stop("stop");
  EXPECT_EQ(0, stop.wait_for_end()) << stop.err();
  EXPECT_EQ(1, notifications);
}

TEST_F(MrrecRun, TheTimeLimitEndsTheRecording) {
  const TestHost host;
  const Mrrec mrrec(record(host) + " --for 3");
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  host.command(100);
  EXPECT_TRUE(mrrec.wait_for_line("Command(100)"));
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Command(100);"));
  EXPECT_TRUE(host.is_running());
}

TEST_F(MrrecRun, TheEndOfTheHostEndsTheRecording) {
  const TestHost host;
  const Mrrec mrrec(record(host));
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  PostMessageA(host.frame(), WM_SYSCOMMAND, SC_CLOSE, 0);
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Close();"));
}

TEST_F(MrrecRun, AHostThatDiesInTheMiddleLeavesWhatWasRecorded) {
  const TestHost host;
  const Mrrec mrrec(record(host));
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  host.command(100);
  ASSERT_TRUE(mrrec.wait_for_line("Command(100)"));
  host.kill();
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(mrrec.err(), HasSubstr("mrrec_test_host.exe has ended"));
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Command(100);"));
}

static BOOL WINAPI go_on(DWORD) { return TRUE; }

TEST_F(MrrecRun, CtrlCInTheConsoleEndsTheRecording) {
  const TestHost host;
  // A console that mrrec shares. The key reaches every process in it, and this one goes on.
  FreeConsole();
  ASSERT_TRUE(AllocConsole());
  SetConsoleCtrlHandler(go_on, TRUE);
  {
    const Mrrec mrrec(record(host));
    ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
    host.command(100);
    ASSERT_TRUE(mrrec.wait_for_line("Command(100)"));
    EXPECT_TRUE(GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0));
    EXPECT_EQ(0, mrrec.wait_for_end());
  }
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Command(100);"));
  SetConsoleCtrlHandler(go_on, FALSE);
  FreeConsole();
}

// ---- one recording at a time ------------------------------------------------------------------------

TEST_F(MrrecRun, ASecondRecorderIsRefusedAndChangesNothing) {
  const TestHost host;
  const Mrrec mrrec(record(host));
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  const HWND recorder_window = shared_block().recorder_window;
  // Nothing is launched for a recording that cannot start.
  const Mrrec second("record --raw --launch no_such_program.exe --out \"" + m_folder.path("b.wsf") + "\"");
  EXPECT_EQ(3, second.wait_for_end());
  EXPECT_THAT(second.err(), HasSubstr("mrrec: a recording already runs"));
  EXPECT_EQ(recorder_window, shared_block().recorder_window);
  host.command(100);
  host.press_ctrl_break();
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Command(100);"));
  EXPECT_THAT(m_folder.names(), ElementsAre("a.wsf"));
}

TEST_F(MrrecRun, ARecorderThatDiedDoesNotStopTheNextOne) {
  const TestHost host;
  {
    Mrrec dead(record(host));
    ASSERT_TRUE(dead.wait_for_recording()) << dead.err();
    dead.kill();
  }
  EXPECT_NE(nullptr, shared_block().recorder_window) << "the host keeps the block alive";
  const Mrrec mrrec(record(host));
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  host.command(100);
  host.press_ctrl_break();
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Command(100);"));
}

TEST_F(MrrecRun, StopClearsARecorderThatDied) {
  const TestHost host;
  {
    Mrrec dead(record(host));
    ASSERT_TRUE(dead.wait_for_recording()) << dead.err();
    dead.kill();
  }
  const Mrrec stop("stop");
  EXPECT_EQ(1, stop.wait_for_end());
  EXPECT_THAT(stop.err(), HasSubstr("there is no script"));
  EXPECT_EQ(nullptr, shared_block().recorder_window);
}

TEST_F(MrrecRun, AHostThatDiedInAnUploadDoesNotBlockTheNextRecording) {
  shared_block().busy = 1;  // this process keeps the block alive
  const TestHost host;
  const Mrrec mrrec(record(host));
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  host.command(100);
  host.press_ctrl_break();
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Command(100);"));
}

// ---- wrong usage and files that cannot be written -----------------------------------------------------

TEST_F(MrrecRun, WrongUsageIsToldOnStderr) {
  for (const char* arguments :
       {"", "play", "record --pid x --out a.wsf", "record --pid 1 --out", "stop now"}) {
    const Mrrec mrrec(arguments);
    EXPECT_EQ(2, mrrec.wait_for_end()) << arguments;
    EXPECT_THAT(mrrec.err(), StartsWith("mrrec: ")) << arguments;
    EXPECT_THAT(mrrec.out(), IsEmpty()) << arguments;
  }
}

TEST_F(MrrecRun, AnIgnoredNameThatTheMapDoesNotKnowIsWrongUsage) {
  const TestHost host;
  const Mrrec mrrec(record(host) + " --ignore IDM_NOBODY");
  EXPECT_EQ(2, mrrec.wait_for_end());
  EXPECT_THAT(mrrec.err(), HasSubstr("IDM_NOBODY"));
}

TEST_F(MrrecRun, HelpAndVersionAreAnswers) {
  const Mrrec help("--help");
  EXPECT_EQ(0, help.wait_for_end());
  EXPECT_THAT(help.out(), HasSubstr("mrrec record HOST --out FILE.wsf"));
  EXPECT_THAT(help.out(), HasSubstr("Exit status: 0 script written"));
  const Mrrec version("--version");
  EXPECT_EQ(0, version.wait_for_end());
  EXPECT_THAT(version.lines(), ElementsAre(StartsWith("mrrec ")));
}

TEST_F(MrrecRun, AFileThatCannotBeWrittenIsRefusedBeforeTheHostIsTouched) {
  const Mrrec mrrec("record --launch no_such_program.exe --out \"" + m_folder.path("none\\a.wsf") + "\"");
  EXPECT_EQ(1, mrrec.wait_for_end());
  EXPECT_THAT(mrrec.err(), HasSubstr("mrrec: cannot write " + m_folder.path("none\\a.wsf") + ": "));
  EXPECT_THAT(mrrec.err(), Not(HasSubstr("no_such_program")));
}

TEST_F(MrrecRun, AFileThatBecameUnwritableLosesNothing) {
  CreateDirectoryA(m_folder.path("sub").c_str(), nullptr);
  const TestHost host;
  const Mrrec mrrec("record --pid " + host.pid() + " --out \"" + m_folder.path("sub\\a.wsf") + "\"");
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  ASSERT_TRUE(RemoveDirectoryA(m_folder.path("sub").c_str()));
  host.command(100);
  host.press_ctrl_break();
  EXPECT_EQ(1, mrrec.wait_for_end());
  const std::string marker = "what was recorded is in ";
  const std::string err = mrrec.err();
  ASSERT_THAT(err, HasSubstr(marker));
  const size_t place = err.find(marker) + marker.size();
  const std::string saved = err.substr(place, err.find("\r\n", place) - place);
  EXPECT_THAT(statements_of(read_file(saved)),
              ElementsAre(focus_line, "  Main_mrrec_test_host().Command(100);"));
  DeleteFileA(saved.c_str());
}
