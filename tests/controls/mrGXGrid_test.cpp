// The grid recorder: claims, uploads and statements.
#include "controls/mrGXGrid.h"
#include "hooks/mrDispatcher.h"
#include "hooks/mrHostMessages.h"
#include "tests/support/debug_lines.h"
#include "tests/support/recording.h"
#include "tests/support/tape.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// A window that answers as the host's grid does.
class GridWindow : public mrTestWindow {
public:
  explicit GridWindow(HWND frame) : mrTestWindow("TestFrame", "", WS_CHILD | WS_VISIBLE, frame, 7) {
    set_answer([this](UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
      if (message != host_messages().request_grid_information)
        return false;
      ++questions;
      result = wparam == 0 ? answer : 0;
      if (wparam == mr_grid_request_text) {
        mrGXGridTextRequest& request = *reinterpret_cast<mrGXGridTextRequest*>(lparam);
        asked = request;
        if (!fills_text)
          return true;
        // As a grid does: cut to the buffer, the final zero included.
        snprintf(request.text, request.capacity, "%s", cell_text.c_str());
      }
      return true;
    });
  }

  LRESULT answer = mr_identity_answer;
  std::string cell_text = "42";
  bool fills_text = true;
  mrGXGridTextRequest asked = {};
  int questions = 0;
};

class GXGrid : public testing::Test {
protected:
  static mrGXGridFactory& factory() {
    return *static_cast<mrGXGridFactory*>(get_factory(factoryGxGrid, true));
  }

  mrGXGridRec rec(uint32_t row, uint32_t column, const char* text) {
    mrGXGridRec record = {};
    record.grid = grid;
    record.row = row;
    record.column = column;
    memcpy(record.text, text, std::min(strlen(text), sizeof record.text));
    return record;
  }
  void receive(uint32_t row, uint32_t column, const char* text) {
    recorder.receive(factoryGxGrid, rec(row, column, text));
  }

  mrTestFrame frame;
  GridWindow grid{frame};
  mrTestRecorder recorder;
  using Statements = std::vector<std::string>;
};

class GXGridRecognition : public GXGrid {
protected:
  mrUploadCatcher uploads;
  mrGXGridCell cell = {grid, 3, 4};
  LPARAM cell_address = reinterpret_cast<LPARAM>(&cell);
};

}  // namespace

// ---- recogniser -----------------------------------------------------------------------------------

TEST_F(GXGridRecognition, UploadsTheCellThatTheGridAnnounces) {
  play_tape(
      factory(), uploads,
      {{hookCallWndProc, frame, mr_grid_cell_changed, 0, cell_address, claimed, record(rec(3, 4, "42"))}});
  EXPECT_EQ(3u, grid.asked.row);
  EXPECT_EQ(4u, grid.asked.column);
  EXPECT_EQ(260u, grid.asked.capacity);
  EXPECT_EQ(280u, uploads.last().bytes.size());
}

TEST_F(GXGridRecognition, ClaimsEveryMessageOfAGridWithoutRecording) {
  play_tape(factory(), uploads,
            {{hookGetMessage, grid, WM_LBUTTONDOWN, MK_LBUTTON, at(1, 1), claimed, none},
             {hookGetMessage, grid, WM_MOUSEMOVE, 0, at(1, 1), claimed, none},
             {hookCallWndProc, grid, mr_grid_cell_changed, 0, cell_address, claimed, none}});
}

TEST_F(GXGridRecognition, ClaimsTheMessagesOfAGridsInPlaceEditor) {
  const mrTestWindow editor("Edit", "", WS_CHILD | WS_VISIBLE, grid, 1);
  play_tape(factory(), uploads,
            {{hookGetMessage, editor, WM_CHAR, 'a', 0, claimed, none},
             {hookCallWndProc, grid, WM_COMMAND, notify(1, EN_CHANGE), as_lparam(editor), claimed, none}});
}

TEST_F(GXGridRecognition, LeavesTheGrandchildrenOfAGrid) {
  const mrTestWindow child("TestFrame", "", WS_CHILD, grid, 1);
  const mrTestWindow grandchild("Edit", "", WS_CHILD, child, 1);
  play_tape(factory(), uploads, {{hookGetMessage, grandchild, WM_CHAR, 'a', 0, left, none}});
}

TEST_F(GXGridRecognition, LeavesACellOfAWindowThatIsNoGrid) {
  grid.answer = 164;
  play_tape(factory(), uploads,
            {{hookCallWndProc, frame, mr_grid_cell_changed, 0, cell_address, left, none}});
}

TEST_F(GXGridRecognition, LeavesTheMessageWithoutACellAndEveryOther) {
  play_tape(factory(), uploads,
            {{hookCallWndProc, frame, mr_grid_cell_changed, 0, 0, left, none},
             {hookCallWndProc, frame, mr_grid_cell_changed, 0, 7, left, none},
             {hookCallWndProc, frame, mr_grid_cell_changed, 0, 0xFFFF, left, none},  // the last no-address
             {hookCallWndProcRet, frame, mr_grid_cell_changed, 0, cell_address, left, none},
             {hookCallWndProc, frame, WM_COMMAND, 1, 0, left, none},
             {hookGetMessage, nullptr, WM_LBUTTONDOWN, 0, 0, left, none}});
  EXPECT_FALSE(factory().handle_message(hookCbt, HCBT_ACTIVATE, 0, 0));
}

TEST_F(GXGridRecognition, CutsALongCellTextToTheBuffer) {
  for (const size_t length : {259u, 260u, 300u}) {
    grid.cell_text = std::string(length, 'x');
    feed(factory(), hookCallWndProc, frame, mr_grid_cell_changed, 0, cell_address);
    EXPECT_EQ(std::string(259, 'x'), uploads.last_as<mrGXGridRec>().text) << length;
  }
}

TEST_F(GXGridRecognition, GridThatGivesNoTextHasAnEmptyCell) {
  feed(factory(), hookCallWndProc, frame, mr_grid_cell_changed, 0, cell_address);
  grid.fills_text = false;
  feed(factory(), hookCallWndProc, frame, mr_grid_cell_changed, 0, cell_address);
  ASSERT_EQ(2u, uploads.count());
  EXPECT_STREQ("", uploads.last_as<mrGXGridRec>().text);
}

TEST_F(GXGridRecognition, DebuggerOutputFollowsTheAnnouncements) {
  const mrDebugLines debugger;
  play_tape(factory(), uploads,
            {{hookCallWndProc, frame, mr_grid_cell_changed, 0, 0, left, none},
             {hookCallWndProc, frame, mr_grid_cell_changed - 1, 0, cell_address, left, none},
             {hookCallWndProc, grid, mr_grid_cell_changed, 0, cell_address, claimed, none}});
  EXPECT_THAT(debugger.lines(), IsEmpty());
  grid.answer = 0;
  play_tape(factory(), uploads,
            {{hookCallWndProc, frame, mr_grid_cell_changed, 0, cell_address, left, none}});
  EXPECT_THAT(debugger.lines(), ElementsAre("notify...\n"));
  grid.answer = mr_identity_answer;
  EXPECT_TRUE(feed(factory(), hookCallWndProc, frame, mr_grid_cell_changed, 0, cell_address));
  EXPECT_THAT(debugger.lines(), ElementsAre("notify...\n", "notify...\n", "Class checked...\n"));
}

TEST_F(GXGridRecognition, AsksAWindowOnceWhileTheMouseMovesOverIt) {
  for (int x = 0; x < 20; ++x)
    EXPECT_TRUE(feed(factory(), hookGetMessage, grid, WM_MOUSEMOVE, 0, at(x, 1)));
  EXPECT_EQ(1, grid.questions);
}

TEST_F(GXGridRecognition, AsksTheWindowItselfForEveryMessageThatCanBeRecorded) {
  feed(factory(), hookGetMessage, grid, WM_MOUSEMOVE, 0, at(1, 1));
  grid.answer = 0;
  EXPECT_FALSE(feed(factory(), hookGetMessage, grid, WM_LBUTTONDOWN, MK_LBUTTON, at(1, 1)));
}

// ---- builder --------------------------------------------------------------------------------------

TEST_F(GXGrid, EditingOneCellTwiceLeavesTheSecondText) {
  receive(1, 2, "a");
  receive(1, 2, "b");
  EXPECT_EQ((Statements{"SetText(1, 2, \"b\");"}), recorder.statements());
}

TEST_F(GXGrid, ReturningToACellIsAThirdStatement) {
  receive(1, 2, "a");
  receive(1, 3, "b");
  receive(1, 2, "c");
  EXPECT_EQ((Statements{"SetText(1, 2, \"a\");", "SetText(1, 3, \"b\");", "SetText(1, 2, \"c\");"}),
            recorder.statements());
}

TEST_F(GXGrid, TwoGridsAreKeptApart) {
  GridWindow other{frame};
  receive(1, 2, "a");
  mrGXGridRec in_other = rec(1, 2, "b");
  in_other.grid = other;
  recorder.receive(factoryGxGrid, in_other);
  EXPECT_EQ((Statements{"SetText(1, 2, \"a\");", "SetText(1, 2, \"b\");"}), recorder.statements());
}

TEST_F(GXGrid, QuotesTheText) {
  receive(0, 0, "5\" \\ \t\xE9");
  EXPECT_EQ((Statements{"SetText(0, 0, \"5\\\" \\\\ \\t\xE9\");"}), recorder.statements());
}

TEST_F(GXGrid, ReadsATextThatFillsTheWholeField) {
  receive(0, 0, std::string(300, 'y').c_str());
  EXPECT_EQ((Statements{"SetText(0, 0, \"" + std::string(260, 'y') + "\");"}), recorder.statements());
}

TEST_F(GXGrid, IsDeclaredAsAGridByItsId) {
  receive(1, 2, "a");
  const mrWindowInfo* info = recorder.last_action()->get_path()[0];
  EXPECT_STREQ("GXGridClass", info->class_name);
  CString declaration, search, identifier;
  EXPECT_EQ(declaredByControlId, recorder.get_declaration(info, declaration, search, identifier));
  EXPECT_EQ("GXGrid(7)", declaration);
  EXPECT_EQ("GXGrid(7, mpRECURSIVE_SEARCH)", search);
  EXPECT_EQ("GXGrid_7", identifier);
}

TEST_F(GXGrid, TellsItsCellByGridRowAndColumn) {
  const mrGXGrid action(grid, &factory(), 1, 2);
  EXPECT_TRUE(action.is(grid, 1, 2));
  EXPECT_FALSE(action.is(frame, 1, 2));
  EXPECT_FALSE(action.is(grid, 2, 2));
  EXPECT_FALSE(action.is(grid, 1, 1));
  EXPECT_THROW(mrGXGrid(nullptr, &factory(), 1, 2), CInvalidArgException);
}

TEST_F(GXGrid, HasNoContextMenu) {
  EXPECT_EQ(contextMenuNotClaimed, factory().context_menu_invoke(grid, "TestFrame", CPoint(1, 1)));
}
