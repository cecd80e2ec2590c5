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

// A set of pointers that it does not own. Items come in the order in which they were attached, on
// every machine. attach, detach and search cost one hashValue and a compare for each item of the
// same hash value, whatever the size of the set.
//
// There is no virtual destructor, and the destructor does not delete the items: a subclass that
// owns them calls deleteAll in its own.
class YQRT_API YSet : public YSet_virtual_behavior {
 public:
  YSet();
  YSet(const YSet&) = delete;
  YSet& operator=(const YSet&) = delete;
  ~YSet();

  // Adds the item; null when it is null itself or equals one that is there.
  void* attach(void* item);
  // Takes the item out without deleting it; null when it was not there. It is found by its address
  // under the hash value of this moment.
  void* detach(void* item);
  // 1 when search finds an item for it.
  YWord contains(const void* item) const;
  // Gives every item to deleteIt and empties the set.
  void deleteAll();

  std::uint32_t count() const;

  // Non-zero when the stored item `a` equals the probe `b`; by default the same pointer.
  virtual YWord compare(const void* a, const void* b) const;
  // Items that equal have the same value; by default made from the pointer.
  virtual unsigned int hashValue(const void* item) const;
  // What deleteAll does to an item; nothing by default.
  virtual void deleteIt(void* item);
  // A new plain set of the same items, compared by their addresses. The caller owns it.
  virtual YSet* copy() const;
  // The stored item that equals the probe: of several, the one attached first. Null when none does.
  virtual void* search(const void* probe) const;

 protected:
  // The first item, in the order of attaching, that has the hash value and matches; or null.
  void* find(unsigned int hash, const std::function<bool(const void*)>& matches) const;

 private:
  struct Items;
  Items* items_ = nullptr;  // null until the first item is attached

  friend class YAssocSetItr;
  // The first item from that index on, null after the last; sets `index` to its place.
  void* itemFrom(std::size_t& index) const;
};

#endif  // PLATFORM_CONTAINERS_YSET_H_
