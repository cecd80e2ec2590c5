// Handling of memory exhaustion.
//
// An operation whose contract covers a failed allocation uses new (std::nothrow) and returns what
// the contract says. All other code ends the process through YOutOfMemory, because a text that was
// cut short could run half a command.

#ifndef FOUNDATION_YMEMORY_H_
#define FOUNDATION_YMEMORY_H_

#include <cstddef>
#include <cstdlib>
#include <new>

#include "foundation/YTypes.h"

// Prints a message to the standard error stream and aborts.
[[noreturn]] YQRT_API void YOutOfMemory();

// Returns the allocation; ends the process when it is null:
//   YSyntax* s = YChecked(new (std::nothrow) YSyntax);
template <class T>
T* YChecked(T* memory) {
  if (memory == nullptr) YOutOfMemory();
  return memory;
}

// The allocator for standard containers inside the library. It ends the process instead of
// throwing, because the library is compiled without exceptions.
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
