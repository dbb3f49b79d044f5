// The two channels between the processes that carry data: record uploads (host to recorder, WM_COPYDATA) and
// remote calls (recorder to host, through the shared hook block).
#pragma once

#include "framework/mrApi.h"

#include <windows.h>

#include <cstdint>

// Posted to the recorder window (wParam and lParam 0) when the user presses Ctrl+Break in the host: the hooks
// are already removed, the recording is over.
constexpr UINT mr_stop_notification = WM_USER + 100;
static_assert(mr_stop_notification == 1124, "recorder applications know this number");

// Uploads one record: WM_COPYDATA to the recorder window with dwData = type, cbData = size, lpData = data and
// wParam 0. Host process, GUI thread. Returns the recorder window's answer after it has processed the record;
// 0 when there is no recorder window (the record is lost). data is borrowed for the call. Waits in steps of 1
// ms, without limit, while another hooked process uploads.
MR_API LRESULT send_copy_data(uint32_t size, void* data, int32_t type);

// Makes a host window receive message with wparam and an lParam that points at a buffer in the host's own
// memory. Recorder process, recorder window's thread; the target's thread must be hooked. size bytes of
// buffer (at most mr_remote_buffer_size) travel there and back; buffer may be null, then nothing is copied.
// Returns the window's answer, 0 without sending anything when size is too large. One call at a time.
MR_API LRESULT send_remotely(HWND target, uint32_t message, WPARAM wparam, void* buffer, size_t size);

// The host's half of a remote call, called by the hook on WH_CALLWNDPROC: sends the stored message to the
// same window and stores its answer. Host process, GUI thread.
void answer_remote_call(HWND target, WPARAM wparam);
