#include "controls/mrTreeView.h"

#include "framework/CInvalidArgException.h"
#include "hooks/mrDispatcher.h"
#include "tests/support/declared.h"
#include "tests/support/hooked.h"
#include "tests/support/recording.h"
#include "tests/support/self_recording.h"
#include "tests/support/tape.h"
#include "tests/support/test_tree.h"
#include "tests/support/test_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

using testing::ElementsAre;

static constexpr DWORD child = WS_CHILD | WS_VISIBLE;

// ---- recognition --------------------------------------------------------------------------------

class TreeViewRecognition : public testing::Test {
protected:
  mrUploadCatcher uploads;
  mrTreeViewFactory factory;
  mrTestFrame dialog;
  mrTestTree tree{dialog};
  HTREEITEM gearbox = tree.add("Gearbox");
  HTREEITEM housing = tree.add("Housing", gearbox);
  mrTreeNotifications told;

  // The record is built in one buffer: a label leaves its text there, and a later record what is behind its
  // own zero. The tests begin with a known buffer.
  void SetUp() override {
    memset(expected.text, 'x', sizeof expected.text - 1);
    feed(factory, hookCallWndProc, dialog, WM_NOTIFY, 7,
         told.label(tree, gearbox, std::string(mr_max_text - 1, 'x')));
  }

  mrTapeUploads selection_of(HTREEITEM item) { return upload(treeSelection, item); }
  mrTapeUploads label_of(HTREEITEM item, const char* text) {
    strcpy(expected.text, text);
    return upload(treeLabelEdit, item);
  }
  mrTapeStep notified(int kind, LPARAM lparam, mrTapeAnswer answer, mrTapeUploads sent) {
    return {kind, dialog, WM_NOTIFY, 7, lparam, answer, std::move(sent)};
  }
  void play(const std::vector<mrTapeStep>& tape) { play_tape(factory, uploads, tape); }

private:
  mrTapeUploads upload(mrTreeViewActionType type, HTREEITEM item) {
    expected.type = type;
    expected.tree = tree;
    expected.item = item;
    return record(expected);
  }
  mrTreeViewRec expected = {};
};

TEST_F(TreeViewRecognition, SelectionIsUploadedWithWhateverLabelWasUploadedBefore) {
  play({
      {hookGetMessage, tree, WM_LBUTTONDOWN, MK_LBUTTON, at(20, 5), claimed, none},
      {hookGetMessage, tree, WM_LBUTTONUP, 0, at(20, 5), claimed, none},
      notified(hookCallWndProc, told.plain(tree, static_cast<UINT>(NM_CLICK)), left, none),
      notified(hookCallWndProc, told.selection(tree, housing, TVN_SELCHANGINGA), left, none),
      notified(hookCallWndProc, told.selection(tree, housing), claimed, selection_of(housing)),
      notified(hookCallWndProcRet, told.selection(tree, housing), left, none),
  });
}

TEST_F(TreeViewRecognition, FinishedLabelIsUploaded) {
  play({
      notified(hookCallWndProc, told.label(tree, housing, "Say \"a\\b\"\t\xE4"), claimed,
               label_of(housing, "Say \"a\\b\"\t\xE4")),
      notified(hookCallWndProc, told.selection(tree, gearbox), claimed, selection_of(gearbox)),
      notified(hookCallWndProc, told.label(tree, gearbox, ""), claimed, label_of(gearbox, "")),
  });
}

TEST_F(TreeViewRecognition, LabelIsCutAt259Characters) {
  for (const size_t length : {259, 260, 300}) {
    const std::string label(length, 'l');
    play({notified(hookCallWndProc, told.label(tree, housing, label), claimed,
                   label_of(housing, label.substr(0, 259).c_str()))});
  }
}

TEST_F(TreeViewRecognition, CancelledLabelIsLeftToTheOthers) {
  play({
      notified(hookCallWndProc, told.cancelled_label(tree, housing), left, none),
      notified(hookCallWndProc, told.label(tree, housing, "New", TVIF_HANDLE), left, none),
  });
}

TEST_F(TreeViewRecognition, PostedNotificationCountsToo) {
  play({notified(hookGetMessage, told.selection(tree, housing), claimed, selection_of(housing))});
}

TEST_F(TreeViewRecognition, DisabledOrHiddenTreeIsClaimedAndNotRecorded) {
  const auto expect_silence = [this] {
    play({
        notified(hookCallWndProc, told.selection(tree, housing), claimed, none),
        notified(hookCallWndProc, told.label(tree, housing, "New"), claimed, none),
        notified(hookCallWndProc, told.cancelled_label(tree, housing), claimed, none),
        notified(hookCallWndProc, told.plain(tree, static_cast<UINT>(NM_CLICK)), claimed, none),
    });
  };
  EnableWindow(tree, FALSE);
  expect_silence();
  EnableWindow(tree, TRUE);
  ShowWindow(tree, SW_HIDE);
  expect_silence();
  ShowWindow(tree, SW_SHOW);
  ShowWindow(dialog, SW_HIDE);
  expect_silence();
}

TEST_F(TreeViewRecognition, EveryMessageOfATreeIsClaimed) {
  register_test_class("SysTreeView32Own");
  const mrTestWindow own("SysTreeView32Own", "", child, dialog, 9);
  for (const HWND window : {tree.get(), own.get()}) {
    play({
        {hookGetMessage, window, WM_RBUTTONDOWN, MK_RBUTTON, at(5, 5), claimed, none},
        {hookGetMessage, window, WM_KEYDOWN, VK_DOWN, 0, claimed, none},
        {hookCallWndProc, window, WM_PAINT, 0, 0, claimed, none},
        {hookCallWndProc, window, WM_NOTIFY, 0, told.selection(tree, housing), claimed, none},
        {hookCallWndProcRet, window, WM_PAINT, 0, 0, left, none},
        {hookCbt, window, WM_PAINT, 0, 0, left, none},
    });
  }
}

// The edit box hands its notifications to the tree, and the tree hands them on to its own parent.
TEST_F(TreeViewRecognition, BoxInWhichALabelIsEditedIsClaimed) {
  const mrTestWindow box("Edit", "Housing", child, tree, 0);
  play({
      {hookCallWndProc, tree, WM_COMMAND, notify(0, EN_CHANGE), as_lparam(box), claimed, none},
      {hookCallWndProc, dialog, WM_COMMAND, notify(0, EN_CHANGE), as_lparam(box), claimed, none},
      {hookGetMessage, dialog, WM_COMMAND, notify(0, EN_UPDATE), as_lparam(box), claimed, none},
      {hookCallWndProcRet, dialog, WM_COMMAND, notify(0, EN_CHANGE), as_lparam(box), left, none},
  });
}

TEST_F(TreeViewRecognition, OtherMessagesAreLeftToTheOthers) {
  register_test_class("SysTreeView3");
  const mrTestWindow almost("SysTreeView3", "", child, dialog, 9);
  const mrTestWindow edit("Edit", "", child, dialog, 8);
  play({
      {hookCallWndProc, dialog, WM_COMMAND, notify(8, EN_CHANGE), as_lparam(edit), left, none},
      {hookCallWndProc, dialog, WM_COMMAND, notify(8, 0), 0, left, none},
      {hookGetMessage, dialog, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), left, none},
      {hookGetMessage, edit, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), left, none},
      {hookGetMessage, nullptr, WM_TIMER, 1, 0, left, none},
      notified(hookCallWndProc, 0, left, none),
      notified(hookCallWndProc, told.selection(nullptr, housing), left, none),
      notified(hookCallWndProc, told.selection(edit, housing), left, none),
      notified(hookCallWndProc, told.selection(almost, housing), left, none),
      notified(hookCallWndProc, told.selection(tree, housing, TVN_SELCHANGEDW), left, none),
      notified(hookCallWndProc, told.plain(tree, TVN_ENDLABELEDITW), left, none),
      {hookCallWndProc, dialog, WM_USER, 7, told.selection(tree, housing), left, none},
  });
}

// ---- the tree of a notification -------------------------------------------------------------------

TEST_F(TreeViewRecognition, TreeIsTheSenderOfANotificationOnly) {
  const auto tree_of = [this](UINT message, LPARAM lparam) {
    MSG msg = {dialog, message, 7, lparam, 0, {}};
    return factory.is_tree_message(&msg);
  };
  const mrTestWindow edit("Edit", "", child, dialog, 8);
  EXPECT_EQ(tree.get(), tree_of(WM_NOTIFY, told.plain(tree, static_cast<UINT>(NM_CLICK))));
  EXPECT_EQ(nullptr, tree_of(WM_NOTIFY, told.plain(edit, static_cast<UINT>(NM_CLICK))));
  EXPECT_EQ(nullptr, tree_of(WM_NOTIFY, told.plain(nullptr, static_cast<UINT>(NM_CLICK))));
  EXPECT_EQ(nullptr, tree_of(WM_NOTIFY, 0));
  EXPECT_EQ(nullptr, tree_of(WM_COMMAND, told.plain(tree, static_cast<UINT>(NM_CLICK))));
}

// ---- building -----------------------------------------------------------------------------------

class TreeViewBuilder : public testing::Test {
protected:
  mrTestRecorder recorder;
  mrTestFrame dialog;
  mrTestTree tree{dialog};
  HTREEITEM gearbox = tree.add("Gearbox");
  HTREEITEM housing = tree.add("Housing", gearbox);
  HTREEITEM drive = tree.add("Drive", gearbox);
  HTREEITEM shaft = tree.add("Shaft", drive);
  HTREEITEM wheel = tree.add("Wheel", gearbox);
  HTREEITEM flange = tree.add("Flange");

  void select(HTREEITEM item, HWND of = nullptr) { receive(treeSelection, item, "", of); }
  void edit_label(HTREEITEM item, const std::string& text, HWND of = nullptr) {
    receive(treeLabelEdit, item, text, of);
  }
  void receive(int type, HTREEITEM item, const std::string& text, HWND of = nullptr) {
    mrTreeViewRec rec = {};
    rec.type = type;
    rec.tree = of ? of : tree.get();
    rec.item = item;
    strcpy(rec.text, text.c_str());
    recorder.receive(factoryTreeView, rec);
  }
  static mrTreeViewFactory* factory() {
    return static_cast<mrTreeViewFactory*>(get_factory(factoryTreeView, true));
  }
};

TEST_F(TreeViewBuilder, SelectionIsAStatementOnTheTree) {
  select(wheel);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItem(\"1|3\");"));
  EXPECT_EQ(tree.get(), recorder.last_action()->get_path()[0]->window);
  EXPECT_STREQ("SysTreeView32", recorder.last_action()->get_path()[0]->class_name);
  EXPECT_EQ(treeSelection, dynamic_cast<mrTreeView&>(*recorder.last_action()).get_type());
}

TEST_F(TreeViewBuilder, PathOfARootItemIsItsPlaceAlone) {
  select(flange);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItem(\"2\");"));
}

TEST_F(TreeViewBuilder, PathGoesFromTheRootDown) {
  select(shaft);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItem(\"1|2|1\");"));
}

TEST_F(TreeViewBuilder, PathOfNoItemIsZero) {
  select(nullptr);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItem(\"0\");"));
}

// The places are those at the moment at which the record arrives.
TEST_F(TreeViewBuilder, PathIsTakenFromTheLiveTree) {
  TreeView_DeleteItem(tree, housing);
  select(wheel);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItem(\"1|2\");"));
}

TEST_F(TreeViewBuilder, PathOfADeepItemIsNotCut) {
  HTREEITEM item = flange;
  std::string path = "2";
  for (int level = 0; level < 200; ++level) {
    tree.add("first", item);
    item = tree.add("second", item);
    path += "|2";
  }
  select(item);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItem(\"" + path + "\");"));
}

TEST_F(TreeViewBuilder, PlacesHaveAsManyDigitsAsTheyNeed) {
  HTREEITEM last = nullptr;
  for (int i = 0; i < 120; ++i)
    last = tree.add("item", flange);
  select(last);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItem(\"2|120\");"));
}

TEST_F(TreeViewBuilder, RunOfSelectionsEndsAsTheLastOne) {
  select(gearbox);
  select(shaft);
  select(flange);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItem(\"2\");"));
}

// Deliberate: a label statement has no semicolon, and the label no escapes.
TEST_F(TreeViewBuilder, LabelStandsAsItIsAndNoSemicolonFollows) {
  edit_label(wheel, "Say \"a\\b\"\t\xE4");
  EXPECT_THAT(recorder.statements(), ElementsAre("ItemByNumPath(\"1|3\").Text = \"Say \"a\\b\"\t\xE4\""));
  EXPECT_EQ(treeLabelEdit, dynamic_cast<mrTreeView&>(*recorder.last_action()).get_type());
}

TEST_F(TreeViewBuilder, LongestLabelIsWrittenWhole) {
  const std::string label(259, 'l');
  edit_label(wheel, label);
  EXPECT_THAT(recorder.statements(), ElementsAre("ItemByNumPath(\"1|3\").Text = \"" + label + "\""));
}

TEST_F(TreeViewBuilder, RunOfLabelEditsEndsAsTheLastOneWhateverItem) {
  edit_label(wheel, "a");
  edit_label(wheel, "ab");
  EXPECT_THAT(recorder.statements(), ElementsAre("ItemByNumPath(\"1|3\").Text = \"ab\""));
  edit_label(flange, "c");
  EXPECT_THAT(recorder.statements(), ElementsAre("ItemByNumPath(\"2\").Text = \"c\""));
}

TEST_F(TreeViewBuilder, SelectionAndLabelEditAreTwoStatements) {
  select(wheel);
  edit_label(wheel, "a");
  select(flange);
  EXPECT_THAT(
      recorder.statements(),
      ElementsAre("SelectItem(\"1|3\");", "ItemByNumPath(\"1|3\").Text = \"a\"", "SelectItem(\"2\");"));
}

TEST_F(TreeViewBuilder, TwoTreesInTurnGiveTwoStatementsEach) {
  mrTestTree other(dialog, 8);
  const HTREEITEM item = other.add("Sketch");
  select(wheel);
  select(item, other);
  select(flange);
  select(item, other);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItem(\"1|3\");", "SelectItem(\"1\");",
                                                 "SelectItem(\"2\");", "SelectItem(\"1\");"));
}

TEST_F(TreeViewBuilder, ARunEndsWithAnotherKindOfAction) {
  select(wheel);
  recorder.receive(factoryWindow,
                   std::array<uint64_t, 5>{2, reinterpret_cast<uint64_t>(tree.get()), 0, 0, 0});
  select(flange);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItem(\"1|3\");", "Close();", "SelectItem(\"2\");"));
}

TEST_F(TreeViewBuilder, UnknownTypeLeavesAnEmptyStatement) {
  receive(2, wheel, "text");
  EXPECT_THAT(recorder.statements(), ElementsAre(""));
}

TEST_F(TreeViewBuilder, LastActionWithoutAPathIsAnInvalidArgument) {
  recorder.m_actions.AddTail(new mrTreeView(nullptr, factory()));
  EXPECT_THROW(select(wheel), CInvalidArgException);
  EXPECT_THROW(edit_label(wheel, "a"), CInvalidArgException);
}

TEST_F(TreeViewBuilder, NewActionHasNoType) {
  const std::unique_ptr<mrTreeView> action(factory()->get_action(tree));
  EXPECT_EQ(treeNoAction, action->get_type());
  EXPECT_EQ(tree.get(), action->get_window());
}

// ---- context menu ---------------------------------------------------------------------------------

// The rectangle of a row comes from the tree through a remote call.
class TreeViewContextMenu : public testing::Test {
protected:
  mrTestFrame dialog;
  mrTestTree tree{dialog};
  HTREEITEM first = tree.add("Gearbox");
  HTREEITEM second = tree.add("Flange");
  mrActionFactory& factory = *get_factory(factoryTreeView, true);
  mrSelfRecording recorder;

  mrContextMenuRes invoke(int x, int y, const char* class_name = WC_TREEVIEWA) {
    return factory.context_menu_invoke(tree, class_name, CPoint(x, y));
  }
};

TEST_F(TreeViewContextMenu, OnTheSelectedRowIsTrue) {
  tree.select(second);
  recorder.clear_actions();
  const RECT row = tree.row(second);
  ASSERT_LT(row.top, row.bottom);
  // The whole row, not only its text: its left and top edges belong to it, the right and bottom ones do not.
  EXPECT_EQ(contextMenuRecorded, invoke(row.left, row.top));
  EXPECT_EQ(contextMenuRecorded, invoke(row.right - 1, row.bottom - 1));
  EXPECT_EQ(contextMenuRecorded, invoke(row.left, row.bottom));
  EXPECT_THAT(recorder.statements(),
              ElementsAre("ContextMenu(true);", "ContextMenu(true);", "ContextMenu(false);"));
  EXPECT_EQ(treeNoAction, dynamic_cast<mrTreeView&>(*recorder.last_action()).get_type());
}

TEST_F(TreeViewContextMenu, OutsideTheSelectedRowIsFalse) {
  tree.select(second);
  recorder.clear_actions();
  const RECT row = tree.row(first);
  EXPECT_EQ(contextMenuRecorded, invoke(row.left + 3, row.top + 3));
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(false);"));
}

TEST_F(TreeViewContextMenu, WithoutASelectionIsFalse) {
  tree.select(nullptr);
  recorder.clear_actions();
  EXPECT_EQ(contextMenuRecorded, invoke(3, 3));
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(false);"));
}

// Such as one below a collapsed parent.
TEST_F(TreeViewContextMenu, SelectedItemWithoutARowIsFalse) {
  register_test_class("SysTreeView32Blind");
  mrTestWindow blind("SysTreeView32Blind", "", child, dialog, 9);
  blind.set_answer([](UINT message, WPARAM wparam, LPARAM, LRESULT& result) {
    result = 77;
    return message == TVM_GETNEXTITEM && wparam == TVGN_CARET;
  });
  EXPECT_EQ(contextMenuRecorded, factory.context_menu_invoke(blind, "SysTreeView32Blind", CPoint(0, 0)));
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(false);"));
}

TEST_F(TreeViewContextMenu, OfAnotherClassIsNotClaimed) {
  EXPECT_EQ(contextMenuNotClaimed, invoke(3, 3, "SysListView32"));
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
}

TEST_F(TreeViewContextMenu, NeverReplacesOrIsReplaced) {
  tree.select(second);
  recorder.clear_actions();
  invoke(3, 3);
  invoke(3, 3);
  tree.select(first);
  EXPECT_THAT(recorder.statements(),
              ElementsAre("ContextMenu(false);", "ContextMenu(false);", "SelectItem(\"1\");"));
}

// ---- declaration ----------------------------------------------------------------------------------

class TreeViewDeclaration : public testing::Test {
protected:
  mrTestRecorder recorder;
  mrActionFactory& factory = *get_factory(factoryTreeView, true);
};

TEST_F(TreeViewDeclaration, TreeIsDeclaredByItsId) {
  const mrDeclared expected = {declaredByControlId, "TreeCtrl(7)", "TreeCtrl(7, mpRECURSIVE_SEARCH)",
                               "TreeCtrl_7"};
  EXPECT_EQ(expected, declare(factory, control_info("SysTreeView32", 7, "Objects")));
  EXPECT_EQ(expected, declare(factory, control_info("SysTreeView32Own", 7)));
}

TEST_F(TreeViewDeclaration, NameFromTheHostComesFirst) {
  const mrDeclared expected = {declaredByName, "TreeCtrlByID(\"objects\")", "TreeCtrlByID(\"objects\")",
                               "objects"};
  EXPECT_EQ(expected, declare(factory, control_info("SysTreeView32", 7, "", 0, "objects")));
}

TEST_F(TreeViewDeclaration, OtherClassesAreNotDeclared) {
  EXPECT_EQ(mrDeclared(), declare(factory, control_info("SysTreeView3", 7)));
  EXPECT_EQ(mrDeclared(), declare(factory, control_info("CADTreeClass", 7)));
}

TEST(TreeViewFactory, IsOfItsType) {
  mrTreeViewFactory factory;
  EXPECT_EQ(9, factory.get_factory_type());
  EXPECT_EQ(9, get_factory(9, true)->get_factory_type());
}
