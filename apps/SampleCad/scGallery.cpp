// What the dialogs of the control gallery share; see the header.
#include "apps/SampleCad/scGallery.h"

#include "apps/SampleCad/gallery.dev/gallery.h"
#include "apps/SampleCad/scFrame.h"
#include "apps/SampleCad/scIdNames.h"
#include "apps/SampleCad/scOwnerDraw.h"

#include <windows.h>
#include <windowsx.h>

void scGalleryDialog::show() {
  if (handle())
    SetForegroundWindow(handle());
  else
    open(main_frame().handle());
}

bool scGalleryDialog::on_command(int id, int code, HWND control) {
  if (id == IDCANCEL || id == IDOK)
    return id == IDOK;  // Return presses no button here
  if (id == IDC_BY_PROGRAM)
    change_by_program();
  else if (!control)
    report("Menu", id);
  else
    on_control(id, code);
  return true;
}

bool scGalleryDialog::on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
  if (message == WM_DRAWITEM) {
    result = TRUE;
    return on_draw_item(*reinterpret_cast<DRAWITEMSTRUCT*>(lparam));
  }
  // Also of controls inside the dialog, which hand it on to their parent.
  if (message == WM_CONTEXTMENU) {
    show_item_menu(reinterpret_cast<HWND>(wparam), lparam);
    return true;
  }
  return false;
}

void scGalleryDialog::report(const char* what, int id) {
  if (!IsWindowVisible(handle()))
    return;  // still being filled
  // Commands and controls have ranges of their own.
  const CString name = id >= 40000 ? command_name(id) : control_name(id);
  set_text(IDC_GALLERY_RESULT, CString(what) + ": " + name);
}

void scGalleryDialog::add_materials(int id, UINT add_message) {
  for (const char* name :
       {"Steel", "Brass", "Copper", "Aluminium", "Cast iron", "Oak", "Glass \"clear\"", "PVC"})
    send(id, add_message, 0, reinterpret_cast<LPARAM>(name));
}

void scGalleryDialog::add_colours(int id, UINT add_message) {
  // Drawn from their data: these boxes keep no texts.
  for (const COLORREF colour : {RGB(220, 60, 50), RGB(240, 150, 40), RGB(245, 215, 70), RGB(90, 180, 90),
                                RGB(70, 130, 220), RGB(140, 90, 200)})
    send(id, add_message, 0, static_cast<LPARAM>(colour));
}

bool scGalleryDialog::on_draw_item(const DRAWITEMSTRUCT& item) {
  switch (item.CtlID) {
  case IDC_COMBO_DRAWN_TEXT:
    draw_text_item(item);
    return true;
  case IDC_COMBO_DRAWN_COLOR:
  case IDC_LIST_DRAWN_COLOR:
  case IDC_LIST_DRAWN_MULTIPLE:
    draw_colour_item(item);
    return true;
  case IDC_DRAWN_PUSH:
  case IDC_DRAWN_TOGGLE:
    draw_button(item);
    return true;
  default:
    return false;
  }
}

void scGalleryDialog::show_item_menu(HWND control, LPARAM point) {
  // Everything else keeps the menu that it has, or none.
  switch (GetDlgCtrlID(control)) {
  case IDC_LIST_SINGLE:
  case IDC_LIST_MULTIPLE:
  case IDC_LIST_EXTENDED:
  case IDC_LIST_VIEW:
  case IDC_TREE:
  case IDC_TABS:
  case IDC_TABS_BCG:
    break;
  default:
    return;
  }
  POINT at = {GET_X_LPARAM(point), GET_Y_LPARAM(point)};
  if (at.x == -1 && at.y == -1) {
    at = {10, 10};
    ClientToScreen(control, &at);
  }
  const HMENU menu = LoadMenuA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDR_ITEM_CONTEXT_MENU));
  TrackPopupMenu(GetSubMenu(menu, 0), TPM_RIGHTBUTTON, at.x, at.y, 0, handle(), nullptr);
  // The command has been posted by now; the menu is not needed for it.
  DestroyMenu(menu);
}
