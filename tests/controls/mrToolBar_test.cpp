// What the recorder process makes of uploaded gestures: chains of windows, statements, declarations, script.
#include "controls/mrToolBar.h"

#include "hooks/mrDispatcher.h"
#include "tests/controls/toolbar_windows.h"
#include "tests/support/declared.h"
#include "tests/support/named_ids.h"
#include "tests/support/recording.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// A window handle of another process, as far as this one can tell.
HWND fake_window(int number) { return reinterpret_cast<HWND>(static_cast<INT_PTR>(0x70000000 + number * 4)); }
HMENU fake_menu(int number) { return reinterpret_cast<HMENU>(static_cast<INT_PTR>(0x60000000 + number * 4)); }

mrToolbarRec menu_level(int number, int index, int id, const char* text, unsigned state = 0) {
  return on_item(empty_level(fake_window(number), fake_menu(number), 0, ""), index, id, text, MFT_STRING,
                 state);
}

mrToolbarRec button_level(HWND toolbar, int index, int id, const char* text, unsigned style = BTNS_BUTTON,
                          unsigned state = TBSTATE_ENABLED) {
  return on_item(empty_level(toolbar, nullptr, 50, "Drawing"), index, id, text, style, state);
}

// "class 'text' id flags" of one level.
std::string describe(const mrWindowInfo& info) {
  return std::string(info.class_name) + " '" + info.text + "' " + std::to_string(info.id) +
         (info.flags ? " flags " + std::to_string(info.flags) : "");
}

// Answers a context menu request, and notes that it was asked.
class AskedFactory : public mrBaseWindowFactory {
public:
  AskedFactory(int type, std::vector<std::string>& log)
      : mrBaseWindowFactory("Asked", ""), m_type(type), m_log(log) {}

  mrFactoryType get_factory_type() override { return static_cast<mrFactoryType>(m_type); }
  bool handle_message(int, int, unsigned __int64, __int64) override { return false; }
  void copy_data(void*) override {}
  mrContextMenuRes context_menu_invoke(HWND window, const char* name, const CPoint& point) override {
    m_log.push_back(std::to_string(m_type));
    asked_for = window;
    asked_name = name;
    asked_point = point;
    return answer;
  }

  mrContextMenuRes answer = contextMenuNotClaimed;
  HWND asked_for = nullptr;
  std::string asked_name;
  CPoint asked_point;

private:
  int m_type;
  std::vector<std::string>& m_log;
};

}  // namespace

class ToolbarBuilder : public testing::Test {
protected:
  mrTestRecorder recorder;
  mrTestFrame frame;
  mrTestWindow view{(register_test_class("TestView"), "TestView"), "View", visible_child, frame, 70};
  CommonToolbar toolbar{frame};

  void receive(mrToolbarTracking state, HWND start, int x, int y, const std::vector<mrToolbarRec>& levels) {
    std::string bytes = gesture(state, start, x, y, levels).front();
    recorder.copy_data(factoryToolBar, bytes.data());
  }

  // The path of the last action, down to the top-level window.
  std::vector<std::string> chain() {
    std::vector<std::string> levels;
    for (const mrWindowInfo* info : recorder.last_action()->get_path())
      levels.push_back(describe(*info));
    return levels;
  }
  std::string statement() { return recorder.last_action()->get_action_string().str(); }
};

// ---- chains --------------------------------------------------------------------------------------

TEST_F(ToolbarBuilder, ToolbarButtonStandsOnItsToolbar) {
  receive(mrTrackToolbarClick, toolbar, 3, 4, {button_level(toolbar, 0, 101, "New")});
  EXPECT_THAT(chain(), ElementsAre("mrToolbarButtonClass 'New' 101", "ToolbarWindow32 'Drawing' 50",
                                   "TestFrame 'Test frame' 0 flags 16"));
  EXPECT_EQ("Click();", statement());
  const auto* action = dynamic_cast<mrToolBar*>(recorder.last_action());
  ASSERT_NE(nullptr, action);
  EXPECT_EQ(toolbar.get(), action->get_window());
  EXPECT_EQ(toolbar.get(), action->get_path()[0]->window);
}

TEST_F(ToolbarBuilder, DropDownToolbarStandsOnTheButtonThatOpenedIt) {
  receive(mrTrackToolbarClick, toolbar, 3, 4,
          {button_level(toolbar, 5, 105, "Colour"), button_level(fake_window(1), 0, 401, "Red")});
  EXPECT_THAT(chain(), ElementsAre("mrToolbarButtonClass 'Red' 401", "mrPopupToolbarClass 'Colour' 105",
                                   "mrToolbarButtonClass 'Colour' 105", "ToolbarWindow32 'Drawing' 50",
                                   "TestFrame 'Test frame' 0 flags 16"));
  EXPECT_EQ(fake_window(1), recorder.last_action()->get_path()[0]->window);
  EXPECT_EQ(toolbar.get(), recorder.last_action()->get_path()[1]->window);
  EXPECT_EQ(toolbar.get(), recorder.last_action()->get_path()[2]->window);
}

TEST_F(ToolbarBuilder, MenuBarCommandStandsOnEverySubmenuAndTheMainMenu) {
  mrToolbarRec bar = menu_level(1, 0, 1, "&File");
  bar.hwnd = frame;
  receive(mrTrackMainMenu, frame, 0, 0, {bar, menu_level(2, 2, 13, "E&xport"), menu_level(3, 1, 132, "SVG")});
  EXPECT_THAT(chain(), ElementsAre("mrToolbarButtonClass 'SVG' 132", "mrPopupToolbarClass 'E&xport' 13",
                                   "mrToolbarButtonClass 'E&xport' 13", "mrPopupToolbarClass '&File' 1",
                                   "mrToolbarButtonClass '&File' 1", "mrMainMenuClass '' 0",
                                   "TestFrame 'Test frame' 0 flags 16"));
  EXPECT_EQ("Checked = true;", statement());
  EXPECT_EQ(frame.get(), recorder.last_action()->get_window());
  EXPECT_EQ(frame.get(), recorder.last_action()->get_path()[5]->window);
}

TEST_F(ToolbarBuilder, ContextMenuCommandStandsOnTheWindowItIsFor) {
  receive(mrTrackContextMenu, view, -1, -1, {menu_level(2, 0, 11, "New")});
  EXPECT_THAT(chain(), ElementsAre("mrToolbarButtonClass 'New' 11", "mrContextMenuClass '' 0",
                                   "TestView 'View' 70", "TestFrame 'Test frame' 0 flags 16"));
  EXPECT_EQ(view.get(), recorder.last_action()->get_window());
  EXPECT_EQ(view.get(), recorder.last_action()->get_path()[1]->window);
}

TEST_F(ToolbarBuilder, KeyboardGestureHasNoRootOfItsOwn) {
  receive(mrTrackToolbarFocus, toolbar, 0, 0, {button_level(toolbar, 0, 101, "New")});
  EXPECT_THAT(chain(), ElementsAre("mrToolbarButtonClass 'New' 101", "ToolbarWindow32 'Drawing' 50",
                                   "TestFrame 'Test frame' 0 flags 16"));
}

TEST_F(ToolbarBuilder, ItemIsKnownByIdTextOrPosition) {
  receive(mrTrackToolbarClick, toolbar, 3, 4, {button_level(toolbar, 4, 104, "")});
  EXPECT_EQ("mrToolbarButtonClass '' 104", chain().front());
  receive(mrTrackToolbarClick, toolbar, 3, 4, {button_level(toolbar, 4, 0, "Nothing")});
  EXPECT_EQ("mrToolbarButtonClass 'Nothing' 0", chain().front());
  receive(mrTrackToolbarClick, toolbar, 3, 4, {button_level(toolbar, 4, 0, "")});
  EXPECT_EQ("mrToolbarButtonClass '' 4 flags 16", chain().front());
  receive(mrTrackMainMenu, frame, 0, 0, {menu_level(1, 2, 0, ""), menu_level(2, 3, 11, "New")});
  EXPECT_EQ("mrPopupToolbarClass '' 2 flags 16", chain()[1]);
}

TEST_F(ToolbarBuilder, LongestTextTravelsWhole) {
  const std::string text(259, 'w');
  receive(mrTrackToolbarClick, toolbar, 3, 4, {button_level(toolbar, 4, 104, text.c_str())});
  EXPECT_EQ(text, recorder.last_action()->get_path()[0]->text);
}

TEST_F(ToolbarBuilder, PaddingIsNotLookedAt) {
  std::string bytes =
      gesture(mrTrackToolbarClick, toolbar, 3, 4, {button_level(toolbar, 0, 101, "New")}).front();
  memset(&bytes[4], 0xEE, 4);
  memset(&bytes[bytes.size() - 7], 0xEE, 7);
  recorder.copy_data(factoryToolBar, bytes.data());
  EXPECT_EQ("mrToolbarButtonClass 'New' 101", chain().front());
}

TEST_F(ToolbarBuilder, UploadWithoutLevelsIsDropped) {
  receive(mrTrackToolbarClick, toolbar, 3, 4, {});
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
}

// ---- statements ----------------------------------------------------------------------------------

struct StatementCase {
  const char* name;
  bool is_menu;
  unsigned type;
  unsigned state;
  const char* expected;
};
// clang-format off
static constexpr StatementCase statement_cases[] = {
    {"plain button",                     false, BTNS_BUTTON,     TBSTATE_ENABLED,                   "Click();"},
    {"drop-down button",                 false, BTNS_DROPDOWN,   TBSTATE_ENABLED,                   "Click();"},
    {"group bit alone",                  false, BTNS_GROUP,      TBSTATE_CHECKED,                   "Click();"},
    {"check button, up",                 false, BTNS_CHECK,      TBSTATE_ENABLED,                   "Checked = true;"},
    {"check button, down",               false, BTNS_CHECK,      TBSTATE_ENABLED | TBSTATE_CHECKED, "Checked = false;"},
    {"button of a group, up",            false, BTNS_CHECKGROUP, TBSTATE_ENABLED,                   "Checked = true;"},
    {"a menu's check state is no button's", false, BTNS_CHECK,   MFS_CHECKED,                       "Checked = true;"},
    {"menu item, never checked",         true,  MFT_STRING,      MFS_ENABLED,                       "Checked = true;"},
    {"menu item, checked",               true,  MFT_STRING,      MFS_CHECKED,                       "Checked = false;"},
    {"menu item with a radio mark",      true,  MFT_RADIOCHECK,  MFS_CHECKED,                       "Checked = false;"},
    {"a button's check state is no menu's", true, MFT_STRING,    TBSTATE_CHECKED,                   "Checked = true;"},
};
// clang-format on

TEST_F(ToolbarBuilder, StatementFollowsFromTheChosenItem) {
  for (const StatementCase& c : statement_cases) {
    mrToolbarRec chosen = button_level(toolbar, 0, 101, "Item", c.type, c.state);
    chosen.hmenu = c.is_menu ? fake_menu(1) : nullptr;
    receive(mrTrackToolbarClick, toolbar, 3, 4, {button_level(toolbar, 0, 5, "Other", BTNS_CHECK), chosen});
    EXPECT_EQ(c.expected, statement()) << c.name;
  }
}

TEST_F(ToolbarBuilder, EveryGestureIsAnActionOfItsOwn) {
  receive(mrTrackToolbarClick, toolbar, 3, 4, {button_level(toolbar, 0, 101, "New")});
  receive(mrTrackToolbarClick, toolbar, 3, 4, {button_level(toolbar, 0, 101, "New")});
  EXPECT_THAT(recorder.statements(), ElementsAre("Click();", "Click();"));
}

// ---- whose context menu it is --------------------------------------------------------------------

class ContextMenuOwner : public ToolbarBuilder {
protected:
  std::vector<std::string> asked;
  std::vector<mrActionFactory*> originals;
  std::vector<std::unique_ptr<AskedFactory>> factories;

  // Every factory but the toolbar recorder itself, the logger among them.
  void SetUp() override {
    for (int type = first_factory_type; type <= last_factory_type; ++type) {
      if (type == factoryToolBar)
        continue;
      originals.push_back(get_factory(type, true));
      factories.emplace_back(new AskedFactory(type, asked));
      factories.back()->answer = type == factoryLogger ? contextMenuRecorded : contextMenuNotClaimed;
      register_factory(*factories.back());
    }
  }
  void TearDown() override {
    for (mrActionFactory* original : originals)
      register_factory(*original);
  }
  AskedFactory& factory(int type) { return *factories[type - 1 - (type > factoryToolBar ? 1 : 0)]; }
  void choose(int x, int y) { receive(mrTrackContextMenu, view, x, y, {menu_level(2, 0, 11, "New")}); }
};

TEST_F(ContextMenuOwner, IsAskedForFromTheHighestTypeDown) {
  choose(7, 9);
  EXPECT_THAT(asked, ElementsAre("17", "16", "15", "13", "12", "11", "10", "9", "8", "7", "6", "5", "4", "3",
                                 "2", "1"));
  EXPECT_TRUE(recorder.m_actions.IsEmpty()) << "nobody's";
}

TEST_F(ContextMenuOwner, IsAskedWithWindowClassAndPlace) {
  choose(7, 9);
  EXPECT_EQ(view.get(), factory(1).asked_for);
  EXPECT_EQ("TestView", factory(1).asked_name);
  EXPECT_EQ(CPoint(7, 9), factory(1).asked_point);
}

TEST_F(ContextMenuOwner, ThatClaimsFirstDecides) {
  factory(9).answer = contextMenuRecorded;
  factory(1).answer = contextMenuRefused;
  choose(0, 0);
  EXPECT_THAT(asked, ElementsAre("17", "16", "15", "13", "12", "11", "10", "9"));
  EXPECT_THAT(recorder.statements(), ElementsAre("Checked = true;"));
}

TEST_F(ContextMenuOwner, ThatRefusesDropsTheCommand) {
  factory(8).answer = contextMenuRefused;
  factory(1).answer = contextMenuRecorded;
  choose(7, 9);
  EXPECT_EQ("8", asked.back());
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
}

TEST_F(ContextMenuOwner, IsAskedInRawModeToo) {
  recorder.set_raw_mode(true);
  factory(9).answer = contextMenuRecorded;
  choose(7, 9);
  recorder.set_raw_mode(false);
  EXPECT_THAT(recorder.statements(), ElementsAre("Checked = true;"));
}

TEST_F(ContextMenuOwner, IsNotAskedForAMenuOfTheKeyboard) {
  choose(-1, -1);
  choose(5, -1);
  choose(-1, 5);
  EXPECT_THAT(asked, IsEmpty());
  EXPECT_EQ(3, recorder.m_actions.GetCount());
}

TEST_F(ContextMenuOwner, IsNotAskedForOtherGestures) {
  receive(mrTrackToolbarClick, toolbar, 3, 4, {button_level(toolbar, 0, 101, "New")});
  receive(mrTrackMainMenu, frame, 0, 0, {menu_level(1, 0, 1, "File"), menu_level(2, 0, 11, "New")});
  EXPECT_THAT(asked, IsEmpty());
  EXPECT_EQ(2, recorder.m_actions.GetCount());
}

// With the library's own factories: the generic recorder's request, in place of the right click.
TEST_F(ToolbarBuilder, ContextMenuOfAPlainWindowFollowsItsRequest) {
  receive(mrTrackContextMenu, view, 7, 9, {menu_level(2, 0, 11, "New")});
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(7, 9);", "Checked = true;"));
}

TEST_F(ToolbarBuilder, ContextMenuOfAnEditIsRefused) {
  mrTestWindow edit("Edit", "", visible_child, frame, 4);
  receive(mrTrackContextMenu, edit, 7, 9, {menu_level(2, 0, 11, "New")});
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
}

TEST_F(ToolbarBuilder, NoContextMenuIsTheToolbarRecordersOwn) {
  EXPECT_EQ(contextMenuNotClaimed,
            get_factory(factoryToolBar, true)->context_menu_invoke(toolbar, TOOLBARCLASSNAMEA, CPoint(1, 1)));
}

// ---- declarations --------------------------------------------------------------------------------

class ToolbarDeclaration : public testing::Test {
protected:
  mrTestRecorder recorder;
  mrActionFactory& factory = *get_factory(factoryToolBar, true);

  static mrWindowInfo item(const char* class_name, __int64 id, const char* text, int flags = 0) {
    mrWindowInfo info;
    strcpy(info.class_name, class_name);
    strcpy(info.text, text);
    info.id = id;
    info.flags = flags;
    return info;
  }
};

TEST_F(ToolbarDeclaration, ToolbarsAreDeclaredByTextAndId) {
  for (const char* class_name : {"ToolbarWindow32", "BCGToolBar:400000", "BCGPToolBar"}) {
    EXPECT_EQ((mrDeclared{declaredByControlId, "Toolbar(\"Draw \\\"2D\\\"\", 50)",
                          "Toolbar(\"Draw \\\"2D\\\"\", 50, mpRECURSIVE_SEARCH)", "Draw \"2D\""}),
              declare(factory, control_info(class_name, 50, "Draw \"2D\"")))
        << class_name;
    EXPECT_EQ((mrDeclared{declaredByControlId, "Toolbar(\"\", 50)", "Toolbar(\"\", 50, mpRECURSIVE_SEARCH)",
                          "Toolbar_50"}),
              declare(factory, control_info(class_name, 50)))
        << class_name;
  }
}

// Two names for one number: only dialog and library tell which of them it is. A command has no dialog.
TEST_F(ToolbarDeclaration, IdOfAToolbarIsNamedInItsDialogAndLibrary) {
  mrIDNamer& namer = recorder.get_namer();
  namer.add_constant("IDM_group", "IDM_DRAW", 50);
  namer.add_constant("IDC_group", "IDC_DRAW", 50);
  name_control(namer, "samplecad", 4711, 50, "IDC_TOOLBAR_DRAW");
  mrWindowInfo info = control_info("ToolbarWindow32", 50);
  EXPECT_EQ("Toolbar(\"\", IDC_group.IDC_DRAW)", declare(factory, info).declaration);
  info.dialog_template_id = 4711;
  strcpy(info.resource_library, "samplecad");
  EXPECT_EQ((mrDeclared{declaredByControlId, "Toolbar(\"\", IDC_TOOLBAR_DRAW)",
                        "Toolbar(\"\", IDC_TOOLBAR_DRAW, mpRECURSIVE_SEARCH)", "Toolbar_IDC_TOOLBAR_DRAW"}),
            declare(factory, info));

  mrWindowInfo command = item("mrToolbarButtonClass", 50, "");
  command.dialog_template_id = 4711;
  strcpy(command.resource_library, "samplecad");
  EXPECT_EQ("GetItemByID(\"\", IDM_group.IDM_DRAW)", declare(factory, command).declaration);
}

TEST_F(ToolbarDeclaration, NameFromTheHostDoesNotMatter) {
  EXPECT_EQ((mrDeclared{declaredByControlId, "Toolbar(\"\", 50)", "Toolbar(\"\", 50, mpRECURSIVE_SEARCH)",
                        "Toolbar_50"}),
            declare(factory, control_info("ToolbarWindow32", 50, "", 0, "Drawing bar")));
}

TEST_F(ToolbarDeclaration, MenuRootsAreDeclaredLikeActiveDialogs) {
  EXPECT_EQ((mrDeclared{declaredActiveDialog, "MainMenu()", "MainMenu()", "MainMenu"}),
            declare(factory, item("mrMainMenuClass", 0, "")));
  EXPECT_EQ((mrDeclared{declaredActiveDialog, "CurrentContextMenu()", "CurrentContextMenu()",
                        "CurrentContextMenu"}),
            declare(factory, item("mrContextMenuClass", 0, "")));
}

TEST_F(ToolbarDeclaration, ItemsAreDeclaredByTextAndCommandOrByPosition) {
  const char* const button = "mrToolbarButtonClass";
  EXPECT_EQ((mrDeclared{declaredByControlId, "GetItemByID(\"&New\\tCtrl+N\", 11)",
                        "GetItemByID(\"&New\\tCtrl+N\", 11)", "TBB_&New\tCtrl+N"}),
            declare(factory, item(button, 11, "&New\tCtrl+N")));
  EXPECT_EQ(
      (mrDeclared{declaredByControlId, "GetItemByID(\"\", 11)", "GetItemByID(\"\", 11)", "ToolbarButton_11"}),
      declare(factory, item(button, 11, "")));
  EXPECT_EQ((mrDeclared{declaredByControlId, "GetItemByID(\"Nothing\", 0)", "GetItemByID(\"Nothing\", 0)",
                        "TBB_Nothing"}),
            declare(factory, item(button, 0, "Nothing")));
  EXPECT_EQ((mrDeclared{declaredByControlId, "GetItem(4)", "GetItem(4)", "ToolbarButton_4"}),
            declare(factory, item(button, 4, "", mr_window_id_is_position)));
}

TEST_F(ToolbarDeclaration, OpenedPopupsAreDeclaredByExpanding) {
  const char* const popup = "mrPopupToolbarClass";
  EXPECT_EQ((mrDeclared{declaredByControlId, "Expand()", "Expand()", "PT_&File"}),
            declare(factory, item(popup, 1, "&File")));
  EXPECT_EQ((mrDeclared{declaredByControlId, "Expand()", "Expand()", "PopupToolbar_1"}),
            declare(factory, item(popup, 1, "")));
  EXPECT_EQ((mrDeclared{declaredByControlId, "Expand()", "Expand()", "PopupToolbar_4"}),
            declare(factory, item(popup, 4, "", mr_window_id_is_position)));
}

TEST_F(ToolbarDeclaration, CommandsHaveTheirNames) {
  recorder.get_namer().add_constant("samplecad", "IDM_FILE_NEW", 11);
  EXPECT_EQ((mrDeclared{declaredByControlId, "GetItemByID(\"New\", samplecad.IDM_FILE_NEW)",
                        "GetItemByID(\"New\", samplecad.IDM_FILE_NEW)", "TBB_New"}),
            declare(factory, item("mrToolbarButtonClass", 11, "New")));
  EXPECT_EQ("PopupToolbar_samplecad.IDM_FILE_NEW",
            declare(factory, item("mrPopupToolbarClass", 11, "")).identifier);
  EXPECT_EQ("GetItem(11)",
            declare(factory, item("mrToolbarButtonClass", 11, "", mr_window_id_is_position)).declaration)
      << "a position is no command";
}

TEST_F(ToolbarDeclaration, OtherClassesAreNotDeclared) {
  for (const char* class_name :
       {"ToolbarWindow32x", "mrToolbarButtonClassX", "mrMainMenu", "#32768", "Button"})
    EXPECT_EQ(mrDeclared(), declare(factory, control_info(class_name, 7, "Text"))) << class_name;
}

// ---- the script ----------------------------------------------------------------------------------

TEST_F(ToolbarBuilder, ScriptReachesItemsThroughTheirMenusAndToolbars) {
  recorder.get_namer().add_constant("cad", "IDM_GRID", 102);
  mrToolbarRec bar = menu_level(1, 0, 1, "&File");
  bar.hwnd = frame;
  receive(mrTrackMainMenu, frame, 0, 0, {bar, menu_level(2, 2, 13, "E&xport"), menu_level(3, 1, 132, "SVG")});
  receive(mrTrackMainMenu, frame, 0, 0, {bar, menu_level(2, 0, 11, "New", MFS_CHECKED)});
  receive(mrTrackToolbarClick, toolbar, 3, 4, {button_level(toolbar, 1, 102, "Grid", BTNS_CHECK)});
  receive(mrTrackToolbarClick, toolbar, 3, 4, {button_level(toolbar, 4, 0, "")});
  receive(mrTrackContextMenu, view, -1, -1, {menu_level(2, 0, 12, "Open")});
  CString script;
  recorder.get_script(script);

  const std::string module = recorder.last_action()->get_path()[2]->module;
  const std::string text = script.str();
  const size_t begin = text.find("  // Script begin");
  const size_t end = text.find("// Windows declarations end");
  ASSERT_NE(std::string::npos, begin);
  ASSERT_NE(std::string::npos, end);
  std::string expected = "  // Script begin\r\n"
                         "  Main_MOD().SetFocus();\r\n"
                         "  TBB_SVG().Checked = true;\r\n"
                         "  TBB_New().Checked = false;\r\n"
                         "  TBB_Grid().Checked = true;\r\n"
                         "  ToolbarButton_4().Click();\r\n"
                         "  TBB_Open().Checked = true;\r\n"
                         "  // Script end\r\n"
                         "  //===========================================================================\r\n"
                         "}\r\n"
                         "\r\n"
                         "//=============================================================================\r\n"
                         "// Windows declarations begin\r\n"
                         "function Main_MOD()\r\n"
                         "{\r\n"
                         "  return macro_player.\r\n"
                         "    MainWindow(\"MOD\", \"\", \"TestFrame\");\r\n"
                         "}\r\n"
                         "\r\n"
                         "function PT_File()\r\n"
                         "{\r\n"
                         "  return Main_MOD().\r\n"
                         "    MainMenu().\r\n"
                         "      GetItemByID(\"&File\", 1).\r\n"
                         "        Expand();\r\n"
                         "}\r\n"
                         "\r\n"
                         "function TBB_SVG()\r\n"
                         "{\r\n"
                         "  return PT_File().\r\n"
                         "    GetItemByID(\"E&xport\", 13).\r\n"
                         "      Expand().\r\n"
                         "        GetItemByID(\"SVG\", 132);\r\n"
                         "}\r\n"
                         "\r\n"
                         "function TBB_New()\r\n"
                         "{\r\n"
                         "  return PT_File().\r\n"
                         "    GetItemByID(\"New\", 11);\r\n"
                         "}\r\n"
                         "\r\n"
                         "function Drawing()\r\n"
                         "{\r\n"
                         "  return Main_MOD().\r\n"
                         "    Toolbar(\"Drawing\", 50);\r\n"
                         "}\r\n"
                         "\r\n"
                         "function TBB_Grid()\r\n"
                         "{\r\n"
                         "  return Drawing().\r\n"
                         "    GetItemByID(\"Grid\", cad.IDM_GRID);\r\n"
                         "}\r\n"
                         "\r\n"
                         "function ToolbarButton_4()\r\n"
                         "{\r\n"
                         "  return Drawing().\r\n"
                         "    GetItem(4);\r\n"
                         "}\r\n"
                         "\r\n"
                         "function TBB_Open()\r\n"
                         "{\r\n"
                         "  return Main_MOD().\r\n"
                         "    CurrentContextMenu().\r\n"
                         "      GetItemByID(\"Open\", 12);\r\n"
                         "}\r\n"
                         "\r\n";
  for (size_t at = expected.find("MOD"); at != std::string::npos;
       at = expected.find("MOD", at + module.size()))
    expected.replace(at, 3, module);
  EXPECT_EQ(expected, text.substr(begin, end - begin));
}

// Script assembly forgets the window of a menu root, so that all commands of a menu share one.
TEST_F(ToolbarBuilder, ContextMenusOfTwoWindowsAreOneRoot) {
  receive(mrTrackContextMenu, view, -1, -1, {menu_level(2, 0, 12, "Open")});
  receive(mrTrackContextMenu, frame, -1, -1, {menu_level(3, 0, 12, "Open")});
  CString script;
  recorder.get_script(script);
  EXPECT_NE(-1, script.Find("  TBB_Open().Checked = true;\r\n  TBB_Open().Checked = true;\r\n"));
  EXPECT_EQ(-1, script.Find("TBB_Open_1"));
}
