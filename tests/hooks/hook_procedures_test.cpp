// The four hook procedures, called as Windows calls them, and the installation of the hooks.
#include "hooks/mrChannel.h"
#include "hooks/mrDispatcher.h"
#include "hooks/mrHookKind.h"
#include "hooks/mrHooks.h"
#include "tests/support/clean_block.h"
#include "tests/support/hooked.h"
#include "tests/support/peer.h"
#include "tests/support/spies.h"
#include "tests/support/test_window.h"

#include <gmock/gmock.h>

#include <algorithm>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class HookProcedures : public testing::Test {
protected:
  HookProcedures()
      : recorder("TestFrame", "Recorder"), recorder_child("TestFrame", "", WS_CHILD, recorder),
        recorder_grandchild("TestFrame", "", WS_CHILD, recorder_child), host("TestFrame", "Host"),
        owned_by_recorder("TestFrame", "", WS_POPUP, recorder) {
    shared_block().recorder_window = recorder;
    shared_block().remote_message_id = RegisterWindowMessageA("MSG_MR_SEND_REMOTELY");
    // Type 17 claims everything: one line for each message that is dispatched.
    spies[17].claims = true;
    // The first message of a recording tells the factories of it; what follows is about the messages.
    dispatch_hook_message(hookCbt, 0, 0, 0);
    spies.log.clear();
    recorder.set_answer([this](UINT message, WPARAM wparam, LPARAM lparam, LRESULT&) {
      if (message == mr_stop_notification) {
        ++stop_notifications;
        EXPECT_EQ(0u, wparam);
        EXPECT_EQ(0, lparam);
      }
      return false;
    });
  }

  LRESULT get_message(HWND window, UINT message, WPARAM wparam = 0, int code = HC_ACTION,
                      WPARAM removed = PM_REMOVE) {
    MSG msg = {};
    msg.hwnd = window;
    msg.message = message;
    msg.wParam = wparam;
    return get_message_hook_proc(code, removed, reinterpret_cast<LPARAM>(&msg));
  }
  LRESULT call_wnd(HWND window, UINT message, WPARAM wparam = 0, int code = HC_ACTION) {
    CWPSTRUCT call = {0, wparam, message, window};
    return call_wnd_proc_hook(code, 1, reinterpret_cast<LPARAM>(&call));
  }
  LRESULT call_wnd_ret(HWND window, UINT message, int code = HC_ACTION) {
    CWPRETSTRUCT returned = {0, 0, 0, message, window};
    return call_wnd_ret_proc_hook(code, 1, reinterpret_cast<LPARAM>(&returned));
  }

  mrCleanBlock clean;
  mrSpies spies;
  mrTestFrame recorder;
  mrTestWindow recorder_child;
  mrTestWindow recorder_grandchild;
  mrTestFrame host;
  mrTestWindow owned_by_recorder;
  int stop_notifications = 0;
};

TEST_F(HookProcedures, DispatchTheHostsMessagesWithTheirKind) {
  get_message(host, WM_LBUTTONDOWN);
  call_wnd(host, WM_COMMAND);
  call_wnd_ret(host, WM_COMMAND);
  cbt_hook_proc(HCBT_CREATEWND, 66, 0);
  EXPECT_THAT(spies.log,
              ElementsAre("17 message 1 0 1", "17 message 2 0 1", "17 message 3 0 1", "17 message 4 3 66"));
}

TEST_F(HookProcedures, NeverDispatchWhatTheRecordersWindowsReceive) {
  for (const HWND window : {recorder.get(), recorder_child.get(), recorder_grandchild.get()}) {
    get_message(window, WM_LBUTTONDOWN);
    call_wnd(window, WM_COMMAND);
    call_wnd_ret(window, WM_COMMAND);
  }
  EXPECT_THAT(spies.log, IsEmpty());
}

// A window that the recorder window merely owns is none of its descendants.
TEST_F(HookProcedures, DispatchWhatAWindowOwnedByTheRecorderReceives) {
  call_wnd(owned_by_recorder, WM_COMMAND);
  EXPECT_THAT(spies.log, ElementsAre("17 message 2 0 1"));
}

TEST_F(HookProcedures, AlwaysDispatchACbtNotification) {
  cbt_hook_proc(HCBT_DESTROYWND, reinterpret_cast<WPARAM>(recorder.get()), 0);
  EXPECT_EQ(1u, spies.log.size());
}

TEST_F(HookProcedures, DispatchNothingWithANegativeCode) {
  get_message(host, WM_LBUTTONDOWN, 0, -1);
  get_message(host, WM_KEYDOWN, VK_CANCEL, -1);
  call_wnd(host, WM_COMMAND, 0, -1);
  call_wnd_ret(host, WM_COMMAND, -1);
  cbt_hook_proc(-1, 0, 0);
  EXPECT_THAT(spies.log, IsEmpty());
  EXPECT_EQ(recorder, shared_block().recorder_window);
}

TEST_F(HookProcedures, DispatchNoMessageThatIsOnlyPeekedAt) {
  get_message(host, WM_LBUTTONDOWN, 0, HC_ACTION, PM_NOREMOVE);
  EXPECT_THAT(spies.log, IsEmpty());
}

TEST_F(HookProcedures, KeepARemoteCallFromTheFactories) {
  LPARAM address = 0;
  WPARAM wparam_seen = 0;
  host.set_answer([&](UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
    if (message != WM_USER + 7)
      return false;
    wparam_seen = wparam;
    address = lparam;
    result = -9000000000;
    return true;
  });
  shared_block().remote_message = WM_USER + 7;
  call_wnd(host, shared_block().remote_message_id, 31);
  EXPECT_EQ(31u, wparam_seen);
  EXPECT_EQ(reinterpret_cast<LPARAM>(shared_block().remote_buffer), address);
  EXPECT_EQ(-9000000000, shared_block().remote_result);
  call_wnd_ret(host, shared_block().remote_message_id, 31);
  EXPECT_THAT(spies.log, IsEmpty()) << "neither when it comes nor when it returns";
}

TEST_F(HookProcedures, LeaveARemoteCallToARecordersWindowAlone) {
  shared_block().remote_result = 3;
  call_wnd(recorder_child, shared_block().remote_message_id);
  EXPECT_EQ(3, shared_block().remote_result);
}

// Deliberate: before the first remote call the number is 0, and a WM_NULL counts as one.
TEST_F(HookProcedures, TakeAWmNullForARemoteCallBeforeTheFirstOne) {
  host.set_answer([&](UINT message, WPARAM wparam, LPARAM, LRESULT& result) {
    result = static_cast<LRESULT>(wparam) + 1;
    return message == WM_USER + 7;
  });
  shared_block().remote_message_id = 0;
  shared_block().remote_message = WM_USER + 7;
  call_wnd(host, WM_NULL, 41);
  EXPECT_EQ(42, shared_block().remote_result);
  EXPECT_THAT(spies.log, IsEmpty());

  shared_block().remote_message_id = RegisterWindowMessageA("MSG_MR_SEND_REMOTELY");
  call_wnd(host, WM_NULL, 51);
  EXPECT_EQ(42, shared_block().remote_result);
  EXPECT_THAT(spies.log, ElementsAre("17 message 2 0 1")) << "from then on it is a message like any other";
}

TEST_F(HookProcedures, EndTheRecordingAtCtrlBreak) {
  get_message(host, WM_KEYDOWN, VK_CANCEL);
  EXPECT_EQ(nullptr, shared_block().recorder_window);
  EXPECT_THAT(spies.log, IsEmpty());
  pump_messages();
  EXPECT_EQ(1, stop_notifications);
}

TEST_F(HookProcedures, EndTheRecordingAtCtrlBreakInTheRecordersOwnWindowToo) {
  get_message(recorder, WM_KEYDOWN, VK_CANCEL);
  EXPECT_EQ(nullptr, shared_block().recorder_window);
  pump_messages();
  EXPECT_EQ(1, stop_notifications);
}

// A host that is recorded a second time still has the library loaded.
TEST_F(HookProcedures, TellTheFactoriesOfAHostOfEachRecording) {
  const HHOOK installed = shared_block().get_message_hook;
  for (const uintptr_t recording : {0x1111u, 0x2222u}) {
    shared_block().get_message_hook = reinterpret_cast<HHOOK>(recording);
    spies.log.clear();
    call_wnd(host, WM_USER + 1);
    call_wnd(host, WM_USER + 1);
    ASSERT_EQ(17u + 2, spies.log.size()) << recording;
    EXPECT_EQ("1 start", spies.log.front());
    EXPECT_EQ("17 start", spies.log[16]);
  }
  shared_block().get_message_hook = installed;
}

// The same key may first be peeked at; the hooks are gone then, and so is the recorder window.
TEST_F(HookProcedures, EndTheRecordingAtCtrlBreakAlsoWhenItIsOnlyPeekedAt) {
  get_message(host, WM_KEYDOWN, VK_CANCEL, HC_ACTION, PM_NOREMOVE);
  EXPECT_EQ(nullptr, shared_block().recorder_window);
  pump_messages();
  EXPECT_EQ(1, stop_notifications);
}

TEST_F(HookProcedures, TakeNoOtherKeyForCtrlBreak) {
  get_message(host, WM_KEYDOWN, VK_PAUSE);
  get_message(host, WM_KEYUP, VK_CANCEL);
  get_message(host, WM_CHAR, VK_CANCEL);
  get_message(host, WM_SYSKEYDOWN, VK_CANCEL);
  EXPECT_EQ(recorder, shared_block().recorder_window);
  EXPECT_EQ(4u, spies.log.size());
  pump_messages();
  EXPECT_EQ(0, stop_notifications);
}

// ---- installation, on the test's own thread ---------------------------------------------------------

class Installation : public testing::Test {
protected:
  Installation() : recorder("TestFrame", "Recorder"), host("TestFrame", "Host") {
    recorder.set_answer([this](UINT message, WPARAM, LPARAM, LRESULT&) {
      stop_notifications += message == mr_stop_notification;
      return false;
    });
  }
  ~Installation() override { remove_hooks(); }

  bool install() { return install_hooks(recorder, GetCurrentThreadId()); }

  mrCleanBlock clean;
  mrSpies spies;
  mrTestFrame recorder;
  mrTestFrame host;
  int stop_notifications = 0;
};

TEST_F(Installation, TellsTheFactories1To17OfTheStartInThisOrderAndNotTheLogger) {
  ASSERT_TRUE(install());
  std::vector<std::string> expected;
  for (int type = 1; type <= 17; ++type)
    expected.push_back(std::to_string(type) + " start");
  ASSERT_GE(spies.log.size(), expected.size());
  EXPECT_THAT(spies.log, Not(Contains("18 start")));
  spies.log.resize(expected.size());
  EXPECT_EQ(expected, spies.log);
}

TEST_F(Installation, StoresTheRecorderWindowBeforeTheFactoriesAreTold) {
  bool told_too_early = true;
  bool told_too_late = true;
  spies[1].on_start = [&] {
    told_too_early = shared_block().recorder_window != recorder;
    told_too_late = shared_block().get_message_hook || shared_block().cbt_hook;
  };
  shared_block().get_message_hook = shared_block().cbt_hook = nullptr;
  ASSERT_TRUE(install());
  EXPECT_FALSE(told_too_early);
  EXPECT_FALSE(told_too_late);
}

TEST_F(Installation, HooksPostedAndSentMessagesAndNotifications) {
  ASSERT_TRUE(install());
  const mrSharedBlock& shared = shared_block();
  EXPECT_EQ(recorder, shared.recorder_window);
  EXPECT_NE(nullptr, shared.get_message_hook);
  EXPECT_NE(nullptr, shared.call_wnd_hook);
  EXPECT_NE(nullptr, shared.call_wnd_ret_hook);
  EXPECT_NE(nullptr, shared.cbt_hook);

  spies[17].claims = true;
  SendMessageA(host, WM_USER, 0, 0);  // the first message tells the factories of the recording too
  spies.log.clear();
  SendMessageA(host, WM_USER, 0, 0);
  EXPECT_THAT(spies.log, ElementsAre("17 message 2 0 1", "17 message 3 0 1"));
  spies.log.clear();
  PostMessageA(host, WM_USER, 0, 0);
  pump_messages();
  EXPECT_THAT(spies.log, Contains("17 message 1 0 1"));
  spies.log.clear();
  const mrTestFrame created("TestFrame", "Created");
  EXPECT_THAT(spies.log, Contains("17 message 4 " + std::to_string(HCBT_CREATEWND) + " " +
                                  std::to_string(reinterpret_cast<UINT_PTR>(created.get()))));
}

TEST_F(Installation, LetsEveryMessageReachItsWindowUnchanged) {
  ASSERT_TRUE(install());
  for (int type = 1; type <= 17; ++type)
    spies[type].claims = true;
  WPARAM wparam_seen = 0;
  host.set_answer([&](UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
    if (message != WM_USER + 1)
      return false;
    wparam_seen = wparam;
    result = lparam * 2;
    return true;
  });
  EXPECT_EQ(16, SendMessageA(host, WM_USER + 1, 7, 8));
  EXPECT_EQ(7u, wparam_seen);
}

TEST_F(Installation, IsRefusedWhileARecordingRunsAndChangesNothing) {
  shared_block().recorder_window = host;
  shared_block().get_message_hook = reinterpret_cast<HHOOK>(1);
  const std::string before(reinterpret_cast<const char*>(&shared_block()), sizeof(mrSharedBlock));
  EXPECT_FALSE(install());
  EXPECT_EQ(before, std::string(reinterpret_cast<const char*>(&shared_block()), sizeof(mrSharedBlock)));
  EXPECT_THAT(spies.log, IsEmpty());
  shared_block().get_message_hook = nullptr;
}

TEST_F(Installation, OfASecondProcessIsRefusedUntilTheFirstStops) {
  mrPeer peer;
  const std::string request = "install " + std::to_string(reinterpret_cast<UINT_PTR>(recorder.get())) + " " +
                              std::to_string(GetCurrentThreadId());
  ASSERT_TRUE(install());
  EXPECT_EQ("0", peer.ask(request));
  remove_hooks();
  EXPECT_EQ("1", peer.ask(request));
  EXPECT_FALSE(install());
  peer.ask("remove");
  EXPECT_TRUE(install());
}

// The message and its number are both 0 then. Without an end the host's stack would be used up.
TEST_F(Installation, AnswersAWmNullBeforeTheFirstRemoteCallOnce) {
  ASSERT_TRUE(install());
  int received = 0;
  host.set_answer([&](UINT message, WPARAM, LPARAM, LRESULT&) {
    received += message == WM_NULL;
    return false;
  });
  SendMessageA(host, WM_NULL, 0, 0);
  EXPECT_EQ(2, received) << "the message itself and the call that it stands for";
}

// Deliberate: only a recording that already runs is reported.
TEST_F(Installation, DoesNotReportAThreadThatDoesNotExist) {
  EXPECT_TRUE(install_hooks(recorder, 0xFFFFFFF0));
  EXPECT_EQ(recorder, shared_block().recorder_window);
  EXPECT_EQ(nullptr, shared_block().get_message_hook);
  EXPECT_EQ(nullptr, shared_block().call_wnd_hook);
  EXPECT_EQ(nullptr, shared_block().call_wnd_ret_hook);
  EXPECT_EQ(nullptr, shared_block().cbt_hook);
  remove_hooks();
  EXPECT_TRUE(install());
}

TEST_F(Installation, IsUndoneByRemovalWhichKeepsTheHandles) {
  ASSERT_TRUE(install());
  remove_hooks();
  const mrSharedBlock& shared = shared_block();
  EXPECT_EQ(nullptr, shared.recorder_window);
  spies.log.clear();
  SendMessageA(host, WM_USER, 0, 0);
  PostMessageA(host, WM_USER, 0, 0);
  pump_messages();
  EXPECT_THAT(spies.log, IsEmpty());
  for (const HHOOK hook :
       {shared.get_message_hook, shared.call_wnd_hook, shared.call_wnd_ret_hook, shared.cbt_hook}) {
    EXPECT_NE(nullptr, hook);
    EXPECT_FALSE(UnhookWindowsHookEx(hook)) << "still installed";
  }
  remove_hooks();
  EXPECT_EQ(nullptr, shared.recorder_window);
}

TEST_F(Installation, IsUndoneByCtrlBreakWhichTellsTheRecorderOnce) {
  ASSERT_TRUE(install());
  spies.log.clear();
  PostMessageA(host, WM_KEYDOWN, VK_CANCEL, 1);
  EXPECT_TRUE(wait_until([this] { return stop_notifications > 0; }));
  pump_messages();
  EXPECT_EQ(1, stop_notifications);
  EXPECT_EQ(nullptr, shared_block().recorder_window);
  // Sent messages around it may be there, but not the key.
  EXPECT_THAT(spies.log, Not(Contains("17 message 1 0 1")));
  const mrSharedBlock& shared = shared_block();
  for (const HHOOK hook :
       {shared.get_message_hook, shared.call_wnd_hook, shared.call_wnd_ret_hook, shared.cbt_hook})
    EXPECT_FALSE(UnhookWindowsHookEx(hook)) << "still installed";
  EXPECT_TRUE(install()) << "the next recording can start";
}

// ---- the chain ----------------------------------------------------------------------------------------

// Hooks of somebody else, installed before the library's and therefore called behind them.
namespace {

struct Passed {
  int code;
  WPARAM wparam;
  LPARAM lparam;
  UINT message;  // 0 for a notification
};
std::vector<Passed> passed;
LRESULT cbt_answer = 0;

LRESULT CALLBACK note_get_message(int code, WPARAM wparam, LPARAM lparam) {
  passed.push_back({code, wparam, lparam, reinterpret_cast<const MSG*>(lparam)->message});
  return 0;
}
LRESULT CALLBACK note_call_wnd(int code, WPARAM wparam, LPARAM lparam) {
  passed.push_back({code, wparam, lparam, reinterpret_cast<const CWPSTRUCT*>(lparam)->message});
  return 0;
}
LRESULT CALLBACK note_call_wnd_ret(int code, WPARAM wparam, LPARAM lparam) {
  passed.push_back({code, wparam, lparam, reinterpret_cast<const CWPRETSTRUCT*>(lparam)->message});
  return 0;
}
LRESULT CALLBACK note_cbt(int code, WPARAM wparam, LPARAM lparam) {
  passed.push_back({code, wparam, lparam, 0});
  return code == HCBT_CREATEWND ? cbt_answer : 0;
}

class HookChain : public Installation {
protected:
  void SetUp() override {
    const DWORD thread = GetCurrentThreadId();
    hooks = {SetWindowsHookExA(WH_GETMESSAGE, note_get_message, nullptr, thread),
             SetWindowsHookExA(WH_CALLWNDPROC, note_call_wnd, nullptr, thread),
             SetWindowsHookExA(WH_CALLWNDPROCRET, note_call_wnd_ret, nullptr, thread),
             SetWindowsHookExA(WH_CBT, note_cbt, nullptr, thread)};
    ASSERT_TRUE(install());
    passed.clear();
  }
  void TearDown() override {
    for (const HHOOK hook : hooks)
      UnhookWindowsHookEx(hook);
    cbt_answer = 0;
  }
  static int count(UINT message) {
    return static_cast<int>(std::count_if(passed.begin(), passed.end(),
                                          [message](const Passed& p) { return p.message == message; }));
  }

  std::vector<HHOOK> hooks;
};

}  // namespace

TEST_F(HookChain, GoesOnForEveryMessageClaimedOrNot) {
  for (const bool claims : {false, true}) {
    spies[17].claims = claims;
    passed.clear();
    SendMessageA(host, WM_USER + 5, 1, 2);
    EXPECT_EQ(2, count(WM_USER + 5)) << "before and after the window procedure";
    PostMessageA(host, WM_USER + 6, 1, 2);
    pump_messages();
    EXPECT_EQ(1, count(WM_USER + 6));
  }
}

TEST_F(HookChain, GoesOnForTheRecordersWindowRemoteCallsAndTheStopKey) {
  SendMessageA(recorder, WM_USER + 5, 1, 2);
  EXPECT_EQ(2, count(WM_USER + 5));
  shared_block().remote_message_id = RegisterWindowMessageA("MSG_MR_SEND_REMOTELY");
  shared_block().remote_message = WM_USER + 7;
  SendMessageA(host, shared_block().remote_message_id, 0, 0);
  EXPECT_EQ(2, count(shared_block().remote_message_id));
  PostMessageA(host, WM_KEYDOWN, VK_CANCEL, 1);
  pump_messages();
  EXPECT_EQ(1, count(WM_KEYDOWN));
}

// The spy that is asked first has seen the very arguments that the next hook gets.
TEST_F(HookChain, PassesTheArgumentsOnUnchanged) {
  std::vector<Passed> seen;
  spies[17].on_message = [&](int, int code, WPARAM wparam, LPARAM lparam) {
    seen.push_back({code, wparam, lparam, 0});
  };
  SendMessageA(host, WM_USER + 5, 0, 0);
  PostMessageA(host, WM_USER + 6, 0, 0);
  pump_messages();
  const mrTestFrame created("TestFrame", "Created");
  ASSERT_GE(seen.size(), 5u);
  // In the same order; between them is what the recorder's window received.
  auto next = passed.begin();
  for (const Passed& one : seen) {
    next = std::find_if(next, passed.end(), [&one](const Passed& p) {
      return p.code == one.code && p.wparam == one.wparam && p.lparam == one.lparam;
    });
    ASSERT_NE(passed.end(), next);
    ++next;
  }
}

TEST_F(HookChain, KeepsTheAnswerOfAHookBehind) {
  cbt_answer = 1;
  EXPECT_EQ(nullptr, CreateWindowExA(0, "TestFrame", "Refused", WS_OVERLAPPEDWINDOW, 0, 0, 10, 10, nullptr,
                                     nullptr, GetModuleHandleA(nullptr), nullptr));
}
