// Source files in memory.
#include "tests/namer/source_tree.h"

#include "tests/native/memory_files.h"

SourceTree::SourceTree() : m_root("C:\\Work") {
  memory_files::remove_everything();
  memory_files::add_folder(m_root);
}

SourceTree::~SourceTree() { memory_files::remove_everything(); }

CString SourceTree::path(const std::string& name) const {
  std::string text = name;
  for (char& ch : text)
    if (ch == '/')
      ch = '\\';
  return m_root + "\\" + CString(text);
}

void SourceTree::make_folder(const std::string& name) { memory_files::add_folder(path(name)); }

CString SourceTree::write(const std::string& name, std::string_view text) {
  memory_files::add_file(path(name), text);
  return path(name);
}

void SourceTree::lock(const std::string& name) { memory_files::lock_file(path(name)); }

void set_variable(const char* name, const char* value) { memory_files::set_variable(name, value); }
