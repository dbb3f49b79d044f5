// End to end: SampleCad's sliders.
#include "apps/SampleCad/gallery.dev/gallery.h"
#include "tests/support/e2e.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace {

using Statements = std::vector<std::string>;

class TrackBarEndToEnd : public testing::Test {
protected:
  TrackBarEndToEnd() { stop_clock_of(host); }

  HWND slider(int id) const { return GetDlgItem(dialog, id); }
  LRESULT pos(int id) const { return SendMessageA(slider(id), TBM_GETPOS, 0, 0); }

  // What the end of a movement with the mouse leaves. Wine's track bar tells its parent of it twice, once for
  // the released button and once for the lost mouse.
  static Statements by_mouse(const std::string& statement) {
    static const bool is_wine = GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version");
    return Statements(is_wine ? 2 : 1, statement);
  }
  static Statements joined(std::initializer_list<Statements> parts) {
    Statements all;
    for (const Statements& part : parts)
      all.insert(all.end(), part.begin(), part.end());
    return all;
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
  EXPECT_EQ(by_mouse("Pos = " + std::to_string(end) + ";"), recording.finish());
}

TEST_F(TrackBarEndToEnd, EachStepOfTheKeyboardIsAStatement) {
  user.click(control_of(dialog, IDC_SLIDER_VERTICAL));
  ASSERT_TRUE(recording.wait_for_statements(1));
  user.key(VK_DOWN);
  user.key(VK_DOWN);
  user.key(VK_NEXT);
  user.key(VK_UP);
  EXPECT_EQ(joined({by_mouse("Pos = 50;"), {"Pos = 51;", "Pos = 52;", "Pos = 72;", "Pos = 71;"}}),
            recording.finish());
}

TEST_F(TrackBarEndToEnd, ClickBesideTheThumbIsAPageFurther) {
  RECT client = {};
  GetClientRect(slider(IDC_SLIDER_HORIZONTAL), &client);
  user.click(client_place(slider(IDC_SLIDER_HORIZONTAL), client.right - 10, client.bottom / 2));
  EXPECT_TRUE(wait_until([this] { return pos(IDC_SLIDER_HORIZONTAL) == 70; }));
  EXPECT_EQ(by_mouse("Pos = 70;"), recording.finish());
}

TEST_F(TrackBarEndToEnd, TwoSlidersInTurn) {
  user.click(control_of(dialog, IDC_SLIDER_HORIZONTAL));
  ASSERT_TRUE(recording.wait_for_statements(1));
  user.key(VK_RIGHT);
  user.click(control_of(dialog, IDC_SLIDER_VERTICAL));
  user.key(VK_DOWN);
  recording.finish();
  EXPECT_EQ(joined({{"  Main_SampleCad().SetFocus();"},
                    by_mouse("  TrackBar_2141().Pos = 50;"),
                    {"  TrackBar_2141().Pos = 51;"},
                    by_mouse("  TrackBar_2142().Pos = 50;"),
                    {"  TrackBar_2142().Pos = 51;"}}),
            recording.script_lines());
}

TEST_F(TrackBarEndToEnd, PositionSetByTheProgramIsNotRecorded) {
  user.click(control_of(dialog, IDC_BY_PROGRAM));
  EXPECT_TRUE(wait_until([this] { return pos(IDC_SLIDER_VERTICAL) == 30; }));
  EXPECT_EQ((Statements{"Click();"}), recording.finish());
}
