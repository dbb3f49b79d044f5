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

// The system neither removes nor replaces what is read-only. Failure is ignored: what follows fails then too,
// and says so.
void make_writable(const CString& path) {
  const DWORD attributes = attributes_of(path);
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY))
    SetFileAttributesA(path, attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
}

// Adds to names. The system's error when the folder cannot be listed, else ERROR_SUCCESS.
DWORD list(const CString& folder, bool folders, std::vector<CString>& names) {
  WIN32_FIND_DATAA data;
  const HANDLE find = FindFirstFileA(join(folder, "*"), &data);
  if (find == INVALID_HANDLE_VALUE) {
    const DWORD error = GetLastError();
    return error == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : error;
  }
  do {
    const bool folder_found = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (!is_dots(data.cFileName) && (folders || !folder_found))
      names.push_back(data.cFileName);
  } while (FindNextFileA(find, &data));
  const DWORD error = GetLastError();
  FindClose(find);
  return error == ERROR_NO_MORE_FILES ? ERROR_SUCCESS : error;
}

// Asking the system anything else would change its last error: who does so keeps it first.
[[noreturn]] void throw_error(const CString& path, const char* what, DWORD error) {
  const CString reason = system_text(error);
  CString text;
  text.Format("%s could not be %s: %s", path.GetString(), what, reason.GetString());
  throw std::runtime_error(text.GetString());
}

}  // namespace

void throw_system_error(const CString& path, const char* what) { throw_error(path, what, GetLastError()); }

CString join(const CString& folder, const CString& name) { return folder + "\\" + name; }

bool is_file(const CString& path) {
  const DWORD attributes = attributes_of(path);
  return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool is_folder(const CString& path) {
  const DWORD attributes = attributes_of(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

std::vector<CString> names_in(const CString& folder, bool folders) {
  std::vector<CString> names;
  if (!is_folder(folder))
    return names;
  const DWORD error = list(folder, folders, names);
  if (error != ERROR_SUCCESS)
    throw_error(folder, "listed", error);
  return names;
}

std::string contents_of(const CString& path) {
  const HANDLE file = CreateFileA(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                  nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE)
    throw_system_error(path, "read");
  std::string text;
  char chunk[65536];
  DWORD count = 0;
  BOOL read = FALSE;
  while ((read = ReadFile(file, chunk, sizeof chunk, &count, nullptr)) && count > 0)
    text.append(chunk, count);
  const DWORD error = GetLastError();
  CloseHandle(file);
  if (!read)
    throw_error(path, "read", error);
  return text;
}

void make_folder(const CString& path) {
  if (CreateDirectoryA(path, nullptr))
    return;
  const DWORD error = GetLastError();
  if (!is_folder(path))
    throw_error(path, "made", error);
}

void copy_file(const CString& from, const CString& to) {
  if (!CopyFileA(from, to, FALSE))
    throw_system_error(from, "copied");
  make_writable(to);
}

void copy_folder(const CString& from, const CString& to) {
  if (!is_folder(from))
    return;
  make_folder(to);
  for (const CString& name : names_in(from, true)) {
    if (is_folder(join(from, name)))
      copy_folder(join(from, name), join(to, name));
    else
      copy_file(join(from, name), join(to, name));
  }
}

void move(const CString& from, const CString& to, bool replace) {
  if (replace)
    make_writable(to);
  if (!MoveFileExA(from, to, replace ? MOVEFILE_REPLACE_EXISTING : 0))
    throw_system_error(replace ? to : from, replace ? "replaced" : "moved");
}

void remove_file(const CString& path) {
  make_writable(path);
  if (!DeleteFileA(path))
    throw_system_error(path, "removed");
}

void remove_folder(const CString& path) {
  std::vector<CString> names;
  list(path, true, names);
  for (const CString& name : names) {
    const CString inner = join(path, name);
    const DWORD attributes = attributes_of(inner);
    // A link to a folder is removed, not followed.
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) && !(attributes & FILE_ATTRIBUTE_REPARSE_POINT)) {
      remove_folder(inner);
      continue;
    }
    make_writable(inner);
    if (attributes & FILE_ATTRIBUTE_DIRECTORY)
      RemoveDirectoryA(inner);
    else
      DeleteFileA(inner);
  }
  make_writable(path);
  RemoveDirectoryA(path);
}
