// The main window; see the header.
#include "apps/SampleCad/scFrame.h"

#include "apps/SampleCad/common_ids.h"
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "apps/SampleCad/scDialogs.h"
#include "apps/SampleCad/scIdentity.h"
#include "apps/SampleCad/scReadyFile.h"

#include <windows.h>
#include <commctrl.h>

#include <algorithm>

namespace {

constexpr char frame_class[] = "SampleCadFrame";
// Ids of the document windows; the Window menu lists them as commands.
constexpr UINT first_child_id = 50000;
constexpr int window_menu_position = 5;
constexpr int status_parts = 3;
constexpr int pane_width = 236;  // pixels
constexpr int pane_gap = 3;

}  // namespace

scFrame& main_frame() {
  static scFrame frame;
  return frame;
}

bool scFrame::create_main(const char* path) {
  register_class(frame_class, 0, reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1));
  // On a small screen as large as fits.
  RECT desktop = {};
  SystemParametersInfoA(SPI_GETWORKAREA, 0, &desktop, 0);
  const int width = std::min<int>(1000, desktop.right - desktop.left);
  const int height = std::min<int>(720, desktop.bottom - desktop.top);
  const HMENU menu = LoadMenuA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDR_MAIN_MENU));
  if (!create(frame_class, "SampleCad", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0,
              place(desktop.left, desktop.top, width, height), nullptr, reinterpret_cast<UINT_PTR>(menu)))
    return false;
  name_place(handle(), "frame");
  ShowWindow(handle(), SW_SHOW);
  UpdateWindow(handle());
  scDocument* document = new_document();
  if (!*path && document)
    document->model().insert(gearbox_shapes());
  else if (document && !document->load(path))
    prompt(CString("Not a model that can be read: ") + path);
  return true;
}

void scFrame::create_children() {
  CLIENTCREATESTRUCT clients = {};
  // The MDI client appends the documents to this menu.
  clients.hWindowMenu = GetSubMenu(GetMenu(handle()), window_menu_position);
  clients.idFirstChild = first_child_id;
  m_mdi_client = CreateWindowExA(WS_EX_CLIENTEDGE, "MDICLIENT", "",
                                 WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, 0, 0, 0, 0,
                                 handle(), nullptr, GetModuleHandleA(nullptr), &clients);
  m_toolbars.create_in(handle());
  m_pane.create_in(handle());
  m_status_bar = CreateWindowExA(0, "msctls_statusbar32", "", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0, 0,
                                 0, handle(), reinterpret_cast<HMENU>(static_cast<UINT_PTR>(IDC_STATUS_BAR)),
                                 GetModuleHandleA(nullptr), nullptr);
  prompt("Ready");
}

void scFrame::layout() {
  RECT room = client_rect(handle());
  SendMessageA(m_status_bar, WM_SIZE, 0, 0);  // it places itself at the bottom
  if (IsWindowVisible(m_status_bar) || !IsWindowVisible(handle())) {
    RECT bar = {};
    GetWindowRect(m_status_bar, &bar);
    room.bottom -= bar.bottom - bar.top;
  }
  room.top += m_toolbars.layout(room.right);
  const int rights[status_parts] = {static_cast<int>(room.right) - 260, static_cast<int>(room.right) - 120,
                                    -1};
  SendMessageA(m_status_bar, SB_SETPARTS, status_parts, reinterpret_cast<LPARAM>(rights));
  if (GetWindowLongPtrA(m_pane.handle(), GWL_STYLE) & WS_VISIBLE) {
    m_pane.move({room.left, room.top, room.left + pane_width, room.bottom});
    room.left += pane_width + pane_gap;
  }
  MoveWindow(m_mdi_client, room.left, room.top, room.right - room.left, room.bottom - room.top, TRUE);
}

void scFrame::prompt(const char* text) {
  SendMessageA(m_status_bar, SB_SETTEXTA, 0, reinterpret_cast<LPARAM>(text));
}

void scFrame::update_looks() {
  CString objects;
  if (m_active)
    objects.Format("Objects: %d", static_cast<int>(m_active->model().shapes().size()));
  SendMessageA(m_status_bar, SB_SETTEXTA, 1, reinterpret_cast<LPARAM>(objects.GetString()));
  SendMessageA(m_status_bar, SB_SETTEXTA, 2, reinterpret_cast<LPARAM>("millimetres"));
  m_toolbars.update([this](int command) { return command_state(command); });
}

// ---- messages -----------------------------------------------------------------------------------

LRESULT scFrame::default_message(UINT message, WPARAM wparam, LPARAM lparam) {
  return DefFrameProcA(handle(), m_mdi_client, message, wparam, lparam);
}

LRESULT scFrame::on_message(UINT message, WPARAM wparam, LPARAM lparam) {
  LRESULT answer = 0;
  if (answer_identity(message, lparam, answer))
    return answer;
  switch (message) {
  case WM_CREATE:
    create_children();
    return 0;
  case WM_SIZE:
    layout();
    return 0;  // the documents' room is set by layout, not by the default procedure
  case WM_COMMAND:
    // Of a menu, an accelerator, or a toolbar, which gives its own window in lparam. The documents in the
    // Window menu are the default procedure's.
    if (LOWORD(wparam) >= IDM_FILE_NEW && LOWORD(wparam) < first_child_id) {
      on_command(LOWORD(wparam));
      return 0;
    }
    break;
  case WM_NOTIFY:
    if (m_toolbars.on_notify(*reinterpret_cast<NMHDR*>(lparam), answer))
      return answer;
    break;
  case WM_INITMENUPOPUP:
    update_menu(reinterpret_cast<HMENU>(wparam));
    break;
  case WM_ENTERIDLE:
    // A menu or a modal dialog waits for input.
    update_ready_file();
    return 0;
  case WM_DESTROY:
    PostQuitMessage(0);
    break;
  default:
    break;
  }
  return default_message(message, wparam, lparam);
}

// ---- documents ----------------------------------------------------------------------------------

scDocument* scFrame::new_document() {
  auto* document = new scDocument(*this, ++m_document_count);
  // From here on the document belongs to its window.
  if (document->create_in(m_mdi_client)) {
    on_document_activated(document);
    return document;
  }
  prompt("The document could not be opened");
  return nullptr;
}

void scFrame::on_document_activated(scDocument* document) {
  if (document) {
    m_active = document;
  } else if (!SendMessageA(m_mdi_client, WM_MDIGETACTIVE, 0, 0)) {
    m_active = nullptr;
  }
  show_active();
}

void scFrame::on_document_closed(scDocument* document) {
  if (m_active == document)
    m_active = nullptr;
  show_active();
}

void scFrame::show_active() {
  update_looks();
  m_pane.show(m_active);
  refresh_table_dialog();
}

void scFrame::on_model_changed(scDocument* document) {
  if (document != m_active)
    return;
  update_looks();
  m_pane.show(document);
  refresh_table_dialog();
}

void scFrame::on_selection_changed(scDocument* document) {
  if (document == m_active)
    m_pane.show_properties();
}

void scFrame::close_all_documents() {
  // One after the other: closing one activates the next.
  while (const HWND child = reinterpret_cast<HWND>(SendMessageA(m_mdi_client, WM_MDIGETACTIVE, 0, 0)))
    SendMessageA(m_mdi_client, WM_MDIDESTROY, reinterpret_cast<WPARAM>(child), 0);
}

// ---- commands -----------------------------------------------------------------------------------

void scFrame::on_command(int id) {
  if (on_window_command(id) || open_dialog(id) || (m_active && m_active->on_command(id))) {
    update_looks();
    return;
  }
  if (m_toolbars.on_command(id)) {
    layout();
    return;
  }
  switch (id) {
  case IDM_FILE_NEW:
    new_document();
    break;
  case IDM_FILE_EXIT:
    PostMessageA(handle(), WM_CLOSE, 0, 0);
    break;
  case IDM_FILE_SAVE:
    save_document();
    break;
  case IDM_VIEW_MODEL_PANE:
    ShowWindow(m_pane.handle(), IsWindowVisible(m_pane.handle()) ? SW_HIDE : SW_SHOW);
    layout();
    break;
  case IDM_VIEW_HOME:
    go_home();
    break;
  case IDM_VIEW_STATUS_BAR:
    ShowWindow(m_status_bar, IsWindowVisible(m_status_bar) ? SW_HIDE : SW_SHOW);
    layout();
    break;
  default:
    break;
  }
}

// A command made of two others, which the frame sends to itself: one gesture of the user, three commands.
void scFrame::go_home() {
  for (const int command : {IDM_VIEW_ISOMETRIC, IDM_VIEW_ZOOM_FIT})
    SendMessageA(handle(), WM_COMMAND, static_cast<WPARAM>(command), 0);
}

bool scFrame::on_window_command(int id) {
  switch (id) {
  case IDM_WINDOW_CASCADE:
    SendMessageA(m_mdi_client, WM_MDICASCADE, 0, 0);
    return true;
  case IDM_WINDOW_TILE_HORIZONTAL:
    SendMessageA(m_mdi_client, WM_MDITILE, MDITILE_HORIZONTAL, 0);
    return true;
  case IDM_WINDOW_TILE_VERTICAL:
    SendMessageA(m_mdi_client, WM_MDITILE, MDITILE_VERTICAL, 0);
    return true;
  case IDM_WINDOW_ARRANGE:
    SendMessageA(m_mdi_client, WM_MDIICONARRANGE, 0, 0);
    return true;
  case IDM_WINDOW_CLOSE_ALL:
    close_all_documents();
    return true;
  default:
    return false;
  }
}

scCommandState scFrame::command_state(int id) const {
  scCommandState state;
  if ((m_active && m_active->command_state(id, state)) || m_toolbars.command_state(id, state))
    return state;
  if (id == IDM_VIEW_STATUS_BAR)
    state.checked = IsWindowVisible(m_status_bar);
  else if (id == IDM_VIEW_MODEL_PANE)
    state.checked = IsWindowVisible(m_pane.handle());
  else if (id != IDM_FILE_NEW && id != IDM_FILE_EXIT && !is_dialog_command(id))
    state.enabled = m_active != nullptr;
  return state;
}

void scFrame::update_menu(HMENU menu) {
  const int count = GetMenuItemCount(menu);
  for (int position = 0; position < count; ++position) {
    const UINT id = GetMenuItemID(menu, position);
    // Submenus, separators, the document list and the system menu look after themselves.
    if (id < IDM_FILE_NEW || id >= first_child_id)
      continue;
    const scCommandState state = command_state(static_cast<int>(id));
    MENUITEMINFOA item = {};
    item.cbSize = sizeof(item);
    item.fMask = MIIM_FTYPE | MIIM_STATE;
    item.fType = state.radio ? MFT_RADIOCHECK : 0;
    item.fState = (state.checked ? MFS_CHECKED : 0) | (state.enabled ? 0 : MFS_DISABLED);
    SetMenuItemInfoA(menu, position, TRUE, &item);
  }
}
