// Keywords with declared arguments.

#ifndef LEX_YCLUIARGKEYWORD_H_
#define LEX_YCLUIARGKEYWORD_H_

#include <vector>

#include "foundation/YMemory.h"
#include "lex/YcluiKeyword.h"

// Copies the `count` types. Null types or a count below 1 declare no arguments.
class YcluiArgKeyword : public YcluiKeyword {
 public:
  YcluiArgKeyword(const char* name, std::uint32_t id, int count, const YcluiValueType* types);

  int argCount() const override;
  YcluiValueType argType(int index) const override;
  const YcluiValueType* argTypes() const override;

 private:
  std::vector<YcluiValueType, YAllocator<YcluiValueType>> valueTypes;
};

#endif  // LEX_YCLUIARGKEYWORD_H_
