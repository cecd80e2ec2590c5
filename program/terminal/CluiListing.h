// What may come at a place of the line, as it is listed on the screen.

#ifndef PROGRAM_TERMINAL_CLUILISTING_H_
#define PROGRAM_TERMINAL_CLUILISTING_H_

#include <string>
#include <vector>

#include "program/CluiTextEnd.h"
#include "program/text/CluiEncoding.h"

class YcluiParser;

// The first of the words that may come, in order and as text of the system, and how many there are
// in all.
struct CluiCandidates {
  std::vector<std::string> words;
  std::size_t count = 0;
};

// The distinct words that may come behind the tokens that the parser has and begin with what is
// typed of a word, in any case of ASCII letters: those that the syntax expects, delimiters among
// them, and those that work anywhere, sorted together. Only the first `atMost` are made and sorted.
//
// Where an argument comes instead, the only answer is its type, as "(an integer)": of the one at
// the end of `beginning`, which is read in that state.
CluiCandidates CluiCandidatesOf(const YcluiParser& parser, const char* beginning,
                                const CluiTextState& state, std::size_t atMost);

// The words in so many rows of text at most, in columns that are read downwards and fill the width
// of the screen. A word that is as wide as the screen or wider stands in a line of its own. When
// not all of them fit, the last row tells how many are left out.
std::wstring CluiColumns(const CluiCandidates& candidates, CluiEncoding& encoding, int screenWidth,
                         int rows);

// The one in the form of the other; empty when no word can come.
std::wstring CluiListing(const YcluiParser& parser, const char* beginning,
                         const CluiTextState& state, CluiEncoding& encoding, int screenWidth,
                         int rows);

#endif  // PROGRAM_TERMINAL_CLUILISTING_H_
