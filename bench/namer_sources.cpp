// Reading a host's headers and resource scripts, beside reading the same files and splitting them into lines.
// The time must grow with the size of the sources, and be at most three times the baseline's.
//   namer_sources [ROUNDS]
//
// Generated sources of 10, 20 and 40 MB: modules with 20 dialogs of 16 controls each and eight headers of
// code. The best of the rounds counts. Exit status 1 when a limit is exceeded.
#include "bench/source_tree.h"
#include "bench/stopwatch.h"
#include "namer/mrIDNamer.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace {

constexpr size_t megabyte = 1 << 20;
constexpr size_t sizes[] = {10 * megabyte, 20 * megabyte, 40 * megabyte};
constexpr int default_rounds = 5;
constexpr double baseline_limit = 3;   // times the baseline
constexpr double linear_limit = 1.25;  // how much slower per byte the largest tree may be than the smallest

class Namer : public mrIDNamer {
public:
  explicit Namer(const std::string& platform_headers) { m_include_paths.Add(CString(platform_headers)); }
  using mrIDNamer::process_resource_file;
  int errors() const { return m_error_count; }
};

std::string read(const std::string& path) {
  const HANDLE file =
      CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
  std::string text(GetFileSize(file, nullptr), '\0');
  DWORD count = 0;
  ReadFile(file, &text[0], static_cast<DWORD>(text.size()), &count, nullptr);
  CloseHandle(file);
  return text;
}

// What any reader must do: every file in memory, every line a text of its own.
size_t split_files(const GeneratedSources& sources) {
  size_t count = 0;
  for (const std::string& path : sources.files) {
    const std::string text = read(path);
    std::vector<CString> lines;
    for (size_t start = 0; start < text.size();) {
      const size_t end = std::min(text.find('\n', start), text.size());
      lines.push_back(CString(text.data() + start, static_cast<int>(end - start)));
      start = end + 1;
    }
    count += lines.size();
  }
  return count;
}

}  // namespace

int main(int argc, char** argv) {
  const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : default_rounds;
  const std::string root = new_temporary_folder("namer_sources");
  // The engine says which script it reads; the figures go where those lines do not.
  std::freopen("NUL", "w", stdout);
  std::fprintf(stderr, "    size     lines     names   baseline            engine              ratio\n");
  double first_per_byte = 0, last_per_byte = 0;
  bool good = true;
  for (const size_t size : sizes) {
    const GeneratedSources sources = generate_sources(root, size);
    const double mb = static_cast<double>(sources.bytes) / megabyte;
    size_t lines = 0, names = 0;
    const double baseline = best_of(rounds, [&] { lines = split_files(sources); });
    double engine = std::numeric_limits<double>::max();
    for (int i = 0; i < rounds; ++i) {
      Namer namer(sources.root);
      const double start = seconds();
      for (const std::string& script : sources.scripts)
        namer.process_resource_file(CString(script));
      engine = std::min(engine, seconds() - start);
      names = namer.get_name_count();
      good = good && namer.errors() == 0;
    }
    last_per_byte = engine / static_cast<double>(sources.bytes);
    if (first_per_byte == 0)
      first_per_byte = last_per_byte;
    std::fprintf(stderr, "%6.1f MB %9zu %9zu   %6.3f s %6.1f MB/s   %6.3f s %6.1f MB/s   %.2f\n", mb, lines,
                 names, baseline, mb / baseline, engine, mb / engine, engine / baseline);
    good = good && engine <= baseline_limit * baseline;
    remove_folder(root);
    CreateDirectoryA(root.c_str(), nullptr);
  }
  remove_folder(root);
  std::fprintf(stderr, "per byte, largest against smallest: %.2f\n", last_per_byte / first_per_byte);
  good = good && last_per_byte <= linear_limit * first_per_byte;
  std::fprintf(stderr, "%s\n", good ? "within the limits" : "BEYOND A LIMIT");
  return good ? 0 : 1;
}
