// An index of words by a number made from what they are found under. Internal to the word table.

#ifndef LEX_YCLUIWORDINDEX_H_
#define LEX_YCLUIWORDINDEX_H_

#include <cstdint>
#include <functional>
#include <set>

#include "foundation/YMemory.h"
#include "lex/YcluiKeyword.h"
#include "platform/containers/YHashTable.h"

// Under each key is a list of records: those in front, then those behind, both in the order of
// their serial numbers. The first of a list is in a hash table; the others, which few lists have,
// are in a tree. All operations take constant time; in a long list, the logarithm of its length.
class YcluiWordIndex {
 public:
  enum class Part : std::uint8_t { Front, Behind };

  // A key has 31 bits. Records come in the order of their serial numbers.
  void add(std::uint32_t key, Part part, YcluiKeyword* record);
  // Removes a record that is in that part of the list.
  void remove(std::uint32_t key, Part part, YcluiKeyword* record);
  // The first record of the list that `accepts`, or null.
  template <class Accepts>
  YcluiKeyword* first(std::uint32_t key, const Accepts& accepts) const {
    const First* row = find(key);
    if (row == nullptr) return nullptr;
    return accepts(*row->record) ? row->record : firstOfOthers(key, accepts);
  }

 private:
  // Key and part in one number, by which those in front come first.
  static std::uint32_t Place(std::uint32_t key, Part part) {
    return key << 1 | static_cast<std::uint32_t>(part);
  }

  struct First {
    std::uint32_t place = 0;
    YcluiKeyword* record = nullptr;
    bool isEmpty() const { return record == nullptr; }
    std::uint64_t hash() const { return place >> 1; }
  };
  struct Other {
    std::uint32_t place;
    std::uint64_t serial;
    YcluiKeyword* record;
    bool operator<(const Other& other) const {
      return place != other.place ? place < other.place : serial < other.serial;
    }
  };

  YHashTable<First> firsts;
  // A record with two texts of one key is there twice.
  std::multiset<Other, std::less<Other>, YAllocator<Other>> others;

  const First* find(std::uint32_t key) const {
    return firsts.find(key, [key](const First& row) { return row.hash() == key; });
  }
  template <class Accepts>
  YcluiKeyword* firstOfOthers(std::uint32_t key, const Accepts& accepts) const {
    auto i = others.lower_bound({Place(key, Part::Front), 0, nullptr});
    for (; i != others.end() && i->place >> 1 == key; ++i) {
      if (accepts(*i->record)) return i->record;
    }
    return nullptr;
  }
};

#endif  // LEX_YCLUIWORDINDEX_H_
