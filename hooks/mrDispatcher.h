// The table of factories and the dispatch of hooked messages to them.
#pragma once

#include "framework/mrApi.h"
#include "hooks/mrFactoryType.h"

#include <windows.h>

class mrActionFactory;

// Puts a factory into its place in the table, by its own get_factory_type, in place of one that stood there.
// The library's own factories are entered at library load by the one file that defines them; whoever enters
// another one keeps it alive as long as the table holds it. Both processes; not while a message is
// dispatched.
MR_API void register_factory(mrActionFactory& factory);

// The factory of a type, null for a type outside 1 to 18 or one that has no factory. In raw mode null for
// every type but 1, unless ignore_raw_mode: the recorder side, which routes and declares, always passes true.
MR_API mrActionFactory* get_factory(int type, bool ignore_raw_mode);

// Calls on_start_record on the factories of types 1 to 17, in this order. Recorder process, before the
// hooks are installed, and host process, with the first message that is offered once the recording's first
// hook is known in the shared block; a message that overtakes this still belongs to the time before.
MR_API void tell_factories_of_start();

// Offers one hooked message to the factories, from type 17 down to 1 (18 in the diagnostic build), until one
// claims it; in raw mode to type 1 only. Host process, GUI thread. A message that arrives while another one
// is dispatched in this process is not offered: it comes from a factory's own doing. kind is an mrHookKind;
// the other arguments are the hook's.
MR_API void dispatch_hook_message(int kind, int code, WPARAM wparam, LPARAM lparam);
