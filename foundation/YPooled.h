// The base class of objects that come from a pool.

#ifndef FOUNDATION_YPOOLED_H_
#define FOUNDATION_YPOOLED_H_

#include <cstddef>
#include <new>

#include "foundation/YTypes.h"

// Gives a class T, of which there may be many objects on the heap, an operator new that takes them
// from a pool of its own (YBlockPool.h), and the operator delete to it. It adds no bytes to an
// object:
//
//   class YRing : public YPooled<YRing> { ... };
//   template class YPooled<YRing>;   // in one source file, which includes YBlockPool.h
//
// Objects of a derived class of another size are allocated outside the pool. The plain form of new
// ends the process when there is no memory, the nothrow form returns null.
template <class T>
class YQRT_API YPooled {
 public:
  static void* operator new(std::size_t size);
  static void* operator new(std::size_t size, const std::nothrow_t&) noexcept;
  static void* operator new(std::size_t, void* memory) noexcept { return memory; }
  static void operator delete(void* object, std::size_t size);
};

#endif  // FOUNDATION_YPOOLED_H_
