// Source files in a temporary folder.
#include "tests/namer/source_tree.h"

#include <windows.h>

#include <stdexcept>

namespace {

void remove_all(const CString& folder) {
  WIN32_FIND_DATAA data;
  const HANDLE find = FindFirstFileA(folder + "\\*", &data);
  if (find == INVALID_HANDLE_VALUE)
    return;
  do {
    const CString name = data.cFileName;
    if (name == "." || name == "..")
      continue;
    const CString path = folder + "\\" + name;
    if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
      remove_all(path);
      continue;
    }
    SetFileAttributesA(path, FILE_ATTRIBUTE_NORMAL);
    DeleteFileA(path);
  } while (FindNextFileA(find, &data));
  FindClose(find);
  RemoveDirectoryA(folder);
}

void make_folders(const CString& path) {
  for (int slash = path.Find('\\', 3); slash >= 0; slash = path.Find('\\', slash + 1))
    CreateDirectoryA(path.Left(slash), nullptr);
  CreateDirectoryA(path, nullptr);
}

}  // namespace

SourceTree::SourceTree() {
  static int count = 0;
  char temporary[MAX_PATH];
  GetTempPathA(MAX_PATH, temporary);
  m_root.Format("%snamer-%lu-%d", temporary, GetCurrentProcessId(), ++count);
  remove_all(m_root);
  make_folders(m_root);
}

SourceTree::~SourceTree() {
  for (void* const lock : m_locks)
    CloseHandle(lock);
  remove_all(m_root);
}

CString SourceTree::path(const std::string& name) const {
  std::string text = name;
  for (char& ch : text)
    if (ch == '/')
      ch = '\\';
  return m_root + "\\" + CString(text);
}

void SourceTree::make_folder(const std::string& name) { make_folders(path(name)); }

CString SourceTree::write(const std::string& name, std::string_view text) {
  const CString full = path(name);
  make_folders(full.Left(full.ReverseFind('\\')));
  const HANDLE file = CreateFileA(full, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  DWORD written = 0;
  if (file == INVALID_HANDLE_VALUE ||
      !WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) || !CloseHandle(file))
    throw std::runtime_error("cannot write a file of the test");
  return full;
}

void SourceTree::lock(const std::string& name) {
  const HANDLE file = CreateFileA(path(name), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE)
    throw std::runtime_error("cannot lock a file of the test");
  m_locks.push_back(file);
}

void set_variable(const char* name, const char* value) { SetEnvironmentVariableA(name, value); }
