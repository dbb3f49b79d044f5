// The services of the base factory.
#include "hooks/mrSharedBlock.h"
#include "model/mrRecorder.h"
#include "tests/support/clean_block.h"
#include "tests/support/probe.h"
#include "tests/support/tape.h"
#include "tests/support/test_window.h"

#include <gtest/gtest.h>

// ---- class names ------------------------------------------------------------------------------------

struct FilterCase {
  const char* name;
  const char* class_name;
  const char* expected;
};
// clang-format off
constexpr FilterCase filter_cases[] = {
    {"cut at the first colon",               "Afx:400000:8",         "Afx"},
    {"a colon in front leaves nothing",      ":400000",              ""},
    {"final d goes before the digits",       "Edit12d",              "Edit"},
    {"final D too",                          "Edit12D",              "Edit"},
    {"only one final d",                     "Edit12dd",             "Edit12d"},
    {"any final d, debug build or not",      "Grid",                 "Gri"},
    {"a lone d",                             "d",                    ""},
    {"the dialog class as it is",            "#32770",               "#32770"},
    {"the dialog class with a d",            "#32770d",              "#32770"},
    {"the dialog class before a colon",      "#32770d:1",            "#32770"},
    {"other classes of the system cut",      "#32768",               "#"},
    {"trailing digits",                      "AfxFrameOrView140",    "AfxFrameOrView"},
    {"digits inside stay",                   "Afx42Frame",           "Afx42Frame"},
    {"digits after the d stay no longer",    "AfxControlBar140d",    "AfxControlBar"},
    {"digits, d, digits",                    "Bar1d2",               "Bar1d"},
    {"digits alone leave nothing",           "123",                  ""},
    {"empty",                                "",                     ""},
    {"bytes beyond ASCII stay",              "Fl\xE4" "che9",        "Fl\xE4" "che"},
};
// clang-format on

TEST(FilterClassName, ReducesToTheStablePart) {
  mrProbeFactory probe;
  for (const FilterCase& c : filter_cases)
    EXPECT_EQ(c.expected, probe.filter_class_name(c.class_name)) << c.name;
}

// A final d and final digits go; every other byte stays, wherever its sign puts it.
TEST(FilterClassName, KeepsEveryByteButAFinalDAndDigits) {
  mrProbeFactory probe;
  for (int byte = 1; byte < 256; ++byte) {
    const char ch = static_cast<char>(byte);
    const std::string name = std::string("Bar") + ch;
    const bool goes = ch == 'd' || ch == 'D' || (ch >= '0' && ch <= '9');
    const std::string expected = ch == ':' || goes ? "Bar" : name;
    EXPECT_EQ(expected, probe.filter_class_name(name.c_str()).str()) << byte;
    EXPECT_EQ(ch == ':' ? "Bar" : name + "x", probe.filter_class_name((name + "x").c_str()).str()) << byte;
  }
}

TEST(IsWrappedType, MatchesThePrefixByteForByte) {
  const mrProbeFactory window("Window", "Window");
  EXPECT_TRUE(window.is_wrapped_type("Window"));
  EXPECT_TRUE(window.is_wrapped_type("WindowEx"));
  EXPECT_FALSE(window.is_wrapped_type("Windo"));
  EXPECT_FALSE(window.is_wrapped_type("window"));
  EXPECT_FALSE(window.is_wrapped_type("MyWindow"));
  EXPECT_FALSE(window.is_wrapped_type(""));
}

TEST(IsWrappedType, TakesTheScriptNameForAnEmptyClassName) {
  const mrProbeFactory button("Button", "");
  EXPECT_STREQ("Button", button.get_script_name());
  EXPECT_TRUE(button.is_wrapped_type("Button"));
  const mrProbeFactory tree("TreeView", "SysTreeView32");
  EXPECT_STREQ("TreeView", tree.get_script_name());
  EXPECT_TRUE(tree.is_wrapped_type("SysTreeView32"));
  EXPECT_FALSE(tree.is_wrapped_type("TreeView"));
}

// ---- timer ------------------------------------------------------------------------------------------

class FactoryTimer : public testing::Test {
protected:
  FactoryTimer() { probe.set_timeout(100); }

  void start_at(DWORD ticks) {
    mrTestClock::set(ticks);
    probe.set_timer();
  }

  mrTestClock clock;
  mrProbeFactory probe;
};

TEST_F(FactoryTimer, RunsOutOneTickAfterTheTimeout) {
  start_at(5000);
  EXPECT_TRUE(probe.is_timer_set());
  EXPECT_FALSE(probe.is_timeout());
  mrTestClock::set(5100);
  EXPECT_FALSE(probe.is_timeout()) << "exactly at the timeout";
  mrTestClock::set(5101);
  EXPECT_TRUE(probe.is_timeout());
}

TEST_F(FactoryTimer, RunsAcrossTheWrapOfTheTickCount) {
  start_at(0xFFFFFFF0);
  mrTestClock::set(0x54);  // 100 ticks on
  EXPECT_FALSE(probe.is_timeout());
  mrTestClock::set(0x55);
  EXPECT_TRUE(probe.is_timeout());
}

TEST_F(FactoryTimer, NeverRunsOutWhenItIsNotSet) {
  mrTestClock::set(0xFFFFFFFF);
  EXPECT_FALSE(probe.is_timer_set());
  EXPECT_FALSE(probe.is_timeout());
  start_at(1);
  mrTestClock::set(1000);
  EXPECT_TRUE(probe.is_timeout());
  EXPECT_TRUE(probe.is_timer_set()) << "it stays set until it is stopped";
  probe.stop_timer();
  EXPECT_FALSE(probe.is_timer_set());
  EXPECT_FALSE(probe.is_timeout());
}

TEST_F(FactoryTimer, LooksUnsetWhenItStartsAtTickZero) {
  start_at(0);
  EXPECT_FALSE(probe.is_timer_set());
  mrTestClock::set(1000);
  EXPECT_FALSE(probe.is_timeout());
}

TEST_F(FactoryTimer, IsCopiedWithTheFactory) {
  start_at(77);
  const mrProbeFactory copy = probe;
  mrProbeFactory assigned("Other", "Other");
  assigned = probe;
  mrTestClock::set(178);
  EXPECT_TRUE(copy.is_timeout());
  EXPECT_TRUE(assigned.is_timeout());
  EXPECT_STREQ("Probe", assigned.get_script_name());
  EXPECT_TRUE(assigned.is_wrapped_type("Probe"));
}

TEST(Factory, PassesItsRecorderOnToACopy) {
  mrProbeFactory probe;
  EXPECT_EQ(nullptr, probe.get_recorder());
  mrRecorder* const recorder = reinterpret_cast<mrRecorder*>(0x1000);  // never followed
  probe.set_recorder(recorder);
  EXPECT_EQ(recorder, probe.get_recorder());
  EXPECT_EQ(recorder, mrProbeFactory(probe).get_recorder());
}

// ---- uploads ----------------------------------------------------------------------------------------

TEST(SendData, UploadsTheBytesUnderTheFactorysType) {
  const mrCleanBlock clean;
  const mrUploadCatcher uploads;
  mrProbeFactory probe;
  char record[] = "record";
  probe.send_data(0x100000003, record);  // the low 32 bits count
  ASSERT_EQ(1u, uploads.count());
  EXPECT_EQ(static_cast<unsigned>(factoryButton), uploads.last().type);
  EXPECT_EQ("rec", uploads.last().bytes);
}

// ---- ignore list ------------------------------------------------------------------------------------

class IgnoreCommands : public testing::Test {
protected:
  mrCleanBlock clean;
};

TEST_F(IgnoreCommands, FindsWhatWasAdded) {
  mrProbeFactory::add_ignore_command(32771);
  mrProbeFactory::add_ignore_command(-5);
  EXPECT_TRUE(mrProbeFactory::is_ignore(32771));
  EXPECT_TRUE(mrProbeFactory::is_ignore(-5));
  EXPECT_FALSE(mrProbeFactory::is_ignore(32772));
  EXPECT_EQ(2, shared_block().ignore_commands_count);
  EXPECT_EQ(&shared_block().ignore_commands_count, &mrProbeFactory::m_ignore_commands_count);
}

TEST_F(IgnoreCommands, KeepsSixteenAndDropsTheRest) {
  for (int id = 100; id < 120; ++id)
    mrProbeFactory::add_ignore_command(id);
  EXPECT_EQ(16, shared_block().ignore_commands_count);
  EXPECT_TRUE(mrProbeFactory::is_ignore(115));
  EXPECT_FALSE(mrProbeFactory::is_ignore(116));
}

TEST_F(IgnoreCommands, AreForgottenByTheirCountAlone) {
  mrProbeFactory::add_ignore_command(4711);
  mrProbeFactory::clear_ignore_commands();
  EXPECT_EQ(0, shared_block().ignore_commands_count);
  EXPECT_FALSE(mrProbeFactory::is_ignore(4711));
  EXPECT_EQ(4711, mrProbeFactory::m_ignore_commands[0]);
  for (int id = 0; id < 17; ++id)
    mrProbeFactory::add_ignore_command(id);
  EXPECT_TRUE(mrProbeFactory::is_ignore(15));
  EXPECT_FALSE(mrProbeFactory::is_ignore(16));
}

// ---- run-command stack ----------------------------------------------------------------------------------

TEST(RunCommands, ArePushedAndEmptiedByTheNextStart) {
  mrProbeFactory probe;
  probe.on_start_record();
  ASSERT_TRUE(mrProbeFactory::mr_commands_stack.empty());
  const HWND window = reinterpret_cast<HWND>(0x10);
  mrProbeFactory::add_run_command(window, 5);
  mrProbeFactory::add_run_command(window, 6);
  ASSERT_EQ(2u, mrProbeFactory::mr_commands_stack.size());
  EXPECT_EQ(window, mrProbeFactory::mr_commands_stack[1].window);
  EXPECT_EQ(6, mrProbeFactory::mr_commands_stack[1].command);

  const size_t storage = mrProbeFactory::mr_commands_stack.capacity();
  probe.on_start_record();
  EXPECT_TRUE(mrProbeFactory::mr_commands_stack.empty());
  EXPECT_EQ(storage, mrProbeFactory::mr_commands_stack.capacity()) << "its storage stays";
}
