// Reading of zip archives over the zip library; the same code runs on every platform.
#include "host/cmUnZip.h"

#include <minizip/unzip.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <utility>

static_assert(cm_end_of_list == UNZ_END_OF_LIST_OF_FILE, "the zip library's own code");

namespace {

// The record that ends an archive, and says where its table of contents is.
constexpr char end_signature[] = "PK\x05\x06";
constexpr size_t end_size = 22;         // bytes, without the comment behind it
constexpr size_t end_entry_count = 10;  // offset of the number of entries
constexpr std::streamoff search_size =
    0xFFFF;  // bytes at the file's end in which the zip library looks for it

enum Ending { endMissing, endOfEmptyArchive, endThere };

// The zip library takes what a truncated record lacks for zeros, and does not find one at the beginning of
// the file, where that of an archive without entries is.
Ending find_end(const char* path) {
  std::ifstream file(path, std::ios::binary | std::ios::ate);
  if (!file)
    return endMissing;
  const std::streamoff size = file.tellg();
  std::string tail(static_cast<size_t>(std::clamp<std::streamoff>(size, 0, search_size)), '\0');
  file.seekg(size - static_cast<std::streamoff>(tail.size()));
  if (!file.read(&tail[0], static_cast<std::streamsize>(tail.size())))
    return endMissing;
  const size_t end = tail.rfind(end_signature);
  if (end == std::string::npos || tail.size() - end < end_size)
    return endMissing;
  const bool no_entries = tail[end + end_entry_count] == 0 && tail[end + end_entry_count + 1] == 0;
  return no_entries && end == 0 ? endOfEmptyArchive : endThere;
}

}  // namespace

cmUnZip::~cmUnZip() { close(); }

int cmUnZip::open(const char* path) {
  close();
  switch (find_end(path)) {
  case endMissing:
    return UNZ_BADZIPFILE;
  case endOfEmptyArchive:
    m_empty = true;
    return UNZ_OK;
  case endThere:
    break;
  }
  m_zip = unzOpen64(path);
  return m_zip ? UNZ_OK : UNZ_ERRNO;
}

void cmUnZip::close() {
  if (m_zip)
    unzClose(m_zip);
  m_zip = nullptr;
  m_empty = false;
}

int cmUnZip::goto_first_file() {
  // With something before it, the zip library opens an archive without entries, and then takes it for
  // damaged.
  unz_global_info64 info;
  if (m_empty || (unzGetGlobalInfo64(m_zip, &info) == UNZ_OK && info.number_entry == 0))
    return cm_end_of_list;
  return unzGoToFirstFile(m_zip);
}

int cmUnZip::goto_next_file() { return unzGoToNextFile(m_zip); }

int cmUnZip::get_current_file_info(CString& name) {
  unz_file_info64 info;
  const int result = unzGetCurrentFileInfo64(m_zip, &info, nullptr, 0, nullptr, 0, nullptr, 0);
  if (result != UNZ_OK)
    return result;
  // The zip library writes a final zero when there is room for it.
  std::string text(info.size_filename + 1, '\0');
  const int again =
      unzGetCurrentFileInfo64(m_zip, &info, &text[0], info.size_filename + 1, nullptr, 0, nullptr, 0);
  if (again == UNZ_OK)
    name = CString(text.c_str());
  return again;
}

int cmUnZip::get_current_file_sizes(uint64_t& compressed, uint64_t& uncompressed) {
  unz_file_info64 info;
  const int result = unzGetCurrentFileInfo64(m_zip, &info, nullptr, 0, nullptr, 0, nullptr, 0);
  if (result != UNZ_OK)
    return result;
  compressed = info.compressed_size;
  uncompressed = info.uncompressed_size;
  return UNZ_OK;
}

int cmUnZip::open_current_file() { return unzOpenCurrentFile(m_zip); }

int cmUnZip::read_current_file(void* buffer, unsigned size) {
  return unzReadCurrentFile(m_zip, buffer, size);
}

int cmUnZip::close_current_file() { return unzCloseCurrentFile(m_zip); }

void cmUnZip::split_path(const CString& name, CString& folder, CString& file) {
  const int slash = static_cast<int>(name.str().find_last_of("\\/") + 1);
  CString last = name.Mid(slash);
  folder = name.Left(slash - 1);
  file = std::move(last);
}
