// What could come next.

#include "gtest/gtest.h"
#include "tests/parser/CommandLine.h"

namespace {

std::string Joined(const YString_Array& list) {
  std::string all;
  for (int i = 0; i < list.size(); ++i) all += (i == 0 ? "" : " ") + std::string(list.at(i).buffer);
  return all;
}

TEST(Completion, FollowsTheWalker) {
  const struct {
    const char* typed;
    const char* prefix;
    const char* list;       // "-" for an answer of 0
    const char* completed;  // with "!" when it is unique, "-" for an answer of 0
  } cases[] = {
      {"", nullptr, "abc abd abcde stop", "-"},
      {"", "a", "abc abd abcde", "ab"},
      {"", "abc", "abc abcde", "abc"},
      {"", "abcd", "abcde", "abcde!"},
      {"", "abcdef", "-", "-"},
      {"", "A", "-", "-"},
      {"abd", "", "stop", "stop!"},
      {"abc", "", "; abc stop", "-"},
      {"abc", ";", ";", ";!"},
      {"abcde", "", "abd abd", "abd"},
      {"abcde abd", "", " stop", "-"},
      {"abcde abd", "s", "stop", "stop!"},
      {"stop", "", "", "-"},
  };
  for (const auto& c : cases) {
    CommandLine line("abc abd abcde stop he ghost");
    line.lex()->addKeyword(';', 0);
    line.setSyntax(
        "( abc ( abc | stop )* ; | abd stop | abcde ( abd stop | abd ghost ) | stop ghost abc )");
    line.addIndefinite("he");
    line.lex()->delKeyword("ghost");
    line.interpret(c.typed);
    YString_Array list;
    const int count = line.completionList(c.prefix, list);
    EXPECT_EQ(count == 0 ? "-" : Joined(list), c.list)
        << c.typed << "+" << (c.prefix ? c.prefix : "");
    YString completed("kept");
    unsigned long unique = 7;
    std::string answer = "-";
    if (line.completionString(c.prefix, completed, unique) != 0) {
      answer = completed.buffer + std::string(unique != 0 ? "!" : "");
    }
    EXPECT_EQ(answer, c.completed) << c.typed << "+" << (c.prefix ? c.prefix : "");
  }
}

TEST(Completion, TellsDistinctWords) {
  CommandLine line("a b help ghost", "( a b | a ghost | b | a a )");
  line.addIndefinite("help");
  line.addIndefinite("b");
  line.lex()->delKeyword("ghost");
  YString_Array words;
  words[3] = YString("old");
  line.possibleWords(words);
  EXPECT_EQ(Joined(words), "a b help");
  line.interpret("a");
  line.possibleWords(words);
  EXPECT_EQ(Joined(words), "a b help");
  std::string ended;
  line.at["syn(a a|a a)"] = [&] {
    line.possibleWords(words);
    ended = Joined(words);
  };
  line.interpret("a");
  EXPECT_EQ(ended, "help b") << "the line is over but for indefinite words";
}

}  // namespace
