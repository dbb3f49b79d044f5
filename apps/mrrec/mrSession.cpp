#include "apps/mrrec/mrSession.h"

#include "apps/mrrec/mrFailure.h"
#include "hooks/mrHooks.h"
#include "hooks/mrSharedBlock.h"

[[noreturn]] static void fail_already_recording() {
  throw mrFailure{exitAlreadyRecording, "a recording already runs; end it with: mrrec stop"};
}

void require_no_recording() {
  const HWND recorder_window = shared_block().recorder_window;
  if (!recorder_window)
    return;
  if (IsWindow(recorder_window))
    fail_already_recording();
  // A host that still has the library loaded keeps the block of a recorder that died.
  remove_hooks();
}

static bool has_all_hooks() {
  const mrSharedBlock& shared = shared_block();
  return shared.get_message_hook && shared.call_wnd_hook && shared.call_wnd_ret_hook && shared.cbt_hook;
}

mrSession::mrSession(mrSessionRecorder& recorder, HWND recorder_window, const mrHost& host, bool raw)
    : m_recorder(recorder) {
  require_no_recording();
  // Nobody uploads while nobody records: a flag that is set was left by a host that died while it uploaded,
  // and the next host would wait for it for ever.
  shared_block().busy = 0;
  const bool raw_before = recorder.get_raw_mode();
  recorder.set_raw_mode(raw);  // before the hooks: the first message counts
  if (!recorder.start_recording(recorder_window, host.thread)) {
    // One that started this very moment, and the mode is common to all processes.
    recorder.set_raw_mode(raw_before);
    fail_already_recording();
  }
  if (has_all_hooks())
    return;
  const std::string reason = system_error_text();
  recorder.stop_recording();
  recorder.set_raw_mode(false);
  throw mrFailure{exitFailed, "cannot watch thread " + std::to_string(host.thread) + " of " + host.name +
                                  " (pid " + std::to_string(host.pid) + "): " + reason};
}

mrSession::~mrSession() {
  stop();
  // Both are common to all processes: the next recording, of whatever program, starts without them.
  m_recorder.set_raw_mode(false);
  m_recorder.clear_ignore_commands();
}

void mrSession::stop() { m_recorder.stop_recording(); }
