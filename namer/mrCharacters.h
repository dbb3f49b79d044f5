// Sets of 8-bit characters and the reading of integers: what the readers of the naming engine share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// Members are compared as unsigned characters, whatever char is. Byte 0 is never one.
class mrCharacterSet {
public:
  constexpr explicit mrCharacterSet(std::string_view members) : m_members() {
    for (const char member : members)
      m_members[static_cast<unsigned char>(member)] = true;
  }
  constexpr bool contains(char ch) const { return m_members[static_cast<unsigned char>(ch)]; }

private:
  bool m_members[256];
};

// The number at the beginning of the text as the C library scans it with "%I64i": blanks, a sign, then
// hexadecimal behind "0x", octal behind "0", else decimal. What does not fit in 64 bits saturates; 0 when
// there is no number.
int64_t mr_scan_integer(std::string_view text);
