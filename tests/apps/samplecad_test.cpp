// The sample host by itself: every dialog opens and closes, its windows answer as docs/samplecad.md says, it
// ends cleanly, and mistakes on the command line are told.
#include "apps/SampleCad/common_ids.h"
#include "apps/SampleCad/gallery.dev/gallery.h"
#include "apps/SampleCad/samplecad.dev/resource.h"
#include "host/kvttools.h"
#include "tests/support/e2e.h"
#include "tests/support/files.h"
#include "tests/support/ready_file.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace {

constexpr DWORD end_limit_ms = 20000;

// SampleCad with a ready file.
class Host {
public:
  explicit Host(const std::string& arguments = "") : m_program(m_places.argument() + " " + arguments) {
    m_places.rect("frame", "window");
  }

  const mrReadyFile& places() const { return m_places; }
  // Not the program's first window that is seen: a dialog of the start may come before anybody looks.
  HWND frame() const { return m_program.wait_for_window("SampleCad", "SampleCadFrame"); }
  HWND child(int id) const { return GetDlgItem(frame(), id); }
  HWND dialog(const std::string& title) const { return m_program.wait_for_dialog(title); }
  void command(int id) const { PostMessageA(frame(), WM_COMMAND, static_cast<WPARAM>(id), 0); }

  HWND view() const {
    const HWND document = find_child(frame(), "SampleCadDocument");
    return document ? GetDlgItem(document, IDC_VIEW) : nullptr;
  }

  // Closes the frame as its close box does; the exit status, -1 when the program does not end.
  int close() const {
    PostMessageA(frame(), WM_SYSCOMMAND, SC_CLOSE, 0);
    if (WaitForSingleObject(m_program.process(), end_limit_ms) != WAIT_OBJECT_0)
      return -1;
    DWORD status = 0;
    GetExitCodeProcess(m_program.process(), &status);
    return static_cast<int>(status);
  }

private:
  mrReadyFile m_places;
  mrSampleCad m_program;
};

// A run that is over at once: the exit status and what it wrote.
struct ShortRun {
  explicit ShortRun(const std::string& arguments) {
    mrTestFolder folder;
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    const HANDLE out = CreateFileA(folder.path("text").c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                                   CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    std::string command = "\"" + own_folder() + "SampleCad.exe\" " + arguments;
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = out;
    PROCESS_INFORMATION process = {};
    const bool started =
        CreateProcessA(nullptr, &command[0], nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process);
    CloseHandle(out);
    EXPECT_TRUE(started);
    if (!started)
      return;
    if (WaitForSingleObject(process.hProcess, end_limit_ms) == WAIT_OBJECT_0)
      GetExitCodeProcess(process.hProcess, &status);
    else
      TerminateProcess(process.hProcess, 1);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    text = read_file(folder.path("text"));
  }

  DWORD status = static_cast<DWORD>(-1);
  std::string text;
};

// Reads an atom that was handed over and deletes it, as a recorder does.
std::string take_atom(LRESULT atom) {
  char text[260] = "";
  if (!(atom & 0xC000) || !GlobalGetAtomNameA(static_cast<ATOM>(atom), text, sizeof text))
    return "no atom";
  GlobalDeleteAtom(static_cast<ATOM>(atom));
  return text;
}

LRESULT ask(HWND window, const char* message, WPARAM wparam = 0, LPARAM lparam = 0) {
  return SendMessageA(window, RegisterWindowMessageA(message), wparam, lparam);
}

std::string name_of(const Host& host, HWND window) {
  return take_atom(ask(host.frame(), "MSG_ZQ_GetWindowName", 0, reinterpret_cast<LPARAM>(window)));
}

}  // namespace

// ---- every dialog -------------------------------------------------------------------------------

struct DialogCase {
  const char* name;   // of --dialog
  const char* place;  // in the ready file
  const char* title;
};
constexpr DialogCase dialog_cases[] = {
    {"shape", "dialog:shape", "Shape"},
    {"find", "dialog:find", "Find"},
    {"properties", "dialog:properties", "Document properties"},
    {"note", "dialog:note:1", "Annotation 1"},
    {"about", "dialog:about", "About SampleCad"},
    {"open", "dialog:open", "Open"},
    {"save", "dialog:save", "Save as"},
    {"system-open", "other:#32770", "Open"},
    {"system-save", "other:#32770", "Save"},
    {"options", "dialog:options", "Options"},
    {"ribbon", "dialog:ribbon", "Customise ribbon"},
    {"table", "dialog:table", "Object table"},
    {"buttons", "dialog:buttons", "Buttons"},
    {"edits", "dialog:edits", "Edits"},
    {"combos", "dialog:combos", "Combo boxes"},
    {"lists", "dialog:lists", "Lists"},
    {"trees", "dialog:trees", "Trees"},
    {"tabs", "dialog:tabs", "Tabs"},
    {"sliders", "dialog:sliders", "Sliders"},
};

void PrintTo(const DialogCase& c, std::ostream* out) { *out << c.title; }

class SampleCadDialog : public testing::TestWithParam<DialogCase> {};

TEST_P(SampleCadDialog, OpensAndClosesAndTheProgramEnds) {
  const Host host(std::string("--dialog ") + GetParam().name);
  host.places().rect(GetParam().place, "window");
  const HWND dialog = host.dialog(GetParam().title);
  ASSERT_NE(nullptr, dialog);
  PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
  host.places().wait_until_gone(GetParam().place);
  EXPECT_EQ(0, host.close());
}

INSTANTIATE_TEST_SUITE_P(All, SampleCadDialog, testing::ValuesIn(dialog_cases), [](const auto& info) {
  std::string name = info.param.name;
  for (char& ch : name)
    ch = ch == '-' ? '_' : ch;
  return name;
});

// ---- start and end ------------------------------------------------------------------------------

TEST(SampleCadCommandLine, MistakesAreToldWithStatus2) {
  struct Case {
    const char* arguments;
    const char* told;
  };
  constexpr Case cases[] = {
      {"--nonsense", "unknown option '--nonsense'"},          {"--dialog", "option '--dialog' needs a value"},
      {"--dialog nonsense", "no dialog is named 'nonsense'"}, {"--ready", "option '--ready' needs a value"},
      {"a.scm b.scm", "more than one file: 'b.scm'"},
  };
  for (const Case& c : cases) {
    const ShortRun run(c.arguments);
    EXPECT_EQ(2u, run.status) << c.arguments;
    EXPECT_NE(std::string::npos, run.text.find(std::string("SampleCad: ") + c.told)) << run.text;
  }
}

TEST(SampleCadCommandLine, VersionAndHelpOpenNoWindow) {
  const ShortRun version("--version");
  EXPECT_EQ(0u, version.status);
  EXPECT_EQ(0u, version.text.find("SampleCad "));
  const ShortRun help("--help");
  EXPECT_EQ(0u, help.status);
  for (const DialogCase& c : dialog_cases)
    EXPECT_NE(std::string::npos, help.text.find(c.name)) << c.name;
}

TEST(SampleCad, EndsWithEverythingOpen) {
  const Host host("--dialog find --dialog note --dialog note --dialog table --dialog lists");
  for (const char* place : {"dialog:find", "dialog:note:1", "dialog:note:2", "dialog:table", "dialog:lists"})
    host.places().rect(place, "window");
  EXPECT_EQ(0, host.close());
  EXPECT_FALSE(host.places().lists("frame", "window")) << "the ready file goes with the program";
}

TEST(SampleCad, SavesTheModelThatItOpened) {
  mrTestFolder folder;
  const std::string path = folder.path("part.scm");
  const std::string model =
      "SampleCad model 1\r\n"
      "0\t1.000\t-2.500\t0.000\t30.000\t12.000\t0a0b0c\t1\t0\t1\tPlate \"A\"\tHousing\r\n"
      "5\t0.000\t0.000\t0.000\t40.000\t8.000\tffffff\t0\t1\t0\tWheel\t\r\n";
  write_file(path, model);
  const Host host("\"" + path + "\"");
  host.places().rect("pane", "IDC_CAD_TREE[1|1|1]");
  // Gone for a moment, so that one sees it written.
  ASSERT_TRUE(DeleteFileA(path.c_str()));
  host.command(IDM_FILE_SAVE);
  EXPECT_TRUE(wait_until([&] { return read_file(path) == model; })) << read_file(path);
}

// ---- what its windows answer --------------------------------------------------------------------

TEST(SampleCadIdentity, DialogsTellTheirTemplateAndLibrary) {
  const Host host("--dialog buttons");
  const HWND dialog = host.dialog("Buttons");
  EXPECT_EQ(IDD_BUTTONS, ask(dialog, "MSG_ZQ_GetDialogTemplateID"));
  EXPECT_EQ("samplecad", take_atom(ask(dialog, "MSG_ZQ_GetDialogResLibrary")));
  EXPECT_EQ(0, ask(host.frame(), "MSG_ZQ_GetDialogTemplateID"));
}

TEST(SampleCadIdentity, FrameTellsNamesThatTheProgramGave) {
  const Host host("--dialog buttons");
  const HWND dialog = host.dialog("Buttons");
  EXPECT_EQ("NamedButton", name_of(host, GetDlgItem(dialog, IDC_PUSH_NAMED)));
  EXPECT_EQ("no atom", name_of(host, GetDlgItem(dialog, IDC_PUSH)));
}

TEST(SampleCadIdentity, FrameTellsTheDialogOfThePane) {
  const Host host;
  const HWND pane = host.child(IDC_MODEL_PANE);
  ASSERT_NE(nullptr, pane);
  EXPECT_EQ(0, ask(pane, "MSG_ZQ_GetDialogTemplateID"));
  EXPECT_EQ(IDD_MODEL_PANE, ask(host.frame(), "MSG_ZQ_GetWindowIDD", 0, reinterpret_cast<LPARAM>(pane)));
}

TEST(SampleCadAnswers, ViewTellsItsCamera) {
  const Host host;
  const HWND view = host.view();
  ASSERT_NE(nullptr, view);
  EXPECT_EQ(1, ask(view, "MSG_ZQ_GetViewPosition", 1));
  const std::string before = take_atom(ask(view, "MSG_ZQ_GetViewPosition"));
  EXPECT_EQ(0u, before.find("yaw=")) << before;
  host.command(IDM_VIEW_TOP);
  std::string after;
  EXPECT_TRUE(wait_until([&] { return (after = take_atom(ask(view, "MSG_ZQ_GetViewPosition"))) != before; }));
  EXPECT_NE(std::string::npos, after.find("pitch=90.0")) << after;
}

TEST(SampleCadAnswers, CamerasLeaveNoAtomBehind) {
  const Host host;
  const HWND view = host.view();
  ASSERT_NE(nullptr, view);
  std::string camera;
  for (int i = 0; i < 1000; ++i)
    camera = take_atom(ask(view, "MSG_ZQ_GetViewPosition"));
  EXPECT_EQ(0, GlobalFindAtomA(camera.c_str()));
}

TEST(SampleCadAnswers, HostControlsAreTold) {
  const Host host("--dialog ribbon");
  const HWND pane = host.child(IDC_MODEL_PANE);
  EXPECT_EQ(165, SendMessageA(GetDlgItem(pane, IDC_CAD_TREE), kvtWM_REQUEST_CAD_TREE_INFORMATION, 0, 0));
  EXPECT_EQ(165, ask(GetDlgItem(pane, IDC_PROPERTY_GRID), "MSG_GX_RequestGridInformation"));
  const HWND widget = GetDlgItem(host.dialog("Customise ribbon"), IDC_RIBBON_COMMANDS);
  EXPECT_EQ(165, ask(widget, "MSG_REQUEST_RIB_CUSTOMISATION_WIDGET_DATA"));
  // Nobody else answers so.
  for (const HWND other : {host.frame(), pane, host.view()}) {
    EXPECT_EQ(0, SendMessageA(other, kvtWM_REQUEST_CAD_TREE_INFORMATION, 0, 0));
    EXPECT_EQ(0, ask(other, "MSG_GX_RequestGridInformation"));
    EXPECT_EQ(0, ask(other, "MSG_REQUEST_RIB_CUSTOMISATION_WIDGET_DATA"));
  }
}
