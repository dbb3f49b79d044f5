// The program's command line.
#pragma once

#include "framework/CString.h"

#include <vector>

struct scOptions {
  CString ready_file;            // --ready FILE
  std::vector<CString> dialogs;  // --dialog NAME, in order
  CString document;              // FILE
  bool version = false;
  bool help = false;
};

// Reads the arguments after the program's name. On a mistake false, and error says what it is and what to do.
bool read_options(int count, char** arguments, scOptions& options, CString& error);

// What --help prints.
CString usage();
