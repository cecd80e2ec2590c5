#include "syntax/YcluiIdIndex.h"

#include <algorithm>
#include <utility>

#include "syntax/YcluiSyntaxNode.h"

namespace {

constexpr std::size_t FewestRows = 16;
constexpr int FewestRowsShift = 64 - 4;
constexpr std::uint64_t Spreading = 0x9E3779B97F4A7C15U;
static_assert(sizeof(YcluiNodeRow) == 16);
constexpr std::int32_t MostEntries = (1 << 27) - 1;  // what a row can tell; they fill 2 GB

}  // namespace

void YcluiIdIndex::add(YcluiSyntaxNode* node) {
  if (2 * used_ >= rows_.size()) grow();
  if (!reaches(node->tokenId)) spread();
  YcluiNodeRow& row = rows_[placeOf(node->tokenId)];
  if (row.node == nullptr) {
    ++used_;
    row.node = node;
    return;
  }
  const auto added = static_cast<std::int32_t>(entries_.size()) & MostEntries;
  entries_.push_back({node, YcluiNodeRow::None, added});
  if (row.others == YcluiNodeRow::None) {
    row.others = added;
    return;
  }
  Entry& second = entryAt(row.others);
  entryAt(second.last).next = added;
  second.last = added;
}

void YcluiIdIndex::clear() {
  rows_.clear();
  entries_.clear();
  used_ = 0;
}

YcluiNodeRow* YcluiIdIndex::find(unsigned long id) {
  if (rows_.empty() || !reaches(id)) return nullptr;
  YcluiNodeRow& row = rows_[placeOf(id)];
  return row.node == nullptr ? nullptr : &row;
}

void YcluiIdIndex::pushOthers(const YcluiNodeRow& row, YcluiSyntaxNodeStk& nodes) const {
  for (std::int32_t i = row.others; i != YcluiNodeRow::None; i = entryAt(i).next)
    nodes.push(entryAt(i).node);
}

bool YcluiIdIndex::reaches(std::uint64_t id) const {
  return !isSideBySide_ || id - first_ < rows_.size();
}

// The place of the row, or that at which it would be added.
std::size_t YcluiIdIndex::placeOf(std::uint64_t id) const {
  if (isSideBySide_) return id - first_;
  std::size_t place = (id * Spreading) >> homeShift_;
  while (rows_[place].node != nullptr && rows_[place].node->tokenId != id) {
    place = (place + 1) & (rows_.size() - 1);
  }
  return place;
}

void YcluiIdIndex::grow() {
  homeShift_ = rows_.empty() ? FewestRowsShift : homeShift_ - 1;
  const Rows old = std::exchange(rows_, Rows(rows_.empty() ? FewestRows : 2 * rows_.size()));
  std::uint64_t lowest = ~std::uint64_t{0};
  std::uint64_t highest = 0;
  for (const YcluiNodeRow& row : old) {
    if (row.node == nullptr) continue;
    lowest = std::min<std::uint64_t>(lowest, row.node->tokenId);
    highest = std::max<std::uint64_t>(highest, row.node->tokenId);
  }
  const std::uint64_t span = highest - lowest;
  isSideBySide_ = used_ > 0 && span < rows_.size();
  // In the middle, since more may come on either side.
  if (isSideBySide_) first_ = lowest - (rows_.size() - span) / 2;
  take(old);
}

void YcluiIdIndex::spread() {
  const Rows old = std::exchange(rows_, Rows(rows_.size()));
  isSideBySide_ = false;
  take(old);
}

void YcluiIdIndex::take(const Rows& rows) {
  for (const YcluiNodeRow& row : rows) {
    if (row.node != nullptr) rows_[placeOf(row.node->tokenId)] = row;
  }
}
