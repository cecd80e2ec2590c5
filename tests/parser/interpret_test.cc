// What a text does, token by token.

#include <sstream>

#include "gtest/gtest.h"
#include "tests/common/allocations.h"
#include "tests/common/syntax.h"
#include "tests/parser/CommandLine.h"

namespace {

TEST(Interpret, KeepsAnOrder) {
  const Steps rows[] = {
      {"", ""},
      {" \t\n# go\n", ""},
      {"go", "tok(go) echo(go) field(go) syn(go|go) run(now) echo() field()"},
      {"move x", "tok(move) echo(move) field(move) refuse(x) echo(move) field(move)"},
      {"stop", "tok(stop) echo() field() refuse(stop)"},
      {"a stop",
       "tok(a) tok(move) echo(move) field(move) tok(stop) echo(move stop) "
       "field(move stop) syn(move stop|move stop) run(halt) echo() field()"},
      {"${v}=4", "echo() field()"},
      {"help", "tok(help) echo(help) field(help) run(help 0)"},
      {"box 1, 2", "tok(box) echo(box1,2) field(box1,2) syn(box1,2|box1,2) echo() field()"},
      {"box 1", "echo(box1) field(box1)"},
      {"box x go", "refuse(box) echo() field()"},
      {"lost", "tok(lost)"},
      {"^dummy d", "echo(d) field(d)"},
      {"^token a", "tok(a) echo() field() refuse(a)"},
      {"^mute; go stop", "tok(go) syn(go|go) run(now) tok(stop) refuse(stop)"},
      {"^unfield; go", "tok(go) echo(go) syn(go|go) run(now) echo()"},
  };
  Check("go move stop box/ii help! lost a->move", "( go{now} | move stop{halt} | box | lost )",
        "tok echo field syn refuse run", rows);
}

TEST(Interpret, CountsAndContinues) {
  const Steps rows[] = {
      {"^count go x stop go", "run(go) run(go) count(2)"},
      {"^count two two", "run(go) run(go) run(go) run(go) count(2)"},
      {"^count two stop ${v}=1 box 7, 2", "run(go) run(go) run(7 2) count(2)"},
      {"^count nested", "run(7 3) run(go) run(go) count(1)"},
      {"${t}=go; ^count ${t} go", "run(go) run(go) count(2)"},
      {"^count empty go", "run(go) count(2)"},
      // A token and its arguments may come in several texts.
      {"^count go box 1; ^count 2", "run(go) count(1) run(1 2) count(1)"},
      {"box; 1,; 2 go", "run(1 2) run(go)"},
      {"box 1 2; 3 go", "run(1 23) run(go)"},
      {"half 3", "run(7 3)"},
      {"box 1,; x; go", "run(go)"},
      {"go g; o", "run(go)"},
      {"box 1,; ^reset; ^open; ^drop; ^open; go", "reset(1) open(1) drop(1) open(0) run(go)"},
      {"^on run(go) ^exhaust; go go", "run(go) exhaust(1)"},
      // The flag of an alias does not count levels.
      {"^on run(7 3) ^alias; ^on run(go) ^alias; nested; ^alias",
       "run(7 3) alias(1) run(go) alias(1) run(go) alias(0)"},
  };
  Check("go stop box/ii two->go_go half->box_7, nested->box_7,3_two empty->",
        "( go{go} | box{$0[0] $$[1]} )", "run answer", rows);
}

// An alias that names itself twice would be read for ages, although not deeply. It costs the words
// around it nothing, and another one in the same text as much as the first.
TEST(Interpret, AnAliasThatNamesItselfTwiceEnds) {
  CommandLine line("go x->x_x", "go{go}");
  line.trace("run");
  const auto codesOf = [&line](const char* text) {
    const std::uint64_t before = YErr.count();
    line.interpret(text);
    return YErr.count() - before;
  };
  const std::uint64_t once = codesOf("go x go");
  EXPECT_EQ(line.told(), "run(go) run(go)");
  EXPECT_GT(once, 2U);
  EXPECT_LE(once, static_cast<std::uint64_t>(YcluiMostExpansions));
  EXPECT_EQ(codesOf("x x go"), 2 * once);
  EXPECT_EQ(line.told(), "run(go)");
}

// While an unfinished token is shown, the echo may change the frame: what is shown is not in its
// way, and the token goes on.
TEST(Interpret, AnUnfinishedTokenIsOnlyShown) {
  const Steps rows[] = {
      {"^on echo(move box1) ^tokens; move; box 1; ^tokens", "tokens(move box) tokens(move)"},
      {"^on echo(move box1) ^reset; move; box 1; ^tokens", "tokens()"},
      {"^on echo(move box1) ^untoken; move; box 1; ^tokens", "tokens()"},
      {"^on echo(move box1) ^dummy d; move; box 1; ^tokens", "tokens(move d)"},
      {"^on echo(move box1) ^remove 0; move; box 1; ^tokens", "tokens()"},
      {"^on echo(move box1) ^push & ^pop; move; box 1; ^tokens", "tokens(move)"},
      {"^on echo(move box1) , 2; move; box 1; ^tokens", "tokens(move)"},
  };
  Check("move box/ii", "move box", "tokens", rows);
}

TEST(Interpret, TellsWhereTheLastTokenBegan) {
  const Steps rows[] = {
      {"  go  ; ^offset", "offset(1)"},
      {"go x two # end; ^offset", "offset(5)"},
      {"go box 1,; ^offset; 2; ^offset", "offset(3) offset(-6)"},
      {"box 1 2; ^count; ^offset", "count(1) offset(-7)"},
      {"box 1 go; ^drop;  # go; ^offset", "drop(1) offset(-2)"},
      {"^on run(again) ^reset &  go; again; ^offset", "reset(1) offset(6)"},
      {"^inside go; ^count  go; ^offset", "inside(1) count(1) offset(1)"},
  };
  Check("go box/ii again two->go_go", "( go | box | again{again} )", "answer", rows);
}

TEST(Interpret, RefusesWithoutAFrame) {
  CommandLine line("go");
  line.trace("tok echo field syn refuse run err answer tokens");
  line.perform("^count go; ^inside go; ^dummy go; ^token go; ^reset; ^push; ^pop; ^untoken");
  line.perform("^remove 0; ^find go; ^depth; ^tokens");
  EXPECT_EQ(line.told(),
            "err(2056/2) count(0) err(2056/2) inside(0) err(2056/2) dummy(0) token(0) reset(1) "
            "push(0) pop(0) untoken(0) remove(0) find(-1) depth(0) tokens() tokens(1)");
  EXPECT_TRUE(line.currentToken() == nullptr && line.tokenAt(0) == nullptr);
  std::ostringstream dumped;
  line.dmpCommandLine(dumped);
  EXPECT_EQ(dumped.str(), "\n");
  YString_Array words;
  YString completed("kept");
  unsigned long unique = 7;
  line.possibleWords(words);
  EXPECT_EQ(line.completionList("", words), 0);
  EXPECT_EQ(line.completionString("", completed, unique), 0u);
  EXPECT_EQ(words.size() + static_cast<int>(unique), 0);
  EXPECT_STREQ(completed.buffer, "kept");
}

TEST(Interpret, MemoryMayRunOut) {
  FailAllocation();
  YcluiParser crippled;  // has no lexer
  crippled.setSyntaxGraph(new YcluiSyntaxGraph);
  EXPECT_TRUE(crippled.lex() == nullptr && crippled.nestingDepth() == 0);
  EXPECT_EQ(crippled.setAlias("a", "b") + crippled.tokenIsOpen(), 0u);
  EXPECT_EQ(crippled.interpret("x"), 0);
  crippled.exhaust();

  FailAllocation();
  YcluiParser::CreateMortuary();
  YcluiParser::AddDeadBody(&crippled);
  EXPECT_EQ(crippled.isCondemned(), 0u);

  CommandLine line("go");
  YcluiSyntaxGraph* syntax = SyntaxOf(*line.lex(), "go");
  line.trace("err answer");
  line.perform("^fail 1");  // behind the root of the indefinite nodes, the frame
  line.setSyntaxGraph(syntax);
  line.perform("^depth");
  line.setSyntaxGraph(syntax);
  line.perform("^count go; ^fail 0; ^push; ^depth");
  EXPECT_EQ(line.told(),
            "fail(1) err(2049/4) depth(0) count(1) fail(1) err(2049/4) push(0) depth(1)");
}

TEST(Interpret, AWarmParserDoesNotAllocate) {
  CommandLine line("go box/ii say/s two->go_box_3,4",
                   "( go{(go $c)} | box{(box $0[0] $$)} | say{(say $0[0])} )*");
  YcluiParser& parser = line;
  parser.setEchoProcedure([](void*, const char*) {}, nullptr);
  parser.sysSetEchoProcedure(nullptr, nullptr);
  parser.setTokCallback(nullptr, nullptr);
  line.perform("^unrefuse");
  long made = 0;
  for (int i = 0; i < 4; ++i) {
    parser.reset();
    const long before = Allocations();
    parser.YcluiParser::interpret("go box 1,2 say \"some text that is long\" two unknown go\n");
    made = Allocations() - before;
    EXPECT_TRUE(i > 0 || made > 0);
  }
  EXPECT_EQ(made, 0);
}

}  // namespace
