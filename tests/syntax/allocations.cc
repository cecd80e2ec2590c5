#include "tests/syntax/allocations.h"

#include <cstdlib>
#include <new>

namespace {

long Count = 0;
bool FailNext = false;

void* Allocate(std::size_t size) {
  ++Count;
  if (!FailNext) return std::malloc(size);
  FailNext = false;
  return nullptr;
}

}  // namespace

long Allocations() {
  return Count;
}
void FailNextAllocation() {
  FailNext = true;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size);
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
void* operator new(std::size_t size) {
  return std::malloc(size);
}
void* operator new[](std::size_t size) {
  return std::malloc(size);
}
