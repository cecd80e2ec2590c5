// The one hash table of the system: open addressing, linear probing, backward-shift deletion.

#ifndef PLATFORM_CONTAINERS_YHASHTABLE_H_
#define PLATFORM_CONTAINERS_YHASHTABLE_H_

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "foundation/YMemory.h"

// A table of small rows. `Row` is a plain value with
//   Row()                        an empty row
//   bool isEmpty() const
//   std::uint64_t hash() const   of a row that is not empty
// The hash need not be well spread: the table multiplies it. Two rows may have the same hash, and
// the caller decides by its own test which of them it wants.
//
// A row stays where it is until the table changes. All operations take constant time on average;
// removing does not make later searches slower. A table without rows owns no memory. Memory that
// cannot be had ends the process (YMemory.h).
template <class Row>
class YHashTable {
 public:
  std::size_t count() const { return count_; }
  std::size_t capacity() const { return slots_.size(); }

  // The first row of that hash for which `matches(row)` is true, or null.
  template <class Matches>
  const Row* find(std::uint64_t hash, const Matches& matches) const {
    if (count_ == 0) return nullptr;
    for (std::size_t slot = home(hash); !slots_[slot].isEmpty(); slot = next(slot)) {
      if (matches(slots_[slot])) return &slots_[slot];
    }
    return nullptr;
  }
  template <class Matches>
  Row* find(std::uint64_t hash, const Matches& matches) {
    return const_cast<Row*>(std::as_const(*this).find(hash, matches));
  }

  // Makes room for so many rows in all, so that adding them does not grow the table step by step.
  void reserve(std::size_t rows) {
    std::size_t room = FewestSlots;
    while (4 * rows > 3 * room) room *= 2;
    if (room > slots_.size()) resize(room);
  }

  // Adds a row that is not empty, after those of the same hash; returns its place.
  Row* add(const Row& row) {
    if (4 * (count_ + 1) > 3 * slots_.size()) {
      resize(slots_.empty() ? FewestSlots : 2 * slots_.size());
    }
    ++count_;
    return place(row);
  }

  // Removes a row of this table. The rows whose probe sequence passes its slot move up.
  void remove(Row* row) {
    std::size_t hole = static_cast<std::size_t>(row - slots_.data());
    for (std::size_t slot = next(hole); !slots_[slot].isEmpty(); slot = next(slot)) {
      const std::size_t distance = (slot - home(slots_[slot].hash())) & (slots_.size() - 1);
      if (distance < ((slot - hole) & (slots_.size() - 1))) continue;
      slots_[hole] = slots_[slot];
      hole = slot;
    }
    slots_[hole] = Row();
    --count_;
  }

  // Removes all rows. A small table keeps its memory, so that one that is filled and cleared again
  // and again does not allocate.
  void clear() {
    if (count_ == 0) return;
    count_ = 0;
    if (slots_.size() > MostSlotsKept) {
      Slots().swap(slots_);
    } else {
      slots_.assign(slots_.size(), Row());
    }
  }

  // Calls `use(row)` for every row, in no particular order.
  template <class Use>
  void forEach(const Use& use) const {
    for (const Row& row : slots_) {
      if (!row.isEmpty()) use(row);
    }
  }

 private:
  using Slots = std::vector<Row, YAllocator<Row>>;
  static constexpr std::size_t FewestSlots = 8;
  static constexpr std::size_t MostSlotsKept = 64;

  Slots slots_;  // none, or a power of two of them
  std::size_t count_ = 0;
  int homeShift_ = 64;  // 64 less the exponent of that power

  // The home slot: the upper bits of the product depend on all bits of the hash.
  std::size_t home(std::uint64_t hash) const {
    return static_cast<std::size_t>((hash * std::uint64_t{0x9E3779B97F4A7C15U}) >> homeShift_);
  }
  std::size_t next(std::size_t slot) const { return (slot + 1) & (slots_.size() - 1); }

  Row* place(const Row& row) {
    std::size_t slot = home(row.hash());
    while (!slots_[slot].isEmpty()) slot = next(slot);
    slots_[slot] = row;
    return &slots_[slot];
  }

  // Rows are placed again from an empty slot on, so that those of the same hash keep their order.
  void resize(std::size_t room) {
    const Slots old = std::exchange(slots_, Slots(room));
    homeShift_ = 64;
    for (std::size_t n = room; n > 1; n /= 2) --homeShift_;
    std::size_t first = 0;
    while (first < old.size() && !old[first].isEmpty()) ++first;
    for (std::size_t i = 0; i < old.size(); ++i) {
      const Row& row = old[(first + i) & (old.size() - 1)];
      if (!row.isEmpty()) place(row);
    }
  }
};

#endif  // PLATFORM_CONTAINERS_YHASHTABLE_H_
