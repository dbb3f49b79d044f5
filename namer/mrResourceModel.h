// What the naming engine knows about the host's resources: modules with their dialogs and controls, and
// groups of headers with their constants. Plain data, filled and read by mrIDNamer alone.
#pragma once

#include "framework/CArray.h"
#include "framework/CString.h"
#include "framework/mrApi.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

// Byte comparison of names, case-sensitive; also against plain text, so that looking up copies nothing.
struct mrNameLess {
  using is_transparent = void;
  static std::string_view view(const CString& name) { return name.str(); }
  static std::string_view view(std::string_view name) { return name; }
  template <class A, class B>
  bool operator()(const A& a, const B& b) const {
    return view(a) < view(b);
  }
};

// A map in name order: "the first that..." always means first in this order.
template <class T>
using mrNameMap = std::map<CString, T, mrNameLess>;

// All headers that share a group key.
struct mrHeader {
  CString path;  // of the first file read into the group, expanded and lower-case; may be empty
  CString key;   // what qualifies the group's names in scripts
  mrNameMap<int64_t> constants;   // number by name
  mrNameMap<mrHeader*> includes;  // groups included from files of this one; owned by the namer
};

struct mrLibraryRes;

// One dialog template.
struct mrDialogRes {
  CString name;                         // begins with "IDD_"
  std::map<int64_t, CString> controls;  // name by control number
  mrLibraryRes* library = nullptr;      // the module that holds this dialog; it owns it
};

// One module of the host: one resource script.
struct mrLibraryRes {
  CString name;                                              // lower-case file name without extension
  std::map<uint32_t, std::unique_ptr<mrDialogRes>> dialogs;  // by dialog template number
  mrNameMap<mrHeader*> headers;                              // groups its script includes; owned by the namer
};

// "key.name".
CString mr_qualified_name(const CString& key, const CString& name);

// The qualified names of one number, in the order in which they were entered.
class MR_API mrNameArray : public CArray<CString, const CString&> {
public:
  // Enters "key.name" unless it is there. Keeps one name for a pair of groups whose keys differ by a final
  // letter, a module and its debug build, preferring the shorter key.
  void enter(const CString& name, const CString& key);

private:
  void remove_behind(size_t place, const CString& qualified);

  // Per name a set of its pairs of neighbouring characters, one bit each: most names are passed over by it
  // alone.
  std::vector<uint64_t> m_pairs;
};
