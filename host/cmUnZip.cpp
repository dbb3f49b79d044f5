// Reading of zip archives over the zip library; the same code runs on every platform.
#include "host/cmUnZip.h"

#include <minizip/unzip.h>

#include <string>

static_assert(cm_end_of_list == UNZ_END_OF_LIST_OF_FILE, "the zip library's own code");

cmUnZip::~cmUnZip() { close(); }

int cmUnZip::open(const char* path) {
  close();
  m_zip = unzOpen64(path);
  return m_zip ? UNZ_OK : UNZ_ERRNO;
}

void cmUnZip::close() {
  if (m_zip)
    unzClose(m_zip);
  m_zip = nullptr;
}

int cmUnZip::goto_first_file() {
  // The zip library takes an archive without entries for a damaged one.
  unz_global_info64 info;
  if (unzGetGlobalInfo64(m_zip, &info) == UNZ_OK && info.number_entry == 0)
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
  const size_t slash = name.str().find_last_of("\\/");
  if (slash == std::string::npos) {
    folder.Empty();
    file = name;
    return;
  }
  const std::string text = name.str();
  folder = CString(text.substr(0, slash));
  file = CString(text.substr(slash + 1));
}
