#include "platform/containers/YtString.h"

#include "foundation/YKanji.h"

// FNV-1a of 64 bits.
unsigned long YHashText(std::string_view text) {
  std::uint64_t hash = 0xCBF29CE484222325U;
  for (const char c : text) {
    hash ^= static_cast<unsigned char>(c);
    hash *= 0x100000001B3U;
  }
  return hash;
}

void Ycvl(char* text) {
  YFoldCase(text);
}
