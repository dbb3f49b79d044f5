#include "tests/namer/installation.h"

#include "namer/mrFiles.h"

#include <windows.h>

#include <algorithm>

namespace {

constexpr char variable[] = "ZQ_APPLICATION_FOLDER";
constexpr char resource_folder[] = "file/ui_recording";

void list_below(const CString& folder, const std::string& prefix, std::vector<std::string>& files) {
  WIN32_FIND_DATAA data;
  const HANDLE find = FindFirstFileA(folder + "\\*", &data);
  if (find == INVALID_HANDLE_VALUE)
    return;
  do {
    const std::string name = data.cFileName;
    if (name == "." || name == "..")
      continue;
    if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
      list_below(folder + "\\" + name.c_str(), prefix + name + "/", files);
    else
      files.push_back(prefix + name);
  } while (FindNextFileA(find, &data));
  FindClose(find);
}

}  // namespace

Installation::Installation() {
  tree.make_folder("bin/x64");
  tree.make_folder(resource_folder);
  set_variable(variable, tree.path("bin/x64"));
}

Installation::~Installation() { set_variable(variable, nullptr); }

CString Installation::path(const std::string& name) const {
  return tree.path(resource_folder + ("/" + name));
}

CString Installation::write(const std::string& name, std::string_view text) {
  return tree.write(resource_folder + ("/" + name), text);
}

std::string Installation::read(const std::string& name) const {
  std::string text;
  return mrFiles::read(path(name), text) ? text : std::string();
}

bool Installation::exists(const std::string& name) const { return mrFiles::file_exists(path(name)); }

void Installation::remove(const std::string& name) { DeleteFileA(path(name)); }

void Installation::remove_documents() {
  for (const char* folder : {"headers", "res"}) {
    CArray<CString, const CString&> files;
    mrFiles::list_files(path(folder), ".xml", files);
    for (const CString& file : files)
      DeleteFileA(path(folder) + "\\" + file);
    RemoveDirectoryA(path(folder));
  }
}

std::vector<std::string> Installation::everything() const {
  std::vector<std::string> files;
  list_below(tree.root(), "", files);
  std::sort(files.begin(), files.end());
  return files;
}
