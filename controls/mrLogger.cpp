#include "controls/mrLogger.h"

#include "hooks/mrSharedBlock.h"
#include "model/mrRecorder.h"

#include <windows.h>
#include <commctrl.h>

namespace {

// The record's one buffer: filled and sent within one hook call.
mrLoggerRec record;

}  // namespace

mrLoggerFactory::mrLoggerFactory() : mrBaseWindowFactory("Logger", "") {}

mrFactoryType mrLoggerFactory::get_factory_type() { return factoryLogger; }

void mrLoggerFactory::on_start_record() {
  mrSharedBlock& shared = shared_block();
  shared.logger_candidate_window = nullptr;
  shared.logger_window = nullptr;
  shared.logger_latch = 0;
}

// ---- recogniser: host process, GUI thread, inside a hook ------------------------------------------

bool mrLoggerFactory::handle_message(int kind, int /*code*/, WPARAM /*wparam*/, LPARAM lparam) {
  HWND& logged = shared_block().logger_window;
  if (logged && !IsWindow(logged))
    logged = nullptr;
  mrHookedMessage msg;
  // Deliberate: unlike the recorders of controls it takes messages without a window, which choose one too.
  if (!read_any_hooked_message(kind, lparam, msg))
    return true;
  if (logged)
    log(kind, msg);
  if (kind == hookGetMessage)
    choose_window(msg);
  return true;
}

// Deliberate: left out, they would drown everything else.
static bool is_noise(UINT message) {
  return message == WM_PAINT || message == WM_ERASEBKGND || message == WM_SETCURSOR ||
         message == WM_NCHITTEST;
}

void mrLoggerFactory::log(int kind, const mrHookedMessage& msg) {
  mrSharedBlock& shared = shared_block();
  record.kind = static_cast<uint32_t>(kind);
  record.window = msg.window;
  record.message = msg.message;
  record.wparam = msg.wparam;
  record.lparam = msg.lparam;
  if (kind == hookCallWndProcRet)
    record.extra = static_cast<uint64_t>(msg.result);

  bool wanted = msg.window == shared.logger_window;
  if (kind == hookCallWndProc && msg.message == WM_CREATE) {
    const auto* const create = reinterpret_cast<const CREATESTRUCTA*>(msg.lparam);
    record.extra = create ? reinterpret_cast<uint64_t>(create->hMenu) : 0;
    // The first window created after logging began captures it: a dialog or a popup that is still to come.
    if (!shared.logger_latch) {
      shared.logger_window = msg.window;
      shared.logger_latch = 1;
    }
    wanted = true;
  }
  if (wanted && !is_noise(msg.message))
    send_data(sizeof record, &record);
}

void mrLoggerFactory::choose_window(const mrHookedMessage& msg) {
  mrSharedBlock& shared = shared_block();
  if (msg.message == WM_MOUSEMOVE)
    shared.logger_candidate_window = msg.window;
  else if (msg.message == WM_KEYDOWN && msg.wparam == VK_CONTROL && !shared.logger_latch)
    shared.logger_window = shared.logger_candidate_window;
  else if (msg.message == WM_KEYDOWN && msg.wparam == VK_SHIFT)
    shared.logger_window = nullptr;
}

// ---- builder: recorder process --------------------------------------------------------------------

static unsigned low_32(LONG_PTR value) { return static_cast<unsigned>(value); }

static void append_created_window(HWND window, uint64_t menu, CString& line) {
  char text[mr_max_text] = "";
  GetWindowTextA(window, text, mr_max_text);
  line.AppendFormat(" Text=%s", text);
  char class_name[mr_max_text] = "";
  GetClassNameA(window, class_name, mr_max_text);
  line.AppendFormat(" Class=%s", class_name);
  line.AppendFormat(" ID=%X", low_32(GetWindowLongPtrA(window, GWLP_ID)));
  line.AppendFormat(" Style=%X", low_32(GetWindowLongPtrA(window, GWL_STYLE)));
  line.AppendFormat(" ExStyle=%X", low_32(GetWindowLongPtrA(window, GWL_EXSTYLE)));
  line.AppendFormat(" Parent=%X", low_32(reinterpret_cast<LONG_PTR>(GetParent(window))));
  line.AppendFormat(" createstruct.hMenu = %08X", static_cast<unsigned>(menu));
}

void mrLoggerFactory::copy_data(void* data) {
  if (!get_recorder())
    return;
  const mrLoggerRec& rec = *static_cast<const mrLoggerRec*>(data);
  CString message;
  get_message_text(rec.message, message);
  CString line;
  line.Format(": %08llX %s:\tw=%08llX, l=%08llX", reinterpret_cast<unsigned long long>(rec.window),
              message.GetString(), rec.wparam, static_cast<unsigned long long>(rec.lparam));
  switch (rec.kind) {
  case hookGetMessage:
    line = "P" + line;
    break;
  case hookCallWndProc:
    line = "S" + line;
    if (rec.message == WM_CREATE)
      append_created_window(rec.window, rec.extra, line);
    break;
  case hookCallWndProcRet:
    line = "R" + line;
    line.AppendFormat(" Res=%08X", static_cast<unsigned>(rec.extra));
    break;
  }
  // Deliberate: asked whatever the window is; it serves work on toolbars, and others answer what they answer.
  line.AppendFormat(" HotItem: %d", static_cast<int>(SendMessageA(rec.window, TB_GETHOTITEM, 0, 0)));
  append_statement<mrBaseWindow>(nullptr, line);
}

mrContextMenuRes mrLoggerFactory::context_menu_invoke(HWND /*window*/, const char* /*name*/,
                                                      const CPoint& /*point*/) {
  return contextMenuNotClaimed;
}

// ---- declaration: recorder process ----------------------------------------------------------------

mrDeclarationRes mrLoggerFactory::get_declaration(const mrWindowInfo* info, CString& declaration,
                                                  CString& search, CString& identifier) {
  if (info->window)
    return declaredNot;
  declaration = search = identifier = "_";
  return declaredByControlId;
}
