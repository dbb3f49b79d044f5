// Reading the documents of a resource map from its archive.
#include "namer/mrMapArchive.h"

#include <string_view>
#include <vector>

namespace {

// No real map comes near these; an archive that claims more is made to exhaust the memory.
constexpr uint64_t max_document_size = 256u << 20;  // bytes
constexpr uint64_t max_map_size = 1u << 30;         // bytes, all documents together and both walks

constexpr char slashes[] = "\\/";
constexpr unsigned chunk_size = 65000;  // bytes

// Whether the name leads somewhere else when somebody joins it with a folder. The map's own names never do.
bool leaves_folder(const CString& name) {
  std::string_view rest = name.str();
  if (rest.find(':') != std::string_view::npos)
    return true;
  for (bool first = true;; first = false) {
    const size_t slash = rest.find_first_of(slashes);
    const std::string_view component = rest.substr(0, slash);
    if (component == ".." || (first && component.empty()))
      return true;
    if (slash == std::string_view::npos)
      return false;
    rest.remove_prefix(slash + 1);
  }
}

}  // namespace

CString mr_document_name(const CString& file) { return CString(file.str().substr(0, file.str().rfind('.'))); }

bool mrMapArchive::open(const CString& path) { return m_zip.open(path) == 0; }

void mrMapArchive::rewind(bool headers) {
  m_headers = headers;
  m_started = false;
}

int mrMapArchive::go_on() {
  const bool first = !m_started;
  m_started = true;
  return first ? m_zip.goto_first_file() : m_zip.goto_next_file();
}

mrMapArchive::Result mrMapArchive::next(CString& name, std::string& document) {
  int moved = 0;
  while ((moved = go_on()) == 0) {
    CString entry, folder, file;
    if (m_zip.get_current_file_info(entry) != 0 || leaves_folder(entry))
      return archiveDamaged;
    cmUnZip::split_path(entry, folder, file);
    // Whatever is not in the folder of headers is a module; a folder's own entry is no document.
    if (file.IsEmpty() || (folder == map_headers_folder) != m_headers)
      continue;
    name = mr_document_name(file);
    return read(document);
  }
  return moved == cm_end_of_list ? archiveEnd : archiveDamaged;
}

mrMapArchive::Result mrMapArchive::read(std::string& document) {
  uint64_t compressed = 0, size = 0;
  if (m_zip.get_current_file_sizes(compressed, size) != 0 || size > max_document_size ||
      m_read + size > max_map_size)
    return archiveDamaged;
  m_read += size;
  if (m_zip.open_current_file() != 0)
    return archiveDamaged;
  // Grows with what is there, not with what is claimed.
  document.clear();
  std::vector<char> chunk(chunk_size);
  int count = 0;
  while ((count = m_zip.read_current_file(chunk.data(), chunk_size)) > 0 && document.size() <= size)
    document.append(chunk.data(), static_cast<size_t>(count));
  const bool closed = m_zip.close_current_file() == 0;
  return count == 0 && closed && document.size() == size ? archiveDocument : archiveDamaged;
}
