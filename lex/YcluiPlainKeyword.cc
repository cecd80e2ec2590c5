#include "lex/YcluiPlainKeyword.h"

#include <cstring>

#include "platform/containers/YtString.h"

// Only objects of this size come from the pool.
static_assert(sizeof(YcluiPlainKeyword) == sizeof(YcluiKeyword));

namespace {

std::size_t RoomFor(const char* text) {
  return text == nullptr ? 1 : std::strlen(text) + 1;
}

}  // namespace

YcluiPlainKeyword::YcluiPlainKeyword(const char* name, const char* abbreviation, std::uint32_t id)
    : YcluiKeyword(name, RoomFor(name) + RoomFor(abbreviation), id, YcluiTokenKeyword) {
  if (abbreviation == nullptr || nameBuffer() == nullptr) return;
  char* text = nameBuffer() + nameLength() + 1;
  std::memcpy(text, abbreviation, RoomFor(abbreviation));
  Ycvl(text);
  setAbbreviated(std::strlen(text));
}

unsigned long YcluiPlainKeyword::hashKey() const {
  return isAbbreviated() ? YHashText(abbreviation()) : YcluiKeyword::hashKey();
}

YWord YcluiPlainKeyword::equalsKey(const void* k) const {
  if (!isAbbreviated()) return YcluiKeyword::equalsKey(k);
  const char* text = k == nullptr ? "" : static_cast<const char*>(k);
  // A shorter text differs at its NUL.
  if (std::strncmp(text, abbreviation(), shortestLength()) != 0) return 0;
  return std::strncmp(name(), text, std::strlen(text)) == 0 ? 1 : 0;
}

const char* YcluiPlainKeyword::abbreviation() const {
  return isAbbreviated() ? name() + nameLength() + 1 : nullptr;
}
