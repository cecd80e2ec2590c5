// How a playback is logged.

#ifndef PARSER_YCLUILOGNESTSTYLE_H_
#define PARSER_YCLUILOGNESTSTYLE_H_

#include <cstdint>

// What becomes of the tokens of a playback while the same parser is logging.
enum YcluiLogNestStyle : std::uint32_t {
  YcluiLogNestSilent = 0,   // none of them reaches the log
  YcluiLogNestPlain = 1,    // they are logged like typed tokens
  YcluiLogNestComment = 2,  // they are logged behind a comment mark
};

#endif  // PARSER_YCLUILOGNESTSTYLE_H_
