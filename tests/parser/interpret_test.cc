// Reading texts token by token.

#include <algorithm>
#include <functional>
#include <sstream>

#include "gtest/gtest.h"
#include "parser/YcluiLineParser.h"
#include "tests/parser/CommandLine.h"
#include "tests/support/allocations.h"
#include "tests/support/words.h"

namespace {

// The depth limit alone would let such an alias expand almost without end. The words around it are
// not affected, and the limit counts anew for each word of the text.
TEST(Interpret, AnAliasThatContainsItselfTwiceEnds) {
  CommandLine line("go x->x_x", "go{go}");
  line.trace("run");
  const auto codesOf = [&line](const char* text) {
    const std::uint64_t before = YErr.count();
    line.interpret(text);
    return YErr.count() - before;
  };
  const std::uint64_t once = codesOf("go x go");
  EXPECT_EQ(line.traced(), "run(go) run(go)");
  EXPECT_GT(once, 2U);
  EXPECT_LE(once, static_cast<std::uint64_t>(YcluiMostExpansions));
  EXPECT_EQ(codesOf("x x go"), 2 * once);
  EXPECT_EQ(line.traced(), "run(go)");
}

// Variables that double in length, and one that contains itself, do not affect the words around.
TEST(Interpret, ExpansionIsLimited) {
  CommandLine line("go say/s", "( go{go} | say{$0[0]$0[0]} )");
  line.trace("err run refuse");
  line.perform("${a}='\\${a} '; ^reset");
  for (int i = 0; i < 19; ++i) line.interpret("${a}='${a}${a}'\n");
  line.interpret("go ${a} go ");  // each of them 2 MiB
  std::string trace = "run(go)";
  for (int level = 0; level < 6; ++level) trace += " err(too-long) refuse(go)";
  EXPECT_EQ(line.traced(), trace + " run(go)");
  for (int i = 0; i < 30; ++i) line.interpret("${a}='${a}${a}'\n");
  line.traced();
  line.interpret("say ${a} go ");
  EXPECT_EQ(line.traced(), "err(too-long) run(go)");
  EXPECT_EQ(line.setAlias("long", std::string(YcluiLongestExpansion + 1, ' ').c_str()), 1U);
  line.interpret("long go ");
  EXPECT_EQ(line.traced(), "err(too-long) refuse(long) run(go)");
}

TEST(Interpret, AFrameAcceptsItsOwnTokens) {
  CommandLine line("a", "( a )*");
  const auto graph = SyntaxOf(*line.lex(), "( a )*");
  YcluiLineParser frame("");
  frame.syntaxGraph(graph.get());
  frame.reset();
  ASSERT_NE(frame.next(line.makeToken("a")), nullptr);
  for (int i = 0; i < 100; ++i) ASSERT_NE(frame.next(*frame.currentToken()), nullptr);
  EXPECT_STREQ(frame.tokenAt(100)->string(), "a");
}

TEST(Interpret, DepthIsLimited) {
  CommandLine line("a b loop->a_loop_b", "( a{a} | b{b} )");
  line.trace("err run");
  int runs = 0;
  std::function<void()> again = [&] {
    if (++runs == 300) return;
    line.at["run(a)"] = again;
    line.perform("^reset;  a b");
  };
  // At the limit unread text is left to the outer calls, and none is lost.
  line.at["run(a)"] = again;
  line.interpret("a b");
  std::string trace = line.traced();
  EXPECT_EQ(std::count(trace.begin(), trace.end(), 'a'), 300);
  EXPECT_EQ(std::count(trace.begin(), trace.end(), 'b'), 300);
  EXPECT_EQ(trace.find("err("), std::string::npos);

  line.interpret("loop a");
  trace = line.traced();
  EXPECT_EQ(std::count(trace.begin(), trace.end(), 'a'), YcluiMostSuspendedTexts + 1);
  EXPECT_EQ(std::count(trace.begin(), trace.end(), 'b'), YcluiMostSuspendedTexts);
}

TEST(Interpret, LongLinesHaveLinearCost) {
  CommandLine line("a b al->a_b", "( a | b )*");
  line.perform("^untok; ^mute");
  std::string text;
  for (int i = 0; i < 100000; ++i) text += "al ";
  EXPECT_EQ(line.interpret(text.c_str()), 100000);
  EXPECT_EQ(line.numberOfToken(), 200000u);
  for (int i = 0; i < 100000; ++i) line.popToken();
  EXPECT_EQ(std::string(line.currentLine()).size(), 199999u);
}

TEST(Interpret, WithoutAFrameThereAreNoTokens) {
  CommandLine line("go");
  EXPECT_TRUE(line.currentToken() == nullptr && line.tokenAt(0) == nullptr);
  std::ostringstream dumped;
  line.dmpCommandLine(dumped);
  EXPECT_EQ(dumped.str(), "\n");
}

TEST(Interpret, TheSystemsSettersReturnTheFunctionsOfTheHost) {
  CommandLine line("go");
  const YcluiEchoProc echo = line.sysSetEchoProcedure(nullptr, nullptr);
  EXPECT_TRUE(echo != nullptr && echo == line.setEchoProcedure(nullptr, nullptr));
  const YcluiSynProc syn = line.sysSetSynCallback(nullptr, nullptr);
  EXPECT_TRUE(syn != nullptr && syn == line.setSynCallback(nullptr, nullptr));
}

// A graph that was replaced or set already may be set again while an operation runs.
TEST(Interpret, AGraphCanBeSetAgain) {
  CommandLine line("go", "go{first}");
  line.trace("run");
  YcluiSyntaxGraph* graphs[] = {SyntaxOf(*line.lex(), "go{a}").release(),
                                SyntaxOf(*line.lex(), "go{b}").release()};
  line.at["run(first)"] = [&] {
    for (const int i : {0, 1, 0, 0, 1, 0}) line.setSyntaxGraph(graphs[i]);
  };
  line.perform("go");
  line.setSyntaxGraph(graphs[0]);
  line.perform("go");
  EXPECT_EQ(line.traced(), "run(first) run(a)");
}

// A cached step must not keep the action of its node.
TEST(Interpret, ANodeCanGetAnActionLater) {
  CommandLine line("a b c");
  YcluiSyntaxGraph* graph = SyntaxOf(*line.lex(), "( b{b} | c )").release();
  YcluiSyntaxNode* node = new YcluiSyntaxNode(IdOfWord(*line.lex(), "a"));
  graph->insertOr(node);
  line.setSyntaxGraph(graph);
  line.trace("run");
  line.perform("a b a a");
  line.at["echo(a)"] = [node] { node->setAction("late"); };
  line.perform("a b a");
  EXPECT_EQ(line.traced(), "run(b) run(late) run(b) run(late)");
}

TEST(Interpret, AWarmParserDoesNotAllocate) {
  CommandLine line("go box/ii say/s two->go_box_3,4",
                   "( go{(go $c)} | box{(box $0[0] $$)} | say{(say $0[0])} )*");
  line.setEchoProcedure([](void*, const char*) {}, nullptr);
  line.perform("^unfield; ^untok; ^unrefuse");
  const auto made = [&line] {
    line.reset();
    const long before = Allocations();
    line.YcluiParser::interpret("go box 1,2 say \"some text that is long\" two unknown go\n");
    return Allocations() - before;
  };
  EXPECT_GT(made(), 0);
  for (int warm = 0; warm < 2; ++warm) made();
  EXPECT_EQ(made(), 0);
}

}  // namespace
