// The lexer of resource scripts.
#include "tests/namer/open_namer.h"

#include <cstdint>
#include <limits>
#include <ostream>

namespace {

// A text as a sequence of tokens, one letter for the kind: "I:IDOK N:5 S:caption P:,". Ends with "@N" when a
// token could not be formed before the end, with the position where that was.
std::string tokens_of(const CString& text) {
  std::string result;
  int pos = 0;
  mrLexem lex;
  while (OpenNamer::next_lexeme(text, pos, lex)) {
    static constexpr char kinds[] = "?INPS";
    result += result.empty() ? "" : " ";
    result += kinds[lex.kind];
    result += ":" + lex.text.str();
    if (lex.kind == lexInteger)
      result += "(" + std::to_string(lex.value) + ")";
  }
  if (pos != text.GetLength())
    result += " @" + std::to_string(pos);
  EXPECT_EQ(uint32_t{lexNone}, lex.kind) << "the kind is reset before anything is tried";
  return result;
}

struct TokenCase {
  const char* name;
  const char* text;
  const char* expected;
};

constexpr TokenCase token_cases[] = {
    {"blanks, an integer and a comma", "  42,", "N:42(42) P:,"},
    {"a leading zero is octal", "010", "N:010(8)"},
    {"0x is hexadecimal", "0x10 0X10", "N:0x10(16) N:0X10(16)"},
    {"hexadecimal letters are left for the next token", "0x1F", "N:0x1(1) I:F"},
    {"a hexadecimal letter right behind 0x", "0xA", "N:0x(0) I:A"},
    {"digits that no octal number has end it", "08 09 0178", "N:08(0) N:09(0) N:0178(15)"},
    {"x in the middle of a number is taken", "12x34", "N:12x34(12)"},
    {"a minus sign belongs to the number", "-5", "N:-5(-5)"},
    {"a minus sign alone is the integer 0", "- 5", "N:-(0) N:5(5)"},
    {"two minus signs are two integers", "--5", "N:-(0) N:-5(-5)"},
    {"a minus sign before a name", "-A", "N:-(0) I:A"},
    {"a negative octal number", "-010", "N:-010(-8)"},
    {"a negative hexadecimal number", "-0x10", "N:-0x10(-16)"},
    {"a plus sign is a separator", "5+1", "N:5(5) P:+ N:1(1)"},
    {"a decimal point is a separator", "1.5", "N:1(1) P:. N:5(5)"},
    {"an identifier with digits", "IDC_EDIT1", "I:IDC_EDIT1"},
    {"digits before letters are a number", "1abc", "N:1(1) I:abc"},
    {"an identifier may begin with an underscore", "_a9_", "I:_a9_"},
    {"a string", "\"caption\"", "S:caption"},
    {"an empty string", "\"\"", "S:"},
    {"a doubled quote is one", "\"a\"\"b\"", "S:a\"b"},
    {"a backslash before a quote drops out", "\"a\\\"b\"", "S:a\"b"},
    {"other backslashes stay", "\"a\\nb\\tc\"", "S:a\\nb\\tc"},
    {"a second backslash still escapes the quote", "\"C:\\\\\" x\"", "S:C:\\\" x"},
    {"a string that runs over lines", "\"a\r\nb\" c", "S:a\r\nb I:c"},
    {"three quotes at the end", "\"a\"\"\"", "S:a\""},
    {"bytes above 127 inside a string", "\"\xFC\xB9\xFF\"", "S:\xFC\xB9\xFF"},
    {"a run of separators is one token", "),", "P:),"},
    {"comments are separators and words", "// a /* b */", "P:// I:a P:/* I:b P:*/"},
    {"a minus sign ends a run", "=-1", "P:= N:-1(-1)"},
    {"a minus sign deep in a run ends it", ",=(-2)", "P:,=( N:-2(-2) P:)"},
    {"a blank ends a run", ", ,", "P:, P:,"},
    {"the superscript one separates",
     "a\xB9"
     "b",
     "I:a P:\xB9 I:b"},
    {"the superscript one joins a run", ",\xB9;", "P:,\xB9;"},
    {"another byte above 127 is no token", "a \xFCx", "I:a @2"},
    {"an umlaut ends an identifier", "a\xFC", "I:a @1"},
    {"control characters are no tokens", "a \x01", "I:a @2"},
    {"a form feed is no blank", "a\fb", "I:a @1"},
    {"nothing", "", ""},
    {"blanks only", " \t\r\n ", ""},
    {"line feeds are blanks", "a\n\nb\r\n", "I:a I:b"},
};

}  // namespace

TEST(Lexer, ReadsTokens) {
  for (const TokenCase& c : token_cases)
    EXPECT_EQ(c.expected, tokens_of(c.text)) << c.name;
}

TEST(Lexer, TakesEachOfTheThirtyOneSeparators) {
  const std::string separators = "~`!@#$%^&*()+=\\|?/][}{':;<>,.\xB9";
  ASSERT_EQ(30u, separators.size()) << "the minus sign is the 31st: see the next expectation";
  for (int byte = 0; byte < 256; ++byte) {
    const CString text(std::string(1, static_cast<char>(byte)));
    int pos = 0;
    mrLexem lex;
    const bool is_member = separators.find(static_cast<char>(byte)) != std::string::npos || byte == '-';
    EXPECT_EQ(is_member, OpenNamer::parse_separator(text, pos, lex) == 1) << "byte " << byte;
    EXPECT_EQ(is_member ? 1 : OpenNamer::skip_blanks(text, pos = 0) ? 0 : 1, pos) << "byte " << byte;
  }
}

TEST(Lexer, AMinusSignCanBeginARunOfSeparatorsWhenAskedForOne) {
  int pos = 0;
  mrLexem lex;
  EXPECT_EQ(1, OpenNamer::parse_separator("-,-", pos, lex));
  EXPECT_EQ("-,", lex.text);
  EXPECT_EQ(2, pos);
}

TEST(Lexer, TakesAZeroByteForNothing) {
  EXPECT_EQ("I:a @1", tokens_of(CString("a\0b", 3)));
  EXPECT_EQ("P:, @1", tokens_of(CString(",\0,", 3)));
  EXPECT_EQ(std::string("S:a\0b", 5), tokens_of(CString("\"a\0b\"", 5)));
}

TEST(Lexer, AnUnterminatedStringLeavesThePositionAtTheEnd) {
  for (const char* text : {"\"abc", "\"", "\"a\"\"", "\"a\\\"", "  \"x\ny"}) {
    int pos = 0;
    mrLexem lex;
    EXPECT_EQ(0, OpenNamer::parse_string(text, pos, lex)) << text;
    EXPECT_EQ(CString(text).GetLength(), pos) << text;
    pos = 0;
    EXPECT_EQ(0, OpenNamer::next_lexeme(text, pos, lex)) << text;
    EXPECT_EQ(CString(text).GetLength(), pos) << text;
  }
}

TEST(Lexer, AFailureLeavesThePositionBehindTheBlanks) {
  const CString text = " \r\n\t?";
  int pos = 0;
  mrLexem lex;
  EXPECT_EQ(0, OpenNamer::parse_int(text, pos, lex));
  EXPECT_EQ(4, pos);
  pos = 0;
  EXPECT_EQ(0, OpenNamer::parse_id(text, pos, lex));
  EXPECT_EQ(4, pos);
  pos = 0;
  EXPECT_EQ(0, OpenNamer::parse_string(text, pos, lex));
  EXPECT_EQ(4, pos);
  pos = 0;
  EXPECT_EQ(0, OpenNamer::parse_separator("  a", pos, lex));
  EXPECT_EQ(2, pos);
}

TEST(Lexer, BlanksOnlyFailEveryFunction) {
  const CString blanks = " \t \r\n";
  using Parse = int (*)(const CString&, int&, mrLexem&);
  const Parse functions[] = {&OpenNamer::next_lexeme, &OpenNamer::parse_int, &OpenNamer::parse_id,
                             &OpenNamer::parse_string, &OpenNamer::parse_separator};
  for (const Parse parse : functions) {
    int pos = 0;
    mrLexem lex;
    EXPECT_EQ(0, parse(blanks, pos, lex));
    EXPECT_EQ(blanks.GetLength(), pos);
  }
}

TEST(Lexer, OtherKindsLeaveTheValueOfTheLastInteger) {
  const CString text = "-1 abc \"s\" , ";
  int pos = 0;
  mrLexem lex;
  for (int token = 0; token < 4; ++token) {
    ASSERT_EQ(1, OpenNamer::next_lexeme(text, pos, lex));
    EXPECT_EQ(-1, lex.value) << token;
  }
}

TEST(Lexer, KindsHaveTheirNumbers) {
  EXPECT_EQ(0u, uint32_t{lexNone});
  EXPECT_EQ(1u, uint32_t{lexIdentifier});
  EXPECT_EQ(2u, uint32_t{lexInteger});
  EXPECT_EQ(3u, uint32_t{lexSeparator});
  EXPECT_EQ(4u, uint32_t{lexString});
}

TEST(Lexer, SkipsBlanksAndTellsWhetherAnythingIsLeft) {
  int pos = 0;
  EXPECT_EQ(1, OpenNamer::skip_blanks(" \t\r\nx", pos));
  EXPECT_EQ(4, pos);
  EXPECT_EQ(1, OpenNamer::skip_blanks(" \t\r\nx", pos));
  EXPECT_EQ(4, pos);
  pos = 1;
  EXPECT_EQ(0, OpenNamer::skip_blanks("x  ", pos));
  EXPECT_EQ(3, pos);
  pos = 0;
  EXPECT_EQ(0, OpenNamer::skip_blanks("", pos));
}

TEST(Lexer, FindsTheNextLineFeedOrNone) {
  const CString text = "ab\n\ncd";
  int pos = 0;
  EXPECT_EQ(1, OpenNamer::next_line(text, pos));
  EXPECT_EQ(2, pos);
  EXPECT_EQ(1, OpenNamer::next_line(text, pos)) << "at the line feed itself it stays";
  EXPECT_EQ(2, pos);
  pos = 3;
  EXPECT_EQ(1, OpenNamer::next_line(text, pos));
  EXPECT_EQ(3, pos);
  pos = 4;
  EXPECT_EQ(0, OpenNamer::next_line(text, pos));
  EXPECT_EQ(-1, pos);
}

TEST(Lexer, APositionOutsideTheTextIsItsEnd) {
  for (const int outside :
       {-1, -1000, 3, 1000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    int pos = outside;
    mrLexem lex;
    EXPECT_EQ(0, OpenNamer::skip_blanks("abc", pos)) << outside;
    EXPECT_EQ(0, OpenNamer::next_lexeme("abc", pos, lex)) << outside;
    EXPECT_EQ(0, OpenNamer::next_line("abc", pos)) << outside;
    EXPECT_EQ(-1, pos) << outside;
  }
}

namespace {

struct NumberCase {
  const char* name;
  const char* text;
  int64_t expected;
};

constexpr int64_t largest = std::numeric_limits<int64_t>::max();
constexpr int64_t smallest = std::numeric_limits<int64_t>::min();

constexpr NumberCase number_cases[] = {
    {"decimal", "57600", 57600},
    {"negative", "-1", -1},
    {"a plus sign", "+7", 7},
    {"hexadecimal with all letters", "0xE80f", 0xE80F},
    {"octal", "0755", 493},
    {"leading blanks", " \t\n\v\f\r12", 12},
    {"what follows does not matter", "5+1", 5},
    {"a fraction is cut", "1.5", 1},
    {"no digits behind 0x", "0x", 0},
    {"no digits of octal", "08", 0},
    {"no digits of octal either", "09", 0},
    {"nothing", "", 0},
    {"no number", "abc", 0},
    {"a sign alone", "-", 0},
    {"two signs", "--5", 0},
    {"a sign and a blank", "- 5", 0},
    {"the largest", "9223372036854775807", largest},
    {"beyond the largest", "9223372036854775808", largest},
    {"far beyond the largest", "99999999999999999999999999", largest},
    {"the smallest", "-9223372036854775808", smallest},
    {"beyond the smallest", "-9223372036854775809", smallest},
    {"the largest in hexadecimal", "0x7FFFFFFFFFFFFFFF", largest},
    {"sixteen hexadecimal digits", "0xFFFFFFFFFFFFFFFF", largest},
    {"the largest in octal", "0777777777777777777777", largest},
    {"beyond the largest in octal", "01000000000000000000000", largest},
};

}  // namespace

TEST(Numbers, AreReadAsTheCLibraryScansThem) {
  for (const NumberCase& c : number_cases)
    EXPECT_EQ(c.expected, OpenNamer::to_int(c.text)) << c.name;
}

TEST(Numbers, AnIntegerTokenBeyondSixtyFourBitsSaturates) {
  EXPECT_EQ("N:99999999999999999999(9223372036854775807)", tokens_of("99999999999999999999"));
  EXPECT_EQ("N:-99999999999999999999(-9223372036854775808)", tokens_of("-99999999999999999999"));
}
