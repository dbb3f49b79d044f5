#include "controls/mrTrackBar.h"

#include <commctrl.h>

// The record and its one buffer: filled and sent within one hook call.
static mrTrackBarRec record;

// The slider that the user let go; null for every other message. The whole wParam is compared: while the
// slider moves its high word carries the position.
static HWND released_slider(const mrHookedMessage& msg) {
  const bool is_scroll = msg.message == WM_HSCROLL || msg.message == WM_VSCROLL;
  return is_scroll && msg.wparam == TB_ENDTRACK ? reinterpret_cast<HWND>(msg.lparam) : nullptr;
}

mrTrackBarFactory::mrTrackBarFactory() : mrBaseWindowFactory("TrackBar", TRACKBAR_CLASSA) {}

mrFactoryType mrTrackBarFactory::get_factory_type() { return factoryTrackBar; }

// ---- recogniser: host process, GUI thread, inside a hook ------------------------------------------

bool mrTrackBarFactory::handle_message(int kind, int /*code*/, WPARAM /*wparam*/, LPARAM lparam) {
  mrHookedMessage msg;
  if (kind == hookCallWndProcRet || !read_hooked_message(kind, lparam, msg))
    return false;
  // The slider's own messages: clicks on it are nobody else's.
  if (is_wrapped_window(msg.window))
    return true;
  const HWND slider = released_slider(msg);
  if (!is_wrapped_window(slider))
    return false;
  record.trackbar = slider;
  record.pos = SendMessageA(slider, TBM_GETPOS, 0, 0);
  send_data(sizeof record, &record);
  return true;
}

// ---- builder: recorder process --------------------------------------------------------------------

void mrTrackBarFactory::copy_data(void* data) {
  const mrTrackBarRec& rec = *static_cast<const mrTrackBarRec*>(data);
  CString statement;
  statement.Format("Pos = %d;", static_cast<int>(rec.pos));
  append_statement<mrTrackBar>(rec.trackbar, statement);
}

mrContextMenuRes mrTrackBarFactory::context_menu_invoke(HWND /*window*/, const char* /*class_name*/,
                                                        const CPoint& /*point*/) {
  return contextMenuNotClaimed;
}
