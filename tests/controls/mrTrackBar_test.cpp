#include "controls/mrTrackBar.h"

#include "hooks/mrDispatcher.h"
#include "tests/support/declared.h"
#include "tests/support/hooked.h"
#include "tests/support/recording.h"
#include "tests/support/tape.h"
#include "tests/support/test_window.h"

#include <commctrl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

static constexpr DWORD child = WS_CHILD | WS_VISIBLE;

class TestSlider : public mrTestWindow {
public:
  explicit TestSlider(HWND parent, DWORD style = TBS_HORZ)
      : mrTestWindow((InitCommonControls(), TRACKBAR_CLASSA), "", child | style, parent, 7) {
    SendMessageA(get(), TBM_SETRANGEMIN, FALSE, -1000);
    SendMessageA(get(), TBM_SETRANGEMAX, FALSE, 100000);
  }
  void set_pos(int pos) { SendMessageA(get(), TBM_SETPOS, TRUE, pos); }
};

// ---- recognition --------------------------------------------------------------------------------

class TrackBarRecognition : public testing::Test {
protected:
  mrUploadCatcher uploads;
  mrTrackBarFactory factory;
  mrTestFrame dialog;
  TestSlider slider{dialog};
  TestSlider vertical{dialog, TBS_VERT};

  mrTapeStep scrolled(UINT message, WPARAM wparam, HWND control, mrTapeAnswer answer, mrTapeUploads sent) {
    return {hookCallWndProc, dialog, message, wparam, as_lparam(control), answer, std::move(sent)};
  }
  static mrTapeUploads pos_of(HWND control, int64_t pos) { return record(mrTrackBarRec{control, pos}); }
  void play(const std::vector<mrTapeStep>& tape) { play_tape(factory, uploads, tape); }
};

TEST_F(TrackBarRecognition, OnlyTheEndOfADragIsUploaded) {
  play({
      {hookGetMessage, slider, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), claimed, none},
      {hookGetMessage, slider, WM_MOUSEMOVE, MK_LBUTTON, at(9, 5), claimed, none},
      act("the thumb moves", [this] { slider.set_pos(30); }),
      scrolled(WM_HSCROLL, MAKEWPARAM(TB_THUMBTRACK, 30), slider, left, none),
      act("the thumb moves", [this] { slider.set_pos(40); }),
      scrolled(WM_HSCROLL, MAKEWPARAM(TB_THUMBPOSITION, 40), slider, left, none),
      scrolled(WM_HSCROLL, TB_ENDTRACK, slider, claimed, pos_of(slider, 40)),
      {hookCallWndProcRet, dialog, WM_HSCROLL, TB_ENDTRACK, as_lparam(slider), left, none},
      {hookGetMessage, slider, WM_LBUTTONUP, 0, at(9, 5), claimed, none},
  });
}

TEST_F(TrackBarRecognition, StepOfTheKeyboardIsUploadedAtItsEnd) {
  play({
      {hookGetMessage, slider, WM_KEYDOWN, VK_RIGHT, 0, claimed, none},
      act("the thumb moves", [this] { slider.set_pos(1); }),
      scrolled(WM_HSCROLL, TB_LINEDOWN, slider, left, none),
      {hookGetMessage, slider, WM_KEYUP, VK_RIGHT, 0, claimed, none},
      scrolled(WM_HSCROLL, TB_ENDTRACK, slider, claimed, pos_of(slider, 1)),
      act("a page further", [this] { slider.set_pos(21); }),
      scrolled(WM_HSCROLL, TB_PAGEDOWN, slider, left, none),
      scrolled(WM_HSCROLL, TB_ENDTRACK, slider, claimed, pos_of(slider, 21)),
  });
}

TEST_F(TrackBarRecognition, VerticalSliderTellsByTheOtherScrollMessage) {
  vertical.set_pos(12);
  play({scrolled(WM_VSCROLL, TB_ENDTRACK, vertical, claimed, pos_of(vertical, 12))});
}

TEST_F(TrackBarRecognition, NegativeAndLargePositionsKeepTheirValue) {
  for (const int pos : {-1000, 100000}) {
    slider.set_pos(pos);
    play({scrolled(WM_HSCROLL, TB_ENDTRACK, slider, claimed, pos_of(slider, pos))});
  }
}

TEST_F(TrackBarRecognition, PostedEndCountsToo) {
  slider.set_pos(3);
  play({{hookGetMessage, dialog, WM_HSCROLL, TB_ENDTRACK, as_lparam(slider), claimed, pos_of(slider, 3)}});
}

TEST_F(TrackBarRecognition, EveryMessageOfASliderIsClaimed) {
  register_test_class("msctls_trackbar32Own");
  const mrTestWindow own("msctls_trackbar32Own", "", child, dialog, 9);
  for (const HWND window : {slider.get(), own.get()}) {
    play({
        {hookCallWndProc, window, WM_PAINT, 0, 0, claimed, none},
        {hookCallWndProc, window, WM_HSCROLL, TB_ENDTRACK, as_lparam(slider), claimed, none},
        {hookCallWndProcRet, window, WM_PAINT, 0, 0, left, none},
        {hookCbt, window, WM_PAINT, 0, 0, left, none},
    });
  }
}

TEST_F(TrackBarRecognition, OtherMessagesAreLeftToTheOthers) {
  register_test_class("msctls_trackbar3");
  const mrTestWindow almost("msctls_trackbar3", "", child, dialog, 9);
  const mrTestWindow scroll_bar("ScrollBar", "", child, dialog, 10);
  play({
      scrolled(WM_HSCROLL, TB_ENDTRACK, nullptr, left, none),
      scrolled(WM_HSCROLL, TB_ENDTRACK, scroll_bar, left, none),
      scrolled(WM_VSCROLL, TB_ENDTRACK, almost, left, none),
      // The whole wParam counts.
      scrolled(WM_HSCROLL, MAKEWPARAM(TB_ENDTRACK, 1), slider, left, none),
      scrolled(WM_NOTIFY, TB_ENDTRACK, nullptr, left, none),
      {hookGetMessage, dialog, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), left, none},
      {hookGetMessage, almost, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), left, none},
      {hookGetMessage, nullptr, WM_HSCROLL, TB_ENDTRACK, as_lparam(slider), left, none},
  });
}

// ---- building -----------------------------------------------------------------------------------

class TrackBarBuilder : public testing::Test {
protected:
  mrTestRecorder recorder;
  mrTestFrame dialog;
  TestSlider slider{dialog};

  void receive(int64_t pos) { recorder.receive(factoryTrackBar, mrTrackBarRec{slider, pos}); }
};

TEST_F(TrackBarBuilder, PositionIsAStatementOnTheSlider) {
  receive(40);
  EXPECT_THAT(recorder.statements(), ElementsAre("Pos = 40;"));
  EXPECT_EQ(slider.get(), recorder.last_action()->get_path()[0]->window);
  EXPECT_NE(nullptr, dynamic_cast<mrTrackBar*>(recorder.last_action()));
}

TEST_F(TrackBarBuilder, PositionsAreNeverJoined) {
  receive(40);
  receive(40);
  receive(-7);
  EXPECT_THAT(recorder.statements(), ElementsAre("Pos = 40;", "Pos = 40;", "Pos = -7;"));
}

TEST_F(TrackBarBuilder, ContextMenuIsNotClaimed) {
  EXPECT_EQ(contextMenuNotClaimed,
            get_factory(factoryTrackBar, true)->context_menu_invoke(slider, TRACKBAR_CLASSA, CPoint(1, 1)));
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
}

// ---- declaration ----------------------------------------------------------------------------------

class TrackBarDeclaration : public testing::Test {
protected:
  mrTestRecorder recorder;
  mrActionFactory& factory = *get_factory(factoryTrackBar, true);
};

TEST_F(TrackBarDeclaration, SliderIsDeclaredByItsId) {
  const mrDeclared expected = {declaredByControlId, "TrackBar(7)", "TrackBar(7, mpRECURSIVE_SEARCH)",
                               "TrackBar_7"};
  EXPECT_EQ(expected, declare(factory, control_info("msctls_trackbar32", 7, "Zoom")));
}

TEST_F(TrackBarDeclaration, NameFromTheHostComesFirst) {
  const mrDeclared expected = {declaredByName, "TrackBarByID(\"zoom\")", "TrackBarByID(\"zoom\")", "zoom"};
  EXPECT_EQ(expected, declare(factory, control_info("msctls_trackbar32", 7, "", 0, "zoom")));
}

TEST_F(TrackBarDeclaration, OtherClassesAreNotDeclared) {
  EXPECT_EQ(mrDeclared(), declare(factory, control_info("msctls_trackbar3", 7)));
  EXPECT_EQ(mrDeclared(), declare(factory, control_info("TrackBar", 7)));
}

TEST(TrackBarFactory, IsOfItsType) {
  mrTrackBarFactory factory;
  EXPECT_EQ(6, factory.get_factory_type());
  EXPECT_EQ(6, get_factory(6, true)->get_factory_type());
}
