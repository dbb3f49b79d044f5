// One token of a resource script, as the lexer of mrIDNamer fills it.
#pragma once

#include "framework/CString.h"

#include <cstdint>

enum mrLexemKind : uint32_t {
  lexNone = 0,
  lexIdentifier = 1,
  lexInteger = 2,
  lexSeparator = 3,
  lexString = 4,
};

struct mrLexem {
  CString text;             // as read; of a string the contents, escapes resolved, without the quotes
  int64_t value = 0;        // of an integer; the other kinds leave the last one in place
  uint32_t kind = lexNone;  // mrLexemKind
};
