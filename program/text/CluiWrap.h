// Wraps lines to the width of a screen.

#ifndef PROGRAM_TEXT_CLUIWRAP_H_
#define PROGRAM_TEXT_CLUIWRAP_H_

#include <string>

// Breaks each line that is wider than the screen, where YcluiWrap does.
std::wstring CluiWrapped(const std::wstring& text, std::size_t screenWidth);

#endif  // PROGRAM_TEXT_CLUIWRAP_H_
