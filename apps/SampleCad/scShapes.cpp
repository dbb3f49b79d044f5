// The shapes as lines; see the header.
#include "apps/SampleCad/scShapes.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double pi = 3.14159265358979323846;

// A closed line around the shape's axis: radius and height above the base for each of its corners.
using Ring = std::vector<scPoint3>;

Ring circle(const scShape& shape, double radius, double z, int corners = 32) {
  Ring ring;
  for (int i = 0; i < corners; ++i) {
    const double angle = 2 * pi * i / corners;
    ring.push_back(
        {shape.at.x + radius * std::cos(angle), shape.at.y + radius * std::sin(angle), shape.at.z + z});
  }
  return ring;
}

// A little shorter than wide, as plates are.
Ring rectangle(const scShape& shape, double z) {
  const double r = shape.radius;
  const double x = shape.at.x;
  const double y = shape.at.y;
  return {{x - r, y - r * 0.7, shape.at.z + z},
          {x + r, y - r * 0.7, shape.at.z + z},
          {x + r, y + r * 0.7, shape.at.z + z},
          {x - r, y + r * 0.7, shape.at.z + z}};
}

void add_ring(std::vector<scSegment>& out, const Ring& ring) {
  for (size_t i = 0; i < ring.size(); ++i)
    out.push_back({ring[i], ring[(i + 1) % ring.size()]});
}

// Lines between two rings of equal size, at every step-th corner.
void join(std::vector<scSegment>& out, const Ring& a, const Ring& b, size_t step) {
  for (size_t i = 0; i < a.size(); i += step)
    out.push_back({a[i], b[i]});
}

void add_prism(std::vector<scSegment>& out, const Ring& base, const Ring& top, size_t step) {
  add_ring(out, base);
  add_ring(out, top);
  join(out, base, top, step);
}

// Standing on the ground: the south pole is the base.
void add_sphere(std::vector<scSegment>& out, const scShape& shape) {
  constexpr int parallels = 8;
  Ring last = circle(shape, 0, 0);
  for (int i = 1; i <= parallels; ++i) {
    const double angle = pi * i / parallels;
    const Ring ring = circle(shape, shape.radius * std::sin(angle), shape.radius * (1 - std::cos(angle)));
    if (i < parallels)
      add_ring(out, ring);
    join(out, last, ring, 4);
    last = ring;
  }
}

void add_torus(std::vector<scSegment>& out, const scShape& shape) {
  constexpr int tubes = 10;  // rings around the tube
  const double tube = std::min(shape.height, shape.radius) / 2;
  std::vector<Ring> rings;
  for (int i = 0; i < tubes; ++i) {
    const double angle = 2 * pi * i / tubes;
    rings.push_back(
        circle(shape, shape.radius - tube + tube * std::cos(angle), tube + tube * std::sin(angle)));
  }
  for (int i = 0; i < tubes; ++i)
    add_prism(out, rings[i], rings[(i + 1) % tubes], 2);
}

// A spur gear: four corners per tooth, with a bore.
Ring gear_outline(const scShape& shape, double z) {
  // The same pitch for every wheel, so that two of them would mesh.
  const int teeth = std::clamp(static_cast<int>(shape.radius / 3.2), 8, 40);
  const double root = shape.radius * 0.86;
  Ring ring;
  for (int i = 0; i < teeth * 4; ++i) {
    // Flanks lean: root, root, tip, tip at uneven angles.
    constexpr double steps[] = {0.0, 0.36, 0.52, 0.84};
    const int tooth = i / 4;
    const double angle = 2 * pi * (tooth + steps[i % 4]) / teeth;
    const double radius = i % 4 < 2 ? root : shape.radius;
    ring.push_back(
        {shape.at.x + radius * std::cos(angle), shape.at.y + radius * std::sin(angle), shape.at.z + z});
  }
  return ring;
}

void add_gear(std::vector<scSegment>& out, const scShape& shape) {
  add_prism(out, gear_outline(shape, 0), gear_outline(shape, shape.height), 1);
  add_prism(out, circle(shape, shape.radius * 0.3, 0), circle(shape, shape.radius * 0.3, shape.height), 8);
  add_ring(out, circle(shape, shape.radius * 0.7, shape.height));
}

}  // namespace

const char* shape_kind_name(int kind) {
  constexpr const char* names[] = {"Box", "Cylinder", "Cone", "Sphere", "Torus", "Gear"};
  static_assert(sizeof(names) / sizeof(names[0]) == shape_kinds, "one name per kind");
  return kind >= 0 && kind < shape_kinds ? names[kind] : "";
}

std::vector<scSegment> shape_segments(const scShape& shape) {
  std::vector<scSegment> out;
  switch (shape.kind) {
  case shapeBox:
    add_prism(out, rectangle(shape, 0), rectangle(shape, shape.height), 1);
    break;
  case shapeCylinder:
    add_prism(out, circle(shape, shape.radius, 0), circle(shape, shape.radius, shape.height), 4);
    break;
  case shapeCone:
    // Not quite to a point: the lines would all meet in one pixel.
    add_prism(out, circle(shape, shape.radius, 0), circle(shape, shape.radius * 0.05, shape.height), 4);
    break;
  case shapeSphere:
    add_sphere(out, shape);
    break;
  case shapeTorus:
    add_torus(out, shape);
    break;
  case shapeGear:
  case shape_kinds:  // the count is no kind; read_shape lets none in
    add_gear(out, shape);
    break;
  }
  return out;
}
