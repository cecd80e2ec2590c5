#include "parser/YcluiCandidates.h"

#include <algorithm>
#include <cstring>

#include "platform/containers/YHashTable.h"

namespace {

using Words = YcluiCandidates::Words;

// Up to this length a list is made as fast as it is found in the cache.
constexpr int FewWords = 32;

// Compares like std::strcmp, but only as many bytes of the word as the prefix has.
int CompareBeginning(const char* word, std::string_view prefix) {
  return std::strncmp(word, prefix.data(), prefix.size());
}

void AddMatching(const char* word, std::string_view prefix, Words& found) {
  if (word != nullptr && CompareBeginning(word, prefix) == 0) found.push_back(word);
}

struct Id {
  std::uint32_t id = 0;
  bool isEmpty() const { return id == 0; }
  std::uint64_t hash() const { return id; }
};

// Removes all nodes of an id when the last of them begins a command that may not interrupt.
void KeepAdmitted(const YcluiSyntaxNode& interrupted, YcluiSyntaxNodeP_Array& nodes) {
  YHashTable<Id> seen;
  YHashTable<Id> barred;
  const auto contains = [](const YHashTable<Id>& ids, std::uint32_t id) {
    return ids.find(id, [id](const Id& entry) { return entry.id == id; }) != nullptr;
  };
  for (int i = nodes.size() - 1; i >= 0; --i) {
    const YcluiSyntaxNode& node = *nodes.at(i);
    if (contains(seen, node.tokenId)) continue;
    seen.add({node.tokenId});
    if (interrupted.admitsInterruptBy(node) == 0) barred.add({node.tokenId});
  }
  int kept = 0;
  for (int i = 0; i < nodes.size(); ++i) {
    if (!contains(barred, nodes.at(i)->tokenId)) nodes[kept++] = nodes.at(i);
  }
  nodes.resize(kept);
}

}  // namespace

bool YcluiCandidates::Sorted::operator<(const Sorted& other) const {
  return std::strcmp(word, other.word) < 0;
}

bool YcluiCandidates::find(const YcluiNfa& walker, const YcluiLex& lexer, std::string_view prefix,
                           Words& found) {
  found.clear();
  if (walker.isTerminated() != 0) return false;
  const Key key{walker.place(), walker.generation(), lexer.wordChanges()};
  if (key.place != nullptr && key == key_) {
    findCached(prefix, found);
    return true;
  }
  YcluiSyntaxNodeP_Array nodes;
  if ((walker.*nodes_)(nodes) == 0) return false;
  const bool isCached = key.place != nullptr && nodes.size() > FewWords;
  if (isCached) {
    key_ = key;
    words_.clear();
    sorted_.clear();
  }
  for (int i = 0; i < nodes.size(); ++i) {
    const char* word = lexer.keyword(nodes.at(i)->tokenId);
    if (isCached) words_.push_back(word);
    prefix.empty() ? found.push_back(word) : AddMatching(word, prefix, found);
  }
  return true;
}

void YcluiCandidates::findAdmitted(const YcluiNfa& walker, const YcluiSyntaxNode* interrupted,
                                   const YcluiLex& lexer, std::string_view prefix, Words& found) {
  if (interrupted == nullptr) {
    find(walker, lexer, prefix, found);
    std::erase(found, nullptr);
    return;
  }
  found.clear();
  YcluiSyntaxNodeP_Array nodes;
  if ((walker.*nodes_)(nodes) != 0) KeepAdmitted(*interrupted, nodes);
  for (int i = 0; i < nodes.size(); ++i) {
    AddMatching(lexer.keyword(nodes.at(i)->tokenId), prefix, found);
  }
}

void YcluiCandidates::AddSuccessors(const YcluiSyntaxNode& root, const YcluiLex& lexer,
                                    std::string_view prefix, Words& found) {
  for (YcluiSuccessorIterator i(root); i.ring != nullptr; ++i) {
    AddMatching(lexer.keyword(i.node()->tokenId), prefix, found);
  }
}

void YcluiCandidates::findCached(std::string_view prefix, Words& found) {
  if (prefix.empty()) {
    found = words_;
    return;
  }
  if (sorted_.empty()) sort();
  const auto first = std::partition_point(
      sorted_.begin(), sorted_.end(),
      [prefix](const Sorted& sorted) { return CompareBeginning(sorted.word, prefix) < 0; });
  const auto end = std::partition_point(first, sorted_.end(), [prefix](const Sorted& sorted) {
    return CompareBeginning(sorted.word, prefix) == 0;
  });
  // Comparing every word is faster than sorting many indexes.
  if (static_cast<std::size_t>(end - first) > words_.size() / 16) {
    for (const char* word : words_) AddMatching(word, prefix, found);
    return;
  }
  indexes_.clear();
  for (auto i = first; i != end; ++i) indexes_.push_back(i->index);
  std::sort(indexes_.begin(), indexes_.end());
  for (const std::size_t index : indexes_) found.push_back(words_[index]);
}

void YcluiCandidates::sort() {
  for (std::size_t i = 0; i < words_.size(); ++i) {
    if (words_[i] != nullptr) sorted_.push_back({words_[i], i});
  }
  std::sort(sorted_.begin(), sorted_.end());
}
