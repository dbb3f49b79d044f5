// The pane beside the documents; see the header.
#include "apps/SampleCad/scModelPane.h"

#include "apps/SampleCad/common_ids.h"
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "apps/SampleCad/scDocument.h"
#include "apps/SampleCad/scGrid.h"
#include "apps/SampleCad/scIdentity.h"
#include "apps/SampleCad/scShapeCells.h"
#include "host/kvttools.h"

#include <windows.h>
#include <windowsx.h>
#include <commctrl.h>

#include <algorithm>

namespace {

// As high as all properties; the tree takes the rest.
constexpr int title_height = 18;  // pixels
constexpr int grid_height = (shape_cells + 1) * 19 + 8;

}  // namespace

scModelPane::scModelPane() : scDialog(IDD_MODEL_PANE, "pane") {}

bool scModelPane::create_in(HWND frame) {
  scGrid::register_grid();
  if (!open(frame))
    return false;
  // A dialog made from a template has no id; this one is a control of the frame.
  SetWindowLongPtrA(handle(), GWLP_ID, IDC_MODEL_PANE);
  set_window_idd(handle(), IDD_MODEL_PANE);
  return true;
}

void scModelPane::on_init() {
  m_tree.attach(item(IDC_CAD_TREE));
  grid().set_columns({"Property", "Value"}, {84, 100});
  grid().lock_column(1);  // the names of properties
  show_properties();
}

scGrid& scModelPane::grid() const { return scGrid::of(item(IDC_PROPERTY_GRID)); }

void scModelPane::move(const RECT& place) {
  MoveWindow(handle(), place.left, place.top, place.right - place.left, place.bottom - place.top, TRUE);
}

// Titles above the tree and above the grid, both as wide as the pane.
void scModelPane::layout() {
  const RECT client = client_rect(handle());
  const int grid_top = std::max<int>(client.bottom - grid_height, client.bottom / 2);
  MoveWindow(item(IDC_MODEL_TITLE), 6, 3, client.right - 6, title_height - 4, TRUE);
  MoveWindow(item(IDC_CAD_TREE), 0, title_height, client.right, grid_top - 2 * title_height, TRUE);
  MoveWindow(item(IDC_PROPERTY_TITLE), 6, grid_top - title_height + 3, client.right - 6, title_height - 4,
             TRUE);
  MoveWindow(item(IDC_PROPERTY_GRID), 0, grid_top, client.right, client.bottom - grid_top, TRUE);
}

// ---- what is shown ------------------------------------------------------------------------------

void scModelPane::show(scDocument* document) {
  if (!handle())
    return;
  m_document = document;
  m_showing = true;
  if (document)
    m_tree.sync(&document->model(), document->number(), document->title());
  else
    m_tree.sync(nullptr, 0, "");
  m_showing = false;
  show_properties();
}

// The first of the selected ones; null when nothing is selected or it has just been deleted.
const scShape* scModelPane::shown_shape() const {
  if (!m_document || m_document->view().selection().empty())
    return nullptr;
  return m_document->model().find(m_document->view().selection().front());
}

void scModelPane::show_properties() {
  if (!handle())
    return;
  const scShape* shape = shown_shape();
  const int rows = shape ? static_cast<int>(shape_cells) : 0;
  if (grid().rows() != rows)
    grid().set_row_count(rows);
  for (int row = 1; row <= rows; ++row) {
    grid().set_text(row, 1, shape_cell_title(row - 1));
    grid().set_text(row, 2, shape_cell_text(*shape, row - 1));
  }
  set_text(IDC_PROPERTY_TITLE, shape ? "Properties" : "Properties: nothing is selected");
}

// ---- what is told -------------------------------------------------------------------------------

bool scModelPane::on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& /*result*/) {
  if (message == kvtWM_CAD_TREE_CHANGED) {
    take_tree_change(lparam);
    return true;
  }
  switch (message) {
  case WM_SIZE:
    layout();
    return true;
  case grid_cell_changed:
    take_cell(static_cast<int>(reinterpret_cast<const scGridCellChange*>(lparam)->row));
    return true;
  case WM_CONTEXTMENU:
    if (reinterpret_cast<HWND>(wparam) != item(IDC_CAD_TREE))
      return false;
    show_tree_menu(lparam);
    return true;
  default:
    return false;
  }
}

bool scModelPane::on_notify(NMHDR& header, LRESULT& result) {
  if (header.hwndFrom != item(IDC_CAD_TREE) || m_showing || !m_document)
    return false;
  switch (header.code) {
  case TVN_SELCHANGEDA:  // a group selects everything in it
    m_document->view().select(m_tree.selected_shapes());
    return true;
  case TVN_BEGINLABELEDITA:
    // Names of the model and of groups are not edited here.
    result = m_tree.shape_of(reinterpret_cast<const NMTVDISPINFOA&>(header).item.hItem) == 0;
    return true;
  case TVN_ENDLABELEDITA: {
    const TVITEMA& item = reinterpret_cast<const NMTVDISPINFOA&>(header).item;
    result = item.pszText && rename(m_tree.shape_of(item.hItem), item.pszText);
    return true;
  }
  default:
    return false;
  }
}

void scModelPane::take_tree_change(LPARAM lparam) {
  // The tree changes nothing itself: it is told back by the model, as every other window.
  const auto& change = *reinterpret_cast<const kvtCADTreeChange*>(lparam);
  const int id = m_tree.shape_of(static_cast<HTREEITEM>(change.item));
  const scShape* shape = m_document ? m_document->model().find(id) : nullptr;
  if (!shape)
    return;
  scShape changed = *shape;
  scCadTree::apply(changed, change.change, change.value);
  m_document->model().change(changed);
}

bool scModelPane::rename(int id, const char* name) {
  const scShape* shape = m_document->model().find(id);
  if (!shape)
    return false;
  scShape changed = *shape;
  if (!set_shape_cell(changed, cellName, name))
    return false;
  m_document->model().change(changed);
  return true;
}

void scModelPane::take_cell(int row) {
  const scShape* shape = shown_shape();
  if (!shape)
    return;
  scShape changed = *shape;
  // A text that is no value of this property is taken back.
  if (set_shape_cell(changed, row - 1, grid().text(row, 2)))
    m_document->model().change(changed);
  else
    show_properties();
}

// ---- the tree's context menu --------------------------------------------------------------------

void scModelPane::show_tree_menu(LPARAM point) {
  POINT at = {GET_X_LPARAM(point), GET_Y_LPARAM(point)};
  if (at.x == -1 && at.y == -1) {
    at = {20, 20};  // from the keyboard
    ClientToScreen(item(IDC_CAD_TREE), &at);
  }
  const HMENU menu = LoadMenuA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDR_TREE_CONTEXT_MENU));
  TrackPopupMenu(GetSubMenu(menu, 0), TPM_RIGHTBUTTON, at.x, at.y, 0, handle(), nullptr);
  DestroyMenu(menu);
}

bool scModelPane::on_command(int id, int /*code*/, HWND control) {
  // Notifications of the controls are no commands.
  if (control || !m_document)
    return false;
  on_tree_command(id);
  return true;
}

// Done by the program on the user's behalf: the tree announces only what is changed with its own icons, or a
// menu command would be two changes.
void scModelPane::on_tree_command(int id) {
  const std::vector<int> ids = m_tree.selected_shapes();
  if (id == IDM_TREE_RENAME) {
    const HWND tree = item(IDC_CAD_TREE);
    SetFocus(tree);
    SendMessageA(tree, TVM_EDITLABELA, 0, reinterpret_cast<LPARAM>(TreeView_GetSelection(tree)));
    return;
  }
  if (id == IDM_TREE_DELETE) {
    m_document->model().remove(ids);
    return;
  }
  for (const int shape_id : ids) {
    scShape shape = *m_document->model().find(shape_id);
    if (id == IDM_TREE_SHOW || id == IDM_TREE_HIDE)
      shape.visible = id == IDM_TREE_SHOW;
    else if (id == IDM_TREE_STAR)
      shape.starred = !shape.starred;
    m_document->model().change(shape);
  }
}
