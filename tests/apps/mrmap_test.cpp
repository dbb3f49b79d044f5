// mrmap as a user has it: a process of its own, told by its output, its exit status and the files it leaves.
#include "tests/namer/installation.h"
#include "tests/namer/open_namer.h"
#include "tests/support/files.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <stdexcept>

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

constexpr DWORD end_limit_ms = 60000;

HANDLE create_inherited(const std::string& path) {
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  return CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS, 0, nullptr);
}

// One run of mrmap.exe.
class Mrmap {
public:
  explicit Mrmap(const std::string& arguments) {
    const HANDLE out = create_inherited(m_folder.path("out.txt"));
    const HANDLE err = create_inherited(m_folder.path("err.txt"));
    std::string command = "\"" + own_folder() + "mrmap.exe\" " + arguments;
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = out;
    startup.hStdError = err;
    const BOOL started = CreateProcessA(nullptr, &command[0], nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                        &startup, &m_process);
    CloseHandle(out);
    CloseHandle(err);
    if (!started)
      throw std::runtime_error("cannot start " + command);
  }
  ~Mrmap() {
    kill();
    CloseHandle(m_process.hThread);
    CloseHandle(m_process.hProcess);
  }
  Mrmap(const Mrmap&) = delete;
  Mrmap& operator=(const Mrmap&) = delete;

  // The exit status; -1 when it has not ended within the limit.
  int status() const { return ended_within(end_limit_ms) ? exit_code() : -1; }
  bool ended_within(DWORD ms) const { return WaitForSingleObject(m_process.hProcess, ms) == WAIT_OBJECT_0; }
  void kill() const {
    TerminateProcess(m_process.hProcess, 99);
    WaitForSingleObject(m_process.hProcess, end_limit_ms);
  }
  // With the line ends of the test's own texts.
  std::string out() const { return text("out.txt"); }
  std::string err() const { return text("err.txt"); }

private:
  int exit_code() const {
    DWORD code = 0;
    GetExitCodeProcess(m_process.hProcess, &code);
    return static_cast<int>(code);
  }
  std::string text(const char* name) const {
    std::string result;
    for (const char ch : read_file(m_folder.path(name)))
      if (ch != '\r')
        result += ch;
    return result;
  }

  mrTestFolder m_folder;
  PROCESS_INFORMATION m_process = {};
};

// Sources of one module, a specification, and an installation to build for.
class MapTool : public testing::Test {
protected:
  MapTool() {
    tree().write("sdk/winuser.h", "#define IDOK 1\n");
    tree().write("app.dev/ids.h", "#define IDD_A 101\n#define IDC_A 11\n#define IDM_A 11\n");
    write_script("");
    m_specification = tree().write("spec.xml", specification("app.dev/App.rc"));
  }

  SourceTree& tree() { return m_installation.tree; }
  std::string specification(const std::string& scripts) {
    const std::string root = tree().root().str();
    return "<rc_map><system_includes><include_dir path='" + root +
           "/sdk'/></system_includes><targets><target><rc_files>"
           "<rc_file path='" +
           root + "/" + scripts + "'/></rc_files></target></targets></rc_map>";
  }
  void write_script(const std::string& more_statements) {
    tree().write("app.dev/App.rc",
                 "#include \"ids.h\"\nIDD_A DIALOGEX 0, 0, 9, 9\nBEGIN\nEDITTEXT IDC_A, 5, 5, 5, 5\n" +
                     more_statements + "END\n");
  }
  std::string quoted_specification() const { return "\"" + m_specification.str() + "\""; }
  // Expects success, and answers what was printed.
  std::string build(const std::string& options = "") {
    const Mrmap mrmap("build " + quoted_specification() + " " + options);
    EXPECT_EQ(0, mrmap.status()) << mrmap.out() << mrmap.err();
    return mrmap.out();
  }
  std::string answer(const std::string& question) const {
    const Mrmap mrmap("lookup " + question);
    EXPECT_EQ(0, mrmap.status()) << mrmap.err();
    return mrmap.out();
  }
  // Makes every file of the resource folder read-only.
  void protect() const {
    for (const std::string& file : m_installation.everything()) {
      if (file.compare(0, 18, "file/ui_recording/") == 0)
        SetFileAttributesA(m_installation.path(file.substr(18)), FILE_ATTRIBUTE_READONLY);
    }
  }
  // Every file of the resource folder with its bytes.
  std::vector<std::string> resource_folder() const {
    std::vector<std::string> files;
    for (const std::string& file : m_installation.everything())
      if (file.compare(0, 18, "file/ui_recording/") == 0)
        files.push_back(file + "\n" + m_installation.read(file.substr(18)));
    return files;
  }
  void expect_failure(const std::string& arguments, const std::string& message) {
    const std::vector<std::string> before = resource_folder();
    const Mrmap mrmap(arguments);
    EXPECT_EQ(1, mrmap.status()) << mrmap.out();
    EXPECT_THAT(mrmap.err(), HasSubstr("mrmap: "));
    EXPECT_THAT(mrmap.err(), HasSubstr(message));
    EXPECT_EQ(before, resource_folder()) << "the old map is still there, whole";
  }

  Installation m_installation;
  CString m_specification;
};

constexpr char first_build[] =
    "Processing 'App.rc'...\n"
    "Loading current resource map...\n"
    "Saving new map...\n"
    "Reloading map...\n"
    "Saving constants...\n"
    "1 modules, 1 dialogs, 1 controls, 2 header groups, 4 constants, 0 warnings, 0 errors\n";

}  // namespace

// ---- usage
// -------------------------------------------------------------------------------------------------------

TEST_F(MapTool, TellsWhatWasTypedWrongly) {
  const char* const wrong[] = {
      "",
      "bild x.xml",
      "build",
      "build a.xml b.xml",
      "build a.xml --quick",
      "lookup",
      "lookup five",
      "lookup 5x",
      "lookup 0x",
      "lookup 0x0x1",
      "lookup 0x-1",
      "lookup --5",
      "lookup +5",
      "lookup \" 5\"",
      "lookup 5 6",
      "lookup 5 --dialog",
      "lookup 5 --module a --module b",
      "list",
      "list things",
      "list modules dialogs",
      "list modules --dialog IDD_A",
      "list modules --header app",
      "list modules --header \"\"",
      "list dialogs --header app",
      "list controls --header app",
      "list headers --dialog IDD_A",
      "list constants --dialog IDD_A",
      "path x",
      "lookup 99999999999999999999999",
  };
  for (const char* arguments : wrong) {
    const Mrmap mrmap(arguments);
    EXPECT_EQ(2, mrmap.status()) << arguments;
    EXPECT_THAT(mrmap.err(), HasSubstr("mrmap: ")) << arguments;
    EXPECT_THAT(mrmap.err(), HasSubstr("mrmap --help")) << arguments;
    EXPECT_THAT(mrmap.out(), IsEmpty()) << arguments;
  }
}

TEST_F(MapTool, Helps) {
  const Mrmap help("--help");
  EXPECT_EQ(0, help.status());
  for (const char* part : {"mrmap build SPEC.xml [--force] [--clean]", "mrmap lookup NUMBER", "mrmap list",
                           "mrmap path", "ZQ_APPLICATION_FOLDER", "Exit status"})
    EXPECT_THAT(help.out(), HasSubstr(part));
  const Mrmap version("--version");
  EXPECT_EQ(0, version.status());
  EXPECT_THAT(version.out(), testing::MatchesRegex("mrmap \\d+\\.\\d+\\.\\d+\n"));
}

TEST_F(MapTool, TellsTheResourceFolderInUse) {
  const Mrmap mrmap("path");
  EXPECT_EQ(0, mrmap.status());
  EXPECT_EQ(m_installation.tree.path("file/ui_recording").str() + "\n", mrmap.out());
}

// ---- build
// -------------------------------------------------------------------------------------------------------

TEST_F(MapTool, BuildsTheMap) {
  EXPECT_EQ(first_build, build());
  std::set<std::string> files;
  for (const std::string& file : m_installation.everything())
    if (file.compare(0, 5, "file/") == 0)
      files.insert(file.substr(18));
  EXPECT_EQ((std::set<std::string>{"headers/app.xml", "headers/general.xml", "res/app.xml", "ui_consts.js",
                                   "ui_map.rcz"}),
            files)
      << "and leaves nothing else";
  for (const char* from : {"folders", "archive"}) {
    OpenNamer namer;
    EXPECT_EQ(0, namer.load_def_map()) << from;
    EXPECT_EQ("101 IDD_A: 11=IDC_A", namer.dialogs("app")) << from;
    m_installation.remove_documents();
  }
  EXPECT_THAT(m_installation.read("ui_consts.js"),
              HasSubstr("var app=new Object(); o=app;\r\n o.IDC_A=11;\r\n"));
}

TEST_F(MapTool, ReplacesTheMapWhenNothingIsLost) {
  build();
  tree().write("app.dev/ids.h",
               "#define IDD_A 101\n#define IDC_A 12\n#define IDM_A 11\n#define IDM_NEW 13\n");
  write_script("");
  const Mrmap mrmap("build " + quoted_specification());
  EXPECT_EQ(4, mrmap.status()) << "a control that has another number is lost";
  EXPECT_EQ(0, Mrmap("build --force " + quoted_specification()).status());
  EXPECT_THAT(build(), EndsWith("5 constants, 0 warnings, 0 errors\n"));
  EXPECT_THAT(m_installation.read("ui_consts.js"), HasSubstr(" o.IDM_NEW=13;\r\n"));
}

TEST_F(MapTool, RefusesToLoseNames) {
  build();
  tree().write("app.dev/ids.h", "#define IDD_A 101\n#define IDC_A 11\n");
  const std::vector<std::string> before = resource_folder();
  const Mrmap refused("build " + quoted_specification());
  EXPECT_EQ(4, refused.status());
  EXPECT_EQ(
      "Processing 'App.rc'...\nLoading current resource map...\nChecking libraries...\nChecking headers...\n"
      "Warning: Header 'app': constant 'IDM_A' not found.\n"
      "1 modules, 1 dialogs, 1 controls, 2 header groups, 3 constants, 1 warnings, 0 errors\n",
      refused.out());
  EXPECT_THAT(refused.err(), HasSubstr("nothing was saved"));
  EXPECT_EQ(before, resource_folder());

  EXPECT_EQ(
      "Processing 'App.rc'...\nLoading current resource map...\nChecking libraries...\nChecking headers...\n"
      "Warning: Header 'app': constant 'IDM_A' not found.\n"
      "Saving new map...\nReloading map...\nSaving constants...\n"
      "1 modules, 1 dialogs, 1 controls, 2 header groups, 3 constants, 1 warnings, 0 errors\n",
      build("--force"));
  EXPECT_THAT(m_installation.read("ui_consts.js"), Not(HasSubstr("IDM_A")));
}

TEST_F(MapTool, ARebuildOfUnchangedSourcesCanBeRefused) {
  // Both headers are in the group "general", where the last definition of a name wins: the stored map knows
  // IDC_SAME as 22 in both dialogs, the sources of the first say 21.
  const std::string root = tree().root().str();
  for (const std::string module : {"1", "2"}) {
    tree().write("m" + module + "/ids.h",
                 "#define IDD_M" + module + " 20" + module + "\n#define IDC_SAME 2" + module + "\n");
    tree().write("m" + module + "/M" + module + ".rc",
                 "#include \"ids.h\"\nIDD_M" + module + " DIALOG\nBEGIN\nEDITTEXT IDC_SAME, 5\nEND\n");
  }
  tree().write("spec.xml", specification("m1/M1.rc'/><rc_file path='" + root + "/m2/M2.rc"));
  build();
  const Mrmap refused("build " + quoted_specification());
  EXPECT_EQ(4, refused.status());
  EXPECT_THAT(refused.out(),
              HasSubstr("Warning: Library 'm1', dialog 'IDD_M1': control 'IDC_SAME' not found.\n"));
}

TEST_F(MapTool, ErrorsInTheSourcesAreCountedAndNoFailure) {
  tree().write("app.dev/ids.h", "#define IDD_A 101\n#define IDC_A 11\n#include \"missing.h\"\n");
  write_script("EDITTEXT IDC_MISSING, 5\n");
  const std::string out = build();
  EXPECT_THAT(out, HasSubstr("Error: Cannot find header file: missing.h\n"));
  EXPECT_THAT(out, HasSubstr("Error: dialog (IDD_A), control id 'IDC_MISSING' not found\n"));
  EXPECT_THAT(out, HasSubstr("Error: Failed to process required rc file '"));
  EXPECT_THAT(
      out,
      EndsWith("1 modules, 1 dialogs, 1 controls, 2 header groups, 3 constants, 0 warnings, 3 errors\n"));
}

TEST_F(MapTool, DocumentsOfEarlierBuildsStayUnlessCleaned) {
  build();
  m_installation.write("headers/gone.xml", "<constants><constant name='IDC_GONE' value='5'/></constants>");
  m_installation.write("res/gone.xml", "<library/>");
  const Mrmap kept("build " + quoted_specification());
  EXPECT_EQ(0, kept.status());
  EXPECT_EQ(
      "mrmap: documents that this build does not write stay in the map: headers\\gone.xml, res\\gone.xml "
      "(--clean removes them)\n",
      kept.err());
  EXPECT_THAT(m_installation.read("ui_consts.js"), HasSubstr("IDC_GONE"));

  const Mrmap cleaned("build --clean " + quoted_specification());
  EXPECT_EQ(0, cleaned.status());
  EXPECT_EQ("", cleaned.err());
  EXPECT_THAT(
      cleaned.out(),
      EndsWith("1 modules, 1 dialogs, 1 controls, 2 header groups, 4 constants, 0 warnings, 0 errors\n"));
  EXPECT_FALSE(m_installation.exists("headers/gone.xml"));
  EXPECT_FALSE(m_installation.exists("res/gone.xml"));
  EXPECT_THAT(m_installation.read("ui_consts.js"), Not(HasSubstr("IDC_GONE")));
  m_installation.remove_documents();
  OpenNamer namer;
  EXPECT_EQ(0, namer.load_def_map());
  EXPECT_EQ("no group", namer.constants("gone"));
}

TEST_F(MapTool, NamesDocumentsOfEarlierBuildsAlsoWhenItRefuses) {
  build();
  m_installation.write("headers/gone.xml", "<constants/>");
  tree().write("app.dev/ids.h", "#define IDD_A 101\n#define IDC_A 11\n");
  constexpr char refusal[] = "mrmap: names would be lost, nothing was saved (--force saves all the same)\n";
  const Mrmap refused("build " + quoted_specification());
  EXPECT_EQ(4, refused.status());
  EXPECT_EQ("mrmap: documents that this build does not write stay in the map: headers\\gone.xml (--clean "
            "removes them)\n" +
                std::string(refusal),
            refused.err());
  const Mrmap cleaning("build --clean " + quoted_specification());
  EXPECT_EQ(4, cleaning.status());
  EXPECT_EQ(refusal, cleaning.err());
  EXPECT_TRUE(m_installation.exists("headers/gone.xml"));
}

TEST_F(MapTool, NamesADocumentOfAnEarlierBuildThatCannotBeRead) {
  for (const char* broken : {"headers/gone.xml", "res/gone.xml"}) {
    build();
    m_installation.write("headers/fine.xml", "<constants/>");
    m_installation.write(broken, "<constants>");
    const std::string name = std::string(broken).replace(std::string(broken).find('/'), 1, "\\");
    const std::vector<std::string> before = resource_folder();
    const Mrmap mrmap("build " + quoted_specification());
    EXPECT_EQ(1, mrmap.status()) << broken;
    EXPECT_THAT(mrmap.err(), testing::StartsWith("mrmap: documents that this build does not write stay in "
                                                 "the map: headers\\"))
        << broken;
    EXPECT_THAT(mrmap.err(), EndsWith("\nmrmap: the document " + name +
                                      ", which an earlier build left, cannot be read (--clean removes it)\n"))
        << broken;
    EXPECT_EQ(before, resource_folder()) << "the old map is still there, whole";
    build("--clean");
    EXPECT_FALSE(m_installation.exists(broken));
  }
}

TEST_F(MapTool, CleaningComparesWithTheWholeOldMap) {
  // The dialog's name is defined in a group that is gone: the old map knows its number through that group
  // alone.
  tree().write("more.dev/more.h", "#define IDD_B 102\n");
  write_script("END\n#include \"../more.dev/more.h\"\nIDD_B DIALOG\nBEGIN\n");
  build();
  write_script("");
  const std::vector<std::string> before = resource_folder();
  const Mrmap refused("build --clean " + quoted_specification());
  EXPECT_EQ(4, refused.status());
  EXPECT_THAT(refused.out(), HasSubstr("Warning: Library 'app': dialog 'IDD_B' not found.\n"));
  EXPECT_EQ(before, resource_folder());
  EXPECT_THAT(build("--clean --force"), HasSubstr("1 warnings, 0 errors\n"));
  EXPECT_FALSE(m_installation.exists("headers/more.xml"));
}

TEST_F(MapTool, OnlyDocumentsAreStale) {
  build();
  // Their short names end in ".xml".
  for (const char* other : {"headers/gone.xmlold", "headers/app.xml~", "res/gone.xmlold"})
    m_installation.write(other, "not of the map");
  m_installation.write("headers/gone.XML", "<constants/>");
  const Mrmap kept("build " + quoted_specification());
  EXPECT_EQ(0, kept.status());
  EXPECT_EQ(
      "mrmap: documents that this build does not write stay in the map: headers\\gone.XML (--clean removes "
      "them)\n",
      kept.err());
  build("--clean");
  for (const char* other : {"headers/gone.xmlold", "headers/app.xml~", "res/gone.xmlold"})
    EXPECT_EQ("not of the map", m_installation.read(other)) << other;
  EXPECT_FALSE(m_installation.exists("headers/gone.XML"));
}

TEST_F(MapTool, ReplacesReadOnlyFiles) {
  build();
  m_installation.write("headers/gone.xml", "<constants/>");
  for (const char* options : {"", "--clean", ""}) {
    protect();
    const std::string name = "IDM_NEW" + std::to_string(m_installation.read("headers/app.xml").size());
    tree().write("app.dev/ids.h",
                 "#define IDD_A 101\n#define IDC_A 11\n#define IDM_A 11\n#define " + name + " 5\n");
    build(std::string("--force ") + options);
    for (const char* file : {"headers/app.xml", "ui_consts.js"})
      EXPECT_THAT(m_installation.read(file), HasSubstr(name)) << file << options;
    for (const std::string& file : m_installation.everything())
      EXPECT_THAT(file, Not(HasSubstr("mrmap."))) << options;
  }
  EXPECT_FALSE(m_installation.exists("headers/gone.xml"));
}

TEST_F(MapTool, WarnsOfNamesThatScriptsCannotUse) {
  // One folder per group; SampleCad's own names and those of the platform are fine.
  std::string includes = "#include \"ids.h\"\n";
  for (const char* folder : {"new", "my-app", "2d", "o", "fine_2"}) {
    tree().write(std::string(folder) + ".dev/g.h", "#define IDC_G 5\n#define IDC_A-B 6\n");
    includes += "#include \"../" + std::string(folder) + ".dev/g.h\"\n";
  }
  tree().write("app.dev/App.rc", includes);
  m_installation.write("headers/.xml", "<constants><constant name='' value='5'/></constants>");
  m_installation.write("headers/Object.xml", "<constants><constant name='if' value='5'/></constants>");
  m_installation.write("res/gone.xml", "<library/>");
  const Mrmap mrmap("build " + quoted_specification());
  EXPECT_EQ(0, mrmap.status());
  std::string err = mrmap.err();
  err = err.substr(0, err.find("mrmap: documents")) +
        err.substr(err.find('\n', err.find("mrmap: documents")) + 1);
  constexpr char end[] = " no JScript identifier: scripts cannot use ui_consts.js\n";
  const auto warning = [&](const std::string& what) { return "mrmap: the " + what + end; };
  EXPECT_EQ(
      warning("group key '' is empty, which is") + warning("name '.' is empty, which is") +
          warning("group key '2d' is") + warning("name '2d.IDC_A-B' is") +
          "mrmap: the group key 'Object' hides what ui_consts.js itself uses: scripts cannot use its "
          "names\n" +
          warning("name 'Object.if' is a reserved word,") + warning("name 'fine_2.IDC_A-B' is") +
          warning("group key 'my-app' is") + warning("name 'my-app.IDC_A-B' is") +
          warning("group key 'new' is a reserved word,") + warning("name 'new.IDC_A-B' is") +
          "mrmap: the group key 'o' hides what ui_consts.js itself uses: scripts cannot use its names\n" +
          warning("name 'o.IDC_A-B' is"),
      err);
}

TEST_F(MapTool, ReadsSourcesThatAnEditorHasOpen) {
  const HANDLE editor = CreateFileA(tree().path("app.dev/ids.h"), GENERIC_READ | GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(INVALID_HANDLE_VALUE, editor);
  EXPECT_EQ(first_build, build());
  CloseHandle(editor);
}

// ---- failures
// ----------------------------------------------------------------------------------------------------

TEST_F(MapTool, NamesASpecificationThatCannotBeRead) {
  build();
  expect_failure("build none.xml", "none.xml");
  for (const char* text : {"", "<rc_map>", "no document"}) {
    const std::string path = tree().write("broken.xml", text).str();
    expect_failure("build \"" + path + "\"", path + " is not a well-formed XML document");
  }
  for (const char* text : {"<other/>", "<rc_map><targets><target/></targets></rc_map>"}) {
    const std::string path = tree().write("empty.xml", text).str();
    expect_failure("build \"" + path + "\"", path + " lists no resource script");
  }
  expect_failure("build \"" + tree().root().str() + "\"", tree().root().str());
}

TEST_F(MapTool, TellsWhyASpecificationCannotBeRead) {
  tree().lock("spec.xml");
  const Mrmap mrmap("build " + quoted_specification());
  EXPECT_EQ(1, mrmap.status());
  EXPECT_THAT(mrmap.err(), testing::StartsWith("mrmap: " + m_specification.str() + " could not be read: "));
}

TEST_F(MapTool, NamesAResourceFolderThatIsTooLong) {
  // Windows takes 259 characters. At 212 the longest document of the stage does not fit, from 218 on the
  // engine would not find the stage and take the developers' folder instead.
  const std::string root = tree().root().str();
  for (const int length : {211, 212, 217, 218, 245}) {
    const std::string name(static_cast<size_t>(length) - root.size() - 1 - 18, 'x');
    tree().make_folder(name + "/file/ui_recording");
    set_variable("ZQ_APPLICATION_FOLDER", tree().path(name + "/bin/x64"));
    const std::string folder = root + "\\" + name + "\\file\\ui_recording";
    ASSERT_EQ(static_cast<size_t>(length), folder.size());
    const Mrmap mrmap("build " + quoted_specification());
    if (length <= 211) {
      EXPECT_EQ(0, mrmap.status()) << mrmap.err();
      continue;
    }
    EXPECT_EQ(1, mrmap.status()) << length;
    EXPECT_THAT(mrmap.err(),
                testing::StartsWith("mrmap: the resource folder " + folder + " is too long: a build needs "))
        << length;
    EXPECT_THAT(mrmap.out(), Not(HasSubstr("Saving"))) << length;
  }
  for (const std::string& file : m_installation.everything())
    EXPECT_THAT(file, Not(HasSubstr("mrmap."))) << file;
}

TEST_F(MapTool, NamesTheResourceFolderThatDoesNotExist) {
  set_variable("ZQ_APPLICATION_FOLDER", tree().path("elsewhere/bin/x64"));
  const Mrmap mrmap("build " + quoted_specification());
  EXPECT_EQ(1, mrmap.status());
  EXPECT_THAT(mrmap.err(), HasSubstr("P:\\devel\\utestsuite\\scriptinclude does not exist"));
}

TEST_F(MapTool, KeepsTheOldMapWhenAFileCannotBeReplaced) {
  build();
  for (const char* file : {"ui_consts.js", "ui_map.rcz"}) {
    const std::string contents = m_installation.read(file);
    m_installation.remove(file);
    tree().make_folder(std::string("file/ui_recording/") + file);  // a folder in the way
    expect_failure("build " + quoted_specification(), file);
    RemoveDirectoryA(m_installation.path(file));
    m_installation.write(file, contents);
  }
  EXPECT_EQ(0, Mrmap("build " + quoted_specification()).status());
}

TEST_F(MapTool, KeepsTheOldMapWhenTheNewOneCannotBeWritten) {
  build();
  // A folder where a document must go.
  m_installation.remove("headers/general.xml");
  tree().make_folder("file/ui_recording/headers/general.xml");
  expect_failure("build " + quoted_specification(), "ui_map.rcz could not be written");
}

TEST_F(MapTool, AnArchiveOfTheOldMapDoesNotHideThatSavingFailed) {
  build();
  // The new module declares nothing new, so that without its document the old archive seems to hold the
  // model.
  const std::string root = tree().root().str();
  tree().write("zed.dev/Zed.rc", "");
  tree().write("spec.xml", specification("app.dev/App.rc'/><rc_file path='" + root + "/zed.dev/Zed.rc"));
  tree().make_folder("file/ui_recording/res/zed.xml");
  expect_failure("build " + quoted_specification(), "ui_map.rcz could not be written (0x8");
  expect_failure("build --clean --force " + quoted_specification(), "ui_map.rcz could not be written (0x8");
}

TEST_F(MapTool, TakesNothingAlongThatAnEarlierBuildLeft) {
  build();
  m_installation.write("mrmap.new/file/ui_recording/headers/half.xml", "<constants/>");
  tree().lock("file/ui_recording/mrmap.new/file/ui_recording/headers/half.xml");
  const Mrmap mrmap("build " + quoted_specification());
  EXPECT_EQ(1, mrmap.status());
  EXPECT_THAT(mrmap.err(), HasSubstr("mrmap.new could not be removed"));
  EXPECT_EQ("101 IDD_A: 11=IDC_A", [] {
    OpenNamer namer;
    namer.load_def_map();
    return namer.dialogs("app");
  }());
}

TEST_F(MapTool, LetsOnlyOneBuildWork) {
  build();
  const HANDLE lock = CreateFileA(m_installation.path("mrmap.lock"), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                  FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  ASSERT_NE(INVALID_HANDLE_VALUE, lock);
  const Mrmap mrmap("build " + quoted_specification());
  EXPECT_EQ(1, mrmap.status());
  EXPECT_EQ("mrmap: another mrmap builds this map\n", mrmap.err());
  CloseHandle(lock);
}

TEST_F(MapTool, NamesTheFileThatKeepsItFromWriting) {
  build();
  tree().make_folder("file/ui_recording/mrmap.lock");
  expect_failure("build " + quoted_specification(),
                 m_installation.path("mrmap.lock").str() + " could not be written: ");
  RemoveDirectoryA(m_installation.path("mrmap.lock"));

  m_installation.write("mrmap.new", "a file");
  expect_failure("build " + quoted_specification(),
                 m_installation.path("mrmap.new").str() + " could not be made: ");
  EXPECT_EQ("a file", m_installation.read("mrmap.new")) << "not ours to remove";
  m_installation.remove("mrmap.new");
  EXPECT_EQ(0, Mrmap("build " + quoted_specification()).status());
}

TEST_F(MapTool, RemovesWhatAKilledBuildLeft) {
  build();
  const std::vector<std::string> clean = resource_folder();
  m_installation.write("mrmap.new/file/ui_recording/headers/half.xml", "<constants>");
  m_installation.write("mrmap.new/old/ui_map.rcz", "old");
  m_installation.write("mrmap.lock", "");
  build();
  std::vector<std::string> names;
  for (const std::string& file : m_installation.everything())
    EXPECT_THAT(file, Not(HasSubstr("mrmap."))) << file;
  EXPECT_EQ(clean.size(), resource_folder().size());
}

TEST_F(MapTool, AKilledBuildLeavesAWholeMap) {
  constexpr int groups = 12;
  std::string includes;
  for (int i = 0; i < groups; ++i)
    includes += "#include \"../g" + std::to_string(i) + ".dev/g.h\"\n";
  tree().write("app.dev/App.rc", "#include \"ids.h\"\n" + includes);
  const auto write_headers = [&](int value) {
    for (int i = 0; i < groups; ++i)
      tree().write("g" + std::to_string(i) + ".dev/g.h", "#define IDC_G " + std::to_string(value) + "\n");
  };
  write_headers(0);
  build();

  std::mt19937 random(7);
  int stored = 0, killed = 0;
  DWORD fastest_ms =
      end_limit_ms;  // of the builds that were let live: killing within it nearly always comes in time
  for (int value = 1; value <= 15; ++value) {
    write_headers(value);
    const bool let_live = value <= 2;
    const DWORD start = GetTickCount();
    Mrmap mrmap("build " + quoted_specification());
    if (mrmap.ended_within(let_live ? end_limit_ms : random() % fastest_ms)) {
      fastest_ms = std::min(fastest_ms, GetTickCount() - start + 1);
    } else {
      mrmap.kill();
      ++killed;
    }
    OpenNamer namer;
    ASSERT_EQ(0, namer.load_def_map()) << value;
    const std::string first = namer.constants("g0");
    ASSERT_TRUE(first == "IDC_G=" + std::to_string(stored) || first == "IDC_G=" + std::to_string(value))
        << first;
    for (int i = 0; i < groups; ++i)
      ASSERT_EQ(first, namer.constants(("g" + std::to_string(i)).c_str())) << "a mixture of two maps";
    stored = std::stoi(first.substr(6));
    const std::string script = m_installation.read("ui_consts.js");
    EXPECT_THAT(script, HasSubstr("o.IDOK=1;\r\n"));
  }
  EXPECT_LT(0, killed) << "the test must kill something";
  write_headers(100);
  build();
}

// ---- questions
// ---------------------------------------------------------------------------------------------------

TEST_F(MapTool, LooksUpNumbers) {
  tree().write("two.dev/ids.h", "#define IDD_T 102\n#define IDC_T 11\n");
  tree().write("two.dev/Two.rc", "#include \"ids.h\"\nIDD_T DIALOG\nBEGIN\nEDITTEXT IDC_T, 5\nEND\n");
  tree().write("spec.xml",
               specification("app.dev/App.rc'/><rc_file path='" + tree().root().str() + "/two.dev/Two.rc"));
  build();
  struct {
    const char* arguments;
    const char* expected;
  } const cases[] = {
      {"11", "app.IDC_A | app.IDM_A | two.IDC_T"},
      {"0xB", "app.IDC_A | app.IDM_A | two.IDC_T"},
      {"11 --prefix app", "app.IDC_A | app.IDM_A"},
      {"11 --dialog 101", "app.IDC_A"},
      {"11 --dialog 0x66", "two.IDC_T"},
      {"11 --dialog IDD_T", "two.IDC_T"},
      {"11 --dialog IDD_A --module APP", "app.IDC_A"},
      {"11 --dialog IDD_A --module appd", "app.IDC_A"},
      {"11 --dialog 102 --module app", "app.IDC_A | app.IDM_A | two.IDC_T"},
      {"--dialog IDD_A 11", "app.IDC_A"},
      {"010", "10"},
      {"57600", "57600"},
      {"-1", "-1"},
      {"4294967295", "-1"},
  };
  for (const auto& c : cases) {
    const Mrmap mrmap(std::string("lookup ") + c.arguments);
    EXPECT_EQ(0, mrmap.status()) << c.arguments;
    EXPECT_EQ(c.expected + std::string("\n"), mrmap.out()) << c.arguments;
    EXPECT_EQ("", mrmap.err()) << c.arguments;
  }
  expect_failure("lookup 11 --dialog IDD_NONE", "the resource map holds no dialog IDD_NONE");
  expect_failure("lookup 11 --dialog IDD_A --module two", "the resource map holds no dialog IDD_A");
  expect_failure("lookup 11 --dialog IDD_A --module none", "the resource map holds no module none");
}

TEST_F(MapTool, APrefixMayBeEmpty) {
  // The key of one group begins with the default prefix, so that alone is what a lookup without one answers.
  m_installation.write("headers/IDC_first.xml", "<constants><constant name='IDC_X' value='11'/></constants>");
  m_installation.write("headers/other.xml", "<constants><constant name='IDC_Y' value='11'/></constants>");
  tree().make_folder("file/ui_recording/res");
  for (const char* given : {"", " --prefix IDC_"})
    EXPECT_EQ("IDC_first.IDC_X\n", answer(std::string("11") + given)) << given;
  EXPECT_EQ("IDC_first.IDC_X | other.IDC_Y\n", answer("11 --prefix \"\""));
}

TEST_F(MapTool, ALookupPrintsNothingButTheAnswer) {
  build();
  m_installation.write("res/app.xml",
                       "<library><headers><header name='app'/></headers><dialogs><dialog name='IDD_A'>"
                       "<control name='IDC_GONE'/></dialog></dialogs></library>");
  const Mrmap mrmap("lookup 101");
  EXPECT_EQ(0, mrmap.status());
  EXPECT_EQ("app.IDD_A\n", mrmap.out());
}

TEST_F(MapTool, WithoutAMapNumbersStayNumbers) {
  const Mrmap mrmap("lookup 11");
  EXPECT_EQ(1, mrmap.status());
  EXPECT_EQ("11\n", mrmap.out());
  EXPECT_THAT(mrmap.err(),
              HasSubstr("there is no readable resource map " + m_installation.path("ui_map.rcz").str()));
  expect_failure("list modules", "ui_map.rcz");
}

TEST_F(MapTool, ListsWhatTheMapHolds) {
  // Both modules have a dialog of the same name; the other one of the first is nowhere else.
  tree().write("app.dev/ids.h", "#define IDD_A 101\n#define IDC_A 11\n#define IDM_A 11\n#define IDD_B 103\n");
  write_script("END\nIDD_B DIALOG\nBEGIN\nEDITTEXT IDC_A, 5\nPUSHBUTTON \"OK\", IDOK, 5\n");
  tree().write("two.dev/ids.h", "#define IDD_A 102\n#define IDC_T 12\n");
  tree().write("two.dev/Two.rc", "#include \"ids.h\"\nIDD_A DIALOG\nBEGIN\nEDITTEXT IDC_T, 5\nEND\n");
  tree().write("spec.xml",
               specification("app.dev/App.rc'/><rc_file path='" + tree().root().str() + "/two.dev/Two.rc"));
  build();
  struct {
    const char* arguments;
    const char* expected;
  } const cases[] = {
      {"modules", "app\ntwo\n"},
      {"modules --module TWO", "two\n"},
      {"dialogs", "app\tIDD_A\t101\napp\tIDD_B\t103\ntwo\tIDD_A\t102\n"},
      {"dialogs --module app", "app\tIDD_A\t101\napp\tIDD_B\t103\n"},
      {"dialogs --dialog IDD_A", "app\tIDD_A\t101\ntwo\tIDD_A\t102\n"},
      {"dialogs --dialog IDD_A --module two", "two\tIDD_A\t102\n"},
      {"controls",
       "app\tIDD_A\tIDC_A\t11\napp\tIDD_B\tIDOK\t1\napp\tIDD_B\tIDC_A\t11\ntwo\tIDD_A\tIDC_T\t12\n"},
      {"controls --module two", "two\tIDD_A\tIDC_T\t12\n"},
      {"controls --dialog IDD_A", "app\tIDD_A\tIDC_A\t11\ntwo\tIDD_A\tIDC_T\t12\n"},
      {"controls --module app --dialog IDD_A", "app\tIDD_A\tIDC_A\t11\n"},
      {"headers", "app\ngeneral\ntwo\n"},
      {"headers --header two", "two\n"},
      {"headers --module app", "app\ngeneral\n"},
      {"headers --module app --header app", "app\n"},
      {"constants",
       "app.IDC_A\t11\napp.IDD_A\t101\napp.IDD_B\t103\napp.IDM_A\t11\ngeneral.IDOK\t1\ntwo.IDC_T\t12\n"
       "two.IDD_A\t102\n"},
      {"constants --header general", "general.IDOK\t1\n"},
      {"constants --module two", "general.IDOK\t1\ntwo.IDC_T\t12\ntwo.IDD_A\t102\n"},
      {"constants --module two --header two", "two.IDC_T\t12\ntwo.IDD_A\t102\n"},
  };
  for (const auto& c : cases) {
    const Mrmap mrmap(std::string("list ") + c.arguments);
    EXPECT_EQ(0, mrmap.status()) << c.arguments << mrmap.err();
    EXPECT_EQ(c.expected, mrmap.out()) << c.arguments;
  }
  expect_failure("list dialogs --module none", "no module none");
  expect_failure("list controls --dialog IDD_NONE", "no dialog IDD_NONE");
  expect_failure("list controls --module two --dialog IDD_B", "no dialog IDD_B");
  expect_failure("list constants --header none", "no header group none");
  expect_failure("list headers --module two --header app", "no header group app");
}

TEST_F(MapTool, LooksForADialogsNameInAllModulesInNameOrder) {
  tree().write("two.dev/ids.h", "#define IDD_A 102\n#define IDC_T 11\n#define IDD_T 104\n");
  tree().write("two.dev/Two.rc", "#include \"ids.h\"\nIDD_A DIALOG\nBEGIN\nEDITTEXT IDC_T, 5\nEND\n"
                                 "IDD_T DIALOG\nBEGIN\nEDITTEXT IDC_T, 5\nEND\n");
  // The specification lists the later module first.
  tree().write("spec.xml",
               specification("two.dev/Two.rc'/><rc_file path='" + tree().root().str() + "/app.dev/App.rc"));
  build();
  EXPECT_EQ("app.IDC_A\n", answer("11 --dialog IDD_A"));
  EXPECT_EQ("two.IDC_T\n", answer("11 --dialog IDD_A --module two"));
  EXPECT_EQ("two.IDC_T\n", answer("11 --dialog IDD_T")) << "the first module has no such dialog";
}
