// The two text helpers of script generation: what may stand as an identifier and what between double quotes.
#include "model/mrRecorder.h"

static bool is_digit(char ch) { return ch >= '0' && ch <= '9'; }

static bool is_identifier_char(char ch) {
  return is_digit(ch) || (ch >= 'A' && ch <= 'Z') || (ch >= 'a' && ch <= 'z') || ch == '_';
}

CString mrRecorder::make_identifier(const CString& text) {
  CString identifier;
  for (const char ch : text.str()) {
    if (is_identifier_char(ch))
      identifier += ch;
    else if (ch == ' ' || ch == '\t')
      identifier += '_';
  }
  if (identifier.IsEmpty() || is_digit(identifier[0]))
    return "_" + identifier;
  return identifier;
}

static void append_quoted(char ch, CString& quoted) {
  switch (ch) {
  case '\b':
    quoted += "\\b";
    return;
  case '\t':
    quoted += "\\t";
    return;
  case '\n':
    quoted += "\\n";
    return;
  case '\f':
    quoted += "\\f";
    return;
  case '\r':
    quoted += "\\r";
    return;
  case '"':
  case '\\':
    quoted += '\\';
    quoted += ch;
    return;
  default:
    break;
  }
  const unsigned char byte = static_cast<unsigned char>(ch);
  if (byte < 32)
    quoted.AppendFormat("\\x%02X", byte);
  else
    quoted += ch;  // 128 and above too: the script is text in the same code page
}

CString mrRecorder::quote_string(const CString& text) {
  CString quoted;
  for (const char ch : text.str())
    append_quoted(ch, quoted);
  return quoted;
}
