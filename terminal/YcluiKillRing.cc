#include "terminal/YcluiKillRing.h"

void YcluiKillRing::add(std::string_view text) {
  entries_.emplace_front(text);
  if (entries_.size() > MostEntries) entries_.pop_back();
}
