// mrrec stop: ends the recording that runs in this desktop session, whoever records.
#include "apps/mrrec/mrCommands.h"
#include "apps/mrrec/mrFailure.h"
#include "apps/mrrec/mrHandle.h"
#include "apps/mrrec/mrRecorderWindow.h"
#include "hooks/mrChannel.h"
#include "hooks/mrHooks.h"
#include "hooks/mrSharedBlock.h"

#include <cstring>

namespace {

constexpr DWORD stop_wait_ms = 10000;     // for the recorder to remove its hooks
constexpr DWORD script_wait_ms = 120000;  // for mrrec to assemble and write the script
constexpr DWORD poll_ms = 10;

[[noreturn]] void fail(const std::string& reason) { throw mrFailure{exitFailed, reason}; }

bool is_recorder_of_mrrec(HWND window) {
  char name[64] = "";
  GetClassNameA(window, name, sizeof name);
  return strcmp(name, mr_recorder_window_class) == 0;
}

mrHandle open_process_of(HWND window) {
  DWORD pid = 0;
  GetWindowThreadProcessId(window, &pid);
  return mrHandle(OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, pid));
}

bool wait_for_removal(HWND recorder) {
  const ULONGLONG start = GetTickCount64();
  while (shared_block().recorder_window == recorder && IsWindow(recorder)) {
    if (GetTickCount64() - start > stop_wait_ms)
      return false;
    Sleep(poll_ms);
  }
  return true;
}

// The script is written when the other mrrec has ended.
void wait_for_script(HANDLE process) {
  if (WaitForSingleObject(process, script_wait_ms) != WAIT_OBJECT_0)
    fail("the recording is stopped, but its script is not written yet");
  DWORD status = 0;
  GetExitCodeProcess(process, &status);
  if (status != exitDone)
    fail("the recording is stopped, but it ended with status " + std::to_string(status));
}

}  // namespace

int stop() {
  const HWND recorder = shared_block().recorder_window;
  if (!recorder)
    fail("no recording runs");
  if (!IsWindow(recorder)) {
    remove_hooks();
    fail("the recorder had ended without stopping; nothing is recorded any more, and there is no script");
  }
  const bool ours = is_recorder_of_mrrec(recorder);
  const mrHandle process = open_process_of(recorder);
  // The recorder removes the hooks itself: an upload on its way still arrives then.
  if (!PostMessageA(recorder, mr_stop_notification, 0, 0))
    fail("cannot reach the recorder: " + system_error_text());
  // One that takes the notification for done, as after Ctrl+Break, leaves them.
  if (!wait_for_removal(recorder))
    remove_hooks();
  if (ours && process)
    wait_for_script(process);
  return exitDone;
}
