// The CAD tree; see the header.
#include "apps/SampleCad/scCadTree.h"

#include "apps/SampleCad/scIcons.h"
#include "apps/SampleCad/scWindow.h"
#include "host/kvttools.h"

#include <algorithm>

namespace {

constexpr UINT_PTR subclass_id = 3;
constexpr LRESULT is_a_cad_tree = 165;
constexpr int icon_width = 18;  // pixels

// What a click on the colour icon goes through.
constexpr COLORREF palette[] = {RGB(150, 205, 255), RGB(255, 205, 110), RGB(150, 235, 160),
                                RGB(255, 150, 110), RGB(255, 120, 160), RGB(200, 170, 255),
                                RGB(255, 0, 0)};

// A colour that is not of the palette is followed by its first.
COLORREF next_colour(COLORREF colour) {
  const COLORREF* last = std::end(palette);
  const COLORREF* found = std::find(std::begin(palette), last, colour);
  return found == last || found + 1 == last ? palette[0] : found[1];
}

}  // namespace

void scCadTree::attach(HWND tree) {
  m_tree = tree;
  SetWindowSubclass(tree, procedure, subclass_id, reinterpret_cast<DWORD_PTR>(this));
  set_item_source(tree, this);
}

LRESULT CALLBACK scCadTree::procedure(HWND tree, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR /*id*/,
                                      DWORD_PTR self) {
  auto& cad_tree = *reinterpret_cast<scCadTree*>(self);
  if (message == kvtWM_REQUEST_CAD_TREE_INFORMATION && wparam == 0 && lparam == 0)
    return is_a_cad_tree;
  // A click on an icon selects nothing.
  if ((message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK) && cad_tree.on_click(message_point(lparam)))
    return 0;
  const LRESULT result = DefSubclassProc(tree, message, wparam, lparam);
  if (message == WM_PAINT)
    cad_tree.draw_icons();
  else if (message == WM_SIZE || message == WM_VSCROLL || message == WM_HSCROLL || message == WM_MOUSEWHEEL)
    InvalidateRect(tree, nullptr, FALSE);  // the icons stay at the right edge
  return result;
}

// ---- content ------------------------------------------------------------------------------------

std::vector<scCadTree::Row> scCadTree::wanted_rows(const scModel& model, int document,
                                                   const CString& title) const {
  std::vector<Row> rows;
  CString root;
  root.Format("%d", document);
  rows.push_back({root, "", title, 0, nullptr});
  // Groups stand where their first object would; objects of no group below the model itself.
  const auto has = [&rows](const CString& key) {
    return std::any_of(rows.begin(), rows.end(), [&key](const Row& row) { return row.key == key; });
  };
  for (const scShape& shape : model.shapes()) {
    CString parent = root;
    if (!shape.group.IsEmpty()) {
      parent = root + "/" + shape.group;
      if (!has(parent))
        rows.push_back({parent, root, shape.group, 0, nullptr});
    }
    CString key;
    // The group is part of the key: an object that changes its group moves.
    key.Format("%s#%d", parent.GetString(), shape.id);
    rows.push_back({key, parent, shape.name, shape.id, nullptr});
  }
  return rows;
}

void scCadTree::sync(const scModel* model, int document, const CString& title) {
  if (!m_tree)
    return;
  m_model = model;
  std::vector<Row> wanted = model ? wanted_rows(*model, document, title) : std::vector<Row>();
  // A tree selects another item in place of a deleted one, and its first item when it gets the focus and has
  // none selected; it tells its parent of both. Neither is a choice of the user: it happens while the tree is
  // hidden.
  const bool has_missing =
      std::any_of(m_rows.begin(), m_rows.end(), [&](const Row& row) { return !is_in(wanted, row); });
  const bool hide = IsWindowVisible(m_tree) && (has_missing || m_rows.empty());
  const bool had_focus = GetFocus() == m_tree;
  if (hide)
    ShowWindow(m_tree, SW_HIDE);
  remove_missing(wanted);
  insert_or_rename(wanted);
  m_rows = std::move(wanted);
  if (!m_rows.empty() && !TreeView_GetSelection(m_tree))
    TreeView_SelectItem(m_tree, m_rows.front().item);
  if (hide)
    ShowWindow(m_tree, SW_SHOW);
  if (had_focus)
    SetFocus(m_tree);
  InvalidateRect(m_tree, nullptr, TRUE);
}

bool scCadTree::is_in(const std::vector<Row>& wanted, const Row& row) const {
  return std::any_of(wanted.begin(), wanted.end(), [&row](const Row& other) { return other.key == row.key; });
}

scCadTree::Row* scCadTree::find(const CString& key) {
  for (Row& row : m_rows)
    if (row.key == key)
      return &row;
  return nullptr;
}

void scCadTree::remove_missing(const std::vector<Row>& wanted) {
  // From the end: children go before their parents.
  for (size_t i = m_rows.size(); i-- > 0;)
    if (!is_in(wanted, m_rows[i])) {
      TreeView_DeleteItem(m_tree, m_rows[i].item);
      m_rows.erase(m_rows.begin() + static_cast<ptrdiff_t>(i));
    }
}

void scCadTree::insert_or_rename(std::vector<Row>& wanted) {
  for (size_t i = 0; i < wanted.size(); ++i) {
    Row& row = wanted[i];
    // What is there already keeps its item, and with it selection and expansion.
    const Row* present = find(row.key);
    if (present) {
      row.item = present->item;
      if (present->text != row.text) {
        TVITEMA item = {};
        item.mask = TVIF_TEXT;
        item.hItem = row.item;
        item.pszText = const_cast<char*>(row.text.GetString());
        SendMessageA(m_tree, TVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&item));
      }
      continue;
    }
    // Behind the last of its siblings so far; the rows come in the order of the tree.
    TVINSERTSTRUCTA added = {};
    added.hInsertAfter = TVI_FIRST;
    for (size_t j = 0; j < i; ++j) {
      if (wanted[j].key == row.parent_key)
        added.hParent = wanted[j].item;
      if (wanted[j].parent_key == row.parent_key)
        added.hInsertAfter = wanted[j].item;
    }
    added.item.mask = TVIF_TEXT;
    added.item.pszText = const_cast<char*>(row.text.GetString());
    row.item = reinterpret_cast<HTREEITEM>(
        SendMessageA(m_tree, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&added)));
    // The model and its groups stand open.
    if (added.hParent)
      TreeView_Expand(m_tree, added.hParent, TVE_EXPAND);
  }
}

const scCadTree::Row* scCadTree::row_of(HTREEITEM item) const {
  for (const Row& row : m_rows)
    if (row.item == item)
      return &row;
  return nullptr;
}

int scCadTree::shape_of(HTREEITEM item) const {
  const Row* row = row_of(item);
  return row ? row->shape : 0;
}

std::vector<int> scCadTree::selected_shapes() const {
  std::vector<int> ids;
  const Row* top = row_of(TreeView_GetSelection(m_tree));
  if (!top)
    return ids;
  for (const Row& row : m_rows) {
    // Keys of objects begin with those of their groups.
    const bool below = row.key.Left(top->key.GetLength()) == top->key;
    if (row.shape && (row.shape == top->shape || (!top->shape && below)))
      ids.push_back(row.shape);
  }
  return ids;
}

// ---- icons --------------------------------------------------------------------------------------

bool scCadTree::item_row(HTREEITEM item, RECT& rect) const {
  // The item handle travels in the rectangle.
  *reinterpret_cast<HTREEITEM*>(&rect) = item;
  return SendMessageA(m_tree, TVM_GETITEMRECT, FALSE, reinterpret_cast<LPARAM>(&rect));
}

// Columns from the right edge, whatever the depth of the item.
RECT scCadTree::icon_rect(const RECT& row, Icon icon) const {
  const int right = static_cast<int>(client_rect(m_tree).right) - (icons - 1 - icon) * icon_width;
  return {right - icon_width, row.top, right, row.bottom};
}

bool scCadTree::on_click(POINT at) {
  for (const Row& row : m_rows) {
    const scShape* shape = m_model ? m_model->find(row.shape) : nullptr;
    RECT rect = {};
    if (!shape || !item_row(row.item, rect))
      continue;
    for (const Icon icon : {iconsCheck, iconsEye, iconsColour, iconsStar}) {
      const RECT hit = icon_rect(rect, icon);
      if (!PtInRect(&hit, at))
        continue;
      SetFocus(m_tree);
      // Copies: the parent changes the model, which changes the rows.
      tell(row.item, scShape(*shape), icon);
      return true;
    }
  }
  return false;
}

void scCadTree::tell(HTREEITEM item, const scShape& shape, Icon icon) {
  kvtCADTreeChange change = {};
  change.tree = m_tree;
  change.item = item;
  // The change that a click stands for: the opposite of what is now.
  switch (icon) {
  case iconsCheck:
    change.change = shape.checked ? kvtObjectUnchecked : kvtObjectChecked;
    break;
  case iconsEye:
    change.change = shape.visible ? kvtObjectHidden : kvtObjectShown;
    break;
  case iconsColour:
    change.change = kvtObjectColoured;
    change.value = static_cast<int>(next_colour(shape.colour));
    break;
  default:
    change.change = shape.starred ? kvtObjectUnstarred : kvtObjectStarred;
    break;
  }
  SendMessageA(GetParent(m_tree), kvtWM_CAD_TREE_CHANGED, 0, reinterpret_cast<LPARAM>(&change));
}

void scCadTree::apply(scShape& shape, unsigned change, int value) {
  switch (change) {
  case kvtObjectShown:
  case kvtObjectHidden:
    shape.visible = change == kvtObjectShown;
    break;
  case kvtObjectChecked:
  case kvtObjectUnchecked:
    shape.checked = change == kvtObjectChecked;
    break;
  case kvtObjectColoured:
    shape.colour = static_cast<COLORREF>(value);
    break;
  case kvtObjectStarred:
  case kvtObjectUnstarred:
    shape.starred = change == kvtObjectStarred;
    break;
  default:
    break;
  }
}

void scCadTree::list_items(const Add& add) const {
  constexpr const char* names[] = {"check", "eye", "colour", "star"};
  for (const Row& row : m_rows) {
    RECT rect = {};
    if (!row.shape || !item_row(row.item, rect))
      continue;
    for (const Icon icon : {iconsCheck, iconsEye, iconsColour, iconsStar}) {
      CString word;
      for (int i = 0; i < row.text.GetLength(); ++i)
        word += row.text[i] == ' ' ? '_' : row.text[i];
      add(word + ":" + names[icon], icon_rect(rect, icon));
    }
  }
}

// After the tree has painted itself, over whatever long labels reach below the icons.
void scCadTree::draw_icons() {
  const HDC dc = GetDC(m_tree);
  for (const Row& row : m_rows) {
    const scShape* shape = m_model ? m_model->find(row.shape) : nullptr;
    RECT rect = {};
    if (!shape || !item_row(row.item, rect))
      continue;
    for (const Icon icon : {iconsCheck, iconsEye, iconsColour, iconsStar})
      draw_icon(dc, *shape, icon, icon_rect(rect, icon));
  }
  ReleaseDC(m_tree, dc);
}

void scCadTree::draw_icon(HDC dc, const scShape& shape, Icon icon, const RECT& at) const {
  FillRect(dc, &at, GetSysColorBrush(COLOR_WINDOW));
  RECT square = {at.left + 3, 0, at.left + 15, 0};
  square.top = (at.top + at.bottom) / 2 - 6;
  square.bottom = square.top + 12;
  switch (icon) {
  case iconsCheck:
    DrawFrameControl(dc, &square, DFC_BUTTON,
                     DFCS_BUTTONCHECK | DFCS_FLAT | (shape.checked ? DFCS_CHECKED : 0));
    break;
  case iconsColour:
    SetDCBrushColor(dc, shape.colour);
    FillRect(dc, &square, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    SetDCBrushColor(dc, RGB(90, 100, 115));
    FrameRect(dc, &square, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    break;
  default:
    ImageList_Draw(command_icons(),
                   icon == iconsEye ? (shape.visible ? iconEye : iconEyeOff)
                                    : (shape.starred ? iconStar : iconStarOff),
                   dc, at.left - 1, (at.top + at.bottom) / 2 - icon_size / 2, ILD_TRANSPARENT);
    break;
  }
}
