// Lines that fit a screen.

#ifndef PROGRAM_TEXT_CLUIWRAP_H_
#define PROGRAM_TEXT_CLUIWRAP_H_

#include <string>

// The text with each line that is wider than the screen broken: at a blank, which goes, or beside a
// wide character, as Japanese is written without blanks; but not in front of what closes or ends
// something, nor behind what opens it. What cannot be broken is left for the screen to break.
std::wstring CluiWrapped(const std::wstring& text, std::size_t screenWidth);

#endif  // PROGRAM_TEXT_CLUIWRAP_H_
