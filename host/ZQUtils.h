// Stand-in of the host utility library: where the host application lives.
#pragma once

#include "framework/CString.h"

// The main application folder: the folder of the running program, without a final backslash. The environment
// variable ZQ_APPLICATION_FOLDER, when set and not empty, is the answer instead, as it stands. Any process,
// any thread; empty when the system does not tell the program's path.
CString zqu_get_main_application_folder();
