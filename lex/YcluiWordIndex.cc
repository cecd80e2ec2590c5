#include "lex/YcluiWordIndex.h"

#include <utility>

void YcluiWordIndex::add(std::uint32_t key, Part part, std::uint32_t number) {
  Word added{Rank(key, part), number};
  Word* first = find(key);
  if (first == nullptr) {
    firsts.add(added);
    return;
  }
  if (added < *first) std::swap(added, *first);
  others.insert(added);
}

void YcluiWordIndex::remove(std::uint32_t key, Part part, std::uint32_t number) {
  Word* first = find(key);
  const Word removed{Rank(key, part), number};
  if (*first != removed) {
    others.erase(others.find(removed));
    return;
  }
  const auto next = others.lower_bound({Rank(key, Part::First), 0});
  if (next == others.end() || next->hash() != key) {
    firsts.remove(first);
    return;
  }
  *first = *next;
  others.erase(next);
}

void YcluiWordIndex::clear() {
  firsts.clear();
  others.clear();
}
