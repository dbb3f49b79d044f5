// End to end: edits, typed into and filled by the program, with every recorder in the dispatch.
#include "tests/e2e/gallery.h"

class EditEndToEnd : public GalleryEndToEnd {
protected:
  EditEndToEnd() : GalleryEndToEnd("edits", "Edits") { stop_clock_of(host); }

  std::string text_of(int id) const {
    char text[1024] = "";
    SendMessageA(control(id), WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
  }
};

// The dialog copies what is typed to another edit; that is no typing.
TEST_F(EditEndToEnd, TypedTextIsOneStatement) {
  click(IDC_EDIT);
  user.type("aB 1");
  EXPECT_TRUE(wait_until([this] { return text_of(IDC_EDIT_MIRROR) == "aB 1"; }));
  EXPECT_EQ((Statements{"Text = \"aB 1\";"}), recording.finish());
  EXPECT_EQ((Statements{"  Main_SampleCad().SetFocus();", "  Edit_2041().Text = \"aB 1\";"}),
            recording.script_lines());
}

TEST_F(EditEndToEnd, TypedCharactersAboveAsciiStandInTheStatement) {
  click(IDC_EDIT);
  user.type("M\xFCller \xD8"
            "5");
  EXPECT_EQ((Statements{"Text = \"M\xFCller \xD8"
                        "5\";"}),
            recording.finish());
}

TEST_F(EditEndToEnd, CorrectedTextIsOneStatement) {
  click(IDC_EDIT);
  user.type("abx");
  user.key(VK_BACK);
  user.key(VK_HOME);
  user.key(VK_DELETE);
  user.type("Z");
  EXPECT_EQ((Statements{"Text = \"Zb\";"}), recording.finish());
}

TEST_F(EditEndToEnd, ClearedTextIsEmpty) {
  click(IDC_EDIT);
  user.type("a");
  user.key(VK_BACK);
  EXPECT_EQ((Statements{"Text = \"\";"}), recording.finish());
}

TEST_F(EditEndToEnd, TypingInTurnIsAStatementEach) {
  click(IDC_EDIT);
  user.type("a");
  click(IDC_EDIT_NAMED);
  user.type("b");
  click(IDC_EDIT);
  user.key(VK_END);
  user.type("c");
  EXPECT_EQ((Statements{"Text = \"a\";", "Text = \"b\";", "Text = \"ac\";"}), recording.finish());
  EXPECT_EQ((Statements{"  Main_SampleCad().SetFocus();", "  Edit_2041().Text = \"a\";",
                        "  NamedEdit().Text = \"b\";", "  Edit_2041().Text = \"ac\";"}),
            recording.script_lines());
}

TEST_F(EditEndToEnd, QuotesAndBackslashesAreEscaped) {
  click(IDC_EDIT);
  user.type("3\" C:\\x");
  EXPECT_EQ((Statements{"Text = \"3\\\" C:\\\\x\";"}), recording.finish());
}

TEST_F(EditEndToEnd, LinesOfAMultilineEdit) {
  click(IDC_EDIT_MULTILINE);
  user.type("a");
  user.key(VK_RETURN);
  user.type("b");
  EXPECT_EQ((Statements{"Text = \"a\\r\\nb\";"}), recording.finish());
}

TEST_F(EditEndToEnd, PasswordIsWrittenAsItWasTyped) {
  click(IDC_EDIT_PASSWORD);
  user.type("secret");
  EXPECT_EQ((Statements{"Text = \"secret\";"}), recording.finish());
}

TEST_F(EditEndToEnd, KeysThatAnEditRefusesRecordNothing) {
  click(IDC_EDIT_READ_ONLY);
  user.type("a");
  click(IDC_EDIT_NUMBER);
  user.type("a");
  EXPECT_EQ(Statements(), recording.finish());
}

TEST_F(EditEndToEnd, LongTextIsCut) {
  const std::string by_program(262, 'x');
  SendMessageA(control(IDC_EDIT), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(by_program.c_str()));
  click(IDC_EDIT);
  user.key(VK_HOME);
  user.type("y");
  EXPECT_EQ((Statements{"Text = \"y" + std::string(258, 'x') + "\";"}), recording.finish());
}

TEST_F(EditEndToEnd, WhatTheProgramWritesIsNotRecorded) {
  click(IDC_BY_PROGRAM);
  EXPECT_TRUE(wait_until([this] { return text_of(IDC_EDIT_SPUN) == "45"; }));
  EXPECT_EQ("1234", text_of(IDC_EDIT));
  EXPECT_EQ((Statements{"Click();"}), recording.finish());
}

TEST_F(EditEndToEnd, WhatTheProgramAppendsIsNotRecorded) {
  click(IDC_APPEND);
  EXPECT_TRUE(wait_until([this] { return text_of(IDC_EDIT_MULTILINE) == "Appended\r\n"; }));
  EXPECT_EQ((Statements{"Click();"}), recording.finish());
}

TEST_F(EditEndToEnd, SpinIsTheTextOfItsEdit) {
  RECT arrows = {};
  GetClientRect(control(IDC_SPIN), &arrows);
  const POINT up = client_place(control(IDC_SPIN), arrows.right / 2, arrows.bottom / 4);
  user.click(up);
  expect_statements(1);
  EXPECT_EQ("1", text_of(IDC_EDIT_SPUN));
  user.click(up);
  EXPECT_EQ((Statements{"Text = \"2\";"}), recording.finish());
  EXPECT_EQ((Statements{"  Main_SampleCad().SetFocus();", "  Edit_2050().Text = \"2\";"}),
            recording.script_lines());
}

// It has no edit to speak for it: what it records is a click on itself.
TEST_F(EditEndToEnd, UpDownWithoutAnEditIsClicked) {
  user.click(client_place(control(IDC_SPIN_ALONE), 4, 5));
  EXPECT_EQ((Statements{"Click(1, 4, 5, 0);"}), recording.finish());
}
