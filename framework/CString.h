// 8-bit text in the ANSI code page, the string of the exported interface.
//
// A thin class over std::string with the names of the framework that the interface is written in, and no more
// operations than are used. Header-only: both sides of the DLL boundary compile the same code and share one
// heap.
#pragma once

#include <cstdarg>
#include <cstdio>
#include <string>
#include <utility>

// Lets the compiler check formats; the cross compiler has two dialects and says which one is in force.
#if defined(__MINGW_PRINTF_FORMAT)
#define MR_PRINTF_LIKE __attribute__((format(__MINGW_PRINTF_FORMAT, 2, 3)))
#else
#define MR_PRINTF_LIKE __attribute__((format(printf, 2, 3)))
#endif

class CString {
public:
  CString() = default;
  CString(const char* text) : m_text(text ? text : "") {}
  // Exactly length bytes, zero bytes included.
  CString(const char* text, int length) : m_text(text, static_cast<size_t>(length)) {}
  CString(std::string text) : m_text(std::move(text)) {}

  const char* GetString() const { return m_text.c_str(); }
  operator const char*() const { return m_text.c_str(); }
  // The same text for code that speaks std::string.
  const std::string& str() const { return m_text; }

  int GetLength() const { return static_cast<int>(m_text.size()); }
  bool IsEmpty() const { return m_text.empty(); }
  void Empty() { m_text.clear(); }
  char GetAt(int index) const { return m_text[static_cast<size_t>(index)]; }
  char operator[](int index) const { return GetAt(index); }

  CString& operator+=(const CString& text) { return append(text.m_text.data(), text.m_text.size()); }
  CString& operator+=(const char* text) {
    m_text += text;
    return *this;
  }
  CString& operator+=(char ch) {
    m_text += ch;
    return *this;
  }

  // printf-like; replaces the text. Arguments of type CString are passed as GetString().
  MR_PRINTF_LIKE void Format(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const std::string text = formatted(format, arguments);
    va_end(arguments);
    m_text = text;
  }
  // printf-like; appends.
  MR_PRINTF_LIKE void AppendFormat(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    m_text += formatted(format, arguments);
    va_end(arguments);
  }

  CString Left(int count) const { return Mid(0, count); }
  CString Mid(int first) const { return Mid(first, GetLength()); }
  // Out-of-range positions and counts are cut to what there is.
  CString Mid(int first, int count) const {
    if (first < 0)
      first = 0;
    if (first >= GetLength() || count <= 0)
      return CString();
    return CString(m_text.substr(static_cast<size_t>(first), static_cast<size_t>(count)));
  }

  // Index of the first occurrence at or after start, -1 when there is none.
  int Find(char ch, int start = 0) const { return index(m_text.find(ch, static_cast<size_t>(start))); }
  int Find(const char* text, int start = 0) const {
    return index(m_text.find(text, static_cast<size_t>(start)));
  }
  int ReverseFind(char ch) const { return index(m_text.rfind(ch)); }

private:
  CString& append(const char* text, size_t length) {
    m_text.append(text, length);
    return *this;
  }
  static int index(size_t position) {
    return position == std::string::npos ? -1 : static_cast<int>(position);
  }
  static std::string formatted(const char* format, va_list arguments) {
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    if (length <= 0)
      return std::string();
    std::string text(static_cast<size_t>(length), '\0');
    std::vsnprintf(&text[0], text.size() + 1, format, arguments);
    return text;
  }

  std::string m_text;
};

inline bool operator==(const CString& a, const CString& b) { return a.str() == b.str(); }
inline bool operator==(const CString& a, const char* b) { return a.str() == b; }
inline bool operator==(const char* a, const CString& b) { return b == a; }
inline bool operator!=(const CString& a, const CString& b) { return !(a == b); }
inline bool operator!=(const CString& a, const char* b) { return !(a == b); }
inline bool operator!=(const char* a, const CString& b) { return !(b == a); }
// Ordinary byte comparison, case-sensitive: the order of every map keyed by text.
inline bool operator<(const CString& a, const CString& b) { return a.str() < b.str(); }

inline CString operator+(CString a, const CString& b) { return a += b; }
inline CString operator+(CString a, const char* b) { return a += b; }
inline CString operator+(CString a, char b) { return a += b; }
inline CString operator+(const char* a, const CString& b) { return CString(a) += b; }
