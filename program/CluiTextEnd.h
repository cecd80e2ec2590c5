// How a text ends: whether a word may end there, and which argument is being typed.

#ifndef PROGRAM_CLUITEXTEND_H_
#define PROGRAM_CLUITEXTEND_H_

#include <string>

#include "lex/YcluiKeyword.h"

class YcluiParser;

// Where in the grammar of the lexer one text ends and the next begins.
struct CluiTextState {
  enum Phase { Words, BeforeArgument, AfterComma, AfterArgument };
  Phase phase = Words;
  const YcluiKeyword* keyword = nullptr;  // null for an unknown word that ended in ":"
  int read = 0;                           // number of complete arguments
  bool halfPoint = false;                 // the first number of a point and its comma are read
};

struct CluiTextEnd {
  enum Kind {
    Whole,      // complete, refused, or to be continued by any next text
    Quote,      // inside a quoted string
    Escape,     // after a backslash, which escapes the next byte
    HalfPoint,  // after the first number of a point
    Comma,      // after a comma, where the lexer expects an argument
  };
  Kind kind = Whole;
  char quote = '\0';      // the quote that is open
  bool isEscape = false;  // for Quote: the text ends in a backslash
  // The type of the argument at the end of the text, or of the next one; YcluiValueNone where a
  // word is expected, and for an unknown word.
  YcluiValueType type = YcluiValueNone;
  CluiTextState state;  // for Comma: the state in which the next text begins
};

// The state in which the parser reads its next text. With `mayBeginWithComma`, a comma at the start
// of that text separates arguments. The lexer itself accepts no comma there.
CluiTextState CluiStateOf(const YcluiParser& parser, bool mayBeginWithComma);

// How the text ends by the rules of the lexer and the present dictionary; texts of aliases are not
// read. Changes nothing. Linear in the text.
CluiTextEnd CluiEndOf(const YcluiParser& parser, const std::string& text,
                      const CluiTextState& begin);

// The offset of a comma at the start of the text that separates its first argument from the one
// before; npos when there is none.
std::size_t CluiLeadingComma(const std::string& text, const CluiTextState& begin);

// A fast check: false only if no line of the text, comments aside, ends in a comma.
bool CluiMayEndInComma(const std::string& text);

// Whether the text consists of white space and comments.
bool CluiIsBlank(const std::string& text);

#endif  // PROGRAM_CLUITEXTEND_H_
