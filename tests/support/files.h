// Files and folders of tests.
#pragma once

#include <string>
#include <vector>

// The folder of the test program, with a backslash at the end: its neighbours are the programs of the build.
std::string own_folder();

// A new folder in the folder for temporary files, removed with everything in it.
class mrTestFolder {
public:
  mrTestFolder();
  ~mrTestFolder();
  mrTestFolder(const mrTestFolder&) = delete;
  mrTestFolder& operator=(const mrTestFolder&) = delete;

  std::string path(const std::string& name) const { return m_path + "\\" + name; }
  // The names in the folder, in name order.
  std::vector<std::string> names() const;

private:
  std::string m_path;
};

// All bytes of a file; empty when it cannot be read. A file that is being written can be read too.
std::string read_file(const std::string& path);
void write_file(const std::string& path, const std::string& bytes);
