// Reading the naming engine's model.
#include "apps/mrmap/mrMapNamer.h"

#include <windows.h>

#include <algorithm>

namespace {

bool same_groups(const mrNameMap<mrHeader*>& a, const mrNameMap<mrHeader*>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const auto& x, const auto& y) { return x.first == y.first; });
}

bool same_dialog(const mrDialogRes& a, const mrDialogRes& b) {
  return a.name == b.name && a.controls == b.controls;
}

bool same_module(const mrLibraryRes& a, const mrLibraryRes& b) {
  return same_groups(a.headers, b.headers) &&
         std::equal(a.dialogs.begin(), a.dialogs.end(), b.dialogs.begin(), b.dialogs.end(),
                    [](const auto& x, const auto& y) {
                      return x.first == y.first && same_dialog(*x.second, *y.second);
                    });
}

}  // namespace

const mrLibraryRes* mrMapNamer::find_module(const CString& name) const {
  std::string lower = name.str();
  CharLowerBuffA(&lower[0], static_cast<DWORD>(lower.size()));
  auto found = m_libraries.find(std::string_view(lower));
  if (found == m_libraries.end() && !lower.empty())
    found = m_libraries.find(std::string_view(lower).substr(0, lower.size() - 1));
  return found == m_libraries.end() ? nullptr : found->second.get();
}

bool mrMapNamer::same_model(const mrMapNamer& other) const {
  return std::equal(m_headers.begin(), m_headers.end(), other.m_headers.begin(), other.m_headers.end(),
                    [](const auto& x, const auto& y) {
                      return x.first == y.first && x.second->constants == y.second->constants;
                    }) &&
         std::equal(m_libraries.begin(), m_libraries.end(), other.m_libraries.begin(),
                    other.m_libraries.end(), [](const auto& x, const auto& y) {
                      return x.first == y.first && same_module(*x.second, *y.second);
                    });
}

CString mrMapNamer::totals() const {
  size_t dialogs = 0, controls = 0;
  for (const auto& [name, module] : m_libraries) {
    dialogs += module->dialogs.size();
    for (const auto& [number, dialog] : module->dialogs)
      controls += dialog->controls.size();
  }
  CString text;
  text.Format(
      "%zu modules, %zu dialogs, %zu controls, %zu header groups, %zu constants, %d warnings, %d errors",
      m_libraries.size(), dialogs, controls, m_headers.size(), get_name_count(), m_warning_count,
      m_error_count);
  return text;
}
