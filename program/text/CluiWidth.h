// How wide text is on a screen.

#ifndef PROGRAM_TEXT_CLUIWIDTH_H_
#define PROGRAM_TEXT_CLUIWIDTH_H_

#include <string_view>

// The columns that a character needs: 0, 1 or 2, in any locale. A control character counts as 1,
// for the character that replaces it.
int CluiWidthOf(wchar_t c);
int CluiWidthOf(std::wstring_view text);

#endif  // PROGRAM_TEXT_CLUIWIDTH_H_
