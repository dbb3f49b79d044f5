// mrmap: builds the resource map from the host's sources and answers questions about it.
#include "apps/mrmap/mrMapCommands.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>

// The start-up code leaves "*" and "?" in arguments alone.
extern "C" int _dowildcard;
int _dowildcard = 0;

namespace {

constexpr char help[] =
    "mrmap: build and ask the resource map, which gives ids their names\n"
    "\n"
    "  mrmap build SPEC.xml [--force] [--clean]\n"
    "  mrmap lookup NUMBER [--prefix IDC_] [--dialog NUMBER-OR-NAME] [--module NAME]\n"
    "  mrmap list (modules | dialogs | controls | headers | constants)\n"
    "             [--module NAME] [--dialog NAME] [--header KEY]\n"
    "  mrmap path\n"
    "  mrmap --version | --help\n"
    "\n"
    "build   reads the resource scripts and headers that SPEC.xml lists, and replaces the map\n"
    "        (ui_map.rcz) and the constants script (ui_consts.js) in the resource folder. The old ones\n"
    "        stay in use until the new ones are complete. Refuses when names would be lost.\n"
    "          --force   saves all the same\n"
    "          --clean   removes the documents of groups and modules that are gone, before it saves;\n"
    "                    the comparison of names still knows them\n"
    "        Warns of names that are no JScript identifiers: scripts could not use them.\n"
    "lookup  prints what a script writes for a number: the name of the control in the dialog, all names\n"
    "        of the number, or the number. Numbers are decimal, or hexadecimal with 0x. --prefix, IDC_\n"
    "        unless given, selects the names of groups whose key begins with it, if there is any.\n"
    "list    prints what the map holds, a line each. --module selects in every list, --dialog in those of\n"
    "        dialogs and controls, --header in those of headers and constants.\n"
    "path    prints the resource folder: ..\\..\\file\\ui_recording, seen from the folder of this program\n"
    "        or from the folder that the environment variable ZQ_APPLICATION_FOLDER names; where there\n"
    "        is no such folder, P:\\devel\\utestsuite\\scriptinclude.\n"
    "\n"
    "Exit status: 0 done; 1 something could not be read, written or found (the reason is on standard\n"
    "error); 2 wrong usage; 4 names would be lost, nothing saved.\n";

struct Command {
  const char* name;
  int (*run)(const mrArguments& arguments);
};

constexpr Command commands[] = {
    {"build", run_build},
    {"lookup", run_lookup},
    {"list", run_list},
    {"path", run_path},
};

int run(mrArguments arguments) {
  if (take_flag(arguments, "--help")) {
    std::fputs(help, stdout);
    return exitDone;
  }
  if (arguments.size() == 1 && arguments[0] == "--version") {
    std::printf("mrmap %s\n", MR_VERSION);
    return exitDone;
  }
  if (arguments.empty())
    throw mrUsageError("a command is missing");
  for (const Command& command : commands)
    if (arguments[0] == command.name)
      return command.run(mrArguments(arguments.begin() + 1, arguments.end()));
  throw mrUsageError(("there is no command " + arguments[0]).GetString());
}

}  // namespace

bool take_flag(mrArguments& arguments, const char* name) {
  const auto found = std::find(arguments.begin(), arguments.end(), name);
  if (found == arguments.end())
    return false;
  arguments.erase(found);
  return true;
}

CString take_option(mrArguments& arguments, const char* name, const CString& missing) {
  const auto found = std::find(arguments.begin(), arguments.end(), name);
  if (found == arguments.end())
    return missing;
  if (found + 1 == arguments.end())
    throw mrUsageError(std::string(name) + " needs a value");
  const CString value = found[1];
  arguments.erase(found, found + 2);
  if (std::find(arguments.begin(), arguments.end(), name) != arguments.end())
    throw mrUsageError(std::string(name) + " is given twice");
  return value;
}

void expect_words(const mrArguments& arguments, size_t count, const char* what) {
  for (const CString& argument : arguments)
    if (argument.Left(2) == "--")
      throw mrUsageError(("there is no option " + argument).GetString());
  if (arguments.size() < count)
    throw mrUsageError(std::string(what) + " is missing");
  if (arguments.size() > count)
    throw mrUsageError(("what is " + arguments[count] + "?").GetString());
}

int main(int argc, char** argv) {
  try {
    return run(mrArguments(argv + 1, argv + argc));
  } catch (const mrUsageError& e) {
    std::fprintf(stderr, "mrmap: %s (mrmap --help tells what there is)\n", e.what());
    return exitUsage;
  } catch (const std::exception& e) {
    std::fflush(stdout);
    std::fprintf(stderr, "mrmap: %s\n", e.what());
    return exitFailed;
  }
}
