// The colours that a user has set for the terminal.

#ifndef PROGRAM_TERMINAL_CLUICOLOURS_H_
#define PROGRAM_TERMINAL_CLUICOLOURS_H_

#include <string>

#include "terminal/YcluiColours.h"

// Reads CLUI_COLOURS. Returns a message about a mistake in it, else an empty text.
std::string CluiReadColours(YcluiColours& colours);

#endif  // PROGRAM_TERMINAL_CLUICOLOURS_H_
