// install_hooks and remove_hooks run in the recorder process, the hook procedures in the host.
#include "hooks/mrHooks.h"

#include "hooks/mrChannel.h"
#include "hooks/mrDispatcher.h"
#include "hooks/mrHookKind.h"
#include "hooks/mrSharedBlock.h"

#include <initializer_list>

// ---- start and stop -----------------------------------------------------------------------------

bool install_hooks(HWND recorder, DWORD thread_id) {
  mrSharedBlock& shared = shared_block();
  if (shared.recorder_window)
    return false;
  shared.recorder_window = recorder;
  tell_factories_of_start();

  const HMODULE library = GetModuleHandleA("RecorderHooks.dll");
  shared.get_message_hook = SetWindowsHookExA(WH_GETMESSAGE, get_message_hook_proc, library, thread_id);
  shared.call_wnd_hook = SetWindowsHookExA(WH_CALLWNDPROC, call_wnd_proc_hook, library, thread_id);
  shared.call_wnd_ret_hook = SetWindowsHookExA(WH_CALLWNDPROCRET, call_wnd_ret_proc_hook, library, thread_id);
  shared.cbt_hook = SetWindowsHookExA(WH_CBT, cbt_hook_proc, library, thread_id);
  return true;
}

void remove_hooks() {
  mrSharedBlock& shared = shared_block();
  for (const HHOOK hook :
       {shared.get_message_hook, shared.call_wnd_hook, shared.call_wnd_ret_hook, shared.cbt_hook}) {
    if (hook)
      UnhookWindowsHookEx(hook);
  }
  // The handles stay: a procedure that is still running passes its message on with its own one.
  shared.recorder_window = nullptr;
}

// ---- hook procedures ----------------------------------------------------------------------------

// What the recorder's own windows receive is never recorded, even when one of them lives in a hooked process.
static bool belongs_to_recorder(HWND window) {
  const HWND recorder = shared_block().recorder_window;
  return window == recorder || IsChild(recorder, window);
}

static bool is_stop_key(const MSG& msg) { return msg.message == WM_KEYDOWN && msg.wParam == VK_CANCEL; }

// Ctrl+Break: the user ends the recording in the host.
static void stop_from_host() {
  // The hooks are gone when the recorder is told: it may start the next recording at once.
  const HWND recorder = shared_block().recorder_window;
  remove_hooks();
  PostMessageA(recorder, mr_stop_notification, 0, 0);
}

LRESULT CALLBACK get_message_hook_proc(int code, WPARAM wparam, LPARAM lparam) {
  if (code >= 0) {
    const MSG& msg = *reinterpret_cast<const MSG*>(lparam);
    if (is_stop_key(msg))
      stop_from_host();
    else if (wparam == PM_REMOVE && !belongs_to_recorder(msg.hwnd))  // a peeked message comes again
      dispatch_hook_message(hookGetMessage, code, wparam, lparam);
  }
  return CallNextHookEx(shared_block().get_message_hook, code, wparam, lparam);
}

LRESULT CALLBACK call_wnd_proc_hook(int code, WPARAM wparam, LPARAM lparam) {
  if (code >= 0) {
    const CWPSTRUCT& cwp = *reinterpret_cast<const CWPSTRUCT*>(lparam);
    if (!belongs_to_recorder(cwp.hwnd)) {
      // Deliberate: no guard for an id that is still 0, a WM_NULL then counts as a remote call.
      if (cwp.message == shared_block().remote_message_id)
        answer_remote_call(cwp.hwnd, cwp.wParam);
      else
        dispatch_hook_message(hookCallWndProc, code, wparam, lparam);
    }
  }
  return CallNextHookEx(shared_block().call_wnd_hook, code, wparam, lparam);
}

LRESULT CALLBACK call_wnd_ret_proc_hook(int code, WPARAM wparam, LPARAM lparam) {
  if (code >= 0) {
    const CWPRETSTRUCT& ret = *reinterpret_cast<const CWPRETSTRUCT*>(lparam);
    // A remote call is between the recorder and the window: no factory sees it come or go.
    if (!belongs_to_recorder(ret.hwnd) && ret.message != shared_block().remote_message_id)
      dispatch_hook_message(hookCallWndProcRet, code, wparam, lparam);
  }
  return CallNextHookEx(shared_block().call_wnd_ret_hook, code, wparam, lparam);
}

LRESULT CALLBACK cbt_hook_proc(int code, WPARAM wparam, LPARAM lparam) {
  if (code >= 0)
    dispatch_hook_message(hookCbt, code, wparam, lparam);
  return CallNextHookEx(shared_block().cbt_hook, code, wparam, lparam);
}
