// Base of every concrete recorder: uploading, timers, the ignore list, the run-command stack, and what a
// window class means to a recorder.
#pragma once

#include "framework/CString.h"
#include "framework/mrApi.h"
#include "hooks/mrFactoryType.h"
#include "model/mrActionFactory.h"
#include "model/mrBaseWindow.h"
#include "model/mrWindowInfo.h"

#include <windows.h>

#include <new>
#include <vector>

// A command that a window procedure is working on.
struct mrCommandRec {
  HWND window;
  int command;
};

class MR_API mrBaseWindowFactory : public mrActionFactory {
public:
  static constexpr int max_ignore_commands = 16;

  // script_name: the control in the script's declarations. class_name: the prefix of the window classes that
  // this factory records; the script name takes its place when it is empty. Both are literals, not owned.
  mrBaseWindowFactory(const char* script_name, const char* class_name);

  // Empties the run-command stack.
  void on_start_record() override;

  // Declares a control of this factory's class by its host-given name or its control id.
  mrDeclarationRes get_declaration(const mrWindowInfo* info, CString& declaration, CString& search,
                                   CString& identifier) override;

  // Slot 8. Whether a window class belongs to this factory: it begins with the factory's class name, byte for
  // byte.
  virtual bool is_wrapped_type(const char* class_name) const;

  // The same for a window that a hooked message is about; false for a null one. Host process, inside a hook.
  bool is_wrapped_window(HWND window) const;

  // Uploads one record of this factory to the recorder window. Host process, GUI thread; data is borrowed.
  void send_data(unsigned __int64 size, void* data);

  // A short wait of a recogniser, in milliseconds of the tick count. Host process, these five.
  void set_timeout(unsigned long ms) { m_timeout = ms; }
  // Starts the wait anew, from now. A tick count of exactly 0 leaves the timer looking unset; accepted.
  void set_timer();
  // Ends the wait; the timeout stays.
  void stop_timer() { m_timer_start = 0; }
  // A wait was started and not ended; true after its timeout as well.
  bool is_timer_set() const { return m_timer_start != 0; }
  // More than the timeout has passed; false exactly at the timeout and when the timer is not set.
  bool is_timeout() const;

  // The commands that are not recorded. The count is shared by all processes, the list itself is per process.
  // Deliberate: the recorder process sets both, a host process sees the count and its own list.
  // An id beyond the sixteenth is dropped.
  static void add_ignore_command(int id);
  // Sets the count to 0, for all processes.
  static void clear_ignore_commands();
  // Whether the id is among the first entries, as many as count, of this process's list.
  static bool is_ignore(int id);

protected:
  // Remembers that a window procedure is working on a command, so that the same command travelling on to a
  // parent is not recorded again. Host process, GUI thread; out of memory it is not remembered.
  static void add_run_command(HWND window, int command);

  // The class name under which a window is compared and declared, without what changes from build to build
  // and run to run: all from the first colon on, one final "d" or "D", final digits. "#32770" stays. Recorder
  // process.
  CString filter_class_name(const char* class_name);

  // Declares a window by the name that the host gave it: the ByID form of script_name (of this factory's own
  // name). Then declaredByName; declaredNot, and the texts untouched, when it has none. Recorder process.
  mrDeclarationRes get_named_declaration(const mrWindowInfo* info, CString& declaration, CString& search,
                                         CString& identifier, const char* script_name);
  mrDeclarationRes get_named_declaration(const mrWindowInfo* info, CString& declaration, CString& search,
                                         CString& identifier);

  const char* get_script_name() const { return m_script_name; }

  // The symbolic name of a window's control id in its dialog ("IDC_" names); what the recorder's namer
  // answers, which never fails. Recorder process.
  CString get_id_name(const mrWindowInfo* info) const;

  // The last recorded action when it is of class ACTION and on this window (element 0 of its path), else
  // null: what a builder may merge into. Recorder process. Raises CInvalidArgException for such an action
  // with an empty path.
  template <class ACTION>
  ACTION* last_action_on(HWND window) const {
    ACTION* action = dynamic_cast<ACTION*>(get_last_action());
    return action && action->get_path()[0]->window == window ? action : nullptr;
  }

  // A new action of class ACTION; null when there is no memory for it or its path. What else its constructor
  // raises goes through: CInvalidArgException for a null window, where it writes into the path. Recorder
  // process.
  template <class ACTION, class... ARGUMENTS>
  static ACTION* make_action(const ARGUMENTS&... arguments) {
    try {
      return new ACTION(arguments...);
    } catch (const std::bad_alloc&) {
      return nullptr;
    }
  }

  // Appends an action with its statement to the recorder's list, which owns it from then on; a null entry for
  // an action that could not be made. Recorder process.
  void append_action(mrBaseWindow* action, const CString& statement);

  // Appends an action of class ACTION, made from (window, this), with its statement. Recorder process.
  template <class ACTION>
  void append_statement(HWND window, const CString& statement) {
    append_action(make_action<ACTION>(window, this), statement);
  }

  // The same, unless the last action is of that class and on that window: it takes the statement then, so
  // that a run of changes of one control ends as its last state. Recorder process.
  template <class ACTION>
  void replace_or_append_statement(HWND window, const CString& statement) {
    if (ACTION* const last = last_action_on<ACTION>(window))
      last->set_action_string(statement);
    else
      append_statement<ACTION>(window, statement);
  }

  // Appends an action like append_statement, with the gesture of the mouse that it stands for. Recorder
  // process.
  template <class ACTION>
  void append_mouse_statement(HWND window, const mrBaseWindowActionStruct& mouse, const CString& statement) {
    ACTION* const action = make_action<ACTION>(window, this);
    if (action)
      action->set_action_struct(mouse);
    append_action(action, statement);
  }

  // Whether the user could have done something to a control: it is visible and enabled. Host process.
  static bool is_operable(HWND control) { return IsWindowVisible(control) && IsWindowEnabled(control); }

  static int m_ignore_commands[max_ignore_commands];  // per process
  // Valid entries of it. Deliberate: this one is in the shared block and common to all processes.
  static int& m_ignore_commands_count;
  static std::vector<mrCommandRec> mr_commands_stack;  // per process, host GUI thread

private:
  mrAction* get_last_action() const;  // null when nothing is recorded yet

  const char* m_script_name;
  const char* m_class_name;
  DWORD m_timer_start = 0;  // ticks; 0 when not set
  DWORD m_timeout = 0;      // milliseconds
};
