// A line editor on a screen.

#ifndef TERMINAL_YCLUISHOW_H_
#define TERMINAL_YCLUISHOW_H_

#include "foundation/YTypes.h"
#include "terminal/YcluiLineEditor.h"
#include "terminal/YcluiScreen.h"

// Makes the screen show the editor's line with its message and its list. On a terminal that cannot
// show rows below the line, these are printed above it and dropped.
YQRT_API void YcluiShow(YcluiLineEditor& editor, YcluiScreen& screen);

#endif  // TERMINAL_YCLUISHOW_H_
