// Symbolic names of controls, as a loaded resource map holds them.
#pragma once

#include "namer/mrIDNamer.h"

#include <memory>

// Names a control of one dialog (its template id) in the resources of one module.
inline void name_control(mrIDNamer& namer, const char* module, uint32_t dialog, int control,
                         const char* name) {
  struct Open : mrIDNamer {
    using mrIDNamer::add_lib;
  };
  mrLibraryRes* const library = (namer.*(&Open::add_lib))(module);
  std::unique_ptr<mrDialogRes>& resource = library->dialogs[dialog];
  if (!resource)
    resource = std::make_unique<mrDialogRes>();
  resource->library = library;
  resource->controls[control] = name;
}
