#include "apps/mrrec/mrPendingLines.h"

#include <cstdio>

void mrPendingLines::add(const std::vector<CString>& lines) {
  m_lines.insert(m_lines.end(), lines.begin(), lines.end());
}

void mrPendingLines::print() {
  if (m_printed == m_lines.size())
    return;
  for (; m_printed < m_lines.size(); ++m_printed)
    printf("%s\n", m_lines[m_printed].GetString());
  // Whoever reads a pipe waits for the line, not for the buffer.
  fflush(stdout);
}

void tell_start(const mrHost& host) {
  printf("recording %s (pid %lu, thread %lu)\n", host.name.c_str(), host.pid, host.thread);
  fflush(stdout);
}
