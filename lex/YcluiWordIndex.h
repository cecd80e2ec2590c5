// An index of words: rows of records under hash values. Internal to the word table.

#ifndef LEX_YCLUIWORDINDEX_H_
#define LEX_YCLUIWORDINDEX_H_

#include <cstddef>
#include <functional>
#include <unordered_map>
#include <utility>

#include "foundation/YMemory.h"
#include "foundation/YTypes.h"

class YcluiKeyword;

// Under each key stands a row of links in the order of adding. Links belong to whoever adds them
// and must not move while they are in. All operations take constant time.
class YcluiWordIndex {
 public:
  struct Link {
    YcluiKeyword* record = nullptr;
    std::uint64_t key = 0;
    std::size_t length = 0;  // of the text that the key is the hash of
    Link* next = nullptr;
    Link* previous = nullptr;
  };

  void add(Link& link);
  void remove(Link& link);
  // The first link under the key, or null; `next` leads to those behind it.
  const Link* first(std::uint64_t key) const;

 private:
  struct Row {
    Link* first = nullptr;
    Link* last = nullptr;
  };
  using Rows =
      std::unordered_map<std::uint64_t, Row, std::hash<std::uint64_t>, std::equal_to<std::uint64_t>,
                         YAllocator<std::pair<const std::uint64_t, Row>>>;

  Rows rows;
};

#endif  // LEX_YCLUIWORDINDEX_H_
