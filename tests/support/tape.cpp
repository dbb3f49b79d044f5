#include "tests/support/tape.h"

#include "hooks/mrClock.h"

#include <gtest/gtest.h>

#include <sstream>

// ---- the clock ----------------------------------------------------------------------------------

static DWORD test_ticks = 100000;

static DWORD WINAPI read_test_ticks() { return test_ticks; }

mrTestClock::mrTestClock() { set_tick_source(read_test_ticks); }

mrTestClock::~mrTestClock() { set_tick_source(nullptr); }

void mrTestClock::set(DWORD ticks) { test_ticks = ticks; }

void mrTestClock::advance(DWORD ms) { test_ticks += ms; }

mrTapeStep tick(DWORD ms) {
  return act(("tick(" + std::to_string(ms) + ")").c_str(), [ms] { mrTestClock::advance(ms); });
}

// ---- printing -----------------------------------------------------------------------------------

static std::string class_of(HWND window) {
  char name[256] = "";
  GetClassNameA(window, name, sizeof name);
  return *name ? name : "no window";
}

static std::string in_hex(const std::string& bytes) {
  static const char digits[] = "0123456789abcdef";
  std::string hex;
  for (size_t i = 0; i < bytes.size(); ++i) {
    if (i && i % 8 == 0)
      hex += ' ';
    hex += digits[static_cast<unsigned char>(bytes[i]) >> 4];
    hex += digits[bytes[i] & 15];
  }
  return hex;
}

namespace {

// What a step did, or was to do.
struct Outcome {
  mrTapeAnswer answer;
  std::vector<std::string> uploads;
  bool operator==(const Outcome& other) const { return answer == other.answer && uploads == other.uploads; }
};

std::string describe(const Outcome& outcome) {
  std::string text = outcome.answer == claimed ? "claimed" : "left";
  for (const std::string& bytes : outcome.uploads)
    text += ", upload " + in_hex(bytes);
  return text;
}

std::string describe(const mrTapeStep& step) {
  std::ostringstream text;
  text << "kind " << step.hook << " " << class_of(step.window) << " message " << step.message << std::hex
       << " wParam 0x" << step.wparam << " lParam 0x" << step.lparam;
  return text.str();
}

}  // namespace

// ---- playing ------------------------------------------------------------------------------------

static Outcome play_step(mrActionFactory& factory, mrUploadCatcher& uploads, const mrTapeStep& step) {
  uploads.clear();
  Outcome outcome;
  outcome.answer =
      feed(factory, step.hook, step.window, step.message, step.wparam, step.lparam) ? claimed : left;
  for (const mrUploadCatcher::Upload& upload : uploads.all()) {
    EXPECT_EQ(static_cast<unsigned>(factory.get_factory_type()), upload.type) << describe(step);
    outcome.uploads.push_back(upload.bytes);
  }
  return outcome;
}

void play_tape(mrActionFactory& factory, mrUploadCatcher& uploads, const std::vector<mrTapeStep>& tape) {
  const mrTestClock clock;
  std::ostringstream print;
  bool as_expected = true;
  int number = 0;
  for (const mrTapeStep& step : tape) {
    print << "\n" << ++number << ". ";
    if (step.act) {
      step.act();
      print << step.what;
      continue;
    }
    const Outcome expected = {step.answer, step.uploads};
    const std::string shown = describe(step);  // before the step: it may destroy the window
    const Outcome got = play_step(factory, uploads, step);
    print << shown << "\n     expected " << describe(expected);
    if (!(got == expected)) {
      as_expected = false;
      print << "\n  *  got      " << describe(got);
    }
  }
  if (!as_expected)
    ADD_FAILURE() << "a step did something else than the tape says (marked *)" << print.str();
}
