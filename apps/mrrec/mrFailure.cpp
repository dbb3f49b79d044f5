#include "apps/mrrec/mrFailure.h"

#include <cstdio>

std::string system_error_text(DWORD error) {
  char text[512] = "";
  const DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                      error, 0, text, sizeof text, nullptr);
  std::string result(text, length);
  result.erase(result.find_last_not_of("\r\n .") + 1);
  return result.empty() ? "error " + std::to_string(error) : result;
}

void print_note(const std::string& text) {
  // What was said before it on stdout stands before it.
  fflush(stdout);
  fprintf(stderr, "mrrec: %s\n", text.c_str());
  fflush(stderr);
}
