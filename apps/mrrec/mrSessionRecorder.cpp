#include "apps/mrrec/mrSessionRecorder.h"

#include "model/mrBaseWindow.h"

#include <algorithm>

// Builders edit the end of the list only; looking further back each time would make a long recording slow.
static constexpr ptrdiff_t watched_actions = 32;

static CString statement_of(const mrAction* action) {
  const auto* const window_action = dynamic_cast<const mrBaseWindow*>(action);
  return window_action ? window_action->get_action_string() : CString();
}

// The actions of the list from the index on.
mrSessionRecorder::ToldActions mrSessionRecorder::last_actions(ptrdiff_t first) {
  ToldActions last;
  POSITION position = get_actions().GetTailPosition();
  for (ptrdiff_t i = action_count(); i > first; --i) {
    const mrAction* const action = get_actions().GetPrev(position);
    last.push_back({action, statement_of(action)});
  }
  std::reverse(last.begin(), last.end());
  return last;
}

// "NAME().STATEMENT" with the name that the window's function will have, but for the number that makes it
// unique. Asks for one level at a time: to declare the whole path would change the window tree and the path.
CString mrSessionRecorder::line_of(const Told& told) {
  const auto* const action = dynamic_cast<const mrBaseWindow*>(told.action);
  for (ptrdiff_t level = 0; action && level < action->get_path().GetSize(); ++level) {
    CString declaration;
    CString search;
    CString identifier;
    const mrDeclarationRes result =
        get_declaration(action->get_path()[level], declaration, search, identifier);
    // The two that get no function of their own.
    if (result != declaredNot && result != declaredUntitledDialog)
      return identifier + "()." + told.statement;
  }
  return told.statement;
}

std::vector<CString> mrSessionRecorder::take_changed_lines() {
  const ptrdiff_t told_count = static_cast<ptrdiff_t>(m_told.size());
  const ptrdiff_t first = std::max<ptrdiff_t>(std::min(told_count, action_count()) - watched_actions, 0);
  ToldActions last = last_actions(first);
  // An action keeps its place or moves towards the head, when one before it is taken off.
  const auto old_begin = m_told.begin() + first;

  std::vector<CString> changed;
  for (const Told& now : last) {
    const bool was_told = std::any_of(old_begin, m_told.end(), [&](const Told& old) {
      return old.action == now.action && old.statement == now.statement;
    });
    if (!was_told)
      changed.push_back(line_of(now));
  }
  m_told.erase(old_begin, m_told.end());
  m_told.insert(m_told.end(), last.begin(), last.end());
  return changed;
}
