// The hooks in another process: remote calls answered by its windows, uploads from there, and the real
// Ctrl+Break.
#include "hooks/mrChannel.h"
#include "hooks/mrFactoryType.h"
#include "hooks/mrHooks.h"
#include "controls/mrWindow.h"
#include "tests/support/clean_block.h"
#include "tests/support/e2e.h"
#include "tests/support/test_host.h"

#include <gmock/gmock.h>

#include <commctrl.h>

#include <algorithm>

class HookedHost : public testing::Test {
protected:
  HookedHost()
      : host("test_host"), control(GetDlgItem(host.frame(), host_control_id)),
        edit(GetDlgItem(host.frame(), host_edit_id)) {
    install_hooks(catcher.window(), host.thread_id());
  }
  ~HookedHost() override { remove_hooks(); }

  void SetUp() override {
    ASSERT_NE(nullptr, control);
    ASSERT_EQ(catcher.window(), shared_block().recorder_window);
  }

  // Whatever was posted to the host before has been handled and uploaded: messages come in order.
  void wait_for_host() {
    PostMessageA(host.frame(), WM_MBUTTONDOWN, 0, marker);
    ASSERT_TRUE(wait_until([&] {
      return catcher.count() > 0 && catcher.last_as<mrWindowRec>().window == host.frame() &&
             catcher.last_as<mrWindowRec>().lparam == marker;
    }));
  }
  bool wait_for_presses(int count) {
    return wait_until([&] { return SendMessageA(control, host_count_presses, 0, 0) == count; });
  }
  LRESULT remote_calls_seen() { return SendMessageA(control, host_count_remote_calls, 0, 0); }

  static constexpr LPARAM marker = 0x12340056;
  mrCleanBlock clean;
  struct Catcher : mrUploadCatcher {
    // install_hooks makes it the recorder window.
    Catcher() { shared_block().recorder_window = nullptr; }
  } catcher;
  mrProgram host;
  HWND control;
  HWND edit;
};

// ---- remote calls ---------------------------------------------------------------------------------

TEST_F(HookedHost, ReversesAFullBufferOfARemoteCall) {
  std::string buffer(1024, '\0');
  LRESULT sum = host_result_bit;
  for (int i = 0; i < 1024; ++i) {
    buffer[i] = static_cast<char>(i * 7);
    sum += static_cast<unsigned char>(buffer[i]);
  }
  std::string expected(buffer.rbegin(), buffer.rend());
  EXPECT_EQ(sum, send_remotely(control, host_reverse_buffer, 1024, &buffer[0], 1024));
  EXPECT_EQ(expected, buffer);
  EXPECT_EQ(1, remote_calls_seen());
}

TEST_F(HookedHost, NeverSeesARemoteCallThatIsTooLarge) {
  std::string buffer(1025, 'x');
  EXPECT_EQ(0, send_remotely(control, host_reverse_buffer, 1024, &buffer[0], 1025));
  EXPECT_EQ(0, remote_calls_seen());
  EXPECT_EQ(std::string(1025, 'x'), buffer);
}

TEST_F(HookedHost, AnswersARemoteCallWithoutABuffer) {
  EXPECT_EQ(42, send_remotely(control, host_add_one, 41, nullptr, 0));
  EXPECT_EQ(43, send_remotely(control, host_add_one, 42, nullptr, 16));
  EXPECT_EQ(2, remote_calls_seen());
}

TEST_F(HookedHost, AnswersARemoteCallOfNoBytes) {
  char buffer[] = "kept";
  EXPECT_EQ(host_result_bit, send_remotely(control, host_reverse_buffer, 0, buffer, 0));
  EXPECT_STREQ("kept", buffer);
}

TEST_F(HookedHost, TellsWhereATabIs) {
  RECT first = {};
  RECT second = {};
  const HWND tabs = GetDlgItem(host.frame(), host_tabs_id);
  EXPECT_EQ(1, send_remotely(tabs, TCM_GETITEMRECT, 0, &first, sizeof first));
  EXPECT_EQ(1, send_remotely(tabs, TCM_GETITEMRECT, 1, &second, sizeof second));
  EXPECT_LT(first.left, first.right);
  EXPECT_LT(first.top, first.bottom);
  EXPECT_EQ(first.right, second.left);
}

// Deliberate: until the first remote call the number is 0, and a WM_NULL counts as one.
TEST_F(HookedHost, TakesAWmNullForARemoteCallBeforeTheFirstOne) {
  ASSERT_EQ(0u, shared_block().remote_message_id);
  shared_block().remote_message = host_add_one;
  SendMessageA(control, WM_NULL, 9, 0);
  EXPECT_EQ(10, shared_block().remote_result);
}

// Both the message and the number are 0 then: the host must not call itself until its stack is used up.
TEST_F(HookedHost, SurvivesAWmNullBeforeTheFirstRemoteCall) {
  shared_block().remote_result = 5;
  EXPECT_EQ(0, SendMessageA(control, WM_NULL, 0, 0));
  EXPECT_EQ(0, shared_block().remote_result);
  EXPECT_TRUE(host.is_running());
  EXPECT_EQ(2, send_remotely(control, host_add_one, 1, nullptr, 0));
}

// ---- uploads --------------------------------------------------------------------------------------

TEST_F(HookedHost, UploadsAPostedMouseMessageByteForByte) {
  PostMessageA(control, WM_RBUTTONDOWN, MK_RBUTTON | MK_SHIFT, MAKELPARAM(0xFFFE, 20));
  ASSERT_TRUE(wait_until([&] { return catcher.count() > 0; }));
  EXPECT_EQ(1u, catcher.count());
  EXPECT_EQ(1u, catcher.last().type);

  std::string expected(40, '\0');
  const auto put = [&](size_t offset, unsigned long long value, size_t width) {
    for (size_t i = 0; i < width; ++i)
      expected[offset + i] = static_cast<char>(value >> (8 * i));
  };
  put(8, reinterpret_cast<UINT_PTR>(control), 8);
  put(16, WM_RBUTTONDOWN, 4);
  put(24, MK_RBUTTON | MK_SHIFT, 8);
  put(32, 0x14FFFE, 8);
  EXPECT_EQ(expected, catcher.last().bytes);
}

TEST_F(HookedHost, UploadsAPostedMenuCommandOnce) {
  PostMessageA(host.frame(), WM_COMMAND, 40001, 0);
  wait_for_host();
  ASSERT_EQ(2u, catcher.count());
  const mrUploadCatcher::Upload& upload = catcher.all()[0];
  mrWindowRec record;
  ASSERT_EQ(sizeof record, upload.bytes.size());
  memcpy(&record, upload.bytes.data(), sizeof record);
  EXPECT_EQ(windowCommand, record.kind);
  EXPECT_EQ(host.frame(), record.window);
  EXPECT_EQ(40001u, record.message);
}

TEST_F(HookedHost, UploadsNoMovesAndNothingAfterTheRemoval) {
  for (int i = 0; i < 20; ++i)
    PostMessageA(control, WM_MOUSEMOVE, 0, MAKELPARAM(i, i));
  wait_for_host();
  EXPECT_EQ(1u, catcher.count());

  remove_hooks();
  shared_block().recorder_window = catcher.window();  // an upload would still find its way
  PostMessageA(control, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(1, 1));
  EXPECT_TRUE(wait_for_presses(1));
  EXPECT_EQ(1u, catcher.count());
}

// ---- Ctrl+Break -------------------------------------------------------------------------------------

TEST_F(HookedHost, EndsTheRecordingAtTheRealCtrlBreak) {
  int notifications = 0;
  catcher.on_message = [&](UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == 1124 && wparam == 0 && lparam == 0)
      ++notifications;
  };
  mrUser user;
  user.click(client_place(control, 5, 5));
  ASSERT_TRUE(wait_until([&] { return catcher.count() >= 2; })) << "the host records the click";
  const size_t uploads = catcher.count();

  user.key(VK_CANCEL, {VK_CONTROL});
  ASSERT_TRUE(wait_until([&] { return notifications > 0; }));
  EXPECT_EQ(nullptr, shared_block().recorder_window);

  shared_block().recorder_window = catcher.window();
  user.key(VK_CANCEL, {VK_CONTROL});
  user.click(client_place(control, 50, 5));
  EXPECT_TRUE(wait_for_presses(2));
  EXPECT_EQ(uploads, catcher.count());
  EXPECT_EQ(1, notifications);

  // Asked only now: a hook that is removed while it runs lives on until it returns.
  const mrSharedBlock& shared = shared_block();
  for (const HHOOK hook :
       {shared.get_message_hook, shared.call_wnd_hook, shared.call_wnd_ret_hook, shared.cbt_hook}) {
    EXPECT_NE(nullptr, hook);
    EXPECT_FALSE(UnhookWindowsHookEx(hook)) << "still installed";
  }
  shared_block().recorder_window = nullptr;
  EXPECT_TRUE(install_hooks(catcher.window(), host.thread_id())) << "the next recording can start";
}
