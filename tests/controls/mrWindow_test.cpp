// The generic window recorder: what it claims and uploads, and what becomes of the records. Its declarations
// are tested in tests/script.
#include "controls/mrWindow.h"
#include "hooks/mrDispatcher.h"
#include "hooks/mrSharedBlock.h"
#include "tests/support/clean_block.h"
#include "tests/support/recording.h"
#include "tests/support/tape.h"
#include "tests/support/test_window.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

// ---- recogniser -----------------------------------------------------------------------------------------

class WindowRecognition : public testing::Test {
protected:
  WindowRecognition()
      : frame("RecFrame"),
        view((register_test_class("RecView"), "RecView"), "", WS_CHILD | WS_VISIBLE, frame, 1),
        inner("RecView", "", WS_CHILD | WS_VISIBLE, view, 2), other("RecFrame"),
        hidden("RecView", "", WS_CHILD, frame, 3) {
    factory.on_start_record();  // the stack of the test before is gone
    // The record is one buffer per process: known from here on.
    feed(factory, hookGetMessage, frame, WM_LBUTTONDOWN, 0, 0);
    uploads.clear();
  }

  mrTapeUploads mouse(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    last = {windowMouse, 0, window, message, 0, wparam, lparam};
    return record(last);
  }
  // A command and a close keep the fields of the record before them that they do not use.
  mrTapeUploads command(HWND window, int id) {
    last.kind = windowCommand;
    last.window = window;
    last.message = static_cast<uint32_t>(id);
    return record(last);
  }
  mrTapeUploads close(HWND window) {
    last.kind = windowClose;
    last.window = window;
    return record(last);
  }
  void play(const std::vector<mrTapeStep>& tape) { play_tape(factory, uploads, tape); }

  mrCleanBlock clean;
  mrUploadCatcher uploads;
  mrTestFrame frame;
  mrTestWindow view;
  mrTestWindow inner;
  mrTestFrame other;
  mrTestWindow hidden;
  mrWindowFactory factory;
  mrWindowRec last = {windowMouse, 0, frame, WM_LBUTTONDOWN, 0, 0, 0};
};

TEST_F(WindowRecognition, UploadsEveryMouseButtonMessage) {
  for (UINT message = WM_LBUTTONDOWN; message <= WM_MBUTTONDBLCLK; ++message) {
    for (const int kind : {hookGetMessage, hookCallWndProc}) {
      play({{kind, view, message, MK_CONTROL | message, at(-3, 7), claimed,
             mouse(view, message, MK_CONTROL | message, at(-3, 7))}});
    }
  }
}

TEST_F(WindowRecognition, UploadsFortyBytesWithTheFieldsAtTheirPlaces) {
  feed(factory, hookGetMessage, view, WM_MBUTTONUP, 0x1122334455667788, 0x0102030405060708);
  ASSERT_EQ(1u, uploads.count());
  EXPECT_EQ(1u, uploads.last().type);
  const std::string& bytes = uploads.last().bytes;
  ASSERT_EQ(40u, bytes.size());
  const HWND window = view;
  EXPECT_EQ(std::string(8, '\0'), bytes.substr(0, 8));
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(&window), 8), bytes.substr(8, 8));
  EXPECT_EQ(std::string("\x08\x02\0\0\0\0\0\0", 8), bytes.substr(16, 8));
  EXPECT_EQ("\x88\x77\x66\x55\x44\x33\x22\x11", bytes.substr(24, 8));
  EXPECT_EQ("\x08\x07\x06\x05\x04\x03\x02\x01", bytes.substr(32, 8));
}

TEST_F(WindowRecognition, LeavesEverythingElse) {
  for (const int kind : {hookGetMessage, hookCallWndProc}) {
    for (const UINT message : {WM_MOUSEMOVE, WM_MOUSEWHEEL, WM_NCLBUTTONDOWN, WM_XBUTTONDOWN, WM_KEYDOWN,
                               WM_CLOSE, WM_NOTIFY, WM_PAINT, WM_TIMER, WM_USER})
      play({{kind, view, message, 0, 0, left, none}});
    play({{kind, nullptr, WM_LBUTTONDOWN, 0, 0, left, none}, {kind, nullptr, WM_COMMAND, 5, 0, left, none}});
  }
}

TEST_F(WindowRecognition, LeavesReturnedMessagesAndNotificationsOfTheSystem) {
  play({{hookCallWndProcRet, view, WM_LBUTTONDOWN, 0, 0, left, none},
        {hookCallWndProcRet, frame, WM_SYSCOMMAND, SC_CLOSE, 0, left, none},
        {hookCallWndProcRet, frame, WM_COMMAND, 5, 0, left, none}});
  EXPECT_FALSE(factory.handle_message(hookCbt, HCBT_SYSCOMMAND, SC_CLOSE, 0));
  EXPECT_FALSE(factory.handle_message(0, 0, 0, 0));
}

TEST_F(WindowRecognition, UploadsTheSystemsCloseAndNoOtherSystemCommand) {
  play({{hookGetMessage, frame, WM_SYSCOMMAND, SC_CLOSE, 0, claimed, close(frame)},
        {hookCallWndProc, frame, WM_SYSCOMMAND, SC_CLOSE, at(5, 5), claimed, close(frame)},
        {hookCallWndProc, hidden, WM_SYSCOMMAND, SC_CLOSE, 0, claimed, close(hidden)},
        {hookGetMessage, frame, WM_SYSCOMMAND, SC_CLOSE | 1, 0, left, none},
        {hookGetMessage, frame, WM_SYSCOMMAND, SC_MINIMIZE, 0, left, none},
        {hookGetMessage, frame, WM_SYSCOMMAND, SC_KEYMENU, 'f', left, none}});
}

// ---- commands

TEST_F(WindowRecognition, UploadsMenuAndAcceleratorCommands) {
  play({{hookGetMessage, frame, WM_COMMAND, 32771, 0, claimed, command(frame, 32771)},
        {hookCallWndProc, frame, WM_COMMAND, MAKEWPARAM(40002, 1), 0, claimed, command(frame, 40002)},
        {hookCallWndProcRet, frame, WM_COMMAND, MAKEWPARAM(40002, 1), 0, left, none}});
}

TEST_F(WindowRecognition, KeepsTheMouseOfTheRecordBeforeInACommand) {
  play({{hookGetMessage, view, WM_RBUTTONUP, MK_SHIFT, at(9, 8), claimed,
         mouse(view, WM_RBUTTONUP, MK_SHIFT, at(9, 8))},
        {hookGetMessage, frame, WM_COMMAND, 3, 0, claimed, command(frame, 3)}});
  EXPECT_EQ(at(9, 8), uploads.last_as<mrWindowRec>().lparam);
}

TEST_F(WindowRecognition, LeavesNotificationsOfControls) {
  play({{hookCallWndProc, frame, WM_COMMAND, notify(1, BN_CLICKED), as_lparam(view), left, none},
        {hookCallWndProc, frame, WM_COMMAND, notify(1, EN_CHANGE), as_lparam(view), left, none},
        {hookCallWndProc, frame, WM_COMMAND, notify(1, 2), 0, left, none},
        {hookGetMessage, frame, WM_COMMAND, notify(1, 0xFFFF), 0, left, none}});
}

TEST_F(WindowRecognition, LeavesCommandsOfHiddenWindows) {
  play({{hookCallWndProc, hidden, WM_COMMAND, 5, 0, left, none},
        // None of these went on the stack.
        {hookCallWndProc, frame, WM_COMMAND, 5, 0, claimed, command(frame, 5)},
        {hookCallWndProcRet, frame, WM_COMMAND, 5, 0, left, none}});
}

TEST_F(WindowRecognition, ClaimsAnIgnoredCommandWithoutUploadingIt) {
  mrBaseWindowFactory::add_ignore_command(32771);
  play({{hookGetMessage, frame, WM_COMMAND, 32771, 0, claimed, none},
        {hookCallWndProc, frame, WM_COMMAND, 32771, 0, claimed, none},
        // It is at work all the same.
        {hookCallWndProc, frame, WM_COMMAND, 32772, 0, claimed, none},
        {hookCallWndProcRet, frame, WM_COMMAND, 32771, 0, left, none},
        {hookGetMessage, frame, WM_COMMAND, 32772, 0, claimed, command(frame, 32772)}});
}

TEST_F(WindowRecognition, UploadsNoCommandInRawMode) {
  shared_block().raw_mode = 1;
  play({{hookGetMessage, frame, WM_COMMAND, 5, 0, claimed, none},
        {hookCallWndProc, frame, WM_COMMAND, 5, 0, claimed, none},
        {hookCallWndProcRet, frame, WM_COMMAND, 5, 0, left, none},
        {hookGetMessage, frame, WM_SYSCOMMAND, SC_CLOSE, 0, claimed, close(frame)},
        {hookGetMessage, view, WM_LBUTTONDOWN, 1, at(1, 2), claimed,
         mouse(view, WM_LBUTTONDOWN, 1, at(1, 2))}});
}

// ---- the stack of commands at work

TEST_F(WindowRecognition, RecordsACommandOnceOnItsWayUpTheParents) {
  play({{hookCallWndProc, inner, WM_COMMAND, 5, 0, claimed, command(inner, 5)},
        {hookCallWndProc, view, WM_COMMAND, 5, 0, claimed, none},
        {hookCallWndProc, frame, WM_COMMAND, 5, 0, claimed, none},
        {hookCallWndProc, inner, WM_COMMAND, 5, 0, claimed, none},
        {hookCallWndProcRet, inner, WM_COMMAND, 5, 0, left, none},
        // Done: the next one is recorded again.
        {hookCallWndProc, frame, WM_COMMAND, 5, 0, claimed, command(frame, 5)}});
}

// While a command is at work, any command that reaches its window or a parent is taken for the same one.
TEST_F(WindowRecognition, DoesNotCompareTheCommandOnItsWayUp) {
  play({{hookCallWndProc, view, WM_COMMAND, 5, 0, claimed, command(view, 5)},
        {hookCallWndProc, frame, WM_COMMAND, 6, 0, claimed, none}});
}

TEST_F(WindowRecognition, RecordsACommandThatTravelsDownOrElsewhere) {
  play({{hookCallWndProc, view, WM_COMMAND, 5, 0, claimed, command(view, 5)},
        {hookCallWndProc, inner, WM_COMMAND, 6, 0, claimed, command(inner, 6)},
        {hookCallWndProc, other, WM_COMMAND, 7, 0, claimed, command(other, 7)},
        // The top of the stack is the other window now: what the frame receives is new.
        {hookCallWndProc, frame, WM_COMMAND, 8, 0, claimed, command(frame, 8)}});
}

TEST_F(WindowRecognition, EndsACommandWhenItsWindowProcedureReturns) {
  play({{hookCallWndProc, view, WM_COMMAND, 5, 0, claimed, command(view, 5)},
        {hookCallWndProc, inner, WM_COMMAND, 6, 0, claimed, command(inner, 6)},
        {hookCallWndProcRet, view, WM_COMMAND, 5, 0, left, none},  // not the top one
        {hookCallWndProc, view, WM_COMMAND, 7, 0, claimed, none},
        {hookCallWndProcRet, inner, WM_COMMAND, 7, 0, left, none},  // another command
        {hookCallWndProc, inner, WM_COMMAND, 7, 0, claimed, none},
        {hookCallWndProcRet, inner, WM_COMMAND, MAKEWPARAM(6, 1), 0, left, none},
        {hookCallWndProc, view, WM_COMMAND, 7, 0, claimed, none},  // 5 is still at work
        {hookCallWndProcRet, view, WM_COMMAND, 5, 0, left, none},
        {hookCallWndProc, view, WM_COMMAND, 7, 0, claimed, command(view, 7)}});
}

// Deliberate: the message number is not compared.
TEST_F(WindowRecognition, EndsACommandAtAnyMessageThatReturnsWithItsNumber) {
  play({{hookCallWndProc, view, WM_COMMAND, 5, 0, claimed, command(view, 5)},
        {hookCallWndProcRet, view, WM_TIMER, 0xABCD0005, 0, left, none},
        {hookCallWndProc, view, WM_COMMAND, 5, 0, claimed, command(view, 5)}});
}

TEST_F(WindowRecognition, DoesNotCountPostedCommandsAsAtWork) {
  play({{hookGetMessage, frame, WM_COMMAND, 5, 0, claimed, command(frame, 5)},
        {hookCallWndProc, frame, WM_COMMAND, 5, 0, claimed, command(frame, 5)},
        // Nor does a posted one look at the stack.
        {hookGetMessage, frame, WM_COMMAND, 5, 0, claimed, command(frame, 5)}});
}

TEST_F(WindowRecognition, ForgetsCommandsAtWorkWhenARecordingStarts) {
  play({{hookCallWndProc, frame, WM_COMMAND, 5, 0, claimed, command(frame, 5)},
        act("on_start_record", [this] { factory.on_start_record(); }),
        {hookCallWndProc, frame, WM_COMMAND, 5, 0, claimed, command(frame, 5)}});
}

// ---- builder --------------------------------------------------------------------------------------------

class WindowActions : public testing::Test {
protected:
  WindowActions() : window("RecFrame"), other("RecFrame") {}

  void receive_mouse(UINT message, int x, int y, WPARAM keys = 0, HWND on = nullptr) {
    mrWindowRec rec = {};
    rec.kind = windowMouse;
    rec.window = on ? on : window;
    rec.message = message;
    rec.wparam = keys;
    rec.lparam = at(x, y);
    recorder.receive(factoryWindow, rec);
  }
  void receive(uint32_t kind, uint32_t command) {
    mrWindowRec rec = {};
    rec.kind = kind;
    rec.window = window;
    rec.message = command;
    recorder.receive(factoryWindow, rec);
  }
  void click(int x, int y, bool right = false) {
    receive_mouse(right ? WM_RBUTTONDOWN : WM_LBUTTONDOWN, x, y, right ? MK_RBUTTON : MK_LBUTTON);
    receive_mouse(right ? WM_RBUTTONUP : WM_LBUTTONUP, x, y);
  }
  mrContextMenuRes context_menu(HWND on, int x, int y) {
    return get_factory(factoryWindow, true)->context_menu_invoke(on, "any name", CPoint(x, y));
  }
  void expect_last(int kind, int button, int x, int y, int keys) {
    const mrBaseWindowActionStruct& got = recorder.last_action()->get_action_struct();
    EXPECT_EQ(kind, got.kind);
    EXPECT_EQ(button, got.button);
    EXPECT_EQ(x, got.x);
    EXPECT_EQ(y, got.y);
    EXPECT_EQ(keys, got.key_state);
  }

  mrTestRecorder recorder;
  mrTestFrame window;
  mrTestFrame other;
};

struct MouseStep {
  UINT message;
  int x;
  int y;
  WPARAM keys;
  bool on_other = false;
};

struct MergingCase {
  const char* name;
  std::vector<MouseStep> steps;
  std::vector<std::string> statements;
};

// No time limit takes part: window, button and place decide.
TEST_F(WindowActions, MergePressReleaseAndDoubleClick) {
  // clang-format off
  static const MergingCase cases[] = {
      {"press", {{WM_LBUTTONDOWN, 10, 20, MK_LBUTTON}}, {"MouseDown(1, 10, 20, 0);"}},
      {"press and release at one place are a click",
       {{WM_LBUTTONDOWN, 10, 20, MK_LBUTTON}, {WM_LBUTTONUP, 10, 20, 0}}, {"Click(1, 10, 20, 0);"}},
      {"Control stays in the key state, the button's own flag does not",
       {{WM_LBUTTONDOWN, 10, 20, MK_LBUTTON | MK_CONTROL}, {WM_LBUTTONUP, 10, 20, MK_CONTROL}},
       {"Click(1, 10, 20, 8);"}},
      {"the key state of the release counts",
       {{WM_LBUTTONDOWN, 1, 2, MK_LBUTTON | MK_SHIFT}, {WM_LBUTTONUP, 1, 2, MK_CONTROL}}, {"Click(1, 1, 2, 8);"}},
      {"another button that is held stays in the key state",
       {{WM_LBUTTONDOWN, 1, 2, MK_LBUTTON | MK_RBUTTON}, {WM_LBUTTONUP, 1, 2, MK_RBUTTON}}, {"Click(1, 1, 2, 2);"}},
      {"right", {{WM_RBUTTONDOWN, 1, 2, MK_RBUTTON}, {WM_RBUTTONUP, 1, 2, 0}}, {"Click(2, 1, 2, 0);"}},
      {"middle", {{WM_MBUTTONDOWN, 1, 2, MK_MBUTTON}, {WM_MBUTTONUP, 1, 2, 0}}, {"Click(3, 1, 2, 0);"}},
      {"release elsewhere", {{WM_LBUTTONDOWN, 10, 20, MK_LBUTTON}, {WM_LBUTTONUP, 30, 20, 4}},
       {"MouseDown(1, 10, 20, 0);", "MouseUp(1, 30, 20, 4);"}},
      {"release at another height", {{WM_LBUTTONDOWN, 10, 20, MK_LBUTTON}, {WM_LBUTTONUP, 10, 21, 0}},
       {"MouseDown(1, 10, 20, 0);", "MouseUp(1, 10, 21, 0);"}},
      {"release of another button", {{WM_LBUTTONDOWN, 1, 2, MK_LBUTTON}, {WM_RBUTTONUP, 1, 2, MK_LBUTTON}},
       {"MouseDown(1, 1, 2, 0);", "MouseUp(2, 1, 2, 1);"}},
      {"release with nothing before it", {{WM_LBUTTONUP, 10, 20, 0}}, {}},
      {"release on another window", {{WM_LBUTTONDOWN, 1, 2, MK_LBUTTON}, {WM_LBUTTONUP, 1, 2, 0, true}},
       {"MouseDown(1, 1, 2, 0);"}},
      {"release after a click", {{WM_LBUTTONDOWN, 1, 2, 1}, {WM_LBUTTONUP, 1, 2, 0}, {WM_LBUTTONUP, 1, 2, 0}},
       {"Click(1, 1, 2, 0);"}},
      {"release after a release", {{WM_LBUTTONDOWN, 1, 2, 1}, {WM_LBUTTONUP, 3, 2, 0}, {WM_LBUTTONUP, 3, 2, 0}},
       {"MouseDown(1, 1, 2, 0);", "MouseUp(1, 3, 2, 0);"}},
      {"double click with the release that follows it",
       {{WM_LBUTTONDOWN, 1, 2, 1}, {WM_LBUTTONUP, 1, 2, 0}, {WM_LBUTTONDBLCLK, 1, 2, 1 | MK_SHIFT}, {WM_LBUTTONUP, 1, 2, 0}},
       {"DoubleClick(1, 1, 2, 4);"}},
      {"right double click",
       {{WM_RBUTTONDOWN, 1, 2, 2}, {WM_RBUTTONUP, 1, 2, 0}, {WM_RBUTTONDBLCLK, 1, 2, 2}}, {"DoubleClick(2, 1, 2, 0);"}},
      {"middle double click",
       {{WM_MBUTTONDOWN, 1, 2, 16}, {WM_MBUTTONUP, 1, 2, 0}, {WM_MBUTTONDBLCLK, 1, 2, 16}}, {"DoubleClick(3, 1, 2, 0);"}},
      {"double click elsewhere",
       {{WM_LBUTTONDOWN, 1, 2, 1}, {WM_LBUTTONUP, 1, 2, 0}, {WM_LBUTTONDBLCLK, 2, 2, 1}},
       {"Click(1, 1, 2, 0);", "DoubleClick(1, 2, 2, 0);"}},
      {"double click of another button",
       {{WM_LBUTTONDOWN, 1, 2, 1}, {WM_LBUTTONUP, 1, 2, 0}, {WM_RBUTTONDBLCLK, 1, 2, 2}},
       {"Click(1, 1, 2, 0);", "DoubleClick(2, 1, 2, 0);"}},
      {"double click on another window",
       {{WM_LBUTTONDOWN, 1, 2, 1}, {WM_LBUTTONUP, 1, 2, 0}, {WM_LBUTTONDBLCLK, 1, 2, 1, true}},
       {"Click(1, 1, 2, 0);", "DoubleClick(1, 1, 2, 0);"}},
      {"double click after a press", {{WM_LBUTTONDOWN, 1, 2, 1}, {WM_LBUTTONDBLCLK, 1, 2, 1}},
       {"MouseDown(1, 1, 2, 0);", "DoubleClick(1, 1, 2, 0);"}},
      {"double click after a double click",
       {{WM_LBUTTONDBLCLK, 1, 2, 1}, {WM_LBUTTONDBLCLK, 1, 2, 1}},
       {"DoubleClick(1, 1, 2, 0);", "DoubleClick(1, 1, 2, 0);"}},
      {"two presses", {{WM_LBUTTONDOWN, 1, 2, 1}, {WM_LBUTTONDOWN, 1, 2, 1}, {WM_LBUTTONUP, 1, 2, 0}},
       {"MouseDown(1, 1, 2, 0);", "Click(1, 1, 2, 0);"}},
      {"a captured mouse left of and above the window",
       {{WM_LBUTTONDOWN, 3, 3, 1}, {WM_LBUTTONUP, -1, -32768, 0}},
       {"MouseDown(1, 3, 3, 0);", "MouseUp(1, -1, -32768, 0);"}},
      {"no button message", {{WM_MOUSEMOVE, 1, 2, 0}, {WM_MOUSEWHEEL, 1, 2, 0}, {0, 1, 2, 0}}, {}},
  };
  // clang-format on
  for (const MergingCase& c : cases) {
    recorder.clear_actions();
    for (const MouseStep& step : c.steps)
      receive_mouse(step.message, step.x, step.y, step.keys, step.on_other ? other.get() : nullptr);
    EXPECT_EQ(c.statements, recorder.statements()) << c.name;
  }
}

TEST_F(WindowActions, CarryKindButtonPlaceAndKeys) {
  receive_mouse(WM_RBUTTONDOWN, -10, 20, MK_RBUTTON | MK_SHIFT);
  expect_last(actionMouseDown, 2, -10, 20, MK_SHIFT);
  receive_mouse(WM_RBUTTONUP, -10, 20, MK_CONTROL);
  expect_last(actionClick, 2, -10, 20, MK_CONTROL);
  receive_mouse(WM_RBUTTONDBLCLK, -10, 20, MK_RBUTTON);
  expect_last(actionDoubleClick, 2, -10, 20, 0);
  receive_mouse(WM_LBUTTONDOWN, 1, 2, MK_LBUTTON);
  receive_mouse(WM_LBUTTONUP, 3, 4, 0);
  expect_last(actionMouseUp, 1, 3, 4, 0);
  EXPECT_EQ(window, recorder.last_action()->get_window());
}

TEST_F(WindowActions, MergeOnlyWithTheLastAction) {
  receive_mouse(WM_LBUTTONDOWN, 1, 2, MK_LBUTTON);
  receive(windowCommand, 5);
  receive_mouse(WM_LBUTTONUP, 1, 2);
  EXPECT_THAT(recorder.statements(), ElementsAre("MouseDown(1, 1, 2, 0);", "Command(5);"));
}

// An action that is none of a window stands for other recorders' own kinds.
TEST_F(WindowActions, MergeWithNothingThatIsNoWindowAction) {
  struct Remark : mrAction {
    Remark() : mrAction(nullptr) {}
    void get_script(CString&) override {}
  };
  recorder.m_actions.AddTail(new Remark);
  receive_mouse(WM_LBUTTONUP, 1, 2);
  EXPECT_EQ(1, recorder.m_actions.GetCount());
  receive_mouse(WM_LBUTTONDBLCLK, 1, 2, MK_LBUTTON);
  EXPECT_EQ(2, recorder.m_actions.GetCount());
  EXPECT_EQ("DoubleClick(1, 1, 2, 0);", recorder.last_action()->get_action_string());
}

// A press looks at nothing before it; a release raises the array's exception for an action without a path.
TEST_F(WindowActions, LookForAWindowBehindTheLastActionOnlyWhereTheyMerge) {
  recorder.m_actions.AddTail(
      new mrBaseWindow(nullptr, static_cast<mrBaseWindowFactory*>(get_factory(factoryWindow, true))));
  EXPECT_THROW(receive_mouse(WM_LBUTTONUP, 1, 2), CInvalidArgException);
  receive_mouse(WM_LBUTTONDOWN, 1, 2, MK_LBUTTON);
  EXPECT_EQ("MouseDown(1, 1, 2, 0);", recorder.last_action()->get_action_string());
}

TEST_F(WindowActions, NameACommandWhereItsNumberHasAName) {
  recorder.get_namer().add_constant("general", "ID_FILE_OPEN", 57601);
  receive(windowCommand, 57601);
  receive(windowCommand, 57602);
  EXPECT_THAT(recorder.statements(), ElementsAre("Command(general.ID_FILE_OPEN);", "Command(57602);"));
  EXPECT_EQ(actionNone, recorder.last_action()->get_action_struct().kind);
}

// The prefix of commands picks among the names of a number where a group's key begins with it.
TEST_F(WindowActions, NameACommandWithThePrefixOfCommands) {
  for (const char* group : {"IDC_group", "IDM_group", "general"})
    recorder.get_namer().add_constant(group, "NAME", 32771);
  receive(windowCommand, 32771);
  EXPECT_THAT(recorder.statements(), ElementsAre("Command(IDM_group.NAME);"));
}

TEST_F(WindowActions, CloseTheWindow) {
  receive(windowClose, 99);
  EXPECT_THAT(recorder.statements(), ElementsAre("Close();"));
  EXPECT_EQ(actionNone, recorder.last_action()->get_action_struct().kind);
}

TEST_F(WindowActions, AreNoneForAnUnknownKind) {
  receive(3, 5);
  receive(0xFFFFFFFF, 5);
  EXPECT_THAT(recorder.statements(), IsEmpty());
}

// ---- context menus

TEST_F(WindowActions, PutAContextMenuInPlaceOfTheRightClick) {
  click(1, 1);
  click(10, 20, true);
  EXPECT_EQ(contextMenuRecorded, context_menu(window, 10, 20));
  EXPECT_THAT(recorder.statements(), ElementsAre("Click(1, 1, 1, 0);", "ContextMenu(10, 20);"));
  EXPECT_EQ(actionNone, recorder.last_action()->get_action_struct().kind);
}

TEST_F(WindowActions, PutAContextMenuInPlaceOfAPressAndOfARelease) {
  receive_mouse(WM_RBUTTONDOWN, -10, -20, MK_RBUTTON);
  context_menu(window, -10, -20);
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(-10, -20);"));

  recorder.clear_actions();
  receive_mouse(WM_RBUTTONDOWN, 1, 1, MK_RBUTTON);
  receive_mouse(WM_RBUTTONUP, 5, 5);
  context_menu(window, 5, 5);
  EXPECT_THAT(recorder.statements(), ElementsAre("MouseDown(2, 1, 1, 0);", "ContextMenu(5, 5);"));
}

TEST_F(WindowActions, KeepWhatIsNotTheContextMenusRightClick) {
  context_menu(window, 1, 1);
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(1, 1);")) << "nothing before it";
  recorder.clear_actions();
  click(10, 20);
  context_menu(window, 10, 20);
  EXPECT_EQ(2u, recorder.statements().size()) << "left button";
  recorder.clear_actions();
  click(10, 20, true);
  context_menu(window, 11, 20);
  context_menu(window, 10, 20);
  EXPECT_EQ(3u, recorder.statements().size()) << "another place; then not the last action";
  recorder.clear_actions();
  click(10, 20, true);
  context_menu(window, 10, 21);
  EXPECT_EQ(2u, recorder.statements().size()) << "another place below";
  recorder.clear_actions();
  click(10, 20, true);
  context_menu(other, 10, 20);
  EXPECT_EQ(2u, recorder.statements().size()) << "another window";
  recorder.clear_actions();
  click(10, 20, true);
  receive_mouse(WM_RBUTTONDBLCLK, 10, 20, MK_RBUTTON);
  context_menu(window, 10, 20);
  EXPECT_THAT(recorder.statements(), ElementsAre("DoubleClick(2, 10, 20, 0);", "ContextMenu(10, 20);"));
}

// Deliberate: taken off the list, but not destroyed.
TEST_F(WindowActions, DoNotDestroyTheRightClickOfAContextMenu) {
  struct Watched : mrBaseWindow {
    Watched(HWND window, bool* gone)
        : mrBaseWindow(window, static_cast<mrBaseWindowFactory*>(get_factory(factoryWindow, true))),
          gone(gone) {}
    ~Watched() override { *gone = true; }
    bool* gone;
  };
  bool gone = false;
  Watched* const click = new Watched(window, &gone);
  click->set_action_struct({actionClick, 2, 3, 4, 0});
  recorder.m_actions.AddTail(click);
  context_menu(window, 3, 4);
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(3, 4);"));
  EXPECT_FALSE(gone);
  delete click;
}

TEST(WindowFactory, IsTheRecorderOfLastResort) {
  mrWindowFactory factory;
  EXPECT_EQ(1, factory.get_factory_type());
  EXPECT_TRUE(factory.is_wrapped_type("Window"));
  EXPECT_TRUE(factory.is_wrapped_type("WindowEx"));
  EXPECT_FALSE(factory.is_wrapped_type("Windo"));
}
