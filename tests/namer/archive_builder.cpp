#include "tests/namer/archive_builder.h"

#include <zlib.h>

#include <stdexcept>

namespace {

void put(std::string& out, uint32_t value, int bytes) {
  for (int i = 0; i < bytes; ++i)
    out += static_cast<char>(value >> (8 * i));
}

std::string deflated(const std::string& contents) {
  z_stream stream = {};
  // Without a header, as archives hold it.
  if (deflateInit2(&stream, 7, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK)
    throw std::runtime_error("cannot compress");
  std::string out(deflateBound(&stream, static_cast<uLong>(contents.size())), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(contents.data()));
  stream.avail_in = static_cast<uInt>(contents.size());
  stream.next_out = reinterpret_cast<Bytef*>(&out[0]);
  stream.avail_out = static_cast<uInt>(out.size());
  deflate(&stream, Z_FINISH);
  out.resize(stream.total_out);
  deflateEnd(&stream);
  return out;
}

uint32_t claim(int64_t claimed, size_t truth) {
  return static_cast<uint32_t>(claimed < 0 ? static_cast<int64_t>(truth) : claimed);
}

// What the local header and the table of contents have in common, from "version needed" on.
void put_common(std::string& out, const ArchiveEntry& entry, size_t compressed_size) {
  const auto* const bytes = reinterpret_cast<const Bytef*>(entry.contents.data());
  put(out, 20, 2);  // version needed
  put(out, 0, 2);   // flags
  put(out, entry.deflated ? Z_DEFLATED : 0, 2);
  put(out, 0x6000, 2);  // 12:00:00
  put(out, 0x5A21, 2);  // 1 January 2025
  put(out, claim(entry.claimed_crc, crc32(0, bytes, static_cast<uInt>(entry.contents.size()))), 4);
  put(out, claim(entry.claimed_compressed_size, compressed_size), 4);
  put(out, claim(entry.claimed_size, entry.contents.size()), 4);
  put(out, static_cast<uint32_t>(entry.name.size()), 2);
  put(out, 0, 2);  // extra field
}

}  // namespace

std::string make_archive(const std::vector<ArchiveEntry>& entries) {
  std::string archive, table;
  for (const ArchiveEntry& entry : entries) {
    const std::string data = entry.deflated ? deflated(entry.contents) : entry.contents;
    put(table, 0x02014B50, 4);
    put(table, 20, 2);  // version made by
    put_common(table, entry, data.size());
    put(table, 0, 2);  // comment
    put(table, 0, 2);  // disk
    put(table, 0, 2);  // internal attributes
    put(table, 0, 4);  // external attributes
    put(table, static_cast<uint32_t>(archive.size()), 4);
    table += entry.name;

    put(archive, 0x04034B50, 4);
    put_common(archive, entry, data.size());
    archive += entry.name + data;
  }
  const auto start = static_cast<uint32_t>(archive.size());
  archive += table;
  put(archive, 0x06054B50, 4);
  put(archive, 0, 4);  // disks
  put(archive, static_cast<uint32_t>(entries.size()), 2);
  put(archive, static_cast<uint32_t>(entries.size()), 2);
  put(archive, static_cast<uint32_t>(table.size()), 4);
  put(archive, start, 4);
  put(archive, 0, 2);  // comment
  return archive;
}
