// The recorder of this program: tells its actions line by line while they are recorded.
#pragma once

#include "framework/CString.h"
#include "model/mrRecorder.h"

#include <vector>

class mrSessionRecorder : public mrRecorder {
public:
  // The lines of the actions that are new or have changed since the last call, in order. Deliberate: nothing
  // is said of an action that was taken off the list again.
  std::vector<CString> take_changed_lines();

  ptrdiff_t action_count() { return get_actions().GetCount(); }

private:
  struct Told {
    const mrAction* action;
    CString statement;
  };
  using ToldActions = std::vector<Told>;

  ToldActions last_actions(ptrdiff_t first);
  CString line_of(const Told& told);

  ToldActions m_told;  // every action of the list, as it was told
};
