// End to end: list boxes, with every recorder in the dispatch.
#include "tests/e2e/gallery.h"

class ListBoxEndToEnd : public GalleryEndToEnd {
protected:
  ListBoxEndToEnd() : GalleryEndToEnd("lists", "Lists") { stop_clock_of(host); }

  POINT item(int id, int index) const {
    RECT place = {};
    SendMessageA(control(id), LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&place));
    return client_place(control(id), place.left + 20, (place.top + place.bottom) / 2);
  }
  void click_item(int id, int index, const std::vector<WORD>& keys = {}) {
    user.click(item(id, index), mrMouseButton::left, keys);
  }
};

TEST_F(ListBoxEndToEnd, ItemsOfASingleSelection) {
  click_item(IDC_LIST_SINGLE, 1);
  click_item(IDC_LIST_SINGLE, 0);
  EXPECT_EQ((Statements{"SelectItemByName(\"Brass\");", "SelectItemByName(\"Steel\");"}), recording.finish());
  EXPECT_EQ((Statements{"  Main_SampleCad().SetFocus();", "  ListBox_2081().SelectItemByName(\"Brass\");",
                        "  ListBox_2081().SelectItemByName(\"Steel\");"}),
            recording.script_lines());
}

TEST_F(ListBoxEndToEnd, ArrowKeys) {
  click_item(IDC_LIST_SINGLE, 1);
  user.key(VK_DOWN);
  EXPECT_EQ((Statements{"SelectItemByName(\"Brass\");", "SelectItemByName(\"Copper\");"}),
            recording.finish());
}

TEST_F(ListBoxEndToEnd, DoubleClickIsASelection) {
  user.double_click(item(IDC_LIST_SINGLE, 2));
  EXPECT_EQ((Statements{"SelectItemByName(\"Copper\");"}), recording.finish());
}

TEST_F(ListBoxEndToEnd, ItemsOfAMultipleSelectionAreSelectedAndDeselected) {
  click_item(IDC_LIST_MULTIPLE, 1);
  click_item(IDC_LIST_MULTIPLE, 3);
  click_item(IDC_LIST_MULTIPLE, 1);
  EXPECT_EQ((Statements{"SelectItemByName(\"Brass\");", "SelectItemByName(\"Aluminium\");",
                        "UnselectItemByName(\"Brass\");"}),
            recording.finish());
}

TEST_F(ListBoxEndToEnd, TwoListBoxesInTurn) {
  click_item(IDC_LIST_MULTIPLE, 1);
  click_item(IDC_LIST_SINGLE, 0);
  click_item(IDC_LIST_MULTIPLE, 2);
  EXPECT_EQ((Statements{"SelectItemByName(\"Brass\");", "SelectItemByName(\"Steel\");",
                        "SelectItemByName(\"Copper\");"}),
            recording.finish());
}

// The style for Shift and Ctrl alone is recorded like a single selection: the item with the focus.
TEST_F(ListBoxEndToEnd, ItemsOfAnExtendedSelection) {
  click_item(IDC_LIST_EXTENDED, 1);
  click_item(IDC_LIST_EXTENDED, 3, {VK_CONTROL});
  EXPECT_EQ((Statements{"SelectItemByName(\"Brass\");", "SelectItemByName(\"Aluminium\");"}),
            recording.finish());
}

TEST_F(ListBoxEndToEnd, DrawnItemsWithoutTextsAreCounted) {
  click_item(IDC_LIST_DRAWN_COLOR, 3);
  EXPECT_EQ((Statements{"SelectItem(3);"}), recording.finish());
}

TEST_F(ListBoxEndToEnd, DrawnItemsOfAMultipleSelectionAreCountedToo) {
  click_item(IDC_LIST_DRAWN_MULTIPLE, 1);
  click_item(IDC_LIST_DRAWN_MULTIPLE, 0);
  click_item(IDC_LIST_DRAWN_MULTIPLE, 1);
  EXPECT_EQ((Statements{"SelectItem(1);", "SelectItem(0);", "UnselectItem(1);"}), recording.finish());
}

TEST_F(ListBoxEndToEnd, WhatTheProgramSelectsIsNotRecorded) {
  click(IDC_BY_PROGRAM);
  EXPECT_TRUE(wait_until([this] { return SendMessageA(control(IDC_LIST_EXTENDED), LB_GETSEL, 3, 0) > 0; }));
  EXPECT_EQ((Statements{"Click();"}), recording.finish());
}

// The list box has the focus already when the recording begins, so nothing told the recorder what was
// selected.
TEST(ListBoxBeforeTheRecording, WhatWasSelectedIsRecordedWithTheFirstChange) {
  GalleryHost host("lists", "Lists");
  const HWND list = GetDlgItem(host.dialog, IDC_LIST_MULTIPLE);
  const auto click_item = [list](mrUser& user, int index) {
    RECT place = {};
    SendMessageA(list, LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&place));
    user.click(client_place(list, place.left + 20, (place.top + place.bottom) / 2));
  };
  mrUser earlier;
  click_item(earlier, 1);
  click_item(earlier, 3);
  host.finish_input();
  mrRecording recording(host);
  click_item(recording.user, 2);
  EXPECT_EQ((Statements{"SelectItemByName(\"Brass\");", "SelectItemByName(\"Copper\");",
                        "SelectItemByName(\"Aluminium\");"}),
            recording.finish());
}
