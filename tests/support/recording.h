// A recorder in the test process: records in, action strings out.
#pragma once

#include "hooks/mrFactoryType.h"
#include "model/mrBaseWindow.h"
#include "model/mrRecorder.h"

#include <string>
#include <vector>

// A recorder whose protected parts tests reach.
class mrTestRecorder : public mrRecorder {
public:
  using mrRecorder::add_temp_node;
  using mrRecorder::add_window;
  using mrRecorder::clear_actions;
  using mrRecorder::clear_windows;
  using mrRecorder::create_declaration_int;
  using mrRecorder::create_declarations;
  using mrRecorder::get_declaration;
  using mrRecorder::m_actions;
  using mrRecorder::m_root;
  using mrRecorder::m_windows;
  using mrRecorder::mrWindowNodes;

  // Hands a record to its builder, as the recorder window would.
  template <class RECORD>
  void receive(int type, RECORD record) {
    copy_data(static_cast<unsigned __int64>(type), &record);
  }

  // The statements recorded so far, in order.
  std::vector<std::string> statements() {
    std::vector<std::string> all;
    for (POSITION position = m_actions.GetHeadPosition(); position;)
      all.push_back(static_cast<mrBaseWindow*>(m_actions.GetNext(position))->get_action_string().str());
    return all;
  }

  mrBaseWindow* last_action() { return static_cast<mrBaseWindow*>(m_actions.GetTail()); }
};
