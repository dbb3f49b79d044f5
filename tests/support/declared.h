// What a factory says about one window.
#pragma once

#include "model/mrActionFactory.h"
#include "model/mrWindowInfo.h"

#include <cstring>
#include <ostream>
#include <string>

struct mrDeclared {
  mrDeclarationRes result = declaredNot;
  std::string declaration;
  std::string search;  // at any depth
  std::string identifier;

  bool operator==(const mrDeclared& other) const {
    return result == other.result && declaration == other.declaration && search == other.search &&
           identifier == other.identifier;
  }
};

inline std::ostream& operator<<(std::ostream& out, const mrDeclared& declared) {
  return out << declared.result << " " << declared.declaration << " | " << declared.search << " | "
             << declared.identifier;
}

inline mrDeclared declare(mrActionFactory& factory, const mrWindowInfo& info) {
  CString declaration;
  CString search;
  CString identifier;
  const mrDeclarationRes result = factory.get_declaration(&info, declaration, search, identifier);
  return {result, declaration.str(), search.str(), identifier.str()};
}

// A control's level of a window path, as far as declarations look at it.
inline mrWindowInfo control_info(const char* class_name, __int64 id, const char* text = "", __int64 style = 0,
                                 const char* name = "") {
  mrWindowInfo info;
  strcpy(info.class_name, class_name);
  strcpy(info.text, text);
  strcpy(info.name, name);
  info.id = id;
  info.style = style | WS_CHILD;
  return info;
}
