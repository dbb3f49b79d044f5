// End to end: the three kinds of tab windows in SampleCad.
#include "apps/SampleCad/gallery.dev/gallery.h"
#include "hooks/mrChannel.h"
#include "tests/support/e2e.h"

#include <commctrl.h>
#include <gtest/gtest.h>

namespace {

using Statements = std::vector<std::string>;

class TabCtrlEndToEnd : public testing::Test {
protected:
  TabCtrlEndToEnd() { stop_clock_of(host); }

  HWND tabs(int id) const { return GetDlgItem(dialog, id); }
  // The middle of a tab in screen pixels: the rectangle comes from the host's process.
  POINT place_of(int id, int index) const {
    RECT rect = {};
    EXPECT_NE(0, send_remotely(tabs(id), TCM_GETITEMRECT, static_cast<WPARAM>(index), &rect, sizeof rect));
    EXPECT_LT(rect.left, rect.right);
    return client_place(tabs(id), (rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2);
  }
  void choose(int id, int index) {
    user.click(place_of(id, index));
    EXPECT_TRUE(wait_until([&] { return SendMessageA(tabs(id), TCM_GETCURSEL, 0, 0) == index; }));
  }
  void choose_in_context_menu(POINT place) {
    user.click(place, mrMouseButton::right);
    ASSERT_NE(nullptr, host.wait_for_window("", "#32768"));
    const size_t before = recording.statements().size();
    user.key(VK_DOWN);
    user.key(VK_RETURN);
    ASSERT_TRUE(recording.wait_for_statements(before + 2));
  }

  mrSampleCad host{"--dialog tabs"};
  const HWND dialog = host.wait_for_dialog("Tabs");
  mrRecording recording{host};
  mrUser& user = recording.user;
};

}  // namespace

TEST_F(TabCtrlEndToEnd, EachChosenTabIsOneStatement) {
  choose(IDC_TABS, 1);
  choose(IDC_TABS, 3);
  choose(IDC_TABS, 0);
  EXPECT_EQ((Statements{"SelectItemByName(\"Assembly\");", "SelectItemByName(\"Drawing\");",
                        "SelectItemByName(\"Part\");"}),
            recording.finish());
}

TEST_F(TabCtrlEndToEnd, TabWithoutACaptionIsSelectedByItsIndex) {
  choose(IDC_TABS, 2);
  choose(IDC_TABS_BCG, 2);
  choose(IDC_TABS_GX, 2);
  EXPECT_EQ((Statements{"SelectItem(2);", "SelectItem(2);", "SelectItem(2);"}), recording.finish());
}

TEST_F(TabCtrlEndToEnd, ClickOnTheCurrentTabRecordsNothing) {
  for (const int id : {IDC_TABS, IDC_TABS_BCG, IDC_TABS_GX})
    user.click(place_of(id, 0));
  EXPECT_EQ(Statements(), recording.finish());
}

TEST_F(TabCtrlEndToEnd, ArrowKeysChooseTabs) {
  choose(IDC_TABS, 2);
  user.key(VK_RIGHT);
  user.key(VK_LEFT);
  EXPECT_EQ((Statements{"SelectItem(2);", "SelectItemByName(\"Drawing\");", "SelectItem(2);"}),
            recording.finish());
}

TEST_F(TabCtrlEndToEnd, TabWindowsOfOtherLibraries) {
  choose(IDC_TABS_BCG, 1);
  choose(IDC_TABS_GX, 3);
  choose(IDC_TABS_BCG, 3);
  EXPECT_EQ((Statements{"SelectItemByName(\"Assembly\");", "SelectItemByName(\"Drawing\");",
                        "SelectItemByName(\"Drawing\");"}),
            recording.finish());
}

// The library of these tabs posts it; what a program sends is its own doing.
TEST_F(TabCtrlEndToEnd, MessageOfATabWindowCountsPostedOnly) {
  choose(IDC_TABS_GX, 1);
  host.finish_input();
  constexpr UINT tab_changed = 1925;
  SendMessageA(dialog, tab_changed, 0, reinterpret_cast<LPARAM>(tabs(IDC_TABS_GX)));
  EXPECT_EQ((Statements{"SelectItemByName(\"Assembly\");"}), recording.statements());
  PostMessageA(dialog, tab_changed, 0, reinterpret_cast<LPARAM>(tabs(IDC_TABS_GX)));
  EXPECT_EQ((Statements{"SelectItemByName(\"Assembly\");", "SelectItemByName(\"Assembly\");"}),
            recording.finish());
}

TEST_F(TabCtrlEndToEnd, TabChosenByTheProgramIsNotRecorded) {
  user.click(control_of(dialog, IDC_BY_PROGRAM));
  EXPECT_TRUE(wait_until([this] { return SendMessageA(tabs(IDC_TABS), TCM_GETCURSEL, 0, 0) == 1; }));
  EXPECT_EQ((Statements{"Click();"}), recording.finish());
}

TEST_F(TabCtrlEndToEnd, ContextMenuTellsWhetherItIsOnTheCurrentTab) {
  choose(IDC_TABS, 1);
  // The first menu of a host comes with a place in the dialog that shows it, which is below the tab.
  choose_in_context_menu(place_of(IDC_TABS, 1));
  choose_in_context_menu(place_of(IDC_TABS, 1));
  choose_in_context_menu(place_of(IDC_TABS, 3));
  EXPECT_EQ((Statements{"SelectItemByName(\"Assembly\");", "ContextMenu(false);", "Checked = true;",
                        "ContextMenu(true);", "Checked = true;", "ContextMenu(false);", "Checked = true;"}),
            recording.finish());
}

// Deliberate: the first tab is never measured.
TEST_F(TabCtrlEndToEnd, ContextMenuOfTheFirstTabCountsAsBesideIt) {
  choose_in_context_menu(place_of(IDC_TABS, 3));
  choose_in_context_menu(place_of(IDC_TABS, 0));
  EXPECT_EQ((Statements{"ContextMenu(false);", "Checked = true;", "ContextMenu(false);", "Checked = true;"}),
            recording.finish());
}

TEST_F(TabCtrlEndToEnd, ScriptReachesTheTabsThroughTheActiveDialog) {
  choose(IDC_TABS, 1);
  choose(IDC_TABS_GX, 1);
  recording.finish();
  EXPECT_EQ((Statements{"  Main_SampleCad().SetFocus();", "  TabCtrl_2121().SelectItemByName(\"Assembly\");",
                        "  TabCtrl_2123().SelectItemByName(\"Assembly\");"}),
            recording.script_lines());
}
