// The hash table of the library: open addressing, linear probing, backward-shift deletion.

#ifndef PLATFORM_CONTAINERS_YHASHTABLE_H_
#define PLATFORM_CONTAINERS_YHASHTABLE_H_

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "foundation/YMemory.h"

// A table of small entries. `Entry` is a plain value with
//   Entry()                      an empty entry
//   bool isEmpty() const
//   std::uint64_t hash() const   of an entry that is not empty
// The table scrambles the hash, so it need not be well distributed. Several entries may have the
// same hash; the caller's predicate selects among them.
//
// Pointers to entries are valid until the table changes. All operations take constant time on
// average, and removals do not slow down later searches. A new table owns no memory. Running out of
// memory ends the process (YMemory.h).
template <class Entry>
class YHashTable {
 public:
  std::size_t count() const { return count_; }

  // The first entry on the probe sequence of `hash` for which `matches(entry)` is true, or null.
  // Entries of other hashes are tested too.
  template <class Matches>
  const Entry* find(std::uint64_t hash, const Matches& matches) const {
    if (count_ == 0) return nullptr;
    for (std::size_t slot = home(hash); !slots_[slot].isEmpty(); slot = next(slot)) {
      if (matches(slots_[slot])) return &slots_[slot];
    }
    return nullptr;
  }
  template <class Matches>
  Entry* find(std::uint64_t hash, const Matches& matches) {
    return const_cast<Entry*>(std::as_const(*this).find(hash, matches));
  }

  // Makes room for `entries` entries in all, so that adding them does not resize the table
  // repeatedly.
  void reserve(std::size_t entries) {
    std::size_t room = FewestSlots;
    while (4 * entries > 3 * room) room *= 2;
    if (room > slots_.size()) resize(room);
  }

  // Adds an entry that is not empty, after those of the same hash. Returns its slot.
  Entry* add(const Entry& entry) {
    if (4 * (count_ + 1) > 3 * slots_.size()) {
      resize(slots_.empty() ? FewestSlots : 2 * slots_.size());
    }
    ++count_;
    return insert(entry);
  }

  // Removes an entry of this table. Entries whose probe sequence passes its slot move back.
  void remove(Entry* entry) {
    std::size_t hole = static_cast<std::size_t>(entry - slots_.data());
    for (std::size_t slot = next(hole); !slots_[slot].isEmpty(); slot = next(slot)) {
      const std::size_t distance = (slot - home(slots_[slot].hash())) & (slots_.size() - 1);
      if (distance < ((slot - hole) & (slots_.size() - 1))) continue;
      slots_[hole] = slots_[slot];
      hole = slot;
    }
    slots_[hole] = Entry();
    --count_;
  }

  // Removes all entries. A small table keeps its memory, so that filling and clearing it repeatedly
  // does not allocate.
  void clear() {
    if (count_ == 0) return;
    count_ = 0;
    if (slots_.size() > MostSlotsKept) {
      Slots().swap(slots_);
    } else {
      slots_.assign(slots_.size(), Entry());
    }
  }

  // Calls `use(entry)` for every entry, in no particular order.
  template <class Use>
  void forEach(const Use& use) const {
    for (const Entry& entry : slots_) {
      if (!entry.isEmpty()) use(entry);
    }
  }

 private:
  using Slots = std::vector<Entry, YAllocator<Entry>>;
  static constexpr std::size_t FewestSlots = 8;
  static constexpr std::size_t MostSlotsKept = 64;

  Slots slots_;  // empty, or a power of two
  std::size_t count_ = 0;
  int homeShift_ = 64;  // 64 - log2 of the number of slots

  // The home slot: the upper bits of the product depend on all bits of the hash.
  std::size_t home(std::uint64_t hash) const {
    return static_cast<std::size_t>((hash * std::uint64_t{0x9E3779B97F4A7C15U}) >> homeShift_);
  }
  std::size_t next(std::size_t slot) const { return (slot + 1) & (slots_.size() - 1); }

  Entry* insert(const Entry& entry) {
    std::size_t slot = home(entry.hash());
    while (!slots_[slot].isEmpty()) slot = next(slot);
    slots_[slot] = entry;
    return &slots_[slot];
  }

  // Entries are inserted again from the first empty slot on, so that those of the same hash keep
  // their order.
  void resize(std::size_t room) {
    const Slots old = std::exchange(slots_, Slots(room));
    homeShift_ = 64;
    for (std::size_t n = room; n > 1; n /= 2) --homeShift_;
    std::size_t first = 0;
    while (first < old.size() && !old[first].isEmpty()) ++first;
    for (std::size_t i = 0; i < old.size(); ++i) {
      const Entry& entry = old[(first + i) & (old.size() - 1)];
      if (!entry.isEmpty()) insert(entry);
    }
  }
};

#endif  // PLATFORM_CONTAINERS_YHASHTABLE_H_
