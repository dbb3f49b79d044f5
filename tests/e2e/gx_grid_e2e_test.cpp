// End to end: cells of SampleCad's grids, edited in place.
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "tests/e2e/gallery.h"

#include <algorithm>

namespace {

constexpr int row_height = 19;  // pixels, of SampleCad's grid; row 0 holds the titles

class GXGridEndToEnd : public GalleryEndToEnd {
protected:
  GXGridEndToEnd() : GalleryEndToEnd("table", "Object table") {}

  // A place in a cell: x decides the column.
  POINT cell(int row, int x) const { return client_place(grid, x, row * row_height + row_height / 2); }

  const HWND grid = find_child(host.dialog, "SampleCadGrid");
};

}  // namespace

TEST_F(GXGridEndToEnd, EditedCellIsOneStatementAndItsClicksAndKeysAreNone) {
  user.double_click(cell(2, 30));
  user.type("Base plate");
  user.key(VK_RETURN);
  EXPECT_EQ((Statements{"SetText(2, 1, \"Base plate\");"}), recording.finish());
}

TEST_F(GXGridEndToEnd, OneCellEditedTwiceLeavesItsLastText) {
  user.click(cell(1, 30));
  user.type("a");
  user.key(VK_RETURN);
  user.type("\"b\\");
  user.key(VK_RETURN);
  EXPECT_EQ((Statements{"SetText(1, 1, \"\\\"b\\\\\");"}), recording.finish());
}

TEST_F(GXGridEndToEnd, CellsEditedInTurnAreAStatementEach) {
  for (const char* text : {"a", "c"}) {
    user.click(cell(1, 30));
    user.type(text);
    user.key(VK_RETURN);
    user.click(cell(2, 30));
    user.type("b");
    user.key(VK_RETURN);
    // Unchanged text is no edit: the second round gives another one.
    user.type(text);
    user.key(VK_RETURN);
  }
  EXPECT_EQ((Statements{"SetText(1, 1, \"a\");", "SetText(2, 1, \"a\");", "SetText(1, 1, \"c\");",
                        "SetText(2, 1, \"c\");"}),
            recording.finish());
}

TEST_F(GXGridEndToEnd, CancelledEditingAndMovingAboutRecordNothing) {
  user.click(cell(1, 30));
  user.type("a");
  user.key(VK_ESCAPE);
  user.key(VK_DOWN);
  user.click(cell(3, 100));
  user.wheel(-1);
  EXPECT_EQ(Statements{}, recording.finish());
}

TEST_F(GXGridEndToEnd, TypedTextIsCutToWhatTheGridsBufferHolds) {
  user.click(cell(2, 30));
  user.type(std::string(260, 'x'));
  host.finish_input();
  user.key(VK_RETURN);
  EXPECT_EQ((Statements{"SetText(2, 1, \"" + std::string(259, 'x') + "\");"}), recording.finish());
}

TEST_F(GXGridEndToEnd, PastedTextIsCutToWhatTheGridsBufferHolds) {
  Statements expected;
  int row = 0;
  for (const size_t length : {258u, 259u, 260u, 300u}) {
    user.double_click(cell(++row, 30));
    user.paste(std::string(length, 'x'));
    user.key(VK_RETURN);
    expected.push_back("SetText(" + std::to_string(row) + ", 1, \"" +
                       std::string(std::min<size_t>(length, 259), 'x') + "\");");
    expect_statements(expected.size());
  }
  EXPECT_EQ(expected, recording.finish());
}

TEST_F(GXGridEndToEnd, ScriptReachesTheGridInItsDialog) {
  user.click(cell(1, 30));
  user.type("a");
  user.key(VK_RETURN);
  recording.finish();
  const Statements lines = recording.script_lines();
  ASSERT_EQ(2u, lines.size());
  EXPECT_EQ("  GXGrid_" + std::to_string(IDC_OBJECT_TABLE) + "().SetText(1, 1, \"a\");", lines[1]);
  EXPECT_NE(std::string::npos,
            recording.script().find("GXGrid(" + std::to_string(IDC_OBJECT_TABLE) + ");\r\n"));
}
