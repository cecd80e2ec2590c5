// How a text ends: whether a word may end there, and which argument is being typed.

#ifndef PROGRAM_CLUITEXTEND_H_
#define PROGRAM_CLUITEXTEND_H_

#include <string>

#include "lex/YcluiKeyword.h"

class YcluiParser;

// Between two texts: among words, or among the arguments of one of them.
struct CluiTextState {
  enum Phase { Words, BeforeArgument, BehindComma, BehindArgument };
  Phase phase = Words;
  const YcluiKeyword* keyword = nullptr;  // null for an unknown word that ended in ":"
  int read = 0;                           // how many arguments are complete
  bool halfPoint = false;                 // the first number of a point and its comma are read
};

struct CluiTextEnd {
  enum Kind {
    Whole,      // nothing is open, or the lexer goes on with the next text, or has refused this one
    Quote,      // inside a quoted string
    Escape,     // after a backslash, which takes the next byte
    HalfPoint,  // after the first number of a point
    Comma,      // after a comma, where the lexer would miss an argument
  };
  Kind kind = Whole;
  char quote = '\0';      // the quote that is open
  bool isEscape = false;  // Quote: a backslash takes the next byte
  // Of the argument that is being typed or comes next; YcluiValueNone where a word comes, and for
  // the arguments of an unknown word.
  YcluiValueType type = YcluiValueNone;
  CluiTextState state;  // Comma: how to go on with the next text
};

// The state in which the parser reads its next text. With `mayBeginWithComma`, a comma at the start
// of that text separates; the lexer takes it for one only where the text before has not ended.
CluiTextState CluiStateOf(const YcluiParser& parser, bool mayBeginWithComma);

// Follows the rules by which the lexer reads tokens, with the dictionary as it is now; the text of
// an alias is not looked at. Changes nothing. Costs the length of the text.
CluiTextEnd CluiEndOf(const YcluiParser& parser, const std::string& text,
                      const CluiTextState& begin);

// The offset of a comma at the start of a text that begins in that state and separates its first
// argument from the one before; npos when there is none.
std::size_t CluiLeadingComma(const std::string& text, const CluiTextState& begin);

// Whether a line of the text may end in a comma, comments aside. A quick look, which is true more
// often than it should be.
bool CluiMayEndInComma(const std::string& text);

// Whether there is nothing but white space and comments.
bool CluiIsBlank(const std::string& text);

#endif  // PROGRAM_CLUITEXTEND_H_
