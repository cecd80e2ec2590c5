#include "lex/YcluiVariable.h"

#include <cstring>
#include <new>

#include "foundation/YErr.h"
#include "platform/containers/YtString.h"

namespace {

const char* TextOf(const void* text) {
  return text == nullptr ? "" : static_cast<const char*>(text);
}

}  // namespace

YcluiVariable::YcluiVariable(const char* name, YcluiVariableKind kind)
    : YAssoc(nullptr, reinterpret_cast<void*>(static_cast<std::uintptr_t>(kind))) {
  const std::size_t room = std::strlen(TextOf(name)) + 1;
  char* buffer = new (std::nothrow) char[room];
  if (buffer == nullptr) {
    cluiFatal(YErrNoMemory);
    return;
  }
  std::memcpy(buffer, TextOf(name), room);
  Ycvl(buffer);
  key = buffer;
}

YcluiVariable::~YcluiVariable() {
  delete[] static_cast<char*>(key);
}

const char* YcluiVariable::name() const {
  return TextOf(key);
}

unsigned long YcluiVariable::hashKey() const {
  return YHashText(name());
}

YWord YcluiVariable::equals(const YAssoc* other) const {
  return equalsKey(other->key);
}

YWord YcluiVariable::equalsKey(const void* k) const {
  return std::strcmp(name(), TextOf(k)) == 0 ? 1 : 0;
}

YAttribValue* YcluiVariable::valuePointer() {
  return nullptr;
}

std::uint32_t YcluiVariable::elementCount() const {
  return 0;
}

YAttribValue* YcluiVariable::element(std::uint32_t) {
  return nullptr;
}

YAttribValue* YcluiVariable::elements() {
  return nullptr;
}

YWord YcluiVariable::growTo(std::uint32_t) {
  return 0;
}
