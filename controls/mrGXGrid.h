// The host's GX grids: cells that the user has edited.
#pragma once

#include "framework/mrApi.h"
#include "hooks/mrHookedMessage.h"
#include "model/mrBaseWindowFactory.h"

#include <cstddef>
#include <cstdint>

// What the host uploads; 280 bytes, little-endian.
struct mrGXGridRec {
  HWND grid;
  uint32_t row;
  uint32_t column;
  char text[mr_max_text];  // of the cell, as the grid gave it
  uint32_t reserved;
};
static_assert(sizeof(mrGXGridRec) == 280, "travels between processes");
static_assert(offsetof(mrGXGridRec, row) == 8 && offsetof(mrGXGridRec, column) == 12 &&
                  offsetof(mrGXGridRec, text) == 16 && offsetof(mrGXGridRec, reserved) == 276,
              "travels between processes");

// Sent by a grid when a cell has been edited; lParam points at an mrGXGridCell.
constexpr UINT mr_grid_cell_changed = 1949;

// What the host's grid sends: only its first fields are known.
struct mrGXGridCell {
  HWND grid;
  uint32_t row;
  uint32_t column;
};
static_assert(sizeof(mrGXGridCell) == 16 && offsetof(mrGXGridCell, row) == 8 &&
                  offsetof(mrGXGridCell, column) == 12,
              "laid out by the host");

// lParam of the grid's request message with this wParam: the grid fills the buffer with the cell's text.
constexpr WPARAM mr_grid_request_text = 3;
struct mrGXGridTextRequest {
  uint32_t row;
  uint32_t column;
  char* text;
  uint32_t capacity;  // characters, final zero included
};
static_assert(offsetof(mrGXGridTextRequest, text) == 8 && offsetof(mrGXGridTextRequest, capacity) == 16,
              "laid out by the host");

class MR_API mrGXGrid : public mrBaseWindow {
public:
  // The grid's own level is declared as a GX grid, whatever its window class. Raises CInvalidArgException
  // for a null grid, which has no path.
  mrGXGrid(HWND grid, mrBaseWindowFactory* factory, unsigned long row, unsigned long column);

  // Whether the action is about this cell.
  bool is(HWND grid, unsigned long row, unsigned long column) const;

private:
  uint32_t m_row;
  uint32_t m_column;
};

class MR_API mrGXGridFactory : public mrBaseWindowFactory {
public:
  mrGXGridFactory();

  mrFactoryType get_factory_type() override;
  // Claims every message to a grid or to a child of one (the in-place editor), and mr_grid_cell_changed to
  // another window, about a grid: it is asked for the cell's text, which is uploaded. An lParam up to 0xFFFF
  // is no address: left.
  bool handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) override;
  // Edits of one cell in a row end as the last text. The text travels in the record.
  void copy_data(void* data) override;
  // Always 0: grids have no context menu action of their own.
  mrContextMenuRes context_menu_invoke(HWND window, const char* name, const CPoint& point) override;

private:
  bool on_cell_changed(const mrGXGridCell& cell);
};
