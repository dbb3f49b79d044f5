// End to end: combo boxes and group combos, with every recorder in the dispatch.
#include "tests/e2e/gallery.h"

#include <windows.h>
#include <commctrl.h>

class ComboBoxEndToEnd : public GalleryEndToEnd {
protected:
  ComboBoxEndToEnd() : GalleryEndToEnd("combos", "Combo boxes") { stop_clock_of(host); }

  // Opens the list with the mouse and clicks on one of its items.
  void choose(int id, int item) {
    RECT box = {};
    GetClientRect(control(id), &box);
    user.click(client_place(control(id), box.right - 6, box.bottom / 2));
    const HWND list = host.wait_for_window("", "ComboLBox");
    ASSERT_NE(nullptr, list);
    user.click(place_of_item(list, item));
    EXPECT_TRUE(wait_until([list] { return !IsWindowVisible(list); }));
  }
  static POINT place_of_item(HWND list, int item) {
    RECT place = {};
    SendMessageA(list, LB_GETITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&place));
    return client_place(list, place.left + 8, (place.top + place.bottom) / 2);
  }
  LRESULT selected(int id) const { return SendMessageA(control(id), CB_GETCURSEL, 0, 0); }
};

TEST_F(ComboBoxEndToEnd, ItemChosenWithTheMouse) {
  choose(IDC_COMBO_LIST, 1);
  choose(IDC_COMBO_LIST, 6);
  EXPECT_EQ((Statements{"SelectItemByName(\"Brass\");", "SelectItemByName(\"Glass \\\"clear\\\"\");"}),
            recording.finish());
  EXPECT_EQ((Statements{"  Main_SampleCad().SetFocus();", "  ComboBox_2062().SelectItemByName(\"Brass\");",
                        "  ComboBox_2062().SelectItemByName(\"Glass \\\"clear\\\"\");"}),
            recording.script_lines());
}

TEST_F(ComboBoxEndToEnd, SameItemTwiceIsTwoStatements) {
  choose(IDC_COMBO_LIST, 3);
  choose(IDC_COMBO_LIST, 3);
  EXPECT_EQ((Statements{"SelectItemByName(\"Aluminium\");", "SelectItemByName(\"Aluminium\");"}),
            recording.finish());
}

TEST_F(ComboBoxEndToEnd, TwoComboBoxesInTurn) {
  choose(IDC_COMBO_LIST, 1);
  choose(IDC_COMBO_DRAWN_TEXT, 2);
  choose(IDC_COMBO_LIST, 3);
  choose(IDC_COMBO_DRAWN_TEXT, 0);
  recording.finish();
  EXPECT_EQ((Statements{"  Main_SampleCad().SetFocus();", "  ComboBox_2062().SelectItemByName(\"Brass\");",
                        "  ComboBox_2064().SelectItemByName(\"Copper\");",
                        "  ComboBox_2062().SelectItemByName(\"Aluminium\");",
                        "  ComboBox_2064().SelectItemByName(\"Steel\");"}),
            recording.script_lines());
}

TEST_F(ComboBoxEndToEnd, EveryStepOfTheArrowKeyIsAStatement) {
  focus(IDC_COMBO_LIST);
  user.key(VK_DOWN);
  user.key(VK_DOWN);
  user.key(VK_UP);
  EXPECT_EQ((Statements{"SelectItemByName(\"Brass\");", "SelectItemByName(\"Copper\");",
                        "SelectItemByName(\"Brass\");"}),
            recording.finish());
}

TEST_F(ComboBoxEndToEnd, DrawnItemsWithTextsAreNamed) {
  choose(IDC_COMBO_DRAWN_TEXT, 2);
  EXPECT_EQ((Statements{"SelectItemByName(\"Copper\");"}), recording.finish());
}

TEST_F(ComboBoxEndToEnd, DrawnItemsWithoutTextsAreCounted) {
  choose(IDC_COMBO_DRAWN_COLOR, 2);
  EXPECT_EQ((Statements{"SelectItem(2);"}), recording.finish());
}

// The text of its edit is set by the combo box, which is a program to it.
TEST_F(ComboBoxEndToEnd, ItemOfAComboBoxWithAnEdit) {
  choose(IDC_COMBO_EDIT, 3);
  EXPECT_EQ((Statements{"SelectItemByName(\"Aluminium\");"}), recording.finish());
}

TEST_F(ComboBoxEndToEnd, TextTypedIntoAComboBoxIsAStatementOfItsEdit) {
  focus(IDC_COMBO_EDIT);
  user.type("Zinc");
  EXPECT_EQ((Statements{"Text = \"Zinc\";"}), recording.finish());
  EXPECT_NE(std::string::npos, recording.script().find("ComboBox(2061).\r\n        Edit(1001);"))
      << recording.script();
}

TEST_F(ComboBoxEndToEnd, ItemOfASimpleComboBox) {
  const HWND list = find_child(control(IDC_COMBO_SIMPLE), "ComboLBox");
  ASSERT_NE(nullptr, list);
  user.click(place_of_item(list, 1));
  EXPECT_EQ((Statements{"SelectItemByName(\"Brass\");"}), recording.finish());
}

TEST_F(ComboBoxEndToEnd, ExtendedComboBoxIsAComboBox) {
  choose(IDC_COMBO_EXTENDED, 1);
  EXPECT_EQ((Statements{"SelectItemByName(\"Second\");"}), recording.finish());
  EXPECT_EQ((Statements{"  Main_SampleCad().SetFocus();", "  ComboBox_2067().SelectItemByName(\"Second\");"}),
            recording.script_lines());
}

TEST_F(ComboBoxEndToEnd, ItemOfAGroupComboIsNamedWithItsHeading) {
  choose(IDC_COMBO_GROUP, 3);
  choose(IDC_COMBO_GROUP, 6);
  EXPECT_EQ((Statements{"SelectItemByName(\"Metric\", \"M8\");", "SelectItemByName(\"Inch\", \"1/4\\\"\");"}),
            recording.finish());
  EXPECT_EQ((Statements{"  Main_SampleCad().SetFocus();",
                        "  GroupCombo_2066().SelectItemByName(\"Metric\", \"M8\");",
                        "  GroupCombo_2066().SelectItemByName(\"Inch\", \"1/4\\\"\");"}),
            recording.script_lines());
}

TEST_F(ComboBoxEndToEnd, HeadingOfAGroupComboRecordsNothing) {
  choose(IDC_COMBO_GROUP, 1);
  EXPECT_EQ(1, selected(IDC_COMBO_GROUP));
  choose(IDC_COMBO_GROUP, 0);
  EXPECT_EQ((Statements{"SelectItemByName(\"\", \"None\");"}), recording.finish());
}

TEST_F(ComboBoxEndToEnd, WhatTheProgramSelectsIsNotRecorded) {
  click(IDC_BY_PROGRAM);
  EXPECT_TRUE(wait_until([this] { return selected(IDC_COMBO_DISABLED) == 2; }));
  EXPECT_TRUE(wait_until([this] { return selected(IDC_COMBO_HIDDEN) == 2; }));
  EXPECT_EQ((Statements{"Click();"}), recording.finish());
}
