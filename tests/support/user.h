// The user of end-to-end tests: real mouse and keyboard input through SendInput, to whatever window is there.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

enum class mrMouseButton { left, right, middle };

class mrUser {
public:
  // Places are screen pixels.
  void move_to(POINT place);
  void press(mrMouseButton button);
  void release(mrMouseButton button);

  // One click that Windows does not join with the click before it into a double click. keys are virtual keys
  // held down meanwhile (VK_CONTROL, VK_SHIFT).
  void click(POINT place, mrMouseButton button = mrMouseButton::left, const std::vector<WORD>& keys = {});
  void double_click(POINT place, mrMouseButton button = mrMouseButton::left);
  // Press, moves in a few steps, release.
  void drag(POINT from, POINT to, mrMouseButton button = mrMouseButton::left);
  void wheel(int notches);

  // A virtual key, with others held down meanwhile; released in reverse order, as people do.
  void key(WORD virtual_key, const std::vector<WORD>& held = {});
  void key_down(WORD virtual_key);
  void key_up(WORD virtual_key);
  // Characters of the keyboard layout; others arrive as from a keyboard that has them.
  void type(const std::string& text);
  // Copies the text from somewhere else and pastes it.
  void paste(const std::string& text);

private:
  POINT m_last_click = {-1, -1};
  DWORD m_last_click_time = 0;
};

// The middle of a window, a place in its client area, and the middle of a child control, in screen pixels.
POINT middle_of(HWND window);
POINT client_place(HWND window, int x, int y);
POINT control_of(HWND dialog, int id);
