// A file system in memory behind the naming engine's seam: Windows paths, no case, no links.
#pragma once

#include "framework/CString.h"

#include <string>
#include <string_view>

namespace memory_files {

void add_file(const CString& path, std::string_view contents);
void add_folder(const CString& path);
// There, but cannot be opened.
void lock_file(const CString& path);
// What was written to the path; empty when nothing was.
std::string contents_of(const CString& path);
void remove_below(const CString& folder);
void remove_everything();
// Of %NAME% expansion.
void set_variable(const std::string& name, const char* value);

}  // namespace memory_files
