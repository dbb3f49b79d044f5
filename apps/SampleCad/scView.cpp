// The CAD view; see the header.
#include "apps/SampleCad/scView.h"

#include "apps/SampleCad/samplecad.dev/resource.h"

#include <windows.h>
#include <windowsx.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr char view_class[] = "SampleCadView";
constexpr double pick_distance = 6;  // pixels from a line
// A press and a release this near each other are a click, not a drag.
constexpr int click_slack = 2;  // pixels

// The view's colours by background; objects bring their own.
struct Colours {
  COLORREF top, bottom, floor, text, selection;
};
constexpr Colours colour_sets[] = {
    {RGB(12, 20, 36), RGB(44, 62, 92), RGB(120, 150, 190), RGB(170, 195, 225), RGB(255, 140, 0)},
    {RGB(58, 70, 84), RGB(128, 142, 156), RGB(190, 202, 214), RGB(235, 240, 245), RGB(255, 160, 20)},
    {RGB(252, 252, 250), RGB(224, 230, 238), RGB(150, 160, 175), RGB(70, 80, 95), RGB(230, 90, 0)},
};

// Asked by whoever wants to know whether a window is a CAD view, and where its camera stands.
UINT view_position_message() {
  static const UINT message = RegisterWindowMessageA("MSG_ZQ_GetViewPosition");
  return message;
}

// Pixels from a point to the nearest point of a line that ends.
double distance_to_line(const scPoint2& a, const scPoint2& b, double x, double y) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double length = dx * dx + dy * dy;
  const double t = length > 0 ? std::clamp(((x - a.x) * dx + (y - a.y) * dy) / length, 0.0, 1.0) : 0;
  return std::hypot(a.x + dx * t - x, a.y + dy * t - y);
}

// On paper, light lines would vanish.
COLORREF darker(COLORREF colour) {
  return RGB(GetRValue(colour) / 2, GetGValue(colour) / 2, GetBValue(colour) / 2);
}

RECT spanned(POINT a, POINT b) {
  return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

}  // namespace

bool scView::create_in(HWND document) {
  register_class(view_class, CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW, nullptr, IDC_CROSS);
  return create(view_class, "", WS_CHILD | WS_VISIBLE, 0, client_rect(document), document, IDC_VIEW);
}

void scView::set_camera(const scCamera& camera) {
  m_camera = camera;
  redraw();
}

void scView::set_settings(const scViewSettings& settings) {
  m_settings = settings;
  redraw();
}

void scView::select(std::vector<int> ids) {
  m_selection = std::move(ids);
  redraw();
  if (m_selection_listener)
    m_selection_listener();
}

bool scView::selected(int id) const {
  return std::find(m_selection.begin(), m_selection.end(), id) != m_selection.end();
}

void scView::fit() {
  // Around the target, not around the model's middle: the camera stays where orbits are expected.
  double radius = 40;
  for (const scShape& shape : m_model.shapes())
    radius = std::max(radius, std::hypot(std::hypot(shape.at.x, shape.at.y) + shape.radius,
                                         shape.at.z + shape.height - scCamera().target.z));
  m_camera.target = scCamera().target;
  m_camera.distance = radius * 3.2;
  redraw();
}

// ---- messages -----------------------------------------------------------------------------------

LRESULT scView::on_message(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == view_position_message())
    return on_view_position(wparam);
  switch (message) {
  case WM_ERASEBKGND:
    return TRUE;  // paint covers every pixel
  case WM_PAINT:
    paint();
    return 0;
  case WM_LBUTTONDOWN: {
    constexpr Drag drags[] = {Drag::rotate, Drag::pan, Drag::zoom, Drag::frame};
    on_button_down(drags[m_settings.mouse], message_point(lparam));
    return 0;
  }
  case WM_MBUTTONDOWN:
    on_button_down(Drag::pan, message_point(lparam));
    return 0;
  case WM_LBUTTONUP:
  case WM_MBUTTONUP:
    on_button_up(message == WM_LBUTTONUP, message_point(lparam));
    return 0;
  case WM_LBUTTONDBLCLK:
    on_double_click(message_point(lparam));
    return 0;
  case WM_MOUSEMOVE:
    on_mouse_move(message_point(lparam));
    return 0;
  case WM_CAPTURECHANGED:
    end_drag();
    return 0;
  case WM_MOUSEWHEEL:
    on_wheel(GET_WHEEL_DELTA_WPARAM(wparam));
    return 0;
  case WM_CONTEXTMENU:
    on_context_menu(lparam);
    return 0;
  default:
    return default_message(message, wparam, lparam);
  }
}

LRESULT scView::on_view_position(WPARAM wparam) const {
  if (wparam == 1)
    return 1;
  // Whoever asked deletes the atom.
  return wparam == 0 ? GlobalAddAtomA(m_camera.to_text()) : 0;
}

void scView::on_button_down(Drag drag, POINT at) {
  SetFocus(handle());  // keys are for the view that was clicked last
  m_drag = drag;
  m_drag_start = m_drag_last = at;
  m_drag_moved = false;
  SetCapture(handle());
}

void scView::on_mouse_move(POINT at) {
  if (m_drag == Drag::none)
    return;
  if (std::abs(at.x - m_drag_start.x) > click_slack || std::abs(at.y - m_drag_start.y) > click_slack)
    m_drag_moved = true;
  const int dx = at.x - m_drag_last.x;
  const int dy = at.y - m_drag_last.y;
  // Until the slack is left behind, the camera stays: a click must not turn the model.
  if (!m_drag_moved || (dx == 0 && dy == 0))
    return;
  m_drag_last = at;
  if (m_drag == Drag::rotate)
    m_camera.turn(dx, dy);
  else if (m_drag == Drag::pan)
    m_camera.pan(dx, dy, client_rect(handle()).bottom);
  else if (m_drag == Drag::zoom)
    m_camera.zoom(std::exp(dy * 0.008));
  redraw();
}

void scView::on_button_up(bool is_left, POINT at) {
  if (m_drag == Drag::frame && m_drag_moved) {
    m_drag_last = at;
    select_framed();
  } else if (is_left && m_drag != Drag::none && !m_drag_moved) {
    const int id = shape_at(at);
    const bool adding = GetKeyState(VK_CONTROL) < 0;
    std::vector<int> ids = adding ? m_selection : std::vector<int>();
    if (id && adding && selected(id))
      ids.erase(std::find(ids.begin(), ids.end(), id));
    else if (id)
      ids.push_back(id);
    select(ids);
  }
  end_drag();
}

void scView::end_drag() {
  if (m_drag == Drag::none)
    return;
  // First, because releasing the capture comes back here.
  m_drag = Drag::none;
  if (GetCapture() == handle())
    ReleaseCapture();
  redraw();
}

// Selects the whole group of the shape under the pointer.
void scView::on_double_click(POINT at) {
  const scShape* hit = m_model.find(shape_at(at));
  if (!hit)
    return;
  std::vector<int> ids;
  for (const scShape& shape : m_model.shapes())
    if (shape.group == hit->group)
      ids.push_back(shape.id);
  select(ids);
}

void scView::on_wheel(int delta) {
  // One notch is a tenth; wheels with finer steps give parts of it.
  m_camera.zoom(std::pow(1.1, -static_cast<double>(delta) / WHEEL_DELTA));
  redraw();
}

void scView::on_context_menu(LPARAM lparam) {
  POINT at = {GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)};
  if (at.x == -1 && at.y == -1) {
    // From the keyboard: the middle of the view.
    const RECT client = client_rect(handle());
    at = {client.right / 2, client.bottom / 2};
    ClientToScreen(handle(), &at);
  }
  const HMENU menu = LoadMenuA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDR_VIEW_CONTEXT_MENU));
  // The frame owns it: its commands and their marks are those of the menu bar.
  TrackPopupMenu(GetSubMenu(menu, 0), TPM_RIGHTBUTTON, at.x, at.y, 0, GetAncestor(handle(), GA_ROOT),
                 nullptr);
  DestroyMenu(menu);
}

// ---- picking ------------------------------------------------------------------------------------

// By the lines that are seen: the inside of a wire-frame is empty.
int scView::shape_at(POINT at) const {
  const RECT client = client_rect(handle());
  double best = pick_distance;
  int found = 0;
  for (const scShape& shape : m_model.shapes()) {
    if (!shape.visible)
      continue;
    for (const scSegment& segment : shape_segments(shape)) {
      scPoint2 a, b;
      if (!m_camera.project(segment.a, segment.b, client.right, client.bottom, a, b))
        continue;
      const double distance = distance_to_line(a, b, at.x, at.y);
      if (distance < best) {
        best = distance;
        found = shape.id;
      }
    }
  }
  return found;
}

// Objects whose middle lies in the frame.
void scView::select_framed() {
  const RECT client = client_rect(handle());
  const RECT frame = spanned(m_drag_start, m_drag_last);
  std::vector<int> ids;
  for (const scShape& shape : m_model.shapes()) {
    scPoint2 at;
    const scPoint3 middle = {shape.at.x, shape.at.y, shape.at.z + shape.height / 2};
    if (shape.visible && m_camera.project(middle, client.right, client.bottom, at) &&
        PtInRect(&frame, {static_cast<LONG>(at.x), static_cast<LONG>(at.y)}))
      ids.push_back(shape.id);
  }
  select(ids);
}

// ---- drawing ------------------------------------------------------------------------------------

void scView::paint() {
  PAINTSTRUCT paint;
  const HDC dc = BeginPaint(handle(), &paint);
  const RECT client = client_rect(handle());
  if (m_canvas.resize(client.right, client.bottom)) {
    draw_background();
    if (m_settings.grid)
      draw_floor();
    draw_model();
    if (m_settings.axes)
      draw_axes();
    draw_texts();
    m_canvas.paint(dc);
  }
  EndPaint(handle(), &paint);
}

void scView::draw_background() {
  const Colours& colours = colour_sets[m_settings.background];
  m_canvas.gradient(colours.top, colours.bottom);
}

void scView::draw_line(const scPoint3& a, const scPoint3& b, COLORREF colour, double opacity) {
  scPoint2 from, to;
  if (m_camera.project(a, b, m_canvas.width(), m_canvas.height(), from, to))
    m_canvas.line(from.x, from.y, to.x, to.y, colour, opacity);
}

void scView::draw_floor() {
  constexpr int half = 200;
  constexpr int step = 20;
  const COLORREF colour = colour_sets[m_settings.background].floor;
  for (int i = -half; i <= half; i += step) {
    // Every fifth line, 100 mm, is stronger.
    const double opacity = i % 100 == 0 ? 0.42 : 0.17;
    const double at = i;
    draw_line({at, -half, 0}, {at, half, 0}, colour, opacity);
    draw_line({-half, at, 0}, {half, at, 0}, colour, opacity);
  }
}

void scView::draw_model() {
  // Selected shapes last: nothing crosses them.
  for (const bool pass : {false, true})
    for (const scShape& shape : m_model.shapes())
      if (shape.visible && selected(shape.id) == pass)
        draw_shape(shape);
}

void scView::draw_shape(const scShape& shape) {
  const bool is_selected = selected(shape.id);
  COLORREF colour = m_settings.background == backgroundPaper ? darker(shape.colour) : shape.colour;
  if (is_selected)
    colour = colour_sets[m_settings.background].selection;
  for (const scSegment& segment : shape_segments(shape)) {
    // What lies behind is fainter: the eye sorts the lines by it.
    const scPoint3 middle = {(segment.a.x + segment.b.x) / 2, (segment.a.y + segment.b.y) / 2,
                             (segment.a.z + segment.b.z) / 2};
    const double behind = (m_camera.depth(middle) - m_camera.distance) / 260;
    const double opacity = std::clamp(0.74 - behind * 0.55, 0.22, 1.0);
    draw_line(segment.a, segment.b, colour, is_selected ? std::min(1.0, opacity + 0.2) : opacity);
  }
}

// The small cross of the three axes, bottom left, turned like the model.
void scView::draw_axes() {
  scCamera turned = m_camera;
  turned.target = {0, 0, 0};
  turned.perspective = false;  // in perspective their lengths would say nothing
  turned.distance = 100;
  const int size = 90;
  struct Axis {
    scPoint3 end;
    COLORREF colour;
    const char* name;
  };
  constexpr Axis axes[] = {{{22, 0, 0}, RGB(255, 100, 90), "x"},
                           {{0, 22, 0}, RGB(110, 220, 110), "y"},
                           {{0, 0, 22}, RGB(110, 160, 255), "z"}};
  const int top = m_canvas.height() - size - 4;
  scPoint2 origin;
  turned.project({0, 0, 0}, size, size, origin);
  for (const Axis& axis : axes) {
    scPoint2 end;
    turned.project(axis.end, size, size, end);
    // Twice, so that the axes are bolder than the model.
    for (const double shift : {0.0, 0.7})
      m_canvas.line(origin.x + 8 + shift, origin.y + top, end.x + 8 + shift, end.y + top, axis.colour, 0.95);
    SetTextColor(m_canvas.dc(), axis.colour);
    SetBkMode(m_canvas.dc(), TRANSPARENT);
    const HGDIOBJ old_font = SelectObject(m_canvas.dc(), ui_font());
    TextOutA(m_canvas.dc(), static_cast<int>(end.x) + 11, static_cast<int>(end.y) + top - 7, axis.name, 1);
    SelectObject(m_canvas.dc(), old_font);
  }
}

void scView::draw_texts() {
  constexpr const char* modes[] = {"rotate", "pan", "zoom", "select"};
  const HDC dc = m_canvas.dc();
  const HGDIOBJ old_font = SelectObject(dc, ui_font());
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, colour_sets[m_settings.background].text);
  CString text;
  text.Format("%s, drag to %s", m_camera.perspective ? "Perspective" : "Parallel", modes[m_settings.mouse]);
  TextOutA(dc, 10, 8, text, text.GetLength());
  text.Format("Objects: %d, selected: %d", static_cast<int>(m_model.shapes().size()),
              static_cast<int>(m_selection.size()));
  TextOutA(dc, 10, 24, text, text.GetLength());
  SelectObject(dc, old_font);
  if (m_drag == Drag::frame && m_drag_moved) {
    const RECT frame = spanned(m_drag_start, m_drag_last);
    DrawFocusRect(dc, &frame);
  }
}
