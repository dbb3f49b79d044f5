// Hooks that only pass on: the part of the cost that belongs to the system.
#include <windows.h>

static LRESULT CALLBACK pass_on(int code, WPARAM wparam, LPARAM lparam) {
  return CallNextHookEx(nullptr, code, wparam, lparam);
}

// The same four hooks that a recording has.
static constexpr int hook_kinds[] = {WH_GETMESSAGE, WH_CALLWNDPROC, WH_CALLWNDPROCRET, WH_CBT};
static HHOOK hooks[4];

extern "C" __declspec(dllexport) void hook_thread(DWORD thread) {
  for (int i = 0; i < 4; ++i)
    hooks[i] = SetWindowsHookExA(hook_kinds[i], pass_on, GetModuleHandleA("bare_hooks.dll"), thread);
}

extern "C" __declspec(dllexport) void unhook_thread() {
  for (HHOOK& hook : hooks)
    UnhookWindowsHookEx(hook);
}
