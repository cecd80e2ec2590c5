// The words that can come next.

#include <algorithm>
#include <functional>
#include <random>

#include "gtest/gtest.h"
#include "syntax/YcluiNfa.h"
#include "tests/parser/CommandLine.h"
#include "tests/support/words.h"

namespace {

using Words = std::vector<std::string>;

Words WordsOf(const YString_Array& list) {
  Words words;
  for (int i = 0; i < list.size(); ++i) words.emplace_back(list.at(i).buffer);
  return words;
}

// The longest common beginning.
std::string CommonOf(const Words& words) {
  std::string common = words.empty() ? "" : words.front();
  for (const std::string& word : words) {
    const auto end = std::mismatch(common.begin(), common.end(), word.begin(), word.end()).first;
    common.erase(end, common.end());
  }
  return common;
}

// Compared with the walker and the dictionary, at states with long and with short lists in turn,
// and after each kind of change.
TEST(Completion, TheCachedListIsUpToDate) {
  YcluiParser parser;
  YcluiLex& words = *parser.lex();
  auto* syntax = new YcluiSyntaxGraph;
  YcluiNfa walker;
  const auto add = [&](unsigned id) {
    words.addKeyword((std::string("ab") + char('a' + id * 7 % 26) + std::to_string(id)).c_str(),
                     nullptr, id);
    syntax->insertOr(new YcluiSyntaxNode(id));
  };
  // A command is the word 1 and one of fifty, of which ten have two nodes; or a word of 61 to 66
  // and one of about forty. So the first list is short and the others are long.
  for (unsigned id = 1; id <= 60; ++id) add(id % 50 + 1);
  syntax->insertAnd(new YcluiSyntaxNode(1));
  for (unsigned first = 61; first <= 66; ++first) {
    words.addKeyword(("go" + std::to_string(first)).c_str(), nullptr, first);
    auto* graph = new YcluiSyntaxGraph;
    for (unsigned id = first - 60; id <= first - 20; ++id) graph->insertOr(new YcluiSyntaxNode(id));
    graph->insertAnd(new YcluiSyntaxNode(first));
    syntax->insertOr(graph);
    delete graph;
  }
  parser.setSyntaxGraph(syntax);
  walker.syntaxGraph(syntax);
  std::vector<unsigned> anywhere;
  // A deleted word is empty. The list of possibleWords has no empty words, each word once, and the
  // indefinite words at its end.
  const auto expected = [&](const std::string& prefix, bool isPossibleWords) {
    YcluiSyntaxNodeP_Array nodes;
    walker.possibleNodes(nodes);
    std::vector<unsigned> ids;
    ids.reserve(static_cast<std::size_t>(nodes.size()));
    for (int i = 0; i < nodes.size(); ++i) ids.push_back(nodes.at(i)->tokenId);
    if (isPossibleWords) ids.insert(ids.end(), anywhere.begin(), anywhere.end());
    Words list;
    for (const unsigned id : ids) {
      const char* name = words.keyword(id);
      const std::string word = name == nullptr ? "" : name;
      const bool isThere = std::find(list.begin(), list.end(), word) != list.end();
      if (isPossibleWords && (isThere || word.empty())) continue;
      if (word.starts_with(prefix)) list.push_back(word);
    }
    return list;
  };
  // Goes to the state after that word, 0 for the beginning.
  const auto enter = [&](unsigned first) {
    parser.reset();
    walker.reset();
    if (first == 0) return;
    parser.interpret(first == 1 ? "abh1" : ("go" + std::to_string(first)).c_str());
    walker.stepNext(first);
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
    enter(0);
    change();
    for (const unsigned first : {1, 61, 1, 0, 61, 62, 63, 64, 1, 0, 65, 66, 61, 65, 66, 1, 1}) {
      enter(first);
      for (const char* prefix : {"ab", "abd", "abd1", "abz", "abd", "b", "", "go", "AB", "ab"}) {
        SCOPED_TRACE(std::to_string(first) + prefix);
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

// In an interrupting frame exactly the words are offered that it accepts, before its command has
// begun and after that.
TEST(Completion, OffersTheWordsThatMayInterrupt) {
  std::mt19937 random(3);
  for (int trial = 0; trial < 200; ++trial) {
    YcluiParser parser;
    Declare(*parser.lex(), "a b c d e f", 1);
    std::string syntax = "( f f";
    for (int i = 0; i < 6; ++i) {
      syntax += std::string(" | ") + "abcde"[random() % 5] + "^" + std::to_string(random() % 4) +
                "," + std::to_string(random() % 4) + " f";
    }
    parser.setSyntaxGraph(SyntaxOf(*parser.lex(), syntax + " )").release());
    if (trial % 3 == 0) parser.addIndefiniteNode(new YcluiSyntaxNode(5));
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
      ASSERT_EQ(offered, accepted) << trial << begun;
    }
  }
}

TEST(Completion, ACompleteCommandHasNoCandidates) {
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
