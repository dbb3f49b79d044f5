#include "controls/mrButton.h"

#include "controls/mrWindow.h"
#include "framework/CInvalidArgException.h"
#include "hooks/mrDispatcher.h"
#include "tests/support/declared.h"
#include "tests/support/hooked.h"
#include "tests/support/recording.h"
#include "tests/support/tape.h"
#include "tests/support/test_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

using testing::ElementsAre;

static mrTapeUploads click_of(HWND button) { return record(mrButtonRec{buttonClick, 0, button}); }
static mrTapeUploads check_state_of(HWND button) { return record(mrButtonRec{buttonCheckState, 0, button}); }

static constexpr DWORD child = WS_CHILD | WS_VISIBLE;

// A control of a class name of one's own that begins with "Button" and answers BM_GETCHECK, as an owner-drawn
// button of the host does.
class OwnerDrawnButton : public mrTestWindow {
public:
  explicit OwnerDrawnButton(HWND parent)
      : mrTestWindow((register_test_class("ButtonToggle"), "ButtonToggle"), "Toggle", child | BS_OWNERDRAW,
                     parent, 77) {
    set_answer([this](UINT message, WPARAM, LPARAM, LRESULT& result) {
      if (message != BM_GETCHECK)
        return false;
      ++questions;
      result = state;
      return true;
    });
  }
  LRESULT state = BST_UNCHECKED;
  int questions = 0;
};

// ---- recognition --------------------------------------------------------------------------------

class ButtonRecognition : public testing::Test {
protected:
  mrUploadCatcher uploads;
  mrButtonFactory factory;
  mrTestFrame dialog;
  mrTestWindow button{"Button", "OK", child | BS_PUSHBUTTON, dialog, 1};
  mrTestWindow check_box{"Button", "Grid", child | BS_AUTOCHECKBOX, dialog, 2};
  mrTestWindow radio{"Button", "Metric", child | BS_AUTORADIOBUTTON, dialog, 3};
  mrTestWindow edit{"Edit", "", child, dialog, 4};
  OwnerDrawnButton toggle{dialog};

  mrTapeStep clicked(int kind, HWND control, mrTapeAnswer answer, mrTapeUploads sent) {
    return {kind, dialog, WM_COMMAND, notify(1, BN_CLICKED), as_lparam(control), answer, std::move(sent)};
  }
  void play(const std::vector<mrTapeStep>& tape) { play_tape(factory, uploads, tape); }
};

// The parent's BN_CLICKED belongs to the click already uploaded.
TEST_F(ButtonRecognition, PushButtonClickedWithTheMouseIsUploadedOnce) {
  play({
      {hookGetMessage, button, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), claimed, none},
      {hookCallWndProc, button, BM_SETSTATE, 1, 0, claimed, none},
      {hookGetMessage, button, WM_LBUTTONUP, 0, at(5, 5), claimed, click_of(button)},
      {hookCallWndProc, button, WM_CAPTURECHANGED, 0, 0, claimed, none},
      clicked(hookCallWndProc, button, claimed, none),
      clicked(hookCallWndProcRet, button, claimed, none),
  });
}

TEST_F(ButtonRecognition, PushButtonClickedWithTheKeyboardIsUploadedOnce) {
  play({
      {hookGetMessage, button, WM_KEYDOWN, VK_SPACE, 0, claimed, none},
      clicked(hookCallWndProc, button, claimed, click_of(button)),
      clicked(hookCallWndProcRet, button, claimed, none),
      {hookGetMessage, button, WM_KEYUP, VK_SPACE, 0, claimed, none},
  });
}

TEST_F(ButtonRecognition, WatchEndsAfterMoreThanItsTime) {
  play({
      {hookGetMessage, button, WM_LBUTTONUP, 0, at(5, 5), claimed, click_of(button)},
      tick(100),
      clicked(hookCallWndProc, button, claimed, none),
      tick(1),
      clicked(hookCallWndProc, button, claimed, click_of(button)),
  });
}

TEST_F(ButtonRecognition, WatchCountsAcrossTheWrapOfTheTicks) {
  play({
      act("ticks almost at their end", [] { mrTestClock::set(0xFFFFFFF0); }),
      {hookGetMessage, button, WM_LBUTTONUP, 0, at(5, 5), claimed, click_of(button)},
      tick(100),
      clicked(hookCallWndProc, button, claimed, none),
      tick(1),
      clicked(hookCallWndProc, button, claimed, click_of(button)),
  });
}

TEST_F(ButtonRecognition, CheckBoxIsUploadedBeforeAndAfterItsParentHandledTheClick) {
  play({
      {hookGetMessage, check_box, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), claimed, none},
      {hookGetMessage, check_box, WM_LBUTTONUP, 0, at(5, 5), claimed, click_of(check_box)},
      clicked(hookCallWndProc, check_box, claimed, check_state_of(check_box)),
      clicked(hookCallWndProcRet, check_box, claimed, check_state_of(check_box)),
  });
}

TEST_F(ButtonRecognition, EveryKindOfCheckBoxUploadsItsState) {
  for (const DWORD style : {BS_CHECKBOX, BS_AUTOCHECKBOX, BS_3STATE, BS_AUTO3STATE}) {
    const mrTestWindow box("Button", "Box", child | style, dialog, 9);
    play({clicked(hookGetMessage, box, claimed, check_state_of(box)),
          clicked(hookCallWndProc, box, claimed, check_state_of(box)),
          clicked(hookCallWndProcRet, box, claimed, check_state_of(box))});
  }
}

TEST_F(ButtonRecognition, RadioButtonChosenWithTheKeyboardIsAClick) {
  for (const DWORD style : {BS_RADIOBUTTON, BS_AUTORADIOBUTTON}) {
    const mrTestWindow choice("Button", "Choice", child | style, dialog, 9);
    play({clicked(hookCallWndProc, choice, claimed, click_of(choice)),
          clicked(hookCallWndProcRet, choice, claimed, none)});
  }
}

// BM_CLICK, by which a dialog answers a letter or an arrow key, sends the press and the release.
TEST_F(ButtonRecognition, ReleaseThatIsSentIsUploadedOnce) {
  play({
      {hookCallWndProc, button, BM_CLICK, 0, 0, claimed, none},
      {hookCallWndProc, button, WM_LBUTTONDOWN, MK_LBUTTON, 0, claimed, none},
      {hookCallWndProcRet, button, WM_LBUTTONDOWN, MK_LBUTTON, 0, claimed, none},
      {hookCallWndProc, button, WM_LBUTTONUP, 0, 0, claimed, click_of(button)},
      clicked(hookCallWndProc, button, claimed, none),
      clicked(hookCallWndProcRet, button, claimed, none),
      {hookCallWndProcRet, button, WM_LBUTTONUP, 0, 0, claimed, none},
      {hookCallWndProcRet, button, BM_CLICK, 0, 0, claimed, none},
  });
}

TEST_F(ButtonRecognition, HiddenOrDisabledButtonsNotificationIsRecorded) {
  EnableWindow(button, FALSE);
  play({clicked(hookCallWndProc, button, claimed, click_of(button))});
  ShowWindow(check_box, SW_HIDE);
  play({clicked(hookCallWndProc, check_box, claimed, check_state_of(check_box))});
}

TEST_F(ButtonRecognition, ClassesThatBeginWithButtonAreButtons) {
  register_test_class("ButtonOfTheHost");
  const mrTestWindow own("ButtonOfTheHost", "", child, dialog, 9);
  play({clicked(hookCallWndProc, own, claimed, click_of(own))});
}

TEST_F(ButtonRecognition, OtherMessagesAreLeftToTheOthers) {
  play({
      clicked(hookCallWndProc, edit, left, none),
      clicked(hookCallWndProc, nullptr, left, none),
      {hookCallWndProc, dialog, WM_COMMAND, notify(1, BN_DBLCLK), as_lparam(button), left, none},
      {hookGetMessage, dialog, WM_LBUTTONUP, 0, at(5, 5), left, none},
      {hookGetMessage, edit, WM_LBUTTONUP, 0, at(5, 5), left, none},
      {hookGetMessage, nullptr, WM_LBUTTONUP, 0, at(5, 5), left, none},
      {hookCbt, button, WM_LBUTTONUP, 0, at(5, 5), left, none},
  });
}

// ---- owner-drawn buttons --------------------------------------------------------------------------

TEST_F(ButtonRecognition, OwnerDrawnButtonThatChangesAfterItsClickUploadsItsState) {
  play({
      {hookGetMessage, toggle, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), claimed, none},
      {hookGetMessage, toggle, WM_LBUTTONUP, 0, at(5, 5), claimed, click_of(toggle)},
      clicked(hookCallWndProc, toggle, claimed, none),
      act("the host turns the button", [this] { toggle.state = BST_CHECKED; }),
      {hookCallWndProc, dialog, WM_PAINT, 0, 0, left, check_state_of(toggle)},
      {hookCallWndProc, dialog, WM_PAINT, 0, 0, left, none},
  });
}

TEST_F(ButtonRecognition, OwnerDrawnButtonThatStaysAsItIsUploadsItsClickOnly) {
  play({
      {hookGetMessage, toggle, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), claimed, none},
      {hookGetMessage, toggle, WM_LBUTTONUP, 0, at(5, 5), claimed, click_of(toggle)},
      clicked(hookCallWndProc, toggle, claimed, none),
      tick(100),
      {hookCallWndProc, dialog, WM_PAINT, 0, 0, left, none},
  });
}

TEST_F(ButtonRecognition, OwnerDrawnButtonThatChangesTooLateUploadsItsClickOnly) {
  play({
      {hookGetMessage, toggle, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), claimed, none},
      {hookGetMessage, toggle, WM_LBUTTONUP, 0, at(5, 5), claimed, click_of(toggle)},
      tick(101),
      act("the host turns the button", [this] { toggle.state = BST_CHECKED; }),
      {hookCallWndProc, dialog, WM_PAINT, 0, 0, left, none},
  });
}

// The keyboard makes no click: BN_CLICKED starts the watch.
TEST_F(ButtonRecognition, OwnerDrawnButtonPushedWithTheKeyboardIsWatchedToo) {
  play({
      {hookGetMessage, toggle, WM_KEYDOWN, VK_SPACE, 0, claimed, none},
      clicked(hookCallWndProc, toggle, claimed, click_of(toggle)),
      act("the host turns the button", [this] { toggle.state = BST_CHECKED; }),
      clicked(hookCallWndProcRet, toggle, claimed, check_state_of(toggle)),
  });
}

TEST_F(ButtonRecognition, AReturningNotificationStartsAWatchButUploadsNothing) {
  play({
      clicked(hookCallWndProcRet, toggle, claimed, none),
      clicked(hookCallWndProc, toggle, claimed, none),
      tick(101),
      clicked(hookCallWndProc, toggle, claimed, click_of(toggle)),
  });
}

// The watch compares with the state just before the click.
TEST_F(ButtonRecognition, StateOfAnOwnerDrawnButtonIsKeptUpToDateBetweenClicks) {
  play({
      {hookGetMessage, toggle, WM_MOUSEMOVE, 0, at(5, 5), claimed, none},
      act("the program turns the button", [this] { toggle.state = BST_CHECKED; }),
      {hookGetMessage, toggle, WM_MOUSEMOVE, 0, at(5, 5), claimed, none},
      {hookGetMessage, toggle, WM_LBUTTONUP, 0, at(5, 5), claimed, click_of(toggle)},
      {hookCallWndProc, dialog, WM_PAINT, 0, 0, left, none},
  });
}

// A release forgets what changed before it; a push with the keyboard does not.
TEST_F(ButtonRecognition, ChangeBeforeAPushWithTheKeyboardIsUploadedAfterIt) {
  play({
      {hookGetMessage, toggle, WM_MOUSEMOVE, 0, at(5, 5), claimed, none},
      act("the program turns the button", [this] { toggle.state = BST_CHECKED; }),
      {hookGetMessage, toggle, WM_KEYDOWN, VK_SPACE, 0, claimed, none},
      clicked(hookCallWndProc, toggle, claimed, click_of(toggle)),
      {hookCallWndProc, dialog, WM_PAINT, 0, 0, left, check_state_of(toggle)},
      {hookCallWndProc, dialog, WM_PAINT, 0, 0, left, none},
  });
}

TEST_F(ButtonRecognition, ClickOnAnotherButtonThatTurnsAnOwnerDrawnOneIsRecordedWithBoth) {
  play({
      {hookGetMessage, toggle, WM_MOUSEMOVE, 0, at(5, 5), claimed, none},
      {hookGetMessage, button, WM_LBUTTONUP, 0, at(5, 5), claimed, click_of(button)},
      act("the host turns the other button", [this] { toggle.state = BST_CHECKED; }),
      clicked(hookCallWndProc, button, claimed, check_state_of(toggle) + click_of(button)),
  });
}

TEST_F(ButtonRecognition, ChangeOfOneOwnerDrawnButtonIsForgottenForTheNext) {
  OwnerDrawnButton other(dialog);
  play({
      {hookGetMessage, toggle, WM_MOUSEMOVE, 0, at(5, 5), claimed, none},
      act("the program turns the first button", [this] { toggle.state = BST_CHECKED; }),
      {hookGetMessage, toggle, WM_MOUSEMOVE, 0, at(5, 5), claimed, none},
      {hookGetMessage, other, WM_KEYDOWN, VK_SPACE, 0, claimed, none},
      clicked(hookCallWndProc, other, claimed, click_of(other)),
      {hookCallWndProc, dialog, WM_PAINT, 0, 0, left, none},
  });
}

// Its own notification tells of a check box.
TEST_F(ButtonRecognition, CheckBoxThatTheProgramTurnsAfterAClickElsewhereIsNotWatched) {
  play({
      {hookGetMessage, check_box, WM_MOUSEMOVE, 0, at(5, 5), claimed, none},
      {hookGetMessage, button, WM_LBUTTONUP, 0, at(5, 5), claimed, click_of(button)},
      act("the host turns the check box", [this] { SendMessageA(check_box, BM_SETCHECK, BST_CHECKED, 0); }),
      {hookCallWndProc, dialog, WM_PAINT, 0, 0, left, none},
  });
}

TEST_F(ButtonRecognition, WatchEndsWithTheWatchedButton) {
  for (const UINT end : {WM_DESTROY, WM_SHOWWINDOW}) {
    OwnerDrawnButton watched(dialog);
    play({
        {hookGetMessage, watched, WM_MOUSEMOVE, 0, at(5, 5), claimed, none},
        {hookGetMessage, watched, WM_LBUTTONUP, 0, at(5, 5), claimed, click_of(watched)},
        {hookCallWndProc, watched, end, 0, 0, claimed, none},
        act("its state is another one", [&watched] { watched.state = BST_CHECKED; }),
        {hookCallWndProc, dialog, WM_PAINT, 0, 0, left, none},
    });
  }
}

TEST_F(ButtonRecognition, WatchDoesNotEndWithAnotherButton) {
  play({
      {hookGetMessage, toggle, WM_MOUSEMOVE, 0, at(5, 5), claimed, none},
      {hookGetMessage, toggle, WM_LBUTTONUP, 0, at(5, 5), claimed, click_of(toggle)},
      {hookCallWndProc, button, WM_SHOWWINDOW, 0, 0, claimed, none},
      act("the host turns the button", [this] { toggle.state = BST_CHECKED; }),
      {hookCallWndProc, dialog, WM_PAINT, 0, 0, left, check_state_of(toggle)},
  });
}

// Its handle may belong to another window by then.
TEST_F(ButtonRecognition, ADestroyedButtonHasNoStateThatCouldChange) {
  OwnerDrawnButton gone(dialog);
  gone.state = BST_CHECKED;
  play({
      {hookGetMessage, gone, WM_MOUSEMOVE, 0, at(5, 5), claimed, none},
      act("the button is destroyed", [&gone] { gone.destroy(); }),
      {hookGetMessage, button, WM_LBUTTONUP, 0, at(5, 5), claimed, click_of(button)},
      {hookCallWndProc, dialog, WM_PAINT, 0, 0, left, none},
  });
}

TEST_F(ButtonRecognition, StartOfARecordingEndsAWatch) {
  play({
      {hookGetMessage, toggle, WM_MOUSEMOVE, 0, at(5, 5), claimed, none},
      {hookGetMessage, toggle, WM_LBUTTONUP, 0, at(5, 5), claimed, click_of(toggle)},
      act("another recording starts", [this] { factory.on_start_record(); }),
      act("the host turns the button", [this] { toggle.state = BST_CHECKED; }),
      {hookCallWndProc, dialog, WM_PAINT, 0, 0, left, none},
  });
}

TEST_F(ButtonRecognition, NoButtonIsAskedForItsStateWithoutNeed) {
  play({
      {hookGetMessage, dialog, WM_MOUSEMOVE, 0, at(5, 5), left, none},
      {hookGetMessage, button, WM_LBUTTONUP, 0, at(5, 5), claimed, click_of(button)},
      {hookGetMessage, dialog, WM_MOUSEMOVE, 0, at(5, 5), left, none},
  });
  EXPECT_EQ(0, toggle.questions);
}

// ---- building -----------------------------------------------------------------------------------

class ButtonBuilder : public testing::Test {
protected:
  mrTestRecorder recorder;
  mrTestFrame dialog;
  mrTestWindow button{"Button", "OK", child | BS_PUSHBUTTON, dialog, 1};
  mrTestWindow check_box{"Button", "Grid", child | BS_AUTOCHECKBOX, dialog, 2};

  void click(HWND window) { recorder.receive(factoryButton, mrButtonRec{buttonClick, 0, window}); }
  void check_state(HWND window) { recorder.receive(factoryButton, mrButtonRec{buttonCheckState, 0, window}); }
  static mrBaseWindowFactory* button_factory() {
    return static_cast<mrBaseWindowFactory*>(get_factory(factoryButton, true));
  }
};

TEST_F(ButtonBuilder, ClickIsAStatementOnTheButton) {
  click(button);
  EXPECT_THAT(recorder.statements(), ElementsAre("Click();"));
  EXPECT_EQ(button.get(), recorder.last_action()->get_path()[0]->window);
  EXPECT_NE(nullptr, dynamic_cast<mrButton*>(recorder.last_action()));
}

TEST_F(ButtonBuilder, ClicksAreNeverJoined) {
  click(button);
  click(button);
  EXPECT_THAT(recorder.statements(), ElementsAre("Click();", "Click();"));
}

struct StateCase {
  const char* name;
  DWORD style;
  WPARAM state;
  const char* expected;
};
static constexpr StateCase state_cases[] = {
    {"check box, unchecked", BS_CHECKBOX, BST_UNCHECKED, "Checked = false;"},
    {"check box, checked", BS_CHECKBOX, BST_CHECKED, "Checked = true;"},
    {"automatic check box, checked", BS_AUTOCHECKBOX, BST_CHECKED, "Checked = true;"},
    {"three states, unchecked", BS_3STATE, BST_UNCHECKED, "CheckedState = tsUNCHECKED;"},
    {"three states, checked", BS_3STATE, BST_CHECKED, "CheckedState = tsCHECKED;"},
    {"three states, indeterminate", BS_3STATE, BST_INDETERMINATE, "CheckedState = tsINDETERMINATE;"},
    {"automatic, indeterminate", BS_AUTO3STATE, BST_INDETERMINATE, "CheckedState = tsINDETERMINATE;"},
    {"radio button, chosen", BS_RADIOBUTTON, BST_CHECKED, "Checked = true;"},
};

TEST_F(ButtonBuilder, CheckStateIsReadFromTheButton) {
  for (const StateCase& c : state_cases) {
    const mrTestWindow box("Button", "Box", child | c.style, dialog, 9);
    SendMessageA(box, BM_SETCHECK, c.state, 0);
    recorder.clear_actions();
    check_state(box);
    EXPECT_THAT(recorder.statements(), ElementsAre(c.expected)) << c.name;
  }
}

// BM_GETCHECK of an owner-drawn button answers what the host likes.
TEST_F(ButtonBuilder, AnyStateButZeroChecksAnOwnerDrawnButton) {
  OwnerDrawnButton toggle(dialog);
  toggle.state = 5;
  check_state(toggle);
  EXPECT_THAT(recorder.statements(), ElementsAre("Checked = true;"));
}

TEST_F(ButtonBuilder, UnknownThirdStateLeavesAnEmptyStatement) {
  register_test_class("ButtonOfTheHost");
  mrTestWindow own("ButtonOfTheHost", "", child | BS_3STATE, dialog, 9);
  own.set_answer([](UINT message, WPARAM, LPARAM, LRESULT& result) {
    result = 3;
    return message == BM_GETCHECK;
  });
  check_state(own);
  EXPECT_THAT(recorder.statements(), ElementsAre(""));
}

TEST_F(ButtonBuilder, UnknownKindLeavesAnEmptyStatement) {
  recorder.receive(factoryButton, mrButtonRec{2, 0, button});
  EXPECT_THAT(recorder.statements(), ElementsAre(""));
}

TEST_F(ButtonBuilder, CheckStateTakesThePlaceOfTheClick) {
  SendMessageA(check_box, BM_SETCHECK, BST_CHECKED, 0);
  click(check_box);
  check_state(check_box);
  EXPECT_THAT(recorder.statements(), ElementsAre("Checked = true;"));
}

// A check box that its parent switches back, as an exclusive choice does.
TEST_F(ButtonBuilder, StateAfterTheParentHandledTheClickIsTheOneThatStays) {
  SendMessageA(check_box, BM_SETCHECK, BST_CHECKED, 0);
  click(check_box);
  check_state(check_box);
  SendMessageA(check_box, BM_SETCHECK, BST_UNCHECKED, 0);
  check_state(check_box);
  EXPECT_THAT(recorder.statements(), ElementsAre("Checked = false;"));
}

TEST_F(ButtonBuilder, StatesOfTwoButtonsAreTwoStatements) {
  const mrTestWindow other("Button", "Axes", child | BS_AUTOCHECKBOX, dialog, 3);
  check_state(check_box);
  check_state(other);
  check_state(check_box);
  EXPECT_THAT(recorder.statements(), ElementsAre("Checked = false;", "Checked = false;", "Checked = false;"));
}

TEST_F(ButtonBuilder, StateIsNotJoinedWithAnotherKindOfAction) {
  recorder.receive(factoryWindow, mrWindowRec{windowClose, 0, check_box, 0, 0, 0, 0});
  check_state(check_box);
  EXPECT_THAT(recorder.statements(), ElementsAre("Close();", "Checked = false;"));
}

TEST_F(ButtonBuilder, LastActionWithoutAPathIsAnInvalidArgument) {
  recorder.m_actions.AddTail(new mrButton(nullptr, button_factory()));
  EXPECT_THROW(check_state(check_box), CInvalidArgException);
  EXPECT_THROW(click(check_box), CInvalidArgException);
}

TEST_F(ButtonBuilder, ContextMenuIsNotClaimed) {
  EXPECT_EQ(contextMenuNotClaimed,
            get_factory(factoryButton, true)->context_menu_invoke(button, "Button", CPoint(1, 1)));
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
}

// ---- declaration ----------------------------------------------------------------------------------

class ButtonDeclaration : public testing::Test {
protected:
  mrTestRecorder recorder;
  mrActionFactory& factory = *get_factory(factoryButton, true);
};

TEST_F(ButtonDeclaration, KindOfButtonDecidesTheType) {
  const std::set<int> can_be_checked = {BS_CHECKBOX,    BS_AUTOCHECKBOX,    BS_3STATE,   BS_AUTO3STATE,
                                        BS_RADIOBUTTON, BS_AUTORADIOBUTTON, BS_OWNERDRAW};
  for (int kind = 0; kind <= BS_TYPEMASK; ++kind) {
    const std::string type = can_be_checked.count(kind) ? "CheckBox" : "Button";
    const mrDeclared expected = {declaredByControlId, type + "(\"Grid\", 7)",
                                 type + "(\"Grid\", 7, mpRECURSIVE_SEARCH)", "Grid"};
    EXPECT_EQ(expected, declare(factory, control_info("Button", 7, "Grid", kind | BS_MULTILINE))) << kind;
  }
}

TEST_F(ButtonDeclaration, ButtonWithoutTextIsCalledByItsId) {
  const mrDeclared expected = {declaredByControlId, "CheckBox(\"\", 7)",
                               "CheckBox(\"\", 7, mpRECURSIVE_SEARCH)", "CheckBox_7"};
  EXPECT_EQ(expected, declare(factory, control_info("Button", 7, "", BS_AUTO3STATE)));
}

TEST_F(ButtonDeclaration, TextIsQuotedButNotInTheIdentifier) {
  const mrDeclared expected = {declaredByControlId, "Button(\"Say \\\"a\\\\b\\\"\\t\xE4\", 7)",
                               "Button(\"Say \\\"a\\\\b\\\"\\t\xE4\", 7, mpRECURSIVE_SEARCH)",
                               "Say \"a\\b\"\t\xE4"};
  EXPECT_EQ(expected, declare(factory, control_info("Button", 7, "Say \"a\\b\"\t\xE4")));
}

TEST_F(ButtonDeclaration, NameFromTheHostComesFirst) {
  const mrDeclared expected = {declaredByName, "CheckBoxByID(\"grid \\\"on\\\"\")",
                               "CheckBoxByID(\"grid \\\"on\\\"\")", "grid \"on\""};
  EXPECT_EQ(expected, declare(factory, control_info("Button", 7, "Grid", BS_CHECKBOX, "grid \"on\"")));
}

TEST_F(ButtonDeclaration, OtherClassesAreNotDeclared) {
  EXPECT_EQ(mrDeclared(), declare(factory, control_info("Butto", 7, "Grid")));
  EXPECT_EQ(mrDeclared(), declare(factory, control_info("Edit", 7, "Grid", 0, "name")));
}
