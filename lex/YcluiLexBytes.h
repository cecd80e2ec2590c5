// The bytes with a meaning of their own. Internal to the lexer.

#ifndef LEX_YCLUILEXBYTES_H_
#define LEX_YCLUILEXBYTES_H_

#include <cstring>

#include "foundation/YTypes.h"

inline bool IsWhiteSpace(char byte) {
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

// Whether the byte is one of the NUL-terminated set. The NUL is in none.
inline bool IsIn(const char* set, char byte) {
  return byte != '\0' && std::strchr(set, byte) != nullptr;
}

// A set of bytes for a scan that asks about many.
class YcluiByteSet {
 public:
  explicit YcluiByteSet(const char* bytes) {
    for (; *bytes != '\0'; ++bytes) words[Index(*bytes) / 64] |= Bit(*bytes);
  }
  bool has(char byte) const { return (words[Index(byte) / 64] & Bit(byte)) != 0; }

 private:
  static unsigned int Index(char byte) { return static_cast<unsigned char>(byte); }
  static std::uint64_t Bit(char byte) { return std::uint64_t{1} << (Index(byte) % 64); }

  std::uint64_t words[4] = {};
};

#endif  // LEX_YCLUILEXBYTES_H_
