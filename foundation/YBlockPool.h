// Memory for many small objects of one kind.

#ifndef FOUNDATION_YBLOCKPOOL_H_
#define FOUNDATION_YBLOCKPOOL_H_

#include <cstddef>

// Gives out blocks of one size. They lie side by side, where malloc puts notes of its own between
// them, and those that follow one another in time follow one another in memory: where objects are
// read at random, fewer lines of memory are read. A block whose size is a multiple of a line begins
// at one.
//
// Giving and taking cost constant time. The memory goes back to the system when the last block is
// given back. For one thread.
class YBlockPool {
 public:
  explicit constexpr YBlockPool(std::size_t blockSize) : blockSize_(blockSize) {}

  // A block for an object of that size, null when there is no memory. A size other than that of
  // the pool, that of a derived class, has memory of its own.
  void* take(std::size_t size);
  // Takes back what `take` gave for that size; nothing for null.
  void give(void* block, std::size_t size);

 private:
  struct Free {
    Free* next;
  };
  struct Slab {
    Slab* next;
  };

  std::size_t blockSize_;
  std::size_t used_ = 0;
  Free* free_ = nullptr;   // given back
  char* fresh_ = nullptr;  // of the present slab: what has not been given out yet
  char* freshEnd_ = nullptr;
  Slab* slabs_ = nullptr;
  std::size_t nextCount_ = FirstCount;  // blocks of the next slab

  static constexpr std::size_t FirstCount = 16;
  static constexpr std::size_t MostCount = 1024;

  bool addSlab();
  void releaseAll();
};

#endif  // FOUNDATION_YBLOCKPOOL_H_
