// The frame's toolbars; see the header.
#include "apps/SampleCad/scToolbars.h"

#include "apps/SampleCad/samplecad.dev/resource.h"

#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <iterator>

namespace {

// Where the text of a button of the common toolbar is kept.
enum class TextIn { nothing, button, pool };

struct StandardButton {
  int command;  // 0: a separator
  scIcon icon;
  BYTE style;
  TextIn text_in;
  const char* text;
};
constexpr StandardButton standard_buttons[] = {
    {IDM_FILE_NEW, iconNew, BTNS_BUTTON, TextIn::button, "New"},
    {IDM_FILE_OPEN, iconOpen, BTNS_BUTTON, TextIn::button, "Open"},
    {IDM_FILE_SAVE, iconSave, BTNS_BUTTON, TextIn::pool, "Save"},
    {0, iconNew, BTNS_SEP, TextIn::nothing, ""},
    {IDM_EDIT_UNDO, iconUndo, BTNS_BUTTON, TextIn::pool, "Undo"},
    {IDM_EDIT_REDO, iconRedo, BTNS_BUTTON, TextIn::pool, "Redo"},
    {0, iconNew, BTNS_SEP, TextIn::nothing, ""},
    {IDM_VIEW_GRID, iconGrid, BTNS_CHECK, TextIn::button, "Grid"},
    {IDM_VIEW_AXES, iconAxes, BTNS_CHECK, TextIn::nothing, ""},
    {0, iconNew, BTNS_SEP, TextIn::nothing, ""},
    {IDM_MOUSE_ROTATE, iconRotate, BTNS_CHECKGROUP, TextIn::button, "Rotate"},
    {IDM_MOUSE_PAN, iconPan, BTNS_CHECKGROUP, TextIn::pool, "Pan"},
    {IDM_MOUSE_ZOOM, iconZoom, BTNS_CHECKGROUP, TextIn::pool, "Zoom"},
    {IDM_MOUSE_SELECT, iconSelect, BTNS_CHECKGROUP, TextIn::nothing, ""},
    {0, iconNew, BTNS_SEP, TextIn::nothing, ""},
    {IDM_VIEW_HOME, iconFit, BTNS_BUTTON | BTNS_SHOWTEXT, TextIn::button, "Home"},
    {IDM_VIEW_ORIENTATION, iconIsometric, BTNS_DROPDOWN | BTNS_SHOWTEXT, TextIn::button, "Orientation"},
    {IDM_VIEW_BACKGROUND, iconEye, BTNS_WHOLEDROPDOWN, TextIn::pool, "Background"},
};

// Buttons of the look-alikes, put together from the plain one.
scBarButton choice(int command, scIcon icon, const char* text) {
  scBarButton button;
  button.command = command;
  button.icon = icon;
  button.text = text;
  return button;
}

scBarButton pooled(scBarButton button) {
  button.text_in_pool = true;
  return button;
}

scBarButton drop_down(int command, scIcon icon, const char* text, std::vector<scBarButton> choices) {
  scBarButton button = choice(command, icon, text);
  button.shows_text = *text != '\0';
  button.choices = std::move(choices);
  return button;
}

scBarButton check(int command, scIcon icon, const char* text) {
  scBarButton button = choice(command, icon, text);
  button.is_check = true;
  return button;
}

// Texts from the button, from the pool and none; a drop-down that is a command.
std::vector<scBarButton> draw_buttons() {
  return {
      choice(IDM_DRAW_BOX, iconBox, "Box"), pooled(choice(IDM_DRAW_GEAR, iconGear, "Gear")),
      choice(IDM_DRAW_SPHERE, iconSphere, ""), scBarButton(),
      drop_down(IDM_DRAW_MORE, iconCylinder, "More",
                {choice(IDM_DRAW_CYLINDER, iconCylinder, "Cylinder"), choice(IDM_DRAW_CONE, iconCone, "Cone"),
                 pooled(choice(IDM_DRAW_TORUS, iconTorus, "Torus"))})};
}

// Drop-downs that are no commands: one with a text, one without.
std::vector<scBarButton> view_buttons() {
  return {check(IDM_VIEW_PERSPECTIVE, iconIsometric, "Perspective"),
          choice(IDM_VIEW_ZOOM_FIT, iconFit, "Fit"), scBarButton(),
          drop_down(-1, iconFront, "Look",
                    {choice(IDM_VIEW_FRONT, iconFront, "Front"), choice(IDM_VIEW_RIGHT, iconRight, "Right"),
                     choice(IDM_VIEW_TOP, iconTop, "Top")}),
          drop_down(-1, iconZoom, "",
                    {choice(IDM_VIEW_ZOOM_IN, iconZoom, "Zoom in"),
                     choice(IDM_VIEW_ZOOM_OUT, iconZoom, "Zoom out")})};
}

constexpr int gap = 2;  // pixels between bars
constexpr int standard_height = 32;

// The menu of a drop-down button: a popup of the main menu, found by one of its commands.
HMENU popup_with(HMENU menu, UINT command) {
  const int count = GetMenuItemCount(menu);
  for (int position = 0; position < count; ++position) {
    if (GetMenuItemID(menu, position) == command)
      return menu;
    const HMENU sub = GetSubMenu(menu, position);
    if (const HMENU found = sub ? popup_with(sub, command) : nullptr)
      return found;
  }
  return nullptr;
}

}  // namespace

scToolbars::scToolbars()
    : m_draw(scBcgToolbar::Style::old_library, draw_buttons()),
      m_view(scBcgToolbar::Style::new_library, view_buttons()) {}

void scToolbars::create_in(HWND frame) {
  create_standard(frame);
  m_draw.create_in(frame, IDC_TOOLBAR_DRAW, "Draw");
  m_view.create_in(frame, IDC_TOOLBAR_VIEW, "View");
}

void scToolbars::create_standard(HWND frame) {
  m_standard = CreateWindowExA(
      0, "ToolbarWindow32", "Standard",
      WS_CHILD | WS_VISIBLE | TBSTYLE_FLAT | TBSTYLE_LIST | CCS_NODIVIDER | CCS_NORESIZE | CCS_NOPARENTALIGN,
      0, 0, 10, 10, frame, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(IDC_TOOLBAR_STANDARD)),
      GetModuleHandleA(nullptr), nullptr);
  SendMessageA(m_standard, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  // Texts are kept but shown only where a button asks for it; a drop-down has an arrow of its own.
  SendMessageA(m_standard, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS | TBSTYLE_EX_DRAWDDARROWS);
  SendMessageA(m_standard, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(command_icons()));
  for (const StandardButton& source : standard_buttons) {
    TBBUTTON button = {};
    button.iBitmap = source.command ? source.icon : 0;
    button.idCommand = source.command;
    button.fsState = TBSTATE_ENABLED;
    button.fsStyle = source.command ? static_cast<BYTE>(source.style | BTNS_AUTOSIZE) : BTNS_SEP;
    // Three ways in which a button has a text; whoever reads them must know all three.
    if (source.text_in == TextIn::button) {
      button.iString = reinterpret_cast<INT_PTR>(source.text);
    } else if (source.text_in == TextIn::pool) {
      // A pool of texts ends with an empty one.
      char pool[64] = {};
      lstrcpynA(pool, source.text, sizeof(pool) - 1);
      button.iString = SendMessageA(m_standard, TB_ADDSTRINGA, 0, reinterpret_cast<LPARAM>(pool));
    } else {
      button.iString = -1;
    }
    SendMessageA(m_standard, TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&button));
  }
}

int scToolbars::layout(int width) {
  RECT last = {};
  const LRESULT count = SendMessageA(m_standard, TB_BUTTONCOUNT, 0, 0);
  SendMessageA(m_standard, TB_GETITEMRECT, static_cast<WPARAM>(count - 1), reinterpret_cast<LPARAM>(&last));
  const SIZE draw = m_draw.size();
  const SIZE view = m_view.size();
  struct Bar {
    HWND window;
    int width, height;
  };
  const Bar bars[] = {{m_standard, static_cast<int>(last.right) + 4, standard_height},
                      {m_draw.handle(), static_cast<int>(draw.cx), static_cast<int>(draw.cy)},
                      {m_view.handle(), static_cast<int>(view.cx), static_cast<int>(view.cy)}};
  int x = 0;
  int y = 0;
  bool any = false;
  for (const Bar& one : bars) {
    if (!(GetWindowLongPtrA(one.window, GWL_STYLE) & WS_VISIBLE))
      continue;
    // Left to right. A bar that does not fit begins a row of its own.
    if (any && x + one.width > width) {
      x = 0;
      y += standard_height + gap;
    }
    MoveWindow(one.window, x, y, one.width, one.height, TRUE);
    x += one.width + gap;
    any = true;
  }
  return any ? y + standard_height + gap : 0;
}

void scToolbars::update(const scCommandStateOf& state_of) {
  for (const StandardButton& button : standard_buttons) {
    if (!button.command || (button.style & (BTNS_DROPDOWN | BTNS_WHOLEDROPDOWN)))
      continue;
    // Only what differs is set: every message is seen by whoever hooks this thread.
    const scCommandState state = state_of(button.command);
    const LRESULT wanted = (state.enabled ? TBSTATE_ENABLED : 0) |
                           (state.checked && (button.style & BTNS_CHECK) ? TBSTATE_CHECKED : 0);
    if (SendMessageA(m_standard, TB_GETSTATE, static_cast<WPARAM>(button.command), 0) != wanted)
      SendMessageA(m_standard, TB_SETSTATE, static_cast<WPARAM>(button.command), wanted);
  }
  m_draw.update(state_of);
  m_view.update(state_of);
}

HWND scToolbars::bar(int command) const {
  switch (command) {
  case IDM_TOOLBAR_STANDARD:
    return m_standard;
  case IDM_TOOLBAR_DRAW:
    return m_draw.handle();
  case IDM_TOOLBAR_VIEW:
    return m_view.handle();
  default:
    return nullptr;
  }
}

bool scToolbars::on_command(int id) {
  if (const HWND window = bar(id)) {
    ShowWindow(window, IsWindowVisible(window) ? SW_HIDE : SW_SHOW);
    return true;
  }
  if (id != IDM_TOOLBAR_FOCUS_DRAW && id != IDM_TOOLBAR_FOCUS_VIEW)
    return false;
  SetFocus(id == IDM_TOOLBAR_FOCUS_DRAW ? m_draw.handle() : m_view.handle());
  return true;
}

bool scToolbars::command_state(int id, scCommandState& state) const {
  const HWND window = bar(id);
  if (window)
    state.checked = IsWindowVisible(window);
  return window || id == IDM_TOOLBAR_FOCUS_DRAW || id == IDM_TOOLBAR_FOCUS_VIEW;
}

bool scToolbars::on_notify(const NMHDR& header, LRESULT& result) {
  if (header.hwndFrom != m_standard || header.code != static_cast<UINT>(TBN_DROPDOWN))
    return false;
  const int command = reinterpret_cast<const NMTOOLBARA&>(header).iItem;
  RECT button = {};
  SendMessageA(m_standard, TB_GETRECT, static_cast<WPARAM>(command), reinterpret_cast<LPARAM>(&button));
  MapWindowPoints(m_standard, nullptr, reinterpret_cast<POINT*>(&button), 2);
  const HWND frame = GetParent(m_standard);
  // The same submenus as in the menu bar: one place for the marks of their items.
  const UINT first = command == IDM_VIEW_ORIENTATION ? IDM_VIEW_FRONT : IDM_VIEW_DARK;
  TrackPopupMenu(popup_with(GetMenu(frame), first), 0, button.left, button.bottom, 0, frame, nullptr);
  result = TBDDRET_DEFAULT;
  return true;
}
