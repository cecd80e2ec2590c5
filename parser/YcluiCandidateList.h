// Words that could come at one place of the syntax.

#ifndef PARSER_YCLUICANDIDATELIST_H_
#define PARSER_YCLUICANDIDATELIST_H_

#include <cstdint>
#include <string_view>
#include <vector>

#include "foundation/YMemory.h"

// Keeps words in the order in which they were added and, once that is worth it, in the order of the
// alphabet as well, so that a prefix costs the words that begin with it.
class YcluiCandidateList {
 public:
  // Words of the dictionary, null for a node without one.
  using Words = std::vector<const char*, YAllocator<const char*>>;

  void clear();
  void add(const char* word) { words_.push_back(word); }
  std::size_t size() const { return words_.size(); }

  // From here on a prefix is sought in the order of the alphabet, which the first one has made.
  // Nothing is added behind that.
  void seekInOrder() { seeksInOrder_ = true; }

  // Appends those that begin with the prefix, in the order of their adding; all that are not null
  // when it is empty.
  void find(std::string_view prefix, Words& found);
  // Appends all of them, null ones too.
  void all(Words& found) const { found.insert(found.end(), words_.begin(), words_.end()); }

 private:
  struct Sorted {
    const char* word;
    std::size_t index;
    bool operator<(const Sorted& other) const;
  };
  using Mark = std::uint64_t;
  static constexpr std::size_t MarksInOne = 64;

  Words words_;
  bool seeksInOrder_ = false;
  std::vector<Sorted, YAllocator<Sorted>> sorted_;  // empty until the first is sought
  std::vector<Mark, YAllocator<Mark>> marks_;       // of the words found

  void sort();
  void findSorted(std::string_view prefix, Words& found);
  void takeMarked(Words& found);
};

#endif  // PARSER_YCLUICANDIDATELIST_H_
