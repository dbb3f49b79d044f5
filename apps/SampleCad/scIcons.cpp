// The pictures of commands; see the header.
#include "apps/SampleCad/scIcons.h"

#include "apps/SampleCad/scCanvas.h"

#include <cmath>
#include <initializer_list>

namespace {

constexpr double pi = 3.14159265358979323846;
// Few colours: dark lines, one warm accent for what a command does; red, green and blue for the axes.
constexpr COLORREF ink = RGB(52, 74, 104);
constexpr COLORREF accent = RGB(215, 120, 20);
constexpr COLORREF green = RGB(60, 140, 70);
constexpr COLORREF red = RGB(200, 60, 50);
constexpr COLORREF faint = RGB(205, 212, 222);
constexpr COLORREF blue = RGB(50, 100, 200);

// Draws in a square of 20 by 20 units, one unit a pixel.
class Pen {
public:
  explicit Pen(scCanvas& canvas) : m_canvas(canvas) {}

  void colour(COLORREF value) { m_colour = value; }
  void line(double x0, double y0, double x1, double y1) {
    // Twice, half a pixel apart: a single smooth line is too faint at this size.
    m_canvas.line(x0, y0, x1, y1, m_colour, 0.8);
    m_canvas.line(x0 + 0.5, y0 + 0.4, x1 + 0.5, y1 + 0.4, m_colour, 0.8);
  }
  void lines(std::initializer_list<POINT> points, bool closed) {
    const POINT* last = points.begin();
    for (const POINT* p = last + 1; p != points.end(); last = p++)
      line(last->x, last->y, p->x, p->y);
    if (closed)
      line(last->x, last->y, points.begin()->x, points.begin()->y);
  }
  // Degrees, clockwise from the right.
  void arc(double x, double y, double rx, double ry, double from = 0, double to = 360) {
    constexpr int steps = 24;
    for (int i = 0; i < steps; ++i) {
      const double a = (from + (to - from) * i / steps) * pi / 180;
      const double b = (from + (to - from) * (i + 1) / steps) * pi / 180;
      line(x + rx * std::cos(a), y + ry * std::sin(a), x + rx * std::cos(b), y + ry * std::sin(b));
    }
  }

private:
  scCanvas& m_canvas;
  COLORREF m_colour = ink;
};

// An isometric cube; one face is drawn bold to tell a direction of view.
void draw_cube(Pen& pen, int bold_face) {
  pen.lines({{10, 2}, {17, 6}, {10, 10}, {3, 6}}, true);
  pen.lines({{3, 6}, {3, 14}, {10, 18}, {17, 14}, {17, 6}}, false);
  pen.line(10, 10, 10, 18);
  pen.colour(accent);
  if (bold_face == iconFront)
    pen.lines({{3, 6}, {10, 10}, {10, 18}, {3, 14}}, true);
  else if (bold_face == iconRight)
    pen.lines({{10, 10}, {17, 6}, {17, 14}, {10, 18}}, true);
  else if (bold_face == iconTop)
    pen.lines({{10, 2}, {17, 6}, {10, 10}, {3, 6}}, true);
}

void draw_arrow_cross(Pen& pen) {
  pen.line(10, 2, 10, 18);
  pen.line(2, 10, 18, 10);
  pen.lines({{7, 5}, {10, 2}, {13, 5}}, false);
  pen.lines({{7, 15}, {10, 18}, {13, 15}}, false);
  pen.lines({{5, 7}, {2, 10}, {5, 13}}, false);
  pen.lines({{15, 7}, {18, 10}, {15, 13}}, false);
}

void draw_gear(Pen& pen) {
  for (int i = 0; i < 8; ++i) {
    const double a = i * pi / 4;
    pen.line(10 + 5.5 * std::cos(a), 10 + 5.5 * std::sin(a), 10 + 8 * std::cos(a), 10 + 8 * std::sin(a));
  }
  pen.arc(10, 10, 5.5, 5.5);
  pen.colour(accent);
  pen.arc(10, 10, 2, 2);
}

// Ten corners, alternately near and far, from the top clockwise.
void draw_star(Pen& pen) {
  double last_x = 10;
  double last_y = 2;
  for (int i = 1; i <= 10; ++i) {
    const double radius = i % 2 ? 3.4 : 8;
    const double angle = i * pi / 5;
    const double x = 10 + radius * std::sin(angle);
    const double y = 10 - radius * std::cos(angle);
    pen.line(last_x, last_y, x, y);
    last_x = x;
    last_y = y;
  }
}

// Paper, folder, disk, and the two bent arrows.
void draw_file_icon(Pen& pen, int icon) {
  switch (icon) {
  case iconNew:
    pen.lines({{4, 2}, {12, 2}, {16, 6}, {16, 18}, {4, 18}}, true);
    pen.lines({{12, 2}, {12, 6}, {16, 6}}, false);
    break;
  case iconOpen:
    pen.lines({{2, 16}, {2, 4}, {8, 4}, {10, 6}, {16, 6}, {16, 9}}, false);
    pen.colour(accent);
    pen.lines({{2, 16}, {6, 9}, {19, 9}, {15, 16}}, true);
    break;
  case iconSave:
    pen.lines({{3, 3}, {15, 3}, {17, 5}, {17, 17}, {3, 17}}, true);
    pen.lines({{6, 3}, {6, 8}, {13, 8}, {13, 3}}, false);
    pen.colour(blue);
    pen.lines({{6, 17}, {6, 12}, {14, 12}, {14, 17}}, false);
    break;
  case iconUndo:
    pen.colour(blue);
    pen.arc(10, 11, 6, 6, 190, 400);
    pen.lines({{2, 5}, {4, 10}, {9, 8}}, false);
    break;
  default:
    pen.colour(blue);
    pen.arc(10, 11, 6, 6, 140, 350);
    pen.lines({{18, 5}, {16, 10}, {11, 8}}, false);
    break;
  }
}

// What the mouse does, and what is seen besides the model.
void draw_view_icon(Pen& pen, int icon) {
  switch (icon) {
  case iconGrid:
    for (const int at : {3, 8, 12, 17}) {
      pen.line(at, 3, at, 17);
      pen.line(3, at, 17, at);
    }
    break;
  case iconAxes:
    pen.colour(blue);
    pen.line(8, 12, 8, 2);
    pen.colour(red);
    pen.line(8, 12, 18, 15);
    pen.colour(green);
    pen.line(8, 12, 2, 17);
    break;
  case iconRotate:
    pen.arc(10, 10, 7, 7, -60, 220);
    pen.colour(accent);
    pen.lines({{9, 1}, {14, 4}, {10, 8}}, false);
    break;
  case iconPan:
    draw_arrow_cross(pen);
    break;
  case iconZoom:
    pen.arc(8, 8, 5.5, 5.5);
    pen.colour(accent);
    pen.line(12, 12, 18, 18);
    pen.line(13, 12, 18, 17);
    break;
  case iconSelect:
    pen.lines({{5, 2}, {5, 15}, {8, 12}, {11, 18}, {13, 17}, {10, 11}, {14, 11}}, true);
    break;
  case iconFit:
    pen.lines({{2, 6}, {2, 2}, {6, 2}}, false);
    pen.lines({{14, 2}, {18, 2}, {18, 6}}, false);
    pen.lines({{18, 14}, {18, 18}, {14, 18}}, false);
    pen.lines({{6, 18}, {2, 18}, {2, 14}}, false);
    pen.colour(accent);
    pen.lines({{6, 6}, {14, 6}, {14, 14}, {6, 14}}, true);
    break;
  default:  // an eye
    pen.colour(icon == iconEye ? ink : faint);
    pen.arc(10, 14, 9, 8, 210, 330);
    pen.arc(10, 6, 9, 8, 30, 150);
    if (icon == iconEye)
      pen.arc(10, 10, 2, 2);
    break;
  }
}

// The shapes and, by the bold face of a cube, the directions of view.
void draw_shape_icon(Pen& pen, int icon) {
  switch (icon) {
  case iconCylinder:
    pen.arc(10, 5, 6, 2.5);
    pen.arc(10, 15, 6, 2.5, 0, 180);
    pen.line(4, 5, 4, 15);
    pen.line(16, 5, 16, 15);
    break;
  case iconCone:
    pen.arc(10, 15, 7, 2.5);
    pen.lines({{3, 15}, {10, 2}, {17, 15}}, false);
    break;
  case iconSphere:
    pen.arc(10, 10, 7.5, 7.5);
    pen.colour(accent);
    pen.arc(10, 10, 7.5, 2.5);
    pen.arc(10, 10, 2.5, 7.5);
    break;
  case iconTorus:
    pen.arc(10, 10, 8, 6);
    pen.arc(10, 9, 3.5, 2);
    break;
  case iconGear:
    draw_gear(pen);
    break;
  default:
    draw_cube(pen, icon);
    break;
  }
}

void draw_icon(Pen& pen, int icon) {
  if (icon <= iconRedo)
    draw_file_icon(pen, icon);
  else if (icon == iconStar || icon == iconStarOff) {
    pen.colour(icon == iconStar ? accent : faint);
    draw_star(pen);
  } else if (icon <= iconSelect || icon == iconFit || icon == iconEye || icon == iconEyeOff)
    draw_view_icon(pen, icon);
  else
    draw_shape_icon(pen, icon);
}

HIMAGELIST make_icons() {
  const HIMAGELIST list = ImageList_Create(icon_size, icon_size, ILC_COLOR32 | ILC_MASK, icon_count, 0);
  // Between the colours of toolbars and of lists: the edges of lines are mixed with it and show on both.
  const COLORREF background = RGB(246, 248, 250);
  for (int icon = 0; icon < icon_count; ++icon) {
    scCanvas canvas;
    canvas.resize(icon_size, icon_size);
    canvas.gradient(background, background);
    Pen pen(canvas);
    draw_icon(pen, icon);
    // The list copies pixels of a bitmap that no device context holds.
    const HDC screen = GetDC(nullptr);
    const HBITMAP copy = CreateCompatibleBitmap(screen, icon_size, icon_size);
    const HDC dc = CreateCompatibleDC(screen);
    const HGDIOBJ old = SelectObject(dc, copy);
    canvas.paint(dc);
    SelectObject(dc, old);
    ImageList_AddMasked(list, copy, background);
    DeleteObject(copy);
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
  }
  return list;
}

}  // namespace

// Deliberate: never destroyed. Windows use it until the very end of the process.
HIMAGELIST command_icons() {
  static const HIMAGELIST list = make_icons();
  return list;
}
