// What a window says it is, and how long that is remembered.
#include "hooks/mrDispatcher.h"
#include "hooks/mrHookKind.h"
#include "hooks/mrHostMessages.h"
#include "hooks/mrIdentity.h"
#include "tests/support/clean_block.h"
#include "tests/support/spies.h"
#include "tests/support/test_window.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <initializer_list>

class IdentityMemory : public testing::Test {
protected:
  IdentityMemory() : window("IdentityFrame") {
    window.set_answer([this](UINT message, WPARAM, LPARAM, LRESULT& result) {
      if (message != request)
        return false;
      ++questions;
      result = answer;
      return true;
    });
    shared_block().recorder_window = window;
    // No hook is set while this is asked, so nothing is left of the test before.
    is_identified(nullptr, 0);
  }
  ~IdentityMemory() override { set_shortcuts(true); }

  bool identified(UINT message, const NMHDR* told = nullptr) {
    return is_identified(window, request, {window, message, 0, reinterpret_cast<LPARAM>(told), 0});
  }
  void tell_of(UINT message) {
    CWPSTRUCT call = {0, 0, message, window};
    dispatch_hook_message(hookCallWndProc, 0, 1, reinterpret_cast<LPARAM>(&call));
  }

  mrCleanBlock clean;
  mrSpies spies;
  mrTestFrame window;
  const UINT request = host_messages().request_grid_information;
  LRESULT answer = mr_identity_answer;
  int questions = 0;
};

TEST_F(IdentityMemory, AsksForEveryMessageThatMayBeRecorded) {
  EXPECT_TRUE(identified(WM_LBUTTONDOWN));
  answer = 164;
  EXPECT_FALSE(identified(WM_LBUTTONDOWN));
  EXPECT_FALSE(identified(WM_COMMAND));
  EXPECT_EQ(3, questions);
}

TEST_F(IdentityMemory, AsksWhenItIsToldNothingOfTheMessage) {
  EXPECT_TRUE(is_identified(window, request));
  answer = 0;
  EXPECT_FALSE(is_identified(window, request));
  EXPECT_EQ(2, questions);
}

TEST_F(IdentityMemory, RemembersTheLastAnswerForTheFlood) {
  EXPECT_TRUE(identified(WM_MOUSEMOVE));
  EXPECT_EQ(1, questions);
  answer = 0;
  EXPECT_TRUE(identified(WM_TIMER));
  EXPECT_TRUE(was_identified(window, request));
  EXPECT_EQ(1, questions);
  EXPECT_FALSE(identified(WM_LBUTTONDOWN)) << "asked anew, and that is remembered";
  EXPECT_FALSE(identified(WM_PAINT));
  EXPECT_EQ(2, questions);
}

TEST_F(IdentityMemory, EndsWhenTheWindowComesOrGoes) {
  for (const UINT message : {WM_NCCREATE, WM_NCDESTROY}) {
    identified(WM_MOUSEMOVE);
    const int before = questions;
    tell_of(message);
    identified(WM_MOUSEMOVE);
    EXPECT_EQ(before + 1, questions);
  }
}

// A question of a factory's own can make the host create or destroy windows.
TEST_F(IdentityMemory, EndsAlsoWhileAnotherMessageIsDispatched) {
  identified(WM_MOUSEMOVE);
  spies[17].during_message = [this] { tell_of(WM_NCDESTROY); };
  tell_of(WM_USER);
  identified(WM_MOUSEMOVE);
  EXPECT_EQ(2, questions);
}

TEST_F(IdentityMemory, EndsWithTheRecording) {
  identified(WM_MOUSEMOVE);
  const HHOOK before = shared_block().get_message_hook;
  shared_block().get_message_hook = reinterpret_cast<HHOOK>(0x1234);
  identified(WM_MOUSEMOVE);
  shared_block().get_message_hook = before;
  EXPECT_EQ(2, questions);
}

// Windows that come and go between two recordings are seen by nobody.
TEST_F(IdentityMemory, WhatWasLearntAboutDialogsEndsWithTheRecordingToo) {
  const unsigned before = window_generation();
  EXPECT_EQ(before, window_generation());
  shared_block().get_message_hook = reinterpret_cast<HHOOK>(0x1234);
  const unsigned in_the_next = window_generation();
  EXPECT_NE(before, in_the_next);
  shared_block().get_message_hook = nullptr;
  EXPECT_NE(in_the_next, window_generation());
}

TEST_F(IdentityMemory, IsNotUsedWithoutShortcuts) {
  set_shortcuts(false);
  identified(WM_MOUSEMOVE);
  was_identified(window, request);
  EXPECT_EQ(2, questions);
}

// Who claims the others changes nothing that is recorded.
TEST_F(IdentityMemory, OnlyMessagesThatMayBeRecordedAskAnew) {
  identified(WM_MOUSEMOVE);
  const auto asks_anew = [this](UINT message, const NMHDR* told = nullptr) {
    const int before = questions;
    identified(message, told);
    return questions > before;
  };
  for (const UINT message :
       std::initializer_list<UINT>{WM_LBUTTONDOWN, WM_MBUTTONDBLCLK, WM_COMMAND, WM_SYSCOMMAND, WM_SETTEXT,
                                   WM_HSCROLL, WM_VSCROLL, WM_CONTEXTMENU, WM_CREATE, WM_DESTROY, WM_KEYDOWN,
                                   WM_USER + 901, WM_USER + 925, host_messages().bcg_change_active_tab})
    EXPECT_TRUE(asks_anew(message)) << message;
  for (const UINT message :
       std::initializer_list<UINT>{WM_MOUSEMOVE, WM_MOUSEWHEEL, WM_TIMER, WM_PAINT, WM_NCHITTEST, WM_GETTEXT,
                                   WM_NCCALCSIZE, WM_CHAR, LVM_INSERTITEMA, WM_USER + 900})
    EXPECT_FALSE(asks_anew(message)) << message;

  for (const UINT code : {TVN_SELCHANGEDA, LVN_ITEMCHANGED, TCN_SELCHANGE, static_cast<UINT>(-1105)}) {
    const NMHDR told = {window, 1, code};
    EXPECT_TRUE(asks_anew(WM_NOTIFY, &told)) << code;
  }
  for (const UINT code : {NM_CUSTOMDRAW, NM_CLICK, LVN_GETDISPINFOA}) {
    const NMHDR told = {window, 1, code};
    EXPECT_FALSE(asks_anew(WM_NOTIFY, &told)) << code;
  }
  EXPECT_FALSE(asks_anew(WM_NOTIFY));
}
