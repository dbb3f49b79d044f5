// The lines that this process writes to the debugger output, as long as the object exists.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

class mrDebugLines {
public:
  mrDebugLines() : m_handler(AddVectoredExceptionHandler(1, hear)) { heard().clear(); }
  ~mrDebugLines() { RemoveVectoredExceptionHandler(m_handler); }
  mrDebugLines(const mrDebugLines&) = delete;
  mrDebugLines& operator=(const mrDebugLines&) = delete;

  const std::vector<std::string>& lines() const { return heard(); }

private:
  static std::vector<std::string>& heard() {
    static std::vector<std::string> all;
    return all;
  }
  // OutputDebugStringA raises an exception that carries the text, for a debugger to see.
  static LONG CALLBACK hear(EXCEPTION_POINTERS* raised) {
    constexpr DWORD debug_line = 0x40010006;
    const EXCEPTION_RECORD& record = *raised->ExceptionRecord;
    if (record.ExceptionCode == debug_line)
      heard().push_back(reinterpret_cast<const char*>(record.ExceptionInformation[1]));
    return EXCEPTION_CONTINUE_SEARCH;
  }

  void* m_handler;
};
