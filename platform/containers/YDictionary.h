// Records that are found by a key.

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

// A key and a value, two plain pointers. Subclasses fill both fields and own what they point to.
class YQRT_API YAssoc : public YAssoc_virtual_behavior {
 public:
  void* key;
  void* value;

  YAssoc(void* k, void* v) : key(k), value(v) {}
  YAssoc(const YAssoc&) = default;
  YAssoc& operator=(const YAssoc&) = default;
  virtual ~YAssoc();  // frees nothing that the fields point to

  virtual unsigned long hashKey() const;
  virtual YAssoc* copy() const;
  virtual YWord isValid() const;
  // Non-zero when the keys match; a record is asked whether it accepts the key of `other`.
  virtual YWord equals(const YAssoc* other) const;
  virtual YWord equalsKey(const void* k) const;
};

// A set of YAssoc records, compared by their own equals: the stored record is asked.
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

  // The record, first attached first, whose equalsKey accepts the key, or null.
  virtual YAssoc* searchByKey(const void* key) const;
};

// Walks a set of records in the order of attaching:
//   for (YAssocSetItr i(set); i.item != nullptr; ++i) use(i.item);
// No record may be detached meanwhile.
class YQRT_API YAssocSetItr {
 public:
  YAssoc* item;  // the present record, null when the walk is over

  explicit YAssocSetItr(const YSet& set);
  YAssocSetItr& operator++();

 private:
  const YSet& set_;
  std::size_t index_ = 0;
};

#endif  // PLATFORM_CONTAINERS_YDICTIONARY_H_
