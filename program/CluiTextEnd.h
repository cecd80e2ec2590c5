// How a text ends: whether more must follow.

#ifndef PROGRAM_CLUITEXTEND_H_
#define PROGRAM_CLUITEXTEND_H_

#include <string>

#include "lex/YcluiKeyword.h"

class YcluiParser;

// Where in the grammar of the lexer one text ends and the next begins.
struct CluiTextState {
  enum Phase { Words, BeforeArgument, AfterComma };
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
  CluiTextState state;  // for Comma: the state in which the next text begins
};

// The state in which the parser reads its next text.
CluiTextState CluiStateOf(const YcluiParser& parser);

// How the text ends by the rules of the lexer and the present dictionary; texts of aliases are not
// read. Changes nothing. Linear in the text, so that lines can be added one by one, which a preview
// would read again from the first.
CluiTextEnd CluiEndOf(const YcluiParser& parser, const std::string& text,
                      const CluiTextState& begin);

// A fast check: false only if no line of the text, comments aside, ends in a comma.
bool CluiMayEndInComma(const std::string& text);

// Whether the text consists of white space and comments.
bool CluiIsBlank(const std::string& text);

#endif  // PROGRAM_CLUITEXTEND_H_
