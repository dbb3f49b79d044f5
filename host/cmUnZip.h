// Stand-in of the host compression library: reads a zip archive, one entry at a time. Never writes a file.
//
// Any file is accepted as input. Results are 0 for success and the zip library's own nonzero codes otherwise.
// One object is used by one thread.
#pragma once

#include "framework/CString.h"

#include <cstdint>

// Result of goto_first_file and goto_next_file when there is no further entry.
constexpr int cm_end_of_list = -100;

class cmUnZip {
public:
  cmUnZip() = default;
  cmUnZip(const cmUnZip&) = delete;
  cmUnZip& operator=(const cmUnZip&) = delete;
  ~cmUnZip();

  // Nonzero when there is no such file or it is no archive.
  int open(const char* path);
  void close();

  // cm_end_of_list when there is no such entry; another nonzero when the table of contents cannot be read
  // there.
  int goto_first_file();
  int goto_next_file();
  // The entry's name as the archive tells it: it may be anything, a path out of every folder included.
  int get_current_file_info(CString& name);
  // In bytes, as the archive claims them.
  int get_current_file_sizes(uint64_t& compressed, uint64_t& uncompressed);

  int open_current_file();
  // Bytes read, 0 at the entry's end, negative when its data is damaged.
  int read_current_file(void* buffer, unsigned size);
  // Nonzero when everything was read and its checksum is wrong.
  int close_current_file();

  // Cuts an entry's name at its last slash, of either kind.
  static void split_path(const CString& name, CString& folder, CString& file);

private:
  void* m_zip = nullptr;  // the zip library's handle; null when no archive is open
  bool m_empty = false;   // an archive without entries is open, and there is no handle
};
