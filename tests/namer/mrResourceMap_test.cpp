// The life of a resource map: specification, comparison, saving, and the constants script in a script engine.
#include "host/ZQUtils.h"
#include "tests/namer/installation.h"
#include "tests/namer/open_namer.h"
#include "tests/namer/script_engine.h"

#include <windows.h>

#include <set>

namespace {

// Sources of two modules in two targets, and the specification that lists them.
class Specification : public testing::Test {
protected:
  Specification() {
    SourceTree& tree = m_installation.tree;
    tree.write("sdk/winuser.h", "#define IDOK 1\n");
    tree.write("sdk/shared.h", "#define IDC_FROM_SDK 50\n");
    tree.write("one/inc/shared.h", "#define IDC_FROM_ONE 51\n");
    tree.write("one/One.rc", "#include \"shared.h\"\n#include \"../a.dev/a.h\"\n"
                             "IDD_A DIALOG\nBEGIN\nEDITTEXT IDC_A, 5\nEND\n");
    tree.write("two/Two.rc", "#include \"shared.h\"\n#include \"../a.dev/a.h\"\n");
    tree.write("a.dev/a.h", "#define IDD_A 101\n#define IDC_A 11\n");
    set_variable("MR_TEST_ROOT", tree.root());
  }
  ~Specification() override { set_variable("MR_TEST_ROOT", nullptr); }

  static std::string element(const char* name, const std::string& path) {
    return std::string("<") + name + " path=\"" + path + "\"/>";
  }
  static std::string target(const std::string& include_dirs, const std::string& rc_files) {
    return "<target><include_dirs>" + include_dirs + "</include_dirs><rc_files>" + rc_files +
           "</rc_files></target>";
  }
  static std::string document(const std::string& targets) {
    return "<?xml version='1.0'?>\n<rc_map>\n <system_includes>\n  <include_dir "
           "path=\"%MR_TEST_ROOT%/sdk\"/>\n"
           " </system_includes>\n <targets>\n" +
           targets + "\n </targets>\n</rc_map>\n";
  }
  // Two targets, the first with an include directory of its own.
  static std::string both_targets() {
    return document(target(element("include_dir", "%MR_TEST_ROOT%/one/inc"),
                           element("rc_file", "%MR_TEST_ROOT%/one/One.rc")) +
                    target("", element("rc_file", "%MR_TEST_ROOT%/two/Two.rc")));
  }
  long process(const std::string& text) {
    return m_namer.process_spec_file(m_installation.tree.write("spec.xml", text));
  }

  Installation m_installation;
  OpenNamer m_namer;
};

// A stored map of one module, and a namer that holds the same model.
class StoredMap : public testing::Test {
protected:
  StoredMap() {
    fill(m_namer);
    EXPECT_EQ(0, m_namer.save_def_map());
    m_namer.clear_all();
    fill(m_namer);
  }

  static void fill(OpenNamer& namer) {
    mrLibraryRes* const module = namer.add_lib("m");
    mrHeader* const group = namer.add_header(module, "g", "");
    namer.add_constant("IDD_A", 101, group);
    namer.add_constant("IDD_B", 102, group);
    namer.add_constant("IDC_A", 11, group);
    namer.add_constant("IDC_B", 12, group);
    for (const auto& [number, name] : {std::pair<uint32_t, const char*>{101, "IDD_A"}, {102, "IDD_B"}}) {
      module->dialogs[number] = std::make_unique<mrDialogRes>();
      module->dialogs[number]->name = name;
      module->dialogs[number]->library = module;
      module->dialogs[number]->controls = {{11, "IDC_A"}, {12, "IDC_B"}};
    }
  }
  mrLibraryRes* module() { return m_namer.m_libraries.find(std::string_view("m"))->second.get(); }
  mrHeader* group() { return m_namer.m_headers.find(std::string_view("g"))->second.get(); }
  long check() { return m_namer.check_res_map(mrIDNamer::get_res_file()); }

  Installation m_installation;
  OpenNamer m_namer;
};

constexpr long e_fail = static_cast<long>(0x80004005);

}  // namespace

// ---- places
// ------------------------------------------------------------------------------------------------------

TEST(ResourceFolder, IsTwoFoldersAboveTheApplicationFolder) {
  Installation installation;
  EXPECT_EQ(installation.tree.path("file/ui_recording"), mrIDNamer::get_res_path());
  EXPECT_EQ(installation.tree.path("file/ui_recording/ui_map.rcz"), mrIDNamer::get_res_file());
  EXPECT_EQ(installation.tree.path("file/ui_recording/ui_consts.js"), mrIDNamer::get_const_file());
}

TEST(ResourceFolder, IsTheDevelopmentFolderWhenThereIsNone) {
  Installation installation;
  set_variable("ZQ_APPLICATION_FOLDER", installation.tree.path("elsewhere/bin/x64"));
  EXPECT_EQ("P:\\devel\\utestsuite\\scriptinclude", mrIDNamer::get_res_path());
  EXPECT_EQ("P:\\devel\\utestsuite\\scriptinclude\\ui_map.rcz", mrIDNamer::get_res_file());
  EXPECT_EQ("P:\\devel\\utestsuite\\scriptinclude\\ui_consts.js", mrIDNamer::get_const_file());
}

TEST(ResourceFolder, OfAFileIsNoFolder) {
  Installation installation;
  installation.tree.write("other/file/ui_recording", "a file");
  set_variable("ZQ_APPLICATION_FOLDER", installation.tree.path("other/bin/x64"));
  EXPECT_EQ("P:\\devel\\utestsuite\\scriptinclude", mrIDNamer::get_res_path());
}

TEST(ApplicationFolder, IsThePrograms) {
  char program[MAX_PATH];
  GetModuleFileNameA(nullptr, program, MAX_PATH);
  for (const char* unset : {static_cast<const char*>(nullptr), ""}) {
    set_variable("ZQ_APPLICATION_FOLDER", unset);
    EXPECT_EQ(CString(program).Left(CString(program).ReverseFind('\\')), zqu_get_main_application_folder());
  }
}

TEST(ApplicationFolder, IsTheEnvironmentVariablesWhenSet) {
  set_variable("ZQ_APPLICATION_FOLDER", "x:\\some where\\bin\\x64");
  EXPECT_EQ("x:\\some where\\bin\\x64", zqu_get_main_application_folder());
  set_variable("ZQ_APPLICATION_FOLDER", nullptr);
}

// ---- specification
// -----------------------------------------------------------------------------------------------

TEST_F(Specification, GivesEachTargetItsOwnIncludeDirectoriesThenTheSystems) {
  EXPECT_EQ(0, process(both_targets()));
  EXPECT_EQ(0, m_namer.m_error_count);
  EXPECT_EQ("IDC_FROM_ONE=51 IDC_FROM_SDK=50 IDOK=1", m_namer.constants("general"));
  EXPECT_EQ("101 IDD_A: 11=IDC_A", m_namer.dialogs("one"));
  EXPECT_EQ("", m_namer.dialogs("two"));
  ASSERT_EQ(2, m_namer.m_include_paths.GetSize())
      << "the last target has only the reserved element and the system's";
  EXPECT_EQ(m_installation.tree.path("sdk"), m_namer.m_include_paths[1]);
}

TEST_F(Specification, KeepsTheOrderOfIncludeDirectories) {
  process(document(
      target(element("include_dir", "%MR_TEST_ROOT%/x") + element("include_dir", "%MR_TEST_ROOT%\\y"), "")));
  ASSERT_EQ(4, m_namer.m_include_paths.GetSize());
  EXPECT_EQ("", m_namer.m_include_paths[0]);
  EXPECT_EQ(m_installation.tree.path("x"), m_namer.m_include_paths[1]);
  EXPECT_EQ(m_installation.tree.path("y"), m_namer.m_include_paths[2]);
  EXPECT_EQ(m_installation.tree.path("sdk"), m_namer.m_include_paths[3]);
}

TEST_F(Specification, ReadsAPathWithVariablesSlashesAndDots) {
  EXPECT_EQ(0, process(document(target("", element("rc_file", "%MR_TEST_ROOT%/two/../two/./Two.rc")))));
  EXPECT_EQ(0, m_namer.m_error_count);
  EXPECT_EQ("", m_namer.dialogs("two"));
}

TEST_F(Specification, SkipsElementsWithoutAPath) {
  EXPECT_EQ(0, process(document(target("<include_dir/>" + element("include_dir", ""),
                                       "<rc_file/>" + element("rc_file", "") +
                                           element("rc_file", "%MR_TEST_ROOT%/two/Two.rc") +
                                           "<rc_file name=\"x\"/><other path=\"y\"/>"))));
  EXPECT_EQ(0, m_namer.m_error_count);
  EXPECT_EQ(1u, m_namer.m_libraries.size());
  EXPECT_EQ(2, m_namer.m_include_paths.GetSize());
}

TEST_F(Specification, ElementsElsewhereAreNotSelected) {
  EXPECT_EQ(0, process("<other><targets>" + target("", element("rc_file", "%MR_TEST_ROOT%/two/Two.rc")) +
                       "</targets></other>"));
  EXPECT_EQ(0,
            process("<rc_map>" + target("", element("rc_file", "%MR_TEST_ROOT%/two/Two.rc")) + "</rc_map>"));
  EXPECT_EQ(0, process("<rc_map><targets><target>" + element("rc_file", "%MR_TEST_ROOT%/two/Two.rc") +
                       "</target></targets></rc_map>"));
  EXPECT_TRUE(m_namer.m_libraries.empty());
}

TEST_F(Specification, ReportsAMissingScriptByItsExpandedPathAndGoesOn) {
  EXPECT_EQ(0, process(document(target("", element("rc_file", "%MR_TEST_ROOT%/none/../None.rc") +
                                               element("rc_file", "%MR_TEST_ROOT%/two/Two.rc")))));
  EXPECT_EQ((std::vector<std::string>{"Cannot find required rc file '" +
                                      m_installation.tree.path("None.rc").str() + "'"}),
            m_namer.errors);
  EXPECT_EQ("", m_namer.dialogs("two"));
}

TEST_F(Specification, AFolderIsNoScript) {
  m_installation.tree.make_folder("folder.rc");
  process(document(target("", element("rc_file", "%MR_TEST_ROOT%/folder.rc"))));
  EXPECT_EQ((std::vector<std::string>{"Cannot find required rc file '" +
                                      m_installation.tree.path("folder.rc").str() + "'"}),
            m_namer.errors);
}

TEST_F(Specification, ReportsAScriptThatFailedByItsExpandedPathAndGoesOn) {
  m_installation.tree.write("two/Bad.rc", "#include \"none.h\"\n");
  EXPECT_EQ(0, process(document(target("", element("rc_file", "%MR_TEST_ROOT%/two/Bad.rc") +
                                               element("rc_file", "%MR_TEST_ROOT%/two/Two.rc")))));
  EXPECT_EQ((std::vector<std::string>{"Cannot find header file: none.h",
                                      "Failed to process required rc file '" +
                                          m_installation.tree.path("two/Bad.rc").str() + "'"}),
            m_namer.errors);
  EXPECT_EQ(2u, m_namer.m_libraries.size());
}

TEST_F(Specification, AMissingIncludeOfASharedHeaderIsReportedOnceForAllTargets) {
  m_installation.tree.write("a.dev/a.h", "#define IDD_A 101\n#include \"missing.h\"\n#define IDC_A 11\n");
  EXPECT_EQ(0, process(both_targets()));
  EXPECT_EQ((std::vector<std::string>{"Cannot find header file: missing.h",
                                      "Failed to process required rc file '" +
                                          m_installation.tree.path("one/One.rc").str() + "'"}),
            m_namer.errors)
      << "the second target takes the header as read";
  EXPECT_EQ("a general", m_namer.groups("two"));
  EXPECT_EQ("101 IDD_A: 11=IDC_A", m_namer.dialogs("one"));
}

TEST_F(Specification, AMissingIncludeOfEachScriptIsReportedForEach) {
  for (const char* script : {"one/One.rc", "two/Two.rc"})
    m_installation.tree.write(script, "#include \"missing.h\"\n");
  EXPECT_EQ(0, process(both_targets()));
  EXPECT_EQ(4u, m_namer.errors.size()) << "nobody has read these before";
}

TEST_F(Specification, ThatDoesNotLoadChangesNothing) {
  m_namer.m_include_paths.Add("untouched");
  EXPECT_EQ(S_FALSE, m_namer.process_spec_file(m_installation.tree.path("none.xml")));
  EXPECT_EQ(S_FALSE, m_namer.process_spec_file(m_installation.tree.root()));
  for (const char* text :
       {"", "no document", "<rc_map>", "<rc_map></rc_maps>", "<a/><b/>", "<rc_map x=1/>", "\xFF\xFE"})
    EXPECT_EQ(S_FALSE, process(text)) << text;
  EXPECT_EQ(2, m_namer.m_include_paths.GetSize());
  EXPECT_EQ(0, m_namer.m_error_count);
  EXPECT_TRUE(m_namer.m_headers.empty());
}

TEST_F(Specification, LiesAnywhere) {
  const CString path = m_installation.tree.write("50%20 #1/sp\xE9"
                                                 "c.xml",
                                                 both_targets());
  EXPECT_EQ(0, m_namer.process_spec_file(path));
  EXPECT_EQ(2u, m_namer.m_libraries.size());
}

TEST_F(Specification, MayBeInUnicode) {
  std::string wide = "\xFF\xFE";
  for (const char ch : both_targets())
    if (ch != '\0')
      wide += {ch, '\0'};
  EXPECT_EQ(0, process(wide));
  EXPECT_EQ(2u, m_namer.m_libraries.size());
}

TEST_F(Specification, NothingOutsideItIsRead) {
  const std::string rc_file = element("rc_file", "%MR_TEST_ROOT%/two/&outside;");
  m_installation.tree.write("outside.txt", "Two.rc");
  for (const std::string& entity :
       {std::string("<!ENTITY outside SYSTEM \"outside.txt\">"),
        "<!ENTITY outside SYSTEM \"" + m_installation.tree.path("outside.txt").str() + "\">"}) {
    process("<!DOCTYPE rc_map [" + entity + "]>" + document(target("", rc_file)).substr(22));
    EXPECT_TRUE(m_namer.m_libraries.empty()) << entity;
  }
}

TEST_F(Specification, EntitiesThatMultiplyAreRefused) {
  std::string types = "<!ENTITY e0 \"xxxxxxxxxx\">";
  for (int i = 1; i < 12; ++i) {
    std::string references;
    for (int j = 0; j < 10; ++j)
      references += "&e" + std::to_string(i - 1) + ";";
    types += "<!ENTITY e" + std::to_string(i) + " \"" + references + "\">";
  }
  process("<!DOCTYPE rc_map [" + types + "]><rc_map>&e11;</rc_map>");
  EXPECT_TRUE(m_namer.m_libraries.empty());
}

// ---- comparison
// --------------------------------------------------------------------------------------------------

TEST_F(StoredMap, WithTheSameNamesLosesNothing) {
  testing::internal::CaptureStdout();
  EXPECT_EQ(0, check());
  EXPECT_EQ("Loading current resource map...\nChecking libraries...\nChecking headers...\n",
            testing::internal::GetCapturedStdout());
  EXPECT_EQ(0, m_namer.m_warning_count);
}

TEST(CheckOfAMap, SucceedsWithoutAStoredOne) {
  Installation installation;
  OpenNamer namer;
  namer.warning("from before");
  testing::internal::CaptureStdout();
  EXPECT_EQ(0, namer.check_res_map(mrIDNamer::get_res_file()));
  EXPECT_EQ("Loading current resource map...\n", testing::internal::GetCapturedStdout());
  EXPECT_EQ(0, namer.m_warning_count) << "counted anew";
}

TEST(CheckOfAMap, SucceedsWithAStoredOneThatCannotBeRead) {
  Installation installation;
  installation.write("ui_map.rcz", "no archive");
  OpenNamer namer;
  EXPECT_EQ(0, namer.check_res_map(mrIDNamer::get_res_file()));
}

TEST_F(StoredMap, LosesADialog) {
  module()->dialogs.erase(101);
  EXPECT_EQ(e_fail, check());
  EXPECT_EQ((std::vector<std::string>{"Library 'm': dialog 'IDD_A' not found."}), m_namer.warnings);
}

TEST_F(StoredMap, LosesADialogThatHasAnotherNumberOrName) {
  module()->dialogs[103] = std::move(module()->dialogs[101]);
  module()->dialogs.erase(101);
  module()->dialogs[102]->name = "IDD_OTHER";
  EXPECT_EQ(e_fail, check());
  EXPECT_EQ((std::vector<std::string>{"Library 'm': dialog 'IDD_A' not found.",
                                      "Library 'm': dialog 'IDD_B' not found."}),
            m_namer.warnings);
}

TEST_F(StoredMap, LosesControls) {
  module()->dialogs[101]->controls.erase(11);
  module()->dialogs[102]->controls[12] = "IDC_OTHER";
  EXPECT_EQ(e_fail, check());
  EXPECT_EQ((std::vector<std::string>{"Library 'm', dialog 'IDD_A': control 'IDC_A' not found.",
                                      "Library 'm', dialog 'IDD_B': control 'IDC_B' not found."}),
            m_namer.warnings);
}

TEST_F(StoredMap, LosesAConstantButNotItsNumber) {
  group()->constants.erase("IDC_A");
  group()->constants["IDC_B"] = 999;
  EXPECT_EQ(e_fail, check());
  EXPECT_EQ((std::vector<std::string>{"Header 'g': constant 'IDC_A' not found."}), m_namer.warnings);
  EXPECT_EQ(1, m_namer.m_warning_count);
}

TEST_F(StoredMap, NewNamesAreWelcome) {
  m_namer.add_constant("IDC_NEW", 99, group());
  module()->dialogs[101]->controls[99] = "IDC_NEW";
  m_namer.add_lib("new");
  EXPECT_EQ(0, check());
}

TEST_F(StoredMap, ModulesAndGroupsThatAreGoneAreNotCompared) {
  m_namer.clear_all();
  EXPECT_EQ(0, check());
}

TEST_F(StoredMap, ComparingLeavesTheModelAlone) {
  m_namer.m_libraries.find(std::string_view("m"))->second->dialogs.clear();
  m_namer.add_constant(CString("x"), CString("IDC_X"), 11);
  check();
  EXPECT_EQ("", m_namer.dialogs("m"));
  EXPECT_EQ("g.IDC_A x.IDC_X", m_namer.names(11));
  EXPECT_EQ(0, m_namer.m_error_count);
}

// ---- saving
// ------------------------------------------------------------------------------------------------------

TEST_F(StoredMap, UpdateRefusesToLoseNamesAndSavesNothing) {
  const std::string map = m_installation.read("ui_map.rcz"), constants = m_installation.read("ui_consts.js");
  group()->constants.erase("IDC_A");
  EXPECT_EQ(e_fail, m_namer.update_def_map());
  EXPECT_EQ(map, m_installation.read("ui_map.rcz"));
  EXPECT_EQ(constants, m_installation.read("ui_consts.js"));
  EXPECT_EQ("IDC_B=12 IDD_A=101 IDD_B=102", m_namer.constants("g")) << "the new model stays as it was built";
}

TEST_F(StoredMap, UpdateSavesWhenNothingIsLost) {
  m_namer.add_constant("IDC_NEW", 99, group());
  testing::internal::CaptureStdout();
  EXPECT_EQ(0, m_namer.update_def_map());
  EXPECT_EQ("Loading current resource map...\nChecking libraries...\nChecking headers...\nSaving new map...\n"
            "Reloading map...\nSaving constants...\n",
            testing::internal::GetCapturedStdout());
  mrIDNamer loaded;
  EXPECT_EQ(0, loaded.load_def_map());
  EXPECT_EQ("g.IDC_NEW", loaded.get_definition(99, "", 0, ""));
}

TEST_F(StoredMap, UpdateSucceedsEvenWhenSavingDoesNot) {
  m_installation.remove_documents();
  m_installation.write("headers", "a file where the folder must be");
  EXPECT_EQ(0, m_namer.update_def_map());
  fill(m_namer);
  EXPECT_GT(0, m_namer.save_def_map());
}

TEST_F(StoredMap, SavingReloadsWhatWasStored) {
  // A control whose name nothing defines is stored and cannot be loaded.
  module()->dialogs[101]->controls[13] = "IDC_LOST";
  group()->path = "c:\\g.h";
  EXPECT_EQ(0, m_namer.save_def_map());
  EXPECT_EQ("101 IDD_A: 11=IDC_A 12=IDC_B; 102 IDD_B: 11=IDC_A 12=IDC_B", m_namer.dialogs("m"));
  EXPECT_EQ((std::vector<std::string>{"dialog (IDD_A), control id 'IDC_LOST' not found"}), m_namer.errors);
  EXPECT_EQ("", group()->path);
}

TEST_F(StoredMap, SavingWritesTheConstantsScriptOfTheStoredMap) {
  m_installation.write("headers/gone.xml",
                       "<constants><constant name=\"IDC_GONE\" value=\"8\"/></constants>");
  EXPECT_EQ(0, m_namer.save_def_map());
  EXPECT_EQ("var o=null;\r\nvar g=new Object(); o=g;\r\n o.IDC_A=11;\r\n o.IDC_B=12;\r\n o.IDD_A=101;\r\n"
            " o.IDD_B=102;\r\nvar gone=new Object(); o=gone;\r\n o.IDC_GONE=8;\r\n",
            m_installation.read("ui_consts.js"))
      << "documents of groups that are gone are stored again";
}

TEST_F(StoredMap, NothingElseIsWritten) {
  EXPECT_EQ((std::vector<std::string>{"file/ui_recording/headers/g.xml", "file/ui_recording/res/m.xml",
                                      "file/ui_recording/ui_consts.js", "file/ui_recording/ui_map.rcz"}),
            m_installation.everything());
}

// ---- the constants script at work
// --------------------------------------------------------------------------------

namespace {

// "a.X | b.Y" is a.X and b.Y.
std::vector<std::string> parts_of(const std::string& definition) {
  constexpr std::string_view joint = " | ";
  std::vector<std::string> parts;
  size_t begin = 0;
  for (size_t end; (end = definition.find(joint, begin)) != std::string::npos; begin = end + joint.size())
    parts.push_back(definition.substr(begin, end - begin));
  parts.push_back(definition.substr(begin));
  return parts;
}

}  // namespace

TEST(ConstantsScriptInTheEngine, KnowsEveryNameThatALookupAnswers) {
  Installation installation;
  OpenNamer namer;
  mrLibraryRes* const module = namer.add_lib("m");
  mrHeader* const group = namer.add_header(module, "editor", "");
  std::set<int64_t> numbers;
  for (int i = 0; i < 300; ++i) {
    const int64_t number =
        i % 7 == 0 ? 1000 + i % 50 : 0x7FFFFF00LL + i * 40000;  // doubles, and beyond 31 bits
    numbers.insert(number);
    namer.add_constant(CString("ID") + (i % 2 ? "C_" : "M_") + std::to_string(i).c_str(), number, group);
    namer.mrIDNamer::add_constant(CString(i % 3 ? "general" : "viewer"),
                                  CString("IDM_") + std::to_string(i).c_str(), number);
  }
  namer.add_constant("IDD_A", 101, group);
  module->dialogs[101] = std::make_unique<mrDialogRes>();
  module->dialogs[101]->name = "IDD_A";
  module->dialogs[101]->library = module;
  for (const auto& [name, number] : group->constants)
    module->dialogs[101]->controls[number] = name;
  ASSERT_EQ(0, namer.save_def_map());

  ScriptEngine engine;
  ASSERT_EQ("", engine.run(installation.read("ui_consts.js")));
  size_t joined = 0;
  for (const int64_t number : numbers) {
    const std::string expected = "number " + std::to_string(static_cast<int32_t>(number));
    for (const uint32_t dialog : {0u, 101u}) {
      const CString definition = namer.get_definition(number, "IDC_", dialog, "m");
      joined += definition.Find(" | ") >= 0;
      EXPECT_EQ(expected, engine.evaluate(definition.str())) << definition.str();
      // Each name on its own too: a missing one is 0 to the bitwise or.
      for (const std::string& name : parts_of(definition.str()))
        EXPECT_EQ(expected, engine.evaluate(name)) << name << " of " << definition.str();
    }
  }
  EXPECT_LT(10u, joined);
}

TEST(ConstantsScriptInTheEngine, RunsForAnEmptyModelToo) {
  Installation installation;
  OpenNamer namer;
  ASSERT_EQ(0, namer.save_def_map());
  ScriptEngine engine;
  EXPECT_EQ("", engine.run(installation.read("ui_consts.js")));
  EXPECT_EQ("text null", engine.evaluate("'' + o"));
}
