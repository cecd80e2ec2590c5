// Command templates: the script text of a syntax node, with forms that stand for what was typed.

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
//   $-n       the token n places before the last; $-0 is $0
//   $$        the last token
//   \x        stays as it is, both bytes, so that \$ keeps a form from being one
// Behind the last three of the forms a selector may stand:
//   none      the word of the token, without arguments
//   #         its id
//   [k]       its argument k, counted from 0: a long or a double as a number, a point as "X Y", a
//             string as it is, without quotes and without escaping. [-1] is the word, [-2] the id
// What does not exist is filled in as the empty text, and a "$" before anything else stays plain.
// Bytes are looked at one by one; double-byte characters are not known here.
//
// Returns 1, or 0 when a form would make the result longer than YcluiLongestExpansion; then it is
// of no use. A template without forms may be of any length. Linear in the template and in what is
// filled in. `result` must not be part of the arguments.
YWord YcluiFillTemplate(const char* commandTemplate, YWord context, long parserNumber,
                        const YcluiToken_Stack& tokens, YString& result);

#endif  // PARSER_YCLUICOMMANDTEMPLATE_H_
