// The CAD view recorder: what it uploads, what becomes of it, and how a view is declared.
#include "controls/mrCADView.h"

#include "controls/mrWindow.h"
#include "hooks/mrDispatcher.h"
#include "hooks/mrHostMessages.h"
#include "tests/support/recording.h"
#include "tests/support/tape.h"

#include <gtest/gtest.h>

namespace {

// A window that answers as the host's view does, with a camera that tests move.
class ViewWindow : public mrTestWindow {
public:
  explicit ViewWindow(HWND frame)
      : mrTestWindow("SomeHostView", "", WS_CHILD | WS_VISIBLE, frame, 5, 0, {0, 0, 200, 100}) {
    set_answer([this](UINT message, WPARAM wparam, LPARAM, LRESULT& result) {
      if (message != host_messages().get_view_position)
        return false;
      if (wparam == 1) {
        ++identity_questions;
        result = is_view;
      } else {
        result = position.empty() ? no_atom : GlobalAddAtomA(position.c_str());
      }
      return true;
    });
  }

  std::string position = "eye 1 2 3";
  LRESULT no_atom = 0x1234;  // the answer without a position
  LRESULT is_view = 1;
  int identity_questions = 0;
};

class CADView : public testing::Test {
protected:
  static mrCADViewFactory& factory() {
    return *static_cast<mrCADViewFactory*>(get_factory(factoryCadView, true));
  }

  mrCADViewRec rec(UINT message, int x, int y, WPARAM keys = 0) {
    mrCADViewRec record = {};
    record.window = view;
    record.message = message;
    record.wparam = keys;
    record.lparam = at(x, y);
    return record;
  }
  void receive(UINT message, int x, int y, WPARAM keys = 0) {
    recorder.receive(factoryCadView, rec(message, x, y, keys));
  }

  // The same as the generic recorder has it.
  void receive_window(UINT message, int x, int y, WPARAM keys = 0) {
    recorder.receive(factoryWindow, mrWindowRec{windowMouse, 0, view, message, 0, keys, at(x, y)});
  }

  mrTestFrame frame;
  // The class must be there before the window: constructed by the first member that needs it.
  struct Registered {
    Registered() { register_test_class("SomeHostView"); }
  } registered;
  ViewWindow view{frame};
  mrTestRecorder recorder;

  using Statements = std::vector<std::string>;
  const std::string camera = "SetCameraPosition(\"eye 1 2 3\", 201, 101);";
};

class CADViewRecognition : public CADView {
protected:
  mrUploadCatcher uploads;
};

}  // namespace

// ---- recogniser -----------------------------------------------------------------------------------

TEST_F(CADViewRecognition, UploadsEveryMouseButtonMessageOfAView) {
  for (UINT message = WM_LBUTTONDOWN; message <= WM_MBUTTONDBLCLK; ++message) {
    play_tape(factory(), uploads,
              {{hookGetMessage, view, message, MK_CONTROL, at(-3, 40), claimed,
                record(rec(message, -3, 40, MK_CONTROL))}});
  }
  EXPECT_EQ(factoryCadView, static_cast<int>(uploads.last().type));
}

TEST_F(CADViewRecognition, TakesSentMessagesAndLeavesReturnedOnesAndNotifications) {
  play_tape(
      factory(), uploads,
      {{hookCallWndProc, view, WM_LBUTTONDOWN, 1, at(1, 1), claimed, record(rec(WM_LBUTTONDOWN, 1, 1, 1))},
       {hookCallWndProcRet, view, WM_LBUTTONDOWN, 1, at(1, 1), left, none}});
  EXPECT_FALSE(factory().handle_message(hookCbt, HCBT_ACTIVATE, 0, 0));
}

TEST_F(CADViewRecognition, LeavesOtherMessagesWithoutAskingTheWindow) {
  play_tape(factory(), uploads,
            {{hookGetMessage, view, WM_MOUSEMOVE, 0, at(1, 1), left, none},
             {hookGetMessage, view, WM_MOUSEWHEEL, 0, at(1, 1), left, none},
             {hookCallWndProc, view, WM_PAINT, 0, 0, left, none}});
  EXPECT_EQ(0, view.identity_questions);
}

TEST_F(CADViewRecognition, LeavesAWindowThatDoesNotAnswerExactlyOne) {
  for (const LRESULT answer : {0, 2, 165}) {
    view.is_view = answer;
    play_tape(factory(), uploads, {{hookGetMessage, view, WM_LBUTTONDOWN, 1, at(1, 1), left, none}});
  }
}

TEST_F(CADViewRecognition, LeavesAMessageWithoutAWindow) {
  play_tape(factory(), uploads, {{hookGetMessage, nullptr, WM_LBUTTONDOWN, 1, at(1, 1), left, none}});
}

// ---- builder --------------------------------------------------------------------------------------

TEST_F(CADView, PressAndReleaseAtOnePlaceAreOneClickAfterTheCamera) {
  receive(WM_LBUTTONDOWN, 10, 20, MK_LBUTTON | MK_CONTROL);
  receive(WM_LBUTTONUP, 10, 20, MK_CONTROL);
  EXPECT_EQ((Statements{camera, "Click(1, 10, 20, 201, 101, 8);"}), recorder.statements());
  EXPECT_EQ(actionClick, recorder.last_action()->get_action_struct().kind);
}

TEST_F(CADView, TakesTheOwnButtonOutOfTheKeyState) {
  receive(WM_RBUTTONDOWN, 1, 2, MK_RBUTTON | MK_LBUTTON | MK_SHIFT);
  receive(WM_MBUTTONDOWN, 3, 4, MK_MBUTTON | MK_SHIFT);
  EXPECT_EQ((Statements{camera, "MouseDown(2, 1, 2, 201, 101, 5);", "MouseDown(3, 3, 4, 201, 101, 4);"}),
            recorder.statements());
}

TEST_F(CADView, DragThatTurnsTheViewLeavesOnlyTheCamera) {
  receive(WM_LBUTTONDOWN, 10, 20, MK_LBUTTON);
  view.position = "eye 4 5 6";
  receive(WM_LBUTTONUP, 60, 20);
  EXPECT_EQ((Statements{"SetCameraPosition(\"eye 4 5 6\", 201, 101);"}), recorder.statements());
}

TEST_F(CADView, DragThatLeavesTheCameraIsAPressAndARelease) {
  receive(WM_LBUTTONDOWN, 10, 20, MK_LBUTTON);
  receive(WM_LBUTTONUP, -60, 20);
  EXPECT_EQ((Statements{camera, "MouseDown(1, 10, 20, 201, 101, 0);", "MouseUp(1, -60, 20, 201, 101, 0);"}),
            recorder.statements());
}

TEST_F(CADView, DoubleClickTakesThePlaceOfItsFirstClick) {
  receive(WM_LBUTTONDOWN, 10, 20, MK_LBUTTON);
  receive(WM_LBUTTONUP, 10, 20);
  receive(WM_LBUTTONDBLCLK, 10, 20, MK_LBUTTON);
  receive(WM_LBUTTONUP, 10, 20);  // the second release follows no press
  EXPECT_EQ((Statements{camera, "DoubleClick(1, 10, 20, 201, 101, 0);"}), recorder.statements());
  EXPECT_EQ(actionDoubleClick, recorder.last_action()->get_action_struct().kind);
}

// The window was no view yet when the generic recorder took its first click.
TEST_F(CADView, DoubleClickTakesThePlaceOfAClickOfTheGenericRecorder) {
  receive_window(WM_LBUTTONDOWN, 10, 20, MK_LBUTTON);
  receive_window(WM_LBUTTONUP, 10, 20);
  mrBaseWindow* const click = recorder.last_action();
  ASSERT_EQ(nullptr, dynamic_cast<mrCADView*>(click));
  receive(WM_LBUTTONDBLCLK, 10, 20, MK_LBUTTON | MK_SHIFT);
  EXPECT_EQ((Statements{"DoubleClick(1, 10, 20, 201, 101, 4);", camera}), recorder.statements());
  EXPECT_EQ(actionDoubleClick, click->get_action_struct().kind);
  EXPECT_EQ(MK_SHIFT, click->get_action_struct().key_state);
}

TEST_F(CADView, DoubleClickAtAnotherPlaceStandsForItself) {
  receive(WM_LBUTTONDOWN, 10, 20, MK_LBUTTON);
  receive(WM_LBUTTONUP, 10, 20);
  receive(WM_LBUTTONDBLCLK, 11, 20, MK_LBUTTON);
  EXPECT_EQ((Statements{camera, "Click(1, 10, 20, 201, 101, 0);", "DoubleClick(1, 11, 20, 201, 101, 0);"}),
            recorder.statements());
}

TEST_F(CADView, ReleaseWithoutAPressMakesNothingButTheCamera) {
  receive(WM_LBUTTONUP, 10, 20);
  EXPECT_EQ((Statements{camera}), recorder.statements());
  receive(WM_LBUTTONUP, 10, 20);
  EXPECT_EQ((Statements{camera}), recorder.statements());
}

TEST_F(CADView, TwoCamerasWithNothingBetweenLeaveTheLast) {
  receive(WM_LBUTTONUP, 1, 1);
  view.position = "eye 7 8 9";
  receive(WM_LBUTTONUP, 1, 1);
  EXPECT_EQ((Statements{"SetCameraPosition(\"eye 7 8 9\", 201, 101);"}), recorder.statements());
}

TEST_F(CADView, CameraThatMovedByItselfComesBeforeTheNextPress) {
  receive(WM_LBUTTONDOWN, 10, 20, MK_LBUTTON);
  receive(WM_LBUTTONUP, 10, 20);
  view.position = "eye 4 5 6";
  receive(WM_LBUTTONDOWN, 30, 20, MK_LBUTTON);
  receive(WM_LBUTTONUP, 30, 20);
  EXPECT_EQ((Statements{camera, "Click(1, 10, 20, 201, 101, 0);",
                        "SetCameraPosition(\"eye 4 5 6\", 201, 101);", "Click(1, 30, 20, 201, 101, 0);"}),
            recorder.statements());
}

TEST_F(CADView, ClickDuringWhichTheCameraMovedComesBeforeTheNewCamera) {
  receive(WM_LBUTTONDOWN, 10, 20, MK_LBUTTON);
  view.position = "eye 4 5 6";
  receive(WM_LBUTTONUP, 10, 20);
  EXPECT_EQ(
      (Statements{camera, "Click(1, 10, 20, 201, 101, 0);", "SetCameraPosition(\"eye 4 5 6\", 201, 101);"}),
      recorder.statements());
}

TEST_F(CADView, ResizedViewIsAMovedCamera) {
  receive(WM_LBUTTONDOWN, 10, 20, MK_LBUTTON);
  receive(WM_LBUTTONUP, 10, 20);
  MoveWindow(view, 0, 0, 150, 80, FALSE);
  receive(WM_LBUTTONDOWN, 10, 20, MK_LBUTTON);
  EXPECT_EQ((Statements{camera, "Click(1, 10, 20, 201, 101, 0);",
                        "SetCameraPosition(\"eye 1 2 3\", 151, 81);", "MouseDown(1, 10, 20, 151, 81, 0);"}),
            recorder.statements());
}

TEST_F(CADView, TwoViewsKeepTheirCamerasApart) {
  ViewWindow other{frame};
  other.position = "eye 9 9 9";
  mrCADViewRec in_other = rec(WM_LBUTTONDOWN, 5, 5, MK_LBUTTON);
  in_other.window = other;
  receive(WM_LBUTTONDOWN, 10, 20, MK_LBUTTON);
  recorder.receive(factoryCadView, in_other);
  in_other.message = WM_LBUTTONUP;
  recorder.receive(factoryCadView, in_other);
  receive(WM_LBUTTONDOWN, 10, 20, MK_LBUTTON);
  EXPECT_EQ(
      (Statements{camera, "MouseDown(1, 10, 20, 201, 101, 0);", "SetCameraPosition(\"eye 9 9 9\", 201, 101);",
                  "Click(1, 5, 5, 201, 101, 0);", "MouseDown(1, 10, 20, 201, 101, 0);"}),
      recorder.statements());
}

TEST_F(CADView, WritesAnEmptyPositionForAViewThatGivesNone) {
  view.position.clear();
  receive(WM_LBUTTONDOWN, 1, 1, MK_LBUTTON);
  EXPECT_EQ("SetCameraPosition(\"\", 201, 101);", recorder.statements().at(0));
}

TEST_F(CADView, TakesNoAnswerOutsideTheAtomsForAnAtom) {
  view.position.clear();
  for (const LRESULT answer : {0LL, 0x1234LL, 0x4000LL, 0x8001LL, 0x1C001LL, -1LL}) {
    view.no_atom = answer;
    receive(WM_LBUTTONDOWN, 1, 1, MK_LBUTTON);
    EXPECT_EQ("SetCameraPosition(\"\", 201, 101);", recorder.statements().at(0)) << answer;
  }
}

TEST_F(CADView, WritesThePositionAsItStands) {
  view.position = "say \"eye\" \\ 1";
  receive(WM_LBUTTONDOWN, 1, 1, MK_LBUTTON);
  EXPECT_EQ("SetCameraPosition(\"say \"eye\" \\ 1\", 201, 101);", recorder.statements().at(0));
}

TEST_F(CADView, NeverLeaksAnAtom) {
  for (int i = 0; i < 1000; ++i) {
    view.position = "eye " + std::to_string(i);
    receive(WM_LBUTTONUP, 1, 1);
    EXPECT_EQ(0, GlobalFindAtomA(view.position.c_str())) << i;
  }
}

TEST_F(CADView, RightClickThatOpensAMenuBecomesAContextMenu) {
  receive(WM_RBUTTONDOWN, 10, 20, MK_RBUTTON);
  receive(WM_RBUTTONUP, 10, 20);
  EXPECT_EQ(contextMenuRecorded, factory().context_menu_invoke(view, "SomeHostView", CPoint(10, 20)));
  EXPECT_EQ((Statements{camera, "ContextMenu(10, 20, 201, 101);"}), recorder.statements());
}

TEST_F(CADView, ContextMenuElsewhereKeepsTheClick) {
  receive(WM_RBUTTONDOWN, 10, 20, MK_RBUTTON);
  receive(WM_RBUTTONUP, 10, 20);
  factory().context_menu_invoke(view, "SomeHostView", CPoint(11, 20));
  EXPECT_EQ((Statements{camera, "Click(2, 10, 20, 201, 101, 0);", "ContextMenu(11, 20, 201, 101);"}),
            recorder.statements());
}

// Whatever a right button did last at the menu's place was the click that opened it.
TEST_F(CADView, ContextMenuTakesThePlaceOfAPressOrAReleaseToo) {
  receive(WM_RBUTTONDOWN, 10, 20, MK_RBUTTON);
  factory().context_menu_invoke(view, "SomeHostView", CPoint(10, 20));
  EXPECT_EQ((Statements{camera, "ContextMenu(10, 20, 201, 101);"}), recorder.statements());
  receive(WM_RBUTTONDOWN, 1, 1, MK_RBUTTON);
  receive(WM_RBUTTONUP, 10, 20);
  factory().context_menu_invoke(view, "SomeHostView", CPoint(10, 20));
  EXPECT_EQ((Statements{camera, "ContextMenu(10, 20, 201, 101);", "MouseDown(2, 1, 1, 201, 101, 0);",
                        "ContextMenu(10, 20, 201, 101);"}),
            recorder.statements());
}

TEST_F(CADView, ContextMenuTakesThePlaceOfARightClickOfTheGenericRecorder) {
  receive_window(WM_RBUTTONDOWN, 10, 20, MK_RBUTTON);
  receive_window(WM_RBUTTONUP, 10, 20);
  ASSERT_EQ((Statements{"Click(2, 10, 20, 0);"}), recorder.statements());
  factory().context_menu_invoke(view, "SomeHostView", CPoint(10, 20));
  EXPECT_EQ((Statements{"ContextMenu(10, 20, 201, 101);"}), recorder.statements());
}

TEST_F(CADView, ContextMenuKeepsClicksOfOtherButtonsAndDoubleClicks) {
  receive(WM_LBUTTONDOWN, 10, 20, MK_LBUTTON);
  receive(WM_LBUTTONUP, 10, 20);
  factory().context_menu_invoke(view, "SomeHostView", CPoint(10, 20));
  receive(WM_RBUTTONDBLCLK, 10, 20, MK_RBUTTON);
  factory().context_menu_invoke(view, "SomeHostView", CPoint(10, 20));
  EXPECT_EQ((Statements{camera, "Click(1, 10, 20, 201, 101, 0);", "ContextMenu(10, 20, 201, 101);",
                        "DoubleClick(2, 10, 20, 201, 101, 0);", "ContextMenu(10, 20, 201, 101);"}),
            recorder.statements());
}

// It has no kind, as a camera statement has none.
TEST_F(CADView, ContextMenuIsTakenOffByTheNextMovedCamera) {
  receive(WM_RBUTTONDOWN, 10, 20, MK_RBUTTON);
  receive(WM_RBUTTONUP, 10, 20);
  factory().context_menu_invoke(view, "SomeHostView", CPoint(10, 20));
  EXPECT_EQ(actionNone, recorder.last_action()->get_action_struct().kind);
  view.position = "eye 4 5 6";
  receive(WM_LBUTTONDOWN, 30, 20, MK_LBUTTON);
  EXPECT_EQ((Statements{camera, "SetCameraPosition(\"eye 4 5 6\", 201, 101);",
                        "MouseDown(1, 30, 20, 201, 101, 0);"}),
            recorder.statements());
}

TEST_F(CADView, LastActionWithoutAPathIsAnInvalidArgument) {
  recorder.get_actions().AddTail(new mrBaseWindow(nullptr, &factory()));
  EXPECT_THROW(receive(WM_LBUTTONDBLCLK, 10, 20, MK_LBUTTON), CInvalidArgException);
  EXPECT_THROW(factory().context_menu_invoke(view, "SomeHostView", CPoint(10, 20)), CInvalidArgException);
}

TEST_F(CADView, LeavesTheContextMenuOfAnotherWindow) {
  view.is_view = 0;
  EXPECT_EQ(contextMenuNotClaimed, factory().context_menu_invoke(view, "SomeHostView", CPoint(1, 1)));
  EXPECT_TRUE(recorder.statements().empty());
}

// ---- declaration ----------------------------------------------------------------------------------

TEST_F(CADView, IsDeclaredWithoutAnIdentifierOfItsOwn) {
  receive(WM_LBUTTONDOWN, 1, 1, MK_LBUTTON);
  const mrWindowInfo* info = recorder.last_action()->get_path()[0];
  EXPECT_STREQ("CADViewClass", info->class_name);
  CString declaration, search, identifier;
  EXPECT_EQ(declaredByName, recorder.get_declaration(info, declaration, search, identifier));
  EXPECT_EQ("CADView()", declaration);
  EXPECT_EQ("CADView()", search);
  EXPECT_EQ("CADView", identifier);
}

TEST_F(CADView, IsDeclaredByTheNameThatTheHostGivesIt) {
  mrWindowInfo info;
  strcpy(info.class_name, "CADViewClass");
  strcpy(info.name, "Front view");
  CString declaration, search, identifier;
  EXPECT_EQ(declaredByName, recorder.get_declaration(&info, declaration, search, identifier));
  EXPECT_EQ("CADViewByID(\"Front view\")", declaration);
  EXPECT_EQ("Front_view", identifier);
}

TEST_F(CADView, ActionWithoutAWindowRaisesInvalidArgument) {
  EXPECT_THROW(mrCADView(nullptr, &factory()), CInvalidArgException);
}
