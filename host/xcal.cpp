// Stand-in of the host date library.
#include "host/xcal.h"

#include <windows.h>

#include <algorithm>
#include <iterator>

int fcdate(const char* path, int* date) {
  constexpr int unknown[fcdate_fields] = {1980, 1, 1, 0, 0, 0};
  WIN32_FILE_ATTRIBUTE_DATA data;
  SYSTEMTIME utc, local;
  if (!GetFileAttributesExA(path, GetFileExInfoStandard, &data) ||
      !FileTimeToSystemTime(&data.ftLastWriteTime, &utc) ||
      !SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local)) {
    std::copy(std::begin(unknown), std::end(unknown), date);
    return 1;
  }
  const int known[fcdate_fields] = {local.wYear, local.wMonth,  local.wDay,
                                    local.wHour, local.wMinute, local.wSecond};
  std::copy(std::begin(known), std::end(known), date);
  return 0;
}
