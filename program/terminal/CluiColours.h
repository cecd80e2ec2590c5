// The colours of the terminal.

#ifndef PROGRAM_TERMINAL_CLUICOLOURS_H_
#define PROGRAM_TERMINAL_CLUICOLOURS_H_

#include <string>

#include "terminal/YcluiColours.h"

// Sets those of the language, which are valid, then those that the user has in CLUI_COLOURS.
// Returns a message about a mistake in these, else an empty text.
std::string CluiReadColours(const std::string& ofLanguage, YcluiColours& colours);

#endif  // PROGRAM_TERMINAL_CLUICOLOURS_H_
