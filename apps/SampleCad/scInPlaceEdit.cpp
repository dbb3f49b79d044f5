// The small edit box over a value; see the header.
#include "apps/SampleCad/scInPlaceEdit.h"

#include "apps/SampleCad/common_ids.h"
#include "apps/SampleCad/scWindow.h"

#include <windows.h>
#include <commctrl.h>

#include <utility>

namespace {

constexpr UINT_PTR subclass_id = 2;

CString text_of(HWND edit) {
  std::string text(static_cast<size_t>(GetWindowTextLengthA(edit)) + 1, '\0');
  GetWindowTextA(edit, &text[0], static_cast<int>(text.size()));
  return CString(text.c_str());
}

}  // namespace

void scInPlaceEdit::begin(HWND parent, const RECT& at, const CString& text, Done done) {
  end(true);
  m_edit = CreateWindowExA(0, "Edit", text, WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, at.left, at.top,
                           at.right - at.left, at.bottom - at.top, parent,
                           reinterpret_cast<HMENU>(static_cast<UINT_PTR>(IDC_IN_PLACE_EDIT)),
                           GetModuleHandleA(nullptr), nullptr);
  if (!m_edit)
    return;
  m_done = std::move(done);
  SendMessageA(m_edit, WM_SETFONT, reinterpret_cast<WPARAM>(ui_font()), FALSE);
  SetWindowSubclass(m_edit, procedure, subclass_id, reinterpret_cast<DWORD_PTR>(this));
  SendMessageA(m_edit, EM_SETSEL, 0, -1);
  SetFocus(m_edit);
}

void scInPlaceEdit::end(bool keep) {
  // Destroying the box takes its focus away, which would end the editing once more.
  const HWND edit = std::exchange(m_edit, nullptr);
  if (!edit)
    return;
  const Done done = std::move(m_done);
  const CString text = text_of(edit);
  const HWND parent = GetParent(edit);
  const bool had_focus = GetFocus() == edit;
  RemoveWindowSubclass(edit, procedure, subclass_id);
  DestroyWindow(edit);
  if (had_focus)
    SetFocus(parent);
  if (keep && done)
    done(text);
}

LRESULT CALLBACK scInPlaceEdit::procedure(HWND edit, UINT message, WPARAM wparam, LPARAM lparam,
                                          UINT_PTR /*id*/, DWORD_PTR self) {
  auto& box = *reinterpret_cast<scInPlaceEdit*>(self);
  switch (message) {
  case WM_GETDLGCODE:
    return DLGC_WANTALLKEYS;  // Return and Escape end the editing, not the dialog
  case WM_KEYDOWN:
    if (wparam == VK_RETURN || wparam == VK_TAB || wparam == VK_ESCAPE) {
      box.end(wparam != VK_ESCAPE);
      return 0;
    }
    break;
  case WM_CHAR:
    if (wparam == VK_RETURN || wparam == VK_TAB || wparam == VK_ESCAPE)
      return 0;  // no beep
    break;
  case WM_KILLFOCUS:
    box.end(true);
    return 0;
  case WM_NCDESTROY:
    box.m_edit = nullptr;  // the parent was closed while the box was open
    break;
  default:
    break;
  }
  return DefSubclassProc(edit, message, wparam, lparam);
}
