// An index from keys to lists of keywords. Internal to the word table.

#ifndef LEX_YCLUIWORDINDEX_H_
#define LEX_YCLUIWORDINDEX_H_

#include <cstdint>
#include <functional>
#include <set>
#include <vector>

#include "foundation/YMemory.h"
#include "lex/YcluiKeyword.h"
#include "platform/containers/YHashTable.h"

// Each key has a list of words in two parts, each sorted by number. The first word of a list is in
// a hash table; the others, which few lists have, are in a tree. All operations take constant time,
// or logarithmic time in the length of the list when it has several words.
//
// An entry holds the number of a word instead of a pointer to its record, which keeps entries
// small: an index has an entry for each text by which a word is found.
class YcluiWordIndex {
 public:
  using Records = std::vector<YcluiKeyword*, YAllocator<YcluiKeyword*>>;  // by number
  enum class Part : std::uint8_t { First, Second };

  // Adds a word to a part of the list of `key`. Numbers start at 1. A key has 31 bits.
  void add(std::uint32_t key, Part part, std::uint32_t number);
  // Removes a word that is in that part of the list.
  void remove(std::uint32_t key, Part part, std::uint32_t number);
  void clear();
  // The first word of the list for which `accepts` is true, or null.
  template <class Accepts>
  YcluiKeyword* first(std::uint32_t key, const Records& records, const Accepts& accepts) const {
    const Word* word = find(key);
    if (word == nullptr) return nullptr;
    YcluiKeyword* record = records[word->number];
    return accepts(*record) ? record : firstOfOthers(key, records, accepts);
  }

 private:
  struct Word {
    std::uint32_t rank = 0;    // key * 2 + part: sorts the parts of a list
    std::uint32_t number = 0;  // 0 in an empty entry
    bool isEmpty() const { return number == 0; }
    std::uint64_t hash() const { return rank >> 1; }
    bool operator<(const Word& other) const {
      return rank != other.rank ? rank < other.rank : number < other.number;
    }
    bool operator==(const Word&) const = default;
  };

  YHashTable<Word> firsts;
  // A multiset, because two texts of one word may have the same key.
  std::multiset<Word, std::less<Word>, YAllocator<Word>> others;

  static std::uint32_t Rank(std::uint32_t key, Part part) {
    return key << 1 | static_cast<std::uint32_t>(part);
  }
  const Word* find(std::uint32_t key) const {
    return firsts.find(key, [key](const Word& word) { return word.hash() == key; });
  }
  Word* find(std::uint32_t key) {
    return firsts.find(key, [key](const Word& word) { return word.hash() == key; });
  }
  template <class Accepts>
  YcluiKeyword* firstOfOthers(std::uint32_t key, const Records& records,
                              const Accepts& accepts) const {
    auto i = others.lower_bound({Rank(key, Part::First), 0});
    for (; i != others.end() && i->hash() == key; ++i) {
      if (accepts(*records[i->number])) return records[i->number];
    }
    return nullptr;
  }
};

#endif  // LEX_YCLUIWORDINDEX_H_
