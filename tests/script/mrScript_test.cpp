// The script job, byte for byte.
#include "controls/mrWindow.h"
#include "tests/support/golden.h"
#include "tests/support/paths.h"
#include "tests/support/recording.h"

#include <gtest/gtest.h>

constexpr __int64 modal = static_cast<__int64>(WS_POPUP | DS_MODALFRAME | WS_CAPTION);

// An action of no window at all.
class RemarkAction : public mrAction {
public:
  RemarkAction() : mrAction(nullptr) {}
  void get_script(CString& script) override { script += "  // remark"; }
};

class Script : public testing::Test {
protected:
  Script() {
    // No such folder: the constants script is the one of the developers' drive, on every machine.
    SetEnvironmentVariableA("ZQ_APPLICATION_FOLDER", "C:\\No such folder\\bin\\x64");
    factory.set_recorder(&recorder);
  }
  ~Script() override { SetEnvironmentVariableA("ZQ_APPLICATION_FOLDER", nullptr); }

  void act(std::initializer_list<mrWindowInfo> levels, const char* statement) {
    recorder.m_actions.AddTail(new mrPathAction(&factory, levels, statement));
  }
  std::string script() {
    CString text;
    recorder.get_script(text);
    return text.str();
  }
  std::string between(const char* begin, const char* end) {
    const std::string text = script();
    const size_t first = text.find(begin) + strlen(begin);
    return text.substr(first, text.find(end) - first);
  }
  std::string body() { return between("  // Script begin\r\n", "  // Script end\r\n"); }
  std::string functions() {
    return between("// Windows declarations begin\r\n", "// Windows declarations end\r\n");
  }

  mrTestRecorder recorder;
  mrWindowFactory factory;
};

// ---- the job ------------------------------------------------------------------------------------------

// clang-format off
constexpr char empty_job[] = "<job>\r\n<reference object=\"MacroPlayer.MacroPlayer\"/>\r\n<script language=\"JScript\" src=\"P:\\devel\\utestsuite\\scriptinclude\\ui_consts.js\" />\r\n<script language=\"JScript\">\r\n\r\nvar mpRECURSIVE_SEARCH = 64;\r\nvar macro_player;\r\n\r\n// Entry point\r\nfunction main()\r\n{\r\n  //===========================================================================\r\n  // Script begin\r\n  // Script end\r\n  //===========================================================================\r\n}\r\n\r\n//=============================================================================\r\n// Windows declarations begin\r\n// Windows declarations end\r\n//=============================================================================\r\n\r\n// Create Macro Player\r\nmacro_player = new ActiveXObject(\"MacroPlayer.MacroPlayer\");\r\nmain();\r\nWScript.Echo(\"Script ended\");\r\n\r\n</script>\r\n</job>";
// clang-format on

TEST_F(Script, IsTheJobTemplateAroundNothing) { EXPECT_EQ(empty_job, script()); }

TEST_F(Script, GoldenEmptyJob) { expect_golden("empty_job.wsf", script()); }

TEST_F(Script, GoldenClickInADialog) {
  act({mrLevel{"AfxWnd140", "View", 0}, mrLevel{"#32770", "Options", 100}, main_window()},
      "Click(1, 10, 20, 0);");
  expect_golden("click_in_dialog.wsf", script());
}

// Every kind of window expression, several main windows, shared windows, and texts that must be quoted.
TEST_F(Script, GoldenWorkInManyWindows) {
  recorder.get_namer().add_constant("general", "IDC_NAME", 1005);
  const mrWindowInfo host = main_window();
  const mrWindowInfo tool = main_window("ToolFrame", "tool");
  act({host}, "Command(32771);");
  act({mrLevel{"AfxView", "", 59648}, mrLevel{"Doc", "Drawing1", 65280, WS_CHILD, WS_EX_MDICHILD},
       mrLevel{"MDIClient"}, host},
      "Click(1, 100, 120, 8);");
  act({mrLevel{"Box", "Say \"yes\"", 1005}, mrLevel{"#32770", "Properties", 0, modal},
       mrLevel{"Owner", "Skipped"}, host},
      "DoubleClick(1, 3, 4, 0);");
  act({mrLevel{"Box", "", 5}, mrLevel{"#32770"}, mrLevel{"Pane", "Side pane", 7}, host}, "Close();");
  act({mrLevel{"Box", "", 6}, mrLevel{"Pane", "Side pane", 7}, host}, "Click(2, 1, 1, 0);");
  act({mrLevel{"Box", "Depth", 0, WS_CHILD, 0, "Depth box"}, mrLevel{"Pane", "Ignored"}, tool},
      "Click(1, 0, 0, 0);");
  act({mrLevel{"Box", "3D View"}, mrLevel{"mrDialogByVisControlClass", "Layers", 12}, tool},
      "MouseDown(1, -5, -6, 4);");
  act({mrLevel{"Box", "3D View"}, mrLevel{"mrDialogByControlClass", "Layers", 12}, tool},
      "MouseUp(1, -5, -6, 4);");
  act({host}, "ContextMenu(7, 8);");
  recorder.m_actions.AddTail(new RemarkAction);
  expect_golden("many_windows.wsf", script());
}

TEST_F(Script, TakesTheConstantsFileOfTheInstallation) {
  char folder[MAX_PATH] = "";
  GetTempPathA(MAX_PATH, folder);
  const std::string root = folder + std::string("mr_script_test") + std::to_string(GetCurrentProcessId());
  for (const char* part : {"", "\\file", "\\file\\ui_recording"})
    CreateDirectoryA((root + part).c_str(), nullptr);
  SetEnvironmentVariableA("ZQ_APPLICATION_FOLDER", (root + "\\bin\\x64").c_str());
  EXPECT_NE(std::string::npos, script().find("src=\"" + root + "\\file\\ui_recording\\ui_consts.js\" />"));
  for (const char* part : {"\\file\\ui_recording", "\\file", ""})
    RemoveDirectoryA((root + part).c_str());
}

// ---- the body -----------------------------------------------------------------------------------------

TEST_F(Script, GivesATopLevelWindowTheFocusBeforeItsFirstStatementOnly) {
  const mrWindowInfo main_x = main_window("Frame", "x");
  const mrWindowInfo main_y = main_window("Frame", "y");
  act({mrLevel{"Box", "a"}, main_x}, "One();");
  act({mrLevel{"Box", "b"}, main_x}, "Two();");
  act({main_y}, "Three();");
  act({mrLevel{"Box", "a"}, main_x}, "Four();");
  EXPECT_EQ("  Main_x().SetFocus();\r\n"
            "  a().One();\r\n"
            "  b().Two();\r\n"
            "  Main_y().SetFocus();\r\n"
            "  Main_y().Three();\r\n"
            "  Main_x().SetFocus();\r\n"
            "  a().Four();\r\n",
            body());
}

TEST_F(Script, LeavesTheFocusWhereItIsForAnActionWithoutAWindow) {
  const mrWindowInfo main_x = main_window("Frame", "x");
  act({main_x}, "One();");
  recorder.m_actions.AddTail(new RemarkAction);
  act({}, "NoWindow();");
  act({main_x}, "Two();");
  EXPECT_EQ("  Main_x().SetFocus();\r\n"
            "  Main_x().One();\r\n"
            "  // remark\r\n"
            "  ().NoWindow();\r\n"
            "  Main_x().Two();\r\n",
            body());
}

// A path whose highest level is no node below the root: there is nothing to give the focus to, and the next
// statement on the window before gives it again.
TEST_F(Script, LosesTheFocusAtAWindowThatIsNoRootOfTheTree) {
  const mrWindowInfo main_x = main_window("Frame", "x");
  act({main_x}, "One();");
  act({mrLevel{"Box", "a", 0, WS_CHILD, 0, "Named"}, mrLevel{"Pane", "Not declared below a name"}}, "Two();");
  act({main_x}, "Three();");
  EXPECT_EQ("  Main_x().SetFocus();\r\n"
            "  Main_x().One();\r\n"
            "  Named().Two();\r\n"
            "  Main_x().SetFocus();\r\n"
            "  Main_x().Three();\r\n",
            body());
}

TEST_F(Script, SkipsAnActionThatCouldNotBeMade) {
  recorder.m_actions.AddTail(nullptr);
  act({main_window()}, "One();");
  EXPECT_EQ("  Main_host().SetFocus();\r\n  Main_host().One();\r\n", body());
}

// ---- the functions ------------------------------------------------------------------------------------

TEST_F(Script, WritesTheFunctionsOfTheMainWindowAndOfWhatIsCalledOnly) {
  act({mrLevel{"Box", "Control"}, mrLevel{"#32770", "Dialog"}, main_window("Frame", "x")}, "Click();");
  EXPECT_EQ("function Main_x()\r\n"
            "{\r\n"
            "  return macro_player.\r\n"
            "    MainWindow(\"x\", \"\", \"Frame\");\r\n"
            "}\r\n"
            "\r\n"
            "function Control()\r\n"
            "{\r\n"
            "  return Main_x().\r\n"
            "    ChildDialog(\"Dialog\").\r\n"
            "      ChildWindow(\"Control\", \"Box\");\r\n"
            "}\r\n"
            "\r\n",
            functions());
}

// Top-level means without a parent. An owned window is no child either, but has one.
TEST_F(Script, WritesNoFunctionForAnOwnedWindowThatNobodyCalls) {
  mrWindowInfo owned = mrLevel{"Tool", "Owned", 0, static_cast<__int64>(WS_POPUP)};
  owned.flags = mr_window_not_child;
  act({mrLevel{"Box", "A"}, owned, main_window("Frame", "x")}, "Click();");
  EXPECT_EQ(std::string::npos, functions().find("function Owned"));
  EXPECT_NE(std::string::npos, functions().find("function Main_x"));
}

TEST_F(Script, WritesTheFunctionOfAWindowThatTwoOthersShare) {
  act({mrLevel{"Box", "A"}, mrLevel{"#32770", "Dialog"}, main_window("Frame", "x")}, "Click();");
  act({mrLevel{"Box", "B"}, mrLevel{"#32770", "Dialog"}, main_window("Frame", "x")}, "Click();");
  EXPECT_EQ("function Main_x()\r\n"
            "{\r\n"
            "  return macro_player.\r\n"
            "    MainWindow(\"x\", \"\", \"Frame\");\r\n"
            "}\r\n"
            "\r\n"
            "function Dialog()\r\n"
            "{\r\n"
            "  return Main_x().\r\n"
            "    ChildDialog(\"Dialog\");\r\n"
            "}\r\n"
            "\r\n"
            "function A()\r\n"
            "{\r\n"
            "  return Dialog().\r\n"
            "    ChildWindow(\"A\", \"Box\");\r\n"
            "}\r\n"
            "\r\n"
            "function B()\r\n"
            "{\r\n"
            "  return Dialog().\r\n"
            "    ChildWindow(\"B\", \"Box\");\r\n"
            "}\r\n"
            "\r\n",
            functions());
}

TEST_F(Script, WritesNoFunctionForARootThatNobodyCallsHoweverManyWindowsItHas) {
  act({main_window("Frame", "x")}, "One();");
  act({main_window("Frame", "y")}, "Two();");
  script();
  CString written;
  recorder.create_declarations(&recorder.m_root, written);
  EXPECT_EQ(functions(), written.str());
  EXPECT_EQ(0, written.Find("function Main_x()")) << "and nothing before";
}

// Deeper and deeper: the separator grows by two blanks after each declaration. Without a top-level window the
// chain begins at the player itself.
TEST_F(Script, IndentsAChainLevelByLevel) {
  act({mrLevel{"C", "3"}, mrLevel{"C", "2"}, mrLevel{"C", "1"}, mrLevel{"C", "0"}}, "Click();");
  EXPECT_EQ("function _3()\r\n"
            "{\r\n"
            "  return macro_player.\r\n"
            "    ChildWindow(\"0\", \"C\").\r\n"
            "      ChildWindow(\"1\", \"C\").\r\n"
            "        ChildWindow(\"2\", \"C\").\r\n"
            "          ChildWindow(\"3\", \"C\");\r\n"
            "}\r\n"
            "\r\n",
            functions());
}

TEST_F(Script, WritesAFunctionForTheRootWhenAnActionHasNoWindow) {
  act({}, "NoWindow();");
  act({main_window("Frame", "x")}, "One();");
  EXPECT_EQ("function ()\r\n"
            "{\r\n"
            "  return null;\r\n"
            "}\r\n"
            "\r\n"
            "function Main_x()\r\n"
            "{\r\n"
            "  return macro_player.\r\n"
            "    MainWindow(\"x\", \"\", \"Frame\");\r\n"
            "}\r\n"
            "\r\n",
            functions());
}

TEST_F(Script, NumbersTheFunctionsOfWindowsOfOneName) {
  for (const int id : {1, 2, 3})
    act({mrLevel{"Box", "Options", id}, main_window("Frame", "x")}, "Click();");
  EXPECT_EQ("  Main_x().SetFocus();\r\n"
            "  Options().Click();\r\n"
            "  Options_1().Click();\r\n"
            "  Options_2().Click();\r\n",
            body());
}

TEST_F(Script, EndsAPathAtAnActiveDialogThatHasNoParent) {
  act({mrLevel{"Box", "A"}, mrLevel{"#32770", "Alone", 0, modal}}, "Click();");
  EXPECT_EQ("function A()\r\n{\r\n  return macro_player.\r\n    ActiveDialog().\r\n      ChildWindow(\"A\", "
            "\"Box\");\r\n}\r\n\r\n",
            functions());
}

TEST_F(Script, StartsWithNewWindowsOnceTheyAreCleared) {
  act({mrLevel{"Box", "A"}, main_window("Frame", "x")}, "Click();");
  const std::string first = script();
  recorder.clear_windows();
  EXPECT_EQ(first, script());
  EXPECT_EQ(2, recorder.m_windows.GetSize());
}

// What an earlier script called stays in the tree, and a window that is shared by now gets its function.
TEST_F(Script, GoesOnWithTheWindowsOfTheScriptBefore) {
  act({mrLevel{"Box", "A"}, mrLevel{"#32770", "Dialog"}, main_window("Frame", "x")}, "Click();");
  script();
  act({mrLevel{"Box", "B"}, mrLevel{"#32770", "Dialog"}, main_window("Frame", "x")}, "Click();");
  EXPECT_EQ("function Main_x()\r\n{\r\n  return macro_player.\r\n    MainWindow(\"x\", \"\", "
            "\"Frame\");\r\n}\r\n\r\n"
            "function Dialog()\r\n{\r\n  return Main_x().\r\n    ChildDialog(\"Dialog\");\r\n}\r\n\r\n"
            "function A()\r\n{\r\n  return Dialog().\r\n    ChildWindow(\"A\", \"Box\");\r\n}\r\n\r\n"
            "function B()\r\n{\r\n  return Dialog().\r\n    ChildWindow(\"B\", \"Box\");\r\n}\r\n\r\n",
            functions());
}

TEST_F(Script, IsTheSameWhenItIsAskedForAgain) {
  act({mrLevel{"Box", "A"}, mrLevel{"#32770", "", 0, modal}, main_window()}, "Click();");
  act({mrLevel{"Box", "B"}, mrLevel{"#32770"}, mrLevel{"Pane", "P"}, main_window()}, "Click();");
  act({}, "NoWindow();");
  const std::string first = script();
  EXPECT_EQ(first, script());
}
