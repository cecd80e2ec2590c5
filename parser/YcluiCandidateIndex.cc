#include "parser/YcluiCandidateIndex.h"

#include <algorithm>
#include <cstring>

namespace {

bool IsSameName(const YcluiCandidate& a, const YcluiCandidate& b) {
  return a.name == b.name || std::strcmp(a.name, b.name) == 0;
}

bool IsNameBefore(const YcluiCandidate& a, const YcluiCandidate& b) {
  const int difference = std::strcmp(a.name, b.name);
  return difference != 0 ? difference < 0 : a.kind < b.kind;
}

bool IsKindBefore(const YcluiCandidate& a, const YcluiCandidate& b) {
  return a.kind < b.kind;
}

}  // namespace

void YcluiCandidateIndex::clear() {
  all_.clear();
  selectNone();
}

void YcluiCandidateIndex::sort() {
  std::sort(all_.begin(), all_.end(), IsNameBefore);
  all_.erase(std::unique(all_.begin(), all_.end(), IsSameName), all_.end());
  std::stable_sort(all_.begin(), all_.end(), IsKindBefore);
  std::size_t end = 0;
  for (std::size_t kind = 0; kind < Kinds; ++kind) {
    kinds_[kind].begin = end;
    while (end < all_.size() && all_[end].kind == kind) ++end;
    kinds_[kind].end = end;
  }
}

void YcluiCandidateIndex::select(std::string_view prefix) {
  const auto compare = [prefix](const YcluiCandidate& candidate) {
    return std::strncmp(candidate.name, prefix.data(), prefix.size());
  };
  for (std::size_t kind = 0; kind < Kinds; ++kind) {
    const auto begin = all_.begin() + static_cast<std::ptrdiff_t>(kinds_[kind].begin);
    const auto end = all_.begin() + static_cast<std::ptrdiff_t>(kinds_[kind].end);
    const auto first = std::partition_point(
        begin, end, [&compare](const YcluiCandidate& candidate) { return compare(candidate) < 0; });
    const auto last = std::partition_point(first, end, [&compare](const YcluiCandidate& candidate) {
      return compare(candidate) == 0;
    });
    selected_[kind] = {static_cast<std::size_t>(first - all_.begin()),
                       static_cast<std::size_t>(last - all_.begin())};
  }
}

std::size_t YcluiCandidateIndex::count() const {
  std::size_t count = 0;
  for (const Range& range : selected_) count += range.end - range.begin;
  return count;
}

const YcluiCandidate& YcluiCandidateIndex::at(std::size_t index) const {
  std::size_t kind = 0;
  for (; index >= selected_[kind].end - selected_[kind].begin; ++kind) {
    index -= selected_[kind].end - selected_[kind].begin;
  }
  return all_[selected_[kind].begin + index];
}
