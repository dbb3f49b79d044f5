// Answers of the naming engine: names of numbers and numbers of names.
#include "namer/mrIDNamer.h"

#include "namer/mrFiles.h"

#include <string>

namespace {

constexpr size_t max_module_name =
    260;  // characters; a name of a file is not longer, one from an archive may be

bool begins_with(const CString& text, const CString& prefix) {
  return text.str().compare(0, prefix.str().size(), prefix.str()) == 0;
}

// The names that begin with the prefix, joined; empty when none does.
CString join_names(const mrNameArray& names, const CString& prefix) {
  static constexpr std::string_view separator = " | ";
  size_t length = 0;
  for (const CString& name : names)
    if (begins_with(name, prefix))
      length += name.str().size() + separator.size();
  std::string text;
  text.reserve(length);
  for (const CString& name : names) {
    if (!begins_with(name, prefix))
      continue;
    if (!text.empty())
      text += separator;
    text += name.str();
  }
  return CString(std::move(text));
}

}  // namespace

CString mrIDNamer::get_definition(int64_t number, const CString& prefix, uint32_t dialog,
                                  const CString& module) const {
  const mrDialogRes* const found = dialog != 0 ? find_dialog(dialog, module) : nullptr;
  if (!found)
    return names_of_number(number, prefix);
  const auto control = found->controls.find(number);
  if (control == found->controls.end())
    return names_of_number(number, prefix);
  int64_t defined = 0;
  const mrHeader* const group = find_definition(found->library->headers, control->second, defined);
  return group ? mr_qualified_name(group->key, control->second) : control->second;
}

// The module of that name, or the one whose debug build has that name: it carries one more letter.
const mrLibraryRes* mrIDNamer::find_module(std::string_view module) const {
  if (module.empty())
    return nullptr;
  char buffer[max_module_name];
  std::string long_name;
  char* lower = buffer;
  if (module.size() > sizeof buffer) {
    long_name.resize(module.size());
    lower = &long_name[0];
  }
  module.copy(lower, module.size());
  mrFiles::lower_case(lower, module.size());
  auto found = m_libraries.find(std::string_view(lower, module.size()));
  if (found == m_libraries.end())
    found = m_libraries.find(std::string_view(lower, module.size() - 1));
  return found == m_libraries.end() ? nullptr : found->second.get();
}

// A module that is known decides alone, also when it has no such dialog; without one the first module in name
// order that has the dialog does.
const mrDialogRes* mrIDNamer::find_dialog(uint32_t dialog, const CString& module) const {
  if (const mrLibraryRes* const library = find_module(module.str())) {
    const auto found = library->dialogs.find(dialog);
    return found == library->dialogs.end() ? nullptr : found->second.get();
  }
  for (const auto& [name, library] : m_libraries) {
    const auto found = library->dialogs.find(dialog);
    if (found != library->dialogs.end())
      return found->second.get();
  }
  return nullptr;
}

CString mrIDNamer::names_of_number(int64_t number, const CString& prefix) const {
  const auto found = m_values.find(number);
  if (found == m_values.end()) {
    CString text;
    text.Format("%d", static_cast<int32_t>(number));
    return text;
  }
  // Deliberate: the prefix is compared with the beginning of the qualified name, which is a group key. It
  // therefore hardly ever selects anything, and an ambiguous number gives all its names.
  const CString selected = join_names(*found->second, prefix);
  return selected.IsEmpty() ? join_names(*found->second, CString()) : selected;
}

bool mrIDNamer::find_number(const CString& name, int64_t& number) const {
  const int dot = name.ReverseFind('.');
  if (dot >= 0) {
    const auto group = m_headers.find(std::string_view(name.str()).substr(0, static_cast<size_t>(dot)));
    if (group == m_headers.end())
      return false;
    const auto constant = group->second->constants.find(name.Mid(dot + 1));
    if (constant == group->second->constants.end())
      return false;
    number = constant->second;
    return true;
  }
  for (const auto& [key, group] : m_headers) {
    const auto constant = group->constants.find(name);
    if (constant == group->constants.end())
      continue;
    number = constant->second;
    return true;
  }
  return false;
}

size_t mrIDNamer::get_name_count() const {
  size_t count = 0;
  for (const auto& [key, group] : m_headers)
    count += group->constants.size();
  return count;
}
