// End to end: list views, with every recorder in the dispatch.
#include "tests/e2e/gallery.h"

#include <windows.h>
#include <commctrl.h>

class ListViewEndToEnd : public GalleryEndToEnd {
protected:
  ListViewEndToEnd() : GalleryEndToEnd("lists", "Lists") { stop_clock_of(host); }

  // Rectangles of items do not travel between processes; rows stand below the header, equally high.
  POINT row(int index) const {
    const HWND list = control(IDC_LIST_VIEW);
    RECT header = {};
    GetClientRect(find_child(list, "SysHeader32"), &header);
    const int row_height = height_of(list, 2) - height_of(list, 1);
    return client_place(list, 40, header.bottom + index * row_height + row_height / 2);
  }
  void click_row(int index, const std::vector<WORD>& keys = {}) {
    user.click(row(index), mrMouseButton::left, keys);
  }

private:
  static int height_of(HWND list, WPARAM rows) {
    return HIWORD(SendMessageA(list, LVM_APPROXIMATEVIEWRECT, rows, MAKELPARAM(-1, -1)));
  }
};

TEST_F(ListViewEndToEnd, ClickedRow) {
  click_row(1);
  EXPECT_EQ((Statements{"SelectItemByName(\"Bearing A\");"}), recording.finish());
  EXPECT_EQ(
      (Statements{"  Main_SampleCad().SetFocus();", "  ListView_2085().SelectItemByName(\"Bearing A\");"}),
      recording.script_lines());
}

TEST_F(ListViewEndToEnd, LastOfSeveralClickedRowsStays) {
  click_row(1);
  click_row(3);
  click_row(5);
  EXPECT_EQ((Statements{"SelectItemByName(\"Seal \\\\ ring\");"}), recording.finish());
}

TEST_F(ListViewEndToEnd, ArrowKeysAreOneSelection) {
  click_row(1);
  user.key(VK_DOWN);
  user.key(VK_DOWN);
  EXPECT_EQ((Statements{"SelectItemByName(\"Wheel 20\");"}), recording.finish());
}

TEST_F(ListViewEndToEnd, SelectionExtendedWithShift) {
  click_row(1);
  click_row(3, {VK_SHIFT});
  EXPECT_EQ((Statements{"SelectItemByName(\"Bearing A\");", "AddToSelectionByName(\"Bearing B\");",
                        "AddToSelectionByName(\"Wheel 20\");"}),
            recording.finish());
}

TEST_F(ListViewEndToEnd, SelectionExtendedAndReducedWithCtrl) {
  click_row(1);
  click_row(4, {VK_CONTROL});
  click_row(6, {VK_CONTROL});
  click_row(1, {VK_CONTROL});
  EXPECT_EQ((Statements{"SelectItemByName(\"Pinion 12\");", "AddToSelection(\"6\");"}), recording.finish());
}

TEST_F(ListViewEndToEnd, RowWithoutATextIsCounted) {
  click_row(6);
  EXPECT_EQ((Statements{"SelectItem(6);"}), recording.finish());
}

TEST_F(ListViewEndToEnd, DoubleClickSelectsAndActivates) {
  user.double_click(row(2));
  EXPECT_EQ((Statements{"SelectItemByName(\"Bearing B\");", "Select();"}), recording.finish());
}

// A dialog keeps Return for itself; in other windows the list view gets it.
TEST_F(ListViewEndToEnd, ReturnActivates) {
  click_row(2);
  host.finish_input();
  SendMessageA(control(IDC_LIST_VIEW), WM_KEYDOWN, VK_RETURN, 1);
  EXPECT_EQ((Statements{"SelectItemByName(\"Bearing B\");", "Select();"}), recording.finish());
}

TEST_F(ListViewEndToEnd, SelectionsWithAnotherControlInBetweenStay) {
  click_row(1);
  RECT item = {};
  SendMessageA(control(IDC_LIST_SINGLE), LB_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&item));
  user.click(client_place(control(IDC_LIST_SINGLE), item.left + 20, (item.top + item.bottom) / 2));
  click_row(3);
  EXPECT_EQ((Statements{"SelectItemByName(\"Bearing A\");", "SelectItemByName(\"Steel\");",
                        "SelectItemByName(\"Wheel 20\");"}),
            recording.finish());
}

TEST_F(ListViewEndToEnd, WhatTheProgramSelectsInADisabledOrHiddenListViewIsNotRecorded) {
  click(IDC_BY_PROGRAM);
  EXPECT_TRUE(wait_until(
      [this] { return SendMessageA(control(IDC_LIST_VIEW_HIDDEN), LVM_GETSELECTEDCOUNT, 0, 0) == 1; }));
  EXPECT_EQ(1, SendMessageA(control(IDC_LIST_VIEW_DISABLED), LVM_GETSELECTEDCOUNT, 0, 0));
  EXPECT_EQ((Statements{"Click();"}), recording.finish());
}
