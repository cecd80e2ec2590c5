// Where an argument of a word stands in the text of a line.

#ifndef HOST_CLUILITERAL_H_
#define HOST_CLUILITERAL_H_

#include <string>

class YcluiKeyword;

// The bytes of the character at `offset`, where one starts: 1 or 2.
std::size_t CluiStepAt(const std::string& text, std::size_t offset);

// The offset of argument `index`, from 1, of the word that ends in front of `offset`. `keyword`
// tells the types of the arguments and is null for a word without a declaration. The end of the
// text when the argument is not in it.
std::size_t CluiArgumentOffset(const std::string& text, std::size_t offset, int index,
                               const YcluiKeyword* keyword);

#endif  // HOST_CLUILITERAL_H_
