// The properties of a shape as cells of a grid.
#pragma once

#include "apps/SampleCad/scShapes.h"

enum scShapeCell {
  cellName,
  cellGroup,
  cellX,
  cellY,
  cellZ,
  cellRadius,
  cellHeight,
  cellColour,
  shape_cells
};

// "Name", "Group", "X", ...
const char* shape_cell_title(int cell);
CString shape_cell_text(const scShape& shape, int cell);
// Reads a text into the shape. False, and nothing changed, when it is not a value of this cell.
bool set_shape_cell(scShape& shape, int cell, const CString& text);
