// End to end: SampleCad's sliders.
#include "apps/SampleCad/gallery.dev/gallery.h"
#include "tests/support/e2e.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

using Statements = std::vector<std::string>;

class TrackBarEndToEnd : public testing::Test {
protected:
  TrackBarEndToEnd() { stop_clock_of(host); }

  HWND slider(int id) const { return GetDlgItem(dialog, id); }
  LRESULT pos(int id) const { return SendMessageA(slider(id), TBM_GETPOS, 0, 0); }

  // The system may tell the end of one drag twice, once for the released button and once for the lost mouse.
  static Statements without_repetition(Statements statements) {
    statements.erase(std::unique(statements.begin(), statements.end()), statements.end());
    return statements;
  }

  mrSampleCad host{"--dialog sliders"};
  const HWND dialog = host.wait_for_dialog("Sliders");
  mrRecording recording{host};
  mrUser& user = recording.user;
};

}  // namespace

TEST_F(TrackBarEndToEnd, DragIsThePositionInWhichItEnds) {
  // The thumb stands in the middle of the range.
  const POINT thumb = control_of(dialog, IDC_SLIDER_HORIZONTAL);
  user.drag(thumb, {thumb.x + 60, thumb.y});
  ASSERT_TRUE(recording.wait_for_statements(1));
  const LRESULT end = pos(IDC_SLIDER_HORIZONTAL);
  EXPECT_LT(50, end);
  EXPECT_EQ((Statements{"Pos = " + std::to_string(end) + ";"}), without_repetition(recording.finish()));
}

TEST_F(TrackBarEndToEnd, EachStepOfTheKeyboardIsAStatement) {
  user.click(control_of(dialog, IDC_SLIDER_VERTICAL));
  ASSERT_TRUE(recording.wait_for_statements(1));
  user.key(VK_DOWN);
  user.key(VK_DOWN);
  user.key(VK_NEXT);
  user.key(VK_UP);
  EXPECT_EQ((Statements{"Pos = 50;", "Pos = 51;", "Pos = 52;", "Pos = 72;", "Pos = 71;"}),
            without_repetition(recording.finish()));
}

TEST_F(TrackBarEndToEnd, ClickBesideTheThumbIsAPageFurther) {
  RECT client = {};
  GetClientRect(slider(IDC_SLIDER_HORIZONTAL), &client);
  user.click(client_place(slider(IDC_SLIDER_HORIZONTAL), client.right - 10, client.bottom / 2));
  EXPECT_TRUE(wait_until([this] { return pos(IDC_SLIDER_HORIZONTAL) == 70; }));
  EXPECT_EQ((Statements{"Pos = 70;"}), without_repetition(recording.finish()));
}

TEST_F(TrackBarEndToEnd, TwoSlidersInTurn) {
  user.click(control_of(dialog, IDC_SLIDER_HORIZONTAL));
  ASSERT_TRUE(recording.wait_for_statements(1));
  user.key(VK_RIGHT);
  user.click(control_of(dialog, IDC_SLIDER_VERTICAL));
  user.key(VK_DOWN);
  recording.finish();
  EXPECT_EQ((Statements{"  Main_SampleCad().SetFocus();", "  TrackBar_2141().Pos = 50;",
                        "  TrackBar_2141().Pos = 51;", "  TrackBar_2142().Pos = 50;",
                        "  TrackBar_2142().Pos = 51;"}),
            without_repetition(recording.script_lines()));
}

TEST_F(TrackBarEndToEnd, PositionSetByTheProgramIsNotRecorded) {
  user.click(control_of(dialog, IDC_BY_PROGRAM));
  EXPECT_TRUE(wait_until([this] { return pos(IDC_SLIDER_VERTICAL) == 30; }));
  EXPECT_EQ((Statements{"Click();"}), recording.finish());
}
