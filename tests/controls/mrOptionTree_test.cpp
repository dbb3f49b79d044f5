#include "controls/mrOptionTree.h"

#include "framework/CInvalidArgException.h"
#include "hooks/mrDispatcher.h"
#include "tests/support/debug_lines.h"
#include "tests/support/declared.h"
#include "tests/support/hooked.h"
#include "tests/support/recording.h"
#include "tests/support/tape.h"
#include "tests/support/test_window.h"

#include <commctrl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>

using testing::ElementsAre;
using testing::IsEmpty;

static constexpr DWORD child = WS_CHILD | WS_VISIBLE;

// A window of the option tree's class that answers the recorder's requests.
class TestOptionTree : public mrTestWindow {
public:
  struct Item {
    void* parent;
    std::string label;
    LRESULT kind;
    std::string value;
  };

  explicit TestOptionTree(HWND parent, const char* class_name = "zqpOptionTree")
      : mrTestWindow((register_test_class(class_name), class_name), "", child, parent, 7) {
    set_answer([this](UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
      return message == RegisterWindowMessageA("MSG_OT_RequestInformation") && answer(wparam, lparam, result);
    });
  }

  void* add(void* parent, const std::string& label, LRESULT kind = 1, const std::string& value = "") {
    void* const item = reinterpret_cast<void*>(0x7FF000000000 + 16 * (items.size() + 1));
    items[item] = {parent, label, kind, value};
    return item;
  }

  std::map<void*, Item> items;
  std::vector<WPARAM> requests;

private:
  bool answer(WPARAM request, LPARAM lparam, LRESULT& result) {
    requests.push_back(request);
    const mrOptionTextRequest& block = *reinterpret_cast<const mrOptionTextRequest*>(lparam);
    void* const item = reinterpret_cast<void*>(lparam);
    switch (request) {
    case 1:
      return fill(block, &Item::label);
    case 5:
      result = reinterpret_cast<LRESULT>(items[item].parent);
      return true;
    case 6:
      result = items[item].kind;
      return true;
    case 8:
      return fill(block, &Item::value);
    default:
      ADD_FAILURE() << "request " << request;
      return false;
    }
  }
  bool fill(const mrOptionTextRequest& block, std::string Item::*text) {
    EXPECT_EQ(260u, block.size);
    const auto found = items.find(block.item);
    if (found == items.end())
      return false;
    // Careless: without a zero when the text fills the buffer.
    strncpy(block.buffer, (found->second.*text).c_str(), block.size);
    return true;
  }
};

// ---- recognition --------------------------------------------------------------------------------

class OptionTreeRecognition : public testing::Test {
protected:
  mrUploadCatcher uploads;
  mrOptionTreeFactory factory;
  mrTestFrame dialog;
  TestOptionTree tree{dialog};
  void* display = tree.add(nullptr, "Display");
  void* grid = tree.add(display, "Grid");
  void* visible = tree.add(grid, "Visible", 2, "1");
  void* step = tree.add(grid, "Step", 1, "2.5");
  std::array<mrOptionTreeNotification, 8> told = {};
  size_t told_count = 0;

  LPARAM changed(HWND sender, void* item, UINT code = static_cast<UINT>(-1105)) {
    told[told_count] = {{sender, 7, code}, item};
    return reinterpret_cast<LPARAM>(&told[told_count++]);
  }
  mrTapeStep notified(int kind, LPARAM lparam, mrTapeAnswer answer, mrTapeUploads sent) {
    return {kind, dialog, WM_NOTIFY, 7, lparam, answer, std::move(sent)};
  }
  mrTapeUploads value_of(void* item, int32_t is_check, const std::string& path, const std::string& value) {
    mrOptionTreeRec rec = {};
    rec.tree = tree;
    rec.item = item;
    rec.is_check = is_check;
    strcpy(rec.path, path.c_str());
    strcpy(rec.value, value.c_str());
    return record(rec);
  }
  void play(const std::vector<mrTapeStep>& tape) { play_tape(factory, uploads, tape); }
};

TEST_F(OptionTreeRecognition, ChangedValueIsUploadedWithTheLabelsFromTheRoot) {
  play({
      notified(hookCallWndProc, changed(tree, visible), claimed,
               value_of(visible, 1, "Display|Grid|Visible", "1")),
      notified(hookCallWndProc, changed(tree, step), claimed, value_of(step, 0, "Display|Grid|Step", "2.5")),
      notified(hookGetMessage, changed(tree, grid), claimed, value_of(grid, 0, "Display|Grid", "")),
      notified(hookCallWndProcRet, changed(tree, grid), left, none),
  });
}

TEST_F(OptionTreeRecognition, RootItemHasItsLabelAlone) {
  play({notified(hookCallWndProc, changed(tree, display), claimed, value_of(display, 0, "Display", ""))});
}

TEST_F(OptionTreeRecognition, NoItemHasNoPath) {
  play({notified(hookCallWndProc, changed(tree, nullptr), claimed, value_of(nullptr, 0, "", ""))});
}

TEST_F(OptionTreeRecognition, OnlyKindTwoIsACheckBox) {
  for (const LRESULT kind : {0, 1, 3}) {
    tree.items[step].kind = kind;
    play({notified(hookCallWndProc, changed(tree, step), claimed,
                   value_of(step, 0, "Display|Grid|Step", "2.5"))});
  }
}

// The item is the field behind the header of the notification.
TEST_F(OptionTreeRecognition, NotificationIsReadByItsLayout) {
  struct {
    HWND sender;
    UINT_PTR id;
    UINT code;
    UINT padding;
    void* item;
  } raw = {tree, 7, static_cast<UINT>(-1105), 0xCDCDCDCD, step};
  play({notified(hookCallWndProc, reinterpret_cast<LPARAM>(&raw), claimed,
                 value_of(step, 0, "Display|Grid|Step", "2.5"))});
}

TEST_F(OptionTreeRecognition, ValueAndLabelAreCutAt259Characters) {
  for (const size_t length : {259, 260, 300}) {
    void* const item = tree.add(nullptr, std::string(length, 'l'), 1, std::string(length, 'v'));
    play({notified(hookCallWndProc, changed(tree, item), claimed,
                   value_of(item, 0, std::string(259, 'l'), std::string(259, 'v')))});
  }
}

TEST_F(OptionTreeRecognition, PathIsCutAtItsEnd) {
  void* const outer = tree.add(nullptr, std::string(100, 'o'));
  void* const inner = tree.add(outer, std::string(100, 'i'));
  void* const item = tree.add(inner, std::string(57, 'x') + "yz");
  const std::string beginning = std::string(100, 'o') + "|" + std::string(100, 'i') + "|";
  play({notified(hookCallWndProc, changed(tree, item), claimed,
                 value_of(item, 0, beginning + std::string(57, 'x'), ""))});

  void* const longest = tree.add(nullptr, std::string(300, 'l'));
  void* const below = tree.add(longest, "below");
  play({notified(hookCallWndProc, changed(tree, below), claimed,
                 value_of(below, 0, std::string(259, 'l'), ""))});
}

TEST_F(OptionTreeRecognition, TreeThatDoesNotAnswerLeavesEmptyTexts) {
  play({notified(hookCallWndProc, changed(tree, visible), claimed,
                 value_of(visible, 1, "Display|Grid|Visible", "1"))});
  void* const unknown = reinterpret_cast<void*>(0x1230);
  play({notified(hookCallWndProc, changed(tree, unknown), claimed, value_of(unknown, 0, "", ""))});
}

// Labels without a text stand in the path as nothing between two bars.
TEST_F(OptionTreeRecognition, EmptyLabels) {
  void* const outer = tree.add(nullptr, "outer");
  void* const middle = tree.add(outer, "");
  void* const inner = tree.add(middle, "inner");
  play({
      notified(hookCallWndProc, changed(tree, inner), claimed, value_of(inner, 0, "outer||inner", "")),
      // An item without a label gives no path to put the next label in front of.
      notified(hookCallWndProc, changed(tree, middle), claimed, value_of(middle, 0, "outer", "")),
  });
}

TEST_F(OptionTreeRecognition, HiddenTreeIsRecordedToo) {
  ShowWindow(tree, SW_HIDE);
  EnableWindow(tree, FALSE);
  play({notified(hookCallWndProc, changed(tree, step), claimed,
                 value_of(step, 0, "Display|Grid|Step", "2.5"))});
}

TEST_F(OptionTreeRecognition, TreeAndThreeLevelsOfWindowsInItAreClaimed) {
  const mrTestWindow first("TestFrame", "", child, tree, 1);
  const mrTestWindow second("TestFrame", "", child, first, 2);
  const mrTestWindow third("Edit", "", child, second, 3);
  const mrTestWindow fourth("Edit", "", child, third, 4);
  for (const HWND window : {tree.get(), first.get(), second.get(), third.get()}) {
    play({
        {hookGetMessage, window, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), claimed, none},
        {hookGetMessage, window, WM_CHAR, 'a', 0, claimed, none},
        {hookCallWndProc, window, WM_NOTIFY, 7, changed(tree, step), claimed, none},
        {hookCallWndProcRet, window, WM_PAINT, 0, 0, left, none},
        {hookCbt, window, WM_PAINT, 0, 0, left, none},
    });
    told_count = 0;
  }
  play({{hookGetMessage, fourth, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), left, none}});
  EXPECT_THAT(tree.requests, IsEmpty());
}

TEST_F(OptionTreeRecognition, OtherMessagesAreLeftToTheOthers) {
  const TestOptionTree almost(dialog, "zqpOptionTre");
  play({
      {hookGetMessage, dialog, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), left, none},
      {hookGetMessage, nullptr, WM_NOTIFY, 7, changed(tree, step), left, none},
      {hookCallWndProc, dialog, WM_COMMAND, 7, changed(tree, step), left, none},
      notified(hookCallWndProc, 0, left, none),
      notified(hookCallWndProc, changed(tree, step, static_cast<UINT>(-1104)), left, none),
      notified(hookCallWndProc, changed(nullptr, step), left, none),
      notified(hookCallWndProc, changed(almost, step), left, none),
  });
  EXPECT_THAT(tree.requests, IsEmpty());
}

TEST_F(OptionTreeRecognition, ClassOfAWindow) {
  const TestOptionTree own(dialog, "zqpOptionTreeOwn");
  EXPECT_TRUE(factory.check_hwnd(tree));
  EXPECT_TRUE(factory.check_hwnd(own));
  EXPECT_FALSE(factory.check_hwnd(dialog));
  EXPECT_FALSE(factory.check_hwnd(nullptr));
}

// A tree that names an item its own ancestor must not keep the host in the hook.
TEST_F(OptionTreeRecognition, ClimbToTheRootIsBounded) {
  tree.items[display].parent = grid;
  feed(factory, hookCallWndProc, dialog, WM_NOTIFY, 7, changed(tree, step));
  EXPECT_EQ(1000, std::count(tree.requests.begin(), tree.requests.end(), WPARAM(5)));
  ASSERT_EQ(1u, uploads.count());
  EXPECT_EQ(259u, strlen(uploads.last_as<mrOptionTreeRec>().path));
}

TEST_F(OptionTreeRecognition, DebuggerOutputFollowsTheNotifications) {
  const mrDebugLines debugger;
  play({notified(hookCallWndProc, changed(tree, step, static_cast<UINT>(NM_CLICK)), left, none)});
  EXPECT_THAT(debugger.lines(), ElementsAre("notify...\n"));
  play({
      notified(hookCallWndProc, 0, left, none),
      {hookCallWndProc, dialog, WM_COMMAND, 7, 0, left, none},
      {hookCallWndProc, tree, WM_NOTIFY, 7, changed(tree, step), claimed, none},
  });
  EXPECT_THAT(debugger.lines(), ElementsAre("notify...\n"));
  play({notified(hookCallWndProc, changed(tree, step), claimed,
                 value_of(step, 0, "Display|Grid|Step", "2.5"))});
  EXPECT_THAT(debugger.lines(), ElementsAre("notify...\n", "notify...\n", "Class and message checked...\n"));
}

// ---- building -----------------------------------------------------------------------------------

class OptionTreeBuilder : public testing::Test {
protected:
  mrTestRecorder recorder;
  mrTestFrame dialog;
  TestOptionTree tree{dialog};
  TestOptionTree other{dialog};

  void receive(uintptr_t item, int32_t is_check, const std::string& path, const std::string& value,
               HWND of = nullptr) {
    mrOptionTreeRec rec = {};
    rec.tree = of ? of : tree.get();
    rec.item = reinterpret_cast<void*>(item);
    rec.is_check = is_check;
    strcpy(rec.path, path.c_str());
    strcpy(rec.value, value.c_str());
    recorder.receive(factoryOptionTree, rec);
  }
};

TEST_F(OptionTreeBuilder, TextIsAStatementOnTheTree) {
  receive(16, 0, "A|B", "2.5");
  EXPECT_THAT(recorder.statements(), ElementsAre("GetItemByPath(\"A|B\").Text = \"2.5\";"));
  EXPECT_EQ(tree.get(), recorder.last_action()->get_path()[0]->window);
  EXPECT_NE(nullptr, dynamic_cast<mrOptionTree*>(recorder.last_action()));
}

TEST_F(OptionTreeBuilder, CheckBoxIsCheckedByTheValueOne) {
  receive(16, 1, "A|B", "1");
  receive(32, 1, "A|C", "0");
  receive(48, 1, "A|D", "");
  receive(64, 1, "A|E", "true");
  receive(80, 1, "A|F", "10");
  EXPECT_THAT(recorder.statements(),
              ElementsAre("GetItemByPath(\"A|B\").Checked = true;", "GetItemByPath(\"A|C\").Checked = false;",
                          "GetItemByPath(\"A|D\").Checked = false;",
                          "GetItemByPath(\"A|E\").Checked = false;",
                          "GetItemByPath(\"A|F\").Checked = false;"));
}

TEST_F(OptionTreeBuilder, PathAndTextAreQuoted) {
  receive(16, 0, "Say \"a\\b\"|\xE4", "1\t\"2\"\x01");
  EXPECT_THAT(recorder.statements(),
              ElementsAre("GetItemByPath(\"Say \\\"a\\\\b\\\"|\xE4\").Text = \"1\\t\\\"2\\\"\\x01\";"));
}

TEST_F(OptionTreeBuilder, LongestTextsAreWrittenWhole) {
  receive(16, 0, std::string(259, 'p'), std::string(259, 'v'));
  EXPECT_THAT(recorder.statements(), ElementsAre("GetItemByPath(\"" + std::string(259, 'p') +
                                                 "\").Text = \"" + std::string(259, 'v') + "\";"));
}

TEST_F(OptionTreeBuilder, RepeatedEditsOfOneItemEndAsTheLast) {
  receive(16, 0, "A|B", "1");
  receive(16, 0, "A|B", "12");
  receive(16, 0, "A|B", "123");
  EXPECT_THAT(recorder.statements(), ElementsAre("GetItemByPath(\"A|B\").Text = \"123\";"));
}

TEST_F(OptionTreeBuilder, TwoItemsInTurnGiveTwoStatementsEach) {
  receive(16, 0, "A|B", "1");
  receive(32, 0, "A|B", "2");
  receive(16, 0, "A|B", "3");
  EXPECT_THAT(recorder.statements(),
              ElementsAre("GetItemByPath(\"A|B\").Text = \"1\";", "GetItemByPath(\"A|B\").Text = \"2\";",
                          "GetItemByPath(\"A|B\").Text = \"3\";"));
}

TEST_F(OptionTreeBuilder, SameItemOfAnotherTreeIsAnotherItem) {
  receive(16, 0, "A|B", "1");
  receive(16, 0, "A|B", "2", other);
  receive(16, 0, "A|B", "3");
  EXPECT_EQ(3u, recorder.statements().size());
}

TEST_F(OptionTreeBuilder, ARunEndsWithAnotherKindOfAction) {
  receive(16, 0, "A|B", "1");
  recorder.receive(factoryWindow,
                   std::array<uint64_t, 5>{2, reinterpret_cast<uint64_t>(tree.get()), 0, 0, 0});
  receive(16, 0, "A|B", "2");
  EXPECT_THAT(recorder.statements(), ElementsAre("GetItemByPath(\"A|B\").Text = \"1\";", "Close();",
                                                 "GetItemByPath(\"A|B\").Text = \"2\";"));
}

TEST_F(OptionTreeBuilder, ActionKnowsItsTreeAndItem) {
  auto* const factory = static_cast<mrBaseWindowFactory*>(get_factory(factoryOptionTree, true));
  int item = 0;
  int another = 0;
  const mrOptionTree action(tree, factory, &item);
  EXPECT_TRUE(action.is(tree, &item));
  EXPECT_FALSE(action.is(tree, &another));
  EXPECT_FALSE(action.is(other, &item));
}

TEST_F(OptionTreeBuilder, LastActionWithoutAPathIsAnInvalidArgument) {
  auto* const factory = static_cast<mrBaseWindowFactory*>(get_factory(factoryOptionTree, true));
  recorder.m_actions.AddTail(new mrOptionTree(nullptr, factory, nullptr));
  EXPECT_THROW(receive(16, 0, "A", "1"), CInvalidArgException);
}

TEST_F(OptionTreeBuilder, ContextMenuIsNotClaimed) {
  EXPECT_EQ(contextMenuNotClaimed,
            get_factory(factoryOptionTree, true)->context_menu_invoke(tree, "zqpOptionTree", CPoint(1, 1)));
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
}

// ---- declaration ----------------------------------------------------------------------------------

class OptionTreeDeclaration : public testing::Test {
protected:
  mrTestRecorder recorder;
  mrActionFactory& factory = *get_factory(factoryOptionTree, true);
};

TEST_F(OptionTreeDeclaration, TreeIsDeclaredByItsId) {
  const mrDeclared expected = {declaredByControlId, "OptionTree(7)", "OptionTree(7, mpRECURSIVE_SEARCH)",
                               "OptionTree_7"};
  EXPECT_EQ(expected, declare(factory, control_info("zqpOptionTree", 7, "Options")));
}

TEST_F(OptionTreeDeclaration, NameFromTheHostComesFirst) {
  const mrDeclared expected = {declaredByName, "OptionTreeByID(\"options\")", "OptionTreeByID(\"options\")",
                               "options"};
  EXPECT_EQ(expected, declare(factory, control_info("zqpOptionTree", 7, "", 0, "options")));
}

TEST_F(OptionTreeDeclaration, OtherClassesAreNotDeclared) {
  EXPECT_EQ(mrDeclared(), declare(factory, control_info("zqpOptionTre", 7)));
  EXPECT_EQ(mrDeclared(), declare(factory, control_info("OptionTree", 7)));
}

TEST(OptionTreeFactory, IsOfItsType) {
  mrOptionTreeFactory factory;
  EXPECT_EQ(11, factory.get_factory_type());
  EXPECT_EQ(11, get_factory(11, true)->get_factory_type());
}
