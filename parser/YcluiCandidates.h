// The words that could come next. Internal to the parser.

#ifndef PARSER_YCLUICANDIDATES_H_
#define PARSER_YCLUICANDIDATES_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "foundation/YMemory.h"
#include "lex/YcluiLex.h"
#include "syntax/YcluiNfa.h"

// Lists the words of the dictionary that the walker could accept next. The longest lists take long
// to make and are asked for again with each letter that is typed, so the last one that was long is
// cached, and sorted when it is asked for a second time. It is used where the walker's state, the
// syntax and the dictionary are as they were.
class YcluiCandidates {
 public:
  // Names of the lexer's words; null for a node without a word.
  using Words = std::vector<const char*, YAllocator<const char*>>;

  // Fills `found` with the words that begin with the prefix, one for each node, in the order of
  // possibleNodes; with null for a node without a word when the prefix is empty. False when the
  // walker is terminated or has no graph.
  bool find(const YcluiNfa& walker, const YcluiLex& lexer, std::string_view prefix, Words& found);
  // The same, followed by those of the successors of `root`, and none without a word. Where a
  // command that began with `interrupted` waits, words whose command it does not admit are left
  // out. Of several nodes of one id, a step leads to the last.
  void findAll(const YcluiNfa& walker, const YcluiSyntaxNode& root,
               const YcluiSyntaxNode* interrupted, const YcluiLex& lexer, std::string_view prefix,
               Words& found);
  // Discards the cached list.
  void forget() { key_ = {}; }

 private:
  struct Key {
    const YcluiSyntaxNode* place = nullptr;  // null: nothing is cached
    std::uint64_t generation = 0;
    std::uint64_t wordChanges = 0;
    bool operator==(const Key&) const = default;
  };
  struct Sorted {
    const char* word;
    std::size_t index;  // in words_
    bool operator<(const Sorted& other) const;
  };

  Key key_;
  Words words_;                                     // the cached list
  std::vector<Sorted, YAllocator<Sorted>> sorted_;  // the same by name; empty until asked for
  std::vector<std::size_t, YAllocator<std::size_t>> indexes_;  // of the words found in it

  void findCached(std::string_view prefix, Words& found);
  void sort();
};

#endif  // PARSER_YCLUICANDIDATES_H_
