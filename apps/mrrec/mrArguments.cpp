#include "apps/mrrec/mrArguments.h"

#include "apps/mrrec/mrFailure.h"

#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstdlib>

const char usage_text[] =
    "mrrec - records what a user does in a Windows program as a script\n"
    "\n"
    "  mrrec record HOST --out FILE.wsf [--raw] [--ignore ID]... [--for SECONDS] [--quiet]\n"
    "  mrrec stop\n"
#ifdef MR_ROUTE_LOGGER
    "  mrrec log HOST [--out FILE]\n"
#endif
    "  mrrec --version | --help\n"
    "\n"
    "HOST, one of\n"
    "  --launch \"COMMAND LINE\"  starts the program\n"
    "  --pid N                  a running process\n"
    "  --process NAME.exe       a running process, by its executable's name in any case\n"
    "  --title TEXT             the process of a top-level window with TEXT in its title\n"
    "The thread of the process's first visible top-level window is recorded; mrrec waits up to 30 s for "
    "one.\n"
    "\n"
    "  --out FILE.wsf           where the script goes; an existing file is replaced at the end\n"
    "  --raw                    mouse buttons and Close on windows only: no controls, no commands\n"
    "  --ignore ID              a command that is not recorded: a number, or a name of the resource map\n"
    "  --for SECONDS            stop after this time\n"
    "  --quiet                  only the line that says what is recorded\n"
    "\n"
    "A recording ends, and its script is written, at Ctrl+Break in the host, at Ctrl+C here, at `mrrec "
    "stop`,\n"
    "after --for, or when the host process ends.\n"
#ifdef MR_ROUTE_LOGGER
    "log prints the messages of one window of the host: hold the mouse over it and press Ctrl; Shift stops.\n"
#endif
    "\n"
    "Exit status: 0 script written; 1 it could not record or write (the reason is on stderr);\n"
    "             2 wrong usage; 3 a recording already runs.\n";

namespace {

[[noreturn]] void wrong_usage(const std::string& reason) { throw mrFailure{exitWrongUsage, reason}; }

// The words, read from first to last.
class Words {
public:
  explicit Words(const std::vector<std::string>& words) : m_words(words) {}

  bool at_end() const { return m_next == m_words.size(); }
  const std::string& next() { return m_words[m_next++]; }
  // The value of an option. One that begins like an option is a forgotten value.
  const std::string& value_of(const std::string& option) {
    if (at_end() || m_words[m_next].compare(0, 2, "--") == 0)
      wrong_usage(option + " needs a value");
    if (m_words[m_next].empty())
      wrong_usage(option + " needs a value that is not empty");
    return next();
  }

private:
  const std::vector<std::string>& m_words;
  size_t m_next = 0;
};

bool begins_with_digit(const std::string& text) { return isdigit(static_cast<unsigned char>(text[0])) != 0; }

// Decimal, or hexadecimal with 0x, nothing before and nothing behind; at most maximum.
bool read_number(const std::string& text, bool hexadecimal, uint64_t maximum, uint64_t& number) {
  if (!begins_with_digit(text))
    return false;
  const bool has_prefix = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
  if (has_prefix && !hexadecimal)
    return false;
  char* end = nullptr;
  errno = 0;
  const uint64_t value = strtoull(text.c_str(), &end, has_prefix ? 16 : 10);
  if (*end || errno == ERANGE || value > maximum)
    return false;
  number = value;
  return true;
}

DWORD read_pid(const std::string& text) {
  uint64_t pid = 0;
  if (!read_number(text, false, UINT32_MAX, pid) || pid == 0)
    wrong_usage("--pid needs the number of a process, not \"" + text + "\"");
  return static_cast<DWORD>(pid);
}

mrIgnoredId read_ignored(const std::string& text) {
  mrIgnoredId id;
  if (!begins_with_digit(text)) {
    id.name = text;
    return id;
  }
  uint64_t number = 0;
  if (!read_number(text, true, INT32_MAX, number))
    wrong_usage("--ignore needs a command's number or name, not \"" + text + "\"");
  id.number = static_cast<int>(number);
  return id;
}

DWORD read_limit(const std::string& text) {
  char* end = nullptr;
  const double seconds = strtod(text.c_str(), &end);
  const bool is_plain = text.find_first_not_of("0123456789.") == std::string::npos;
  if (!is_plain || *end || !(seconds > 0) || seconds > max_limit_seconds)
    wrong_usage("--for needs a number of seconds, not \"" + text + "\"");
  return static_cast<DWORD>(std::ceil(seconds * 1000));
}

mrHostOption host_option(const std::string& word) {
  if (word == "--launch")
    return hostLaunch;
  if (word == "--pid")
    return hostPid;
  if (word == "--process")
    return hostProcess;
  return word == "--title" ? hostTitle : hostNone;
}

void read_host(mrHostOption option, const std::string& value, mrArguments& arguments) {
  if (arguments.host_option != hostNone)
    wrong_usage("only one of --launch, --pid, --process and --title can be given");
  arguments.host_option = option;
  arguments.host = value;
  if (option == hostPid)
    arguments.pid = read_pid(value);
}

void read_out(const std::string& value, mrArguments& arguments) {
  if (!arguments.out.empty())
    wrong_usage("--out can be given only once");
  arguments.out = value;
}

// The options that only a recording has. False for any other word.
bool read_record_option(const std::string& word, Words& words, mrArguments& arguments) {
  if (word == "--raw")
    arguments.raw = true;
  else if (word == "--quiet")
    arguments.quiet = true;
  else if (word == "--ignore")
    arguments.ignored.push_back(read_ignored(words.value_of(word)));
  else if (word == "--for")
    arguments.limit_ms = read_limit(words.value_of(word));
  else
    return false;
  return true;
}

void read_options(Words& words, mrArguments& arguments) {
  while (!words.at_end()) {
    const std::string word = words.next();
    if (const mrHostOption option = host_option(word))
      read_host(option, words.value_of(word), arguments);
    else if (word == "--out")
      read_out(words.value_of(word), arguments);
    else if (arguments.command != commandRecord || !read_record_option(word, words, arguments))
      wrong_usage("unknown option \"" + word + "\"");
  }
  if (arguments.host_option == hostNone)
    wrong_usage("which program? Give --launch, --pid, --process or --title");
  if (arguments.command == commandRecord && arguments.out.empty())
    wrong_usage("where to? Give --out FILE.wsf");
}

mrCommand read_command(const std::string& word) {
  if (word == "record")
    return commandRecord;
  if (word == "stop")
    return commandStop;
  if (word == "--version")
    return commandVersion;
  if (word == "--help")
    return commandHelp;
  if (word != "log")
    wrong_usage("unknown command \"" + word + "\"");
#ifdef MR_ROUTE_LOGGER
  return commandLog;
#else
  wrong_usage("log is there only in a build that routes messages to the logger (preset \"logger\")");
#endif
}

}  // namespace

mrArguments parse_arguments(const std::vector<std::string>& all_words) {
  Words words(all_words);
  if (words.at_end())
    wrong_usage("what to do? Give record or stop");
  mrArguments arguments;
  arguments.command = read_command(words.next());
  if (arguments.command == commandRecord || arguments.command == commandLog)
    read_options(words, arguments);
  else if (!words.at_end())
    wrong_usage("unexpected \"" + words.next() + "\"");
  return arguments;
}
