// Memory for many small pieces that are freed together.

#ifndef FOUNDATION_YARENA_H_
#define FOUNDATION_YARENA_H_

#include <cstddef>
#include <vector>

#include "foundation/YMemory.h"

// Gives out pieces of any size, one after the other, for types that need no destructor. Memory that
// cannot be had ends the process (YMemory.h).
class YArena {
 public:
  YArena() = default;
  YArena(const YArena&) = delete;
  YArena& operator=(const YArena&) = delete;
  ~YArena() { clear(); }

  // A piece for any fundamental type, until `clear`.
  void* take(std::size_t size);
  // Frees all pieces.
  void clear();

 private:
  std::vector<void*, YAllocator<void*>> blocks_;
  char* free_ = nullptr;  // in the last block
  std::size_t left_ = 0;
};

#endif  // FOUNDATION_YARENA_H_
