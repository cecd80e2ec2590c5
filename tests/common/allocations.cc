#include "tests/common/allocations.h"

#include <new>
#include <utility>

namespace {

long Count = 0;
int FailAt = -1;
bool Failed = false;
long FailAnyAt = -1;

bool AnyFails() {
  ++Count;
  return FailAnyAt >= 0 && FailAnyAt-- == 0;
}

bool Fails() {
  if (AnyFails()) return true;
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
void FailAnyAllocation(long index) {
  FailAnyAt = index;
}

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_realloc(void* memory, std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);

void* __wrap_malloc(std::size_t size) {
  return AnyFails() ? nullptr : __real_malloc(size);
}
void* __wrap_realloc(void* memory, std::size_t size) {
  return AnyFails() ? nullptr : __real_realloc(memory, size);
}
void* __wrap_calloc(std::size_t count, std::size_t size) {
  return AnyFails() ? nullptr : __real_calloc(count, size);
}
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return Fails() ? nullptr : operator new(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return Fails() ? nullptr : operator new[](size);
}
