// Lines that fit a screen.

#ifndef PROGRAM_TEXT_CLUIWRAP_H_
#define PROGRAM_TEXT_CLUIWRAP_H_

#include <string>

// Breaks each line that is wider than the screen: at a blank, which is dropped, or beside a wide
// character, as Japanese is written without blanks, but not before a closing character nor after an
// opening one. A line without such a point is left to the screen.
std::wstring CluiWrapped(const std::wstring& text, std::size_t screenWidth);

#endif  // PROGRAM_TEXT_CLUIWRAP_H_
