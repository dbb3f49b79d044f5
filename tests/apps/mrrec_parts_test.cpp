// The parts of mrrec, called in the test process.
#include "apps/mrrec/mrFailure.h"
#include "apps/mrrec/mrHost.h"
#include "apps/mrrec/mrIgnoredCommands.h"
#include "apps/mrrec/mrOutputFile.h"
#include "apps/mrrec/mrRecorderWindow.h"
#include "apps/mrrec/mrSession.h"
#include "apps/mrrec/mrSessionRecorder.h"
#include "controls/mrToolBar.h"
#include "controls/mrWindow.h"
#include "hooks/mrChannel.h"
#include "hooks/mrDispatcher.h"
#include "hooks/mrSharedBlock.h"
#include "model/mrBaseWindow.h"
#include "tests/support/files.h"
#include "tests/support/test_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

mrFailure failure_of(const std::function<void()>& action) {
  try {
    action();
  } catch (const mrFailure& failure) {
    return failure;
  }
  ADD_FAILURE() << "no failure";
  return {exitDone, ""};
}

}  // namespace

// ---- the host -------------------------------------------------------------------------------------

static BOOL WINAPI says_32_bit(HANDLE, PBOOL is_wow64) { return *is_wow64 = TRUE; }
static BOOL WINAPI says_64_bit(HANDLE, PBOOL is_wow64) {
  *is_wow64 = FALSE;
  return TRUE;
}
static BOOL WINAPI says_nothing(HANDLE, PBOOL is_wow64) {
  *is_wow64 = TRUE;
  return FALSE;
}

TEST(MrrecHost, A32BitProcessIsTold) {
  EXPECT_TRUE(is_32_bit_process(GetCurrentProcess(), says_32_bit));
  EXPECT_FALSE(is_32_bit_process(GetCurrentProcess(), says_64_bit));
  EXPECT_FALSE(is_32_bit_process(GetCurrentProcess(), says_nothing));
  EXPECT_FALSE(is_32_bit_process(GetCurrentProcess()));
}

static mrArguments host_arguments(mrHostOption option, const std::string& host, DWORD pid = 0) {
  mrArguments arguments;
  arguments.command = commandRecord;
  arguments.host_option = option;
  arguments.host = host;
  arguments.pid = pid;
  return arguments;
}

TEST(MrrecHost, AProcessWithoutAWindowIsGivenUpAfterTheWait) {
  PROCESS_INFORMATION info = {};
  STARTUPINFOA startup = {};
  startup.cb = sizeof startup;
  std::string command = own_folder() + "mrrec_test_host.exe --end-after 60000";
  ASSERT_TRUE(
      CreateProcessA(nullptr, &command[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &info));
  const mrFailure failure =
      failure_of([&] { find_host(host_arguments(hostPid, "", info.dwProcessId), 300); });
  TerminateProcess(info.hProcess, 0);
  CloseHandle(info.hThread);
  CloseHandle(info.hProcess);
  EXPECT_EQ(exitFailed, failure.status);
  EXPECT_THAT(failure.reason, HasSubstr("mrrec_test_host.exe"));
  EXPECT_THAT(failure.reason, HasSubstr("no window"));
}

TEST(MrrecHost, ATitleThatNobodyHasIsGivenUpAfterTheWait) {
  const mrFailure failure = failure_of([] { find_host(host_arguments(hostTitle, "nobody's title"), 100); });
  EXPECT_EQ(exitFailed, failure.status);
  EXPECT_THAT(failure.reason, HasSubstr("nobody's title"));
}

TEST(MrrecHost, MrrecItselfIsNoHost) {
  mrTestFrame frame("MrrecOwnFrame", "Own frame of mrrec");
  const DWORD self = GetCurrentProcessId();
  EXPECT_EQ(exitFailed, failure_of([&] { find_host(host_arguments(hostPid, "", self), 100); }).status);
  EXPECT_EQ(exitFailed,
            failure_of([&] { find_host(host_arguments(hostTitle, "Own frame of mrrec"), 100); }).status);
  EXPECT_TRUE(processes_named("mrrec_parts_test.exe").empty());
}

TEST(MrrecHost, HiddenWindowsAndConsolesAreNoHostWindows) {
  mrTestWindow hidden("Static", "hidden", WS_OVERLAPPEDWINDOW);
  register_test_class("ConsoleWindowClass");
  mrTestWindow console("ConsoleWindowClass", "console", WS_OVERLAPPEDWINDOW | WS_VISIBLE);
  EXPECT_EQ(nullptr, first_visible_window({GetCurrentProcessId()}));
  mrTestFrame frame;
  EXPECT_EQ(frame.get(), first_visible_window({GetCurrentProcessId()}));
  EXPECT_EQ(nullptr, first_visible_window({}));
}

// ---- the file -------------------------------------------------------------------------------------

// Line ends of both kinds, a zero byte and bytes above 127: nothing may be translated.
static const CString odd_text("a\r\nb\nc\r\0d\xE9\x80\x1A", 12);

TEST(MrrecOutputFile, WritesEveryByteAsItIs) {
  const mrTestFolder folder;
  const mrOutputFile file(folder.path("a.wsf"));
  EXPECT_TRUE(folder.names().empty()) << "looking whether it can be written leaves nothing behind";
  file.write(odd_text);
  EXPECT_EQ(odd_text.str(), read_file(folder.path("a.wsf")));
  EXPECT_THAT(folder.names(), ElementsAre("a.wsf"));
}

TEST(MrrecOutputFile, KeepsTheOldFileUntilTheNewOneIsComplete) {
  const mrTestFolder folder;
  write_file(folder.path("a.wsf"), "old");
  const mrOutputFile file(folder.path("a.wsf"));
  EXPECT_EQ("old", read_file(folder.path("a.wsf")));
  file.write("new");
  EXPECT_EQ("new", read_file(folder.path("a.wsf")));
  EXPECT_THAT(folder.names(), ElementsAre("a.wsf"));
}

TEST(MrrecOutputFile, WhatCannotBeWrittenIsRefusedAtOnce) {
  const mrTestFolder folder;
  EXPECT_EQ(exitFailed, failure_of([&] { mrOutputFile(folder.path("none\\a.wsf")); }).status);
  EXPECT_THAT(failure_of([&] { mrOutputFile(folder.path("")); }).reason, HasSubstr("folder"));

  write_file(folder.path("fixed.wsf"), "old");
  SetFileAttributesA(folder.path("fixed.wsf").c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_THAT(failure_of([&] { mrOutputFile(folder.path("fixed.wsf")); }).reason, HasSubstr("read-only"));
  SetFileAttributesA(folder.path("fixed.wsf").c_str(), FILE_ATTRIBUTE_NORMAL);

  const std::string too_long = folder.path(std::string(300, 'x'));
  EXPECT_EQ(exitFailed, failure_of([&] { mrOutputFile{too_long}; }).status);
}

// The text behind "what was recorded is in ".
static std::string saved_place(const mrFailure& failure) {
  const std::string marker = "what was recorded is in ";
  const size_t place = failure.reason.find(marker);
  EXPECT_NE(std::string::npos, place) << failure.reason;
  return place == std::string::npos ? "" : failure.reason.substr(place + marker.size());
}

TEST(MrrecOutputFile, TextIsKeptBesideAFileThatCannotBeReplaced) {
  const mrTestFolder folder;
  const mrOutputFile file(folder.path("a.wsf"));
  CreateDirectoryA(folder.path("a.wsf").c_str(), nullptr);
  const mrFailure failure = failure_of([&] { file.write(odd_text); });
  EXPECT_EQ(exitFailed, failure.status);
  EXPECT_EQ(odd_text.str(), read_file(saved_place(failure)));
}

TEST(MrrecOutputFile, TextIsSavedElsewhereWhenTheFolderIsGone) {
  const mrTestFolder folder;
  CreateDirectoryA(folder.path("sub").c_str(), nullptr);
  const mrOutputFile file(folder.path("sub\\a.wsf"));
  ASSERT_TRUE(RemoveDirectoryA(folder.path("sub").c_str()));
  const mrFailure failure = failure_of([&] { file.write(odd_text); });
  EXPECT_EQ(exitFailed, failure.status);
  const std::string place = saved_place(failure);
  EXPECT_EQ(odd_text.str(), read_file(place));
  DeleteFileA(place.c_str());
}

// ---- ignored commands -----------------------------------------------------------------------------

static bool drops(const mrIgnoredCommands& ignored, int type, uint32_t kind, uint32_t command,
                  DWORD size = sizeof(mrWindowRec)) {
  mrWindowRec record = {};
  record.kind = kind;
  record.message = command;
  const COPYDATASTRUCT upload = {static_cast<ULONG_PTR>(type), size, &record};
  return ignored.drops(upload);
}

TEST(MrrecIgnore, DropsTheRecordsOfTheCommandsAndNoOthers) {
  mrIDNamer namer;
  namer.add_constant("app", "IDM_ZOOM", 600);
  const mrIgnoredCommands ignored({{"", 100}, {"IDM_ZOOM", 0}, {"app.IDM_ZOOM", 0}}, namer);
  EXPECT_THAT(ignored.ids(), ElementsAre(100, 600, 600));
  EXPECT_TRUE(drops(ignored, factoryWindow, windowCommand, 100));
  EXPECT_TRUE(drops(ignored, factoryWindow, windowCommand, 600));
  EXPECT_FALSE(drops(ignored, factoryWindow, windowCommand, 101));
  EXPECT_FALSE(drops(ignored, factoryWindow, windowMouse, 100));
  EXPECT_FALSE(drops(ignored, factoryWindow, windowClose, 100));
  EXPECT_FALSE(drops(ignored, factoryEdit, windowCommand, 100));
  EXPECT_FALSE(drops(ignored, factoryWindow, windowCommand, 100, 16));
}

// A toolbar record whose levels' items are these, outermost first.
static bool drops_path(const mrIgnoredCommands& ignored, const std::vector<int>& items, uint64_t count) {
  std::vector<char> bytes(sizeof(mrToolbarHeader) + items.size() * sizeof(mrToolbarRec));
  mrToolbarHeader* const header = reinterpret_cast<mrToolbarHeader*>(bytes.data());
  header->count = count;
  mrToolbarRec* level = reinterpret_cast<mrToolbarRec*>(header + 1);
  for (const int item : items)
    (level++)->item_id = item;
  return ignored.drops({factoryToolBar, static_cast<DWORD>(bytes.size()), bytes.data()});
}

TEST(MrrecIgnore, DropsMenuAndToolbarPathsThatEndAtTheCommand) {
  const mrIgnoredCommands ignored({{"", 100}}, mrIDNamer());
  EXPECT_TRUE(drops_path(ignored, {100}, 1));
  EXPECT_TRUE(drops_path(ignored, {7, 8, 100}, 3));
  EXPECT_FALSE(drops_path(ignored, {100, 8}, 2)) << "the way there is no command";
  EXPECT_FALSE(drops_path(ignored, {}, 0));
  EXPECT_FALSE(drops_path(ignored, {100}, 2)) << "a count that was not sent";
  EXPECT_FALSE(drops_path(ignored, {100}, UINT64_MAX));
}

TEST(MrrecIgnore, MoreThanSixteenAreDroppedToo) {
  std::vector<mrIgnoredId> ids;
  for (int id = 100; id < 140; ++id)
    ids.push_back({"", id});
  const mrIgnoredCommands ignored(ids, mrIDNamer());
  EXPECT_TRUE(drops(ignored, factoryWindow, windowCommand, 139));
}

TEST(MrrecIgnore, ANameThatTheMapDoesNotKnowIsWrongUsage) {
  const mrIDNamer namer;
  const mrFailure failure = failure_of([&] { mrIgnoredCommands({{"IDM_NOBODY", 0}}, namer); });
  EXPECT_EQ(exitWrongUsage, failure.status);
  EXPECT_THAT(failure.reason, HasSubstr("IDM_NOBODY"));
}

// ---- lines ----------------------------------------------------------------------------------------

namespace {

// Records statements on a window of the test.
class Lines : public testing::Test {
protected:
  mrBaseWindow* append(const char* statement) {
    auto* const factory = static_cast<mrBaseWindowFactory*>(get_factory(factoryWindow, true));
    auto* const action = new mrBaseWindow(m_frame, factory);
    action->set_action_string(statement);
    m_recorder.get_actions().AddTail(action);
    return action;
  }
  // Without the window that they all have.
  std::vector<std::string> changed() {
    const std::string prefix = "Main_mrrec_parts_test().";
    std::vector<std::string> lines;
    for (const CString& line : m_recorder.take_changed_lines()) {
      EXPECT_EQ(0u, line.str().find(prefix)) << line.str();
      lines.push_back(line.str().substr(prefix.size()));
    }
    return lines;
  }
  void remove_last() { delete m_recorder.get_actions().RemoveTail(); }

  mrSessionRecorder m_recorder;
  mrTestFrame m_frame;
};

}  // namespace

TEST_F(Lines, AnActionIsToldWhenItIsNewAndWhenItChanges) {
  mrBaseWindow* const action = append("MouseDown();");
  EXPECT_THAT(changed(), ElementsAre("MouseDown();"));
  EXPECT_THAT(changed(), ElementsAre());
  action->set_action_string("Click();");
  EXPECT_THAT(changed(), ElementsAre("Click();"));
  append("Close();");
  append("Close();");
  EXPECT_THAT(changed(), ElementsAre("Close();", "Close();"));
}

TEST_F(Lines, ARemovedActionRepeatsNothing) {
  for (int i = 0; i < 100; ++i)
    append("Click();");
  EXPECT_EQ(100u, changed().size());
  remove_last();
  EXPECT_THAT(changed(), ElementsAre());
  remove_last();
  append("ContextMenu();");
  EXPECT_THAT(changed(), ElementsAre("ContextMenu();"));
  while (m_recorder.action_count() > 0)
    remove_last();
  EXPECT_THAT(changed(), ElementsAre());
  append("Close();");
  EXPECT_THAT(changed(), ElementsAre("Close();"));
}

TEST_F(Lines, OneBeforeTheLastMayGo) {
  append("A();");
  append("B();");
  append("C();");
  EXPECT_EQ(3u, changed().size());
  POSITION position = m_recorder.get_actions().GetTailPosition();
  m_recorder.get_actions().GetPrev(position);
  m_recorder.get_actions().RemoveAt(position);
  EXPECT_THAT(changed(), ElementsAre());
}

TEST_F(Lines, TellingChangesNothingInTheScript) {
  append("Click();");
  CString untold;
  m_recorder.get_script(untold);
  append("Click();");
  changed();
  remove_last();
  CString told;
  m_recorder.get_script(told);
  EXPECT_EQ(untold.str(), told.str());
}

// ---- the window -----------------------------------------------------------------------------------

static LRESULT upload(HWND window, DWORD size, void* data) {
  COPYDATASTRUCT copy = {factoryWindow, size, data};
  return SendMessageA(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&copy));
}

TEST(MrrecWindow, AnExceptionDoesNotLeaveTheWindowProcedure) {
  int calls = 0;
  const mrRecorderWindow window([&](const COPYDATASTRUCT&) {
    if (++calls == 1)
      throw std::runtime_error("cannot build it");
    if (calls == 2)
      throw 7;
  });
  mrWindowRec record = {};
  EXPECT_EQ(FALSE, upload(window, sizeof record, &record));
  EXPECT_EQ(FALSE, upload(window, sizeof record, &record));
  EXPECT_EQ(TRUE, upload(window, sizeof record, &record));
  EXPECT_EQ(3, calls);
}

TEST(MrrecWindow, WhatIsTooShortForARecordIsNotTaken) {
  int calls = 0;
  const mrRecorderWindow window([&](const COPYDATASTRUCT&) { ++calls; });
  mrWindowRec record = {};
  EXPECT_EQ(FALSE, upload(window, 15, &record));
  EXPECT_EQ(FALSE, upload(window, 0, nullptr));
  EXPECT_EQ(TRUE, upload(window, 16, &record));
  EXPECT_EQ(1, calls);
}

TEST(MrrecWindow, TheStopNotificationEndsTheWait) {
  mrRecorderWindow window([](const COPYDATASTRUCT&) {});
  PostMessageA(window, mr_stop_notification, 0, 0);
  EXPECT_EQ(stopRequested, window.wait_for_end(GetCurrentProcess(), 60000, [] {}));
}

TEST(MrrecWindow, TheTimeLimitEndsTheWait) {
  mrRecorderWindow window([](const COPYDATASTRUCT&) {});
  const ULONGLONG start = GetTickCount64();
  EXPECT_EQ(stopTimeOver, window.wait_for_end(GetCurrentProcess(), 50, [] {}));
  EXPECT_GE(GetTickCount64() - start, 50u);
}

// ---- the session ----------------------------------------------------------------------------------

// A host that is this process: its hooks are installed on this very thread.
static mrHost own_host() {
  mrHost host;
  host.pid = GetCurrentProcessId();
  host.thread = GetCurrentThreadId();
  host.name = "mrrec_parts_test.exe";
  return host;
}

TEST(MrrecSession, LeavesNothingOfItsSettingsToTheNextRecording) {
  mrSessionRecorder recorder;
  mrRecorderWindow window([](const COPYDATASTRUCT&) {});
  {
    mrSession session(recorder, window, own_host(), true);
    recorder.add_ignore_command(7);
    EXPECT_TRUE(recorder.get_raw_mode());
    EXPECT_EQ(static_cast<HWND>(window), shared_block().recorder_window);
  }
  EXPECT_FALSE(recorder.get_raw_mode());
  EXPECT_EQ(0, shared_block().ignore_commands_count);
  EXPECT_EQ(nullptr, shared_block().recorder_window);
}

TEST(MrrecSession, ARunningRecordingIsNotTouched) {
  mrTestFrame other;
  shared_block().recorder_window = other;
  shared_block().raw_mode = 1;
  mrSessionRecorder recorder;
  mrRecorderWindow window([](const COPYDATASTRUCT&) {});
  EXPECT_EQ(exitAlreadyRecording, failure_of([&] { mrSession(recorder, window, own_host(), false); }).status);
  EXPECT_EQ(exitAlreadyRecording, failure_of([] { require_no_recording(); }).status);
  EXPECT_EQ(other.get(), shared_block().recorder_window);
  EXPECT_EQ(1, shared_block().raw_mode);
  shared_block().recorder_window = nullptr;
  shared_block().raw_mode = 0;
}

TEST(MrrecSession, ADeadRecordersWindowIsNoRecording) {
  mrTestFrame dead;
  shared_block().recorder_window = dead;
  dead.destroy();
  require_no_recording();
  EXPECT_EQ(nullptr, shared_block().recorder_window);
}

TEST(MrrecSession, AHostThatDiedInAnUploadDoesNotStopTheNextOne) {
  shared_block().busy = 1;
  mrSessionRecorder recorder;
  mrRecorderWindow window([](const COPYDATASTRUCT&) {});
  const mrSession session(recorder, window, own_host(), false);
  EXPECT_EQ(0, shared_block().busy);
}

TEST(MrrecSession, AThreadThatCannotBeWatchedIsAFailure) {
  mrSessionRecorder recorder;
  mrRecorderWindow window([](const COPYDATASTRUCT&) {});
  mrHost host = own_host();
  host.thread = 0xFFFFFFF0;
  const mrFailure failure = failure_of([&] { mrSession(recorder, window, host, true); });
  EXPECT_EQ(exitFailed, failure.status);
  EXPECT_EQ(nullptr, shared_block().recorder_window);
  EXPECT_FALSE(recorder.get_raw_mode());
}
