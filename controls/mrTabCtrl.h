// Tab controls of the system, tab windows of the BCG library and GX tab beams: the user switches to another
// tab.
#pragma once

#include "framework/mrApi.h"
#include "hooks/mrHookedMessage.h"
#include "model/mrBaseWindowFactory.h"

#include <windows.h>

#include <cstddef>
#include <cstdint>

// What the host uploads; 280 bytes, little-endian.
struct mrTabCtrlRec {
  HWND tab;
  int64_t index;           // of the current tab, -1 when none
  char text[mr_max_text];  // its caption, zero-terminated; empty when none could be read
  uint32_t padding_276;
};
static_assert(sizeof(mrTabCtrlRec) == 280, "travels between processes");
static_assert(offsetof(mrTabCtrlRec, index) == 8 && offsetof(mrTabCtrlRec, text) == 16,
              "travels between processes");

class MR_API mrTabCtrl : public mrBaseWindow {
public:
  mrTabCtrl(HWND tab, mrBaseWindowFactory* factory) : mrBaseWindow(tab, factory) {}
};

class MR_API mrTabCtrlFactory : public mrBaseWindowFactory {
public:
  mrTabCtrlFactory();

  mrFactoryType get_factory_type() override;
  // Claims every message to a tab window but WM_NOTIFY, which comes from the controls on its pages, and what
  // tells of another current tab, whichever window it is told to.
  bool handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) override;
  // The caption travels in the record: it is that of the moment.
  void copy_data(void* data) override;
  // Records whether the menu was opened on the current tab. 1, or 0 for a class that is no tab's.
  mrContextMenuRes context_menu_invoke(HWND window, const char* class_name, const CPoint& point) override;
  // Exactly "SysTabControl32", or beginning with "BCGTab" or "GXTabBeam".
  bool is_wrapped_type(const char* class_name) const override;

private:
  void upload_current_tab(HWND tab);
};
