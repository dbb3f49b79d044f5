// A document; see the header.
#include "apps/SampleCad/scDocument.h"

#include "apps/SampleCad/samplecad.dev/resource.h"
#include "apps/SampleCad/scFrame.h"
#include "apps/SampleCad/scReadyFile.h"

#include <algorithm>

namespace {

constexpr char document_class[] = "SampleCadDocument";
// The Turn commands are drags of this many pixels.
constexpr double turn_step = 37.5;  // pixels of a drag: 15 degrees

// What stands in the title: no folders.
CString base_name(const CString& path) {
  const int slash = std::max(path.ReverseFind('\\'), path.ReverseFind('/'));
  return path.Mid(slash + 1);
}

}  // namespace

scDocument::scDocument(scFrame& frame, int number) : m_frame(frame), m_number(number), m_view(m_model) {
  m_place.Format("document:%d", number);
  m_model.set_listener([this] { on_model_changed(); });
  m_view.set_selection_listener([this] { m_frame.on_selection_changed(this); });
}

bool scDocument::create_in(HWND mdi_client) {
  register_class(document_class, 0, nullptr);
  const RECT room = client_rect(mdi_client);
  // The first fills the room, each new one stands a little lower and further right.
  const int shift = (m_number - 1) % 6 * 26;
  const int percent = m_number == 1 ? 100 : 80;
  const RECT at = place(shift, shift, std::max<int>(room.right * percent / 100, 300),
                        std::max<int>(room.bottom * percent / 100, 240));
  if (!create(document_class, "", WS_CHILD | WS_VISIBLE | WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
              WS_EX_MDICHILD, at, mdi_client, 0))
    return false;
  name_place(handle(), m_place);
  update_title();
  return m_view.create_in(handle());
}

LRESULT scDocument::default_message(UINT message, WPARAM wparam, LPARAM lparam) {
  return DefMDIChildProcA(handle(), message, wparam, lparam);
}

LRESULT scDocument::on_message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
  case WM_SIZE:
    if (m_view.handle())
      MoveWindow(m_view.handle(), 0, 0, LOWORD(lparam), HIWORD(lparam), TRUE);
    break;  // the MDI client wants to know of it too
  case WM_SETFOCUS:
    if (m_view.handle())
      SetFocus(m_view.handle());
    return 0;
  case WM_MDIACTIVATE:  // sent to the one that goes and to the one that comes
    m_frame.on_document_activated(reinterpret_cast<HWND>(lparam) == handle() ? this : nullptr);
    return 0;
  case WM_ERASEBKGND:
    return TRUE;  // the view covers everything
  default:
    break;
  }
  return default_message(message, wparam, lparam);
}

void scDocument::on_gone() {
  m_frame.on_document_closed(this);
  delete this;
}

// A file that cannot be read leaves path, title and model as they were.
bool scDocument::load(const char* path) {
  if (!m_model.load(path))
    return false;
  m_path = path;
  update_title();
  m_view.fit();
  return true;
}

bool scDocument::save(const char* path) {
  if (!m_model.save(path))
    return false;
  m_path = path;
  update_title();
  return true;
}

CString scDocument::title() const {
  CString title;
  title.Format("Model %d", m_number);
  return m_path.IsEmpty() ? title : base_name(m_path);
}

void scDocument::update_title() {
  SetWindowTextA(handle(), title());
  m_frame.on_model_changed(this);
}

void scDocument::on_model_changed() {
  // What was deleted is no longer selected.
  std::vector<int> ids = m_view.selection();
  ids.erase(std::remove_if(ids.begin(), ids.end(), [this](int id) { return !m_model.find(id); }), ids.end());
  if (m_view.handle())
    m_view.select(ids);
  m_frame.on_model_changed(this);
}

void scDocument::add_shape(scShapeKind kind) {
  constexpr COLORREF colours[] = {RGB(150, 205, 255), RGB(255, 205, 110), RGB(150, 235, 160),
                                  RGB(255, 150, 110)};
  // Names and places follow from the number of objects: the same commands give the same model.
  const size_t count = m_model.shapes().size();
  scShape shape;
  shape.kind = kind;
  shape.name.Format("%s %d", shape_kind_name(kind), static_cast<int>(count) + 1);
  // Along a row, so that shapes do not hide each other.
  shape.at.x = static_cast<int>(count % 7) * 50 - 150;
  shape.at.y = static_cast<int>(count / 7 % 5) * 50 - 100;
  shape.colour = colours[count % 4];
  m_view.select({m_model.add(shape)});
}

void scDocument::select_all() {
  std::vector<int> ids;
  for (const scShape& shape : m_model.shapes())
    ids.push_back(shape.id);
  m_view.select(ids);
}

// ---- commands -----------------------------------------------------------------------------------

// Each part looks at the commands of one menu and says whether it knew this one.
bool scDocument::on_command(int id) {
  if (on_view_command(id) || on_edit_command(id) || on_insert_command(id))
    return true;
  if (id == IDM_FILE_CLOSE) {
    SendMessageA(handle(), WM_CLOSE, 0, 0);
    return true;
  }
  return false;
}

bool scDocument::on_view_command(int id) {
  scCamera camera = m_view.camera();
  scViewSettings settings = m_view.settings();
  // clang-format off
  switch (id) {
  case IDM_VIEW_GRID:        settings.grid = !settings.grid; break;
  case IDM_VIEW_AXES:        settings.axes = !settings.axes; break;
  case IDM_VIEW_DARK:        settings.background = backgroundDark; break;
  case IDM_VIEW_SLATE:       settings.background = backgroundSlate; break;
  case IDM_VIEW_PAPER:       settings.background = backgroundPaper; break;
  case IDM_MOUSE_ROTATE:     settings.mouse = mouseRotate; break;
  case IDM_MOUSE_PAN:        settings.mouse = mousePan; break;
  case IDM_MOUSE_ZOOM:       settings.mouse = mouseZoom; break;
  case IDM_MOUSE_SELECT:     settings.mouse = mouseSelect; break;
  case IDM_VIEW_PERSPECTIVE: camera.perspective = true; break;
  case IDM_VIEW_PARALLEL:    camera.perspective = false; break;
  case IDM_VIEW_FRONT:       camera.look(0, 0); break;
  case IDM_VIEW_RIGHT:       camera.look(90, 0); break;
  case IDM_VIEW_TOP:         camera.look(0, 90); break;
  case IDM_VIEW_ORIENTATION:  // the button itself, not its menu
  case IDM_VIEW_ISOMETRIC:   camera.look(-45, 35.3); break;
  case IDM_VIEW_ZOOM_IN:     camera.zoom(0.8); break;
  case IDM_VIEW_ZOOM_OUT:    camera.zoom(1.25); break;
  case IDM_VIEW_TURN_LEFT:   camera.turn(turn_step, 0); break;
  case IDM_VIEW_TURN_RIGHT:  camera.turn(-turn_step, 0); break;
  case IDM_VIEW_TURN_UP:     camera.turn(0, turn_step); break;
  case IDM_VIEW_TURN_DOWN:   camera.turn(0, -turn_step); break;
  case IDM_VIEW_ZOOM_FIT:    m_view.fit(); return true;
  default:                   return false;
  }
  // clang-format on
  m_view.set_settings(settings);
  m_view.set_camera(camera);
  return true;
}

bool scDocument::on_edit_command(int id) {
  switch (id) {
  case IDM_EDIT_UNDO:
    m_model.undo();
    return true;
  case IDM_EDIT_REDO:
    m_model.redo();
    return true;
  case IDM_EDIT_DELETE:
    m_model.remove(m_view.selection());
    return true;
  case IDM_EDIT_SELECT_ALL:
    select_all();
    return true;
  case IDM_EDIT_SELECT_NONE:
    m_view.select({});
    return true;
  default:
    return false;
  }
}

bool scDocument::on_insert_command(int id) {
  // The commands stand in the order of the kinds.
  if (id >= IDM_DRAW_BOX && id <= IDM_DRAW_GEAR) {
    add_shape(static_cast<scShapeKind>(id - IDM_DRAW_BOX));
    return true;
  }
  switch (id) {
  case IDM_INSERT_GEARBOX:
    m_model.insert(gearbox_shapes());
    return true;
  case IDM_INSERT_FLANGE:
    m_model.insert(flange_shapes());
    return true;
  case IDM_INSERT_BOLTS_4:
  case IDM_INSERT_BOLTS_6:
  case IDM_INSERT_BOLTS_8:
    m_model.insert(bolt_circle_shapes(4 + 2 * (id - IDM_INSERT_BOLTS_4)));
    return true;
  default:
    return false;
  }
}

bool scDocument::command_state(int id, scCommandState& state) const {
  const scViewSettings& settings = m_view.settings();
  // Each answers true: the command is one of documents.
  const auto radio = [&state](bool on) {
    state.radio = true;
    state.checked = on;
    return true;
  };
  const auto check = [&state](bool on) {
    state.checked = on;
    return true;
  };
  const auto enable = [&state](bool on) {
    state.enabled = on;
    return true;
  };
  // clang-format off
  switch (id) {
  case IDM_VIEW_GRID:        return check(settings.grid);
  case IDM_VIEW_AXES:        return check(settings.axes);
  case IDM_VIEW_DARK:        return radio(settings.background == backgroundDark);
  case IDM_VIEW_SLATE:       return radio(settings.background == backgroundSlate);
  case IDM_VIEW_PAPER:       return radio(settings.background == backgroundPaper);
  case IDM_VIEW_PERSPECTIVE: return radio(m_view.camera().perspective);
  case IDM_VIEW_PARALLEL:    return radio(!m_view.camera().perspective);
  case IDM_MOUSE_ROTATE:     return radio(settings.mouse == mouseRotate);
  case IDM_MOUSE_PAN:        return radio(settings.mouse == mousePan);
  case IDM_MOUSE_ZOOM:       return radio(settings.mouse == mouseZoom);
  case IDM_MOUSE_SELECT:     return radio(settings.mouse == mouseSelect);
  case IDM_EDIT_UNDO:        return enable(m_model.can_undo());
  case IDM_EDIT_REDO:        return enable(m_model.can_redo());
  case IDM_EDIT_DELETE:      return enable(!m_view.selection().empty());
  default:                   return false;
  }
  // clang-format on
}
