// mrrec as a user has it: a process beside a host, told by its messages, its exit status and its script.
//
// The input is posted to the host's window: the hooks see it as they see a user's.
#include "hooks/mrChannel.h"
#include "hooks/mrSharedBlock.h"
#include "namer/mrIDNamer.h"
#include "tests/apps/mrrec_run.h"
#include "tests/support/e2e.h"
#include "tests/support/files.h"
#include "tests/support/hooked.h"
#include "tests/support/test_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

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

// For a host that is started without an object that ends it.
std::string owner_option() { return " --owner " + std::to_string(GetCurrentProcessId()); }

constexpr char focus_line[] = "  Main_mrrec_test_host().SetFocus();";

class MrrecRun : public testing::Test {
protected:
  std::string out_option() const { return " --out \"" + m_folder.path("a.wsf") + "\""; }
  std::string record(const mrTestHost& host) const { return "record --pid " + host.pid() + out_option(); }
  std::string script() const { return read_file(m_folder.path("a.wsf")); }
  std::vector<std::string> statements() const { return statements_of(script()); }

  mrTestFolder m_folder;
};

}  // namespace

// ---- what is recorded, and how it is told -----------------------------------------------------------

TEST_F(MrrecRun, TellsEachActionAndWritesTheScriptAtCtrlBreak) {
  const mrTestHost host;
  const mrMrrecRun mrrec(record(host));
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
  const mrTestHost host;
  const mrMrrecRun mrrec(record(host));
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  host.press_ctrl_break();
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(mrrec.err(), StartsWith("mrrec: warning: no names from "));
  EXPECT_EQ(mrrec.err().find("\r\n"), mrrec.err().size() - 2) << mrrec.err();
}

TEST_F(MrrecRun, QuietTellsNoActions) {
  const mrTestHost host;
  const mrMrrecRun mrrec(record(host) + " --quiet");
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  host.command(100);
  host.press_ctrl_break();
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(mrrec.lines(), ElementsAre(StartsWith("recording mrrec_test_host.exe (pid ")));
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Command(100);"));
}

TEST_F(MrrecRun, IgnoredCommandsAreLeftOut) {
  const mrTestHost host;
  const mrMrrecRun mrrec(record(host) + " --ignore 100 --ignore 0x66");
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  for (const int id : {100, 101, 102, 103})
    host.command(id);
  host.press_ctrl_break();
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Command(101);",
                                        "  Main_mrrec_test_host().Command(103);"));
}

TEST_F(MrrecRun, RawLeavesCommandsOutAndIsGoneAfterwards) {
  const mrTestHost host;
  {
    const mrMrrecRun mrrec(record(host) + " --raw");
    ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
    host.command(100);
    host.click(1, 2);
    host.press_ctrl_break();
    EXPECT_EQ(0, mrrec.wait_for_end());
    EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Click(1, 1, 2, 0);"));
  }
  const mrMrrecRun mrrec(record(host));
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  host.command(100);
  host.press_ctrl_break();
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Command(100);"));
}

TEST_F(MrrecRun, AnOldScriptStaysUntilTheNewOneIsComplete) {
  write_file(m_folder.path("a.wsf"), "old script");
  const mrTestHost host;
  const mrMrrecRun mrrec(record(host));
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  EXPECT_EQ("old script", script());
  host.press_ctrl_break();
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(script(), StartsWith("<job>"));
}

namespace {

// Every recorder started while there is one finds the map in this folder.
class ResourceMap {
public:
  ResourceMap() {
    for (const char* name : {"bin", "bin\\x64", "file", "file\\ui_recording"})
      CreateDirectoryA(m_folder.path(name).c_str(), nullptr);
    SetEnvironmentVariableA("ZQ_APPLICATION_FOLDER", m_folder.path("bin\\x64").c_str());
    mrIDNamer namer;
    namer.add_constant("app", "IDM_ZOOM", 100);
    namer.add_constant("app", "IDM_PAN", 101);
    if (namer.save_def_map() != 0)
      throw std::runtime_error("cannot save the resource map");
  }
  ~ResourceMap() { SetEnvironmentVariableA("ZQ_APPLICATION_FOLDER", nullptr); }
  ResourceMap(const ResourceMap&) = delete;
  ResourceMap& operator=(const ResourceMap&) = delete;

private:
  mrTestFolder m_folder;
};

}  // namespace

TEST_F(MrrecRun, TakesNamesFromTheResourceMap) {
  const ResourceMap map;
  const mrTestHost host;
  const mrMrrecRun mrrec(record(host) + " --ignore IDM_ZOOM");
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  EXPECT_THAT(mrrec.err(), StartsWith("mrrec: 2 names from "));
  host.command(100);
  host.command(101);
  host.press_ctrl_break();
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Command(app.IDM_PAN);"));
}

// ---- finding the host -------------------------------------------------------------------------------

TEST_F(MrrecRun, FindsAProcessByItsNameInAnyCase) {
  const mrTestHost host;
  for (const char* name : {"MRREC_TEST_HOST.EXE", "mrrec_test_host"}) {
    const mrMrrecRun mrrec(std::string("record --process ") + name + out_option() + " --for 0.1");
    ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
    EXPECT_THAT(mrrec.out(), HasSubstr("(pid " + host.pid() + ","));
    EXPECT_EQ(0, mrrec.wait_for_end());
  }
}

TEST_F(MrrecRun, FindsAmongProcessesOfOneNameTheOneWithAWindow) {
  STARTUPINFOA startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION windowless = {};
  std::string command = own_folder() + "mrrec_test_host.exe" + owner_option() + " --end-after 60000";
  ASSERT_TRUE(CreateProcessA(nullptr, &command[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                             &windowless));
  const mrTestHost host;
  const mrMrrecRun again("record --process mrrec_test_host.exe" + out_option() + " --for 0.1");
  EXPECT_EQ(0, again.wait_for_end()) << again.err();
  EXPECT_THAT(again.out(), HasSubstr("(pid " + host.pid() + ","));
  TerminateProcess(windowless.hProcess, 0);
  CloseHandle(windowless.hThread);
  CloseHandle(windowless.hProcess);
}

TEST_F(MrrecRun, FindsAWindowByAPartOfItsTitle) {
  const mrTestHost other("--title \"Quite another drawing\"");
  const mrTestHost host("--title \"Drawing 17 - Test host\"");
  const mrMrrecRun mrrec("record --title \"ing 17 -\"" + out_option() + " --for 0.1");
  EXPECT_EQ(0, mrrec.wait_for_end()) << mrrec.err();
  EXPECT_THAT(mrrec.out(), HasSubstr("(pid " + host.pid() + ","));
}

TEST_F(MrrecRun, WaitsForTheFirstWindowOfALaunchedProgram) {
  const mrMrrecRun mrrec("record --launch \"\\\"" + own_folder() + "mrrec_test_host.exe\\\"" +
                         owner_option() + " --show-after 700\"" + out_option());
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
  const mrMrrecRun mrrec("record --launch no_such_program.exe" + out_option());
  EXPECT_EQ(1, mrrec.wait_for_end());
  EXPECT_THAT(mrrec.err(), HasSubstr("mrrec: cannot start no_such_program.exe: "));
}

TEST_F(MrrecRun, ANameThatNoProcessHasIsAFailure) {
  const mrMrrecRun mrrec("record --process no_such_host.exe" + out_option());
  EXPECT_EQ(1, mrrec.wait_for_end());
  EXPECT_THAT(mrrec.err(), HasSubstr("mrrec: no process no_such_host.exe runs\r\n"));
}

TEST_F(MrrecRun, AProcessThatDoesNotExistIsAFailure) {
  const mrMrrecRun mrrec("record --pid 4294967292" + out_option());
  EXPECT_EQ(1, mrrec.wait_for_end());
  EXPECT_THAT(mrrec.err(), HasSubstr("mrrec: there is no process 4294967292\r\n"));
  EXPECT_THAT(mrrec.out(), IsEmpty());
  EXPECT_THAT(m_folder.names(), IsEmpty());
}

TEST_F(MrrecRun, AHostThatEndsWithoutAWindowIsAFailure) {
  const mrMrrecRun mrrec("record --launch \"" + own_folder() + "mrrec_test_host.exe" + owner_option() +
                         " --end-after 200\"" + out_option());
  EXPECT_EQ(1, mrrec.wait_for_end());
  EXPECT_THAT(mrrec.err(), HasSubstr("ended without showing a window"));
  EXPECT_THAT(m_folder.names(), IsEmpty());
}

// ---- ways to stop -----------------------------------------------------------------------------------

TEST_F(MrrecRun, StopEndsTheRecordingOfAnotherProcessAndWaitsForItsScript) {
  const mrTestHost host;
  const mrMrrecRun mrrec(record(host));
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  host.command(100);
  ASSERT_TRUE(mrrec.wait_for_line("Command(100)"));
  const mrMrrecRun stop("stop");
  EXPECT_EQ(0, stop.wait_for_end()) << stop.err();
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Command(100);"));
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_EQ(nullptr, shared_block().recorder_window);
}

TEST_F(MrrecRun, StopWithoutARecordingIsAFailure) {
  const mrMrrecRun stop("stop");
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
  const mrMrrecRun stop("stop");
  EXPECT_EQ(0, stop.wait_for_end()) << stop.err();
  EXPECT_EQ(1, notifications);
}

TEST_F(MrrecRun, TheTimeLimitEndsTheRecording) {
  const mrTestHost host;
  const mrMrrecRun mrrec(record(host) + " --for 3");
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  host.command(100);
  EXPECT_TRUE(mrrec.wait_for_line("Command(100)"));
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Command(100);"));
  EXPECT_TRUE(host.is_running());
}

TEST_F(MrrecRun, TheEndOfTheHostEndsTheRecording) {
  const mrTestHost host;
  const mrMrrecRun mrrec(record(host));
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  PostMessageA(host.frame(), WM_SYSCOMMAND, SC_CLOSE, 0);
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Close();"));
}

TEST_F(MrrecRun, AHostThatDiesInTheMiddleLeavesWhatWasRecorded) {
  const mrTestHost host;
  const mrMrrecRun mrrec(record(host));
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
  const mrTestHost host;
  // A console that mrrec shares. The key reaches every process in it, and this one goes on.
  FreeConsole();
  ASSERT_TRUE(AllocConsole());
  SetConsoleCtrlHandler(go_on, TRUE);
  {
    const mrMrrecRun mrrec(record(host));
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
  const mrTestHost host;
  const mrMrrecRun mrrec(record(host));
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  const HWND recorder_window = shared_block().recorder_window;
  // Nothing is launched for a recording that cannot start.
  const mrMrrecRun second("record --raw --launch no_such_program.exe --out \"" + m_folder.path("b.wsf") +
                          "\"");
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
  const mrTestHost host;
  {
    mrMrrecRun dead(record(host));
    ASSERT_TRUE(dead.wait_for_recording()) << dead.err();
    dead.kill();
  }
  EXPECT_NE(nullptr, shared_block().recorder_window) << "the host keeps the block alive";
  const mrMrrecRun mrrec(record(host));
  ASSERT_TRUE(mrrec.wait_for_recording()) << mrrec.err();
  host.command(100);
  host.press_ctrl_break();
  EXPECT_EQ(0, mrrec.wait_for_end());
  EXPECT_THAT(statements(), ElementsAre(focus_line, "  Main_mrrec_test_host().Command(100);"));
}

TEST_F(MrrecRun, StopClearsARecorderThatDied) {
  const mrTestHost host;
  {
    mrMrrecRun dead(record(host));
    ASSERT_TRUE(dead.wait_for_recording()) << dead.err();
    dead.kill();
  }
  const mrMrrecRun stop("stop");
  EXPECT_EQ(1, stop.wait_for_end());
  EXPECT_THAT(stop.err(), HasSubstr("there is no script"));
  EXPECT_EQ(nullptr, shared_block().recorder_window);
}

TEST_F(MrrecRun, AHostThatDiedInAnUploadDoesNotBlockTheNextRecording) {
  shared_block().busy = 1;  // this process keeps the block alive
  const mrTestHost host;
  const mrMrrecRun mrrec(record(host));
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
    const mrMrrecRun mrrec(arguments);
    EXPECT_EQ(2, mrrec.wait_for_end()) << arguments;
    EXPECT_THAT(mrrec.err(), StartsWith("mrrec: ")) << arguments;
    EXPECT_THAT(mrrec.out(), IsEmpty()) << arguments;
  }
}

TEST_F(MrrecRun, AnIgnoredNameThatTheMapDoesNotKnowIsWrongUsage) {
  const mrTestHost host;
  const mrMrrecRun mrrec(record(host) + " --ignore IDM_NOBODY");
  EXPECT_EQ(2, mrrec.wait_for_end());
  EXPECT_THAT(mrrec.err(), HasSubstr("IDM_NOBODY"));
}

TEST_F(MrrecRun, HelpAndVersionAreAnswers) {
  const mrMrrecRun help("--help");
  EXPECT_EQ(0, help.wait_for_end());
  EXPECT_THAT(help.out(), HasSubstr("mrrec record HOST --out FILE.wsf"));
  EXPECT_THAT(help.out(), HasSubstr("Exit status: 0 script written"));
  const mrMrrecRun version("--version");
  EXPECT_EQ(0, version.wait_for_end());
  EXPECT_THAT(version.lines(), ElementsAre(StartsWith("mrrec ")));
}

TEST_F(MrrecRun, AFileThatCannotBeWrittenIsRefusedBeforeTheHostIsTouched) {
  const mrMrrecRun mrrec("record --launch no_such_program.exe --out \"" + m_folder.path("none\\a.wsf") +
                         "\"");
  EXPECT_EQ(1, mrrec.wait_for_end());
  EXPECT_THAT(mrrec.err(), HasSubstr("mrrec: cannot write " + m_folder.path("none\\a.wsf") + ": "));
  EXPECT_THAT(mrrec.err(), Not(HasSubstr("no_such_program")));
}

TEST_F(MrrecRun, AFileThatBecameUnwritableLosesNothing) {
  CreateDirectoryA(m_folder.path("sub").c_str(), nullptr);
  const mrTestHost host;
  const mrMrrecRun mrrec("record --pid " + host.pid() + " --out \"" + m_folder.path("sub\\a.wsf") + "\"");
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
