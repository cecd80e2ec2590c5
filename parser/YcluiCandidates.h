// The words that could come at the places of a syntax.

#ifndef PARSER_YCLUICANDIDATES_H_
#define PARSER_YCLUICANDIDATES_H_

#include <array>
#include <cstdint>
#include <string_view>

#include "lex/YcluiLex.h"
#include "parser/YcluiCandidateList.h"
#include "syntax/YcluiNfa.h"

// Keeps the words of the places that were asked for last, from the second time on in the order of
// the alphabet as well. What is kept serves again where walker, syntax and dictionary are as they
// were. Wide and narrow places are kept apart: the many narrow ones that a line passes do not
// displace a wide one, which is dear to list.
class YcluiCandidates {
 public:
  using Words = YcluiCandidateList::Words;

  // The words of the walker's place, one for each node and in its order, that begin with the
  // prefix; null for a node without a word when the prefix is empty. The words are the lexer's.
  // 0 when the walker has nothing to list, else 1.
  YWord find(const YcluiNfa& walker, const YcluiLex& lexer, std::string_view prefix, Words& found);
  // The same with those of the successors of `root` behind them, and none without a word. Where a
  // command that began with `interrupted` waits, those whose command it does not admit are left
  // out, and nothing is kept. Of several nodes of one id, a step leads to the last.
  void findAll(const YcluiNfa& walker, const YcluiSyntaxNode& root,
               const YcluiSyntaxNode* interrupted, const YcluiLex& lexer, std::string_view prefix,
               Words& found);
  void forget();

 private:
  struct Place {
    const YcluiSyntaxNode* node = nullptr;
    YWord terminated = 0;
    std::uint64_t syntaxChanges = 0;
    std::uint64_t wordChanges = 0;
    bool operator==(const Place&) const = default;
  };
  struct Kept {
    Place place;
    std::uint64_t asked = 0;  // when it was last
    YcluiCandidateList list;
  };
  static constexpr std::size_t Narrow = 32;  // words at most
  using Pool = std::array<Kept, 4>;

  Pool wide_;
  Pool narrow_;
  std::uint64_t questions_ = 0;
  YcluiCandidateList passing_;  // of what is no single place

  YcluiCandidateList* keptFor(const Place& place);
  YcluiCandidateList* keptIn(Pool& pool, const Place& place);
  YcluiCandidateList& listFor(const Place& place, std::size_t count);
  YcluiCandidateList* listOfWalker(const YcluiNfa& walker, const YcluiLex& lexer);
  YcluiCandidateList* listOfAdmitted(const YcluiNfa& walker, const YcluiSyntaxNode& interrupted,
                                     const YcluiLex& lexer);
  YcluiCandidateList& listOfRoot(const YcluiSyntaxNode& root, const YcluiLex& lexer);
};

#endif  // PARSER_YCLUICANDIDATES_H_
