#include "controls/mrListView.h"

#include "controls/mrWindow.h"
#include "framework/CInvalidArgException.h"
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

#include <memory>

using testing::ElementsAre;

static const char* list_view_class() {
  const INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_LISTVIEW_CLASSES};
  InitCommonControlsEx(&controls);
  return WC_LISTVIEWA;
}

// A list view in report mode, filled by the test.
class TestListView : public mrTestWindow {
public:
  explicit TestListView(HWND parent, DWORD style = 0)
      : mrTestWindow(list_view_class(), "", WS_CHILD | WS_VISIBLE | LVS_REPORT | style, parent, 31) {
    LVCOLUMNA column = {};
    column.mask = LVCF_WIDTH;
    column.cx = 100;
    SendMessageA(get(), LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
  }
  void add(const std::string& text) {
    LVITEMA item = {};
    item.mask = LVIF_TEXT;
    item.iItem = 1000;
    item.pszText = const_cast<char*>(text.c_str());
    SendMessageA(get(), LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
  }
  void select(int index, bool selected = true) {
    LVITEMA item = {};
    item.stateMask = LVIS_SELECTED;
    item.state = selected ? LVIS_SELECTED : 0;
    SendMessageA(get(), LVM_SETITEMSTATE, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
  }
};

static mrListViewRec item_record(mrListViewRecKind kind, HWND list, int index, const std::string& text) {
  mrListViewRec rec = {};
  rec.kind = kind;
  rec.window = list;
  rec.index = index;
  memcpy(rec.text, text.c_str(), text.size() + 1);
  return rec;
}

// ---- recognition --------------------------------------------------------------------------------

class ListViewRecognition : public testing::Test {
protected:
  ListViewRecognition() {
    for (const char* text : {"Line", "Circle", "Arc", "Text"})
      list.add(text);
  }

  mrUploadCatcher uploads;
  mrListViewFactory factory;
  mrTestFrame dialog;
  TestListView list{dialog};
  mrTestWindow button{"Button", "", WS_CHILD | WS_VISIBLE, dialog, 4};

  // What a list view tells its parent; change says of which item and how.
  mrTapeStep told(int code, HWND sender, mrTapeAnswer answer, mrTapeUploads sent, int kind = hookCallWndProc,
                  NMLISTVIEW change = {}) {
    change.hdr.hwndFrom = sender;
    change.hdr.code = static_cast<UINT>(code);
    m_headers.push_back(std::make_unique<NMLISTVIEW>(change));
    const LPARAM header = reinterpret_cast<LPARAM>(m_headers.back().get());
    return {kind, dialog, WM_NOTIFY, 31, header, answer, std::move(sent)};
  }
  mrTapeStep item_changed(UINT what, UINT old_state, UINT new_state, mrTapeAnswer answer,
                          mrTapeUploads sent) {
    NMLISTVIEW change = {};
    change.uChanged = what;
    change.uOldState = old_state;
    change.uNewState = new_state;
    return told(LVN_ITEMCHANGED, list, answer, std::move(sent), hookCallWndProc, change);
  }
  mrTapeStep selected(mrTapeUploads sent) {
    return item_changed(LVIF_STATE, 0, LVIS_SELECTED | LVIS_FOCUSED, claimed, std::move(sent));
  }
  mrTapeStep deselected(mrTapeUploads sent) {
    return item_changed(LVIF_STATE, LVIS_SELECTED | LVIS_FOCUSED, 0, claimed, std::move(sent));
  }
  mrTapeStep select(int index, bool on = true) {
    return act(on ? "select" : "deselect", [this, index, on] { list.select(index, on); });
  }
  mrTapeUploads first(int index, const std::string& text) {
    return record(item_record(listViewFirstSelected, list, index, text));
  }
  mrTapeUploads further(int index, const std::string& text) {
    return record(item_record(listViewFurtherSelected, list, index, text));
  }
  mrTapeUploads activated(int stale_index, const std::string& stale_text) {
    return record(item_record(listViewActivated, list, stale_index, stale_text));
  }
  void play(const std::vector<mrTapeStep>& tape) { play_tape(factory, uploads, tape); }

private:
  std::vector<std::unique_ptr<NMLISTVIEW>> m_headers;  // as long as the tape points at them
};

TEST_F(ListViewRecognition, ClickOnAnItemIsUploadedOnce) {
  play({
      {hookGetMessage, list, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 25), claimed, none},
      told(NM_RELEASEDCAPTURE, list, left, none),
      told(LVN_ITEMCHANGING, list, left, none),
      select(1),
      selected(first(1, "Circle")),
      told(NM_CLICK, list, left, none),
      {hookGetMessage, list, WM_LBUTTONUP, 0, at(5, 25), claimed, none},
  });
}

TEST_F(ListViewRecognition, EveryChangeUploadsTheWholeSelection) {
  play({
      select(1),
      selected(first(1, "Circle")),
      select(2),
      selected(first(1, "Circle") + further(2, "Arc")),
      select(3),
      selected(first(1, "Circle") + further(2, "Arc") + further(3, "Text")),
      select(1, false),
      deselected(first(2, "Arc") + further(3, "Text")),
  });
}

TEST_F(ListViewRecognition, EmptySelectionIsClaimedAndUploadsNothing) { play({deselected(none)}); }

TEST_F(ListViewRecognition, OnlyTheSelectedBitCounts) {
  play({
      select(1),
      item_changed(LVIF_STATE, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED, left, none),
      item_changed(LVIF_STATE, 0, LVIS_FOCUSED, left, none),
      item_changed(LVIF_TEXT, 0, LVIS_SELECTED, left, none),
      item_changed(LVIF_STATE | LVIF_TEXT, 0, LVIS_SELECTED, claimed, first(1, "Circle")),
  });
}

TEST_F(ListViewRecognition, ActivationIsUploadedAndLeft) {
  play({
      select(1),
      selected(first(1, "Circle")),
      told(NM_DBLCLK, list, left, activated(1, "Circle")),
      told(LVN_ITEMACTIVATE, list, left, none),
      told(NM_RETURN, list, left, activated(1, "Circle")),
      told(NM_RETURN, list, left, none, hookCallWndProcRet),
  });
}

TEST_F(ListViewRecognition, PostedNotificationIsUploaded) {
  play({select(0), selected(first(0, "Line")),
        told(NM_RETURN, list, left, activated(0, "Line"), hookGetMessage)});
}

TEST_F(ListViewRecognition, NotificationsOfADisabledOrHiddenListViewAreClaimedAndNotUploaded) {
  list.select(1);
  EnableWindow(list, FALSE);
  play({selected(none), told(NM_DBLCLK, list, claimed, none), told(NM_CUSTOMDRAW, list, claimed, none)});
  EnableWindow(list, TRUE);
  ShowWindow(list, SW_HIDE);
  play({selected(none), told(NM_RETURN, list, claimed, none)});
}

TEST_F(ListViewRecognition, OtherNotificationsAndOtherControlsAreLeft) {
  play({
      told(NM_CLICK, list, left, none),
      told(NM_RCLICK, list, left, none),
      told(NM_CUSTOMDRAW, list, left, none),
      told(LVN_ITEMCHANGED, button, left, none),
      told(NM_DBLCLK, button, left, none),
      told(NM_DBLCLK, nullptr, left, none),
      {hookCallWndProc, dialog, WM_NOTIFY, 31, 0, left, none},
      {hookCallWndProc, dialog, WM_COMMAND, notify(31, 1), as_lparam(list), left, none},
      {hookGetMessage, dialog, WM_LBUTTONDOWN, 0, 0, left, none},
      {hookGetMessage, nullptr, WM_LBUTTONDOWN, 0, 0, left, none},
      {hookCallWndProcRet, list, WM_LBUTTONDOWN, 0, 0, left, none},
      {hookCbt, list, WM_LBUTTONDOWN, 0, 0, left, none},
  });
}

TEST_F(ListViewRecognition, ClassesThatBeginWithSysListView32AreListViews) {
  register_test_class("SysListView32d");
  const mrTestWindow own("SysListView32d", "", WS_CHILD | WS_VISIBLE, dialog, 9);
  play({{hookGetMessage, own, WM_LBUTTONDOWN, 0, 0, claimed, none}, told(NM_CLICK, own, left, none)});
  EXPECT_TRUE(factory.is_wrapped_type("SysListView32"));
  EXPECT_FALSE(factory.is_wrapped_type("SysListView3"));
  EXPECT_FALSE(factory.is_wrapped_type("ListView"));
}

TEST_F(ListViewRecognition, TextIsCutToTheField) {
  list.add(std::string(259, 'a'));
  list.add(std::string(260, 'b'));
  list.add(std::string(300, 'c'));
  for (const int index : {4, 5, 6})
    list.select(index);
  play({selected(first(4, std::string(259, 'a')) + further(5, std::string(259, 'b')) +
                 further(6, std::string(259, 'c')))});
}

TEST_F(ListViewRecognition, ItemsWithoutATextAreUploadedEmpty) {
  list.add("");
  list.select(3);
  list.select(4);
  play({selected(first(3, "Text") + further(4, ""))});
}

// A list view that claims more than it has selected.
TEST_F(ListViewRecognition, ItemsThatAreNotFoundAreNotUploaded) {
  register_test_class("SysListView32d");
  mrTestWindow own("SysListView32d", "", WS_CHILD | WS_VISIBLE, dialog, 9);
  own.set_answer([](UINT message, WPARAM wparam, LPARAM, LRESULT& result) {
    result = message == LVM_GETSELECTEDCOUNT ? 3 : static_cast<int>(wparam) == -1 ? 7 : -1;
    return message == LVM_GETSELECTEDCOUNT || message == LVM_GETNEXTITEM;
  });
  NMLISTVIEW change = {};
  change.uChanged = LVIF_STATE;
  change.uNewState = LVIS_SELECTED;
  play({told(LVN_ITEMCHANGED, own, claimed, record(item_record(listViewFirstSelected, own, 7, "")),
             hookCallWndProc, change)});
}

// What derived recorders build upon.
class OpenListViewFactory : public mrListViewFactory {
public:
  using mrListViewFactory::get_name;
};

TEST_F(ListViewRecognition, NameThatTheListViewKeepsElsewhereIsCopied) {
  static char elsewhere[] = "kept by the list view";
  register_test_class("SysListView32d");
  mrTestWindow own("SysListView32d", "", WS_CHILD | WS_VISIBLE, dialog, 9);
  own.set_answer([](UINT message, WPARAM, LPARAM lparam, LRESULT&) {
    if (message != LVM_GETITEMTEXTA)
      return false;
    reinterpret_cast<LVITEMA*>(lparam)->pszText = elsewhere;
    return true;
  });
  char name[9] = "xxxxxxxx";
  OpenListViewFactory().get_name(own, 0, name, sizeof name);
  EXPECT_STREQ("kept by ", name);
}

// ---- building -----------------------------------------------------------------------------------

class ListViewBuilder : public testing::Test {
protected:
  mrTestRecorder recorder;
  mrTestFrame dialog;
  TestListView list{dialog};
  TestListView other{dialog};

  void receive(HWND window, mrListViewRecKind kind, int index = 0, const std::string& text = "") {
    recorder.receive(factoryListView, item_record(kind, window, index, text));
  }
  static mrBaseWindowFactory* list_view_factory() {
    return static_cast<mrBaseWindowFactory*>(get_factory(factoryListView, true));
  }
};

TEST_F(ListViewBuilder, SelectionIsOneStatementPerItem) {
  receive(list, listViewFirstSelected, 1, "Circle");
  receive(list, listViewFurtherSelected, 2, "Arc");
  EXPECT_THAT(recorder.statements(),
              ElementsAre("SelectItemByName(\"Circle\");", "AddToSelectionByName(\"Arc\");"));
  EXPECT_EQ(list.get(), recorder.last_action()->get_path()[0]->window);
  EXPECT_NE(nullptr, dynamic_cast<mrListView*>(recorder.last_action()));
}

TEST_F(ListViewBuilder, ExtendedSelectionTakesThePlaceOfTheOneBefore) {
  receive(list, listViewFirstSelected, 0, "Line");
  receive(list, listViewFirstSelected, 0, "Line");
  receive(list, listViewFurtherSelected, 1, "Circle");
  receive(list, listViewFirstSelected, 0, "Line");
  receive(list, listViewFurtherSelected, 1, "Circle");
  receive(list, listViewFurtherSelected, 2, "Arc");
  EXPECT_THAT(recorder.statements(),
              ElementsAre("SelectItemByName(\"Line\");", "AddToSelectionByName(\"Circle\");",
                          "AddToSelectionByName(\"Arc\");"));
}

// The oddest of them: what was activated before is forgotten too.
TEST_F(ListViewBuilder, NewSelectionDropsWhateverStandsLastOnThisListView) {
  receive(list, listViewFirstSelected, 0, "Line");
  receive(list, listViewActivated);
  list_view_factory()->context_menu_invoke(list, "SysListView32", CPoint(1, 1));
  receive(list, listViewFirstSelected, 1, "Circle");
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItemByName(\"Circle\");"));
}

TEST_F(ListViewBuilder, SelectionInAnotherListViewStays) {
  receive(list, listViewFirstSelected, 0, "Line");
  receive(other, listViewFirstSelected, 0, "Red");
  receive(list, listViewFirstSelected, 1, "Circle");
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItemByName(\"Line\");", "SelectItemByName(\"Red\");",
                                                 "SelectItemByName(\"Circle\");"));
}

TEST_F(ListViewBuilder, ActionInBetweenKeepsTheSelectionBeforeIt) {
  receive(list, listViewFirstSelected, 0, "Line");
  recorder.receive(factoryWindow, mrWindowRec{windowClose, 0, list, 0, 0, 0, 0});
  receive(list, listViewFirstSelected, 1, "Circle");
  receive(list, listViewFurtherSelected, 2, "Arc");
  receive(list, listViewFirstSelected, 1, "Circle");
  EXPECT_THAT(recorder.statements(),
              ElementsAre("SelectItemByName(\"Line\");", "Close();", "SelectItemByName(\"Circle\");"));
}

TEST_F(ListViewBuilder, DoubleClickIsTheSelectionThenSelect) {
  receive(list, listViewFirstSelected, 1, "Circle");
  receive(list, listViewActivated, 1, "Circle");
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItemByName(\"Circle\");", "Select();"));
}

// The index of a further item stands between quotes.
TEST_F(ListViewBuilder, ItemsWithoutATextAreNamedByTheirIndex) {
  receive(list, listViewFirstSelected, 3);
  receive(list, listViewFurtherSelected, 5);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItem(3);", "AddToSelection(\"5\");"));
}

TEST_F(ListViewBuilder, NamesAreQuoted) {
  receive(list, listViewFirstSelected, 0, "\"C:\\x\"\t\xE4");
  receive(list, listViewFurtherSelected, 1, std::string(259, '"'));
  std::string quotes;
  for (int i = 0; i < 259; ++i)
    quotes += "\\\"";
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItemByName(\"\\\"C:\\\\x\\\"\\t\xE4\");",
                                                 "AddToSelectionByName(\"" + quotes + "\");"));
}

TEST_F(ListViewBuilder, UnknownKindIsIgnored) {
  receive(list, static_cast<mrListViewRecKind>(3), 0, "Line");
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
}

TEST_F(ListViewBuilder, LastActionWithoutAPathIsAnInvalidArgument) {
  recorder.m_actions.AddTail(new mrListView(nullptr, list_view_factory()));
  EXPECT_THROW(receive(list, listViewFirstSelected, 0, "Line"), CInvalidArgException);
}

TEST_F(ListViewBuilder, ContextMenuSaysWhetherAnythingIsSelected) {
  list.add("Line");
  mrActionFactory& factory = *list_view_factory();
  EXPECT_EQ(contextMenuRecorded, factory.context_menu_invoke(list, "SysListView32", CPoint(500, 500)));
  list.select(0);
  EXPECT_EQ(contextMenuRecorded, factory.context_menu_invoke(list, "SysListView32", CPoint(500, 500)));
  EXPECT_EQ(contextMenuNotClaimed, factory.context_menu_invoke(list, "ListBox", CPoint(1, 1)));
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(false);", "ContextMenu(true);"));
  EXPECT_NE(nullptr, dynamic_cast<mrListView*>(recorder.last_action()));
}

// ---- declaration ----------------------------------------------------------------------------------

TEST(ListViewDeclaration, ByIdOrByTheNameFromTheHost) {
  mrTestRecorder recorder;
  mrActionFactory& factory = *get_factory(factoryListView, true);
  const mrDeclared by_id = {declaredByControlId, "ListView(12)", "ListView(12, mpRECURSIVE_SEARCH)",
                            "ListView_12"};
  EXPECT_EQ(by_id, declare(factory, control_info("SysListView32", 12)));
  const mrDeclared by_name = {declaredByName, "ListViewByID(\"parts\")", "ListViewByID(\"parts\")", "parts"};
  EXPECT_EQ(by_name, declare(factory, control_info("SysListView32", 12, "", 0, "parts")));
  EXPECT_EQ(mrDeclared(), declare(factory, control_info("ListView", 12)));
}
