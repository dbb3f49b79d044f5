// Folders and files as the map tool moves them about. Failures are std::runtime_error with a message that
// names the file and the system's reason.
#pragma once

#include "framework/CString.h"

#include <string>
#include <vector>

CString join(const CString& folder, const CString& name);
bool is_file(const CString& path);
bool is_folder(const CString& path);
// Names (no folder) of the files in the folder; of its subfolders too when folders is true. None when there
// is no such folder.
std::vector<CString> names_in(const CString& folder, bool folders = false);
// The whole file.
std::string contents_of(const CString& path);

void make_folder(const CString& path);
// With everything in it. Nothing happens when the folder is not there.
void copy_folder(const CString& from, const CString& to);
// The copy can be written and removed, also when the file is read-only.
void copy_file(const CString& from, const CString& to);
// Renames a file or folder; what is at the other name must be gone, or must be a file when replace is true.
void move(const CString& from, const CString& to, bool replace = false);
// These two remove read-only files as well.
void remove_file(const CString& path);
// With everything in it; what cannot be removed stays, silently.
void remove_folder(const CString& path);

// "PATH could not be WHAT: the system's text for the error", which is the calling thread's last one.
[[noreturn]] void throw_system_error(const CString& path, const char* what);
