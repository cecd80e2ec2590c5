// An index of words: rows of records under keys. Internal to the word table.

#ifndef LEX_YCLUIWORDINDEX_H_
#define LEX_YCLUIWORDINDEX_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <vector>

#include "foundation/YMemory.h"
#include "lex/YcluiKeyword.h"

// Under each key stands a row of records in the order of their serial numbers. The first of a row
// stands in a table that is probed from slot to slot, so that most look-ups touch one line of
// memory before they touch the record. Those behind it, which few rows have, wait in a tree.
//
// All operations take constant time; in a row of several, the logarithm of what waits.
class YcluiWordIndex {
 public:
  YcluiWordIndex();

  void add(std::uint64_t key, YcluiKeyword* record);
  // Takes a record out that is in the row of the key.
  void remove(std::uint64_t key, YcluiKeyword* record);
  // The first record of the row that `accepts`, or null. Keys that differ in their last bit alone
  // are looked for in the same place.
  template <class Accepts>
  YcluiKeyword* first(std::uint64_t key, const Accepts& accepts) const {
    YcluiKeyword* record = slots[slotOf(key)].record;
    if (record == nullptr || accepts(*record)) return record;
    for (auto i = waiting.lower_bound({key, 0, nullptr}); i != waiting.end(); ++i) {
      if (i->key != key) break;
      if (accepts(*i->record)) return i->record;
    }
    return nullptr;
  }

 private:
  struct Slot {
    std::uint64_t key = 0;
    YcluiKeyword* record = nullptr;  // null in an empty slot
  };
  struct Waiting {
    std::uint64_t key;
    std::uint64_t serial;
    YcluiKeyword* record;
    bool operator<(const Waiting& other) const {
      return key != other.key ? key < other.key : serial < other.serial;
    }
  };

  std::vector<Slot, YAllocator<Slot>> slots;  // a power of two of them
  int homeShift;                              // 64 less that power
  std::size_t rows = 0;
  // A record with two texts of one key waits twice.
  std::multiset<Waiting, std::less<Waiting>, YAllocator<Waiting>> waiting;

  // Where the way of a key begins. The upper bits of the product depend on all bits of the key: ids
  // in regular steps are spread too.
  std::size_t home(std::uint64_t key) const {
    return ((key >> 1) * 0x9E3779B97F4A7C15U) >> homeShift;
  }
  std::size_t behind(std::size_t slot) const { return (slot + 1) & (slots.size() - 1); }
  // The slot of the row, or the empty one in which its way ends.
  std::size_t slotOf(std::uint64_t key) const {
    std::size_t slot = home(key);
    while (slots[slot].record != nullptr && slots[slot].key != key) slot = behind(slot);
    return slot;
  }
  void refill(std::size_t slot);
  void empty(std::size_t slot);
  void grow();
};

#endif  // LEX_YCLUIWORDINDEX_H_
