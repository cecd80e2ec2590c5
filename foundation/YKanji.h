// Double-byte text.
//
// Text is bytes in Shift_JIS, code page 932. A double-byte character is a lead byte (0x81-0x9F,
// 0xE0-0xFC) before a trail byte (0x40-0x7E, 0x80-0xFC); every other byte is a character of its
// own. A trail byte can have the value of a backslash, a letter or a brace, so whoever looks at
// single bytes has to know where characters start, and that is judged from the start of the text.

#ifndef FOUNDATION_YKANJI_H_
#define FOUNDATION_YKANJI_H_

#include "foundation/YTypes.h"

constexpr bool YIsKanjiLead(unsigned char byte) {
  return byte >= 0x81 && (byte <= 0x9F || (byte >= 0xE0 && byte <= 0xFC));
}
constexpr bool YIsKanjiTrail(unsigned char byte) {
  return (byte >= 0x40 && byte <= 0x7E) || (byte >= 0x80 && byte <= 0xFC);
}

// The class of the byte text[index], judged from the start of the NUL-terminated `text`:
//   0  a single-byte character
//   1  a lead byte that ends the text
//   3  a lead byte before its trail byte
//   4  that trail byte
// `index` lies between 0 and the length of the text; the NUL has class 0. Costs the run of lead
// bytes in front of the index, which a caller that walks a whole text avoids with YKanjiWalk.
YQRT_API long YCheckKanji(const char* text, int index);

// Non-zero when a double-byte character starts at `p`, where a character does start; a lead byte
// that ends the text counts.
YQRT_API YWord IsKanjiStart(const char* p);

// Classifies the bytes of a text one after another, from its start, in constant time each:
//   YKanjiWalk walk;
//   for (const char* p = text; *p != '\0'; ++p)
//     if (walk.next(p) == 0 && *p == '"') ...
class YKanjiWalk {
 public:
  // The class of the byte at `p`, as YCheckKanji answers it. Each call must be for the byte behind
  // that of the call before.
  int next(const char* p) {
    if (inCharacter_) {
      inCharacter_ = false;
      return 4;
    }
    if (!YIsKanjiLead(static_cast<unsigned char>(p[0]))) return 0;
    if (p[1] == '\0') return 1;
    if (!YIsKanjiTrail(static_cast<unsigned char>(p[1]))) return 0;
    inCharacter_ = true;
    return 3;
  }

 private:
  bool inCharacter_ = false;
};

// The lower case of an ASCII capital, and any other byte as it is.
constexpr char YLowerCase(char byte) {
  return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : byte;
}

// Folds the ASCII capitals of a NUL-terminated text to lower case in place and leaves the bytes of
// double-byte characters alone.
YQRT_API void YFoldCase(char* text);

#endif  // FOUNDATION_YKANJI_H_
