// What an action remembers of its window.
#include "hooks/mrHostMessages.h"
#include "model/mrBaseWindow.h"
#include "model/mrModuleName.h"
#include "tests/support/e2e.h"
#include "tests/support/files.h"
#include "tests/support/probe.h"
#include "tests/support/test_host.h"
#include "tests/support/test_window.h"

#include <gmock/gmock.h>

#include <cstddef>

using testing::ElementsAre;
using testing::IsEmpty;

static_assert(offsetof(mrWindowInfo, module) == 0 && offsetof(mrWindowInfo, text) == 260 &&
                  offsetof(mrWindowInfo, class_name) == 520 && offsetof(mrWindowInfo, name) == 780 &&
                  offsetof(mrWindowInfo, resource_library) == 1040 && offsetof(mrWindowInfo, id) == 1304 &&
                  offsetof(mrWindowInfo, style) == 1312 && offsetof(mrWindowInfo, ex_style) == 1320 &&
                  offsetof(mrWindowInfo, flags) == 1328 && offsetof(mrWindowInfo, window) == 1336 &&
                  offsetof(mrWindowInfo, label_position) == 1344 &&
                  offsetof(mrWindowInfo, top_level) == 1352 &&
                  offsetof(mrWindowInfo, dialog_template_id) == 1356,
              "part of the exported interface");

static mrProbeFactory factory;

// The levels of a window's path, copied: they outlive the action anyway.
static std::vector<mrWindowInfo> path_of(HWND window) {
  const mrBaseWindow action(window, &factory);
  std::vector<mrWindowInfo> levels;
  for (const mrWindowInfo* level : action.get_path())
    levels.push_back(*level);
  return levels;
}

// ---- module names -------------------------------------------------------------------------------------

struct ModuleCase {
  const char* module;
  const char* expected;
};

TEST(ModuleName, IsCutAtItsFirstPointAndLosesTheDebugLetter) {
  static constexpr ModuleCase cases[] = {
      {"host.exe", "host"},
      {"hostg.exe", "host"},
      {"HOSTG.EXE", "HOST"},
      {"hostgg.exe", "hostg"},
      {".hidden", ".hidden"},
      {"plain", "plain"},
      {"plaing", "plaing"},
      {"a.b.c", "a"},
      {"g.exe", ""},
      {"drawing.exe", "drawin"},
      {"", ""},
      {".g.exe", ".g.exe"},
      {"host.", "host"},
      {"h\xF6"
       "g.exe",
       "h\xF6"},
  };
  for (const ModuleCase& c : cases) {
    char module[mr_window_text_size];
    strcpy(module, c.module);
    cut_module_name(module);
    EXPECT_STREQ(c.expected, module) << c.module;
  }
}

TEST(ModuleName, IsThatOfTheHostsProgram) {
  const std::string debug_build = own_folder() + "copied_hostg.exe";
  ASSERT_TRUE(CopyFileA((own_folder() + "test_host.exe").c_str(), debug_build.c_str(), FALSE));
  {
    const mrProgram host("copied_hostg");
    EXPECT_STREQ("copied_host", path_of(host.frame())[0].module);
  }
  EXPECT_TRUE(wait_until([&] { return DeleteFileA(debug_build.c_str()) != FALSE; }));
}

// ---- levels -------------------------------------------------------------------------------------------

TEST(WindowPath, OfATopLevelWindowIsOneLevel) {
  const mrTestFrame frame("PathFrame", "Main window");
  // The id of a top-level window is its menu's handle.
  const HMENU menu = CreateMenu();
  AppendMenuA(menu, MF_STRING, 1, "Item");
  SetMenu(frame, menu);
  ASSERT_NE(0, GetWindowLongPtrA(frame, GWLP_ID));

  const std::vector<mrWindowInfo> path = path_of(frame);
  ASSERT_EQ(1u, path.size());
  const mrWindowInfo& level = path[0];
  EXPECT_STREQ("window_path_test", level.module);
  EXPECT_STREQ("Main window", level.text);
  EXPECT_STREQ("PathFrame", level.class_name);
  EXPECT_STREQ("", level.name);
  EXPECT_STREQ("", level.resource_library);
  EXPECT_EQ(0, level.id);
  EXPECT_EQ(GetWindowLongPtrA(frame, GWL_STYLE), level.style);
  EXPECT_EQ(GetWindowLongPtrA(frame, GWL_EXSTYLE), level.ex_style);
  EXPECT_EQ(0x10, level.flags);
  EXPECT_EQ(frame, level.window);
  EXPECT_EQ(0, level.label_position.x);
  EXPECT_EQ(0, level.label_position.y);
  EXPECT_EQ(1, level.top_level);
  EXPECT_EQ(0u, level.dialog_template_id);
}

TEST(WindowPath, GoesFromTheWindowUpToItsTopLevelAncestor) {
  register_test_class("PathChild");
  const mrTestFrame frame("PathFrame", "Frame");
  const mrTestWindow middle("PathChild", "Middle", WS_CHILD, frame, 12);
  const mrTestWindow inner("PathChild", "Inner", WS_CHILD, middle, -3, WS_EX_CLIENTEDGE);
  const std::vector<mrWindowInfo> path = path_of(inner);
  ASSERT_EQ(3u, path.size());
  EXPECT_STREQ("Inner", path[0].text);
  EXPECT_EQ(-3, static_cast<int>(path[0].id));
  EXPECT_EQ(WS_EX_CLIENTEDGE, path[0].ex_style & WS_EX_CLIENTEDGE);
  EXPECT_EQ(0, path[0].flags);
  EXPECT_EQ(0, path[0].top_level);
  EXPECT_STREQ("Middle", path[1].text);
  EXPECT_EQ(12, path[1].id);
  EXPECT_EQ(0, path[1].top_level);
  EXPECT_STREQ("Frame", path[2].text);
  EXPECT_EQ(1, path[2].top_level);
}

// An owned window is no child, but GetParent answers its owner.
TEST(WindowPath, GoesOnFromAnOwnedWindowToItsOwner) {
  register_test_class("PathChild");
  const mrTestFrame frame("PathFrame", "Frame");
  const mrTestWindow popup("PathChild", "Popup", WS_POPUP, frame);
  const std::vector<mrWindowInfo> path = path_of(popup);
  ASSERT_EQ(2u, path.size());
  EXPECT_EQ(0x10, path[0].flags);
  EXPECT_EQ(0, path[0].id);
  EXPECT_EQ(0, path[0].top_level);
  EXPECT_STREQ("Frame", path[1].text);
}

TEST(WindowPath, OfAWindowThatIsGoneIsOneEmptyLevel) {
  mrTestFrame frame("PathFrame", "Gone");
  const HWND window = frame;
  frame.destroy();
  const std::vector<mrWindowInfo> path = path_of(window);
  ASSERT_EQ(1u, path.size());
  EXPECT_EQ(window, path[0].window);
  EXPECT_STREQ("", path[0].module);
  EXPECT_STREQ("", path[0].text);
  EXPECT_STREQ("", path[0].class_name);
  EXPECT_EQ(0, path[0].id);
  EXPECT_EQ(1, path[0].top_level);
}

TEST(WindowPath, CutsTextsTo259Characters) {
  const std::string text(400, 't');
  const mrTestFrame frame("PathFrame", text.c_str());
  EXPECT_EQ(std::string(259, 't'), path_of(frame)[0].text);
}

TEST(WindowPath, IsNotRefreshedWhenTheWindowChanges) {
  const mrTestFrame frame("PathFrame", "Before");
  const mrBaseWindow action(frame, &factory);
  SetWindowTextA(frame, "After");
  EXPECT_STREQ("Before", action.get_path()[0]->text);
}

// ---- what the host tells --------------------------------------------------------------------------------

class Identity : public testing::Test {
protected:
  Identity()
      : frame("PathFrame", "Frame"),
        dialog((register_test_class("PathChild"), "PathChild"), "Dialog", WS_CHILD, frame, 1),
        control("PathChild", "Control", WS_CHILD, dialog, 2) {
    answer(frame, "frame");
    answer(dialog, "dialog");
    answer(control, "control");
  }

  // Notes each identity message as "window message wParam lParam" and answers what the test has set for
  // "window message".
  void answer(mrTestWindow& window, const std::string& name) {
    window.set_answer([this, name](UINT message, WPARAM wparam, LPARAM lparam, LRESULT& result) {
      const std::string what = message_name(message);
      if (what.empty())
        return false;
      asked.push_back(name + " " + what + " " + std::to_string(wparam) + " " + window_name(lparam));
      const auto reply = replies.find(name + " " + what);
      result = reply == replies.end() ? 0 : reply->second();
      return true;
    });
  }
  static std::string message_name(UINT message) {
    const mrHostMessages& host = host_messages();
    return message == host.get_window_name          ? "name"
           : message == host.get_dialog_template_id ? "template"
           : message == host.get_dialog_res_library ? "library"
           : message == host.get_window_idd         ? "idd"
                                                    : "";
  }
  std::string window_name(LPARAM lparam) {
    const HWND window = reinterpret_cast<HWND>(lparam);
    return !window             ? "0"
           : window == frame   ? "frame"
           : window == dialog  ? "dialog"
           : window == control ? "control"
                               : "other";
  }
  static std::function<LRESULT()> atom(const char* text) {
    return [text] { return GlobalAddAtomA(text); };
  }
  static std::function<LRESULT()> number(LRESULT value) {
    return [value] { return value; };
  }

  mrTestFrame frame;
  mrTestWindow dialog;
  mrTestWindow control;
  std::map<std::string, std::function<LRESULT()>> replies;
  std::vector<std::string> asked;
};

TEST_F(Identity, IsAskedOfTheParentAndOfTheTopLevelAncestor) {
  path_of(control);
  EXPECT_THAT(asked, ElementsAre("frame name 0 control", "dialog template 0 0", "frame idd 0 dialog",
                                 "frame name 0 dialog", "frame template 0 0", "frame idd 0 frame",
                                 "frame name 0 frame"));
}

TEST_F(Identity, AsksForTheLibraryOnlyWhereATemplateIsKnown) {
  replies["dialog template"] = number(4711);
  path_of(control);
  EXPECT_THAT(asked, ElementsAre("frame name 0 control", "dialog template 0 0", "dialog library 0 0",
                                 "frame name 0 dialog", "frame template 0 0", "frame idd 0 frame",
                                 "frame name 0 frame"));
}

TEST_F(Identity, TakesNameTemplateAndLibrary) {
  replies["frame name"] = atom("Options Page");
  replies["dialog template"] = number(4711);
  replies["dialog library"] = atom("mr test resources");
  const mrWindowInfo level = path_of(control)[0];
  EXPECT_STREQ("Options Page", level.name);
  EXPECT_EQ(4711u, level.dialog_template_id);
  EXPECT_STREQ("mr test resources", level.resource_library);
}

TEST_F(Identity, TakesTheDialogsResourceIdWhereNoTemplateIsKnown) {
  replies["frame idd"] = number(815);
  replies["dialog library"] = atom("not asked for");
  const mrWindowInfo level = path_of(control)[0];
  EXPECT_EQ(815u, level.dialog_template_id);
  EXPECT_STREQ("", level.resource_library);
  EXPECT_EQ(0, GlobalFindAtomA("not asked for"));
}

// The host adds an atom for each question, the recorder deletes it.
TEST_F(Identity, DeletesTheAtomsThatItWasGiven) {
  replies["frame name"] = atom("mr test name atom");
  replies["dialog template"] = number(1);
  replies["dialog library"] = atom("mr test library atom");
  const mrWindowInfo level = path_of(control)[0];
  ASSERT_STREQ("mr test name atom", level.name);
  ASSERT_STREQ("mr test library atom", level.resource_library);
  EXPECT_EQ(0, GlobalFindAtomA("mr test name atom"));
  EXPECT_EQ(0, GlobalFindAtomA("mr test library atom"));
}

// Numbers below 0xC000 are atoms of the system's own, named by their number.
TEST_F(Identity, TakesAReplyWithOneOfTheBitsForAnAtom) {
  for (const LRESULT reply : {LRESULT(0x4001), LRESULT(0x8001)}) {
    replies["frame name"] = number(reply);
    replies["dialog template"] = number(1);
    replies["dialog library"] = number(reply);
    const mrWindowInfo level = path_of(control)[0];
    EXPECT_EQ("#" + std::to_string(reply), level.name);
    EXPECT_EQ("#" + std::to_string(reply), level.resource_library);
  }
}

TEST_F(Identity, IgnoresAReplyWithoutTheBitsOfAnAtom) {
  const ATOM kept = GlobalAddAtomA("mr test kept atom");
  ASSERT_GE(kept, 0xC000);
  for (const LRESULT reply : {LRESULT(0x1234), LRESULT(kept & 0x3FFF), LRESULT(0x10000)}) {
    replies["frame name"] = number(reply);
    replies["dialog template"] = number(1);
    replies["dialog library"] = number(reply);
    const mrWindowInfo level = path_of(control)[0];
    EXPECT_STREQ("", level.name) << reply;
    EXPECT_STREQ("", level.resource_library) << reply;
  }
  EXPECT_EQ(kept, GlobalFindAtomA("mr test kept atom")) << "nothing is deleted";
  GlobalDeleteAtom(kept);
}

TEST_F(Identity, HasNoTextForAnAtomThatDoesNotExist) {
  replies["frame name"] = number(0xFFFE);
  EXPECT_STREQ("", path_of(control)[0].name);
}

TEST(IdentityOfAHost, IsAskedAcrossTheProcesses) {
  const mrProgram host("test_host");
  const std::vector<mrWindowInfo> path = path_of(GetDlgItem(host.frame(), host_control_id));
  ASSERT_EQ(2u, path.size());
  EXPECT_STREQ("test_host", path[0].module);
  EXPECT_STREQ("TestHostControl", path[0].class_name);
  EXPECT_STREQ(host_control_name, path[0].name);
  EXPECT_EQ(host_control_id, path[0].id);
  EXPECT_EQ(static_cast<unsigned>(host_template_id), path[0].dialog_template_id);
  EXPECT_STREQ(host_resource_library, path[0].resource_library);
  EXPECT_STREQ("Test host", path[1].text);
  EXPECT_STREQ("", path[1].name);
  EXPECT_EQ(0, GlobalFindAtomA(host_control_name));
  EXPECT_EQ(0, GlobalFindAtomA(host_resource_library));
}

// ---- labels of untitled child dialogs
// -----------------------------------------------------------------------

constexpr DWORD visible_child = WS_CHILD | WS_VISIBLE;

class DialogLabel : public testing::Test {
protected:
  DialogLabel() : frame("PathFrame", "Frame") { make_dialog("", visible_child, 0); }

  void make_dialog(const char* text, DWORD style, int id) {
    dialog = std::make_unique<mrTestWindow>("#32770", text, style, frame, id, 0, RECT{20, 30, 320, 230});
  }
  HWND add(const char* class_name, const char* text, int x, int y, int id = 9, DWORD style = visible_child,
           HWND parent = nullptr) {
    children.push_back(std::make_unique<mrTestWindow>(
        class_name, text, style, parent ? parent : dialog->get(), id, 0, RECT{x, y, x + 80, y + 12}));
    return *children.back();
  }
  mrWindowInfo level() { return path_of(*dialog)[0]; }
  void expect_no_label() {
    const mrWindowInfo info = level();
    EXPECT_STREQ("#32770", info.class_name);
    EXPECT_STREQ("", info.text);
    EXPECT_EQ(0, info.id);
    EXPECT_EQ(32767, info.label_position.x);
    EXPECT_EQ(64, info.label_position.y);
  }
  void expect_label(const char* text, int x, int y) {
    const mrWindowInfo info = level();
    EXPECT_STREQ(text, info.text);
    EXPECT_EQ(x, info.label_position.x);
    EXPECT_EQ(y, info.label_position.y);
  }

  mrTestFrame frame;
  std::unique_ptr<mrTestWindow> dialog;
  std::vector<std::unique_ptr<mrTestWindow>> children;  // destroyed before their dialog
};

TEST_F(DialogLabel, GivesTheDialogItsTextAndId) {
  SetWindowPos(frame, nullptr, 0, 0, 0, 0, SWP_SHOWWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER);
  add("Static", "&Name:", 10, 8, 1005);
  const mrWindowInfo info = level();
  EXPECT_STREQ("&Name:", info.text);
  EXPECT_EQ(1005, info.id);
  EXPECT_STREQ("mrDialogByVisControlClass", info.class_name);
  EXPECT_EQ(10, info.label_position.x);
  EXPECT_EQ(8, info.label_position.y);
}

TEST_F(DialogLabel, HasAnotherMarkerWhenItIsHidden) {
  add("Static", "Hidden", 10, 8, 1005, WS_CHILD);
  EXPECT_STREQ("mrDialogByControlClass", level().class_name);
}

// Visible means on the screen: with a hidden dialog its labels are hidden too.
TEST_F(DialogLabel, CountsAsHiddenInAHiddenDialog) {
  add("Static", "Label", 10, 8);
  ShowWindow(*dialog, SW_HIDE);
  EXPECT_STREQ("mrDialogByControlClass", level().class_name);
}

TEST_F(DialogLabel, IsTheTopmostAndOfEquallyHighOnesTheLeftmost) {
  add("Static", "Right", 10, 8);
  add("Button", "Left", 5, 8, 7, visible_child | BS_GROUPBOX);
  add("Static", "Lower", 0, 9);
  expect_label("Left", 5, 8);
}

TEST_F(DialogLabel, IsTheSameInAnyOrderOfCreation) {
  add("Static", "Lower", 0, 9);
  add("Button", "Left", 5, 8, 7, visible_child | BS_GROUPBOX);
  add("Static", "Right", 10, 8);
  expect_label("Left", 5, 8);
}

TEST_F(DialogLabel, IsTheFirstOfTwoAtOnePlace) {
  add("Static", "First", 10, 8, 1);
  add("Static", "Second", 10, 8, 2);
  const char* const first = GetWindow(*dialog, GW_CHILD) == children[0]->get() ? "First" : "Second";
  expect_label(first, 10, 8);
}

TEST_F(DialogLabel, LiesLessThan64PixelsBelowTheTopEdge) {
  add("Static", "At 64", 0, 64);
  add("Static", "Below", 0, 100);
  expect_no_label();
  add("Static", "At 63", 30000, 63);
  expect_label("At 63", 30000, 63);
}

TEST_F(DialogLabel, MayLieAboveAndLeftOfTheDialog) {
  add("Static", "Inside", 10, 8);
  add("Static", "Outside", -4, -5);
  expect_label("Outside", -4, -5);
}

// A dialog with a border: the offset counts from the corner of the window, not of its client area.
TEST_F(DialogLabel, IsMeasuredFromTheCornerOfTheDialog) {
  make_dialog("", visible_child | WS_BORDER, 0);
  add("Static", "Label", 10, 8);
  expect_label("Label", 11, 9);
}

TEST_F(DialogLabel, IsADirectChildWithATextOfALabelsKind) {
  add("Static", "", 1, 1);
  add("Button", "Check", 1, 2, 3, visible_child | BS_AUTOCHECKBOX);
  add("Button", "Push", 1, 3);
  add("Edit", "Edit", 1, 4);
  add("ScrollBar", "Bar", 1, 5);
  const HWND group = add("Button", "", 1, 6, 3, visible_child | BS_GROUPBOX);
  add("Static", "Grandchild", 1, 1, 9, visible_child, group);
  expect_no_label();
  add("Button", "Group", 1, 40, 3, visible_child | WS_GROUP | BS_GROUPBOX);
  expect_label("Group", 1, 40);
}

TEST_F(DialogLabel, IsNotLookedForWhereTheDialogHasATextOrAnId) {
  for (const int id : {0, 77}) {
    make_dialog(id ? "" : "Titled", visible_child, id);
    add("Static", "Label", 10, 8);
    const mrWindowInfo info = level();
    EXPECT_STREQ("#32770", info.class_name);
    EXPECT_STREQ(id ? "" : "Titled", info.text);
    EXPECT_EQ(id, info.id);
    EXPECT_EQ(0, info.label_position.y);
    children.clear();
  }
}

TEST_F(DialogLabel, IsLookedForInChildDialogsOnly) {
  make_dialog("", WS_POPUP, 0);
  add("Static", "Label", 10, 8);
  EXPECT_STREQ("#32770", level().class_name);
  EXPECT_STREQ("", level().text);

  children.clear();
  register_test_class("PathChild");
  const mrTestWindow other("PathChild", "", visible_child, frame);
  add("Static", "Label", 10, 8, 9, visible_child, other);
  EXPECT_STREQ("", path_of(other)[0].text);
  children.clear();
}
