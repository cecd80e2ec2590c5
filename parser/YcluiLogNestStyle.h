// How a playback is logged.

#ifndef PARSER_YCLUILOGNESTSTYLE_H_
#define PARSER_YCLUILOGNESTSTYLE_H_

#include <cstdint>

// How the tokens of a playback are written to the log of the same parser.
enum YcluiLogNestStyle : std::uint32_t {
  YcluiLogNestSilent = 0,   // none of them reaches the log
  YcluiLogNestPlain = 1,    // they are logged like typed tokens
  YcluiLogNestComment = 2,  // they are logged after a comment mark
};

#endif  // PARSER_YCLUILOGNESTSTYLE_H_
