// The naming engine as the map tool sees it: with its model laid open for reading.
#pragma once

#include "namer/mrIDNamer.h"

class mrMapNamer : public mrIDNamer {
public:
  using mrIDNamer::check_res_map;
  using mrIDNamer::load_res_map;
  using mrIDNamer::save_all_declarations;

  const mrNameMap<std::unique_ptr<mrHeader>>& headers() const { return m_headers; }
  const mrNameMap<std::unique_ptr<mrLibraryRes>>& modules() const { return m_libraries; }
  int errors() const { return m_error_count; }

  // The module of that name in any case, or the one whose debug build has that name, as lookups find it; null
  // when there is none.
  const mrLibraryRes* find_module(const CString& name) const;
  // Whether the other namer holds the same modules, dialogs, controls, groups and constants.
  bool same_model(const mrMapNamer& other) const;
  // "2 modules, 3 dialogs, ...": what the model holds, and what was reported.
  CString totals() const;
};

// Loads without a word: what is wrong shows in the model.
class mrQuietNamer : public mrMapNamer {
public:
  void warning(const CString&) override { ++m_warning_count; }
  void error(const CString&) override { ++m_error_count; }
};
