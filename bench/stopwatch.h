// The clock of the benchmarks.
#pragma once

#include <windows.h>

#include <algorithm>
#include <limits>

// Since some moment in the past.
inline double seconds() {
  LARGE_INTEGER count, frequency;
  QueryPerformanceCounter(&count);
  QueryPerformanceFrequency(&frequency);
  return static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

// The shortest time that the work took, in seconds.
template <class Work>
double best_of(int rounds, Work work) {
  double best = std::numeric_limits<double>::max();
  for (int i = 0; i < rounds; ++i) {
    const double start = seconds();
    work();
    best = std::min(best, seconds() - start);
  }
  return best;
}
