// Wraps lines to the width of a screen.

#ifndef PROGRAM_TEXT_CLUIWRAP_H_
#define PROGRAM_TEXT_CLUIWRAP_H_

#include <string>

// Breaks each line that is wider than the screen: at a blank, which is dropped, or next to a wide
// character, since Japanese is written without blanks, but not before a closing character nor after
// an opening one. A line that has no such position stays whole.
std::wstring CluiWrapped(const std::wstring& text, std::size_t screenWidth);

#endif  // PROGRAM_TEXT_CLUIWRAP_H_
