// What the program says, in words: the one place for the texts of codes and refusals.

#ifndef PROGRAM_TEXT_CLUIMESSAGES_H_
#define PROGRAM_TEXT_CLUIMESSAGES_H_

#include <string>
#include <vector>

#include "program/text/CluiEncoding.h"

// What a code of the error manager means, worded to stand behind a colon.
std::wstring CluiCodeText(unsigned int code);

// "an integer" and the like for a type of argument.
std::wstring CluiTypeText(unsigned int valueType);

// In double quotes, or in single ones when it holds a double quote; cut when it is too long to be
// read, and with "?" for control characters.
std::wstring CluiQuoted(const std::wstring& text);

// A word that is in no dictionary; `nearest` may be empty.
std::wstring CluiUnknownText(const std::wstring& word, const std::wstring& nearest);

// The words that could come at a place.
struct CluiPossible {
  std::vector<std::wstring> here;      // what the syntax expects
  std::vector<std::wstring> anywhere;  // what works at any place
};

// A word of the language at a place where it cannot come: in the middle of a command, unless `line`
// is empty. Of the words that could, a dozen are named in alphabetical order, those that the syntax
// expects first, with at least four that work anywhere, and with how many are left out.
std::wstring CluiMisplacedText(const std::wstring& word, const std::wstring& line,
                               CluiPossible possible);

// A word that may not interrupt the command of which `line` is there.
std::wstring CluiWaitingText(const std::wstring& word, const std::wstring& line);

// Argument `index` of a word, and what is wrong with it. `wordLine` is the line of the word when
// the argument stands in a later one, else 0.
std::wstring CluiArgumentText(const std::wstring& word, std::size_t wordLine, int index,
                              unsigned int valueType, const std::wstring& fault);

// What cannot be fed.
std::wstring CluiFaultText(const CluiFault& fault, const std::string& encoding);

// Of a file that the parser cannot be given a name for; in ASCII.
std::string CluiNoNameText();

#endif  // PROGRAM_TEXT_CLUIMESSAGES_H_
