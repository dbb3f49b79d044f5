// What recording costs the host: messages per second through the GUI thread of a host in another process,
// (a) not hooked, (b) hooked by a library whose four procedures only pass on, (c) recorded.
//   hook_overhead [ROUNDS [TEXT [CLASS]]]
//
// TEXT limits it to the lines that begin with it; CLASS is the class of the window that gets the messages (by
// default one that no recorder knows).
// The host passes the messages through its thread by itself, so the way between the processes hides nothing.
// Every message is measured in all three modes before the next round begins; the figures are medians.
#include "bench/hook_overhead.h"
#include "hooks/mrChannel.h"
#include "model/mrRecorder.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr const char* message_names[benchMessages] = {
    "WM_MOUSEMOVE",        "WM_TIMER",   "WM_NCHITTEST", "WM_PAINT", "move over a menu",
    "move over a toolbar", "WM_COMMAND", "left click"};
constexpr const char* way_names[benchWays] = {"sent", "posted"};
constexpr DWORD answer_limit_ms = 60000;
constexpr double wanted_ns = 8e6;  // of one measurement: short, so that most of them are not interrupted
constexpr int default_rounds = 21;
constexpr double c_over_b_limit = 1.2;

enum Mode { modeNotHooked, modeBare, modeRecorded, modes };

[[noreturn]] void fail(const char* reason) {
  fprintf(stderr, "hook_overhead: %s\n", reason);
  exit(1);
}

// ---- the recorder's side --------------------------------------------------------------------------

// Everything a recorder process does while the host is measured.
class Recorder {
public:
  Recorder() {
    WNDCLASSA window_class = {};
    window_class.lpfnWndProc = window_proc;
    window_class.hInstance = GetModuleHandleA(nullptr);
    window_class.lpszClassName = "HookBenchRecorder";
    RegisterClassA(&window_class);
    m_window = CreateWindowExA(0, "HookBenchRecorder", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                               window_class.hInstance, nullptr);
    SetWindowLongPtrA(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  }
  ~Recorder() { DestroyWindow(m_window); }
  Recorder(const Recorder&) = delete;
  Recorder& operator=(const Recorder&) = delete;

  HWND window() const { return m_window; }
  void start(DWORD thread) {
    if (!m_recorder.start_recording(m_window, thread))
      fail("a recording already runs");
  }
  void stop() { m_recorder.stop_recording(); }

  // The host's next answer, nanoseconds.
  double wait_for_answer() {
    m_answer = -1;
    const ULONGLONG start = GetTickCount64();
    while (m_answer < 0) {
      if (GetTickCount64() - start > answer_limit_ms)
        fail("the host does not answer");
      MsgWaitForMultipleObjects(0, nullptr, FALSE, 1000, QS_ALLINPUT);
      MSG msg;
      while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageA(&msg);
    }
    return m_answer;
  }

private:
  static LRESULT CALLBACK window_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    auto* const self = reinterpret_cast<Recorder*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (message == WM_COPYDATA) {
      const COPYDATASTRUCT& data = *reinterpret_cast<const COPYDATASTRUCT*>(lparam);
      self->m_recorder.copy_data(data.dwData, data.lpData);
      return TRUE;
    }
    if (message == bench_measured) {
      self->m_answer = static_cast<double>(wparam);
      return 0;
    }
    return DefWindowProcA(window, message, wparam, lparam);
  }

  mrRecorder m_recorder;
  HWND m_window = nullptr;
  double m_answer = -1;
};

// ---- the host -------------------------------------------------------------------------------------

class Host {
public:
  explicit Host(const std::string& window_class) {
    char path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    std::string command = path;
    command = command.substr(0, command.find_last_of('\\') + 1) + "hook_overhead_host.exe " + window_class;
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    if (!CreateProcessA(nullptr, &command[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &m_process))
      fail("cannot start the host");
    for (int tries = 0; tries < 1000 && !m_frame; ++tries) {
      Sleep(10);
      m_frame = FindWindowA(mr_bench_class, nullptr);
    }
    if (!m_frame)
      fail("the host shows no window");
  }
  ~Host() {
    TerminateProcess(m_process.hProcess, 0);
    CloseHandle(m_process.hThread);
    CloseHandle(m_process.hProcess);
  }
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  HWND frame() const { return m_frame; }
  DWORD thread() const { return m_process.dwThreadId; }

private:
  PROCESS_INFORMATION m_process = {};
  HWND m_frame = nullptr;
};

class BareHooks {
public:
  BareHooks() : m_library(LoadLibraryA("bare_hooks.dll")) {
    if (!m_library)
      fail("cannot load bare_hooks.dll");
  }
  void hook(DWORD thread) const {
    reinterpret_cast<void (*)(DWORD)>(reinterpret_cast<void*>(GetProcAddress(m_library, "hook_thread")))(
        thread);
  }
  void unhook() const {
    reinterpret_cast<void (*)()>(reinterpret_cast<void*>(GetProcAddress(m_library, "unhook_thread")))();
  }

private:
  HMODULE m_library;
};

// ---- measuring --------------------------------------------------------------------------------------

class Bench {
public:
  explicit Bench(const std::string& window_class) : m_host(window_class) {
    SendMessageA(m_host.frame(), bench_reply_to, reinterpret_cast<WPARAM>(m_recorder.window()), 0);
  }

  // Nanoseconds per message.
  double measure(Mode mode, mrBenchMessage message, mrBenchWay way, int count) {
    set_mode(mode, true);
    run(message, way, 10);  // loads what the first message loads
    const double ns = run(message, way, count);
    set_mode(mode, false);
    return ns / count;
  }

private:
  void set_mode(Mode mode, bool on) {
    if (mode == modeBare)
      on ? m_bare.hook(m_host.thread()) : m_bare.unhook();
    else if (mode == modeRecorded)
      on ? m_recorder.start(m_host.thread()) : m_recorder.stop();
  }
  double run(mrBenchMessage message, mrBenchWay way, int count) {
    PostMessageA(m_host.frame(), bench_measure, static_cast<WPARAM>(count), MAKELPARAM(message, way));
    return m_recorder.wait_for_answer();
  }

  Recorder m_recorder;
  Host m_host;
  BareHooks m_bare;
};

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const size_t middle = values.size() / 2;
  return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

// One message sent or posted: its times in each mode, round by round.
struct Line {
  mrBenchMessage message;
  mrBenchWay way;
  int counts[modes];
  std::vector<double> ns[modes];

  // c against b of the same round: the machine's other work hits both alike.
  double c_over_b() const {
    std::vector<double> ratios;
    for (size_t round = 0; round < ns[modeBare].size(); ++round)
      ratios.push_back(ns[modeRecorded][round] / ns[modeBare][round]);
    return median(ratios);
  }
  // Nobody records these: the recorder must not be felt.
  bool is_limited() const { return message != benchCommand && message != benchClick; }

  void print() const {
    printf("%s %s", message_names[message], way_names[way]);
    for (int mode = 0; mode < modes; ++mode)
      printf(" %c=%.0f", 'a' + mode, 1e9 / median(ns[mode]));
    printf(" c/b=%.2f\n", c_over_b());
    fflush(stdout);
  }
};

}  // namespace

int main(int argc, char** argv) {
  const int rounds = argc > 1 ? std::max(atoi(argv[1]), 1) : default_rounds;
  const std::string wanted = argc > 2 ? argv[2] : "";
  Bench bench(argc > 3 ? argv[3] : "");
  printf("messages per second through the host's GUI thread, median of %d rounds\n", rounds);
  printf("a: not hooked; b: hooks that only pass on; c: recorded; c/b: time of c over time of b\n");

  double worst = 0;
  for (int message = 0; message < benchMessages; ++message) {
    for (int way = 0; way < benchWays; ++way) {
      const std::string name = std::string(message_names[message]) + " " + way_names[way];
      if (name.compare(0, wanted.size(), wanted) != 0)
        continue;
      Line line = {static_cast<mrBenchMessage>(message), static_cast<mrBenchWay>(way), {}, {}};
      for (int mode = 0; mode < modes; ++mode) {
        const double ns = bench.measure(static_cast<Mode>(mode), line.message, line.way, 50);
        line.counts[mode] = std::clamp(static_cast<int>(wanted_ns / ns), 5, 1000000);
      }
      for (int round = 0; round < rounds; ++round) {
        // No mode is always the one behind another one.
        for (int i = 0; i < modes; ++i) {
          const Mode mode = static_cast<Mode>((i + round) % modes);
          line.ns[mode].push_back(bench.measure(mode, line.message, line.way, line.counts[mode]));
        }
      }
      line.print();
      if (line.is_limited())
        worst = std::max(worst, line.c_over_b());
    }
  }
  printf("highest c/b of a message that nobody records: %.2f (%s %.1f)\n", worst,
         worst <= c_over_b_limit ? "within" : "above", c_over_b_limit);
  return 0;
}
