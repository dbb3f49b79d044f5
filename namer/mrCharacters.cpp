// Reading integers without the C library: its scan needs a terminated text and differs between its versions.
#include "namer/mrCharacters.h"

#include <limits>

namespace {

constexpr mrCharacterSet scan_blanks(" \t\n\v\f\r");

// 16 and more when the character is no digit of any base.
unsigned digit_value(char ch) {
  if (ch >= '0' && ch <= '9')
    return static_cast<unsigned>(ch - '0');
  if (ch >= 'a' && ch <= 'f')
    return static_cast<unsigned>(ch - 'a') + 10;
  if (ch >= 'A' && ch <= 'F')
    return static_cast<unsigned>(ch - 'A') + 10;
  return 16;
}

// The digits of the base at the beginning of the text; limit when they say more than that.
uint64_t scan_digits(std::string_view text, unsigned base, uint64_t limit) {
  uint64_t value = 0;
  for (const char ch : text) {
    const unsigned digit = digit_value(ch);
    if (digit >= base)
      break;
    if (value > (limit - digit) / base)
      return limit;
    value = value * base + digit;
  }
  return value;
}

bool has_hexadecimal_prefix(std::string_view text) {
  return text.size() > 1 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
}

}  // namespace

int64_t mr_scan_integer(std::string_view text) {
  while (!text.empty() && scan_blanks.contains(text[0]))
    text.remove_prefix(1);
  const bool negative = !text.empty() && text[0] == '-';
  if (negative || (!text.empty() && text[0] == '+'))
    text.remove_prefix(1);
  constexpr uint64_t most = std::numeric_limits<int64_t>::max();
  const uint64_t limit = negative ? most + 1 : most;
  uint64_t value = 0;
  if (has_hexadecimal_prefix(text))
    value = scan_digits(text.substr(2), 16, limit);
  else
    value = scan_digits(text, !text.empty() && text[0] == '0' ? 8 : 10, limit);
  return static_cast<int64_t>(negative ? 0 - value : value);
}
