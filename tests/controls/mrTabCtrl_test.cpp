#include "controls/mrTabCtrl.h"

#include "hooks/mrDispatcher.h"
#include "tests/support/declared.h"
#include "tests/support/hooked.h"
#include "tests/support/recording.h"
#include "tests/support/self_recording.h"
#include "tests/support/tape.h"
#include "tests/support/test_window.h"

#include <commctrl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

static constexpr DWORD child = WS_CHILD | WS_VISIBLE;
static constexpr UINT beam_message = 1925;

static UINT bcg_message() { return RegisterWindowMessageA("BCGM_ONCHANGE_ACTIVE_TAB"); }

// A tab control of the system with the captions given.
class TestTabs : public mrTestWindow {
public:
  TestTabs(HWND parent, const std::vector<std::string>& captions, int id = 7)
      : mrTestWindow((InitCommonControls(), WC_TABCONTROLA), "", child, parent, id, 0, {10, 10, 310, 110}) {
    int position = 0;
    for (const std::string& caption : captions) {
      TCITEMA item = {};
      item.mask = TCIF_TEXT;
      item.pszText = const_cast<char*>(caption.c_str());
      SendMessageA(get(), TCM_INSERTITEMA, static_cast<WPARAM>(position++), reinterpret_cast<LPARAM>(&item));
    }
  }
  void choose(int index) { SendMessageA(get(), TCM_SETCURSEL, static_cast<WPARAM>(index), 0); }
};

// A tab window of another library: of a class name of its own, and it answers as the test says.
class OwnTabs : public mrTestWindow {
public:
  OwnTabs(const char* class_name, HWND parent)
      : mrTestWindow((register_test_class(class_name), class_name), "", child, parent, 8) {
    set_answer([this](UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
      if (message == TCM_GETCURSEL)
        result = current;
      else if (message == TCM_GETITEMA)
        result = get_item && get_item(wparam, *reinterpret_cast<TCITEMA*>(lparam));
      else
        return false;
      return true;
    });
  }
  LRESULT current = 0;
  std::function<bool(WPARAM index, TCITEMA& item)> get_item;
};

// ---- recognition --------------------------------------------------------------------------------

class TabRecognition : public testing::Test {
protected:
  mrUploadCatcher uploads;
  mrTabCtrlFactory factory;
  mrTestFrame dialog;
  TestTabs tabs{dialog, {"Part", "Assembly", "", "Drawing"}};
  OwnTabs bcg{"BCGTabWnd", dialog};
  OwnTabs beam{"GXTabBeam:400000", dialog};

  static mrTapeUploads tab_of(HWND window, int64_t index, const std::string& caption) {
    mrTabCtrlRec expected = {};
    expected.tab = window;
    expected.index = index;
    strcpy(expected.text, caption.c_str());
    return record(expected);
  }
  mrTapeStep notified(int kind, NMHDR& header, mrTapeAnswer answer, mrTapeUploads sent) {
    return {kind, dialog, WM_NOTIFY, 7, reinterpret_cast<LPARAM>(&header), answer, std::move(sent)};
  }
  void play(const std::vector<mrTapeStep>& tape) { play_tape(factory, uploads, tape); }
};

TEST_F(TabRecognition, TabChosenByTheUserIsUploaded) {
  NMHDR changing = {tabs, 7, static_cast<UINT>(TCN_SELCHANGING)};
  NMHDR changed = {tabs, 7, static_cast<UINT>(TCN_SELCHANGE)};
  play({
      {hookGetMessage, tabs, WM_LBUTTONDOWN, MK_LBUTTON, at(60, 5), claimed, none},
      notified(hookCallWndProc, changing, left, none),
      act("the second tab comes up", [this] { tabs.choose(1); }),
      notified(hookCallWndProc, changed, claimed, tab_of(tabs, 1, "Assembly")),
      notified(hookCallWndProcRet, changed, left, none),
      {hookGetMessage, tabs, WM_LBUTTONUP, 0, at(60, 5), claimed, none},
      act("the fourth tab comes up", [this] { tabs.choose(3); }),
      notified(hookGetMessage, changed, claimed, tab_of(tabs, 3, "Drawing")),
  });
}

// A click on the current tab.
TEST_F(TabRecognition, ClickThatChangesNothingIsClaimedAndNotRecorded) {
  NMHDR clicked = {tabs, 7, static_cast<UINT>(NM_CLICK)};
  play({
      {hookGetMessage, tabs, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), claimed, none},
      {hookGetMessage, tabs, WM_LBUTTONUP, 0, at(5, 5), claimed, none},
      notified(hookCallWndProc, clicked, left, none),
  });
}

TEST_F(TabRecognition, TabWithoutACaptionIsUploadedWithAnEmptyText) {
  NMHDR changed = {tabs, 7, static_cast<UINT>(TCN_SELCHANGE)};
  tabs.choose(2);
  play({notified(hookCallWndProc, changed, claimed, tab_of(tabs, 2, ""))});
}

TEST_F(TabRecognition, NoCurrentTabIsUploadedAsMinusOne) {
  NMHDR changed = {tabs, 7, static_cast<UINT>(TCN_SELCHANGE)};
  tabs.choose(-1);
  play({notified(hookCallWndProc, changed, claimed, tab_of(tabs, -1, ""))});
}

TEST_F(TabRecognition, CaptionIsCutAt259Characters) {
  for (const size_t length : {259, 260, 300}) {
    const std::string caption(length, 'c');
    const TestTabs long_tabs(dialog, {caption}, 9);
    NMHDR changed = {long_tabs, 9, static_cast<UINT>(TCN_SELCHANGE)};
    play({notified(hookCallWndProc, changed, claimed, tab_of(long_tabs, 0, caption.substr(0, 259)))});
  }
}

TEST_F(TabRecognition, TabWindowOfTheBcgLibraryTellsItsParentByItsOwnMessage) {
  bcg.current = 1;
  bcg.get_item = [](WPARAM index, TCITEMA& item) {
    EXPECT_EQ(1u, index);
    EXPECT_EQ(static_cast<UINT>(TCIF_TEXT), item.mask);
    EXPECT_EQ(260, item.cchTextMax);
    return lstrcpynA(item.pszText, "Layers", item.cchTextMax) != nullptr;
  };
  play({
      {hookCallWndProc, dialog, bcg_message(), 1, as_lparam(bcg), claimed, tab_of(bcg, 1, "Layers")},
      {hookGetMessage, dialog, bcg_message(), 1, as_lparam(bcg), claimed, tab_of(bcg, 1, "Layers")},
      {hookCallWndProc, dialog, bcg_message(), 1, 0, left, none},
      {hookCallWndProcRet, dialog, bcg_message(), 1, as_lparam(bcg), left, none},
  });
}

// Instead of filling the caller's buffer.
TEST_F(TabRecognition, CaptionThatTheTabKeepsItselfIsCopied) {
  for (const size_t length : {6, 259, 260, 300}) {
    std::string own(length, 'o');
    bcg.get_item = [&own](WPARAM, TCITEMA& item) { return (item.pszText = &own[0]) != nullptr; };
    play({{hookCallWndProc, dialog, bcg_message(), 0, as_lparam(bcg), claimed,
           tab_of(bcg, 0, own.substr(0, 259))}});
  }
}

// The caption of the record before does not stay.
TEST_F(TabRecognition, CaptionThatCannotBeReadIsEmpty) {
  NMHDR changed = {tabs, 7, static_cast<UINT>(TCN_SELCHANGE)};
  play({notified(hookCallWndProc, changed, claimed, tab_of(tabs, 0, "Part"))});
  bcg.get_item = [](WPARAM, TCITEMA& item) { return (item.pszText = nullptr) != nullptr; };
  play({{hookCallWndProc, dialog, bcg_message(), 0, as_lparam(bcg), claimed, tab_of(bcg, 0, "")}});
  bcg.get_item = [](WPARAM, TCITEMA& item) { return (item.pszText = LPSTR_TEXTCALLBACKA) != nullptr; };
  play({{hookCallWndProc, dialog, bcg_message(), 0, as_lparam(bcg), claimed, tab_of(bcg, 0, "")}});
  bcg.get_item = nullptr;
  play({{hookCallWndProc, dialog, bcg_message(), 0, as_lparam(bcg), claimed, tab_of(bcg, 0, "")}});
}

TEST_F(TabRecognition, PostedBeamMessageIsRecordedASentOneIsNot) {
  beam.current = 3;
  play({
      {hookCallWndProc, dialog, beam_message, 3, as_lparam(beam), left, none},
      {hookGetMessage, dialog, beam_message, 3, as_lparam(beam), claimed, tab_of(beam, 3, "")},
      {hookGetMessage, dialog, beam_message, 3, 0, left, none},
  });
}

TEST_F(TabRecognition, EveryOtherMessageOfATabWindowIsClaimed) {
  for (const HWND window : {tabs.get(), bcg.get(), beam.get()}) {
    play({
        {hookGetMessage, window, WM_RBUTTONDOWN, MK_RBUTTON, at(5, 5), claimed, none},
        {hookCallWndProc, window, WM_PAINT, 0, 0, claimed, none},
        {hookCallWndProc, window, WM_COMMAND, 7, 0, claimed, none},
        {hookCallWndProcRet, window, WM_PAINT, 0, 0, left, none},
        {hookCbt, window, WM_PAINT, 0, 0, left, none},
    });
  }
}

// A control on a page may be the child of the tab control itself.
TEST_F(TabRecognition, NotificationsToATabWindowAreLookedAt) {
  const TestTabs inner(tabs, {"Inner"}, 9);
  NMHDR changed = {inner, 9, static_cast<UINT>(TCN_SELCHANGE)};
  NMHDR clicked = {inner, 9, static_cast<UINT>(NM_CLICK)};
  play({
      {hookCallWndProc, tabs, WM_NOTIFY, 9, reinterpret_cast<LPARAM>(&changed), claimed,
       tab_of(inner, 0, "Inner")},
      {hookCallWndProc, tabs, WM_NOTIFY, 9, reinterpret_cast<LPARAM>(&clicked), left, none},
      {hookCallWndProc, tabs, WM_NOTIFY, 9, 0, left, none},
      // A tab window's own messages go before what they say of another one.
      {hookGetMessage, tabs, beam_message, 0, as_lparam(beam), claimed, none},
      {hookCallWndProc, bcg, bcg_message(), 0, as_lparam(bcg), claimed, none},
  });
}

TEST_F(TabRecognition, OtherMessagesAreLeftToTheOthers) {
  register_test_class("SysTabControl32Own");
  const mrTestWindow almost("SysTabControl32Own", "", child, dialog, 9);
  NMHDR of_almost = {almost, 9, static_cast<UINT>(TCN_SELCHANGE)};
  NMHDR of_bcg = {bcg, 8, static_cast<UINT>(TCN_SELCHANGE)};
  NMHDR of_nobody = {nullptr, 0, static_cast<UINT>(TCN_SELCHANGE)};
  play({
      {hookGetMessage, dialog, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), left, none},
      {hookGetMessage, almost, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), left, none},
      {hookGetMessage, nullptr, beam_message, 0, as_lparam(beam), left, none},
      {hookCallWndProc, dialog, WM_NOTIFY, 9, 0, left, none},
      notified(hookCallWndProc, of_almost, left, none),
      notified(hookCallWndProc, of_bcg, left, none),
      notified(hookCallWndProc, of_nobody, left, none),
  });
}

struct ClassCase {
  const char* class_name;
  bool is_tab;
};
static constexpr ClassCase class_cases[] = {
    {"SysTabControl32", true}, {"SysTabControl32a", false}, {"SysTabControl3", false},
    {"BCGTab", true},          {"BCGTabWnd:1", true},       {"BCGPTabWnd", false},
    {"BCGTa", false},          {"GXTabBeam", true},         {"GXTabBeam32", true},
    {"GXTab", false},          {"TabCtrl", false},          {"", false},
};

TEST_F(TabRecognition, ClassNamesOfTabWindows) {
  for (const ClassCase& c : class_cases)
    EXPECT_EQ(c.is_tab, factory.is_wrapped_type(c.class_name)) << c.class_name;
}

// ---- building -----------------------------------------------------------------------------------

class TabBuilder : public testing::Test {
protected:
  mrTestRecorder recorder;
  mrTestFrame dialog;
  TestTabs tabs{dialog, {"Part", "Assembly"}};

  void receive(int64_t index, const std::string& caption) {
    mrTabCtrlRec rec = {};
    rec.tab = tabs;
    rec.index = index;
    strcpy(rec.text, caption.c_str());
    recorder.receive(factoryTabCtrl, rec);
  }
};

TEST_F(TabBuilder, TabIsSelectedByItsCaption) {
  receive(1, "Assembly");
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItemByName(\"Assembly\");"));
  EXPECT_EQ(tabs.get(), recorder.last_action()->get_path()[0]->window);
  EXPECT_NE(nullptr, dynamic_cast<mrTabCtrl*>(recorder.last_action()));
}

TEST_F(TabBuilder, TabWithoutACaptionIsSelectedByItsIndex) {
  receive(2, "");
  receive(-1, "");
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItem(2);", "SelectItem(-1);"));
}

TEST_F(TabBuilder, CaptionStandsAsItIs) {
  receive(0, "Say \"a\\b\"\t\xE4");
  receive(0, std::string(259, 'c'));
  EXPECT_THAT(recorder.statements(), ElementsAre("SelectItemByName(\"Say \"a\\b\"\t\xE4\");",
                                                 "SelectItemByName(\"" + std::string(259, 'c') + "\");"));
}

TEST_F(TabBuilder, SelectionsAreNeverJoined) {
  receive(0, "Part");
  receive(1, "Assembly");
  receive(1, "Assembly");
  EXPECT_THAT(recorder.statements(),
              ElementsAre("SelectItemByName(\"Part\");", "SelectItemByName(\"Assembly\");",
                          "SelectItemByName(\"Assembly\");"));
}

// ---- context menu ---------------------------------------------------------------------------------

// The rectangle of a tab comes from the control through a remote call.
class TabContextMenu : public testing::Test {
protected:
  mrTestFrame dialog;
  TestTabs tabs{dialog, {"Part", "Assembly", "Drawing"}};
  mrActionFactory& factory = *get_factory(factoryTabCtrl, true);
  mrSelfRecording recorder;

  RECT place_of(int index) {
    RECT rect = {};
    TabCtrl_GetItemRect(tabs, index, &rect);
    return rect;
  }
  mrContextMenuRes invoke(int x, int y, const char* class_name = WC_TABCONTROLA) {
    return factory.context_menu_invoke(tabs, class_name, CPoint(x, y));
  }
};

TEST_F(TabContextMenu, OnTheCurrentTabIsTrue) {
  tabs.choose(1);
  const RECT tab = place_of(1);
  ASSERT_LT(tab.left, tab.right);
  EXPECT_EQ(contextMenuRecorded, invoke(tab.left, tab.top));
  EXPECT_EQ(contextMenuRecorded, invoke(tab.right - 1, tab.bottom - 1));
  EXPECT_EQ(contextMenuRecorded, invoke(tab.right, tab.top));
  EXPECT_THAT(recorder.statements(),
              ElementsAre("ContextMenu(true);", "ContextMenu(true);", "ContextMenu(false);"));
  EXPECT_NE(nullptr, dynamic_cast<mrTabCtrl*>(recorder.last_action()));
}

TEST_F(TabContextMenu, OnAnotherTabIsFalse) {
  tabs.choose(1);
  const RECT other = place_of(2);
  EXPECT_EQ(contextMenuRecorded, invoke(other.left + 1, other.top + 1));
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(false);"));
}

// Deliberate: the first tab is never measured.
TEST_F(TabContextMenu, OnTheFirstTabIsFalseThoughItIsCurrent) {
  tabs.choose(0);
  const RECT first = place_of(0);
  EXPECT_EQ(contextMenuRecorded, invoke(first.left + 1, first.top + 1));
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(false);"));
}

TEST_F(TabContextMenu, WithoutACurrentTabIsFalse) {
  tabs.choose(-1);
  EXPECT_EQ(contextMenuRecorded, invoke(1, 1));
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(false);"));
}

TEST_F(TabContextMenu, OnATabWindowThatDoesNotMeasureIsFalse) {
  OwnTabs beam("GXTabBeam", dialog);
  beam.current = 1;
  EXPECT_EQ(contextMenuRecorded, factory.context_menu_invoke(beam, "GXTabBeam", CPoint(0, 0)));
  EXPECT_THAT(recorder.statements(), ElementsAre("ContextMenu(false);"));
}

TEST_F(TabContextMenu, OfAnotherClassIsNotClaimed) {
  EXPECT_EQ(contextMenuNotClaimed, invoke(1, 1, "SysTabControl32Own"));
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
}

// ---- declaration ----------------------------------------------------------------------------------

class TabDeclaration : public testing::Test {
protected:
  mrTestRecorder recorder;
  mrActionFactory& factory = *get_factory(factoryTabCtrl, true);
};

TEST_F(TabDeclaration, TabWindowIsDeclaredByItsId) {
  const mrDeclared expected = {declaredByControlId, "TabCtrl(7)", "TabCtrl(7, mpRECURSIVE_SEARCH)",
                               "TabCtrl_7"};
  for (const char* class_name : {"SysTabControl32", "BCGTabWnd", "GXTabBeam"})
    EXPECT_EQ(expected, declare(factory, control_info(class_name, 7, "Pages"))) << class_name;
}

TEST_F(TabDeclaration, NameFromTheHostComesFirst) {
  const mrDeclared expected = {declaredByName, "TabCtrlByID(\"pages\")", "TabCtrlByID(\"pages\")", "pages"};
  EXPECT_EQ(expected, declare(factory, control_info("SysTabControl32", 7, "", 0, "pages")));
}

TEST_F(TabDeclaration, OtherClassesAreNotDeclared) {
  EXPECT_EQ(mrDeclared(), declare(factory, control_info("SysTabControl32Own", 7)));
  EXPECT_EQ(mrDeclared(), declare(factory, control_info("TabCtrl", 7)));
}

TEST(TabCtrlFactory, IsOfItsType) {
  mrTabCtrlFactory factory;
  EXPECT_EQ(5, factory.get_factory_type());
  EXPECT_EQ(5, get_factory(5, true)->get_factory_type());
}
