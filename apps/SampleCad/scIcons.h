// The pictures of commands, drawn by the program: no bitmaps to keep.
#pragma once

#include <windows.h>
#include <commctrl.h>

enum scIcon {
  iconNew,
  iconOpen,
  iconSave,
  iconUndo,
  iconRedo,
  iconGrid,
  iconAxes,
  iconRotate,
  iconPan,
  iconZoom,
  iconSelect,
  iconBox,
  iconCylinder,
  iconCone,
  iconSphere,
  iconTorus,
  iconGear,
  iconFront,
  iconRight,
  iconTop,
  iconIsometric,
  iconFit,
  iconEye,
  iconEyeOff,
  iconStar,
  iconStarOff,
  icon_count
};

constexpr int icon_size = 20;  // pixels, square

// One picture per scIcon, in order. Made at the first call, kept for the program's life.
HIMAGELIST command_icons();
