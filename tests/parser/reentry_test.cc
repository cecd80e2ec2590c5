// Callbacks and commands that do things to the parser that is running them.

#include <algorithm>

#include "foundation/YErr.h"
#include "gtest/gtest.h"
#include "tests/parser/CommandLine.h"

namespace {

const char* const Syntax = "( a{one} | b c{two} | box )";

struct Operation {
  const char* name;
  void (*run)(CommandLine&);
};

const Operation Operations[] = {
    {"interpret", [](CommandLine& line) { line.interpret("a b"); }},
    {"interpret open", [](CommandLine& line) { line.interpret("box 7"); }},
    {"read inside", [](CommandLine& line) { line.pushToken("b c al"); }},
    {"push token",
     [](CommandLine& line) {
       YcluiToken token = line.makeToken("a");
       line.pushToken(token);
     }},
    {"push frame", [](CommandLine& line) { line.pushFrame(); }},
    {"pop frame", [](CommandLine& line) { line.popFrame(); }},
    {"other frame", [](CommandLine& line) { line.popFrame(), line.pushFrame(); }},
    {"frame and back",
     [](CommandLine& line) { line.pushFrame(), line.pushToken("a"), line.popFrame(); }},
    {"syntax", [](CommandLine& line) { line.setSyntax(Syntax); }},
    {"syntax twice", [](CommandLine& line) { line.setSyntax("c"), line.setSyntax(Syntax); }},
    {"indefinite", [](CommandLine& line) { line.addIndefinite("c"); }},
    {"reset", [](CommandLine& line) { line.reset(); }},
    {"reset and read", [](CommandLine& line) { line.reset(), line.interpret("b c a"); }},
    {"pop token", [](CommandLine& line) { line.popToken(), line.popToken(); }},
    {"remove token", [](CommandLine& line) { line.removeToken(0); }},
    {"dummy", [](CommandLine& line) { line.pushDummyToken("dummy"); }},
    {"exhaust", [](CommandLine& line) { line.exhaust(); }},
    {"drop", [](CommandLine& line) { line.dropOpenToken(); }},
    {"words",
     [](CommandLine& line) {
       line.lex()->delKeyword("a");
       line.lex()->addKeyword("a", nullptr, 5000);
       line.unsetAlias("al");
     }},
    {"no echo", [](CommandLine& line) { line.setEchoProcedure(nullptr, nullptr); }},
    {"no field", [](CommandLine& line) { line.sysSetEchoProcedure(nullptr, nullptr); }},
    {"no callbacks",
     [](CommandLine& line) {
       line.setTokCallback(nullptr, nullptr);
       line.setTokRefuseCallback(nullptr, nullptr);
       line.setSynCallback(nullptr, nullptr);
     }},
    {"playback", [](CommandLine& line) { line.playbackFromLog(PathOf("reentry").c_str()); }},
    {"log",
     [](CommandLine& line) {
       line.startLogging(PathOf("reentry.log").c_str(), 0);
       line.reset();
       line.shutLogging();
     }},
    {"death",
     [](CommandLine& line) { YcluiParser::AddDeadBody(&line), YcluiParser::CleanupMortuary(); }},
};

const char* const Places[] = {"tok(b)",    "echo(b)",   "field(b)",   "syn(b c|b c)", "run(two)",
                              "refuse(x)", "refuse(c)", "echo(box1)", "run(help)",    "echo()"};

TEST(Reentry, EverythingFromEverywhere) {
  WriteFile(PathOf("reentry"), "a\nb c\nal box 1\n, 2\nunknown");
  YcluiParser::CreateMortuary();
  for (const char* place : Places) {
    for (const Operation& operation : Operations) {
      SCOPED_TRACE(std::string(operation.name) + " at " + place);
      CommandLine line("a b c box/ii help", Syntax);
      line.addIndefinite("help", "help");
      line.setAlias("al", "a b c");
      line.pushFrame();
      line.at[place] = [&] { operation.run(line); };
      line.interpret("b x help c al c a box 1");
      line.interpret(", 2 a");
      EXPECT_TRUE(line.at.empty()) << "never came there";
      EXPECT_EQ(line.tokens().find('!'), std::string::npos);
      // Whatever it was, a new syntax makes a new start.
      line.dropOpenToken();
      line.exhaust();
      line.setSyntax(Syntax);
      line.trace("run");
      EXPECT_EQ(line.feed("a b c"), "run(one) run(two)");
    }
  }
  YcluiParser::DestroyMortuary();
}

TEST(Reentry, ANestedTextRunsBehindTheRestOfTheLine) {
  CommandLine line("a b c", "( a{a} | b{b} | c{c} )");
  line.trace("run");
  int inner = 0;
  line.at["run(a)"] = [&] {
    line.reset();
    inner = line.interpret(" c");
  };
  EXPECT_EQ(line.feed("a b"), "run(a) run(b) run(c)");
  EXPECT_EQ(inner, 2);
  line.at["run(a)"] = [&] {
    line.reset();
    line.pushToken("c");
  };
  EXPECT_EQ(line.feed("a b"), "run(a) run(c) run(b)");
  line.at["run(a)"] = [&] { line.interpret("c"); };
  EXPECT_EQ(line.feed("a b"), "run(a)") << "the command of the last token has not been reset";
  EXPECT_EQ(line.feed("b"), "run(b)");
}

TEST(Reentry, ACommandChangesFrames) {
  const struct {
    const char* name;
    void (*change)(CommandLine&);
    int depth;
    const char* tokens;
  } cases[] = {
      {"push", [](CommandLine& line) { line.pushFrame(); }, 3, ""},
      {"pop", [](CommandLine& line) { line.popFrame(); }, 1, "b"},
      {"swap", [](CommandLine& line) { line.popFrame(), line.pushFrame(), line.interpret("b"); }, 2,
       "b"},
      {"push and pop", [](CommandLine& line) { line.pushFrame(), line.popFrame(); }, 2, ""},
      {"syntax", [](CommandLine& line) { line.setSyntax("a c"); }, 1, ""},
  };
  for (const auto& c : cases) {
    CommandLine line("a b c", "( a{a} | b c )");
    line.interpret("b");
    line.pushFrame();
    line.at["run(a)"] = [&] { c.change(line); };
    EXPECT_EQ(line.interpret("a"), 1) << c.name;
    EXPECT_EQ(line.nestingDepth(), c.depth) << c.name;
    EXPECT_EQ(line.tokens(), c.tokens) << c.name;
  }
}

TEST(Reentry, NestedCommandsAreBounded) {
  CommandLine line("a b", "( a{a} | b{b} )");
  line.trace("run");
  int runs = 0;
  std::function<void()> again = [&] {
    ++runs;
    line.at["run(a)"] = again;
    line.reset();
    line.interpret("a");
  };
  line.at["run(a)"] = again;
  NewErrors();
  line.interpret("a");
  EXPECT_EQ(runs, YcluiParser::MostNestedCommands);
  EXPECT_EQ(NewErrors(), "2052/2");
  line.at.clear();
  EXPECT_EQ(line.feed("b"), "run(b)");

  // With text unread it is left to the loops outside, and none is lost.
  runs = 0;
  again = [&] {
    if (++runs == 300) return;
    line.at["run(a)"] = again;
    line.reset();
    line.interpret(" a b");
  };
  line.at["run(a)"] = again;
  line.interpret("a b");
  EXPECT_EQ(runs, 300);
  EXPECT_EQ(NewErrors(), "");
}

TEST(Reentry, AnAliasThatLeadsBackToItselfEnds) {
  CommandLine line("a b", "( a{a} | b{b} )");
  line.setAlias("loop", "a loop b");
  line.trace("run");
  NewErrors();
  std::string told = line.feed("loop a");
  EXPECT_EQ(std::count(told.begin(), told.end(), 'a'), YcluiLex::MaxSuspended + 1);
  EXPECT_EQ(std::count(told.begin(), told.end(), 'b'), YcluiLex::MaxSuspended);
  EXPECT_EQ(YErr.code(0), YErrTooDeep);
}

TEST(Reentry, LongLinesStayCheap) {
  CommandLine line("a b", "( a | b )*");
  std::string shown = "a";
  line.setAlias("al", "a b");
  std::string text;
  for (int i = 0; i < 100000; ++i) text += "al ";
  line.setTokCallback(nullptr, nullptr);
  line.enableEcho(0);
  EXPECT_EQ(line.interpret(text.c_str()), 100000);
  EXPECT_EQ(line.numberOfToken(), 200000u);
  for (int i = 0; i < 100000; ++i) line.popToken();
  EXPECT_EQ(std::string(line.currentLine()).size(), 199999u);
}

}  // namespace
