// What of the model leaves the process as text: the constants script, and the warnings about names that a new
// map would lose.
#include "namer/mrIDNamer.h"

#include "namer/mrFiles.h"

#include <cstdio>

namespace {

constexpr char script_head[] = "var o=null;\r\n";
constexpr char script_group[] = "var %s=new Object(); o=%s;\r\n";
constexpr char script_constant[] = " o.%s=%d;\r\n";

constexpr char lost_dialog[] = "Library '%s': dialog '%s' not found.";
constexpr char lost_control[] = "Library '%s', dialog '%s': control '%s' not found.";
constexpr char lost_constant[] = "Header '%s': constant '%s' not found.";

// The new dialog that stands for the old one: of the same number and name. Null when there is none.
const mrDialogRes* same_dialog(const mrLibraryRes& module, uint32_t number, const mrDialogRes& old) {
  const auto found = module.dialogs.find(number);
  return found != module.dialogs.end() && found->second->name == old.name ? found->second.get() : nullptr;
}

bool has_control(const mrDialogRes& dialog, int64_t number, const CString& name) {
  const auto found = dialog.controls.find(number);
  return found != dialog.controls.end() && found->second == name;
}

}  // namespace

int mrIDNamer::save_all_declarations(const CString& path) const {
  CString text = script_head;
  for (const auto& [key, group] : m_headers) {
    text.AppendFormat(script_group, key.GetString(), key.GetString());
    for (const auto& [name, value] : group->constants)
      text.AppendFormat(script_constant, name.GetString(), static_cast<int32_t>(value));
  }
  return mrFiles::write(path, text.str());
}

void mrIDNamer::check_names(const mrIDNamer& old) {
  std::printf("Checking libraries...\n");
  for (const auto& [name, module] : m_libraries) {
    const auto found = old.m_libraries.find(name);
    if (found != old.m_libraries.end())
      check_module(*module, *found->second);
  }
  std::printf("Checking headers...\n");
  for (const auto& [key, group] : m_headers) {
    const auto found = old.m_headers.find(key);
    if (found != old.m_headers.end())
      check_group(*group, *found->second);
  }
}

void mrIDNamer::check_module(const mrLibraryRes& module, const mrLibraryRes& old) {
  for (const auto& [number, old_dialog] : old.dialogs) {
    const mrDialogRes* const dialog = same_dialog(module, number, *old_dialog);
    CString text;
    if (!dialog) {
      text.Format(lost_dialog, module.name.GetString(), old_dialog->name.GetString());
      warning(text);
      continue;
    }
    for (const auto& [control, name] : old_dialog->controls) {
      if (has_control(*dialog, control, name))
        continue;
      text.Format(lost_control, module.name.GetString(), old_dialog->name.GetString(), name.GetString());
      warning(text);
    }
  }
}

void mrIDNamer::check_group(const mrHeader& group, const mrHeader& old) {
  for (const auto& [name, value] : old.constants) {
    if (group.constants.find(name) != group.constants.end())
      continue;
    CString text;
    text.Format(lost_constant, group.key.GetString(), name.GetString());
    warning(text);
  }
}
