#include "controls/mrGXGrid.h"

#include "hooks/mrHostMessages.h"
#include "hooks/mrIdentity.h"
#include "model/mrRecorder.h"

#include <cstring>

namespace {

constexpr const char* grid_class = "GXGridClass";

bool is_grid(HWND window, const mrHookedMessage& msg) {
  return window && is_identified(window, host_messages().request_grid_information, msg);
}

// The record's one buffer: filled and sent within one hook call.
mrGXGridRec record;

}  // namespace

mrGXGrid::mrGXGrid(HWND grid, mrBaseWindowFactory* factory, unsigned long row, unsigned long column)
    : mrBaseWindow(grid, factory), m_row(row), m_column(column) {
  strcpy(m_path[0]->class_name, grid_class);
}

bool mrGXGrid::is(HWND grid, unsigned long row, unsigned long column) const {
  return m_window == grid && m_row == row && m_column == column;
}

mrGXGridFactory::mrGXGridFactory() : mrBaseWindowFactory("GXGrid", grid_class) {}

mrFactoryType mrGXGridFactory::get_factory_type() { return factoryGxGrid; }

// ---- recogniser: host process, GUI thread, inside a hook ------------------------------------------

bool mrGXGridFactory::handle_message(int kind, int /*code*/, WPARAM /*wparam*/, LPARAM lparam) {
  mrHookedMessage msg;
  if (kind == hookCallWndProcRet || !read_hooked_message(kind, lparam, msg))
    return false;
  // Before the message is looked at: whatever a grid or its in-place editor receives is claimed, lest another
  // recorder takes the typing in a cell for its own.
  if (is_grid(msg.window, msg) || is_grid(GetParent(msg.window), msg))
    return true;
  if (msg.message != mr_grid_cell_changed || !msg.lparam)
    return false;
  // A number that any control may use for itself, with a small number in its lParam: no address lies there.
  if (static_cast<ULONG_PTR>(msg.lparam) <= 0xFFFF)
    return false;
  // Deliberate: the host's developers read these lines. The call takes a lock of the system, and only this
  // message gets this far.
  OutputDebugStringA("notify...\n");
  return on_cell_changed(*reinterpret_cast<const mrGXGridCell*>(msg.lparam));
}

bool mrGXGridFactory::on_cell_changed(const mrGXGridCell& cell) {
  if (!is_identified(cell.grid, host_messages().request_grid_information))
    return false;
  OutputDebugStringA("Class checked...\n");
  record.grid = cell.grid;
  record.row = cell.row;
  record.column = cell.column;
  record.text[0] = '\0';  // for a grid that does not fill it
  mrGXGridTextRequest request = {cell.row, cell.column, record.text, mr_max_text};
  SendMessageA(cell.grid, host_messages().request_grid_information, mr_grid_request_text,
               reinterpret_cast<LPARAM>(&request));
  send_data(sizeof record, &record);
  return true;
}

// ---- builder: recorder process --------------------------------------------------------------------

void mrGXGridFactory::copy_data(void* data) {
  const mrGXGridRec& rec = *static_cast<const mrGXGridRec*>(data);
  // The buffer was filled by a host's grid: a text that fills it whole may have no final zero.
  const CString text(rec.text, static_cast<int>(strnlen(rec.text, sizeof rec.text)));
  CString statement;
  statement.Format("SetText(%d, %d, \"%s\");", static_cast<int>(rec.row), static_cast<int>(rec.column),
                   mrRecorder::quote_string(text).GetString());
  mrGXGrid* const last = last_action_on<mrGXGrid>(rec.grid);
  if (last && last->is(rec.grid, rec.row, rec.column))
    last->set_action_string(statement);
  else
    append_action(make_action<mrGXGrid>(rec.grid, this, rec.row, rec.column), statement);
}

mrContextMenuRes mrGXGridFactory::context_menu_invoke(HWND /*window*/, const char* /*name*/,
                                                      const CPoint& /*point*/) {
  return contextMenuNotClaimed;
}
