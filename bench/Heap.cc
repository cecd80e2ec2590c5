#include "bench/Heap.h"

#include <malloc.h>

#include <algorithm>
#include <cerrno>

namespace {

long Requests = 0;
std::size_t Live = 0;
std::size_t MostLive = 0;

void* Counted(void* memory) {
  ++Requests;
  Live += malloc_usable_size(memory);
  MostLive = std::max(MostLive, Live);
  return memory;
}

}  // namespace

long HeapRequests() {
  return Requests;
}

HeapPeak::HeapPeak() : level_(Live) {
  MostLive = Live;
}

std::size_t HeapPeak::bytes() const {
  return MostLive - level_;
}

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);

void* malloc(std::size_t size) {
  return Counted(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) {
  return Counted(__libc_calloc(count, size));
}

void* realloc(void* memory, std::size_t size) {
  Live -= malloc_usable_size(memory);
  return Counted(__libc_realloc(memory, size));
}

void* memalign(std::size_t alignment, std::size_t size) {
  return Counted(__libc_memalign(alignment, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
  return memalign(alignment, size);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) {
  *memory = memalign(alignment, size);
  return *memory == nullptr ? ENOMEM : 0;
}

void free(void* memory) {
  Live -= malloc_usable_size(memory);
  __libc_free(memory);
}
}
