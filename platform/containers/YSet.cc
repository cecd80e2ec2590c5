#include "platform/containers/YSet.h"

#include <new>
#include <utility>

#include "foundation/YMemory.h"
#include "platform/containers/YHashTable.h"

struct YSet::Table {
  struct Row {
    unsigned int hash_ = 0;
    Entry* entry = nullptr;
    bool isEmpty() const { return entry == nullptr; }
    std::uint64_t hash() const { return hash_; }
  };
  YHashTable<Row> rows;  // those of one hash value in the order of attaching
};

void YSet_virtual_behavior::dummy_func() {}

YSet::YSet() = default;

YSet::~YSet() {
  for (Entry* e = first_; e != nullptr;) delete std::exchange(e, e->next);
  delete table_;
}

void* YSet::attach(void* item) {
  if (item == nullptr) return nullptr;
  const unsigned int hash = hashValue(item);
  const auto equals = [this, item](const void* known) { return compare(known, item) != 0; };
  if (find(hash, equals) != nullptr) return nullptr;
  if (table_ == nullptr) table_ = YChecked(new (std::nothrow) Table);
  auto* e = YChecked(new (std::nothrow) Entry{item, nullptr, last_});
  (last_ == nullptr ? first_ : last_->next) = e;
  last_ = e;
  table_->rows.add({hash, e});
  return item;
}

void* YSet::detach(void* item) {
  if (table_ == nullptr || item == nullptr) return nullptr;
  Table::Row* row = table_->rows.find(
      hashValue(item), [item](const Table::Row& known) { return known.entry->item == item; });
  if (row == nullptr) return nullptr;
  Entry* e = row->entry;
  table_->rows.remove(row);
  (e->previous == nullptr ? first_ : e->previous->next) = e->next;
  (e->next == nullptr ? last_ : e->next->previous) = e->previous;
  delete e;
  return item;
}

void* YSet::search(const void* probe) const {
  const unsigned int hash = hashValue(probe);
  return find(hash, [this, probe](const void* item) { return compare(item, probe) != 0; });
}

void* YSet::find(unsigned int hash, const std::function<bool(const void*)>& matches) const {
  if (table_ == nullptr) return nullptr;
  const Table::Row* row = table_->rows.find(hash, [hash, &matches](const Table::Row& known) {
    return known.hash_ == hash && matches(known.entry->item);
  });
  return row == nullptr ? nullptr : row->entry->item;
}

YWord YSet::contains(const void* item) const {
  return search(item) == nullptr ? 0 : 1;
}

// The set is empty before the first item is deleted, so that what an item's destructor does finds
// no deleted item.
void YSet::deleteAll() {
  Entry* e = std::exchange(first_, nullptr);
  last_ = nullptr;
  delete std::exchange(table_, nullptr);
  while (e != nullptr) {
    deleteIt(e->item);
    delete std::exchange(e, e->next);
  }
}

std::uint32_t YSet::count() const {
  return table_ == nullptr ? 0 : static_cast<std::uint32_t>(table_->rows.count());
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
  for (Entry* e = first_; e != nullptr; e = e->next) set->attach(e->item);
  return set;
}
