// A tree of settings; see the header.
#include "apps/SampleCad/scOptionTree.h"

#include <windows.h>

#include <algorithm>

namespace {

constexpr int row_height = 20;  // pixels
constexpr int indent = 18;
constexpr int box_size = 12;

// The number of the request; the same in every process that registers the name.
UINT option_information() {
  static const UINT message = RegisterWindowMessageA("MSG_OT_RequestInformation");
  return message;
}

// Cut to the asker's buffer, with its terminator; 1 when there was anything to copy into.
LRESULT copy_text(const scOptionRequest& request, const CString& text) {
  if (!request.text || !request.capacity)
    return 0;
  lstrcpynA(request.text, text, static_cast<int>(request.capacity));
  return 1;
}

void fill(HDC dc, const RECT& rect, COLORREF colour) {
  SetDCBrushColor(dc, colour);
  FillRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

}  // namespace

void scOptionTree::register_tree() {
  register_control<scOptionTree>("zqpOptionTree", CS_HREDRAW | CS_VREDRAW);
}

scOptionTree& scOptionTree::of(HWND window) { return *static_cast<scOptionTree*>(object_of(window)); }

scOption* scOptionTree::add(scOption* parent, scOptionKind kind, const char* label, const char* value) {
  // On the heap: the item's address is its handle, also for those who ask.
  auto option = std::make_unique<scOption>();
  option->kind = kind;
  option->label = label;
  option->value = value;
  option->parent = parent;
  m_options.push_back(std::move(option));
  InvalidateRect(handle(), nullptr, FALSE);
  return m_options.back().get();
}

void scOptionTree::set_value(scOption* option, const CString& value) {
  option->value = value;
  InvalidateRect(handle(), nullptr, FALSE);
}

// ---- messages -----------------------------------------------------------------------------------

LRESULT scOptionTree::on_message(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == option_information())
    return on_information(wparam, lparam);
  switch (message) {
  case WM_CREATE:
    set_item_source(handle(), this);
    return 0;
  case WM_GETDLGCODE:
    return DLGC_WANTARROWS | DLGC_WANTCHARS;
  case WM_LBUTTONDOWN:
    on_click(message_point(lparam));
    return 0;
  case WM_KEYDOWN:
    if (on_key(wparam))
      return 0;
    break;
  default:
    break;
  }
  return default_message(message, wparam, lparam);
}

LRESULT scOptionTree::on_information(WPARAM code, LPARAM lparam) {
  // lParam is the item itself or a request, depending on the code.
  if (!lparam)
    return 0;
  const auto* item = reinterpret_cast<const scOption*>(lparam);
  const auto* request = reinterpret_cast<const scOptionRequest*>(lparam);
  switch (code) {
  case 1:
    return copy_text(*request, request->item->label);
  case 5:
    return reinterpret_cast<LRESULT>(item->parent);
  case 6:
    return item->kind;
  case 8:
    return copy_text(*request, request->item->value);
  default:
    return 0;
  }
}

void scOptionTree::on_click(POINT at) {
  SetFocus(handle());
  const std::vector<scOption*> rows = shown();
  const size_t row = static_cast<size_t>(std::max<LONG>(at.y, 0) / row_height);
  if (row >= rows.size())
    return;
  m_current = row;
  InvalidateRect(handle(), nullptr, FALSE);
  act_on(*rows[row]);
}

bool scOptionTree::on_key(WPARAM key) {
  const std::vector<scOption*> rows = shown();
  if (rows.empty())
    return false;
  if (key == VK_UP && m_current > 0)
    --m_current;
  else if (key == VK_DOWN && m_current + 1 < rows.size())
    ++m_current;
  else if (key == VK_SPACE || key == VK_F2)  // as a click on the row
    act_on(*rows[m_current]);
  else
    return key == VK_UP || key == VK_DOWN;
  InvalidateRect(handle(), nullptr, FALSE);
  return true;
}

// What a click does: opens or closes a group, flips a check box, edits a text.
void scOptionTree::act_on(scOption& option) {
  if (option.kind == optionGroup) {
    option.open = !option.open;
  } else if (option.kind == optionCheck) {
    change(option, option.value == "1" ? "0" : "1");
  } else {
    RECT at = value_rect(m_current);
    InflateRect(&at, -3, -2);
    m_edit.begin(handle(), at, option.value, [this, &option](const CString& text) {
      // Leaving the box without a change is no change.
      if (text != option.value)
        change(option, text);
    });
  }
  InvalidateRect(handle(), nullptr, FALSE);
}

void scOptionTree::change(scOption& option, const CString& value) {
  set_value(&option, value);
  // After the value is in place: whoever is told asks for it at once.
  scOptionChange told = {};
  told.header.hwndFrom = handle();
  told.header.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID(handle()));
  told.header.code = option_changed;
  told.item = &option;
  SendMessageA(GetParent(handle()), WM_NOTIFY, told.header.idFrom, reinterpret_cast<LPARAM>(&told));
}

// ---- layout and drawing -------------------------------------------------------------------------

int scOptionTree::depth(const scOption& option) { return option.parent ? depth(*option.parent) + 1 : 0; }

// The items whose groups all stand open, from top to bottom.
std::vector<scOption*> scOptionTree::shown() const {
  std::vector<scOption*> rows;
  for (const auto& option : m_options) {
    bool visible = true;
    for (const scOption* up = option->parent; up; up = up->parent)
      visible = visible && up->open;
    if (visible)
      rows.push_back(option.get());
  }
  return rows;
}

RECT scOptionTree::row_rect(size_t row) const {
  const int top = static_cast<int>(row) * row_height;
  return {0, top, client_rect(handle()).right, top + row_height};
}

// Values have a column of their own, the right half.
RECT scOptionTree::value_rect(size_t row) const {
  RECT rect = row_rect(row);
  rect.left = rect.right / 2;
  return rect;
}

void scOptionTree::list_items(const Add& add) const {
  const std::vector<scOption*> rows = shown();
  for (size_t row = 0; row < rows.size(); ++row) {
    CString path;
    for (const scOption* up = rows[row]; up; up = up->parent)
      path = path.IsEmpty() ? up->label : up->label + "|" + path;
    // Names in the ready file hold no blanks.
    CString word;
    for (int i = 0; i < path.GetLength(); ++i)
      word += path[i] == ' ' ? '_' : path[i];
    add(word, row_rect(row));
  }
}

void scOptionTree::draw(HDC dc) {
  const std::vector<scOption*> rows = shown();
  for (size_t row = 0; row < rows.size(); ++row)
    draw_row(dc, *rows[row], row);
}

void scOptionTree::draw_row(HDC dc, const scOption& option, size_t row) const {
  RECT rect = row_rect(row);
  if (option.kind == optionGroup)
    fill(dc, rect, RGB(232, 237, 244));
  if (row == m_current && GetFocus() == handle())
    fill(dc, rect, RGB(255, 240, 205));
  RECT mark = {depth(option) * indent + 6, rect.top + 4, 0, rect.top + 4 + box_size};
  mark.right = mark.left + box_size;
  if (option.kind == optionCheck)
    DrawFrameControl(dc, &mark, DFC_BUTTON,
                     DFCS_BUTTONCHECK | DFCS_FLAT | (option.value == "1" ? DFCS_CHECKED : 0));
  SetTextColor(dc, RGB(20, 26, 36));
  if (option.kind == optionGroup)
    DrawTextA(dc, option.open ? "-" : "+", 1, &mark, DT_SINGLELINE | DT_CENTER | DT_VCENTER);
  RECT label = {mark.right + 5, rect.top, rect.right, rect.bottom};
  DrawTextA(dc, option.label, -1, &label, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
  if (option.kind == optionText) {
    RECT value = value_rect(row);
    SetTextColor(dc, RGB(40, 90, 160));
    InflateRect(&value, -6, 0);
    DrawTextA(dc, option.value, -1, &value, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
  }
  fill(dc, {rect.left, rect.bottom - 1, rect.right, rect.bottom}, RGB(225, 230, 236));
}
