// A recording of the test program's own thread, hooks and all: the recorder's remote calls are answered, and
// what the thread's windows do comes back as statements.
#pragma once

#include "tests/support/recording.h"
#include "tests/support/test_window.h"

#include <windows.h>

class mrSelfRecording : public mrTestRecorder {
public:
  mrSelfRecording() : m_window((register_test_class("SelfRecorder"), "SelfRecorder"), "", WS_OVERLAPPED) {
    m_window.set_answer([this](UINT message, WPARAM, LPARAM lparam, LRESULT& result) {
      if (message != WM_COPYDATA)
        return false;
      const COPYDATASTRUCT& data = *reinterpret_cast<const COPYDATASTRUCT*>(lparam);
      copy_data(data.dwData, data.lpData);
      result = 1;
      return true;
    });
    if (!start_recording(m_window, GetCurrentThreadId()))
      abort();  // another recording runs: the tests of one desktop session take turns
  }
  ~mrSelfRecording() override { stop_recording(); }

private:
  mrTestWindow m_window;
};
