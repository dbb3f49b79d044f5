// How one level of a window path is declared.
#include "controls/mrWindow.h"
#include "tests/support/declared.h"
#include "tests/support/paths.h"
#include "tests/support/probe.h"
#include "tests/support/recording.h"

#include <gtest/gtest.h>

class Declarations : public testing::Test {
protected:
  Declarations() {
    window.set_recorder(&recorder);
    probe.set_recorder(&recorder);
    recorder.get_namer().add_constant("general", "IDC_NAMED", 1001);
  }

  mrTestRecorder recorder;
  mrWindowFactory window;
  mrProbeFactory probe;
};

// ---- the generic recorder ---------------------------------------------------------------------------

TEST_F(Declarations, MainWindowByModuleAndClass) {
  EXPECT_EQ((mrDeclared{declaredMainWindow, "MainWindow(\"host\", \"\", \"Afx\")",
                        "MainWindow(\"host\", \"\", \"Afx\")", "Main_host"}),
            declare(window, main_window("Afx:400000:8")));
}

TEST_F(Declarations, MainWindowsIdentifierEndsAtTheFirstPointOfTheModule) {
  EXPECT_EQ((mrDeclared{declaredMainWindow, "MainWindow(\".a.b\", \"\", \"Frame\")",
                        "MainWindow(\".a.b\", \"\", \"Frame\")", "Main_"}),
            declare(window, main_window("Frame", ".a.b")));
  EXPECT_EQ("Main_", declare(window, main_window("Frame", "")).identifier);
}

TEST_F(Declarations, MainWindowComesBeforeItsNameAndItsStyles) {
  mrWindowInfo info = main_window("#32770");
  strcpy(info.name, "Named");
  info.style = static_cast<__int64>(WS_POPUP | DS_MODALFRAME);
  info.ex_style = WS_EX_MDICHILD;
  EXPECT_EQ("MainWindow(\"host\", \"\", \"#32770\")", declare(window, info).declaration);
}

TEST_F(Declarations, MainWindowsClassIsQuotedAndItsModuleIsNot) {
  EXPECT_EQ("MainWindow(\"a\"b\", \"\", \"x\\\\y\")",
            declare(window, main_window("x\\y", "a\"b")).declaration);
}

TEST_F(Declarations, NamedWindowByItsName) {
  EXPECT_EQ((mrDeclared{declaredByName, "WindowByID(\"Options\")", "WindowByID(\"Options\")", "Options"}),
            declare(window, mrLevel{"Afx", "Text", 5, WS_CHILD, 0, "Options"}));
}

TEST_F(Declarations, NameIsQuotedInTheFormOnly) {
  const mrDeclared declared = declare(window, mrLevel{"Afx", "", 0, WS_CHILD, 0, "A \"B\""});
  EXPECT_EQ("WindowByID(\"A \\\"B\\\"\")", declared.declaration);
  EXPECT_EQ("A \"B\"", declared.identifier);
}

TEST_F(Declarations, NamedWindowComesBeforeDialogAndDocument) {
  constexpr __int64 modal = static_cast<__int64>(WS_POPUP | DS_MODALFRAME);
  EXPECT_EQ(declaredByName, declare(window, mrLevel{"#32770", "", 0, modal, WS_EX_MDICHILD, "N"}).result);
}

TEST_F(Declarations, ModalPopupIsTheActiveDialogWhateverItsTitle) {
  constexpr __int64 modal = static_cast<__int64>(WS_POPUP | DS_MODALFRAME);
  const mrDeclared expected = {declaredActiveDialog, "ActiveDialog()", "ActiveDialog()", "ActiveDialog"};
  EXPECT_EQ(expected, declare(window, mrLevel{"#32770", "Options", 0, modal}));
  EXPECT_EQ(expected, declare(window, mrLevel{"#32770", "", 0, modal | WS_CAPTION, WS_EX_MDICHILD}));
  // As GetWindowLongPtr gives it: with the sign extended.
  EXPECT_EQ(expected, declare(window, mrLevel{"Any", "", 0, static_cast<LONG>(WS_POPUP | DS_MODALFRAME)}));
}

TEST_F(Declarations, ActiveDialogNeedsBothStyles) {
  EXPECT_EQ(declaredByControlId,
            declare(window, mrLevel{"#32770", "T", 0, static_cast<__int64>(WS_POPUP)}).result);
  EXPECT_EQ(declaredByControlId, declare(window, mrLevel{"#32770", "T", 0, DS_MODALFRAME}).result);
}

TEST_F(Declarations, MdiChildIsTheActiveDocument) {
  EXPECT_EQ((mrDeclared{declaredActiveDocument, "ActiveDocument()", "ActiveDocument()", "ActiveDocument"}),
            declare(window, mrLevel{"Doc", "Drawing1", 65280, WS_CHILD, WS_EX_MDICHILD}));
}

struct ChildCase {
  const char* name;
  mrLevel level;
  mrDeclarationRes result;
  const char* declaration;
  const char* search;
  const char* identifier;
};

TEST_F(Declarations, ChildWindowsByClassAndId) {
  // clang-format off
  static const ChildCase cases[] = {
      {"hidden label with id", {"mrDialogByControlClass", "Label", 7}, declaredByControlId,
       "ChildDialogByControl(\"Label\", 7)", "ChildDialogByControl(\"Label\", 7)", "Label"},
      {"hidden label without id", {"mrDialogByControlClass", "Label"}, declaredByControlId,
       "ChildDialogByControl(\"Label\")", "ChildDialogByControl(\"Label\")", "Label"},
      {"visible label with id", {"mrDialogByVisControlClass", "Label", 1001}, declaredByControlId,
       "ChildDialogByVisibleControl(\"Label\", general.IDC_NAMED)",
       "ChildDialogByVisibleControl(\"Label\", general.IDC_NAMED)", "Label"},
      {"visible label without id", {"mrDialogByVisControlClass", "Label"}, declaredByControlId,
       "ChildDialogByVisibleControl(\"Label\")", "ChildDialogByVisibleControl(\"Label\")", "Label"},
      {"titled dialog with id", {"#32770", "Options", 1001}, declaredByControlId,
       "ChildDialog(\"Options\", general.IDC_NAMED)",
       "ChildDialog(\"Options\", general.IDC_NAMED, mpRECURSIVE_SEARCH)", "Options"},
      {"titled dialog without id", {"#32770", "Options"}, declaredByControlId,
       "ChildDialog(\"Options\")", "ChildDialog(\"Options\", 0, mpRECURSIVE_SEARCH)", "Options"},
      {"untitled dialog with id", {"#32770", "", 1001}, declaredByControlId,
       "ChildDialog(\"\", general.IDC_NAMED)",
       "ChildDialog(\"\", general.IDC_NAMED, mpRECURSIVE_SEARCH)", "Dialog_general.IDC_NAMED"},
      {"untitled dialog without id or label", {"#32770"}, declaredUntitledDialog,
       "ChildDialog(\"\")", "ChildDialog(\"\", 0, mpRECURSIVE_SEARCH)", "Dialog_"},
      {"dialog class of a debug build is no untitled dialog", {"#32770d"}, declaredByControlId,
       "ChildDialog(\"\")", "ChildDialog(\"\", 0, mpRECURSIVE_SEARCH)", "#32770"},
      {"other window with id", {"AfxWnd140d", "View", -2}, declaredByControlId,
       "ChildWindow(\"View\", \"AfxWnd\", -2)",
       "ChildWindow(\"View\", \"AfxWnd\", -2, mpRECURSIVE_SEARCH)", "View"},
      {"other window without id", {"AfxWnd140d", "View"}, declaredByControlId,
       "ChildWindow(\"View\", \"AfxWnd\")",
       "ChildWindow(\"View\", \"AfxWnd\", 0, mpRECURSIVE_SEARCH)", "View"},
      {"without text the class and id name it", {"AfxWnd140d", "", 59648}, declaredByControlId,
       "ChildWindow(\"\", \"AfxWnd\", 59648)",
       "ChildWindow(\"\", \"AfxWnd\", 59648, mpRECURSIVE_SEARCH)", "AfxWnd_59648"},
      {"without text and id the class names it", {"MDIClient"}, declaredByControlId,
       "ChildWindow(\"\", \"MDIClient\")",
       "ChildWindow(\"\", \"MDIClient\", 0, mpRECURSIVE_SEARCH)", "MDIClient"},
      {"texts are quoted in the forms only", {"W\"2", "a\\\"b"}, declaredByControlId,
       "ChildWindow(\"a\\\\\\\"b\", \"W\\\"\")",
       "ChildWindow(\"a\\\\\\\"b\", \"W\\\"\", 0, mpRECURSIVE_SEARCH)", "a\\\"b"},
      {"a control bar has no text but for its identifier", {"AfxControlBar140", "Draw", 59393}, declaredByControlId,
       "ChildWindow(\"\", \"AfxControlBar\", 59393)",
       "ChildWindow(\"\", \"AfxControlBar\", 59393, mpRECURSIVE_SEARCH)", "Draw"},
      {"a control bar of a debug build too", {"AfxControlBar140d", "Draw"}, declaredByControlId,
       "ChildWindow(\"\", \"AfxControlBar\")",
       "ChildWindow(\"\", \"AfxControlBar\", 0, mpRECURSIVE_SEARCH)", "Draw"},
      {"percent signs are nothing special", {"W%s", "100%d"}, declaredByControlId,
       "ChildWindow(\"100%d\", \"W%s\")", "ChildWindow(\"100%d\", \"W%s\", 0, mpRECURSIVE_SEARCH)", "100%d"},
  };
  // clang-format on
  for (const ChildCase& c : cases) {
    EXPECT_EQ((mrDeclared{c.result, c.declaration, c.search, c.identifier}), declare(window, c.level))
        << c.name;
  }
}

// Two names for one number: only dialog and library tell which of them it is.
TEST_F(Declarations, IdIsNamedInItsDialogAndLibrary) {
  struct Namer : mrIDNamer {
    using mrIDNamer::add_lib;
  };
  mrIDNamer& namer = recorder.get_namer();
  namer.add_constant("extra", "IDC_SECOND", 1001);
  for (const char* module : {"first", "second"}) {
    mrLibraryRes* const library = (namer.*(&Namer::add_lib))(module);
    library->dialogs[4711] = std::make_unique<mrDialogRes>();
    library->dialogs[4711]->library = library;
    library->dialogs[4711]->controls[1001] = CString("IDC_IN_") + module;
  }
  mrWindowInfo info = mrLevel{"ProbeW", "", 1001, WS_CHILD, 0, "", 4711};
  strcpy(info.resource_library, "second");
  EXPECT_EQ("ChildWindow(\"\", \"ProbeW\", IDC_IN_second)", declare(window, info).declaration);
  EXPECT_EQ("Probe(IDC_IN_second)", declare(probe, info).declaration);
  info.dialog_template_id = 0;
  EXPECT_EQ("ChildWindow(\"\", \"ProbeW\", general.IDC_NAMED | extra.IDC_SECOND)",
            declare(window, info).declaration);
}

TEST_F(Declarations, IdIsNamedWithThePrefixOfControls) {
  for (const char* group : {"IDM_group", "IDC_group"})
    recorder.get_namer().add_constant(group, "NAME", 77);
  EXPECT_EQ("Probe(IDC_group.NAME)", declare(probe, mrLevel{"Probe", "", 77}).declaration);
  EXPECT_EQ("ChildWindow(\"\", \"W\", IDC_group.NAME)", declare(window, mrLevel{"W", "", 77}).declaration);
}

// ---- control factories --------------------------------------------------------------------------------

TEST_F(Declarations, ControlByItsId) {
  EXPECT_EQ((mrDeclared{declaredByControlId, "Probe(general.IDC_NAMED)",
                        "Probe(general.IDC_NAMED, mpRECURSIVE_SEARCH)", "Probe_general.IDC_NAMED"}),
            declare(probe, mrLevel{"ProbeEx", "Text", 1001}));
  EXPECT_EQ("Probe(0)", declare(probe, mrLevel{"Probe"}).declaration);
}

TEST_F(Declarations, NamedControlByItsFactorysOwnForm) {
  EXPECT_EQ((mrDeclared{declaredByName, "ProbeByID(\"Options\")", "ProbeByID(\"Options\")", "Options"}),
            declare(probe, mrLevel{"Probe", "Text", 1001, WS_CHILD, 0, "Options"}));
}

TEST_F(Declarations, ControlOfAnotherClassIsLeftAndNothingWritten) {
  CString declaration = "kept";
  CString search = "kept";
  CString identifier = "kept";
  const mrWindowInfo other = mrLevel{"Prob", "Text", 1001, WS_CHILD, 0, "Named"};
  EXPECT_EQ(declaredNot, probe.get_declaration(&other, declaration, search, identifier));
  EXPECT_EQ("kept", declaration);
  EXPECT_EQ("kept", search);
  EXPECT_EQ("kept", identifier);
}

TEST_F(Declarations, NamedFormLeavesAWindowWithoutANameAlone) {
  CString declaration = "kept";
  CString search = "kept";
  CString identifier = "kept";
  const mrWindowInfo unnamed;
  EXPECT_EQ(declaredNot, probe.get_named_declaration(&unnamed, declaration, search, identifier));
  EXPECT_EQ(declaredNot, probe.get_named_declaration(&unnamed, declaration, search, identifier, "Other"));
  EXPECT_EQ("kept", declaration);
  EXPECT_EQ("kept", search);
  EXPECT_EQ("kept", identifier);
}

TEST_F(Declarations, NamedFormTakesTheScriptNameGiven) {
  mrWindowInfo info;
  strcpy(info.name, "Zoom");
  CString declaration;
  CString search;
  CString identifier;
  EXPECT_EQ(declaredByName, probe.get_named_declaration(&info, declaration, search, identifier, "CheckBox"));
  EXPECT_EQ("CheckBoxByID(\"Zoom\")", declaration);
  EXPECT_EQ("CheckBoxByID(\"Zoom\")", search);
  EXPECT_EQ("Zoom", identifier);
}
