#include "apps/mrrec/mrOutputFile.h"

#include "apps/mrrec/mrFailure.h"
#include "apps/mrrec/mrHandle.h"

#include <windows.h>
#include <fcntl.h>
#include <io.h>

#include <cstdio>

namespace {

[[noreturn]] void fail(const std::string& reason) { throw mrFailure{exitFailed, reason}; }

// Names of this process do not meet those of another one.
std::string own_name(const std::string& prefix, const std::string& suffix) {
  return prefix + std::to_string(GetCurrentProcessId()) + suffix;
}

std::string full_path(const std::string& path) {
  char text[MAX_PATH] = "";
  const DWORD length = GetFullPathNameA(path.c_str(), sizeof text, text, nullptr);
  if (length == 0 || length >= sizeof text)
    fail("the file name " + path + " cannot be used");
  return text;
}

// Empty on success, else the system's reason.
std::string write_file(const std::string& path, const CString& text) {
  mrHandle file(
      CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file)
    return system_error_text();
  DWORD written = 0;
  const DWORD size = static_cast<DWORD>(text.GetLength());
  const bool good =
      WriteFile(file, text.GetString(), size, &written, nullptr) && written == size && FlushFileBuffers(file);
  if (good)
    return std::string();
  const std::string reason = system_error_text();
  file.close();
  DeleteFileA(path.c_str());  // half a script is worse than none
  return reason;
}

}  // namespace

mrOutputFile::mrOutputFile(const std::string& path)
    : m_path(full_path(path)), m_new_path(own_name(m_path + ".", ".new")) {
  const DWORD attributes = GetFileAttributesA(m_path.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES) {
    if (attributes & FILE_ATTRIBUTE_DIRECTORY)
      fail("cannot write " + m_path + ": it is a folder");
    if (attributes & FILE_ATTRIBUTE_READONLY)
      fail("cannot write " + m_path + ": it is read-only");
  }
  const mrHandle probe(CreateFileA(m_new_path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                   FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
  if (!probe)
    fail("cannot write " + m_path + ": " + system_error_text());
}

void mrOutputFile::write(const CString& text) const {
  const std::string problem = write_file(m_new_path, text);
  if (!problem.empty())
    rescue(text, problem);
  if (!MoveFileExA(m_new_path.c_str(), m_path.c_str(), MOVEFILE_REPLACE_EXISTING))
    fail("cannot write " + m_path + ": " + system_error_text() + "; what was recorded is in " + m_new_path);
}

void mrOutputFile::rescue(const CString& text, const std::string& reason) const {
  char folder[MAX_PATH] = "";
  GetTempPathA(sizeof folder, folder);
  const std::string path = own_name(std::string(folder) + "mrrec-", ".wsf");
  const std::string saved_in = "cannot write " + m_path + ": " + reason + "; what was recorded is ";
  if (write_file(path, text).empty())
    fail(saved_in + "in " + path);
  // The text has line ends of its own.
  fflush(stdout);
  _setmode(_fileno(stdout), _O_BINARY);
  fwrite(text.GetString(), 1, static_cast<size_t>(text.GetLength()), stdout);
  fflush(stdout);
  fail(saved_in + "on the standard output");
}
