// Double-byte text.
//
// In Shift_JIS, code page 932, a double-byte character is a lead byte (0x81-0x9F, 0xE0-0xFC)
// followed by a trail byte (0x40-0x7E, 0x80-0xFC); every other byte is a character of its own. A
// trail byte can have the value of a backslash, a letter or a brace, so code that examines single
// bytes must know where characters start, which only a scan from the start of the text determines.
//
// When the encoding inside (YEncoding) is UTF-8, no byte of a character has an ASCII value, and
// every byte counts as single here: all classes are 0.

#ifndef FOUNDATION_YKANJI_H_
#define FOUNDATION_YKANJI_H_

#include "foundation/YEncoding.h"
#include "foundation/YTypes.h"

// Whether the byte is a lead or a trail byte of Shift_JIS, whatever the encoding inside is.
constexpr bool YIsKanjiLead(unsigned char byte) {
  return byte >= 0x81 && (byte <= 0x9F || (byte >= 0xE0 && byte <= 0xFC));
}
constexpr bool YIsKanjiTrail(unsigned char byte) {
  return (byte >= 0x40 && byte <= 0x7E) || (byte >= 0x80 && byte <= 0xFC);
}

// The class of the byte text[index] in the NUL-terminated `text`:
//   0  a single-byte character
//   1  a lead byte that ends the text
//   3  a lead byte before its trail byte
//   4  that trail byte
// `index` is between 0 and the length of the text; the NUL has class 0. The time is linear in the
// run of lead bytes before the index; to classify all bytes of a text, use YKanjiWalk.
YQRT_API long YCheckKanji(const char* text, int index);

// Returns non-zero when the character at `p` is a double-byte character or a lead byte that ends
// the text. `p` must be at the start of a character.
YQRT_API YWord IsKanjiStart(const char* p);

// Classifies the bytes of a text from its start, in constant time each:
//   YKanjiWalk walk;
//   for (const char* p = text; *p != '\0'; ++p)
//     if (walk.next(p) == 0 && *p == '"') ...
class YKanjiWalk {
 public:
  // The class of the byte at `p`, as YCheckKanji returns it. Each call must be for the byte that
  // follows the one of the previous call.
  int next(const char* p) {
    if (inCharacter_) {
      inCharacter_ = false;
      return 4;
    }
    if (!YIsKanjiLead(static_cast<unsigned char>(p[0])) || !isDoubleByte_) return 0;
    if (p[1] == '\0') return 1;
    if (!YIsKanjiTrail(static_cast<unsigned char>(p[1]))) return 0;
    inCharacter_ = true;
    return 3;
  }

 private:
  bool isDoubleByte_ = YEncoding::IsDoubleByte();
  bool inCharacter_ = false;
};

// Folds the ASCII capitals of a NUL-terminated text to lower case in place. Bytes of double-byte
// characters are not changed.
YQRT_API void YFoldCase(char* text);

#endif  // FOUNDATION_YKANJI_H_
