#include "tests/support/allocations.h"

#include <new>
#include <utility>

namespace {

long Count = 0;
long FailAnyAt = -1;

bool AnyFails() {
  ++Count;
  return FailAnyAt >= 0 && FailAnyAt-- == 0;
}

struct Failure {
  int index = -1;
  bool hasCome = false;

  bool comes() {
    if (AnyFails()) return true;
    if (index < 0 || index-- != 0) return false;
    return hasCome = true;
  }
  bool ask(int next) {
    index = next;
    return std::exchange(hasCome, false);
  }
};

Failure Plain;
Failure Aligned;

}  // namespace

long Allocations() {
  return Count;
}
bool FailAllocation(int index) {
  return Plain.ask(index);
}
bool FailAlignedAllocation(int index) {
  return Aligned.ask(index);
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
  return Plain.comes() ? nullptr : operator new(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return Plain.comes() ? nullptr : operator new[](size);
}
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
  return Aligned.comes() ? nullptr : operator new(size, alignment);
}
