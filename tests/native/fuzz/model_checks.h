// What holds in every model, wherever it came from.
#pragma once

#include "tests/namer/open_namer.h"

void check_model(const OpenNamer& namer);
