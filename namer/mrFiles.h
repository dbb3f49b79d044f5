// The one place where the naming engine touches paths and files, so that everything above it is plain C++.
// mrFilesWindows.cpp asks the system; the tests of the platform-free core bring a file system of their own.
// Paths are ANSI text with backslashes, at most 259 characters.
#pragma once

#include "framework/CString.h"

#include <cstddef>

namespace mrFiles {

// The system's path-combining rule: an absolute name wins over the folder, "." and ".." are resolved. Empty
// when the result does not fit.
CString combine(const CString& folder, const CString& name);
bool folder_exists(const CString& path);
// Lower-cases in place, in the ANSI code page.
void lower_case(char* text, size_t length);

}  // namespace mrFiles
