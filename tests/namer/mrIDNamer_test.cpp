// The model of the naming engine, the answers it gives, and the texts it writes.
#include "namer/mrFiles.h"
#include "tests/namer/open_namer.h"
#include "tests/namer/source_tree.h"

#include <string>
#include <utility>
#include <vector>

namespace {

struct IndexCase {
  const char* name;
  std::vector<std::pair<const char*, const char*>>
      constants;  // group and name, all of the number 7, in this order
  const char* expected;
};

const IndexCase index_cases[] = {
    {"two groups", {{"general", "IDC_A"}, {"editor", "IDC_B"}}, "general.IDC_A editor.IDC_B"},
    {"the same name in two groups",
     {{"general", "IDC_A"}, {"editor", "IDC_A"}},
     "general.IDC_A editor.IDC_A"},
    {"entered twice", {{"foo", "IDC_A"}, {"foo", "IDC_A"}}, "foo.IDC_A"},
    {"a debug build after its release", {{"foo", "IDC_A"}, {"food", "IDC_A"}}, "foo.IDC_A"},
    {"a release after its debug build", {{"food", "IDC_A"}, {"foo", "IDC_A"}}, "foo.IDC_A"},
    {"the place of the debug build is kept",
     {{"food", "IDC_A"}, {"bar", "IDC_B"}, {"foo", "IDC_A"}},
     "foo.IDC_A bar.IDC_B"},
    {"another name of the debug build", {{"foo", "IDC_A"}, {"food", "IDC_B"}}, "foo.IDC_A food.IDC_B"},
    {"keys that differ in the middle", {{"fao", "IDC_A"}, {"fooo", "IDC_A"}}, "fao.IDC_A fooo.IDC_A"},
    {"a last letter that differs", {{"food", "IDC_A"}, {"foot", "IDC_A"}}, "food.IDC_A foot.IDC_A"},
    {"keys that differ by two letters", {{"foo", "IDC_A"}, {"foodx", "IDC_A"}}, "foo.IDC_A foodx.IDC_A"},
    {"the test is one of substrings: names of one group, the longer first",
     {{"foo", "IDC_OK2"}, {"foo", "IDC_OK"}},
     "foo.IDC_OK"},
    {"the test looks for the new name: names of one group, the longer last",
     {{"foo", "IDC_OK"}, {"foo", "IDC_OK2"}},
     "foo.IDC_OK foo.IDC_OK2"},
    {"a name that displaces another one stands there once, entered before or not",
     {{"foo", "IDC_A22"}, {"foo", "IDC_A"}, {"bar", "IDC_B"}, {"foo", "IDC_A2"}, {"foo", "IDC_A"}},
     "foo.IDC_A bar.IDC_B"},
    {"the short key may be anywhere", {{"xfo", "IDC_AB"}, {"foo", "IDC_A"}}, "foo.IDC_A"},
    {"with a one-letter key the short key is empty", {{"zz", "IDC_A"}, {"a", "IDC_A"}}, "a.IDC_A"},
    {"the first entry that decides",
     {{"food", "IDC_A"}, {"foot", "IDC_A"}, {"foo", "IDC_A"}},
     "foo.IDC_A foot.IDC_A"},
    {"an entry one shorter", {{"fo", "IDC_A"}, {"foo", "IDC_A"}}, "fo.IDC_A"},
};

// A module "editor" with a dialog 101 and a control 11, another module "viewer" with dialogs 101 and 102.
class Lookup : public testing::Test {
protected:
  Lookup() {
    mrLibraryRes* const editor = m_namer.add_lib("editor");
    m_namer.add_constant("IDC_NAME", 11, m_namer.add_header(editor, "editor", ""));
    m_namer.add_constant("IDC_NAME", 900, m_namer.add_header(editor, "zebra", ""));
    add_dialog(editor, 101, "IDD_A", 11, "IDC_NAME");
    mrLibraryRes* const viewer = m_namer.add_lib("viewer");
    m_namer.add_constant("IDC_VIEW", 11, m_namer.add_header(viewer, "viewer", ""));
    add_dialog(viewer, 101, "IDD_V", 11, "IDC_VIEW");
    add_dialog(viewer, 102, "IDD_W", 12, "IDC_GONE");
    m_namer.add_constant("general", "IDM_OPEN", 11);
  }

  static void add_dialog(mrLibraryRes* module, uint32_t number, const char* name, int64_t id,
                         const char* control) {
    std::unique_ptr<mrDialogRes>& dialog = module->dialogs[number];
    dialog = std::make_unique<mrDialogRes>();
    dialog->name = name;
    dialog->library = module;
    dialog->controls[id] = control;
  }

  CString definition(int64_t number, uint32_t dialog = 0, const char* module = "",
                     const char* prefix = "IDC_") {
    return m_namer.get_definition(number, prefix, dialog, module);
  }

  static constexpr char every_name_of_11[] = "editor.IDC_NAME | viewer.IDC_VIEW | general.IDM_OPEN";
  OpenNamer m_namer;
};

}  // namespace

TEST(ValueIndex, KeepsOneNamePerPairOfGroups) {
  for (const IndexCase& c : index_cases) {
    OpenNamer namer;
    for (const auto& [group, name] : c.constants)
      namer.mrIDNamer::add_constant(CString(group), CString(name), 7);
    EXPECT_EQ(c.expected, namer.names(7)) << c.name;
  }
}

TEST(ValueIndex, TheGroupsKeepAllOfTheirNames) {
  OpenNamer namer;
  namer.add_constant(CString("food"), CString("IDC_A"), 7);
  namer.add_constant(CString("foo"), CString("IDC_A"), 7);
  EXPECT_EQ("IDC_A=7", namer.constants("food"));
  EXPECT_EQ("IDC_A=7", namer.constants("foo"));
}

TEST(ValueIndex, NumbersOfSixtyFourBitsAreDifferent) {
  OpenNamer namer;
  namer.add_constant(CString("g"), CString("IDC_A"), 1);
  namer.add_constant(CString("g"), CString("IDC_B"), 0x100000001);
  EXPECT_EQ("g.IDC_A", namer.names(1));
  EXPECT_EQ("g.IDC_B", namer.names(0x100000001));
}

TEST(Model, AnEmptyKeyIsAKey) {
  OpenNamer namer;
  namer.add_constant(CString(""), CString("IDC_A"), 7);
  EXPECT_EQ(".IDC_A", namer.get_definition(7, "", 0, ""));
}

TEST(Model, AGroupKeepsItsFirstPath) {
  OpenNamer namer;
  mrHeader* const group = namer.add_header(nullptr, "g", "c:\\first.h");
  EXPECT_EQ(group, namer.add_header(nullptr, "g", "c:\\second.h"));
  EXPECT_EQ("c:\\first.h", group->path);
  EXPECT_EQ("g", group->key);
}

TEST(Model, AGroupIsEnteredIntoTheModuleOnlyWhenThereIsOne) {
  OpenNamer namer;
  namer.add_header(nullptr, "g", "");
  mrLibraryRes* const module = namer.add_lib("m");
  EXPECT_EQ("", namer.groups("m"));
  mrHeader* const group = namer.add_header(module, "g", "");
  EXPECT_EQ(group, module->headers.begin()->second);
}

TEST(Model, AddingAModuleAgainEmptiesIt) {
  OpenNamer namer;
  namer.add_header(namer.add_lib("m"), "g", "");
  EXPECT_EQ("g", namer.groups("m"));
  namer.add_lib("m");
  EXPECT_EQ("", namer.groups("m"));
  EXPECT_EQ(1u, namer.m_headers.size()) << "groups belong to the namer";
}

TEST(Model, ClearResetsTheErrorCountAndNothingElse) {
  OpenNamer namer;
  namer.add_constant(CString("g"), CString("IDC_A"), 7);
  namer.error("e");
  namer.warning("w");
  namer.clear();
  EXPECT_EQ(0, namer.m_error_count);
  EXPECT_EQ(1, namer.m_warning_count);
  EXPECT_EQ(1u, namer.get_name_count());
}

TEST(Model, ClearAllEmptiesEveryMap) {
  SourceTree tree;
  OpenNamer namer;
  namer.process_header_file(namer.add_lib("m"), nullptr, tree.write("x.h", "#define IDC_A 7\n"));
  namer.clear_all();
  EXPECT_TRUE(namer.m_headers.empty());
  EXPECT_TRUE(namer.m_values.empty());
  EXPECT_TRUE(namer.m_libraries.empty());
  EXPECT_TRUE(namer.m_processed_files.empty());
}

TEST(Model, AMessageIsPrintedAndCounted) {
  OpenNamer namer;
  testing::internal::CaptureStdout();
  namer.error("50% lost %s");
  namer.warning("w");
  EXPECT_EQ("Error: 50% lost %s\nWarning: w\n", testing::internal::GetCapturedStdout());
  EXPECT_EQ(1, namer.m_error_count);
  EXPECT_EQ(1, namer.m_warning_count);
}

TEST(Model, IsALogWhoseMessagesReachTheDerivedClass) {
  OpenNamer namer;
  mrLog& log = namer;
  log.warning("w");
  log.error("e");
  EXPECT_EQ((std::vector<std::string>{"w"}), namer.warnings);
  EXPECT_EQ((std::vector<std::string>{"e"}), namer.errors);
}

TEST(DynamicControl, IsEnteredIntoGroupModuleAndDialog) {
  OpenNamer namer;
  mrLibraryRes* const module = namer.add_lib("m");
  namer.add_constant("IDD_A", 101, namer.add_header(module, "g", ""));
  module->dialogs[101] = std::make_unique<mrDialogRes>();
  module->dialogs[101]->name = "IDD_A";
  module->dialogs[101]->library = module;

  EXPECT_EQ(1, namer.add_dynamic_control("m", "IDD_A", "dynamic", "IDC_DYNAMIC", 5000));
  EXPECT_EQ("dynamic g", namer.groups("m"));
  EXPECT_EQ("101 IDD_A: 5000=IDC_DYNAMIC", namer.dialogs("m"));
  EXPECT_EQ("dynamic.IDC_DYNAMIC", namer.get_definition(5000, "IDC_", 101, "m"));
  EXPECT_EQ("", namer.m_headers.find(std::string_view("dynamic"))->second->path);

  EXPECT_EQ(0, namer.add_dynamic_control("none", "IDD_A", "never", "IDC_X", 1));
  EXPECT_EQ("no group", namer.constants("never")) << "an unknown module changes nothing";
  EXPECT_EQ(0, namer.add_dynamic_control("M", "IDD_A", "never", "IDC_X", 1))
      << "names are compared as they stand";
  EXPECT_EQ(0, namer.add_dynamic_control("m", "IDD_NONE", "late", "IDC_X", 1));
  EXPECT_EQ("IDC_X=1", namer.constants("late")) << "the constant is entered before the dialog is looked for";
  namer.add_constant(CString("g"), CString("IDD_EMPTY"), 102);
  EXPECT_EQ(0, namer.add_dynamic_control("m", "IDD_EMPTY", "late", "IDC_X", 1))
      << "a number without a dialog";
  EXPECT_EQ(0, namer.m_error_count);
}

TEST_F(Lookup, AControlOfAKnownDialogHasItsGroupsName) {
  EXPECT_EQ("editor.IDC_NAME", definition(11, 101, "editor"));
  EXPECT_EQ("viewer.IDC_VIEW", definition(11, 101, "viewer"));
}

TEST_F(Lookup, TheFirstGroupThatDefinesTheNameQualifiesItWhateverNumberItGivesIt) {
  m_namer.m_libraries.find(std::string_view("editor"))->second->headers["aardvark"] =
      m_namer.add_header(nullptr, "aardvark", "");
  m_namer.add_constant(CString("aardvark"), CString("IDC_NAME"), 901);
  EXPECT_EQ("aardvark.IDC_NAME", definition(11, 101, "editor"));
}

TEST_F(Lookup, AControlThatNoGroupDefinesHasItsBareName) {
  EXPECT_EQ("IDC_GONE", definition(12, 102, "viewer"));
}

TEST_F(Lookup, AModulesNameHasNoCase) {
  EXPECT_EQ("editor.IDC_NAME", definition(11, 101, "EDITOR"));
  m_namer.add_lib("\xE4pfel");
  add_dialog(m_namer.m_libraries.find(std::string_view("\xE4pfel"))->second.get(), 5, "IDD_X", 1, "IDC_X");
  EXPECT_EQ("IDC_X", definition(1, 5, "\xC4PFEL")) << "lower case is the code page's";
}

TEST_F(Lookup, AModulesNameMayBeLong) {
  const std::string name(1000, 'x');
  add_dialog(m_namer.add_lib(CString(name)), 5, "IDD_X", 1, "IDC_X");
  EXPECT_EQ("IDC_X", m_namer.get_definition(1, "IDC_", 5, CString(std::string(1000, 'X'))));
  EXPECT_EQ("IDC_X", m_namer.get_definition(1, "IDC_", 5, CString(name + "d")));
}

TEST_F(Lookup, ADebugBuildFindsItsModule) {
  EXPECT_EQ("editor.IDC_NAME", definition(11, 101, "EditorD"));
  m_namer.add_lib("editord");
  EXPECT_EQ(every_name_of_11, definition(11, 101, "EditorD")) << "a module of that very name wins";
  EXPECT_EQ("editor.IDC_NAME", definition(11, 101, "editorx")) << "whatever the last letter is";
  EXPECT_EQ("editor.IDC_NAME", definition(11, 101, "editorddd"))
      << "an unknown module: the first one with the dialog";
}

TEST_F(Lookup, WithoutAModuleTheFirstWithTheDialogAnswers) {
  EXPECT_EQ("editor.IDC_NAME", definition(11, 101));
  EXPECT_EQ("IDC_GONE", definition(12, 102));
  EXPECT_EQ("editor.IDC_NAME", definition(11, 101, "unknown"));
  EXPECT_EQ("editor.IDC_NAME", definition(11, 101, "x"));
  EXPECT_EQ("editor.IDC_NAME", m_namer.get_definition(11, "IDC_", 101, CString(std::string(1000, 'x'))));
}

TEST_F(Lookup, AKnownModuleWithoutTheDialogLooksAtNoOther) {
  EXPECT_EQ("12", definition(12, 102, "editor"));
  EXPECT_EQ(every_name_of_11, definition(11, 102, "editor"));
}

TEST_F(Lookup, AControlThatTheDialogLacksFallsBackToItsNumber) {
  EXPECT_EQ("57600", definition(57600, 101, "editor"));
  EXPECT_EQ("editor.IDC_NAME | viewer.IDC_VIEW | general.IDM_OPEN", definition(11, 102, "viewer"));
}

TEST_F(Lookup, ADialogThatNobodyHasFallsBackToTheNumber) { EXPECT_EQ(every_name_of_11, definition(11, 999)); }

TEST_F(Lookup, ACommandNeverConsultsTheDialogs) {
  m_namer.m_libraries.find(std::string_view("editor"))->second->dialogs[0] =
      std::move(m_namer.m_libraries.find(std::string_view("editor"))->second->dialogs[101]);
  EXPECT_EQ(every_name_of_11, definition(11, 0, "editor", "IDM_"));
}

TEST_F(Lookup, AnAmbiguousNumberGivesAllItsNamesInTheirOrder) {
  EXPECT_EQ(every_name_of_11, definition(11));
  EXPECT_EQ(every_name_of_11, definition(11, 0, "", "IDM_")) << "no qualified name begins with the prefix";
  EXPECT_EQ(every_name_of_11, definition(11, 0, "", ""));
}

TEST_F(Lookup, APrefixSelectsGroupsWhoseKeyBeginsWithIt) {
  EXPECT_EQ("viewer.IDC_VIEW", definition(11, 0, "", "view"));
  m_namer.add_constant(CString("IDM_x"), CString("IDM_Y"), 11);
  m_namer.add_constant(CString("IDM_z"), CString("IDM_Z"), 11);
  EXPECT_EQ("IDM_x.IDM_Y | IDM_z.IDM_Z", definition(11, 0, "", "IDM_"));
}

TEST_F(Lookup, ANumberThatNothingDefinesIsItsLowThirtyTwoBits) {
  EXPECT_EQ("57600", definition(57600));
  EXPECT_EQ("-1", definition(-1));
  EXPECT_EQ("-1", definition(4294967295));
  EXPECT_EQ("0", definition(0x100000000));
  EXPECT_EQ("-2147483648", definition(0x80000000));
}

TEST(LookupWithoutAModel, AnswersTheNumber) {
  const mrIDNamer namer;
  EXPECT_EQ("57600", namer.get_definition(57600, "IDC_", 0, ""));
  EXPECT_EQ("5", namer.get_definition(5, "IDC_", 101, "editor"));
}

TEST_F(Lookup, FindsTheNumberOfAName) {
  int64_t number = -5;
  EXPECT_TRUE(m_namer.find_number("zebra.IDC_NAME", number));
  EXPECT_EQ(900, number);
  EXPECT_TRUE(m_namer.find_number("IDC_NAME", number)) << "the first group in key order";
  EXPECT_EQ(11, number);
  m_namer.add_constant(CString("a.b"), CString("IDC_DOT"), 3);
  EXPECT_TRUE(m_namer.find_number("a.b.IDC_DOT", number)) << "the key may have full stops";
  EXPECT_EQ(3, number);
  number = -5;
  for (const char* unknown :
       {"IDC_NONE", "zebra.IDC_VIEW", "none.IDC_NAME", "idc_name", "zebra.", ".IDC_NAME", ".", ""})
    EXPECT_FALSE(m_namer.find_number(unknown, number)) << unknown;
  EXPECT_EQ(-5, number);
}

TEST_F(Lookup, CountsTheNamesOfAllGroups) {
  EXPECT_EQ(4u, m_namer.get_name_count());
  EXPECT_EQ(0u, mrIDNamer().get_name_count());
}

// ---- the constants script
// ----------------------------------------------------------------------------------------

namespace {

std::string written(const SourceTree& tree, const char* name) {
  std::string text;
  mrFiles::read(tree.path(name), text);
  return text;
}

}  // namespace

TEST(ConstantsScript, OfAnEmptyModelIsOneLine) {
  SourceTree tree;
  OpenNamer namer;
  EXPECT_EQ(1, namer.save_all_declarations(tree.path("c.js")));
  EXPECT_EQ("var o=null;\r\n", written(tree, "c.js"));
}

TEST(ConstantsScript, ListsGroupsAndConstantsInOrder) {
  SourceTree tree;
  tree.write("c.js", std::string(10000, 'x'));  // replaced, not written over
  OpenNamer namer;
  namer.add_constant(CString("general"), CString("IDOK"), 1);
  namer.add_constant(CString("general"), CString("IDCANCEL"), 2);
  namer.add_constant(CString("editor"), CString("IDC_BIG"), 0xFFFFFFFF);
  namer.add_constant(CString("editor"), CString("IDC_BIGGER"), 0x100000005);
  namer.add_header(nullptr, "empty", "");
  EXPECT_EQ(1, namer.save_all_declarations(tree.path("c.js")));
  EXPECT_EQ("var o=null;\r\n"
            "var editor=new Object(); o=editor;\r\n o.IDC_BIG=-1;\r\n o.IDC_BIGGER=5;\r\n"
            "var empty=new Object(); o=empty;\r\n"
            "var general=new Object(); o=general;\r\n o.IDCANCEL=2;\r\n o.IDOK=1;\r\n",
            written(tree, "c.js"));
}

TEST(ConstantsScript, FailsWhereNoFileCanBeMade) {
  SourceTree tree;
  OpenNamer namer;
  EXPECT_EQ(0, namer.save_all_declarations(tree.path("none/c.js")));
}
