// What the dialogs of the control gallery share.
//
// Every dialog shows what happened last in a line of text, so that one sees what the program made of a
// gesture, and has a button "By program" that changes its controls by code: what a recorder must leave out.
#pragma once

#include "apps/SampleCad/scDialog.h"

class scGalleryDialog : public scDialog {
public:
  using scDialog::scDialog;

  // Opens it beside the frame, or brings it to the front when it is open.
  void show();

protected:
  bool on_command(int id, int code, HWND control) override;
  bool on_message(UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) override;

  // A control of the dialog told something.
  virtual void on_control(int /*id*/, int /*code*/) {}
  // "By program" was pressed.
  virtual void change_by_program() {}

  // Shows what happened last.
  void report(const char* what, int id);
  // Items of lists that the dialogs share.
  void add_materials(int id, UINT add_message);
  void add_colours(int id, UINT add_message);
  // Shows the context menu for items of a control of this dialog. point: screen pixels; -1, -1 from the
  // keyboard.
  void show_item_menu(HWND control, LPARAM point);

private:
  bool on_draw_item(const DRAWITEMSTRUCT& item);
};
