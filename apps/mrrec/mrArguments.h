// The command line of mrrec.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

enum mrCommand { commandRecord, commandStop, commandLog, commandVersion, commandHelp };

// How the host is named.
enum mrHostOption { hostNone, hostLaunch, hostPid, hostProcess, hostTitle };

// One --ignore: a number, or a name that the resource map is asked for later.
struct mrIgnoredId {
  std::string name;  // empty for a number
  int number = 0;
};

struct mrArguments {
  mrCommand command = commandHelp;
  mrHostOption host_option = hostNone;
  std::string host;  // command line, executable's base name or a part of a title
  DWORD pid = 0;
  std::string out;  // empty only for commandLog
  bool raw = false;
  bool quiet = false;
  std::vector<mrIgnoredId> ignored;
  DWORD limit_ms = 0;  // 0: no limit
};

// The longest --for, in seconds; longer waits do not fit into 32 bits of milliseconds.
constexpr double max_limit_seconds = 4000000;

// Reads the words behind the program's name. Throws mrFailure (exitWrongUsage) for anything that is not as
// the help tells. Whether --ignore's names exist is not known here.
mrArguments parse_arguments(const std::vector<std::string>& words);

// What --help prints.
extern const char usage_text[];
