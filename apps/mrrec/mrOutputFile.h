// The file that a recording leaves: replaced only when the new text is complete.
#pragma once

#include "framework/CString.h"

#include <string>

class mrOutputFile {
public:
  // Throws mrFailure (exitFailed) when it can be known now that the file will not be writable. Leaves nothing
  // behind and changes nothing.
  explicit mrOutputFile(const std::string& path);

  // Writes the text beside the file, byte for byte, and renames. When that fails, the text is saved in the
  // folder for temporary files, or printed on stdout if even that fails, and mrFailure (exitFailed) says
  // where it is.
  void write(const CString& text) const;

  // With folders, as the program's start understood it.
  const std::string& path() const { return m_path; }

private:
  [[noreturn]] void rescue(const CString& text, const std::string& reason) const;

  std::string m_path;
  std::string m_new_path;  // beside it
};
