// One level of a window path: what stays stable about a window between two runs of the host.
#pragma once

#include "framework/CArray.h"
#include "framework/mrApi.h"

#include <windows.h>

constexpr int mr_window_text_size = 260;  // bytes of each text, final zero included

// The window has no WS_CHILD style: a top-level or an owned window. (For a level of a toolbar path: the id is
// a position, not a command.)
constexpr int mr_window_not_child = 0x10;

// Class names that stand for an untitled child dialog found by its label.
constexpr const char* mr_dialog_by_visible_control_class = "mrDialogByVisControlClass";
constexpr const char* mr_dialog_by_control_class = "mrDialogByControlClass";

struct mrWindowInfo {
  char module[mr_window_text_size] = "";      // main module of the owning process, up to its first "."
  char text[mr_window_text_size] = "";        // window text; of an untitled child dialog, its label's
  char class_name[mr_window_text_size] = "";  // window class, or one of the markers above
  char name[mr_window_text_size] = "";        // given by the host; empty when it gives none
  char resource_library[mr_window_text_size] =
      "";          // of the dialog that contains the window; empty when not given
  __int64 id = 0;  // control id; 0 without WS_CHILD; the label's for such a dialog
  __int64 style = 0;
  __int64 ex_style = 0;
  int flags = 0;  // mr_window_not_child
  HWND window = nullptr;
  POINT label_position = {0, 0};        // of the label from the dialog's top left corner, screen pixels
  int top_level = 0;                    // 1 when the window has no parent
  unsigned int dialog_template_id = 0;  // of the dialog that contains the window; 0 when unknown
};

// Element 0 is the window acted on, the last its top-level ancestor.
using mrWindowPath = CArray<mrWindowInfo*, mrWindowInfo*>;
