// Base of the controls that the program draws itself: painting, and the focus that can be seen.
#pragma once

#include "apps/SampleCad/scWindow.h"

class scDrawnWindow : public scWindow {
protected:
  // Draws the whole client area over a background of one colour, in the font of dialogs, texts transparent.
  virtual void draw(HDC dc) = 0;
  // Its background, one of the system's colours.
  virtual int background() const { return COLOR_WINDOW; }

  // Paints, and paints again when the focus comes or goes.
  LRESULT default_message(UINT message, WPARAM wparam, LPARAM lparam) override;

private:
  void paint();
};
