#include "syntax/YcluiIdIndex.h"

#include <utility>

namespace {

constexpr std::size_t FewestRows = 16;
constexpr int FewestRowsShift = 64 - 4;
constexpr std::int32_t MostEntries = (1 << 28) - 1;  // what a row can tell; they fill 4 GB

}  // namespace

void YcluiIdIndex::add(YcluiSyntaxNode* node) {
  if (2 * used_ >= rows_.size()) grow();
  Row& row = rows_[placeOf(node->tokenId)];
  if (row.node == nullptr) {
    ++used_;
    row.id = node->tokenId;
    row.node = node;
    return;
  }
  const auto added = static_cast<std::int32_t>(entries_.size()) & MostEntries;
  entries_.push_back({node, None, added});
  if (row.next == None) {
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

YcluiIdIndex::Row* YcluiIdIndex::find(unsigned long id) {
  if (rows_.empty()) return nullptr;
  Row& row = rows_[placeOf(id)];
  return row.node == nullptr ? nullptr : &row;
}

void YcluiIdIndex::pushOthers(const Row& row, YcluiSyntaxNodeStk& nodes) const {
  for (std::int32_t i = row.next; i != None; i = entryAt(i).next) nodes.push(entryAt(i).node);
}

// The place of the row, or that at which it would be added.
std::size_t YcluiIdIndex::placeOf(unsigned long id) const {
  std::size_t place = (std::uint64_t{id} * 0x9E3779B97F4A7C15U) >> homeShift_;
  while (rows_[place].node != nullptr && rows_[place].id != id) {
    place = (place + 1) & (rows_.size() - 1);
  }
  return place;
}

void YcluiIdIndex::grow() {
  const std::vector<Row, YAllocator<Row>> old = std::move(rows_);
  homeShift_ = old.empty() ? FewestRowsShift : homeShift_ - 1;
  rows_ = std::vector<Row, YAllocator<Row>>(old.empty() ? FewestRows : 2 * old.size());
  for (const Row& row : old) {
    if (row.node != nullptr) rows_[placeOf(row.id)] = row;
  }
}
