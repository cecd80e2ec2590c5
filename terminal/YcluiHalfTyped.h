// The half-typed command of a parser.

#ifndef TERMINAL_YCLUIHALFTYPED_H_
#define TERMINAL_YCLUIHALFTYPED_H_

#include "foundation/YTypes.h"
#include "parser/YcluiParser.h"

// Whether the parser is inside a command: its frame has words, a word misses arguments, or the
// frame interrupts another one, as that of a question does.
YQRT_API bool YcluiIsHalfTyped(const YcluiParser& parser);

// Drops the half-typed command of a parser: the words in its frame, or where there are none the
// frame that interrupts another one. The command of the frame below is dropped, too, when it is
// complete, since it would accept no further word. Echoes the line that is left.
YQRT_API void YcluiGiveUp(YcluiParser& parser);

#endif  // TERMINAL_YCLUIHALFTYPED_H_
