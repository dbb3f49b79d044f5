// The shortcuts of the hook path change nothing that anybody can see: a corpus of messages to every kind of
// window runs through the dispatcher with every shortcut on and with every shortcut off, and each message is
// claimed by the same recorder, after the same refusals, with the same uploads, and leaves the recorders in
// the same state.
#include "controls/mrButton.h"
#include "controls/mrGXGrid.h"
#include "controls/mrOpenSaveDialog.h"
#include "controls/mrOptionTree.h"
#include "controls/mrRibCustomiser.h"
#include "controls/mrToolBar.h"
#include "hooks/mrDispatcher.h"
#include "hooks/mrHookKind.h"
#include "hooks/mrHostMessages.h"
#include "hooks/mrIdentity.h"
#include "hooks/mrSharedBlock.h"
#include "host/bcg.h"
#include "host/kvttools.h"
#include "tests/controls/toolbar_windows.h"
#include "tests/support/tape.h"

#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <map>
#include <memory>
#include <random>

namespace {

// Stands in a factory's place and writes down what it answers.
class Witness : public mrActionFactory {
public:
  Witness(mrActionFactory& inner, std::string& trace) : m_inner(inner), m_trace(trace) {}

  mrFactoryType get_factory_type() override { return m_inner.get_factory_type(); }
  void on_start_record() override { m_inner.on_start_record(); }
  bool handle_message(int kind, int code, unsigned __int64 wparam, __int64 lparam) override {
    const bool claims = m_inner.handle_message(kind, code, wparam, lparam);
    m_trace += claims ? " claimed " : " ";
    m_trace += std::to_string(static_cast<int>(get_factory_type()));
    return claims;
  }
  void copy_data(void* data) override { m_inner.copy_data(data); }
  mrDeclarationRes get_declaration(const mrWindowInfo* info, CString& declaration, CString& search,
                                   CString& identifier) override {
    return m_inner.get_declaration(info, declaration, search, identifier);
  }
  mrContextMenuRes context_menu_invoke(HWND window, const char* name, const CPoint& point) override {
    return m_inner.context_menu_invoke(window, name, point);
  }

private:
  mrActionFactory& m_inner;
  std::string& m_trace;
};

// A window of some class that answers one request with 165, as the host's own controls do.
mrTestAnswer identity_of(UINT request, WPARAM code = 0, LRESULT answer = mr_identity_answer) {
  return [=](UINT message, WPARAM wparam, LPARAM, LRESULT& result) {
    result = answer;
    return message == request && wparam == code;
  };
}

struct Message {
  int kind;
  HWND window;
  UINT message;
  WPARAM wparam;
  LPARAM lparam;
};

class DispatchShortcuts : public testing::Test {
protected:
  DispatchShortcuts() {
    InitCommonControls();
    for (const char* name : {"BCGToolBar:1", "BCGPToolBar", "SHELLDLL_DefView", "zqpOptionTree", "BCGTabWnd"})
      register_test_class(name);
    make_windows();
    make_notifications();
    for (int type = first_factory_type; type <= last_recorded_factory_type; ++type) {
      witnesses.emplace_back(new Witness(*get_factory(type, true), trace));
      originals.push_back(get_factory(type, true));
      register_factory(*witnesses.back());
    }
  }
  ~DispatchShortcuts() override {
    for (mrActionFactory* original : originals)
      register_factory(*original);
    set_shortcuts(true);
  }

  HWND add(const char* class_name, DWORD style, HWND parent, int id = 1, const char* text = "text") {
    windows.emplace_back(
        new mrTestWindow(class_name, text, style | (parent ? WS_CHILD | WS_VISIBLE : 0), parent, id));
    return *windows.back();
  }

  void make_windows() {
    windows.reserve(100);
    add("TestFrame", 0, frame);
    for (const DWORD style : {BS_PUSHBUTTON, BS_AUTOCHECKBOX, BS_AUTO3STATE, BS_AUTORADIOBUTTON, BS_GROUPBOX})
      add("Button", style, frame);
    for (const int id : {7, 8})
      add("Button", BS_OWNERDRAW, frame, id);
    edit = add("Edit", ES_AUTOHSCROLL, frame);
    add("ComboBox", CBS_DROPDOWNLIST, frame);
    add("ListBox", LBS_MULTIPLESEL, frame);
    add("SysListView32", LVS_REPORT, frame);
    add("SysTreeView32", 0, frame);
    register_test_class("SysTreeView32Host");
    for (const DWORD style : {0L, WS_DISABLED}) {
      add("SysTreeView32Host", style, frame);
      windows.back()->set_answer(identity_of(kvtWM_REQUEST_CAD_TREE_INFORMATION));
    }
    add("SysTabControl32", 0, frame);
    slider = add("msctls_trackbar32", 0, frame);
    add("ToolbarWindow32", 0, frame);
    up_down = add("msctls_updown32", 0, frame);
    SendMessageA(up_down, UDM_SETBUDDY, reinterpret_cast<WPARAM>(edit), 0);
    add("BCGToolBar:1", 0, frame);
    add("BCGPToolBar", 0, frame);
    tabs = add("BCGTabWnd", 0, frame);

    cell.grid = add("TestFrame", 0, frame);
    windows.back()->set_answer(identity_of(host_messages().request_grid_information));
    add("Edit", 0, cell.grid);
    widget = add("TestFrame", 0, frame);
    windows.back()->set_answer(identity_of(host_messages().request_rib_customisation));
    add("Button", BS_OWNERDRAW, widget);
    add("TestFrame", 0, frame);
    windows.back()->set_answer(identity_of(host_messages().get_view_position, 1, 1));
    const HWND options = add("zqpOptionTree", 0, frame);
    add("Edit", 0, add("TestFrame", 0, options));

    file_dialog = add("TestFrame", WS_POPUP | DS_MODALFRAME, nullptr, 0);
    add("Edit", 0, file_dialog, 1001);
    add("SHELLDLL_DefView", 0, file_dialog, 1121);
    const HWND dialog = add("TestFrame", WS_POPUP | DS_MODALFRAME, nullptr, 0);
    add("Edit", 0, dialog, 1001);

    for (const auto& window : windows)
      targets.push_back(*window);
    targets.push_back(popup);
  }

  // What every window might tell its parent, those that are recorded and those that only flood past. Fields
  // behind the header read as item 0 that is being selected.
  void make_notifications() {
    for (const auto& window : windows) {
      for (const UINT code : {NM_CLICK, NM_DBLCLK, NM_RETURN, NM_CUSTOMDRAW, TVN_SELCHANGINGA,
                              TVN_SELCHANGEDA, TVN_ENDLABELEDITA, TVN_GETDISPINFOA, LVN_ITEMCHANGED,
                              LVN_GETDISPINFOA, TCN_SELCHANGE, static_cast<UINT>(-1105)}) {
        Notification told = {};
        told.header = {*window, 1, code};
        if (code == LVN_ITEMCHANGED) {
          told.list.uChanged = LVIF_STATE;
          told.list.uNewState = LVIS_SELECTED;
        }
        notifications.push_back(told);
      }
    }
  }

  // What controls tell their parents by messages that carry the control, what the host's own controls tell,
  // and what begins a gesture.
  void add_told(std::vector<Message>& all) {
    const auto told = [&](HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
      for (const int kind : {hookGetMessage, hookCallWndProc, hookCallWndProcRet})
        all.push_back({kind, window, message, wparam, lparam});
    };
    for (Notification& notification : notifications) {
      const UINT code = notification.header.code;
      if (code == TVN_SELCHANGEDA || code == LVN_ITEMCHANGED || code == TCN_SELCHANGE)
        told(frame, WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&notification));
    }
    for (const HWND window : targets) {
      told(window, WM_SYSCOMMAND, SC_CLOSE, 0);
      told(window, WM_SETFOCUS, 0, 0);
      told(window, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window), at(20, 20));
    }
    told(popup, WM_CREATE, 0, 0);
    told(popup, WM_MOVE, 0, at(30, 40));
    told(popup, button_up_in_popup, 0, 0);
    told(popup, WM_KEYDOWN, VK_RETURN, 0);
    told(frame, WM_MENUSELECT, highlight(11), as_lparam(menu));
    told(frame, WM_COMMAND, 11, 0);
    told(file_dialog, WM_COMMAND, IDOK, 0);
    told(file_dialog, WM_COMMAND, IDCANCEL, 0);
    told(frame, WM_HSCROLL, TB_ENDTRACK, as_lparam(slider));
    told(frame, WM_VSCROLL, SB_ENDSCROLL, as_lparam(up_down));
    told(frame, 1925, 0, as_lparam(tabs));
    told(frame, host_messages().bcg_change_active_tab, 0, as_lparam(tabs));
    told(frame, 1949, 0, reinterpret_cast<LPARAM>(&cell));
    told(frame, kvtWM_CAD_TREE_CHANGED, 0, reinterpret_cast<LPARAM>(&change));
    told(widget, BCGM_GRID_SEL_CHANGED, 0, 0);
    told(frame, WM_ENTERMENULOOP, 0, 0);
    told(frame, WM_EXITMENULOOP, 0, 0);
    told(edit, WM_SETTEXT, 0, 0);
    told(edit, EM_REPLACESEL, 0, 0);
    told(frame, WM_COMMAND, notify(1, EN_CHANGE), as_lparam(edit));
  }

  // Every message number of windows and menus and those of the host's libraries, to every window through
  // three hooks, in an order that is arbitrary but always the same; the messages that carry something come
  // several times.
  std::vector<Message> corpus() {
    std::vector<Message> all;
    std::vector<UINT> numbers;
    for (UINT message = 1; message <= WM_THEMECHANGED; ++message)
      numbers.push_back(message);
    for (const UINT message :
         {1925u, 1949u, host_messages().bcg_change_active_tab, BCGM_GRID_SEL_CHANGED, kvtWM_CAD_TREE_CHANGED})
      numbers.push_back(message);
    for (const HWND window : targets) {
      for (const int kind : {hookGetMessage, hookCallWndProc, hookCallWndProcRet}) {
        for (const UINT message : numbers)
          all.push_back({kind, window, message, 0, 0});
        for (const auto& control : windows) {
          for (const int code : {0, 1, 5, EN_CHANGE})
            all.push_back({kind, GetParent(*control) ? GetParent(*control) : HWND(frame), WM_COMMAND,
                           notify(1, code), as_lparam(*control)});
        }
        for (const int place : {5, 5, 70}) {
          for (UINT message = WM_MOUSEMOVE; message <= WM_MBUTTONDBLCLK; ++message)
            all.push_back({kind, window, message, MK_LBUTTON, at(place, 5)});
        }
      }
    }
    for (const int kind : {hookGetMessage, hookCallWndProc, hookCallWndProcRet}) {
      for (Notification& told : notifications) {
        const HWND parent = GetParent(told.header.hwndFrom);
        all.push_back({kind, parent ? parent : HWND(frame), WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&told)});
      }
    }
    for (int repetition = 0; repetition < 40; ++repetition)
      add_told(all);
    std::shuffle(all.begin(), all.end(), std::mt19937(20));
    // Between them the floods.
    std::vector<Message> flooded;
    add_menus(flooded);  // first: nothing is followed yet
    for (size_t i = 0; i < all.size(); ++i) {
      flooded.push_back(all[i]);
      if (i % 4)
        continue;
      for (const UINT flood : {WM_MOUSEMOVE, WM_NCHITTEST, WM_PAINT, WM_TIMER, WM_GETTEXT, LVM_INSERTITEMA})
        flooded.push_back(
            {flood == WM_NCHITTEST ? hookCallWndProc : hookGetMessage, all[i].window, flood, 0, at(5, 5)});
    }
    return flooded;
  }

  // Whole gestures, in the order of a user: a menu whose popup is flooded before it has told its menu, after
  // that and again.
  void add_menus(std::vector<Message>& all) {
    for (const UINT flood : {WM_MOUSEMOVE, WM_PAINT, WM_TIMER, WM_NCHITTEST, WM_ENTERIDLE, WM_SETCURSOR}) {
      const Message flooding = {hookCallWndProc, popup, flood, 0, at(5, 5)};
      all.insert(all.end(), {{hookCallWndProc, frame, WM_ENTERMENULOOP, 0, 0},
                             {hookCallWndProc, popup, WM_CREATE, 0, 0},
                             flooding,
                             {hookCallWndProc, frame, WM_MENUSELECT, highlight(11), as_lparam(menu)},
                             flooding,
                             {hookGetMessage, popup, button_up_in_popup, 0, 0},
                             flooding,
                             {hookCallWndProc, popup, WM_DESTROY, 0, 0},
                             {hookGetMessage, frame, WM_COMMAND, 11, 0},
                             {hookCallWndProcRet, frame, WM_COMMAND, 11, 0}});
    }
  }

  void dispatch(const Message& m) {
    MSG msg = {};
    msg.hwnd = m.window;
    msg.message = m.message;
    msg.wParam = m.wparam;
    msg.lParam = m.lparam;
    CWPSTRUCT call = {m.lparam, m.wparam, m.message, m.window};
    CWPRETSTRUCT returned = {0, m.lparam, m.wparam, m.message, m.window};
    void* const data = m.kind == hookGetMessage    ? static_cast<void*>(&msg)
                       : m.kind == hookCallWndProc ? static_cast<void*>(&call)
                                                   : static_cast<void*>(&returned);
    dispatch_hook_message(m.kind, HC_ACTION, 1, reinterpret_cast<LPARAM>(data));
  }

  // What one message led to: who was asked, who claimed it, what was uploaded, and what is still followed.
  std::string outcome_of(const Message& message) {
    trace.clear();
    uploads.clear();
    dispatch(message);
    for (const mrUploadCatcher::Upload& upload : uploads.all())
      trace += " upload " + std::to_string(upload.type) + " " + upload.bytes;
    if (tool_bar.is_tracking())
      trace += tool_bar.is_tracking_popup() ? " following a popup" : " following";
    return trace;
  }

  // What the recorders remember, byte for byte: their own fields, among them the file dialog's path, and what
  // a gesture would upload now, whose levels lie elsewhere. A short number stands for the bytes of each.
  std::string state() {
    std::string all;
    const auto add = [&all](const std::string& name, const std::string& bytes) {
      all += " " + name + ":" + std::to_string(std::hash<std::string>()(bytes));
    };
    for (mrActionFactory* const factory : originals) {
      if (factory != &tool_bar)
        add(std::to_string(static_cast<int>(factory->get_factory_type())), fields_of(*factory));
    }
    const mrSharedBlock& shared = shared_block();
    add("logger", bytes_of(shared.logger_window) + bytes_of(shared.logger_candidate_window) +
                      bytes_of(shared.logger_latch));
    mrToolBarFactory gesture = tool_bar;
    uploads.clear();
    gesture.command_invoked();
    add("gesture", uploads.last().bytes + (tool_bar.is_timer_set() ? " in time" : ""));
    return all;
  }
  template <class OBJECT>
  static std::string bytes_of(const OBJECT& object) {
    return std::string(reinterpret_cast<const char*>(&object), sizeof object);
  }
  static std::string fields_of(const mrActionFactory& factory) {
    if (const auto* const button = dynamic_cast<const mrButtonFactory*>(&factory))
      return bytes_of(*button);
    if (const auto* const dialog = dynamic_cast<const mrOpenSaveDialogFactory*>(&factory))
      return bytes_of(*dialog);
    // The others remember nothing in the host but what the base does.
    return bytes_of(static_cast<const mrBaseWindowFactory&>(factory));
  }

  // The state belongs to the outcome of every so manieth message.
  std::vector<std::string> run(const std::vector<Message>& messages, bool shortcuts) {
    constexpr size_t messages_per_state = 50;
    return run(messages, shortcuts, [this](const Message& message, size_t i) {
      mrTestClock::advance(7);
      std::string outcome = outcome_of(message);
      return i % messages_per_state ? outcome : outcome + state();
    });
  }

  // outcome tells the outcome of one message, given its number.
  template <class OUTCOME>
  std::vector<std::string> run(const std::vector<Message>& messages, bool shortcuts, OUTCOME outcome) {
    set_shortcuts(shortcuts);
    const mrTestClock clock;
    // The snapshot of the last gesture, the file dialog's path and the record's fields of the last press
    // outlive a recording: both runs begin with the same.
    frame.set_answer([](UINT, WPARAM, LPARAM, LRESULT&) { return false; });
    mrTestClock::set(100000);
    tell_factories_of_start();  // nothing is followed
    dispatch({hookCallWndProc, file_dialog, WM_COMMAND, IDOK, 0});
    dispatch({hookCallWndProc, frame, WM_ENTERMENULOOP, 0, 0});
    tell_factories_of_start();
    dispatch({hookGetMessage, frame, WM_MBUTTONDOWN, 0, 0});
    // Leaves no watch, no text being set (each edit as often as the table has places) and no command from the
    // run before.
    mrTestClock::advance(5000);
    for (int place = 0; place < 5; ++place) {
      for (const auto& window : windows)
        dispatch({hookCallWndProcRet, *window, WM_SETTEXT, 0, 0});
    }
    std::vector<std::string> outcomes;
    for (size_t i = 0; i < messages.size(); ++i)
      outcomes.push_back(outcome(messages[i], i));
    return outcomes;
  }

  std::string trace;
  mrUploadCatcher uploads;
  mrTestFrame frame;
  union Notification {
    NMHDR header;
    NMTREEVIEWA tree;
    NMTVDISPINFOA label;
    NMLISTVIEW list;
    mrOptionTreeNotification option;
  };

  TestMenu menu;
  PopupWindow popup{menu.item(11, "New").item(12, "Open")};
  std::vector<std::unique_ptr<mrTestWindow>> windows;
  std::vector<HWND> targets;  // of messages: the windows and the popup
  HWND file_dialog = nullptr;
  HWND edit = nullptr;
  HWND slider = nullptr;
  HWND up_down = nullptr;
  HWND tabs = nullptr;
  HWND widget = nullptr;
  mrGXGridCell cell = {};
  kvtCADTreeChange change = {};
  std::vector<Notification> notifications;
  std::vector<std::unique_ptr<Witness>> witnesses;
  std::vector<mrActionFactory*> originals;
  mrToolBarFactory& tool_bar = *static_cast<mrToolBarFactory*>(get_factory(factoryToolBar, true));
};

}  // namespace

TEST_F(DispatchShortcuts, ChangeNothingThatIsClaimedUploadedOrFollowed) {
  const std::vector<Message> messages = corpus();
  const std::vector<std::string> on = run(messages, true);
  const std::vector<std::string> off = run(messages, false);
  size_t uploads_seen = 0;
  size_t popups_followed = 0;
  for (size_t i = 0; i < messages.size(); ++i) {
    ASSERT_EQ(off[i], on[i]) << "message " << i << ": " << messages[i].message << " by hook "
                             << messages[i].kind;
    uploads_seen += on[i].find("upload") != std::string::npos;
    popups_followed += on[i].find("following a popup") != std::string::npos;
  }
  // A corpus that nobody records, or in which no menu is open, would prove nothing.
  EXPECT_GT(uploads_seen, 500u);
  EXPECT_GT(popups_followed, 500u);
}

// A parent of all controls that changes its mind about what it is: who claims a message that nobody records
// may rest on what it was, an upload and what is followed never do. The time stands still here, since it runs
// out on whatever message comes next.
TEST_F(DispatchShortcuts, UploadsNeverRestOnWhatAWindowWas) {
  std::vector<Message> messages = corpus();
  messages.resize(60000);
  const auto outcome_without_claims = [this](const Message& message, size_t i) {
    frame.set_answer(i / 5 % 2   ? identity_of(host_messages().request_rib_customisation)
                     : i / 7 % 2 ? identity_of(host_messages().request_grid_information)
                                 : mrTestAnswer([](UINT, WPARAM, LPARAM, LRESULT&) { return false; }));
    const std::string outcome = outcome_of(message);
    const size_t begin = std::min(outcome.find(" upload"), outcome.find(" following"));
    return begin == std::string::npos ? std::string() : outcome.substr(begin);
  };
  const std::vector<std::string> on = run(messages, true, outcome_without_claims);
  const std::vector<std::string> off = run(messages, false, outcome_without_claims);
  for (size_t i = 0; i < messages.size(); ++i)
    ASSERT_EQ(off[i], on[i]) << "message " << i << ": " << messages[i].message << " by hook "
                             << messages[i].kind;
}
