// Uploads run in the host process; remote calls start in the recorder process and are answered in the host.
#include "hooks/mrChannel.h"

#include "hooks/mrSharedBlock.h"

#include <cstring>

// ---- record upload: host process, GUI thread ----------------------------------------------------

// One per process: all hooks of a process run on its one hooked thread.
static COPYDATASTRUCT upload;

LRESULT send_copy_data(uint32_t size, void* data, int32_t type) {
  upload.dwData = static_cast<ULONG_PTR>(static_cast<LONG_PTR>(type));
  upload.cbData = size;
  upload.lpData = data;

  mrSharedBlock& shared = shared_block();
  // Deliberate: the test and the set are two plain steps. Two hosts that meet in between upload at the same
  // time, and the recorder's message queue serves them in turn.
  while (shared.busy)
    Sleep(1);
  shared.busy = 1;
  const LRESULT answer =
      SendMessageA(shared.recorder_window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&upload));
  shared.busy = 0;
  return answer;
}

// ---- remote call: recorder process --------------------------------------------------------------

LRESULT send_remotely(HWND target, uint32_t message, WPARAM wparam, void* buffer, size_t size) {
  if (size > mr_remote_buffer_size)
    return 0;

  mrSharedBlock& shared = shared_block();
  shared.remote_message = message;
  if (buffer)
    memcpy(shared.remote_buffer, buffer, size);
  if (!shared.remote_message_id)
    shared.remote_message_id = RegisterWindowMessageA("MSG_MR_SEND_REMOTELY");
  SendMessageA(target, shared.remote_message_id, wparam, 0);
  if (buffer && size)
    memcpy(buffer, shared.remote_buffer, size);
  return shared.remote_result;
}

// ---- remote call: host process, inside WH_CALLWNDPROC ---------------------------------------------

// A remote call is being answered in this process.
static bool answering = false;

void answer_remote_call(HWND target, WPARAM wparam) {
  // The stored message can be the remote message id itself: both are 0 until the first remote call, and a
  // WM_NULL would call for itself until the host's stack is used up.
  if (answering)
    return;
  answering = true;
  mrSharedBlock& shared = shared_block();
  shared.remote_result =
      SendMessageA(target, shared.remote_message, wparam, reinterpret_cast<LPARAM>(shared.remote_buffer));
  answering = false;
}
