// Any window: mouse buttons, menu and accelerator commands, Close. The recorder of last resort, which sees
// what no other one has claimed, and the only one that is asked in raw mode.
#pragma once

#include "framework/mrApi.h"
#include "hooks/mrHookedMessage.h"
#include "model/mrBaseWindowFactory.h"

#include <cstddef>
#include <cstdint>

enum mrWindowRecKind : uint32_t {
  windowMouse = 0,
  windowCommand = 1,
  windowClose = 2,
};

// What the host uploads; 40 bytes, little-endian. Fields that a kind does not use keep the previous record's
// values.
struct mrWindowRec {
  uint32_t kind;  // mrWindowRecKind
  uint32_t padding_4;
  HWND window;       // that the message was for
  uint32_t message;  // mouse: the message, 513 to 521; command: the command id
  uint32_t padding_20;
  WPARAM wparam;  // mouse: MK_ key state
  LPARAM lparam;  // mouse: x and y, signed client pixels in the two low words
};
static_assert(sizeof(mrWindowRec) == 40, "travels between processes");
static_assert(offsetof(mrWindowRec, window) == 8 && offsetof(mrWindowRec, message) == 16 &&
                  offsetof(mrWindowRec, wparam) == 24 && offsetof(mrWindowRec, lparam) == 32,
              "travels between processes");

class MR_API mrWindowFactory : public mrBaseWindowFactory {
public:
  mrWindowFactory();

  mrFactoryType get_factory_type() override;
  // Claims presses, releases and double clicks of the mouse buttons, menu and accelerator commands of a
  // visible window, and SC_CLOSE. Ignored commands, commands in raw mode and a command on its way up to the
  // parents are claimed, not uploaded. A message that returned is left; it may end the running command.
  bool handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) override;
  // Press and release in one place become a click, a click and a double click there the double click,
  // whatever time passed; a release that follows no press on the same window is dropped. Commands, named by
  // the resource map, and Close are never merged. Asks the host only for the path of a new action.
  void copy_data(void* data) override;
  // Declares every window that no control factory declares.
  mrDeclarationRes get_declaration(const mrWindowInfo* info, CString& declaration, CString& search,
                                   CString& identifier) override;
  // Records the request in place of the right click that made it. Always 1; the name is not used.
  mrContextMenuRes context_menu_invoke(HWND window, const char* name, const CPoint& point) override;

private:
  bool on_message(int kind, const mrHookedMessage& msg);
  bool on_command(int kind, const mrHookedMessage& msg);
  void on_return(const mrHookedMessage& msg);

  void build_mouse(const mrWindowRec& rec);
  void append_mouse_action(HWND window, const mrBaseWindowActionStruct& mouse);
  static void turn_into(mrBaseWindow* action, const mrBaseWindowActionStruct& mouse);

  mrDeclarationRes declare_child_window(const mrWindowInfo* info, const CString& class_name,
                                        CString& declaration, CString& search, CString& identifier);
};
