#include "parser/YcluiCandidateList.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace {

// As std::strcmp compares, with no more of the word than the prefix is long.
int CompareBeginning(const char* word, std::string_view prefix) {
  return std::strncmp(word, prefix.data(), prefix.size());
}

}  // namespace

bool YcluiCandidateList::Sorted::operator<(const Sorted& other) const {
  return std::strcmp(word, other.word) < 0;
}

void YcluiCandidateList::clear() {
  words_.clear();
  seeksInOrder_ = false;
  sorted_.clear();
}

void YcluiCandidateList::sort() {
  sorted_.reserve(words_.size());
  for (std::size_t i = 0; i < words_.size(); ++i) {
    if (words_[i] != nullptr) sorted_.push_back({words_[i], i});
  }
  std::sort(sorted_.begin(), sorted_.end());
}

void YcluiCandidateList::find(std::string_view prefix, Words& found) {
  if (seeksInOrder_ && !prefix.empty()) return findSorted(prefix, found);
  for (const char* word : words_) {
    if (word != nullptr && CompareBeginning(word, prefix) == 0) found.push_back(word);
  }
}

void YcluiCandidateList::findSorted(std::string_view prefix, Words& found) {
  if (sorted_.empty()) sort();
  const auto first = std::partition_point(
      sorted_.begin(), sorted_.end(),
      [prefix](const Sorted& sorted) { return CompareBeginning(sorted.word, prefix) < 0; });
  const auto behind = std::partition_point(first, sorted_.end(), [prefix](const Sorted& sorted) {
    return CompareBeginning(sorted.word, prefix) == 0;
  });
  marks_.assign(words_.size() / MarksInOne + 1, 0);
  for (auto i = first; i != behind; ++i) {
    marks_[i->index / MarksInOne] |= Mark{1} << i->index % MarksInOne;
  }
  takeMarked(found);
}

// A row of marks puts the words back into their own order faster than sorting would.
void YcluiCandidateList::takeMarked(Words& found) {
  for (std::size_t i = 0; i < marks_.size(); ++i) {
    for (Mark marks = marks_[i]; marks != 0; marks &= marks - 1) {
      found.push_back(words_[i * MarksInOne + static_cast<std::size_t>(std::countr_zero(marks))]);
    }
  }
}
