#include "hooks/mrSharedBlock.h"

// One object, or the linker would choose the order. The shared attribute needs an initialiser.
__attribute__((section(".SHARED"), shared)) mrSharedBlock mr_shared_block = {};

mrSharedBlock& shared_block() { return mr_shared_block; }
