// The message logger: which messages it uploads and the lines it makes of them.
#include "controls/mrLogger.h"
#include "hooks/mrDispatcher.h"
#include "hooks/mrHooks.h"
#include "hooks/mrSharedBlock.h"
#include "tests/support/recording.h"
#include "tests/support/tape.h"

#include <gtest/gtest.h>

namespace {

struct MessageName {
  unsigned message;
  const char* name;
};
constexpr MessageName named_messages[] = {
#include "tests/controls/message_names.inc"
};

class Logger : public testing::Test {
protected:
  Logger() {
    factory().on_start_record();
    factory().set_recorder(&recorder);
  }
  ~Logger() override {
    factory().on_start_record();
    factory().set_recorder(nullptr);
  }

  static mrLoggerFactory& factory() {
    return *static_cast<mrLoggerFactory*>(get_factory(factoryLogger, true));
  }

  mrLoggerRec rec(uint32_t kind, HWND window, uint32_t message, WPARAM wparam, LPARAM lparam,
                  uint64_t extra = 0) {
    return {kind, 0, window, message, 0, wparam, lparam, extra};
  }
  // The line made of a record.
  std::string line(const mrLoggerRec& record) {
    recorder.receive(factoryLogger, record);
    return recorder.statements().back();
  }
  std::string handle(HWND window) {
    char text[40];
    snprintf(text, sizeof text, "%08llX", reinterpret_cast<unsigned long long>(window));
    return text;
  }

  mrTestFrame frame;
  mrTestRecorder recorder;
};

class LoggerRecognition : public Logger {
protected:
  void choose(HWND window) {
    feed(factory(), hookGetMessage, window, WM_MOUSEMOVE);
    feed(factory(), hookGetMessage, window, WM_KEYDOWN, VK_CONTROL);
    uploads.clear();
  }
  mrUploadCatcher uploads;
};

}  // namespace

// ---- recogniser -----------------------------------------------------------------------------------

TEST_F(LoggerRecognition, ClaimsEverythingAndLogsNothingUntilAWindowIsChosen) {
  play_tape(factory(), uploads,
            {{hookGetMessage, frame, WM_LBUTTONDOWN, 1, at(1, 1), claimed, none},
             {hookCallWndProc, frame, WM_COMMAND, 1, 0, claimed, none}});
  EXPECT_TRUE(factory().handle_message(hookCbt, HCBT_ACTIVATE, 0, 0));
}

TEST_F(LoggerRecognition, CtrlChoosesTheWindowUnderTheMouse) {
  feed(factory(), hookGetMessage, frame, WM_MOUSEMOVE);
  EXPECT_EQ(frame.get(), shared_block().logger_candidate_window);
  feed(factory(), hookGetMessage, frame, WM_KEYDOWN, VK_CONTROL);
  EXPECT_EQ(frame.get(), shared_block().logger_window);
}

TEST_F(LoggerRecognition, UploadsTheMessagesOfTheChosenWindowFromThreeHooks) {
  choose(frame);
  feed(factory(), hookGetMessage, frame, WM_LBUTTONDOWN, MK_LBUTTON, at(3, 4));
  EXPECT_EQ(
      record(rec(1, frame, WM_LBUTTONDOWN, MK_LBUTTON, at(3, 4), uploads.last_as<mrLoggerRec>().extra))[0],
      uploads.last().bytes);
  feed(factory(), hookCallWndProc, frame, WM_COMMAND, 7, 9);
  EXPECT_EQ(2u, uploads.last_as<mrLoggerRec>().kind);
  feed(factory(), hookCallWndProcRet, frame, WM_COMMAND, 7, 9, 0x1234);
  EXPECT_EQ(record(rec(3, frame, WM_COMMAND, 7, 9, 0x1234))[0], uploads.last().bytes);
  EXPECT_EQ(3u, uploads.count());
  EXPECT_EQ(factoryLogger, static_cast<int>(uploads.last().type));
}

TEST_F(LoggerRecognition, LeavesOutTheMessagesOfOtherWindowsAndTheNoise) {
  const mrTestFrame other;
  choose(frame);
  play_tape(factory(), uploads,
            {{hookGetMessage, other, WM_LBUTTONDOWN, 1, at(1, 1), claimed, none},
             {hookGetMessage, frame, WM_PAINT, 0, 0, claimed, none},
             {hookCallWndProc, frame, WM_ERASEBKGND, 0, 0, claimed, none},
             {hookCallWndProc, frame, WM_SETCURSOR, 0, 0, claimed, none},
             {hookCallWndProcRet, frame, WM_NCHITTEST, 0, 0, claimed, none}});
}

TEST_F(LoggerRecognition, TheFirstWindowCreatedCapturesTheLogging) {
  choose(frame);
  const mrTestFrame created;
  CREATESTRUCTA create = {};
  create.hMenu = reinterpret_cast<HMENU>(0x55);
  feed(factory(), hookCallWndProc, created, WM_CREATE, 0, reinterpret_cast<LPARAM>(&create));
  EXPECT_EQ(created.get(), shared_block().logger_window);
  EXPECT_EQ(1u, shared_block().logger_latch);
  EXPECT_EQ(0x55u, uploads.last_as<mrLoggerRec>().extra);

  // A second one is logged and changes nothing.
  const mrTestFrame second;
  feed(factory(), hookCallWndProc, second, WM_CREATE, 0, reinterpret_cast<LPARAM>(&create));
  EXPECT_EQ(second.get(), uploads.last_as<mrLoggerRec>().window);
  EXPECT_EQ(created.get(), shared_block().logger_window);
  EXPECT_EQ(2u, uploads.count());
}

TEST_F(LoggerRecognition, CreationWithoutItsDetailsHasNoMenu) {
  choose(frame);
  const mrTestFrame created;
  feed(factory(), hookCallWndProcRet, frame, WM_COMMAND, 0, 0, 0x1234);
  feed(factory(), hookCallWndProc, created, WM_CREATE);
  EXPECT_EQ(record(rec(2, created, WM_CREATE, 0, 0, 0))[0], uploads.last().bytes);
  EXPECT_EQ(created.get(), shared_block().logger_window);
}

// A window created while another one is logged sets the latch.
TEST_F(LoggerRecognition, ShiftStopsLoggingAndCtrlDoesNotRestartItWhileTheLatchIsSet) {
  const mrTestFrame created;
  CREATESTRUCTA create = {};
  choose(frame);
  feed(factory(), hookCallWndProc, created, WM_CREATE, 0, reinterpret_cast<LPARAM>(&create));
  ASSERT_EQ(created.get(), shared_block().logger_window);
  play_tape(
      factory(), uploads,
      {{hookGetMessage, frame, WM_MOUSEMOVE, 0, 0, claimed, none},
       {hookGetMessage, frame, WM_KEYDOWN, VK_CONTROL, 0, claimed, none},
       act("Ctrl does not re-target it", [&] { EXPECT_EQ(created.get(), shared_block().logger_window); }),
       {hookGetMessage, frame, WM_KEYDOWN, VK_SHIFT, 0, claimed, none},
       act("Shift stops it", [] { EXPECT_EQ(nullptr, shared_block().logger_window); }),
       {hookGetMessage, frame, WM_KEYDOWN, VK_CONTROL, 0, claimed, none},
       {hookGetMessage, frame, WM_LBUTTONDOWN, 1, 0, claimed, none},
       act("Ctrl does not restart it", [] { EXPECT_EQ(nullptr, shared_block().logger_window); })});
  EXPECT_EQ(1u, shared_block().logger_latch);
  factory().on_start_record();
  choose(frame);
  EXPECT_EQ(frame.get(), shared_block().logger_window);
}

TEST_F(LoggerRecognition, CtrlAgainRetargetsTheLogging) {
  const mrTestFrame other;
  choose(frame);
  choose(other);
  EXPECT_EQ(other.get(), shared_block().logger_window);
}

// A program may take its keys from its thread instead of a window.
TEST_F(LoggerRecognition, KeysWithoutAWindowChooseToo) {
  feed(factory(), hookGetMessage, frame, WM_MOUSEMOVE);
  feed(factory(), hookGetMessage, nullptr, WM_KEYDOWN, VK_CONTROL);
  EXPECT_EQ(frame.get(), shared_block().logger_window);
  play_tape(factory(), uploads, {{hookGetMessage, nullptr, WM_KEYDOWN, 'A', 0, claimed, none}});
  feed(factory(), hookGetMessage, nullptr, WM_KEYDOWN, VK_SHIFT);
  EXPECT_EQ(nullptr, shared_block().logger_window);
  feed(factory(), hookGetMessage, nullptr, WM_MOUSEMOVE);
  EXPECT_EQ(nullptr, shared_block().logger_candidate_window);
}

TEST_F(LoggerRecognition, KeysThatAreSentChooseNothing) {
  feed(factory(), hookCallWndProc, frame, WM_MOUSEMOVE);
  feed(factory(), hookCallWndProc, frame, WM_KEYDOWN, VK_CONTROL);
  EXPECT_EQ(nullptr, shared_block().logger_candidate_window);
  EXPECT_EQ(nullptr, shared_block().logger_window);
}

TEST_F(LoggerRecognition, DestroyedWindowStopsTheLoggingAtTheNextMessage) {
  mrTestFrame short_lived;
  choose(short_lived);
  short_lived.destroy();
  feed(factory(), hookCallWndProc, frame, WM_COMMAND, 1, 0);
  EXPECT_EQ(nullptr, shared_block().logger_window);
  EXPECT_EQ(0u, uploads.count());
}

#if !defined(MR_ROUTE_LOGGER)
TEST_F(LoggerRecognition, IsNeitherOfferedAMessageNorToldOfAStart) {
  shared_block().logger_window = frame;
  shared_block().logger_latch = 1;
  CWPSTRUCT call = {0, 7, WM_CREATE, frame};
  dispatch_hook_message(hookCallWndProc, HC_ACTION, 1, reinterpret_cast<LPARAM>(&call));
  EXPECT_EQ(0u, uploads.count());
  tell_factories_of_start();
  EXPECT_EQ(1u, shared_block().logger_latch);
}
#else
TEST_F(LoggerRecognition, IsOfferedEveryMessageInADiagnosticBuild) {
  choose(frame);
  CWPSTRUCT call = {0, 7, WM_COMMAND, frame};
  dispatch_hook_message(hookCallWndProc, HC_ACTION, 1, reinterpret_cast<LPARAM>(&call));
  ASSERT_EQ(1u, uploads.count());
  EXPECT_EQ(factoryLogger, static_cast<int>(uploads.last().type));
}
#endif

// ---- names ----------------------------------------------------------------------------------------

TEST_F(Logger, NamesEveryMessageOfTheTable) {
  EXPECT_EQ(209u, std::size(named_messages));
  for (const MessageName& row : named_messages) {
    CString text;
    mrLoggerFactory::get_message_text(row.message, text);
    EXPECT_EQ(row.name, text.str());
  }
}

TEST_F(Logger, WritesEveryOtherMessageAsAtLeastFourHexadecimalDigits) {
  std::vector<bool> named(0x31B);
  for (const MessageName& row : named_messages)
    named.at(row.message) = true;
  for (unsigned message = 0; message < 0x500; ++message) {
    if (message < named.size() && named[message])
      continue;
    CString text;
    mrLoggerFactory::get_message_text(message, text);
    char expected[20];
    snprintf(expected, sizeof expected, "%04X", message);
    EXPECT_EQ(expected, text.str());
  }
  CString text;
  mrLoggerFactory::get_message_text(0x0004, text);
  EXPECT_EQ("0004", text);
  mrLoggerFactory::get_message_text(0x0400, text);
  EXPECT_EQ("0400", text);
  mrLoggerFactory::get_message_text(0xC123A, text);
  EXPECT_EQ("C123A", text);
}

// ---- builder --------------------------------------------------------------------------------------

TEST_F(Logger, WritesAPostedMessage) {
  EXPECT_EQ("P: " + handle(frame) + " WM_LBUTTONDOWN:\tw=00000001, l=00040003 HotItem: 0",
            line(rec(1, frame, WM_LBUTTONDOWN, 1, at(3, 4))));
}

TEST_F(Logger, WritesASentAndAReturnedMessage) {
  EXPECT_EQ("S: " + handle(frame) + " WM_COMMAND:\tw=00000007, l=123456789A HotItem: 0",
            line(rec(2, frame, WM_COMMAND, 7, 0x123456789A)));
  EXPECT_EQ("R: " + handle(frame) + " 0400:\tw=FFFFFFFFFFFFFFFF, l=00000000 Res=00001234 HotItem: 0",
            line(rec(3, frame, WM_USER, ~WPARAM(0), 0, 0x1234)));
}

TEST_F(Logger, DescribesACreatedWindow) {
  const mrTestWindow child("TestFrame", "a\tb", WS_CHILD, frame, 0x1A);
  char parent[40];
  snprintf(parent, sizeof parent, "%X", static_cast<unsigned>(reinterpret_cast<uintptr_t>(frame.get())));
  char style[40];
  snprintf(style, sizeof style, "%X", static_cast<unsigned>(GetWindowLongPtrA(child, GWL_STYLE)));
  EXPECT_EQ("S: " + handle(child) +
                " WM_CREATE:\tw=00000000, l=00000000 Text=a\tb Class=TestFrame ID=1A Style=" + style +
                " ExStyle=0 Parent=" + parent + " createstruct.hMenu = 00000055 HotItem: 0",
            line(rec(2, child, WM_CREATE, 0, 0, 0x55)));
}

TEST_F(Logger, AsksTheHotItemWhateverTheWindowIs) {
  frame.set_answer([](UINT message, WPARAM, LPARAM, LRESULT& result) {
    result = -1;
    return message == WM_USER + 71;  // TB_GETHOTITEM
  });
  EXPECT_EQ("P: " + handle(frame) + " WM_CHAR:\tw=00000041, l=00000000 HotItem: -1",
            line(rec(1, frame, WM_CHAR, 'A', 0)));
}

TEST_F(Logger, LineHasNoWindow) {
  line(rec(1, frame, WM_CHAR, 'A', 0));
  EXPECT_EQ(nullptr, recorder.last_action()->get_window());
  EXPECT_TRUE(recorder.last_action()->get_path().IsEmpty());
}

TEST_F(Logger, DropsARecordWithoutARecorder) {
  factory().set_recorder(nullptr);
  recorder.receive(factoryLogger, rec(1, frame, WM_CHAR, 'A', 0));
  EXPECT_TRUE(recorder.statements().empty());
}

TEST_F(Logger, GetsNoRecorderFromTheSession) {
  factory().set_recorder(nullptr);
  const mrTestRecorder another;
  EXPECT_EQ(nullptr, factory().get_recorder());
}

// ---- declaration ----------------------------------------------------------------------------------

TEST_F(Logger, DeclaresAnEntryWithoutAWindowOnly) {
  mrWindowInfo info;
  CString declaration, search, identifier;
  EXPECT_EQ(declaredByControlId, factory().get_declaration(&info, declaration, search, identifier));
  EXPECT_EQ("_", declaration);
  EXPECT_EQ("_", search);
  EXPECT_EQ("_", identifier);
  info.window = frame;
  EXPECT_EQ(declaredNot, factory().get_declaration(&info, declaration, search, identifier));
  EXPECT_EQ(contextMenuNotClaimed, factory().context_menu_invoke(frame, "x", CPoint(1, 1)));
}
