// Host process, GUI thread (the look-up of factories: both processes).
#include "hooks/mrDispatcher.h"

#include "hooks/mrHookedMessage.h"
#include "hooks/mrIdentity.h"
#include "hooks/mrSharedBlock.h"
#include "model/mrActionFactory.h"

// Zero-initialised before any constructor runs, so the order of construction between files does not matter.
// Index 0 stays empty.
static mrActionFactory* factories[last_factory_type + 1];

// Set while a message is dispatched in this process.
static bool dispatching = false;

void register_factory(mrActionFactory& factory) { factories[factory.get_factory_type()] = &factory; }

mrActionFactory* get_factory(int type, bool ignore_raw_mode) {
  if (shared_block().raw_mode && !ignore_raw_mode && type != factoryWindow)
    return nullptr;
  if (type < first_factory_type || type > last_factory_type)
    return nullptr;
  return factories[type];
}

void tell_factories_of_start() {
  for (int type = first_factory_type; type <= last_recorded_factory_type; ++type) {
    if (mrActionFactory* factory = factories[type])
      factory->on_start_record();
  }
}

static void offer_to_factories(int kind, int code, WPARAM wparam, LPARAM lparam) {
  const int first_asked = shared_block().raw_mode ? factoryWindow : first_offered_factory_type;
  for (int type = first_asked; type >= first_factory_type; --type) {
    mrActionFactory* factory = factories[type];
    if (factory && factory->handle_message(kind, code, wparam, lparam))
      return;
  }
}

// Windows gives the handle of a destroyed window to a new one sooner or later.
static void forget_windows_that_come_and_go(int kind, LPARAM lparam) {
  if (kind != hookCallWndProc)
    return;
  const CWPSTRUCT& call = *reinterpret_cast<const CWPSTRUCT*>(lparam);
  if (call.message == WM_NCCREATE || call.message == WM_NCDESTROY)
    forget_identity(call.hwnd);
}

// Installing the hooks tells the factories of the recorder process. A host that was recorded before still has
// the library loaded, and with it whatever its factories followed when that recording ended.
static void start_with_another_recording() {
  static HHOOK recording = nullptr;
  if (recording == shared_block().get_message_hook)
    return;
  recording = shared_block().get_message_hook;
  tell_factories_of_start();
}

void dispatch_hook_message(int kind, int code, WPARAM wparam, LPARAM lparam) {
  // Also while another message is dispatched: a factory's own question can make the host create a window.
  forget_windows_that_come_and_go(kind, lparam);
  if (dispatching)
    return;
  dispatching = true;
  start_with_another_recording();
  {
    const mrClassNameScope names;
    offer_to_factories(kind, code, wparam, lparam);
  }
  dispatching = false;
}
