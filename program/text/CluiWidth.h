// The display width of text.

#ifndef PROGRAM_TEXT_CLUIWIDTH_H_
#define PROGRAM_TEXT_CLUIWIDTH_H_

#include <string_view>

#include "terminal/YcluiCells.h"

// The number of columns of a character: 0, 1 or 2, in any locale. A control character is 1 wide,
// since a printable character is shown in its place.
inline int CluiWidthOf(wchar_t c) {
  return static_cast<int>(YcluiCells::WidthOf(static_cast<char32_t>(c)));
}
inline int CluiWidthOf(std::wstring_view text) {
  int width = 0;
  for (const wchar_t c : text) width += CluiWidthOf(c);
  return width;
}

// Whether the character is a control character, also one of U+0080 to U+009F.
constexpr bool CluiIsControl(wchar_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0);
}

#endif  // PROGRAM_TEXT_CLUIWIDTH_H_
