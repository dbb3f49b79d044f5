// The recording session.
#include "hooks/mrDispatcher.h"
#include "model/mrBaseWindowFactory.h"
#include "tests/support/clean_block.h"
#include "tests/support/probe.h"
#include "tests/support/recording.h"
#include "tests/support/spies.h"
#include "tests/support/test_window.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

// Counts its objects.
class CountedAction : public mrAction {
public:
  CountedAction() : mrAction(nullptr) { ++alive; }
  ~CountedAction() override { --alive; }
  void get_script(CString& script) override { script += "counted"; }
  static int alive;
};
int CountedAction::alive = 0;

class Recorder : public testing::Test {
protected:
  Recorder() : window((register_test_class("TestFrame"), "TestFrame"), "", WS_OVERLAPPEDWINDOW) {}
  ~Recorder() override { recorder.stop_recording(); }

  bool start() { return recorder.start_recording(window, GetCurrentThreadId()); }
  mrRecorder::mrWindowNode* add_node(const char* declaration, const char* identifier,
                                     mrRecorder::mrWindowNode* parent = nullptr) {
    mrTestRecorder::mrWindowNodes list;
    const mrWindowInfo info;
    mrRecorder::mrWindowNode* const node = recorder.add_temp_node(list, &info, declaration, identifier);
    recorder.add_window(parent ? parent : &recorder.m_root, node);
    return node;
  }

  mrCleanBlock clean;
  mrTestWindow window;
  mrTestRecorder recorder;
};

// ---- windows --------------------------------------------------------------------------------------------

TEST_F(Recorder, NumbersWindowsOfOneBaseIdentifierInTheOrderOfTheirCreation) {
  mrRecorder::mrWindowNode* const frame = add_node("F", "Frame");
  EXPECT_EQ("Dialog_Options", add_node("A", "Dialog_Options")->identifier);
  EXPECT_EQ("Dialog_Options_1", add_node("B", "Dialog_Options", frame)->identifier);
  EXPECT_EQ("dialog_options", add_node("C", "dialog_options")->identifier) << "another case is another name";
  EXPECT_EQ("Dialog_Options_2", add_node("D", "Dialog_Options")->identifier);
  EXPECT_EQ("Frame", frame->identifier);
  EXPECT_EQ(5, recorder.m_windows.GetSize());
}

TEST_F(Recorder, MakesATemporaryNodeThatBelongsToTheListOnly) {
  mrTestRecorder::mrWindowNodes list;
  mrWindowInfo info;
  strcpy(info.text, "Copied");
  mrRecorder::mrWindowNode* const node = recorder.add_temp_node(list, &info, "Declaration()", "Base");
  strcpy(info.text, "changed");
  ASSERT_EQ(1, list.GetSize());
  EXPECT_EQ(node, list[0]);
  EXPECT_STREQ("Copied", node->info.text);
  EXPECT_EQ("Declaration()", node->declaration);
  EXPECT_EQ("Base", node->base_identifier);
  EXPECT_EQ("", node->identifier);
  EXPECT_EQ(nullptr, node->parent);
  EXPECT_TRUE(node->children.IsEmpty());
  EXPECT_EQ(0, node->state);
  EXPECT_TRUE(recorder.m_windows.IsEmpty());
  delete node;
}

TEST_F(Recorder, LinksAWindowIntoTheTree) {
  mrRecorder::mrWindowNode* const frame = add_node("F", "Frame");
  mrRecorder::mrWindowNode* const child = add_node("C", "Child", frame);
  EXPECT_EQ(&recorder.m_root, frame->parent);
  EXPECT_EQ(frame, child->parent);
  ASSERT_EQ(1, frame->children.GetSize());
  EXPECT_EQ(child, frame->children[0]);
  ASSERT_EQ(2, recorder.m_windows.GetSize());
  EXPECT_EQ(frame, recorder.m_windows[0]);
  EXPECT_EQ(child, recorder.m_windows[1]);
}

TEST_F(Recorder, KeepsAUsableRootWhenTheWindowsAreCleared) {
  add_node("A", "Name");
  add_node("B", "Name");
  recorder.m_root.state = 1;
  recorder.clear_windows();
  EXPECT_TRUE(recorder.m_windows.IsEmpty());
  EXPECT_TRUE(recorder.m_root.children.IsEmpty());
  EXPECT_EQ(1, recorder.m_root.state) << "the root's own fields stay";
  EXPECT_EQ("Name", add_node("A", "Name")->identifier) << "numbering starts anew";
  EXPECT_EQ(1, recorder.m_root.children.GetSize());
}

// The order of the fields is part of the exported interface.
TEST_F(Recorder, HoldsActionsWindowsRootAndNamerInThisOrder) {
  const auto place = [](const void* field) { return reinterpret_cast<UINT_PTR>(field); };
  EXPECT_LT(place(&recorder.m_actions), place(&recorder.m_windows));
  EXPECT_LT(place(&recorder.m_windows), place(&recorder.m_root));
  EXPECT_LT(place(&recorder.m_root), place(&recorder.get_namer()));

  const mrRecorder::mrWindowNode& node = recorder.m_root;
  EXPECT_EQ(static_cast<const void*>(&node), &node.info);
  EXPECT_LT(place(&node.info), place(&node.parent));
  EXPECT_LT(place(&node.parent), place(&node.children));
  EXPECT_LT(place(&node.children), place(&node.declaration));
  EXPECT_LT(place(&node.declaration), place(&node.base_identifier));
  EXPECT_LT(place(&node.base_identifier), place(&node.identifier));
  EXPECT_LT(place(&node.identifier), place(&node.state));
}

// ---- session --------------------------------------------------------------------------------------------

TEST_F(Recorder, GivesTheFactories1To17ThemselvesButNotTheLogger) {
  mrSpies spies;
  for (int type = 1; type <= 18; ++type)
    spies[type].set_recorder(nullptr);
  mrRecorder another;
  for (int type = 1; type <= 17; ++type)
    EXPECT_EQ(&another, spies[type].get_recorder()) << type;
  EXPECT_EQ(nullptr, spies[18].get_recorder());
}

TEST_F(Recorder, GivesAllFactoriesEvenInRawMode) {
  shared_block().raw_mode = 1;
  mrSpies spies;
  spies[9].set_recorder(nullptr);
  mrRecorder another;
  EXPECT_EQ(&another, spies[9].get_recorder());
}

TEST_F(Recorder, StartsWithNothingRecorded) {
  recorder.m_actions.AddTail(new CountedAction);
  add_node("A", "Name");
  struct Namer : mrIDNamer {
    using mrIDNamer::m_error_count;
  };
  recorder.get_namer().*(&Namer::m_error_count) = 3;
  ASSERT_TRUE(start());
  EXPECT_EQ(window, shared_block().recorder_window);
  EXPECT_TRUE(recorder.get_actions().IsEmpty());
  EXPECT_EQ(0, CountedAction::alive);
  EXPECT_TRUE(recorder.m_windows.IsEmpty());
  EXPECT_EQ(0, recorder.get_namer().*(&Namer::m_error_count));
}

TEST_F(Recorder, KeepsEverythingWhenASecondStartIsRefused) {
  ASSERT_TRUE(start());
  recorder.get_namer().add_constant("general", "IDC_KEPT", 7);
  recorder.m_actions.AddTail(new CountedAction);
  add_node("A", "Name");
  EXPECT_FALSE(start());
  EXPECT_EQ(1, recorder.get_actions().GetCount());
  EXPECT_EQ(1, recorder.m_windows.GetSize());
  EXPECT_EQ("general.IDC_KEPT", recorder.get_namer().get_definition(7, "IDC_", 0, ""));
  EXPECT_EQ(window, shared_block().recorder_window);
}

TEST_F(Recorder, KeepsTheActionsForTheScriptWhenItStops) {
  ASSERT_TRUE(start());
  recorder.m_actions.AddTail(new CountedAction);
  recorder.stop_recording();
  EXPECT_EQ(nullptr, shared_block().recorder_window);
  CString script;
  recorder.get_script(script);
  EXPECT_NE(-1, script.Find("  // Script begin\r\ncounted\r\n  // Script end\r\n"));
  EXPECT_TRUE(start()) << "and starts again";
}

TEST(RecorderObject, DeletesItsActionsThroughTheirVirtualDestructor) {
  {
    mrTestRecorder recorder;
    recorder.m_actions.AddTail(new CountedAction);
    recorder.m_actions.AddTail(new CountedAction);
    EXPECT_EQ(2, CountedAction::alive);
  }
  EXPECT_EQ(0, CountedAction::alive);
}

TEST_F(Recorder, KeepsRawModeInTheSharedBlock) {
  EXPECT_FALSE(recorder.get_raw_mode());
  recorder.set_raw_mode(true);
  EXPECT_EQ(1, shared_block().raw_mode);
  shared_block().raw_mode = 2;
  EXPECT_TRUE(recorder.get_raw_mode());
  recorder.set_raw_mode(false);
  EXPECT_EQ(0, shared_block().raw_mode);
}

TEST_F(Recorder, ForwardsTheIgnoreList) {
  recorder.add_ignore_command(32771);
  EXPECT_TRUE(mrBaseWindowFactory::is_ignore(32771));
  EXPECT_EQ(1, shared_block().ignore_commands_count);
  recorder.clear_ignore_commands();
  EXPECT_EQ(0, shared_block().ignore_commands_count);
}

// ---- received records -------------------------------------------------------------------------------------

TEST_F(Recorder, HandsARecordToTheFactoryOfItsType) {
  mrSpies spies;
  for (const int type : {1, 7, 18})
    recorder.receive(type, 100 + type);
  EXPECT_THAT(spies.log, ElementsAre("1 data 101", "7 data 107", "18 data 118"));
}

TEST_F(Recorder, HandsARecordOnInRawModeToo) {
  mrSpies spies;
  recorder.set_raw_mode(true);
  recorder.receive(7, 5);
  EXPECT_THAT(spies.log, ElementsAre("7 data 5"));
}

TEST_F(Recorder, DropsARecordOfAnUnknownType) {
  mrSpies spies;
  int record = 5;
  for (const unsigned __int64 type :
       {0ULL, 19ULL, 0xFFFFFFFFULL, 0x100000001ULL, 0x8000000000000001ULL, 0xFFFFFFFFFFFFFFFFULL})
    recorder.copy_data(type, &record);
  EXPECT_THAT(spies.log, IsEmpty());
}
