// Loading a resource map, beside unpacking the archive and loading every document and nothing else; and what
// one lookup takes. Loading must take at most twice the baseline's time.
//   namer_map [ROUNDS]
//
// A map of 300 modules with 10 dialogs of 20 controls each and 100000 constants, read from its archive. The
// best of the rounds counts. Exit status 1 when the limit is exceeded.
#include "bench/source_tree.h"
#include "bench/stopwatch.h"
#include "namer/mrIDNamer.h"
#include "namer/mrMapArchive.h"
#include "namer/mrXml.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace {

constexpr int modules = 300;
constexpr int dialogs_per_module = 10;
constexpr int controls_per_dialog = 20;
constexpr int constants = 100000;
constexpr int default_rounds = 5;
constexpr int lookups = 200000;
constexpr double baseline_limit = 2;  // times the baseline

class Namer : public mrIDNamer {
public:
  using mrIDNamer::load_res_map;
  using mrIDNamer::save_res_map;

  void fill() {
    const int constants_per_module = constants / modules;
    for (int m = 0; m < modules; ++m) {
      const CString name = "module" + CString(std::to_string(m));
      mrLibraryRes* const module = add_lib(name);
      mrHeader* const group = add_header(module, name, "");
      add_header(module, "general", "");
      for (int d = 0; d < dialogs_per_module; ++d)
        fill_dialog(*module, group, m, d);
      for (int i = static_cast<int>(group->constants.size()); i < constants_per_module; ++i)
        add_constant("IDM_M" + CString(std::to_string(m)) + "_COMMAND_" + CString(std::to_string(i)),
                     32771 + i, group);
    }
    for (int i = static_cast<int>(get_name_count()); i < constants; ++i)
      add_constant(CString("general"), "IDM_GENERAL_" + CString(std::to_string(i)), 57600 + i);
  }

private:
  void fill_dialog(mrLibraryRes& module, mrHeader* group, int m, int d) {
    const CString suffix = CString(std::to_string(m)) + "_" + CString(std::to_string(d));
    const auto number = static_cast<uint32_t>(101 + d);
    mrDialogRes& dialog = *(module.dialogs[number] = std::make_unique<mrDialogRes>());
    dialog.name = "IDD_DIALOG_" + suffix;
    dialog.library = &module;
    add_constant(dialog.name, number, group);
    for (int c = 0; c < controls_per_dialog; ++c) {
      const int64_t id = 1000 + controls_per_dialog * d + c;
      dialog.controls[id] = "IDC_CONTROL_" + suffix + "_" + CString(std::to_string(c));
      add_constant(dialog.controls[id], id, group);
    }
  }
};

size_t load_documents(const CString& path) {
  const mrComApartment com;
  mrMapArchive archive;
  if (!archive.open(path))
    return 0;
  size_t count = 0;
  CString name;
  std::string bytes;
  for (const bool headers : {true, false}) {
    archive.rewind(headers);
    while (archive.next(name, bytes) == mrMapArchive::archiveDocument) {
      mrXmlDocument document;
      if (SUCCEEDED(document.create()) && document.load_bytes(bytes) == S_OK)
        ++count;
    }
  }
  return count;
}

double nanoseconds_of_lookup(const Namer& namer, int64_t number, uint32_t dialog, const char* module) {
  const CString prefix = "IDC_", name = module;
  return 1e9 / lookups * best_of(3, [&] {
           for (int i = 0; i < lookups; ++i)
             if (namer.get_definition(number, prefix, dialog, name).IsEmpty())
               std::abort();
         });
}

void report_lookup(const char* what, const Namer& namer, int64_t number, uint32_t dialog,
                   const char* module) {
  const CString answer = namer.get_definition(number, "IDC_", dialog, module);
  std::printf("%-46s %8.0f ns   %d characters\n", what, nanoseconds_of_lookup(namer, number, dialog, module),
              answer.GetLength());
}

}  // namespace

int main(int argc, char** argv) {
  const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : default_rounds;
  const std::string folder = new_temporary_folder("namer_map");
  const CString path((folder + "\\ui_map.rcz").c_str());
  Namer namer;
  namer.fill();
  const double saving = best_of(1, [&] { namer.save_res_map(path); });
  remove_folder(folder + "\\headers");
  remove_folder(folder + "\\res");

  size_t documents = 0;
  const double baseline = best_of(rounds, [&] { documents = load_documents(path); });
  double loading = std::numeric_limits<double>::max();
  for (int i = 0; i < rounds; ++i) {
    Namer loaded;
    loading = std::min(loading, best_of(1, [&] { loaded.load_res_map(path); }));
    if (loaded.get_name_count() != namer.get_name_count())
      std::abort();
  }
  std::printf("%zu names, %zu documents\n", namer.get_name_count(), documents);
  std::printf("saving   %.3f s\nbaseline %.3f s\nloading  %.3f s   %.2f times the baseline\n", saving,
              baseline, loading, loading / baseline);

  report_lookup("a control of a dialog, module known", namer, 1185, 110, "module7");
  report_lookup("the same, debug build", namer, 1185, 110, "Module7D");
  report_lookup("a control of a dialog, module unknown", namer, 1185, 110, "");
  report_lookup("a number of 300 names", namer, 1005, 0, "");
  report_lookup("a number of one name", namer, 57600 + constants - 1, 0, "");
  report_lookup("a number without a name", namer, 999999, 0, "");
  remove_folder(folder);
  const bool good = loading <= baseline_limit * baseline;
  std::printf("%s\n", good ? "within the limit" : "BEYOND THE LIMIT");
  return good ? 0 : 1;
}
