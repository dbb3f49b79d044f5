// Paths and files through the system's own functions.
#include "namer/mrFiles.h"

#include <windows.h>
#include <shlwapi.h>

#include <algorithm>
#include <climits>

namespace {

constexpr DWORD max_environment = 32768;  // characters; the longest text that the system expands
constexpr DWORD max_io = 1u << 30;        // bytes per call, below what a DWORD holds

// An editor or a compiler may have a source open for writing; who writes wants no second writer.
constexpr DWORD reader_sharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD writer_sharing = FILE_SHARE_READ | FILE_SHARE_DELETE;

// Closes a file handle.
class FileHandle {
public:
  FileHandle(const CString& path, DWORD access, DWORD sharing, DWORD disposition)
      : m_handle(CreateFileA(path, access, sharing, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr)) {}
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;
  ~FileHandle() {
    if (m_handle != INVALID_HANDLE_VALUE)
      CloseHandle(m_handle);
  }
  // A console or a pipe under a file's name is no file: reading it could wait for ever.
  bool is_file() const { return m_handle != INVALID_HANDLE_VALUE && GetFileType(m_handle) == FILE_TYPE_DISK; }
  HANDLE get() const { return m_handle; }

private:
  HANDLE m_handle;
};

// Ends an enumeration of files.
class FindHandle {
public:
  FindHandle(const CString& pattern, WIN32_FIND_DATAA& data) : m_handle(FindFirstFileA(pattern, &data)) {}
  FindHandle(const FindHandle&) = delete;
  FindHandle& operator=(const FindHandle&) = delete;
  ~FindHandle() {
    if (m_handle != INVALID_HANDLE_VALUE)
      FindClose(m_handle);
  }
  // The system's error is the calling thread's last one when not.
  bool found() const { return m_handle != INVALID_HANDLE_VALUE; }
  bool next(WIN32_FIND_DATAA& data) const { return FindNextFileA(m_handle, &data) != FALSE; }

private:
  HANDLE m_handle;
};

bool is_directory(DWORD attributes) { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }

}  // namespace

namespace mrFiles {

CString combine(const CString& folder, const CString& name) {
  char path[MAX_PATH];
  return PathCombineA(path, folder, name) ? CString(path) : CString();
}

CString canonical(const CString& path) {
  char result[MAX_PATH];
  if (path.GetLength() >= MAX_PATH || !PathCanonicalizeA(result, path))
    return CString();
  return CString(result);
}

bool expand_environment(const CString& text, CString& expanded) {
  // The caller decides what is too long; asking with a small buffer would tell a length in other characters.
  std::string buffer(max_environment, '\0');
  const DWORD length = ExpandEnvironmentStringsA(text, &buffer[0], max_environment);
  if (length == 0 || length > max_environment)
    return false;
  expanded = CString(buffer.c_str());
  return true;
}

void lower_case(char* text, size_t length) {
  const auto is_plain = [](char ch) { return static_cast<unsigned char>(ch) < 0x80; };
  if (!std::all_of(text, text + length, is_plain)) {
    CharLowerBuffA(text, static_cast<DWORD>(length));
    return;
  }
  // Plain letters are lower-cased alike in every code page, and without two conversions.
  for (char* ch = text; ch != text + length; ++ch)
    if (*ch >= 'A' && *ch <= 'Z')
      *ch = static_cast<char>(*ch - 'A' + 'a');
}

bool file_exists(const CString& path) {
  const DWORD attributes = GetFileAttributesA(path);
  return attributes != INVALID_FILE_ATTRIBUTES && !is_directory(attributes);
}

bool folder_exists(const CString& path) {
  const DWORD attributes = GetFileAttributesA(path);
  return attributes != INVALID_FILE_ATTRIBUTES && is_directory(attributes);
}

bool list_files(const CString& folder, const CString& extension, CArray<CString, const CString&>& names) {
  const CString pattern = combine(folder, "*" + extension);
  if (pattern.IsEmpty())
    return false;
  names.RemoveAll();
  WIN32_FIND_DATAA data;
  const FindHandle find(pattern, data);
  if (!find.found())
    return GetLastError() == ERROR_FILE_NOT_FOUND;
  do {
    // The pattern also finds names whose short form matches it.
    if (!is_directory(data.dwFileAttributes) && lstrcmpiA(PathFindExtensionA(data.cFileName), extension) == 0)
      names.Add(data.cFileName);
  } while (find.next(data));
  return GetLastError() == ERROR_NO_MORE_FILES;
}

bool read(const CString& path, std::string& text) {
  const FileHandle file(path, GENERIC_READ, reader_sharing, OPEN_EXISTING);
  LARGE_INTEGER size;
  if (!file.is_file() || !GetFileSizeEx(file.get(), &size) || size.QuadPart >= INT_MAX)
    return false;
  text.resize(static_cast<size_t>(size.QuadPart));
  DWORD count = 0;
  if (!ReadFile(file.get(), &text[0], static_cast<DWORD>(text.size()), &count, nullptr))
    return false;
  // Shorter when somebody has cut it meanwhile.
  text.resize(count);
  return true;
}

bool write(const CString& path, std::string_view text) {
  const FileHandle file(path, GENERIC_WRITE, writer_sharing, CREATE_ALWAYS);
  if (!file.is_file())
    return false;
  while (!text.empty()) {
    const DWORD length = static_cast<DWORD>(std::min<size_t>(text.size(), max_io));
    DWORD count = 0;
    if (!WriteFile(file.get(), text.data(), length, &count, nullptr) || count == 0)
      return false;
    text.remove_prefix(count);
  }
  return FlushFileBuffers(file.get()) != FALSE;
}

bool remove(const CString& path) { return DeleteFileA(path) != FALSE; }

long create_folder(const CString& path) {
  if (CreateDirectoryA(path, nullptr))
    return S_OK;
  const DWORD error = GetLastError();  // before anything else is asked
  return folder_exists(path) ? S_OK : HRESULT_FROM_WIN32(error);
}

}  // namespace mrFiles
