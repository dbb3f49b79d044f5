// A main application folder of the test's own with a resource folder, which the environment variable
// ZQ_APPLICATION_FOLDER names as long as the object lives.
#pragma once

#include "tests/namer/source_tree.h"

#include <string>
#include <vector>

class Installation {
public:
  Installation();
  ~Installation();

  SourceTree tree;
  // Of a file in the resource folder, with forward slashes.
  CString path(const std::string& name) const;
  CString write(const std::string& name, std::string_view text);
  // Empty when the file is not there.
  std::string read(const std::string& name) const;
  bool exists(const std::string& name) const;
  void remove(const std::string& name);
  // Removes the unpacked documents, so that the archive is read.
  void remove_documents();
  // The files below the tree's root, with forward slashes, in order: to see that nothing else was written.
  std::vector<std::string> everything() const;
};
