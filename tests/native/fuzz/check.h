// What must hold whatever the input is; a fuzz target that finds otherwise ends with its input saved.
#pragma once

#include <cstdio>
#include <cstdlib>

#define MUST_HOLD(condition)                                                                                 \
  do {                                                                                                       \
    if (!(condition)) {                                                                                      \
      std::fprintf(stderr, "%s:%d: does not hold: %s\n", __FILE__, __LINE__, #condition);                    \
      std::abort();                                                                                          \
    }                                                                                                        \
  } while (false)
