// Look-alikes of two tab windows; see the header.
#include "apps/SampleCad/scTabWindow.h"

#include <windows.h>
#include <commctrl.h>

#include <algorithm>

namespace {

// Fixed sizes, whatever the font: tests click on tabs by their rectangles.
constexpr int tab_width = 78;  // pixels
constexpr int slant = 8;       // how much the sides lean

// Tells its parent at once.
class BcgTabWindow : public scTabWindow {
protected:
  void tell_parent() override {
    SendMessageA(GetParent(handle()), bcg_tab_changed(), static_cast<WPARAM>(current()),
                 reinterpret_cast<LPARAM>(handle()));
  }
  // Answers with its own text instead of filling the caller's buffer, as tab controls may.
  bool get_item(int index, TCITEMA& item) override {
    if (item.mask & TCIF_TEXT)
      item.pszText = const_cast<char*>(caption(index).GetString());
    return true;
  }
  COLORREF accent() const override { return RGB(70, 130, 200); }
};

// Tells its parent by way of the message queue.
class GxTabBeam : public scTabWindow {
protected:
  void tell_parent() override {
    PostMessageA(GetParent(handle()), gx_tab_changed, static_cast<WPARAM>(current()),
                 reinterpret_cast<LPARAM>(handle()));
  }
  bool get_item(int index, TCITEMA& item) override {
    if (item.mask & TCIF_TEXT)
      lstrcpynA(item.pszText, caption(index), item.cchTextMax);
    return true;
  }
  COLORREF accent() const override { return RGB(90, 160, 100); }
};

}  // namespace

UINT bcg_tab_changed() {
  static const UINT message = RegisterWindowMessageA("BCGM_ONCHANGE_ACTIVE_TAB");
  return message;
}

void register_tab_windows() {
  scWindow::register_control<BcgTabWindow>("BCGTabWnd", CS_HREDRAW | CS_VREDRAW);
  scWindow::register_control<GxTabBeam>("GXTabBeam", CS_HREDRAW | CS_VREDRAW);
}

LRESULT scTabWindow::on_message(UINT message, WPARAM wparam, LPARAM lparam) {
  const int index = static_cast<int>(wparam);
  switch (message) {
  case TCM_INSERTITEMA:
    m_captions.insert(m_captions.begin() + std::clamp<int>(index, 0, static_cast<int>(m_captions.size())),
                      CString(reinterpret_cast<const TCITEMA*>(lparam)->pszText));
    InvalidateRect(handle(), nullptr, FALSE);
    return index;
  case TCM_GETITEMCOUNT:
    return static_cast<LRESULT>(m_captions.size());
  case TCM_GETITEMA:
    return exists(index) && get_item(index, *reinterpret_cast<TCITEMA*>(lparam));
  case TCM_GETITEMRECT:
    if (!exists(index))
      return FALSE;
    *reinterpret_cast<RECT*>(lparam) = tab_rect(index);
    return TRUE;
  case TCM_GETCURSEL:
    return m_captions.empty() ? -1 : m_current;
  case TCM_SETCURSEL: {  // by the program: the parent is not told
    const int before = m_current;
    choose(index);
    return before;
  }
  case WM_LBUTTONDOWN:
    on_click(message_point(lparam));
    return 0;
  case WM_GETDLGCODE:
    return DLGC_WANTARROWS;  // a dialog would move the focus with them
  case WM_KEYDOWN:
    if (on_key(wparam))
      return 0;
    break;
  default:
    break;
  }
  return default_message(message, wparam, lparam);
}

RECT scTabWindow::tab_rect(int index) const {
  const RECT client = client_rect(handle());
  return {index * tab_width + slant, 2, (index + 1) * tab_width + slant, client.bottom};
}

void scTabWindow::choose(int index) {
  if (exists(index))
    m_current = index;
  InvalidateRect(handle(), nullptr, FALSE);
}

void scTabWindow::on_click(POINT at) {
  SetFocus(handle());
  // A click on the current tab changes nothing and is told to nobody.
  for (int index = 0; exists(index); ++index) {
    const RECT rect = tab_rect(index);
    if (!PtInRect(&rect, at) || index == m_current)
      continue;
    choose(index);
    tell_parent();
    return;
  }
}

bool scTabWindow::on_key(WPARAM key) {
  // Beyond the first and the last tab nothing happens, and nothing is told.
  const int next = m_current + (key == VK_RIGHT) - (key == VK_LEFT);
  if (next == m_current || !exists(next))
    return false;
  choose(next);
  tell_parent();
  return true;
}

void scTabWindow::draw(HDC dc) {
  SelectObject(dc, GetStockObject(DC_BRUSH));
  SelectObject(dc, GetStockObject(DC_PEN));
  for (int index = 0; exists(index); ++index) {
    RECT rect = tab_rect(index);
    const bool is_current = index == m_current;
    SetDCBrushColor(dc, is_current ? accent() : RGB(236, 239, 243));
    SetDCPenColor(dc, is_current ? accent() : RGB(160, 170, 182));
    const POINT corners[] = {{rect.left - slant, rect.bottom - 1},
                             {rect.left, rect.top},
                             {rect.right - slant, rect.top},
                             {rect.right, rect.bottom - 1}};
    Polygon(dc, corners, 4);
    SetTextColor(dc, is_current ? RGB(255, 255, 255) : RGB(40, 50, 60));
    DrawTextA(dc, caption(index), -1, &rect, DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX);
    if (is_current && GetFocus() == handle()) {
      InflateRect(&rect, -10, -4);
      DrawFocusRect(dc, &rect);
    }
  }
}
