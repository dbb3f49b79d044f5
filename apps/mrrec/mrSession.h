// One recording from start to stop, with everything that is common to all processes put right before it and
// back after it.
#pragma once

#include "apps/mrrec/mrHost.h"
#include "apps/mrrec/mrSessionRecorder.h"

#include <windows.h>

// Throws mrFailure (exitAlreadyRecording) when a recording runs, in whatever program. One whose recorder has
// died without removing its hooks is no recording: it is cleared away.
void require_no_recording();

// The hooks on a host, from construction to the end of its life or stop().
class mrSession {
public:
  // recorder is borrowed for the session's life. Throws mrFailure (exitAlreadyRecording) as above, and
  // (exitFailed) when the host's thread cannot be hooked.
  mrSession(mrSessionRecorder& recorder, HWND recorder_window, const mrHost& host, bool raw);
  ~mrSession();
  mrSession(const mrSession&) = delete;
  mrSession& operator=(const mrSession&) = delete;

  // Removes the hooks; again, or after the host has removed them, without harm.
  void stop();

private:
  mrSessionRecorder& m_recorder;
};
