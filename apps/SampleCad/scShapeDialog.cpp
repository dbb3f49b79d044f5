// The shape dialog, modal: adds a shape to the active document.
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "apps/SampleCad/scDialog.h"
#include "apps/SampleCad/scDialogs.h"
#include "apps/SampleCad/scFrame.h"

#include <windows.h>
#include <commctrl.h>

#include <algorithm>

namespace {

constexpr int max_size = 500;  // millimetres

class ShapeDialog : public scDialog {
public:
  ShapeDialog() : scDialog(IDD_SHAPE, "dialog:shape") {}

protected:
  void on_init() override {
    for (int kind = 0; kind < shape_kinds; ++kind)
      send(IDC_SHAPE_KIND, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(shape_kind_name(kind)));
    for (const int spin : {IDC_RADIUS_SPIN, IDC_HEIGHT_SPIN})
      send(spin, UDM_SETRANGE32, 1, max_size);
    // Longer texts would not fit into a line of the model file.
    for (const int edit : {IDC_SHAPE_NAME, IDC_RADIUS, IDC_HEIGHT})
      send(edit, EM_SETLIMITTEXT, 255);
    set_defaults();
  }

  bool on_command(int id, int /*code*/, HWND /*control*/) override {
    if (id == IDC_SHAPE_DEFAULTS)
      set_defaults();
    else if (id == IDOK)
      add_shape();
    return id == IDC_SHAPE_DEFAULTS;
  }

private:
  // Filled by the program, not by the user: a recorder leaves it out.
  void set_defaults() {
    set_text(IDC_SHAPE_NAME, "New shape");
    send(IDC_SHAPE_KIND, CB_SETCURSEL, shapeCylinder);
    send(IDC_RADIUS_SPIN, UDM_SETPOS32, 0, 25);
    send(IDC_HEIGHT_SPIN, UDM_SETPOS32, 0, 60);
    CheckRadioButton(handle(), IDC_COLOR_RED, IDC_COLOR_BLUE, IDC_COLOR_GREEN);
    set_check(IDC_SHAPE_VISIBLE, true);
  }

  // What is no number in the range becomes its nearest end.
  int number(int id) const {
    return std::clamp(static_cast<int>(GetDlgItemInt(handle(), id, nullptr, FALSE)), 1, max_size);
  }

  void add_shape() {
    scDocument* document = main_frame().active_document();
    if (!document)
      return;
    scShape shape;
    shape.name = text(IDC_SHAPE_NAME);
    const LRESULT kind = send(IDC_SHAPE_KIND, CB_GETCURSEL);
    shape.kind = static_cast<scShapeKind>(std::clamp<LRESULT>(kind, 0, shape_kinds - 1));
    shape.radius = number(IDC_RADIUS);
    shape.height = number(IDC_HEIGHT);
    shape.colour = checked(IDC_COLOR_RED)    ? RGB(255, 120, 110)
                   : checked(IDC_COLOR_BLUE) ? RGB(130, 170, 255)
                                             : RGB(150, 235, 160);
    shape.visible = checked(IDC_SHAPE_VISIBLE);
    // Selected, so that one sees which one it is.
    document->view().select({document->model().add(shape)});
  }
};

}  // namespace

void show_shape_dialog() { ShapeDialog().run(main_frame().handle()); }
