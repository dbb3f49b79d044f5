// The properties of a shape as cells of a grid; see the header.
#include "apps/SampleCad/scShapeCells.h"

#include <cstdio>
#include <cstdlib>

namespace {

// The whole text must be one number in these bounds; the negated comparison refuses "nan" too.
bool read_number(const CString& text, double minimum, double& out) {
  char* end = nullptr;
  const double value = std::strtod(text, &end);
  if (end == text.GetString() || *end || !(value >= minimum && value <= 10000))
    return false;
  out = value;
  return true;
}

// "#RRGGBB", as it is shown.
bool read_colour(const CString& text, COLORREF& out) {
  unsigned red = 0;
  unsigned green = 0;
  unsigned blue = 0;
  if (text.GetLength() != 7 || std::sscanf(text, "#%02x%02x%02x", &red, &green, &blue) != 3)
    return false;
  out = RGB(red, green, blue);
  return true;
}

// Names are one line of a file: no tabs, no line ends, not empty.
bool is_name(const CString& text) {
  for (int i = 0; i < text.GetLength(); ++i)
    if (static_cast<unsigned char>(text[i]) < ' ')
      return false;
  return !text.IsEmpty() && text.GetLength() <= max_shape_name;
}

// As short as it can be: "12", "12.5".
CString number(double value) {
  CString text;
  text.Format("%.10g", value);
  return text;
}

}  // namespace

const char* shape_cell_title(int cell) {
  constexpr const char* titles[] = {"Name", "Group", "X", "Y", "Z", "Radius", "Height", "Colour"};
  static_assert(sizeof(titles) / sizeof(titles[0]) == shape_cells, "one title per cell");
  return titles[cell];
}

CString shape_cell_text(const scShape& shape, int cell) {
  CString text;
  switch (cell) {
  case cellName:
    return shape.name;
  case cellGroup:
    return shape.group;
  case cellX:
    return number(shape.at.x);
  case cellY:
    return number(shape.at.y);
  case cellZ:
    return number(shape.at.z);
  case cellRadius:
    return number(shape.radius);
  case cellHeight:
    return number(shape.height);
  default:
    text.Format("#%02X%02X%02X", GetRValue(shape.colour), GetGValue(shape.colour), GetBValue(shape.colour));
    return text;
  }
}

bool set_shape_cell(scShape& shape, int cell, const CString& text) {
  constexpr double anywhere = -10000;
  switch (cell) {
  case cellName:
    if (is_name(text))
      shape.name = text;
    return is_name(text);
  case cellGroup:
    if (is_name(text))
      shape.group = text;
    return is_name(text);
  case cellX:
    return read_number(text, anywhere, shape.at.x);
  case cellY:
    return read_number(text, anywhere, shape.at.y);
  case cellZ:
    return read_number(text, anywhere, shape.at.z);
  case cellRadius:
    return read_number(text, 1, shape.radius);
  case cellHeight:
    return read_number(text, 1, shape.height);
  default:
    return read_colour(text, shape.colour);
  }
}
