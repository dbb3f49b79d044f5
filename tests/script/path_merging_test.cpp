// How the levels of a path become a chain of nodes, for each answer of the factories in each order that
// matters.
#include "hooks/mrDispatcher.h"
#include "tests/support/recording.h"
#include "tests/support/spies.h"

#include <gmock/gmock.h>

#include <memory>
#include <sstream>

// A spy declares a level by its text: "1a" is answered with result 1, declaration "a", search form "S(a)" and
// identifier "a".
static mrDeclarationRes declare_by_text(const mrWindowInfo& info, CString& declaration, CString& search,
                                        CString& identifier) {
  const char* const name = info.text + 1;
  if (*info.text != '0') {
    declaration = name;
    search.Format("S(%s)", name);
    identifier = name;
  }
  return static_cast<mrDeclarationRes>(*info.text - '0');
}

class PathMerging : public testing::Test {
protected:
  PathMerging() { spies[17].declare = declare_by_text; }

  mrWindowPath& make_path(const char* levels) {
    paths.emplace_back();
    std::istringstream words(levels);
    for (std::string word; words >> word;) {
      infos.push_back(std::make_unique<mrWindowInfo>());
      strcpy(infos.back()->text, word.c_str());
      infos.back()->window = reinterpret_cast<HWND>(0x100);
      paths.back().Add(infos.back().get());
    }
    return paths.back();
  }
  // The call, and the declarations from the top down to the node that is called.
  std::string chain_of(const char* levels) {
    mrTestRecorder recorder;
    CString call;
    recorder.get_declaration(make_path(levels), call);
    std::string chain;
    const mrRecorder::mrWindowNode* node = &recorder.m_root;
    while (!node->children.IsEmpty()) {
      EXPECT_EQ(1, node->children.GetSize()) << levels;
      node = node->children[0];
      chain += (chain.empty() ? "" : " ") + node->declaration.str();
    }
    EXPECT_EQ(1, node->state) << "the last node is the one that is called: " << levels;
    EXPECT_EQ("  " + node->identifier.str() + "().", call.str()) << levels;
    return chain;
  }

  mrSpies spies;
  std::vector<std::unique_ptr<mrWindowInfo>> infos;
  std::list<mrWindowPath> paths;
};

struct MergingCase {
  const char* name;
  const char* levels;  // from the action's window up
  const char* chain;   // from the top down
};

TEST_F(PathMerging, MakesOneChainOfTheLevels) {
  // clang-format off
  static constexpr MergingCase cases[] = {
      {"nothing declared: the root itself",                        "0a 0b",          ""},
      {"no level at all",                                          "",               ""},
      {"a main window",                                            "2m",             "m"},
      {"a level that nobody declares is left out",                 "1a 0x 2m",       "m a"},

      {"1 after nothing, after 1",                                 "1a 1b 2m",       "m b a"},
      {"1 after 0 between",                                        "1a 0x 1b 2m",    "m b a"},
      {"1 after 6 is taken",                                       "1a 6u 1b 2m",    "m b S(a)"},
      {"1 after 3 is skipped: a name is found anywhere",           "3n 1b 2m",       "m n"},
      {"1 after 3 after 1",                                        "1a 3n 1b 2m",    "m n a"},
      {"1 after 2 is skipped",                                     "2m 1b",          "m"},

      {"2 after 2",                                                "2a 2b",          "b a"},
      {"2 after 3",                                                "3n 2m",          "m n"},
      {"3 after 3",                                                "3n 3o 2m",       "m o n"},
      {"3 after 2",                                                "2m 3n",          "n m"},
      {"3 after 6",                                                "1a 6u 3n 2m",    "m n S(a)"},

      {"4 skips the level behind it",                              "1a 4d 1c 2m",    "m d a"},
      {"4 skips whatever that is",                                 "1a 4d 2m",       "d a"},
      {"4 first",                                                  "4d 1c 2m",       "m d"},
      {"4 last",                                                   "1a 4d",          "d a"},
      {"4 leaves the one before it as it was: 0",                  "4d 0c 1b 2m",    "m b d"},
      {"4 leaves the one before it as it was: 3",                  "3n 4d 0c 1b 2m", "m d n"},
      {"4 after 2",                                                "2m 4d 0c 2n",    "n d m"},
      {"4 after 6",                                                "1a 6u 4d 0c 2m", "m d S(a)"},
      {"4 after 4",                                                "4d 0c 4e 0c 2m", "m e d"},

      {"5 goes on with the top-level window",                      "1a 5d 1x 3y 2m", "m d a"},
      {"5 directly below the top-level window",                    "1a 5d 2m",       "m d a"},
      {"5 as the top-level window",                                "1a 5d",          "d a"},
      {"5 alone",                                                  "5d 2m",          "m d"},
      {"5 after 3 is skipped, and the levels after it are asked",  "3n 5d 3o 2m",    "m o n"},
      {"5 after 3 leaves 3 as it was",                             "3n 5d 1b 2m",    "m n"},
      {"5 leaves the one before it as it was: 1",                  "1a 5d 0x 1t",    "t d a"},
      {"5 leaves the one before it as it was: 2",                  "2a 5d 1t",       "d a"},
      {"5, then a named top-level window",                         "1a 5d 3t",       "t d a"},
      {"5, then a document on top",                                "1a 5d 4t",       "t d a"},
      {"5, then another active dialog on top",                     "1a 5d 5e",       "e d a"},
      {"5, then an untitled top: the last window loses its own",   "1a 5d 6t",       "S(a) a"},
      {"5 after 6",                                                "1a 6u 5d 2m",    "m d S(a)"},
      {"5 after 4",                                                "4d 0c 5e 1x 2m", "m e d"},

      {"6 makes the window below it found at any depth",           "1a 6u 2m",       "m S(a)"},
      {"6 makes only the last window so",                          "1a 1b 6u 2m",    "m S(b) a"},
      {"6 first has nothing to search for",                        "6u 1b 2m",       "m b"},
      {"6 first, nothing else",                                    "6u",             ""},
      {"6 after 6",                                                "1a 6u 6v 2m",    "m S(a)"},
      {"6 twice, each with a window below it",                     "1a 6u 1b 6v 2m", "m S(b) S(a)"},
      {"6 after 3 searches for nothing: a name is found anywhere", "3n 6u 2m",       "m n"},
      {"6 after 3 lets the next 1 in again",                       "3n 6u 1b 2m",    "m b n"},
      {"6 after 2 searches for nothing",                           "2m 6u",          "m"},
      {"6 after 2 lets the next 1 in again",                       "2m 6u 1b",       "b m"},
      {"6 after 4 first takes its declaration away",               "4d 0c 6u 2m",    "m "},
      {"6 after 4 after 1 searches for the last 1",                "1a 4d 0c 6u 2m", "m S(a) a"},
  };
  // clang-format on
  for (const MergingCase& c : cases)
    EXPECT_EQ(c.chain, chain_of(c.levels)) << c.name << ": " << c.levels;
}

// Deliberate, and for good: which dialog is active at play time is not told by what it was called.
TEST_F(PathMerging, ForgetsWindowAndTextOfAnActiveDialogInTheActionsOwnPath) {
  mrTestRecorder recorder;
  mrWindowPath& path = make_path("1a 5d 1x 2m");
  CString call;
  recorder.get_declaration(path, call);
  EXPECT_EQ(nullptr, path[1]->window);
  EXPECT_STREQ("", path[1]->text);
  for (const int other : {0, 2, 3}) {
    EXPECT_NE(nullptr, path[other]->window) << other;
    EXPECT_STRNE("", path[other]->text) << other;
  }
  // The node is made from the level after that.
  EXPECT_EQ(nullptr, recorder.m_root.children[0]->children[0]->info.window);
  EXPECT_STREQ("", recorder.m_root.children[0]->children[0]->info.text);
}

TEST_F(PathMerging, LeavesAnActiveDialogThatItSkipsAsItIs) {
  mrTestRecorder recorder;
  mrWindowPath& path = make_path("3n 5d 2m");
  CString call;
  recorder.get_declaration(path, call);
  EXPECT_STREQ("5d", path[1]->text);
  EXPECT_NE(nullptr, path[1]->window);
}

TEST_F(PathMerging, AsksTheFactoriesFrom17DownTo1ForTheFirstAnswer) {
  mrTestRecorder recorder;
  spies[17].declare = nullptr;
  const auto answer = [](const char* text) {
    return [text](const mrWindowInfo&, CString& declaration, CString& search, CString& identifier) {
      declaration = search = identifier = text;
      return declaredByControlId;
    };
  };
  spies[18].declare = answer("logger");
  spies[14].declare = answer("14 !");
  spies[3].declare = answer("3");
  CString declaration;
  CString search;
  CString identifier;
  const mrWindowInfo info;
  EXPECT_EQ(declaredByControlId, recorder.get_declaration(&info, declaration, search, identifier));
  EXPECT_EQ("14 !", declaration);
  EXPECT_EQ("14 !", search);
  EXPECT_EQ("_14_", identifier) << "reduced to an identifier";
  EXPECT_THAT(spies.log, testing::ElementsAre("17 declare", "16 declare", "15 declare", "14 declare"));

  spies[14].declare = nullptr;
  spies[3].declare = nullptr;
  identifier = "kept !";
  EXPECT_EQ(declaredNot, recorder.get_declaration(&info, declaration, search, identifier));
  EXPECT_EQ("kept !", identifier);
}

TEST_F(PathMerging, SharesTheNodeOfEqualDeclarationsUnderOneParent) {
  mrTestRecorder recorder;
  CString call;
  recorder.get_declaration(make_path("1a 1b 2m"), call);
  recorder.get_declaration(make_path("1a 1b 2m"), call);
  EXPECT_EQ(3, recorder.m_windows.GetSize());
  recorder.get_declaration(make_path("1c 1b 2m"), call);
  EXPECT_EQ(4, recorder.m_windows.GetSize());
  EXPECT_EQ("  c().", call);
  // The same declarations under another parent, and one that differs in case.
  recorder.get_declaration(make_path("1a 2m"), call);
  EXPECT_EQ("  a_1().", call);
  recorder.get_declaration(make_path("1A 2m"), call);
  EXPECT_EQ("  A().", call);
  EXPECT_EQ(6, recorder.m_windows.GetSize());
  EXPECT_EQ(1, recorder.m_root.children.GetSize());
  EXPECT_EQ(3, recorder.m_root.children[0]->children.GetSize());
}

TEST_F(PathMerging, SetsTheCallAnew) {
  mrTestRecorder recorder;
  CString call = "before";
  recorder.get_declaration(make_path("2m"), call);
  EXPECT_EQ("  m().", call);
}
