// What the benchmark and its host have agreed on.
#pragma once

#include <windows.h>

// The messages, in the order of the lines.
enum mrBenchMessage {
  benchMouseMove,
  benchTimer,
  benchHitTest,
  benchPaint,
  benchMenuMove,     // the mouse over an open menu, while its gesture is followed
  benchToolbarMove,  // the same over a toolbar with the keyboard focus
  benchCommand,
  benchClick,
  benchMessages
};

// Whether the host's thread sends the messages to its window or posts and fetches them.
enum mrBenchWay { benchSent, benchPosted, benchWays };

constexpr char mr_bench_class[] = "HookBenchFrame";

// Posted to the host's frame: passes wParam times the message lParam (MAKELPARAM(message, way)) through the
// host's GUI thread, and answers by posting the next number to the window of the last bench_reply_to.
constexpr UINT bench_measure = WM_APP + 1;
// To the frame: wParam is the window that wants the answers.
constexpr UINT bench_reply_to = WM_APP + 2;
// To that window: wParam is the time that it took, in nanoseconds.
constexpr UINT bench_measured = WM_APP + 3;
