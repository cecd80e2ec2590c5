// The words that can come next. Internal to the parser.

#ifndef PARSER_YCLUICANDIDATES_H_
#define PARSER_YCLUICANDIDATES_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "foundation/YMemory.h"
#include "lex/YcluiLex.h"
#include "syntax/YcluiNfa.h"

// Lists the words of the dictionary that the walker can accept next. A long list is slow to make,
// and a host requests it again after each letter that is typed. So the last long list is cached,
// and sorted at the second request. It is used as long as the walker's state, the syntax and the
// dictionary have not changed.
class YcluiCandidates {
 public:
  // Names of the lexer's words; null for a node without a word.
  using Words = std::vector<const char*, YAllocator<const char*>>;
  using Nodes = YWord (YcluiNfa::*)(YcluiSyntaxNodeP_Array& nodes) const;

  // `nodes` is the operation of the walker that lists them: possibleNodes or acceptingNodes.
  explicit YcluiCandidates(Nodes nodes) : nodes_(nodes) {}

  // Replaces `found` by the words that begin with the prefix, one for each node, in the walker's
  // order. A node without a word is null for an empty prefix and left out for another one. Returns
  // false when the walker is terminated or has no graph.
  bool find(const YcluiNfa& walker, const YcluiLex& lexer, std::string_view prefix, Words& found);
  // The same without nulls, for acceptingNodes. `interrupted` is the first node of the command that
  // the current one would interrupt, or null; words of commands that it does not admit are left
  // out.
  void findAdmitted(const YcluiNfa& walker, const YcluiSyntaxNode* interrupted,
                    const YcluiLex& lexer, std::string_view prefix, Words& found);
  // Adds the words of the successors of `root`.
  static void AddSuccessors(const YcluiSyntaxNode& root, const YcluiLex& lexer,
                            std::string_view prefix, Words& found);

 private:
  struct Key {
    const YcluiSyntaxNode* place = nullptr;  // null: nothing is cached
    std::uint64_t generation = 0;            // differs for any two graphs
    std::uint64_t wordChanges = 0;
    bool operator==(const Key&) const = default;
  };
  struct Sorted {
    const char* word;
    std::size_t index;  // in words_
    bool operator<(const Sorted& other) const;
  };

  Nodes nodes_;
  Key key_;
  Words words_;                                     // the cached list
  std::vector<Sorted, YAllocator<Sorted>> sorted_;  // the same by name; empty until it is needed
  std::vector<std::size_t, YAllocator<std::size_t>> indexes_;  // indexes in words_ of those found

  void findCached(std::string_view prefix, Words& found);
  void sort();
};

#endif  // PARSER_YCLUICANDIDATES_H_
