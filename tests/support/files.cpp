#include "tests/support/files.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

std::string own_folder() {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, path, MAX_PATH);
  const std::string text = path;
  return text.substr(0, text.find_last_of('\\') + 1);
}

// ---- folder ---------------------------------------------------------------------------------------

mrTestFolder::mrTestFolder() {
  static int count = 0;
  char folder[MAX_PATH] = "";
  GetTempPathA(sizeof folder, folder);
  const std::string own = std::string(folder) + "mr-test-" + std::to_string(GetCurrentProcessId()) + "-";
  // A process of the same number, killed long ago, may have left folders behind.
  do {
    m_path = own + std::to_string(++count);
    if (CreateDirectoryA(m_path.c_str(), nullptr))
      return;
  } while (GetLastError() == ERROR_ALREADY_EXISTS);
  throw std::runtime_error("cannot create " + m_path);
}

static std::vector<WIN32_FIND_DATAA> entries_of(const std::string& path) {
  std::vector<WIN32_FIND_DATAA> entries;
  WIN32_FIND_DATAA entry;
  const HANDLE search = FindFirstFileA((path + "\\*").c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE)
    return entries;
  do {
    const std::string name = entry.cFileName;
    if (name != "." && name != "..")
      entries.push_back(entry);
  } while (FindNextFileA(search, &entry));
  FindClose(search);
  return entries;
}

static bool remove_folder(const std::string& path) {
  for (const WIN32_FIND_DATAA& entry : entries_of(path)) {
    const std::string name = path + "\\" + entry.cFileName;
    SetFileAttributesA(name.c_str(), FILE_ATTRIBUTE_NORMAL);
    if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
      remove_folder(name);
    else
      DeleteFileA(name.c_str());
  }
  return RemoveDirectoryA(path.c_str()) != 0;
}

mrTestFolder::~mrTestFolder() {
  // A process that was just ended closes its files a moment after its end is told.
  for (int tries = 0; tries < 200 && !remove_folder(m_path); ++tries)
    Sleep(10);
}

std::vector<std::string> mrTestFolder::names() const {
  std::vector<std::string> names;
  for (const WIN32_FIND_DATAA& entry : entries_of(m_path))
    names.push_back(entry.cFileName);
  std::sort(names.begin(), names.end());
  return names;
}

// ---- bytes ----------------------------------------------------------------------------------------

std::string read_file(const std::string& path) {
  std::string bytes;
  const HANDLE file =
      CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE)
    return bytes;
  char buffer[4096];
  DWORD count = 0;
  while (ReadFile(file, buffer, sizeof buffer, &count, nullptr) && count > 0)
    bytes.append(buffer, count);
  CloseHandle(file);
  return bytes;
}

void write_file(const std::string& path, const std::string& bytes) {
  FILE* const file = fopen(path.c_str(), "wb");
  if (!file)
    abort();  // the test would read an older file
  fwrite(bytes.data(), 1, bytes.size(), file);
  fclose(file);
}
