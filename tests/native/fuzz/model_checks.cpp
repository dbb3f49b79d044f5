#include "tests/native/fuzz/model_checks.h"

#include "tests/native/fuzz/check.h"

#include <set>

namespace {

void check_groups(const OpenNamer& namer) {
  for (const auto& [key, group] : namer.m_headers) {
    MUST_HOLD(group->key == key);
    for (const auto& [included_key, included] : group->includes)
      MUST_HOLD(namer.m_headers.at(included_key).get() == included);
    for (const auto& [name, value] : group->constants) {
      int64_t number = ~value;
      MUST_HOLD(namer.m_values.count(value) == 1);
      MUST_HOLD(name.Find('.') >= 0 || (namer.find_number(key + "." + name, number) && number == value));
    }
  }
}

void check_values(const OpenNamer& namer) {
  for (const auto& [value, names] : namer.m_values) {
    MUST_HOLD(names->GetSize() > 0);
    std::set<std::string> different;
    for (const CString& name : *names)
      different.insert(name.str());
    MUST_HOLD(different.size() == static_cast<size_t>(names->GetSize()));
    MUST_HOLD(!namer.get_definition(value, "IDC_", 0, "").IsEmpty());
  }
}

void check_modules(const OpenNamer& namer) {
  for (const auto& [name, module] : namer.m_libraries) {
    MUST_HOLD(module->name == name);
    for (const auto& [key, group] : module->headers)
      MUST_HOLD(namer.m_headers.at(key).get() == group);
    for (const auto& [number, dialog] : module->dialogs) {
      MUST_HOLD(dialog->library == module.get());
      for (const auto& [id, control] : dialog->controls)
        MUST_HOLD(number == 0 || namer.get_definition(id, "IDC_", number, name).Find(control) >= 0);
    }
  }
}

}  // namespace

void check_model(const OpenNamer& namer) {
  check_groups(namer);
  check_values(namer);
  check_modules(namer);
  MUST_HOLD(namer.save_all_declarations("C:\\Work\\ui_consts.js") == 1);
}
