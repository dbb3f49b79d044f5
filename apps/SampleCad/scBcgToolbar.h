// Look-alikes of the toolbars of another library, told by their class names: "BCGToolBar:..." (old) and
// "BCGPToolBar:..." (new).
//
// They answer the common toolbar messages TB_BUTTONCOUNT, TB_GETBUTTON, TB_GETITEMRECT, TB_GETBUTTONTEXTA,
// TB_GETSTRINGA and TB_GETHOTITEM. A button with a drop-down opens a second toolbar of the same class, with
// the choices one below the other. With the focus, arrow keys move the hot button, Return or Space presses
// it, Down opens a drop-down and Escape gives the focus back. A command is sent to the frame.
#pragma once

#include "apps/SampleCad/scCommandState.h"
#include "apps/SampleCad/scIcons.h"
#include "apps/SampleCad/scWindow.h"
#include "framework/CString.h"

#include <memory>
#include <vector>

struct scBarButton {
  int command = 0;  // 0: a separator; -1: a drop-down that is no command itself
  CString text;     // may be empty
  scIcon icon = iconNew;
  bool shows_text = false;
  bool text_in_pool = false;  // told by TB_GETSTRINGA for the button's iString, not by TB_GETBUTTONTEXTA
  bool is_check = false;
  std::vector<scBarButton> choices;  // not empty: a drop-down
};

class scBcgToolbar : public scWindow {
public:
  enum class Style { old_library, new_library };

  scBcgToolbar(Style style, std::vector<scBarButton> buttons)
      : m_style(style), m_buttons(std::move(buttons)) {}

  bool create_in(HWND frame, int id, const char* title);
  // Pixels that the bar needs.
  SIZE size() const;
  // Brings the look of the buttons up to date.
  void update(const scCommandStateOf& state_of);
  void close_popup();

  // Looks at a message of the queue before it is dispatched: a click elsewhere or Escape closes an open
  // drop-down. True when the message is used up.
  static bool filter(const MSG& message);

protected:
  LRESULT on_message(UINT message, WPARAM wparam, LPARAM lparam) override;
  void on_gone() override;

private:
  bool open_popup(int index);
  bool create_popup(scBcgToolbar& opener, const RECT& beside);
  const char* class_name() const;

  LRESULT on_toolbar_message(UINT message, WPARAM wparam, LPARAM lparam);
  bool get_button(int index, struct _TBBUTTON& out) const;
  LRESULT get_text(int command, char* out) const;
  LRESULT get_pool_text(WPARAM number, char* out) const;

  void on_button_down(POINT at);
  void on_button_up(POINT at);
  void on_mouse_move(POINT at);
  void on_key(WPARAM key);
  void press(int index);
  void step_hot(int direction);
  void set_hot(int index);

  RECT button_rect(int index) const;
  int button_width(const scBarButton& button) const;
  int button_at(POINT at) const;
  bool is_button(int index) const;
  bool enabled(int index) const { return m_states[static_cast<size_t>(index)].enabled; }
  void paint();
  void draw_button(HDC dc, int index) const;

  Style m_style;
  std::vector<scBarButton> m_buttons;
  std::vector<scCommandState> m_states;   // one per button
  std::unique_ptr<scBcgToolbar> m_popup;  // the open drop-down
  scBcgToolbar* m_opener = nullptr;       // of a drop-down: the bar that opened it
  HWND m_frame = nullptr;
  HWND m_focus_before = nullptr;  // gets the focus back
  int m_hot = -1;
  int m_pressed = -1;
};
