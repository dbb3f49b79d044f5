// That the program beside this file is what it is for.
#include <gtest/gtest.h>

#include <limits>

TEST(Characters, AreUnsignedInThisProgram) { EXPECT_FALSE(std::numeric_limits<char>::is_signed); }
