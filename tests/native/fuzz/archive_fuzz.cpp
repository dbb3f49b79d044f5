// Any bytes as the archive of a resource map.
#include "namer/mrMapArchive.h"
#include "tests/native/fuzz/check.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace {

// A file without a place in any folder: nothing can be written beside it unnoticed.
class MemoryFile {
public:
  MemoryFile(const uint8_t* data, size_t size) : m_file(memfd_create("map", 0)) {
    MUST_HOLD(m_file >= 0);
    MUST_HOLD(write(m_file, data, size) == static_cast<ssize_t>(size));
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile() { close(m_file); }
  CString path() const { return "/proc/self/fd/" + CString(std::to_string(m_file)); }

private:
  int m_file;
};

void walk(mrMapArchive& archive, bool headers, size_t size) {
  archive.rewind(headers);
  CString name;
  std::string document;
  size_t count = 0;
  while (archive.next(name, document) == mrMapArchive::archiveDocument) {
    MUST_HOLD(name.Find('/') < 0 && name.Find('\\') < 0 && name.Find(':') < 0);
    // Deflate packs at most 1032 to 1, and every entry takes room in the table of contents.
    MUST_HOLD(document.size() <= size * 1040);
    MUST_HOLD(++count <= size / 46 + 1);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const MemoryFile file(data, size);
  mrMapArchive archive;
  if (!archive.open(file.path()))
    return 0;
  walk(archive, true, size);
  walk(archive, false, size);
  return 0;
}
