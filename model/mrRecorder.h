// The recording session: what the recorder application creates once and keeps for its life.
//
// Recorder process; every member is used on the thread that owns the recorder window. WM_COPYDATA arrives
// there synchronously, so there are no locks.
#pragma once

#include "framework/CArray.h"
#include "framework/CList.h"
#include "framework/CString.h"
#include "framework/mrApi.h"
#include "model/mrAction.h"
#include "model/mrActionFactory.h"
#include "model/mrWindowInfo.h"
#include "namer/mrIDNamer.h"

#include <windows.h>

#include <memory>
#include <string>
#include <unordered_map>

class MR_API mrRecorder {
public:
  // One declared window of the script.
  struct mrWindowNode {
    mrWindowInfo info;                              // copied from an action's path
    mrWindowNode* parent = nullptr;                 // not owned; null for the root
    CArray<mrWindowNode*, mrWindowNode*> children;  // not owned: the recorder's windows array owns every node
    CString declaration;                            // the window expression under its parent
    CString base_identifier;                        // the identifier proposed for the window
    CString identifier;                             // the unique one that the script uses
    int state = 0;                                  // flags of script assembly, see mrNodeState
    // Children by declaration: with thousands of windows below the root a walk would make assembly quadratic.
    std::unordered_map<std::string, mrWindowNode*> children_by_declaration;
  };

  // Gives the factories 1 to 17 their recorder and loads the resource map; without one ids are written as
  // numbers. Deliberate: the message logger (type 18) gets no recorder.
  mrRecorder();
  virtual ~mrRecorder();

  mrRecorder(const mrRecorder&) = delete;
  mrRecorder& operator=(const mrRecorder&) = delete;

  // Starts recording a host thread; recorder is the window whose procedure passes WM_COPYDATA on to copy_data
  // and takes the stop notification (mr_stop_notification). False when a recording already runs anywhere:
  // everything is kept then. Otherwise the last recording's actions and windows are gone. Deliberate: a
  // thread that cannot be hooked is not reported: true as well, and no record ever comes.
  bool start_recording(HWND recorder, unsigned long thread_id);
  // Removes the hooks. The actions stay, for get_script.
  void stop_recording();

  // Raw mode: only the generic window recorder records, and no commands. Common to all processes.
  bool get_raw_mode() const;
  void set_raw_mode(bool raw);

  // Commands that are not recorded; at most 16, further ones are dropped.
  void add_ignore_command(int id);
  void clear_ignore_commands();

  // Takes one upload: dwData and lpData of a WM_COPYDATA that reached the recorder window. A record of an
  // unknown type is dropped.
  void copy_data(unsigned __int64 type, void* data);

  // What was recorded, in order; owned by the recorder. Factories append to it and edit or remove its tail.
  CList<mrAction*, mrAction*>& get_actions() { return m_actions; }

  // The names of ids, from the map that was loaded when the recorder was made; owned by the recorder.
  mrIDNamer& get_namer() { return m_namer; }

  // Replaces script with the whole script job, lines ended by CR LF. The actions stay, so it may be called
  // again. The windows of their paths enter the tree, see get_declaration.
  void get_script(CString& script);

  // Makes sure that the windows of a path are in the tree and sets call to "  NAME()." with the function of
  // the deepest declared one. path may be changed: the level of an active dialog loses its window and text.
  void get_declaration(mrWindowPath& path, CString& call);

  // A valid script identifier: letters, digits and underscores of the text, blanks as underscores.
  static CString make_identifier(const CString& text);

  // Escapes a text for a place inside double quotes in the script.
  static CString quote_string(const CString& text);

protected:
  using mrWindowNodes = CArray<mrWindowNode*, mrWindowNode*>;

  // Deletes every action and empties the list.
  void clear_actions();
  // Deletes every node; the root stays, without children.
  void clear_windows();

  // Appends a new node to a list that is not the windows array.
  mrWindowNode* add_temp_node(mrWindowNodes& list, const mrWindowInfo* info, const CString& declaration,
                              const CString& base_identifier);
  // Links a node into the tree, makes its identifier unique and takes ownership.
  void add_window(mrWindowNode* parent, mrWindowNode* node);

  // The declaration of one level by the first factory, from type 17 down, that has one; the identifier is
  // valid then.
  mrDeclarationRes get_declaration(const mrWindowInfo* info, CString& declaration, CString& search,
                                   CString& identifier);

  // Appends the functions of a node and of those below it that need one, parents first.
  void create_declarations(mrWindowNode* node, CString& script);
  // Appends the function of one node.
  void create_declaration_int(mrWindowNode* node, CString& script);

  CList<mrAction*, mrAction*> m_actions{10};
  mrWindowNodes m_windows;  // every node since the last clear, in order of creation
  mrWindowNode m_root;      // no window of its own, never deleted
  mrIDNamer m_namer;

private:
  void collect_declared_levels(mrWindowPath& path, mrWindowNodes& list);
  mrWindowNode* merge_into_tree(const mrWindowNodes& list);
  void append_set_focus(const mrAction* action, const mrWindowNode*& focused, CString& body);

  std::unordered_map<std::string, int> m_identifier_counts;  // nodes in m_windows by base identifier
};
