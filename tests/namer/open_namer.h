// The naming engine with everything laid open that it protects, and a memory for what it reports.
#pragma once

#include "namer/mrIDNamer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

class OpenNamer : public mrIDNamer {
public:
  using mrIDNamer::add_constant;
  using mrIDNamer::add_dir_to_zip;
  using mrIDNamer::add_file_to_zip;
  using mrIDNamer::add_header;
  using mrIDNamer::add_lib;
  using mrIDNamer::check_res_map;
  using mrIDNamer::clear_all;
  using mrIDNamer::clear_include_paths;
  using mrIDNamer::expand_path;
  using mrIDNamer::file_modified_date;
  using mrIDNamer::general_head;
  using mrIDNamer::load_res_map;
  using mrIDNamer::next_lexeme;
  using mrIDNamer::next_line;
  using mrIDNamer::parse_id;
  using mrIDNamer::parse_int;
  using mrIDNamer::parse_separator;
  using mrIDNamer::parse_string;
  using mrIDNamer::process_header_file;
  using mrIDNamer::process_header_in_paths;
  using mrIDNamer::process_line;
  using mrIDNamer::process_resource_file;
  using mrIDNamer::save_all_declarations;
  using mrIDNamer::save_res_map;
  using mrIDNamer::skip_blanks;
  using mrIDNamer::to_int;

  using mrIDNamer::m_error_count;
  using mrIDNamer::m_headers;
  using mrIDNamer::m_include_paths;
  using mrIDNamer::m_libraries;
  using mrIDNamer::m_processed_files;
  using mrIDNamer::m_values;
  using mrIDNamer::m_warning_count;

  std::vector<std::string> errors, warnings;

  void warning(const CString& text) override {
    warnings.push_back(text.str());
    mrIDNamer::warning(text);
  }
  void error(const CString& text) override {
    errors.push_back(text.str());
    mrIDNamer::error(text);
  }

  // The constants of a group as "NAME=1 OTHER=2"; "no group" when there is none.
  std::string constants(const char* key) const {
    const auto group = m_headers.find(std::string_view(key));
    if (group == m_headers.end())
      return "no group";
    std::string text;
    for (const auto& [name, value] : group->second->constants)
      text += (text.empty() ? "" : " ") + name.str() + "=" + std::to_string(value);
    return text;
  }
  // The qualified names of a number as "a.X b.Y".
  std::string names(int64_t value) const {
    const auto found = m_values.find(value);
    if (found == m_values.end())
      return "no entry";
    std::string text;
    for (const CString& name : *found->second)
      text += (text.empty() ? "" : " ") + name.str();
    return text;
  }
  // The groups of a module as "a b".
  std::string groups(const char* module) const {
    std::string text;
    for (const auto& [key, group] : m_libraries.find(std::string_view(module))->second->headers)
      text += (text.empty() ? "" : " ") + key.str();
    return text;
  }
  // The dialogs of a module as "101 IDD_A: 1=IDOK 2=IDCANCEL; 102 IDD_B:"; "no module" when there is none.
  std::string dialogs(const char* module) const {
    const auto found = m_libraries.find(std::string_view(module));
    if (found == m_libraries.end())
      return "no module";
    std::string text;
    for (const auto& [number, dialog] : found->second->dialogs) {
      text += (text.empty() ? "" : "; ") + std::to_string(number) + " " + dialog->name.str() + ":";
      for (const auto& [id, name] : dialog->controls)
        text += " " + std::to_string(id) + "=" + name.str();
    }
    return text;
  }
};
