// End to end: SampleCad's own file dialogs, which have the controls of the system's newer ones, and the
// system's.
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "tests/support/e2e.h"

#include <gtest/gtest.h>

#include <fstream>

namespace {

using Statements = std::vector<std::string>;

std::string command(int id) { return "Command(" + std::to_string(id) + ");"; }

// A path as the statement has it.
std::string doubled(const std::string& path) {
  std::string text;
  for (const char ch : path)
    text += ch == '\\' ? "\\\\" : std::string(1, ch);
  return text;
}

class OpenSaveDialogEndToEnd : public testing::Test {
protected:
  OpenSaveDialogEndToEnd() {
    char temp[MAX_PATH] = "";
    GetTempPathA(sizeof temp, temp);
    folder = std::string(temp) + "mr_file_dialog_test";
    CreateDirectoryA(folder.c_str(), nullptr);
  }
  ~OpenSaveDialogEndToEnd() override {
    DeleteFileA((folder + "\\part.scm").c_str());
    RemoveDirectoryA(folder.c_str());
  }

  HWND wait_for(const char* title) {
    const HWND dialog = host.wait_for_dialog(title);
    EXPECT_TRUE(dialog) << title;
    EXPECT_TRUE(wait_until([dialog] { return GetForegroundWindow() == dialog; })) << title;
    return dialog;
  }
  void wait_until_closed(HWND dialog) {
    EXPECT_TRUE(wait_until([dialog] { return !IsWindow(dialog); }));
  }

  std::string folder;
  mrSampleCad host;
  mrRecording recording{host};
  mrUser& user = recording.user;
};

}  // namespace

TEST_F(OpenSaveDialogEndToEnd, SavingUnderATypedNameIsOneStatement) {
  user.key('S', {VK_CONTROL});
  const HWND dialog = wait_for("Save as");
  user.type(folder + "\\part.scm");
  user.click(control_of(dialog, IDOK));
  wait_until_closed(dialog);
  EXPECT_EQ((Statements{command(IDM_FILE_SAVE), "File(\"" + doubled(folder) + "\\\\part.scm\");"}),
            recording.finish());
  EXPECT_TRUE(std::ifstream(folder + "\\part.scm").good());
}

TEST_F(OpenSaveDialogEndToEnd, RefusedNameAndEscapeAreAClose) {
  user.key('O', {VK_CONTROL});
  const HWND dialog = wait_for("Open");
  user.type("nothing.scm");
  user.key(VK_RETURN);  // the program says that there is no such file and keeps the dialog
  user.key(VK_ESCAPE);
  wait_until_closed(dialog);
  EXPECT_EQ((Statements{command(IDM_FILE_OPEN), "Close();"}), recording.finish());
}

TEST_F(OpenSaveDialogEndToEnd, CancelIsAClose) {
  user.key('O', {VK_CONTROL});
  const HWND dialog = wait_for("Open");
  user.click(control_of(dialog, IDCANCEL));
  wait_until_closed(dialog);
  EXPECT_EQ((Statements{command(IDM_FILE_OPEN), "Close();"}), recording.finish());
  const std::vector<std::string> lines = recording.script_lines();
  ASSERT_EQ(3u, lines.size());
  EXPECT_EQ("  OpenSaveDialog().Close();", lines.back());
  EXPECT_NE(std::string::npos,
            recording.script().find("  return Main_SampleCad().\r\n    OpenSaveDialog();\r\n"))
      << recording.script();
}

TEST_F(OpenSaveDialogEndToEnd, CloseBoxIsAClose) {
  user.key('O', {VK_CONTROL});
  const HWND dialog = wait_for("Open");
  user.key(VK_F4, {VK_MENU});
  wait_until_closed(dialog);
  EXPECT_EQ((Statements{command(IDM_FILE_OPEN), "Close();"}), recording.finish());
}

TEST_F(OpenSaveDialogEndToEnd, ChoosingInTheListRecordsNothingButTheFile) {
  std::ofstream(folder + "\\part.scm").close();
  user.key('O', {VK_CONTROL});
  const HWND dialog = wait_for("Open");
  user.type(folder);
  user.key(VK_RETURN);  // enters the folder
  user.type("part.scm");
  user.key(VK_RETURN);
  wait_until_closed(dialog);
  EXPECT_EQ((Statements{command(IDM_FILE_OPEN), "File(\"" + doubled(folder) + "\\\\part.scm\");"}),
            recording.finish());
}

// The dialog of the system is of the old kind under Wine: no address bar, so the path is the current
// directory's.
TEST_F(OpenSaveDialogEndToEnd, TheSystemsDialogGivesAFullPathThatWasTyped) {
  PostMessageA(host.frame(), WM_COMMAND, IDM_FILE_SYSTEM_SAVE, 0);
  ASSERT_TRUE(recording.wait_for_statements(1));
  HWND dialog = nullptr;
  ASSERT_TRUE(wait_until([&] {
    dialog = GetForegroundWindow();
    return dialog != host.frame() && GetDlgItem(dialog, 1121);
  }));
  user.type(folder + "\\part.scm");
  user.key(VK_RETURN);
  wait_until_closed(dialog);
  EXPECT_EQ((Statements{command(IDM_FILE_SYSTEM_SAVE), "File(\"" + doubled(folder) + "\\\\part.scm\");"}),
            recording.finish());
}
