// Headers: what their lines define, which group they belong to, where included files are found.
#include "tests/namer/open_namer.h"
#include "tests/namer/source_tree.h"

#include <cctype>

using namespace std::string_literals;

namespace {

struct LineCase {
  const char* name;
  const char* line;
  const char* expected;  // the constants of the group afterwards
};

constexpr LineCase line_cases[] = {
    {"a control", "#define IDC_OK2 1001", "IDC_OK2=1001"},
    {"hexadecimal", "#define IDM_X 0x10", "IDM_X=16"},
    {"hexadecimal with letters", "#define AFX_IDW_TOOLBAR 0xE800", "AFX_IDW_TOOLBAR=59392"},
    {"octal", "#define IDC_A 010", "IDC_A=8"},
    {"0x without digits", "#define IDC_A 0x", "IDC_A=0"},
    {"an octal number that is none", "#define IDC_A 08", "IDC_A=0"},
    {"an expression's first number", "#define IDC_A 5+1", "IDC_A=5"},
    {"a fraction", "#define IDC_A 1.5", "IDC_A=1"},
    {"a suffix", "#define IDC_A 100L", "IDC_A=100"},
    {"more than 64 bits", "#define IDC_A 99999999999999999999", "IDC_A=9223372036854775807"},
    {"tabs and runs of blanks", "\t #define \t IDC_A\t\t 7 \t", "IDC_A=7"},
    {"a carriage return at the end", "#define IDC_A 7\r", "IDC_A=7"},
    {"a comment behind the value", "#define IDC_A 7 // seven", "IDC_A=7"},
    {"a comment right behind the value", "#define IDC_A 7/*seven*/", "IDC_A=7"},
    {"a comment as the value", "#define IDC_A /*seven*/ 7", ""},
    {"a comment before the name is the name", "#define /**/ IDC_A 7", ""},
    {"a commented line", "// #define IDC_A 7", ""},
    {"a comment sign at the front of the word", "/*#define IDC_A 7*/", ""},
    {"inside a comment of several lines it counts all the same", "#define IDC_A 7 */", "IDC_A=7"},
    {"a string id", "#define IDS_TITLE 100", ""},
    {"a bitmap", "#define IDB_LOGO 5", ""},
    {"an icon", "#define IDI_APP 5", ""},
    {"too short", "#define ID 1", ""},
    {"three characters", "#define IDX 1", "IDX=1"},
    {"a function", "#define IDC_X(a) 3", ""},
    {"a closing parenthesis in the name", "#define IDC_X) 3", ""},
    {"a value in parentheses", "#define IDC_Y (WM_USER+1)", ""},
    {"a negative value", "#define IDC_Z -1", ""},
    {"a symbolic value", "#define IDC_Z IDC_Y", ""},
    {"no value", "#define IDC_Z", ""},
    {"no name", "#define", ""},
    {"a frame string", "#define AFX_IDS_APP 1", ""},
    {"a frame bitmap", "#define AFX_IDB_X 1", ""},
    {"a frame icon", "#define AFX_IDI_X 1", ""},
    {"the frame prefix alone", "#define AFX_ID 3", "AFX_ID=3"},
    {"AFX without ID", "#define AFX_WS_DEFAULT 3", ""},
    {"another prefix", "#define WM_APP 3", ""},
    {"lower case", "#define idc_a 3", ""},
    {"a dialog", "#define IDD_ONE 101", "IDD_ONE=101"},
    {"a resource", "#define IDR_MAIN 11", "IDR_MAIN=11"},
    {"a command of no kind", "#define ID_FILE_NEW 0xE100", "ID_FILE_NEW=57600"},
    {"a blank behind the sharp sign", "# define IDC_A 7", ""},
    {"no blank before the name", "#defineIDC_A 7", ""},
    {"another directive", "#undef IDC_A", ""},
    {"another statement", "int IDC_A = 7;", ""},
    {"nothing", "", ""},
    {"blanks", " \t\r", ""},
    {"a form feed belongs to the word", "#define\fIDC_A 7", ""},
    {"bytes above 127 in the name", "#define IDC_\xFC 7", "IDC_\xFC=7"},
};

CString key_of(OpenNamer& namer, const SourceTree& tree, const char* name) {
  // Entered before it is opened: the file need not be there.
  namer.process_header_file(nullptr, nullptr, tree.path(name));
  for (const auto& [path, group] : namer.m_processed_files)
    return group->key;
  return "none";
}

}  // namespace

TEST(HeaderLine, DefinesWhatIsAnId) {
  for (const LineCase& c : line_cases) {
    OpenNamer namer;
    EXPECT_TRUE(namer.process_line(c.line, nullptr, namer.add_header(nullptr, "g", ""))) << c.name;
    EXPECT_EQ(c.expected, namer.constants("g")) << c.name;
  }
}

TEST(HeaderLine, ALaterDefinitionOverwritesTheValueAndLeavesItsFormerName) {
  OpenNamer namer;
  mrHeader* const group = namer.add_header(nullptr, "g", "");
  namer.process_line("#define IDC_A 1", nullptr, group);
  namer.process_line("#define IDC_A 2", nullptr, group);
  EXPECT_EQ("IDC_A=2", namer.constants("g"));
  EXPECT_EQ("g.IDC_A", namer.names(1)) << "the index by number knows both";
  EXPECT_EQ("g.IDC_A", namer.names(2));
}

TEST(HeaderLine, IncludesOnlyAQuotedNameBehindABlank) {
  SourceTree tree;
  tree.write("a.dev/x.h", "#define IDC_X 1\n");
  struct {
    const char* line;
    const char* expected;
  } const cases[] = {
      {"#include \"x.h\"", "IDC_X=1"},  {"  #include\t\"x.h\"\r", "IDC_X=1"},
      {"#include\"x.h\"", ""},          {"# include \"x.h\"", ""},
      {"#include <x.h>", ""},           {"#include", ""},
      {"#include \"x.h", ""},           {"#include x.h", ""},
      {"// #include \"x.h\"", ""},      {"#include \"x.h\" // the x", "IDC_X=1"},
      {"#include /* x */ \"x.h\"", ""},
  };
  for (const auto& c : cases) {
    OpenNamer namer;
    mrHeader* const group = namer.add_header(nullptr, "a", tree.path("a.dev/y.h"));
    EXPECT_TRUE(namer.process_line(c.line, nullptr, group)) << c.line;
    EXPECT_EQ(c.expected, namer.constants("a")) << c.line;
    EXPECT_EQ(0, namer.m_error_count) << c.line;
  }
}

TEST(HeaderLine, FailsWhenTheIncludedFileIsMissing) {
  SourceTree tree;
  OpenNamer namer;
  EXPECT_FALSE(
      namer.process_line("#include \"x.h\"", nullptr, namer.add_header(nullptr, "a", tree.path("y.h"))));
  ASSERT_EQ(1u, namer.errors.size());
  EXPECT_EQ("Cannot find header file: x.h", namer.errors[0]);
}

TEST(HeaderGroup, TakesItsKeyFromTheFirstDevelopmentFolder) {
  SourceTree tree;
  struct {
    const char* path;
    const char* expected;
  } const cases[] = {
      {"src/editor.dev/res/resource.h", "editor"},
      {"src/Editor.DEV/resource.h", "editor"},
      {"src/editor.dev/inner.dev/resource.h", "editor"},
      {"src/editor/resource.h", "general"},
      {"resource.h", "general"},
      {"src/resource.dev", "general"},
      {"src/editor.dev/utest/resource.h", "general"},
      {"src/editor.dev/xutest/resource.h", "general"},
      {"src/editor.dev/utest/inner.dev/resource.h", "inner"},
      {"src/editor.dev/utest.dev/resource.h", "editor"},
      {"src/utest.dev/resource.h", "utest"},
      {"src/a.b.dev/resource.h", "a.b"},
      {"src/.dev/resource.h", ""},
      {"src/editor.device/resource.h", "general"},
      {"src/x/../editor.dev/./resource.h", "editor"},
      {"src/editor.dev/../resource.h", "general"},
  };
  for (const auto& c : cases) {
    OpenNamer namer;
    EXPECT_EQ(c.expected, key_of(namer, tree, c.path)) << c.path;
  }
}

TEST(HeaderGroup, GeneralHasItsName) { EXPECT_EQ("general", OpenNamer::general_head); }

TEST(HeaderFile, ReadsTheExampleIntoGroupAndIndex) {
  SourceTree tree;
  OpenNamer namer;
  const CString path = tree.write("src/editor.dev/res/resource.h", "#define IDC_OK2 1001\n");
  EXPECT_EQ(1, namer.process_header_file(nullptr, nullptr, path));
  EXPECT_EQ("IDC_OK2=1001", namer.constants("editor"));
  EXPECT_EQ("editor.IDC_OK2", namer.names(1001));
  ASSERT_EQ(1u, namer.m_processed_files.size());
  const auto& [processed, group] = *namer.m_processed_files.begin();
  EXPECT_EQ(group->path, processed);
  EXPECT_EQ("editor", group->key);
}

TEST(HeaderFile, AcceptsEveryKindOfLineEnd) {
  SourceTree tree;
  struct {
    const char* name;
    std::string text;
    std::string expected;
  } const cases[] = {
      {"LF", "#define IDC_A 1\n#define IDC_B 2\n", "IDC_A=1 IDC_B=2"},
      {"CRLF", "#define IDC_A 1\r\n#define IDC_B 2\r\n", "IDC_A=1 IDC_B=2"},
      {"no end of the last line", "#define IDC_A 1\n#define IDC_B 2", "IDC_A=1 IDC_B=2"},
      {"CR alone ends no line", "#define IDC_A 1\r#define IDC_B 2\r", "IDC_A=1"},
      {"a zero byte belongs to its word", "#define IDC_\0A 1\n#define IDC_B 2\n"s, "IDC_\0A=1 IDC_B=2"s},
      {"a zero byte ends a number",
       "#define IDC_A 1\0"
       "2\n"s,
       "IDC_A=1"},
      {"a zero byte before and behind", "\0\n#define IDC_A 1\0"s, "IDC_A=1"},
      {"nothing", "", ""},
      {"only a line feed", "\n", ""},
  };
  for (const auto& c : cases) {
    OpenNamer namer;
    EXPECT_EQ(1, namer.process_header_file(nullptr, nullptr, tree.write("a.dev/x.h", c.text))) << c.name;
    EXPECT_EQ(c.expected, namer.constants("a")) << c.name;
  }
}

TEST(HeaderFile, AFailedLineDoesNotStopTheReading) {
  SourceTree tree;
  OpenNamer namer;
  const CString path = tree.write(
      "a.dev/x.h", "#define IDC_A 1\n#include \"missing.h\"\n#define IDC_B 2\n#include \"gone.h\"\n");
  EXPECT_EQ(0, namer.process_header_file(nullptr, nullptr, path));
  EXPECT_EQ("IDC_A=1 IDC_B=2", namer.constants("a"));
  EXPECT_EQ(
      (std::vector<std::string>{"Cannot find header file: missing.h", "Cannot find header file: gone.h"}),
      namer.errors);
}

TEST(HeaderFile, FailsWithWhatItIncludes) {
  SourceTree tree;
  OpenNamer namer;
  tree.write("a.dev/deep.h", "#include \"missing.h\"\n#define IDC_DEEP 3\n");
  tree.write("a.dev/middle.h", "#include \"deep.h\"\n#define IDC_MIDDLE 2\n");
  EXPECT_EQ(
      0, namer.process_header_file(nullptr, nullptr,
                                   tree.write("a.dev/top.h", "#include \"middle.h\"\n#define IDC_TOP 1\n")));
  EXPECT_EQ("IDC_DEEP=3 IDC_MIDDLE=2 IDC_TOP=1", namer.constants("a"));
  EXPECT_EQ(1, namer.m_error_count);
}

TEST(HeaderFile, ThatCannotBeOpenedIsReportedOnceWithItsLowerCasePath) {
  SourceTree tree;
  OpenNamer namer;
  const CString path = tree.write("Dir/X.h", "#define IDC_A 1\n");
  tree.lock("Dir/X.h");
  EXPECT_EQ(0, namer.process_header_file(nullptr, nullptr, path));
  ASSERT_EQ(1u, namer.errors.size());
  std::string lower = path.str();
  for (char& ch : lower)
    ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
  EXPECT_EQ("Cannot open header file: " + lower, namer.errors[0]);
  EXPECT_EQ(1, namer.process_header_file(nullptr, nullptr, path)) << "it counts as read from now on";
  EXPECT_EQ(1, namer.m_error_count);
}

TEST(HeaderFile, IncludedTwiceIsReadOnceAndAttachesItsGroups) {
  SourceTree tree;
  OpenNamer namer;
  tree.write("c.dev/c.h", "#define IDC_C 3\n#include \"../b.dev/b.h\"\n");  // back to the group it came from
  tree.write("b.dev/b.h", "#include \"../c.dev/c.h\"\n#define IDC_B 2\n");
  const CString top = tree.write("a.dev/a.h", "#include \"../b.dev/b.h\"\n");
  mrLibraryRes* const first = namer.add_lib("first");
  EXPECT_EQ(1, namer.process_header_file(first, nullptr, top));
  EXPECT_EQ("a b c", namer.groups("first"));

  // What the second module gets it gets without a file being read.
  tree.write("b.dev/b.h", "#define IDC_NEW 9\n");
  mrLibraryRes* const second = namer.add_lib("second");
  EXPECT_EQ(1, namer.process_header_file(second, nullptr, top));
  EXPECT_EQ("a b c", namer.groups("second"));
  EXPECT_EQ("IDC_B=2", namer.constants("b"));
  EXPECT_EQ(0, namer.m_error_count);
}

TEST(HeaderFile, RemembersWhichGroupsAGroupIncludes) {
  SourceTree tree;
  OpenNamer namer;
  tree.write("b.dev/b.h", "");
  tree.write("a.dev/other.h", "");
  namer.process_header_file(nullptr, nullptr,
                            tree.write("a.dev/a.h", "#include \"../b.dev/b.h\"\n#include \"other.h\"\n"));
  const mrNameMap<mrHeader*>& includes = namer.m_headers.find(std::string_view("a"))->second->includes;
  ASSERT_EQ(1u, includes.size()) << "a group does not include itself";
  EXPECT_EQ(namer.m_headers.find(std::string_view("b"))->second.get(), includes.begin()->second);
}

TEST(HeaderFile, HeadersThatIncludeEachOtherEnd) {
  SourceTree tree;
  OpenNamer namer;
  tree.write("a.dev/b.h", "#define IDC_B1 1\n#include \"a.h\"\n#include \"./b.h\"\n#define IDC_B2 2\n");
  const CString path = tree.write("a.dev/a.h", "#define IDC_A1 3\n#include \"b.h\"\n#include \"sub/../a.h\"\n"
                                               "#define IDC_A2 4\n");
  EXPECT_EQ(1, namer.process_header_file(namer.add_lib("m"), nullptr, path));
  EXPECT_EQ("IDC_A1=3 IDC_A2=4 IDC_B1=1 IDC_B2=2", namer.constants("a"));
  EXPECT_EQ(2u, namer.m_processed_files.size());
}

TEST(HeaderFile, ALongChainOfIncludesNeedsNoStack) {
  SourceTree tree;
  OpenNamer namer;
  constexpr int length = 3000;
  for (int i = 0; i < length; ++i) {
    const std::string next = std::to_string(i + 1);
    tree.write("a.dev/h" + std::to_string(i) + ".h",
               i + 1 < length ? "#include \"h" + next + ".h\"\n#define IDC_" + next + " 1\n"
                              : "#define IDC_END 1\n");
  }
  EXPECT_EQ(1, namer.process_header_file(nullptr, nullptr, tree.path("a.dev/h0.h")));
  EXPECT_EQ(size_t{length}, namer.get_name_count());
}

TEST(IncludePaths, BesideTheIncluderComesFirstThenTheOthersInOrder) {
  SourceTree tree;
  tree.write("here/x.h", "#define IDC_X 1\n");
  tree.write("first/x.h", "#define IDC_X 2\n");
  tree.write("first/y.h", "#define IDC_Y 3\n");
  tree.write("second/y.h", "#define IDC_Y 4\n");
  tree.write("second/z.h", "#define IDC_Z 5\n");
  OpenNamer namer;
  namer.m_include_paths.Add(tree.path("first"));
  namer.m_include_paths.Add(tree.path("second"));
  for (const char* name : {"x.h", "y.h", "z.h"})
    EXPECT_EQ(1, namer.process_header_in_paths(nullptr, nullptr, name, tree.path("here/m.rc"))) << name;
  EXPECT_EQ("IDC_X=1 IDC_Y=3 IDC_Z=5", namer.constants("general"));
  EXPECT_EQ(tree.path("here"), namer.m_include_paths[0]);
}

TEST(IncludePaths, AFolderIsNoFile) {
  SourceTree tree;
  tree.make_folder("here/x.h");
  tree.write("first/x.h", "#define IDC_X 2\n");
  OpenNamer namer;
  namer.m_include_paths.Add(tree.path("first"));
  EXPECT_EQ(1, namer.process_header_in_paths(nullptr, nullptr, "x.h", tree.path("here/m.rc")));
  EXPECT_EQ("IDC_X=2", namer.constants("general"));
}

TEST(IncludePaths, AnAbsoluteNameIsTakenAsItStands) {
  SourceTree tree;
  const CString path = tree.write("far/x.h", "#define IDC_X 2\n");
  OpenNamer namer;
  EXPECT_EQ(1, namer.process_header_in_paths(nullptr, nullptr, path, tree.path("here/m.rc")));
  EXPECT_EQ("IDC_X=2", namer.constants("general"));
}

TEST(IncludePaths, TooLongANameIsNotFound) {
  SourceTree tree;
  OpenNamer namer;
  const std::string name(1000, 'x');
  EXPECT_EQ(0, namer.process_header_in_paths(nullptr, nullptr, CString(name), tree.path("m.rc")));
  EXPECT_EQ((std::vector<std::string>{"Cannot find header file: " + name}), namer.errors);
}

TEST(IncludePaths, AreResolvedBesideTheFirstFileOfTheGroup) {
  SourceTree tree;
  tree.write("a.dev/one/here.h", "#define IDC_ONE 1\n");
  tree.write("a.dev/two/here.h", "#define IDC_TWO 2\n");
  tree.write("a.dev/two/second.h", "#include \"here.h\"\n");
  OpenNamer namer;
  namer.process_header_file(nullptr, nullptr,
                            tree.write("a.dev/one/first.h", "#include \"../two/second.h\"\n"));
  EXPECT_EQ("IDC_ONE=1", namer.constants("a"))
      << "second.h lies in two, and its include is looked for in one";
}

TEST(IncludePaths, AreOneEmptyElementAtFirst) {
  OpenNamer namer;
  ASSERT_EQ(1, namer.m_include_paths.GetSize());
  EXPECT_EQ("", namer.m_include_paths[0]);
  namer.m_include_paths.SetAt(0, "x");
  namer.m_include_paths.Add("y");
  namer.clear_include_paths();
  ASSERT_EQ(1, namer.m_include_paths.GetSize());
  EXPECT_EQ("", namer.m_include_paths[0]);
}

TEST(ExpandPath, ExpandsTurnsSlashesAndCanonicalises) {
  set_variable("MR_TEST_SRC", "c:\\src");
  EXPECT_EQ("c:\\src\\res\\app.rc", OpenNamer::expand_path("%MR_TEST_SRC%/ui/../res/app.rc"));
  EXPECT_EQ("c:\\a\\b.h", OpenNamer::expand_path("c:/a/./b.h"));
  EXPECT_EQ("c:\\a\\%MR_TEST_NONE%\\b", OpenNamer::expand_path("c:\\a\\%MR_TEST_NONE%\\b"));
  EXPECT_EQ("C:\\Mixed\\Case.H", OpenNamer::expand_path("C:\\Mixed\\Case.H"));
  set_variable("MR_TEST_SRC", nullptr);
}

TEST(ExpandPath, KeepsTheUnexpandedTextWhenTheExpandedOneDoesNotFit) {
  set_variable("MR_TEST_LONG", ("c:\\" + std::string(256, 'x')).c_str());
  EXPECT_EQ(CString("c:\\" + std::string(256, 'x')), OpenNamer::expand_path("%MR_TEST_LONG%"))
      << "259 characters fit";
  EXPECT_EQ("%MR_TEST_LONG%y", OpenNamer::expand_path("%MR_TEST_LONG%y"))
      << "260 do not, the final zero needs one";
  set_variable("MR_TEST_LONG", nullptr);
}

TEST(ExpandPath, LeavesAPathThatIsTooLongWithBackslashes) {
  const std::string path = "c:/" + std::string(400, 'x') + "/../y";
  std::string expected = path;
  for (char& ch : expected)
    if (ch == '/')
      ch = '\\';
  EXPECT_EQ(CString(expected), OpenNamer::expand_path(CString(path)));
}
