// Array variables.

#ifndef LEX_YCLUIARRAYVARIABLE_H_
#define LEX_YCLUIARRAYVARIABLE_H_

#include <vector>

#include "foundation/YMemory.h"
#include "lex/YcluiVariable.h"

// Elements that were never set are null values. The array never shrinks.
class YcluiArrayVariable : public YcluiVariable {
 public:
  // Copies the values. `values` may be null when `count` is 0; `count` is at most
  // YcluiMostElements.
  YcluiArrayVariable(const char* name, std::uint32_t count, const YAttribValue* values);

  std::uint32_t elementCount() const override;
  YAttribValue* element(std::uint32_t index) override;
  YAttribValue* elements() override;
  YWord growTo(std::uint32_t n) override;

 private:
  std::vector<YAttribValue, YAllocator<YAttribValue>> values_;
};

#endif  // LEX_YCLUIARRAYVARIABLE_H_
