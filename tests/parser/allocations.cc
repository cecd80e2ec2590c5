#include "tests/parser/allocations.h"

#include <cstdlib>
#include <new>

namespace {

long Count = 0;
int FailAfter = -1;

void* Allocate(std::size_t size) {
  return FailAfter >= 0 && FailAfter-- == 0 ? nullptr : std::malloc(size);
}

}  // namespace

long Allocations() {
  return Count;
}
void FailAllocation(int after) {
  FailAfter = after;
}

#if !defined(__SANITIZE_ADDRESS__)
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* malloc(std::size_t size) {
  ++Count;
  return __libc_malloc(size);
}
void* realloc(void* memory, std::size_t size) {
  ++Count;
  return __libc_realloc(memory, size);
}
}
#endif

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size);
}
void* operator new(std::size_t size) {
  return std::malloc(size);
}
void* operator new[](std::size_t size) {
  return std::malloc(size);
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete[](void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
  std::free(memory);
}
