// Which of the four hooks delivered a message: the first argument of every handle_message.
#pragma once

enum mrHookKind {
  hookGetMessage = 1,  // WH_GETMESSAGE; wParam PM_REMOVE, lParam the MSG
  hookCallWndProc =
      2,  // WH_CALLWNDPROC; wParam nonzero when sent by the current thread, lParam the CWPSTRUCT
  hookCallWndProcRet = 3,  // WH_CALLWNDPROCRET; likewise, lParam the CWPRETSTRUCT
  hookCbt = 4,             // WH_CBT; code HCBT_..., wParam and lParam as Windows defines them for it
};
