#include "tests/support/test_window.h"

#include "hooks/mrSharedBlock.h"

#include <map>

static std::map<HWND, mrTestAnswer>& answers() {
  static std::map<HWND, mrTestAnswer> map;
  return map;
}

static LRESULT CALLBACK test_window_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  const auto found = answers().find(window);
  LRESULT result = 0;
  if (found != answers().end()) {
    const mrTestAnswer answer = found->second;  // a copy: the answer may destroy its window
    if (answer(message, wparam, lparam, result))
      return result;
  }
  return DefWindowProcA(window, message, wparam, lparam);
}

void register_test_class(const char* class_name) {
  WNDCLASSA window_class = {};
  window_class.style = CS_DBLCLKS;
  window_class.lpfnWndProc = test_window_proc;
  window_class.hInstance = GetModuleHandleA(nullptr);
  window_class.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
  window_class.lpszClassName = class_name;
  RegisterClassA(&window_class);
}

mrTestWindow::mrTestWindow(const char* class_name, const char* text, DWORD style, HWND parent, int id,
                           DWORD ex_style, RECT place)
    : m_window(CreateWindowExA(ex_style, class_name, text, style, place.left, place.top,
                               place.right - place.left, place.bottom - place.top, parent,
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleA(nullptr),
                               nullptr)) {
  if (!m_window)
    abort();  // a test on a window that is not there proves nothing
}

mrTestWindow::~mrTestWindow() { destroy(); }

void mrTestWindow::destroy() {
  if (m_window)
    DestroyWindow(m_window);
  answers().erase(m_window);
  m_window = nullptr;
}

void mrTestWindow::set_answer(mrTestAnswer answer) { answers()[m_window] = std::move(answer); }

static const char* registered(const char* class_name) {
  register_test_class(class_name);
  return class_name;
}

mrTestFrame::mrTestFrame(const char* class_name, const char* text)
    : mrTestWindow(registered(class_name), text, WS_OVERLAPPEDWINDOW | WS_VISIBLE) {}

mrUploadCatcher::mrUploadCatcher()
    : m_window(registered("TestRecorderWindow"), "Test recorder", WS_OVERLAPPEDWINDOW) {
  m_window.set_answer([this](UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
    if (message != WM_COPYDATA) {
      if (on_message)
        on_message(message, wparam, lparam);
      return false;
    }
    const COPYDATASTRUCT& data = *reinterpret_cast<const COPYDATASTRUCT*>(lparam);
    m_uploads.push_back({static_cast<unsigned>(data.dwData),
                         std::string(static_cast<const char*>(data.lpData), data.cbData)});
    result = wparam == 0;
    return true;
  });
  shared_block().recorder_window = m_window;
}

mrUploadCatcher::~mrUploadCatcher() { shared_block().recorder_window = nullptr; }

void pump_messages() {
  MSG msg;
  while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&msg);
    DispatchMessageA(&msg);
  }
}

bool wait_until(const std::function<bool()>& condition, DWORD limit_ms) {
  const DWORD start = GetTickCount();
  while (!condition()) {
    if (GetTickCount() - start > limit_ms)
      return false;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    pump_messages();
  }
  return true;
}
