#include "lex/YcluiArrayVariable.h"

YcluiArrayVariable::YcluiArrayVariable(const char* name, std::uint32_t count,
                                       const YAttribValue* values)
    : YcluiVariable(name, YcluiVariableArray), values_(values, values + count) {}

std::uint32_t YcluiArrayVariable::elementCount() const {
  return static_cast<std::uint32_t>(values_.size());
}

YAttribValue* YcluiArrayVariable::element(std::uint32_t index) {
  return index < elementCount() ? &values_[index] : nullptr;
}

YAttribValue* YcluiArrayVariable::elements() {
  return values_.empty() ? nullptr : values_.data();
}

YWord YcluiArrayVariable::growTo(std::uint32_t n) {
  if (n > YcluiMostElements) return 0;
  if (n > elementCount()) values_.resize(n);
  return 1;
}
