// The exported classes, used by a program that links the import library: derived from, created, called and
// deleted on both sides, with exceptions through the library.
#include "controls/mrButton.h"
#include "controls/mrWindow.h"
#include "framework/CInvalidArgException.h"
#include "hooks/mrDispatcher.h"
#include "tests/support/recording.h"
#include "tests/support/spies.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <typeinfo>

namespace {

// An action class of this program.
class ProgramAction : public mrBaseWindow {
public:
  explicit ProgramAction(mrBaseWindowFactory* factory, int* alive)
      : mrBaseWindow(nullptr, factory), m_alive(alive) {
    ++*m_alive;
  }
  ~ProgramAction() override { --*m_alive; }
  void get_script(CString& script) override { script += "  program(\"" + m_action_string + "\");"; }
  void add_level(mrWindowInfo* level) { m_path.Add(level); }

private:
  int* m_alive;
};

// A factory class of this program, which takes the place of one of the library's.
class ProgramFactory : public mrBaseWindowFactory {
public:
  ProgramFactory() : mrBaseWindowFactory("Program", "ProgramClass") {}
  mrFactoryType get_factory_type() override { return factoryOptionTree; }
  bool handle_message(int, int, unsigned __int64, __int64) override { return ++handled > 0; }
  void copy_data(void* data) override {
    if (!data)
      throw std::runtime_error("thrown by the program");
    mrBaseWindow* const action = new ProgramAction(this, &alive);
    append_action(action, static_cast<const char*>(data));
  }
  mrContextMenuRes context_menu_invoke(HWND, const char*, const CPoint&) override {
    return contextMenuRefused;
  }

  int alive = 0;
  int handled = 0;
};

class Boundary : public testing::Test {
protected:
  Boundary() : original(get_factory(factoryOptionTree, true)) {
    register_factory(factory);
    factory.set_recorder(&recorder);
  }
  ~Boundary() override { register_factory(*original); }

  mrActionFactory* original;
  ProgramFactory factory;
  mrTestRecorder recorder;
};

}  // namespace

TEST_F(Boundary, LibraryCallsAFactoryOfTheProgram) {
  MSG msg = {};
  dispatch_hook_message(1, 0, PM_REMOVE, reinterpret_cast<LPARAM>(&msg));
  EXPECT_EQ(1, factory.handled);
}

TEST_F(Boundary, LibraryDeletesAnActionOfTheProgram) {
  char text[] = "record";
  recorder.copy_data(factoryOptionTree, text);
  EXPECT_EQ(1, factory.alive);
  CString script;
  recorder.get_script(script);
  EXPECT_NE(-1, script.Find("  program(\"record\");\r\n"));
  recorder.clear_actions();
  EXPECT_EQ(0, factory.alive);
}

TEST_F(Boundary, ProgramDeletesAnActionOfTheLibrary) {
  mrAction* const action = new mrBaseWindow(nullptr, &factory);
  delete action;
  mrAction* const button = new mrButton(nullptr, &factory);
  EXPECT_NE(nullptr, dynamic_cast<mrBaseWindow*>(button));
  delete button;
}

TEST_F(Boundary, ExceptionOfTheProgramPassesThroughTheLibrary) {
  try {
    recorder.copy_data(factoryOptionTree, nullptr);
    FAIL() << "nothing thrown";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ("thrown by the program", error.what());
  }
  EXPECT_TRUE(recorder.m_actions.IsEmpty());
}

// A release looks at the window of the last action, which here has none.
TEST_F(Boundary, ExceptionOfTheLibraryIsCaughtByTheProgram) {
  char text[] = "record";
  recorder.copy_data(factoryOptionTree, text);
  mrWindowRec release = {};
  release.kind = windowMouse;
  release.message = WM_LBUTTONUP;
  EXPECT_THROW(recorder.receive(factoryWindow, release), CInvalidArgException);
  EXPECT_THROW(recorder.receive(factoryWindow, release), std::exception);
  EXPECT_EQ(1, recorder.m_actions.GetCount());
}

// The library's builder finds the program's action by its base class and turns it into a click.
TEST_F(Boundary, LibraryKnowsAnActionOfTheProgramByItsBase) {
  ProgramAction* const action = new ProgramAction(&factory, &factory.alive);
  mrWindowInfo level;
  level.window = reinterpret_cast<HWND>(0x50);
  action->add_level(&level);
  action->get_action_struct().kind = actionMouseDown;
  action->get_action_struct().button = 1;
  recorder.m_actions.AddTail(action);
  mrWindowRec release = {};
  release.kind = windowMouse;
  release.window = level.window;
  release.message = WM_LBUTTONUP;
  recorder.receive(factoryWindow, release);
  EXPECT_EQ("Click(1, 0, 0, 0);", action->get_action_string());
}

TEST_F(Boundary, TypesHaveOneIdentityOnBothSides) {
  mrActionFactory* const window = get_factory(factoryWindow, true);
  EXPECT_EQ(typeid(mrWindowFactory), typeid(*window));
  EXPECT_NE(nullptr, dynamic_cast<mrBaseWindowFactory*>(window));
  EXPECT_EQ(nullptr, dynamic_cast<ProgramFactory*>(window));
}

TEST_F(Boundary, ProgramCreatesTheLibrarysFactories) {
  mrWindowFactory own;
  own.set_recorder(&recorder);
  mrWindowInfo info;
  info.top_level = 1;
  CString declaration;
  CString search;
  CString identifier;
  EXPECT_EQ(declaredMainWindow, own.get_declaration(&info, declaration, search, identifier));
  EXPECT_EQ("MainWindow(\"\", \"\", \"\")", declaration);
}

// The order of the virtual operations is part of the interface. The compiler gives a virtual destructor two
// places.
TEST_F(Boundary, VirtualOperationsStandInTheirOrder) {
  mrSpyFactory spy(7);
  std::vector<std::string> log;
  spy.log = &log;
  void** const table = *reinterpret_cast<void***>(static_cast<mrActionFactory*>(&spy));
  int record = 3;
  MSG msg = {};
  CString texts[3];
  const mrWindowInfo info;
  const CPoint point;
  EXPECT_EQ(7, reinterpret_cast<int (*)(void*)>(table[0])(&spy));
  reinterpret_cast<void (*)(void*)>(table[1])(&spy);
  reinterpret_cast<bool (*)(void*, int, int, unsigned __int64, __int64)>(table[2])(
      &spy, 2, 0, 1, reinterpret_cast<LPARAM>(&msg));
  reinterpret_cast<void (*)(void*, void*)>(table[3])(&spy, &record);
  EXPECT_EQ(0, reinterpret_cast<int (*)(void*, const mrWindowInfo*, CString&, CString&, CString&)>(table[4])(
                   &spy, &info, texts[0], texts[1], texts[2]));
  EXPECT_EQ(0, reinterpret_cast<int (*)(void*, HWND, const char*, const CPoint&)>(table[5])(&spy, nullptr, "",
                                                                                            point));
  EXPECT_TRUE(reinterpret_cast<bool (*)(const void*, const char*)>(table[8])(&spy, "SpyClass"));
  EXPECT_EQ((std::vector<std::string>{"7 start", "7 message 2 0 1", "7 data 3", "7 declare"}), log);

  int alive = 0;
  mrAction* const action = new ProgramAction(&factory, &alive);
  void** const action_table = *reinterpret_cast<void***>(action);
  CString script;
  reinterpret_cast<void (*)(void*, CString&)>(action_table[0])(action, script);
  EXPECT_EQ("  program(\"\");", script);
  reinterpret_cast<void (*)(void*)>(action_table[2])(action);  // the deleting one
  EXPECT_EQ(0, alive);
}
