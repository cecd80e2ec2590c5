#include "lex/YcluiWordIndex.h"

#include <utility>

namespace {

constexpr int FirstPower = 4;

}  // namespace

YcluiWordIndex::YcluiWordIndex()
    : slots(std::size_t{1} << FirstPower), homeShift(64 - FirstPower) {}

void YcluiWordIndex::add(std::uint64_t key, YcluiKeyword* record) {
  Slot* slot = &slots[slotOf(key)];
  if (slot->record != nullptr) {
    waiting.insert({key, record->serial(), record});
    return;
  }
  *slot = {key, record};
  ++rows;
  if (rows > slots.size() / 3 * 2) grow();
}

void YcluiWordIndex::remove(std::uint64_t key, YcluiKeyword* record) {
  const std::size_t slot = slotOf(key);
  if (slots[slot].record == record) {
    refill(slot);
  } else {
    waiting.erase(waiting.find({key, record->serial(), record}));
  }
}

// The first that waits for the row moves up.
void YcluiWordIndex::refill(std::size_t slot) {
  const auto next = waiting.lower_bound({slots[slot].key, 0, nullptr});
  if (next == waiting.end() || next->key != slots[slot].key) {
    empty(slot);
    return;
  }
  slots[slot].record = next->record;
  waiting.erase(next);
}

// Rows whose way leads over the emptied slot move back into it, or they would not be found.
void YcluiWordIndex::empty(std::size_t slot) {
  const std::size_t mask = slots.size() - 1;
  for (std::size_t i = behind(slot); slots[i].record != nullptr; i = behind(i)) {
    const std::size_t way = (i - home(slots[i].key)) & mask;
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
    if (slot.record != nullptr) slots[slotOf(slot.key)] = slot;
  }
}
