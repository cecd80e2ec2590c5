// Command templates: the script text of a syntax node, with forms that are replaced by what was
// typed. Internal to the parser.

#ifndef PARSER_YCLUICOMMANDTEMPLATE_H_
#define PARSER_YCLUICOMMANDTEMPLATE_H_

#include "foundation/YString.h"
#include "foundation/YTypes.h"
#include "lex/YcluiToken.h"

// Appends the template to `result` with its forms filled in from the tokens, which are numbered
// from 0:
//   $c        the context, as a signed decimal number
//   $p        the number by which scripts know the parser
//   $n        token number n
//   $-n       the token with the number of the last one minus n; but $-0 is $0
//   $$        the last token
//   \x        both bytes unchanged, so that \$ does not begin a form
// The three forms of tokens may be followed by a selector:
//   none      the word of the token, without arguments
//   #         its id
//   [k]       its argument k, counted from 0: a long or a double as a number, a point as "X Y", a
//             string unchanged, without quotes or escaping. [-1] is the word, [-2] the id
// A token or an argument that does not exist is replaced by the empty text. A "$" before any other
// byte is copied. The template is read byte by byte, without regard to double-byte characters.
//
// Returns false when a form makes the result longer than YcluiLongestExpansion; `result` is then
// incomplete. A template without forms may have any length. Linear in the lengths of template and
// result. `result` must not be part of the arguments.
bool YcluiFillTemplate(const char* commandTemplate, YWord context, long parserNumber,
                       const YcluiToken_Stack& tokens, YString& result);

#endif  // PARSER_YCLUICOMMANDTEMPLATE_H_
