// What mrrec does, one function per command. Each returns the exit status of success or throws mrFailure.
#pragma once

#include "apps/mrrec/mrArguments.h"

int record(const mrArguments& arguments);
int stop();
int log_messages(const mrArguments& arguments);
