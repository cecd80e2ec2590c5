// Frames: their tokens and texts, one over the other, and the mortuary.

#include "gtest/gtest.h"
#include "tests/common/syntax.h"
#include "tests/common/words.h"
#include "tests/parser/CommandLine.h"

namespace {

TEST(Frame, TokensCanBeTakenBack) {
  const Steps rows[] = {
      // Two ways begin with "a b".
      {"a b help; ^dummy d; ^untoken; ^tokens; ^untoken; d",
       "run(help 0) tokens(a b help) run(second)"},
      {"a b; ^untoken; c b d", "run(second)"},
      {"a; ^untoken; ^tokens; a b c", "tokens() run(first)"},
      {"^on run(first) ^untoken; a b c; ^tokens; c", "run(first) tokens(a b) run(first)"},
      // Removing walks the others again.
      {"a b; ^remove 0; ^tokens; d", "tokens(a b) run(second)"},
      {"go up up down; ^remove 1; ^tokens", "tokens(go up down)"},
      {"go up up; ^remove 0; ^tokens; ^remove 3; ^tokens", "tokens(go up up) tokens(go up up)"},
      {"go; ^dummy d; up; ^remove 1; ^tokens", "tokens(go up)"},
      {"go; ^dummy d; up; ^remove 2; ^tokens", "tokens(go up)"},
      {"go help up; ^remove 1; ^tokens; end", "run(help 0) tokens(go up) run(go up end)"},
  };
  Check("a b c d go up down end help!",
        "( a b c{first} | a b d{second} | go ( up | down )* end{$0 $1 $2} )", "run tokens", rows);
  const Steps quiet[] = {
      {"b a b a; ^find A; ^find c", "find(1) find(-1)"},
      {"a; ^dummy x; ^find unknown; a; ^remove 0", "dummy(0) find(1) remove(0)"},
      {"a; ^on echo() b; ^remove 0; ^untoken; ^untoken", "remove(1) untoken(0) untoken(0)"},
      {"^on echo() ^syntax b; a; ^untoken", "syntax(1) untoken(0)"},
  };
  Check("a b", "( a | b )*", "answer", quiet);
}

TEST(Frame, OneStandsOnTheOther) {
  const Steps rows[] = {
      {"a; ^push; a; ^push; ^reset; b; ^depth; ^pop; ^pop; b c",
       "echo(a) push(1) echo(a a) push(1) echo(a a) reset(1) echo(a a b) syn(b|a a b) run(b) "
       "echo(a a) depth(3) echo(a a) pop(0) echo(a) pop(0) echo(a b) echo(a b c) "
       "syn(a b c|a b c) run(abc) echo()"},
      {"a; ^pop; ^depth", "echo(a) echo() pop(0) depth(1)"},
      {"a; ^push; ^syntax a b; ^depth; b", "echo(a) push(1) syntax(1) depth(1) echo()"},
      {"a; ^push; quiet; ^dummy d; ^untoken; ^untoken",
       "echo(a) push(1) echo(a) echo(a  d) dummy(0) echo(a) untoken(1) echo(a) untoken(0)"},
  };
  Check("a b c quiet", "( a b c{abc} | b{b} | quiet a )", "echo syn run answer", rows);
}

TEST(Frame, PrioritiesDecideWhoMayInterrupt) {
  const struct {
    const char* syntax;
    Steps row;
  } cases[] = {
      {"( a b | c d )", {"a; ^push; c", "echo(a) echo(a c)"}},
      {"( a^0,126 b | c d )", {"a; ^push; c", "echo(a) err(2082/1) echo(a) refuse(c)"}},
      {"( a^0,126 b | c )", {"a; ^push; c", "echo(a) err(2082/1) echo(a) refuse(c)"}},
      {"( a^0,126 b | c^126,0 d )", {"a; ^push; c d", "echo(a) echo(a c) echo(a c d) echo(a)"}},
      {"( a^0,126 b | c d )", {"^push; c", "echo(c)"}},
      {"( a^0,126 b | c d )", {"help; ^push; c", "echo(help) echo(help c)"}},
      {"( a^0,126 b | c d )", {"a; ^push; ^push; c", "echo(a) err(2082/1) echo(a) refuse(c)"}},
      {"( a^0,126 b | c d )",
       {"a; ^push; help c", "echo(a) echo(a help) err(2082/1) echo(a help) refuse(c)"}},
      // The command of the frame begins anew with its tokens.
      {"( a^0,126 b | c^126,0 d )",
       {"a; ^push; help; ^untoken; c d",
        "echo(a) echo(a help) echo(a) echo(a c) echo(a c d) echo(a)"}},
      {"( a^0,126 b | c^126,0 d | d )",
       {"a; ^push; help c; ^reset; d",
        "echo(a) echo(a help) echo(a help c) echo(a) err(2082/1) echo(a) refuse(d)"}},
  };
  for (const auto& c : cases) CheckRow("a b c d help!", c.syntax, "echo refuse err", c.row);
}

// Told in the order of dying.
std::string Gone;

void TellWhenGone(YcluiParser& parser, const char* name) {
  parser.sysSetGoneProcedure([](void* word) { Gone += static_cast<const char*>(word); },
                             const_cast<char*>(name));
}

YcluiParser* Mortal(const char* name) {
  auto* parser = new YcluiParser;
  TellWhenGone(*parser, name);
  return parser;
}

YcluiParser* Found(const YcluiParser* parser) {
  return YcluiParser::FindLive(reinterpret_cast<long>(parser));
}

TEST(Mortuary, BuriesOnceFromTheLast) {
  Gone.clear();
  YcluiParser early;
  TellWhenGone(early, "early ");
  YcluiParser::CleanupMortuary();
  YcluiParser::AddDeadBody(&early);
  EXPECT_EQ(early.isCondemned(), 0u) << "there is no mortuary yet";
  YcluiParser::CreateMortuary();
  YcluiParser* parsers[] = {Mortal("a "), Mortal("b "), Mortal("c "), Mortal("d ")};
  CommandLine derived("go");
  EXPECT_EQ(YcluiParser::Live(1), parsers[0]);
  for (YcluiParser* parser : parsers) YcluiParser::AddDeadBody(parser);
  YcluiParser::AddDeadBody(parsers[1]);
  YcluiParser::AddDeadBody(&derived);
  YcluiParser::AddDeadBody(nullptr);
  EXPECT_TRUE(Found(parsers[2]) == nullptr && Found(&early) == &early);
  EXPECT_TRUE(YcluiParser::Live(0) == &early && YcluiParser::Live(1) == nullptr);
  parsers[2]->YcluiParser::~YcluiParser();  // its host's doing
  ::operator delete(parsers[2]);
  YcluiParser::CleanupMortuary();
  EXPECT_EQ(Gone, "c d b a ");
  EXPECT_EQ(derived.isCondemned(), 1u) << "alive, but no script's any more";
  YcluiParser::AddDeadBody(&early);
  YcluiParser::DestroyMortuary();
  EXPECT_EQ(Gone, "c d b a ");
}

TEST(Mortuary, WaitsForARunningBody) {
  YcluiParser::CreateMortuary();
  YcluiParser::AddDeadBody(Mortal("other "));
  const auto die = [](void* word, const char*, const char*) {
    auto* self = static_cast<YcluiParser*>(word);
    self->setSynCallback(nullptr, nullptr);
    YcluiParser::AddDeadBody(self);
    self->reset();
    EXPECT_EQ(self->interpret("go"), 1);
    YcluiParser::CleanupMortuary();
    Gone += "returned ";
  };
  WriteFile("go", "go\ngo\n");
  for (const bool isPlayed : {false, true}) {
    Gone.clear();
    YcluiParser* parser = Mortal("ran ");
    Declare(*parser->lex(), "go");
    parser->setSyntaxGraph(SyntaxOf(*parser->lex(), "go"));
    parser->setSynCallback(die, parser);
    const auto play = [&] { return static_cast<int>(parser->playbackFromLog("go")); };
    EXPECT_EQ(isPlayed ? play() : parser->interpret("go"), 1);
    YcluiParser::CleanupMortuary();
    EXPECT_EQ(Gone, isPlayed ? "returned ran " : "other returned ran ");
  }
  YcluiParser::DestroyMortuary();
}

}  // namespace
