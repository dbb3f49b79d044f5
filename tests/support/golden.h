// Whole results, compared byte for byte with files of tests/golden.
#pragma once

#include <string>

// Fails the test when the file does not hold exactly these bytes. With MR_UPDATE_GOLDEN set in the
// environment (tools/update_golden.py) the file is written instead.
void expect_golden(const std::string& name, const std::string& bytes);
