// The styles of a line that is being typed.

#ifndef TERMINAL_YCLUIPAINTER_H_
#define TERMINAL_YCLUIPAINTER_H_

#include <cstddef>
#include <string>

#include "parser/YcluiPreview.h"
#include "terminal/YcluiColours.h"
#include "terminal/YcluiStyledText.h"

// The text with a style for each piece of the preview, which has read it. A refused piece that ends
// at `unfinished` is shown as plain text: it may become a word. npos for none.
YQRT_API YcluiStyledText YcluiPaint(const YcluiPreview& preview, const std::string& text,
                                    std::size_t unfinished, const YcluiColours& colours);

#endif  // TERMINAL_YCLUIPAINTER_H_
