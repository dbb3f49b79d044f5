// Lines for stdout that are made while the host waits for the answer to its upload, and printed when it goes
// on. A console in which text is being selected stops whoever prints; the host must not stop with it.
#pragma once

#include "apps/mrrec/mrHost.h"
#include "framework/CString.h"

#include <vector>

class mrPendingLines {
public:
  void add(const std::vector<CString>& lines);
  // Prints what was added since the last call.
  void print();

  // Everything that was added, in order.
  const std::vector<CString>& all() const { return m_lines; }

private:
  std::vector<CString> m_lines;
  size_t m_printed = 0;
};

// "recording NAME.exe (pid N, thread N)": the hooks are in place.
void tell_start(const mrHost& host);
