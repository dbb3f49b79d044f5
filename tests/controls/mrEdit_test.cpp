#include "controls/mrEdit.h"

#include "controls/mrWindow.h"
#include "framework/CInvalidArgException.h"
#include "hooks/mrDispatcher.h"
#include "tests/support/declared.h"
#include "tests/support/hooked.h"
#include "tests/support/recording.h"
#include "tests/support/tape.h"
#include "tests/support/test_window.h"

#include <windows.h>
#include <commctrl.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

using testing::ElementsAre;

static mrTapeUploads change_of(HWND edit) { return record(mrEditRec{editTextChanged, 0, edit}); }

static constexpr DWORD child = WS_CHILD | WS_VISIBLE;

// ---- recognition --------------------------------------------------------------------------------

class EditRecognition : public testing::Test {
protected:
  EditRecognition() { SendMessageA(up_down, UDM_SETBUDDY, reinterpret_cast<WPARAM>(edit.get()), 0); }

  mrUploadCatcher uploads;
  mrEditFactory factory;
  mrTestFrame dialog;
  mrTestWindow edit{"Edit", "", child, dialog, 1};
  mrTestWindow button{"Button", "OK", child, dialog, 2};
  mrTestWindow up_down{UPDOWN_CLASSA, "", child, dialog, 3};
  mrTestWindow lone_up_down{UPDOWN_CLASSA, "", child, dialog, 4};
  mrTestWindow scroll_bar{"ScrollBar", "", child | SBS_VERT, dialog, 5};

  mrTapeStep told(int code, HWND control, mrTapeAnswer answer, mrTapeUploads sent,
                  int kind = hookCallWndProc) {
    return {kind, dialog, WM_COMMAND, notify(1, code), as_lparam(control), answer, std::move(sent)};
  }
  mrTapeStep begins(UINT message, HWND window) {
    return {hookCallWndProc, window, message, 0, 0, claimed, none};
  }
  mrTapeStep returns(UINT message, HWND window) {
    return {hookCallWndProcRet, window, message, 0, 0, claimed, none};
  }
  mrTapeStep scrolls(UINT message, int code, HWND control, mrTapeUploads sent) {
    return {hookCallWndProc,    dialog, message,        static_cast<WPARAM>(code),
            as_lparam(control), left,   std::move(sent)};
  }
  void play(const std::vector<mrTapeStep>& tape) { play_tape(factory, uploads, tape); }
};

TEST_F(EditRecognition, TypedCharacterIsUploadedOnce) {
  play({
      {hookGetMessage, edit, WM_KEYDOWN, 'A', 0, claimed, none},
      {hookGetMessage, edit, WM_CHAR, 'a', 0, claimed, none},
      told(EN_UPDATE, edit, left, none),
      told(EN_CHANGE, edit, claimed, change_of(edit)),
      told(EN_CHANGE, edit, left, none, hookCallWndProcRet),
      {hookGetMessage, edit, WM_KEYUP, 'A', 0, claimed, none},
  });
}

TEST_F(EditRecognition, PostedChangeIsUploaded) {
  play({told(EN_CHANGE, edit, claimed, change_of(edit), hookGetMessage)});
}

TEST_F(EditRecognition, TextThatTheProgramSetsIsNotUploaded) {
  for (const UINT message : {WM_SETTEXT, EM_REPLACESEL}) {
    play({
        begins(message, edit),
        told(EN_UPDATE, edit, left, none),
        told(EN_CHANGE, edit, claimed, none),
        told(EN_CHANGE, edit, left, none, hookCallWndProcRet),
        returns(message, edit),
        told(EN_CHANGE, edit, claimed, change_of(edit)),
    });
  }
}

TEST_F(EditRecognition, WhileTheProgramSetsOneEditTheUsersChangeOfAnotherIsUploaded) {
  const mrTestWindow other("Edit", "", child, dialog, 6);
  play({
      begins(WM_SETTEXT, edit),
      told(EN_CHANGE, other, claimed, change_of(other)),
      told(EN_CHANGE, edit, claimed, none),
      returns(WM_SETTEXT, edit),
  });
}

// A program that sets the text while it is told of the text being set.
TEST_F(EditRecognition, EditIsSetByTheProgramUntilTheOutermostCallReturns) {
  play({
      begins(WM_SETTEXT, edit),
      told(EN_CHANGE, edit, claimed, none),
      begins(EM_REPLACESEL, edit),
      told(EN_CHANGE, edit, claimed, none),
      returns(EM_REPLACESEL, edit),
      told(EN_CHANGE, edit, claimed, none),
      returns(WM_SETTEXT, edit),
      told(EN_CHANGE, edit, claimed, change_of(edit)),
  });
}

TEST_F(EditRecognition, SixthEditSetAtTheSameTimeCountsAsChangedByTheUser) {
  std::vector<std::unique_ptr<mrTestWindow>> edits;
  for (int id = 10; id < 16; ++id)
    edits.push_back(std::make_unique<mrTestWindow>("Edit", "", child, dialog, id));
  for (const auto& each : edits)
    play({begins(WM_SETTEXT, *each)});
  for (int i = 0; i < 5; ++i)
    play({told(EN_CHANGE, *edits[i], claimed, none)});
  play({told(EN_CHANGE, *edits[5], claimed, change_of(*edits[5]))});

  // A place that is free again is taken by the next one.
  play({returns(WM_SETTEXT, *edits[5]), returns(WM_SETTEXT, *edits[0]), begins(WM_SETTEXT, *edits[5]),
        told(EN_CHANGE, *edits[5], claimed, none), returns(WM_SETTEXT, *edits[5])});
  for (int i = 1; i < 5; ++i)
    play({returns(WM_SETTEXT, *edits[i])});
  for (const auto& each : edits)
    play({told(EN_CHANGE, *each, claimed, change_of(*each))});
}

// A dialog that closes an in-place editor while it is told of its change: the call returns from a window that
// has no class any more.
TEST_F(EditRecognition, EditsDestroyedWhileTheyAreSetLeaveTheirPlaces) {
  for (int id = 20; id < 26; ++id) {
    mrTestWindow short_lived("Edit", "", child, dialog, id);
    const HWND handle = short_lived;
    play({begins(WM_SETTEXT, handle)});
    short_lived.destroy();
    play({{hookCallWndProcRet, handle, WM_SETTEXT, 0, 0, left, none}});
  }
  play({begins(WM_SETTEXT, edit), told(EN_CHANGE, edit, claimed, none), returns(WM_SETTEXT, edit)});
}

TEST_F(EditRecognition, PostedSetTextHasNoReturnAndIsNotNoted) {
  play({
      {hookGetMessage, edit, WM_SETTEXT, 0, 0, claimed, none},
      told(EN_CHANGE, edit, claimed, change_of(edit)),
  });
}

TEST_F(EditRecognition, OfReturningMessagesOnlyTheOnesThatSetAnEditsTextAreClaimed) {
  play({
      returns(WM_SETTEXT, edit),
      returns(EM_REPLACESEL, edit),
      {hookCallWndProcRet, edit, WM_CHAR, 'a', 0, left, none},
      {hookCallWndProcRet, button, WM_SETTEXT, 0, 0, left, none},
      {hookCallWndProcRet, nullptr, WM_SETTEXT, 0, 0, left, none},
  });
}

TEST_F(EditRecognition, SettingTheTextOfAnotherControlIsLeft) {
  play({{hookCallWndProc, button, WM_SETTEXT, 0, 0, left, none},
        {hookCallWndProc, dialog, WM_SETTEXT, 0, 0, left, none}});
}

TEST_F(EditRecognition, ChangeOfADisabledOrHiddenEditIsClaimedAndNotUploaded) {
  EnableWindow(edit, FALSE);
  play({told(EN_CHANGE, edit, claimed, none), told(EN_UPDATE, edit, claimed, none)});
  EnableWindow(edit, TRUE);
  ShowWindow(edit, SW_HIDE);
  play({told(EN_CHANGE, edit, claimed, none), told(EN_UPDATE, edit, claimed, none)});
  ShowWindow(edit, SW_SHOW);
  ShowWindow(dialog, SW_HIDE);  // a hidden parent hides it too
  play({told(EN_CHANGE, edit, claimed, none)});
}

TEST_F(EditRecognition, OtherNotificationsAndOtherControlsAreLeft) {
  play({
      told(EN_SETFOCUS, edit, left, none),
      told(EN_KILLFOCUS, edit, left, none),
      told(EN_MAXTEXT, edit, left, none),
      told(EN_CHANGE, button, left, none),
      told(EN_CHANGE, nullptr, left, none),
      {hookGetMessage, button, WM_CHAR, 'a', 0, left, none},
      {hookGetMessage, dialog, WM_CHAR, 'a', 0, left, none},
      {hookGetMessage, nullptr, WM_CHAR, 'a', 0, left, none},
      {hookCbt, edit, WM_CHAR, 'a', 0, left, none},
  });
}

TEST_F(EditRecognition, ClassesThatBeginWithEditAreEdits) {
  register_test_class("EditOfTheHost");
  const mrTestWindow own("EditOfTheHost", "", child, dialog, 9);
  play({
      {hookGetMessage, own, WM_LBUTTONDOWN, 0, 0, claimed, none},
      told(EN_CHANGE, own, claimed, change_of(own)),
      begins(WM_SETTEXT, own),
      told(EN_CHANGE, own, claimed, none),
      returns(WM_SETTEXT, own),
  });
}

// ---- up-down controls -----------------------------------------------------------------------------

// It sets the buddy's text while the mouse button is down, which counts as the program's doing.
TEST_F(EditRecognition, SpinIsUploadedWhenItEnds) {
  play({
      {hookGetMessage, up_down, WM_LBUTTONDOWN, MK_LBUTTON, at(2, 2), claimed, none},
      begins(WM_SETTEXT, edit),
      told(EN_CHANGE, edit, claimed, none),
      returns(WM_SETTEXT, edit),
      scrolls(WM_VSCROLL, SB_THUMBPOSITION, up_down, none),
      {hookGetMessage, up_down, WM_LBUTTONUP, 0, at(2, 2), claimed, none},
      scrolls(WM_VSCROLL, SB_ENDSCROLL, up_down, change_of(edit)),
  });
}

TEST_F(EditRecognition, ReturningEndOfASpinIsNotUploadedAgain) {
  play({{hookCallWndProcRet, dialog, WM_VSCROLL, SB_ENDSCROLL, as_lparam(up_down), left, none}});
}

TEST_F(EditRecognition, PositionBesideTheScrollCodeIsNotLookedAt) {
  play({{hookCallWndProc, dialog, WM_VSCROLL, MAKEWPARAM(SB_ENDSCROLL, 17), as_lparam(up_down), left,
         change_of(edit)}});
}

TEST_F(EditRecognition, OtherScrollMessagesAreNotUploaded) {
  play({
      scrolls(WM_HSCROLL, SB_ENDSCROLL, up_down, none),
      scrolls(WM_VSCROLL, SB_LINEDOWN, up_down, none),
      scrolls(WM_VSCROLL, SB_ENDSCROLL, lone_up_down, none),
      scrolls(WM_VSCROLL, SB_ENDSCROLL, scroll_bar, none),
      scrolls(WM_VSCROLL, SB_ENDSCROLL, nullptr, none),
  });
}

TEST_F(EditRecognition, UpDownWithoutABuddyIsLeft) {
  play({
      {hookGetMessage, lone_up_down, WM_LBUTTONDOWN, MK_LBUTTON, at(2, 2), left, none},
      {hookCallWndProcRet, up_down, WM_LBUTTONDOWN, MK_LBUTTON, at(2, 2), left, none},
  });
}

TEST_F(EditRecognition, UpDownClassIsComparedWhole) {
  register_test_class("msctls_updown32d");
  mrTestWindow debug_up_down("msctls_updown32d", "", child, dialog, 9);
  debug_up_down.set_answer([this](UINT message, WPARAM, LPARAM, LRESULT& result) {
    result = as_lparam(edit);
    return message == UDM_GETBUDDY;
  });
  play({{hookGetMessage, debug_up_down, WM_LBUTTONDOWN, MK_LBUTTON, at(2, 2), left, none},
        scrolls(WM_VSCROLL, SB_ENDSCROLL, debug_up_down, change_of(edit))});
}

// Another control's answer to that message number need not be a window.
TEST_F(EditRecognition, BuddyThatIsNoWindowIsNotUploaded) {
  register_test_class("OwnScrollBar");
  mrTestWindow own("OwnScrollBar", "", child, dialog, 9);
  own.set_answer([](UINT message, WPARAM, LPARAM, LRESULT& result) {
    result = 1;
    return message == UDM_GETBUDDY;
  });
  play({scrolls(WM_VSCROLL, SB_ENDSCROLL, own, none)});
}

// ---- building -----------------------------------------------------------------------------------

class EditBuilder : public testing::Test {
protected:
  mrTestRecorder recorder;
  mrTestFrame dialog;
  mrTestWindow edit{"Edit", "", child | ES_MULTILINE | ES_AUTOHSCROLL, dialog, 1};
  mrTestWindow other{"Edit", "", child, dialog, 2};

  void change(HWND window, const std::string& text) {
    SetWindowTextA(window, text.c_str());
    recorder.receive(factoryEdit, mrEditRec{editTextChanged, 0, window});
  }
  static mrBaseWindowFactory* edit_factory() {
    return static_cast<mrBaseWindowFactory*>(get_factory(factoryEdit, true));
  }
};

TEST_F(EditBuilder, TypingIntoOneEditIsOneStatementWithTheFinalText) {
  change(edit, "a");
  change(edit, "ab");
  change(edit, "abc");
  EXPECT_THAT(recorder.statements(), ElementsAre("Text = \"abc\";"));
  EXPECT_EQ(edit.get(), recorder.last_action()->get_path()[0]->window);
  EXPECT_NE(nullptr, dynamic_cast<mrEdit*>(recorder.last_action()));
}

TEST_F(EditBuilder, TypingInTurnIntoTwoEditsIsThreeStatements) {
  change(edit, "a");
  change(other, "b");
  change(edit, "c");
  EXPECT_THAT(recorder.statements(), ElementsAre("Text = \"a\";", "Text = \"b\";", "Text = \"c\";"));
}

TEST_F(EditBuilder, ActionInBetweenEndsTheRun) {
  change(edit, "a");
  recorder.receive(factoryWindow, mrWindowRec{windowClose, 0, edit, 0, 0, 0, 0});
  change(edit, "b");
  EXPECT_THAT(recorder.statements(), ElementsAre("Text = \"a\";", "Close();", "Text = \"b\";"));
}

// The text stands as it is when the record arrives, not as it was at the key.
TEST_F(EditBuilder, TextIsReadWhenTheRecordArrives) {
  const mrEditRec rec = {editTextChanged, 0, edit};
  SetWindowTextA(edit, "typed");
  SetWindowTextA(edit, "corrected by the program");
  recorder.receive(factoryEdit, rec);
  EXPECT_THAT(recorder.statements(), ElementsAre("Text = \"corrected by the program\";"));
}

TEST_F(EditBuilder, TextsStandInTheStatementAsTheScriptNeedsThem) {
  struct TextCase {
    const char* name;
    std::string text;
    std::string expected;
  };
  const TextCase cases[] = {
      {"empty", "", ""},
      {"quotes", "12\" \"x\"", "12\\\" \\\"x\\\""},
      {"backslashes", "C:\\new\\", "C:\\\\new\\\\"},
      {"tab", "a\tb", "a\\tb"},
      {"lines", "a\r\nb", "a\\r\\nb"},
      {"control character", "a\x01z", "a\\x01z"},
      {"bytes above 127", "\xD8 12 \xB1 \xE4\xF6\xFC\xDF \x80", "\xD8 12 \xB1 \xE4\xF6\xFC\xDF \x80"},
      {"percent signs", "100%s %n", "100%s %n"},
      {"259 characters", std::string(259, 'x'), std::string(259, 'x')},
      {"260 characters", std::string(260, 'x'), std::string(259, 'x')},
      {"300 characters", std::string(259, '"') + std::string(41, 'x'),
       [] {
         std::string quotes;
         for (int i = 0; i < 259; ++i)
           quotes += "\\\"";
         return quotes;
       }()},
  };
  for (const TextCase& c : cases) {
    change(edit, c.text);
    EXPECT_THAT(recorder.statements(), ElementsAre("Text = \"" + c.expected + "\";")) << c.name;
  }
}

TEST_F(EditBuilder, UnknownKindIsIgnored) {
  recorder.receive(factoryEdit, mrEditRec{1, 0, edit});
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
}

TEST_F(EditBuilder, EditThatIsGoneHasAnEmptyText) {
  const HWND gone = other;
  other.destroy();
  recorder.receive(factoryEdit, mrEditRec{editTextChanged, 0, gone});
  EXPECT_THAT(recorder.statements(), ElementsAre("Text = \"\";"));
}

TEST_F(EditBuilder, LastActionWithoutAPathIsAnInvalidArgument) {
  recorder.m_actions.AddTail(new mrEdit(nullptr, edit_factory()));
  EXPECT_THROW(change(edit, "a"), CInvalidArgException);
}

TEST_F(EditBuilder, CommandsOfAnEditsOwnContextMenuAreRefused) {
  mrActionFactory& factory = *edit_factory();
  EXPECT_EQ(contextMenuRefused, factory.context_menu_invoke(edit, "Edit", CPoint(1, 1)));
  EXPECT_EQ(contextMenuNotClaimed, factory.context_menu_invoke(edit, "RichEdit20W", CPoint(1, 1)));
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
}

// ---- declaration ----------------------------------------------------------------------------------

TEST(EditDeclaration, ByIdOrByTheNameFromTheHost) {
  mrTestRecorder recorder;
  mrActionFactory& factory = *get_factory(factoryEdit, true);
  const mrDeclared by_id = {declaredByControlId, "Edit(12)", "Edit(12, mpRECURSIVE_SEARCH)", "Edit_12"};
  EXPECT_EQ(by_id, declare(factory, control_info("Edit", 12, "what is in it")));
  const mrDeclared by_name = {declaredByName, "EditByID(\"radius\")", "EditByID(\"radius\")", "radius"};
  EXPECT_EQ(by_name, declare(factory, control_info("Edit", 12, "", 0, "radius")));
  EXPECT_EQ(mrDeclared(), declare(factory, control_info("RichEdit20W", 12)));
}
