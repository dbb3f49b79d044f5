// Host process, GUI thread.
#include "hooks/mrHookedMessage.h"

#include "hooks/mrIdentity.h"

bool read_any_hooked_message(int kind, LPARAM lparam, mrHookedMessage& out) {
  switch (kind) {
  case hookGetMessage: {
    const MSG& msg = *reinterpret_cast<const MSG*>(lparam);
    out = {msg.hwnd, msg.message, msg.wParam, msg.lParam, 0};
    return true;
  }
  case hookCallWndProc: {
    const CWPSTRUCT& cwp = *reinterpret_cast<const CWPSTRUCT*>(lparam);
    out = {cwp.hwnd, cwp.message, cwp.wParam, cwp.lParam, 0};
    return true;
  }
  case hookCallWndProcRet: {
    const CWPRETSTRUCT& ret = *reinterpret_cast<const CWPRETSTRUCT*>(lparam);
    out = {ret.hwnd, ret.message, ret.wParam, ret.lParam, ret.lResult};
    return true;
  }
  default:
    return false;
  }
}

bool read_hooked_message(int kind, LPARAM lparam, mrHookedMessage& out) {
  mrHookedMessage message;
  if (!read_any_hooked_message(kind, lparam, message) || !message.window)
    return false;
  out = message;
  return true;
}

namespace {

// The windows that one message is about: its own, its parent, the control of a notification, and one to
// spare.
constexpr int kept_names = 4;

struct mrClassName {
  HWND window;
  char name[mr_max_text];
};

mrClassName names[kept_names + 1];  // the last for every further window, read anew for each call
int name_count = 0;
bool keep_names = false;

}  // namespace

const char* hooked_class_name(HWND window) {
  for (int i = 0; keep_names && i < name_count; ++i) {
    if (names[i].window == window)
      return names[i].name;
  }
  // Outside a dispatch nothing is kept: the caller is a test or a query from elsewhere, and windows come and
  // go.
  const int place = keep_names && name_count < kept_names ? name_count++ : kept_names;
  mrClassName& entry = names[place];
  entry.window = window;
  if (!GetClassNameA(window, entry.name, mr_max_text))
    entry.name[0] = '\0';
  return entry.name;
}

mrClassNameScope::mrClassNameScope() {
  name_count = 0;
  keep_names = shortcuts_enabled();
}

mrClassNameScope::~mrClassNameScope() { keep_names = false; }
