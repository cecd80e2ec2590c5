// Hashed sets of plain pointers.

#ifndef PLATFORM_CONTAINERS_YSET_H_
#define PLATFORM_CONTAINERS_YSET_H_

#include <cstddef>
#include <cstdint>
#include <functional>

#include "foundation/YTypes.h"

class YQRT_API YSet_virtual_behavior {
 public:
  virtual void dummy_func();

 protected:
  ~YSet_virtual_behavior() = default;
};

// The destructor is not virtual on purpose: see YSet.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// A set of pointers; it does not own the items. Iteration follows the order in which they were
// attached. attach, detach and search take constant time on average: one hashValue, and one compare
// for each item of the same hash value.
//
// The destructor is not virtual and does not delete the items: a subclass that owns them calls
// deleteAll in its own destructor.
class YQRT_API YSet : public YSet_virtual_behavior {
 public:
  YSet();
  YSet(const YSet&) = delete;
  YSet& operator=(const YSet&) = delete;
  ~YSet();

  // Adds and returns the item. Returns null when the item is null or equals one of the set.
  void* attach(void* item);
  // Removes the item without deleting it and returns it; null when it is not in the set. The item
  // is found by its address, and its hash value must be the one it was attached with.
  void* detach(void* item);
  // Returns 1 when search finds an item for the probe.
  YWord contains(const void* item) const;
  // Empties the set and calls deleteIt for every item.
  void deleteAll();

  std::uint32_t count() const;

  // Non-zero when the stored item `a` equals the probe `b`; by default the same pointer.
  virtual YWord compare(const void* a, const void* b) const;
  // The hash value; equal items must have the same one. By default made from the pointer.
  virtual unsigned int hashValue(const void* item) const;
  // Called by deleteAll for each item; does nothing by default.
  virtual void deleteIt(void* item);
  // A new set of class YSet with the same items, compared by address. The caller owns it.
  virtual YSet* copy() const;
  // The first attached item that equals the probe, or null.
  virtual void* search(const void* probe) const;

 protected:
  // The first attached item that has the hash value and matches, or null.
  void* find(unsigned int hash, const std::function<bool(const void*)>& matches) const;

 private:
  struct Items;
  Items* items_ = nullptr;  // null until the first item is attached

  friend class YAssocSetItr;
  // The first item at or after `index`, null after the last. Sets `index` to its index.
  void* itemFrom(std::size_t& index) const;
};

#pragma GCC diagnostic pop

#endif  // PLATFORM_CONTAINERS_YSET_H_
