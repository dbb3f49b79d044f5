// Writing of zip archives over the zip library; the same code runs on every platform.
#include "host/cmZip.h"

#include <minizip/zip.h>

#include <vector>

cmZip::~cmZip() { close(); }

int cmZip::open(const char* path) {
  close();
  m_zip = zipOpen64(path, APPEND_STATUS_CREATE);
  return m_zip ? ZIP_OK : ZIP_ERRNO;
}

int cmZip::open_new_file_in_zip(const char* name, cmZipMethod method, int level, const int* date) {
  zip_fileinfo info = {};
  info.tmz_date.tm_year = static_cast<uInt>(date[0]);
  info.tmz_date.tm_mon = static_cast<uInt>(date[1] - 1);  // January is 0 to the zip library
  info.tmz_date.tm_mday = static_cast<uInt>(date[2]);
  info.tmz_date.tm_hour = static_cast<uInt>(date[3]);
  info.tmz_date.tm_min = static_cast<uInt>(date[4]);
  info.tmz_date.tm_sec = static_cast<uInt>(date[5]);
  return zipOpenNewFileInZip(m_zip, name, &info, nullptr, 0, nullptr, 0, nullptr,
                             method == zipDeflate ? Z_DEFLATED : 0, level);
}

int cmZip::zip_current_file(std::istream& in, unsigned chunk_size) {
  // Without room for a byte the copying would never end.
  if (chunk_size == 0)
    return ZIP_PARAMERROR;
  std::vector<char> chunk(chunk_size);
  while (in) {
    in.read(chunk.data(), static_cast<std::streamsize>(chunk.size()));
    const int result = zipWriteInFileInZip(m_zip, chunk.data(), static_cast<unsigned>(in.gcount()));
    if (result != ZIP_OK)
      return result;
  }
  return in.eof() ? ZIP_OK : ZIP_ERRNO;
}

int cmZip::close_file_in_zip() { return zipCloseFileInZip(m_zip); }

int cmZip::close() {
  if (!m_zip)
    return ZIP_OK;
  const int result = zipClose(m_zip, nullptr);
  m_zip = nullptr;
  return result;
}
