// The ready file: where the program's windows are, for programs that drive it.
//
// Written when the program is idle and something has moved, opened or closed since the last time; replaced as
// a whole, so that a reader never sees half of it. The format is told in docs/samplecad.md. Without --ready
// nothing here does anything.
#pragma once

#include "framework/CString.h"

#include <windows.h>

#include <functional>

// Names a window as the place in which the windows below it are listed. The text is borrowed for the window's
// life.
void name_place(HWND window, const char* place);

// A window of ours whose parts (cells, rows, icons) are listed too.
class scItemSource {
public:
  // Appends one line per part through `add`: the part's name without blanks, its rectangle in client pixels.
  using Add = std::function<void(const CString& name, const RECT& rect)>;
  virtual void list_items(const Add& add) const = 0;

protected:
  ~scItemSource() = default;
};
// The source is borrowed for the life of the window.
void set_item_source(HWND window, const scItemSource* source);

// From now on the file at this path is kept up to date.
void start_ready_file(const char* path);
// The program waits for input: bring the file up to date.
void update_ready_file();
// No file is left behind that speaks of windows that are gone.
void remove_ready_file();
