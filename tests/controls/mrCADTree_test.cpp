#include "controls/mrCADTree.h"

#include "framework/CInvalidArgException.h"
#include "hooks/mrDispatcher.h"
#include "hooks/mrIdentity.h"
#include "tests/support/declared.h"
#include "tests/support/hooked.h"
#include "tests/support/recording.h"
#include "tests/support/self_recording.h"
#include "tests/support/tape.h"
#include "tests/support/test_tree.h"
#include "tests/support/test_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

static constexpr DWORD child = WS_CHILD | WS_VISIBLE;

// A real tree view that says what it is, as the host's CAD tree does.
class TestCADTree : public mrTestTree {
public:
  explicit TestCADTree(HWND parent, LRESULT answer = 165) : mrTestTree(parent), answer(answer) {
    SetWindowSubclass(get(), answer_request, 1, reinterpret_cast<DWORD_PTR>(this));
  }
  LRESULT answer;
  int questions = 0;

private:
  static LRESULT CALLBACK answer_request(HWND window, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR,
                                         DWORD_PTR self) {
    TestCADTree& tree = *reinterpret_cast<TestCADTree*>(self);
    if (message != kvtWM_REQUEST_CAD_TREE_INFORMATION)
      return DefSubclassProc(window, message, wparam, lparam);
    EXPECT_EQ(0u, wparam);
    EXPECT_EQ(0, lparam);
    ++tree.questions;
    return tree.answer;
  }
};

TEST(CADTreeMessages, AreRegisteredByTheirNames) {
  EXPECT_EQ(RegisterWindowMessageA("kvtWM_REQUEST_CAD_TREE_INFORMATION"), kvtWM_REQUEST_CAD_TREE_INFORMATION);
  EXPECT_EQ(RegisterWindowMessageA("kvtWM_CAD_TREE_CHANGED"), kvtWM_CAD_TREE_CHANGED);
}

// ---- recognition --------------------------------------------------------------------------------

class CADTreeRecognition : public testing::Test {
protected:
  mrUploadCatcher uploads;
  mrCADTreeFactory factory;
  mrTestFrame dialog;
  TestCADTree tree{dialog};
  TestCADTree plain{dialog, 0};
  HTREEITEM gearbox = tree.add("Gearbox");
  HTREEITEM housing = tree.add("Housing", gearbox);
  mrTreeNotifications told;

  mrTapeStep notified(int kind, LPARAM lparam, mrTapeAnswer answer, mrTapeUploads sent) {
    return {kind, dialog, WM_NOTIFY, 7, lparam, answer, std::move(sent)};
  }
  mrTapeStep changed(int kind, const kvtCADTreeChange& change, mrTapeAnswer answer, mrTapeUploads sent) {
    return {kind,   dialog,         kvtWM_CAD_TREE_CHANGED, 0, reinterpret_cast<LPARAM>(&change),
            answer, std::move(sent)};
  }
  static mrTapeUploads change_of(const kvtCADTreeChange& change) {
    return record(mrCADTreeRec{1234321, 0, change});
  }
  mrTapeUploads selection_of(HTREEITEM item) { return tree_record(treeSelection, item); }
  mrTapeUploads label_of(HTREEITEM item, const char* text) {
    strcpy(expected.text, text);
    return tree_record(treeLabelEdit, item);
  }
  void play(const std::vector<mrTapeStep>& tape) { play_tape(factory, uploads, tape); }

  // A selection keeps the label that was uploaded before it: the tests begin with a known one.
  void SetUp() override {
    memset(expected.text, 'x', sizeof expected.text - 1);
    feed(factory, hookCallWndProc, dialog, WM_NOTIFY, 7, told.label(tree, gearbox, expected.text));
    tree.questions = 0;
  }

private:
  mrTapeUploads tree_record(mrTreeViewActionType type, HTREEITEM item) {
    expected.type = type;
    expected.tree = tree;
    expected.item = item;
    return record(expected);
  }
  mrTreeViewRec expected = {};
};

TEST_F(CADTreeRecognition, ChangeIsUploadedAsTheTreeTellsIt) {
  const kvtCADTreeChange hidden = {tree, housing, 1, 0};
  const kvtCADTreeChange coloured = {tree, gearbox, 4, 0x00FF8040};
  const kvtCADTreeChange unknown = {plain, nullptr, 0xFFFFFFFF, -1};
  play({
      changed(hookCallWndProc, hidden, claimed, change_of(hidden)),
      changed(hookGetMessage, coloured, claimed, change_of(coloured)),
      changed(hookCallWndProc, unknown, claimed, change_of(unknown)),
      changed(hookCallWndProcRet, hidden, left, none),
      {hookCallWndProc, dialog, kvtWM_CAD_TREE_CHANGED, 0, 0, left, none},
      {hookGetMessage, nullptr, kvtWM_CAD_TREE_CHANGED, 0, reinterpret_cast<LPARAM>(&hidden), left, none},
  });
}

TEST_F(CADTreeRecognition, ChangeIsTheBytesOfTheMessage) {
  const kvtCADTreeChange change = {tree, housing, 4, 255};
  feed(factory, hookCallWndProc, dialog, kvtWM_CAD_TREE_CHANGED, 0, reinterpret_cast<LPARAM>(&change));
  ASSERT_EQ(32u, uploads.last().bytes.size());
  EXPECT_EQ(std::string("\x91\xD5\x12\0\0\0\0\0", 8), uploads.last().bytes.substr(0, 8));
  EXPECT_EQ(0, memcmp(&change, uploads.last().bytes.data() + 8, 24));
}

// It is the dialog that is told, and it is not asked whether the tree is one.
TEST_F(CADTreeRecognition, ChangeOfAHiddenTreeIsRecordedToo) {
  const kvtCADTreeChange hidden = {tree, housing, 1, 0};
  ShowWindow(tree, SW_HIDE);
  play({changed(hookCallWndProc, hidden, claimed, change_of(hidden))});
  EXPECT_EQ(0, tree.questions);
}

TEST_F(CADTreeRecognition, SelectionsAndLabelsAreThoseOfATree) {
  play({
      notified(hookCallWndProc, told.selection(tree, housing, TVN_SELCHANGINGA), left, none),
      notified(hookCallWndProc, told.selection(tree, housing), claimed, selection_of(housing)),
      notified(hookGetMessage, told.selection(tree, gearbox), claimed, selection_of(gearbox)),
      notified(hookCallWndProc, told.cancelled_label(tree, gearbox), left, none),
      notified(hookCallWndProc, told.label(tree, gearbox, "Box"), claimed, label_of(gearbox, "Box")),
      notified(hookCallWndProcRet, told.selection(tree, housing), left, none),
  });
}

TEST_F(CADTreeRecognition, DisabledTreeIsClaimedAndNotRecorded) {
  EnableWindow(tree, FALSE);
  play({
      notified(hookCallWndProc, told.selection(tree, housing), claimed, none),
      notified(hookCallWndProc, told.plain(tree, static_cast<UINT>(NM_CLICK)), claimed, none),
  });
}

TEST_F(CADTreeRecognition, TreeThatDoesNotSayThatItIsACADTreeIsLeft) {
  for (const LRESULT answer : {0, 1, 164, 166}) {
    plain.answer = answer;
    play({
        notified(hookCallWndProc, told.selection(plain, housing), left, none),
        notified(hookCallWndProc, told.label(plain, housing, "New"), left, none),
        notified(hookCallWndProc, told.plain(plain, static_cast<UINT>(NM_CLICK)), left, none),
    });
  }
  EnableWindow(plain, FALSE);
  play({notified(hookCallWndProc, told.selection(plain, housing), left, none)});
}

// The tree view's recorder, which is asked next, claims them.
TEST_F(CADTreeRecognition, MessagesOfTheTreeItselfAreLeft) {
  const mrTestWindow box("Edit", "Housing", child, tree, 0);
  play({
      {hookGetMessage, tree, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), left, none},
      {hookCallWndProc, tree, WM_PAINT, 0, 0, left, none},
      {hookCallWndProc, dialog, WM_COMMAND, notify(0, EN_CHANGE), as_lparam(box), left, none},
      {hookCbt, tree, WM_PAINT, 0, 0, left, none},
  });
  EXPECT_EQ(0, tree.questions);
}

// A message that the recorder sends is a hooked message itself, and a tree tells its parent much while it is
// painted.
TEST_F(CADTreeRecognition, TreeIsAskedAnewOnlyForWhatMayBecomeAStatement) {
  const mrTapeStep painted =
      notified(hookCallWndProc, told.plain(tree, static_cast<UINT>(NM_CUSTOMDRAW)), left, none);
  const mrTapeStep plain_painted =
      notified(hookCallWndProc, told.plain(plain, static_cast<UINT>(NM_CUSTOMDRAW)), left, none);
  play({plain_painted, plain_painted, plain_painted});
  EXPECT_EQ(1, plain.questions);
  play({painted, painted, painted});
  EXPECT_EQ(0, tree.questions);  // known since the tests' first label
  play({
      notified(hookCallWndProc, told.selection(tree, housing), claimed, selection_of(housing)),
      notified(hookCallWndProc, told.cancelled_label(tree, gearbox), left, none),
  });
  EXPECT_EQ(2, tree.questions);

  set_shortcuts(false);
  play({painted, painted, painted});
  set_shortcuts(true);
  EXPECT_EQ(5, tree.questions);
}

// ---- building -----------------------------------------------------------------------------------

class CADTreeBuilder : public testing::Test {
protected:
  mrTestRecorder recorder;
  mrTestFrame dialog;
  mrTestTree tree{dialog};
  HTREEITEM gearbox = tree.add("Gearbox");
  HTREEITEM housing = tree.add("Housing", gearbox);
  HTREEITEM drive = tree.add("Drive", gearbox);

  void change(HTREEITEM item, unsigned code, int value = 0) {
    recorder.receive(factoryCadTree, mrCADTreeRec{1234321, 0, {tree.get(), item, code, value}});
  }
  void select(HTREEITEM item, int type = factoryCadTree) {
    mrTreeViewRec rec = {};
    rec.type = treeSelection;
    rec.tree = tree;
    rec.item = item;
    recorder.receive(type, rec);
  }
  static mrCADTreeFactory* factory() {
    return static_cast<mrCADTreeFactory*>(get_factory(factoryCadTree, true));
  }
};

TEST_F(CADTreeBuilder, HidingAnObjectIsOneStatementOnTheCADTree) {
  change(drive, 1);
  EXPECT_THAT(recorder.statements(), ElementsAre("ItemByNumPath(\"1|2\").Visible = false;"));
  EXPECT_NE(nullptr, dynamic_cast<mrCADTree*>(recorder.last_action()));
  EXPECT_EQ(tree.get(), recorder.last_action()->get_path()[0]->window);
  EXPECT_STREQ("CADTreeClass", recorder.last_action()->get_path()[0]->class_name);
}

struct ChangeCase {
  unsigned code;
  int value;
  const char* expected;
};
static constexpr ChangeCase change_cases[] = {
    {0, 9, "Visible = true;"},  {1, 9, "Visible = false;"}, {2, 9, "Checked = true;"},
    {3, 9, "Checked = false;"}, {4, 255, "Color = 255;"},   {4, -1, "Color = -1;"},
    {5, 9, "Starred = true;"},  {6, 9, "Starred = false;"},
};

TEST_F(CADTreeBuilder, EveryChangeHasItsText) {
  for (const ChangeCase& c : change_cases) {
    recorder.clear_actions();
    change(housing, c.code, c.value);
    EXPECT_THAT(recorder.statements(), ElementsAre("ItemByNumPath(\"1|1\")." + std::string(c.expected)))
        << c.code;
  }
}

TEST_F(CADTreeBuilder, UnknownChangeLeavesThePrefixAlone) {
  change(housing, 7);
  change(housing, 0xFFFFFFFF);
  EXPECT_THAT(recorder.statements(), ElementsAre("ItemByNumPath(\"1|1\").", "ItemByNumPath(\"1|1\")."));
}

TEST_F(CADTreeBuilder, ChangesAreNeverJoined) {
  change(housing, 0);
  change(housing, 1);
  change(housing, 1);
  EXPECT_THAT(recorder.statements(),
              ElementsAre("ItemByNumPath(\"1|1\").Visible = true;", "ItemByNumPath(\"1|1\").Visible = false;",
                          "ItemByNumPath(\"1|1\").Visible = false;"));
}

TEST_F(CADTreeBuilder, SelectionIsATreesStatementOnTheCADTree) {
  select(housing);
  select(drive);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItem(\"1|2\");"));
  mrCADTree& action = dynamic_cast<mrCADTree&>(*recorder.last_action());
  EXPECT_EQ(treeSelection, action.get_type());
  EXPECT_STREQ("CADTreeClass", action.get_path()[0]->class_name);
  CString script;
  action.get_script(script);
  EXPECT_STREQ("  CADTree_7().SelectItem(\"1|2\");", script);
}

TEST_F(CADTreeBuilder, ChangeBetweenTwoSelectionsKeepsThemApart) {
  select(housing);
  change(housing, 1);
  select(drive);
  EXPECT_THAT(
      recorder.statements(),
      ElementsAre("SelectItem(\"1|1\");", "ItemByNumPath(\"1|1\").Visible = false;", "SelectItem(\"1|2\");"));
}

TEST_F(CADTreeBuilder, ActionNeedsAWindow) {
  EXPECT_THROW(factory()->get_action(nullptr), CInvalidArgException);
}

// ---- context menu ---------------------------------------------------------------------------------

class CADTreeContextMenu : public testing::Test {
protected:
  mrTestFrame dialog;
  TestCADTree tree{dialog};
  HTREEITEM first = tree.add("Gearbox");
  mrSelfRecording recorder;

  mrContextMenuRes invoke(int type, int x, int y, const char* class_name = WC_TREEVIEWA) {
    return get_factory(type, true)->context_menu_invoke(tree, class_name, CPoint(x, y));
  }
};

TEST_F(CADTreeContextMenu, IsRecordedAsATreesOnTheCADTree) {
  tree.select(first);
  recorder.clear_actions();
  const RECT row = tree.row(first);
  EXPECT_EQ(contextMenuRecorded, invoke(factoryCadTree, row.left + 2, row.top + 2));
  EXPECT_EQ(contextMenuRecorded, invoke(factoryCadTree, row.left + 2, row.bottom + 2));
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(true);", "ContextMenu(false);"));
  EXPECT_NE(nullptr, dynamic_cast<mrCADTree*>(recorder.last_action()));
}

TEST_F(CADTreeContextMenu, IsClaimedUnderTheClassOfItsDeclarationsToo) {
  tree.select(first);
  recorder.clear_actions();
  const RECT row = tree.row(first);
  EXPECT_EQ(contextMenuRecorded, invoke(factoryCadTree, row.left + 2, row.top + 2, "CADTreeClass"));
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(true);"));
  EXPECT_NE(nullptr, dynamic_cast<mrCADTree*>(recorder.last_action()));
  tree.answer = 0;
  EXPECT_EQ(contextMenuNotClaimed, invoke(factoryCadTree, row.left + 2, row.top + 2, "CADTreeClass"));
}

TEST_F(CADTreeContextMenu, OfAnOrdinaryTreeIsLeftToTheTreeView) {
  tree.answer = 0;
  EXPECT_EQ(contextMenuNotClaimed, invoke(factoryCadTree, 2, 2));
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
  EXPECT_EQ(contextMenuRecorded, invoke(factoryTreeView, 2, 2));
  EXPECT_EQ(nullptr, dynamic_cast<mrCADTree*>(recorder.last_action()));
}

TEST_F(CADTreeContextMenu, OfAnotherClassIsNotClaimedNorAsked) {
  EXPECT_EQ(contextMenuNotClaimed, invoke(factoryCadTree, 2, 2, "SysListView32"));
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
  EXPECT_EQ(0, tree.questions);
}

// ---- in the dispatch ------------------------------------------------------------------------------

// The tree's own notification to its parent, seen by the hooks of this thread.
TEST_F(CADTreeContextMenu, SelectionThroughTheWholeDispatchIsOneStatementOfTheCADTree) {
  const HTREEITEM second = tree.add("Flange");
  tree.select(first);
  recorder.clear_actions();
  tree.select(second);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItem(\"2\");"));
  EXPECT_NE(nullptr, dynamic_cast<mrCADTree*>(recorder.last_action()));

  tree.answer = 0;
  tree.select(first);
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItem(\"1\");"));
}

// ---- declaration ----------------------------------------------------------------------------------

class CADTreeDeclaration : public testing::Test {
protected:
  mrTestRecorder recorder;
  mrActionFactory& factory = *get_factory(factoryCadTree, true);
};

TEST_F(CADTreeDeclaration, CADTreeIsDeclaredByItsId) {
  const mrDeclared expected = {declaredByControlId, "CADTree(7)", "CADTree(7, mpRECURSIVE_SEARCH)",
                               "CADTree_7"};
  EXPECT_EQ(expected, declare(factory, control_info("CADTreeClass", 7, "Objects")));
}

TEST_F(CADTreeDeclaration, NameFromTheHostComesFirst) {
  const mrDeclared expected = {declaredByName, "CADTreeByID(\"objects\")", "CADTreeByID(\"objects\")",
                               "objects"};
  EXPECT_EQ(expected, declare(factory, control_info("CADTreeClass", 7, "", 0, "objects")));
}

TEST_F(CADTreeDeclaration, OtherTreesAreNotDeclared) {
  EXPECT_EQ(mrDeclared(), declare(factory, control_info("SysTreeView32", 7)));
}

TEST(CADTreeFactory, IsOfItsType) {
  mrCADTreeFactory factory;
  EXPECT_EQ(10, factory.get_factory_type());
  EXPECT_EQ(10, get_factory(10, true)->get_factory_type());
}
