// The words that could come at a place of the syntax.

#ifndef PARSER_YCLUICANDIDATES_H_
#define PARSER_YCLUICANDIDATES_H_

#include <cstdint>
#include <string_view>
#include <vector>

#include "foundation/YMemory.h"
#include "lex/YcluiLex.h"
#include "syntax/YcluiNfa.h"

// Keeps the words of the place that was asked for last, and from the second time on in the order of
// the alphabet beside their own, so that a prefix costs the words that begin with it.
class YcluiCandidates {
 public:
  using Words = std::vector<const char*, YAllocator<const char*>>;

  // Makes the words those of the walker's place and of the successors of `root`, which are behind
  // them. What is kept serves again where walker, syntax, dictionary and root are as they were.
  void read(const YcluiNfa& walker, const YcluiSyntaxNode& root, const YcluiLex& lexer);
  void forget() { kept_ = Place(); }

  // Whether the walker had anything to list.
  bool areListed() const { return areListed_; }
  // Those of the walker's place, one for each node and in its order, that begin with the prefix;
  // null for a node without a word when the prefix is empty. The words are the lexer's.
  void find(std::string_view prefix, Words& found);
  // The same with those of the root, and none without a word.
  void findAll(std::string_view prefix, Words& found);

 private:
  struct Place {
    const YcluiSyntaxNode* node = nullptr;
    YWord terminated = 0;
    std::uint64_t syntaxChanges = 0;
    std::uint64_t wordChanges = 0;
    const YRing* lastOfRoot = nullptr;
    bool operator==(const Place&) const = default;
  };
  struct Sorted {
    const char* word;
    std::size_t index;
    bool operator<(const Sorted& other) const;
  };

  Place kept_;
  bool areListed_ = false;
  Words words_;
  std::size_t listed_ = 0;  // how many of them are of the walker's place
  bool isAskedAgain_ = false;
  std::vector<Sorted, YAllocator<Sorted>> sorted_;  // empty until then
  using Mark = std::uint64_t;
  static constexpr std::size_t MarksInOne = 64;
  std::vector<Mark, YAllocator<Mark>> marks_;  // of the words found

  void sort();
  void takeMarked(Words& found);
  void findAmong(std::size_t count, std::string_view prefix, Words& found);
};

#endif  // PARSER_YCLUICANDIDATES_H_
