// SampleCad: a small CAD program, the host on which recordings are shown and tried.
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "apps/SampleCad/scBcgToolbar.h"
#include "apps/SampleCad/scDialog.h"
#include "apps/SampleCad/scDialogs.h"
#include "apps/SampleCad/scFrame.h"
#include "apps/SampleCad/scOptions.h"
#include "apps/SampleCad/scReadyFile.h"

#include <windows.h>
#include <commctrl.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// As docs/samplecad.md tells them.
constexpr int exit_failed = 1;
constexpr int exit_usage = 2;

// A windowed program has a standard output only when somebody gave it one; without one, a box shows the text.
void show_text(DWORD handle, const CString& text) {
  const HANDLE out = GetStdHandle(handle);
  DWORD written = 0;
  if (!out || out == INVALID_HANDLE_VALUE ||
      !WriteFile(out, text.GetString(), static_cast<DWORD>(text.GetLength()), &written, nullptr))
    MessageBoxA(nullptr, text, "SampleCad", MB_OK);
}

bool has_class(HWND window, const char* prefix) {
  char name[32] = "";
  GetClassNameA(window, name, sizeof(name));
  return std::strncmp(name, prefix, std::strlen(prefix)) == 0;
}

// Keys that an edit box or a toolbar uses itself while it has the focus.
bool belongs_to_focus(const MSG& message) {
  if (message.message != WM_KEYDOWN)
    return false;
  if (message.wParam == VK_ESCAPE && has_class(message.hwnd, "BCG"))
    return true;
  if (!has_class(message.hwnd, "Edit"))
    return false;
  const bool control = GetKeyState(VK_CONTROL) < 0;
  return message.wParam == VK_DELETE || message.wParam == VK_ESCAPE ||
         (control && std::strchr("ACVXZ", static_cast<int>(message.wParam)));
}

void dispatch(MSG& message, HACCEL accelerators) {
  scFrame& frame = main_frame();
  if (scBcgToolbar::filter(message))
    return;
  if (scDialog::dispatch(message) || TranslateMDISysAccel(frame.mdi_client(), &message))
    return;
  if (!belongs_to_focus(message) && TranslateAcceleratorA(frame.handle(), accelerators, &message))
    return;
  TranslateMessage(&message);
  DispatchMessageA(&message);
}

int run() {
  const HACCEL accelerators =
      LoadAcceleratorsA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDR_MAIN_ACCELERATORS));
  for (;;) {
    // Nothing waits: this is the moment at which all windows stand as they will be seen.
    if (HIWORD(GetQueueStatus(QS_ALLINPUT)) == 0)
      update_ready_file();
    MSG message;
    if (GetMessageA(&message, nullptr, 0, 0) <= 0)
      return static_cast<int>(message.wParam);
    dispatch(message, accelerators);
  }
}

}  // namespace

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*command_line*/, int /*show*/) {
  scOptions options;
  CString error;
  if (!read_options(__argc, __argv, options, error)) {
    show_text(STD_ERROR_HANDLE, "SampleCad: " + error + "\n");
    return exit_usage;
  }
  if (options.version || options.help) {
    show_text(STD_OUTPUT_HANDLE, options.help ? usage() : CString("SampleCad " SC_VERSION "\n"));
    return 0;
  }
  // Before the first template that names one of them.
  INITCOMMONCONTROLSEX controls = {sizeof(controls),
                                   ICC_WIN95_CLASSES | ICC_USEREX_CLASSES | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&controls);
  scFrame& frame = main_frame();
  if (!frame.create_main(options.document)) {
    show_text(STD_ERROR_HANDLE, "SampleCad: no window could be opened; is there a desktop?\n");
    return exit_failed;
  }
  if (!options.ready_file.IsEmpty())
    start_ready_file(options.ready_file);
  // Posted, as a choice in the menu would be: a modal dialog then opens from inside the message loop.
  for (const CString& name : options.dialogs)
    PostMessageA(frame.handle(), WM_COMMAND, static_cast<WPARAM>(dialog_command(name)), 0);
  // Until the frame is gone.
  const int status = run();
  remove_ready_file();
  return status;
}
