// End to end: SampleCad's CAD tree, a tree view with icons that check, show, colour and star an object.
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "tests/e2e/host_tree.h"
#include "tests/support/e2e.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace {

using Statements = std::vector<std::string>;

// The icons stand at the right edge of a row, in this order.
enum Icon { iconCheck, iconEye, iconColour, iconStar, icon_count };
constexpr int icon_width = 18;

class CADTreeEndToEnd : public testing::Test {
protected:
  // The first statement is a selection: a tree selects an item by itself when it gets the focus without one.
  void SetUp() override { tree.select(user, {1, 1}); }

  POINT icon_of(const mrHostTree::Places& places, Icon icon) const {
    const RECT row = tree.rect_of(places, false);
    RECT client = {};
    GetClientRect(tree, &client);
    const int x = client.right - (icon_count - icon) * icon_width + icon_width / 2;
    return client_place(tree, x, (row.top + row.bottom) / 2);
  }
  void click_icon(const mrHostTree::Places& places, Icon icon) {
    const size_t before = recording.statements().size();
    user.click(icon_of(places, icon));
    EXPECT_TRUE(recording.wait_for_statements(before + 1));
  }
  void choose_in_context_menu(POINT place) {
    const size_t before = recording.statements().size();
    user.click(place, mrMouseButton::right);
    ASSERT_NE(nullptr, host.wait_for_window("", "#32768"));
    user.key(VK_DOWN);
    user.key(VK_RETURN);
    ASSERT_TRUE(recording.wait_for_statements(before + 2));
  }

  mrSampleCad host;
  const mrHostTree tree{find_child(host.frame(), "SysTreeView32")};
  mrRecording recording{host};
  mrUser& user = recording.user;
  // An object in a group of the model.
  const mrHostTree::Places object{1, 1, 2};
};

}  // namespace

TEST_F(CADTreeEndToEnd, EachClickOnAnIconIsOneStatement) {
  ASSERT_EQ(nullptr, tree.next(TVGN_CHILD, tree.item(object)));
  click_icon(object, iconEye);
  click_icon(object, iconEye);
  click_icon(object, iconCheck);
  click_icon(object, iconCheck);
  click_icon(object, iconStar);
  click_icon(object, iconStar);
  EXPECT_THAT(
      recording.finish(),
      ElementsAre("SelectItem(\"1|1\");", "ItemByNumPath(\"1|1|2\").Visible = false;",
                  "ItemByNumPath(\"1|1|2\").Visible = true;", "ItemByNumPath(\"1|1|2\").Checked = true;",
                  "ItemByNumPath(\"1|1|2\").Checked = false;", "ItemByNumPath(\"1|1|2\").Starred = true;",
                  "ItemByNumPath(\"1|1|2\").Starred = false;"));
}

// Once round the colours that the icon gives, wherever it began; red comes with the number 255.
TEST_F(CADTreeEndToEnd, ColourIsItsNumber) {
  Statements expected = {"SelectItem(\"1|1\");"};
  for (const COLORREF colour : {RGB(150, 205, 255), RGB(255, 205, 110), RGB(150, 235, 160),
                                RGB(255, 150, 110), RGB(255, 120, 160), RGB(200, 170, 255), COLORREF{255}}) {
    click_icon(object, iconColour);
    expected.push_back("ItemByNumPath(\"1|1|2\").Color = " + std::to_string(colour) + ";");
  }
  EXPECT_THAT(recording.finish(), testing::UnorderedElementsAreArray(expected));
}

TEST_F(CADTreeEndToEnd, RunOfSelectionsIsOneStatement) {
  tree.select(user, {1, 1, 1});
  tree.select(user, object);
  user.key(VK_UP);
  EXPECT_TRUE(wait_until([this] { return tree.selected() == tree.item({1, 1, 1}); }));
  EXPECT_EQ((Statements{"SelectItem(\"1|1|1\");"}), recording.finish());
}

TEST_F(CADTreeEndToEnd, ChangeBetweenTwoSelectionsKeepsThemApart) {
  tree.select(user, object);
  click_icon(object, iconEye);
  tree.select(user, {1, 1, 1});
  EXPECT_EQ((Statements{"SelectItem(\"1|1|2\");", "ItemByNumPath(\"1|1|2\").Visible = false;",
                        "SelectItem(\"1|1|1\");"}),
            recording.finish());
}

TEST_F(CADTreeEndToEnd, LabelTypedAndFinishedIsOneStatement) {
  tree.select(user, object);
  host.finish_input();
  tree.edit_label();
  user.type("Cover");
  user.key(VK_RETURN);
  EXPECT_TRUE(wait_until([this] { return !tree.is_editing(); }));
  EXPECT_EQ((Statements{"SelectItem(\"1|1|2\");", "ItemByNumPath(\"1|1|2\").Text = \"Cover\""}),
            recording.finish());
}

TEST_F(CADTreeEndToEnd, ContextMenuIsTheCADTreesOwn) {
  tree.select(user, object);
  // The first menu of a host comes with a place in the pane that shows it, which is not in the row.
  choose_in_context_menu(tree.place_of(object));
  choose_in_context_menu(tree.place_of(object));
  recording.finish();
  EXPECT_THAT(recording.script_lines(),
              ElementsAre("  Main_SampleCad().SetFocus();", "  CADTree_1107().SelectItem(\"1|1|2\");",
                          "  CADTree_1107().ContextMenu(false);", testing::EndsWith(".Checked = true;"),
                          "  CADTree_1107().ContextMenu(true);", testing::EndsWith(".Checked = true;")));
}

TEST_F(CADTreeEndToEnd, ScriptReachesTheTreeAsACADTree) {
  click_icon(object, iconEye);
  recording.finish();
  EXPECT_EQ((Statements{"  Main_SampleCad().SetFocus();", "  CADTree_1107().SelectItem(\"1|1\");",
                        "  CADTree_1107().ItemByNumPath(\"1|1|2\").Visible = false;"}),
            recording.script_lines());
  EXPECT_NE(std::string::npos, recording.script().find("CADTree(1107);\r\n")) << recording.script();
}
