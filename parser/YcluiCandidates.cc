#include "parser/YcluiCandidates.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace {

// As std::strcmp compares, with no more of the word than the prefix is long.
int CompareBeginning(const char* word, std::string_view prefix) {
  return std::strncmp(word, prefix.data(), prefix.size());
}

}  // namespace

bool YcluiCandidates::Sorted::operator<(const Sorted& other) const {
  return std::strcmp(word, other.word) < 0;
}

void YcluiCandidates::read(const YcluiNfa& walker, const YcluiSyntaxNode& root,
                           const YcluiLex& lexer) {
  const Place place{walker.place(), walker.isTerminated(), YcluiSyntaxNode::Changes(),
                    lexer.wordChanges(), root.last()};
  isAskedAgain_ = place.node != nullptr && place == kept_;
  if (isAskedAgain_) return;
  kept_ = place;
  sorted_.clear();
  words_.clear();
  YcluiSyntaxNodeP_Array nodes;
  areListed_ = walker.possibleNodes(nodes) != 0;
  for (int i = 0; i < nodes.size(); ++i) words_.push_back(lexer.keyword(nodes.at(i)->tokenId));
  listed_ = words_.size();
  for (YcluiSuccessorIterator i(root); i.ring != nullptr; ++i) {
    words_.push_back(lexer.keyword(i.node()->tokenId));
  }
}

void YcluiCandidates::find(std::string_view prefix, Words& found) {
  if (prefix.empty()) {
    found.assign(words_.begin(), words_.begin() + static_cast<std::ptrdiff_t>(listed_));
  } else {
    findAmong(listed_, prefix, found);
  }
}

void YcluiCandidates::findAll(std::string_view prefix, Words& found) {
  findAmong(words_.size(), prefix, found);
}

// Among so many of the first.
void YcluiCandidates::findAmong(std::size_t count, std::string_view prefix, Words& found) {
  found.clear();
  if (!isAskedAgain_ || prefix.empty()) {
    for (std::size_t i = 0; i < count; ++i) {
      const char* word = words_[i];
      if (word != nullptr && CompareBeginning(word, prefix) == 0) found.push_back(word);
    }
    return;
  }
  if (sorted_.empty()) sort();
  const auto first = std::partition_point(
      sorted_.begin(), sorted_.end(),
      [prefix](const Sorted& sorted) { return CompareBeginning(sorted.word, prefix) < 0; });
  const auto behind = std::partition_point(first, sorted_.end(), [prefix](const Sorted& sorted) {
    return CompareBeginning(sorted.word, prefix) == 0;
  });
  marks_.assign(count / MarksInOne + 1, 0);
  for (auto i = first; i != behind; ++i) {
    if (i->index < count) marks_[i->index / MarksInOne] |= Mark{1} << i->index % MarksInOne;
  }
  takeMarked(found);
}

// A row of marks puts the words back into their own order faster than sorting would.
void YcluiCandidates::takeMarked(Words& found) {
  for (std::size_t i = 0; i < marks_.size(); ++i) {
    for (Mark marks = marks_[i]; marks != 0; marks &= marks - 1) {
      found.push_back(words_[i * MarksInOne + static_cast<std::size_t>(std::countr_zero(marks))]);
    }
  }
}

void YcluiCandidates::sort() {
  sorted_.reserve(words_.size());
  for (std::size_t i = 0; i < words_.size(); ++i) {
    if (words_[i] != nullptr) sorted_.push_back({words_[i], i});
  }
  std::sort(sorted_.begin(), sorted_.end());
}
