// mrrec: records from the command line.
#include "apps/mrrec/mrArguments.h"
#include "apps/mrrec/mrCommands.h"
#include "apps/mrrec/mrFailure.h"

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

// The start-up code leaves "*" and "?" in arguments alone: they may stand in a title.
extern "C" int _dowildcard;
int _dowildcard = 0;

static int run(const mrArguments& arguments) {
  switch (arguments.command) {
  case commandRecord:
    return record(arguments);
  case commandStop:
    return stop();
  case commandLog:
    return log_messages(arguments);
  case commandVersion:
    printf("mrrec %s\n", MR_VERSION);
    break;
  case commandHelp:
    printf("%s", usage_text);
    break;
  }
  return exitDone;
}

int main(int argc, char** argv) {
  try {
    return run(parse_arguments(std::vector<std::string>(argv + 1, argv + argc)));
  } catch (const mrFailure& failure) {
    print_note(failure.reason);
    if (failure.status == exitWrongUsage)
      fprintf(stderr, "mrrec --help tells the options\n");
    return failure.status;
  } catch (const std::exception& exception) {
    print_note(exception.what());
    return exitFailed;
  }
}
