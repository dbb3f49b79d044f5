// An action that cannot be made for want of memory: a null entry keeps its place in the list, and nothing is
// thrown at the recorder window.
#include "controls/mrCADView.h"
#include "controls/mrGXGrid.h"
#include "controls/mrOptionTree.h"
#include "controls/mrToolBar.h"
#include "controls/mrTreeView.h"
#include "controls/mrWindow.h"
#include "hooks/mrHostMessages.h"
#include "tests/support/no_memory.h"
#include "tests/support/recording.h"
#include "tests/support/test_window.h"

#include <gtest/gtest.h>

namespace {

class OutOfMemory : public testing::Test {
protected:
  // Hands a record to its builder while no object of this size can be made, and expects a null entry behind
  // so many actions.
  template <class RECORD>
  void expect_null_entry(size_t refused_size, int type, const RECORD& record, int actions_before = 0) {
    {
      const mrNoMemoryFor size(refused_size);
      EXPECT_NO_THROW(recorder.receive(type, record)) << type;
    }
    ASSERT_EQ(actions_before + 1, recorder.get_actions().GetCount()) << type;
    EXPECT_EQ(nullptr, recorder.get_actions().GetTail()) << type;
    recorder.clear_actions();
  }
  // The object itself, and a level of its path.
  template <class ACTION, class RECORD>
  void expect_null_entries(int type, const RECORD& record) {
    expect_null_entry(sizeof(ACTION), type, record);
    expect_null_entry(sizeof(mrWindowInfo), type, record);
  }

  mrTestFrame frame;
  mrTestRecorder recorder;
};

}  // namespace

TEST_F(OutOfMemory, LeavesANullEntryForAGestureOfTheMouse) {
  expect_null_entries<mrBaseWindow>(factoryWindow,
                                    mrWindowRec{windowMouse, 0, frame, WM_LBUTTONDOWN, 0, 1, 0});
  expect_null_entries<mrBaseWindow>(factoryWindow,
                                    mrWindowRec{windowMouse, 0, frame, WM_LBUTTONDBLCLK, 0, 1, 0});
}

TEST_F(OutOfMemory, LeavesANullEntryForACommandAndAClose) {
  expect_null_entries<mrBaseWindow>(factoryWindow, mrWindowRec{windowCommand, 0, frame, 7, 0, 0, 0});
  expect_null_entries<mrBaseWindow>(factoryWindow, mrWindowRec{windowClose, 0, frame, 0, 0, 0, 0});
}

TEST_F(OutOfMemory, LeavesANullEntryForACell) {
  expect_null_entries<mrGXGrid>(factoryGxGrid, mrGXGridRec{frame, 1, 2, "text", 0});
}

TEST_F(OutOfMemory, LeavesANullEntryForAnOption) {
  mrOptionTreeRec record = {};
  record.tree = frame;
  expect_null_entries<mrOptionTree>(factoryOptionTree, record);
}

TEST_F(OutOfMemory, LeavesANullEntryForATreeItem) {
  mrTreeViewRec record = {};
  record.tree = frame;
  expect_null_entries<mrTreeView>(factoryTreeView, record);
}

TEST_F(OutOfMemory, LeavesANullEntryForAToolbarButton) {
  struct {
    mrToolbarHeader header;
    mrToolbarRec level;
  } record = {};
  record.header.state = mrTrackToolbarClick;
  record.header.count = 1;
  record.level.hwnd = frame;
  record.level.item_id = 7;
  expect_null_entries<mrToolBar>(factoryToolBar, record);
}

// The camera is told by an entry of its own before the press, once.
TEST_F(OutOfMemory, LeavesNullEntriesForTheCameraAndThePressOfAView) {
  mrCADViewRec record = {};
  record.window = frame;
  record.message = WM_LBUTTONDOWN;
  expect_null_entry(sizeof(mrWindowInfo), factoryCadView, record, 1);
  expect_null_entries<mrCADView>(factoryCadView, record);
}
