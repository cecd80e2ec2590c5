#include "lex/YcluiArgKeyword.h"

YcluiArgKeyword::YcluiArgKeyword(const char* name, std::uint32_t id, int count,
                                 const YcluiValueType* types)
    : YcluiKeyword(name, id, YcluiTokenArgKeyword) {
  if (types != nullptr && count > 0) valueTypes.assign(types, types + count);
}

int YcluiArgKeyword::argCount() const {
  return static_cast<int>(valueTypes.size());
}

YcluiValueType YcluiArgKeyword::argType(int index) const {
  return index >= 0 && index < argCount() ? valueTypes[static_cast<std::size_t>(index)]
                                          : YcluiValueNone;
}

const YcluiValueType* YcluiArgKeyword::argTypes() const {
  return valueTypes.empty() ? nullptr : valueTypes.data();
}
