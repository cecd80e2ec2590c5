// What could come next.

#include <algorithm>
#include <functional>
#include <random>

#include "gtest/gtest.h"
#include "syntax/YcluiNfa.h"
#include "tests/parser/CommandLine.h"

namespace {

using Words = std::vector<std::string>;

Words WordsOf(const YString_Array& list) {
  Words words;
  for (int i = 0; i < list.size(); ++i) words.emplace_back(list.at(i).buffer);
  return words;
}

// The longest beginning that all have.
std::string CommonOf(const Words& words) {
  std::string common = words.empty() ? "" : words.front();
  for (const std::string& word : words) {
    const auto end = std::mismatch(common.begin(), common.end(), word.begin(), word.end()).first;
    common.erase(end, common.end());
  }
  return common;
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
  std::vector<unsigned> anywhere;
  // A word that has been deleted is empty. In the list of all there are no such ones, each word
  // is listed once, and those that may come anywhere follow the others.
  const auto expected = [&](const std::string& prefix, bool isOfAll) {
    YcluiSyntaxNodeP_Array nodes;
    walker.possibleNodes(nodes);
    std::vector<unsigned> ids;
    ids.reserve(static_cast<std::size_t>(nodes.size()));
    for (int i = 0; i < nodes.size(); ++i) ids.push_back(nodes.at(i)->tokenId);
    if (isOfAll) ids.insert(ids.end(), anywhere.begin(), anywhere.end());
    Words list;
    for (const unsigned id : ids) {
      const char* name = words.keyword(id);
      const std::string word = name == nullptr ? "" : name;
      const bool isThere = std::find(list.begin(), list.end(), word) != list.end();
      if (isOfAll && (isThere || word.empty())) continue;
      if (word.starts_with(prefix)) list.push_back(word);
    }
    return list;
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
      [&] { parser.addIndefiniteNode(new YcluiSyntaxNode(anywhere.emplace_back(19))); },
      [&] { parser.addIndefiniteNode(new YcluiSyntaxNode(anywhere.emplace_back(44))); },
      [&] { syntax->insertOr(new YcluiSyntaxNode(19)); },
  };
  for (const auto& change : changes) {
    goTo(0);
    change();
    for (const unsigned place : {1, 61, 1, 0, 61, 62, 63, 64, 1, 0, 65, 66, 61, 65, 66, 1, 1}) {
      goTo(place);
      for (const char* prefix : {"ab", "abd", "abd1", "abz", "abd", "b", "", "go", "AB", "ab"}) {
        SCOPED_TRACE(std::to_string(place) + prefix);
        YString_Array list;
        YString completed;
        unsigned long unique = 7;
        parser.completionList(prefix, list);
        const Words wanted = expected(prefix, false);
        ASSERT_EQ(WordsOf(list), wanted) << &change - changes;
        const YWord isCompleted = parser.completionString(prefix, completed, unique);
        ASSERT_EQ(completed.buffer, CommonOf(wanted));
        ASSERT_EQ(isCompleted, completed.length > 0 ? 1U : 0U);
        ASSERT_EQ(unique, wanted.size() == 1 ? isCompleted : 0U);
        parser.possibleWords(list, prefix);
        ASSERT_EQ(WordsOf(list), expected(prefix == std::string("AB") ? "ab" : prefix, true));
      }
    }
  }
}

// What is offered where another command waits is what is then accepted there, whichever of several
// alternatives a word leads to, and as long as the command has not begun.
TEST(Completion, OffersWhatMayInterrupt) {
  std::mt19937 random(3);
  for (int round = 0; round < 200; ++round) {
    YcluiParser parser;
    auto* syntax = new YcluiSyntaxGraph;
    for (unsigned id = 1; id <= 6; ++id) {
      parser.lex()->addKeyword(std::string(1, "?abcdef"[id]).c_str(), nullptr, id);
    }
    for (int i = 0; i < 6; ++i) {
      auto* command = new YcluiSyntaxGraph;
      command->insertAnd(new YcluiSyntaxNode(6));
      auto* node = new YcluiSyntaxNode(random() % 5 + 1);
      node->priority = static_cast<std::uint8_t>(random() % 4);
      node->interruptLimit = static_cast<std::uint8_t>(random() % 4);
      command->insertAnd(node);
      syntax->insertOr(command);
      delete command;
    }
    parser.setSyntaxGraph(syntax);
    if (round % 3 == 0) parser.addIndefiniteNode(new YcluiSyntaxNode(5));
    parser.interpret("a b c");
    parser.pushFrame();
    for (const char* begun : {"", "a", "b", "c"}) {
      parser.reset();
      parser.interpret(begun);
      const YWord count = parser.numberOfToken();
      YString_Array list;
      parser.possibleWords(list);
      Words accepted;
      for (const char* word : {"a", "b", "c", "d", "e", "f"}) {
        if (parser.interpret(word) == 1) accepted.emplace_back(word);
        parser.reset();
        if (count == 1) parser.interpret(begun);
      }
      Words offered = WordsOf(list);
      std::sort(offered.begin(), offered.end());
      ASSERT_EQ(offered, accepted) << round << begun;
    }
  }
}

TEST(Completion, EndsWithTheLine) {
  CommandLine line("a he!", "a");
  line.at["syn(a|a)"] = [&] {
    YString_Array list;
    EXPECT_EQ(line.completionList("", list), 0);
    line.possibleWords(list);
    EXPECT_EQ(WordsOf(list), Words{"he"});
  };
  line.interpret("a");
}

}  // namespace
