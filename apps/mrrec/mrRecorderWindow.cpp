#include "apps/mrrec/mrRecorderWindow.h"

#include "apps/mrrec/mrFailure.h"
#include "hooks/mrChannel.h"

#include <exception>
#include <utility>

const char mr_recorder_window_class[] = "mrrecRecorderWindow";

// Every record begins with its kind and, at offset 8, its window.
static constexpr DWORD smallest_record = 16;

// ---- the window ---------------------------------------------------------------------------------

mrRecorderWindow::mrRecorderWindow(Take take) : m_take(std::move(take)) {
  WNDCLASSA window_class = {};
  window_class.lpfnWndProc = window_proc;
  window_class.hInstance = GetModuleHandleA(nullptr);
  window_class.lpszClassName = mr_recorder_window_class;
  RegisterClassA(&window_class);  // fails harmlessly when it is registered already
  m_window = CreateWindowExA(0, mr_recorder_window_class, "mrrec", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                             window_class.hInstance, nullptr);
  if (!m_window)
    throw mrFailure{exitFailed, "cannot create a window: " + system_error_text()};
  SetWindowLongPtrA(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  // With higher rights than the host's, the messages of the host would be held back.
  ChangeWindowMessageFilterEx(m_window, WM_COPYDATA, MSGFLT_ALLOW, nullptr);
  ChangeWindowMessageFilterEx(m_window, mr_stop_notification, MSGFLT_ALLOW, nullptr);
}

mrRecorderWindow::~mrRecorderWindow() { DestroyWindow(m_window); }

LRESULT CALLBACK mrRecorderWindow::window_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* const self = reinterpret_cast<mrRecorderWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  if (self && message == WM_COPYDATA)
    return self->take_upload(reinterpret_cast<const COPYDATASTRUCT*>(lparam));
  if (self && message == mr_stop_notification) {
    self->m_stop_requested = true;
    return 0;
  }
  return DefWindowProcA(window, message, wparam, lparam);
}

// The host waits for the answer, and between it and here lies the system: no exception may pass.
LRESULT mrRecorderWindow::take_upload(const COPYDATASTRUCT* data) {
  if (!data->lpData || data->cbData < smallest_record)
    return FALSE;
  try {
    m_take(*data);
    return TRUE;
  } catch (const std::exception& exception) {
    print_note(std::string("an action was lost: ") + exception.what());
  } catch (...) {
    print_note("an action was lost");
  }
  return FALSE;
}

void mrRecorderWindow::handle_pending() {
  MSG msg;
  while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&msg);
    DispatchMessageA(&msg);
  }
}

mrStopCause mrRecorderWindow::wait_for_end(HANDLE host, DWORD limit_ms,
                                           const std::function<void()>& on_idle) {
  const ULONGLONG start = GetTickCount64();
  for (;;) {
    DWORD rest = INFINITE;
    if (limit_ms) {
      const ULONGLONG passed = GetTickCount64() - start;
      if (passed >= limit_ms)
        return stopTimeOver;
      rest = static_cast<DWORD>(limit_ms - passed);
    }
    const DWORD woken = MsgWaitForMultipleObjectsEx(1, &host, rest, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    handle_pending();
    on_idle();
    if (m_stop_requested)
      return stopRequested;
    if (woken == WAIT_OBJECT_0)
      return stopHostEnded;
  }
}

// ---- the console --------------------------------------------------------------------------------

static HWND console_stop_window = nullptr;
static HANDLE console_stop_done = nullptr;  // set when the object goes

// A thread that the system makes for it.
static BOOL WINAPI on_console_event(DWORD event) {
  PostMessageA(console_stop_window, mr_stop_notification, 0, 0);
  // When this returns, the system ends the process, unless it was only a key.
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
    WaitForSingleObject(console_stop_done, INFINITE);
  return TRUE;
}

mrConsoleStop::mrConsoleStop(HWND recorder_window) {
  console_stop_window = recorder_window;
  console_stop_done = CreateEventA(nullptr, TRUE, FALSE, nullptr);
  // A parent may have told this process to ignore Ctrl+C.
  SetConsoleCtrlHandler(nullptr, FALSE);
  SetConsoleCtrlHandler(on_console_event, TRUE);
}

mrConsoleStop::~mrConsoleStop() {
  SetEvent(console_stop_done);
  SetConsoleCtrlHandler(on_console_event, FALSE);
  // The event stays for a handler that still runs.
}
