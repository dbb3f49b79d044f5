// Who is offered a hooked message, in which order, and who is not.
#include "hooks/mrDispatcher.h"
#include "hooks/mrHookKind.h"
#include "tests/support/clean_block.h"
#include "tests/support/spies.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

static std::vector<std::string> from_17_down_to(int last, const std::string& what) {
  std::vector<std::string> lines;
  for (int type = 17; type >= last; --type)
    lines.push_back(std::to_string(type) + " " + what);
  return lines;
}

class Dispatcher : public testing::Test {
protected:
  Dispatcher() {
    // The first message of a recording tells the factories of it; what follows is about the messages.
    dispatch_hook_message(hookCbt, 0, 0, 0);
    spies.log.clear();
  }

  mrCleanBlock clean;
  mrSpies spies;
};

TEST_F(Dispatcher, OffersAMessageToTypes17To1AndNeverToTheLogger) {
  CWPSTRUCT call = {0, 0, WM_COMMAND, nullptr};
  dispatch_hook_message(hookCallWndProc, 3, 44, reinterpret_cast<LPARAM>(&call));
  EXPECT_EQ(from_17_down_to(1, "message 2 3 44"), spies.log);
}

TEST_F(Dispatcher, StopsAtTheFirstFactoryThatClaims) {
  spies[9].claims = true;
  spies[4].claims = true;
  dispatch_hook_message(hookCbt, HCBT_ACTIVATE, 1, 0);
  EXPECT_EQ(from_17_down_to(9, "message 4 5 1"), spies.log);
}

TEST_F(Dispatcher, AsksOnlyTheGenericRecorderInRawMode) {
  shared_block().raw_mode = 1;
  dispatch_hook_message(hookGetMessage, 0, 1, 0);
  EXPECT_THAT(spies.log, ElementsAre("1 message 1 0 1"));
}

TEST_F(Dispatcher, TakesAnyNonzeroByteForRawMode) {
  shared_block().raw_mode = 0x80;
  dispatch_hook_message(hookGetMessage, 0, 1, 0);
  EXPECT_THAT(spies.log, ElementsAre("1 message 1 0 1"));
}

TEST_F(Dispatcher, DoesNotNest) {
  spies[5].during_message = [] { dispatch_hook_message(hookGetMessage, 0, 99, 0); };
  dispatch_hook_message(hookGetMessage, 0, 1, 0);
  EXPECT_EQ(from_17_down_to(1, "message 1 0 1"), spies.log);

  spies.log.clear();
  spies[5].during_message = nullptr;
  dispatch_hook_message(hookGetMessage, 0, 2, 0);
  EXPECT_EQ(from_17_down_to(1, "message 1 0 2"), spies.log) << "the latch is open again";
}

TEST_F(Dispatcher, FindsEveryFactoryByItsTypeAndNoneOutside) {
  for (int type = 1; type <= 18; ++type) {
    EXPECT_EQ(&spies[type], get_factory(type, true));
    EXPECT_EQ(&spies[type], get_factory(type, false));
  }
  for (int type = -100; type <= 100; ++type) {
    if (type >= 1 && type <= 18)
      continue;
    EXPECT_EQ(nullptr, get_factory(type, true)) << type;
    EXPECT_EQ(nullptr, get_factory(type, false)) << type;
  }
}

TEST_F(Dispatcher, HidesAllFactoriesButTheGenericOneInRawModeUnlessToldNotTo) {
  shared_block().raw_mode = 1;
  EXPECT_EQ(&spies[1], get_factory(1, false));
  for (const int type : {0, 2, 17, 18, 19})
    EXPECT_EQ(nullptr, get_factory(type, false)) << type;
  EXPECT_EQ(&spies[7], get_factory(7, true));
  EXPECT_EQ(&spies[18], get_factory(18, true));
  EXPECT_EQ(nullptr, get_factory(19, true));
}

TEST(FactoryTable, HoldsTheLibrarysFactoriesAtTheirTypes) {
  for (int type = 1; type <= 18; ++type) {
    mrActionFactory* const factory = get_factory(type, true);
    ASSERT_NE(nullptr, factory) << type;
    EXPECT_EQ(type, factory->get_factory_type());
  }
}
