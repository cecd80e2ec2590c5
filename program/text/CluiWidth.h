// How wide text is on a screen.

#ifndef PROGRAM_TEXT_CLUIWIDTH_H_
#define PROGRAM_TEXT_CLUIWIDTH_H_

#include <string_view>

// The columns that a character takes: 0, 1 or 2, whatever the user's locale knows of it. A control
// character counts as 1, for the sign that stands for it.
int CluiWidthOf(wchar_t c);
int CluiWidthOf(std::wstring_view text);

#endif  // PROGRAM_TEXT_CLUIWIDTH_H_
