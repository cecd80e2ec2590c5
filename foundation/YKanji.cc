#include "foundation/YKanji.h"

namespace {

bool IsLead(char byte) {
  return YIsKanjiLead(static_cast<unsigned char>(byte));
}

}  // namespace

// A byte that is no lead byte ends a character, be it a trail byte or one of its own. So behind the
// last such byte a character starts, and since every lead byte can be a trail byte too, the lead
// bytes from there on pair up.
long YCheckKanji(const char* text, int index) {
  int run = index;
  while (run > 0 && IsLead(text[run - 1])) --run;
  const bool behindOpenLead = (index - run) % 2 != 0;
  if (behindOpenLead && YIsKanjiTrail(static_cast<unsigned char>(text[index]))) return 4;
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
