// Hashing and folding of names.

#ifndef PLATFORM_CONTAINERS_YTSTRING_H_
#define PLATFORM_CONTAINERS_YTSTRING_H_

#include <string_view>

#include "foundation/YString.h"

// The hash of a text: the same on every machine.
YQRT_API unsigned long YHashText(std::string_view text);

// A string with a hash.
class YQRT_API YtString : public YString {
 public:
  explicit YtString(const char* text) : YString(text) {}
  unsigned long hash() const { return YHashText({buffer, length}); }
};

// Folds the ASCII capitals of a text to lower case in place, as YString::toLower does.
YQRT_API void Ycvl(char* text);

#endif  // PLATFORM_CONTAINERS_YTSTRING_H_
