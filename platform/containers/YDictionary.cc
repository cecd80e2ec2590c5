#include "platform/containers/YDictionary.h"

#include <new>

#include "foundation/YMemory.h"

namespace {

const YAssoc* Record(const void* item) {
  return static_cast<const YAssoc*>(item);
}

YAssoc* Record(void* item) {
  return static_cast<YAssoc*>(item);
}

}  // namespace

void YAssoc_virtual_behavior::dummy_func() {}

YAssoc::~YAssoc() = default;

unsigned long YAssoc::hashKey() const {
  return reinterpret_cast<unsigned long>(key);
}

YAssoc* YAssoc::copy() const {
  return YChecked(new (std::nothrow) YAssoc(*this));
}

YWord YAssoc::isValid() const {
  return key == nullptr ? 0 : 1;
}

YWord YAssoc::equals(const YAssoc* other) const {
  return equalsKey(other->key);
}

YWord YAssoc::equalsKey(const void* k) const {
  return key == k ? 1 : 0;
}

YWord YAssocSet::compare(const void* a, const void* b) const {
  return Record(a)->equals(Record(b));
}

unsigned int YAssocSet::hashValue(const void* item) const {
  const unsigned long hash = Record(item)->hashKey();
  return static_cast<unsigned int>(hash ^ (hash >> 32));
}

void YAssocSet::deleteIt(void* item) {
  delete Record(item);
}

YAssoc* YDictionary::searchByKey(const void* key) const {
  for (YAssocSetItr i(*this); i.item != nullptr; ++i) {
    if (i.item->equalsKey(key) != 0) return i.item;
  }
  return nullptr;
}

YAssocSetItr::YAssocSetItr(const YSet& set) : item(nullptr), set_(set) {
  item = Record(set_.itemFrom(index_));
}

YAssocSetItr& YAssocSetItr::operator++() {
  if (item != nullptr) item = Record(set_.itemFrom(++index_));
  return *this;
}
