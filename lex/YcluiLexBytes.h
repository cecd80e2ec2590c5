// The bytes that have a meaning for the lexer. Internal to the lexer.

#ifndef LEX_YCLUILEXBYTES_H_
#define LEX_YCLUILEXBYTES_H_

#include "foundation/YAscii.h"
#include "foundation/YKanji.h"
#include "foundation/YTypes.h"

inline bool IsQuote(char byte) {
  return byte == '"' || byte == '\'';
}

// Whether a variable form starts at `p`.
inline bool OpensVariable(const char* p) {
  return p[0] == '$' && p[1] == '{';
}

// Whether the byte is in the NUL-terminated set, which is short. A NUL is in no set.
inline bool IsIn(const char* set, char byte) {
  while (*set != '\0' && *set != byte) ++set;
  return *set != '\0';
}

// The bytes at which a scanner stops to examine the text. All others are copied as they are, so a
// scanner skips runs of them.
class YcluiByteSet {
 public:
  constexpr void add(char byte) { words[Index(byte) / 64] |= Bit(byte); }
  constexpr void add(const char* bytes) {
    for (; *bytes != '\0'; ++bytes) add(*bytes);
  }
  constexpr bool has(char byte) const { return (words[Index(byte) / 64] & Bit(byte)) != 0; }
  char* skipOthers(char* p) const {
    while (!has(*p)) ++p;
    return p;
  }

 private:
  static constexpr unsigned int Index(char byte) { return static_cast<unsigned char>(byte); }
  static constexpr std::uint64_t Bit(char byte) { return std::uint64_t{1} << (Index(byte) % 64); }

  std::uint64_t words[4] = {};
};

// The special bytes inside quotes, except the quote: the NUL, the backslash, the first byte of a
// variable form, and where there are double-byte characters their lead bytes.
constexpr YcluiByteSet QuotedSpecials(bool isDoubleByte) {
  YcluiByteSet set;
  set.add('\0');
  set.add("\\$");
  for (int byte = 0x80; isDoubleByte && byte <= 0xFF; ++byte) {
    if (YIsKanjiLead(static_cast<unsigned char>(byte))) set.add(static_cast<char>(byte));
  }
  return set;
}

// The special bytes of a word: the same and white space.
constexpr YcluiByteSet WordSpecials(bool isDoubleByte) {
  YcluiByteSet set = QuotedSpecials(isDoubleByte);
  set.add(" \t\n\v\f\r");
  return set;
}

#endif  // LEX_YCLUILEXBYTES_H_
