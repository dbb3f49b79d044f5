// The commands of the map tool. Each takes the arguments behind its name and returns the exit status; what
// cannot be done is std::runtime_error (status 1), what was typed wrongly mrUsageError (status 2).
#pragma once

#include "framework/CString.h"

#include <stdexcept>
#include <vector>

enum ExitStatus : int {
  exitDone = 0,
  exitFailed = 1,
  exitUsage = 2,
  exitNamesLost = 4,
};

class mrUsageError : public std::runtime_error {
public:
  using std::runtime_error::runtime_error;
};

using mrArguments = std::vector<CString>;

int run_build(const mrArguments& arguments);
int run_lookup(const mrArguments& arguments);
int run_list(const mrArguments& arguments);
int run_path(const mrArguments& arguments);

// The value of "--name VALUE", also when it is empty; missing when it was not given. A name without a value,
// or given twice, is an error. Takes both off the arguments.
CString take_option(mrArguments& arguments, const char* name, const CString& missing = CString());
// Whether "--name" was given. Takes it off.
bool take_flag(mrArguments& arguments, const char* name);
// The words left over once all options are taken: exactly these many, and no further option.
void expect_words(const mrArguments& arguments, size_t count, const char* what);
