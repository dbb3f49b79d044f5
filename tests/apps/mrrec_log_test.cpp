// mrrec log, in the build that routes messages to the logger.
#include "tests/apps/mrrec_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

// Chooses the host's window: the mouse over it, then Ctrl.
void choose_window(const mrTestHost& host) {
  host.post(WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
  host.post(WM_KEYDOWN, VK_CONTROL, 1);
}

}  // namespace

TEST(MrrecLog, TellsTheMessagesOfTheChosenWindowUntilShift) {
  const mrTestHost host;
  const mrMrrecRun log("log --pid " + host.pid());
  ASSERT_TRUE(log.wait_for_recording()) << log.err();
  host.post(WM_APP, 1, 1);
  choose_window(host);
  host.post(WM_APP, 0x22, 0x33);
  ASSERT_TRUE(log.wait_for_line("w=00000022, l=00000033")) << log.out();
  host.post(WM_KEYDOWN, VK_SHIFT, 1);
  host.post(WM_APP, 0x44, 0x55);
  host.press_ctrl_break();
  EXPECT_EQ(0, log.wait_for_end()) << log.err();
  EXPECT_THAT(log.out(), HasSubstr(" 8000:\tw=00000022, l=00000033"));
  EXPECT_THAT(log.out(), Not(HasSubstr("w=00000001, l=00000001"))) << "nothing was chosen yet";
  EXPECT_THAT(log.out(), Not(HasSubstr("w=00000044"))) << "Shift came before";
}

TEST(MrrecLog, LeavesTheLinesInAFile) {
  const mrTestFolder folder;
  const mrTestHost host;
  const mrMrrecRun log("log --pid " + host.pid() + " --out \"" + folder.path("a.txt") + "\"");
  ASSERT_TRUE(log.wait_for_recording()) << log.err();
  choose_window(host);
  host.post(WM_APP, 0x22, 0x33);
  host.press_ctrl_break();
  EXPECT_EQ(0, log.wait_for_end()) << log.err();
  EXPECT_THAT(read_file(folder.path("a.txt")),
              AllOf(StartsWith("P: "), HasSubstr(" 8000:\tw=00000022, l=00000033"), EndsWith("\r\n")));
}
