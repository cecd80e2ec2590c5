#include "syntax/YcluiIdIndex.h"

#include <algorithm>
#include <utility>

#include "syntax/YcluiSyntaxNode.h"

namespace {

constexpr std::size_t FewestRows = 16;
constexpr int FewestRowsShift = 64 - 4;
constexpr std::uint64_t Spreading = 0x9E3779B97F4A7C15U;
constexpr std::int32_t MostEntries = (1 << 28) - 1;  // what a row can tell; they fill 4 GB

}  // namespace

void YcluiIdIndex::add(YcluiSyntaxNode* node) {
  if (2 * used_ >= rows_.size()) grow();
  if (!hasHome(node->tokenId)) spread();
  YcluiNodeRow& row = rows_[placeOf(node->tokenId)];
  if (row.node == nullptr) {
    ++used_;
    row.id = node->tokenId;
    row.node = node;
    return;
  }
  const auto added = static_cast<std::int32_t>(entries_.size()) & MostEntries;
  entries_.push_back({node, YcluiNodeRow::None, added});
  if (row.next == YcluiNodeRow::None) {
    row.next = added;
    return;
  }
  Entry& first = entryAt(row.next);
  entryAt(first.last).next = added;
  first.last = added;
}

void YcluiIdIndex::clear() {
  rows_.clear();
  entries_.clear();
  used_ = 0;
}

YcluiNodeRow* YcluiIdIndex::find(unsigned long id) {
  if (rows_.empty()) return nullptr;
  YcluiNodeRow& row = rows_[placeOf(id)];
  return row.node == nullptr ? nullptr : &row;
}

void YcluiIdIndex::pushOthers(const YcluiNodeRow& row, YcluiSyntaxNodeStk& nodes) const {
  for (std::int32_t i = row.next; i != YcluiNodeRow::None; i = entryAt(i).next)
    nodes.push(entryAt(i).node);
}

// The place of the row, or that at which it would be added.
std::size_t YcluiIdIndex::placeOf(unsigned long id) const {
  std::size_t place = ((std::uint64_t{id} - first_) * factor_) >> homeShift_;
  while (rows_[place].node != nullptr && rows_[place].id != id) {
    place = (place + 1) & (rows_.size() - 1);
  }
  return place;
}

// Side by side every id within reach has a home of its own, and any other would run into these.
bool YcluiIdIndex::hasHome(std::uint64_t id) const {
  return factor_ == Spreading || id - first_ < rows_.size();
}

void YcluiIdIndex::grow() {
  homeShift_ = rows_.empty() ? FewestRowsShift : homeShift_ - 1;
  const Rows old = std::exchange(rows_, Rows(rows_.empty() ? FewestRows : 2 * rows_.size()));
  std::uint64_t lowest = ~std::uint64_t{0};
  std::uint64_t highest = 0;
  for (const YcluiNodeRow& row : old) {
    if (row.node == nullptr) continue;
    lowest = std::min<std::uint64_t>(lowest, row.id);
    highest = std::max<std::uint64_t>(highest, row.id);
  }
  const std::uint64_t span = highest - lowest;
  if (used_ > 0 && span < rows_.size()) {
    // In the middle, since more may come on either side.
    placeSideBySide(lowest - (rows_.size() - span) / 2);
  } else {
    placeSpread();
  }
  take(old);
}

void YcluiIdIndex::spread() {
  const Rows old = std::exchange(rows_, Rows(rows_.size()));
  placeSpread();
  take(old);
}

void YcluiIdIndex::placeSideBySide(std::uint64_t first) {
  first_ = first;
  factor_ = std::uint64_t{1} << homeShift_;
}

void YcluiIdIndex::placeSpread() {
  first_ = 0;
  factor_ = Spreading;
}

void YcluiIdIndex::take(const Rows& rows) {
  for (const YcluiNodeRow& row : rows) {
    if (row.node != nullptr) rows_[placeOf(row.id)] = row;
  }
}
