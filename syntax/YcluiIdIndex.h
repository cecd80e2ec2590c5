// Nodes by the token ids that they accept. Internal to the walker.

#ifndef SYNTAX_YCLUIIDINDEX_H_
#define SYNTAX_YCLUIIDINDEX_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "foundation/YMemory.h"
#include "syntax/YcluiSyntaxNodeStk.h"

// The nodes that accept one token, in the order of their adding: the first of them and where the
// others stand. Four of these fill a line of memory.
struct YcluiNodeRow {
  static constexpr std::int32_t None = -1;
  // Of a node that may follow: how far from the first one it lies, in lines of memory, and the ways
  // behind it.
  struct Ahead {
    std::int16_t lines : 14 = 0;
    std::uint16_t ends : 2 = 0;
  };

  YcluiSyntaxNode* node = nullptr;  // null in an empty place
  std::int32_t others : 28 = None;  // entry of the second one
  // For the walker, when it knows.
  std::int32_t ends : 3 = None;  // 0 to 2
  bool isSilent : 1 = false;     // whether the node has no action
  Ahead ahead[2];                // the pair that is remembered behind the node
};

// Under each id stands a row of nodes in the order of their adding. Adding and finding take
// constant time. Ids that lie close together, as those of words that were declared together do,
// have their rows side by side, so that little memory is read for them; others are spread.
class YcluiIdIndex {
 public:
  void add(YcluiSyntaxNode* node);
  void clear();

  // The row of the id, or null; good until something is added.
  YcluiNodeRow* find(unsigned long id);
  // Pushes the nodes of the row behind the first one, in their order. Most rows have none.
  void pushOthers(const YcluiNodeRow& row, YcluiSyntaxNodeStk& nodes) const;

 private:
  struct Entry {
    YcluiSyntaxNode* node;
    std::int32_t next;
    std::int32_t last;  // of the row; in the first of its entries
  };

  using Rows = std::vector<YcluiNodeRow, YAllocator<YcluiNodeRow>>;

  Rows rows_;  // a power of two of them, half of them in use at most
  // Side by side, each place belongs to one id, from the first on. Spread, an id stands at the
  // first free place from its home on, which the upper bits of a product give.
  bool isSideBySide_ = false;
  std::uint64_t first_ = 0;
  int homeShift_ = 0;  // 64 less that power
  std::size_t used_ = 0;
  std::vector<Entry, YAllocator<Entry>> entries_;  // what stands second and behind in its row

  Entry& entryAt(std::int32_t i) { return entries_[static_cast<std::size_t>(i)]; }
  const Entry& entryAt(std::int32_t i) const { return entries_[static_cast<std::size_t>(i)]; }
  bool reaches(std::uint64_t id) const;
  std::size_t placeOf(std::uint64_t id) const;
  void grow();
  void spread();
  void take(const Rows& rows);
};

#endif  // SYNTAX_YCLUIIDINDEX_H_
