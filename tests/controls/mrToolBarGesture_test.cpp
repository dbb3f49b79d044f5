// How gestures on toolbars and menus are followed in the host: message sequences in, claims and uploads out.
// The tests stand in the order in which a message meets the steps.
#include "controls/mrToolBarItems.h"
#include "controls/mrWindow.h"
#include "tests/controls/toolbar_windows.h"
#include "tests/support/hooked.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

static LPARAM at(const CPoint& point) { return at(point.x, point.y); }

namespace {

mrTapeStep sent(HWND window, UINT message, WPARAM wparam, LPARAM lparam, mrTapeAnswer answer,
                mrTapeUploads uploads = none) {
  return {hookCallWndProc, window, message, wparam, lparam, answer, std::move(uploads)};
}

mrTapeStep posted(HWND window, UINT message, WPARAM wparam, LPARAM lparam, mrTapeAnswer answer,
                  mrTapeUploads uploads = none) {
  return {hookGetMessage, window, message, wparam, lparam, answer, std::move(uploads)};
}

// A popup menu's window that answers no question for its menu from now on.
LRESULT CALLBACK tell_no_menu(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  return message == get_menu_of_popup ? 0 : DefWindowProcA(window, message, wparam, lparam);
}
void silence(HWND popup) { SetWindowLongPtrA(popup, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(tell_no_menu)); }

// A popup menu's window of a thread that has no other window.
class ForeignPopup {
public:
  ForeignPopup() : m_thread(&ForeignPopup::live, this) {
    wait_until([this] { return m_window.load() != nullptr; });
  }
  ~ForeignPopup() {
    PostMessageA(m_window, WM_QUIT, 0, 0);
    m_thread.join();
  }
  ForeignPopup(const ForeignPopup&) = delete;
  ForeignPopup& operator=(const ForeignPopup&) = delete;
  operator HWND() const { return m_window; }

private:
  void live() {
    const HWND window =
        CreateWindowExA(0, "#32768", nullptr, WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    m_window = window;
    MSG msg;
    while (GetMessageA(&msg, nullptr, 0, 0) > 0)
      DispatchMessageA(&msg);
    DestroyWindow(window);
  }

  std::atomic<HWND> m_window{nullptr};
  std::thread m_thread;
};

// The run-command stack, which is shared by all recorders of the process.
class RunCommands : public mrWindowFactory {
public:
  static const std::vector<mrCommandRec>& stack() { return mr_commands_stack; }
  static void clear() { mr_commands_stack.clear(); }
};

}  // namespace

class ToolbarGesture : public testing::Test {
protected:
  // File (1) with New (11), Open (12) and Export (13) > DXF (131), SVG (132); Grid (2) without a popup.
  TestMenu formats;
  TestMenu file;
  TestMenu bar{true};

  mrUploadCatcher uploads;
  mrToolBarFactory factory;
  mrTestFrame frame;
  mrTestWindow view{(register_test_class("TestView"), "TestView"), "View", visible_child, frame, 70};
  CommonToolbar toolbar{frame};
  LookAlikeToolbar old_bcg{
      "BCGToolBar:1", frame, {{201, BTNS_BUTTON, 4, "Line"}, {202, BTNS_BUTTON, 4, "Arc"}}};
  LookAlikeToolbar new_bcg{
      "BCGPToolBar:1", frame, {{301, BTNS_BUTTON, 4, "Box"}, {302, BTNS_BUTTON, 4, "Ball"}}};
  PopupWindow file_popup{(formats.item(131, "DXF").item(132, "SVG", MF_CHECKED),
                          file.item(11, "New").item(12, "Open", MF_CHECKED).submenu(13, "Export", formats),
                          bar.submenu(1, "File", file).item(2, "Grid"), file)};
  PopupWindow formats_popup{formats};

  void SetUp() override {
    SetMenu(frame, bar);
    RunCommands::clear();
    factory.clear_ignore_commands();
  }
  void TearDown() override {
    SetMenu(frame, nullptr);
    factory.clear_ignore_commands();
    RunCommands::clear();
  }

  void play(const std::vector<mrTapeStep>& tape) { play_tape(factory, uploads, tape); }
  void play(std::vector<mrTapeStep> beginning, const std::vector<mrTapeStep>& rest) {
    beginning.insert(beginning.end(), rest.begin(), rest.end());
    play(beginning);
  }

  // What the factory would upload now: state, start and snapshot.
  mrTapeUploads shipped() {
    mrToolBarFactory copy = factory;
    uploads.clear();
    copy.command_invoked();
    return {uploads.last().bytes};
  }

  // Levels as they are expected.
  // (The GWLP_ID of a window with a menu bar is the menu.)
  mrToolbarRec bar_level() const { return empty_level(frame, bar, as_lparam(bar), "Test frame"); }
  mrToolbarRec bar_on_file() const { return on_item(bar_level(), 0, 1, "File", MFT_STRING, 0); }
  mrToolbarRec file_level() const { return empty_level(file_popup, file, 0, ""); }
  mrToolbarRec file_on_new() const { return on_item(file_level(), 0, 11, "New", MFT_STRING, 0); }
  mrToolbarRec file_on_export() const { return on_item(file_level(), 2, 13, "Export", MFT_STRING, 0); }
  mrToolbarRec formats_on_svg() const {
    return on_item(empty_level(formats_popup, formats, 0, ""), 1, 132, "SVG", MFT_STRING, MFS_CHECKED);
  }
  mrToolbarRec toolbar_level() const { return empty_level(toolbar, nullptr, 50, "Drawing"); }
  mrToolbarRec toolbar_on_grid() const {
    const CPoint point = on_grid();
    return hit_at(on_item(toolbar_level(), CommonToolbar::grid, 102, "Grid", BTNS_CHECK,
                          TBSTATE_ENABLED | TBSTATE_CHECKED),
                  point.x, point.y);
  }
  CPoint on_grid() const { return toolbar.middle_of(CommonToolbar::grid); }

  // Message sequences of several tests.
  std::vector<mrTapeStep> press_on_grid() {
    return {posted(toolbar, WM_LBUTTONDOWN, MK_LBUTTON, at(on_grid()), claimed)};
  }
  std::vector<mrTapeStep> open_file_menu() {
    return {sent(frame, WM_ENTERMENULOOP, 0, 0, claimed),
            sent(frame, WM_MENUSELECT, highlight_submenu(0), as_lparam(bar), claimed),
            sent(file_popup, WM_CREATE, 0, 0, claimed), sent(file_popup, WM_SIZE, 0, 0, claimed)};
  }
  std::vector<mrTapeStep> open_context_menu() {
    return {posted(view, WM_RBUTTONDOWN, MK_RBUTTON, at(7, 9), left),
            posted(view, WM_RBUTTONUP, 0, at(7, 9), claimed), sent(file_popup, WM_CREATE, 0, 0, claimed),
            sent(file_popup, WM_SIZE, 0, 0, claimed)};
  }
};

// ---- what is looked at ---------------------------------------------------------------------------

TEST_F(ToolbarGesture, ReturningMessagesAndNotificationsAreLeft) {
  play({
      {hookCallWndProcRet, toolbar, WM_LBUTTONDOWN, MK_LBUTTON, at(on_grid()), left, none},
      {hookCbt, toolbar, WM_LBUTTONDOWN, MK_LBUTTON, at(on_grid()), left, none},
      posted(nullptr, WM_LBUTTONDOWN, MK_LBUTTON, at(on_grid()), left),
  });
  EXPECT_FALSE(factory.is_tracking());
}

TEST_F(ToolbarGesture, StartOfARecordingEndsAGesture) {
  play(open_file_menu());
  factory.set_timer();
  factory.on_start_record();
  EXPECT_FALSE(factory.is_tracking());
  EXPECT_FALSE(factory.is_tracking_popup());
  EXPECT_FALSE(factory.is_in_stack(frame));
  EXPECT_FALSE(factory.is_timer_set());
}

// The run-command stack is emptied by the generic window recorder, whose start it is as well.
TEST_F(ToolbarGesture, StartOfARecordingLeavesTheRunCommandsAlone) {
  play(press_on_grid(),
       {sent(frame, WM_COMMAND, 102, as_lparam(toolbar), claimed,
             gesture(mrTrackToolbarClick, toolbar, on_grid().x, on_grid().y, {toolbar_on_grid()}))});
  factory.on_start_record();
  EXPECT_EQ(1u, RunCommands::stack().size());
}

// ---- whole gestures ------------------------------------------------------------------------------

TEST_F(ToolbarGesture, ToolbarButtonIsUploadedWithItsCommand) {
  play({
      posted(toolbar, WM_LBUTTONDOWN, MK_LBUTTON, at(on_grid()), claimed),
      posted(toolbar, WM_LBUTTONUP, 0, at(on_grid()), claimed),
      sent(toolbar, WM_CAPTURECHANGED, 0, 0, claimed),
      sent(frame, WM_COMMAND, 102, as_lparam(toolbar), claimed,
           gesture(mrTrackToolbarClick, toolbar, on_grid().x, on_grid().y, {toolbar_on_grid()})),
      sent(frame, WM_COMMAND, 102, as_lparam(toolbar), left),
  });
  EXPECT_FALSE(factory.is_tracking());
  EXPECT_FALSE(factory.is_timer_set());
}

TEST_F(ToolbarGesture, MenuBarCommandIsUploadedWithEveryMenuOnTheWay) {
  play(open_file_menu(),
       {
           sent(frame, WM_MENUSELECT, highlight_submenu(2), as_lparam(file), claimed),
           sent(formats_popup, WM_CREATE, 0, 0, claimed),
           sent(formats_popup, WM_SIZE, 0, 0, claimed),
           sent(frame, WM_MENUSELECT, highlight(132), as_lparam(formats), claimed),
           posted(frame, WM_LBUTTONDOWN, 0, at(300, 300), claimed),
           posted(frame, WM_LBUTTONUP, 0, at(300, 300), claimed),
           sent(formats_popup, WM_DESTROY, 0, 0, claimed),
           sent(file_popup, WM_DESTROY, 0, 0, claimed),
           sent(frame, WM_UNINITMENUPOPUP, reinterpret_cast<WPARAM>(static_cast<HMENU>(file)), 0, claimed),
           sent(frame, WM_MENUSELECT, menu_is_closed, 0, claimed),
           sent(frame, WM_EXITMENULOOP, 0, 0, claimed),
           tick(1000),
           posted(frame, WM_COMMAND, 132, 0, claimed,
                  gesture(mrTrackMainMenu, frame, 0, 0, {bar_on_file(), file_on_export(), formats_on_svg()})),
           posted(frame, WM_COMMAND, 132, 0, left),
       });
}

TEST_F(ToolbarGesture, MenuBarItemWithoutAPopupIsUploaded) {
  play({
      sent(frame, WM_ENTERMENULOOP, 0, 0, claimed),
      sent(frame, WM_MENUSELECT, highlight(2), as_lparam(bar), claimed),
      sent(frame, WM_EXITMENULOOP, 0, 0, claimed),
      posted(frame, WM_COMMAND, 2, 0, claimed,
             gesture(mrTrackMainMenu, frame, 0, 0, {on_item(bar_level(), 1, 2, "Grid", MFT_STRING, 0)})),
  });
}

TEST_F(ToolbarGesture, ContextMenuCommandIsUploadedWithTheWindowAndPlaceItIsFor) {
  play(open_context_menu(),
       {
           sent(frame, WM_MENUSELECT, highlight(11), as_lparam(file), claimed),
           posted(file_popup, WM_LBUTTONDOWN, 0, at(300, 300), claimed),
           posted(file_popup, WM_LBUTTONUP, 0, at(300, 300), claimed),
           sent(file_popup, WM_DESTROY, 0, 0, claimed),
           posted(view, WM_COMMAND, 11, 0, claimed, gesture(mrTrackContextMenu, view, 7, 9, {file_on_new()})),
       });
}

// ---- the time runs out ---------------------------------------------------------------------------

TEST_F(ToolbarGesture, GestureEndsAfterMoreThanItsTime) {
  play(press_on_grid(), {
                            tick(1000),
                            posted(toolbar, WM_MOUSEMOVE, 0, at(on_grid()), claimed),
                            act("still followed", [this] { EXPECT_TRUE(factory.is_tracking()); }),
                            tick(1),
                            posted(toolbar, WM_MOUSEMOVE, 0, at(on_grid()), left),
                            act("at an end", [this] { EXPECT_FALSE(factory.is_tracking()); }),
                            sent(frame, WM_COMMAND, 102, as_lparam(toolbar), left),
                        });
}

// Deliberate: the message that finds the time run out is nobody's, also where it would begin a gesture.
TEST_F(ToolbarGesture, MessageThatEndsAGestureBeginsNone) {
  play(press_on_grid(), {
                            tick(1001),
                            posted(toolbar, WM_LBUTTONDOWN, MK_LBUTTON, at(on_grid()), left),
                            act("at an end", [this] { EXPECT_FALSE(factory.is_tracking()); }),
                            posted(toolbar, WM_LBUTTONDOWN, MK_LBUTTON, at(on_grid()), claimed),
                            act("the next one", [this] { EXPECT_TRUE(factory.is_tracking()); }),
                        });
}

TEST_F(ToolbarGesture, TimeIsCountedAcrossTheWrapOfTheTicks) {
  play({
      act("ticks almost at their end", [] { mrTestClock::set(0xFFFFFFF0); }),
      posted(toolbar, WM_LBUTTONDOWN, MK_LBUTTON, at(on_grid()), claimed),
      tick(1000),
      posted(toolbar, WM_MOUSEMOVE, 0, at(on_grid()), claimed),
      tick(1),
      posted(toolbar, WM_MOUSEMOVE, 0, at(on_grid()), left),
  });
}

TEST_F(ToolbarGesture, PendingCommandIsUploadedWhenTheTimeRunsOut) {
  play(open_file_menu(), {
                             sent(frame, WM_MENUSELECT, highlight(11), as_lparam(file), claimed),
                             posted(file_popup, button_up_in_popup, 0, 0, claimed),
                             sent(file_popup, WM_DESTROY, 0, 0, claimed),
                             tick(1001),
                             sent(view, WM_NULL, 0, 0, left,
                                  gesture(mrTrackMainMenu, frame, 0, 0, {bar_on_file(), file_on_new()})),
                             act("at an end", [this] { EXPECT_FALSE(factory.is_tracking()); }),
                         });
}

// ---- focus and menu loop end ---------------------------------------------------------------------

TEST_F(ToolbarGesture, KeyboardFocusThatLeavesTheToolbarStartsTheTime) {
  play({
      sent(new_bcg, WM_SETFOCUS, 0, 0, claimed),
      act("no time yet", [this] { EXPECT_FALSE(factory.is_timer_set()); }),
      sent(view, WM_KILLFOCUS, 0, 0, left),
      act("another window's focus", [this] { EXPECT_FALSE(factory.is_timer_set()); }),
      sent(new_bcg, WM_EXITMENULOOP, 0, 0, claimed),
      act("no menu bar", [this] { EXPECT_FALSE(factory.is_timer_set()); }),
      sent(new_bcg, WM_KILLFOCUS, 0, 0, claimed),
      act("the time runs", [this] { EXPECT_TRUE(factory.is_timer_set()); }),
  });
}

TEST_F(ToolbarGesture, EndOfTheMenuLoopStartsTheTime) {
  play({
      sent(frame, WM_ENTERMENULOOP, 0, 0, claimed),
      sent(view, WM_EXITMENULOOP, 0, 0, left),
      sent(frame, WM_KILLFOCUS, 0, 0, claimed),
      act("no time yet", [this] { EXPECT_FALSE(factory.is_timer_set()); }),
      sent(frame, WM_EXITMENULOOP, 0, 0, claimed),
      act("the time runs", [this] { EXPECT_TRUE(factory.is_timer_set()); }),
      tick(1001),
      sent(frame, WM_NULL, 0, 0, left),
      act("at an end", [this] { EXPECT_FALSE(factory.is_tracking()); }),
  });
}

TEST_F(ToolbarGesture, EndOfTheLoopWithoutAFirstLevelIsNoneOfIt) {
  play({
      sent(frame, WM_ENTERMENULOOP, 0, 0, claimed),
      sent(frame, WM_DESTROY, 0, 0, claimed),
      act("the time runs", [this] { EXPECT_TRUE(factory.is_timer_set()); }),
      tick(900),
      sent(frame, WM_EXITMENULOOP, 0, 0, claimed),  // as the start window's message
      tick(101),
      sent(frame, WM_NULL, 0, 0, left),
  });
}

// ---- the command ---------------------------------------------------------------------------------

TEST_F(ToolbarGesture, AnotherCommandIsLeftAndEndsNothing) {
  play(press_on_grid(),
       {
           sent(frame, WM_COMMAND, 101, 0, left),
           sent(frame, WM_COMMAND, MAKEWPARAM(102, 1), 0, left),  // an accelerator's
           sent(frame, WM_COMMAND, 102, as_lparam(toolbar), claimed,
                gesture(mrTrackToolbarClick, toolbar, on_grid().x, on_grid().y, {toolbar_on_grid()})),
       });
  EXPECT_EQ(1u, RunCommands::stack().size());
}

// Compared in 32 bits; what the wParam holds above them does not count.
TEST_F(ToolbarGesture, CommandIsComparedInItsLow32Bits) {
  play(press_on_grid(),
       {sent(frame, WM_COMMAND, 0x100000000 + 102, as_lparam(toolbar), claimed,
             gesture(mrTrackToolbarClick, toolbar, on_grid().x, on_grid().y, {toolbar_on_grid()}))});
}

TEST_F(ToolbarGesture, CommandBeforeAnyItemIsKnownIsLeft) {
  play({
      posted(view, WM_RBUTTONDOWN, MK_RBUTTON, at(7, 9), left), sent(frame, WM_COMMAND, 0, 0, left),
      sent(view, WM_COMMAND, 0, 0, claimed),  // as the start window's message
  });
  EXPECT_TRUE(factory.is_tracking());
  EXPECT_TRUE(RunCommands::stack().empty());
}

TEST_F(ToolbarGesture, IgnoredCommandEndsTheGestureWithoutAnUpload) {
  factory.add_ignore_command(102);
  play(press_on_grid(), {sent(frame, WM_COMMAND, 102, as_lparam(toolbar), claimed)});
  EXPECT_FALSE(factory.is_tracking());
  EXPECT_EQ(1u, RunCommands::stack().size());
}

// A posted and a sent command of a gesture are not recorded once more as a bare command, nor is the same
// command that the window sends itself or its parent meanwhile.
TEST_F(ToolbarGesture, CommandOfAGestureIsRunningForTheWindowRecorder) {
  mrWindowFactory window_factory;
  for (const int kind : {hookGetMessage, hookCallWndProc}) {
    RunCommands::clear();
    play(open_context_menu(), {
                                  sent(frame, WM_MENUSELECT, highlight(11), as_lparam(file), claimed),
                                  sent(file_popup, WM_DESTROY, 0, 0, claimed),
                                  {kind, view, WM_COMMAND, 11, 0, claimed,
                                   gesture(mrTrackContextMenu, view, 7, 9, {file_on_new()})},
                              });
    ASSERT_EQ(1u, RunCommands::stack().size());
    EXPECT_EQ(view.get(), RunCommands::stack().back().window);
    EXPECT_EQ(11, RunCommands::stack().back().command);
    uploads.clear();
    EXPECT_TRUE(feed(window_factory, hookCallWndProc, view, WM_COMMAND, 11));
    EXPECT_TRUE(feed(window_factory, hookCallWndProc, frame, WM_COMMAND, 11));
    EXPECT_EQ(0u, uploads.count());
    feed(window_factory, hookCallWndProcRet, view, WM_COMMAND, 11);
    EXPECT_TRUE(RunCommands::stack().empty());
  }
}

// ---- popups and drop-down toolbars open ----------------------------------------------------------

TEST_F(ToolbarGesture, PopupMenuIsALevelWhoseMenuIsNotKnownYet) {
  play(press_on_grid(), {
                            sent(file_popup, WM_CREATE, 0, 0, claimed),
                            act("the time stands still", [this] { EXPECT_FALSE(factory.is_timer_set()); }),
                        });
  ASSERT_NE(nullptr, factory.get_window_by_hwnd(file_popup));
  EXPECT_EQ(unknown_menu(), factory.get_window_by_hwnd(file_popup)->hmenu);
  EXPECT_TRUE(factory.is_tracking_popup());
}

TEST_F(ToolbarGesture, DropDownToolbarIsALevelAboveTheButtonUnderTheMouse) {
  const LookAlikeToolbar drop_down("BCGPToolBar:2", nullptr, {{401, BTNS_BUTTON, 4, "Red"}}, "Colours");
  const CPoint on_ball = LookAlikeToolbar::middle_of(1);
  const CPoint on_red = LookAlikeToolbar::middle_of(0);
  const mrToolbarRec new_bcg_on_ball =
      hit_at(on_item(empty_level(new_bcg, nullptr, 60, "Bar", true), 1, 302, "Ball", BTNS_BUTTON, 4),
             on_ball.x, on_ball.y);
  const mrToolbarRec drop_down_on_red =
      hit_at(on_item(empty_level(drop_down, nullptr, 0, "Colours", true), 0, 401, "Red", BTNS_BUTTON, 4),
             on_red.x, on_red.y);
  play({
      posted(new_bcg, WM_LBUTTONDOWN, MK_LBUTTON, at(LookAlikeToolbar::middle_of(0)), claimed),
      posted(new_bcg, WM_MOUSEMOVE, MK_LBUTTON, at(on_ball), claimed),
      sent(drop_down, WM_CREATE, 0, 0, claimed),
      act("the time stands still", [this] { EXPECT_FALSE(factory.is_timer_set()); }),
      posted(drop_down, WM_LBUTTONDOWN, MK_LBUTTON, at(on_red), claimed),
      posted(drop_down, WM_LBUTTONUP, 0, at(on_red), claimed),
      sent(drop_down, WM_SHOWWINDOW, FALSE, 0, claimed),
      act("the time runs", [this] { EXPECT_TRUE(factory.is_timer_set()); }),
      sent(frame, WM_COMMAND, 401, 0, claimed,
           gesture(mrTrackToolbarClick, new_bcg, LookAlikeToolbar::middle_of(0).x, on_ball.y,
                   {new_bcg_on_ball, drop_down_on_red})),
  });
}

// The place of a click counts as well as that of a move.
TEST_F(ToolbarGesture, DropDownBelongsToTheButtonThatWasClickedLast) {
  const LookAlikeToolbar drop_down("BCGPToolBar:2", nullptr, {{401, BTNS_BUTTON, 4, "Red"}}, "Colours");
  play({
      posted(new_bcg, WM_LBUTTONDOWN, MK_LBUTTON, at(LookAlikeToolbar::middle_of(0)), claimed),
      posted(new_bcg, WM_LBUTTONUP, 0, at(LookAlikeToolbar::middle_of(1)), claimed),
      sent(drop_down, WM_CREATE, 0, 0, claimed),
  });
  EXPECT_EQ(302, factory.get_window_by_hwnd(new_bcg)->item_id);
}

TEST_F(ToolbarGesture, OtherWindowsThatOpenGoOn) {
  play(press_on_grid(), {
                            sent(view, WM_CREATE, 0, 0, left),
                            act("the time runs on", [this] { EXPECT_TRUE(factory.is_timer_set()); }),
                        });
  EXPECT_FALSE(factory.is_in_stack(view));
}

// ---- the highlight of a menu ---------------------------------------------------------------------

TEST_F(ToolbarGesture, HighlightedItemIsTheCurrentOneOfItsMenu) {
  play(open_file_menu());
  EXPECT_EQ(gesture(mrTrackMainMenu, frame, 0, 0, {bar_on_file()}), shipped());
  play({sent(frame, WM_MENUSELECT, highlight(11), as_lparam(file), claimed)});
  EXPECT_EQ(gesture(mrTrackMainMenu, frame, 0, 0, {bar_on_file(), file_on_new()}), shipped());
  play({sent(frame, WM_MENUSELECT, highlight_submenu(2), as_lparam(file), claimed)});
  EXPECT_EQ(gesture(mrTrackMainMenu, frame, 0, 0, {bar_on_file(), file_on_export()}), shipped());
}

TEST_F(ToolbarGesture, ClosedMenuIsClaimedAndChangesNothing) {
  play(open_file_menu(), {sent(frame, WM_MENUSELECT, highlight(12), as_lparam(file), claimed)});
  const mrTapeUploads before = shipped();
  play({sent(view, WM_MENUSELECT, menu_is_closed, as_lparam(file), claimed)});
  EXPECT_EQ(before, shipped());
  EXPECT_EQ(12, factory.get_window_by_hwnd(file_popup)->item_id) << "not the item at position 0";
}

TEST_F(ToolbarGesture, HighlightOfAnUnknownMenuGoesOn) {
  play(open_file_menu(), {
                             sent(view, WM_MENUSELECT, highlight(131), as_lparam(formats), left),
                             sent(frame, WM_MENUSELECT, highlight(131), as_lparam(formats), claimed),
                             sent(view, WM_MENUSELECT, menu_is_closed, 0, left),
                         });
  EXPECT_EQ(gesture(mrTrackMainMenu, frame, 0, 0, {bar_on_file()}), shipped());
}

// A toolbar's level has no menu, and so has the message that ends a menu.
TEST_F(ToolbarGesture, EndOfAMenuIsClaimedWhileAToolbarIsOpen) {
  play(press_on_grid(), {sent(view, WM_MENUSELECT, menu_is_closed, 0, claimed)});
}

// A separator cannot be chosen: the item before it stays.
TEST_F(ToolbarGesture, HighlightedSeparatorLeavesTheCurrentItem) {
  file.separator();
  play(open_file_menu(), {
                             sent(frame, WM_MENUSELECT, highlight(11), as_lparam(file), claimed),
                             sent(frame, WM_MENUSELECT, highlight_submenu(3), as_lparam(file), claimed),
                         });
  EXPECT_EQ(gesture(mrTrackMainMenu, frame, 0, 0, {bar_on_file(), file_on_new()}), shipped());
}

// ---- windows of the stack ------------------------------------------------------------------------

TEST_F(ToolbarGesture, ClosedWindowIsTakenOffWithWhatItOpened) {
  struct Close {
    UINT message;
    WPARAM wparam;
    bool closes;
  };
  for (const Close& c : {Close{WM_DESTROY, 0, true}, Close{WM_CLOSE, 0, true},
                         Close{WM_SHOWWINDOW, FALSE, true}, Close{WM_SHOWWINDOW, TRUE, false}}) {
    factory.reset();
    play(open_file_menu(), {
                               sent(formats_popup, WM_CREATE, 0, 0, claimed),
                               sent(file_popup, c.message, c.wparam, 0, claimed),
                           });
    EXPECT_EQ(c.closes, !factory.is_in_stack(file_popup)) << c.message;
    EXPECT_EQ(c.closes, !factory.is_in_stack(formats_popup)) << c.message;
    EXPECT_EQ(c.closes, factory.is_timer_set()) << c.message;
    EXPECT_TRUE(factory.is_in_stack(frame)) << c.message;
  }
}

TEST_F(ToolbarGesture, TimeStandsStillWhileAnotherPopupIsOpen) {
  play(open_file_menu(), {
                             sent(formats_popup, WM_CREATE, 0, 0, claimed),
                             sent(formats_popup, WM_DESTROY, 0, 0, claimed),
                         });
  EXPECT_FALSE(factory.is_timer_set());
  EXPECT_TRUE(factory.is_tracking_popup());
}

TEST_F(ToolbarGesture, ContextMenuHasNoLevelBelowItsFirstPopup) {
  play(open_context_menu());
  EXPECT_TRUE(factory.is_tracking_popup());
  EXPECT_FALSE(factory.is_timer_set());
  play({sent(file_popup, WM_DESTROY, 0, 0, claimed)});
  EXPECT_FALSE(factory.is_tracking_popup());
  EXPECT_TRUE(factory.is_timer_set());
}

// The next popup of the menu bar comes within the time and stops it.
TEST_F(ToolbarGesture, NextPopupOfTheMenuBarStopsTheTime) {
  play(open_file_menu(), {
                             sent(file_popup, WM_DESTROY, 0, 0, claimed),
                             act("the time runs", [this] { EXPECT_TRUE(factory.is_timer_set()); }),
                             sent(formats_popup, WM_CREATE, 0, 0, claimed),
                             act("it stands", [this] { EXPECT_FALSE(factory.is_timer_set()); }),
                         });
}

// A popup is moved to its place after its creation; one that is used again is another popup.
TEST_F(ToolbarGesture, MovedPopupIsALevelAnew) {
  play(open_file_menu(), {
                             sent(frame, WM_MENUSELECT, highlight(11), as_lparam(file), claimed),
                             sent(formats_popup, WM_CREATE, 0, 0, claimed),
                             sent(file_popup, WM_MOVE, 0, 0, claimed),
                         });
  EXPECT_FALSE(factory.is_in_stack(formats_popup));
  ASSERT_TRUE(factory.is_in_stack(file_popup));
  EXPECT_EQ(file_level(), *factory.get_window_by_hwnd(file_popup)) << "its menu is asked for at once";
}

TEST_F(ToolbarGesture, MovedDropDownBelongsToTheButtonUnderTheMouse) {
  const LookAlikeToolbar drop_down("BCGPToolBar:2", nullptr, {{401, BTNS_BUTTON, 4, "Red"}}, "Colours");
  play({
      posted(new_bcg, WM_LBUTTONDOWN, MK_LBUTTON, at(LookAlikeToolbar::middle_of(0)), claimed),
      sent(drop_down, WM_CREATE, 0, 0, claimed),
      posted(new_bcg, WM_MOUSEMOVE, 0, at(LookAlikeToolbar::middle_of(1)), claimed),
      sent(drop_down, WM_MOVE, 0, 0, claimed),
  });
  EXPECT_EQ(302, factory.get_window_by_hwnd(new_bcg)->item_id);
  EXPECT_EQ(empty_level(drop_down, nullptr, 0, "Colours", true), *factory.get_window_by_hwnd(drop_down));
}

TEST_F(ToolbarGesture, FirstWindowMayMove) {
  play(press_on_grid(), {sent(toolbar, WM_MOVE, 0, 0, claimed)});
  EXPECT_EQ(toolbar_on_grid(), *factory.get_window_by_hwnd(toolbar));
}

TEST_F(ToolbarGesture, ReleaseOnAnotherButtonIsThatButton) {
  const CPoint on_arc = LookAlikeToolbar::middle_of(1);
  play({
      posted(old_bcg, WM_LBUTTONDOWN, MK_LBUTTON, at(LookAlikeToolbar::middle_of(0)), claimed),
      posted(old_bcg, WM_LBUTTONUP, 0, at(on_arc), claimed),
      sent(frame, WM_COMMAND, 202, 0, claimed,
           gesture(mrTrackToolbarClick, old_bcg, LookAlikeToolbar::middle_of(0).x, on_arc.y,
                   {hit_at(on_item(empty_level(old_bcg, nullptr, 60, "Bar"), 1, 202, "Arc", BTNS_BUTTON, 4),
                           on_arc.x, on_arc.y)})),
  });
}

TEST_F(ToolbarGesture, ReleaseBesideTheButtonsLeavesNoItem) {
  play({
      posted(old_bcg, WM_LBUTTONDOWN, MK_LBUTTON, at(LookAlikeToolbar::middle_of(0)), claimed),
      posted(old_bcg, WM_LBUTTONUP, 0, at(LookAlikeToolbar::gap_after(0)), claimed),
      sent(frame, WM_COMMAND, 201, 0, left),
  });
  EXPECT_EQ(empty_level(old_bcg, nullptr, 60, "Bar"), *factory.get_window_by_hwnd(old_bcg));
}

TEST_F(ToolbarGesture, MousePointsAreSigned) {
  const LookAlikeToolbar drop_down("BCGPToolBar:2", nullptr, {{401, BTNS_BUTTON, 4, "Red"}});
  play({
      posted(new_bcg, WM_LBUTTONDOWN, MK_LBUTTON, at(LookAlikeToolbar::middle_of(0)), claimed),
      posted(new_bcg, WM_MOUSEMOVE, 0, at(-5, -7), claimed),
      sent(drop_down, WM_CREATE, 0, 0, claimed),
  });
  EXPECT_EQ(-1, factory.get_window_by_hwnd(new_bcg)->item_index);
}

TEST_F(ToolbarGesture, KeyMakesASnapshotOfTheHotButton) {
  play({
      sent(old_bcg, WM_SETFOCUS, 0, 0, claimed),
      act("the arrow key moves on", [this] { old_bcg.hot = 1; }),
      posted(old_bcg, WM_KEYDOWN, VK_RETURN, 0, claimed),
      sent(old_bcg, WM_KILLFOCUS, 0, 0, claimed),
      sent(frame, WM_COMMAND, 202, 0, claimed,
           gesture(mrTrackToolbarFocus, old_bcg, 0, 0,
                   {on_item(empty_level(old_bcg, nullptr, 60, "Bar"), 1, 202, "Arc", BTNS_BUTTON, 4)})),
  });
}

TEST_F(ToolbarGesture, FocusAfterAClickMakesItAGestureOfTheKeyboard) {
  play({
      posted(old_bcg, WM_LBUTTONDOWN, MK_LBUTTON, at(LookAlikeToolbar::middle_of(0)), claimed),
      sent(old_bcg, WM_SETFOCUS, 0, 0, claimed),
      sent(old_bcg, WM_SETFOCUS, 0, 0, claimed),
  });
  const CPoint on_line = LookAlikeToolbar::middle_of(0);
  EXPECT_EQ(gesture(mrTrackToolbarFocus, old_bcg, on_line.x, on_line.y,
                    {hit_at(on_item(empty_level(old_bcg, nullptr, 60, "Bar"), 0, 201, "Line", BTNS_BUTTON, 4),
                            on_line.x, on_line.y)}),
            shipped());
}

TEST_F(ToolbarGesture, FocusInAContextMenuOfToolbarsLeavesItOne) {
  const LookAlikeToolbar drop_down("BCGPToolBar:2", nullptr, {});
  play({
      posted(view, WM_RBUTTONDOWN, MK_RBUTTON, at(7, 9), left),
      sent(drop_down, WM_CREATE, 0, 0, claimed),
      sent(drop_down, WM_SETFOCUS, 0, 0, claimed),
  });
  factory.make_snapshot();
  EXPECT_EQ(gesture(mrTrackContextMenu, view, 7, 9, {empty_level(drop_down, nullptr, 0, "Bar", true)}),
            shipped());
}

TEST_F(ToolbarGesture, FocusOfAnotherToolbarMakesNoGestureOfTheKeyboard) {
  play(press_on_grid(), {sent(toolbar, WM_SETFOCUS, 0, 0, claimed)});
  EXPECT_EQ(gesture(mrTrackToolbarClick, toolbar, on_grid().x, on_grid().y, {toolbar_on_grid()}), shipped());

  const LookAlikeToolbar drop_down("BCGPToolBar:2", nullptr, {});
  const CPoint on_line = LookAlikeToolbar::middle_of(0);
  play({
      posted(old_bcg, WM_LBUTTONDOWN, MK_LBUTTON, at(on_line), claimed),
      sent(drop_down, WM_CREATE, 0, 0, claimed),
      sent(drop_down, WM_SETFOCUS, 0, 0, claimed),
  });
  EXPECT_EQ(gesture(mrTrackToolbarClick, old_bcg, on_line.x, on_line.y,
                    {hit_at(on_item(empty_level(old_bcg, nullptr, 60, "Bar"), 0, 201, "Line", BTNS_BUTTON, 4),
                            on_line.x, on_line.y)}),
            shipped());
}

TEST_F(ToolbarGesture, OtherMessagesOfTheStackAreClaimed) {
  play(open_file_menu(), {
                             sent(frame, WM_PAINT, 0, 0, claimed),
                             sent(frame, WM_INITMENUPOPUP, 0, 0, claimed),
                             sent(file_popup, WM_PAINT, 0, 0, claimed),
                             posted(frame, WM_RBUTTONDOWN, 0, at(1, 1), claimed),
                             posted(frame, WM_SYSCOMMAND, SC_CLOSE, 0, claimed),
                         });
}

// ---- messages of a popup menu's window -------------------------------------------------------------
// The system this is tested on sends the keys of a menu to the window with the focus, and no MN_BUTTONUP at
// all; these are the sequences as Windows has them.

TEST_F(ToolbarGesture, PopupIsAskedForItsMenuUntilItKnows) {
  const PopupWindow blank(nullptr);
  play({
      sent(frame, WM_ENTERMENULOOP, 0, 0, claimed),
      sent(blank, WM_CREATE, 0, 0, claimed),
      sent(blank, WM_SIZE, 0, 0, claimed),
  });
  EXPECT_EQ(unknown_menu(), factory.get_window_by_hwnd(blank)->hmenu) << "no answer changes nothing";
  play({sent(file_popup, WM_CREATE, 0, 0, claimed), sent(file_popup, WM_PAINT, 0, 0, claimed)});
  EXPECT_EQ(file, factory.get_window_by_hwnd(file_popup)->hmenu);
}

TEST_F(ToolbarGesture, PopupThatIsUsedForAnotherMenuIsThatMenu) {
  play(open_file_menu());
  factory.get_window_by_hwnd(file_popup)->hmenu = formats;  // as it was before
  play({posted(file_popup, WM_MOUSEMOVE, 0, at(1, 1), claimed)});
  EXPECT_EQ(formats, factory.get_window_by_hwnd(file_popup)->hmenu) << "no move of the mouse comes first";
  play({sent(file_popup, WM_SIZE, 0, 0, claimed)});
  EXPECT_EQ(file, factory.get_window_by_hwnd(file_popup)->hmenu);
}

TEST_F(ToolbarGesture, ItemChosenWithMouseOrKeyboardIsPending) {
  struct Choice {
    UINT message;
    WPARAM wparam;
    bool chooses;
  };
  for (const Choice& c : {Choice{button_up_in_popup, 0, true}, Choice{WM_KEYDOWN, VK_RETURN, true},
                          Choice{WM_KEYDOWN, VK_SPACE, true}, Choice{WM_KEYDOWN, VK_DOWN, false},
                          Choice{WM_LBUTTONUP, 0, false}, Choice{WM_KEYUP, VK_RETURN, false}}) {
    factory.reset();
    const mrTapeUploads expected = gesture(mrTrackMainMenu, frame, 0, 0, {bar_on_file(), file_on_new()});
    play(open_file_menu(), {
                               sent(frame, WM_MENUSELECT, highlight(11), as_lparam(file), claimed),
                               posted(file_popup, c.message, c.wparam, 0, claimed),
                               sent(file_popup, WM_DESTROY, 0, 0, claimed),
                               tick(1001),
                               sent(view, WM_NULL, 0, 0, left, c.chooses ? expected : none),
                           });
  }
}

TEST_F(ToolbarGesture, ChosenItemIsInTheSnapshot) {
  play(open_file_menu(), {sent(frame, WM_MENUSELECT, highlight(11), as_lparam(file), claimed)});
  factory.get_window_by_hwnd(file_popup)->item_state = MFS_CHECKED;
  mrToolbarRec checked = file_on_new();
  checked.item_state = MFS_CHECKED;
  EXPECT_EQ(gesture(mrTrackMainMenu, frame, 0, 0, {bar_on_file(), file_on_new()}), shipped());
  play({posted(file_popup, button_up_in_popup, 0, 0, claimed)});
  EXPECT_EQ(gesture(mrTrackMainMenu, frame, 0, 0, {bar_on_file(), checked}), shipped());
}

// What is known of its menu stays when a popup that is closing tells none.
TEST_F(ToolbarGesture, ItemIsPendingInAPopupThatNoLongerTellsItsMenu) {
  play(open_file_menu(), {
                             sent(frame, WM_MENUSELECT, highlight(11), as_lparam(file), claimed),
                             act("no menu any more", [this] { silence(file_popup); }),
                             posted(file_popup, button_up_in_popup, 0, 0, claimed),
                             act("the menu is known",
                                 [this] { EXPECT_EQ(file, factory.get_window_by_hwnd(file_popup)->hmenu); }),
                             sent(file_popup, WM_DESTROY, 0, 0, claimed),
                             tick(1001),
                             sent(view, WM_NULL, 0, 0, left,
                                  gesture(mrTrackMainMenu, frame, 0, 0, {bar_on_file(), file_on_new()})),
                         });
}

TEST_F(ToolbarGesture, SubmenuIsOpenedAndNotPending) {
  play(open_file_menu(), {
                             sent(frame, WM_MENUSELECT, highlight_submenu(2), as_lparam(file), claimed),
                             posted(file_popup, button_up_in_popup, 0, 0, claimed),
                             sent(file_popup, WM_DESTROY, 0, 0, claimed),
                             tick(1001),
                             sent(view, WM_NULL, 0, 0, left),
                         });
}

TEST_F(ToolbarGesture, NothingIsPendingWithoutAnItem) {
  play(open_file_menu(), {
                             posted(file_popup, button_up_in_popup, 0, 0, claimed),
                             sent(file_popup, WM_DESTROY, 0, 0, claimed),
                             tick(1001),
                             sent(view, WM_NULL, 0, 0, left),
                         });
}

TEST_F(ToolbarGesture, PendingCommandIsUploadedOnceWhenItComes) {
  play(open_file_menu(), {
                             sent(frame, WM_MENUSELECT, highlight(11), as_lparam(file), claimed),
                             posted(file_popup, WM_KEYDOWN, VK_RETURN, 0, claimed),
                             sent(file_popup, WM_DESTROY, 0, 0, claimed),
                             posted(frame, WM_COMMAND, 11, 0, claimed,
                                    gesture(mrTrackMainMenu, frame, 0, 0, {bar_on_file(), file_on_new()})),
                             tick(1001),
                             sent(view, WM_NULL, 0, 0, left),
                         });
}

TEST_F(ToolbarGesture, MenuThatIsChangedWhileOpenIsReadAsItIs) {
  play(open_file_menu(),
       {
           act("the program renames an item",
               [this] { ModifyMenuA(file, 0, MF_BYPOSITION | MF_STRING | MF_CHECKED, 11, "New drawing"); }),
           sent(frame, WM_MENUSELECT, highlight(11), as_lparam(file), claimed),
           act("and removes it", [this] { DeleteMenu(file, 0, MF_BYPOSITION); }),
           sent(frame, WM_MENUSELECT, highlight(11), as_lparam(file), claimed),
           sent(file_popup, WM_DESTROY, 0, 0, claimed),
           posted(frame, WM_COMMAND, 11, 0, claimed,
                  gesture(
                      mrTrackMainMenu, frame, 0, 0,
                      {bar_on_file(), on_item(file_level(), 0, 11, "New drawing", MFT_STRING, MFS_CHECKED)})),
       });
}

// ---- other windows while a gesture is followed ---------------------------------------------------

TEST_F(ToolbarGesture, LeftButtonOnATopLevelWindowIsClaimed) {
  mrTestFrame other("OtherFrame");
  mrTestWindow control("Button", "OK", visible_child, other, 1);
  play(open_file_menu(), {
                             posted(other, WM_LBUTTONDOWN, MK_LBUTTON, at(1, 1), claimed),
                             posted(other, WM_LBUTTONUP, 0, at(1, 1), claimed),
                             posted(other, WM_RBUTTONDOWN, MK_RBUTTON, at(1, 1), left),
                             posted(other, WM_MOUSEMOVE, 0, at(1, 1), left),
                             posted(control, WM_LBUTTONDOWN, MK_LBUTTON, at(1, 1), left),
                             posted(control, WM_LBUTTONUP, 0, at(1, 1), left),
                         });
}

TEST_F(ToolbarGesture, MessagesOfTheStartWindowAreClaimed) {
  play({
      posted(view, WM_RBUTTONDOWN, MK_RBUTTON, at(7, 9), left),
      posted(view, WM_RBUTTONUP, 0, at(7, 9), claimed),
      posted(view, WM_LBUTTONDOWN, MK_LBUTTON, at(7, 9), claimed),
      posted(view, WM_KEYDOWN, VK_DELETE, 0, claimed),
      sent(view, WM_PAINT, 0, 0, claimed),
      sent(frame, WM_PAINT, 0, 0, left),
  });
}

TEST_F(ToolbarGesture, NoGestureBeginsWhileAMenuIsOpen) {
  play(open_context_menu(),
       {
           sent(frame, WM_ENTERMENULOOP, 0, 0, left),
           posted(frame, WM_RBUTTONDOWN, MK_RBUTTON, at(1, 1), left),
           sent(frame, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(frame.get()), at(1, 1), left),
           posted(toolbar, WM_LBUTTONDOWN, MK_LBUTTON, at(on_grid()), claimed),
           sent(old_bcg, WM_SETFOCUS, 0, 0, claimed),
           sent(frame, WM_MENUSELECT, highlight(11), as_lparam(file), claimed),
       });
  EXPECT_EQ(gesture(mrTrackContextMenu, view, 7, 9, {file_on_new()}), shipped());
}

TEST_F(ToolbarGesture, AnotherGestureMayBeginWhileTheTimeRuns) {
  const CPoint on_line = LookAlikeToolbar::middle_of(0);
  const mrToolbarRec line =
      hit_at(on_item(empty_level(old_bcg, nullptr, 60, "Bar"), 0, 201, "Line", BTNS_BUTTON, 4), on_line.x,
             on_line.y);
  play(press_on_grid(), {
                            tick(900),
                            posted(old_bcg, WM_LBUTTONDOWN, MK_LBUTTON, at(on_line), claimed),
                            tick(900),
                            sent(frame, WM_COMMAND, 102, as_lparam(toolbar), left),
                            sent(frame, WM_COMMAND, 201, 0, claimed,
                                 gesture(mrTrackToolbarClick, old_bcg, on_line.x, on_line.y, {line})),
                        });
  play(press_on_grid(), {sent(old_bcg, WM_SETFOCUS, 0, 0, claimed)});
  EXPECT_EQ(gesture(mrTrackToolbarFocus, old_bcg, 0, 0, {empty_level(old_bcg, nullptr, 60, "Bar")}),
            shipped());
  factory.reset();
  play(press_on_grid(), {sent(frame, WM_ENTERMENULOOP, 0, 0, claimed)});
  EXPECT_EQ(gesture(mrTrackMainMenu, frame, 0, 0, {bar_level()}), shipped());
}

// While the time runs any message may begin a gesture; on a bar it is claimed also when it begins none.
TEST_F(ToolbarGesture, MessageOfAnotherBarThatBeginsNothingIsClaimedWhileTheTimeRuns) {
  play(press_on_grid(), {
                            act("the time runs", [this] { EXPECT_TRUE(factory.is_timer_set()); }),
                            posted(new_bcg, WM_MOUSEMOVE, 0, at(5, 5), claimed),
                            posted(old_bcg, WM_MBUTTONDOWN, MK_MBUTTON, at(5, 5), claimed),
                            sent(old_bcg, WM_PAINT, 0, 0, claimed),
                            sent(view, WM_PAINT, 0, 0, left),
                        });
  EXPECT_EQ(gesture(mrTrackToolbarClick, toolbar, on_grid().x, on_grid().y, {toolbar_on_grid()}), shipped());
}

// Deliberate: what the gesture before left on the stack stays below the context menu.
TEST_F(ToolbarGesture, ContextMenuRightAfterAClosedMenuStandsOnItsLevels) {
  play(open_file_menu(), {
                             sent(file_popup, WM_DESTROY, 0, 0, claimed),
                             sent(frame, WM_EXITMENULOOP, 0, 0, claimed),
                             posted(view, WM_RBUTTONDOWN, MK_RBUTTON, at(7, 9), left),
                             posted(view, WM_RBUTTONUP, 0, at(7, 9), claimed),
                             sent(file_popup, WM_CREATE, 0, 0, claimed),
                             sent(file_popup, WM_SIZE, 0, 0, claimed),
                             sent(frame, WM_MENUSELECT, highlight(11), as_lparam(file), claimed),
                         });
  EXPECT_EQ(gesture(mrTrackContextMenu, view, 7, 9, {bar_on_file(), file_on_new()}), shipped());
}

TEST_F(ToolbarGesture, PlainClickRightAfterACancelledMenuIsLeft) {
  play(open_file_menu(), {
                             sent(file_popup, WM_DESTROY, 0, 0, claimed),
                             sent(frame, WM_EXITMENULOOP, 0, 0, claimed),
                             posted(view, WM_LBUTTONDOWN, MK_LBUTTON, at(1, 1), left),
                             posted(view, WM_LBUTTONUP, 0, at(1, 1), left),
                         });
}

// ---- a click on a toolbar begins a gesture -------------------------------------------------------

TEST_F(ToolbarGesture, SeparatorAndGapBeginNothing) {
  play({
      posted(toolbar, WM_LBUTTONDOWN, MK_LBUTTON, at(toolbar.middle_of(CommonToolbar::separator)), claimed),
      posted(toolbar, WM_LBUTTONUP, 0, at(toolbar.middle_of(CommonToolbar::separator)), claimed),
      posted(toolbar, WM_LBUTTONDOWN, MK_LBUTTON, at(toolbar.beside()), claimed),
      posted(new_bcg, WM_LBUTTONDOWN, MK_LBUTTON, at(LookAlikeToolbar::gap_after(0)), claimed),
      posted(new_bcg, WM_LBUTTONDOWN, MK_LBUTTON, at(-1, -1), claimed),
  });
  EXPECT_FALSE(factory.is_tracking());
  EXPECT_FALSE(factory.is_timer_set());
  EXPECT_FALSE(factory.is_in_stack(toolbar));
}

TEST_F(ToolbarGesture, GapOfAnotherToolbarLeavesTheGestureAsItIs) {
  play(press_on_grid(),
       {
           posted(old_bcg, WM_LBUTTONDOWN, MK_LBUTTON, at(LookAlikeToolbar::gap_after(0)), claimed),
       });
  EXPECT_EQ(gesture(mrTrackToolbarClick, toolbar, on_grid().x, on_grid().y, {toolbar_on_grid()}), shipped());
}

TEST_F(ToolbarGesture, PressAndReleaseBothBeginAGesture) {
  for (const HWND bar : {toolbar.get(), old_bcg.get(), new_bcg.get()}) {
    for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP}) {
      factory.reset();
      play({posted(bar, message, 0, at(5, 5), claimed)});
      EXPECT_TRUE(factory.is_tracking());
      EXPECT_TRUE(factory.is_timer_set());
      EXPECT_TRUE(factory.is_in_stack(bar));
    }
  }
}

TEST_F(ToolbarGesture, OtherMouseButtonsBeginNoClick) {
  play({posted(toolbar, WM_MBUTTONDOWN, MK_MBUTTON, at(on_grid()), claimed),
        posted(toolbar, WM_LBUTTONDBLCLK, MK_LBUTTON, at(on_grid()), claimed)});
  EXPECT_FALSE(factory.is_tracking());
}

// ---- the focus of a toolbar, the menu bar --------------------------------------------------------

TEST_F(ToolbarGesture, FocusOfABcgToolbarBeginsAGesture) {
  play({sent(new_bcg, WM_SETFOCUS, 0, 0, claimed)});
  EXPECT_EQ(gesture(mrTrackToolbarFocus, new_bcg, 0, 0, {empty_level(new_bcg, nullptr, 60, "Bar", true)}),
            shipped());
  EXPECT_FALSE(factory.is_timer_set());
}

TEST_F(ToolbarGesture, FocusOfACommonToolbarBeginsNothing) {
  play({sent(toolbar, WM_SETFOCUS, 0, 0, claimed), sent(view, WM_SETFOCUS, 0, 0, left)});
  EXPECT_FALSE(factory.is_tracking());
}

TEST_F(ToolbarGesture, MenuLoopOfTheMenuBarBeginsAGesture) {
  play({sent(frame, WM_ENTERMENULOOP, 0, 0, claimed)});
  EXPECT_EQ(gesture(mrTrackMainMenu, frame, 0, 0, {bar_level()}), shipped());
  EXPECT_FALSE(factory.is_timer_set());
  EXPECT_FALSE(factory.is_tracking_popup());
}

TEST_F(ToolbarGesture, MenuLoopOfAnOwnMenuBeginsNothing) {
  play({sent(frame, WM_ENTERMENULOOP, TRUE, 0, left), sent(toolbar, WM_ENTERMENULOOP, TRUE, 0, claimed)});
  EXPECT_FALSE(factory.is_tracking());
}

// ---- a context menu ------------------------------------------------------------------------------

TEST_F(ToolbarGesture, RightButtonMayBeginAContextMenuAndIsLeft) {
  for (const UINT message : {WM_RBUTTONDOWN, WM_RBUTTONUP}) {
    factory.reset();
    play({posted(view, message, 0, at(-3, 9), left)});
    EXPECT_TRUE(factory.is_timer_set());
    EXPECT_EQ(gesture(mrTrackContextMenu, view, -3, 9, {}), shipped());
  }
}

TEST_F(ToolbarGesture, RightButtonOnABarIsClaimed) {
  play({posted(toolbar, WM_RBUTTONDOWN, 0, at(on_grid()), claimed)});
  EXPECT_EQ(gesture(mrTrackContextMenu, toolbar, on_grid().x, on_grid().y, {}), shipped());
}

TEST_F(ToolbarGesture, RequestIsForTheWindowItNamesAtThePlaceInTheWindowThatGetsIt) {
  POINT place = {7, 9};
  ClientToScreen(frame, &place);
  play({sent(frame, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(view.get()), at(place.x, place.y), claimed)});
  EXPECT_TRUE(factory.is_timer_set());
  EXPECT_EQ(gesture(mrTrackContextMenu, view, 7, 9, {}), shipped());
}

// Every step of a right click, seen by another window than the one before, gives the menu its whole time.
TEST_F(ToolbarGesture, EachStepOfARightClickStartsTheTimeAnew) {
  POINT place = {7, 9};
  ClientToScreen(frame, &place);
  play({
      posted(view, WM_RBUTTONDOWN, MK_RBUTTON, at(1, 2), left),
      tick(900),
      posted(frame, WM_RBUTTONUP, 0, at(1, 2), left),
      tick(900),
      sent(view, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(view.get()), at(place.x, place.y), claimed),
      tick(1000),
      act("still followed", [this] { EXPECT_TRUE(factory.is_tracking()); }),
      sent(view, WM_NULL, 0, 0, claimed),
      tick(1),
      sent(view, WM_NULL, 0, 0, left),
      act("at an end", [this] { EXPECT_FALSE(factory.is_tracking()); }),
  });
}

// A request that goes on to the parent changes the place as long as nothing is known of the menu.
TEST_F(ToolbarGesture, RequestThatGoesOnToTheParentTakesItsPlace) {
  POINT place = {7, 9};
  ClientToScreen(frame, &place);
  const WPARAM for_view = reinterpret_cast<WPARAM>(view.get());
  play({
      posted(view, WM_RBUTTONDOWN, MK_RBUTTON, at(1, 2), left),
      posted(view, WM_RBUTTONUP, 0, at(1, 2), claimed),
      sent(view, WM_CONTEXTMENU, for_view, at(place.x, place.y), claimed),  // as the start window's message
  });
  EXPECT_EQ(gesture(mrTrackContextMenu, view, 1, 2, {}), shipped());
  play({sent(frame, WM_CONTEXTMENU, for_view, at(place.x, place.y), claimed)});
  EXPECT_EQ(gesture(mrTrackContextMenu, view, 7, 9, {}), shipped());
}

TEST_F(ToolbarGesture, RequestIsClaimedAndChangesNothingOnceAnItemIsKnown) {
  play(open_context_menu(),
       {
           sent(frame, WM_MENUSELECT, highlight(11), as_lparam(file), claimed),
           sent(file_popup, WM_DESTROY, 0, 0, claimed),
           sent(frame, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(frame.get()), at(50, 60), claimed),
       });
  EXPECT_EQ(gesture(mrTrackContextMenu, view, 7, 9, {file_on_new()}), shipped());
}

// Another gesture's snapshot is none of a context menu that has not begun.
TEST_F(ToolbarGesture, RequestBeginsAContextMenuAfterAnotherGesture) {
  play(press_on_grid(),
       {sent(frame, WM_COMMAND, 102, as_lparam(toolbar), claimed,
             gesture(mrTrackToolbarClick, toolbar, on_grid().x, on_grid().y, {toolbar_on_grid()}))});
  POINT place = {7, 9};
  ClientToScreen(frame, &place);
  play({sent(frame, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(view.get()), at(place.x, place.y), claimed)});
  EXPECT_EQ(gesture(mrTrackContextMenu, view, 7, 9, {toolbar_on_grid()}), shipped());
}

TEST_F(ToolbarGesture, KeyboardRequestHasNoPlace) {
  // Left of and above the screen the converted point would look like one of the mouse's.
  SetWindowPos(frame, nullptr, -500, -500, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  play({sent(frame, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(view.get()), at(-1, -1), claimed)});
  EXPECT_EQ(gesture(mrTrackContextMenu, view, -1, -1, {}), shipped());
}

TEST_F(ToolbarGesture, RightClickWithoutAMenuEndsAfterItsTime) {
  play({
      posted(view, WM_RBUTTONDOWN, MK_RBUTTON, at(1, 2), left),
      posted(view, WM_RBUTTONUP, 0, at(1, 2), claimed),
      tick(1001),
      posted(view, WM_MOUSEMOVE, 0, at(1, 2), left),
      posted(view, WM_LBUTTONDOWN, MK_LBUTTON, at(1, 2), left),
  });
  EXPECT_FALSE(factory.is_tracking());
}

TEST_F(ToolbarGesture, PopupThatNobodyAskedForIsAContextMenuOfTheActiveWindow) {
  mrTestWindow dialog((register_test_class("TestDialog"), "TestDialog"), "Dialog", WS_POPUP | WS_VISIBLE,
                      frame);
  SetActiveWindow(dialog);
  ASSERT_EQ(dialog.get(), GetActiveWindow());
  play({
      sent(file_popup, WM_CREATE, 0, 0, claimed),
      sent(file_popup, WM_SIZE, 0, 0, claimed),
      sent(dialog, WM_MENUSELECT, highlight(11), as_lparam(file), claimed),
      act("no time runs", [this] { EXPECT_FALSE(factory.is_timer_set()); }),
      sent(file_popup, WM_DESTROY, 0, 0, claimed),
      posted(dialog, WM_COMMAND, 11, 0, claimed, gesture(mrTrackContextMenu, frame, -1, -1, {file_on_new()})),
  });
}

TEST_F(ToolbarGesture, PopupOfAThreadWithoutAnActiveWindowIsAContextMenuOfNoWindow) {
  const ForeignPopup popup;
  GUITHREADINFO info = {};
  info.cbSize = sizeof info;
  ASSERT_TRUE(GetGUIThreadInfo(GetWindowThreadProcessId(popup, nullptr), &info));
  ASSERT_EQ(nullptr, info.hwndActive);
  play({sent(popup, WM_CREATE, 0, 0, claimed)});
  EXPECT_EQ(gesture(mrTrackContextMenu, nullptr, -1, -1, {}), shipped());
  EXPECT_TRUE(factory.is_in_stack(popup));
  EXPECT_FALSE(factory.is_timer_set());
}

TEST_F(ToolbarGesture, OtherMessagesOfAPopupBeginNothing) {
  play({sent(file_popup, WM_SIZE, 0, 0, left), sent(file_popup, WM_DESTROY, 0, 0, left),
        sent(view, WM_CREATE, 0, 0, left)});
  EXPECT_FALSE(factory.is_tracking());
}

// ---- bars ----------------------------------------------------------------------------------------

TEST_F(ToolbarGesture, EverythingOnABarIsClaimed) {
  for (const char* class_name : {"AfxWnd42u", "MsoCommandBar", "BCGToolBar", "BCGPToolBar", "BCGPToolBarX"}) {
    register_test_class(class_name);
    const mrTestWindow bar(class_name, "", visible_child, frame, 1);
    play({posted(bar, WM_MBUTTONDOWN, MK_MBUTTON, at(1, 1), claimed),
          posted(bar, WM_MOUSEMOVE, 0, at(1, 1), claimed), sent(bar, WM_PAINT, 0, 0, claimed)});
  }
  play({posted(toolbar, WM_MOUSEMOVE, 0, at(1, 1), claimed)});
}

TEST_F(ToolbarGesture, OtherWindowsAreLeft) {
  for (const char* class_name : {"AfxWnd42", "AfxWnd42ux", "MsoCommandBarPopup", "ToolbarWindow32x"}) {
    register_test_class(class_name);
    const mrTestWindow window(class_name, "", visible_child, frame, 1);
    play({posted(window, WM_LBUTTONDOWN, MK_LBUTTON, at(1, 1), left),
          posted(window, WM_MOUSEMOVE, 0, at(1, 1), left)});
  }
}

TEST_F(ToolbarGesture, NoToolbarIsAskedAnythingByMovesOfTheMouse) {
  play({posted(old_bcg, WM_MOUSEMOVE, 0, at(1, 1), claimed), posted(view, WM_MOUSEMOVE, 0, at(1, 1), left),
        sent(old_bcg, WM_NCHITTEST, 0, at(1, 1), claimed)});
  EXPECT_EQ(0, old_bcg.asked());
  play({posted(old_bcg, WM_LBUTTONDOWN, 0, at(1, 1), claimed)});
  old_bcg.questions.clear();
  play({posted(old_bcg, WM_MOUSEMOVE, 0, at(2, 1), claimed)});
  EXPECT_EQ(0, old_bcg.asked());
}

// ---- snapshot ------------------------------------------------------------------------------------

TEST_F(ToolbarGesture, HotButtonIsTheCurrentItemOfASnapshot) {
  play({sent(old_bcg, WM_SETFOCUS, 0, 0, claimed)});
  old_bcg.hot = 0;
  factory.make_snapshot();
  EXPECT_EQ(201, factory.get_window_by_hwnd(old_bcg)->item_id);
  old_bcg.hot = -1;
  factory.make_snapshot();
  EXPECT_EQ(201, factory.get_window_by_hwnd(old_bcg)->item_id) << "none is hot";
  old_bcg.questions.clear();
  old_bcg.hot = 0;
  factory.make_snapshot();
  EXPECT_EQ(0, old_bcg.questions[TB_GETBUTTON]) << "it is the current one already";
}

TEST_F(ToolbarGesture, HotButtonOfACommonToolbarIsTheCurrentItem) {
  play(press_on_grid());
  toolbar.make_hot(CommonToolbar::first);
  factory.make_snapshot();
  EXPECT_EQ(101, factory.get_window_by_hwnd(toolbar)->item_id);
}

TEST_F(ToolbarGesture, NewBcgToolbarsAndMenusAreNotAskedForTheHotButton) {
  new_bcg.hot = 1;
  play({sent(new_bcg, WM_SETFOCUS, 0, 0, claimed)});
  EXPECT_EQ(0, new_bcg.questions[TB_GETHOTITEM]);
  EXPECT_EQ(0, factory.get_window_by_hwnd(new_bcg)->item_id);
}

TEST_F(ToolbarGesture, UploadEndsTheGestureButNotItsStack) {
  play(press_on_grid());
  uploads.clear();
  factory.command_invoked();
  EXPECT_EQ(gesture(mrTrackToolbarClick, toolbar, on_grid().x, on_grid().y, {toolbar_on_grid()}).front(),
            uploads.last().bytes);
  EXPECT_FALSE(factory.is_tracking());
  EXPECT_TRUE(factory.is_in_stack(toolbar));
}

// The snapshot outlives the popups: the command comes after they are closed.
TEST_F(ToolbarGesture, SnapshotStaysUntilTheNextOne) {
  play(open_file_menu(), {sent(frame, WM_MENUSELECT, highlight(11), as_lparam(file), claimed)});
  const mrTapeUploads expected = shipped();
  play({sent(file_popup, WM_DESTROY, 0, 0, claimed)});
  EXPECT_EQ(expected, shipped());
  factory.reset();
  EXPECT_EQ(gesture(mrTrackNone, frame, 0, 0, {bar_on_file(), file_on_new()}), shipped());
}

// ---- stack ---------------------------------------------------------------------------------------

class ToolbarStack : public ToolbarGesture {
protected:
  PopupWindow second_popup{file};

  // The bar, the file menu, the formats, and the file menu's window once more.
  void SetUp() override {
    ToolbarGesture::SetUp();
    play({sent(frame, WM_ENTERMENULOOP, 0, 0, claimed), sent(file_popup, WM_CREATE, 0, 0, claimed),
          sent(formats_popup, WM_CREATE, 0, 0, claimed), sent(file_popup, WM_CREATE, 0, 0, claimed),
          sent(second_popup, WM_CREATE, 0, 0, claimed)});
    ASSERT_TRUE(factory.is_in_stack(second_popup));
  }
};

TEST_F(ToolbarStack, RemovingEndsAtTheTopmostLevelOfTheWindow) {
  factory.remove_from(file_popup);
  EXPECT_FALSE(factory.is_in_stack(second_popup));
  EXPECT_TRUE(factory.is_in_stack(formats_popup));
  EXPECT_TRUE(factory.is_in_stack(file_popup));
  factory.remove_from(file_popup);
  EXPECT_FALSE(factory.is_in_stack(formats_popup));
  EXPECT_FALSE(factory.is_in_stack(file_popup));
  EXPECT_TRUE(factory.is_in_stack(frame));
}

TEST_F(ToolbarStack, RemovingAboveKeepsTheTopmostLevelOfTheWindow) {
  factory.remove_from_excl(formats_popup);
  EXPECT_FALSE(factory.is_in_stack(second_popup));
  EXPECT_TRUE(factory.is_in_stack(formats_popup));
  factory.remove_from_excl(formats_popup);
  EXPECT_TRUE(factory.is_in_stack(formats_popup));
}

TEST_F(ToolbarStack, RemovingAWindowThatIsNotThereRemovesNothing) {
  factory.remove_from(view);
  factory.remove_from_excl(view);
  EXPECT_TRUE(factory.is_in_stack(second_popup));
}

TEST_F(ToolbarStack, OutermostLevelOfAWindowOrMenuIsFound) {
  factory.get_window_by_hwnd(file_popup)->item_id = 77;
  factory.remove_from(file_popup);
  EXPECT_EQ(77, factory.get_window_by_hwnd(file_popup)->item_id);
  EXPECT_EQ(factory.get_window_by_hwnd(file_popup), factory.get_window_by_hmenu(unknown_menu()));
  EXPECT_EQ(factory.get_window_by_hwnd(frame), factory.get_window_by_hmenu(bar));
  EXPECT_EQ(nullptr, factory.get_window_by_hwnd(view));
  EXPECT_EQ(nullptr, factory.get_window_by_hmenu(formats));
}

TEST_F(ToolbarStack, StartAndMousePlaceAreSet) {
  factory.set_timer();
  factory.set_start_event(view, CPoint(-4, 5), mrTrackContextMenu);
  EXPECT_FALSE(factory.is_timer_set());
  EXPECT_TRUE(factory.is_in_stack(frame)) << "the stack stays";
  EXPECT_EQ(gesture(mrTrackContextMenu, view, -4, 5, {bar_level()}), shipped());
}
