// Headers: which group a file belongs to, where an included file is found, and what a line defines.
#include "namer/mrIDNamer.h"

#include "namer/mrCharacters.h"
#include "namer/mrFiles.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace {

constexpr mrCharacterSet word_separators(" \t\r");
constexpr std::string_view development_suffix = ".dev";
constexpr std::string_view unit_test_suffix = "utest";

bool begins_with(std::string_view text, std::string_view prefix) {
  return text.substr(0, prefix.size()) == prefix;
}

bool ends_with(std::string_view text, std::string_view suffix) {
  return text.size() >= suffix.size() && text.substr(text.size() - suffix.size()) == suffix;
}

CString to_text(std::string_view text) { return CString(std::string(text)); }

// The text before the last path separator.
CString folder_of(const CString& path) {
  const size_t separator = path.str().find_last_of("\\/");
  return separator == std::string::npos ? CString() : CString(path.str().substr(0, separator));
}

// Takes the next word off the line; empty at its end.
std::string_view next_word(std::string_view& line) {
  size_t begin = 0;
  while (begin < line.size() && word_separators.contains(line[begin]))
    ++begin;
  size_t end = begin;
  while (end < line.size() && !word_separators.contains(line[end]))
    ++end;
  const std::string_view word = line.substr(begin, end - begin);
  line.remove_prefix(end);
  return word;
}

// Takes the next component off a path; empty at its end.
std::string_view next_component(std::string_view& path) {
  while (!path.empty() && path[0] == '\\')
    path.remove_prefix(1);
  const std::string_view component = path.substr(0, path.find('\\'));
  path.remove_prefix(component.size());
  return component;
}

// Whether a constant of this name can be the id of a dialog, control or command.
bool is_id_name(std::string_view name) {
  if (name.size() < 3 || name.find_first_of("()") != std::string_view::npos)
    return false;
  for (const std::string_view prefix : {std::string_view("ID"), std::string_view("AFX_ID")}) {
    if (!begins_with(name, prefix))
      continue;
    // Bitmaps, icons and strings share the prefix and are no ids of controls.
    const char kind = name.size() > prefix.size() ? name[prefix.size()] : '\0';
    return kind != 'B' && kind != 'I' && kind != 'S';
  }
  return false;
}

}  // namespace

// A header that is being read; those that include each other form a stack of these, not of calls.
struct mrIDNamer::mrOpenHeader {
  mrHeader* group;
  std::string text;
  size_t position;  // of the next line; beyond the text's end when the last one is done
  bool ok;          // false once a line failed

  bool next_line(std::string_view& line) {
    if (position > text.size())
      return false;
    const size_t end = std::min(text.find('\n', position), text.size());
    line = std::string_view(text).substr(position, end - position);
    position = end + 1;
    return true;
  }
};

CString mrIDNamer::expand_path(const CString& path) {
  CString expanded;
  if (!mrFiles::expand_environment(path, expanded) || expanded.GetLength() >= mrFiles::max_path)
    expanded = path;
  std::string text = expanded.str();
  for (char& ch : text)
    if (ch == '/')
      ch = '\\';
  expanded = CString(std::move(text));
  const CString canonical = mrFiles::canonical(expanded);
  return canonical.IsEmpty() ? expanded : canonical;
}

// The first folder that ends in ".dev" names the group, unless it holds a unit test.
CString mrIDNamer::group_key(const CString& path) {
  std::string_view rest = path.str();
  std::string_view component = next_component(rest);
  while (!component.empty()) {
    const std::string_view following = next_component(rest);
    if (ends_with(component, development_suffix) && !following.empty() &&
        !ends_with(following, unit_test_suffix))
      return to_text(component.substr(0, component.size() - development_suffix.size()));
    component = following;
  }
  return general_head;
}

bool mrIDNamer::find_in_include_paths(const CString& name, const CString& includer, CString& found) {
  m_include_paths.SetAt(0, folder_of(includer));
  for (const CString& folder : m_include_paths) {
    const CString candidate = mrFiles::combine(folder, name);
    if (!mrFiles::file_exists(candidate))
      continue;
    found = candidate;
    return true;
  }
  error("Cannot find header file: " + name);
  return false;
}

int mrIDNamer::process_header_in_paths(mrLibraryRes* module, mrHeader* parent, const CString& name,
                                       const CString& includer) {
  CString path;
  return find_in_include_paths(name, includer, path) ? process_header_file(module, parent, path) : 0;
}

// Reads the header and, at the place of each include, the header included there.
int mrIDNamer::process_header_file(mrLibraryRes* module, mrHeader* parent, const CString& path) {
  std::vector<mrOpenHeader> open;
  if (!open_header(module, parent, path, open))
    return 0;
  bool ok = true;
  while (!open.empty()) {
    std::string_view line;
    if (!open.back().next_line(line)) {
      // An including header fails with what it includes.
      ok = open.back().ok;
      open.pop_back();
      if (!open.empty() && !ok)
        open.back().ok = false;
      continue;
    }
    mrHeader* const group = open.back().group;
    CString included, included_path;
    if (!read_line(line, group, included))
      continue;
    if (!find_in_include_paths(included, group->path, included_path)) {
      open.back().ok = false;
      continue;
    }
    const size_t includer = open.size() - 1;
    if (!open_header(module, group, included_path, open))
      open[includer].ok = false;
  }
  return ok;
}

bool mrIDNamer::process_line(const CString& line, mrLibraryRes* module, mrHeader* group) {
  CString included;
  return !read_line(line.str(), group, included) ||
         process_header_in_paths(module, group, included, group->path) != 0;
}

// Enters the file into the model and, unless it was read before, puts it on top of the stack. False when it
// cannot be read.
bool mrIDNamer::open_header(mrLibraryRes* module, mrHeader* parent, const CString& path,
                            std::vector<mrOpenHeader>& open) {
  std::string lower = expand_path(path).str();
  mrFiles::lower_case(&lower[0], lower.size());
  const CString full(std::move(lower));
  mrHeader* const group = add_header(module, group_key(full), full);
  if (parent && parent != group)
    parent->includes[group->key] = group;
  if (!m_processed_files.emplace(full, group).second) {
    if (module)
      attach_group(module, group);
    return true;
  }
  report_progress(full);
  mrOpenHeader header{group, std::string(), 0, true};
  if (!mrFiles::read(full, header.text)) {
    error("Cannot open header file: " + full);
    return false;
  }
  open.push_back(std::move(header));
  return true;
}

// Enters the group, and every group in its includes, into the module.
void mrIDNamer::attach_group(mrLibraryRes* module, mrHeader* group) {
  // Not "is it in the module?": the group itself has just been entered there.
  std::set<const mrHeader*> visited;
  std::vector<mrHeader*> pending = {group};
  while (!pending.empty()) {
    mrHeader* const next = pending.back();
    pending.pop_back();
    if (!visited.insert(next).second)
      continue;
    module->headers[next->key] = next;
    for (const auto& [key, included] : next->includes)
      pending.push_back(included);
  }
}

// Takes what the line defines. True when it includes a file by a quoted name, which is then in included.
bool mrIDNamer::read_line(std::string_view line, mrHeader* group, CString& included) {
  const std::string_view statement = next_word(line);
  if (statement == "#include") {
    mrLexem name;
    int position = 0;
    if (!parse_string(to_text(line), position, name))
      return false;
    included = name.text;
    return true;
  }
  if (statement != "#define")
    return false;
  const std::string_view name = next_word(line);
  if (!is_id_name(name))
    return false;
  const std::string_view value = next_word(line);
  // Expressions, other names and negative numbers are never taken.
  if (!value.empty() && value[0] >= '0' && value[0] <= '9')
    add_constant(to_text(name), mr_scan_integer(value), group);
  return false;
}
