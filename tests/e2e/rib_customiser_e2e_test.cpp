// End to end: SampleCad's ribbon customisation widget.
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "tests/support/e2e.h"

#include <gtest/gtest.h>

namespace {

using Statements = std::vector<std::string>;

constexpr int row_height = 19;

class RibCustomiserEndToEnd : public testing::Test {
protected:
  POINT place_of(int row) const { return client_place(grid, 40, row * row_height + row_height / 2); }

  mrSampleCad host{"--dialog ribbon"};
  const HWND dialog = host.wait_for_dialog("Customise ribbon");
  const HWND widget = GetDlgItem(dialog, IDC_RIBBON_COMMANDS);
  const HWND grid = GetDlgItem(widget, IDC_RIBBON_GRID);
  mrRecording recording{host};
  mrUser& user = recording.user;
};

}  // namespace

TEST_F(RibCustomiserEndToEnd, RunOfSelectionsIsOneStatement) {
  user.click(place_of(4));
  user.click(place_of(1));
  user.key(VK_DOWN);
  user.key(VK_DOWN);
  EXPECT_EQ((Statements{"Selected = \"Insert \\\"Gearbox\\\"\";"}), recording.finish());
}

TEST_F(RibCustomiserEndToEnd, ClickOnTheSelectedEntryRecordsNothing) {
  user.click(place_of(0));
  user.click(place_of(0), mrMouseButton::right);
  EXPECT_EQ(Statements(), recording.finish());
}

TEST_F(RibCustomiserEndToEnd, ButtonBetweenTwoSelectionsKeepsThemApart) {
  user.click(place_of(1));
  user.click(control_of(dialog, IDC_RIBBON_ADD));
  user.click(place_of(2));
  user.click(control_of(dialog, IDC_RIBBON_ADD));
  EXPECT_EQ((Statements{"Selected = \"Open model\";", "Click();", "Selected = \"Save model\";", "Click();"}),
            recording.finish());
}

TEST_F(RibCustomiserEndToEnd, ScriptDeclaresTheWidgetByItsTextAndId) {
  user.click(place_of(1));
  recording.finish();
  EXPECT_EQ((Statements{"  Main_SampleCad().SetFocus();", "  Commands().Selected = \"Open model\";"}),
            recording.script_lines());
  EXPECT_NE(std::string::npos, recording.script().find("RibCustomisationWidget(\"Commands\", 1272);\r\n"))
      << recording.script();
}
