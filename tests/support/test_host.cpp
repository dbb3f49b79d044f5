// The program behind test_host.h.
#include "tests/support/test_host.h"

#include <windows.h>
#include <commctrl.h>

#include <algorithm>

static UINT remote_call;
static int remote_call_count = 0;
static int press_count = 0;

static LRESULT reverse_buffer(WPARAM size, LPARAM address) {
  BYTE* const bytes = reinterpret_cast<BYTE*>(address);
  LRESULT sum = host_result_bit;
  for (WPARAM i = 0; i < size; ++i)
    sum += bytes[i];
  std::reverse(bytes, bytes + size);
  return sum;
}

static LRESULT CALLBACK control_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == remote_call)
    ++remote_call_count;
  switch (message) {
  case host_reverse_buffer:
    return reverse_buffer(wparam, lparam);
  case host_add_one:
    return static_cast<LRESULT>(wparam + 1);
  case host_count_remote_calls:
    return remote_call_count;
  case WM_LBUTTONDOWN:
    ++press_count;
    return 0;
  case host_count_presses:
    return press_count;
  default:
    return DefWindowProcA(window, message, wparam, lparam);
  }
}

static LRESULT CALLBACK frame_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  static const UINT get_window_name = RegisterWindowMessageA("MSG_ZQ_GetWindowName");
  static const UINT get_template_id = RegisterWindowMessageA("MSG_ZQ_GetDialogTemplateID");
  static const UINT get_res_library = RegisterWindowMessageA("MSG_ZQ_GetDialogResLibrary");
  if (message == get_window_name)
    return reinterpret_cast<HWND>(lparam) == GetDlgItem(window, host_control_id)
               ? GlobalAddAtomA(host_control_name)
               : 0;
  if (message == get_template_id)
    return host_template_id;
  if (message == get_res_library)
    return GlobalAddAtomA(host_resource_library);
  if (message == WM_DESTROY)
    PostQuitMessage(0);
  return DefWindowProcA(window, message, wparam, lparam);
}

static void register_class(const char* name, WNDPROC proc) {
  WNDCLASSA window_class = {};
  window_class.style = CS_DBLCLKS;
  window_class.lpfnWndProc = proc;
  window_class.hInstance = GetModuleHandleA(nullptr);
  window_class.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
  window_class.lpszClassName = name;
  RegisterClassA(&window_class);
}

static HWND add_child(HWND frame, const char* class_name, int id, int top) {
  return CreateWindowExA(0, class_name, "", WS_CHILD | WS_VISIBLE, 10, top, 200, 40, frame,
                         reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleA(nullptr),
                         nullptr);
}

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  InitCommonControls();
  remote_call = RegisterWindowMessageA("MSG_MR_SEND_REMOTELY");
  register_class("TestHostFrame", frame_proc);
  register_class("TestHostControl", control_proc);

  const HWND frame = CreateWindowExA(0, "TestHostFrame", "Test host", WS_OVERLAPPEDWINDOW, 50, 50, 400, 300,
                                     nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
  add_child(frame, "TestHostControl", host_control_id, 10);
  const HWND tabs = add_child(frame, "SysTabControl32", host_tabs_id, 60);
  add_child(frame, "Edit", host_edit_id, 120);
  char titles[2][4] = {"One", "Two"};
  for (int i = 0; i < 2; ++i) {
    TCITEMA item = {};
    item.mask = TCIF_TEXT;
    item.pszText = titles[i];
    SendMessageA(tabs, TCM_INSERTITEMA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
  }
  // Shown last: whoever waits for the frame finds everything in it.
  ShowWindow(frame, SW_SHOW);

  MSG msg;
  while (GetMessageA(&msg, nullptr, 0, 0) > 0) {
    TranslateMessage(&msg);
    DispatchMessageA(&msg);
  }
  return 0;
}
