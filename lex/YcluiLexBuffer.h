// A text that is suspended while another one is read.

#ifndef LEX_YCLUILEXBUFFER_H_
#define LEX_YCLUILEXBUFFER_H_

#include "foundation/YStack.h"
#include "foundation/YString.h"
#include "foundation/YTypes.h"

// A suspended text: the whole text, the consumed part included, and the offset of the cursor.
class YQRT_API YcluiLexBuffer {
 public:
  YcluiLexBuffer() : text_(0) {}
  YcluiLexBuffer(const YString& text, std::uint32_t offset) : text_(text), offset_(offset) {}

  const char* string() const { return text_.buffer; }
  std::uint32_t offset() const { return offset_; }

  // Exchanges text and offset with those given, without copying the text.
  void exchange(YString& text, std::uint32_t& offset);

 private:
  YString text_;
  std::uint32_t offset_ = 0;
};

using YcluiLexBuffer_Array = YArray<YcluiLexBuffer>;
using YcluiLexBuffer_Stack = YStack<YcluiLexBuffer>;

#endif  // LEX_YCLUILEXBUFFER_H_
