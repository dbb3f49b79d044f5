#include "tests/support/user.h"

#include "tests/support/test_window.h"

#include <cstdlib>
#include <cstring>
#include <stdexcept>

static void send(INPUT input) {
  if (SendInput(1, &input, sizeof input) != 1)
    abort();  // no desktop to work on
}

static void send_mouse(DWORD flags, LONG x = 0, LONG y = 0, DWORD data = 0) {
  INPUT input = {};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = flags;
  input.mi.dx = x;
  input.mi.dy = y;
  input.mi.mouseData = data;
  send(input);
}

// The screen is 65536 units wide and high; rounded up, the system's division gives the pixel back.
static LONG to_units(LONG pixel, int metric) {
  const LONG size = GetSystemMetrics(metric);
  return static_cast<LONG>((static_cast<LONGLONG>(pixel) * 65536 + size - 1) / size);
}

static DWORD down_flag(mrMouseButton button) {
  switch (button) {
  case mrMouseButton::left:
    return MOUSEEVENTF_LEFTDOWN;
  case mrMouseButton::right:
    return MOUSEEVENTF_RIGHTDOWN;
  default:
    return MOUSEEVENTF_MIDDLEDOWN;
  }
}

// Each release flag is the double of its press flag.
static DWORD up_flag(mrMouseButton button) { return down_flag(button) << 1; }

void mrUser::move_to(POINT place) {
  send_mouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, to_units(place.x, SM_CXSCREEN),
             to_units(place.y, SM_CYSCREEN));
}

void mrUser::press(mrMouseButton button) { send_mouse(down_flag(button)); }

void mrUser::release(mrMouseButton button) { send_mouse(up_flag(button)); }

void mrUser::click(POINT place, mrMouseButton button, const std::vector<WORD>& keys) {
  // Two clicks near each other within the double-click time would be one double click.
  const bool near_last = labs(place.x - m_last_click.x) <= GetSystemMetrics(SM_CXDOUBLECLK) &&
                         labs(place.y - m_last_click.y) <= GetSystemMetrics(SM_CYDOUBLECLK);
  while (near_last && GetTickCount() - m_last_click_time <= GetDoubleClickTime() + 50) {
    // The recorder of this process is served meanwhile.
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_SENDMESSAGE);
    MSG msg;
    PeekMessageA(&msg, nullptr, 0, 0, PM_NOREMOVE);
  }
  for (const WORD key : keys)
    key_down(key);
  move_to(place);
  press(button);
  release(button);
  for (auto key = keys.rbegin(); key != keys.rend(); ++key)
    key_up(*key);
  m_last_click = place;
  m_last_click_time = GetTickCount();
}

void mrUser::double_click(POINT place, mrMouseButton button) {
  click(place, button);
  press(button);
  release(button);
  m_last_click_time = GetTickCount();
}

void mrUser::drag(POINT from, POINT to, mrMouseButton button) {
  constexpr int steps = 4;
  move_to(from);
  press(button);
  for (int step = 1; step <= steps; ++step)
    move_to({from.x + (to.x - from.x) * step / steps, from.y + (to.y - from.y) * step / steps});
  release(button);
}

void mrUser::wheel(int notches) {
  send_mouse(MOUSEEVENTF_WHEEL, 0, 0, static_cast<DWORD>(notches * WHEEL_DELTA));
}

// Keys of the block between letters and number pad: without the flag they are the number pad's.
static bool is_extended(WORD key) {
  switch (key) {
  case VK_LEFT:
  case VK_RIGHT:
  case VK_UP:
  case VK_DOWN:
  case VK_HOME:
  case VK_END:
  case VK_PRIOR:
  case VK_NEXT:
  case VK_INSERT:
  case VK_DELETE:
  case VK_APPS:
    return true;
  default:
    return false;
  }
}

static void send_key(WORD key, DWORD flags) {
  INPUT input = {};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = key;
  input.ki.wScan = static_cast<WORD>(MapVirtualKeyA(key, MAPVK_VK_TO_VSC));
  input.ki.dwFlags = flags | (is_extended(key) ? KEYEVENTF_EXTENDEDKEY : 0);
  send(input);
}

void mrUser::key_down(WORD virtual_key) { send_key(virtual_key, 0); }

void mrUser::key_up(WORD virtual_key) { send_key(virtual_key, KEYEVENTF_KEYUP); }

void mrUser::key(WORD virtual_key, const std::vector<WORD>& held) {
  for (const WORD key : held)
    key_down(key);
  key_down(virtual_key);
  key_up(virtual_key);
  for (auto key = held.rbegin(); key != held.rend(); ++key)
    key_up(*key);
}

// A character that no key of the layout gives.
static void send_character(char ch) {
  WCHAR wide = 0;
  MultiByteToWideChar(CP_ACP, 0, &ch, 1, &wide, 1);
  for (const DWORD flags : {DWORD{KEYEVENTF_UNICODE}, DWORD{KEYEVENTF_UNICODE | KEYEVENTF_KEYUP}}) {
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wScan = wide;
    input.ki.dwFlags = flags;
    send(input);
  }
}

void mrUser::type(const std::string& text) {
  for (const char ch : text) {
    const SHORT scan = VkKeyScanA(ch);
    if (scan == -1) {
      send_character(ch);
      continue;
    }
    std::vector<WORD> held;
    if (scan & 0x100)
      held.push_back(VK_SHIFT);
    if (scan & 0x200)
      held.push_back(VK_CONTROL);
    if (scan & 0x400)
      held.push_back(VK_MENU);
    key(static_cast<WORD>(scan & 0xFF), held);
  }
}

void mrUser::paste(const std::string& text) {
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
  memcpy(GlobalLock(memory), text.c_str(), text.size() + 1);
  GlobalUnlock(memory);
  const mrTestWindow owner("Static", "", WS_POPUP);
  if (!wait_until([&owner] { return OpenClipboard(owner) != FALSE; }))  // somebody may be looking into it
    throw std::runtime_error("no clipboard");
  EmptyClipboard();
  SetClipboardData(CF_TEXT, memory);  // which owns the memory from now on
  CloseClipboard();
  key('V', {VK_CONTROL});
}

POINT middle_of(HWND window) {
  RECT rect = {};
  GetWindowRect(window, &rect);
  return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

POINT client_place(HWND window, int x, int y) {
  POINT place = {x, y};
  ClientToScreen(window, &place);
  return place;
}

POINT control_of(HWND dialog, int id) { return middle_of(GetDlgItem(dialog, id)); }
