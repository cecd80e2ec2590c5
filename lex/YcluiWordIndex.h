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
#include "lex/YcluiWordBrief.h"

// Under each key stands a row of records: those in front, then those behind, both in the order of
// their serial numbers. The first of a row stands in a table that is probed from slot to slot, with
// its brief, so that most look-ups touch one line of memory. The others, which few rows have, wait
// in a tree.
//
// All operations take constant time; in a row of several, the logarithm of what waits.
class YcluiWordIndex {
 public:
  enum class Part : std::uint8_t { Front, Behind };

  YcluiWordIndex();

  // A key has 31 bits.
  void add(std::uint32_t key, Part part, YcluiKeyword* record);
  // Takes a record out that is in that part of the row.
  void remove(std::uint32_t key, Part part, YcluiKeyword* record);
  // The first record of the row that `accepts`, or null.
  template <class Accepts>
  YcluiKeyword* first(std::uint32_t key, const Accepts& accepts) const {
    YcluiKeyword* record = slots[slotOf(key)].record;
    return record == nullptr || accepts(*record) ? record : firstWaiting(key, accepts);
  }
  // The first word of the row that is found under the text.
  YcluiFoundWord find(std::uint32_t key, std::string_view text, bool longerToo) const;

 private:
  // Key and part in one number, by which those in front come first.
  static std::uint32_t Place(std::uint32_t key, Part part) {
    return key << 1 | static_cast<std::uint32_t>(part);
  }
  static std::uint32_t KeyOf(std::uint32_t place) { return place >> 1; }

  // Two of them fill a line of memory.
  struct alignas(32) Slot {
    std::uint32_t place = 0;
    YcluiWordBrief brief;
    YcluiKeyword* record = nullptr;  // null in an empty slot
  };
  struct Waiting {
    std::uint32_t place;
    std::uint64_t serial;
    YcluiKeyword* record;
    bool operator<(const Waiting& other) const {
      return place != other.place ? place < other.place : serial < other.serial;
    }
  };

  std::vector<Slot, YAllocator<Slot>> slots;  // a power of two of them
  int homeShift;                              // 64 less that power
  std::size_t rows = 0;
  // A record with two texts of one key waits twice.
  std::multiset<Waiting, std::less<Waiting>, YAllocator<Waiting>> waiting;

  // Where the way of a key begins. The upper bits of the product depend on all bits of the key: ids
  // in regular steps are spread too.
  std::size_t home(std::uint32_t key) const {
    return (key * std::uint64_t{0x9E3779B97F4A7C15U}) >> homeShift;
  }
  std::size_t behind(std::size_t slot) const { return (slot + 1) & (slots.size() - 1); }
  // The slot of the row, or the empty one in which its way ends.
  std::size_t slotOf(std::uint32_t key) const {
    std::size_t slot = home(key);
    while (slots[slot].record != nullptr && KeyOf(slots[slot].place) != key) slot = behind(slot);
    return slot;
  }
  template <class Accepts>
  YcluiKeyword* firstWaiting(std::uint32_t key, const Accepts& accepts) const {
    auto i = waiting.lower_bound({Place(key, Part::Front), 0, nullptr});
    for (; i != waiting.end() && KeyOf(i->place) == key; ++i) {
      if (accepts(*i->record)) return i->record;
    }
    return nullptr;
  }
  void refill(std::size_t slot);
  void empty(std::size_t slot);
  void grow();
};

#endif  // LEX_YCLUIWORDINDEX_H_
