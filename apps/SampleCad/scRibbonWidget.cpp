// The ribbon customisation widget; see the header.
#include "apps/SampleCad/scRibbonWidget.h"

#include "apps/SampleCad/samplecad.dev/resource.h"
#include "host/bcg.h"

#include <windows.h>

#include <algorithm>

namespace {

constexpr char widget_class[] = "SampleCadRibbonWidget";
constexpr char grid_class[] = "BCGPGridCtrl:400000:8";
constexpr int row_height = 19;  // pixels
constexpr LRESULT is_a_widget = 165;

UINT widget_request() {
  static const UINT message = RegisterWindowMessageA("MSG_REQUEST_RIB_CUSTOMISATION_WIDGET_DATA");
  return message;
}

// One with quotes, which a script must escape.
std::vector<CString> ribbon_entries() {
  return {"New model", "Open model",     "Save model", "Insert \"Gearbox\"", "Insert flange", "Zoom to fit",
          "Top view",  "Isometric view", "Options",    "Find object"};
}

}  // namespace

// ---- the grid inside ----------------------------------------------------------------------------

bool scRibbonGrid::create_in(HWND widget, std::vector<CString> entries) {
  m_entries = std::move(entries);
  register_class(grid_class, CS_HREDRAW | CS_VREDRAW, nullptr);
  if (!create(grid_class, "", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, client_rect(widget), widget,
              IDC_RIBBON_GRID))
    return false;
  set_item_source(handle(), this);
  return true;
}

LRESULT scRibbonGrid::on_message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
  case WM_GETDLGCODE:
    return DLGC_WANTARROWS;  // a dialog would move the focus with them
  case WM_LBUTTONDOWN:
    SetFocus(handle());
    select(static_cast<size_t>(std::max<LONG>(message_point(lparam).y, 0) / row_height));
    return 0;
  case WM_KEYDOWN:
    if (wparam == VK_DOWN || (wparam == VK_UP && m_current > 0))
      select(m_current + (wparam == VK_DOWN ? 1 : -1));
    return 0;
  default:
    return default_message(message, wparam, lparam);
  }
}

void scRibbonGrid::select(size_t entry) {
  // The entry that is selected already is no new selection.
  if (entry >= m_entries.size() || entry == m_current)
    return;
  m_current = entry;
  InvalidateRect(handle(), nullptr, FALSE);
  // After the entry is in place: whoever is told asks for its text at once.
  SendMessageA(GetParent(handle()), BCGM_GRID_SEL_CHANGED, static_cast<WPARAM>(entry),
               reinterpret_cast<LPARAM>(handle()));
}

RECT scRibbonGrid::row_rect(size_t row) const {
  return place(0, static_cast<int>(row) * row_height, client_rect(handle()).right, row_height);
}

void scRibbonGrid::list_items(const Add& add) const {
  for (size_t row = 0; row < m_entries.size(); ++row) {
    CString name;
    name.Format("%d", static_cast<int>(row));
    add(name, row_rect(row));
  }
}

void scRibbonGrid::draw(HDC dc) {
  for (size_t row = 0; row < m_entries.size(); ++row) {
    RECT rect = row_rect(row);
    if (row == m_current) {
      SetDCBrushColor(dc, GetFocus() == handle() ? RGB(255, 218, 150) : RGB(232, 237, 244));
      FillRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    }
    InflateRect(&rect, -8, 0);
    DrawTextA(dc, m_entries[row], -1, &rect, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
  }
}

// ---- the widget ---------------------------------------------------------------------------------

void scRibbonWidget::register_widget() { register_control<scRibbonWidget>(widget_class, 0); }

scRibbonWidget& scRibbonWidget::of(HWND window) { return *static_cast<scRibbonWidget*>(object_of(window)); }

LRESULT scRibbonWidget::on_message(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == widget_request())
    return on_request(wparam, lparam);
  if (message == BCGM_GRID_SEL_CHANGED) {
    // The dialog shows what is selected.
    SendMessageA(GetParent(handle()), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(handle()), LBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(handle()));
    return 0;
  }
  // The grid fills the widget, whatever size the dialog gives it.
  if (message == WM_CREATE)
    return m_grid.create_in(handle(), ribbon_entries()) ? 0 : -1;
  if (message == WM_SIZE)
    MoveWindow(m_grid.handle(), 0, 0, LOWORD(lparam), HIWORD(lparam), TRUE);
  return default_message(message, wparam, lparam);
}

LRESULT scRibbonWidget::on_request(WPARAM code, LPARAM lparam) const {
  if (code == 0)
    return is_a_widget;
  if (code != 1 || !lparam)
    return 0;
  const auto& request = *reinterpret_cast<const scRibbonRequest*>(lparam);
  lstrcpynA(request.text, selected(), static_cast<int>(request.capacity));
  return 1;
}
