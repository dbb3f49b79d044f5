// Why mrrec cannot go on: thrown where it is found out, printed and turned into the exit status by main.
#pragma once

#include <windows.h>

#include <string>

// Part of the command line's contract.
enum mrExitStatus {
  exitDone = 0,
  exitFailed = 1,
  exitWrongUsage = 2,
  exitAlreadyRecording = 3,
};

struct mrFailure {
  mrExitStatus status;
  std::string reason;  // one line, without "mrrec: " and without a full stop
};

// What the system says about an error of GetLastError, without a line end: "access denied" and its kin.
std::string system_error_text(DWORD error = GetLastError());

// "mrrec: TEXT" on stderr.
void print_note(const std::string& text);
