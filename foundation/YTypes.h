// The few types and the export macro that every other file rests on.

#ifndef FOUNDATION_YTYPES_H_
#define FOUNDATION_YTYPES_H_

#include <cstdint>

// Marks what leaves a shared library of this system. All code is compiled with hidden visibility;
// only classes and functions that carry this macro can be linked to from outside.
#define YQRT_API __attribute__((visibility("default")))

// The answer of an operation that can fail: 1 for success, 0 for refusal.
using YWord = std::uint32_t;

#endif  // FOUNDATION_YTYPES_H_
