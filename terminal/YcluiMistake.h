// Mistakes in a line, in words.

#ifndef TERMINAL_YCLUIMISTAKE_H_
#define TERMINAL_YCLUIMISTAKE_H_

#include <string>

#include "parser/YcluiPreview.h"
#include "terminal/YcluiOffers.h"

// The index of the first piece that would be refused for certain; -1 without one. What rests on a
// command that may change the parser is not certain.
YQRT_API int YcluiFirstMistake(const YcluiPreview& preview);

// What is wrong with that piece of the text, which the preview has read, and what could come there.
// Uses `offers`.
YQRT_API std::string YcluiMistakeText(YcluiPreview& preview, YcluiOffers& offers,
                                      const std::string& text, int index);

#endif  // TERMINAL_YCLUIMISTAKE_H_
