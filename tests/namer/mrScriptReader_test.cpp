// Resource scripts: modules, dialogs and the names of their controls.
#include "tests/namer/open_namer.h"
#include "tests/namer/source_tree.h"

namespace {

// Ids that the statements of the tests use.
constexpr char ids[] = "#define IDD_A 101\n#define IDD_B 102\n#define IDC_NAME 11\n#define IDC_OTHER 12\n"
                       "#define IDC_STATIC 0xFFFF\n#define IDR_MAIN 13\n#define IDC_SAME 11\n";

// A module with winuser.h and the ids above; its script is given by the test.
class ScriptReader : public testing::Test {
protected:
  ScriptReader() {
    m_tree.write("sdk/winuser.h", "#define IDOK 1\n#define IDCANCEL 2\n");
    m_tree.write("app.dev/ids.h", ids);
    m_namer.m_include_paths.Add(m_tree.path("sdk"));
  }

  int process(std::string_view script) {
    return m_namer.process_resource_file(m_tree.write("app.dev/App.rc", script));
  }
  // Reads a script that includes the ids and ends as given; the dialogs read, and "(0)" when the result is 0.
  std::string read(const std::string& rest) {
    const int result = process("#include \"ids.h\"\n" + rest);
    return m_namer.dialogs("app") + (result ? "" : " (0)");
  }
  // The same for the statements of one dialog.
  std::string read_statements(const std::string& statements) {
    return read("IDD_A DIALOG 0, 0, 10, 10\nBEGIN\n" + statements + "\nEND\n");
  }

  SourceTree m_tree;
  OpenNamer m_namer;
};

constexpr const char* control_keywords[] = {
    "AUTO3STATE",    "AUTOCHECKBOX", "AUTORADIOBUTTON", "CHECKBOX",  "COMBOBOX", "CONTROL", "CTEXT",
    "DEFPUSHBUTTON", "EDITTEXT",     "GROUPBOX",        "ICON",      "LISTBOX",  "LTEXT",   "PUSHBOX",
    "PUSHBUTTON",    "RADIOBUTTON",  "RTEXT",           "SCROLLBAR", "STATE3",
};

struct StatementCase {
  const char* name;
  const char* statements;
  const char* expected;
};

constexpr char nothing[] = "101 IDD_A:";
constexpr char name_recorded[] = "101 IDD_A: 11=IDC_NAME";
constexpr char static_recorded[] = "101 IDD_A: 65535=IDC_STATIC";

constexpr StatementCase statement_cases[] = {
    {"a caption and an identifier", "LTEXT \"Name:\", IDC_NAME, 7, 7, 20, 8", name_recorded},
    {"a caption and IDC_STATIC", "LTEXT \"Name:\", IDC_STATIC, 7, 7, 20, 8", static_recorded},
    {"a caption and -1: nothing", "LTEXT \"Name:\", -1, 7, 7, 20, 8", nothing},
    {"a caption and another number: nothing", "LTEXT \"Name:\", 1234, 7, 7, 20, 8", nothing},
    {"a caption and a string: nothing", "CONTROL \"a\", \"b\", IDC_NAME", nothing},
    {"an image and an identifier", "ICON IDR_MAIN, IDC_NAME, 7, 7, 20, 20", name_recorded},
    {"an image and -1: IDC_STATIC", "ICON IDR_MAIN, -1, 7, 7, 20, 20", static_recorded},
    {"an image and another number: the image's name", "ICON IDR_MAIN, 0xFFFF, 7, 7",
     "101 IDD_A: 13=IDR_MAIN"},
    {"an image's number and an identifier", "ICON 13, IDC_NAME, 7, 7, 20, 20", name_recorded},
    {"an image's number and -1: nothing", "ICON 13, -1, 7, 7, 20, 20", nothing},
    {"an image's name as text", "ICON \"app\", IDC_NAME, 7, 7", name_recorded},
    {"coordinates behind the identifier", "EDITTEXT IDC_NAME, 50, 7, 100, 14", name_recorded},
    {"-1 as the first coordinate means IDC_STATIC", "EDITTEXT IDC_NAME, -1, 7, 100, 14", static_recorded},
    {"no blanks at all", "EDITTEXT IDC_NAME,50,7,100,14", name_recorded},
    {"the control's class as text", "CONTROL \"\", IDC_NAME, \"SysTreeView32\", 0x1, 7, 7, 9, 9",
     name_recorded},
    {"an image as the control's text", "CONTROL IDR_MAIN, IDC_NAME, \"Static\", 0xE, 7, 7, 9, 9",
     name_recorded},
    {"several separators are one run", "LTEXT \"a\",,+ IDC_NAME", name_recorded},
    {"a caption with quotes and backslashes", "LTEXT \"a \"\"b\"\" \\\"c\\\" C:\\\\x\", IDC_NAME",
     name_recorded},
    {"a caption with a comma and END", "LTEXT \"a, END\", IDC_NAME", name_recorded},
    {"a caption with bytes above 127", "LTEXT \"\xC4\xD6\xB9\xFF\", IDC_NAME", name_recorded},
    {"a caption over two lines", "LTEXT \"a\nb\", IDC_NAME", name_recorded},
    {"a statement over several lines", "CONTROL\n  \"a\",\n  IDC_NAME,\n  \"Static\"", name_recorded},
    {"a statement's continuation that looks like one", "LTEXT \"a\", IDC_OTHER,\nEDITTEXT IDC_NAME, 1",
     "101 IDD_A: 11=IDC_NAME 12=IDC_OTHER"},
    {"an expression's first name", "LTEXT \"a\", IDC_NAME + 1, 7", name_recorded},
    {"behind the superscript one", "LTEXT \"a\"\xB9IDC_NAME", name_recorded},
    {"a comment behind the statement", "EDITTEXT IDC_NAME, 5 // the name", name_recorded},
    {"a comment before the statement hides it", "/* */ EDITTEXT IDC_NAME, 5", nothing},
    {"a comment line hides the statement", "// EDITTEXT IDC_NAME, 5", nothing},
    {"lines inside a comment are read", "/*\nEDITTEXT IDC_NAME, 5\n*/", name_recorded},
    {"a comment between keyword and caption counts as the caption", "LTEXT /**/ \"a\", IDC_NAME", "(0)"},
    {"a comment between caption and identifier is a run of separators", "LTEXT \"a\", /**/ IDC_NAME",
     nothing},
    {"keywords have their case", "ltext \"a\", IDC_NAME\nEditText IDC_OTHER, 5", nothing},
    {"a keyword in quotes is a text", "\"LTEXT\" \"a\", IDC_NAME", nothing},
    {"an unknown statement", "MENUITEM \"a\", IDC_NAME", nothing},
    {"a name that begins with a keyword", "LTEXTS \"a\", IDC_NAME", nothing},
    {"the later of two controls with one number", "EDITTEXT IDC_SAME, 5\nEDITTEXT IDC_NAME, 5",
     name_recorded},
    {"the earlier name when the later is the other", "EDITTEXT IDC_NAME, 5\nEDITTEXT IDC_SAME, 5",
     "101 IDD_A: 11=IDC_SAME"},
    {"lines without statements", "\n\n  \t\n", nothing},
    {"braces begin and end nothing", "{\nEDITTEXT IDC_NAME, 5\n}", name_recorded},
    {"a control of the platform's header", "DEFPUSHBUTTON \"OK\", IDOK, 7, 7, 50, 14", "101 IDD_A: 1=IDOK"},
};

}  // namespace

TEST_F(ScriptReader, RecordsWhatAStatementDeclares) {
  for (const StatementCase& c : statement_cases) {
    const std::string expected =
        std::string(c.expected) == "(0)" ? std::string(nothing) + " (0)" : c.expected;
    EXPECT_EQ(expected, read_statements(c.statements)) << c.name;
  }
}

TEST_F(ScriptReader, KnowsEachControlKeyword) {
  for (const char* keyword : control_keywords) {
    EXPECT_EQ(name_recorded, read_statements(std::string(keyword) + " \"a\", IDC_NAME, 1, 2, 3, 4"))
        << keyword;
    EXPECT_EQ(name_recorded, read_statements(std::string(keyword) + " IDC_NAME, 1, 2, 3, 4")) << keyword;
  }
}

TEST_F(ScriptReader, StopsTheWholeScriptWhereAStatementBreaksOffBehindItsCaption) {
  struct {
    const char* name;
    const char* statement;
  } const cases[] = {
      {"no separator behind the caption", "PUSHBUTTON \"a\" IDC_NAME, 1, 2"},
      {"no token behind the separators", "PUSHBUTTON \"a\", \x80"},
      {"the caption does not end", "PUSHBUTTON \"a"},
      {"no caption that could be read", "PUSHBUTTON \x80"},
      {"a number without a separator", "PUSHBUTTON 5 IDC_NAME"},
      {"separators in place of the caption", "PUSHBUTTON , IDC_NAME"},
      {"a control character behind the caption", "PUSHBUTTON \"a\"\x01, IDC_NAME"},
  };
  for (const auto& c : cases) {
    const std::string script = "IDD_A DIALOG\nBEGIN\nEDITTEXT IDC_NAME, 5\n" + std::string(c.statement) +
                               "\nEDITTEXT IDC_OTHER, 5\nEND\nIDD_B DIALOG\nBEGIN\nEND\n";
    EXPECT_EQ("101 IDD_A: 11=IDC_NAME (0)", read(script)) << c.name;
  }
}

TEST_F(ScriptReader, KeepsTheDialogsBeforeTheStatementThatStopsIt) {
  EXPECT_EQ("101 IDD_A: 1=IDOK 11=IDC_NAME; 102 IDD_B: (0)",
            read("IDD_A DIALOG\nBEGIN\nEDITTEXT IDC_NAME, 5\nPUSHBUTTON \"OK\", IDOK, 5\nEND\n"
                 "IDD_B DIALOG\nBEGIN\nPUSHBUTTON \"a\" IDC_OTHER, 5\nEDITTEXT IDC_NAME, 5\nEND\n"
                 "#include \"missing.h\"\n"))
      << "and nothing behind it";
  EXPECT_TRUE(m_namer.errors.empty());
}

TEST_F(ScriptReader, TakesTheFirstNameWhereNothingReadableFollowsIt) {
  for (const char* statement : {"EDITTEXT IDC_NAME \x80", "EDITTEXT IDC_NAME, \x80", "EDITTEXT IDC_NAME, \"",
                                "EDITTEXT IDC_NAME \x80, IDC_OTHER"}) {
    const bool runs_on = statement[std::string(statement).size() - 1] == '"';
    EXPECT_EQ(name_recorded, read("IDD_A DIALOG\nBEGIN\n" + std::string(statement))) << statement;
    // A byte that is no token ends the statement alone: the position has not moved past it.
    EXPECT_EQ(runs_on ? name_recorded : "101 IDD_A: 11=IDC_NAME 12=IDC_OTHER",
              read_statements(std::string(statement) + "\nMENUITEM\nEDITTEXT IDC_OTHER, 5"))
        << statement;
  }
}

TEST_F(ScriptReader, StopsWhereTheTextEndsInsideAStatement) {
  const std::string begin = "IDD_A DIALOG\nBEGIN\nEDITTEXT IDC_OTHER, 5\n";
  const std::string before = "101 IDD_A: 12=IDC_OTHER";
  EXPECT_EQ(before + " (0)", read(begin + "LTEXT"));
  EXPECT_EQ(before + " (0)", read(begin + "LTEXT \"a\""));
  EXPECT_EQ(before + " (0)", read(begin + "LTEXT \"a\","));
  EXPECT_EQ(before + " (0)", read(begin + "LTEXT 5"));
  EXPECT_EQ(before + " (0)", read(begin + "LTEXT 5,"));
  EXPECT_EQ(before, read(begin + "LTEXT 5, 6"));
  EXPECT_EQ(before, read(begin + "LTEXT \"a\", -1"));
  EXPECT_EQ("101 IDD_A: 11=IDC_NAME 12=IDC_OTHER", read(begin + "LTEXT \"a\", IDC_NAME"));
  EXPECT_EQ("101 IDD_A: 11=IDC_NAME 12=IDC_OTHER", read(begin + "EDITTEXT IDC_NAME"));
  EXPECT_EQ("101 IDD_A: 11=IDC_NAME 12=IDC_OTHER", read(begin + "EDITTEXT IDC_NAME,"));
}

TEST_F(ScriptReader, EndsWithTheResultSoFarWhereTheTextEndsOutsideAStatement) {
  const std::string dialog = "IDD_B DIALOG\nBEGIN\nEDITTEXT IDC_OTHER, 5\nEND\n";
  const std::string before = "102 IDD_B: 12=IDC_OTHER";
  for (const char* end : {"IDD_A", "IDD_A ", "IDD_A\n", "IDD_A DIALOG", "IDD_A DIALOG\n", "#", "#\n", "# ",
                          "#include", "#include\n", "#include ", "#include \"ids.h", "#define"})
    EXPECT_EQ(before, read(dialog + end)) << end;
  EXPECT_EQ("101 IDD_A:; " + before, read(dialog + "IDD_A DIALOG\nBEGIN")) << "it has begun";
  EXPECT_EQ("101 IDD_A:; " + before, read(dialog + "IDD_A DIALOG\nBEGIN\nEND"));
  EXPECT_TRUE(m_namer.errors.empty());
}

TEST_F(ScriptReader, BeginAndEndInQuotesAreTexts) {
  EXPECT_EQ("101 IDD_A: 12=IDC_OTHER",
            read("IDD_A DIALOG\n\"BEGIN\"\nEDITTEXT IDC_NAME, 5\nBEGIN\nEDITTEXT IDC_OTHER, 5\nEND\n"))
      << "what stands between the two is before the dialog begins";
  EXPECT_EQ("101 IDD_A: 11=IDC_NAME 12=IDC_OTHER",
            read_statements("EDITTEXT IDC_NAME, 5\n\"END\"\nEDITTEXT IDC_OTHER, 5"));
  EXPECT_EQ("", read("IDD_A DIALOG\n\"BEGIN\"\nEDITTEXT IDC_NAME, 5\nEND\n"));
}

// There is no comment handling: the signs of a comment are separators, and what it holds is read as anything
// else is. Only a line's first token decides what the line is.
TEST_F(ScriptReader, HasNoCommentsOutsideStatements) {
  constexpr char whole[] = "101 IDD_A: 11=IDC_NAME";
  const struct {
    const char* name;
    const char* script;
    const char* expected;
  } cases[] = {
      // clang-format off
      {"before the dialog's name it hides the dialog",
       "/* a */ IDD_A DIALOG\nBEGIN\nEDITTEXT IDC_NAME, 5\nEND\n", ""},
      {"in a line before the dialog it does nothing",
       "// IDD_B DIALOG\n/* a */\nIDD_A DIALOG\nBEGIN\nEDITTEXT IDC_NAME, 5\nEND\n", whole},
      {"between name and DIALOG it hides the dialog",
       "IDD_A /* a */ DIALOG\nBEGIN\nEDITTEXT IDC_NAME, 5\nEND\n", ""},
      {"a line between name and DIALOG hides the dialog",
       "IDD_A\n// a\nDIALOG\nBEGIN\nEDITTEXT IDC_NAME, 5\nEND\n", ""},
      {"behind the DIALOG line it does nothing",
       "IDD_A DIALOG 0, 0, 9, 9 // BEGIN\nBEGIN\nEDITTEXT IDC_NAME, 5\nEND\n", whole},
      {"a line before BEGIN does nothing",
       "IDD_A DIALOG\n// BEGIN\n/* END */\nBEGIN\nEDITTEXT IDC_NAME, 5\nEND\n", whole},
      {"before BEGIN in its line it hides it: the next dialog's BEGIN is taken",
       "IDD_A DIALOG\n/* a */ BEGIN\nEDITTEXT IDC_OTHER, 5\nEND\n"
       "IDD_B DIALOG\nBEGIN\nEDITTEXT IDC_NAME, 5\nEND\n", whole},
      {"behind BEGIN it does nothing",
       "IDD_A DIALOG\nBEGIN // END\nEDITTEXT IDC_NAME, 5\nEND\n", whole},
      {"before END it hides it: the dialog goes on",
       "IDD_A DIALOG\nBEGIN\n/* a */ END\nIDD_B DIALOG\nBEGIN\nEDITTEXT IDC_NAME, 5\nEND\n", whole},
      {"a line comment hides END as well",
       "IDD_A DIALOG\nBEGIN\n// END\nEDITTEXT IDC_NAME, 5\nEND\n", whole},
      {"behind END it does nothing",
       "IDD_A DIALOG\nBEGIN\nEDITTEXT IDC_NAME, 5\nEND // IDD_A\nEDITTEXT IDC_OTHER, 5\n", whole},
      {"a dialog inside a comment is read",
       "/*\nIDD_A DIALOG\nBEGIN\nEDITTEXT IDC_NAME, 5\nEND\n*/\n", whole},
      {"a statement that is commented out over two lines is read",
       "IDD_A DIALOG\nBEGIN\n/*\nEDITTEXT IDC_NAME, 5 */\nEND\n", whole},
      {"END inside a comment ends the dialog",
       "IDD_A DIALOG\nBEGIN\nEDITTEXT IDC_NAME, 5\n/*\nEND\n*/\nEDITTEXT IDC_OTHER, 5\nEND\n", whole},
      {"BEGIN inside a comment begins it",
       "IDD_A DIALOG\n/*\nBEGIN\n*/\nEDITTEXT IDC_NAME, 5\nEND\n", whole},
      {"an open quote behind comment signs does nothing",
       "// \"a\nIDD_A DIALOG\nBEGIN\n// don't \"\nEDITTEXT IDC_NAME, 5\nEND\n", whole},
      {"a comment's line that begins with an open quote runs to the next quote",
       "/*\n\"a\n*/\nIDD_B DIALOG\nBEGIN\nEND\n\"\nIDD_A DIALOG\nBEGIN\nEDITTEXT IDC_NAME, 5\nEND\n", whole},
      {"without a next quote it ends the reading with the result so far",
       "IDD_A DIALOG\nBEGIN\nEDITTEXT IDC_NAME, 5\n/*\n\"a\n*/\nEDITTEXT IDC_OTHER, 5\nEND\n"
       "IDD_B DIALOG\nBEGIN\nEND\n", whole},
      {"behind the name it is read into the statement's separators",
       "IDD_A DIALOG\nBEGIN\nEDITTEXT IDC_NAME /* IDC_OTHER */, 5\nEND\n", "101 IDD_A: 12=IDC_OTHER"},
      // clang-format on
  };
  for (const auto& c : cases)
    EXPECT_EQ(c.expected, read(c.script)) << c.name;
  EXPECT_TRUE(m_namer.errors.empty());
}

TEST_F(ScriptReader, HasNoCommentsInIncludes) {
  const struct {
    const char* name;
    const char* include;
    bool included;
  } cases[] = {
      {"before the sharp sign", "/* a */ #include \"ids.h\"", false},
      {"between the sharp sign and include", "# /* a */ include \"ids.h\"", false},
      {"right behind the sharp sign", "#/* a */include \"ids.h\"", false},
      {"between include and the name", "#include /* a */ \"ids.h\"", false},
      {"behind the name", "#include \"ids.h\" // the ids", true},
      {"right behind the name", "#include \"ids.h\"/* the ids */", true},
      {"inside a comment of several lines", "/*\n#include \"ids.h\"\n*/", true},
      {"inside a comment of several lines, at its end", "/* a\n#include \"ids.h\" */", true},
      {"in a line comment", "//#include \"ids.h\"", false},
  };
  for (const auto& c : cases) {
    OpenNamer namer;
    namer.m_include_paths.Add(m_tree.path("sdk"));
    const CString path =
        m_tree.write("app.dev/App.rc", c.include + std::string("\nIDD_A DIALOG\nBEGIN\nEND\n"));
    EXPECT_EQ(1, namer.process_resource_file(path)) << c.name;
    EXPECT_EQ(c.included ? nothing : "", namer.dialogs("app")) << c.name;
  }
}

TEST_F(ScriptReader, AnIdentifierWithoutSeparatorTakesTheNextLineAlong) {
  EXPECT_EQ("101 IDD_A: 11=IDC_NAME", read_statements("EDITTEXT IDC_NAME\nEDITTEXT IDC_OTHER, 5"))
      << "looking for the separator has moved into the next line, and the statement ends there";
  EXPECT_EQ("101 IDD_A: 11=IDC_NAME 12=IDC_OTHER",
            read_statements("EDITTEXT IDC_NAME\n\nEDITTEXT IDC_OTHER, 5\nEDITTEXT IDC_OTHER, 5"));
}

TEST_F(ScriptReader, ReadsTheDialogsOfAScript) {
  EXPECT_EQ("101 IDD_A: 1=IDOK 11=IDC_NAME; 102 IDD_B: 12=IDC_OTHER",
            read("STRINGTABLE\nBEGIN\n  IDS_A \"text\"\nEND\n"
                 "IDD_A DIALOGEX 0, 0, 100, 50\nSTYLE DS_SETFONT | WS_POPUP\nCAPTION \"BEGIN\"\nFONT 8, "
                 "\"x\"\nBEGIN\n"
                 "  EDITTEXT IDC_NAME, 50, 7, 100, 14\n  PUSHBUTTON \"OK\", IDOK, 1, 2\nEND\n\n"
                 "IDD_B DIALOG DISCARDABLE 0, 0, 100, 50\nBEGIN\n  EDITTEXT IDC_OTHER, 50\nEND\n"));
  EXPECT_EQ("app", m_namer.m_libraries.begin()->first);
  EXPECT_EQ("app", m_namer.m_libraries.begin()->second->name);
  for (const auto& [number, dialog] : m_namer.m_libraries.begin()->second->dialogs)
    EXPECT_EQ(m_namer.m_libraries.begin()->second.get(), dialog->library) << number;
}

TEST_F(ScriptReader, AcceptsEveryKindOfLineEnd) {
  const std::string with_lf = "#include \"ids.h\"\nIDD_A DIALOG\nBEGIN\nEDITTEXT IDC_NAME, 5\nEND\n";
  const std::string without_end = with_lf.substr(0, with_lf.size() - 1);
  std::string with_crlf, with_cr;
  for (const char ch : with_lf) {
    with_crlf += ch == '\n' ? "\r\n" : std::string(1, ch);
    with_cr += ch == '\n' ? '\r' : ch;
  }
  for (const std::string& script : {with_lf, without_end, with_crlf}) {
    EXPECT_EQ(1, process(script));
    EXPECT_EQ(name_recorded, m_namer.dialogs("app"));
  }
  EXPECT_EQ(1, process(with_cr));
  EXPECT_EQ("", m_namer.dialogs("app")) << "carriage returns alone end no line: all of it is one include";
}

TEST_F(ScriptReader, ADialogWithoutANumberIsReadForNothing) {
  EXPECT_EQ("102 IDD_B: 12=IDC_OTHER", read("IDD_UNKNOWN DIALOG\nBEGIN\nEDITTEXT IDC_UNKNOWN, 5\nEND\nIDD_B "
                                            "DIALOG\nBEGIN\nEDITTEXT IDC_OTHER, 5\n"
                                            "END\n"));
  EXPECT_EQ(0, m_namer.m_error_count);
  EXPECT_EQ(" (0)", read("IDD_UNKNOWN DIALOG\nBEGIN\nPUSHBUTTON \"a\" IDC_NAME\nEND\n"))
      << "its statements stop the reading like any others";
}

TEST_F(ScriptReader, ADialogWhoseBeginNeverComesIsNotEntered) {
  EXPECT_EQ("", read("IDD_A DIALOG 0, 0, 1, 1\nCAPTION \"x\"\nEDITTEXT IDC_NAME, 5\nEND\n"));
  EXPECT_EQ("", read("IDD_A DIALOG"));
  EXPECT_EQ("", read("IDD_A DIALOG 0,0,1,1 BEGIN\nEDITTEXT IDC_NAME, 5\nEND\n"))
      << "only first tokens are looked at";
  EXPECT_EQ("101 IDD_A: 11=IDC_NAME", read("IDD_A DIALOG\nIDD_B DIALOG\nBEGIN\nEDITTEXT IDC_NAME, 5\nEND\n"))
      << "it takes the next dialog's";
}

TEST_F(ScriptReader, ADialogThatNeverEndsKeepsItsControls) {
  EXPECT_EQ(name_recorded, read("IDD_A DIALOG\nBEGIN\nEDITTEXT IDC_NAME, 5"));
  EXPECT_EQ(name_recorded, read("IDD_A DIALOG\nBEGIN\nEDITTEXT IDC_NAME, 5\nIDD_B DIALOG\nBEGIN\nEND\n"));
}

TEST_F(ScriptReader, OnlyDialogStatementsBehindADialogsNameCount) {
  EXPECT_EQ("", read("IDD_A MENU\nBEGIN\nEDITTEXT IDC_NAME, 5\nEND\n"));
  EXPECT_EQ("", read("IDD_A \"DIALOG\"\nBEGIN\nEND\n"));
  EXPECT_EQ("", read("IDD_A 5\nBEGIN\nEND\n"));
  EXPECT_EQ("", read("IDC_NAME DIALOG\nBEGIN\nEND\n"));
  EXPECT_EQ("", read("\"IDD_A\" DIALOG\nBEGIN\nEND\n"));
  EXPECT_EQ(nothing, read("IDD_A DIALOGUE\nBEGIN\nEND\n")) << "the beginning is compared";
  EXPECT_EQ(nothing, read("IDD_A\nDIALOG\nBEGIN\nEND\n")) << "line feeds are blanks";
  EXPECT_EQ("102 IDD_B:", read("IDD_A \x80\nIDD_B DIALOG\nBEGIN\nEND\n"))
      << "what cannot be read behind the name is no first token";
}

TEST_F(ScriptReader, AFirstTokenThatCannotBeFormedEndsTheReadingWithTheResultSoFar) {
  const std::string dialog = "IDD_A DIALOG\nBEGIN\nEDITTEXT IDC_NAME, 5\nEND\n";
  const std::string more = "IDD_B DIALOG\nBEGIN\nEND\n";
  for (const char* line : {"\x80\n", "  \xFC x\n", "\"unterminated\n", "\x01\n"}) {
    EXPECT_EQ(name_recorded, read(dialog + line + more)) << line;
    EXPECT_EQ("101 IDD_A:",
              read("IDD_A DIALOG\nBEGIN\n" + std::string(line) + "EDITTEXT IDC_NAME, 5\nEND\n" + more))
        << line;
    EXPECT_EQ("", read("IDD_A DIALOG\n" + std::string(line) + "BEGIN\nEND\n" + more)) << line;
  }
}

TEST_F(ScriptReader, ReportsAControlWhoseNameNothingDefinesAndGoesOn) {
  EXPECT_EQ("101 IDD_A: 11=IDC_NAME (0)", read_statements("EDITTEXT IDC_GONE, 5\nEDITTEXT IDC_NAME, 5"));
  ASSERT_EQ(1u, m_namer.errors.size());
  EXPECT_EQ("dialog (IDD_A), control id 'IDC_GONE' not found", m_namer.errors[0]);
}

TEST_F(ScriptReader, ReportsIdcStaticBehindAnImageWhenNothingDefinesIt) {
  m_tree.write("app.dev/ids.h", "#define IDD_A 101\n");
  EXPECT_EQ("101 IDD_A: (0)", read_statements("ICON IDR_MAIN, -1, 7, 7, 20, 20"));
  EXPECT_EQ((std::vector<std::string>{"dialog (IDD_A), control id 'IDC_STATIC' not found"}), m_namer.errors);
}

TEST_F(ScriptReader, LooksForNamesInTheModulesGroupsAlone) {
  m_namer.add_constant("stranger", "IDC_STRANGE", 77);
  EXPECT_EQ("101 IDD_A: (0)", read_statements("EDITTEXT IDC_STRANGE, 5"));
}

TEST_F(ScriptReader, TakesTheNumberOfTheFirstGroupThatDefinesTheName) {
  m_tree.write("z.dev/z.h", "#define IDC_NAME 900\n");
  m_tree.write("aa.dev/a.h", "#define IDC_OTHER 901\n");
  EXPECT_EQ(
      "101 IDD_A: 11=IDC_NAME 901=IDC_OTHER",
      read(
          "#include \"../z.dev/z.h\"\n#include \"../aa.dev/a.h\"\nIDD_A DIALOG\nBEGIN\nEDITTEXT IDC_NAME, 5\n"
          "EDITTEXT IDC_OTHER, 5\nEND\n"))
      << "groups in key order: aa, app, general, z";
}

TEST_F(ScriptReader, ADialogOfTheSameNumberReplacesTheFormer) {
  m_tree.write("app.dev/ids.h", std::string(ids) + "#define IDD_TWIN 101\n");
  EXPECT_EQ("101 IDD_TWIN: 12=IDC_OTHER", read("IDD_A DIALOG\nBEGIN\nEDITTEXT IDC_NAME, 5\nEND\n"
                                               "IDD_TWIN DIALOG\nBEGIN\nEDITTEXT IDC_OTHER, 5\nEND\n"));
}

TEST_F(ScriptReader, ADialogsNumberIsTheLowThirtyTwoBits) {
  m_tree.write("app.dev/ids.h", "#define IDD_A 0x100000065\n");
  EXPECT_EQ("101 IDD_A:", read("IDD_A DIALOG\nBEGIN\nEND\n"));
}

TEST_F(ScriptReader, IncludesByQuotedNamesHoweverTheyAreWritten) {
  const std::string dialog = "IDD_A DIALOG\nBEGIN\nEND\n";
  for (const char* include :
       {"#include \"ids.h\"", "# include \"ids.h\"", "#include\"ids.h\"", "  #  include\t\"ids.h\"",
        "#include \"../app.dev/ids.h\"", "#include\n\"ids.h\""}) {
    OpenNamer namer;
    namer.m_include_paths.Add(m_tree.path("sdk"));
    EXPECT_EQ(1, namer.process_resource_file(m_tree.write("app.dev/App.rc", include + ("\n" + dialog))))
        << include;
    EXPECT_EQ(nothing, namer.dialogs("app")) << include;
  }
  for (const char* other :
       {"#include <ids.h>", "##include \"ids.h\"", "#includes \"ids.h\"", "#define IDD_A 101",
        "// #include \"ids.h\"", "#include ids.h", "\"#include \"\"ids.h\"\"\\r\\n\""}) {
    OpenNamer namer;
    namer.m_include_paths.Add(m_tree.path("sdk"));
    EXPECT_EQ(1, namer.process_resource_file(m_tree.write("app.dev/App.rc", other + ("\n" + dialog))))
        << other;
    EXPECT_EQ("", namer.dialogs("app")) << other;
  }
}

TEST_F(ScriptReader, AMissingHeaderIsReportedOnceAndTheScriptStillRead) {
  EXPECT_EQ("101 IDD_A: (0)", read("#include \"x.h\"\nIDD_A DIALOG\nBEGIN\nEND\n"));
  EXPECT_EQ((std::vector<std::string>{"Cannot find header file: x.h"}), m_namer.errors);
}

TEST_F(ScriptReader, AHeaderThatCouldNotBeReadIsReportedByTheFirstScriptOnly) {
  m_tree.write("app.dev/broken.h", "#include \"missing.h\"\n");
  EXPECT_EQ("101 IDD_A: (0)", read("#include \"broken.h\"\nIDD_A DIALOG\nBEGIN\nEND\n"));
  EXPECT_EQ("101 IDD_A:", read("#include \"broken.h\"\nIDD_A DIALOG\nBEGIN\nEND\n"))
      << "processed files persist, so the header's own trouble is not met again";
  EXPECT_EQ(1u, m_namer.errors.size());
}

TEST_F(ScriptReader, ReadsThePlatformHeaderFirst) {
  EXPECT_EQ(1, process(""));
  EXPECT_EQ("general", m_namer.groups("app"));
  EXPECT_EQ("IDCANCEL=2 IDOK=1", m_namer.constants("general"));
}

TEST_F(ScriptReader, FailsWithoutThePlatformHeader) {
  OpenNamer namer;
  EXPECT_EQ(0, namer.process_resource_file(
                   m_tree.write("app.dev/App.rc", "#include \"ids.h\"\nIDD_A DIALOG\nBEGIN\nEND")));
  EXPECT_EQ((std::vector<std::string>{"Cannot find header file: winuser.h"}), namer.errors);
  EXPECT_EQ(nothing, namer.dialogs("app"));
}

TEST_F(ScriptReader, APlatformHeaderBesideTheScriptWins) {
  m_tree.write("app.dev/winuser.h", "#define IDOK 41\n");
  EXPECT_EQ("101 IDD_A: 41=IDOK", read_statements("PUSHBUTTON \"OK\", IDOK, 1"));
}

TEST_F(ScriptReader, IncludesAreInTheModulesGroupsDirectAndIndirect) {
  m_tree.write("deep.dev/deep.h", "#define IDC_DEEP 5\n");
  m_tree.write("mid.dev/mid.h", "#include \"../deep.dev/deep.h\"\n");
  EXPECT_EQ("", read("#include \"../mid.dev/mid.h\"\n"));
  EXPECT_EQ("app deep general mid", m_namer.groups("app"));
}

TEST_F(ScriptReader, ReprocessingReplacesTheWholeModule) {
  EXPECT_EQ("101 IDD_A: 11=IDC_NAME", read_statements("EDITTEXT IDC_NAME, 5"));
  EXPECT_EQ("102 IDD_B:", read("IDD_B DIALOG\nBEGIN\nEND\n"));
  EXPECT_EQ(1u, m_namer.m_libraries.size());
  EXPECT_EQ("app general", m_namer.groups("app"));
}

TEST_F(ScriptReader, SaysWhichScriptItProcessesInItsOwnCase) {
  testing::internal::CaptureStdout();
  process("");
  EXPECT_EQ("Processing 'App.rc'...\n", testing::internal::GetCapturedStdout());
}

TEST_F(ScriptReader, TellsOfEachFileAsItIsOpened) {
  std::vector<std::string> paths;
  m_namer.set_progress(
      [](void* context, const CString& path) {
        static_cast<std::vector<std::string>*>(context)->push_back(
            path.Mid(path.ReverseFind('\\') + 1).str());
      },
      &paths);
  read("#include \"ids.h\"\n");
  EXPECT_EQ((std::vector<std::string>{"App.rc", "winuser.h", "ids.h"}), paths);
  m_namer.set_progress(nullptr, nullptr);
  read("");
  EXPECT_EQ(3u, paths.size());
}

TEST_F(ScriptReader, SaysNothingOfAScriptThatIsNotThere) {
  testing::internal::CaptureStdout();
  EXPECT_EQ(0, m_namer.process_resource_file(m_tree.path("none.rc")));
  m_tree.make_folder("folder.rc");
  EXPECT_EQ(0, m_namer.process_resource_file(m_tree.path("folder.rc")));
  EXPECT_EQ("", testing::internal::GetCapturedStdout());
  EXPECT_EQ(0, m_namer.m_error_count);
  EXPECT_TRUE(m_namer.m_libraries.empty());
}

TEST_F(ScriptReader, AnEmptyScriptIsAModuleWithoutDialogs) {
  EXPECT_EQ(1, process(""));
  EXPECT_EQ("", m_namer.dialogs("app"));
}

TEST_F(ScriptReader, ZeroBytesEndNothingButTheReading) {
  const std::string script = "#include \"ids.h\"\nIDD_A DIALOG\nBEGIN\nEND\n";
  EXPECT_EQ(1, process(script + std::string("\0\n", 2) + "IDD_B DIALOG\nBEGIN\nEND\n"));
  EXPECT_EQ(nothing, m_namer.dialogs("app"));
}

TEST_F(ScriptReader, TheModulesNameIsTheLowerCaseFileName) {
  m_namer.process_resource_file(m_tree.write("app.dev/My.Long.RC", ""));
  EXPECT_EQ("my.long", m_namer.m_libraries.begin()->first);
}

TEST_F(ScriptReader, TheModulesNameIsLowerCasedInTheCodePage) {
  m_namer.process_resource_file(m_tree.write("app.dev/\xC4pfel.rc", ""));
  EXPECT_EQ("\xE4pfel", m_namer.m_libraries.begin()->first);
}
