// The list of files inside the program's file dialogs; see the header.
#include "apps/SampleCad/scFolderView.h"

#include <windows.h>

#include <algorithm>

namespace {

constexpr int row_height = 18;  // pixels
constexpr int column_width = 168;

// Without regard to case, as file names are.
bool ends_with(const CString& name, const CString& ending) {
  const int start = name.GetLength() - ending.GetLength();
  return start >= 0 && lstrcmpiA(name.Mid(start), ending) == 0;
}

}  // namespace

void scFolderView::register_view() {
  register_control<scFolderView>("SHELLDLL_DefView", CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW);
}

scFolderView& scFolderView::of(HWND window) { return *static_cast<scFolderView*>(object_of(window)); }

void scFolderView::show(const CString& folder, const CString& ending) {
  m_entries.clear();
  m_selected = static_cast<size_t>(-1);
  // A folder that cannot be read looks empty; its path stands above the list.
  WIN32_FIND_DATAA found = {};
  const HANDLE search = FindFirstFileA(folder + "\\*", &found);
  if (search != INVALID_HANDLE_VALUE) {
    do {
      const bool is_folder = found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY;
      const CString name = found.cFileName;
      if (name != "." && (is_folder || ends_with(name, ending)))
        m_entries.push_back({name, is_folder});
    } while (FindNextFileA(search, &found));
    FindClose(search);
  }
  // Folders first, then by name: an order that no file system changes.
  std::sort(m_entries.begin(), m_entries.end(), [](const Entry& a, const Entry& b) {
    return a.is_folder != b.is_folder ? a.is_folder : lstrcmpiA(a.name, b.name) < 0;
  });
  InvalidateRect(handle(), nullptr, FALSE);
}

CString scFolderView::selected() const {
  return m_selected < m_entries.size() ? m_entries[m_selected].name : CString();
}

bool scFolderView::selected_is_folder() const {
  return m_selected < m_entries.size() && m_entries[m_selected].is_folder;
}

LRESULT scFolderView::on_message(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
  case WM_CREATE:
    set_item_source(handle(), this);
    return 0;
  case WM_LBUTTONDOWN:
    SetFocus(handle());
    select_at(message_point(lparam));
    return 0;
  case WM_LBUTTONDBLCLK:
    // The first click of the double click has selected it.
    if (m_selected < m_entries.size())
      tell(LBN_DBLCLK);
    return 0;
  default:
    return default_message(message, wparam, lparam);
  }
}

void scFolderView::tell(int code) {
  SendMessageA(GetParent(handle()), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(handle()), code),
               reinterpret_cast<LPARAM>(handle()));
}

void scFolderView::select_at(POINT at) {
  for (size_t i = 0; i < m_entries.size(); ++i) {
    const RECT rect = entry_rect(i);
    if (!PtInRect(&rect, at))
      continue;
    m_selected = i;
    InvalidateRect(handle(), nullptr, FALSE);
    tell(LBN_SELCHANGE);
    return;
  }
}

// Filled column by column, as file dialogs do.
RECT scFolderView::entry_rect(size_t entry) const {
  const int rows = std::max<int>(1, client_rect(handle()).bottom / row_height);
  const int index = static_cast<int>(entry);
  return place(index / rows * column_width, index % rows * row_height, column_width, row_height);
}

void scFolderView::list_items(const Add& add) const {
  const RECT client = client_rect(handle());
  for (size_t i = 0; i < m_entries.size(); ++i) {
    const RECT rect = entry_rect(i);
    // Names in the ready file hold no blanks.
    CString word;
    for (int c = 0; c < m_entries[i].name.GetLength(); ++c)
      word += m_entries[i].name[c] == ' ' ? '_' : m_entries[i].name[c];
    // What does not fit is not seen: there is no scrolling here.
    if (rect.left < client.right)
      add(word, rect);
  }
}

void scFolderView::draw(HDC dc) {
  SelectObject(dc, GetStockObject(DC_BRUSH));
  for (size_t i = 0; i < m_entries.size(); ++i) {
    RECT rect = entry_rect(i);
    if (i == m_selected) {
      SetDCBrushColor(dc, RGB(204, 228, 250));
      FillRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    }
    SetDCBrushColor(dc, m_entries[i].is_folder ? RGB(250, 210, 120) : RGB(235, 240, 248));
    Rectangle(dc, rect.left + 4, rect.top + 4, rect.left + 16, rect.top + 15);
    rect.left += 21;
    DrawTextA(dc, m_entries[i].name, -1, &rect, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
  }
}
