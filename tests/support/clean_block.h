// The shared hook block as a first load finds it, before and after a test. Such tests hold the desktop's lock
// (SHARED_BLOCK): other processes may have the library loaded and the block in use.
#pragma once

#include "hooks/mrSharedBlock.h"

#include <cstring>

class mrCleanBlock {
public:
  mrCleanBlock() { clear(); }
  ~mrCleanBlock() { clear(); }
  mrCleanBlock(const mrCleanBlock&) = delete;
  mrCleanBlock& operator=(const mrCleanBlock&) = delete;

private:
  static void clear() { memset(static_cast<void*>(&shared_block()), 0, sizeof(mrSharedBlock)); }
};
