#include "lex/YcluiLexBuffer.h"

#include <utility>

void YcluiLexBuffer::exchange(YString& text, std::uint32_t& offset) {
  std::swap(text_, text);
  std::swap(offset_, offset);
}
