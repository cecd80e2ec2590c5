// Where an argument of a word stands in the text of a line.

#ifndef PROGRAM_CLUILITERAL_H_
#define PROGRAM_CLUILITERAL_H_

#include <string>

class YcluiKeyword;

// The bytes of the character at `offset`, where one starts: 1 or 2.
std::size_t CluiStepAt(const std::string& text, std::size_t offset);

// The offset behind white space and comments, and behind a number; the same offset where there is
// none. A number ends where its digits do, whatever follows it.
std::size_t CluiSkipWhiteSpace(const std::string& text, std::size_t offset);
std::size_t CluiSkipNumber(const std::string& text, std::size_t offset);

// Whether there is nothing but white space and comments.
bool CluiIsBlank(const std::string& text);

// Whether words follow, behind white space, on what stands at `offset`.
bool CluiHasRest(const std::string& text, std::size_t offset);

// Where an argument begins.
struct CluiArgumentPlace {
  std::size_t offset = 0;
  bool separated = true;  // false when no comma stands between it and the argument in front of it
};

// The place of argument `index`, from 1, of the word that ends in front of `offset`. `keyword`
// tells the types of the arguments and is null for a word without a declaration. The end of the
// text when the argument is not in it. The text up to `cut` was read for itself: a comma behind
// that does not go with an argument in front of it.
CluiArgumentPlace CluiFindArgument(const std::string& text, std::size_t offset, std::size_t cut,
                                   int index, const YcluiKeyword* keyword);

#endif  // PROGRAM_CLUILITERAL_H_
