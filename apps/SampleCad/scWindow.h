// Base of the program's own windows: an object whose on_message is the window procedure.
#pragma once

#include <windows.h>

class scWindow {
public:
  virtual ~scWindow() = default;
  scWindow() = default;
  scWindow(const scWindow&) = delete;
  scWindow& operator=(const scWindow&) = delete;

  HWND handle() const { return m_window; }

  // Registers an ANSI class whose windows are scWindow objects. Registering it again does no harm.
  static void register_class(const char* name, UINT style, HBRUSH background, const char* cursor = IDC_ARROW);

  // Registers a class whose windows make their object themselves: for controls that a dialog template names.
  // The object is deleted with its window.
  template <class T>
  static void register_control(const char* name, UINT style) {
    register_with(name, style, nullptr, IDC_ARROW, control_procedure<T>);
  }

  // The object of a window of a class that was registered here.
  static scWindow* object_of(HWND window) {
    return reinterpret_cast<scWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA));
  }

protected:
  // Creates the window; on_message runs from its very first message. False when the system refuses.
  bool create(const char* class_name, const char* title, DWORD style, DWORD ex_style, const RECT& place,
              HWND parent, UINT_PTR id_or_menu);

  // The window procedure. What it does not handle goes to default_message.
  virtual LRESULT on_message(UINT message, WPARAM wparam, LPARAM lparam) = 0;
  virtual LRESULT default_message(UINT message, WPARAM wparam, LPARAM lparam);
  // After the last message; the object may delete itself here.
  virtual void on_gone() {}

private:
  static void register_with(const char* name, UINT style, HBRUSH background, const char* cursor,
                            WNDPROC procedure);
  template <class T>
  static LRESULT CALLBACK control_procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (!GetWindowLongPtrA(window, GWLP_USERDATA) && !s_being_created) {
      s_being_created = new T;
      s_being_created->m_owned_by_window = true;
    }
    return procedure(window, message, wparam, lparam);
  }
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  static scWindow* s_being_created;  // the object that the next unknown window belongs to

  HWND m_window = nullptr;
  bool m_owned_by_window = false;
};

// Client rectangle of a window, in pixels.
RECT client_rect(HWND window);
// Makes the rectangle of a window that lies at x, y.
RECT place(int x, int y, int width, int height);
// Signed client coordinates of a mouse message: a captured mouse leaves the window.
POINT message_point(LPARAM lparam);
// The font of dialogs, for windows of our own.
HFONT ui_font();
