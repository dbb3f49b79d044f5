// The naming engine's model: what the readers enter and what everything else reads.
#include "namer/mrIDNamer.h"

#include <cstdio>
#include <utility>

mrLog::~mrLog() = default;

const CString mrIDNamer::general_head = "general";

mrIDNamer::mrIDNamer() { clear_include_paths(); }

mrIDNamer::~mrIDNamer() = default;

void mrIDNamer::warning(const CString& text) {
  std::printf("Warning: %s\n", text.GetString());
  ++m_warning_count;
}

void mrIDNamer::error(const CString& text) {
  std::printf("Error: %s\n", text.GetString());
  ++m_error_count;
}

void mrIDNamer::set_progress(progress_function progress, void* context) {
  m_progress = progress;
  m_progress_context = context;
}

void mrIDNamer::report_progress(const CString& path) const {
  if (m_progress)
    m_progress(m_progress_context, path);
}

// Deliberate: the warning count stays; check_res_map alone resets it.
void mrIDNamer::clear() { m_error_count = 0; }

void mrIDNamer::clear_all() {
  // What points goes before what is pointed at.
  m_processed_files.clear();
  m_libraries.clear();
  m_values.clear();
  m_headers.clear();
}

void mrIDNamer::clear_include_paths() {
  m_include_paths.RemoveAll();
  m_include_paths.Add(CString());
}

mrLibraryRes* mrIDNamer::add_lib(const CString& name) {
  std::unique_ptr<mrLibraryRes>& module = m_libraries[name];
  module = std::make_unique<mrLibraryRes>();
  module->name = name;
  return module.get();
}

mrHeader* mrIDNamer::add_header(mrLibraryRes* module, const CString& key, const CString& path) {
  std::unique_ptr<mrHeader>& group = m_headers[key];
  if (!group) {
    group = std::make_unique<mrHeader>();
    group->path = path;
    group->key = key;
  }
  if (module)
    module->headers[key] = group.get();
  return group.get();
}

void mrIDNamer::add_constant(const CString& group, const CString& name, int64_t value) {
  add_constant(name, value, add_header(nullptr, group, CString()));
}

void mrIDNamer::add_constant(const CString& name, int64_t value, mrHeader* group) {
  enter_value(value, name, group->key);
  group->constants[name] = value;
}

// Replaces a dialog of that number. Null when no header group of the module defines the name.
mrDialogRes* mrIDNamer::add_dialog(mrLibraryRes* module, const CString& name) {
  int64_t number = 0;
  if (!find_definition(module->headers, name, number))
    return nullptr;
  // Windows knows 32 bits of a template's number.
  std::unique_ptr<mrDialogRes>& dialog = module->dialogs[static_cast<uint32_t>(number)];
  dialog = std::make_unique<mrDialogRes>();
  dialog->name = name;
  dialog->library = module;
  return dialog.get();
}

bool mrIDNamer::record_control(mrDialogRes* dialog, CString name) {
  int64_t number = 0;
  if (!find_definition(dialog->library->headers, name, number)) {
    CString text;
    text.Format("dialog (%s), control id '%s' not found", dialog->name.GetString(), name.GetString());
    error(text);
    return false;
  }
  // At the end nearly always: editors number the controls of a dialog in their order.
  dialog->controls.insert_or_assign(dialog->controls.end(), number, std::move(name));
  return true;
}

int mrIDNamer::add_dynamic_control(const CString& module, const CString& dialog, const CString& group,
                                   const CString& control, int number) {
  const auto library = m_libraries.find(module);
  if (library == m_libraries.end())
    return 0;
  add_constant(control, number, add_header(library->second.get(), group, CString()));
  int64_t dialog_number = 0;
  if (!find_definition(library->second->headers, dialog, dialog_number))
    return 0;
  const auto found = library->second->dialogs.find(static_cast<uint32_t>(dialog_number));
  if (found == library->second->dialogs.end())
    return 0;
  record_control(found->second.get(), control);
  return 1;
}

// The first group, in key order, that defines the name; null when none does, and number untouched.
const mrHeader* mrIDNamer::find_definition(const mrNameMap<mrHeader*>& groups, const CString& name,
                                           int64_t& number) {
  for (const auto& [key, group] : groups) {
    const auto constant = group->constants.find(name);
    if (constant == group->constants.end())
      continue;
    number = constant->second;
    return group;
  }
  return nullptr;
}

void mrIDNamer::enter_value(int64_t value, const CString& name, const CString& key) {
  std::unique_ptr<mrNameArray>& names = m_values[value];
  if (!names)
    names = std::make_unique<mrNameArray>();
  names->enter(name, key);
}
