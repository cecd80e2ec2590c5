#include "platform/general/YSet.h"

#include <cstdlib>
#include <new>
#include <utility>

#include "foundation/YMemory.h"

namespace {

constexpr std::uint32_t FirstBuckets = 16;

// Spreads a hash value over the buckets, whose number is a power of two, so that values that differ
// in their upper bits alone part as well. Values that differ in their last eight bits alone stay
// together: most are made from addresses, and items that were allocated one after another then meet
// buckets that the cache holds already.
std::uint32_t BucketOf(unsigned int hash, std::uint32_t buckets) {
  std::uint32_t block = (hash >> 8) * 0x9E3779B1U;
  block ^= block >> 16;
  return (hash ^ block) & (buckets - 1);
}

}  // namespace

void YSet_virtual_behavior::dummy_func() {}

YSet::YSet() = default;

YSet::~YSet() {
  for (Entry* e = first_; e != nullptr;) std::free(std::exchange(e, e->next));
  std::free(buckets_);
}

void* YSet::attach(void* item) {
  if (item == nullptr) return nullptr;
  if (count_ >= bucketCount_) grow();
  const unsigned int hash = hashValue(item);
  // New entries go to the end of their bucket: a search meets the one attached first, first.
  Entry** place = &buckets_[BucketOf(hash, bucketCount_)];
  for (; *place != nullptr; place = &(*place)->nextInBucket) {
    if ((*place)->hash == hash && compare((*place)->item, item) != 0) return nullptr;
  }
  Entry* e = static_cast<Entry*>(YChecked(std::malloc(sizeof(Entry))));
  *e = {item, hash, nullptr, nullptr, last_};
  *place = e;
  (last_ == nullptr ? first_ : last_->next) = e;
  last_ = e;
  ++count_;
  return item;
}

void* YSet::detach(void* item) {
  if (count_ == 0 || item == nullptr) return nullptr;
  Entry** place = &buckets_[BucketOf(hashValue(item), bucketCount_)];
  while (*place != nullptr && (*place)->item != item) place = &(*place)->nextInBucket;
  Entry* e = *place;
  if (e == nullptr) return nullptr;
  *place = e->nextInBucket;
  (e->previous == nullptr ? first_ : e->previous->next) = e->next;
  (e->next == nullptr ? last_ : e->next->previous) = e->previous;
  std::free(e);
  --count_;
  return item;
}

void* YSet::search(const void* probe) const {
  if (count_ == 0) return nullptr;
  const unsigned int hash = hashValue(probe);
  for (Entry* e = bucket(hash); e != nullptr; e = e->nextInBucket) {
    if (e->hash == hash && compare(e->item, probe) != 0) return e->item;
  }
  return nullptr;
}

YWord YSet::contains(const void* item) const {
  return search(item) == nullptr ? 0 : 1;
}

// The set is empty before the first item goes, so that what an item does while it is destroyed
// meets no item that is gone.
void YSet::deleteAll() {
  Entry* e = std::exchange(first_, nullptr);
  last_ = nullptr;
  count_ = 0;
  std::free(std::exchange(buckets_, nullptr));
  bucketCount_ = 0;
  while (e != nullptr) {
    deleteIt(e->item);
    std::free(std::exchange(e, e->next));
  }
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

YSet::Entry* YSet::bucket(unsigned int hash) const {
  return bucketCount_ == 0 ? nullptr : buckets_[BucketOf(hash, bucketCount_)];
}

// Refilled from the last entry to the first, each going to the front of its bucket, so that the
// order of attaching holds in the buckets too.
void YSet::grow() {
  const std::uint32_t wanted = bucketCount_ == 0 ? FirstBuckets : bucketCount_ * 2;
  Entry** fresh = static_cast<Entry**>(YChecked(std::calloc(wanted, sizeof(void*))));
  for (Entry* e = last_; e != nullptr; e = e->previous) {
    Entry*& front = fresh[BucketOf(e->hash, wanted)];
    e->nextInBucket = front;
    front = e;
  }
  std::free(buckets_);
  buckets_ = fresh;
  bucketCount_ = wanted;
}
