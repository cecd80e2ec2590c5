// What may come at a place of the line, as it is listed on the screen.

#ifndef HOST_TERMINAL_CLUILISTING_H_
#define HOST_TERMINAL_CLUILISTING_H_

#include <string>
#include <vector>

class YcluiParser;

// The words in lines of text, in columns that are read downwards and fill the width of the screen.
// A word that is as wide as the screen or wider stands in a line of its own. Words and answer are
// text of the system.
std::string CluiColumns(const std::vector<std::string>& words, int screenWidth);

// The distinct words that may come behind the tokens that the parser has and begin with what is
// typed of a word, in any case of ASCII letters: those that the syntax expects, delimiters among
// them, and those that work anywhere, sorted together.
//
// Where arguments come instead, the only answer is the type of the one that is being typed, as
// "(an integer)": in a token whose arguments are half read, and when `beginning` is a word of the
// dictionary that announces arguments, with those typed behind it.
std::vector<std::string> CluiCandidates(YcluiParser& parser, const char* beginning);

#endif  // HOST_TERMINAL_CLUILISTING_H_
