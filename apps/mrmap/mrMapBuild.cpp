// mrmap build: the resource map from the host's sources.
#include "apps/mrmap/mrMapCommands.h"

#include "apps/mrmap/mrMapChecks.h"
#include "apps/mrmap/mrMapNamer.h"
#include "apps/mrmap/mrMapStage.h"
#include "apps/mrmap/mrPaths.h"

#include <windows.h>

#include <cctype>
#include <cstdio>
#include <set>

namespace {

constexpr DWORD progress_ms = 100;  // between two looks at the counter

// Counts files on standard error while a person watches. The count is short and stands at the beginning of
// the line, so that the engine's own lines write over it.
class Progress {
public:
  explicit Progress(mrMapNamer& namer) : m_namer(namer) {
    DWORD mode = 0;
    if (GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode))
      m_namer.set_progress(&Progress::on_file, this);
  }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() {
    m_namer.set_progress(nullptr, nullptr);
    if (m_shown != 0)
      std::fprintf(stderr, "\r%*s\r", width, "");
  }

private:
  static constexpr int width = 14;  // characters: " 123456 files"

  static void on_file(void* context, const CString&) { static_cast<Progress*>(context)->count(); }
  void count() {
    ++m_files;
    const DWORD now = GetTickCount();
    if (now - m_shown < progress_ms)
      return;
    m_shown = now;
    std::fflush(stdout);
    std::fprintf(stderr, " %d files\r", m_files);
  }

  mrMapNamer& m_namer;
  int m_files = 0;
  DWORD m_shown = 0;  // tick count of the last time; 0 before the first
};

// Whether the naming engine takes the file for a document of the map.
bool is_document(const CString& file) {
  const size_t dot = file.str().rfind('.');
  return dot != std::string::npos && lstrcmpiA(file.str().c_str() + dot, ".xml") == 0;
}

// The documents of one of the map's folders that this model does not write: they stay from earlier builds.
template <class Map>
std::vector<CString> stale_documents(const CString& folder, const Map& written) {
  std::set<CString> names;
  for (const auto& [name, item] : written)
    names.insert(name);
  std::vector<CString> stale;
  for (const CString& file : names_in(folder)) {
    if (!is_document(file))
      continue;
    // File names have no case.
    std::string name = file.str().substr(0, file.str().rfind('.'));
    CharLowerBuffA(&name[0], static_cast<DWORD>(name.size()));
    if (names.find(CString(name)) == names.end())
      stale.push_back(join(folder, file));
  }
  return stale;
}

std::vector<CString> stale_documents(const mrMapStage& stage, const mrMapNamer& namer) {
  std::vector<CString> stale = stale_documents(join(stage.folder(), "headers"), namer.headers());
  const std::vector<CString> modules = stale_documents(join(stage.folder(), "res"), namer.modules());
  stale.insert(stale.end(), modules.begin(), modules.end());
  return stale;
}

// "headers\gone.xml, res\gone.xml"
CString list_of(const std::vector<CString>& documents, const CString& folder) {
  CString text;
  for (const CString& document : documents)
    text += (text.IsEmpty() ? CString() : CString(", ")) + document.Mid(folder.GetLength() + 1);
  return text;
}

CString resource_folder() {
  const CString folder = mrIDNamer::get_res_path();
  if (!is_folder(folder))
    throw std::runtime_error(
        ("the resource folder " + folder +
         " does not exist; make file\\ui_recording two folders above the programs, or let "
         "ZQ_APPLICATION_FOLDER name the program folder of an installation")
            .GetString());
  return folder;
}

void read_sources(mrMapNamer& namer, const CString& specification) {
  if (!is_file(specification))
    throw std::runtime_error(("there is no resource-map specification " + specification).GetString());
  // The engine has one answer for what it cannot open and for what it cannot make out.
  contents_of(specification);
  const long result = namer.process_spec_file(specification);
  if (result < 0) {
    CString text;
    text.Format("%s could not be read (0x%08lX)", specification.GetString(),
                static_cast<unsigned long>(result));
    throw std::runtime_error(text.GetString());
  }
  if (result != mr_result_ok)
    throw std::runtime_error((specification + " is not a well-formed XML document").GetString());
  if (namer.modules().empty() && namer.errors() == 0)
    throw std::runtime_error((specification + " lists no resource script "
                                              "(/rc_map/targets/target/rc_files/rc_file with a path)")
                                 .GetString());
}

void warn_of_stale(const std::vector<CString>& stale, const CString& folder) {
  if (!stale.empty())
    std::fprintf(
        stderr,
        "mrmap: documents that this build does not write stay in the map: %s (--clean removes them)\n",
        list_of(stale, folder).GetString());
}

struct Options {
  bool force = false;
  bool clean = false;
};

// What update_def_map does, step by step: it would not tell that saving has failed, and has no place to stop
// at for what is forced or left out. Documents are left out behind the comparison, which still needs them:
// names of the old map are found through all of its groups.
bool save(mrMapNamer& namer, const mrMapStage& stage, const Options& options,
          const std::vector<CString>& stale, const CString& target) {
  if (namer.check_res_map(mrIDNamer::get_res_file()) != mr_result_ok && !options.force)
    return false;
  if (!options.clean)
    expect_readable(stage, stale);
  else
    for (const CString& document : stale)
      remove_file(document);
  const long result = namer.save_def_map();
  if (result < 0) {
    CString text;
    text.Format("the map %s could not be written (0x%08lX)", join(target, "ui_map.rcz").GetString(),
                static_cast<unsigned long>(result));
    throw std::runtime_error(text.GetString());
  }
  return true;
}

void warn_of_names(const mrMapNamer& namer) {
  for (const CString& warning : script_warnings(namer))
    std::fprintf(stderr, "mrmap: %s\n", warning.GetString());
}

}  // namespace

int run_build(const mrArguments& given) {
  mrArguments arguments = given;
  Options options;
  options.force = take_flag(arguments, "--force");
  options.clean = take_flag(arguments, "--clean");
  expect_words(arguments, 1, "the resource-map specification");

  const CString target = resource_folder();
  mrMapNamer namer;
  bool saved = false;
  {
    Progress progress(namer);
    read_sources(namer, arguments[0]);
    mrMapStage stage(target);
    expect_room(stage, namer);
    const std::vector<CString> stale = stale_documents(stage, namer);
    // Named before anything can fail: they may be why it does.
    if (!options.clean)
      warn_of_stale(stale, stage.folder());
    saved = save(namer, stage, options, stale, target);
    if (saved) {
      expect_whole(stage, namer, target);
      stage.put_in_place(namer);
    }
  }
  std::printf("%s\n", namer.totals().GetString());
  std::fflush(stdout);
  if (saved) {
    warn_of_names(namer);
    return exitDone;
  }
  std::fprintf(stderr, "mrmap: names would be lost, nothing was saved (--force saves all the same)\n");
  return exitNamesLost;
}
