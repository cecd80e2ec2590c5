// What could come next.

#include <functional>

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
    const char* words;      // possibleWords, whatever the prefix
  } cases[] = {
      {"", nullptr, "abc abd abcde stop", "-", "abc abd abcde stop he"},
      {"", "a", "abc abd abcde", "ab", "abc abd abcde stop he"},
      {"", "abc", "abc abcde", "abc", "abc abd abcde stop he"},
      {"", "abcd", "abcde", "abcde!", "abc abd abcde stop he"},
      {"", "abcdef", "-", "-", "abc abd abcde stop he"},
      {"", "A", "-", "-", "abc abd abcde stop he"},
      {"abd", "", "stop", "stop!", "stop he"},
      {"abc", "", "; abc stop", "-", "; abc stop he"},
      {"abc", ";", ";", ";!", "; abc stop he"},
      {"abcde", "", "abd abd", "abd", "abd he"},
      {"abcde abd", "", " stop", "-", "stop he"},
      {"abcde abd", "s", "stop", "stop!", "stop he"},
      {"stop", "", "", "-", "he"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.typed) + "+" + (c.prefix == nullptr ? "" : c.prefix));
    CommandLine line(
        "abc abd abcde stop ghost ; he!",
        "( abc ( abc | stop )* ; | abd stop | abcde ( abd stop | abd ghost ) | stop ghost abc )");
    line.perform("^unword ghost; " + std::string(c.typed));
    YString_Array list;
    const int count = line.completionList(c.prefix, list);
    EXPECT_EQ(count == 0 ? "-" : Joined(list), c.list);
    YString completed("kept");
    unsigned long unique = 7;
    std::string answer = "-";
    if (line.completionString(c.prefix, completed, unique) != 0) {
      answer = completed.buffer + std::string(unique != 0 ? "!" : "");
    }
    EXPECT_EQ(answer, c.completed);
    line.possibleWords(list);
    EXPECT_EQ(Joined(list), c.words);
  }
}

// Held against what the walker and the dictionary say, however often and in between what was asked,
// at more wide places in turn than are kept and at narrow ones.
TEST(Completion, IsUpToDateAtEveryQuestion) {
  YcluiParser parser;
  YcluiLex& words = *parser.lex();
  auto* syntax = new YcluiSyntaxGraph;
  YcluiNfa walker;
  const auto add = [&](unsigned id) {
    words.addKeyword((std::string("ab") + char('a' + id * 7 % 26) + std::to_string(id)).c_str(),
                     nullptr, id);
    syntax->insertOr(new YcluiSyntaxNode(id));
  };
  for (unsigned id = 1; id <= 60; ++id) add(id % 50 + 1);  // some twice
  syntax->insertAnd(new YcluiSyntaxNode(1));
  for (unsigned way = 61; way <= 66; ++way) {
    words.addKeyword(("go" + std::to_string(way)).c_str(), nullptr, way);
    auto* graph = new YcluiSyntaxGraph;
    for (unsigned id = way - 60; id <= way - 20; ++id) graph->insertOr(new YcluiSyntaxNode(id));
    graph->insertAnd(new YcluiSyntaxNode(way));
    syntax->insertOr(graph);
    delete graph;
  }
  parser.setSyntaxGraph(syntax);
  walker.syntaxGraph(syntax);
  const auto expected = [&](const std::string& prefix) {
    YString_Array list;
    YcluiSyntaxNodeP_Array nodes;
    walker.possibleNodes(nodes);
    for (int i = 0; i < nodes.size(); ++i) {
      const char* word = words.keyword(nodes.at(i)->tokenId);
      if (std::string(word == nullptr ? "" : word).compare(0, prefix.size(), prefix) == 0) {
        list.end() = YString(word);
      }
    }
    return Joined(list);
  };
  const auto goTo = [&](unsigned place) {
    parser.reset(), walker.reset();
    if (place == 0) return;
    parser.interpret(place == 1 ? "abh1" : ("go" + std::to_string(place)).c_str());
    walker.stepNext(place);
  };
  const std::function<void()> changes[] = {
      [] {},
      [&] { words.delKeyword("abd19"); },
      [&] { words.addKeyword("abd-again", nullptr, 19); },
      [&] { parser.addIndefiniteNode(new YcluiSyntaxNode(19)); },
      [&] { parser.addIndefiniteNode(new YcluiSyntaxNode(44)); },
      [&] { syntax->insertOr(new YcluiSyntaxNode(19)); },
  };
  for (const auto& change : changes) {
    goTo(0);
    change();
    for (const unsigned place : {1, 61, 1, 0, 61, 62, 63, 64, 1, 0, 65, 66, 61, 65, 66, 1, 1}) {
      goTo(place);
      for (const char* prefix : {"ab", "abd", "abd1", "abz", "abd", "b", "", "go", "ab"}) {
        YString_Array list;
        parser.completionList(prefix, list);
        ASSERT_EQ(Joined(list), expected(prefix)) << &change - changes << place << prefix;
      }
    }
  }
  YString_Array all;
  parser.possibleWords(all, "ABD");
  EXPECT_EQ(Joined(all), "abd45 abd-again");
}

TEST(Completion, EndsWithTheLine) {
  CommandLine line("a he!", "a");
  line.at["syn(a|a)"] = [&] {
    YString_Array list;
    EXPECT_EQ(line.completionList("", list), 0);
    line.possibleWords(list);
    EXPECT_EQ(Joined(list), "he");
  };
  line.interpret("a");
}

}  // namespace
