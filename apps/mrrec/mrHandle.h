// A kernel handle, closed with the object.
#pragma once

#include <windows.h>

#include <utility>

class mrHandle {
public:
  explicit mrHandle(HANDLE handle = nullptr) : m_handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
  mrHandle(mrHandle&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
  mrHandle& operator=(mrHandle&& other) noexcept {
    std::swap(m_handle, other.m_handle);
    return *this;
  }
  ~mrHandle() { close(); }

  // Null when there is none: INVALID_HANDLE_VALUE is turned into it.
  operator HANDLE() const { return m_handle; }
  void close() {
    if (m_handle)
      CloseHandle(std::exchange(m_handle, nullptr));
  }

private:
  HANDLE m_handle;
};
