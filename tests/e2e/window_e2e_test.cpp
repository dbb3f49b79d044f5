// End to end: what the generic recorder makes of real input in SampleCad, with every recorder in the
// dispatch.
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "tests/support/e2e.h"
#include "tests/support/golden.h"

#include <gtest/gtest.h>

namespace {

using Statements = std::vector<std::string>;

class WindowEndToEnd : public testing::Test {
protected:
  // A part of the frame that no control covers.
  HWND status_bar() const { return find_child(host.frame(), "msctls_statusbar32"); }

  mrSampleCad host;
  mrRecording recording{host};
  mrUser& user = recording.user;
};

}  // namespace

TEST_F(WindowEndToEnd, ClicksWithAndWithoutCtrl) {
  const HWND bar = status_bar();
  user.click(client_place(bar, 20, 5));
  user.click(client_place(bar, 60, 6), mrMouseButton::left, {VK_CONTROL});
  user.click(client_place(bar, 90, 7), mrMouseButton::middle);
  EXPECT_EQ((Statements{"Click(1, 20, 5, 0);", "Click(1, 60, 6, 8);", "Click(3, 90, 7, 0);"}),
            recording.finish());
}

TEST_F(WindowEndToEnd, DoubleClickIsOneStatement) {
  user.double_click(client_place(status_bar(), 30, 5));
  EXPECT_EQ((Statements{"DoubleClick(1, 30, 5, 0);"}), recording.finish());
}

TEST_F(WindowEndToEnd, DragIsAPressAndARelease) {
  const HWND bar = status_bar();
  user.drag(client_place(bar, 30, 5), client_place(bar, 120, 8));
  EXPECT_EQ((Statements{"MouseDown(1, 30, 5, 0);", "MouseUp(1, 120, 8, 0);"}), recording.finish());
}

TEST_F(WindowEndToEnd, WheelAndMovesRecordNothing) {
  user.move_to(client_place(status_bar(), 30, 5));
  user.wheel(1);
  user.wheel(-2);
  user.move_to(client_place(status_bar(), 60, 5));
  user.click(client_place(status_bar(), 90, 5));
  EXPECT_EQ((Statements{"Click(1, 90, 5, 0);"}), recording.finish());
}

TEST_F(WindowEndToEnd, AcceleratorIsOneCommand) {
  user.click(client_place(status_bar(), 30, 5));
  user.key('G', {VK_CONTROL});
  EXPECT_EQ((Statements{"Click(1, 30, 5, 0);", "Command(40202);"}), recording.finish());
}

TEST_F(WindowEndToEnd, AltF4IsAClose) {
  // SampleCad goes with it, so there is nobody left to press Ctrl+Break for.
  user.click(client_place(status_bar(), 30, 5));
  user.key(VK_F4, {VK_MENU});
  EXPECT_TRUE(recording.wait_for_statements(2));
  EXPECT_TRUE(wait_until([this] { return !host.is_running(); }));
  EXPECT_EQ((Statements{"Click(1, 30, 5, 0);", "Close();"}), recording.statements());
}

// Work in the frame and in a dialog whose pages have nothing of their own: one is found by the text of a
// label that can be seen, the other by one that is hidden. The whole job, from the first byte to the last.
TEST_F(WindowEndToEnd, GoldenJobOfMixedWork) {
  stop_clock_of(host);
  const HWND bar = status_bar();
  user.click(client_place(bar, 20, 5));
  user.double_click(client_place(bar, 60, 5));
  user.drag(client_place(bar, 30, 5), client_place(bar, 120, 8));
  user.wheel(1);
  user.key('G', {VK_CONTROL});
  user.key(VK_RETURN, {VK_MENU});
  const HWND dialog = host.wait_for_dialog("Document properties");
  ASSERT_NE(nullptr, dialog);
  user.click(middle_of(find_child(dialog, "Button", "&Inches")));
  user.click(middle_of(find_child(dialog, "Button", "&Clear notes")));
  user.click(control_of(dialog, IDOK));
  EXPECT_TRUE(wait_until([dialog] { return !IsWindow(dialog); }));
  user.key(VK_F4, {VK_MENU});
  EXPECT_TRUE(wait_until([this] { return !host.is_running(); }));
  recording.recorder().stop_recording();
  expect_golden("mixed_work.wsf", recording.script());
}

TEST_F(WindowEndToEnd, ScriptFocusesTheFrameOnceAndDeclaresEachWindow) {
  user.click(client_place(status_bar(), 20, 5));
  user.click(client_place(status_bar(), 60, 6));
  recording.finish();
  EXPECT_EQ((Statements{"  Main_SampleCad().SetFocus();", "  msctls_statusbar_3001().Click(1, 20, 5, 0);",
                        "  msctls_statusbar_3001().Click(1, 60, 6, 0);"}),
            recording.script_lines());
  EXPECT_NE(std::string::npos,
            recording.script().find("function Main_SampleCad()\r\n"
                                    "{\r\n"
                                    "  return macro_player.\r\n"
                                    "    MainWindow(\"SampleCad\", \"\", \"SampleCadFrame\");\r\n"
                                    "}\r\n"
                                    "\r\n"
                                    "function msctls_statusbar_3001()\r\n"
                                    "{\r\n"
                                    "  return Main_SampleCad().\r\n"
                                    "    ChildWindow(\"\", \"msctls_statusbar\", 3001);\r\n"
                                    "}\r\n"));
}
