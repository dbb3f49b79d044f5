// Installing and removing the four thread hooks on the host's GUI thread, and the hook procedures themselves.
#pragma once

#include "framework/mrApi.h"

#include <windows.h>

// Starts recording on a host thread. Recorder process. recorder receives the uploads and the stop
// notification. False when a recording already runs, in this or any other process; nothing is changed then.
// Otherwise the recorder window is stored in the shared block, the factories 1 to 17 are told of the start,
// and the hooks are installed. Deliberate: a hook that cannot be installed (no such thread) is not reported;
// its handle is stored as null.
MR_API bool install_hooks(HWND recorder, DWORD thread_id);

// Ends recording from the recorder process: unhooks and sets the recorder window to null. Calling it again,
// or after the host has stopped by itself, does no harm.
MR_API void remove_hooks();

// The hook procedures: host process, GUI thread. Each returns CallNextHookEx and never alters or swallows a
// message.
MR_API LRESULT CALLBACK get_message_hook_proc(int code, WPARAM wparam, LPARAM lparam);
MR_API LRESULT CALLBACK call_wnd_proc_hook(int code, WPARAM wparam, LPARAM lparam);
MR_API LRESULT CALLBACK call_wnd_ret_proc_hook(int code, WPARAM wparam, LPARAM lparam);
MR_API LRESULT CALLBACK cbt_hook_proc(int code, WPARAM wparam, LPARAM lparam);
