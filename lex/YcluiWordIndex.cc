#include "lex/YcluiWordIndex.h"

#include <utility>

void YcluiWordIndex::add(std::uint32_t key, Part part, YcluiKeyword* record) {
  First added{Place(key, part), record};
  auto* first = const_cast<First*>(find(key));
  if (first == nullptr) {
    firsts.add(added);
    return;
  }
  if (added.place < first->place) std::swap(added, *first);
  others.insert({added.place, added.record->serial(), added.record});
}

void YcluiWordIndex::remove(std::uint32_t key, Part part, YcluiKeyword* record) {
  auto* first = const_cast<First*>(find(key));
  const std::uint32_t place = Place(key, part);
  if (first->place != place || first->record != record) {
    others.erase(others.find({place, record->serial(), record}));
    return;
  }
  const auto next = others.lower_bound({Place(key, Part::Front), 0, nullptr});
  if (next == others.end() || next->place >> 1 != key) {
    firsts.remove(first);
    return;
  }
  *first = {next->place, next->record};
  others.erase(next);
}
