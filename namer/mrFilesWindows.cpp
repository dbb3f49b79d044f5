// Paths and files through the system's own functions.
#include "namer/mrFiles.h"

#include <windows.h>
#include <shlwapi.h>

namespace mrFiles {

CString combine(const CString& folder, const CString& name) {
  char path[MAX_PATH];
  return PathCombineA(path, folder, name) ? CString(path) : CString();
}

bool folder_exists(const CString& path) {
  const DWORD attributes = GetFileAttributesA(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

void lower_case(char* text, size_t length) { CharLowerBuffA(text, static_cast<DWORD>(length)); }

}  // namespace mrFiles
