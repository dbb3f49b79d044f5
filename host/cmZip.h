// Stand-in of the host compression library: writes a zip archive, one entry after the other.
//
// Results are 0 for success and the zip library's own nonzero codes otherwise. One object is used by one
// thread.
#pragma once

#include <cstdint>
#include <istream>

enum cmZipMethod : int32_t {
  zipStore = 0,
  zipDeflate = 1,
};

class cmZip {
public:
  cmZip() = default;
  cmZip(const cmZip&) = delete;
  cmZip& operator=(const cmZip&) = delete;
  // Closes what is open; a failure to do so is lost.
  ~cmZip();

  // Creates the archive, replacing an existing file.
  int open(const char* path);
  // Begins an entry.
  //   name   with forward slashes, at most 65535 bytes
  //   level  0 to 9, more is smaller and slower
  //   date   the last modification: year, month (1 to 12), day, hour, minute, second
  int open_new_file_in_zip(const char* name, cmZipMethod method, int level, const int* date);
  // Copies the rest of the stream into the entry, chunk_size bytes at a time, which must not be 0.
  int zip_current_file(std::istream& in, unsigned chunk_size);
  int close_file_in_zip();
  // Writes the table of contents. Without it the file is no archive.
  int close();

private:
  void* m_zip = nullptr;  // the zip library's handle; null when no archive is open
};
