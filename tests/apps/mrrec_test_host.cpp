// The host that the tests of mrrec record: one window that does nothing with what it gets.
//   mrrec_test_host [--owner PID] [--title TEXT] [--show-after MS | --end-after MS]
// --owner       ends with this process, for a host that a test cannot end itself
// --show-after  comes up later; until then the process has no visible window
// --end-after   ends after this time, without ever showing a window
#include <windows.h>

#include <cstdlib>
#include <cstring>

static LRESULT CALLBACK window_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_TIMER) {
    KillTimer(window, wparam);
    ShowWindow(window, SW_SHOWNORMAL);
    return 0;
  }
  if (message == WM_DESTROY)
    PostQuitMessage(0);
  return DefWindowProcA(window, message, wparam, lparam);
}

static DWORD WINAPI end_with(void* owner) {
  WaitForSingleObject(owner, INFINITE);
  ExitProcess(0);
}

int main(int argc, char** argv) {
  const char* title = "mrrec test host";
  int show_after = 0;
  for (int i = 1; i + 1 < argc; i += 2) {
    if (strcmp(argv[i], "--owner") == 0)
      CreateThread(nullptr, 0, end_with, OpenProcess(SYNCHRONIZE, FALSE, strtoul(argv[i + 1], nullptr, 10)),
                   0, nullptr);
    else if (strcmp(argv[i], "--title") == 0)
      title = argv[i + 1];
    else if (strcmp(argv[i], "--show-after") == 0)
      show_after = atoi(argv[i + 1]);
    else if (strcmp(argv[i], "--end-after") == 0) {
      Sleep(static_cast<DWORD>(atoi(argv[i + 1])));
      return 0;
    }
  }

  WNDCLASSA window_class = {};
  window_class.style = CS_DBLCLKS;
  window_class.lpfnWndProc = window_proc;
  window_class.hInstance = GetModuleHandleA(nullptr);
  window_class.lpszClassName = "MrrecTestHost";
  RegisterClassA(&window_class);
  const HWND window = CreateWindowExA(0, "MrrecTestHost", title, WS_OVERLAPPEDWINDOW, 50, 50, 300, 200,
                                      nullptr, nullptr, window_class.hInstance, nullptr);
  if (show_after)
    SetTimer(window, 1, static_cast<UINT>(show_after), nullptr);
  else
    ShowWindow(window, SW_SHOWNORMAL);

  MSG msg;
  while (GetMessageA(&msg, nullptr, 0, 0) > 0) {
    TranslateMessage(&msg);
    DispatchMessageA(&msg);
  }
  return 0;
}
