#include "lex/YcluiWordIndex.h"

void YcluiWordIndex::add(Link& link) {
  Row& row = rows[link.key];
  link.previous = row.last;
  link.next = nullptr;
  (row.last == nullptr ? row.first : row.last->next) = &link;
  row.last = &link;
}

void YcluiWordIndex::remove(Link& link) {
  const auto place = rows.find(link.key);
  Row& row = place->second;
  (link.previous == nullptr ? row.first : link.previous->next) = link.next;
  (link.next == nullptr ? row.last : link.next->previous) = link.previous;
  if (row.first == nullptr) rows.erase(place);
}

const YcluiWordIndex::Link* YcluiWordIndex::first(std::uint64_t key) const {
  const auto place = rows.find(key);
  return place == rows.end() ? nullptr : place->second.first;
}
