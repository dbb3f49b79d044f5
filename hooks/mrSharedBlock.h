// The shared hook block: the only memory that the recorder process and every hooked host process have in
// common.
//
// One object in a section of its own, mapped read-write-shared into every process that loads the library and
// zero-initialised at first load. It is read and written without locks, by the host's GUI thread and by the
// recorder window's thread; the layout is common to all processes and therefore fixed.
#pragma once

#include "framework/mrApi.h"

#include <windows.h>

#include <cstddef>
#include <cstdint>

constexpr size_t mr_remote_buffer_size = 1024;

struct mrSharedBlock {
  int32_t
      ignore_commands_count;  // valid entries of the ignore-command list, 0 to 16; the list is per process
  uint32_t padding_4;
  HWND logger_window;     // window watched by the message logger; null when none
  uint32_t logger_latch;  // 1 once the message logger has fixed its window
  uint32_t padding_20;
  HWND logger_candidate_window;  // window of the last WM_MOUSEMOVE that the message logger saw
  volatile uint8_t busy;         // 1 while an upload is in flight; volatile, since waiters poll it
  uint8_t raw_mode;              // nonzero: only the generic window recorder is asked
  uint16_t padding_34;
  uint32_t remote_message_id;  // registered id of a remote call; 0 until the first one
  HWND recorder_window;        // null: not recording; nonzero also marks the hooks as installed
  uint32_t remote_message;     // message that a remote call asks the host window to receive
  uint32_t padding_52;
  HHOOK cbt_hook;
  HHOOK call_wnd_ret_hook;
  HHOOK call_wnd_hook;
  HHOOK get_message_hook;
  LRESULT remote_result;  // the host window's answer to the last remote call
  uint8_t
      remote_buffer[mr_remote_buffer_size];  // in and out: what a remote call's lParam points at in the host
};

#define MR_SHARED_AT(field, offset)                                                                          \
  static_assert(offsetof(mrSharedBlock, field) == (offset), "mrSharedBlock is common to all processes")
MR_SHARED_AT(ignore_commands_count, 0);
MR_SHARED_AT(logger_window, 8);
MR_SHARED_AT(logger_latch, 16);
MR_SHARED_AT(logger_candidate_window, 24);
MR_SHARED_AT(busy, 32);
MR_SHARED_AT(raw_mode, 33);
MR_SHARED_AT(remote_message_id, 36);
MR_SHARED_AT(recorder_window, 40);
MR_SHARED_AT(remote_message, 48);
MR_SHARED_AT(cbt_hook, 56);
MR_SHARED_AT(call_wnd_ret_hook, 64);
MR_SHARED_AT(call_wnd_hook, 72);
MR_SHARED_AT(get_message_hook, 80);
MR_SHARED_AT(remote_result, 88);
MR_SHARED_AT(remote_buffer, 96);
static_assert(sizeof(mrSharedBlock) == 96 + mr_remote_buffer_size,
              "mrSharedBlock is common to all processes");
#undef MR_SHARED_AT

// This process's view of the block. Any process, any thread.
MR_API mrSharedBlock& shared_block();
