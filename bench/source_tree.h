// Generated sources of a host: modules with headers and a resource script each, in the proportions of a grown
// program.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

struct GeneratedSources {
  std::string root;                  // folder that everything is in; holds winuser.h
  std::vector<std::string> scripts;  // one per module
  std::vector<std::string> files;    // everything, scripts included
  size_t bytes = 0;
};

// Writes sources of about so many bytes below a new folder.
GeneratedSources generate_sources(const std::string& root, size_t bytes);
void remove_folder(const std::string& root);
std::string new_temporary_folder(const char* name);
