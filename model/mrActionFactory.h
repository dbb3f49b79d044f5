// Root of the recorders. A pure interface: one object per kind of control and process, which recognises user
// actions in the host process and turns the uploaded records into actions in the recorder process.
#pragma once

#include "framework/CPoint.h"
#include "framework/CString.h"
#include "framework/mrApi.h"

#include <windows.h>

class mrRecorder;
enum mrFactoryType : int;
struct mrWindowInfo;

// How a factory declares a window in the script.
enum mrDeclarationRes {
  declaredNot = 0,          // not this factory's window: the next factory is asked
  declaredByControlId = 1,  // under its parent, "%s(%s)" and its kin
  declaredMainWindow = 2,   // the MainWindow form
  declaredByName = 3,       // by the name that the host gives the window, the ByID form
  declaredActiveDocument = 4,
  declaredActiveDialog = 5,    // or another root that stands for what is active: script assembly goes on
                               // directly with the top-level window
  declaredUntitledDialog = 6,  // untitled child dialog without id, identifier "Dialog_"
};

// A factory's answer to a context menu request. 0: not claimed, the next factory is asked. The first nonzero
// answer decides: with 1 the menu command is recorded, with any other value it is dropped.
enum mrContextMenuRes {
  contextMenuNotClaimed = 0,
  contextMenuRecorded = 1,
  contextMenuRefused = 2,
};

// The virtual operations stand in slot order: they are part of the exported interface.
class MR_API mrActionFactory {
public:
  // The factory's kind: its place in the dispatch and the dwData of its uploads.
  virtual mrFactoryType get_factory_type() = 0;

  // A recording starts. Called in the recorder process before the hooks are installed, and in the host, on
  // its GUI thread, as the recording's first message is offered (hooks/mrDispatcher.h).
  virtual void on_start_record() = 0;

  // One hooked message; kind is an mrHookKind, the other arguments are the hook's. True claims the message:
  // no other factory sees it. Host process, GUI thread, inside a hook: nothing may be thrown.
  virtual bool handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) = 0;

  // Turns one received record of this factory into actions of the recorder's list. Recorder process; data is
  // borrowed for the call and has the size that this factory sends.
  virtual void copy_data(void* data) = 0;

  // Declares a window of this factory: the declaration under its parent, the form that searches at any depth,
  // and the identifier proposed for its function. The texts are untouched when the result is 0. Recorder
  // process.
  virtual mrDeclarationRes get_declaration(const mrWindowInfo* info, CString& declaration, CString& search,
                                           CString& identifier) = 0;

  // Asks whether a context menu opened with the mouse on a window of this class is this factory's; it may
  // record a statement for it. point is in the window's client pixels. Recorder process.
  virtual mrContextMenuRes context_menu_invoke(HWND window, const char* name, const CPoint& point) = 0;

  virtual ~mrActionFactory() = default;

  // The recorder of this process, not owned; null in a host process.
  mrRecorder* get_recorder() const { return m_recorder; }
  void set_recorder(mrRecorder* recorder) { m_recorder = recorder; }

private:
  mrRecorder* m_recorder = nullptr;
};
