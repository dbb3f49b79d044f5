// The recorder window: takes the uploads of the host and the requests to stop.
#pragma once

#include <windows.h>

#include <functional>

// `mrrec stop` tells a recording of mrrec by it.
extern const char mr_recorder_window_class[];

// Why a recording ended.
enum mrStopCause { stopRequested, stopTimeOver, stopHostEnded };

class mrRecorderWindow {
public:
  // Called for every upload that can be a record; it may throw, the exception is reported and ends there.
  using Take = std::function<void(const COPYDATASTRUCT&)>;

  // A message-only window of this thread.
  explicit mrRecorderWindow(Take take);
  ~mrRecorderWindow();
  mrRecorderWindow(const mrRecorderWindow&) = delete;
  mrRecorderWindow& operator=(const mrRecorderWindow&) = delete;

  operator HWND() const { return m_window; }

  // Handles messages until the recording ends: the stop notification arrives, the host process ends or
  // limit_ms (0: no limit) has passed. on_idle is called whenever what has arrived is handled.
  mrStopCause wait_for_end(HANDLE host, DWORD limit_ms, const std::function<void()>& on_idle);
  // Handles what has arrived by now: uploads that were on their way when the hooks were removed.
  void handle_pending();

private:
  static LRESULT CALLBACK window_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT take_upload(const COPYDATASTRUCT* data);

  Take m_take;
  HWND m_window = nullptr;
  bool m_stop_requested = false;
};

// While there is one, Ctrl+C (and its kin) in the console ends the recording of this window instead of the
// process. When the console itself is closed, the system is kept waiting until the object goes: the script is
// written by then.
class mrConsoleStop {
public:
  explicit mrConsoleStop(HWND recorder_window);
  ~mrConsoleStop();
  mrConsoleStop(const mrConsoleStop&) = delete;
  mrConsoleStop& operator=(const mrConsoleStop&) = delete;
};
