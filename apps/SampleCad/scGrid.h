// A grid of cells that can be edited in place.
//
// Told from other windows by the registered message "MSG_GX_RequestGridInformation": wParam 0 is answered
// with 165; wParam 3 with lParam the address of an scGridCellRequest is answered with the cell's text. When
// the user has edited a cell, the parent is sent message 1949 with lParam the address of an scGridCellChange.
// Rows and columns count from 1; row 0 holds the titles.
#pragma once

#include "apps/SampleCad/scInPlaceEdit.h"
#include "apps/SampleCad/scReadyFile.h"
#include "apps/SampleCad/scDrawnWindow.h"
#include "framework/CString.h"

#include <cstddef>
#include <vector>

constexpr char sc_grid_class[] = "SampleCadGrid";
constexpr UINT grid_cell_changed = 1949;

struct scGridCellChange {
  HWND grid;
  unsigned row;
  unsigned column;
};
static_assert(sizeof(scGridCellChange) == 16, "read by others with these offsets");

struct scGridCellRequest {
  unsigned row;
  unsigned column;
  char* text;         // buffer of the asker
  unsigned capacity;  // its size in characters; longer texts are cut
};
static_assert(sizeof(scGridCellRequest) == 24 && offsetof(scGridCellRequest, capacity) == 16,
              "written by others");

class scGrid : public scDrawnWindow, private scItemSource {
public:
  // Before a dialog whose template names the class is opened.
  static void register_grid();
  // The object of a grid window.
  static scGrid& of(HWND window);

  // Titles and widths (pixels) of the columns; the last one takes the room that is left.
  void set_columns(std::vector<CString> titles, std::vector<int> widths);
  void set_row_count(int rows);
  void set_text(int row, int column, const CString& text);
  const CString& text(int row, int column) const { return m_cells[index(row, column)]; }
  // Cells of this column cannot be edited.
  void lock_column(int column);
  int rows() const { return m_rows; }
  int current_row() const { return m_row; }

protected:
  LRESULT on_message(UINT message, WPARAM wparam, LPARAM lparam) override;
  void draw(HDC dc) override;

private:
  void list_items(const Add& add) const override;
  LRESULT on_information(WPARAM code, LPARAM lparam) const;
  void on_click(POINT at);
  bool on_key(WPARAM key);
  void move_to(int row, int column);
  void begin_edit(const CString& text);
  void finish_edit(const CString& text);
  void scroll_to(int first_row);
  void update_scroll_bar();

  int columns() const { return static_cast<int>(m_titles.size()); }
  size_t index(int row, int column) const {
    return static_cast<size_t>(row - 1) * m_titles.size() + (column - 1);
  }
  bool is_cell(int row, int column) const {
    return row >= 1 && row <= m_rows && column >= 1 && column <= columns();
  }
  RECT cell_rect(int row, int column) const;
  bool cell_at(POINT at, int& row, int& column) const;
  int visible_rows() const;
  void draw_cell(HDC dc, int row, int column) const;

  std::vector<CString> m_titles;
  std::vector<int> m_widths;
  std::vector<bool> m_locked;
  std::vector<CString> m_cells;  // row by row
  int m_rows = 0;
  int m_row = 1;  // the current cell
  int m_column = 1;
  int m_first_row = 1;  // the topmost one on the screen
  scInPlaceEdit m_edit;
};
