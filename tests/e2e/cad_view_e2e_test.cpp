// End to end: mouse gestures and the camera in SampleCad's view.
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "hooks/mrHostMessages.h"
#include "tests/support/e2e.h"

#include <gtest/gtest.h>

namespace {

using Statements = std::vector<std::string>;

class CADViewEndToEnd : public testing::Test {
protected:
  // The statement for the camera as the view has it now.
  std::string camera() const {
    const LRESULT atom = SendMessageA(view, host_messages().get_view_position, 0, 0);
    char text[260] = "";
    GlobalGetAtomNameA(static_cast<ATOM>(atom), text, sizeof text);
    GlobalDeleteAtom(static_cast<ATOM>(atom));
    return "SetCameraPosition(\"" + std::string(text) + "\", " + size() + ");";
  }
  // Client size plus one, as statements have it.
  std::string size() const {
    RECT client = {};
    GetClientRect(view, &client);
    return std::to_string(client.right + 1) + ", " + std::to_string(client.bottom + 1);
  }
  std::string statement(const std::string& operation, int button, int x, int y, int keys = 0) const {
    return operation + "(" + std::to_string(button) + ", " + std::to_string(x) + ", " + std::to_string(y) +
           ", " + size() + ", " + std::to_string(keys) + ");";
  }

  mrSampleCad host;
  mrRecording recording{host};
  mrUser& user = recording.user;
  const HWND view = find_child(host.frame(), "SampleCadView");
};

}  // namespace

TEST_F(CADViewEndToEnd, ClickComesAfterTheCameraAndAddsNoneWhileTheViewStands) {
  user.click(client_place(view, 40, 50));
  user.click(client_place(view, 80, 50), mrMouseButton::left, {VK_CONTROL});
  EXPECT_EQ((Statements{camera(), statement("Click", 1, 40, 50), statement("Click", 1, 80, 50, MK_CONTROL)}),
            recording.finish());
}

TEST_F(CADViewEndToEnd, DragThatTurnsTheViewLeavesOnlyTheNewCamera) {
  const std::string before = camera();
  user.drag(client_place(view, 40, 50), client_place(view, 140, 90));
  const Statements recorded = recording.finish();
  EXPECT_NE(before, camera());
  EXPECT_EQ((Statements{camera()}), recorded);
}

TEST_F(CADViewEndToEnd, DragThatSelectsIsAPressAndARelease) {
  user.click(client_place(view, 10, 10));
  user.key(VK_F5);  // the mouse selects from now on
  user.drag(client_place(view, 40, 50), client_place(view, 140, 90));
  EXPECT_EQ((Statements{camera(), statement("Click", 1, 10, 10),
                        "Command(" + std::to_string(IDM_MOUSE_SELECT) + ");",
                        statement("MouseDown", 1, 40, 50), statement("MouseUp", 1, 140, 90)}),
            recording.finish());
}

TEST_F(CADViewEndToEnd, DoubleClickIsOneStatement) {
  user.double_click(client_place(view, 40, 50));
  EXPECT_EQ((Statements{camera(), statement("DoubleClick", 1, 40, 50)}), recording.finish());
}

TEST_F(CADViewEndToEnd, WheelIsToldByTheCameraBeforeTheNextClick) {
  user.click(client_place(view, 40, 50));
  ASSERT_TRUE(recording.wait_for_statements(2));
  const std::string before = camera();
  user.wheel(-1);
  ASSERT_TRUE(wait_until([&] { return camera() != before; }));
  user.click(client_place(view, 90, 50));
  EXPECT_EQ((Statements{before, statement("Click", 1, 40, 50), camera(), statement("Click", 1, 90, 50)}),
            recording.finish());
}

TEST_F(CADViewEndToEnd, ScriptReachesTheViewThroughTheActiveDocument) {
  user.click(client_place(view, 40, 50));
  recording.finish();
  const std::string script = recording.script();
  EXPECT_EQ((Statements{"  Main_SampleCad().SetFocus();", "  CADView()." + camera(),
                        "  CADView()." + statement("Click", 1, 40, 50)}),
            recording.script_lines());
  EXPECT_NE(std::string::npos, script.find("    CADView();\r\n")) << script;
}
