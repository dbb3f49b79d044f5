// A small host of known windows in a process of its own, and what the test process knows of it. The program
// itself (test_host.cpp) uses nothing of the library: that comes to it through the hooks.
#pragma once

#include <windows.h>

// ---- windows -----------------------------------------------------------------------------------

// The frame: a visible top-level window of class "TestHostFrame" with these children, all visible.
constexpr int host_control_id = 101;  // "TestHostControl", answers the requests below
constexpr int host_tabs_id = 102;     // SysTabControl32 with the tabs "One" and "Two"
constexpr int host_edit_id = 103;     // Edit

// ---- requests to the control ---------------------------------------------------------------------

// lParam: a buffer of wParam bytes in the host's memory, reversed in place. Answers the sum of its bytes with
// bit 40 set, to show that results are 64 bits wide.
constexpr UINT host_reverse_buffer = WM_APP + 1;
constexpr LRESULT host_result_bit = 1LL << 40;
// Answers wParam + 1.
constexpr UINT host_add_one = WM_APP + 2;
// Answers how often the control has received the registered message "MSG_MR_SEND_REMOTELY".
constexpr UINT host_count_remote_calls = WM_APP + 3;
// Answers how often the control has received WM_LBUTTONDOWN.
constexpr UINT host_count_presses = WM_APP + 4;

// ---- identity ------------------------------------------------------------------------------------

// What the frame answers to the four identity messages: the control's name, and template id and resource
// library of the frame's "dialog". Other windows have no name.
constexpr const char* host_control_name = "Host Control";
constexpr int host_template_id = 4711;
constexpr const char* host_resource_library = "hostres";
