#include "controls/mrOptionTree.h"

#include "hooks/mrHostMessages.h"
#include "model/mrRecorder.h"

#include <cstdio>
#include <cstring>

namespace {

// The tree itself and three levels of in-place editors in it.
constexpr int climbed_windows = 4;

// The record and its one buffer: filled and sent within one hook call.
mrOptionTreeRec record;

LRESULT ask(HWND tree, mrOptionTreeRequest request, const void* argument) {
  return SendMessageA(tree, host_messages().request_option_information, request,
                      reinterpret_cast<LPARAM>(argument));
}

// Fills a buffer of mr_max_text bytes; it is left empty when the tree does not answer.
void ask_text(HWND tree, mrOptionTreeRequest request, void* item, char* buffer) {
  memset(buffer, 0, mr_max_text);
  const mrOptionTextRequest block = {item, buffer, mr_max_text};
  ask(tree, request, &block);
  buffer[mr_max_text - 1] = '\0';
}

// Bounded: a tree that names an item its own ancestor must not keep the host in its hook.
constexpr int max_levels = 1000;

// The labels from the root to an item, as far as they fit. The record's path field takes each label on the
// way.
void ask_path(HWND tree, void* item) {
  char path[mr_max_text] = "";
  for (int level = 0; item && level < max_levels; ++level) {
    ask_text(tree, optionLabel, item, record.path);
    char longer[mr_max_text] = "";
    snprintf(longer, sizeof longer, "%s%s%s", record.path, *path ? "|" : "", path);
    memcpy(path, longer, sizeof path);
    item = reinterpret_cast<void*>(ask(tree, optionParent, item));
  }
  memcpy(record.path, path, sizeof path);
}

}  // namespace

mrOptionTreeFactory::mrOptionTreeFactory() : mrBaseWindowFactory("OptionTree", "zqpOptionTree") {}

mrFactoryType mrOptionTreeFactory::get_factory_type() { return factoryOptionTree; }

// ---- recogniser: host process, GUI thread, inside a hook ------------------------------------------

bool mrOptionTreeFactory::handle_message(int kind, int /*code*/, WPARAM /*wparam*/, LPARAM lparam) {
  mrHookedMessage msg;
  if (kind == hookCallWndProcRet || !read_hooked_message(kind, lparam, msg))
    return false;
  // The tree's own messages and those of its in-place editors: typing and clicking there is nobody else's.
  if (is_in_option_tree(msg.window))
    return true;
  const NMHDR* const header = notification(msg);
  if (!header)
    return false;
  // Deliberate: the host's developers read these lines. The call takes a lock of the system, and only
  // notifications get this far.
  OutputDebugStringA("notify...\n");
  if (header->code != mr_option_value_changed || !check_hwnd(header->hwndFrom))
    return false;
  OutputDebugStringA("Class and message checked...\n");
  upload_value(header->hwndFrom, reinterpret_cast<const mrOptionTreeNotification*>(header)->item);
  return true;
}

bool mrOptionTreeFactory::is_in_option_tree(HWND window) const {
  for (int level = 0; window && level < climbed_windows; ++level) {
    if (check_hwnd(window))
      return true;
    window = GetParent(window);
  }
  return false;
}

bool mrOptionTreeFactory::check_hwnd(HWND window) const { return is_wrapped_window(window); }

void mrOptionTreeFactory::upload_value(HWND tree, void* item) {
  record.tree = tree;
  record.item = item;
  ask_text(tree, optionValue, item, record.value);
  record.is_check = ask(tree, optionKind, item) == mr_option_check_box;
  ask_path(tree, item);
  send_data(sizeof record, &record);
}

// ---- builder: recorder process --------------------------------------------------------------------

static CString make_statement(const mrOptionTreeRec& rec) {
  const CString value = mrRecorder::quote_string(rec.value);
  CString statement = "GetItemByPath(\"" + mrRecorder::quote_string(rec.path) + "\").";
  if (rec.is_check)
    statement += value == "1" ? "Checked = true;" : "Checked = false;";
  else
    statement += "Text = \"" + value + "\";";
  return statement;
}

void mrOptionTreeFactory::copy_data(void* data) {
  const mrOptionTreeRec& rec = *static_cast<const mrOptionTreeRec*>(data);
  const CString statement = make_statement(rec);
  // Repeated edits of one value end as its last one.
  mrOptionTree* const last = last_action_on<mrOptionTree>(rec.tree);
  if (last && last->is(rec.tree, rec.item))
    last->set_action_string(statement);
  else
    append_action(make_action<mrOptionTree>(rec.tree, this, rec.item), statement);
}

mrContextMenuRes mrOptionTreeFactory::context_menu_invoke(HWND /*window*/, const char* /*class_name*/,
                                                          const CPoint& /*point*/) {
  return contextMenuNotClaimed;
}
