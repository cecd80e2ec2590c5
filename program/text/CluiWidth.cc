#include "program/text/CluiWidth.h"

#include <clocale>
#include <cwchar>

// wcwidth returns -1 for characters that the user's locale lacks, so a locale with all is used.
int CluiWidthOf(wchar_t c) {
  static const locale_t all = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  if (c < 0x7F) return 1;
  if (all == nullptr) return c >= 0x1100 ? 2 : 1;
  const locale_t before = uselocale(all);
  const int width = wcwidth(c);
  uselocale(before);
  return width < 0 ? 1 : width;
}

int CluiWidthOf(std::wstring_view text) {
  int width = 0;
  for (const wchar_t c : text) width += CluiWidthOf(c);
  return width;
}
