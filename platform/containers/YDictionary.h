// Dictionaries: sets of records that are found by a key.

#ifndef PLATFORM_CONTAINERS_YDICTIONARY_H_
#define PLATFORM_CONTAINERS_YDICTIONARY_H_

#include <cstddef>

#include "foundation/YTypes.h"
#include "platform/containers/YSet.h"

class YQRT_API YAssoc_virtual_behavior {
 public:
  virtual void dummy_func();

 protected:
  ~YAssoc_virtual_behavior() = default;
};

// A key and a value, both plain pointers. A subclass fills both fields and owns what they point to.
class YQRT_API YAssoc : public YAssoc_virtual_behavior {
 public:
  void* key;
  void* value;

  YAssoc(void* k, void* v) : key(k), value(v) {}
  YAssoc(const YAssoc&) = default;
  YAssoc& operator=(const YAssoc&) = default;
  virtual ~YAssoc();  // does not free what the fields point to

  virtual unsigned long hashKey() const;
  virtual YAssoc* copy() const;
  virtual YWord isValid() const;
  // Return non-zero when this record matches the key of `other`, or the key `k`.
  virtual YWord equals(const YAssoc* other) const;
  virtual YWord equalsKey(const void* k) const;
};

// The destructor is not virtual on purpose: see YSet.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// A set of YAssoc records. The `equals` of the stored record decides which record matches a probe.
class YQRT_API YAssocSet : public YSet {
 public:
  YWord compare(const void* a, const void* b) const override;
  unsigned int hashValue(const void* item) const override;
  void deleteIt(void* item) override;  // destroys the record
};

class YQRT_API YDictionary : public YAssocSet {
 public:
  YDictionary() = default;
  ~YDictionary() = default;

  // The first attached record whose equalsKey accepts the key, or null. Linear in the size.
  virtual YAssoc* searchByKey(const void* key) const;
};

#pragma GCC diagnostic pop

// Iterates over a set of records in the order in which they were attached:
//   for (YAssocSetItr i(set); i.item != nullptr; ++i) use(i.item);
// No record may be detached during the iteration.
class YQRT_API YAssocSetItr {
 public:
  YAssoc* item;  // the current record, null after the last

  explicit YAssocSetItr(const YSet& set);
  YAssocSetItr& operator++();

 private:
  const YSet& set_;
  std::size_t index_ = 0;
};

#endif  // PLATFORM_CONTAINERS_YDICTIONARY_H_
