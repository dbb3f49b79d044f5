#include "tests/support/golden.h"

#include "tests/support/files.h"

#include <gtest/gtest.h>

#include <windows.h>

void expect_golden(const std::string& name, const std::string& bytes) {
  const std::string path = std::string(MR_GOLDEN_FOLDER "/") + name;
  char update[8] = "";
  if (GetEnvironmentVariableA("MR_UPDATE_GOLDEN", update, sizeof update)) {
    write_file(path, bytes);
    return;
  }
  EXPECT_EQ(read_file(path), bytes) << name << "; if it is right, tools/update_golden.py takes it over";
}
