// Mistakes in a line, in words.

#ifndef TERMINAL_YCLUIMISTAKE_H_
#define TERMINAL_YCLUIMISTAKE_H_

#include <string>

#include "parser/YcluiHelp.h"
#include "parser/YcluiPreview.h"
#include "terminal/YcluiOffers.h"

// The index of the first piece that would be refused for certain; -1 without one. What rests on a
// command that may change the parser is not certain.
YQRT_API int YcluiFirstMistake(const YcluiPreview& preview);

// What is wrong with that piece of the text, which the preview has read, and what could come there.
// Uses `offers`.
YQRT_API std::string YcluiMistakeText(YcluiPreview& preview, YcluiOffers& offers,
                                      const std::string& text, int index);

// The range of the argument, such as "1 to 100", when the piece of the text is a number outside it;
// else empty. The parser accepts such a number.
YQRT_API std::string YcluiRangeFault(const YcluiHelp& help, const YcluiPiece& piece,
                                     const std::string& text);

#endif  // TERMINAL_YCLUIMISTAKE_H_
