// Actions on windows.
#include "model/mrBaseWindow.h"
#include "tests/support/clean_block.h"
#include "tests/support/probe.h"
#include "tests/support/recording.h"
#include "tests/support/test_window.h"

#include <gtest/gtest.h>

#include <cstddef>

static_assert(sizeof(mrBaseWindowActionStruct) == 20 && offsetof(mrBaseWindowActionStruct, kind) == 0 &&
                  offsetof(mrBaseWindowActionStruct, button) == 4 &&
                  offsetof(mrBaseWindowActionStruct, x) == 8 && offsetof(mrBaseWindowActionStruct, y) == 12 &&
                  offsetof(mrBaseWindowActionStruct, key_state) == 16,
              "five integers; the first four are one unit");

TEST(BaseWindow, StartsWithoutStatementAndKind) {
  mrProbeFactory factory;
  const mrTestFrame frame;
  mrBaseWindow action(frame, &factory);
  EXPECT_EQ(frame, action.get_window());
  EXPECT_EQ("", action.get_action_string());
  EXPECT_EQ(-1, action.get_action_struct().kind);
  ASSERT_EQ(1, action.get_path().GetSize());
  EXPECT_EQ(frame, action.get_path()[0]->window);
}

TEST(BaseWindow, HasAnEmptyPathWithoutAWindow) {
  mrProbeFactory factory;
  const mrBaseWindow action(nullptr, &factory);
  EXPECT_TRUE(action.get_path().IsEmpty());
}

TEST(BaseWindow, CopiesAllFiveIntegers) {
  mrProbeFactory factory;
  mrBaseWindow action(nullptr, &factory);
  mrBaseWindowActionStruct mouse;
  mouse.kind = 2;
  mouse.button = 3;
  mouse.x = -4;
  mouse.y = 5;
  mouse.key_state = 8;
  action.set_action_struct(mouse);
  const mrBaseWindowActionStruct& got = action.get_action_struct();
  EXPECT_EQ(0, memcmp(&mouse, &got, sizeof mouse));
  action.get_action_struct().x = 7;
  EXPECT_EQ(7, action.get_action_struct().x);
}

TEST(BaseWindow, WritesTheCallOfItsWindowAndItsStatement) {
  const mrCleanBlock clean;
  mrTestRecorder recorder;
  mrProbeFactory factory;
  factory.set_recorder(&recorder);
  const mrTestFrame frame;
  mrBaseWindow action(frame, &factory);
  action.set_action_string("Close();");
  CString script = "before\r\n";
  action.get_script(script);
  EXPECT_EQ("before\r\n  Main_model_test().Close();", script);
}

// Deliberate: script assembly may still hold the levels of a path.
TEST(BaseWindow, LeavesTheLevelsOfItsPathWhenItIsDeleted) {
  mrProbeFactory factory;
  const mrTestFrame frame("TestFrame", "Kept");
  mrAction* const action = new mrBaseWindow(frame, &factory);
  const mrWindowInfo* const level = static_cast<mrBaseWindow*>(action)->get_path()[0];
  delete action;
  for (int i = 0; i < 100; ++i)  // freed memory would be given out again
    memset(::operator new(sizeof(mrWindowInfo)), 'x', sizeof(mrWindowInfo));
  EXPECT_STREQ("Kept", level->text);
}
