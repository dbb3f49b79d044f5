#include "controls/mrRibCustomiser.h"

#include "framework/CInvalidArgException.h"
#include "hooks/mrDispatcher.h"
#include "hooks/mrIdentity.h"
#include "host/bcg.h"
#include "tests/support/declared.h"
#include "tests/support/named_ids.h"
#include "tests/support/hooked.h"
#include "tests/support/recording.h"
#include "tests/support/tape.h"
#include "tests/support/test_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

using testing::ElementsAre;

static constexpr DWORD child = WS_CHILD | WS_VISIBLE;

// A window that answers as the host's widget does.
class TestWidget : public mrTestWindow {
public:
  explicit TestWidget(HWND parent, LRESULT identity = 165)
      : mrTestWindow((register_test_class("BCGGridOfTheHost"), "BCGGridOfTheHost"), "Commands",
                     parent ? child : WS_POPUP | WS_VISIBLE, parent, parent ? 7 : 0),
        identity(identity) {
    set_answer([this](UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
      if (message != RegisterWindowMessageA("MSG_REQUEST_RIB_CUSTOMISATION_WIDGET_DATA"))
        return false;
      return wparam == 0 ? identify(lparam, result) : fill(wparam, lparam);
    });
  }
  LRESULT identity;
  bool fills = true;
  std::string selected = "Extrude";
  int questions = 0;

private:
  bool identify(LPARAM lparam, LRESULT& result) {
    EXPECT_EQ(0, lparam);
    ++questions;
    result = identity;
    return true;
  }
  bool fill(WPARAM request, LPARAM lparam) {
    EXPECT_EQ(1u, request);
    const mrRibTextRequest& block = *reinterpret_cast<const mrRibTextRequest*>(lparam);
    EXPECT_EQ(260u, block.size);
    // Careless: without a zero when the text fills the buffer.
    if (fills)
      strncpy(block.buffer, selected.c_str(), block.size);
    return true;
  }
};

TEST(RibCustomiserMessages, AreRegisteredByTheirNames) {
  EXPECT_EQ(RegisterWindowMessageA("BCGM_GRID_SEL_CHANGED"), BCGM_GRID_SEL_CHANGED);
}

// ---- recognition --------------------------------------------------------------------------------

class RibCustomiserRecognition : public testing::Test {
protected:
  mrUploadCatcher uploads;
  mrRibCustomiserFactory factory;
  mrTestFrame dialog;
  TestWidget widget{dialog};
  TestWidget other{dialog, 0};
  mrTestWindow inside{"Edit", "", child, widget, 8};
  mrTestWindow deeper{"TestFrame", "", child, inside, 9};

  static mrTapeUploads selected_of(HWND window, const std::string& text) {
    mrRibCustomiserRec rec = {};
    rec.widget = window;
    strcpy(rec.selected, text.c_str());
    return record(rec);
  }
  void play(const std::vector<mrTapeStep>& tape) { play_tape(factory, uploads, tape); }
};

TEST_F(RibCustomiserRecognition, SelectionIsUploaded) {
  play({
      {hookGetMessage, widget, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), claimed, none},
      {hookCallWndProc, widget, BCGM_GRID_SEL_CHANGED, 0, 0, claimed, selected_of(widget, "Extrude")},
      {hookCallWndProcRet, widget, BCGM_GRID_SEL_CHANGED, 0, 0, left, none},
      act("another entry is selected", [this] { widget.selected = "Cut"; }),
      {hookGetMessage, widget, BCGM_GRID_SEL_CHANGED, 1, 2, claimed, selected_of(widget, "Cut")},
  });
}

TEST_F(RibCustomiserRecognition, TextIsCutAt259Characters) {
  for (const size_t length : {259, 260, 300}) {
    widget.selected = std::string(length, 's');
    play({{hookCallWndProc, widget, BCGM_GRID_SEL_CHANGED, 0, 0, claimed,
           selected_of(widget, std::string(259, 's'))}});
  }
}

// The text of the record before does not stay.
TEST_F(RibCustomiserRecognition, WidgetThatDoesNotFillTheTextLeavesItEmpty) {
  play({{hookCallWndProc, widget, BCGM_GRID_SEL_CHANGED, 0, 0, claimed, selected_of(widget, "Extrude")}});
  widget.fills = false;
  play({{hookCallWndProc, widget, BCGM_GRID_SEL_CHANGED, 0, 0, claimed, selected_of(widget, "")}});
}

TEST_F(RibCustomiserRecognition, EveryMessageOfAWidgetAndItsChildrenIsClaimed) {
  for (const HWND window : {widget.get(), inside.get()}) {
    play({
        {hookGetMessage, window, WM_RBUTTONDOWN, MK_RBUTTON, at(5, 5), claimed, none},
        {hookGetMessage, window, WM_MOUSEMOVE, 0, at(5, 5), claimed, none},
        {hookCallWndProc, window, WM_PAINT, 0, 0, claimed, none},
        {hookCallWndProc, window, WM_COMMAND, notify(8, EN_CHANGE), as_lparam(inside), claimed, none},
        {hookCallWndProcRet, window, WM_PAINT, 0, 0, left, none},
        {hookCbt, window, WM_PAINT, 0, 0, left, none},
    });
  }
  // Only the parent itself counts.
  play({{hookGetMessage, deeper, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), left, none}});
}

// Its parent answers first.
TEST_F(RibCustomiserRecognition, WidgetInAWidgetIsClaimedAndNotRecorded) {
  const TestWidget inner(widget.get());
  play({{hookCallWndProc, inner, BCGM_GRID_SEL_CHANGED, 0, 0, claimed, none}});
}

TEST_F(RibCustomiserRecognition, OtherWindowsAreLeft) {
  for (const LRESULT identity : {0, 1, 164, 166}) {
    other.identity = identity;
    const mrTestWindow below("Edit", "", child, other, 8);
    for (const HWND window : {other.get(), below.get(), dialog.get()}) {
      play({
          {hookGetMessage, window, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), left, none},
          {hookCallWndProc, window, BCGM_GRID_SEL_CHANGED, 0, 0, left, none},
          {hookGetMessage, window, WM_MOUSEMOVE, 0, at(5, 5), left, none},
      });
    }
  }
  play({{hookGetMessage, nullptr, BCGM_GRID_SEL_CHANGED, 0, 0, left, none}});
}

// A dialog box that the widget opens is owned by it.
TEST_F(RibCustomiserRecognition, WindowOwnedByAWidgetIsClaimed) {
  const TestWidget top(nullptr);
  const mrTestWindow owned("TestFrame", "Owned", WS_POPUP | WS_VISIBLE, top);
  ASSERT_EQ(top.get(), GetParent(owned));
  play({{hookGetMessage, owned, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), claimed, none}});
}

// A question is a sent message and thus two more hook calls.
TEST_F(RibCustomiserRecognition, MessagesThatNobodyRecordsAskNoneAnew) {
  const mrTapeStep move = {hookGetMessage, other, WM_MOUSEMOVE, 0, at(5, 5), left, none};
  play({move, move, move});
  EXPECT_EQ(1, other.questions);
  const mrTapeStep press = {hookGetMessage, other, WM_LBUTTONDOWN, MK_LBUTTON, at(5, 5), left, none};
  play({press, press});
  EXPECT_EQ(3, other.questions);

  set_shortcuts(false);
  play({move, move});
  set_shortcuts(true);
  EXPECT_EQ(5, other.questions);
}

// ---- building -----------------------------------------------------------------------------------

class RibCustomiserBuilder : public testing::Test {
protected:
  mrTestRecorder recorder;
  mrTestFrame dialog;
  TestWidget widget{dialog};
  TestWidget other{dialog};

  void receive(const std::string& text, HWND of = nullptr) {
    mrRibCustomiserRec rec = {};
    rec.widget = of ? of : widget.get();
    strcpy(rec.selected, text.c_str());
    recorder.receive(factoryRibCustomiser, rec);
  }
};

TEST_F(RibCustomiserBuilder, SelectionIsAStatementOnTheWidget) {
  receive("Extrude");
  EXPECT_THAT(recorder.statements(), ElementsAre("Selected = \"Extrude\";"));
  EXPECT_NE(nullptr, dynamic_cast<mrRibCustomiser*>(recorder.last_action()));
  EXPECT_EQ(widget.get(), recorder.last_action()->get_path()[0]->window);
  EXPECT_STREQ("RibCustomiserClass", recorder.last_action()->get_path()[0]->class_name);
  CString script;
  recorder.last_action()->get_script(script);
  EXPECT_STREQ("  Commands().Selected = \"Extrude\";", script);
}

TEST_F(RibCustomiserBuilder, RunOfSelectionsEndsAsTheLast) {
  receive("Extrude");
  receive("Cut");
  receive("Mirror");
  EXPECT_THAT(recorder.statements(), ElementsAre("Selected = \"Mirror\";"));
}

TEST_F(RibCustomiserBuilder, TwoWidgetsInTurnGiveTwoStatementsEach) {
  receive("Extrude");
  receive("Cut", other);
  receive("Mirror");
  EXPECT_THAT(recorder.statements(),
              ElementsAre("Selected = \"Extrude\";", "Selected = \"Cut\";", "Selected = \"Mirror\";"));
}

TEST_F(RibCustomiserBuilder, ARunEndsWithAnotherKindOfAction) {
  receive("Extrude");
  recorder.receive(factoryWindow,
                   std::array<uint64_t, 5>{2, reinterpret_cast<uint64_t>(widget.get()), 0, 0, 0});
  receive("Cut");
  EXPECT_THAT(recorder.statements(),
              ElementsAre("Selected = \"Extrude\";", "Close();", "Selected = \"Cut\";"));
}

TEST_F(RibCustomiserBuilder, TextIsQuoted) {
  receive("Say \"a\\b\"\t\xE4");
  EXPECT_THAT(recorder.statements(), ElementsAre("Selected = \"Say \\\"a\\\\b\\\"\\t\xE4\";"));
  receive("");
  EXPECT_THAT(recorder.statements(), ElementsAre("Selected = \"\";"));
  receive(std::string(259, 's'));
  EXPECT_THAT(recorder.statements(), ElementsAre("Selected = \"" + std::string(259, 's') + "\";"));
}

TEST_F(RibCustomiserBuilder, ActionNeedsAWindow) {
  auto* const factory = static_cast<mrBaseWindowFactory*>(get_factory(factoryRibCustomiser, true));
  EXPECT_THROW(mrRibCustomiser(nullptr, factory), CInvalidArgException);
}

TEST_F(RibCustomiserBuilder, ContextMenuIsNotClaimed) {
  EXPECT_EQ(contextMenuNotClaimed, get_factory(factoryRibCustomiser, true)
                                       ->context_menu_invoke(widget, "RibCustomiserClass", CPoint(1, 1)));
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
}

// ---- declaration ----------------------------------------------------------------------------------

class RibCustomiserDeclaration : public testing::Test {
protected:
  mrTestRecorder recorder;
  mrActionFactory& factory = *get_factory(factoryRibCustomiser, true);
};

TEST_F(RibCustomiserDeclaration, WidgetIsDeclaredByItsTextAndId) {
  const mrDeclared expected = {declaredByControlId, "RibCustomisationWidget(\"Commands\", 7)",
                               "RibCustomisationWidget(\"Commands\", 7, mpRECURSIVE_SEARCH)", "Commands"};
  EXPECT_EQ(expected, declare(factory, control_info("RibCustomiserClass", 7, "Commands")));
}

TEST_F(RibCustomiserDeclaration, WidgetWithoutTextIsCalledByItsId) {
  const mrDeclared expected = {declaredByControlId, "RibCustomisationWidget(\"\", 7)",
                               "RibCustomisationWidget(\"\", 7, mpRECURSIVE_SEARCH)",
                               "RibCustomisationWidget_7"};
  EXPECT_EQ(expected, declare(factory, control_info("RibCustomiserClass", 7)));
}

TEST_F(RibCustomiserDeclaration, IdIsNamedInItsDialogAndLibrary) {
  mrIDNamer& namer = recorder.get_namer();
  for (const char* group : {"IDM_group", "IDC_group"})
    namer.add_constant(group, "NAME", 7);
  name_control(namer, "samplecad", 4711, 7, "IDC_LIST");
  mrWindowInfo info = control_info("RibCustomiserClass", 7, "Commands");
  EXPECT_EQ("RibCustomisationWidget(\"Commands\", IDC_group.NAME)", declare(factory, info).declaration);
  info.dialog_template_id = 4711;
  strcpy(info.resource_library, "samplecad");
  EXPECT_EQ((mrDeclared{declaredByControlId, "RibCustomisationWidget(\"Commands\", IDC_LIST)",
                        "RibCustomisationWidget(\"Commands\", IDC_LIST, mpRECURSIVE_SEARCH)", "Commands"}),
            declare(factory, info));
  info.text[0] = '\0';
  EXPECT_EQ("RibCustomisationWidget_IDC_LIST", declare(factory, info).identifier);
}

TEST_F(RibCustomiserDeclaration, TextIsQuotedButNotInTheIdentifier) {
  const mrDeclared expected = {declaredByControlId, "RibCustomisationWidget(\"\\\"All\\\"\", 7)",
                               "RibCustomisationWidget(\"\\\"All\\\"\", 7, mpRECURSIVE_SEARCH)", "\"All\""};
  EXPECT_EQ(expected, declare(factory, control_info("RibCustomiserClass", 7, "\"All\"")));
}

TEST_F(RibCustomiserDeclaration, NameFromTheHostComesFirst) {
  const mrDeclared expected = {declaredByName, "RibCustomisationWidgetByID(\"commands\")",
                               "RibCustomisationWidgetByID(\"commands\")", "commands"};
  EXPECT_EQ(expected, declare(factory, control_info("RibCustomiserClass", 7, "Commands", 0, "commands")));
}

TEST_F(RibCustomiserDeclaration, OtherClassesAreNotDeclared) {
  EXPECT_EQ(mrDeclared(), declare(factory, control_info("RibCustomiser", 7)));
  EXPECT_EQ(mrDeclared(), declare(factory, control_info("BCGGridOfTheHost", 7, "", 0, "commands")));
}

TEST(RibCustomiserFactory, IsOfItsType) {
  mrRibCustomiserFactory factory;
  EXPECT_EQ(17, factory.get_factory_type());
  EXPECT_EQ(17, get_factory(17, true)->get_factory_type());
}
