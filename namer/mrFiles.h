// The one place where the naming engine touches paths and files, so that everything above it is plain C++.
// mrFilesWindows.cpp asks the system; the tests of the platform-free core bring a file system of their own.
//
// Paths are ANSI text with backslashes, at most 259 characters. A folder is not a file: file_exists and read
// say no.
#pragma once

#include "framework/CArray.h"
#include "framework/CString.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace mrFiles {

constexpr int max_path = 260;  // characters, the final zero included

// The system's path-combining rule: an absolute name wins over the folder, "." and ".." are resolved. Empty
// when the result does not fit.
CString combine(const CString& folder, const CString& name);
// Without "." and ".." components. Empty when the path does not fit.
CString canonical(const CString& path);
// With the values of %NAME%; unknown names stay. False, and expanded untouched, when that fails.
bool expand_environment(const CString& text, CString& expanded);
// Lower-cases in place, in the ANSI code page.
void lower_case(char* text, size_t length);

bool file_exists(const CString& path);
bool folder_exists(const CString& path);
// Puts the names (no folder) of the files with this extension (".xml"; any case) into names, in the file
// system's own order. False, and names unspecified, when the folder cannot be listed or is not there.
bool list_files(const CString& folder, const CString& extension, CArray<CString, const CString&>& names);

// The whole file, also one that somebody has open for writing. False, and text unspecified, when it cannot be
// read or holds more than a 32-bit index reaches.
bool read(const CString& path, std::string& text);
// Replaces the file. False when not everything could be written.
bool write(const CString& path, std::string_view text);
bool remove(const CString& path);
// 0, also when the folder is there already; its parent must be. Else the system's reason, as a COM result.
long create_folder(const CString& path);

}  // namespace mrFiles
