// Stand-in of the host utility library; runs in the recorder process and in the map tool.
#include "host/ZQUtils.h"

#include <windows.h>

#include <string>

namespace {

constexpr DWORD max_long_path = 32768;  // the longest path and the longest environment variable Windows knows

// Read from the process, not from the C library's copy: a program may have changed it since it started.
std::string environment_variable(const char* name) {
  std::string value(max_long_path, '\0');
  const DWORD length = GetEnvironmentVariableA(name, &value[0], max_long_path);
  value.resize(length < max_long_path ? length : 0);
  return value;
}

std::string folder_of_program() {
  std::string path(max_long_path, '\0');
  path.resize(GetModuleFileNameA(nullptr, &path[0], max_long_path));
  const size_t separator = path.rfind('\\');
  return separator == std::string::npos ? std::string() : path.substr(0, separator);
}

}  // namespace

CString zqu_get_main_application_folder() {
  const std::string folder = environment_variable("ZQ_APPLICATION_FOLDER");
  return CString(folder.empty() ? folder_of_program() : folder);
}
