// The host of the benchmark: passes messages through its own GUI thread, as fast as it can, on request.
//   hook_overhead_host [CLASS]
// CLASS: of the window that gets them; a window class of the system or of the common controls.
#include "bench/hook_overhead.h"

#include <windows.h>
#include <commctrl.h>

static HWND frame = nullptr;
static HWND view = nullptr;
static HWND toolbar = nullptr;
static HWND popup = nullptr;  // of the menu that is open
static HWND reply_to = nullptr;

// ---- gestures that are followed meanwhile ----------------------------------------------------------

// What the hooks see when a menu of the menu bar opens: the loop begins, a popup is made.
static void open_menu() {
  static const HMENU menu = CreatePopupMenu();
  SendMessageA(frame, WM_ENTERMENULOOP, 0, 0);
  popup = CreateWindowExA(0, "#32768", nullptr, WS_POPUP, 0, 0, 50, 50, frame, nullptr, nullptr, menu);
  SendMessageA(popup, WM_SIZE, 0, 0);
}

static void close_menu() {
  DestroyWindow(popup);
  SendMessageA(frame, WM_EXITMENULOOP, 0, 0);
  // No item was highlighted, so this is its command: it ends the gesture.
  SendMessageA(frame, WM_COMMAND, 0, 0);
}

static void focus_toolbar() { SendMessageA(toolbar, WM_SETFOCUS, 0, 0); }

static void leave_toolbar() {
  SendMessageA(toolbar, WM_KILLFOCUS, 0, 0);
  SendMessageA(frame, WM_COMMAND, 0, 0);
}

// ---- the messages ---------------------------------------------------------------------------------

struct BenchMessage {
  UINT message;
  UINT second;  // of a pair; 0: none
  WPARAM wparam;
  const HWND* target;
  void (*begin)();  // before the messages and after them, not measured; null: nothing
  void (*end)();
};

static constexpr BenchMessage messages[benchMessages] = {
    {WM_MOUSEMOVE, 0, 0, &view, nullptr, nullptr},
    {WM_TIMER, 0, 1, &view, nullptr, nullptr},
    {WM_NCHITTEST, 0, 0, &view, nullptr, nullptr},
    {WM_PAINT, 0, 0, &view, nullptr, nullptr},
    {WM_MOUSEMOVE, 0, 0, &popup, open_menu, close_menu},
    {WM_MOUSEMOVE, 0, 0, &toolbar, focus_toolbar, leave_toolbar},
    {WM_COMMAND, 0, 100, &frame, nullptr, nullptr},  // of a menu
    {WM_LBUTTONDOWN, WM_LBUTTONUP, 0, &view, nullptr, nullptr},
};

// Places differ from message to message, or nothing moves.
static LPARAM place(const BenchMessage& message, int i) {
  return message.message == WM_COMMAND || message.message == WM_TIMER ? 0 : MAKELPARAM(10 + i % 100, 20);
}

static void send(const BenchMessage& message, int count) {
  const HWND target = *message.target;
  for (int i = 0; i < count; ++i) {
    SendMessageA(target, message.message, message.wparam, place(message, i));
    if (message.second)
      SendMessageA(target, message.second, message.wparam, place(message, i));
  }
}

// Fetches messages until so many of this number have been dispatched.
static void fetch(UINT number, int count) {
  MSG msg;
  while (count > 0 && GetMessageA(&msg, nullptr, 0, 0) > 0) {
    DispatchMessageA(&msg);
    if (msg.message == number)
      --count;
  }
}

static void post(const BenchMessage& message, int count) {
  constexpr int batch = 50;  // the queue holds more, but people are not that fast
  const HWND target = *message.target;
  for (int done = 0; done < count; done += batch) {
    const int now = count - done < batch ? count - done : batch;
    for (int i = 0; i < now; ++i) {
      PostMessageA(target, message.message, message.wparam, place(message, i));
      if (message.second)
        PostMessageA(target, message.second, message.wparam, place(message, i));
    }
    fetch(message.second ? message.second : message.message, now);
  }
}

static void measure(int count, const BenchMessage& message, mrBenchWay way) {
  LARGE_INTEGER start, end, frequency;
  QueryPerformanceFrequency(&frequency);
  if (message.begin)
    message.begin();
  QueryPerformanceCounter(&start);
  (way == benchSent ? send : post)(message, count);
  QueryPerformanceCounter(&end);
  if (message.end)
    message.end();
  const double ns =
      static_cast<double>(end.QuadPart - start.QuadPart) * 1e9 / static_cast<double>(frequency.QuadPart);
  PostMessageA(reply_to, bench_measured, static_cast<WPARAM>(ns), 0);
}

// ---- the windows ----------------------------------------------------------------------------------

static LRESULT CALLBACK view_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  // What the host itself does with a message would only hide what the hooks cost.
  switch (message) {
  case WM_PAINT:
    ValidateRect(window, nullptr);
    return 0;
  case WM_MOUSEMOVE:
  case WM_TIMER:
  case WM_LBUTTONDOWN:
  case WM_LBUTTONUP:
    return 0;
  case WM_NCHITTEST:
    return HTCLIENT;
  default:
    return DefWindowProcA(window, message, wparam, lparam);
  }
}

static LRESULT CALLBACK frame_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
  case bench_reply_to:
    reply_to = reinterpret_cast<HWND>(wparam);
    return 0;
  case bench_measure:
    measure(static_cast<int>(wparam), messages[LOWORD(lparam)], static_cast<mrBenchWay>(HIWORD(lparam)));
    return 0;
  case WM_COMMAND:
    return 0;
  case WM_DESTROY:
    PostQuitMessage(0);
    return 0;
  default:
    return DefWindowProcA(window, message, wparam, lparam);
  }
}

static void register_class(const char* name, WNDPROC procedure) {
  WNDCLASSA window_class = {};
  window_class.lpfnWndProc = procedure;
  window_class.hInstance = GetModuleHandleA(nullptr);
  window_class.lpszClassName = name;
  RegisterClassA(&window_class);
}

int main(int argc, char** argv) {
  InitCommonControls();
  register_class(mr_bench_class, frame_proc);
  register_class("HookBenchView", view_proc);
  register_class("BCGPToolBar:bench", view_proc);
  frame = CreateWindowExA(0, mr_bench_class, "Hook benchmark", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, 400,
                          300, nullptr, nullptr, nullptr, nullptr);
  // A window of the host's own kind: no recorder knows its class, so each has to look at it.
  view = CreateWindowExA(0, argc > 1 ? argv[1] : "HookBenchView", "", WS_CHILD | WS_VISIBLE, 0, 0, 300, 200,
                         frame, nullptr, nullptr, nullptr);
  toolbar = CreateWindowExA(0, "BCGPToolBar:bench", "", WS_CHILD | WS_VISIBLE, 0, 200, 300, 50, frame,
                            nullptr, nullptr, nullptr);
  MSG msg;
  while (GetMessageA(&msg, nullptr, 0, 0) > 0)
    DispatchMessageA(&msg);
  return 0;
}
