#include "tests/common/allocations.h"

#include <new>
#include <utility>

namespace {

long Count = 0;
int FailAt = -1;
bool Failed = false;

bool Fails() {
  ++Count;
  if (FailAt < 0 || FailAt-- != 0) return false;
  return Failed = true;
}

}  // namespace

long Allocations() {
  return Count;
}
bool FailAllocation(int index) {
  FailAt = index;
  return std::exchange(Failed, false);
}

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_realloc(void* memory, std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);

void* __wrap_malloc(std::size_t size) {
  ++Count;
  return __real_malloc(size);
}
void* __wrap_realloc(void* memory, std::size_t size) {
  ++Count;
  return __real_realloc(memory, size);
}
void* __wrap_calloc(std::size_t count, std::size_t size) {
  ++Count;
  return __real_calloc(count, size);
}
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return Fails() ? nullptr : operator new(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return Fails() ? nullptr : operator new[](size);
}
