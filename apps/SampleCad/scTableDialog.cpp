// The object table, modeless: every object of the active document in a grid.
#include "apps/SampleCad/common_ids.h"
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "apps/SampleCad/scDialog.h"
#include "apps/SampleCad/scDialogs.h"
#include "apps/SampleCad/scFrame.h"
#include "apps/SampleCad/scGrid.h"
#include "apps/SampleCad/scShapeCells.h"

namespace {

class TableDialog : public scDialog {
public:
  TableDialog() : scDialog(IDD_TABLE, "dialog:table") {}

  // Shows the active document as it is now. Does nothing while the dialog is closed.
  void refresh() {
    const scDocument* document = handle() ? main_frame().active_document() : nullptr;
    if (!handle())
      return;
    const std::vector<scShape> none;
    const std::vector<scShape>& shapes = document ? document->model().shapes() : none;
    const int rows = static_cast<int>(shapes.size());
    // A changed row count ends what is being typed; equal counts leave it alone.
    if (grid().rows() != rows)
      grid().set_row_count(rows);
    for (int row = 1; row <= rows; ++row)
      for (int cell = 0; cell < shape_cells; ++cell)
        grid().set_text(row, cell + 1, shape_cell_text(shapes[static_cast<size_t>(row - 1)], cell));
  }

protected:
  void on_init() override {
    std::vector<CString> titles;
    std::vector<int> widths;
    for (int cell = 0; cell < shape_cells; ++cell) {
      titles.push_back(shape_cell_title(cell));
      widths.push_back(cell <= cellGroup ? 86 : 52);
    }
    grid().set_columns(titles, widths);
    refresh();
  }

  bool on_message(UINT message, WPARAM /*wparam*/, LPARAM lparam, LRESULT& /*result*/) override {
    if (message != grid_cell_changed)
      return false;
    const auto& change = *reinterpret_cast<const scGridCellChange*>(lparam);
    take_cell(static_cast<int>(change.row), static_cast<int>(change.column));
    return true;
  }

private:
  scGrid& grid() const { return scGrid::of(item(IDC_OBJECT_TABLE)); }

  void take_cell(int row, int column) {
    scDocument* document = main_frame().active_document();
    if (!document)
      return;
    scShape shape = document->model().shapes()[static_cast<size_t>(row - 1)];
    // Rows are objects in the model's order, columns the cells of an object.
    const bool taken = set_shape_cell(shape, column - 1, grid().text(row, column));
    set_text(IDC_COMMENT, taken ? "" : "Not a value for this cell.");
    if (taken)
      document->model().change(shape);  // tells the frame, which refreshes this dialog too
  }
};

// One for the program's life; its window comes and goes.
TableDialog& table_dialog() {
  static TableDialog dialog;
  return dialog;
}

}  // namespace

void show_table_dialog() {
  scGrid::register_grid();
  if (table_dialog().handle())
    SetForegroundWindow(table_dialog().handle());
  else
    table_dialog().open(main_frame().handle());
}

void refresh_table_dialog() { table_dialog().refresh(); }
