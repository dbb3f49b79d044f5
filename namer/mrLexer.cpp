// The lexer: small functions over (text, position, lexeme). There is no comment handling; a slash is a
// separator.
//
// Every parse function skips blanks, line feeds included, before it looks, and does not go back when it
// fails. A position outside the text, also the -1 of next_line, is the end of the text to all of them.
#include "namer/mrIDNamer.h"

#include "namer/mrCharacters.h"

#include <string_view>

namespace {

// 0xB9 belongs to the set: resource scripts of the host separate with it.
constexpr mrCharacterSet separators("~`!@#$%^&*()+-=\\|?/][}{':;<>,.\xB9");
constexpr mrCharacterSet blanks(" \t\r\n");
constexpr mrCharacterSet digits("0123456789");
// Deliberate: no a to f. "0x1A" is the integer "0x1" and the identifier "A".
constexpr mrCharacterSet integer_characters("0123456789xX");
constexpr mrCharacterSet identifier_starts("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_");
constexpr mrCharacterSet
    identifier_characters("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_0123456789");

// The run of members of the set that starts at first; first itself is taken unseen.
std::string_view run_from(std::string_view text, size_t first, const mrCharacterSet& set) {
  size_t end = first + 1;
  while (end < text.size() && set.contains(text[end]))
    ++end;
  return text.substr(first, end - first);
}

void take(std::string_view token, mrLexemKind kind, int& pos, mrLexem& lex) {
  lex.text = CString(token.data(), static_cast<int>(token.size()));
  lex.kind = kind;
  pos += static_cast<int>(token.size());
}

}  // namespace

int mrIDNamer::skip_blanks(const CString& text, int& pos) {
  if (pos < 0)
    return 0;
  const int length = text.GetLength();
  while (pos < length && blanks.contains(text[pos]))
    ++pos;
  return pos < length;
}

int mrIDNamer::next_line(const CString& text, int& pos) {
  pos = pos < 0 ? -1 : text.Find('\n', pos);
  return pos >= 0;
}

int mrIDNamer::next_lexeme(const CString& text, int& pos, mrLexem& lex) {
  lex.kind = lexNone;
  // Integers first: a lone minus sign is the integer 0, never a separator.
  return parse_int(text, pos, lex) || parse_id(text, pos, lex) || parse_string(text, pos, lex) ||
         parse_separator(text, pos, lex);
}

int mrIDNamer::parse_int(const CString& text, int& pos, mrLexem& lex) {
  if (!skip_blanks(text, pos))
    return 0;
  if (!digits.contains(text[pos]) && text[pos] != '-')
    return 0;
  take(run_from(text.str(), static_cast<size_t>(pos), integer_characters), lexInteger, pos, lex);
  lex.value = to_int(lex.text);
  return 1;
}

int mrIDNamer::parse_id(const CString& text, int& pos, mrLexem& lex) {
  if (!skip_blanks(text, pos) || !identifier_starts.contains(text[pos]))
    return 0;
  take(run_from(text.str(), static_cast<size_t>(pos), identifier_characters), lexIdentifier, pos, lex);
  return 1;
}

// A failure leaves the position at the end of the text.
int mrIDNamer::parse_string(const CString& text, int& pos, mrLexem& lex) {
  if (!skip_blanks(text, pos) || text[pos] != '"')
    return 0;
  const std::string_view all = text.str();
  std::string contents;
  for (size_t i = static_cast<size_t>(pos) + 1; i < all.size(); ++i) {
    const bool quote_follows = i + 1 < all.size() && all[i + 1] == '"';
    if (all[i] == '"' && !quote_follows) {
      lex.text = CString(std::move(contents));
      lex.kind = lexString;
      pos = static_cast<int>(i + 1);
      return 1;
    }
    // A backslash or another quote before a quote gives the quote alone. Any other backslash stands for
    // itself, and so does one before an escaped quote: "C:\\" does not end there.
    if (quote_follows && (all[i] == '"' || all[i] == '\\'))
      ++i;
    contents += all[i];
  }
  pos = text.GetLength();
  return 0;
}

int mrIDNamer::parse_separator(const CString& text, int& pos, mrLexem& lex) {
  if (!skip_blanks(text, pos) || !separators.contains(text[pos]))
    return 0;
  std::string_view run = run_from(text.str(), static_cast<size_t>(pos), separators);
  // A minus sign inside ends the run: it begins the number behind "=-1".
  run = run.substr(0, run.find('-', 1));
  take(run, lexSeparator, pos, lex);
  return 1;
}

int64_t mrIDNamer::to_int(const CString& text) { return mr_scan_integer(text.str()); }
