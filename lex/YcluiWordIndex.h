// An index of words by a number made from what they are found under. Internal to the word table.

#ifndef LEX_YCLUIWORDINDEX_H_
#define LEX_YCLUIWORDINDEX_H_

#include <cstdint>
#include <functional>
#include <set>
#include <vector>

#include "foundation/YMemory.h"
#include "lex/YcluiKeyword.h"
#include "platform/containers/YHashTable.h"

// Under each key is a list of words: those in front, then those behind, both in the order of their
// numbers. The first of a list is in a hash table; the others, which few lists have, are in a tree.
// All operations take constant time; in a long list, the logarithm of its length.
//
// A word is kept as its number, by which the owner of the index finds the record: an index has a
// row for each text that a word is found under.
class YcluiWordIndex {
 public:
  using Records = std::vector<YcluiKeyword*, YAllocator<YcluiKeyword*>>;  // by number
  enum class Part : std::uint8_t { Front, Behind };

  // Words come in the order of their numbers, from 1 on. A key has 31 bits.
  void add(std::uint32_t key, Part part, std::uint32_t number);
  // Removes a word that is in that part of the list.
  void remove(std::uint32_t key, Part part, std::uint32_t number);
  void clear();
  // The first word of the list that `accepts`, or null.
  template <class Accepts>
  YcluiKeyword* first(std::uint32_t key, const Records& records, const Accepts& accepts) const {
    const Word* row = find(key);
    if (row == nullptr) return nullptr;
    YcluiKeyword* record = records[row->number];
    return accepts(*record) ? record : firstOfOthers(key, records, accepts);
  }

 private:
  struct Word {
    std::uint32_t place = 0;   // key and part in one number, by which those in front come first
    std::uint32_t number = 0;  // 0 in an empty row
    bool isEmpty() const { return number == 0; }
    std::uint64_t hash() const { return place >> 1; }
    bool operator<(const Word& other) const {
      return place != other.place ? place < other.place : number < other.number;
    }
    bool operator==(const Word&) const = default;
  };

  YHashTable<Word> firsts;
  // A word with two texts of one key is there twice.
  std::multiset<Word, std::less<Word>, YAllocator<Word>> others;

  static std::uint32_t Place(std::uint32_t key, Part part) {
    return key << 1 | static_cast<std::uint32_t>(part);
  }
  const Word* find(std::uint32_t key) const {
    return firsts.find(key, [key](const Word& row) { return row.hash() == key; });
  }
  Word* find(std::uint32_t key) {
    return firsts.find(key, [key](const Word& row) { return row.hash() == key; });
  }
  template <class Accepts>
  YcluiKeyword* firstOfOthers(std::uint32_t key, const Records& records,
                              const Accepts& accepts) const {
    auto i = others.lower_bound({Place(key, Part::Front), 0});
    for (; i != others.end() && i->hash() == key; ++i) {
      if (accepts(*records[i->number])) return records[i->number];
    }
    return nullptr;
  }
};

#endif  // LEX_YCLUIWORDINDEX_H_
