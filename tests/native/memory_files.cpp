#include "tests/native/memory_files.h"

#include "namer/mrFiles.h"

#include <map>
#include <set>
#include <vector>

namespace {

struct File {
  std::string contents;
  bool locked = false;
};

std::map<std::string, File> files;  // by lower-case path
std::set<std::string> folders;
std::map<std::string, std::string> variables;  // by upper-case name

std::string lower(const CString& path) {
  std::string text = path.str();
  mrFiles::lower_case(&text[0], text.size());
  // The system takes both kinds of slashes in a path.
  for (char& ch : text)
    if (ch == '/')
      ch = '\\';
  return text;
}

std::string upper(std::string text) {
  for (char& ch : text)
    if (ch >= 'a' && ch <= 'z')
      ch = static_cast<char>(ch - 'a' + 'A');
  return text;
}

void add_folders_above(const std::string& path) {
  for (size_t slash = path.find('\\'); slash != std::string::npos; slash = path.find('\\', slash + 1))
    folders.insert(path.substr(0, slash));
}

// Files are looked up by the place they name: "a\..\b" is "b".
std::string place(const CString& path) { return lower(mrFiles::canonical(lower(path))); }

}  // namespace

namespace memory_files {

void add_file(const CString& path, std::string_view contents) {
  files[lower(path)] = {std::string(contents), false};
  add_folders_above(lower(path));
}

void add_folder(const CString& path) {
  folders.insert(lower(path));
  add_folders_above(lower(path));
}

void lock_file(const CString& path) { files[lower(path)].locked = true; }

std::string contents_of(const CString& path) { return files[lower(path)].contents; }

void remove_below(const CString& folder) {
  const std::string prefix = lower(folder) + "\\";
  for (auto file = files.begin(); file != files.end();)
    file = file->first.compare(0, prefix.size(), prefix) == 0 ? files.erase(file) : std::next(file);
}

void remove_everything() {
  files.clear();
  folders.clear();
  variables.clear();
}

void set_variable(const std::string& name, const char* value) {
  if (value)
    variables[upper(name)] = value;
  else
    variables.erase(upper(name));
}

}  // namespace memory_files

namespace mrFiles {

CString combine(const CString& folder, const CString& name) {
  const std::string& text = name.str();
  const bool with_drive = text.size() > 1 && text[1] == ':';
  const bool from_root = !text.empty() && text[0] == '\\';
  if (with_drive || (from_root && text.size() > 1 && text[1] == '\\'))
    return canonical(name);
  if (from_root)
    return canonical(folder.Left(2) + name);
  return canonical(folder + "\\" + name);
}

CString canonical(const CString& path) {
  if (path.GetLength() >= max_path)
    return CString();
  std::vector<std::string> components;
  std::string component;
  for (const char ch : path.str() + "\\") {
    if (ch != '\\') {
      component += ch;
      continue;
    }
    if (component == ".." && components.size() > 1)
      components.pop_back();
    else if (component != "." && component != "..")
      components.push_back(component);
    component.clear();
  }
  std::string text;
  for (size_t i = 0; i < components.size(); ++i)
    text += (i == 0 ? "" : "\\") + components[i];
  return CString(text);
}

bool expand_environment(const CString& text, CString& expanded) {
  std::string result;
  const std::string& source = text.str();
  for (size_t i = 0; i < source.size();) {
    const size_t end = source[i] == '%' ? source.find('%', i + 1) : std::string::npos;
    const auto variable =
        end == std::string::npos ? variables.end() : variables.find(upper(source.substr(i + 1, end - i - 1)));
    if (variable == variables.end()) {
      result += source[i++];
      continue;
    }
    result += variable->second;
    i = end + 1;
  }
  expanded = CString(result);
  return true;
}

// As in code page 1252, whose letters above 0xC0 have their lower cases 0x20 further up.
void lower_case(char* text, size_t length) {
  for (char* ch = text; ch != text + length; ++ch) {
    const auto byte = static_cast<unsigned char>(*ch);
    if ((byte >= 'A' && byte <= 'Z') || (byte >= 0xC0 && byte <= 0xDE && byte != 0xD7))
      *ch = static_cast<char>(byte + 0x20);
  }
}

bool file_exists(const CString& path) { return files.count(place(path)) != 0; }

bool folder_exists(const CString& path) { return folders.count(place(path)) != 0; }

bool read(const CString& path, std::string& text) {
  const auto file = files.find(place(path));
  if (file == files.end() || file->second.locked)
    return false;
  text = file->second.contents;
  return true;
}

bool write(const CString& path, std::string_view text) {
  const size_t slash = lower(path).rfind('\\');
  if (slash == std::string::npos || folders.count(lower(path).substr(0, slash)) == 0)
    return false;
  files[lower(path)] = {std::string(text), false};
  return true;
}

}  // namespace mrFiles
