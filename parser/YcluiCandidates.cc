#include "parser/YcluiCandidates.h"

#include <algorithm>
#include <functional>
#include <unordered_map>

YWord YcluiCandidates::find(const YcluiNfa& walker, const YcluiLex& lexer, std::string_view prefix,
                            Words& found) {
  found.clear();
  YcluiCandidateList* list = listOfWalker(walker, lexer);
  if (list == nullptr) return 0;
  prefix.empty() ? list->all(found) : list->find(prefix, found);
  return 1;
}

void YcluiCandidates::findAll(const YcluiNfa& walker, const YcluiSyntaxNode& root,
                              const YcluiSyntaxNode* interrupted, const YcluiLex& lexer,
                              std::string_view prefix, Words& found) {
  found.clear();
  YcluiCandidateList* list = interrupted == nullptr ? listOfWalker(walker, lexer)
                                                    : listOfAdmitted(walker, *interrupted, lexer);
  if (list != nullptr) list->find(prefix, found);
  listOfRoot(root, lexer).find(prefix, found);
}

void YcluiCandidates::forget() {
  for (Pool* pool : {&wide_, &narrow_}) {
    for (Kept& kept : *pool) kept.place = Place();
  }
}

// Null when the walker has nothing to list.
YcluiCandidateList* YcluiCandidates::listOfWalker(const YcluiNfa& walker, const YcluiLex& lexer) {
  const Place place{walker.place(), walker.isTerminated(), walker.generation(),
                    lexer.wordChanges()};
  if (YcluiCandidateList* list = keptFor(place)) return list;
  YcluiSyntaxNodeP_Array nodes;
  if (walker.possibleNodes(nodes) == 0) return nullptr;
  YcluiCandidateList& list = listFor(place, static_cast<std::size_t>(nodes.size()));
  for (int i = 0; i < nodes.size(); ++i) list.add(lexer.keyword(nodes.at(i)->tokenId));
  return &list;
}

YcluiCandidateList* YcluiCandidates::listOfAdmitted(const YcluiNfa& walker,
                                                    const YcluiSyntaxNode& interrupted,
                                                    const YcluiLex& lexer) {
  YcluiSyntaxNodeP_Array nodes;
  if (walker.possibleNodes(nodes) == 0) return nullptr;
  std::unordered_map<std::uint32_t, bool, std::hash<std::uint32_t>, std::equal_to<>,
                     YAllocator<std::pair<const std::uint32_t, bool>>>
      isAdmitted;
  for (int i = 0; i < nodes.size(); ++i) {
    isAdmitted[nodes.at(i)->tokenId] = interrupted.admitsInterruptBy(*nodes.at(i)) != 0;
  }
  passing_.clear();
  for (int i = 0; i < nodes.size(); ++i) {
    const std::uint32_t id = nodes.at(i)->tokenId;
    if (isAdmitted[id]) passing_.add(lexer.keyword(id));
  }
  return &passing_;
}

YcluiCandidateList& YcluiCandidates::listOfRoot(const YcluiSyntaxNode& root,
                                                const YcluiLex& lexer) {
  passing_.clear();
  for (YcluiSuccessorIterator i(root); i.ring != nullptr; ++i) {
    passing_.add(lexer.keyword(i.node()->tokenId));
  }
  return passing_;
}

// Null when it is not there.
YcluiCandidateList* YcluiCandidates::keptFor(const Place& place) {
  if (place.node == nullptr) return nullptr;
  YcluiCandidateList* list = keptIn(narrow_, place);
  return list != nullptr ? list : keptIn(wide_, place);
}

// One that is asked for again is worth its sorting.
YcluiCandidateList* YcluiCandidates::keptIn(Pool& pool, const Place& place) {
  for (Kept& kept : pool) {
    if (kept.place != place) continue;
    kept.asked = ++questions_;
    kept.list.seekInOrder();
    return &kept.list;
  }
  return nullptr;
}

// An empty list, which is that of the place from now on.
YcluiCandidateList& YcluiCandidates::listFor(const Place& place, std::size_t count) {
  if (place.node == nullptr) {
    passing_.clear();
    return passing_;
  }
  Pool& pool = count > Narrow ? wide_ : narrow_;
  Kept& kept = *std::min_element(pool.begin(), pool.end(), [](const Kept& one, const Kept& other) {
    return one.asked < other.asked;
  });
  kept.place = place;
  kept.asked = ++questions_;
  kept.list.clear();
  return kept.list;
}
