// Lists on the screen what can come next.

#ifndef PROGRAM_TERMINAL_CLUILISTING_H_
#define PROGRAM_TERMINAL_CLUILISTING_H_

#include <string>
#include <vector>

#include "program/CluiTextEnd.h"
#include "program/text/CluiEncoding.h"

class YcluiParser;

// The first words in alphabetical order, as text of the system, and the number of all.
struct CluiCandidates {
  std::vector<std::string> words;
  std::size_t count = 0;
};

// The distinct words that can come next and begin with `beginning`, ignoring ASCII case: those that
// the syntax expects, one-character words included, and indefinite words. Only the first `atMost`
// are sorted and returned.
//
// If `beginning`, read in the given state, ends in an argument, the only candidate is its type,
// such as "(an integer)".
CluiCandidates CluiCandidatesOf(const YcluiParser& parser, const char* beginning,
                                const CluiTextState& state, std::size_t atMost);

// The words in at most `rows` rows, sorted down the columns, which fill the width of the screen. A
// word that is at least as wide as the screen has a line of its own. When not all words fit, the
// last row has the number of those omitted.
std::wstring CluiColumns(const CluiCandidates& candidates, CluiEncoding& encoding, int screenWidth,
                         int rows);

// The candidates in columns; empty when no word can come.
std::wstring CluiListing(const YcluiParser& parser, const char* beginning,
                         const CluiTextState& state, CluiEncoding& encoding, int screenWidth,
                         int rows);

#endif  // PROGRAM_TERMINAL_CLUILISTING_H_
