// What one line does: the order of things, token by token.

#include <sstream>

#include "foundation/YErr.h"
#include "gtest/gtest.h"
#include "tests/parser/CommandLine.h"
#include "tests/parser/allocations.h"

namespace {

struct Case {
  const char* given;
  const char* expected;
};

TEST(Interpret, TellsEverythingInOrder) {
  const Case cases[] = {
      {"", ""},
      {" \t\n# go\n", ""},
      {"go", "tok(go) echo(go) field(go) syn(go|go) run(go now) echo() field()"},
      {"move", "tok(move) echo(move) field(move)"},
      {"move x", "tok(move) echo(move) field(move) refuse(x) echo(move) field(move)"},
      {"stop", "tok(stop) echo() field() refuse(stop)"},
      {"go GO",
       "tok(go) echo(go) field(go) syn(go|go) run(go now) echo() field() "
       "tok(go) echo(go) field(go) syn(go|go) run(go now) echo() field()"},
      {"a stop",
       "tok(a) tok(move) echo(move) field(move) tok(stop) echo(move stop) "
       "field(move stop) syn(move stop|move stop) run(halt 2) echo() field()"},
      {"${v}=4", "echo() field()"},
      {"help", "tok(help) echo(help) field(help) run(help 0)"},
      {"box 1", "echo(box1) field(box1)"},
      {"box 1, 2",
       "tok(box) echo(box1,2) field(box1,2) syn(box1,2|box1,2) run(2 1) echo() field()"},
      {"box x go", "refuse(box) echo() field()"},
  };
  for (const Case& c : cases) {
    CommandLine line("go move stop box/ii help",
                     "( go{go now} | move stop{halt $$#-2} | box{$0[1] $0[0]} )");
    line.addIndefinite("help", "help $c");
    line.setAlias("a", "move");
    const std::string command = "halt " + std::to_string(line.makeToken("stop").id()) + "-2";
    line.trace("tok echo field syn refuse run");
    std::string told = line.feed(c.given);
    const std::size_t halt = told.find(command);
    if (halt != std::string::npos) told.replace(halt, command.size(), "halt 2");
    EXPECT_EQ(told, c.expected) << c.given;
  }
}

TEST(Interpret, CountsTokensTaken) {
  const struct {
    const char* text;
    int count;
  } cases[] = {{"go go", 2},   {"go x stop go", 2}, {"both go", 2}, {"both both", 2},
               {"box 1 2", 0}, {"${v}=1 go", 1},    {"help", 1},    {"bad go", 1}};
  for (const auto& c : cases) {
    CommandLine line("go stop help box/ii", "( go | box )");
    line.addIndefinite("help");
    line.setAlias("both", "go go");
    EXPECT_EQ(line.interpret(c.text), c.count) << c.text;
  }
}

// Texts follow one another, ":" standing between them.
TEST(Interpret, TokensSpanTexts) {
  const Case cases[] = {
      {"box 1:2", "run(1 2)"},
      {"box:1,:2", "run(1 2)"},
      {"box 1 2:3 go", "run(1 23) run(go)"},
      {"box 1,::2 go", "run(1 2) run(go)"},
      {"go g:o", "run(go)"},
      {"openbox 3", "run(7 3)"},
      {"box 1, 2 box 3:4", "run(1 2) run(3 4)"},
  };
  for (const Case& c : cases) {
    CommandLine line("go box/ii", "( go{$$} | box{$0[0] $0[1]} )");
    line.setAlias("openbox", "box 7,");
    line.trace("run");
    std::istringstream texts(c.given);
    std::string told;
    for (std::string text; std::getline(texts, text, ':');) {
      line.interpret(text.c_str());
    }
    EXPECT_EQ(line.told(), c.expected) << c.given;
  }
}

TEST(Interpret, AnOpenTokenCanBeSeenAndDropped) {
  CommandLine line("go box/ii", "( go{$$} | box )");
  line.trace("run");
  EXPECT_EQ(line.feed("box 1,"), "");
  EXPECT_EQ(line.tokenIsOpen(), 1u);
  EXPECT_EQ(line.tokens(), "");
  line.reset();
  EXPECT_EQ(line.tokenIsOpen(), 1u);
  line.dropOpenToken();
  EXPECT_EQ(line.tokenIsOpen(), 0u);
  EXPECT_EQ(line.feed("go"), "run(go)");
}

// While an unfinished token is shown, the echo may change the frame: what is shown is not in its
// way, and the token goes on.
TEST(Interpret, AnUnfinishedTokenIsOnlyShown) {
  const struct {
    const char* task;
    std::function<void(CommandLine&)> change;
    const char* left;
  } cases[] = {
      {"none", [](CommandLine&) {}, "move"},
      {"reset", [](CommandLine& line) { line.reset(); }, ""},
      {"pop", [](CommandLine& line) { line.popToken(); }, ""},
      {"dummy", [](CommandLine& line) { line.pushDummyToken("d"); }, "move d"},
      {"remove", [](CommandLine& line) { line.removeToken(0); }, ""},
      {"frame", [](CommandLine& line) { line.pushFrame(), line.popFrame(); }, "move"},
  };
  for (const auto& c : cases) {
    CommandLine line("move box/ii", "move box");
    line.interpret("move");
    line.at["echo(move box1)"] = [&] { c.change(line); };
    line.interpret("box 1");
    EXPECT_EQ(line.tokens(), c.left) << c.task;
    EXPECT_EQ(line.tokenIsOpen(), 1u) << c.task;
  }
}

TEST(Interpret, TellsWhereTheLastTokenBegan) {
  CommandLine line("go box/ii again", "( go{go} | box{box} | again{again} )");
  line.setAlias("a", "go go");
  line.interpret("  go  ");
  EXPECT_EQ(line.lastTokenOffset(), 2);
  line.interpret("go x a # end");
  EXPECT_EQ(line.lastTokenOffset(), 5);
  line.interpret("go box 1,");
  EXPECT_EQ(line.lastTokenOffset(), 3);
  line.interpret("2");
  EXPECT_EQ(line.lastTokenOffset(), -6);
  line.interpret("box 1 2");
  line.interpret("");
  EXPECT_EQ(line.lastTokenOffset(), -7);
  line.interpret("box 1 go");
  line.dropOpenToken();
  line.interpret(" # go");
  EXPECT_EQ(line.lastTokenOffset(), -2);
  line.at["run(again)"] = [&] {
    line.reset();
    line.interpret(" go");
  };
  line.interpret("again");
  EXPECT_EQ(line.lastTokenOffset(), 6);
}

TEST(Interpret, ExpandsInPlace) {
  const Case cases[] = {
      {"two b", "run(a) run(a) run(b)"},
      {"${t} b", "run(a) run(b)"},
      {"nested b", "run(b) run(a) run(a) run(b)"},
      {"empty b", "run(b)"},
  };
  for (const Case& c : cases) {
    CommandLine line("a b", "( a{a} | b{b} )");
    line.setAlias("two", "a a");
    line.setAlias("nested", "b two");
    line.setAlias("empty", "");
    line.setVariable("t", YAttribValue("a", 0));
    line.trace("run");
    EXPECT_EQ(line.feed(c.given), c.expected) << c.given;
    EXPECT_EQ(line.isAliasRun(), 0u);
  }
  CommandLine line("a b", "( a{a} | b{b} )");
  line.setAlias("inner", "a");
  line.setAlias("outer", "b inner b");
  std::string flags;
  line.at["run(a)"] = [&] { flags += std::to_string(line.isAliasRun()); };
  line.at["run(b)"] = [&] {
    flags += std::to_string(line.isAliasRun());
    line.at["run(b)"] = [&] { flags += std::to_string(line.isAliasRun()); };
  };
  line.interpret("outer");
  EXPECT_EQ(flags, "110");
  YcluiToken alias = line.makeToken("inner");
  EXPECT_EQ(line.pushToken(alias), 0u) << "no text to read";
}

TEST(Interpret, RefusesWithoutAFrame) {
  CommandLine line("go");
  NewErrors();
  YcluiToken token = line.makeToken("go");
  line.trace("tok echo field syn refuse run");
  EXPECT_EQ(line.interpret("go"), 0);
  EXPECT_EQ(line.pushToken("go"), 0u);
  EXPECT_EQ(line.pushDummyToken("go"), 0u);
  EXPECT_EQ(NewErrors(), "2056/2 2056/2 2056/2");
  line.reset();
  std::ostringstream dumped;
  line.dmpCommandLine(dumped);
  YString_Array words;
  YString completed("kept");
  unsigned long unique = 7;
  EXPECT_EQ(line.completionList("", words), 0);
  EXPECT_EQ(line.completionString("", completed, unique), 0u);
  line.possibleWords(words);
  EXPECT_EQ(words.size(), 0);
  EXPECT_EQ(unique, 0u);
  EXPECT_EQ(line.pushToken(token) + line.removeToken(0) + line.pushFrame() + line.popFrame() +
                line.numberOfToken() + static_cast<YWord>(line.nestingDepth()),
            0u);
  EXPECT_TRUE(line.popToken() == nullptr && line.currentToken() == nullptr &&
              line.tokenAt(0) == nullptr);
  EXPECT_EQ(line.findToken("go"), -1);
  EXPECT_STREQ(line.currentLine(), "");
  EXPECT_EQ(line.told() + NewErrors() + dumped.str() + completed.buffer, "\nkept");
}

TEST(Interpret, MemoryMayRunOut) {
  NewErrors();
  FailAllocation();
  YcluiParser crippled;
  crippled.setSyntaxGraph(new YcluiSyntaxGraph);
  EXPECT_TRUE(crippled.lex() == nullptr && crippled.nestingDepth() == 0);
  EXPECT_EQ(crippled.setAlias("a", "b") + crippled.tokenIsOpen(), 0u);
  EXPECT_EQ(crippled.interpret("x"), 0);
  crippled.exhaust();
  EXPECT_EQ(NewErrors(), "2049/4 2056/2");

  CommandLine line("go");
  auto* syntax = new YcluiSyntaxGraph;
  syntax->insertAnd(line.node("go"));
  FailAllocation(1);  // behind the root of the indefinite nodes, the frame
  line.setSyntaxGraph(syntax);
  EXPECT_EQ(line.nestingDepth(), 0);
  line.setSyntaxGraph(syntax);
  EXPECT_EQ(line.interpret("go"), 1);
  FailAllocation();
  EXPECT_EQ(line.pushFrame(), 0u);
  EXPECT_EQ(line.nestingDepth(), 1);
  EXPECT_EQ(NewErrors(), "2049/4 2049/4");
}

TEST(Interpret, AWarmParserDoesNotAllocate) {
  CommandLine line("go box/ii say/s a",
                   "( go{(go $c)} | box{(box $0[0] $$)} | say{(say $0[0])} )*");
  line.setAlias("two", "go box 3,4");
  line.trace("");
  YcluiParser& parser = line;
  parser.setEchoProcedure([](void*, const char*) {}, nullptr);
  parser.sysSetEchoProcedure(nullptr, nullptr);
  parser.setTokCallback(nullptr, nullptr);
  const char* text = "go box 1,2 say \"some text that is long\" two unknown go\n";
  long counts[4];
  for (long& count : counts) {
    parser.reset();
    const long before = Allocations();
    parser.YcluiParser::interpret(text);
    count = Allocations() - before;
  }
#if !defined(__SANITIZE_ADDRESS__)
  EXPECT_GT(counts[0], 0);
#endif
  EXPECT_EQ(counts[3], 0);
}

}  // namespace
