// An arena: memory for many small objects that are freed together.

#ifndef FOUNDATION_YARENA_H_
#define FOUNDATION_YARENA_H_

#include <cstddef>
#include <vector>

#include "foundation/YMemory.h"

// Allocates adjacent pieces of any size for types without a destructor. Running out of memory ends
// the process (YMemory.h).
class YArena {
 public:
  YArena() = default;
  YArena(const YArena&) = delete;
  YArena& operator=(const YArena&) = delete;
  ~YArena() { clear(); }

  // Returns `size` bytes, aligned for every fundamental type up to 8 bytes and valid until `clear`.
  void* take(std::size_t size);
  // Frees all pieces.
  void clear();

 private:
  std::vector<void*, YAllocator<void*>> blocks_;
  char* free_ = nullptr;  // start of the unused rest of the last block
  std::size_t left_ = 0;
};

#endif  // FOUNDATION_YARENA_H_
