#include "controls/mrComboBox.h"

#include "hooks/mrDispatcher.h"
#include "tests/support/declared.h"
#include "tests/support/hooked.h"
#include "tests/support/recording.h"
#include "tests/support/tape.h"
#include "tests/support/test_window.h"

#include <windows.h>
#include <commctrl.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

static constexpr DWORD drop_list = WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST;

static mrTapeUploads choice_of(HWND combo, int64_t index) {
  return record(mrComboBoxRec{comboSelectionChanged, 0, combo, index});
}

static void fill(HWND combo, std::initializer_list<const char*> items) {
  for (const char* item : items)
    SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
}

// ---- recognition --------------------------------------------------------------------------------

class ComboBoxRecognition : public testing::Test {
protected:
  ComboBoxRecognition() { fill(combo, {"Wood", "Steel", "Brass"}); }

  mrUploadCatcher uploads;
  mrComboBoxFactory factory;
  mrTestFrame dialog;
  mrTestWindow combo{"ComboBox", "", drop_list, dialog, 1};
  mrTestWindow edit{"Edit", "", WS_CHILD | WS_VISIBLE, dialog, 2};

  mrTapeStep told(int code, HWND control, mrTapeAnswer answer, mrTapeUploads sent,
                  int kind = hookCallWndProc) {
    return {kind, dialog, WM_COMMAND, notify(1, code), as_lparam(control), answer, std::move(sent)};
  }
  mrTapeStep select(int index) {
    return act("the user selects",
               [this, index] { SendMessageA(combo, CB_SETCURSEL, static_cast<WPARAM>(index), 0); });
  }
  void play(const std::vector<mrTapeStep>& tape) { play_tape(factory, uploads, tape); }
};

TEST_F(ComboBoxRecognition, ItemChosenWithTheMouseIsUploadedOnce) {
  const mrTestWindow list("ComboLBox", "", WS_POPUP);
  play({
      {hookGetMessage, combo, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), claimed, none},
      told(CBN_DROPDOWN, combo, left, none),
      {hookGetMessage, list, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), claimed, none},
      {hookGetMessage, list, WM_LBUTTONUP, 0, at(5, 5), claimed, none},
      {hookCallWndProc, combo, WM_COMMAND, notify(1000, LBN_SELCHANGE), as_lparam(list), claimed, none},
      told(CBN_SELENDOK, combo, left, none),
      told(CBN_CLOSEUP, combo, left, none),
      select(1),
      told(CBN_SELCHANGE, combo, claimed, choice_of(combo, 1)),
      told(CBN_SELCHANGE, combo, left, none, hookCallWndProcRet),
  });
}

TEST_F(ComboBoxRecognition, ItemChosenWithTheKeyboardIsUploadedOnce) {
  play({
      {hookGetMessage, combo, WM_KEYDOWN, VK_DOWN, 0, claimed, none},
      told(CBN_SELENDOK, combo, left, none),
      select(2),
      told(CBN_SELCHANGE, combo, claimed, choice_of(combo, 2)),
      {hookGetMessage, combo, WM_KEYUP, VK_DOWN, 0, claimed, none},
  });
}

TEST_F(ComboBoxRecognition, PostedChangeIsUploaded) {
  play({told(CBN_SELCHANGE, combo, claimed, choice_of(combo, -1), hookGetMessage)});
}

TEST_F(ComboBoxRecognition, NothingSelectedIsUploadedAsMinusOne) {
  play({select(1), select(-1), told(CBN_SELCHANGE, combo, claimed, choice_of(combo, -1))});
}

TEST_F(ComboBoxRecognition, SameItemAgainIsUploadedAgain) {
  play({select(1), told(CBN_SELCHANGE, combo, claimed, choice_of(combo, 1)),
        told(CBN_SELCHANGE, combo, claimed, choice_of(combo, 1))});
}

TEST_F(ComboBoxRecognition, ChangeOfADisabledOrHiddenComboBoxIsClaimedAndNotUploaded) {
  EnableWindow(combo, FALSE);
  play({told(CBN_SELCHANGE, combo, claimed, none), told(CBN_DROPDOWN, combo, claimed, none)});
  EnableWindow(combo, TRUE);
  ShowWindow(combo, SW_HIDE);
  play({told(CBN_SELCHANGE, combo, claimed, none), told(CBN_DROPDOWN, combo, claimed, none)});
}

TEST_F(ComboBoxRecognition, OtherNotificationsAndOtherControlsAreLeft) {
  play({
      told(CBN_EDITCHANGE, combo, left, none),
      told(CBN_SETFOCUS, combo, left, none),
      told(CBN_DBLCLK, combo, left, none),
      told(CBN_SELCHANGE, edit, left, none),
      told(CBN_SELCHANGE, nullptr, left, none),
      {hookGetMessage, dialog, WM_LBUTTONDOWN, 0, 0, left, none},
      {hookGetMessage, nullptr, WM_LBUTTONDOWN, 0, 0, left, none},
      {hookCallWndProcRet, combo, WM_LBUTTONDOWN, 0, 0, left, none},
      {hookCbt, combo, WM_LBUTTONDOWN, 0, 0, left, none},
  });
}

TEST_F(ComboBoxRecognition, ClassesThatBeginWithComboBoxAreComboBoxesAndComboLBoxIsWhole) {
  for (const char* name : {"ComboBoxEx32", "ComboBoxOfTheHost", "ComboLBox2", "ComboBo"})
    register_test_class(name);
  const auto is_combo = [this](const char* class_name) {
    const mrTestWindow window(class_name, "", WS_POPUP);
    return factory.is_combo_class(window);
  };
  EXPECT_TRUE(is_combo("ComboBoxEx32"));
  EXPECT_TRUE(is_combo("ComboBoxOfTheHost"));
  EXPECT_TRUE(is_combo("ComboLBox"));
  EXPECT_FALSE(is_combo("ComboLBox2"));
  EXPECT_FALSE(is_combo("ComboBo"));
  EXPECT_FALSE(factory.is_combo_class(nullptr));
}

// An extended combo box that is no group combo: what it hears from the combo box inside it is its own affair.
TEST_F(ComboBoxRecognition, ExtendedComboBoxIsUploadedOnce) {
  register_test_class("ComboBoxEx32");
  const mrTestWindow extended("ComboBoxEx32", "", WS_CHILD | WS_VISIBLE, dialog, 5);
  const mrTestWindow inner("ComboBox", "", drop_list, extended, 5);
  play({
      {hookCallWndProc, extended, WM_COMMAND, notify(5, CBN_SELCHANGE), as_lparam(inner), claimed, none},
      told(CBN_SELCHANGE, extended, claimed, choice_of(extended, 0)),
  });
}

// ---- building -----------------------------------------------------------------------------------

class ComboBoxBuilder : public testing::Test {
protected:
  mrTestRecorder recorder;
  mrTestFrame dialog;
  mrTestWindow combo{"ComboBox", "", drop_list, dialog, 1};

  void choose(HWND window, int64_t index) {
    recorder.receive(factoryComboBox, mrComboBoxRec{comboSelectionChanged, 0, window, index});
  }
};

TEST_F(ComboBoxBuilder, ChosenItemIsNamed) {
  fill(combo, {"Wood", "Steel"});
  choose(combo, 1);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItemByName(\"Steel\");"));
  EXPECT_EQ(combo.get(), recorder.last_action()->get_path()[0]->window);
  EXPECT_NE(nullptr, dynamic_cast<mrComboBox*>(recorder.last_action()));
}

TEST_F(ComboBoxBuilder, ChoosingTheSameItemTwiceIsTwoStatements) {
  fill(combo, {"Wood", "Steel"});
  choose(combo, 1);
  choose(combo, 1);
  EXPECT_THAT(recorder.statements(),
              ElementsAre("SelectItemByName(\"Steel\");", "SelectItemByName(\"Steel\");"));
}

TEST_F(ComboBoxBuilder, TwoComboBoxesInTurn) {
  const mrTestWindow other("ComboBox", "", drop_list, dialog, 2);
  fill(combo, {"Wood", "Steel"});
  fill(other, {"Red", "Green"});
  for (const HWND window : {combo.get(), other.get(), combo.get(), other.get()})
    choose(window, 1);
  EXPECT_THAT(recorder.statements(),
              ElementsAre("SelectItemByName(\"Steel\");", "SelectItemByName(\"Green\");",
                          "SelectItemByName(\"Steel\");", "SelectItemByName(\"Green\");"));
}

TEST_F(ComboBoxBuilder, ItemWithoutATextIsChosenByItsIndex) {
  const mrTestWindow pictures("ComboBox", "", drop_list | CBS_OWNERDRAWFIXED, dialog, 2);
  for (const LPARAM item : {11, 22, 33})
    SendMessageA(pictures, CB_ADDSTRING, 0, item);
  choose(pictures, 2);
  fill(combo, {"", "Steel"});
  choose(combo, 0);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItem(2);", "SelectItem(0);"));
}

TEST_F(ComboBoxBuilder, NothingSelectedIsItemMinusOne) {
  fill(combo, {"Wood"});
  choose(combo, -1);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItem(-1);"));
}

TEST_F(ComboBoxBuilder, IndexIsTheLowHalfOfTheField) {
  fill(combo, {"Wood", "Steel"});
  choose(combo, 0x700000001);
  choose(combo, 0x1FFFFFFFF);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItemByName(\"Steel\");", "SelectItem(-1);"));
}

TEST_F(ComboBoxBuilder, NamesAreQuotedAndWhole) {
  const std::string long_name(300, 'x');
  fill(combo, {"3/4\" \\ pipe\t\xD8", long_name.c_str()});
  choose(combo, 0);
  choose(combo, 1);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItemByName(\"3/4\\\" \\\\ pipe\\t\xD8\");",
                                                 "SelectItemByName(\"" + long_name + "\");"));
}

TEST_F(ComboBoxBuilder, UnknownKindIsIgnored) {
  recorder.receive(factoryComboBox, mrComboBoxRec{1, 0, combo, 0});
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
}

TEST_F(ComboBoxBuilder, ContextMenuIsNotClaimed) {
  EXPECT_EQ(contextMenuNotClaimed,
            get_factory(factoryComboBox, true)->context_menu_invoke(combo, "ComboBox", CPoint(1, 1)));
}

// ---- declaration ----------------------------------------------------------------------------------

TEST(ComboBoxDeclaration, ByIdOrByTheNameFromTheHost) {
  mrTestRecorder recorder;
  mrActionFactory& factory = *get_factory(factoryComboBox, true);
  const mrDeclared by_id = {declaredByControlId, "ComboBox(12)", "ComboBox(12, mpRECURSIVE_SEARCH)",
                            "ComboBox_12"};
  EXPECT_EQ(by_id, declare(factory, control_info("ComboBox", 12)));
  EXPECT_EQ(by_id, declare(factory, control_info("ComboBoxEx32", 12)));
  const mrDeclared by_name = {declaredByName, "ComboBoxByID(\"material\")", "ComboBoxByID(\"material\")",
                              "material"};
  EXPECT_EQ(by_name, declare(factory, control_info("ComboBox", 12, "", 0, "material")));
  EXPECT_EQ(mrDeclared(), declare(factory, control_info("ComboLBox", 12)));
}
