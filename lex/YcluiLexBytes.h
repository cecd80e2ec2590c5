// The bytes with a meaning of their own. Internal to the lexer.

#ifndef LEX_YCLUILEXBYTES_H_
#define LEX_YCLUILEXBYTES_H_

#include "foundation/YKanji.h"
#include "foundation/YTypes.h"

constexpr bool IsWhiteSpace(char byte) {
  return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

inline bool IsQuote(char byte) {
  return byte == '"' || byte == '\'';
}

inline bool IsDigit(char byte) {
  return byte >= '0' && byte <= '9';
}

// Whether a variable form opens at `p`.
inline bool OpensVariable(const char* p) {
  return p[0] == '$' && p[1] == '{';
}

// Whether the byte is one of the NUL-terminated set, which is short. The NUL is in none.
inline bool IsIn(const char* set, char byte) {
  while (*set != '\0' && *set != byte) ++set;
  return *set != '\0';
}

// The bytes at which a scan has to look closer. All others stand for themselves and are passed over
// in one go.
class YcluiByteSet {
 public:
  constexpr void add(char byte) { words[Index(byte) / 64] |= Bit(byte); }
  constexpr void add(const char* bytes) {
    for (; *bytes != '\0'; ++bytes) add(*bytes);
  }
  constexpr bool has(char byte) const { return (words[Index(byte) / 64] & Bit(byte)) != 0; }
  char* passOthers(char* p) const {
    while (!has(*p)) ++p;
    return p;
  }

 private:
  static constexpr unsigned int Index(char byte) { return static_cast<unsigned char>(byte); }
  static constexpr std::uint64_t Bit(char byte) { return std::uint64_t{1} << (Index(byte) % 64); }

  std::uint64_t words[4] = {};
};

// What counts inside quotes, but for the quote: the end of the text, a backslash, the first byte of
// a variable form, and bytes that may begin a character of two.
constexpr YcluiByteSet QuotedSpecials() {
  YcluiByteSet set;
  set.add('\0');
  set.add("\\$");
  for (int byte = 0x80; byte <= 0xFF; ++byte) {
    if (YIsKanjiLead(static_cast<unsigned char>(byte))) set.add(static_cast<char>(byte));
  }
  return set;
}

// What counts in a word: the same, and white space.
constexpr YcluiByteSet WordSpecials() {
  YcluiByteSet set = QuotedSpecials();
  set.add(" \t\n\v\f\r");
  return set;
}

#endif  // LEX_YCLUILEXBYTES_H_
