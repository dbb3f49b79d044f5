// The parts of mrmap that no run of it reaches on demand: checks of a map that went wrong between being
// written and being read back, and failures of the system.
#include "apps/mrmap/mrMapChecks.h"
#include "apps/mrmap/mrMapNamer.h"
#include "apps/mrmap/mrMapStage.h"
#include "apps/mrmap/mrPaths.h"
#include "tests/namer/installation.h"
#include "tests/namer/replaced_import.h"
#include "tests/namer/script_engine.h"
#include "tests/support/files.h"

#include <windows.h>
#include <objbase.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <sstream>
#include <stdexcept>

using testing::EndsWith;
using testing::IsEmpty;

namespace {

// The message of what a function throws; empty when it throws nothing.
template <class Function>
std::string failure_of(Function function) {
  try {
    function();
    return std::string();
  } catch (const std::runtime_error& e) {
    return e.what();
  }
}

// A map that has been saved in its stage.
class SavedMap : public testing::Test {
protected:
  SavedMap() : m_stage(m_target) {
    m_namer.add_constant("g", "IDC_A", 11);
    m_namer.add_constant("h", "IDC_B", 12);
    EXPECT_EQ(0, m_namer.save_def_map());
  }
  std::string check() {
    return failure_of([&] { expect_whole(m_stage, m_namer, m_target); });
  }

  Installation m_installation;
  const CString m_target = m_installation.tree.path("file/ui_recording");
  mrMapNamer m_namer;
  mrMapStage m_stage;
};

constexpr char no_archive[] = "file\\ui_recording\\ui_map.rcz could not be written";
constexpr char no_script[] = "file\\ui_recording\\ui_consts.js could not be written";

}  // namespace

// ---- a saved map
// -------------------------------------------------------------------------------------------------

TEST_F(SavedMap, IsWholeAsItWasWritten) { EXPECT_EQ("", check()); }

TEST_F(SavedMap, IsNotWholeWithoutAnArchive) {
  DeleteFileA(m_stage.map_file());
  EXPECT_THAT(check(), EndsWith(no_archive));
}

TEST_F(SavedMap, IsNotWholeWithAnArchiveOfAnotherModel) {
  m_namer.add_constant("h", "IDC_C", 13);
  EXPECT_THAT(check(), EndsWith(no_archive));
}

TEST_F(SavedMap, IsNotWholeWithoutAConstantsScript) {
  DeleteFileA(m_stage.constants_file());
  EXPECT_THAT(check(), EndsWith(no_script));
}

TEST_F(SavedMap, IsNotWholeWhenTheConstantsScriptIsCutShort) {
  const std::string path = m_stage.constants_file().str();
  const std::string script = read_file(path);
  EXPECT_THAT(script, EndsWith(" o.IDC_B=12;\r\n"));
  // On a line's end too: such a script runs, and knows less.
  write_file(path, script.substr(0, script.find(" o.IDC_B")));
  EXPECT_THAT(check(), EndsWith(no_script));
}

TEST_F(SavedMap, IsNotWholeWithAnEmptyConstantsScript) {
  write_file(m_stage.constants_file().str(), "");
  EXPECT_THAT(check(), EndsWith(no_script));
}

TEST_F(SavedMap, IsNotWholeWhenTheConstantsScriptCannotBeWrittenAgain) {
  CreateDirectoryA(m_stage.aside("ui_consts.js"), nullptr);
  EXPECT_THAT(check(), EndsWith(no_script));
}

// ---- putting the new map in place
// ---------------------------------------------------------------------------------

namespace {

// Called behind every rename; renames_until_failure counts down to one that fails.
std::function<void()> after_rename;
int renames_until_failure = -1;  // never

BOOL WINAPI watched_rename(const char* from, const char* to, DWORD flags) {
  if (renames_until_failure >= 0 && renames_until_failure-- == 0) {
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
  }
  const BOOL moved = MoveFileExW(std::wstring(from, from + strlen(from)).c_str(),
                                 std::wstring(to, to + strlen(to)).c_str(), flags);
  const DWORD error = GetLastError();
  if (moved && after_rename)
    after_rename();
  SetLastError(error);
  return moved;
}

// The names that a constants script gives a number, as "key.NAME".
std::set<std::string> names_of_script(const std::string& script) {
  std::set<std::string> names;
  std::istringstream lines(script);
  std::string key;
  for (std::string line; std::getline(lines, line);) {
    if (line.compare(0, 4, "var ") == 0)
      key = line.substr(4, line.find('=') - 4);
    else if (line.compare(0, 3, " o.") == 0)
      names.insert(key + "." + line.substr(3, line.find('=') - 3));
  }
  return names;
}

std::set<std::string> names_of(const mrMapNamer& model) {
  std::set<std::string> names;
  for (const auto& [key, group] : model.headers())
    for (const auto& [name, value] : group->constants)
      names.insert(key.str() + "." + name.str());
  return names;
}

struct ExchangeCase {
  const char* name;
  bool headers, modules, archive;  // what there is of the old map
};

constexpr ExchangeCase exchange_cases[] = {
    // clang-format off
    {"all of the old map",               true,  true,  true},
    {"its archive",                      false, false, true},
    {"its folders",                      true,  true,  false},
    {"one folder and the archive",       true,  false, true},
    {"the other folder and the archive", false, true,  true},
    // clang-format on
};

// The new map lacks a name and a group of the old one, as after a build that is forced and cleans.
class Exchange : public testing::Test {
protected:
  Exchange() {
    m_old.add_constant("g", "IDC_A", 11);
    m_old.add_constant("g", "IDC_LOST", 12);
    m_old.add_constant("gone", "IDC_GONE", 13);
    m_new.add_constant("g", "IDC_A", 14);
    m_new.add_constant("g", "IDC_NEW", 15);
  }
  ~Exchange() override {
    after_rename = nullptr;
    renames_until_failure = -1;
  }
  void save_old(const ExchangeCase& c) {
    remove_folder(join(m_target, "headers"));
    remove_folder(join(m_target, "res"));
    EXPECT_EQ(0, m_old.save_def_map()) << c.name;
    m_case = c;
  }
  // Makes the new map beside the old one and puts it in place; what that throws.
  std::string exchange() {
    mrMapStage stage(m_target);
    if (is_file(join(stage.folder(), "headers\\gone.xml")))
      remove_file(join(stage.folder(), "headers\\gone.xml"));
    EXPECT_EQ(0, m_new.save_def_map());
    expect_whole(stage, m_new, m_target);
    if (!m_case.headers)
      remove_folder(join(m_target, "headers"));
    if (!m_case.modules)
      remove_folder(join(m_target, "res"));
    if (!m_case.archive)
      remove_file(join(m_target, "ui_map.rcz"));
    const ReplacedImport rename(nullptr, "MoveFileExA", reinterpret_cast<void*>(watched_rename));
    return failure_of([&] { stage.put_in_place(m_new); });
  }
  std::string script() const { return m_installation.read("ui_consts.js"); }
  // Whether the map that is read is the new one. Expects it whole, and a script that knows its names.
  bool expect_a_map(const std::string& when) const {
    mrQuietNamer stored;
    EXPECT_EQ(0, stored.load_res_map(join(m_target, "ui_map.rcz"))) << when;
    EXPECT_NE(stored.same_model(m_old), stored.same_model(m_new)) << when;
    const std::set<std::string> known = names_of_script(script());
    for (const std::string& name : names_of(stored))
      EXPECT_EQ(1u, known.count(name)) << when << ": " << name;
    return stored.same_model(m_new);
  }

  Installation m_installation;
  const CString m_target = m_installation.tree.path("file/ui_recording");
  mrMapNamer m_old, m_new;
  ExchangeCase m_case = exchange_cases[0];
};

}  // namespace

TEST_F(Exchange, LeavesAWholeMapAndAScriptThatKnowsItsNamesBehindEveryRename) {
  for (const ExchangeCase& c : exchange_cases) {
    save_old(c);
    int renames = 0;
    bool is_new = false;
    after_rename = [&] {
      const std::string when = std::string(c.name) + ", rename " + std::to_string(++renames);
      const bool was_new = is_new;
      is_new = expect_a_map(when);
      EXPECT_TRUE(is_new || !was_new) << when << ": there is no way back";
    };
    EXPECT_EQ("", exchange()) << c.name;
    EXPECT_EQ(5 + c.headers + c.modules, renames) << c.name;
    EXPECT_TRUE(is_new) << c.name;
    EXPECT_EQ(names_of(m_new), names_of_script(script())) << c.name;
  }
}

TEST_F(Exchange, PutsTheOldMapBackWhateverRenameFails) {
  for (const ExchangeCase& c : exchange_cases) {
    int failing = 0;
    for (;; ++failing) {
      save_old(c);
      const std::string old_script = script();
      const std::string when = std::string(c.name) + ", without rename " + std::to_string(failing);
      after_rename = [&] { expect_a_map(when); };  // on the way back too
      renames_until_failure = failing;
      if (exchange().empty())
        break;
      EXPECT_FALSE(expect_a_map(when));
      EXPECT_EQ(old_script, script()) << when;
      EXPECT_EQ(c.headers, is_folder(join(m_target, "headers"))) << when;
      EXPECT_EQ(c.modules, is_folder(join(m_target, "res"))) << when;
      EXPECT_EQ(c.archive, is_file(join(m_target, "ui_map.rcz"))) << when;
    }
    EXPECT_EQ(5 + c.headers + c.modules, failing) << c.name << ": every rename has failed once";
    renames_until_failure = -1;
  }
}

// ---- names in the constants script
// -------------------------------------------------------------------------------

TEST(ScriptWarning, ComesForEveryNameThatTheScriptCannotHold) {
  Installation installation;
  struct {
    const char* key;
    const char* name;
    bool warned;
  } const cases[] = {
      // clang-format off
      {"general", "IDC_A",     false},
      {"_2",      "AFX_IDW_1", false},
      {"oo",      "o",         false},
      {"$",       "ID$",       false},
      {"object",  "Object",    false},
      {"News",    "newer",     false},
      {"p\xE9",   "ID_\xE9",   false},  // a letter in the code page
      {"",        "IDC_A",     true},
      {"g",       "",          true},
      {"2d",      "IDC_A",     true},
      {"my-app",  "IDC_A",     true},
      {"g",       "IDC_A-",    true},
      {"my app",  "IDC_A",     true},
      {"g",       "IDC.A",     true},
      {"new",     "IDC_A",     true},
      {"with",    "IDC_A",     true},
      {"g",       "while",     true},
      {"o",       "IDC_A",     true},
      {"Object",  "IDC_A",     true},
      {"p\xD7",   "IDC_A",     true},  // a sign in the code page
      // clang-format on
  };
  const HRESULT com = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  for (const auto& c : cases) {
    mrMapNamer namer;
    namer.add_constant(c.key, c.name, 5);
    namer.add_constant("zz", "IDC_LAST", 6);
    EXPECT_EQ(c.warned ? 1u : 0u, script_warnings(namer).size()) << c.key << "." << c.name;

    const CString path = installation.path("script.js");
    ASSERT_EQ(1, namer.save_all_declarations(path));
    ScriptEngine engine;
    const bool ran = engine.run(read_file(path.str())).empty();
    const bool known = ran && engine.evaluate(c.key + std::string(".") + c.name) == "number 5" &&
                       engine.evaluate("zz.IDC_LAST") == "number 6";
    EXPECT_EQ(!c.warned, known) << c.key << "." << c.name;
  }
  if (SUCCEEDED(com))
    CoUninitialize();
}

TEST(ScriptWarning, ComesForEveryReservedWord) {
  // Those for later versions too: engines differ in which of them they take.
  for (const char* word :
       {"abstract",   "boolean", "break",     "byte",         "case",      "catch",  "char",
        "class",      "const",   "continue",  "debugger",     "default",   "delete", "do",
        "double",     "else",    "enum",      "export",       "extends",   "false",  "final",
        "finally",    "float",   "for",       "function",     "goto",      "if",     "import",
        "implements", "in",      "int",       "interface",    "long",      "native", "instanceof",
        "new",        "null",    "package",   "private",      "protected", "public", "return",
        "short",      "static",  "super",     "synchronized", "switch",    "this",   "throw",
        "throws",     "true",    "transient", "try",          "typeof",    "var",    "void",
        "volatile",   "while",   "with"}) {
    mrMapNamer namer;
    namer.add_constant(word, word, 5);
    EXPECT_EQ(2u, script_warnings(namer).size()) << word;
  }
}

TEST(ScriptWarning, DoesNotComeForAnEmptyModel) { EXPECT_THAT(script_warnings(mrMapNamer()), IsEmpty()); }

// ---- folders and files
// -------------------------------------------------------------------------------------------

TEST(Paths, AFolderThatCannotBeMadeIsReportedWithItsOwnReason) {
  // The reason must be that of making it, not of the question whether it is there. For a name of the system
  // these two differ.
  const CString path = "\\\\.\\pipe\\mrmap_test_folder";
  ASSERT_FALSE(CreateDirectoryA(path, nullptr));
  const std::string expected = failure_of([&] { throw_system_error(path, "made"); });
  EXPECT_EQ(expected, failure_of([&] { make_folder(path); }));
}

TEST(Paths, AFolderThatIsNotThereHasNoNames) {
  EXPECT_THAT(names_in("c:\\no folder of this name"), IsEmpty());
}

TEST(Paths, AReadOnlyFileIsCopiedReplacedAndRemoved) {
  mrTestFolder folder;
  const CString one(folder.path("one")), two(folder.path("two"));
  write_file(one.str(), "1");
  ASSERT_TRUE(SetFileAttributesA(one, FILE_ATTRIBUTE_READONLY));
  copy_file(one, two);
  EXPECT_EQ(0u, GetFileAttributesA(two) & FILE_ATTRIBUTE_READONLY);
  move(two, one, true);
  EXPECT_FALSE(is_file(two));
  ASSERT_TRUE(SetFileAttributesA(one, FILE_ATTRIBUTE_READONLY));
  remove_file(one);
  EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(Paths, AFolderGoesWithTheReadOnlyFilesInIt) {
  mrTestFolder folder;
  const CString inner(folder.path("inner"));
  make_folder(inner);
  make_folder(join(inner, "deep"));
  write_file(join(join(inner, "deep"), "file").str(), "1");
  SetFileAttributesA(join(join(inner, "deep"), "file"), FILE_ATTRIBUTE_READONLY);
  SetFileAttributesA(join(inner, "deep"), FILE_ATTRIBUTE_READONLY);
  remove_folder(inner);
  EXPECT_THAT(folder.names(), IsEmpty());
}
