#include "parser/YcluiHelpTable.h"

#include <new>
#include <utility>

#include "foundation/YMemory.h"

void YcluiValuesFunction::set(YcluiValuesProc function, void* data, YcluiReleaseProc release) {
  void* const formerData = std::exchange(data_, data);
  const YcluiReleaseProc formerRelease = std::exchange(release_, release);
  function_ = function;
  if (formerRelease != nullptr) formerRelease(formerData);
}

YcluiHelpTable::~YcluiHelpTable() {
  entries_.forEach([](const Entry& entry) { delete entry.record; });
}

std::uint64_t YcluiHelpTable::KeyOf(std::uint32_t id, int index) {
  return std::uint64_t{id} << 32 | static_cast<std::uint32_t>(index);
}

YcluiHelpRecord* YcluiHelpTable::find(std::uint32_t id, int index) const {
  const std::uint64_t key = KeyOf(id, index);
  const Entry* entry = entries_.find(key, [key](const Entry& each) { return each.key == key; });
  return entry == nullptr ? nullptr : entry->record;
}

YcluiHelpRecord& YcluiHelpTable::findOrAdd(std::uint32_t id, int index) {
  if (YcluiHelpRecord* record = find(id, index)) return *record;
  auto* record = YChecked(new (std::nothrow) YcluiHelpRecord);
  entries_.add({KeyOf(id, index), record});
  return *record;
}
