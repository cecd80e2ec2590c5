// The texts of all messages about codes and refusals.

#ifndef PROGRAM_TEXT_CLUIMESSAGES_H_
#define PROGRAM_TEXT_CLUIMESSAGES_H_

#include <string>
#include <vector>

#include "program/text/CluiEncoding.h"

// What a code of the error manager means, worded to follow a colon.
std::wstring CluiCodeText(unsigned int code);

// "an integer" and the like for a type of argument.
std::wstring CluiTypeText(unsigned int valueType);

// In double quotes, or in single ones when it contains a double quote. Long texts are cut, and
// control characters replaced by "?".
std::wstring CluiQuoted(const std::wstring& text);

// A word that is in no dictionary; `nearest` may be empty.
std::wstring CluiUnknownText(const std::wstring& word, const std::wstring& nearest);

// The words that could come next.
struct CluiPossible {
  std::vector<std::wstring> here;      // what the syntax expects
  std::vector<std::wstring> anywhere;  // what is allowed at any point
};

// A word of the language that cannot come next; `line` is the unfinished command, or empty. Lists
// up to a dozen words that can come, alphabetically: first those that the syntax expects, then at
// least four that are allowed anywhere, each with the number of those omitted.
std::wstring CluiMisplacedText(const std::wstring& word, const std::wstring& line,
                               CluiPossible possible);

// The list of such a message: "; expected: to:; anywhere: help".
std::wstring CluiExpectedText(CluiPossible possible);

// So many more words are refused in the line. `follows`: the message about the first one comes
// directly before, so that the text need not say what is counted.
std::wstring CluiMoreText(std::size_t more, bool follows);

// A word that may not interrupt the unfinished command `line`.
std::wstring CluiWaitingText(const std::wstring& word, const std::wstring& line);

// Argument `index` of a word, and what is wrong with it. `wordLine` is the line of the word when
// the argument is in a later one, else 0.
std::wstring CluiArgumentText(const std::wstring& word, std::size_t wordLine, int index,
                              const std::wstring& fault);

// Why a line cannot be converted.
std::wstring CluiFaultText(const CluiFault& fault, const std::string& encoding);

// For a file whose name cannot be converted; in ASCII.
std::string CluiNoNameText();

#endif  // PROGRAM_TEXT_CLUIMESSAGES_H_
