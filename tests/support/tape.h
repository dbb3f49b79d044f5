// Message tapes: what the hooks see, step by step, and what a recogniser must claim and upload at each step.
//
//   play_tape(factory, uploads, {
//       // hook           window  message         wparam              lparam   answer   uploads
//       {hookGetMessage,  button, WM_LBUTTONDOWN, MK_LBUTTON,         at(5, 5), claimed, none},
//       {hookGetMessage,  button, WM_LBUTTONUP,   0,                  at(5, 5), claimed, record(click)},
//       tick(101),
//       {hookCallWndProc, dialog, WM_COMMAND,     notify(1, BN_CLICKED), as_lparam(button), claimed, none},
//   });
//
// Every step must do exactly what it says, uploads compared byte for byte. On a mismatch the whole tape is
// printed, expected beside got.
#pragma once

#include "model/mrActionFactory.h"
#include "tests/support/hooked.h"
#include "tests/support/test_window.h"

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

// Whether the factory keeps the message from the others.
enum mrTapeAnswer { left, claimed };

// The bytes of the records that one step uploads, in order.
using mrTapeUploads = std::vector<std::string>;
inline const mrTapeUploads none;

// One record's bytes; record(a) + record(b) where a step uploads several.
template <class RECORD>
mrTapeUploads record(const RECORD& bytes) {
  return {std::string(reinterpret_cast<const char*>(&bytes), sizeof bytes)};
}
inline mrTapeUploads operator+(mrTapeUploads first, const mrTapeUploads& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

struct mrTapeStep {
  mrTapeStep(int hook, HWND window, UINT message, WPARAM wparam, LPARAM lparam, mrTapeAnswer answer,
             mrTapeUploads uploads)
      : hook(hook), window(window), message(message), wparam(wparam), lparam(lparam), answer(answer),
        uploads(std::move(uploads)) {}
  // A step that is no message.
  mrTapeStep(std::string what, std::function<void()> act) : what(std::move(what)), act(std::move(act)) {}

  int hook = 0;
  HWND window = nullptr;
  UINT message = 0;
  WPARAM wparam = 0;
  LPARAM lparam = 0;
  mrTapeAnswer answer = left;
  mrTapeUploads uploads;
  std::string what;
  std::function<void()> act;
};

// The tick count of a tape stands still but for this step.
mrTapeStep tick(DWORD ms);
// Something that happens to a control between two messages; what names it in a print.
inline mrTapeStep act(const char* what, std::function<void()> act) { return {what, std::move(act)}; }

// Plays the steps to one factory while uploads catches what it sends, and fails the test on a mismatch.
void play_tape(mrActionFactory& factory, mrUploadCatcher& uploads, const std::vector<mrTapeStep>& tape);

// The test clock stands in for the tick count as long as one exists; tapes bring their own. Its time goes on
// from one clock to the next, so that a factory may see several.
class mrTestClock {
public:
  mrTestClock();
  ~mrTestClock();
  mrTestClock(const mrTestClock&) = delete;
  mrTestClock& operator=(const mrTestClock&) = delete;

  static void set(DWORD ticks);
  static void advance(DWORD ms);
};
