// End to end: selections, labels and the context menu of SampleCad's tree views.
#include "apps/SampleCad/gallery.dev/gallery.h"
#include "tests/e2e/host_tree.h"
#include "tests/support/e2e.h"

#include <gtest/gtest.h>

namespace {

using Statements = std::vector<std::string>;

class TreeViewEndToEnd : public testing::Test {
protected:
  TreeViewEndToEnd() { stop_clock_of(host); }

  void select(const mrHostTree::Places& places) { tree.select(user, places); }
  void choose_in_context_menu(POINT place) {
    const size_t before = recording.statements().size();
    user.click(place, mrMouseButton::right);
    ASSERT_NE(nullptr, host.wait_for_window("", "#32768"));
    user.key(VK_DOWN);
    user.key(VK_RETURN);
    ASSERT_TRUE(recording.wait_for_statements(before + 2));
  }

  mrSampleCad host{"--dialog trees"};
  const HWND dialog = host.wait_for_dialog("Trees");
  const mrHostTree tree{GetDlgItem(dialog, IDC_TREE)};
  mrRecording recording{host};
  mrUser& user = recording.user;
};

}  // namespace

TEST_F(TreeViewEndToEnd, RunOfSelectionsIsOneStatement) {
  select({1, 1});
  select({1, 2});
  select({2});
  user.key(VK_DOWN);
  EXPECT_TRUE(wait_until([this] { return tree.selected() == tree.item({3}); }));
  EXPECT_EQ((Statements{"SelectItem(\"3\");"}), recording.finish());
}

TEST_F(TreeViewEndToEnd, ItemIsNamedByItsPlaces) {
  SendMessageA(tree, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(tree.item({1, 2})));
  select({1, 2, 2});
  EXPECT_EQ((Statements{"SelectItem(\"1|2|2\");"}), recording.finish());
}

TEST_F(TreeViewEndToEnd, LabelTypedAndFinishedIsOneStatement) {
  select({1, 2});
  host.finish_input();
  tree.edit_label();
  user.type("Drive \"new\"");
  user.key(VK_RETURN);
  EXPECT_TRUE(wait_until([this] { return !tree.is_editing(); }));
  EXPECT_EQ((Statements{"SelectItem(\"1|2\");", "ItemByNumPath(\"1|2\").Text = \"Drive \"new\"\""}),
            recording.finish());
}

TEST_F(TreeViewEndToEnd, SecondLabelTakesTheFirstOnesPlace) {
  select({1, 1});
  for (const char* label : {"First", "Second"}) {
    host.finish_input();
    tree.edit_label();
    user.type(label);
    user.key(VK_RETURN);
    EXPECT_TRUE(wait_until([this] { return !tree.is_editing(); }));
  }
  EXPECT_EQ((Statements{"SelectItem(\"1|1\");", "ItemByNumPath(\"1|1\").Text = \"Second\""}),
            recording.finish());
}

TEST_F(TreeViewEndToEnd, LabelGivenUpIsNotRecorded) {
  select({1, 1});
  host.finish_input();
  tree.edit_label();
  user.type("No");
  user.key(VK_ESCAPE);
  EXPECT_TRUE(wait_until([this] { return !tree.is_editing(); }));
  EXPECT_EQ((Statements{"SelectItem(\"1|1\");"}), recording.finish());
}

TEST_F(TreeViewEndToEnd, ButtonBetweenTwoSelectionsKeepsThemApart) {
  select({1, 1});
  user.click(control_of(dialog, IDC_TREE_EXPAND));
  // The click is recorded before the button's parent expands the tree.
  EXPECT_TRUE(wait_until([this] {
    return tree.next(TVGN_NEXTVISIBLE, tree.item({2})) == tree.item({2, 1});
  }));
  select({1, 2});
  EXPECT_EQ((Statements{"SelectItem(\"1|1\");", "Click();", "SelectItem(\"1|2\");"}), recording.finish());
}

TEST_F(TreeViewEndToEnd, SelectionByTheProgramInADisabledTreeIsNotRecorded) {
  user.click(control_of(dialog, IDC_BY_PROGRAM));
  const mrHostTree disabled(GetDlgItem(dialog, IDC_TREE_DISABLED));
  EXPECT_TRUE(wait_until([&] { return disabled.selected() != nullptr; }));
  EXPECT_EQ((Statements{"Click();"}), recording.finish());
}

TEST_F(TreeViewEndToEnd, ExpandingRecordsNothing) {
  select({1, 2});
  user.key(VK_RIGHT);
  user.key(VK_LEFT);
  user.double_click(tree.place_of({1, 2}));
  EXPECT_EQ((Statements{"SelectItem(\"1|2\");"}), recording.finish());
}

TEST_F(TreeViewEndToEnd, ContextMenuTellsWhetherItIsOnTheSelectedRow) {
  select({1, 2});
  // The first menu of a host comes with a place in the dialog that shows it, which is not in the row.
  choose_in_context_menu(tree.place_of({1, 2}));
  choose_in_context_menu(tree.place_of({1, 2}));
  choose_in_context_menu(client_place(tree, 100, 180));
  EXPECT_EQ((Statements{"SelectItem(\"1|2\");", "ContextMenu(false);", "Checked = true;",
                        "ContextMenu(true);", "Checked = true;", "ContextMenu(false);", "Checked = true;"}),
            recording.finish());
}

TEST_F(TreeViewEndToEnd, ScriptReachesTheTreeThroughTheActiveDialog) {
  select({1, 2});
  recording.finish();
  EXPECT_EQ((Statements{"  Main_SampleCad().SetFocus();", "  TreeCtrl_2101().SelectItem(\"1|2\");"}),
            recording.script_lines());
  EXPECT_NE(std::string::npos, recording.script().find("    ActiveDialog().\r\n"
                                                       "      TreeCtrl(2101);\r\n"))
      << recording.script();
}
