// A diagnostic recorder: the messages of one chosen host window, a line each. Ctrl over a window starts
// logging it, Shift stops. No ordinary build offers it a message; one with the option MR_ROUTE_LOGGER offers
// it every one.
#pragma once

#include "framework/mrApi.h"
#include "hooks/mrHookedMessage.h"
#include "model/mrBaseWindowFactory.h"

#include <cstddef>
#include <cstdint>

// What the host uploads; 48 bytes, little-endian.
struct mrLoggerRec {
  uint32_t kind;  // mrHookKind, 1 to 3
  uint32_t padding_4;
  HWND window;
  uint32_t message;
  uint32_t padding_20;
  WPARAM wparam;
  LPARAM lparam;
  // kind 3: the window procedure's result; kind 2 with WM_CREATE: the CREATESTRUCT's menu; else the last
  // record's value
  uint64_t extra;
};
static_assert(sizeof(mrLoggerRec) == 48, "travels between processes");
static_assert(offsetof(mrLoggerRec, window) == 8 && offsetof(mrLoggerRec, message) == 16 &&
                  offsetof(mrLoggerRec, wparam) == 24 && offsetof(mrLoggerRec, lparam) == 32 &&
                  offsetof(mrLoggerRec, extra) == 40,
              "travels between processes");

class MR_API mrLoggerFactory : public mrBaseWindowFactory {
public:
  mrLoggerFactory();

  mrFactoryType get_factory_type() override;
  // Forgets the chosen window, in all processes.
  void on_start_record() override;
  // Always true: a build that routes messages here routes them nowhere else.
  bool handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) override;
  // Appends one line; drops it while no recorder was set, which the recording session does not do for the
  // logger.
  void copy_data(void* data) override;
  // A line has no window: "_". Anything else is not the logger's.
  mrDeclarationRes get_declaration(const mrWindowInfo* info, CString& declaration, CString& search,
                                   CString& identifier) override;
  // Always 0: the logger records no context menu.
  mrContextMenuRes context_menu_invoke(HWND window, const char* name, const CPoint& point) override;

  // The name of a message, or its number in hexadecimal.
  static void get_message_text(unsigned int message, CString& text);

private:
  void log(int kind, const mrHookedMessage& msg);
  void choose_window(const mrHookedMessage& msg);
};
