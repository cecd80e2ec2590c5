// Lists of plain pointers that own their links and not their items.

#ifndef PLATFORM_CONTAINERS_YLINKLIST_H_
#define PLATFORM_CONTAINERS_YLINKLIST_H_

#include <cstddef>
#include <new>

#include "foundation/YTypes.h"

// One link, with its item. A ring is in at most one chain.
class YQRT_API YRing {
 public:
  explicit YRing(void* item) : item_(item) {}
  void* item() const { return item_; }

  // Rings share blocks of memory, since a syntax has more links than anything else.
  static void* operator new(std::size_t size);
  static void* operator new(std::size_t size, const std::nothrow_t&) noexcept;
  static void operator delete(void* ring, std::size_t size);

 private:
  friend class YChain;
  void* item_;
  YRing* next_ = nullptr;  // the last ring leads to the first
};

// A circular list of rings, in the order in which they were attached.
class YQRT_API YChain {
 public:
  YChain() = default;
  YChain(const YChain&) = delete;
  YChain& operator=(const YChain&) = delete;

  // The first and the last ring, null when the chain is empty.
  YRing* first() const { return last_ == nullptr ? nullptr : last_->next_; }
  YRing* last() const { return last_; }
  // The ring after one of this chain, null after the last.
  YRing* next(const YRing* ring) const { return ring == last_ ? nullptr : ring->next_; }

  // Puts a ring that is in no chain at the end; returns it.
  YRing* attach(YRing* ring);
  // Takes a ring of this chain out and destroys neither it nor its item; returns the ring. Costs
  // the rings before it; the first one costs nothing.
  YRing* detach(YRing* ring);
  // Takes over all rings of the other chain, in their order, after those that are here. Costs the
  // same however many they are.
  void attachAll(YChain& from);

 protected:
  // Takes out the ring after that one, which may be the last one; returns it.
  YRing* detachAfter(YRing* ring);

 private:
  YRing* last_ = nullptr;
};

// A chain that makes its rings itself. The same pointer may be in several lists, and several times
// in one.
class YQRT_API YLinkList : public YChain {
 public:
  YLinkList() = default;
  ~YLinkList();  // frees the rings, not the items

  // Puts the item at the end; returns it.
  void* append(void* item);

  // The operation of the chain, beside the one below.
  using YChain::detach;
  // Removes the first ring that holds the item and returns the item; null when there is none. Costs
  // the rings before it.
  void* detach(void* item);
};

// Walks a list from the first appended item to the last:
//   for (YLinkListIterator i(list); i.ring != nullptr; ++i) use(i.current());
// The list must not change at the ring that the iterator is on.
class YQRT_API YRingIterator {
 public:
  const YChain* chain;  // the chain walked
  YRing* ring;          // the present ring, null when the walk is over

  explicit YRingIterator(const YChain& over) : chain(&over), ring(over.first()) {}
  // Steps to the next ring and returns it, null after the last.
  YRing* operator++() { return ring = ring == nullptr ? nullptr : chain->next(ring); }
};

class YQRT_API YLinkListIterator : public YRingIterator {
 public:
  explicit YLinkListIterator(const YLinkList& list) : YRingIterator(list) {}
  // The item of the present ring; the walk must not be over.
  void* current() const { return ring->item(); }
};

#endif  // PLATFORM_CONTAINERS_YLINKLIST_H_
