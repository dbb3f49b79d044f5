// Track bars: the position in which the user leaves a slider.
#pragma once

#include "framework/mrApi.h"
#include "hooks/mrHookedMessage.h"
#include "model/mrBaseWindowFactory.h"

#include <windows.h>

#include <cstddef>
#include <cstdint>

// What the host uploads; 16 bytes, little-endian.
struct mrTrackBarRec {
  HWND trackbar;
  int64_t pos;  // in the slider's own units
};
static_assert(sizeof(mrTrackBarRec) == 16 && offsetof(mrTrackBarRec, pos) == 8, "travels between processes");

class MR_API mrTrackBar : public mrBaseWindow {
public:
  mrTrackBar(HWND trackbar, mrBaseWindowFactory* factory) : mrBaseWindow(trackbar, factory) {}
};

class MR_API mrTrackBarFactory : public mrBaseWindowFactory {
public:
  mrTrackBarFactory();

  mrFactoryType get_factory_type() override;
  // Claims every message to a track bar, and the end of a movement that its parent is told of.
  bool handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) override;
  // The position travels in the record.
  void copy_data(void* data) override;
  // 0: track bars offer no context menu action.
  mrContextMenuRes context_menu_invoke(HWND window, const char* class_name, const CPoint& point) override;
};
