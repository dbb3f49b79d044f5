// Look-alikes of the toolbars of another library; see the header.
#include "apps/SampleCad/scBcgToolbar.h"

#include "apps/SampleCad/scReadyFile.h"

#include <windows.h>
#include <commctrl.h>

#include <algorithm>

namespace {

// Names as that library makes them: its own name, then numbers of the window class.
constexpr char old_class[] = "BCGToolBar:400000:8:10003:10";
constexpr char new_class[] = "BCGPToolBar:400000:8:10003:10";

// Fixed sizes, whatever the font: tests click on buttons by their rectangles.
constexpr int margin = 3;  // pixels around the buttons
constexpr int button_height = 26;
constexpr int plain_width = 26;
constexpr int separator_width = 9;
constexpr int arrow_width = 10;
constexpr int popup_width = 130;
constexpr int max_text = 260;

constexpr COLORREF bar_top = RGB(250, 251, 253);
constexpr COLORREF bar_bottom = RGB(228, 233, 240);
constexpr COLORREF edge = RGB(160, 172, 188);
constexpr COLORREF hot_fill = RGB(255, 240, 205);
constexpr COLORREF pressed_fill = RGB(255, 218, 150);
constexpr COLORREF hot_edge = RGB(225, 150, 40);

// The bar whose drop-down is open; there is never more than one.
scBcgToolbar* g_open = nullptr;

void fill(HDC dc, const RECT& rect, COLORREF colour) {
  SetDCBrushColor(dc, colour);
  FillRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

void frame_rect(HDC dc, const RECT& rect, COLORREF colour) {
  SetDCBrushColor(dc, colour);
  FrameRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

// One of these bars or their drop-downs, whose clicks they handle themselves.
bool is_bar_class(HWND window) {
  char name[32] = "";
  GetClassNameA(window, name, sizeof(name));
  return CString(name).Left(10) == "BCGToolBar" || CString(name).Left(11) == "BCGPToolBar";
}

}  // namespace

// ---- windows ------------------------------------------------------------------------------------

const char* scBcgToolbar::class_name() const { return m_style == Style::old_library ? old_class : new_class; }

bool scBcgToolbar::create_in(HWND frame, int id, const char* title) {
  m_frame = frame;
  m_states.resize(m_buttons.size());
  register_class(class_name(), 0, nullptr);
  return create(class_name(), title, WS_CHILD | WS_VISIBLE, 0, place(0, 0, 10, 10), frame,
                static_cast<UINT_PTR>(id));
}

bool scBcgToolbar::create_popup(scBcgToolbar& opener, const RECT& beside) {
  m_opener = &opener;
  m_frame = opener.m_frame;
  m_states.resize(m_buttons.size());
  const SIZE room = size();
  // Never activated: the frame stays the active window while its drop-down is open.
  if (!create(class_name(), "", WS_POPUP, WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE,
              place(beside.left, beside.bottom, room.cx, room.cy), m_frame, 0))
    return false;
  name_place(handle(), "popup");
  ShowWindow(handle(), SW_SHOWNOACTIVATE);
  return true;
}

bool scBcgToolbar::open_popup(int index) {
  if (g_open)
    g_open->close_popup();
  RECT beside = button_rect(index);
  MapWindowPoints(handle(), nullptr, reinterpret_cast<POINT*>(&beside), 2);
  m_popup = std::make_unique<scBcgToolbar>(m_style, m_buttons[static_cast<size_t>(index)].choices);
  if (!m_popup->create_popup(*this, beside)) {
    m_popup.reset();
    return false;
  }
  g_open = this;
  return true;
}

void scBcgToolbar::close_popup() {
  if (!m_popup)
    return;
  if (g_open == this)
    g_open = nullptr;
  // Taken out first: its end must not find it here again.
  const std::unique_ptr<scBcgToolbar> popup = std::move(m_popup);
  DestroyWindow(popup->handle());
  set_hot(-1);
}

void scBcgToolbar::on_gone() {
  if (g_open == this)
    g_open = nullptr;
}

bool scBcgToolbar::filter(const MSG& message) {
  if (!g_open)
    return false;
  const bool is_press = (message.message >= WM_LBUTTONDOWN && message.message <= WM_MBUTTONDBLCLK) ||
                        (message.message >= WM_NCLBUTTONDOWN && message.message <= WM_NCMBUTTONDBLCLK);
  const bool is_release = message.message == WM_LBUTTONUP || message.message == WM_RBUTTONUP;
  if (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE) {
    g_open->close_popup();
    return true;
  }
  if (is_press && !is_release && !is_bar_class(message.hwnd))
    g_open->close_popup();
  return false;
}

// ---- messages -----------------------------------------------------------------------------------

LRESULT scBcgToolbar::on_message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
  case TB_BUTTONCOUNT:
  case TB_GETBUTTON:
  case TB_GETITEMRECT:
  case TB_GETBUTTONTEXTA:
  case TB_GETSTRINGA:
  case TB_GETHOTITEM:
    return on_toolbar_message(message, wparam, lparam);
  case WM_MOUSEACTIVATE:  // a click on a bar leaves the focus where it is
    return MA_NOACTIVATE;
  case WM_LBUTTONDOWN:
  case WM_LBUTTONDBLCLK:
    on_button_down(message_point(lparam));
    return 0;
  case WM_LBUTTONUP:
    on_button_up(message_point(lparam));
    return 0;
  case WM_MOUSEMOVE:
    on_mouse_move(message_point(lparam));
    return 0;
  case WM_MOUSELEAVE:
    // The keyboard and an open drop-down keep their button lit.
    if (GetFocus() != handle() && !m_popup)
      set_hot(-1);
    return 0;
  case WM_SETFOCUS:
    m_focus_before = reinterpret_cast<HWND>(wparam);
    set_hot(-1);  // from the first button, wherever the mouse is
    step_hot(1);
    return 0;
  case WM_KILLFOCUS:
    set_hot(-1);
    return 0;
  case WM_GETDLGCODE:
    return DLGC_WANTALLKEYS;  // Return is for the hot button
  case WM_KEYDOWN:
    on_key(wparam);
    return 0;
  case WM_ERASEBKGND:
    return TRUE;
  case WM_PAINT:
    paint();
    return 0;
  default:
    return default_message(message, wparam, lparam);
  }
}

LRESULT scBcgToolbar::on_toolbar_message(UINT message, WPARAM wparam, LPARAM lparam) {
  const int index = static_cast<int>(wparam);
  const bool exists = index >= 0 && index < static_cast<int>(m_buttons.size());
  switch (message) {
  case TB_BUTTONCOUNT:
    return static_cast<LRESULT>(m_buttons.size());
  case TB_GETBUTTON:
    return exists && get_button(index, *reinterpret_cast<TBBUTTON*>(lparam));
  case TB_GETITEMRECT:
    if (exists)
      *reinterpret_cast<RECT*>(lparam) = button_rect(index);
    return exists;
  case TB_GETBUTTONTEXTA:
    return get_text(index, reinterpret_cast<char*>(lparam));
  case TB_GETSTRINGA:
    return get_pool_text(wparam, reinterpret_cast<char*>(lparam));
  default:  // TB_GETHOTITEM
    return m_hot;
  }
}

bool scBcgToolbar::get_button(int index, TBBUTTON& out) const {
  const scBarButton& button = m_buttons[static_cast<size_t>(index)];
  const scCommandState& state = m_states[static_cast<size_t>(index)];
  out = {};
  out.iBitmap = button.icon;
  out.idCommand = button.command;
  out.fsState =
      static_cast<BYTE>((state.enabled ? TBSTATE_ENABLED : 0) | (state.checked ? TBSTATE_CHECKED : 0));
  out.fsStyle = static_cast<BYTE>(button.command == 0       ? BTNS_SEP
                                  : !button.choices.empty() ? BTNS_WHOLEDROPDOWN
                                  : button.is_check         ? BTNS_CHECK
                                                            : BTNS_BUTTON);
  // Number of the text in the pool, from 1; the pool is asked for it with this very number.
  out.iString = button.text_in_pool ? index + 1 : 0;
  return true;
}

// The length of the text, -1 when the button has none of its own; a buffer holds at least 260 characters.
LRESULT scBcgToolbar::get_text(int command, char* out) const {
  for (const scBarButton& button : m_buttons)
    if (button.command == command && !button.text_in_pool && !button.text.IsEmpty()) {
      if (out)
        lstrcpynA(out, button.text, max_text);
      return button.text.GetLength();
    }
  return -1;
}

LRESULT scBcgToolbar::get_pool_text(WPARAM number, char* out) const {
  if (number < 1 || number > m_buttons.size() || !m_buttons[number - 1].text_in_pool)
    return -1;
  const CString& text = m_buttons[number - 1].text;
  if (out)
    lstrcpynA(out, text, max_text);
  return text.GetLength();
}

void scBcgToolbar::update(const scCommandStateOf& state_of) {
  // A drop-down that is no command is always enabled.
  for (size_t i = 0; i < m_buttons.size(); ++i)
    m_states[i] = m_buttons[i].command > 0 ? state_of(m_buttons[i].command) : scCommandState();
  InvalidateRect(handle(), nullptr, FALSE);
}

// ---- input --------------------------------------------------------------------------------------

void scBcgToolbar::on_button_down(POINT at) {
  const int index = button_at(at);
  if (!is_button(index) || !enabled(index))
    return;
  const bool has_choices = !m_buttons[static_cast<size_t>(index)].choices.empty();
  // A second click on the button closes what the first has opened.
  if (has_choices && m_popup) {
    close_popup();
    return;
  }
  m_pressed = index;
  InvalidateRect(handle(), nullptr, FALSE);
  if (has_choices)
    open_popup(index);
  else if (m_popup)
    close_popup();
}

void scBcgToolbar::on_button_up(POINT at) {
  const int pressed = m_pressed;
  m_pressed = -1;
  InvalidateRect(handle(), nullptr, FALSE);
  const int index = button_at(at);
  // In a drop-down the release alone chooses: the press may have been on the button that opened it.
  if (is_button(index) && enabled(index) && (index == pressed || m_opener))
    press(index);
}

void scBcgToolbar::on_mouse_move(POINT at) {
  const int index = button_at(at);
  set_hot(is_button(index) ? index : -1);
  // Asked for anew with every move: the system tells of the mouse's leaving once.
  TRACKMOUSEEVENT leave = {sizeof(leave), TME_LEAVE, handle(), 0};
  TrackMouseEvent(&leave);
}

// Runs the command of a button; a drop-down button runs none.
void scBcgToolbar::press(int index) {
  const scBarButton& button = m_buttons[static_cast<size_t>(index)];
  if (!button.choices.empty())
    return;
  const int command = button.command;
  const HWND frame = m_frame;
  // As after a click: the focus goes back before the command runs.
  if (GetFocus() == handle())
    SetFocus(m_focus_before);
  // Closing a drop-down ends this object: nothing of it is used below.
  if (m_opener)
    m_opener->close_popup();
  SendMessageA(frame, WM_COMMAND, static_cast<WPARAM>(command), 0);
}

void scBcgToolbar::on_key(WPARAM key) {
  // While the drop-down is open, the keys are for it.
  scBcgToolbar& bar = m_popup ? *m_popup : *this;
  switch (key) {
  case VK_LEFT:
  case VK_RIGHT:
    step_hot(key == VK_RIGHT ? 1 : -1);
    break;
  case VK_UP:
  case VK_DOWN:
    if (m_popup)
      bar.step_hot(key == VK_DOWN ? 1 : -1);
    else if (is_button(m_hot) && !m_buttons[static_cast<size_t>(m_hot)].choices.empty())
      open_popup(m_hot);
    break;
  case VK_RETURN:
  case VK_SPACE: {
    if (!bar.is_button(bar.m_hot) || !bar.enabled(bar.m_hot))
      break;
    // A choice of the drop-down, too, gives the focus back before its command runs.
    const bool is_command = bar.m_buttons[static_cast<size_t>(bar.m_hot)].choices.empty();
    if (m_popup && is_command && GetFocus() == handle())
      SetFocus(m_focus_before);
    bar.press(bar.m_hot);  // ends the drop-down: bar is not used below
    break;
  }
  case VK_ESCAPE:
    SetFocus(m_focus_before);
    break;
  default:
    break;
  }
}

// To the next button in this direction, past separators and disabled ones, around the end.
void scBcgToolbar::step_hot(int direction) {
  const int count = static_cast<int>(m_buttons.size());
  int index = m_hot;
  for (int i = 0; i < count; ++i) {
    index = (index + direction + count) % count;
    if (is_button(index) && enabled(index))
      break;
  }
  set_hot(index);
}

void scBcgToolbar::set_hot(int index) {
  if (m_hot == index)
    return;
  m_hot = index;
  if (handle())
    InvalidateRect(handle(), nullptr, FALSE);
}

// ---- layout and drawing -------------------------------------------------------------------------

bool scBcgToolbar::is_button(int index) const {
  return index >= 0 && index < static_cast<int>(m_buttons.size()) &&
         m_buttons[static_cast<size_t>(index)].command != 0;
}

int scBcgToolbar::button_width(const scBarButton& button) const {
  if (button.command == 0)
    return separator_width;
  // A fixed width per letter: the rectangles do not depend on the machine's fonts.
  const int text_width = button.shows_text ? 7 * button.text.GetLength() + 6 : 0;
  return plain_width + text_width + (button.choices.empty() ? 0 : arrow_width);
}

RECT scBcgToolbar::button_rect(int index) const {
  if (m_opener)
    return place(margin, margin + index * button_height, popup_width - 2 * margin, button_height);
  int left = margin;
  for (int i = 0; i < index; ++i)
    left += button_width(m_buttons[static_cast<size_t>(i)]);
  return place(left, margin, button_width(m_buttons[static_cast<size_t>(index)]), button_height);
}

SIZE scBcgToolbar::size() const {
  if (m_opener)
    return {popup_width, static_cast<int>(m_buttons.size()) * button_height + 2 * margin};
  int width = 2 * margin;
  for (const scBarButton& button : m_buttons)
    width += button_width(button);
  return {width, button_height + 2 * margin};
}

int scBcgToolbar::button_at(POINT at) const {
  for (int index = 0; index < static_cast<int>(m_buttons.size()); ++index) {
    const RECT rect = button_rect(index);
    if (PtInRect(&rect, at))
      return index;
  }
  return -1;
}

void scBcgToolbar::paint() {
  PAINTSTRUCT paint;
  const HDC dc = BeginPaint(handle(), &paint);
  const RECT client = client_rect(handle());
  TRIVERTEX corners[] = {{0, 0, GetRValue(bar_top) << 8, GetGValue(bar_top) << 8, GetBValue(bar_top) << 8, 0},
                         {client.right, client.bottom, GetRValue(bar_bottom) << 8, GetGValue(bar_bottom) << 8,
                          GetBValue(bar_bottom) << 8, 0}};
  GRADIENT_RECT whole = {0, 1};
  // Drop-downs are plain; so is everything where there is no gradient.
  if (m_opener || !GradientFill(dc, corners, 2, &whole, 1, GRADIENT_FILL_RECT_V))
    fill(dc, client, bar_top);
  frame_rect(dc, client, edge);
  const HGDIOBJ old_font = SelectObject(dc, ui_font());
  SetBkMode(dc, TRANSPARENT);
  for (int index = 0; index < static_cast<int>(m_buttons.size()); ++index)
    draw_button(dc, index);
  SelectObject(dc, old_font);
  EndPaint(handle(), &paint);
}

void scBcgToolbar::draw_button(HDC dc, int index) const {
  const scBarButton& button = m_buttons[static_cast<size_t>(index)];
  const scCommandState& state = m_states[static_cast<size_t>(index)];
  RECT rect = button_rect(index);
  if (button.command == 0) {
    const int middle = (rect.left + rect.right) / 2;
    fill(dc, {middle, rect.top + 3, middle + 1, rect.bottom - 3}, edge);
    return;
  }
  if (index == m_hot || state.checked || index == m_pressed) {
    fill(dc, rect, index == m_pressed || state.checked ? pressed_fill : hot_fill);
    frame_rect(dc, rect, hot_edge);
  }
  ImageList_Draw(command_icons(), button.icon, dc, rect.left + 3, rect.top + 3, ILD_TRANSPARENT);
  SetTextColor(dc, state.enabled ? RGB(30, 40, 55) : RGB(150, 158, 168));
  if (button.shows_text || m_opener) {
    RECT text = {rect.left + plain_width + 2, rect.top, rect.right, rect.bottom};
    DrawTextA(dc, button.text, -1, &text, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
  }
  if (button.choices.empty())
    return;
  // The small arrow of a drop-down.
  for (int row = 0; row < 3; ++row)
    fill(dc, {rect.right - 10 + row, rect.top + 12 + row, rect.right - 5 - row, rect.top + 13 + row},
         RGB(60, 70, 90));
}
