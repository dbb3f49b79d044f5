// Folders and files of the map tool, through the system's functions.
#include "apps/mrmap/mrPaths.h"

#include <windows.h>

#include <stdexcept>

namespace {

CString system_text(DWORD error) {
  char text[512];
  DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                                text, sizeof text, nullptr);
  while (length > 0 && (text[length - 1] == '\n' || text[length - 1] == '\r' || text[length - 1] == '.'))
    --length;
  if (length > 0)
    return CString(text, static_cast<int>(length));
  CString number;
  number.Format("error %lu", error);
  return number;
}

bool is_dots(const char* name) {
  return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

DWORD attributes_of(const CString& path) { return GetFileAttributesA(path); }

}  // namespace

void throw_system_error(const CString& path, const char* what) {
  const CString reason = system_text(GetLastError());
  CString text;
  text.Format("%s could not be %s: %s", path.GetString(), what, reason.GetString());
  throw std::runtime_error(text.GetString());
}

CString join(const CString& folder, const CString& name) { return folder + "\\" + name; }

bool is_file(const CString& path) {
  const DWORD attributes = attributes_of(path);
  return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool is_folder(const CString& path) {
  const DWORD attributes = attributes_of(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

std::vector<CString> names_in(const CString& folder, const CString& pattern, bool folders) {
  std::vector<CString> names;
  WIN32_FIND_DATAA data;
  const HANDLE find = FindFirstFileA(join(folder, pattern), &data);
  if (find == INVALID_HANDLE_VALUE)
    return names;
  do {
    const bool folder_found = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (!is_dots(data.cFileName) && (folders || !folder_found))
      names.push_back(data.cFileName);
  } while (FindNextFileA(find, &data));
  FindClose(find);
  return names;
}

void make_folder(const CString& path) {
  if (!CreateDirectoryA(path, nullptr) && !is_folder(path))
    throw_system_error(path, "made");
}

void copy_file(const CString& from, const CString& to) {
  if (!CopyFileA(from, to, FALSE))
    throw_system_error(from, "copied");
}

void copy_folder(const CString& from, const CString& to) {
  if (!is_folder(from))
    return;
  make_folder(to);
  for (const CString& name : names_in(from, "*", true)) {
    if (is_folder(join(from, name)))
      copy_folder(join(from, name), join(to, name));
    else
      copy_file(join(from, name), join(to, name));
  }
}

void move(const CString& from, const CString& to, bool replace) {
  if (!MoveFileExA(from, to, replace ? MOVEFILE_REPLACE_EXISTING : 0))
    throw_system_error(replace ? to : from, replace ? "replaced" : "moved");
}

void remove_file(const CString& path) {
  if (!DeleteFileA(path))
    throw_system_error(path, "removed");
}

void remove_folder(const CString& path) {
  for (const CString& name : names_in(path, "*", true)) {
    const CString inner = join(path, name);
    // A link to a folder is removed, not followed.
    const DWORD attributes = attributes_of(inner);
    if (!(attributes & FILE_ATTRIBUTE_DIRECTORY))
      DeleteFileA(inner);
    else if (!(attributes & FILE_ATTRIBUTE_REPARSE_POINT))
      remove_folder(inner);
    else
      RemoveDirectoryA(inner);
  }
  RemoveDirectoryA(path);
}
