// Host process, GUI thread.
#include "hooks/mrIdentity.h"

#include "hooks/mrHostMessages.h"
#include "hooks/mrSharedBlock.h"

#include <cstdint>

namespace {

bool shortcuts = true;

// A window's last answer to one request. Direct-mapped: a window that takes another one's place is asked
// anew.
struct mrAnswer {
  HWND window;
  UINT request;
  bool identified;
};

constexpr size_t place_count = 256;  // a power of two
mrAnswer answers[place_count];

// The recording that the answers belong to: a new one starts with none.
HWND answered_for = nullptr;

mrAnswer& place_of(HWND window, UINT request) {
  // Handles of one process differ in their low bits, above the two that are always 0 or 1.
  const size_t number = (reinterpret_cast<uintptr_t>(window) >> 1) * 5 + request;
  return answers[number % place_count];
}

bool ask(HWND window, UINT request) { return SendMessageA(window, request, 0, 0) == mr_identity_answer; }

void start_anew_for_another_recording() {
  const HWND recorder = shared_block().recorder_window;
  if (answered_for == recorder)
    return;
  for (mrAnswer& answer : answers)
    answer = {};
  answered_for = recorder;
}

}  // namespace

// may_remember: the window's last answer will do.
static bool identify(HWND window, UINT request, bool may_remember) {
  if (!shortcuts)
    return ask(window, request);
  start_anew_for_another_recording();
  mrAnswer& known = place_of(window, request);
  if (may_remember && known.window == window && known.request == request)
    return known.identified;
  const bool identified = ask(window, request);
  known = {window, request, identified};
  return identified;
}

bool is_identified(HWND window, UINT request, UINT message) {
  return identify(window, request, is_flood_message(message));
}

bool was_identified(HWND window, UINT request) { return identify(window, request, true); }

static unsigned generation = 1;

unsigned window_generation() { return generation; }

void forget_identity(HWND window) {
  ++generation;
  for (mrAnswer& answer : answers) {
    if (answer.window == window)
      answer = {};
  }
}

void set_shortcuts(bool on) { shortcuts = on; }

bool shortcuts_enabled() { return shortcuts; }
