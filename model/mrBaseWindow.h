// An action on a window: the window's path and the statement that follows it. Recorder process only.
#pragma once

#include "framework/CString.h"
#include "framework/mrApi.h"
#include "model/mrAction.h"
#include "model/mrWindowInfo.h"

#include <windows.h>

class mrBaseWindowFactory;

// Kinds of window actions. Recorders may use further values of their own.
enum mrBaseWindowActionKind {
  actionNone = -1,
  actionMouseDown = 0,
  actionMouseUp = 1,
  actionClick = 2,
  actionDoubleClick = 3,
};

// The mouse part of a window action. kind to y are compared and copied as one unit when clicks are merged.
struct mrBaseWindowActionStruct {
  int kind = actionNone;
  int button = 0;  // 1 left, 2 right, 3 middle
  int x = 0;       // client pixels, signed: a captured mouse leaves the window
  int y = 0;
  int key_state = 0;  // MK_ flags without the flag of the button itself
};

class MR_API mrBaseWindow : public mrAction {
public:
  // Records the path of the window (null: an empty path) by asking the host; factory is not owned.
  mrBaseWindow(HWND window, mrBaseWindowFactory* factory);

  // Appends the call of the window's function and the statement. Declares the path's windows in the
  // recorder's tree.
  void get_script(CString& script) override;

  // Frees the path array. Deliberate: its mrWindowInfo objects stay allocated, script assembly may still hold
  // them.
  ~mrBaseWindow() override;

  // The window acted on first, its top-level ancestor last. Borrowed from the action.
  const mrWindowPath& get_path() const { return m_path; }
  // The host's window that the action is about; null when there is none. It may be gone by now.
  HWND get_window() const { return m_window; }

  // The mouse part, of kind actionNone until it is set; the reference is into the action. Changing it does
  // not change the statement.
  mrBaseWindowActionStruct& get_action_struct() { return m_action_struct; }
  void set_action_struct(mrBaseWindowActionStruct action_struct) { m_action_struct = action_struct; }

  // The statement that follows the window expression, such as "Click(1, 10, 20, 0);".
  const CString& get_action_string() const { return m_action_string; }
  void set_action_string(const CString& action_string) { m_action_string = action_string; }

protected:
  // Appends one level for the window and each of its parents. Sends messages to the host, so never while the
  // host waits for anything but this recorder. A null window appends nothing.
  void fill_hierarchy(HWND window);

  mrWindowPath m_path;
  HWND m_window;
  CString m_action_string;
  mrBaseWindowActionStruct m_action_struct;
};
