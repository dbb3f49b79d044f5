#include "apps/mrrec/mrArguments.h"
#include "apps/mrrec/mrFailure.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace {

using Words = std::vector<std::string>;

// The exit status that the words lead to before anything is done.
int status_of(const Words& words) {
  try {
    parse_arguments(words);
    return exitDone;
  } catch (const mrFailure& failure) {
    return failure.status;
  }
}

struct UsageCase {
  const char* name;
  Words words;
};

const UsageCase wrong_usages[] = {
    {"no command", {}},
    {"unknown command", {"play"}},
    {"no host", {"record", "--out", "a.wsf"}},
    {"no file", {"record", "--pid", "12"}},
    {"two hosts", {"record", "--pid", "12", "--title", "x", "--out", "a.wsf"}},
    {"one host twice", {"record", "--pid", "12", "--pid", "13", "--out", "a.wsf"}},
    {"two files", {"record", "--pid", "12", "--out", "a.wsf", "--out", "b.wsf"}},
    {"no value at the end", {"record", "--pid", "12", "--out"}},
    {"an option instead of a value", {"record", "--pid", "12", "--out", "--raw"}},
    {"an empty title", {"record", "--title", "", "--out", "a.wsf"}},
    {"an empty executable", {"record", "--process", "", "--out", "a.wsf"}},
    {"a pid that is no number", {"record", "--pid", "x", "--out", "a.wsf"}},
    {"a pid with something behind it", {"record", "--pid", "12x", "--out", "a.wsf"}},
    {"a negative pid", {"record", "--pid", "-12", "--out", "a.wsf"}},
    {"pid 0", {"record", "--pid", "0", "--out", "a.wsf"}},
    {"a pid of more than 32 bits", {"record", "--pid", "4294967296", "--out", "a.wsf"}},
    {"a pid beyond all numbers", {"record", "--pid", "99999999999999999999999", "--out", "a.wsf"}},
    {"an ignored number with letters", {"record", "--pid", "1", "--out", "a", "--ignore", "12ab"}},
    {"an ignored number with a bad hexadecimal digit",
     {"record", "--pid", "1", "--out", "a", "--ignore", "0x1g"}},
    {"an ignored number of more than 31 bits",
     {"record", "--pid", "1", "--out", "a", "--ignore", "2147483648"}},
    {"no time", {"record", "--pid", "1", "--out", "a", "--for", "0"}},
    {"a negative time", {"record", "--pid", "1", "--out", "a", "--for", "-1"}},
    {"a time that is no number", {"record", "--pid", "1", "--out", "a", "--for", "soon"}},
    {"a time with two points", {"record", "--pid", "1", "--out", "a", "--for", "1.2.3"}},
    {"a point as time", {"record", "--pid", "1", "--out", "a", "--for", "."}},
    {"an endless time", {"record", "--pid", "1", "--out", "a", "--for", "inf"}},
    {"a time of years", {"record", "--pid", "1", "--out", "a", "--for", "99999999999"}},
    {"an unknown option", {"record", "--pid", "1", "--out", "a", "--loud"}},
    {"a word too many", {"record", "--pid", "1", "--out", "a", "b"}},
    {"stop with an option", {"stop", "--quiet"}},
    {"help with a word", {"--help", "record"}},
};

}  // namespace

TEST(MrrecArguments, WrongUsageIsRefused) {
  for (const UsageCase& c : wrong_usages)
    EXPECT_EQ(exitWrongUsage, status_of(c.words)) << c.name;
}

TEST(MrrecArguments, RecordTakesAllOptions) {
  const mrArguments arguments = parse_arguments({"record", "--launch", "host.exe \"a b\" --x", "--out",
                                                 "a.wsf", "--raw", "--quiet", "--ignore", "57600", "--ignore",
                                                 "0xE101", "--ignore", "app.IDM_ZOOM", "--for", "1.5"});
  EXPECT_EQ(commandRecord, arguments.command);
  EXPECT_EQ(hostLaunch, arguments.host_option);
  EXPECT_EQ("host.exe \"a b\" --x", arguments.host);
  EXPECT_EQ("a.wsf", arguments.out);
  EXPECT_TRUE(arguments.raw);
  EXPECT_TRUE(arguments.quiet);
  EXPECT_EQ(1500u, arguments.limit_ms);
  ASSERT_EQ(3u, arguments.ignored.size());
  EXPECT_EQ(57600, arguments.ignored[0].number);
  EXPECT_EQ(0xE101, arguments.ignored[1].number);
  EXPECT_EQ("app.IDM_ZOOM", arguments.ignored[2].name);
}

TEST(MrrecArguments, RecordHasPlainDefaults) {
  const mrArguments arguments = parse_arguments({"record", "--pid", "4294967295", "--out", "a.wsf"});
  EXPECT_EQ(hostPid, arguments.host_option);
  EXPECT_EQ(4294967295u, arguments.pid);
  EXPECT_FALSE(arguments.raw);
  EXPECT_FALSE(arguments.quiet);
  EXPECT_EQ(0u, arguments.limit_ms);
  EXPECT_TRUE(arguments.ignored.empty());
}

TEST(MrrecArguments, TheShortestTimeIsNotNoTime) {
  EXPECT_EQ(1u, parse_arguments({"record", "--pid", "1", "--out", "a", "--for", "0.0001"}).limit_ms);
}

TEST(MrrecArguments, OtherCommandsTakeNoOptions) {
  EXPECT_EQ(commandStop, parse_arguments({"stop"}).command);
  EXPECT_EQ(commandVersion, parse_arguments({"--version"}).command);
  EXPECT_EQ(commandHelp, parse_arguments({"--help"}).command);
}

#ifdef MR_ROUTE_LOGGER
TEST(MrrecArguments, LogTakesAHostAndMayTakeAFile) {
  EXPECT_EQ(commandLog, parse_arguments({"log", "--pid", "1"}).command);
  EXPECT_EQ("a.txt", parse_arguments({"log", "--pid", "1", "--out", "a.txt"}).out);
  EXPECT_EQ(exitWrongUsage, status_of({"log", "--out", "a.txt"}));
  EXPECT_EQ(exitWrongUsage, status_of({"log", "--pid", "1", "--raw"}));
}
#else
TEST(MrrecArguments, LogIsRefusedWithoutTheLoggersRoute) {
  EXPECT_EQ(exitWrongUsage, status_of({"log", "--pid", "1"}));
}
#endif
