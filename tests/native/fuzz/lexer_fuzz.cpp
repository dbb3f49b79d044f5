// Any text: every function of the lexer, from every position.
#include "tests/namer/open_namer.h"
#include "tests/native/fuzz/check.h"

#include <cstdint>

namespace {

using Parse = int (*)(const CString&, int&, mrLexem&);

// A parse function never goes back, moves on when it succeeds, and says what it found.
void check_step(Parse parse, const CString& text, int start) {
  int pos = start;
  mrLexem lex;
  const int result = parse(text, pos, lex);
  MUST_HOLD(result == 0 || result == 1);
  MUST_HOLD(pos <= text.GetLength());
  MUST_HOLD(result ? pos > start : pos >= start);
  MUST_HOLD(!result || (lex.kind >= lexIdentifier && lex.kind <= lexString));
  MUST_HOLD(lex.text.GetLength() <= pos - start);
}

void read_all(const CString& text) {
  int pos = 0;
  mrLexem lex;
  int tokens = 0;
  while (OpenNamer::next_lexeme(text, pos, lex))
    MUST_HOLD(++tokens <= text.GetLength());
  MUST_HOLD(lex.kind == lexNone);
}

void read_lines(const CString& text) {
  int pos = 0;
  int lines = 0;
  while (OpenNamer::next_line(text, pos)) {
    MUST_HOLD(text[pos] == '\n');
    ++pos;
    MUST_HOLD(++lines <= text.GetLength());
  }
  MUST_HOLD(pos == -1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const CString text(reinterpret_cast<const char*>(data), static_cast<int>(size));
  read_all(text);
  read_lines(text);
  // From everywhere only in short texts: an open string costs the whole rest of the text.
  const int step = 1 + text.GetLength() / 256;
  for (int start = 0; start <= text.GetLength(); start += step)
    for (const Parse parse : {&OpenNamer::next_lexeme, &OpenNamer::parse_int, &OpenNamer::parse_id,
                              &OpenNamer::parse_string, &OpenNamer::parse_separator})
      check_step(parse, text, start);
  OpenNamer::to_int(text);
  return 0;
}
