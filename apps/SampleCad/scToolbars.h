// The frame's toolbars: a common one and two look-alikes of another library's, in a row below the menu.
#pragma once

#include "apps/SampleCad/scBcgToolbar.h"
#include "apps/SampleCad/scCommandState.h"

#include <windows.h>

class scToolbars {
public:
  scToolbars();

  void create_in(HWND frame);
  // Places the visible bars at the top of a frame this wide; the height that they take, in pixels.
  int layout(int width);
  void update(const scCommandStateOf& state_of);

  // Commands that show and hide the bars or move the focus to them. False: not one of them.
  bool on_command(int id);
  bool command_state(int id, scCommandState& state) const;
  // A drop-down button of the common toolbar wants its menu. False: not a notification of it.
  bool on_notify(const NMHDR& header, LRESULT& result);

private:
  void create_standard(HWND frame);
  HWND bar(int command) const;

  HWND m_standard = nullptr;
  scBcgToolbar m_draw;
  scBcgToolbar m_view;
};
