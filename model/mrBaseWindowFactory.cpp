// Services of both processes; each function says in the header where it runs.
#include "model/mrBaseWindowFactory.h"

#include "hooks/mrChannel.h"
#include "hooks/mrClock.h"
#include "hooks/mrHookedMessage.h"
#include "hooks/mrSharedBlock.h"
#include "model/mrRecorder.h"

#include <algorithm>
#include <cstring>

int mrBaseWindowFactory::m_ignore_commands[max_ignore_commands];
int& mrBaseWindowFactory::m_ignore_commands_count = shared_block().ignore_commands_count;
std::vector<mrCommandRec> mrBaseWindowFactory::mr_commands_stack;

mrBaseWindowFactory::mrBaseWindowFactory(const char* script_name, const char* class_name)
    : m_script_name(script_name), m_class_name(*class_name ? class_name : script_name) {}

void mrBaseWindowFactory::on_start_record() { mr_commands_stack.clear(); }

bool mrBaseWindowFactory::is_wrapped_type(const char* class_name) const {
  return strncmp(class_name, m_class_name, strlen(m_class_name)) == 0;
}

// ---- host process -------------------------------------------------------------------------------

bool mrBaseWindowFactory::is_wrapped_window(HWND window) const {
  return window && is_wrapped_type(hooked_class_name(window));
}

void mrBaseWindowFactory::send_data(unsigned __int64 size, void* data) {
  send_copy_data(static_cast<uint32_t>(size), data, get_factory_type());
}

void mrBaseWindowFactory::set_timer() { m_timer_start = mr_tick_count(); }

bool mrBaseWindowFactory::is_timeout() const {
  // Unsigned: right across the wrap of the tick count.
  return is_timer_set() && mr_tick_count() - m_timer_start > m_timeout;
}

void mrBaseWindowFactory::add_run_command(HWND window, int command) {
  try {
    mr_commands_stack.push_back({window, command});
  } catch (const std::bad_alloc&) {
    // The host is out of memory: a command recorded twice is the lesser harm.
  }
}

// ---- ignore list --------------------------------------------------------------------------------

void mrBaseWindowFactory::add_ignore_command(int id) {
  if (m_ignore_commands_count < max_ignore_commands)
    m_ignore_commands[m_ignore_commands_count++] = id;
}

void mrBaseWindowFactory::clear_ignore_commands() { m_ignore_commands_count = 0; }

bool mrBaseWindowFactory::is_ignore(int id) {
  const int* end = m_ignore_commands + m_ignore_commands_count;
  return std::find(static_cast<const int*>(m_ignore_commands), end, id) != end;
}

// ---- recorder process ---------------------------------------------------------------------------

CString mrBaseWindowFactory::filter_class_name(const char* class_name) {
  std::string name(class_name, strcspn(class_name, ":"));
  // Deliberate: a final "d" goes from every name, whatever it is; debug builds of controls carry one.
  if (!name.empty() && (name.back() == 'd' || name.back() == 'D'))
    name.pop_back();
  if (name == "#32770")
    return name;
  name.erase(name.find_last_not_of("0123456789") + 1);
  return name;
}

mrAction* mrBaseWindowFactory::get_last_action() const {
  auto& actions = get_recorder()->get_actions();
  return actions.IsEmpty() ? nullptr : actions.GetTail();
}

void mrBaseWindowFactory::append_action(mrBaseWindow* action, const CString& statement) {
  if (action)
    action->set_action_string(statement);
  get_recorder()->get_actions().AddTail(action);
}
