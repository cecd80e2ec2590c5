// Lists of plain pointers that own their links and not their items.

#ifndef PLATFORM_GENERAL_YLINKLIST_H_
#define PLATFORM_GENERAL_YLINKLIST_H_

#include "foundation/YTypes.h"

// One link of a chain, with its item. A ring stands in at most one chain.
class YQRT_API YRing {
 public:
  explicit YRing(void* item) : item_(item) {}
  void* item() const { return item_; }
  // The next ring of its chain, null behind the last.
  YRing* next() const { return next_; }
  // The one before it, null in front of the first.
  YRing* previous() const { return previous_; }

 private:
  friend class YChain;
  void* item_;
  YRing* next_ = nullptr;
  YRing* previous_ = nullptr;
};

// Rings in the order in which they were attached.
class YQRT_API YChain {
 public:
  YChain() = default;
  YChain(const YChain&) = delete;
  YChain& operator=(const YChain&) = delete;

  // The first ring, null when the chain is empty.
  YRing* first() const { return first_; }
  YRing* last() const { return last_; }
  // Puts a ring that stands in no chain at the end; answers it.
  YRing* attach(YRing* ring);
  // Takes a ring of this chain out, with its item, and destroys neither; answers it.
  YRing* detach(YRing* ring);
  // Takes over all rings of the other chain, in their order, behind those that are here. Costs the
  // same however many they are.
  void attachAll(YChain& from);

 private:
  YRing* first_ = nullptr;
  YRing* last_ = nullptr;
};

// A chain that makes its rings itself. The same pointer may stand in several lists, and several
// times in one.
class YQRT_API YLinkList : public YChain {
 public:
  YLinkList() = default;
  ~YLinkList();  // frees the rings, not the items

  // Puts the item at the end; answers it.
  void* append(void* item);

  // The operation of the chain, beside the one below.
  using YChain::detach;
  // Removes the first ring that holds the item and answers the item; null when there is none. Costs
  // the rings in front of it.
  void* detach(void* item);
};

// Walks a list from the first appended item to the last:
//   for (YLinkListIterator i(list); i.ring != nullptr; ++i) use(i.current());
// The list must not change under the ring that the iterator stands on.
class YQRT_API YRingIterator {
 public:
  const YChain* chain;  // the chain walked
  YRing* ring;          // where the walk stands, null when it is over

  explicit YRingIterator(const YChain& over) : chain(&over), ring(over.first()) {}
  // Steps to the next ring and answers it, null behind the last.
  YRing* operator++() { return ring = ring == nullptr ? nullptr : ring->next(); }
};

class YQRT_API YLinkListIterator : public YRingIterator {
 public:
  explicit YLinkListIterator(const YLinkList& list) : YRingIterator(list) {}
  // The item of the present ring; the walk must not be over.
  void* current() const { return ring->item(); }
};

#endif  // PLATFORM_GENERAL_YLINKLIST_H_
