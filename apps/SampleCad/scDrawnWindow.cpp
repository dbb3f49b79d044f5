#include "apps/SampleCad/scDrawnWindow.h"

LRESULT scDrawnWindow::default_message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
  case WM_SETFOCUS:
  case WM_KILLFOCUS:
    InvalidateRect(handle(), nullptr, FALSE);
    return 0;
  case WM_ERASEBKGND:
    return TRUE;  // paint covers every pixel
  case WM_PAINT:
    paint();
    return 0;
  default:
    return scWindow::default_message(message, wparam, lparam);
  }
}

void scDrawnWindow::paint() {
  PAINTSTRUCT paint;
  const HDC dc = BeginPaint(handle(), &paint);
  const RECT client = client_rect(handle());
  FillRect(dc, &client, GetSysColorBrush(background()));
  const int state = SaveDC(dc);
  SelectObject(dc, ui_font());
  SetBkMode(dc, TRANSPARENT);
  draw(dc);
  RestoreDC(dc, state);
  EndPaint(handle(), &paint);
}
