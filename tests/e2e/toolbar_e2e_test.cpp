// End to end: toolbars, menus and context menus of SampleCad with real mouse and keyboard. Every test ends
// with a plain click on the status bar, which must be recorded as ever.
#include "apps/SampleCad/gallery.dev/gallery.h"
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "tests/support/e2e.h"
#include "tests/support/ready_file.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using Lines = std::vector<std::string>;

std::string id(int number) { return std::to_string(number); }

class ToolbarEndToEnd : public testing::Test {
protected:
  // A command may be slow to follow its gesture on a busy machine.
  void SetUp() override { stop_clock_of(host); }

  // Chooses items of the menu bar and of the menus that open, one after the other.
  void choose(const std::vector<std::string>& items) {
    const char* place = "menubar";
    for (const std::string& item : items) {
      user.click(places.middle(place, item));
      place = "menu";
    }
    places.wait_until_gone("menu");
  }
  void click_button(const std::string& toolbar, const std::string& button) {
    user.click(places.button(toolbar, button));
  }
  void click_status_bar() { user.click(client_place(find_child(host.frame(), "msctls_statusbar32"), 20, 5)); }
  void keys(const std::vector<WORD>& sequence) {
    for (const WORD key : sequence)
      user.key(key);
  }

  // The lines of the script after a last plain click, without what is the same in every one.
  Lines finish() {
    click_status_bar();
    recording.finish();
    Lines lines = recording.script_lines();
    EXPECT_EQ("  msctls_statusbar_3001().Click(1, 20, 5, 0);", lines.empty() ? "" : lines.back());
    if (!lines.empty())
      lines.pop_back();
    if (!lines.empty() && lines.front() == "  Main_SampleCad().SetFocus();")
      lines.erase(lines.begin());
    return lines;
  }
  // A window's declaration in the script.
  bool declares(const std::string& declaration) {
    return recording.script().find(declaration) != std::string::npos;
  }

  mrReadyFile places;
  mrSampleCad host{places.argument()};
  mrRecording recording{host};
  mrUser& user = recording.user;
};

}  // namespace

// ---- menu bar ------------------------------------------------------------------------------------

TEST_F(ToolbarEndToEnd, MenuBarByMouse) {
  choose({"View", "IDM_VIEW_GRID"});
  EXPECT_EQ((Lines{"  TBB_Grid_CtrlG().Checked = false;"}), finish());
}

TEST_F(ToolbarEndToEnd, MenuBarByMouseThreeLevelsDeep) {
  choose({"File", "Insert", "Bolt_circle", "IDM_INSERT_BOLTS_6"});
  EXPECT_EQ((Lines{"  TBB_6_bolts().Checked = true;"}), finish());
  EXPECT_TRUE(declares("function TBB_6_bolts()\r\n"
                       "{\r\n"
                       "  return Main_SampleCad().\r\n"
                       "    MainMenu().\r\n"
                       "      GetItemByID(\"&File\", " +
                       id(IDM_POPUP_FILE) +
                       ").\r\n"
                       "        Expand().\r\n"
                       "          GetItemByID(\"&Insert\", " +
                       id(IDM_POPUP_INSERT) +
                       ").\r\n"
                       "            Expand().\r\n"
                       "              GetItemByID(\"&Bolt circle\", " +
                       id(IDM_POPUP_BOLT_CIRCLE) +
                       ").\r\n"
                       "                Expand().\r\n"
                       "                  GetItemByID(\"&6 bolts\", " +
                       id(IDM_INSERT_BOLTS_6) + ");\r\n"));
}

TEST_F(ToolbarEndToEnd, MenuBarByAltAndArrowKeys) {
  keys({VK_MENU, VK_RIGHT, VK_RIGHT, VK_DOWN, VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN});
  EXPECT_EQ((Lines{"  TBB_Axes().Checked = false;"}), finish());
}

TEST_F(ToolbarEndToEnd, MenuBarByMnemonic) {
  user.key('V', {VK_MENU});
  user.key('G');
  EXPECT_EQ((Lines{"  TBB_Grid_CtrlG().Checked = false;"}), finish());
}

TEST_F(ToolbarEndToEnd, MenuBarByMnemonicThreeLevelsDeep) {
  user.key('F', {VK_MENU});
  keys({'I', 'B', '8'});
  EXPECT_EQ((Lines{"  TBB_8_bolts().Checked = true;"}), finish());
}

TEST_F(ToolbarEndToEnd, MenuCancelledByEscapeIsNoStatement) {
  user.key('V', {VK_MENU});
  places.rect("menu", "IDM_VIEW_GRID");
  keys({VK_ESCAPE, VK_ESCAPE});
  places.wait_until_gone("menu");
  EXPECT_EQ((Lines{}), finish());
}

// The click goes on to the window under the mouse.
TEST_F(ToolbarEndToEnd, MenuCancelledByAClickElsewhereIsThatClick) {
  user.click(places.middle("menubar", "View"));
  places.rect("menu", "IDM_VIEW_GRID");
  click_status_bar();
  places.wait_until_gone("menu");
  EXPECT_EQ((Lines{"  msctls_statusbar_3001().Click(1, 20, 5, 0);"}), finish());
}

TEST_F(ToolbarEndToEnd, MenuAfterACancelledMenuIsRecorded) {
  user.key('V', {VK_MENU});
  keys({VK_ESCAPE, VK_ESCAPE});
  user.key('V', {VK_MENU});
  user.key('G');
  EXPECT_EQ((Lines{"  TBB_Grid_CtrlG().Checked = false;"}), finish());
}

TEST_F(ToolbarEndToEnd, CommandThatTheProgramSendsItselfIsNoStatement) {
  choose({"View", "IDM_VIEW_HOME"});
  click_button("IDC_TOOLBAR_STANDARD", "IDM_VIEW_HOME");
  EXPECT_EQ((Lines{"  TBB_Home_CtrlHome().Checked = true;", "  TBB_Home().Click();"}), finish());
}

// It is another one than the chosen one, so it ends nothing.
TEST_F(ToolbarEndToEnd, CommandThatComesWhileAMenuIsOpenIsRecordedByItself) {
  user.key('V', {VK_MENU});
  places.rect("menu", "IDM_VIEW_GRID");
  SendMessageA(host.frame(), WM_COMMAND, IDM_VIEW_AXES, 0);
  user.key('G');
  EXPECT_EQ((Lines{"  Main_SampleCad().Command(" + id(IDM_VIEW_AXES) + ");",
                   "  TBB_Grid_CtrlG().Checked = false;"}),
            finish());
}

// ---- toolbars ------------------------------------------------------------------------------------

TEST_F(ToolbarEndToEnd, ToolbarButton) {
  click_button("IDC_TOOLBAR_STANDARD", "IDM_VIEW_HOME");
  EXPECT_EQ((Lines{"  TBB_Home().Click();"}), finish());
  EXPECT_TRUE(declares("function TBB_Home()\r\n"
                       "{\r\n"
                       "  return Main_SampleCad().\r\n"
                       "    Toolbar(\"Standard\", " +
                       id(IDC_TOOLBAR_STANDARD) +
                       ").\r\n"
                       "      GetItemByID(\"Home\", " +
                       id(IDM_VIEW_HOME) + ");\r\n"));
}

TEST_F(ToolbarEndToEnd, CheckButtonDownAndUp) {
  click_button("IDC_TOOLBAR_STANDARD", "IDM_VIEW_GRID");
  ASSERT_TRUE(recording.wait_for_statements(1));
  click_button("IDC_TOOLBAR_STANDARD", "IDM_VIEW_GRID");
  EXPECT_EQ((Lines{"  TBB_Grid().Checked = false;", "  TBB_Grid().Checked = true;"}), finish());
}

TEST_F(ToolbarEndToEnd, ButtonOfAGroupAndButtonWithoutText) {
  click_button("IDC_TOOLBAR_STANDARD", "IDM_MOUSE_PAN");
  click_button("IDC_TOOLBAR_STANDARD", "IDM_MOUSE_SELECT");
  EXPECT_EQ((Lines{"  TBB_Pan().Checked = true;", "  ToolbarButton_40314().Checked = true;"}), finish());
}

TEST_F(ToolbarEndToEnd, SeparatorAndPlaceBesideTheButtonsAreNoStatement) {
  click_button("IDC_TOOLBAR_STANDARD", "3");
  const HWND bar = find_child(host.frame(), "ToolbarWindow32");
  RECT room = {};
  GetClientRect(bar, &room);
  user.click(client_place(bar, room.right - 2, room.bottom - 2));
  EXPECT_EQ((Lines{}), finish());
}

TEST_F(ToolbarEndToEnd, PressThatIsReleasedBesideTheButtonsIsNoStatement) {
  const POINT button = places.button("IDC_TOOLBAR_STANDARD", "IDM_VIEW_GRID");
  user.drag(button, places.button("IDC_TOOLBAR_STANDARD", "3"));
  EXPECT_EQ((Lines{}), finish());
}

namespace {

class ToolbarInTime : public ToolbarEndToEnd {
protected:
  void SetUp() override {}  // the clock goes on
};

}  // namespace

TEST_F(ToolbarInTime, GestureThatNeverEndsRunsOut) {
  const POINT button = places.button("IDC_TOOLBAR_STANDARD", "IDM_VIEW_GRID");
  user.drag(button, places.button("IDC_TOOLBAR_STANDARD", "3"));
  const DWORD begin = GetTickCount();
  ASSERT_TRUE(wait_until([begin] { return GetTickCount() - begin > 1100; }));
  user.key('G', {VK_CONTROL});  // the same command, but none of the gesture any more
  click_button("IDC_TOOLBAR_STANDARD", "IDM_VIEW_GRID");
  EXPECT_EQ((Lines{"  Main_SampleCad().Command(" + id(IDM_VIEW_GRID) + ");", "  TBB_Grid().Checked = true;"}),
            finish());
}

TEST_F(ToolbarEndToEnd, DropDownOfAToolbarButton) {
  click_button("IDC_TOOLBAR_STANDARD", "IDM_VIEW_BACKGROUND");
  user.click(places.middle("menu", "IDM_VIEW_PAPER"));
  EXPECT_EQ((Lines{"  TBB_Paper().Checked = true;"}), finish());
  EXPECT_TRUE(declares("function TBB_Paper()\r\n"
                       "{\r\n"
                       "  return Main_SampleCad().\r\n"
                       "    Toolbar(\"Standard\", " +
                       id(IDC_TOOLBAR_STANDARD) +
                       ").\r\n"
                       "      GetItemByID(\"Background\", " +
                       id(IDM_VIEW_BACKGROUND) +
                       ").\r\n"
                       "        Expand().\r\n"
                       "          GetItemByID(\"&Paper\", " +
                       id(IDM_VIEW_PAPER) + ");\r\n"));
}

TEST_F(ToolbarEndToEnd, ArrowOfADropDownButtonWithASubmenu) {
  const RECT button = places.rect("frame", "IDC_TOOLBAR_STANDARD[IDM_VIEW_ORIENTATION]");
  user.click({button.right - 4, (button.top + button.bottom) / 2});
  user.click(places.middle("menu", "Turn"));
  user.click(places.middle("menu", "IDM_VIEW_TURN_UP"));
  EXPECT_EQ((Lines{"  TBB_Up().Checked = true;"}), finish());
}

TEST_F(ToolbarEndToEnd, ButtonOfAnOldBcgToolbar) {
  click_button("IDC_TOOLBAR_DRAW", "IDM_DRAW_BOX");
  click_button("IDC_TOOLBAR_DRAW", "IDM_DRAW_GEAR");
  EXPECT_EQ((Lines{"  TBB_Box().Click();", "  TBB_Gear().Click();"}), finish());
}

TEST_F(ToolbarEndToEnd, DropDownOfAnOldBcgToolbar) {
  click_button("IDC_TOOLBAR_DRAW", "IDM_DRAW_MORE");
  user.click(places.middle("popup", "window[IDM_DRAW_CONE]"));
  EXPECT_EQ((Lines{"  TBB_Cone().Click();"}), finish());
  EXPECT_TRUE(declares("function TBB_Cone()\r\n"
                       "{\r\n"
                       "  return Main_SampleCad().\r\n"
                       "    Toolbar(\"Draw\", " +
                       id(IDC_TOOLBAR_DRAW) +
                       ").\r\n"
                       "      GetItemByID(\"More\", " +
                       id(IDM_DRAW_MORE) +
                       ").\r\n"
                       "        Expand().\r\n"
                       "          GetItemByID(\"Cone\", " +
                       id(IDM_DRAW_CONE) + ");\r\n"));
}

// The button that opens it has no command: its text or its position stands for it.
TEST_F(ToolbarEndToEnd, DropDownsOfANewBcgToolbar) {
  click_button("IDC_TOOLBAR_VIEW", "3");
  user.click(places.middle("popup", "window[IDM_VIEW_TOP]"));
  places.wait_until_gone("popup");
  click_button("IDC_TOOLBAR_VIEW", "4");
  user.click(places.middle("popup", "window[IDM_VIEW_ZOOM_OUT]"));
  EXPECT_EQ((Lines{"  TBB_Top().Click();", "  TBB_Zoom_out().Click();"}), finish());
}

TEST_F(ToolbarEndToEnd, DropDownThatIsClosedAgainIsNoStatement) {
  click_button("IDC_TOOLBAR_DRAW", "IDM_DRAW_MORE");
  places.rect("popup", "window[IDM_DRAW_CONE]");
  user.key(VK_ESCAPE);
  places.wait_until_gone("popup");
  EXPECT_EQ((Lines{}), finish());
}

TEST_F(ToolbarEndToEnd, KeyboardInAnOldBcgToolbar) {
  keys({VK_F6, VK_RIGHT, VK_RETURN});
  EXPECT_EQ(
      (Lines{"  Main_SampleCad().Command(" + id(IDM_TOOLBAR_FOCUS_DRAW) + ");", "  TBB_Gear().Click();"}),
      finish());
}

TEST_F(ToolbarEndToEnd, DropDownByTheKeyboardInAnOldBcgToolbar) {
  keys({VK_F6, VK_RIGHT, VK_RIGHT, VK_RIGHT, VK_DOWN, VK_DOWN, VK_RETURN});
  EXPECT_EQ(
      (Lines{"  Main_SampleCad().Command(" + id(IDM_TOOLBAR_FOCUS_DRAW) + ");", "  TBB_Cylinder().Click();"}),
      finish());
  EXPECT_TRUE(declares("GetItemByID(\"More\", " + id(IDM_DRAW_MORE) +
                       ").\r\n"
                       "        Expand().\r\n"
                       "          GetItemByID(\"Cylinder\", " +
                       id(IDM_DRAW_CYLINDER) + ");\r\n"));
}

// Its hot button is not asked for: the command stands for the button.
TEST_F(ToolbarEndToEnd, KeyboardInANewBcgToolbar) {
  user.key(VK_F6, {VK_SHIFT});
  keys({VK_RIGHT, VK_RETURN});
  EXPECT_EQ((Lines{"  Main_SampleCad().Command(" + id(IDM_TOOLBAR_FOCUS_VIEW) + ");",
                   "  Main_SampleCad().Command(" + id(IDM_VIEW_ZOOM_FIT) + ");"}),
            finish());
}

TEST_F(ToolbarEndToEnd, TwoGesturesWithinASecond) {
  click_button("IDC_TOOLBAR_STANDARD", "IDM_VIEW_GRID");
  click_button("IDC_TOOLBAR_DRAW", "IDM_DRAW_BOX");
  user.key('V', {VK_MENU});
  user.key('A');
  click_button("IDC_TOOLBAR_STANDARD", "IDM_MOUSE_ZOOM");
  EXPECT_EQ((Lines{"  TBB_Grid().Checked = false;", "  TBB_Box().Click();", "  TBB_Axes().Checked = false;",
                   "  TBB_Zoom().Checked = true;"}),
            finish());
}

// ---- context menus -------------------------------------------------------------------------------

namespace {

class ViewContextMenu : public ToolbarEndToEnd {
protected:
  const HWND view = find_child(host.frame(), "SampleCadView");

  // Without the lines of the camera, which are the view recorder's.
  Lines finish_without_camera() {
    Lines lines = finish();
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [](const std::string& line) {
                                 return line.find(".SetCameraPosition(") != std::string::npos;
                               }),
                lines.end());
    return lines;
  }
  // The end of a mouse statement of the view.
  std::string view_size() const {
    RECT client = {};
    GetClientRect(view, &client);
    return std::to_string(client.right + 1) + ", " + std::to_string(client.bottom + 1);
  }
};

}  // namespace

TEST_F(ViewContextMenu, ByRightButtonTakesThePlaceOfTheRightClick) {
  user.click(client_place(view, 40, 50), mrMouseButton::right);
  user.click(places.middle("menu", "IDM_VIEW_GRID"));
  EXPECT_EQ((Lines{"  CADView().ContextMenu(40, 50, " + view_size() + ");", "  TBB_Grid().Checked = false;"}),
            finish_without_camera());
  EXPECT_TRUE(declares("function TBB_Grid()\r\n"
                       "{\r\n"
                       "  return Main_SampleCad().\r\n"
                       "    CurrentContextMenu().\r\n"
                       "      GetItemByID(\"&Grid\", " +
                       id(IDM_VIEW_GRID) + ");\r\n"));
}

TEST_F(ViewContextMenu, SubmenuByRightButton) {
  user.click(client_place(view, 40, 50), mrMouseButton::right);
  user.click(places.middle("menu", "Orientation"));
  user.click(places.middle("menu", "IDM_VIEW_TOP"));
  EXPECT_EQ((Lines{"  CADView().ContextMenu(40, 50, " + view_size() + ");", "  TBB_Top().Checked = true;"}),
            finish_without_camera());
  EXPECT_TRUE(declares("    CurrentContextMenu().\r\n"
                       "      GetItemByID(\"&Orientation\", " +
                       id(IDM_POPUP_ORIENTATION) +
                       ").\r\n"
                       "        Expand().\r\n"
                       "          GetItemByID(\"&Top\", " +
                       id(IDM_VIEW_TOP) + ");\r\n"));
}

TEST_F(ViewContextMenu, SecondOneIsRecordedLikeTheFirst) {
  for (int i = 0; i < 2; ++i) {
    user.click(client_place(view, 40, 50), mrMouseButton::right);
    user.click(places.middle("menu", "IDM_VIEW_GRID"));
    places.wait_until_gone("menu");
  }
  const std::string request = "  CADView().ContextMenu(40, 50, " + view_size() + ");";
  EXPECT_EQ((Lines{request, "  TBB_Grid().Checked = false;", request, "  TBB_Grid().Checked = true;"}),
            finish_without_camera());
}

TEST_F(ViewContextMenu, CancelledByEscapeLeavesThePress) {
  user.click(client_place(view, 40, 50), mrMouseButton::right);
  places.rect("menu", "IDM_VIEW_GRID");
  user.key(VK_ESCAPE);
  places.wait_until_gone("menu");
  EXPECT_EQ((Lines{"  CADView().MouseDown(2, 40, 50, " + view_size() + ", 0);"}), finish_without_camera());
}

TEST_F(ViewContextMenu, ByShiftF10HasNoRequest) {
  user.click(client_place(view, 10, 10));
  user.key(VK_F10, {VK_SHIFT});
  places.rect("menu", "IDM_VIEW_GRID");
  user.key('G');
  EXPECT_EQ((Lines{"  CADView().Click(1, 10, 10, " + view_size() + ", 0);", "  TBB_Grid().Checked = false;"}),
            finish_without_camera());
}

TEST_F(ViewContextMenu, ByAppsKeyHasNoRequest) {
  user.click(client_place(view, 10, 10));
  user.key(VK_APPS);
  places.rect("menu", "IDM_VIEW_GRID");
  keys({VK_UP, VK_UP, VK_RIGHT, VK_RETURN});
  EXPECT_EQ((Lines{"  CADView().Click(1, 10, 10, " + view_size() + ", 0);", "  TBB_Front().Checked = true;"}),
            finish_without_camera());
}

namespace {

// In the dialogs of the gallery the plain click goes to the dialog itself.
class GalleryContextMenu : public testing::Test {
protected:
  void SetUp() override { stop_clock_of(host); }

  GalleryContextMenu(const std::string& name, const std::string& title)
      : m_place("dialog:" + name), host(places.argument() + " --dialog " + name),
        dialog(host.wait_for_dialog(title)) {}

  // Opens the menu of a part of the dialog with the right button and chooses items, one after the other.
  void choose(const std::string& part, const std::vector<std::string>& items) {
    user.click(places.middle(m_place, part), mrMouseButton::right);
    for (const std::string& item : items)
      user.click(places.middle("menu", item));
    places.wait_until_gone("menu");
  }
  // The lines of the script after a last plain click, without that.
  Lines finish() {
    user.click(client_place(dialog, 2, 2));
    recording.finish();
    Lines lines = recording.script_lines();
    EXPECT_GE(lines.size(), 2u);
    EXPECT_EQ("  Main_SampleCad().SetFocus();", lines.front());
    EXPECT_EQ("  ActiveDialog().Click(1, 2, 2, 0);", lines.back());
    lines.erase(lines.begin());
    lines.pop_back();
    return lines;
  }
  // A window function of the script, up to its closing brace.
  std::string function_of(const std::string& name) {
    const std::string script = recording.script();
    const size_t begin = script.find("function " + name + "()");
    return begin == std::string::npos ? "" : script.substr(begin, script.find("}", begin) - begin);
  }
  const std::string m_place;
  mrReadyFile places;
  mrSampleCad host;
  const HWND dialog;
  mrRecording recording{host};
  mrUser& user = recording.user;
};

class ListContextMenu : public GalleryContextMenu {
protected:
  ListContextMenu() : GalleryContextMenu("lists", "Lists") {}
};

class TreeContextMenu : public GalleryContextMenu {
protected:
  TreeContextMenu() : GalleryContextMenu("trees", "Trees") {}
};

class EditContextMenu : public GalleryContextMenu {
protected:
  EditContextMenu() : GalleryContextMenu("edits", "Edits") {}
};

}  // namespace

// Deliberate: the list asks its dialog for the menu, and the first time the place is the dialog's by then.
// Once a snapshot is there it stays the list's.
TEST_F(ListContextMenu, OnASelectedItemOfAListBox) {
  user.click(places.middle("dialog:lists", "IDC_LIST_SINGLE[1]"));
  choose("IDC_LIST_SINGLE[1]", {"IDM_ITEM_MARK"});
  choose("IDC_LIST_SINGLE[1]", {"IDM_ITEM_OPEN"});
  EXPECT_EQ((Lines{"  ListBox_2081().SelectItemByName(\"Brass\");", "  ListBox_2081().ContextMenu(false);",
                   "  TBB_Mark().Checked = true;", "  ListBox_2081().ContextMenu(true);",
                   "  TBB_Open().Checked = true;"}),
            finish());
}

// The first menu of the host is the one of a place in the dialog.
TEST_F(ListContextMenu, OnAnUnselectedItemOfAListBox) {
  user.click(places.middle("dialog:lists", "IDC_LIST_SINGLE[1]"));
  choose("IDC_LIST_SINGLE[1]", {"IDM_ITEM_MARK"});
  choose("IDC_LIST_SINGLE[2]", {"IDM_ITEM_OPEN"});
  choose("IDC_LIST_SINGLE[1]", {"IDM_ITEM_OPEN"});
  EXPECT_EQ((Lines{"  ListBox_2081().SelectItemByName(\"Brass\");", "  ListBox_2081().ContextMenu(false);",
                   "  TBB_Mark().Checked = true;", "  ListBox_2081().ContextMenu(false);",
                   "  TBB_Open().Checked = true;", "  ListBox_2081().ContextMenu(true);",
                   "  TBB_Open().Checked = true;"}),
            finish());
}

TEST_F(ListContextMenu, OnAListViewWithoutASelection) {
  const RECT list = places.rect("dialog:lists", "IDC_LIST_VIEW");
  user.click({list.left + 60, list.bottom - 6}, mrMouseButton::right);  // below the rows
  user.click(places.middle("menu", "IDM_ITEM_OPEN"));
  places.wait_until_gone("menu");
  EXPECT_EQ((Lines{"  ListView_2085().ContextMenu(false);", "  TBB_Open().Checked = true;"}), finish());
}

// The submenu has no id of its own: its handle stands for it, which is another number in every run.
TEST_F(ListContextMenu, OnAListViewWithASubmenu) {
  choose("IDC_LIST_VIEW[1]", {"Sort_by", "IDM_ITEM_SORT_SIZE"});
  EXPECT_EQ((Lines{"  ListView_2085().SelectItemByName(\"Bearing A\");",
                   "  ListView_2085().ContextMenu(true);", "  TBB_Size().Checked = true;"}),
            finish());
  std::string function = function_of("TBB_Size");
  const std::string call = "GetItemByID(\"&Sort by\", ";
  const size_t number = function.find(call) + call.size();
  const size_t digits = function.find_first_not_of("0123456789", number) - number;
  ASSERT_GT(digits, 0u) << function;
  function.replace(number, digits, "N");
  EXPECT_EQ("function TBB_Size()\r\n"
            "{\r\n"
            "  return Main_SampleCad().\r\n"
            "    CurrentContextMenu().\r\n"
            "      GetItemByID(\"&Sort by\", N).\r\n"
            "        Expand().\r\n"
            "          GetItemByID(\"&Size\", " +
                id(IDM_ITEM_SORT_SIZE) + ");\r\n",
            function);
}

TEST_F(ListContextMenu, ByTheKeyboardHasNoRequest) {
  user.click(places.middle("dialog:lists", "IDC_LIST_SINGLE[1]"));
  for (const bool apps_key : {true, false}) {
    if (apps_key)
      user.key(VK_APPS);
    else
      user.key(VK_F10, {VK_SHIFT});
    places.rect("menu", "IDM_ITEM_MARK");
    user.key('M');
    places.wait_until_gone("menu");
  }
  EXPECT_EQ((Lines{"  ListBox_2081().SelectItemByName(\"Brass\");", "  TBB_Mark().Checked = true;",
                   "  TBB_Mark().Checked = true;"}),
            finish());
}

// Here too the first place is the dialog's.
TEST_F(TreeContextMenu, OnTheSelectedItemOfATree) {
  user.click(places.middle("dialog:trees", "IDC_TREE[2]"));
  choose("IDC_TREE[2]", {"IDM_ITEM_MARK"});
  choose("IDC_TREE[2]", {"IDM_ITEM_MARK"});
  EXPECT_EQ((Lines{"  TreeCtrl_2101().SelectItem(\"2\");", "  TreeCtrl_2101().ContextMenu(false);",
                   "  TBB_Mark().Checked = true;", "  TreeCtrl_2101().ContextMenu(true);",
                   "  TBB_Mark().Checked = true;"}),
            finish());
}

// The edit's own menu is the edit's: its commands change the text, and the text is recorded.
TEST_F(EditContextMenu, OnAnEditIsRecordedAsTheChangeOfItsText) {
  user.click(places.middle("dialog:edits", "IDC_EDIT"));
  user.type("abc");
  user.key(VK_HOME, {VK_SHIFT});
  user.click(places.middle("dialog:edits", "IDC_EDIT"), mrMouseButton::right);
  ASSERT_NE(nullptr, host.wait_for_window("", "#32768"));
  user.key('T');
  EXPECT_EQ((Lines{"  Edit_2041().Text = \"\";"}), finish());
}
