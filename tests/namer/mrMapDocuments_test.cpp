// The documents of a resource map: written, packed, and read from folders and archives of every condition.
#include "host/cmUnZip.h"
#include "host/cmZip.h"
#include "tests/namer/archive_builder.h"
#include "tests/namer/installation.h"
#include "tests/namer/open_namer.h"
#include "tests/namer/replaced_import.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <random>
#include <sstream>

namespace {

constexpr long e_fail = static_cast<long>(0x80004005);

constexpr char header_document[] = "<?xml version='1.0'?>\n<constants><constant name=\"IDC_A\" value=\"11\"/>"
                                   "<constant name=\"IDD_A\" value=\"101\"/></constants>";
constexpr char module_document[] =
    "<library><headers><header name=\"g\"/></headers><dialogs><dialog name=\"IDD_A\">"
    "<control name=\"IDC_A\"/></dialog></dialogs></library>";
constexpr char dialog_read[] = "101 IDD_A: 11=IDC_A";

class MapDocuments : public testing::Test {
protected:
  // Whether the line breaks and the writer of a document differ does not matter.
  static std::string without_line_ends(std::string text) {
    std::string result;
    for (const char ch : text)
      if (ch != '\r' && ch != '\n')
        result += ch;
    return result;
  }
  long save() { return m_namer.save_res_map(map()); }
  long load() { return m_namer.load_res_map(map()); }
  // Loads an archive made of these entries, with no unpacked documents beside it.
  long load(const std::vector<ArchiveEntry>& entries) { return load_bytes(make_archive(entries)); }
  long load_bytes(const std::string& archive) {
    m_installation.write("ui_map.rcz", archive);
    m_namer.clear_all();
    return load();
  }
  std::vector<std::string> entries_of_archive() {
    std::vector<std::string> names;
    cmUnZip zip;
    EXPECT_EQ(0, zip.open(map()));
    for (int result = zip.goto_first_file(); result == 0; result = zip.goto_next_file()) {
      CString name;
      EXPECT_EQ(0, zip.get_current_file_info(name));
      names.push_back(name.str());
    }
    return names;
  }
  CString map() const { return m_installation.path("ui_map.rcz"); }

  Installation m_installation;
  OpenNamer m_namer;
};

}  // namespace

// ---- saving
// ------------------------------------------------------------------------------------------------------

TEST_F(MapDocuments, HoldTheModelInOrder) {
  mrLibraryRes* const module = m_namer.add_lib("m");
  mrHeader* const group = m_namer.add_header(module, "g", "c:\\g.h");
  m_namer.add_header(module, "a", "");
  m_namer.add_header(nullptr, "z", "");
  m_namer.add_constant("IDC_B", -5, group);
  m_namer.add_constant("IDC_A", 0x7FFFFFFFFFFFFFFF, group);
  for (const uint32_t number : {300u, 5u}) {
    module->dialogs[number] = std::make_unique<mrDialogRes>();
    module->dialogs[number]->name = "IDD_" + CString(std::to_string(number));
    module->dialogs[number]->controls = {{12, "IDC_B"}, {-1, "IDC_A"}};
  }
  ASSERT_EQ(0, save());
  EXPECT_EQ("<?xml version='1.0'?><constants><constant name=\"IDC_A\" value=\"9223372036854775807\"/>"
            "<constant name=\"IDC_B\" value=\"-5\"/></constants>",
            without_line_ends(m_installation.read("headers/g.xml")));
  EXPECT_EQ("<?xml version='1.0'?><constants/>", without_line_ends(m_installation.read("headers/z.xml")));
  EXPECT_EQ(
      "<?xml version='1.0'?><library><headers><header name=\"a\"/><header name=\"g\"/></headers><dialogs>"
      "<dialog name=\"IDD_5\"><control name=\"IDC_A\"/><control name=\"IDC_B\"/></dialog>"
      "<dialog name=\"IDD_300\"><control name=\"IDC_A\"/><control "
      "name=\"IDC_B\"/></dialog></dialogs></library>",
      without_line_ends(m_installation.read("res/m.xml")));
}

TEST_F(MapDocuments, ArePackedFolderByFolderInTheFileSystemsOrder) {
  for (const char* key : {"b", "a", "a-b", "ab", "a2"})
    m_namer.add_header(nullptr, key, "");
  m_namer.add_lib("m");
  m_namer.add_lib("app");
  m_installation.write("headers/stale.xml", header_document);
  m_installation.write("headers/readme.txt", "not packed");
  m_installation.write("headers/old.xmlx", "not packed");
  m_installation.tree.make_folder("file/ui_recording/headers/folder.xml");
  ASSERT_EQ(0, save());
  EXPECT_EQ((std::vector<std::string>{"headers/a-b.xml", "headers/a.xml", "headers/a2.xml", "headers/ab.xml",
                                      "headers/b.xml", "headers/stale.xml", "res/app.xml", "res/m.xml"}),
            entries_of_archive());
}

TEST_F(MapDocuments, ArePackedDeflatedWithTheirDateAndContents) {
  mrHeader* const group = m_namer.add_header(nullptr, "g", "");
  for (int i = 0; i < 5000; ++i)  // more than a chunk
    m_namer.add_constant("IDC_" + CString(std::to_string(i)), i, group);
  ASSERT_EQ(0, save());
  int date[6];
  OpenNamer::file_modified_date(m_installation.path("headers/g.xml"), date);
  const std::string archive = m_installation.read("ui_map.rcz");
  const auto word = [&](size_t at) {
    return static_cast<uint8_t>(archive[at]) | static_cast<uint8_t>(archive[at + 1]) << 8;
  };
  EXPECT_EQ("PK\x03\x04", archive.substr(0, 4));
  EXPECT_EQ(8, word(8)) << "deflate";
  EXPECT_EQ(date[3] << 11 | date[4] << 5 | date[5] / 2, word(10));
  EXPECT_EQ((date[0] - 1980) << 9 | date[1] << 5 | date[2], word(12));

  cmUnZip zip;
  ASSERT_EQ(0, zip.open(map()));
  ASSERT_EQ(0, zip.goto_first_file());
  const std::string document = m_installation.read("headers/g.xml");
  uint64_t compressed = 0, size = 0;
  ASSERT_EQ(0, zip.get_current_file_sizes(compressed, size));
  EXPECT_EQ(document.size(), size);
  EXPECT_GT(size / 2, compressed);
  ASSERT_EQ(0, zip.open_current_file());
  std::string contents(size + 1, '\0');
  contents.resize(
      static_cast<size_t>(zip.read_current_file(&contents[0], static_cast<unsigned>(contents.size()))));
  EXPECT_EQ(document, contents);
  EXPECT_EQ(0, zip.close_current_file());
}

TEST_F(MapDocuments, ModificationDatesAreLocalTime) {
  m_installation.write("x.xml", "");
  SYSTEMTIME local = {}, utc = {};
  local.wYear = 2024, local.wMonth = 2, local.wDay = 29, local.wHour = 13, local.wMinute = 14,
  local.wSecond = 16;
  TzSpecificLocalTimeToSystemTime(nullptr, &local, &utc);
  FILETIME time;
  SystemTimeToFileTime(&utc, &time);
  const HANDLE file =
      CreateFileA(m_installation.path("x.xml"), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(INVALID_HANDLE_VALUE, file);
  EXPECT_TRUE(SetFileTime(file, nullptr, nullptr, &time));
  CloseHandle(file);
  int date[6] = {};
  OpenNamer::file_modified_date(m_installation.path("x.xml"), date);
  const int expected[6] = {2024, 2, 29, 13, 14, 16};
  for (int i = 0; i < 6; ++i)
    EXPECT_EQ(expected[i], date[i]) << i;
}

namespace {

BOOL WINAPI tell_no_attributes(const char*, GET_FILEEX_INFO_LEVELS, void*) { return FALSE; }

}  // namespace

TEST_F(MapDocuments, WhoseDateCannotBeToldAreFromTheEarliestDay) {
  const int earliest[6] = {1980, 1, 1, 0, 0, 0};
  int date[6] = {};
  OpenNamer::file_modified_date(m_installation.path("none.xml"), date);
  for (int i = 0; i < 6; ++i)
    EXPECT_EQ(earliest[i], date[i]) << i;

  m_namer.add_constant(CString("g"), CString("IDC_A"), 11);
  {
    const ReplacedImport failing("RecorderHooks.dll", "GetFileAttributesExA",
                                 reinterpret_cast<void*>(tell_no_attributes));
    ASSERT_EQ(0, save()) << "the date is no reason to have no map";
  }
  const std::string archive = m_installation.read("ui_map.rcz");
  EXPECT_EQ(std::string("\0\0\x21\0", 4), archive.substr(10, 4)) << "1 January 1980, 0:00";
  m_installation.remove_documents();
  m_namer.clear_all();
  EXPECT_EQ(0, load());
  EXPECT_EQ("g.IDC_A", m_namer.names(11));
}

TEST_F(MapDocuments, ReplaceAnOlderArchive) {
  m_installation.write("ui_map.rcz", std::string(100000, 'x'));
  m_namer.add_header(nullptr, "g", "");
  ASSERT_EQ(0, save());
  EXPECT_EQ((std::vector<std::string>{"headers/g.xml"}), entries_of_archive());
}

TEST_F(MapDocuments, OfAnEmptyModelAreAnEmptyArchiveThatLoads) {
  ASSERT_EQ(0, save());
  m_installation.remove_documents();
  EXPECT_EQ(0, load());
  EXPECT_EQ(0u, m_namer.get_name_count());
}

TEST_F(MapDocuments, CannotBeWrittenWhereThereIsNoFolder) {
  m_namer.add_header(nullptr, "g", "");
  EXPECT_EQ(static_cast<long>(HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND)),
            m_namer.save_res_map(m_installation.path("none/ui_map.rcz")))
      << "the system's reason";
  const long in_the_way = static_cast<long>(HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS));
  m_installation.write("res", "a file");
  EXPECT_EQ(in_the_way, save());
  m_installation.remove_documents();
  m_installation.write("headers", "a file");
  EXPECT_EQ(in_the_way, save());
}

TEST_F(MapDocuments, StopAtAWriteThatFails) {
  m_installation.write("ui_map.rcz", "the old map");
  m_namer.add_header(nullptr, "g", "");
  m_installation.tree.make_folder("file/ui_recording/headers/g.xml");
  EXPECT_GT(0, save());
  EXPECT_EQ("the old map", m_installation.read("ui_map.rcz"));
}

TEST_F(MapDocuments, AreNeverWrittenOutsideTheirFolders) {
  const std::vector<std::string> before = m_installation.everything();
  for (const char* key : {"..\\evil", "../evil", "c:\\evil", "c:evil", "\\evil", "a\\b", "a:b", "*", "a?",
                          "..\\..\\..\\evil", "line\nend"}) {
    OpenNamer namer;
    namer.add_constant(CString(key), CString("IDC_A"), 1);
    EXPECT_EQ(static_cast<long>(0x8007007B), namer.save_res_map(map())) << key;
    OpenNamer other;
    other.add_lib(key);
    EXPECT_EQ(static_cast<long>(0x8007007B), other.save_res_map(map())) << key;
  }
  EXPECT_EQ(before, m_installation.everything());
}

TEST_F(MapDocuments, KeepNamesOfEveryCharacter) {
  const char name[] = "IDC_<&>\"'\x80\x99\xE4\xFF]]>";
  m_namer.add_constant(CString("\xC4pfel &co"), CString(name), 7);
  ASSERT_EQ(0, save());
  m_namer.clear_all();
  EXPECT_EQ(0, load());
  EXPECT_EQ(std::string("\xC4pfel &co.") + name, m_namer.names(7));
  m_installation.remove_documents();
  m_namer.clear_all();
  EXPECT_EQ(0, load());
  EXPECT_EQ(std::string("\xC4pfel &co.") + name, m_namer.names(7));
}

TEST_F(MapDocuments, LeaveOutANameThatNoDocumentCanHold) {
  m_namer.add_constant(CString("g"), CString("IDC_\x01"), 7);
  m_namer.add_constant(CString("g"), CString("IDC_A"), 8);
  ASSERT_EQ(0, save());
  EXPECT_EQ((std::vector<std::string>{"Header 'g': constant 'IDC_\x01' cannot be stored."}), m_namer.errors);
  m_namer.clear_all();
  EXPECT_EQ(0, load());
  EXPECT_EQ("IDC_A=8", m_namer.constants("g"));
}

TEST_F(MapDocuments, LeaveOutADialogAndAControlThatNoDocumentCanHold) {
  mrLibraryRes* const module = m_namer.add_lib("m");
  mrHeader* const group = m_namer.add_header(module, "g", "");
  m_namer.add_constant("IDD_A", 101, group);
  m_namer.add_constant("IDC_A", 11, group);
  for (const uint32_t number : {101u, 102u})
    module->dialogs[number] = std::make_unique<mrDialogRes>();
  module->dialogs[101]->name = "IDD_A";
  module->dialogs[101]->controls = {{11, "IDC_A"}, {12, "IDC_\x01"}};
  module->dialogs[102]->name = "IDD_\x02";
  ASSERT_EQ(0, save());
  EXPECT_EQ((std::vector<std::string>{"Library 'm', dialog 'IDD_A': control 'IDC_\x01' cannot be stored.",
                                      "Library 'm': dialog 'IDD_\x02' cannot be stored."}),
            m_namer.errors);
  m_namer.clear_all();
  EXPECT_EQ(0, load());
  EXPECT_EQ(dialog_read, m_namer.dialogs("m"));
}

TEST(ZipWriter, NamesAnEntryAfterAFileWithoutAFolder) {
  Installation installation;
  installation.write("bare.xml", header_document);
  char former[MAX_PATH];
  GetCurrentDirectoryA(MAX_PATH, former);
  ASSERT_TRUE(SetCurrentDirectoryA(installation.tree.path("file/ui_recording")));
  cmZip zip;
  EXPECT_EQ(0, zip.open("x.zip"));
  EXPECT_EQ(0, OpenNamer::add_file_to_zip(zip, "bare.xml", "headers"));
  EXPECT_EQ(0, zip.close());
  SetCurrentDirectoryA(former);
  cmUnZip written;
  ASSERT_EQ(0, written.open(installation.path("x.zip")));
  ASSERT_EQ(0, written.goto_first_file());
  CString name;
  EXPECT_EQ(0, written.get_current_file_info(name));
  EXPECT_EQ("headers/bare.xml", name);
}

TEST(ZipWriter, RefusesChunksWithoutAByte) {
  Installation installation;
  const int date[6] = {2024, 2, 29, 13, 14, 16};
  cmZip zip;
  ASSERT_EQ(0, zip.open(installation.path("x.zip")));
  ASSERT_EQ(0, zip.open_new_file_in_zip("headers/g.xml", zipDeflate, 7, date));
  std::istringstream in("contents");
  EXPECT_NE(0, zip.zip_current_file(in, 0));
  EXPECT_EQ(0, zip.zip_current_file(in, 1)) << "nothing of the stream is lost";
}

TEST(ZipWriter, ReportsAFileThatIsNotThere) {
  Installation installation;
  cmZip zip;
  ASSERT_EQ(0, zip.open(installation.path("x.zip")));
  EXPECT_NE(0, OpenNamer::add_file_to_zip(zip, installation.path("none.xml"), "headers"));
  EXPECT_NE(0, OpenNamer::add_dir_to_zip(zip, installation.path("none"), "headers"));
  installation.tree.make_folder("file/ui_recording/empty");
  EXPECT_EQ(0, OpenNamer::add_dir_to_zip(zip, installation.path("empty"), "headers"));
  EXPECT_EQ(0, zip.close());
  EXPECT_NE(0, zip.open(installation.path("none/x.zip")));
}

// ---- loading
// -----------------------------------------------------------------------------------------------------

TEST_F(MapDocuments, AreReadFromFoldersAndFromTheArchiveAlike) {
  mrLibraryRes* const module = m_namer.add_lib("m");
  mrHeader* const group = m_namer.add_header(module, "g", "");
  m_namer.add_constant("IDD_A", 101, group);
  m_namer.add_constant("IDC_A", 11, group);
  m_namer.add_constant("IDC_BIG", -0x7FFFFFFFFFFFFFFF, group);
  module->dialogs[101] = std::make_unique<mrDialogRes>();
  module->dialogs[101]->name = "IDD_A";
  module->dialogs[101]->controls = {{11, "IDC_A"}};
  ASSERT_EQ(0, save());
  for (const char* from : {"folders", "archive"}) {
    m_namer.clear_all();
    EXPECT_EQ(0, load()) << from;
    EXPECT_EQ("IDC_A=11 IDC_BIG=-9223372036854775807 IDD_A=101", m_namer.constants("g")) << from;
    EXPECT_EQ(dialog_read, m_namer.dialogs("m")) << from;
    EXPECT_EQ("g", m_namer.groups("m")) << from;
    EXPECT_EQ("g.IDC_A", m_namer.names(11)) << from;
    EXPECT_EQ(m_namer.m_libraries.begin()->second.get(),
              m_namer.m_libraries.begin()->second->dialogs[101]->library);
    m_installation.remove_documents();
  }
}

TEST_F(MapDocuments, InFoldersWinOverANewerArchive) {
  m_installation.write("headers/old.xml", header_document);
  m_installation.tree.make_folder("file/ui_recording/res");
  EXPECT_EQ(0, load({{"headers/new.xml", header_document}}));
  EXPECT_EQ("no group", m_namer.constants("new"));
  EXPECT_EQ("IDC_A=11 IDD_A=101", m_namer.constants("old"));
}

TEST_F(MapDocuments, InAFolderThatCannotBeListedAreAFailure) {
  // The folders have 258 and 254 characters: Windows takes their paths, but not that of a document in them.
  const CString root = m_installation.tree.root();
  const CString folder = root + "\\" + CString(std::string(static_cast<size_t>(249 - root.GetLength()), 'x'));
  const std::string whole = "\\\\?\\" + folder.str();  // as Windows takes longer paths, in Unicode
  const std::wstring wide(whole.begin(), whole.end());
  for (const wchar_t* below : {L"", L"\\headers", L"\\res"})
    EXPECT_TRUE(CreateDirectoryW((wide + below).c_str(), nullptr)) << below;
  EXPECT_EQ(e_fail, m_namer.load_res_map(folder + "\\ui_map.rcz"));
  cmZip zip;
  EXPECT_EQ(0, zip.open(m_installation.path("x.zip")));
  EXPECT_NE(0, OpenNamer::add_dir_to_zip(zip, folder + "\\headers", "headers"));
  for (const wchar_t* below : {L"\\res", L"\\headers", L""})
    EXPECT_TRUE(RemoveDirectoryW((wide + below).c_str())) << below;
}

TEST_F(MapDocuments, InOneFolderAloneAreNotRead) {
  m_installation.write("headers/old.xml", header_document);
  EXPECT_EQ(0, load({{"headers/new.xml", header_document}}));
  EXPECT_EQ("no group", m_namer.constants("old"));
  EXPECT_EQ("IDC_A=11 IDD_A=101", m_namer.constants("new"));
}

TEST_F(MapDocuments, MayStandInAnyOrder) {
  EXPECT_EQ(0, load({{"res/m.xml", module_document}, {"headers/g.xml", header_document}}));
  EXPECT_EQ(dialog_read, m_namer.dialogs("m")) << "headers are read completely before modules";
}

TEST_F(MapDocuments, OutsideTheFolderOfHeadersAreModules) {
  EXPECT_EQ(0, load({{"headers/g.xml", header_document},
                     {"m1.xml", module_document},
                     {"other/m2.xml", module_document},
                     {"headers/deep/m3.xml", module_document},
                     {"Headers/m4.xml", module_document},
                     {"res/", "", false},
                     {"headers/", "", false}}));
  for (const char* module : {"m1", "m2", "m3", "m4"})
    EXPECT_EQ(dialog_read, m_namer.dialogs(module)) << module;
  EXPECT_EQ(1u, m_namer.m_headers.size());
  EXPECT_EQ(4u, m_namer.m_libraries.size());
}

TEST_F(MapDocuments, StoredWithoutCompressionAreRead) {
  EXPECT_EQ(0, load({{"headers/g.xml", header_document, false}, {"res/m.xml", module_document, false}}));
  EXPECT_EQ(dialog_read, m_namer.dialogs("m"));
}

TEST_F(MapDocuments, DecideTheOrderOfNamesByTheirPlace) {
  const std::string document =
      "<constants><constant name=\"IDC_Z\" value=\"7\"/><constant name=\"IDC_A\" value=\"7\"/></constants>";
  EXPECT_EQ(0, load({{"headers/z.xml", document}, {"headers/b.xml", document}}));
  EXPECT_EQ("z.IDC_A z.IDC_Z b.IDC_A b.IDC_Z", m_namer.names(7)) << "groups as they stand, names in order";
}

TEST_F(MapDocuments, DecideTheOrderOfNamesOnceTheyAreSaved) {
  // In the file system's order "A-B.XML" comes before "A.XML", unlike the keys; and entered in a third order.
  for (const char* key : {"a2", "a", "a-b"}) {
    m_namer.add_constant(CString(key), CString("IDC_X"), 7);
    m_namer.add_constant(CString(key), "IDC_OF_" + CString(key), 8);
  }
  EXPECT_EQ("a.IDC_X a-b.IDC_X", m_namer.names(7));
  EXPECT_EQ("a2.IDC_OF_a2 a.IDC_OF_a a-b.IDC_OF_a-b", m_namer.names(8)) << "as they were entered";
  ASSERT_EQ(0, save());
  for (const char* from : {"folders", "archive"}) {
    m_namer.clear_all();
    ASSERT_EQ(0, load()) << from;
    EXPECT_EQ("a-b.IDC_OF_a-b | a.IDC_OF_a | a2.IDC_OF_a2", m_namer.get_definition(8, "IDC_", 0, "")) << from;
    EXPECT_EQ("a2.IDC_X a.IDC_X", m_namer.names(7))
        << from << ": the order also decides which name gives way; a2 has met a-b first";
    m_installation.remove_documents();
  }
}

TEST_F(MapDocuments, InFoldersDecideTheOrderOfNamesByTheFileSystem) {
  const std::string document = "<constants><constant name=\"IDC_X\" value=\"7\"/></constants>";
  m_installation.tree.make_folder("file/ui_recording/res");
  for (const char* name : {"headers/b.xml", "headers/AZZ.xml", "headers/a.xml", "headers/a-b.xml"})
    m_installation.write(name, document);
  ASSERT_EQ(0, load());
  EXPECT_EQ("a-b.IDC_X a.IDC_X AZZ.IDC_X b.IDC_X", m_namer.names(7)) << "keys in order would have AZZ first";
}

TEST_F(MapDocuments, OfADebugBuildGiveWayInTheIndex) {
  const std::string document = "<constants><constant name=\"IDC_A\" value=\"7\"/></constants>";
  EXPECT_EQ(0, load({{"headers/food.xml", document}, {"headers/foo.xml", document}}));
  EXPECT_EQ("foo.IDC_A", m_namer.names(7));
}

TEST_F(MapDocuments, ADialogThatNoListedGroupDefinesIsNotThere) {
  const std::string module =
      "<library><headers><header name=\"g\"/></headers><dialogs><dialog name=\"IDD_NONE\">"
      "<control name=\"IDC_A\"/></dialog><dialog name=\"IDD_A\"/></dialogs></library>";
  EXPECT_EQ(0, load({{"headers/g.xml", header_document}, {"res/m.xml", module}}));
  EXPECT_EQ("101 IDD_A:", m_namer.dialogs("m"));
  EXPECT_EQ(0, m_namer.m_error_count);
  EXPECT_EQ(0, load({{"headers/other.xml", header_document}, {"res/m.xml", module_document}}));
  EXPECT_EQ("", m_namer.dialogs("m")) << "the group that would define it is not listed";
}

TEST_F(MapDocuments, AControlThatNoListedGroupDefinesIsReported) {
  EXPECT_EQ(0, load({{"headers/g.xml", header_document},
                     {"res/m.xml",
                      "<library><headers><header name=\"g\"/><header name=\"unknown\"/></headers><dialogs>"
                      "<dialog name=\"IDD_A\"><control name=\"IDC_NONE\"/><control name=\"IDC_A\"/><control/>"
                      "</dialog></dialogs></library>"}}));
  EXPECT_EQ(dialog_read, m_namer.dialogs("m"));
  EXPECT_EQ("g", m_namer.groups("m")) << "unknown keys are skipped";
  EXPECT_EQ((std::vector<std::string>{"dialog (IDD_A), control id 'IDC_NONE' not found",
                                      "dialog (IDD_A), control id '' not found"}),
            m_namer.errors);
}

TEST_F(MapDocuments, MayHoldWhatNobodyKnows) {
  EXPECT_EQ(0, load({{"headers/g.xml",
                      "<?xml version='1.0'?><!-- c --><other><constants a='b'><constant name='IDC_A' "
                      "value='0x0B' more='x'><deep/></constant><constant/><constant value='5'/>"
                      "<constant name='IDC_EMPTY'/>\n text <unknown name='IDC_U' value='1'/></constants>"
                      "<constants><constant name='IDC_SECOND' value=' 12 '/></constants></other>"}}));
  EXPECT_EQ("=5 IDC_A=11 IDC_EMPTY=0 IDC_SECOND=12", m_namer.constants("g"))
      << "the constants without a name have the empty one";
}

TEST_F(MapDocuments, ThatAreNoDocumentsEndTheLoading) {
  for (const std::string& broken :
       {std::string(), std::string("no document"), std::string("<constants>"),
        std::string("<constants/><more/>"), std::string(3, '\0'), std::string("<constants a=1/>")}) {
    EXPECT_EQ(e_fail, load({{"headers/a.xml", header_document},
                            {"headers/b.xml", broken},
                            {"headers/c.xml", header_document}}))
        << broken;
    EXPECT_EQ("IDC_A=11 IDD_A=101", m_namer.constants("a")) << broken;
    EXPECT_EQ("no group", m_namer.constants("c")) << broken;
    EXPECT_EQ(e_fail, load({{"headers/g.xml", header_document}, {"res/m.xml", broken}})) << broken;
    EXPECT_EQ("no module", m_namer.dialogs("m")) << broken;
  }
  m_installation.write("headers/a.xml", "<constants>");
  m_installation.tree.make_folder("file/ui_recording/res");
  EXPECT_EQ(e_fail, load());
}

TEST_F(MapDocuments, OfAnotherKindAreEmpty) {
  EXPECT_EQ(0, load({{"headers/g.xml", module_document}, {"res/m.xml", header_document}}));
  EXPECT_EQ("", m_namer.constants("g"));
  EXPECT_EQ("", m_namer.dialogs("m"));
}

TEST_F(MapDocuments, AddToWhatIsThere) {
  m_namer.add_constant(CString("x"), CString("IDC_X"), 11);
  m_installation.write("ui_map.rcz", make_archive({{"headers/g.xml", header_document}}));
  EXPECT_EQ(0, load());
  EXPECT_EQ("x.IDC_X g.IDC_A", m_namer.names(11));
}

// ---- archives of every condition
// ---------------------------------------------------------------------------------

TEST_F(MapDocuments, ThatAreMissingLeaveTheModelEmpty) {
  EXPECT_EQ(e_fail, load());
  EXPECT_EQ("57600", m_namer.get_definition(57600, "IDC_", 0, ""));
  m_installation.tree.make_folder("file/ui_recording/ui_map.rcz");
  EXPECT_EQ(e_fail, load()) << "a folder is no archive";
}

TEST_F(MapDocuments, InNoArchiveAreNone) {
  for (const char* bytes : {"", "x", "PK", "PK\x05\x06", "no archive at all, but longer than the end of one"})
    EXPECT_EQ(e_fail, load_bytes(bytes)) << bytes;
}

TEST_F(MapDocuments, InATruncatedArchiveAreRefused) {
  const std::string archive =
      make_archive({{"headers/g.xml", header_document}, {"res/m.xml", module_document}});
  for (size_t length = 0; length < archive.size(); ++length)
    EXPECT_EQ(e_fail, load_bytes(archive.substr(0, length))) << length;
}

TEST_F(MapDocuments, InADamagedArchiveNeverHurt) {
  const std::string archive =
      make_archive({{"headers/g.xml", header_document}, {"res/m.xml", module_document}});
  const std::vector<std::string> before = (load_bytes(archive), m_installation.everything());
  std::mt19937 random(1);  // the same damage every time
  int refused = 0, read = 0;
  for (int i = 0; i < 300; ++i) {
    std::string damaged = archive;
    for (unsigned flips = 1 + random() % 4; flips > 0; --flips)
      damaged[random() % damaged.size()] ^= static_cast<char>(1 << random() % 8);
    const long result = load_bytes(damaged);
    EXPECT_GE(0, result) << i;
    ++(result < 0 ? refused : read);
    // Checksums guard the documents, not their names: what was read at all is as it was written.
    for (const auto& [key, group] : m_namer.m_headers)
      EXPECT_EQ("IDC_A=11 IDD_A=101", m_namer.constants(key)) << i;
    for (const auto& [name, module] : m_namer.m_libraries)
      EXPECT_THAT(m_namer.dialogs(name), testing::AnyOf("", dialog_read)) << i;
    EXPECT_GE(2u, m_namer.m_headers.size() + m_namer.m_libraries.size()) << i;
  }
  EXPECT_LT(0, read) << "some damage does not matter";
  EXPECT_LT(100, refused);
  EXPECT_EQ(before, m_installation.everything());
}

TEST_F(MapDocuments, WithAWrongChecksumAreRefused) {
  EXPECT_EQ(e_fail, load({{"headers/g.xml", header_document, true, -1, -1, 12345}}));
  EXPECT_EQ(0u, m_namer.get_name_count());
}

TEST_F(MapDocuments, WithAFalseSizeAreRefused) {
  const auto size = static_cast<int64_t>(sizeof header_document - 1);
  for (const int64_t claimed : {int64_t{0}, int64_t{1}, size - 1, size + 1, int64_t{1} << 28,
                                int64_t{0x7FFFFFFF}, int64_t{0xFFFFFFFE}})
    for (const bool deflated : {true, false}) {
      EXPECT_EQ(e_fail, load({{"headers/g.xml", header_document, deflated, claimed}})) << claimed;
      EXPECT_EQ(0u, m_namer.get_name_count()) << claimed;
    }
  for (const int64_t claimed : {int64_t{0}, int64_t{1}, int64_t{0xFFFFFF}, int64_t{0xFFFFFFFE}})
    EXPECT_GT(0, load({{"headers/g.xml", header_document, true, -1, claimed}})) << claimed;
}

TEST_F(MapDocuments, OfFourGigabytesAreRefused) {
  // Zeros that take 64 KB packed and claim 4 GB.
  EXPECT_EQ(e_fail, load({{"headers/g.xml", std::string(64 << 20, '\0'), true, 0xFFFFFFFE}}));
  EXPECT_EQ(e_fail, load({{"headers/g.xml", std::string(64 << 20, ' ')}}))
      << "blanks only, and honest about it";
}

TEST_F(MapDocuments, WithNamesThatLeaveTheFolderAreRefused) {
  const std::vector<std::string> before = (load({}), m_installation.everything());
  for (const char* name : {"../evil.xml", "headers/../evil.xml", "headers/../../evil.xml", "..\\evil.xml",
                           "headers\\..\\evil.xml", "/evil.xml", "\\evil.xml", "//server/evil.xml",
                           "c:/evil.xml", "c:evil.xml", "headers/c:evil.xml", ".."}) {
    EXPECT_EQ(e_fail, load({{name, header_document}, {"headers/g.xml", header_document}})) << name;
    EXPECT_TRUE(m_namer.m_headers.empty()) << name;
    EXPECT_TRUE(m_namer.m_libraries.empty()) << name;
  }
  EXPECT_EQ(before, m_installation.everything());
}

TEST_F(MapDocuments, WithNamesThatOnlyLookStrangeAreRead) {
  EXPECT_EQ(0, load({{"headers/..g.xml", header_document},
                     {"headers/.xml", header_document},
                     {"headers/a b.c.xml", header_document},
                     {"headers\\backslash.xml", header_document},
                     {"headers/none", header_document}}));
  for (const char* key : {"..g", "", "a b.c", "backslash", "none"})
    EXPECT_EQ("IDC_A=11 IDD_A=101", m_namer.constants(key)) << key;
}

TEST_F(MapDocuments, ThatAreThereTwiceAreMergedOrReplaced) {
  EXPECT_EQ(
      0,
      load({{"headers/g.xml", header_document},
            {"headers/g.xml",
             "<constants><constant name='IDC_A' value='12'/><constant name='IDC_B' value='13'/></constants>"},
            {"res/m.xml", "<library><headers><header name='g'/></headers></library>"},
            {"res/m.xml", "<library/>"}}));
  EXPECT_EQ("IDC_A=12 IDC_B=13 IDD_A=101", m_namer.constants("g"));
  EXPECT_EQ("", m_namer.groups("m"));
}

TEST_F(MapDocuments, WithALongNameAreRead) {
  const std::string name(60000, 'x');
  EXPECT_EQ(0, load({{"headers/" + name + ".xml", header_document}}));
  EXPECT_EQ("IDC_A=11 IDD_A=101", m_namer.constants(name.c_str()));
  EXPECT_GT(0, save()) << "no file has such a name";
}

TEST_F(MapDocuments, BehindAnotherFileAreRead) {
  // The end of the archive is looked for from the end of the file, and places are counted from there.
  EXPECT_EQ(
      0, load_bytes("MZ a program that unpacks itself" + make_archive({{"headers/g.xml", header_document}})));
  EXPECT_EQ("IDC_A=11 IDD_A=101", m_namer.constants("g"));
}

TEST_F(MapDocuments, InThousandsAreRead) {
  std::vector<ArchiveEntry> entries;
  for (int i = 0; i < 1000; ++i)
    entries.push_back({"headers/g" + std::to_string(i) + ".xml", header_document, false});
  EXPECT_EQ(0, load(entries));
  EXPECT_EQ(2000u, m_namer.get_name_count());
}
