// Zip archives as the tests want them: well made, or lying.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// One entry. What the archive claims can differ from what is true.
struct ArchiveEntry {
  std::string name;
  std::string contents;
  bool deflated = true;
  int64_t claimed_size = -1;             // bytes; -1: the true one
  int64_t claimed_compressed_size = -1;  // bytes; -1: the true one
  int64_t claimed_crc = -1;              // -1: the true one
};

// The bytes of an archive with these entries, in this order.
std::string make_archive(const std::vector<ArchiveEntry>& entries);
