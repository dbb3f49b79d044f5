// The shapes that a model is made of, as lines.
#pragma once

#include "apps/SampleCad/scCamera.h"
#include "framework/CString.h"

#include <windows.h>

#include <vector>

enum scShapeKind { shapeBox, shapeCylinder, shapeCone, shapeSphere, shapeTorus, shapeGear, shape_kinds };

// "Box", "Cylinder", ...
const char* shape_kind_name(int kind);

// The longest name of an object or a group, in characters: more than anybody needs, and more than a grid's or
// a recorder's buffer of 260 holds.
constexpr int max_shape_name = 400;

// One object of a model.
struct scShape {
  int id = 0;  // unique in its document, from 1
  scShapeKind kind = shapeBox;
  CString name;
  CString group;            // of the tree; empty: directly below the model
  scPoint3 at = {0, 0, 0};  // centre of the base, millimetres
  double radius = 20;       // half the width of a box
  double height = 20;
  COLORREF colour = RGB(120, 200, 255);
  bool visible = true;
  bool checked = false;
  bool starred = false;
};

struct scSegment {
  scPoint3 a, b;
};

std::vector<scSegment> shape_segments(const scShape& shape);
