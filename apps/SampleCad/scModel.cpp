// The objects of one document; see the header.
#include "apps/SampleCad/scModel.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr char file_mark[] = "SampleCad model 1";
constexpr size_t max_undo = 100;

// Light colours: the usual background is dark. On paper the view halves them.
constexpr COLORREF steel = RGB(150, 205, 255);
constexpr COLORREF brass = RGB(255, 205, 110);
constexpr COLORREF copper = RGB(255, 150, 110);
constexpr COLORREF green = RGB(150, 235, 160);

// A shape for the ready-made assemblies; they fill in nothing else.
scShape made(scShapeKind kind, const char* name, const char* group, scPoint3 at, double radius, double height,
             COLORREF colour) {
  scShape shape;
  shape.kind = kind;
  shape.name = name;
  shape.group = group;
  shape.at = at;
  shape.radius = radius;
  shape.height = height;
  shape.colour = colour;
  return shape;
}

// One object per line, fields split by tabs; names hold no tabs.
bool read_shape(const char* line, scShape& shape) {
  char name[max_shape_name + 1] = "";
  char group[max_shape_name + 1] = "";
  static_assert(max_shape_name == 400, "the width in the format");
  int kind = 0;
  unsigned colour = 0;
  int visible = 0;
  int checked = 0;
  int starred = 0;
  if (std::sscanf(line, "%d\t%lf\t%lf\t%lf\t%lf\t%lf\t%x\t%d\t%d\t%d\t%400[^\t\r\n]\t%400[^\t\r\n]", &kind,
                  &shape.at.x, &shape.at.y, &shape.at.z, &shape.radius, &shape.height, &colour, &visible,
                  &checked, &starred, name, group) < 11 ||
      kind < 0 || kind >= shape_kinds)
    return false;
  shape.kind = static_cast<scShapeKind>(kind);
  shape.colour = colour;
  shape.visible = visible != 0;
  shape.checked = checked != 0;
  shape.starred = starred != 0;
  shape.name = name;
  shape.group = group;
  return true;
}

}  // namespace

const scShape* scModel::find(int id) const {
  for (const scShape& shape : m_shapes)
    if (shape.id == id)
      return &shape;
  return nullptr;
}

// Whole copies: a model has some dozens of objects, and nothing can be forgotten this way.
void scModel::keep_for_undo() {
  m_undo.push_back(m_shapes);
  if (m_undo.size() > max_undo)
    m_undo.erase(m_undo.begin());
  m_redo.clear();  // a new change ends what was undone before
}

// Last, so that the listener finds the model as it is now.
void scModel::tell() {
  m_modified = true;
  if (m_listener)
    m_listener();
}

int scModel::add(scShape shape) {
  insert({std::move(shape)});
  return m_shapes.back().id;
}

void scModel::insert(const std::vector<scShape>& shapes) {
  keep_for_undo();
  for (scShape shape : shapes) {
    shape.id = m_next_id++;  // never given twice, so that undo brings objects back under their own ids
    m_shapes.push_back(shape);
  }
  tell();
}

void scModel::change(const scShape& shape) {
  for (scShape& old : m_shapes)
    if (old.id == shape.id) {
      keep_for_undo();
      old = shape;
      tell();
      return;
    }
}

void scModel::remove(const std::vector<int>& ids) {
  const auto is_removed = [&ids](const scShape& shape) {
    return std::find(ids.begin(), ids.end(), shape.id) != ids.end();
  };
  // Nothing to remove is no step of undo.
  if (std::none_of(m_shapes.begin(), m_shapes.end(), is_removed))
    return;
  keep_for_undo();
  m_shapes.erase(std::remove_if(m_shapes.begin(), m_shapes.end(), is_removed), m_shapes.end());
  tell();
}

void scModel::undo() {
  if (m_undo.empty())
    return;
  m_redo.push_back(std::move(m_shapes));
  m_shapes = std::move(m_undo.back());
  m_undo.pop_back();
  tell();
}

void scModel::redo() {
  if (m_redo.empty())
    return;
  m_undo.push_back(std::move(m_shapes));
  m_shapes = std::move(m_redo.back());
  m_redo.pop_back();
  tell();
}

bool scModel::load(const char* path) {
  FILE* file = std::fopen(path, "rb");
  if (!file)
    return false;
  char line[1024];
  // Read into a list of its own: a file that breaks off in the middle leaves the model alone.
  bool good = std::fgets(line, sizeof(line), file) && !std::strncmp(line, file_mark, sizeof(file_mark) - 1);
  std::vector<scShape> shapes;
  while (good && std::fgets(line, sizeof(line), file)) {
    scShape shape;
    good = read_shape(line, shape);
    shapes.push_back(shape);
  }
  std::fclose(file);
  if (!good)
    return false;
  m_shapes.clear();
  insert(shapes);
  m_undo.clear();  // a freshly opened model has no past
  m_modified = false;
  return true;
}

bool scModel::save(const char* path) {
  FILE* file = std::fopen(path, "wb");
  if (!file)
    return false;
  std::fprintf(file, "%s\r\n", file_mark);
  for (const scShape& shape : m_shapes)
    std::fprintf(file, "%d\t%.3f\t%.3f\t%.3f\t%.3f\t%.3f\t%06lx\t%d\t%d\t%d\t%s\t%s\r\n", shape.kind,
                 shape.at.x, shape.at.y, shape.at.z, shape.radius, shape.height, shape.colour, shape.visible,
                 shape.checked, shape.starred, shape.name.GetString(), shape.group.GetString());
  // A full disk shows only here.
  if (std::fclose(file) != 0)
    return false;
  m_modified = false;
  return true;
}

// On the corners of the gearbox's base plate, whole millimetres: the numbers are seen in grids.
std::vector<scShape> bolt_circle_shapes(int bolts) {
  std::vector<scShape> shapes;
  for (int i = 0; i < bolts; ++i) {
    const double angle = 2 * pi * (i + 0.5) / bolts;
    CString name;
    name.Format("Bolt %d", i + 1);
    shapes.push_back(made(shapeCylinder, name, "Bolts",
                          {std::round(95 * std::cos(angle)), std::round(62 * std::sin(angle)), 14}, 6, 10,
                          copper));
  }
  return shapes;
}

std::vector<scShape> gearbox_shapes() {
  std::vector<scShape> shapes = {
      made(shapeBox, "Base plate", "Housing", {0, 0, 0}, 120, 14, steel),
      made(shapeCylinder, "Bearing A", "Housing", {-34, 0, 14}, 20, 16, steel),
      made(shapeCylinder, "Bearing B", "Housing", {52, 0, 14}, 15, 16, steel),
      made(shapeCylinder, "Shaft A", "Drive", {-34, 0, 14}, 9, 82, green),
      made(shapeGear, "Wheel 20", "Drive", {-34, 0, 44}, 54, 16, brass),
      made(shapeCylinder, "Shaft B", "Drive", {52, 0, 14}, 8, 66, green),
      made(shapeGear, "Pinion 12", "Drive", {52, 0, 44}, 34, 16, brass),
      made(shapeTorus, "Seal", "Drive", {-34, 0, 84}, 17, 8, copper),
  };
  const std::vector<scShape> bolts = bolt_circle_shapes(4);
  shapes.insert(shapes.end(), bolts.begin(), bolts.end());
  return shapes;
}

std::vector<scShape> flange_shapes() {
  std::vector<scShape> shapes = {
      made(shapeCylinder, "Disc", "Flange", {0, 0, 0}, 110, 14, steel),
      made(shapeCone, "Neck", "Flange", {0, 0, 14}, 70, 50, steel),
      made(shapeCylinder, "Pipe", "Flange", {0, 0, 14}, 34, 90, green),
      made(shapeTorus, "Ring", "Flange", {0, 0, 100}, 38, 10, copper),
  };
  const std::vector<scShape> bolts = bolt_circle_shapes(8);
  shapes.insert(shapes.end(), bolts.begin(), bolts.end());
  return shapes;
}
