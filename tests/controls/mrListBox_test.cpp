#include "controls/mrListBox.h"

#include "hooks/mrDispatcher.h"
#include "tests/support/declared.h"
#include "tests/support/hooked.h"
#include "tests/support/recording.h"
#include "tests/support/tape.h"
#include "tests/support/test_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

static constexpr DWORD child = WS_CHILD | WS_VISIBLE;

static mrTapeUploads change_of(HWND list, int index) {
  return record(mrListBoxRec{listBoxSelectionChanged, 0, list, index, 0});
}

static void fill(HWND list, std::initializer_list<const char*> items) {
  for (const char* item : items)
    SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item));
}

static void set_selected(HWND list, int index, bool selected) {
  SendMessageA(list, LB_SETSEL, selected, index);
}

// ---- recognition --------------------------------------------------------------------------------

class ListBoxRecognition : public testing::Test {
protected:
  ListBoxRecognition() {
    for (const HWND list : {single.get(), multiple.get(), extended.get()})
      fill(list, {"0", "1", "2", "3", "4", "5"});
  }

  mrUploadCatcher uploads;
  mrListBoxFactory factory;
  mrTestFrame dialog;
  mrTestWindow single{"ListBox", "", child | LBS_NOTIFY, dialog, 1};
  mrTestWindow multiple{"ListBox", "", child | LBS_NOTIFY | LBS_MULTIPLESEL, dialog, 2};
  mrTestWindow extended{"ListBox", "", child | LBS_NOTIFY | LBS_EXTENDEDSEL, dialog, 3};
  mrTestWindow button{"Button", "", child, dialog, 4};

  mrTapeStep told(int code, HWND control, mrTapeAnswer answer, mrTapeUploads sent,
                  int kind = hookCallWndProc) {
    return {kind, dialog, WM_COMMAND, notify(1, code), as_lparam(control), answer, std::move(sent)};
  }
  mrTapeStep gets_focus(HWND list) { return {hookCallWndProc, list, WM_SETFOCUS, 0, 0, claimed, none}; }
  mrTapeStep select(int index, bool selected = true) {
    return act(selected ? "select" : "deselect",
               [this, index, selected] { set_selected(multiple, index, selected); });
  }
  void play(const std::vector<mrTapeStep>& tape) { play_tape(factory, uploads, tape); }
};

TEST_F(ListBoxRecognition, ClickInASingleSelectionListBoxIsUploadedOnce) {
  play({
      {hookGetMessage, single, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), claimed, none},
      gets_focus(single),
      told(LBN_SETFOCUS, single, left, none),
      {hookGetMessage, single, WM_LBUTTONUP, 0, at(5, 5), claimed, none},
      act("the list box selects", [this] { SendMessageA(single, LB_SETCURSEL, 4, 0); }),
      told(LBN_SELCHANGE, single, claimed, change_of(single, 4)),
      told(LBN_SELCHANGE, single, left, none, hookCallWndProcRet),
  });
}

TEST_F(ListBoxRecognition, PostedChangeIsUploaded) {
  SendMessageA(single, LB_SETCURSEL, 2, 0);
  play({told(LBN_SELCHANGE, single, claimed, change_of(single, 2), hookGetMessage)});
}

TEST_F(ListBoxRecognition, SameItemAgainIsUploadedAgain) {
  SendMessageA(single, LB_SETCURSEL, 2, 0);
  play({told(LBN_SELCHANGE, single, claimed, change_of(single, 2)),
        told(LBN_SELCHANGE, single, claimed, change_of(single, 2))});
}

TEST_F(ListBoxRecognition, ExtendedSelectionAloneCountsAsSingle) {
  set_selected(extended, 1, true);
  set_selected(extended, 3, true);
  SendMessageA(extended, LB_SETCARETINDEX, 3, 0);
  const int current = static_cast<int>(SendMessageA(extended, LB_GETCURSEL, 0, 0));
  play({told(LBN_SELCHANGE, extended, claimed, change_of(extended, current))});
}

TEST_F(ListBoxRecognition, OfAMultipleSelectionOnlyTheDifferenceIsUploaded) {
  play({
      select(1),
      gets_focus(multiple),
      select(4),
      told(LBN_SELCHANGE, multiple, claimed, change_of(multiple, 4)),
      select(4, false),
      told(LBN_SELCHANGE, multiple, claimed, change_of(multiple, 4)),
      told(LBN_SELCHANGE, multiple, claimed, none),
  });
}

TEST_F(ListBoxRecognition, NewlySelectedItemsComeFirstEachGroupAscending) {
  play({
      select(5),
      select(0),
      select(2),
      gets_focus(multiple),
      select(0, false),
      select(5, false),
      select(3),
      select(1),
      told(LBN_SELCHANGE, multiple, claimed,
           change_of(multiple, 1) + change_of(multiple, 3) + change_of(multiple, 0) + change_of(multiple, 5)),
  });
}

TEST_F(ListBoxRecognition, SelectionMadeBeforeTheFirstFocusIsUploadedWhole) {
  play({select(1), select(3),
        told(LBN_SELCHANGE, multiple, claimed, change_of(multiple, 1) + change_of(multiple, 3))});
}

TEST_F(ListBoxRecognition, OnlyTheFocusTakesASnapshot) {
  play({
      gets_focus(multiple),
      select(1),
      {hookGetMessage, multiple, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), claimed, none},
      {hookCallWndProc, multiple, WM_KILLFOCUS, 0, 0, claimed, none},
      told(LBN_SELCHANGE, multiple, claimed, change_of(multiple, 1)),
  });
}

TEST_F(ListBoxRecognition, FocusOfASingleSelectionListBoxTakesNoSnapshot) {
  play({
      select(1),
      gets_focus(multiple),
      gets_focus(single),
      gets_focus(extended),
      {hookCallWndProcRet, multiple, WM_SETFOCUS, 0, 0, left, none},
      told(LBN_SELCHANGE, multiple, claimed, none),
  });
}

TEST_F(ListBoxRecognition, EveryMultipleSelectionListBoxThatGetsTheFocusTakesASnapshot) {
  const mrTestWindow other("ListBox", "", child | LBS_NOTIFY | LBS_MULTIPLESEL, dialog, 5);
  fill(other, {"a", "b"});
  play({
      gets_focus(multiple),
      select(1),
      told(LBN_SELCHANGE, multiple, claimed, change_of(multiple, 1)),
      gets_focus(other),
      act("select", [&other] { set_selected(other, 1, true); }),
      told(LBN_SELCHANGE, other, claimed, change_of(other, 1)),
      gets_focus(multiple),
      select(2),
      told(LBN_SELCHANGE, multiple, claimed, change_of(multiple, 2)),
  });
}

TEST_F(ListBoxRecognition, ChangeOfADisabledOrHiddenListBoxIsClaimedAndNotUploaded) {
  EnableWindow(single, FALSE);
  play({told(LBN_SELCHANGE, single, claimed, none), told(LBN_DBLCLK, single, claimed, none)});
  ShowWindow(multiple, SW_HIDE);
  play({select(1), told(LBN_SELCHANGE, multiple, claimed, none)});
}

TEST_F(ListBoxRecognition, OtherNotificationsAndOtherControlsAreLeft) {
  play({
      told(LBN_DBLCLK, single, left, none),
      told(LBN_SELCANCEL, single, left, none),
      told(LBN_SELCHANGE, button, left, none),
      told(LBN_SELCHANGE, nullptr, left, none),
      {hookGetMessage, dialog, WM_LBUTTONDOWN, 0, 0, left, none},
      {hookGetMessage, nullptr, WM_LBUTTONDOWN, 0, 0, left, none},
      {hookCbt, single, WM_LBUTTONDOWN, 0, 0, left, none},
  });
}

TEST_F(ListBoxRecognition, ListBoxThatAnswersWithAnErrorReadsAsEmpty) {
  register_test_class("ListBoxOfTheHost");
  mrTestWindow own("ListBoxOfTheHost", "", child | LBS_MULTIPLESEL, dialog, 9);
  own.set_answer([](UINT message, WPARAM, LPARAM, LRESULT& result) {
    result = LB_ERR;
    return message == LB_GETSELCOUNT;
  });
  play({gets_focus(own), told(LBN_SELCHANGE, own, claimed, none)});
}

// What derived recorders build upon.
class OpenListBoxFactory : public mrListBoxFactory {
public:
  using mrListBoxFactory::check_list;
  using mrListBoxFactory::fill_selected;
  using mrListBoxFactory::update_selected;
};

TEST_F(ListBoxRecognition, SnapshotHoldsTheIndicesAscending) {
  OpenListBoxFactory open;
  int count = 0;
  int* items = nullptr;
  open.fill_selected(multiple, count, items);
  EXPECT_EQ(0, count);
  EXPECT_EQ(nullptr, items);
  for (const int index : {4, 0, 2})
    set_selected(multiple, index, true);
  open.fill_selected(multiple, count, items);
  EXPECT_THAT(std::vector<int>(items, items + count), ElementsAre(0, 2, 4));
  open.fill_selected(single, count, items);
  EXPECT_EQ(-1, count);
  EXPECT_EQ(nullptr, items);
}

TEST_F(ListBoxRecognition, DifferenceKeepsTheOrderOfTheFirstList) {
  OpenListBoxFactory open;
  int a[] = {7, 3, 9, 1, 3};
  int b[] = {9, 5, 7};
  open.check_list(multiple, 5, a, 3, b);
  open.check_list(multiple, 2, b, -1, nullptr);
  std::vector<int> sent;
  for (const mrUploadCatcher::Upload& upload : uploads.all())
    sent.push_back(reinterpret_cast<const mrListBoxRec*>(upload.bytes.data())->index);
  EXPECT_THAT(sent, ElementsAre(3, 1, 3, 9, 5));
}

// ---- building -----------------------------------------------------------------------------------

class ListBoxBuilder : public testing::Test {
protected:
  ListBoxBuilder() {
    fill(single, {"Wood", "Steel"});
    fill(multiple, {"Wood", "Steel", "Brass"});
  }
  mrTestRecorder recorder;
  mrTestFrame dialog;
  mrTestWindow single{"ListBox", "", child | LBS_NOTIFY, dialog, 1};
  mrTestWindow multiple{"ListBox", "", child | LBS_NOTIFY | LBS_MULTIPLESEL, dialog, 2};

  void change(HWND list, int index) {
    recorder.receive(factoryListBox, mrListBoxRec{listBoxSelectionChanged, 0, list, index, 0});
  }
};

TEST_F(ListBoxBuilder, ItemOfASingleSelectionListBoxIsSelected) {
  change(single, 1);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItemByName(\"Steel\");"));
  EXPECT_EQ(single.get(), recorder.last_action()->get_path()[0]->window);
  EXPECT_NE(nullptr, dynamic_cast<mrListBox*>(recorder.last_action()));
}

TEST_F(ListBoxBuilder, MultipleSelectionListBoxIsAskedWhetherTheItemIsSelectedNow) {
  set_selected(multiple, 1, true);
  change(multiple, 1);
  set_selected(multiple, 1, false);
  change(multiple, 1);
  EXPECT_THAT(recorder.statements(),
              ElementsAre("SelectItemByName(\"Steel\");", "UnselectItemByName(\"Steel\");"));
}

TEST_F(ListBoxBuilder, ItemWithoutATextIsNamedByItsIndex) {
  const mrTestWindow pictures("ListBox", "", child | LBS_OWNERDRAWFIXED | LBS_MULTIPLESEL, dialog, 3);
  for (const LPARAM item : {11, 22, 33, 44, 55})
    SendMessageA(pictures, LB_ADDSTRING, 0, item);
  set_selected(pictures, 4, true);
  change(pictures, 4);
  set_selected(pictures, 4, false);
  change(pictures, 4);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItem(4);", "UnselectItem(4);"));
}

TEST_F(ListBoxBuilder, StatementsAreNeverJoined) {
  change(single, 1);
  change(single, 1);
  EXPECT_EQ(2u, recorder.statements().size());
}

TEST_F(ListBoxBuilder, NamesAreQuotedAndWhole) {
  const std::string long_name(300, '\\');
  fill(single, {"\"x\"\t\xE4", long_name.c_str()});
  change(single, 2);
  change(single, 3);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItemByName(\"\\\"x\\\"\\t\xE4\");",
                                                 "SelectItemByName(\"" + std::string(600, '\\') + "\");"));
}

TEST_F(ListBoxBuilder, NothingSelectedIsItemMinusOne) {
  change(single, -1);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItem(-1);"));
}

TEST_F(ListBoxBuilder, UnknownKindIsIgnored) {
  recorder.receive(factoryListBox, mrListBoxRec{1, 0, single, 0, 0});
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
}

// ---- context menu ---------------------------------------------------------------------------------

class ListBoxContextMenu : public ListBoxBuilder {
protected:
  mrContextMenuRes invoke(HWND list, LONG x, LONG y, const char* class_name = "ListBox") {
    return get_factory(factoryListBox, true)->context_menu_invoke(list, class_name, CPoint(x, y));
  }
  // A place on an item.
  static CPoint on_item(HWND list, int item) {
    RECT place = {};
    SendMessageA(list, LB_GETITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&place));
    return CPoint(place.left + 2, (place.top + place.bottom) / 2);
  }
};

TEST_F(ListBoxContextMenu, OnASelectedItem) {
  set_selected(multiple, 1, true);
  const CPoint point = on_item(multiple, 1);
  EXPECT_EQ(contextMenuRecorded, invoke(multiple, point.x, point.y));
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(true);"));
  EXPECT_NE(nullptr, dynamic_cast<mrListBox*>(recorder.last_action()));
}

TEST_F(ListBoxContextMenu, OnAnItemThatIsNotSelected) {
  set_selected(multiple, 1, true);
  const CPoint point = on_item(multiple, 2);
  EXPECT_EQ(contextMenuRecorded, invoke(multiple, point.x, point.y));
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(false);"));
}

// The list box names the nearest item for a place below the last one.
TEST_F(ListBoxContextMenu, BelowTheItemsTheSelectedLastOneIsNotMeant) {
  set_selected(multiple, 2, true);
  const CPoint last = on_item(multiple, 2);
  EXPECT_EQ(contextMenuRecorded, invoke(multiple, last.x, last.y + 25));
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(false);"));
}

TEST_F(ListBoxContextMenu, EmptyListBoxHasNoSelectedItem) {
  const mrTestWindow empty("ListBox", "", child, dialog, 9);
  EXPECT_EQ(contextMenuRecorded, invoke(empty, 3, 3));
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(false);"));
}

// LB_ERR is not zero.
TEST_F(ListBoxContextMenu, FailedQuestionForTheSelectionIsNotSelected) {
  register_test_class("ListBoxOfTheHost");
  mrTestWindow own("ListBoxOfTheHost", "", child, dialog, 9);
  own.set_answer([](UINT message, WPARAM, LPARAM lparam, LRESULT& result) {
    if (message == LB_GETITEMRECT)
      *reinterpret_cast<RECT*>(lparam) = {0, 0, 100, 100};
    result = message == LB_GETSEL ? LB_ERR : 0;
    return message == LB_GETITEMRECT || message == LB_GETSEL || message == LB_ITEMFROMPOINT;
  });
  EXPECT_EQ(contextMenuRecorded, invoke(own, 3, 3));
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(false);"));
}

TEST_F(ListBoxContextMenu, OtherClassesAreNotClaimed) {
  EXPECT_EQ(contextMenuNotClaimed, invoke(single, 3, 3, "SysListView32"));
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
}

// ---- declaration ----------------------------------------------------------------------------------

TEST(ListBoxDeclaration, ByIdOrByTheNameFromTheHost) {
  mrTestRecorder recorder;
  mrActionFactory& factory = *get_factory(factoryListBox, true);
  const mrDeclared by_id = {declaredByControlId, "ListBox(12)", "ListBox(12, mpRECURSIVE_SEARCH)",
                            "ListBox_12"};
  EXPECT_EQ(by_id, declare(factory, control_info("ListBox", 12)));
  const mrDeclared by_name = {declaredByName, "ListBoxByID(\"layers\")", "ListBoxByID(\"layers\")", "layers"};
  EXPECT_EQ(by_name, declare(factory, control_info("ListBox", 12, "", 0, "layers")));
  EXPECT_EQ(mrDeclared(), declare(factory, control_info("ComboLBox", 12)));
}
