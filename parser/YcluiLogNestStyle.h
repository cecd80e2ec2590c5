// How a playback is logged.

#ifndef PARSER_YCLUILOGNESTSTYLE_H_
#define PARSER_YCLUILOGNESTSTYLE_H_

#include <cstdint>

// How the tokens of a playback are written to the log of the same parser.
enum YcluiLogNestStyle : std::uint32_t {
  YcluiLogNestSilent = 0,   // not at all
  YcluiLogNestPlain = 1,    // like typed tokens
  YcluiLogNestComment = 2,  // with a comment mark at the beginning of the file and after each
                            // forced end of line; ends of commands add no mark
};

#endif  // PARSER_YCLUILOGNESTSTYLE_H_
