// What is read of toolbars and menus: levels and their current items.
#include "controls/mrToolBarItems.h"

#include "tests/controls/toolbar_windows.h"

#include <gtest/gtest.h>

// ---- window classes ------------------------------------------------------------------------------

struct ClassCase {
  const char* class_name;
  bool is_old_bcg;
  bool is_new_bcg;
  bool is_toolbar;
};
static constexpr ClassCase class_cases[] = {
    {"ToolbarWindow32", false, false, true},
    {"ToolbarWindow32x", false, false, false},
    {"toolbarwindow32", false, false, false},
    {"BCGToolBar", true, false, true},
    {"BCGToolBar:400000:8:10003", true, false, true},
    {"BCGToolBa", false, false, false},
    {"BCGPToolBar", false, true, true},
    {"BCGPToolBar:400000:8", false, true, true},
    {"XBCGPToolBar", false, false, false},
    {"bcgptoolbar", false, false, false},
    {"#32768", false, false, false},
    {"", false, false, false},
};

TEST(ToolbarClasses, AreToldByTheirBeginning) {
  for (const ClassCase& c : class_cases) {
    EXPECT_EQ(c.is_old_bcg, mrToolBarFactory::is_old_bcg_toolbar_class(c.class_name)) << c.class_name;
    EXPECT_EQ(c.is_new_bcg, mrToolBarFactory::is_new_bcg_toolbar_class(c.class_name)) << c.class_name;
    EXPECT_EQ(c.is_old_bcg || c.is_new_bcg, mrToolBarFactory::is_bcg_toolbar_class(c.class_name))
        << c.class_name;
    EXPECT_EQ(c.is_toolbar, is_toolbar_class(c.class_name)) << c.class_name;
  }
}

TEST(ToolbarClasses, PopupMenuIsTheSystemsClassExactly) {
  EXPECT_TRUE(is_popup_menu_class("#32768"));
  EXPECT_FALSE(is_popup_menu_class("#327680"));
  EXPECT_FALSE(is_popup_menu_class("#3276"));
}

// ---- a level -------------------------------------------------------------------------------------

class ToolbarItems : public testing::Test {
protected:
  mrTestFrame frame;
  CommonToolbar toolbar{frame};
  LookAlikeToolbar look_alike{"BCGToolBar:1",
                              frame,
                              {{201, BTNS_BUTTON, TBSTATE_ENABLED, "Line"},
                               {0, BTNS_SEP, 0, ""},
                               {202, BTNS_CHECK, TBSTATE_ENABLED, "Snap"}}};
};

TEST_F(ToolbarItems, FreshLevelHoldsTheWindowAndNoItem) {
  EXPECT_EQ(empty_level(toolbar, nullptr, 50, "Drawing"), init_record(toolbar, nullptr));
}

TEST_F(ToolbarItems, FreshLevelOfAPopupHoldsTheMenu) {
  const TestMenu menu;
  const PopupWindow popup(menu);
  EXPECT_EQ(empty_level(popup, menu, 0, ""), init_record(popup, menu));
  EXPECT_EQ(empty_level(popup, unknown_menu(), 0, ""), init_record(popup, unknown_menu()));
  EXPECT_EQ(-1, reinterpret_cast<INT_PTR>(unknown_menu()));
}

TEST_F(ToolbarItems, OnlyTheNewBcgToolbarsAreMarked) {
  const LookAlikeToolbar new_bcg("BCGPToolBar:1", frame, {});
  EXPECT_EQ(empty_level(new_bcg, nullptr, 60, "Bar", true), init_record(new_bcg, nullptr));
  EXPECT_EQ(empty_level(look_alike, nullptr, 60, "Bar"), init_record(look_alike, nullptr));
}

TEST_F(ToolbarItems, WindowTextIsCutAtItsSize) {
  const std::string text(300, 'x');
  SetWindowTextA(look_alike, text.c_str());
  EXPECT_EQ(empty_level(look_alike, nullptr, 60, text.substr(0, 259).c_str()),
            init_record(look_alike, nullptr));
}

// ---- buttons of a toolbar ------------------------------------------------------------------------

struct ButtonCase {
  const char* name;
  CommonToolbar::Button button;
  int id;
  const char* text;
  unsigned style;
  unsigned state;
};
static constexpr ButtonCase button_cases[] = {
    {"plain, own text", CommonToolbar::first, 101, "New", BTNS_BUTTON, TBSTATE_ENABLED},
    {"check, down, text of the pool", CommonToolbar::grid, 102, "Grid", BTNS_CHECK,
     TBSTATE_ENABLED | TBSTATE_CHECKED},
    {"group, up", CommonToolbar::front, 103, "Front", BTNS_CHECKGROUP, TBSTATE_ENABLED},
    {"no text", CommonToolbar::textless, 104, "", BTNS_BUTTON, TBSTATE_ENABLED},
    {"drop-down", CommonToolbar::colour, 105, "Colour", BTNS_DROPDOWN, TBSTATE_ENABLED},
    {"disabled", CommonToolbar::print, 106, "Print", BTNS_BUTTON, 0},
    {"id -1 is none, and its text is not asked", CommonToolbar::without_id, 0, "", BTNS_BUTTON,
     TBSTATE_ENABLED},
};

TEST_F(ToolbarItems, ButtonUnderThePointIsTheCurrentItem) {
  for (const ButtonCase& c : button_cases) {
    mrToolbarRec level = init_record(toolbar, nullptr);
    const CPoint point = toolbar.middle_of(c.button);
    EXPECT_TRUE(hit_test_button(level, point)) << c.name;
    EXPECT_EQ(hit_at(on_item(empty_level(toolbar, nullptr, 50, "Drawing"), c.button, c.id, c.text, c.style,
                             c.state),
                     point.x, point.y),
              level)
        << c.name;
  }
}

TEST_F(ToolbarItems, SeparatorAndPlaceWithoutButtonLeaveNoItem) {
  for (const CPoint& point : {toolbar.middle_of(CommonToolbar::separator), toolbar.beside(), CPoint(-1, 5)}) {
    mrToolbarRec level = init_record(toolbar, nullptr);
    ASSERT_TRUE(hit_test_button(level, toolbar.middle_of(CommonToolbar::grid)));
    EXPECT_FALSE(hit_test_button(level, point));
    EXPECT_EQ(empty_level(toolbar, nullptr, 50, "Drawing"), level);
  }
}

TEST_F(ToolbarItems, ToolbarWithoutButtonsHasNoItem) {
  const LookAlikeToolbar bare("BCGToolBar:1", frame, {});
  mrToolbarRec level = init_record(bare, nullptr);
  EXPECT_FALSE(hit_test_button(level, CPoint(1, 1)));
  EXPECT_EQ(empty_level(bare, nullptr, 60, "Bar"), level);
}

TEST_F(ToolbarItems, RectanglesMayHaveTheirSidesSwapped) {
  look_alike.mirrored = true;
  mrToolbarRec level = init_record(look_alike, nullptr);
  EXPECT_TRUE(hit_test_button(level, LookAlikeToolbar::middle_of(2)));
  EXPECT_EQ(2, level.item_index);
}

// The right and the lower side belong to the neighbour, as in PtInRect.
TEST_F(ToolbarItems, RectangleEndsBeforeItsRightAndLowerSide) {
  mrToolbarRec level = init_record(look_alike, nullptr);
  EXPECT_TRUE(hit_test_button(level, CPoint(0, 0)));
  EXPECT_TRUE(hit_test_button(level, CPoint(19, 19)));
  EXPECT_FALSE(hit_test_button(level, CPoint(20, 10)));
  EXPECT_FALSE(hit_test_button(level, CPoint(10, 20)));
}

TEST_F(ToolbarItems, ButtonWithoutARectangleIsPassedOver) {
  look_alike.hidden = 0;
  mrToolbarRec level = init_record(look_alike, nullptr);
  EXPECT_FALSE(hit_test_button(level, LookAlikeToolbar::middle_of(0)));
  EXPECT_TRUE(hit_test_button(level, LookAlikeToolbar::middle_of(2)));
}

TEST_F(ToolbarItems, LevelWithAMenuIsNotHitTested) {
  for (const HMENU menu : {static_cast<HMENU>(TestMenu()), unknown_menu()}) {
    mrToolbarRec level = on_item(init_record(look_alike, menu), 3, 7, "Save", 0, 0);
    const mrToolbarRec before = level;
    EXPECT_FALSE(hit_test_button(level, LookAlikeToolbar::middle_of(0)));
    EXPECT_EQ(before, level);
  }
  EXPECT_EQ(0, look_alike.asked());
}

// ---- texts of buttons ----------------------------------------------------------------------------

// Deliberate oddity: iString is not packed with a size.
TEST_F(ToolbarItems, StringIsAskedWithTheNumberAsItStands) {
  LookAlikeToolbar bar("BCGToolBar:1", frame, {{301, BTNS_BUTTON, 0, "", 0x12345678}});
  bar.pool_text = "Pooled";
  mrToolbarRec level = init_record(bar, nullptr);
  EXPECT_TRUE(fill_item(level, 0));
  EXPECT_STREQ("Pooled", level.item_text);
  EXPECT_EQ(0x12345678u, bar.pool_wparam);
}

TEST_F(ToolbarItems, StringIsAskedOnlyWhereThereIsNoTextYet) {
  LookAlikeToolbar bar("BCGToolBar:1", frame,
                       {{301, BTNS_BUTTON, 0, "Own", 5}, {302, BTNS_BUTTON, 0, "", 0}, {0, 0, 0, "", 5}});
  bar.pool_text = "Pooled";
  mrToolbarRec level = init_record(bar, nullptr);
  EXPECT_TRUE(fill_item(level, 0));
  EXPECT_STREQ("Own", level.item_text);
  EXPECT_TRUE(fill_item(level, 1));
  EXPECT_STREQ("", level.item_text);
  EXPECT_EQ(0, bar.questions[TB_GETSTRINGA]);
  EXPECT_TRUE(fill_item(level, 2));
  EXPECT_STREQ("Pooled", level.item_text);
  EXPECT_EQ(2, bar.questions[TB_GETBUTTONTEXTA]) << "a button without id has no text of its own";
}

// The message knows no size: a longer text must not run over the level.
TEST_F(ToolbarItems, LongTextIsCutAtItsSize) {
  const std::string text(5000, 'y');
  const LookAlikeToolbar bar("BCGToolBar:1", frame, {{301, BTNS_CHECK, TBSTATE_CHECKED, text}});
  mrToolbarRec level = init_record(bar, nullptr);
  EXPECT_TRUE(fill_item(level, 0));
  EXPECT_EQ(on_item(empty_level(bar, nullptr, 60, "Bar"), 0, 301, text.substr(0, 259).c_str(), BTNS_CHECK,
                    TBSTATE_CHECKED),
            level);
}

TEST_F(ToolbarItems, SeparatorAtAPositionLeavesTheLevelAlone) {
  mrToolbarRec level = init_record(look_alike, nullptr);
  ASSERT_TRUE(fill_item(level, 2));
  const mrToolbarRec before = level;
  EXPECT_FALSE(fill_item(level, 1));
  EXPECT_EQ(before, level);
}

// ---- items of a menu -----------------------------------------------------------------------------

class MenuItems : public testing::Test {
protected:
  mrTestFrame frame;
  TestMenu submenu;
  TestMenu menu;
  mrToolbarRec level = {};

  void SetUp() override {
    submenu.item(901, "DXF");
    menu.item(801, "&Open...\tCtrl+O")
        .separator()
        .item(802, "Grid", MF_CHECKED)
        .submenu(803, "Export", submenu);
    level = init_record(frame, menu);
  }
  mrToolbarRec expected(int position, int id, const char* text, unsigned type, unsigned state) const {
    return on_item(empty_level(frame, menu, 0, "Test frame"), position, id, text, type, state);
  }
};

TEST_F(MenuItems, ItemAtAPositionIsTheCurrentOne) {
  EXPECT_TRUE(fill_item(level, 0));
  EXPECT_EQ(expected(0, 801, "&Open...\tCtrl+O", MFT_STRING, 0), level);
  EXPECT_TRUE(fill_item(level, 2));
  EXPECT_EQ(expected(2, 802, "Grid", MFT_STRING, MFS_CHECKED), level);
  EXPECT_TRUE(fill_item(level, 3));
  EXPECT_EQ(expected(3, 803, "Export", MFT_STRING, 0), level);
}

TEST_F(MenuItems, TypeAndStateAreTheMenusOwn) {
  TestMenu views;
  views.item(811, "Top", MF_GRAYED | MF_DISABLED).item(812, "Front");
  CheckMenuRadioItem(views, 0, 1, 1, MF_BYPOSITION);
  level = init_record(frame, views);
  EXPECT_TRUE(fill_item(level, 0));
  EXPECT_EQ(MFS_GRAYED, level.item_state);
  EXPECT_TRUE(fill_item(level, 1));
  EXPECT_EQ(MFT_RADIOCHECK, level.item_type);
  EXPECT_EQ(MFS_CHECKED, level.item_state);
}

TEST_F(MenuItems, SeparatorAndMissingPositionLeaveTheLevelAlone) {
  ASSERT_TRUE(fill_item(level, 2));
  const mrToolbarRec before = level;
  EXPECT_FALSE(fill_item(level, 1));
  EXPECT_FALSE(fill_item(level, 9));
  EXPECT_EQ(before, level);
}

TEST_F(MenuItems, LongTextIsCutAtItsSize) {
  const std::string text(400, 'z');
  menu.item(804, text.c_str());
  EXPECT_TRUE(fill_item(level, 4));
  EXPECT_EQ(259u, strlen(level.item_text));
}

TEST_F(MenuItems, HighlightedCommandIsLookedForByItsId) {
  EXPECT_TRUE(select_menu_item(level, highlight(802)));
  EXPECT_EQ(expected(2, 802, "Grid", MFT_STRING, MFS_CHECKED), level);
}

TEST_F(MenuItems, HighlightedSubmenuIsTakenByItsPosition) {
  EXPECT_TRUE(select_menu_item(level, highlight_submenu(3)));
  EXPECT_EQ(expected(3, 803, "Export", MFT_STRING, 0), level);
}

TEST_F(MenuItems, PositionOfASeparatorSelectsNothing) {
  const mrToolbarRec before = level;
  EXPECT_FALSE(select_menu_item(level, highlight_submenu(1)));
  EXPECT_EQ(before, level);
}

TEST_F(MenuItems, CommandOfASubmenuIsNotTheMenus) {
  const mrToolbarRec before = level;
  EXPECT_FALSE(select_menu_item(level, highlight(901)));
  EXPECT_FALSE(select_menu_item(level, highlight(1)));
  EXPECT_EQ(before, level);
}

// A separator's id is 0, and so may be looked for.
TEST_F(MenuItems, CommandThatIsASeparatorSelectsNothing) {
  const mrToolbarRec before = level;
  EXPECT_FALSE(select_menu_item(level, highlight(0)));
  EXPECT_EQ(before, level);
}

TEST_F(MenuItems, EmptyAndUnknownMenusHaveNoCommands) {
  const TestMenu empty;
  for (const HMENU none : {static_cast<HMENU>(empty), unknown_menu()}) {
    mrToolbarRec other = init_record(frame, none);
    const mrToolbarRec before = other;
    EXPECT_FALSE(select_menu_item(other, highlight(801)));
    EXPECT_FALSE(select_menu_item(other, highlight_submenu(0)));
    EXPECT_EQ(before, other);
  }
}

TEST_F(MenuItems, SubmenuIsAPropertyOfTheCurrentItem) {
  ASSERT_TRUE(fill_item(level, 3));
  EXPECT_TRUE(has_submenu(level));
  ASSERT_TRUE(fill_item(level, 0));
  EXPECT_FALSE(has_submenu(level));
}
