// The basic types and the export macro.

#ifndef FOUNDATION_YTYPES_H_
#define FOUNDATION_YTYPES_H_

#include <cstdint>

// Exports a class or function from its shared library. All code is compiled with hidden visibility,
// so only what carries this macro can be linked from outside.
#define YQRT_API __attribute__((visibility("default")))

// The result of an operation that can fail: 1 for success, 0 for failure.
using YWord = std::uint32_t;

#endif  // FOUNDATION_YTYPES_H_
