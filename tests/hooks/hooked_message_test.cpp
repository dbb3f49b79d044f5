// Reading the hooks' structures, class names, and the tick count.
#include "hooks/mrClock.h"
#include "hooks/mrHookedMessage.h"
#include "tests/support/test_window.h"

#include <gtest/gtest.h>

static const HWND some_window = reinterpret_cast<HWND>(0x10203);

static void expect_sample(const mrHookedMessage& message, LRESULT result) {
  EXPECT_EQ(some_window, message.window);
  EXPECT_EQ(static_cast<UINT>(WM_COMMAND), message.message);
  EXPECT_EQ(0x123456789AULL, message.wparam);
  EXPECT_EQ(-7, message.lparam);
  EXPECT_EQ(result, message.result);
}

TEST(HookedMessage, IsReadFromTheStructureOfItsHook) {
  mrHookedMessage message = {};
  MSG posted = {some_window, WM_COMMAND, 0x123456789A, -7, 0, {0, 0}};
  ASSERT_TRUE(read_hooked_message(hookGetMessage, reinterpret_cast<LPARAM>(&posted), message));
  expect_sample(message, 0);

  message = {};
  CWPSTRUCT call = {-7, 0x123456789A, WM_COMMAND, some_window};
  ASSERT_TRUE(read_hooked_message(hookCallWndProc, reinterpret_cast<LPARAM>(&call), message));
  expect_sample(message, 0);

  message = {};
  CWPRETSTRUCT returned = {99, -7, 0x123456789A, WM_COMMAND, some_window};
  ASSERT_TRUE(read_hooked_message(hookCallWndProcRet, reinterpret_cast<LPARAM>(&returned), message));
  expect_sample(message, 99);
}

TEST(HookedMessage, LeavesTheResultAloneForOtherKindsAndWithoutAWindow) {
  mrHookedMessage message = {some_window, WM_COMMAND, 0x123456789A, -7, 5};
  MSG posted = {};
  posted.message = WM_TIMER;
  CWPSTRUCT call = {};
  CWPRETSTRUCT returned = {};
  CBT_CREATEWNDA create = {};
  EXPECT_FALSE(read_hooked_message(hookGetMessage, reinterpret_cast<LPARAM>(&posted), message));
  EXPECT_FALSE(read_hooked_message(hookCallWndProc, reinterpret_cast<LPARAM>(&call), message));
  EXPECT_FALSE(read_hooked_message(hookCallWndProcRet, reinterpret_cast<LPARAM>(&returned), message));
  EXPECT_FALSE(read_hooked_message(hookCbt, reinterpret_cast<LPARAM>(&create), message));
  posted.hwnd = some_window;
  EXPECT_FALSE(read_hooked_message(0, reinterpret_cast<LPARAM>(&posted), message));
  EXPECT_FALSE(read_hooked_message(5, reinterpret_cast<LPARAM>(&posted), message));
  expect_sample(message, 5);
}

TEST(HookedMessage, OfAnyWindowIsAlsoOneOfNone) {
  mrHookedMessage message = {};
  MSG posted = {nullptr, WM_COMMAND, 0x123456789A, -7, 0, {0, 0}};
  ASSERT_TRUE(read_any_hooked_message(hookGetMessage, reinterpret_cast<LPARAM>(&posted), message));
  EXPECT_EQ(nullptr, message.window);
  EXPECT_EQ(static_cast<UINT>(WM_COMMAND), message.message);
  EXPECT_EQ(-7, message.lparam);
  EXPECT_FALSE(read_any_hooked_message(hookCbt, reinterpret_cast<LPARAM>(&posted), message));
}

TEST(HookedClassName, IsThatOfTheWindowAndEmptyForNone) {
  const mrTestFrame frame("SomeClass");
  EXPECT_STREQ("SomeClass", hooked_class_name(frame));
  EXPECT_STREQ("", hooked_class_name(nullptr));
}

// A window that is gone has no class name: what is answered was read before.
TEST(HookedClassName, IsReadOnceForOneMessage) {
  mrTestFrame frame("SomeClass");
  mrTestFrame other("OtherClass");
  const HWND window = frame;
  {
    const mrClassNameScope message;
    EXPECT_STREQ("SomeClass", hooked_class_name(window));
    EXPECT_STREQ("OtherClass", hooked_class_name(other));
    frame.destroy();
    EXPECT_STREQ("SomeClass", hooked_class_name(window));
  }
  EXPECT_STREQ("", hooked_class_name(window));
  const mrClassNameScope next_message;
  EXPECT_STREQ("", hooked_class_name(window));
}

TEST(HookedClassName, IsRightForAnyNumberOfWindows) {
  const mrClassNameScope message;
  const mrTestFrame frames[] = {mrTestFrame("Class1"), mrTestFrame("Class2"), mrTestFrame("Class3"),
                                mrTestFrame("Class4"), mrTestFrame("Class5"), mrTestFrame("Class6")};
  for (int round = 0; round < 2; ++round) {
    for (int i = 0; i < 6; ++i)
      EXPECT_EQ("Class" + std::to_string(i + 1), hooked_class_name(frames[i]));
  }
}

static DWORD WINAPI fixed_ticks() { return 0xFFFFFFF0; }

TEST(Clock, IsTheSystemsUntilATestBringsItsOwn) {
  const DWORD before = GetTickCount();
  EXPECT_LE(mr_tick_count() - before, 10000u);
  set_tick_source(fixed_ticks);
  EXPECT_EQ(0xFFFFFFF0, mr_tick_count());
  set_tick_source(nullptr);
  EXPECT_LE(mr_tick_count() - before, 10000u);
}
