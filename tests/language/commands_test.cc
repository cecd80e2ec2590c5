// Commands and their parameters, fragments, re-entry and exceptions.

#include <memory>
#include <stdexcept>
#include <vector>

#include "gtest/gtest.h"
#include "parser/YcluiParser.h"
#include "tests/language/Trace.h"

namespace {

using yqrtClui::anyOf;
using yqrtClui::delimiter;
using yqrtClui::integer;
using yqrtClui::Language;
using yqrtClui::Line;
using yqrtClui::number;
using yqrtClui::point;
using yqrtClui::Point;
using yqrtClui::Result;
using yqrtClui::Syntax;
using yqrtClui::text;
using yqrtClui::Token;
using yqrtClui::word;

std::string Shown(const Line& line) {
  std::string shown;
  for (const Token token : line) {
    shown += (shown.empty() ? "" : " ") + std::string(token.name());
    for (int i = 1; i <= token.count(); ++i) shown += '/' + std::to_string(token.integer(i));
  }
  return shown;
}

Trace* plainTrace = nullptr;
void Plainly(const int a, std::string b) {
  (*plainTrace)("plain ", a, b);
}

TEST(Commands, ParametersAreTheArgumentsInTheirOrder) {
  Trace trace;
  plainTrace = &trace;
  Language language;
  const auto from = word("from:", integer("A"), text("B"));
  const auto to = word("to:", number("C"), point("D"));
  language.command(from >> to,
                   [&](int a, std::string_view b, double c, Point d) { trace(a, b, c, ' ', d); });
  language.command(word("plain") >> from, Plainly);
  language.command(word("wide:", integer("A"), integer("B")),
                   [&, owned = std::make_unique<int>(7)](double a, const long& b) mutable {
                     trace(a / 2, b, ' ', ++*owned);
                   });
  language.command(word("generic:", integer("A"), text("B")),
                   [&](auto a, auto b) { trace(a + 1, b.size()); });
  language.command(word("line") >> from, [&](const Line& line) { trace(Shown(line)); });
  const struct {
    const char* typed;
    const char* expected;
  } rows[] = {
      {"from: 1,\"a b\" to: 2.5,3,4", "1a b2.5 3,4;"},
      {"from:-1,x TO:1,-3,4 from:2,\"\" to:0,0,0", "-1x1 -3,4;20 0,0;"},
      {"plain from:5,b", "plain 5b;"},
      {"wide:3,4 wide:2147483647,0", "1.54 8;1.07374e+090 9;"},
      {"generic:1,'(exit)'", "26;"},
      {"line from:7,\"$0 \\\"\"", "line from:/7/0;"},
      {"from:1,b\nto:\n2,3,4\n", "1b2 3,4;"},
  };
  ASSERT_EQ("", language.error());
  for (const auto& row : rows) {
    EXPECT_TRUE(language.feed(row.typed).isGood()) << row.typed;
    EXPECT_EQ(row.expected, trace.taken()) << row.typed;
  }
}

TEST(Commands, FragmentsAreValues) {
  Trace trace;
  const auto at = word("at:", integer("X"));
  const auto colour = word("red") | word("blue");
  const Syntax twice = at >> colour >> at;
  const auto write = [&](const Line& line) { trace(Shown(line)); };
  Language language;
  language.command(word("one") >> twice, write);
  language.command(word("two") >> twice >> twice, write);
  language.command(word("poly") >> anyOf(at >> maybe(colour)) >> word("close"), write);
  language.command(word("pick") >> (at | word("none") >> colour), write);
  const auto bracket = delimiter('(') >> at >> *(delimiter('+') >> at) >> delimiter(')');
  language.command(bracket, write);
  Language other;
  other.command(twice, write);
  const struct {
    Language& of;
    const char* typed;
    const char* expected;
  } rows[] = {
      {language, "one at:1 red at:2", "one at:/1 red at:/2;"},
      {language, "two at:1 red at:2 at:3 blue at:4", "two at:/1 red at:/2 at:/3 blue at:/4;"},
      {language, "poly close poly at:1 at:2 red at:3 close",
       "poly close;poly at:/1 at:/2 red at:/3 close;"},
      {language, "pick none blue pick at:6", "pick none blue;pick at:/6;"},
      {language, "(at:1+at: 2 +\nat:3)pick at:6", "( at:/1 + at:/2 + at:/3 );pick at:/6;"},
      {other, "at:1 red at:2 at:3 red at:4", "at:/1 red at:/2;at:/3 red at:/4;"},
  };
  ASSERT_EQ("", language.error() + other.error());
  for (const auto& row : rows) {
    EXPECT_TRUE(row.of.feed(row.typed).isGood()) << row.typed;
    EXPECT_EQ(row.expected, trace.taken()) << row.typed;
  }
}

TEST(Commands, MistakesInDeclarationsAreReported) {
  const auto nothing = [] {};
  const auto two = [](int, std::string_view) {};
  const auto at = word("at:", integer("X"));
  const Syntax dynamic = word("in:", {integer("A").declaration(), number("B").declaration()});
  const struct {
    const char* expected;
    Syntax syntax;
    bool hasTwo;
  } rows[] = {
      {"cannot be typed as one word", word("two words"), false},
      {"cannot be typed as one word", word(""), false},
      {"cannot be typed as one word", word("a:b"), false},
      {"\"go\" does not begin with its abbreviation \"o\"", word("go", "o"), false},
      {"\"END\" is declared twice", word("END", "e"), false},
      {"\"s\" is also a form of the word \"stop\"", word("s"), false},
      {"cannot be a delimiter", delimiter(','), false},
      {"cannot be a delimiter", delimiter('x'), false},
      {"\"a+b\" contains the delimiter \"+\"", delimiter('+') >> word("a+b"), false},
      {"\"a+b\" contains the delimiter \"+\"", word("a+b") >> delimiter('+'), false},
      {"range that is empty for argument 2", word("r:", text("A"), integer("B").range(2, 1)),
       false},
      {"ends in a repetition", word("x") >> *at, false},
      {"ends in an optional part", word("x") >> maybe(word("y")), false},
      {"has 0 parameters, but its words have 2 arguments", dynamic, false},
      {"a text as parameter 2, but the argument is a number", dynamic, true},
      {"arguments that vary", word("x") >> (at | word("y")), true},
      {"arguments that vary", *at >> word("y"), true},
      {"\"halt\" never runs, since \"end\" completes another", word("halt") >> word("end"), false},
      {"\"end\" completes", word("halt") >> (word("x") | word("end")), false},
      {"\"end\" completes", word("halt") >> word("end") >> word("more"), false},
  };
  for (const auto& row : rows) {
    Language language;
    language.command(word("stop", "s") >> at >> word("end"), [](int) {});
    language.command(word("halt") >> word("end"), nothing);
    if (row.hasTwo) language.command(row.syntax, two);
    if (!row.hasTwo) language.command(row.syntax, nothing);
    EXPECT_NE(std::string::npos, language.error().find(row.expected))
        << row.expected << ": " << language.error();
    const Result result = language.feed("stop at:1 end");
    EXPECT_EQ(0U, result.commands);
    ASSERT_EQ(1U, result.refusals.size());
    EXPECT_EQ(language.error(), result.refusals[0].text());
  }
}

TEST(Commands, AnywhereWordsLeaveTheCommandAsItWas) {
  Trace trace;
  Language language;
  const auto from = word("from:", integer("A"));
  const auto to = word("to:", integer("B"));
  language.command(from >> to, [&](int a, int b) { trace(a, b); });
  language.anywhere(word("zoom:", integer("N")), [&](int n) { trace("zoom ", n); });
  language.anywhere(word("deep"), [&] {
    language.parser().pushFrame();
    trace(language.feed("from:8 zoom:5 to:9").commands);
    language.parser().popFrame();
  });
  Result result = language.feed("zoom:1 from:1 zoom:2 zoom:3 to:2 zoom:4");
  EXPECT_EQ("zoom 1;zoom 2;zoom 3;12;zoom 4;", trace.taken());
  EXPECT_EQ(5U, result.commands);
  EXPECT_FALSE(result.isUnfinished);
  result = language.feed("from:3 deep to:4");
  EXPECT_EQ("zoom 5;89;2;34;", trace.taken());
}

TEST(Commands, PrioritiesDecideWhatInterrupts) {
  Trace trace;
  Language language;
  language.command((word("low") >> word("end")).priority(100, 150), [&] { trace("low"); });
  language.command(word("high").priority(200), [&] { trace("high"); });
  language.command(word("same").priority(150), [&] { trace("same"); });
  language.anywhere(word("inside"), [&] { language.parser().pushFrame(); });
  const Result result = language.feed("high low inside high same end");
  EXPECT_EQ("high;same;", trace.taken());
  ASSERT_EQ(2U, result.refusals.size());
  EXPECT_EQ("1:17: \"high\" cannot interrupt the command; expected low, same or inside",
            result.refusals[0].text());
}

TEST(Reentry, ACommandFeedsItsLanguage) {
  Trace trace;
  Language language;
  language.command(word("say:", text("A")), [&](std::string_view a) { trace(a); });
  language.command(word("run:", text("A"), text("B")), [&](std::string_view a, std::string b) {
    const Result result = language.feed(a);
    trace(result.commands, result.refused, a, ' ', b);
    for (const auto& refusal : result.refusals) trace(refusal.text());
  });
  language.command(word("loop"), [&] { trace(language.feed("loop").refused); });
  EXPECT_EQ(2U, language.feed("run:\"say:x say:y\",B say:z").commands);
  EXPECT_EQ("x;y;20say:x say:y B;z;", trace.taken());
  // Two levels; what is left half typed inside is dropped, and the outer text goes on.
  language.feed("run:\"run:'say:x no say:y','C' say:\",B say:z");
  EXPECT_EQ(
      "x;y;21say:x no say:y C;1:7: unknown word \"no\"; expected say:, run: or loop;"
      "11run:'say:x no say:y','C' say: B;"
      "1:30: the text ends inside the command \"say:\";z;",
      trace.taken());
  // Endless: refused at a depth that the stack can hold.
  EXPECT_TRUE(language.feed("loop say:on").isGood());
  const std::string loops = trace.taken();
  EXPECT_EQ("1;", loops.substr(0, 2));
  EXPECT_EQ("0;on;", loops.substr(loops.size() - 5));
}

TEST(Reentry, ACommandFeedsAnyCommandWhateverThePriorities) {
  Trace trace;
  Language language;
  language.command(word("high").priority(200), [&] { trace("high"); });
  language.command((word("low") >> word("end")).priority(100, 50),
                   [&] { trace("low ", language.feed("high low end2").refused); });
  language.anywhere(word("inside"), [&] { trace(language.feed("high").refused); });
  language.feed("low inside end");
  EXPECT_EQ("high;0;high;low 2;", trace.taken());
}

TEST(Reentry, ACommandChangesItsLanguage) {
  Trace trace;
  auto language = std::make_unique<Language>();
  const auto add = word("add:", text("NAME"));
  language->command(add, [&](const std::string& name) {
    language->command(word(name), [&, name] { trace(name); });
  });
  language->command(word("remove"), [&] {
    const bool first = language->remove(add);
    trace(first, language->remove(add));
  });
  language->command(word("move"),
                    [&] { language = std::make_unique<Language>(std::move(*language)); });
  language->command(word("leave"), [&] { language->leave(); });
  language->command(word("destroy:", text("A")), [&](std::string_view a) {
    language.reset();
    trace("still ", a);
  });
  EXPECT_EQ(2U, language->feed("add:one one").commands);
  EXPECT_EQ(2U, language->feed("one ONE").commands);
  EXPECT_EQ("one;one;one;", trace.taken());
  EXPECT_EQ("1:1: unknown word \"add:\"; expected remove, move, leave, destroy: or one",
            (language->feed("remove"), language->feed("add:x").refusals.at(0).text()));
  EXPECT_EQ("10;", trace.taken());
  language->command(add, [](const std::string&) {});
  EXPECT_EQ("", language->error());
  EXPECT_EQ(3U, language->feed("add:x move one").commands);
  EXPECT_EQ("one;", trace.taken());
  EXPECT_EQ(2U, language->feed("one leave one\none").commands);
  EXPECT_TRUE(language->isLeft());
  EXPECT_EQ("one;", trace.taken());
  EXPECT_EQ(1U, language->feed("destroy:x one\none").commands);
  EXPECT_EQ(nullptr, language);
  EXPECT_EQ("still x;", trace.taken());
}

// A terminal whose user types these lines.
struct TypedPrompt {
  enum class Outcome { Line, Interrupted, Ended };
  std::vector<std::string> lines;
  std::string shown;
  std::size_t next = 0;
  bool isOpen = false;

  bool open() { return isOpen = true; }
  void close() { isOpen = false; }
  void print(const std::string& text) { shown += text + ";"; }
  Outcome readLine(std::string& line) {
    if (next == lines.size()) return Outcome::Ended;
    line = lines[next++];
    return line == "^C" ? Outcome::Interrupted : Outcome::Line;
  }
};

TEST(Reentry, ACommandDestroysTheLanguageThatIsRun) {
  auto language = std::make_unique<Language>();
  language->command(word("half") >> word("end"), [] {});
  language->command(word("destroy"), [&] { language.reset(); });
  TypedPrompt prompt{{"no", "half", "^C", "end", "destroy half", "half"}, {}};
  EXPECT_TRUE(language->run(prompt));
  EXPECT_EQ(nullptr, language);
  EXPECT_EQ(5U, prompt.next);
  EXPECT_FALSE(prompt.isOpen);
  EXPECT_EQ(
      "unknown word \"no\"; expected half or destroy;\"end\" is not allowed here; expected half or "
      "destroy;",
      prompt.shown);
}

TEST(Exceptions, ComeOutOfTheCallThatRanTheCommand) {
  Trace trace;
  Language language;
  language.command(word("say:", text("A")), [&](std::string_view a) { trace(a); });
  language.command(word("throw:", text("A")),
                   [](const std::string& a) { throw std::runtime_error(a); });
  language.command(word("half") >> word("done"), [&] { trace("done"); });
  language.command(word("catch:", text("A")), [&](std::string_view a) {
    try {
      language.feed(a);
    } catch (const std::runtime_error& error) {
      trace("caught ", error.what());
    }
  });
  language.command(word("pass:", text("A")), [&](std::string_view a) { language.feed(a); });
  language.anywhere(word("boom"), [] { throw 7; });
  language.parser().setAlias("hidden", "say:h throw:alias say:no");
  const struct {
    const char* typed;
    const char* thrown;
    const char* expected;
  } rows[] = {
      {"say:a throw:b say:c\nsay:d", "b", "a;"},
      {"say:a hidden say:c", "alias", "a;h;"},
      {"catch:\"say:a throw:b say:c\" say:d", "", "a;caught b;d;"},
      {"pass:\"say:a pass:'throw:b' say:c\" say:d", "b", "a;"},
      {"say:e half", "", "e;"},
      {"boom", "7", ""},
      {"done say:f", "", "done;f;"},
  };
  for (const auto& row : rows) {
    std::string thrown;
    try {
      language.feed(row.typed);
    } catch (const std::runtime_error& error) {
      thrown = error.what();
    } catch (int number) {
      thrown = std::to_string(number);
    }
    EXPECT_EQ(row.thrown, thrown) << row.typed;
    EXPECT_EQ(row.expected, trace.taken()) << row.typed;
    EXPECT_EQ(1, language.parser().nestingDepth()) << row.typed;
  }
  // No feed reads the text: there is no call to throw it, the next one included.
  language.onRefusal([&](const yqrtClui::Refusal& refusal) { trace(refusal.text()); });
  language.parser().interpret("throw:x say:y\n");
  EXPECT_EQ("the command has thrown an exception;y;", trace.taken());
  EXPECT_NO_THROW(language.feed("say:z"));
  EXPECT_EQ("z;", trace.taken());
  language.onRefusal(
      [](const yqrtClui::Refusal& refusal) { throw std::logic_error(refusal.found); });
  EXPECT_THROW(language.feed("nonsense say:g"), std::logic_error);
  EXPECT_EQ("", trace.taken());
}

}  // namespace
