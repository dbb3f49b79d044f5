#include "controls/mrGroupCombo.h"

#include "framework/CInvalidArgException.h"
#include "hooks/mrDispatcher.h"
#include "host/dlxGroupComboHelpers.h"
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

static const char* extended_combo_class() {
  const INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_USEREX_CLASSES};
  InitCommonControlsEx(&controls);
  return WC_COMBOBOXEXA;
}

// An extended combo box, marked as the host marks a group combo unless told otherwise.
class GroupCombo : public mrTestWindow {
public:
  explicit GroupCombo(HWND parent, bool marked = true)
      : mrTestWindow(extended_combo_class(), "", WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST, parent, 21) {
    if (marked)
      SetPropA(get(), dlx_group_combo_property, reinterpret_cast<HANDLE>(1));
  }
  void add(const char* text, LPARAM data = 0) {
    COMBOBOXEXITEMA item = {};
    item.mask = CBEIF_TEXT | CBEIF_LPARAM;
    item.iItem = -1;
    item.pszText = const_cast<char*>(text);
    item.lParam = data;
    SendMessageA(get(), CBEM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
  }
  void add_heading(const char* text) { add(text, dlx_heading_item); }
};

static mrTapeUploads choice_of(HWND combo, int64_t index) {
  return record(mrComboBoxRec{comboSelectionChanged, 0, combo, index});
}

// ---- recognition --------------------------------------------------------------------------------

class GroupComboRecognition : public testing::Test {
protected:
  mrUploadCatcher uploads;
  mrGroupComboFactory factory;
  mrTestFrame dialog;
  GroupCombo combo{dialog};
  GroupCombo unmarked{dialog, false};
  mrTestWindow plain{"ComboBox", "", WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST, dialog, 3};

  mrTapeStep told(int code, HWND control, mrTapeAnswer answer, mrTapeUploads sent,
                  int kind = hookCallWndProc) {
    return {kind, dialog, WM_COMMAND, notify(21, code), as_lparam(control), answer, std::move(sent)};
  }
  void play(const std::vector<mrTapeStep>& tape) { play_tape(factory, uploads, tape); }
};

TEST_F(GroupComboRecognition, ChoiceIsUploadedOnce) {
  const HWND inner = reinterpret_cast<HWND>(SendMessageA(combo, CBEM_GETCOMBOCONTROL, 0, 0));
  combo.add_heading("Metric");
  combo.add("M8");
  SendMessageA(combo, CB_SETCURSEL, 1, 0);
  play({
      {hookCallWndProc, combo, WM_COMMAND, notify(21, CBN_SELCHANGE), as_lparam(inner), claimed, none},
      told(CBN_SELCHANGE, combo, claimed, choice_of(combo, 1)),
      told(CBN_SELCHANGE, combo, left, none, hookCallWndProcRet),
  });
}

TEST_F(GroupComboRecognition, HeadingIsUploadedToo) {
  combo.add_heading("Metric");
  SendMessageA(combo, CB_SETCURSEL, 0, 0);
  play({told(CBN_SELCHANGE, combo, claimed, choice_of(combo, 0))});
}

TEST_F(GroupComboRecognition, ChangeOfADisabledOrHiddenGroupComboIsClaimedAndNotUploaded) {
  EnableWindow(combo, FALSE);
  play({told(CBN_SELCHANGE, combo, claimed, none)});
  EnableWindow(combo, TRUE);
  ShowWindow(combo, SW_HIDE);
  play({told(CBN_SELCHANGE, combo, claimed, none)});
}

TEST_F(GroupComboRecognition, ComboBoxesWithoutTheMarkAreLeftToTheirRecorder) {
  // The mark counts on an extended combo box only.
  SetPropA(plain, dlx_group_combo_property, reinterpret_cast<HANDLE>(1));
  play({
      told(CBN_SELCHANGE, unmarked, left, none),
      {hookGetMessage, unmarked, WM_LBUTTONDOWN, MK_LBUTTON, at(1, 1), left, none},
      told(CBN_SELCHANGE, plain, left, none),
      told(CBN_SELCHANGE, nullptr, left, none),
      {hookGetMessage, nullptr, WM_LBUTTONDOWN, MK_LBUTTON, at(1, 1), left, none},
  });
  RemovePropA(plain, dlx_group_combo_property);
}

TEST_F(GroupComboRecognition, FirstTwelveLettersOfTheClassDecide) {
  register_test_class("ComboBoxEx32d");
  const mrTestWindow debug_combo("ComboBoxEx32d", "", WS_CHILD | WS_VISIBLE, dialog, 4);
  EXPECT_FALSE(factory.is_combo_class(debug_combo));
  SetPropA(debug_combo, dlx_group_combo_property, reinterpret_cast<HANDLE>(1));
  EXPECT_TRUE(factory.is_combo_class(debug_combo));
  RemovePropA(debug_combo, dlx_group_combo_property);
}

// In the dispatch, with the recorder of combo boxes behind: each takes its own.
TEST_F(GroupComboRecognition, GroupComboAndExtendedComboBoxReachTheirOwnRecorders) {
  for (const HWND window : {combo.get(), unmarked.get()}) {
    CWPSTRUCT change = {as_lparam(window), notify(21, CBN_SELCHANGE), WM_COMMAND, dialog};
    dispatch_hook_message(hookCallWndProc, HC_ACTION, 1, reinterpret_cast<LPARAM>(&change));
  }
  ASSERT_EQ(2u, uploads.count());
  EXPECT_EQ(static_cast<unsigned>(factoryGroupCombo), uploads.all()[0].type);
  EXPECT_EQ(static_cast<unsigned>(factoryComboBox), uploads.all()[1].type);
}

// ---- building -----------------------------------------------------------------------------------

class GroupComboBuilder : public testing::Test {
protected:
  GroupComboBuilder() {
    combo.add("None");
    combo.add_heading("Metric");
    combo.add("M6");
    combo.add("M8");
    combo.add_heading("Inch");
    combo.add("1/4\"");
  }
  mrTestRecorder recorder;
  mrTestFrame dialog;
  GroupCombo combo{dialog};

  void choose(int64_t index, uint32_t kind = comboSelectionChanged) {
    recorder.receive(factoryGroupCombo, mrComboBoxRec{kind, 0, combo, index});
  }
};

TEST_F(GroupComboBuilder, ItemIsNamedAfterItsHeading) {
  choose(3);
  choose(5);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItemByName(\"Metric\", \"M8\");",
                                                 "SelectItemByName(\"Inch\", \"1/4\\\"\");"));
  EXPECT_NE(nullptr, dynamic_cast<mrGroupCombo*>(recorder.last_action()));
}

TEST_F(GroupComboBuilder, BothNamesAreQuotedAndWhole) {
  const std::string long_name(300, 'x');
  combo.add_heading("3\" \\ pipe\t\xD8");
  combo.add(long_name.c_str());
  combo.add_heading(long_name.c_str());
  combo.add("C:\\\t\"\xE4\"");
  choose(7);
  choose(9);
  EXPECT_THAT(recorder.statements(),
              ElementsAre("SelectItemByName(\"3\\\" \\\\ pipe\\t\xD8\", \"" + long_name + "\");",
                          "SelectItemByName(\"" + long_name + "\", \"C:\\\\\\t\\\"\xE4\\\"\");"));
}

TEST_F(GroupComboBuilder, TwoGroupCombosInTurn) {
  GroupCombo other{dialog};
  other.add_heading("Inch");
  other.add("1/2");
  for (int round = 0; round < 2; ++round) {
    choose(3);
    recorder.receive(factoryGroupCombo, mrComboBoxRec{comboSelectionChanged, 0, other, 1});
  }
  const char* const here = "SelectItemByName(\"Metric\", \"M8\");";
  const char* const there = "SelectItemByName(\"Inch\", \"1/2\");";
  EXPECT_THAT(recorder.statements(), ElementsAre(here, there, here, there));
}

TEST_F(GroupComboBuilder, ItemWithoutAHeadingHasAnEmptyFirstName) {
  choose(0);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItemByName(\"\", \"None\");"));
}

TEST_F(GroupComboBuilder, HeadingIsNoChoice) {
  choose(1);
  choose(4);
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
}

TEST_F(GroupComboBuilder, NothingSelectedIsNoChoice) {
  choose(-1);
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
}

TEST_F(GroupComboBuilder, UnknownKindIsIgnored) {
  choose(3, 1);
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
}

TEST_F(GroupComboBuilder, SameItemTwiceIsTwoStatements) {
  choose(3);
  choose(3);
  EXPECT_EQ(2u, recorder.statements().size());
}

TEST_F(GroupComboBuilder, ActionsWindowIsDeclaredAsAGroupCombo) {
  choose(3);
  mrWindowInfo& info = *recorder.last_action()->get_path()[0];
  EXPECT_STREQ("dlxGroupComboClass", info.class_name);
  CString declaration;
  CString search;
  CString identifier;
  EXPECT_EQ(declaredByControlId, recorder.get_declaration(&info, declaration, search, identifier));
  EXPECT_EQ("GroupCombo(21)", declaration);
  EXPECT_EQ("GroupCombo(21, mpRECURSIVE_SEARCH)", search);
  EXPECT_EQ("GroupCombo_21", identifier);
}

TEST_F(GroupComboBuilder, NullWindowHasNoPathToNameIn) {
  mrActionFactory* const factory = get_factory(factoryGroupCombo, true);
  EXPECT_THROW(mrGroupCombo(nullptr, static_cast<mrBaseWindowFactory*>(factory)), CInvalidArgException);
}

TEST_F(GroupComboBuilder, ContextMenuIsNotClaimed) {
  EXPECT_EQ(contextMenuNotClaimed,
            get_factory(factoryGroupCombo, true)->context_menu_invoke(combo, "ComboBoxEx32", CPoint(1, 1)));
}

TEST(GroupComboDeclaration, ByIdOrByTheNameFromTheHost) {
  mrTestRecorder recorder;
  mrActionFactory& factory = *get_factory(factoryGroupCombo, true);
  const mrDeclared by_name = {declaredByName, "GroupComboByID(\"thread\")", "GroupComboByID(\"thread\")",
                              "thread"};
  EXPECT_EQ(by_name, declare(factory, control_info("dlxGroupComboClass", 12, "", 0, "thread")));
  EXPECT_EQ(mrDeclared(), declare(factory, control_info("ComboBoxEx32", 12)));
}
