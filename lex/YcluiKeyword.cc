#include "lex/YcluiKeyword.h"

#include <cstring>
#include <new>

#include "foundation/YBlockPool.h"
#include "foundation/YErr.h"
#include "platform/containers/YtString.h"

namespace {

const char* TextOf(const void* text) {
  return text == nullptr ? "" : static_cast<const char*>(text);
}

void* IdWord(std::uint32_t id, YcluiTokenType type) {
  const std::uint32_t word = (id & YcluiIdMask) | ((static_cast<std::uint32_t>(type) & 15) << 24);
  return reinterpret_cast<void*>(static_cast<std::uintptr_t>(word));
}

}  // namespace

template class YPooled<YcluiKeyword>;

YcluiKeyword::YcluiKeyword(const char* name, std::uint32_t id, YcluiTokenType type)
    : YcluiKeyword(name, std::strlen(TextOf(name)) + 1, id, type) {}

YcluiKeyword::YcluiKeyword(const char* name, std::size_t bufferSize, std::uint32_t id,
                           YcluiTokenType type)
    : YAssoc(nullptr, IdWord(id, type)), lengthOfShortest(0), abbreviated(0) {
  char* buffer = bufferSize <= sizeof shortName ? shortName : new (std::nothrow) char[bufferSize];
  if (buffer == nullptr) {
    cluiFatal(YErrNoMemory);
    return;
  }
  lengthOfName = static_cast<std::uint32_t>(std::strlen(TextOf(name)));
  lengthOfShortest = lengthOfName & 0x7FFFFFFF;
  std::memcpy(buffer, TextOf(name), lengthOfName + std::size_t{1});
  Ycvl(buffer);
  key = buffer;
}

YcluiKeyword::~YcluiKeyword() {
  if (nameBuffer() != shortName) delete[] nameBuffer();
}

unsigned long YcluiKeyword::hashKey() const {
  return YHashText(name());
}

YWord YcluiKeyword::equals(const YAssoc* other) const {
  return equalsKey(other->key);
}

YWord YcluiKeyword::equalsKey(const void* k) const {
  return std::strcmp(name(), TextOf(k)) == 0 ? 1 : 0;
}

int YcluiKeyword::argCount() const {
  return 0;
}

YcluiValueType YcluiKeyword::argType(int) const {
  return YcluiValueNone;
}

const YcluiValueType* YcluiKeyword::argTypes() const {
  return nullptr;
}

const char* YcluiKeyword::aliasText() const {
  return nullptr;
}

const char* YcluiKeyword::abbreviation() const {
  return nullptr;
}
