#include "lex/YcluiWordIndex.h"

#include <utility>

namespace {

constexpr int FirstPower = 4;

}  // namespace

YcluiWordIndex::YcluiWordIndex()
    : slots(std::size_t{1} << FirstPower), homeShift(64 - FirstPower) {}

YcluiFoundWord YcluiWordIndex::find(std::uint32_t key, std::string_view text,
                                    bool longerToo) const {
  const Slot& slot = slots[slotOf(key)];
  if (slot.record == nullptr) return {};
  if (slot.brief.isThere()) {
    if (YcluiIsFoundUnder(slot.brief, text, longerToo)) return {slot.record, &slot.brief};
  } else if (YcluiIsFoundUnder(*slot.record, text, longerToo)) {
    return {slot.record, nullptr};
  }
  return {firstWaiting(key, [text, longerToo](const YcluiKeyword& record) {
    return YcluiIsFoundUnder(record, text, longerToo);
  })};
}

void YcluiWordIndex::add(std::uint32_t key, Part part, YcluiKeyword* record) {
  Slot added{Place(key, part), YcluiWordBrief(*record), record};
  Slot& slot = slots[slotOf(key)];
  if (slot.record == nullptr) {
    slot = added;
    ++rows;
    if (rows > slots.size() / 3 * 2) grow();
    return;
  }
  // Records come in the order of their numbers, so that only another part goes first.
  if (added.place < slot.place) std::swap(added, slot);
  waiting.insert({added.place, added.record->serial(), added.record});
}

void YcluiWordIndex::remove(std::uint32_t key, Part part, YcluiKeyword* record) {
  const std::size_t slot = slotOf(key);
  const std::uint32_t place = Place(key, part);
  if (slots[slot].place == place && slots[slot].record == record) {
    refill(slot);
  } else {
    waiting.erase(waiting.find({place, record->serial(), record}));
  }
}

// The first that waits for the row moves up.
void YcluiWordIndex::refill(std::size_t slot) {
  const std::uint32_t key = KeyOf(slots[slot].place);
  const auto next = waiting.lower_bound({Place(key, Part::Front), 0, nullptr});
  if (next == waiting.end() || KeyOf(next->place) != key) {
    empty(slot);
    return;
  }
  slots[slot] = {next->place, YcluiWordBrief(*next->record), next->record};
  waiting.erase(next);
}

// Rows whose way leads over the emptied slot move back into it, or they would not be found.
void YcluiWordIndex::empty(std::size_t slot) {
  const std::size_t mask = slots.size() - 1;
  for (std::size_t i = behind(slot); slots[i].record != nullptr; i = behind(i)) {
    const std::size_t way = (i - home(KeyOf(slots[i].place))) & mask;
    if (way < ((i - slot) & mask)) continue;
    slots[slot] = slots[i];
    slot = i;
  }
  slots[slot] = {};
  --rows;
}

void YcluiWordIndex::grow() {
  const auto old = std::exchange(slots, decltype(slots)(slots.size() * 2));
  --homeShift;
  for (const Slot& slot : old) {
    if (slot.record != nullptr) slots[slotOf(KeyOf(slot.place))] = slot;
  }
}
