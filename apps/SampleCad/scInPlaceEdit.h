// The small edit box that grids and option trees open over a value.
#pragma once

#include "framework/CString.h"

#include <windows.h>

#include <functional>

class scInPlaceEdit {
public:
  // Told once, when the editing ends; not told when it was cancelled with Escape.
  using Done = std::function<void(const CString& text)>;

  scInPlaceEdit() = default;
  ~scInPlaceEdit() { end(false); }
  scInPlaceEdit(const scInPlaceEdit&) = delete;
  scInPlaceEdit& operator=(const scInPlaceEdit&) = delete;

  // Opens the box inside parent, with the text selected. Return, Tab and the loss of the focus end the
  // editing.
  void begin(HWND parent, const RECT& at, const CString& text, Done done);
  bool is_open() const { return m_edit != nullptr; }
  // Ends the editing now, with the text or without.
  void end(bool keep);

private:
  static LRESULT CALLBACK procedure(HWND edit, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR id,
                                    DWORD_PTR self);

  HWND m_edit = nullptr;
  Done m_done;
};
