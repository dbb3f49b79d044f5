// End to end: SampleCad's option tree, with check boxes and texts in nested groups.
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "tests/support/e2e.h"

#include <gtest/gtest.h>

namespace {

using Statements = std::vector<std::string>;

// Rows of the dialog's tree when all groups are open.
enum Row {
  rowDisplay,
  rowGrid,
  rowAxes,
  rowColours,
  rowBackground,
  rowSelection,
  rowFiles,
  rowBackups,
  rowFolder,
  rowUser,
};
constexpr int row_height = 20;

class OptionTreeEndToEnd : public testing::Test {
protected:
  POINT place_of(Row row) const { return client_place(tree, 60, row * row_height + row_height / 2); }
  HWND editor() const { return find_child(tree, "Edit"); }
  void open_editor(Row row) {
    user.click(place_of(row));
    EXPECT_TRUE(wait_until([this] { return editor() != nullptr; }));
  }
  void edit(Row row, const std::string& text) {
    open_editor(row);
    user.type(text);
    user.key(VK_RETURN);
    EXPECT_TRUE(wait_until([this] { return editor() == nullptr; }));
  }

  mrSampleCad host{"--dialog options"};
  const HWND dialog = host.wait_for_dialog("Options");
  const HWND tree = GetDlgItem(dialog, IDC_OPTION_TREE);
  mrRecording recording{host};
  mrUser& user = recording.user;
};

}  // namespace

TEST_F(OptionTreeEndToEnd, CheckBoxIsNamedByTheLabelsFromTheRoot) {
  user.click(place_of(rowBackups));
  EXPECT_EQ((Statements{"GetItemByPath(\"Files|Keep backups\").Checked = true;"}), recording.finish());
}

TEST_F(OptionTreeEndToEnd, CheckBoxTurnedAgainAndAgainEndsAsItsLastState) {
  user.click(place_of(rowBackups));
  user.click(place_of(rowBackups));
  EXPECT_EQ((Statements{"GetItemByPath(\"Files|Keep backups\").Checked = false;"}), recording.finish());
}

TEST_F(OptionTreeEndToEnd, TypingInTheEditorRecordsTheValueOnly) {
  edit(rowFolder, "C:\\parts \"new\"");
  EXPECT_EQ((Statements{"GetItemByPath(\"Files|Folder\").Text = \"C:\\\\parts \\\"new\\\"\";"}),
            recording.finish());
}

TEST_F(OptionTreeEndToEnd, TextEditedThreeTimesIsOneStatement) {
  for (const char* text : {"one", "two", "three"})
    edit(rowFolder, text);
  EXPECT_EQ((Statements{"GetItemByPath(\"Files|Folder\").Text = \"three\";"}), recording.finish());
}

TEST_F(OptionTreeEndToEnd, LongValueIsCutToWhatTheRecordHolds) {
  Statements expected;
  for (const size_t length : {259u, 260u, 300u}) {
    const Row row = expected.size() % 2 ? rowUser : rowFolder;  // in turn: two edits of one item are one
    open_editor(row);
    user.paste(std::string(length, 'x'));
    user.key(VK_RETURN);
    expected.push_back(std::string("GetItemByPath(\"") + (row == rowUser ? "User name" : "Files|Folder") +
                       "\").Text = \"" + std::string(259, 'x') + "\";");
    EXPECT_TRUE(recording.wait_for_statements(expected.size()));
  }
  EXPECT_EQ(expected, recording.finish());
}

TEST_F(OptionTreeEndToEnd, TwoItemsInTurnGiveTwoStatementsEach) {
  edit(rowFolder, "one");
  user.click(place_of(rowBackups));
  edit(rowFolder, "two");
  user.click(place_of(rowBackups));
  EXPECT_EQ((Statements{"GetItemByPath(\"Files|Folder\").Text = \"one\";",
                        "GetItemByPath(\"Files|Keep backups\").Checked = true;",
                        "GetItemByPath(\"Files|Folder\").Text = \"two\";",
                        "GetItemByPath(\"Files|Keep backups\").Checked = false;"}),
            recording.finish());
}

TEST_F(OptionTreeEndToEnd, RootItemAndQuotedLabel) {
  edit(rowUser, "Ada");
  edit(rowSelection, "Red");
  EXPECT_EQ((Statements{"GetItemByPath(\"User name\").Text = \"Ada\";",
                        "GetItemByPath(\"Display|Colours|Selection \\\"hot\\\"\").Text = \"Red\";"}),
            recording.finish());
}

TEST_F(OptionTreeEndToEnd, ClicksThatChangeNoValueRecordNothing) {
  open_editor(rowFolder);
  user.click(middle_of(editor()));
  user.key(VK_ESCAPE);
  EXPECT_TRUE(wait_until([this] { return editor() == nullptr; }));
  user.click(place_of(rowFiles));  // closes the group
  EXPECT_EQ(Statements(), recording.finish());
}

TEST_F(OptionTreeEndToEnd, ValueIsRecordedBeforeTheButtonThatEndsTheEditing) {
  open_editor(rowFolder);
  user.type("x");
  user.click(control_of(dialog, IDOK));
  EXPECT_TRUE(wait_until([this] { return !IsWindow(dialog); }));
  EXPECT_EQ((Statements{"GetItemByPath(\"Files|Folder\").Text = \"x\";", "Click();"}), recording.finish());
}

TEST_F(OptionTreeEndToEnd, ScriptReachesTheTreeThroughTheActiveDialog) {
  user.click(place_of(rowBackups));
  recording.finish();
  EXPECT_EQ((Statements{"  Main_SampleCad().SetFocus();",
                        "  OptionTree_1271().GetItemByPath(\"Files|Keep backups\").Checked = true;"}),
            recording.script_lines());
}
