// Drawing of owner-drawn buttons and items; see the header.
#include "apps/SampleCad/scOwnerDraw.h"

#include <windows.h>
#include <commctrl.h>

namespace {

constexpr COLORREF lit = RGB(255, 240, 205);
constexpr COLORREF lit_edge = RGB(225, 150, 40);
constexpr int max_text = 260;

// The stock brush of any colour: nothing to create, nothing to delete.
void fill(HDC dc, const RECT& rect, COLORREF colour) {
  SetDCBrushColor(dc, colour);
  FillRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

void frame(HDC dc, const RECT& rect, COLORREF colour) {
  SetDCBrushColor(dc, colour);
  FrameRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

void fill_background(const DRAWITEMSTRUCT& item) {
  const bool selected = item.itemState & ODS_SELECTED;
  fill(item.hDC, item.rcItem, GetSysColor(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
}

constexpr UINT_PTR toggle_subclass = 1;

// The state lives in the subclass's own data: 0 or 1.
LRESULT CALLBACK toggle_procedure(HWND button, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR id,
                                  DWORD_PTR state) {
  switch (message) {
  case BM_GETCHECK:
    return static_cast<LRESULT>(state);
  case BM_SETCHECK:
    SetWindowSubclass(button, toggle_procedure, id, wparam ? 1 : 0);
    InvalidateRect(button, nullptr, TRUE);
    return 0;
  case WM_NCDESTROY:
    RemoveWindowSubclass(button, toggle_procedure, id);  // as the system asks of every subclass
    break;
  default:
    break;
  }
  return DefSubclassProc(button, message, wparam, lparam);
}

}  // namespace

void draw_colour_item(const DRAWITEMSTRUCT& item) {
  fill_background(item);
  // The edit part of a combo box with nothing selected.
  if (item.itemID == static_cast<UINT>(-1))
    return;
  RECT swatch = item.rcItem;
  InflateRect(&swatch, -3, -2);
  fill(item.hDC, swatch, static_cast<COLORREF>(item.itemData));
  frame(item.hDC, swatch, RGB(60, 60, 60));
}

void draw_text_item(const DRAWITEMSTRUCT& item) {
  fill_background(item);
  if (item.itemID == static_cast<UINT>(-1))
    return;
  RECT mark = item.rcItem;
  InflateRect(&mark, -3, -3);
  mark.right = mark.left + (mark.bottom - mark.top);
  fill(item.hDC, mark, RGB(90, 150, 210));
  // Asked for its length first: the message itself knows no limit.
  char text[max_text] = "";
  if (SendMessageA(item.hwndItem, CB_GETLBTEXTLEN, item.itemID, 0) < max_text)
    SendMessageA(item.hwndItem, CB_GETLBTEXT, item.itemID, reinterpret_cast<LPARAM>(text));
  RECT rest = item.rcItem;
  rest.left = mark.right + 5;
  SetBkMode(item.hDC, TRANSPARENT);
  SetTextColor(item.hDC, GetSysColor(item.itemState & ODS_SELECTED ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
  DrawTextA(item.hDC, text, -1, &rest, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
}

void draw_button(const DRAWITEMSTRUCT& item) {
  const bool on = SendMessageA(item.hwndItem, BM_GETCHECK, 0, 0) == BST_CHECKED;
  const bool down = item.itemState & ODS_SELECTED;
  fill(item.hDC, item.rcItem, down ? RGB(215, 225, 238) : on ? lit : RGB(250, 250, 252));
  frame(item.hDC, item.rcItem, on ? lit_edge : RGB(120, 140, 165));
  RECT lamp = item.rcItem;
  InflateRect(&lamp, -7, -7);
  lamp.right = lamp.left + (lamp.bottom - lamp.top);
  fill(item.hDC, lamp, on ? lit_edge : RGB(190, 200, 212));
  char text[max_text] = "";
  GetWindowTextA(item.hwndItem, text, max_text);
  RECT rest = item.rcItem;
  rest.left = lamp.right + 4;
  SetBkMode(item.hDC, TRANSPARENT);
  SetTextColor(item.hDC, GetSysColor(COLOR_BTNTEXT));
  DrawTextA(item.hDC, text, -1, &rest, DT_SINGLELINE | DT_VCENTER | DT_CENTER);
  if (item.itemState & ODS_FOCUS) {
    RECT focus = item.rcItem;
    InflateRect(&focus, -3, -3);
    DrawFocusRect(item.hDC, &focus);
  }
}

void make_toggle(HWND button) { SetWindowSubclass(button, toggle_procedure, toggle_subclass, 0); }
