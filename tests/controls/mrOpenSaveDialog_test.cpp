// The file dialog recorder: which dialogs it knows, when it reports, and what becomes of the report.
#include "controls/mrOpenSaveDialog.h"
#include "hooks/mrDispatcher.h"
#include "hooks/mrSharedBlock.h"
#include "tests/support/clean_block.h"
#include "tests/support/recording.h"
#include "tests/support/tape.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

constexpr const char* shell_view_class = "SHELLDLL_DefView";

// A dialog with the controls of a file dialog. Its classes are the real ones but for the shell view, which
// only the shell can make: the recorder knows it by the name of its class.
class FileDialog : public mrTestWindow {
public:
  explicit FileDialog(HWND owner, bool with_shell_view = true, bool with_path_toolbar = true)
      : mrTestWindow("TestFrame", "Open", WS_POPUP | DS_MODALFRAME, owner) {
    if (with_shell_view)
      shell_view.reset(new mrTestWindow(shell_view_class, "", WS_CHILD, *this, 1121));
    if (with_path_toolbar)
      path_toolbar.reset(new mrTestWindow("ToolbarWindow32", "Address: C:\\models", WS_CHILD, *this, 1001));
  }

  // The edit sits inside the combo boxes of a real dialog: descendants count, not only children.
  mrTestWindow name_box{"ComboBox", "", WS_CHILD | CBS_DROPDOWNLIST, *this, 1148};
  mrTestWindow name_edit{"Edit", "", WS_CHILD, name_box, 1148};
  mrTestWindow type_combo{"ComboBox", "", WS_CHILD | CBS_DROPDOWNLIST, *this, 1136};
  std::unique_ptr<mrTestWindow> shell_view;
  std::unique_ptr<mrTestWindow> path_toolbar;
};

struct Classes {
  Classes() {
    register_test_class(shell_view_class);
    // The toolbar's class is the common controls'; its text is all that is read.
    register_test_class("ToolbarWindow32");
  }
};

class OpenSaveDialog : public testing::Test {
protected:
  static mrOpenSaveDialogFactory& factory() {
    return *static_cast<mrOpenSaveDialogFactory*>(get_factory(factoryOpenSaveDialog, true));
  }

  // A record with a path in a fresh atom, as the host sends it.
  void receive_file(HWND dialog, const char* path) {
    recorder.receive(factoryOpenSaveDialog,
                     mrOpenSaveDialogRec{openSaveFile, 0, dialog, GlobalAddAtomA(path), {}});
  }
  void receive_closed(HWND dialog) {
    recorder.receive(factoryOpenSaveDialog, mrOpenSaveDialogRec{openSaveClosed, 0, dialog, 0, {}});
  }

  Classes classes;
  mrTestFrame frame;
  mrTestRecorder recorder;
  using Statements = std::vector<std::string>;
};

class OpenSaveDialogRecognition : public OpenSaveDialog {
protected:
  // Offers a sent message to the recorder.
  bool send(HWND window, UINT message, WPARAM wparam = 0, LPARAM lparam = 0) {
    return feed(factory(), hookCallWndProc, window, message, wparam, lparam);
  }
  // The path that the only upload carries, its atom taken.
  std::string uploaded_path() {
    if (uploads.count() != 1)
      return "uploads: " + std::to_string(uploads.count());
    const mrOpenSaveDialogRec rec = uploads.last_as<mrOpenSaveDialogRec>();
    if (rec.type != openSaveFile)
      return "closed";
    char path[300] = "";
    GlobalGetAtomNameA(rec.atom, path, sizeof path);
    GlobalDeleteAtom(rec.atom);
    return path;
  }

  mrCleanBlock clean;  // before the catcher, which makes its window the block's recorder window
  mrUploadCatcher uploads;
};

}  // namespace

// ---- recogniser -----------------------------------------------------------------------------------

TEST_F(OpenSaveDialogRecognition, ReportsTheTypedNameInTheFolderShownWhenTheDialogGoes) {
  FileDialog dialog(frame);
  SetWindowTextA(dialog.name_edit, "gear.scad");
  EXPECT_TRUE(send(dialog, WM_COMMAND, IDOK));
  EXPECT_EQ(0u, uploads.count());
  EXPECT_TRUE(send(dialog, WM_DESTROY));
  EXPECT_EQ("C:\\models\\gear.scad", uploaded_path());
  EXPECT_EQ(24u, uploads.last().bytes.size());
  EXPECT_EQ(factoryOpenSaveDialog, static_cast<int>(uploads.last().type));
  EXPECT_EQ(dialog.get(), uploads.last_as<mrOpenSaveDialogRec>().dialog);
}

TEST_F(OpenSaveDialogRecognition, ReportsADialogOnlyOnce) {
  FileDialog dialog(frame);
  send(dialog, WM_COMMAND, IDOK);
  send(dialog, WM_DESTROY);
  send(dialog, WM_DESTROY);
  EXPECT_EQ(1u, uploads.count());
}

TEST_F(OpenSaveDialogRecognition, ReportsACancelledDialogAsClosed) {
  FileDialog dialog(frame);
  send(dialog, WM_COMMAND, IDCANCEL);
  send(dialog, WM_DESTROY);
  ASSERT_EQ(1u, uploads.count());
  EXPECT_EQ(openSaveClosed, uploads.last_as<mrOpenSaveDialogRec>().type);
  EXPECT_EQ(dialog.get(), uploads.last_as<mrOpenSaveDialogRec>().dialog);
}

TEST_F(OpenSaveDialogRecognition, ReportsTheCloseBoxAsClosed) {
  FileDialog dialog(frame);
  EXPECT_TRUE(feed(factory(), hookGetMessage, dialog, WM_SYSCOMMAND, SC_CLOSE));
  send(dialog, WM_DESTROY);
  EXPECT_EQ("closed", uploaded_path());
}

TEST_F(OpenSaveDialogRecognition, OtherSystemCommandsAreNoClose) {
  FileDialog dialog(frame);
  for (const WPARAM command : {SC_MOVE, SC_MINIMIZE, SC_CLOSE | 2})
    EXPECT_TRUE(feed(factory(), hookGetMessage, dialog, WM_SYSCOMMAND, command)) << command;
  send(dialog, WM_DESTROY);
  EXPECT_NE("closed", uploaded_path());
}

// An accelerator of the program's own with the number of a button is none of the dialog's.
TEST_F(OpenSaveDialogRecognition, ButtonsAreToldByTheirWholeCommand) {
  FileDialog dialog(frame);
  SetWindowTextA(dialog.name_edit, "first");
  send(dialog, WM_COMMAND, IDOK);
  SetWindowTextA(dialog.name_edit, "not looked at");
  EXPECT_TRUE(send(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, 1)));
  EXPECT_TRUE(send(dialog, WM_COMMAND, MAKEWPARAM(IDOK, 1)));
  send(dialog, WM_DESTROY);
  EXPECT_EQ("C:\\models\\first", uploaded_path());
}

TEST_F(OpenSaveDialogRecognition, DialogWhosePathIsComposedIsReported) {
  FileDialog dialog(frame);
  SetWindowTextA(dialog.name_edit, "a.scad");
  mrOpenSaveHandlers found;
  ASSERT_TRUE(factory().is_open_save_dialog_message(dialog, found));
  factory().set_last_path(found);
  send(dialog, WM_DESTROY);
  EXPECT_EQ("C:\\models\\a.scad", uploaded_path());
}

// Path, flag and dialog go with a copy.
TEST_F(OpenSaveDialogRecognition, CopyOfTheFactoryReportsTheSame) {
  FileDialog dialog(frame);
  SetWindowTextA(dialog.name_edit, "a.scad");
  send(dialog, WM_COMMAND, IDOK);
  mrOpenSaveDialogFactory copy(factory());
  send(dialog, WM_COMMAND, IDCANCEL);
  mrOpenSaveDialogFactory assigned;
  assigned = factory();
  send(dialog, WM_DESTROY);
  EXPECT_EQ("closed", uploaded_path());
  uploads.clear();
  feed(copy, hookCallWndProc, dialog, WM_DESTROY);
  EXPECT_EQ("C:\\models\\a.scad", uploaded_path());
  uploads.clear();
  feed(assigned, hookCallWndProc, dialog, WM_DESTROY);
  EXPECT_EQ("closed", uploaded_path());
}

TEST_F(OpenSaveDialogRecognition, OkAfterARefusedCancelIsAChoice) {
  FileDialog dialog(frame);
  SetWindowTextA(dialog.name_edit, "a.scad");
  send(dialog, WM_COMMAND, IDCANCEL);
  send(dialog, WM_COMMAND, IDOK);
  send(dialog, WM_DESTROY);
  EXPECT_EQ("C:\\models\\a.scad", uploaded_path());
}

TEST_F(OpenSaveDialogRecognition, ClosedFlagDoesNotReachTheNextDialog) {
  {
    FileDialog dialog(frame);
    send(dialog, WM_COMMAND, IDCANCEL);
    send(dialog, WM_DESTROY);
  }
  uploads.clear();
  FileDialog dialog(frame);
  SetWindowTextA(dialog.name_edit, "b.scad");
  send(dialog, WM_KILLFOCUS);
  send(dialog, WM_DESTROY);
  EXPECT_EQ("C:\\models\\b.scad", uploaded_path());
}

TEST_F(OpenSaveDialogRecognition, KeepsThePathThatWasComposedLast) {
  FileDialog dialog(frame);
  SetWindowTextA(dialog.name_edit, "first");
  send(dialog, WM_COMMAND, notify(1148, CBN_EDITCHANGE), as_lparam(dialog.name_box));
  SetWindowTextA(dialog.name_edit, "second");
  send(dialog, WM_COMMAND, notify(1148, CBN_EDITCHANGE), as_lparam(dialog.name_box));
  SetWindowTextA(dialog.name_edit, "not looked at");
  send(dialog, WM_COMMAND, notify(1148, CBN_SETFOCUS), as_lparam(dialog.name_box));
  send(dialog, WM_DESTROY);
  EXPECT_EQ("C:\\models\\second", uploaded_path());
}

TEST_F(OpenSaveDialogRecognition, TakesTheCurrentDirectoryWithoutAnAddressBar) {
  FileDialog dialog(frame, true, false);
  SetWindowTextA(dialog.name_edit, "a.scad");
  send(dialog, WM_COMMAND, IDOK);
  send(dialog, WM_DESTROY);
  char folder[MAX_PATH] = "";
  GetCurrentDirectoryA(sizeof folder, folder);
  EXPECT_EQ(std::string(folder) + "\\a.scad", uploaded_path());
}

TEST_F(OpenSaveDialogRecognition, TakesTheWholeAddressWithoutASeparator) {
  FileDialog dialog(frame);
  SetWindowTextA(*dialog.path_toolbar, "C:\\plain");
  SetWindowTextA(dialog.name_edit, "a");
  send(dialog, WM_COMMAND, IDOK);
  send(dialog, WM_DESTROY);
  EXPECT_EQ("C:\\plain\\a", uploaded_path());
}

TEST_F(OpenSaveDialogRecognition, TakesAFullPathThatWasTyped) {
  FileDialog dialog(frame);
  SetWindowTextA(dialog.name_edit, "D:\\other\\..\\x.scad");
  send(dialog, WM_COMMAND, IDOK);
  send(dialog, WM_DESTROY);
  EXPECT_EQ("D:\\x.scad", uploaded_path());
}

TEST_F(OpenSaveDialogRecognition, PathUpToAnAtomsLengthTravelsALongerOneDoesNot) {
  const std::string folder = "C:\\models\\";
  for (const size_t length : {255u, 256u}) {
    FileDialog dialog(frame);
    const std::string name(length - folder.size(), 'n');
    SetWindowTextA(dialog.name_edit, name.c_str());
    send(dialog, WM_COMMAND, IDOK);
    send(dialog, WM_DESTROY);
    EXPECT_EQ(length == 255 ? folder + name : "", uploaded_path()) << length;
    uploads.clear();
  }
}

TEST_F(OpenSaveDialogRecognition, ClaimsEveryMessageOfTheDialogsWindowsAndExaminesOnlyItsOwn) {
  FileDialog dialog(frame);
  play_tape(factory(), uploads,
            {{hookGetMessage, dialog.name_box, WM_LBUTTONDOWN, MK_LBUTTON, at(1, 1), claimed, none},
             {hookCallWndProc, dialog.name_box, WM_COMMAND, IDCANCEL, 0, claimed, none},
             {hookCallWndProcRet, dialog, WM_COMMAND, IDCANCEL, 0, claimed, none},
             {hookGetMessage, dialog, WM_MOUSEMOVE, 0, at(1, 1), claimed, none},
             {hookGetMessage, *dialog.shell_view, WM_MOUSEMOVE, 0, at(1, 1), claimed, none}});
  send(dialog, WM_COMMAND, IDOK);
  send(dialog, WM_DESTROY);
  EXPECT_NE("closed", uploaded_path());
}

// Between two recordings of a host nobody sees windows come and go: a handle that was a file dialog's can be
// another dialog's, and its controls gone.
TEST_F(OpenSaveDialogRecognition, AnotherRecordingKnowsNothingOfADialogsControls) {
  FileDialog dialog(frame);
  EXPECT_TRUE(feed(factory(), hookGetMessage, dialog, WM_MOUSEMOVE));
  dialog.name_edit.destroy();
  dialog.shell_view->destroy();
  EXPECT_TRUE(feed(factory(), hookGetMessage, dialog, WM_MOUSEMOVE)) << "known from the message before";
  send(dialog, WM_DESTROY);
  uploads.clear();

  shared_block().get_message_hook = reinterpret_cast<HHOOK>(0x1234);
  EXPECT_FALSE(feed(factory(), hookGetMessage, dialog, WM_MOUSEMOVE));
  send(dialog, WM_DESTROY);
  EXPECT_EQ(0u, uploads.count());
}

TEST_F(OpenSaveDialogRecognition, DestroyThatIsPostedOrReturnedReportsNothing) {
  FileDialog dialog(frame);
  send(dialog, WM_COMMAND, IDOK);
  feed(factory(), hookGetMessage, dialog, WM_DESTROY);
  feed(factory(), hookCallWndProcRet, dialog, WM_DESTROY);
  EXPECT_EQ(0u, uploads.count());
}

TEST_F(OpenSaveDialogRecognition, LeavesADialogWithoutAShellView) {
  FileDialog dialog(frame, false);
  play_tape(factory(), uploads,
            {{hookCallWndProc, dialog, WM_COMMAND, IDOK, 0, left, none},
             {hookCallWndProc, dialog, WM_DESTROY, 0, 0, left, none},
             {hookGetMessage, dialog, WM_MOUSEMOVE, 0, at(1, 1), left, none}});
}

TEST_F(OpenSaveDialogRecognition, LeavesADialogWithoutAFileNameEdit) {
  FileDialog dialog(frame);
  dialog.name_edit.destroy();
  EXPECT_FALSE(send(dialog, WM_COMMAND, IDOK));
}

TEST_F(OpenSaveDialogRecognition, LeavesWindowsOutsideAnyModalDialog) {
  play_tape(factory(), uploads,
            {{hookCallWndProc, frame, WM_COMMAND, IDOK, 0, left, none},
             {hookGetMessage, nullptr, WM_LBUTTONDOWN, 0, 0, left, none}});
  EXPECT_FALSE(factory().handle_message(hookCbt, HCBT_ACTIVATE, 0, 0));
}

TEST_F(OpenSaveDialogRecognition, FindsTheControlsByIdAndExactClass) {
  FileDialog dialog(frame);
  mrOpenSaveHandlers found;
  EXPECT_TRUE(factory().is_open_save_dialog_message(*dialog.shell_view, found));
  EXPECT_EQ(dialog.get(), found.dialog);
  EXPECT_EQ(dialog.name_edit.get(), found.file_edit);
  EXPECT_EQ(dialog.type_combo.get(), found.type_combo);
  EXPECT_EQ(dialog.shell_view->get(), found.shell_view);
  EXPECT_EQ(dialog.path_toolbar->get(), found.path_toolbar);
}

TEST_F(OpenSaveDialogRecognition, ClimbEndsAtAnEditWhoseStyleHasTheSameBit) {
  FileDialog dialog(frame);
  const mrTestWindow edit("Edit", "", WS_CHILD | ES_AUTOHSCROLL, dialog, 5);
  EXPECT_FALSE(send(edit, WM_CHAR, 'a'));
}

// ---- builder --------------------------------------------------------------------------------------

TEST_F(OpenSaveDialog, WritesTheChosenPathWithDoubledBackslashesAndEscapedQuotes) {
  receive_file(frame, "C:\\a \"b\"\\c.scad");
  EXPECT_EQ((Statements{"File(\"C:\\\\a \\\"b\\\"\\\\c.scad\");"}), recorder.statements());
}

TEST_F(OpenSaveDialog, WritesAnEmptyPathWhenNoneCouldTravel) {
  recorder.receive(factoryOpenSaveDialog, mrOpenSaveDialogRec{openSaveFile, 0, frame, 0, {}});
  EXPECT_EQ((Statements{"File(\"\");"}), recorder.statements());
}

TEST_F(OpenSaveDialog, CloseAfterAChosenFileIsNoCancel) {
  receive_file(frame, "C:\\a");
  receive_closed(frame);
  EXPECT_EQ((Statements{"File(\"C:\\\\a\");"}), recorder.statements());
}

TEST_F(OpenSaveDialog, CancellingIsAClose) {
  receive_closed(frame);
  EXPECT_EQ((Statements{"Close();"}), recorder.statements());
}

TEST_F(OpenSaveDialog, NeverLeaksAnAtom) {
  for (int i = 0; i < 1000; ++i) {
    const std::string path = "C:\\models\\" + std::to_string(i);
    receive_file(frame, path.c_str());
    ASSERT_EQ(0, GlobalFindAtomA(path.c_str())) << i;
  }
  EXPECT_EQ(1000, recorder.get_actions().GetCount());
}

TEST_F(OpenSaveDialog, IsDeclaredBelowTheTopLevelWindow) {
  FileDialog dialog(frame);
  receive_closed(dialog);
  const mrWindowInfo* info = recorder.last_action()->get_path()[0];
  EXPECT_STREQ("mrOpenSaveDialogClass", info->class_name);
  CString declaration, search, identifier;
  EXPECT_EQ(declaredActiveDialog, recorder.get_declaration(info, declaration, search, identifier));
  EXPECT_EQ("OpenSaveDialog()", declaration);
  EXPECT_EQ("OpenSaveDialog()", search);
  EXPECT_EQ("OpenSaveDialog", identifier);

  CString script;
  recorder.get_script(script);
  EXPECT_GE(script.Find("  OpenSaveDialog().Close();\r\n"), 0) << script.GetString();
  EXPECT_GE(script.Find("().\r\n    OpenSaveDialog();\r\n"), 0) << script.GetString();
}

TEST_F(OpenSaveDialog, OtherWindowsAndAMissingOneAreNotItsOwn) {
  mrWindowInfo info;
  strcpy(info.class_name, "mrOpenSaveDialogClass2");
  CString declaration, search, identifier;
  EXPECT_EQ(declaredNot, factory().get_declaration(&info, declaration, search, identifier));
  EXPECT_EQ(contextMenuNotClaimed, factory().context_menu_invoke(frame, "x", CPoint(1, 1)));
  EXPECT_THROW(mrOpenSaveDialog(nullptr, &factory()), CInvalidArgException);
}
