// Menus and toolbars of the test program's own thread, with real input and the hooks in place: what a host in
// another process cannot be made to do, and what needs the ignore list of the host's process.
#include "tests/controls/toolbar_windows.h"
#include "tests/support/self_recording.h"
#include "tests/support/tape.h"
#include "tests/support/user.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// What happens inside the menu loop, which has the thread until the menu is closed.
std::function<void()> in_menu_loop;

void CALLBACK run_in_menu_loop(HWND window, UINT, UINT_PTR timer, DWORD) {
  KillTimer(window, timer);
  const std::function<void()> action = std::move(in_menu_loop);
  in_menu_loop = nullptr;
  if (action)
    action();
}

class OwnMenus : public testing::Test {
protected:
  TestMenu menu;
  mrTestFrame frame;
  mrTestWindow view{(register_test_class("TestView"), "TestView"), "View", visible_child, frame, 70};
  CommonToolbar toolbar{frame};
  mrTestClock clock;  // a command may be slow to follow its gesture on a busy machine
  mrSelfRecording recorder;
  mrUser user;
  std::vector<int> commands;  // that the frame got

  void SetUp() override {
    menu.item(11, "New").item(12, "Open").separator().item(13, "Close");
    frame.set_answer([this](UINT message, WPARAM wparam, LPARAM, LRESULT&) {
      if (message == WM_COMMAND)
        commands.push_back(LOWORD(wparam));
      return message == WM_COMMAND;
    });
    show_menu_of(view);
    // Out of the toolbar's way.
    MoveWindow(view, 20, 100, 100, 60, TRUE);
    MoveWindow(frame, 50, 50, 500, 300, TRUE);
    SetForegroundWindow(frame);
    pump_messages();
  }
  void TearDown() override {
    in_menu_loop = nullptr;
    recorder.clear_ignore_commands();
  }

  // Lets a window open the menu where it is asked for.
  void show_menu_of(mrTestWindow& window, UINT flags = 0) {
    window.set_answer([this, flags](UINT message, WPARAM, LPARAM lparam, LRESULT&) {
      if (message != WM_CONTEXTMENU)
        return false;
      if (in_menu_loop)
        SetTimer(frame, 1, 10, run_in_menu_loop);
      const CPoint place(lparam);
      returned_command = TrackPopupMenu(menu, flags, place.x, place.y, 0, frame, nullptr);
      menu_was_open = true;
      return true;
    });
  }
  // Opens the menu with the right button and waits until it is closed again; the keys choose in it.
  void right_click(HWND window, const std::vector<WORD>& keys, std::function<void()> meanwhile = nullptr) {
    menu_was_open = false;
    in_menu_loop = [this, keys, meanwhile] {
      if (meanwhile)
        meanwhile();
      for (const WORD key : keys)
        user.key(key);
    };
    user.click(client_place(window, 5, 5), mrMouseButton::right);
    ASSERT_TRUE(wait_until([this] { return menu_was_open; }));
    pump_messages();
  }
  bool wait_for_command(int id) {
    return wait_until([this, id] { return !commands.empty() && commands.back() == id; });
  }
  void click_on_view() {
    user.click(client_place(view, 8, 9));
    EXPECT_TRUE(wait_until([this] {
      const auto all = recorder.statements();
      return !all.empty() && all.back() == "Click(1, 8, 9, 0);";
    }));
  }

  bool menu_was_open = false;
  int returned_command = 0;
};

}  // namespace

TEST_F(OwnMenus, ContextMenuFollowsItsRequest) {
  right_click(view, {VK_DOWN, VK_DOWN, VK_RETURN});
  ASSERT_TRUE(wait_for_command(12));
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(5, 5);", "Checked = true;"));
}

// The list is the host's own: here both are one process.
TEST_F(OwnMenus, IgnoredCommandOfAMenuIsNoStatement) {
  recorder.add_ignore_command(12);
  right_click(view, {VK_DOWN, VK_DOWN, VK_RETURN});
  ASSERT_TRUE(wait_for_command(12));
  EXPECT_THAT(recorder.statements(), ElementsAre("MouseDown(2, 5, 5, 0);"));
  click_on_view();
}

TEST_F(OwnMenus, IgnoredCommandOfAToolbarIsNoStatement) {
  recorder.add_ignore_command(102);
  const CPoint grid = toolbar.middle_of(CommonToolbar::grid);
  const CPoint first = toolbar.middle_of(CommonToolbar::first);
  user.click(client_place(toolbar, grid.x, grid.y));
  ASSERT_TRUE(wait_for_command(102));
  user.click(client_place(toolbar, first.x, first.y));
  ASSERT_TRUE(wait_for_command(101));
  EXPECT_THAT(recorder.statements(), ElementsAre("Click();"));
  click_on_view();
}

TEST_F(OwnMenus, ItemRenamedWhileTheMenuIsOpenIsReadAsItIsWhenChosen) {
  right_click(view, {VK_DOWN, VK_DOWN, VK_RETURN},
              [this] { ModifyMenuA(menu, 12, MF_BYCOMMAND | MF_CHECKED, 12, "Open again"); });
  ASSERT_TRUE(wait_for_command(12));
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(5, 5);", "Checked = false;"));
  EXPECT_STREQ("Open again", recorder.last_action()->get_path()[0]->text);
  click_on_view();
}

TEST_F(OwnMenus, ItemRemovedWhileTheMenuIsOpenShiftsTheOthers) {
  right_click(view, {VK_DOWN, VK_DOWN, VK_RETURN}, [this] { DeleteMenu(menu, 11, MF_BYCOMMAND); });
  ASSERT_TRUE(wait_for_command(13));
  EXPECT_STREQ("Close", recorder.last_action()->get_path()[0]->text);
  EXPECT_EQ(13, recorder.last_action()->get_path()[0]->id);
  click_on_view();
}

// An edit has a menu of its own, so its recorder refuses any other one.
TEST_F(OwnMenus, ContextMenuThatTheProgramGivesAnEditIsRefused) {
  mrTestWindow edit("Edit", "text", visible_child, frame, 4, 0, {200, 100, 300, 130});
  static HWND menu_owner;
  static WNDPROC edit_proc;
  menu_owner = view;
  edit_proc = reinterpret_cast<WNDPROC>(SetWindowLongPtrA(
      edit, GWLP_WNDPROC,
      reinterpret_cast<LONG_PTR>(+[](HWND window, UINT message, WPARAM wparam, LPARAM lparam) -> LRESULT {
        if (message == WM_CONTEXTMENU)
          return SendMessageA(menu_owner, message, wparam, lparam);
        return CallWindowProcA(edit_proc, window, message, wparam, lparam);
      })));
  right_click(edit, {VK_DOWN, VK_RETURN});
  ASSERT_TRUE(wait_for_command(11));
  EXPECT_THAT(recorder.statements(), IsEmpty());
  click_on_view();
}

// Nobody sends its command: the time runs out.
TEST_F(OwnMenus, MenuThatReturnsItsCommandIsNoStatement) {
  show_menu_of(view, TPM_RETURNCMD);
  right_click(view, {VK_DOWN, VK_RETURN});
  EXPECT_EQ(11, returned_command);
  EXPECT_THAT(recorder.statements(), ElementsAre("MouseDown(2, 5, 5, 0);"));
  mrTestClock::advance(1001);
  click_on_view();
}

TEST_F(OwnMenus, CommandThatTheProgramSendsMeanwhileIsRecordedByItself) {
  right_click(view, {VK_DOWN, VK_RETURN}, [this] { SendMessageA(frame, WM_COMMAND, 99, 0); });
  ASSERT_TRUE(wait_for_command(11));
  EXPECT_THAT(recorder.statements(),
              ElementsAre("MouseDown(2, 5, 5, 0);", "Command(99);", "ContextMenu(5, 5);", "Checked = true;"));
  click_on_view();
}
