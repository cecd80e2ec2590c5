#include "platform/containers/YSet.h"

#include <algorithm>
#include <new>
#include <utility>
#include <vector>

#include "foundation/YMemory.h"
#include "platform/containers/YHashTable.h"

struct YSet::Items {
  struct Entry {
    std::uint32_t hashValue = 0;
    std::uint32_t number = 0;  // 1 more than the index in `list`; 0 in an empty entry
    bool isEmpty() const { return number == 0; }
    std::uint64_t hash() const { return hashValue; }
  };

  // In the order of attaching, with null for detached items.
  std::vector<void*, YAllocator<void*>> list;
  YHashTable<Entry> entries;

  void* at(const Entry& entry) const { return list[entry.number - 1]; }
  void add(std::uint32_t hash, void* item) {
    list.push_back(item);
    entries.add({hash, static_cast<std::uint32_t>(list.size())});
  }
  void remove(Entry* entry);
  void closeGaps();
};

void YSet::Items::remove(Entry* entry) {
  list[entry->number - 1] = nullptr;
  entries.remove(entry);
  if (list.size() > 2 * entries.count() + 16) closeGaps();
}

void YSet::Items::closeGaps() {
  std::vector<Entry, YAllocator<Entry>> kept;
  entries.forEach([&kept](const Entry& entry) { kept.push_back(entry); });
  std::sort(kept.begin(), kept.end(),
            [](const Entry& one, const Entry& other) { return one.number < other.number; });
  const auto old = std::exchange(list, {});
  entries.clear();
  for (const Entry& entry : kept) add(entry.hashValue, old[entry.number - 1]);
}

void YSet_virtual_behavior::dummy_func() {}

YSet::YSet() = default;

YSet::~YSet() {
  delete items_;
}

void* YSet::attach(void* item) {
  if (item == nullptr) return nullptr;
  const unsigned int hash = hashValue(item);
  const auto equals = [this, item](const void* known) { return compare(known, item) != 0; };
  if (find(hash, equals) != nullptr) return nullptr;
  if (items_ == nullptr) items_ = YChecked(new (std::nothrow) Items);
  items_->add(hash, item);
  return item;
}

void* YSet::detach(void* item) {
  if (items_ == nullptr || item == nullptr) return nullptr;
  Items::Entry* entry = items_->entries.find(
      hashValue(item),
      [this, item](const Items::Entry& known) { return items_->at(known) == item; });
  if (entry == nullptr) return nullptr;
  items_->remove(entry);
  return item;
}

void* YSet::search(const void* probe) const {
  const auto equals = [this, probe](const void* item) { return compare(item, probe) != 0; };
  return find(hashValue(probe), equals);
}

void* YSet::find(unsigned int hash, const std::function<bool(const void*)>& matches) const {
  if (items_ == nullptr) return nullptr;
  const Items::Entry* entry =
      items_->entries.find(hash, [this, hash, &matches](const Items::Entry& known) {
        return known.hashValue == hash && matches(items_->at(known));
      });
  return entry == nullptr ? nullptr : items_->at(*entry);
}

YWord YSet::contains(const void* item) const {
  return search(item) == nullptr ? 0 : 1;
}

// The set is emptied first, so that the destructor of an item can use the set.
void YSet::deleteAll() {
  const Items* items = std::exchange(items_, nullptr);
  if (items == nullptr) return;
  for (void* item : items->list) {
    if (item != nullptr) deleteIt(item);
  }
  delete items;
}

std::uint32_t YSet::count() const {
  return items_ == nullptr ? 0 : static_cast<std::uint32_t>(items_->entries.count());
}

void* YSet::itemFrom(std::size_t& index) const {
  if (items_ == nullptr) return nullptr;
  const auto& list = items_->list;
  while (index < list.size() && list[index] == nullptr) ++index;
  return index < list.size() ? list[index] : nullptr;
}

YWord YSet::compare(const void* a, const void* b) const {
  return a == b ? 1 : 0;
}

unsigned int YSet::hashValue(const void* item) const {
  const std::uint64_t address = reinterpret_cast<std::uintptr_t>(item);
  return static_cast<unsigned int>((address >> 4) ^ (address >> 36));
}

void YSet::deleteIt(void*) {}

YSet* YSet::copy() const {
  YSet* set = YChecked(new (std::nothrow) YSet);
  std::size_t i = 0;
  for (void* item = itemFrom(i); item != nullptr; item = itemFrom(++i)) set->attach(item);
  return set;
}
