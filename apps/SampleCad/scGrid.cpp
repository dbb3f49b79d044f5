// A grid of cells; see the header.
#include "apps/SampleCad/scGrid.h"

#include <windows.h>

#include <algorithm>

namespace {

constexpr int row_height = 19;  // pixels; fixed, so that cells are where tests expect them
constexpr LRESULT is_a_grid = 165;

UINT grid_information() {
  static const UINT message = RegisterWindowMessageA("MSG_GX_RequestGridInformation");
  return message;
}

}  // namespace

void scGrid::register_grid() {
  register_control<scGrid>(sc_grid_class, CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW);
}

scGrid& scGrid::of(HWND window) { return *static_cast<scGrid*>(object_of(window)); }

void scGrid::set_columns(std::vector<CString> titles, std::vector<int> widths) {
  m_titles = std::move(titles);
  m_widths = std::move(widths);
  m_locked.assign(m_titles.size(), false);
  set_row_count(0);
}

void scGrid::set_row_count(int rows) {
  m_edit.end(false);  // its cell may not be there any more
  m_rows = rows;
  m_cells.resize(static_cast<size_t>(rows) * m_titles.size());
  // The current cell may be gone.
  m_row = std::clamp(m_row, 1, std::max(rows, 1));
  scroll_to(m_first_row);
}

void scGrid::set_text(int row, int column, const CString& text) {
  // Asked often with what is there already; no flicker then.
  if (!is_cell(row, column) || m_cells[index(row, column)] == text)
    return;
  m_cells[index(row, column)] = text;
  InvalidateRect(handle(), nullptr, FALSE);
}

void scGrid::lock_column(int column) { m_locked[static_cast<size_t>(column - 1)] = true; }

// ---- messages -----------------------------------------------------------------------------------

LRESULT scGrid::on_message(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == grid_information())
    return on_information(wparam, lparam);
  switch (message) {
  case WM_CREATE:
    set_item_source(handle(), this);
    return 0;
  case WM_SIZE:
    update_scroll_bar();
    return 0;
  case WM_GETDLGCODE:
    return DLGC_WANTARROWS | DLGC_WANTCHARS;  // both mean something here, not to the dialog
  case WM_LBUTTONDOWN:
    on_click(message_point(lparam));
    return 0;
  case WM_LBUTTONDBLCLK:
    on_click(message_point(lparam));
    begin_edit(is_cell(m_row, m_column) ? text(m_row, m_column) : CString());
    return 0;
  case WM_KEYDOWN:
    if (on_key(wparam))
      return 0;
    break;
  case WM_CHAR:
    // Typing replaces the cell's text.
    if (wparam >= ' ') {
      const char typed[] = {static_cast<char>(wparam), '\0'};
      begin_edit(typed);
      if (m_edit.is_open())
        SendMessageA(GetFocus(), EM_SETSEL, 1, 1);  // the next letter goes behind the first
      return 0;
    }
    break;
  case WM_VSCROLL: {
    const int page = std::max(visible_rows() - 1, 1);
    const WORD code = LOWORD(wparam);
    if (code == SB_THUMBTRACK || code == SB_THUMBPOSITION)
      scroll_to(HIWORD(wparam));
    else
      scroll_to(m_first_row + (code == SB_LINEDOWN) - (code == SB_LINEUP) + page * (code == SB_PAGEDOWN) -
                page * (code == SB_PAGEUP));
    return 0;
  }
  default:
    break;
  }
  return default_message(message, wparam, lparam);
}

LRESULT scGrid::on_information(WPARAM code, LPARAM lparam) const {
  if (code == 0)
    return is_a_grid;
  if (code != 3 || !lparam)
    return 0;
  const auto& request = *reinterpret_cast<const scGridCellRequest*>(lparam);
  const int row = static_cast<int>(request.row);
  const int column = static_cast<int>(request.column);
  // A cell that does not exist leaves the asker's buffer alone.
  if (!is_cell(row, column) || !request.capacity)
    return 0;
  lstrcpynA(request.text, text(row, column), static_cast<int>(request.capacity));
  return 1;
}

void scGrid::on_click(POINT at) {
  SetFocus(handle());
  int row = 0;
  int column = 0;
  if (cell_at(at, row, column))
    move_to(row, column);
}

bool scGrid::on_key(WPARAM key) {
  switch (key) {
  case VK_UP:
  case VK_DOWN:
    move_to(m_row + (key == VK_DOWN) - (key == VK_UP), m_column);
    return true;
  case VK_LEFT:
  case VK_RIGHT:
    move_to(m_row, m_column + (key == VK_RIGHT) - (key == VK_LEFT));
    return true;
  case VK_F2:
  case VK_RETURN:
    if (is_cell(m_row, m_column))
      begin_edit(text(m_row, m_column));
    return true;
  default:
    return false;
  }
}

// Makes a cell the current one and scrolls so that it is seen.
void scGrid::move_to(int row, int column) {
  if (!is_cell(row, column))
    return;
  m_row = row;
  m_column = column;
  if (row < m_first_row)
    scroll_to(row);
  else if (row >= m_first_row + visible_rows())
    scroll_to(row - visible_rows() + 1);
  InvalidateRect(handle(), nullptr, FALSE);
}

void scGrid::begin_edit(const CString& text) {
  if (!is_cell(m_row, m_column) || m_locked[static_cast<size_t>(m_column - 1)])
    return;
  RECT at = cell_rect(m_row, m_column);
  InflateRect(&at, -2, -2);
  m_edit.begin(handle(), at, text, [this](const CString& typed) { finish_edit(typed); });
}

void scGrid::finish_edit(const CString& typed) {
  // The same text again is no change, and nobody is told.
  if (!is_cell(m_row, m_column) || text(m_row, m_column) == typed)
    return;
  set_text(m_row, m_column, typed);
  const scGridCellChange change = {handle(), static_cast<unsigned>(m_row), static_cast<unsigned>(m_column)};
  SendMessageA(GetParent(handle()), grid_cell_changed, 0, reinterpret_cast<LPARAM>(&change));
}

// ---- layout and drawing -------------------------------------------------------------------------

// Whole rows below the titles.
int scGrid::visible_rows() const { return std::max<int>(1, client_rect(handle()).bottom / row_height - 1); }

void scGrid::scroll_to(int first_row) {
  m_edit.end(true);  // the box does not travel with its cell
  m_first_row = std::clamp(first_row, 1, std::max(1, m_rows - visible_rows() + 1));
  update_scroll_bar();
  InvalidateRect(handle(), nullptr, FALSE);
}

void scGrid::update_scroll_bar() {
  SCROLLINFO info = {sizeof(info), SIF_ALL, 1, m_rows, static_cast<UINT>(visible_rows()), m_first_row, 0};
  SetScrollInfo(handle(), SB_VERT, &info, TRUE);
}

RECT scGrid::cell_rect(int row, int column) const {
  int left = 0;
  for (int i = 1; i < column; ++i)
    left += m_widths[static_cast<size_t>(i - 1)];
  const RECT client = client_rect(handle());
  const int right = column == columns() ? client.right : left + m_widths[static_cast<size_t>(column - 1)];
  // Row 0, the titles, does not scroll.
  const int line = row == 0 ? 0 : row - m_first_row + 1;
  return {left, line * row_height, right, (line + 1) * row_height};
}

bool scGrid::cell_at(POINT at, int& row, int& column) const {
  for (int r = m_first_row; r <= m_rows; ++r)
    for (int c = 1; c <= columns(); ++c) {
      const RECT rect = cell_rect(r, c);
      if (PtInRect(&rect, at)) {
        row = r;
        column = c;
        return true;
      }
    }
  return false;
}

void scGrid::list_items(const Add& add) const {
  const int last = std::min(m_rows, m_first_row + visible_rows() - 1);
  for (int row = m_first_row; row <= last; ++row)
    for (int column = 1; column <= columns(); ++column) {
      CString name;
      name.Format("%d,%d", row, column);
      add(name, cell_rect(row, column));
    }
}

void scGrid::draw(HDC dc) {
  const int last = std::min(m_rows, m_first_row + visible_rows());
  for (int column = 1; column <= columns(); ++column) {
    for (int row = m_first_row; row <= last; ++row)
      draw_cell(dc, row, column);
    draw_cell(dc, 0, column);
  }
}

void scGrid::draw_cell(HDC dc, int row, int column) const {
  const bool is_title = row == 0;
  const bool is_current = row == m_row && column == m_column;
  const bool is_locked = m_locked[static_cast<size_t>(column - 1)];
  RECT rect = cell_rect(row, column);
  SetDCBrushColor(dc, is_title                               ? RGB(226, 232, 240)
                      : is_current && GetFocus() == handle() ? RGB(255, 240, 205)
                      : is_locked                            ? RGB(244, 246, 249)
                                                             : RGB(255, 255, 255));
  FillRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
  SetDCBrushColor(dc, RGB(205, 212, 222));
  const RECT below = {rect.left, rect.bottom - 1, rect.right, rect.bottom};
  const RECT beside = {rect.right - 1, rect.top, rect.right, rect.bottom};
  FillRect(dc, &below, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
  FillRect(dc, &beside, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
  SetTextColor(dc, is_title || is_locked ? RGB(80, 92, 110) : RGB(20, 26, 36));
  InflateRect(&rect, -4, 0);
  const CString& shown = is_title ? m_titles[static_cast<size_t>(column - 1)] : text(row, column);
  DrawTextA(dc, shown, -1, &rect, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}
