// Nodes by the token ids that they accept. Internal to the walker.

#ifndef SYNTAX_YCLUIIDINDEX_H_
#define SYNTAX_YCLUIIDINDEX_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "foundation/YMemory.h"
#include "syntax/YcluiSyntaxNode.h"
#include "syntax/YcluiSyntaxNodeStk.h"

// Under each id stands a row of nodes in the order of their adding. Adding and finding take
// constant time.
class YcluiIdIndex {
 public:
  static constexpr std::int32_t None = -1;
  // Four of them fill a line of memory.
  struct Row {
    YcluiSyntaxNode* node = nullptr;  // the first one; null in an empty place
    std::uint32_t id = 0;
    std::int32_t next : 29 = None;  // entry of those behind it
    std::int32_t ends : 3 = None;   // for the walker: 0 to 2 when it knows
  };

  void add(YcluiSyntaxNode* node);
  void clear();

  // The row of the id, or null; good until something is added.
  Row* find(unsigned long id);
  // Pushes the nodes of the row behind the first one, in their order. Most rows have none.
  void pushOthers(const Row& row, YcluiSyntaxNodeStk& nodes) const;

 private:
  struct Entry {
    YcluiSyntaxNode* node;
    std::int32_t next;
    std::int32_t last;  // of the row; in the first of its entries
  };

  std::vector<Row, YAllocator<Row>> rows_;  // a power of two of them, half of them in use at most
  int homeShift_ = 0;                       // 64 less that power
  std::size_t used_ = 0;
  std::vector<Entry, YAllocator<Entry>> entries_;  // what stands second and behind in its row

  Entry& entryAt(std::int32_t i) { return entries_[static_cast<std::size_t>(i)]; }
  const Entry& entryAt(std::int32_t i) const { return entries_[static_cast<std::size_t>(i)]; }
  std::size_t placeOf(unsigned long id) const;
  void grow();
};

#endif  // SYNTAX_YCLUIIDINDEX_H_
