// What happens when memory runs out.
//
// Where a failed allocation is part of an operation's contract, the operation uses
// new (std::nothrow) and answers as it says. Everywhere else there is no way to go on: a text that
// was cut short could run half a command. Such places end the process through YOutOfMemory.

#ifndef FOUNDATION_YMEMORY_H_
#define FOUNDATION_YMEMORY_H_

#include <cstddef>
#include <cstdlib>
#include <new>

#include "foundation/YTypes.h"

// Prints one line to the standard error stream and aborts.
[[noreturn]] YQRT_API void YOutOfMemory();

// Hands an allocation through and ends the process when there is none:
//   YSyntax* s = YChecked(new (std::nothrow) YSyntax);
template <class T>
T* YChecked(T* memory) {
  if (memory == nullptr) YOutOfMemory();
  return memory;
}

// The allocator of the standard containers inside the library, which is compiled without
// exceptions: it ends the process instead of throwing.
template <class T>
struct YAllocator {
  using value_type = T;

  YAllocator() = default;
  template <class U>
  YAllocator(const YAllocator<U>&) {}  // NOLINT(google-explicit-constructor)

  T* allocate(std::size_t n) {
    constexpr std::size_t Size = sizeof(T);  // NOLINT(bugprone-sizeof-expression): also of pointers
    if (n > static_cast<std::size_t>(-1) / Size) YOutOfMemory();
    if constexpr (alignof(T) > alignof(std::max_align_t)) {
      return static_cast<T*>(YChecked(std::aligned_alloc(alignof(T), n * Size)));
    } else {
      return static_cast<T*>(YChecked(std::malloc(n * Size)));
    }
  }
  void deallocate(T* memory, std::size_t) { std::free(memory); }

  template <class U>
  bool operator==(const YAllocator<U>&) const {
    return true;
  }
};

#endif  // FOUNDATION_YMEMORY_H_
