#include "foundation/YKanji.h"

#include "foundation/YAscii.h"

namespace {

bool IsLead(char byte) {
  return YIsKanjiLead(static_cast<unsigned char>(byte));
}

}  // namespace

// A byte that is no lead byte always ends a character. So a character starts after the last such
// byte, and since every lead byte can also be a trail byte, the lead bytes from there on form
// pairs.
long YCheckKanji(const char* text, int index) {
  if (!YEncoding::IsDoubleByte()) return 0;
  int run = index;
  while (run > 0 && IsLead(text[run - 1])) --run;
  const bool followsOpenLead = (index - run) % 2 != 0;
  if (followsOpenLead && YIsKanjiTrail(static_cast<unsigned char>(text[index]))) return 4;
  return YKanjiWalk().next(text + index);
}

YWord IsKanjiStart(const char* p) {
  return YKanjiWalk().next(p) == 0 ? 0 : 1;
}

void YFoldCase(char* text) {
  YKanjiWalk walk;
  for (char* p = text; *p != '\0'; ++p) {
    if (walk.next(p) == 0) *p = YLowerCase(*p);
  }
}
