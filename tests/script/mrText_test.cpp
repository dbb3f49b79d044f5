// The two text helpers, over every byte.
#include "model/mrRecorder.h"

#include <gtest/gtest.h>

#include <cstdio>

struct TextCase {
  const char* name;
  const char* text;
  const char* expected;
};

TEST(MakeIdentifier, KeepsLettersDigitsAndUnderscores) {
  static constexpr TextCase cases[] = {
      {"punctuation goes, blanks become underscores", "Save As!", "Save_As"},
      {"no digit in front", "3D View", "_3D_View"},
      {"empty", "", "_"},
      {"nothing left", "!?...", "_"},
      {"tabs are blanks", "a\tb", "a_b"},
      {"each blank is one underscore", "a  b ", "a__b_"},
      {"other white space goes", "a\r\nb\vc", "abc"},
      {"a digit in front only once the rest is gone", "(2) Part", "_2_Part"},
      {"underscore in front stays", "_1", "_1"},
      {"bytes beyond ASCII go",
       "Gr\xF6\xDF"
       "e",
       "Gre"},
      {"all of an accelerator's mark", "&File...", "File"},
  };
  for (const TextCase& c : cases)
    EXPECT_EQ(c.expected, mrRecorder::make_identifier(c.text)) << c.name;
}

TEST(MakeIdentifier, TreatsEachOfThe256BytesAsDocumented) {
  const std::string kept = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz";
  for (int byte = 0; byte < 256; ++byte) {
    const char ch = static_cast<char>(byte);
    const std::string text = std::string("x") + ch + "y";
    const std::string expected = kept.find(ch) != std::string::npos ? text
                                 : byte == ' ' || byte == '\t'      ? "x_y"
                                                                    : "xy";
    EXPECT_EQ(expected, mrRecorder::make_identifier(CString(text)).str()) << "byte " << byte;
  }
}

TEST(QuoteString, EscapesWhatAStringLiteralCannotHold) {
  static constexpr TextCase cases[] = {
      {"tab and quote", "a\tb\"c", "a\\tb\\\"c"},
      {"backslash", "C:\\temp", "C:\\\\temp"},
      {"line end", "a\r\nb", "a\\r\\nb"},
      {"back space and form feed", "\b\f", "\\b\\f"},
      {"byte 1", "\x01", "\\x01"},
      {"two upper-case digits", "\x1F", "\\x1F"},
      {"vertical tab has no letter", "\v", "\\x0B"},
      {"single quotes stay", "it's", "it's"},
      {"a percent sign stays", "100%s", "100%s"},
      {"empty", "", ""},
  };
  for (const TextCase& c : cases)
    EXPECT_EQ(c.expected, mrRecorder::quote_string(c.text)) << c.name;
}

TEST(QuoteString, TreatsEachOfThe256BytesAsDocumented) {
  for (int byte = 0; byte < 256; ++byte) {
    const char ch = static_cast<char>(byte);
    std::string expected(1, ch);
    switch (byte) {
    case 8:
      expected = "\\b";
      break;
    case 9:
      expected = "\\t";
      break;
    case 10:
      expected = "\\n";
      break;
    case 12:
      expected = "\\f";
      break;
    case 13:
      expected = "\\r";
      break;
    case '"':
      expected = "\\\"";
      break;
    case '\\':
      expected = "\\\\";
      break;
    default:
      if (byte < 32) {
        char escape[8];
        snprintf(escape, sizeof escape, "\\x%02X", byte);
        expected = escape;
      }
    }
    EXPECT_EQ(expected, mrRecorder::quote_string(CString(&ch, 1)).str()) << "byte " << byte;
  }
}
