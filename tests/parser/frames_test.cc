// Frames: their tokens and texts, one over the other, and the mortuary.

#include <sstream>

#include "gtest/gtest.h"
#include "tests/parser/CommandLine.h"

namespace {

TEST(Frame, TokensCanBeTakenBack) {
  // Two ways begin with "a b"; "help" is indefinite.
  CommandLine line("a b c d help", "( a b c{first} | a b d{second} )");
  line.addIndefinite("help");
  line.trace("run");
  line.interpret("a b help");
  line.pushDummyToken("dummy");
  EXPECT_EQ(line.tokens(), "a b help dummy");
  EXPECT_STREQ(line.popToken()->string(), "help");
  EXPECT_STREQ(line.popToken()->string(), "b");
  EXPECT_EQ(line.feed("d"), "run(second)") << "both ways are open still";
  EXPECT_EQ(line.popToken(), nullptr);

  line.interpret("a b");
  line.popToken();
  EXPECT_EQ(line.feed("c b d"), "run(second)")
      << "of the ways only that of the answered node is back";
}

TEST(Frame, TakingBackTheLastTokenOfACommandOpensItAgain) {
  CommandLine line("a b", "a b{done}");
  line.trace("run");
  line.at["run(done)"] = [&] { line.popToken(); };
  line.interpret("a b");
  EXPECT_EQ(line.tokens(), "a");
  EXPECT_EQ(line.feed("b"), "run(done)");
}

TEST(Frame, TokensCanBeRemoved) {
  const struct {
    const char* tokens;  // "d" is a dummy
    YWord index;
    YWord removed;
    const char* left;
  } cases[] = {
      {"a b c", 0, 0, "a b c"}, {"a b b", 1, 1, "a b"}, {"a b b c", 4, 0, "a b b c"},
      {"a d b", 1, 1, "a b"},   {"a d b", 2, 0, "a b"}, {"a help b", 1, 1, "a b"},
      {"a b c", 2, 1, "a b"},
  };
  for (const auto& c : cases) {
    CommandLine line("a b c help end", "a ( b | c )* end");
    line.addIndefinite("help");
    std::istringstream words(c.tokens);
    for (std::string word; words >> word;) {
      if (word == "d") {
        line.pushDummyToken("d");
      } else {
        line.interpret(word.c_str());
      }
    }
    ASSERT_EQ(line.tokens(), c.tokens);
    line.trace("tok run echo");
    line.told();
    EXPECT_EQ(line.removeToken(c.index), c.removed) << c.tokens;
    EXPECT_EQ(line.tokens(), c.left) << c.tokens;
    EXPECT_EQ(line.told(), "echo(" + std::string(c.left) + ")");
  }
}

TEST(Frame, TokensCanBeFound) {
  CommandLine line("a b", "( a | b )*");
  line.interpret("b a b a");
  EXPECT_EQ(line.findToken("A"), 1);
  EXPECT_EQ(line.findToken("unknown"), -1);
  line.pushDummyToken("x");
  EXPECT_EQ(line.findToken("unknown"), 4) << "words without meaning are all alike";
  EXPECT_STREQ(line.tokenAt(3)->string(), "a");
  EXPECT_EQ(line.tokenAt(5), nullptr);
}

TEST(Frame, OneStandsOnTheOther) {
  CommandLine line("a b c", "( a b c{abc} | b{b} )");
  line.trace("echo syn run");
  EXPECT_EQ(line.feed("a"), "echo(a)");
  line.pushFrame();
  EXPECT_EQ(line.told(), "");
  EXPECT_EQ(line.feed("a"), "echo(a a)");
  line.pushFrame();
  line.reset();
  EXPECT_EQ(line.feed("b"), "echo(a a b) syn(b|a a b) run(b) echo(a a)");
  EXPECT_EQ(line.nestingDepth(), 3);
  line.popFrame();
  EXPECT_EQ(line.told(), "echo(a a)");
  line.popFrame();
  EXPECT_EQ(line.told(), "echo(a)");
  EXPECT_EQ(line.feed("b c"), "echo(a b) echo(a b c) syn(a b c|a b c) run(abc) echo()");
  line.interpret("a");
  EXPECT_EQ(line.popFrame(), 0u);
  EXPECT_EQ(line.nestingDepth(), 1);
  EXPECT_EQ(line.tokens(), "");
}

TEST(Frame, EmptyEchoTextsKeepThePrefixClean) {
  CommandLine line("a b", "a b");
  line.interpret("a");
  line.pushFrame();
  line.setTokCallback(
      [](void*, YcluiToken& token) {
        token.setEchoString(nullptr);
        return YcluiTokenPass;
      },
      nullptr);
  line.trace("echo");
  EXPECT_EQ(line.feed("a"), "echo(a)");
  line.pushDummyToken("d");
  EXPECT_EQ(line.told(), "echo(a  d)");
  EXPECT_EQ(line.tokens(), "a d");
  line.popToken();
  line.popToken();
  EXPECT_EQ(line.told(), "echo(a) echo(a)");
}

TEST(Frame, PrioritiesDecideWhoMayInterrupt) {
  const struct {
    const char* syntax;
    const char* below;  // one frame for each text, "" for an empty one
    const char* inner;
    const char* told;
  } cases[] = {
      {"( a b | c d )", "a", "c", "echo(a c)"},
      {"( a^0,126 b | c d )", "a", "c", "echo(a) refuse(c)"},
      {"( a^0,126 b | c^126,0 d )", "a", "c", "echo(a c)"},
      {"( a^0,126 b | c^126,0 d )", "a", "c d", "echo(a c) echo(a c d) echo(a)"},
      {"( a^0,126 b | c{now} )", "a", "c", "echo(a) refuse(c)"},
      {"( a^0,126 b | c d )", "", "c", "echo(c)"},
      {"( a^0,126 b | c d )", "a,", "c", "echo(a) refuse(c)"},
      {"( a^0,126 b | c d )", "a", "help c", "echo(a help) echo(a help) refuse(c)"},
      {"( a^0,126 b | c d )", "help", "c", "echo(help c)"},
      {"( a^0,126 b | c d )", "a", "x", "refuse(x) echo(a)"},
  };
  for (const auto& c : cases) {
    CommandLine line("a b c d help", c.syntax);
    line.addIndefinite("help");
    std::string below(c.below);
    line.interpret(below.substr(0, below.find(',')).c_str());
    line.pushFrame();
    if (below.find(',') != std::string::npos) line.pushFrame();
    line.trace("echo refuse run syn");
    if (std::string(c.inner) == "c d") line.trace("echo refuse");
    NewErrors();
    EXPECT_EQ(line.feed(c.inner), c.told) << c.syntax;
    const bool refused = std::string(c.told).find("refuse(c)") != std::string::npos;
    EXPECT_EQ(NewErrors(), refused ? "2082/1" : "") << c.syntax;
    EXPECT_EQ(line.tokens().find('!'), std::string::npos);
  }
}

TEST(Frame, BeginsAnewWhenItsTokensHaveGone) {
  for (const bool byReset : {false, true}) {
    CommandLine line("a b c d help", "( a^0,126 b | c^126,0 d )");
    line.addIndefinite("help");
    line.interpret("a");
    line.pushFrame();
    line.interpret("help");
    byReset ? line.reset() : static_cast<void>(line.popToken());
    line.trace("echo refuse");
    EXPECT_EQ(line.feed("c d"), "echo(a c) echo(a c d) echo(a)");
  }
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

long AddressOf(const YcluiParser* parser) {
  return reinterpret_cast<long>(parser);
}

TEST(Mortuary, BuriesOnceFromTheLast) {
  Gone.clear();
  YcluiParser::AddDeadBody(nullptr);
  YcluiParser::CleanupMortuary();
  YcluiParser early;
  TellWhenGone(early, "early ");
  YcluiParser::AddDeadBody(&early);
  EXPECT_EQ(early.isCondemned(), 0u) << "there is no mortuary yet";
  YcluiParser::CreateMortuary();
  YcluiParser* parsers[] = {Mortal("a "), Mortal("b "), Mortal("c "), Mortal("d ")};
  CommandLine derived("go");
  EXPECT_EQ(YcluiParser::Live(1), parsers[0]);
  for (YcluiParser* parser : parsers) YcluiParser::AddDeadBody(parser);
  YcluiParser::AddDeadBody(parsers[1]);
  YcluiParser::AddDeadBody(&derived);
  EXPECT_EQ(YcluiParser::FindLive(AddressOf(parsers[2])), nullptr);
  EXPECT_EQ(YcluiParser::FindLive(AddressOf(&early)), &early);
  EXPECT_EQ(YcluiParser::FindLive(12345), nullptr);
  EXPECT_EQ(YcluiParser::Live(0), &early);
  EXPECT_EQ(YcluiParser::Live(1), nullptr);
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
  Gone.clear();
  YcluiParser* parser = Mortal("ran ");
  parser->lex()->addKeyword("go", nullptr, 5000);
  auto* syntax = new YcluiSyntaxGraph;
  syntax->insertAnd(new YcluiSyntaxNode(5000));
  parser->setSyntaxGraph(syntax);
  YcluiParser* other = Mortal("other ");
  YcluiParser::AddDeadBody(other);
  parser->setSynCallback(
      [](void* word, const char*, const char*) {
        auto* self = static_cast<YcluiParser*>(word);
        self->setSynCallback(nullptr, nullptr);
        YcluiParser::AddDeadBody(self);
        self->reset();
        EXPECT_EQ(self->interpret("go"), 1);
        YcluiParser::CleanupMortuary();
        Gone += "returned ";
      },
      parser);
  EXPECT_EQ(parser->interpret("go"), 1);
  EXPECT_EQ(Gone, "other returned ");
  YcluiParser::CleanupMortuary();
  EXPECT_EQ(Gone, "other returned ran ");
  YcluiParser::DestroyMortuary();
}

}  // namespace
