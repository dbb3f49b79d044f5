// The CAD view: draws a document's model and lets the mouse turn, move and zoom it.
#pragma once

#include "apps/SampleCad/scCamera.h"
#include "apps/SampleCad/scCanvas.h"
#include "apps/SampleCad/scModel.h"
#include "apps/SampleCad/scWindow.h"

#include <functional>
#include <vector>

enum scMouseMode { mouseRotate, mousePan, mouseZoom, mouseSelect };
enum scBackground { backgroundDark, backgroundSlate, backgroundPaper };

// What a view shows besides the model.
struct scViewSettings {
  bool grid = true;
  bool axes = true;
  scBackground background = backgroundDark;
  scMouseMode mouse = mouseRotate;
};

class scView : public scWindow {
public:
  explicit scView(const scModel& model) : m_model(model) {}

  // Creates the window inside its document.
  bool create_in(HWND document);

  const scCamera& camera() const { return m_camera; }
  void set_camera(const scCamera& camera);
  const scViewSettings& settings() const { return m_settings; }
  void set_settings(const scViewSettings& settings);
  const std::vector<int>& selection() const { return m_selection; }
  void select(std::vector<int> ids);
  // Moves the camera so that the whole model is seen, keeping its direction.
  void fit();
  // Called after every change of the selection.
  void set_selection_listener(std::function<void()> listener) { m_selection_listener = std::move(listener); }
  void redraw() { InvalidateRect(handle(), nullptr, FALSE); }

protected:
  LRESULT on_message(UINT message, WPARAM wparam, LPARAM lparam) override;

private:
  enum class Drag { none, rotate, pan, zoom, frame };

  void on_button_down(Drag drag, POINT at);
  void on_button_up(bool is_left, POINT at);
  void on_mouse_move(POINT at);
  void on_double_click(POINT at);
  void on_wheel(int delta);
  LRESULT on_view_position(WPARAM wparam) const;
  void on_context_menu(LPARAM lparam);
  void end_drag();

  // Shape under a point, 0 when there is none.
  int shape_at(POINT at) const;
  void select_framed();
  bool selected(int id) const;

  void paint();
  void draw_background();
  void draw_floor();
  void draw_model();
  void draw_shape(const scShape& shape);
  void draw_axes();
  void draw_texts();
  void draw_line(const scPoint3& a, const scPoint3& b, COLORREF colour, double opacity);

  const scModel& m_model;
  scCamera m_camera;
  scViewSettings m_settings;
  std::vector<int> m_selection;  // ids of shapes
  std::function<void()> m_selection_listener;
  scCanvas m_canvas;
  Drag m_drag = Drag::none;
  POINT m_drag_start = {};
  POINT m_drag_last = {};
  bool m_drag_moved = false;
};
