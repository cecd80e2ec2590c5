// Callbacks and commands that do things to the parser that is running them.

#include <algorithm>

#include "gtest/gtest.h"
#include "tests/parser/CommandLine.h"

namespace {

const char* const Words = "a b c box/ii help! al->a_b_c";
const char* const Syntax = "( a{one} | b c{two} | box )";

TEST(Reentry, DepthIsBounded) {
  CommandLine line("a b loop->a_loop_b", "( a{a} | b{b} )");
  line.trace("err run");
  int runs = 0;
  std::function<void()> again = [&] {
    if (++runs == 300) return;
    line.at["run(a)"] = again;
    line.perform("^reset;  a b");
  };
  const auto runsOf = [](const std::string& told, const char* command) {
    return std::count(told.begin(), told.end(), command[0]);
  };
  // With text unread it is left to the loops outside, and none is lost.
  line.at["run(a)"] = again;
  line.interpret("a b");
  std::string told = line.told();
  EXPECT_EQ(runsOf(told, "a"), 300);
  EXPECT_EQ(runsOf(told, "b"), 300);
  EXPECT_EQ(told.find("err("), std::string::npos);

  line.interpret("loop a");
  told = line.told();
  EXPECT_EQ(runsOf(told, "a"), YcluiMostSuspendedTexts + 1);
  EXPECT_EQ(runsOf(told, "b"), YcluiMostSuspendedTexts);
}

TEST(Reentry, LongLinesStayCheap) {
  CommandLine line("a b al->a_b", "( a | b )*");
  line.perform("^untok; ^mute");
  std::string text;
  for (int i = 0; i < 100000; ++i) text += "al ";
  EXPECT_EQ(line.interpret(text.c_str()), 100000);
  EXPECT_EQ(line.numberOfToken(), 200000u);
  for (int i = 0; i < 100000; ++i) line.popToken();
  EXPECT_EQ(std::string(line.currentLine()).size(), 199999u);
}

}  // namespace
