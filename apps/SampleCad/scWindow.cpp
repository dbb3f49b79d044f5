// Base of the program's own windows; see the header.
#include "apps/SampleCad/scWindow.h"

#include "apps/SampleCad/samplecad.dev/resource.h"

scWindow* scWindow::s_being_created = nullptr;

void scWindow::register_class(const char* name, UINT style, HBRUSH background, const char* cursor) {
  register_with(name, style, background, cursor, procedure);
}

void scWindow::register_with(const char* name, UINT style, HBRUSH background, const char* cursor,
                             WNDPROC procedure) {
  const HINSTANCE instance = GetModuleHandleA(nullptr);
  WNDCLASSEXA description = {};
  description.cbSize = sizeof(description);
  description.style = style;
  description.lpfnWndProc = procedure;
  description.hInstance = instance;
  description.hIcon = LoadIconA(instance, MAKEINTRESOURCEA(IDR_MAIN_ICON));
  description.hCursor = LoadCursorA(nullptr, cursor);
  description.hbrBackground = background;
  description.lpszClassName = name;
  RegisterClassExA(&description);  // fails for a name that is registered already: harmless
}

bool scWindow::create(const char* class_name, const char* title, DWORD style, DWORD ex_style,
                      const RECT& place, HWND parent, UINT_PTR id_or_menu) {
  s_being_created = this;
  const HWND window =
      CreateWindowExA(ex_style, class_name, title, style, place.left, place.top, place.right - place.left,
                      place.bottom - place.top, parent, reinterpret_cast<HMENU>(id_or_menu),
                      GetModuleHandleA(nullptr), nullptr);
  s_being_created = nullptr;  // also when no message came
  return window != nullptr;
}

LRESULT scWindow::default_message(UINT message, WPARAM wparam, LPARAM lparam) {
  return DefWindowProcA(m_window, message, wparam, lparam);
}

LRESULT CALLBACK scWindow::procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
  scWindow* self = object_of(window);
  if (!self && s_being_created) {
    // The first message of a new window comes before CreateWindow returns; bind the object to it here.
    self = s_being_created;
    s_being_created = nullptr;
    self->m_window = window;
    SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
  }
  if (!self)
    return DefWindowProcA(window, message, wparam, lparam);
  const LRESULT result = self->on_message(message, wparam, lparam);
  // The last message of a window: nothing may touch the object after on_gone.
  if (message == WM_NCDESTROY) {
    SetWindowLongPtrA(window, GWLP_USERDATA, 0);
    self->m_window = nullptr;
    if (self->m_owned_by_window)
      delete self;
    else
      self->on_gone();
  }
  return result;
}

RECT client_rect(HWND window) {
  RECT rect = {};
  GetClientRect(window, &rect);
  return rect;
}

RECT place(int x, int y, int width, int height) { return {x, y, x + width, y + height}; }

POINT message_point(LPARAM lparam) {
  return {static_cast<short>(LOWORD(lparam)), static_cast<short>(HIWORD(lparam))};
}

HFONT ui_font() {
  static const HFONT font =
      CreateFontA(-11, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                  CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY, DEFAULT_PITCH | FF_DONTCARE, "MS Shell Dlg");
  return font;
}
