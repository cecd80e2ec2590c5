// Linked lists of plain pointers. A list owns its links but not its items.

#ifndef PLATFORM_CONTAINERS_YLINKLIST_H_
#define PLATFORM_CONTAINERS_YLINKLIST_H_

#include "foundation/YPooled.h"
#include "foundation/YTypes.h"

// One link, with its item. A ring is in at most one chain. Rings come from a pool, since a syntax
// has more links than anything else.
class YQRT_API YRing : public YPooled<YRing> {
 public:
  explicit YRing(void* item) : item_(item) {}
  void* item() const { return item_; }

 private:
  friend class YChain;
  void* item_;
  YRing* next_ = nullptr;  // of the last ring: the first
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

  // Appends a ring that is in no chain; returns it.
  YRing* attach(YRing* ring);
  // Removes a ring of this chain without destroying it or its item; returns the ring. Linear in the
  // number of rings before it.
  YRing* detach(YRing* ring);
  // Moves all rings of the other chain to the end of this one, in their order, in constant time.
  void attachAll(YChain& from);

 protected:
  // Removes and returns the ring that follows `ring`; after the last one that is the first.
  YRing* detachAfter(YRing* ring);

 private:
  YRing* last_ = nullptr;
};

// A chain that creates its own rings. The same item may be in several lists, and several times in
// one.
class YQRT_API YLinkList : public YChain {
 public:
  YLinkList() = default;
  ~YLinkList();  // frees the rings, not the items

  // Appends the item; returns it.
  void* append(void* item);

  // Detaching a ring stays available beside detaching an item.
  using YChain::detach;
  // Removes the first ring that holds the item and returns the item, or null when there is none.
  // Linear in the number of rings before it.
  void* detach(void* item);
};

// Iterates over a list from the first appended item to the last:
//   for (YLinkListIterator i(list); i.ring != nullptr; ++i) use(i.current());
// The ring at which the iterator is must not be detached.
class YQRT_API YRingIterator {
 public:
  const YChain* chain;  // the chain that is iterated over
  YRing* ring;          // the current ring, null after the last

  explicit YRingIterator(const YChain& over) : chain(&over), ring(over.first()) {}
  // Steps to the next ring and returns it, null after the last.
  YRing* operator++() { return ring = ring == nullptr ? nullptr : chain->next(ring); }
};

class YQRT_API YLinkListIterator : public YRingIterator {
 public:
  explicit YLinkListIterator(const YLinkList& list) : YRingIterator(list) {}
  // The item of the current ring, which must not be null.
  void* current() const { return ring->item(); }
};

#endif  // PLATFORM_CONTAINERS_YLINKLIST_H_
