// How the time for assembling a script grows with its actions and windows: it must grow with their number,
// not with its square.
//   script_assembly [ROUNDS]
//
// The actions are built without windows: controls of dialogs of one main window, each level described as a
// real one would be.
#include "bench/stopwatch.h"
#include "hooks/mrDispatcher.h"
#include "hooks/mrFactoryType.h"
#include "model/mrBaseWindow.h"
#include "model/mrBaseWindowFactory.h"
#include "model/mrRecorder.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <vector>

namespace {

constexpr int action_counts[] = {1000, 10000, 100000};
constexpr int window_counts[] = {100, 10000};
constexpr int controls_per_dialog = 20;
constexpr int default_rounds = 5;

// ---- described windows ------------------------------------------------------------------------------

mrWindowInfo main_window() {
  mrWindowInfo info;
  strcpy(info.module, "host");
  strcpy(info.text, "Host");
  strcpy(info.class_name, "HostFrame");
  info.flags = mr_window_not_child;
  info.top_level = 1;
  return info;
}

mrWindowInfo dialog(int number) {
  mrWindowInfo info;
  strcpy(info.module, "host");
  snprintf(info.text, sizeof info.text, "Dialog %d", number);
  strcpy(info.class_name, "#32770");
  info.style = WS_CHILD | WS_VISIBLE;
  return info;
}

mrWindowInfo control(int number) {
  mrWindowInfo info;
  strcpy(info.module, "host");
  snprintf(info.text, sizeof info.text, "Control %d", number);
  strcpy(info.class_name, "HostControl");
  info.style = WS_CHILD | WS_VISIBLE;
  info.id = 1000 + number % controls_per_dialog;
  return info;
}

// The descriptions outlive the actions and are shared by them; assembling leaves such windows as they are.
class Windows {
public:
  explicit Windows(int count) : m_main(main_window()) {
    for (int i = 0; i < count; ++i) {
      if (i % controls_per_dialog == 0)
        m_dialogs.push_back(dialog(i / controls_per_dialog));
      m_controls.push_back(control(i));
    }
  }

  // The levels of one window, the innermost first.
  std::vector<mrWindowInfo*> path(int number) {
    const size_t index = static_cast<size_t>(number) % m_controls.size();
    return {&m_controls[index], &m_dialogs[index / controls_per_dialog], &m_main};
  }

private:
  mrWindowInfo m_main;
  std::deque<mrWindowInfo> m_dialogs;
  std::deque<mrWindowInfo> m_controls;
};

// An action on a window that is not there.
class DescribedAction : public mrBaseWindow {
public:
  DescribedAction(const std::vector<mrWindowInfo*>& path, mrBaseWindowFactory* factory)
      : mrBaseWindow(nullptr, factory) {
    for (mrWindowInfo* level : path)
      m_path.Add(level);
    m_action_string = "Click(1, 10, 20, 0);";
  }
};

// ---- measuring --------------------------------------------------------------------------------------

// Milliseconds for the script of a fresh recording.
double assemble(int actions, int windows) {
  mrRecorder recorder;
  auto* const factory = static_cast<mrBaseWindowFactory*>(get_factory(factoryWindow, true));
  Windows described(windows);
  for (int i = 0; i < actions; ++i)
    recorder.get_actions().AddTail(new DescribedAction(described.path(i), factory));
  CString script;
  const double start = seconds();
  recorder.get_script(script);
  const double ms = (seconds() - start) * 1000;
  if (script.GetLength() < actions * 30) {
    fprintf(stderr, "script_assembly: the script is too short\n");
    exit(1);
  }
  return ms;
}

double median_of(int rounds, int actions, int windows) {
  std::vector<double> times;
  for (int round = 0; round < rounds; ++round)
    times.push_back(assemble(actions, windows));
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
  const int rounds = argc > 1 ? std::max(atoi(argv[1]), 1) : default_rounds;
  printf("get_script, median of %d rounds; ratio: time per action against that of the line above\n", rounds);
  for (const int windows : window_counts) {
    double last_us = 0;
    for (const int actions : action_counts) {
      const double ms = median_of(rounds, actions, windows);
      const double us = ms * 1000 / actions;
      printf("%d windows %d actions %.1f ms %.2f us/action", windows, actions, ms, us);
      if (last_us > 0)
        printf(" ratio=%.2f", us / last_us);
      printf("\n");
      fflush(stdout);
      last_us = us;
    }
  }
  return 0;
}
