// Source files for the readers of the naming engine: files of a temporary folder, or, in the native build,
// files in memory. Paths are Windows paths in both.
#pragma once

#include "framework/CString.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

class SourceTree {
public:
  SourceTree();
  SourceTree(const SourceTree&) = delete;
  SourceTree& operator=(const SourceTree&) = delete;
  // Removes everything below the root.
  ~SourceTree();

  const CString& root() const { return m_root; }
  // Names are below the root, with forward slashes; folders are made as needed. Returns the path.
  CString write(const std::string& name, std::string_view text);
  CString path(const std::string& name) const;
  void make_folder(const std::string& name);
  // From now on the file is there and cannot be opened.
  void lock(const std::string& name);

private:
  CString m_root;
  std::vector<void*> m_locks;
};

// Of this process; null removes it.
void set_variable(const char* name, const char* value);
