// The factory objects, one per kind of control and process, in the order of their types, and their entry into
// the dispatcher's table. Constructed while the library is loaded, in both processes.
#include "controls/mrWindow.h"
#include "hooks/mrDispatcher.h"

#include <initializer_list>

static mrWindowFactory window_factory;  // 1

[[maybe_unused]] static const bool registered = [] {
  for (mrActionFactory* factory : std::initializer_list<mrActionFactory*>{&window_factory})
    register_factory(*factory);
  return true;
}();
