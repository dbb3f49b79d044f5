// End to end: buttons of every kind, with every recorder in the dispatch.
#include "tests/e2e/gallery.h"

class ButtonEndToEnd : public GalleryEndToEnd {
protected:
  ButtonEndToEnd() : GalleryEndToEnd("buttons", "Buttons") { stop_clock_of(host); }
};

TEST_F(ButtonEndToEnd, PushButtonClicked) {
  click(IDC_PUSH);
  EXPECT_EQ((Statements{"Click();"}), recording.finish());
}

TEST_F(ButtonEndToEnd, PushButtonPushedWithTheSpaceBar) {
  focus(IDC_PUSH);
  user.key(VK_SPACE);
  EXPECT_EQ((Statements{"Click();"}), recording.finish());
}

TEST_F(ButtonEndToEnd, PushButtonPushedWithItsLetter) {
  user.key('P', {VK_MENU});
  EXPECT_EQ((Statements{"Click();"}), recording.finish());
}

TEST_F(ButtonEndToEnd, DefaultButtonPushedWithReturn) {
  focus(IDC_CHECK);
  user.key(VK_RETURN);
  EXPECT_EQ((Statements{"Click();"}), recording.finish());
  EXPECT_EQ((Statements{"  Main_SampleCad().SetFocus();", "  Default().Click();"}), recording.script_lines());
}

TEST_F(ButtonEndToEnd, ButtonsAreDeclaredByNameByTextAndById) {
  click(IDC_PUSH_NAMED);
  click(IDC_PUSH_UNTITLED);
  click(IDC_PUSH);
  EXPECT_EQ((Statements{"Click();", "Click();", "Click();"}), recording.finish());
  EXPECT_EQ((Statements{"  Main_SampleCad().SetFocus();", "  NamedButton().Click();",
                        "  Button_2015().Click();", "  Push().Click();"}),
            recording.script_lines());
}

TEST_F(ButtonEndToEnd, CheckBoxHasTheStateAfterTheClick) {
  click(IDC_CHECK);
  click(IDC_CHECK);
  EXPECT_EQ((Statements{"Checked = true;", "Checked = false;"}), recording.finish());
}

TEST_F(ButtonEndToEnd, CheckBoxSetByItsDialogHasTheStateAfterwards) {
  click(IDC_CHECK_MANUAL);
  click(IDC_CHECK);
  click(IDC_CHECK_MANUAL);
  EXPECT_EQ((Statements{"Checked = true;", "Checked = true;", "Checked = false;"}), recording.finish());
}

TEST_F(ButtonEndToEnd, CheckBoxesWithTheKeyboard) {
  focus(IDC_CHECK_MANUAL);
  user.key(VK_SPACE);
  user.key('H', {VK_MENU});
  EXPECT_EQ((Statements{"Checked = true;", "Checked = true;"}), recording.finish());
}

TEST_F(ButtonEndToEnd, ThreeStatesInTurn) {
  click(IDC_CHECK_3STATE);
  click(IDC_CHECK);
  click(IDC_CHECK_3STATE);
  click(IDC_CHECK);
  click(IDC_CHECK_3STATE);
  EXPECT_EQ((Statements{"CheckedState = tsCHECKED;", "Checked = true;", "CheckedState = tsINDETERMINATE;",
                        "Checked = false;", "CheckedState = tsUNCHECKED;"}),
            recording.finish());
}

TEST_F(ButtonEndToEnd, ThreeStatesSetByTheDialog) {
  click(IDC_CHECK_3STATE_MANUAL);
  click(IDC_CHECK);
  click(IDC_CHECK_3STATE_MANUAL);
  EXPECT_EQ((Statements{"CheckedState = tsCHECKED;", "Checked = true;", "CheckedState = tsINDETERMINATE;"}),
            recording.finish());
}

TEST_F(ButtonEndToEnd, RadioButtonsClickedAreClicks) {
  click(IDC_RADIO_BRASS);
  click(IDC_RADIO_FINE);
  EXPECT_EQ((Statements{"Click();", "Click();"}), recording.finish());
  EXPECT_NE(std::string::npos, recording.script().find("CheckBox(\"&Brass\", 2032);"));
}

TEST_F(ButtonEndToEnd, RadioButtonChosenWithTheArrowKeyIsAClick) {
  focus(IDC_RADIO_STEEL);
  user.key(VK_DOWN);
  EXPECT_EQ((Statements{"Click();"}), recording.finish());
  EXPECT_EQ((Statements{"  Main_SampleCad().SetFocus();", "  Brass().Click();"}), recording.script_lines());
}

TEST_F(ButtonEndToEnd, OwnerDrawnToggleHasItsNewState) {
  click(IDC_DRAWN_TOGGLE);
  expect_statements(1);
  click(IDC_DRAWN_TOGGLE);
  EXPECT_EQ((Statements{"Checked = true;", "Checked = false;"}), recording.finish());
}

TEST_F(ButtonEndToEnd, OwnerDrawnToggleWithTheSpaceBar) {
  focus(IDC_DRAWN_TOGGLE);
  user.key(VK_SPACE);
  EXPECT_EQ((Statements{"Checked = true;"}), recording.finish());
}

TEST_F(ButtonEndToEnd, OwnerDrawnButtonWithoutAStateIsClicked) {
  click(IDC_DRAWN_PUSH);
  EXPECT_EQ((Statements{"Click();"}), recording.finish());
}

TEST_F(ButtonEndToEnd, WhatTheProgramChangesIsNotRecorded) {
  click(IDC_BY_PROGRAM);
  EXPECT_TRUE(wait_until([this] {
    return SendMessageA(control(IDC_CHECK_3STATE_MANUAL), BM_GETCHECK, 0, 0) == BST_INDETERMINATE;
  }));
  EXPECT_EQ((Statements{"Click();"}), recording.finish());
}

// A label may tell its dialog of a click with the code of a pushed button.
TEST_F(ButtonEndToEnd, LabelThatTellsOfItsClickIsNoButton) {
  user.click(client_place(control(IDC_GALLERY_RESULT), 12, 4));
  EXPECT_EQ((Statements{"Click(1, 12, 4, 0);"}), recording.finish());
}

// Windows gives the click on a disabled control to the dialog behind it.
TEST_F(ButtonEndToEnd, DisabledButtonRecordsNothingOfItsOwn) {
  const POINT place = middle_of(control(IDC_PUSH_DISABLED));
  POINT in_dialog = place;
  ScreenToClient(host.dialog, &in_dialog);
  user.click(place);
  const std::string expected =
      "Click(1, " + std::to_string(in_dialog.x) + ", " + std::to_string(in_dialog.y) + ", 0);";
  EXPECT_EQ((Statements{expected}), recording.finish());
}
