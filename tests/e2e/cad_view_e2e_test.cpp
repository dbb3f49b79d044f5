// End to end: mouse gestures and the camera in SampleCad's view.
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "hooks/mrHostMessages.h"
#include "tests/support/e2e.h"

#include <gtest/gtest.h>

namespace {

using Statements = std::vector<std::string>;

class CADViewEndToEnd : public testing::Test {
protected:
  // The statement for the camera as a view has it now.
  static std::string camera_of(HWND view) {
    const LRESULT atom = SendMessageA(view, host_messages().get_view_position, 0, 0);
    char text[260] = "";
    GlobalGetAtomNameA(static_cast<ATOM>(atom), text, sizeof text);
    GlobalDeleteAtom(static_cast<ATOM>(atom));
    return "SetCameraPosition(\"" + std::string(text) + "\", " + size_of(view) + ");";
  }
  std::string camera() const { return camera_of(view); }
  // Client size plus one, as statements have it.
  static std::string size_of(HWND view) {
    RECT client = {};
    GetClientRect(view, &client);
    return std::to_string(client.right + 1) + ", " + std::to_string(client.bottom + 1);
  }
  static std::string statement_of(HWND view, const std::string& operation, int button, int x, int y,
                                  int keys = 0) {
    return operation + "(" + std::to_string(button) + ", " + std::to_string(x) + ", " + std::to_string(y) +
           ", " + size_of(view) + ", " + std::to_string(keys) + ");";
  }
  std::string statement(const std::string& operation, int button, int x, int y, int keys = 0) const {
    return statement_of(view, operation, button, x, y, keys);
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

TEST_F(CADViewEndToEnd, ResizedViewIsToldByTheCameraBeforeTheNextClick) {
  user.click(client_place(view, 40, 50));
  ASSERT_TRUE(recording.wait_for_statements(2));
  const std::string before = camera();
  const std::string click = statement("Click", 1, 40, 50);
  host.finish_input();
  SetWindowPos(GetParent(view), nullptr, 0, 0, 300, 250, SWP_NOZORDER | SWP_NOACTIVATE);
  ASSERT_TRUE(wait_until([&] { return camera() != before; }));
  user.click(client_place(view, 90, 50));
  user.click(client_place(view, 40, 50));
  EXPECT_EQ(
      (Statements{before, click, camera(), statement("Click", 1, 90, 50), statement("Click", 1, 40, 50)}),
      recording.finish());
}

// Two documents side by side: each view has its camera, however often the user goes from one to the other.
TEST_F(CADViewEndToEnd, TwoViewsTellTheirCamerasApart) {
  for (const int id : {IDM_FILE_NEW, IDM_WINDOW_TILE_VERTICAL})
    PostMessageA(host.frame(), WM_COMMAND, static_cast<WPARAM>(id), 0);
  ASSERT_TRUE(recording.wait_for_statements(2));
  host.finish_input();
  // The new document is in front of the first one.
  const HWND other = find_child(host.frame(), "SampleCadView");
  ASSERT_NE(view, other);

  user.click(client_place(view, 40, 50));
  user.click(client_place(other, 40, 50));
  user.click(client_place(view, 80, 50));
  ASSERT_TRUE(recording.wait_for_statements(7));
  const std::string before = camera_of(other);
  user.drag(client_place(other, 40, 50), client_place(other, 90, 70));
  user.click(client_place(view, 90, 60));
  EXPECT_EQ((Statements{"Command(" + std::to_string(IDM_FILE_NEW) + ");",
                        "Command(" + std::to_string(IDM_WINDOW_TILE_VERTICAL) + ");", camera(),
                        statement("Click", 1, 40, 50), before, statement_of(other, "Click", 1, 40, 50),
                        statement("Click", 1, 80, 50), camera_of(other), statement("Click", 1, 90, 60)}),
            recording.finish());
  EXPECT_NE(before, camera_of(other));
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
