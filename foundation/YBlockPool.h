// A pool allocator for many small objects of one size.

#ifndef FOUNDATION_YBLOCKPOOL_H_
#define FOUNDATION_YBLOCKPOOL_H_

#include <cstddef>
#include <mutex>
#include <new>

#include "foundation/YMemory.h"
#include "foundation/YPooled.h"

// Allocates blocks of one size from slabs. The blocks are adjacent, without the headers that malloc
// adds, and in the order of allocation, so that reading many objects touches fewer cache lines. A
// block whose size is a multiple of 64 is aligned to a cache line.
//
// Both operations take constant time and are thread-safe: an object may be deleted in another
// thread than the one that created it. The slabs are freed when the last block is returned.
class YBlockPool {
 public:
  explicit constexpr YBlockPool(std::size_t blockSize) : blockSize_(blockSize) {}

  // Allocates a block of `size` bytes; null when there is no memory. A size other than that of the
  // pool (an object of a derived class) is allocated outside the pool.
  void* take(std::size_t size);
  // Returns a block that `take` gave for the same size. Null is ignored.
  void give(void* block, std::size_t size);

 private:
  struct Free {
    Free* next;
  };
  struct Slab {
    Slab* next;
  };

  const std::size_t blockSize_;
  std::mutex mutex_;  // of everything below
  std::size_t used_ = 0;
  Free* free_ = nullptr;   // list of returned blocks
  char* fresh_ = nullptr;  // start of the unused rest of the current slab
  char* freshEnd_ = nullptr;
  Slab* slabs_ = nullptr;
  std::size_t nextCount_ = FirstCount;  // blocks of the next slab

  static constexpr std::size_t FirstCount = 16;
  static constexpr std::size_t MostCount = 1024;

  bool addSlab();
  void releaseAll();
};

template <class T>
constinit YBlockPool YPoolOf(sizeof(T));

template <class T>
void* YPooled<T>::operator new(std::size_t size) {
  return YChecked(YPoolOf<T>.take(size));
}

template <class T>
void* YPooled<T>::operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return YPoolOf<T>.take(size);
}

template <class T>
void YPooled<T>::operator delete(void* object, std::size_t size) {
  YPoolOf<T>.give(object, size);
}

#endif  // FOUNDATION_YBLOCKPOOL_H_
