// The arrays of the system.

#ifndef FOUNDATION_YARRAY_H_
#define FOUNDATION_YARRAY_H_

#include <cstdlib>
#include <new>
#include <type_traits>
#include <utility>

#include "foundation/YMemory.h"
#include "foundation/YTypes.h"

// The place of `key` in a sorted array of `count` elements: the index before which it belongs,
// behind all elements that compare equal. -1 when `flag` is 0 and an element compares equal, so
// that nothing is inserted twice.
YQRT_API int YArrayBinFind(const void* key, const void* base, unsigned int count,
                           unsigned int elementSize, int (*cmp)(const void*, const void*),
                           unsigned long flag);

// An array that grows when it is indexed past its end, also by a read.
//
// Elements kept by value are default-constructed in every slot of the allocation; slots of pointers
// hold no defined value until they are written, and what the pointers point to is never touched.
// What is given to an insertion may be an element of the same array. Memory that cannot be had ends
// the process.
template <class T>
class YArray {
 public:
  YArray() = default;
  // An array of `n` live slots; none for an n below 1.
  explicit YArray(int n) {
    if (n >= 1) bumpsize(n - 1);
  }
  YArray(const YArray& other) { *this = other; }
  YArray(YArray&& other) noexcept
      : size_(std::exchange(other.size_, 0)),
        capacity(std::exchange(other.capacity, 0)),
        data(std::exchange(other.data, nullptr)) {}
  ~YArray() { delete[] data; }

  // Copies the live elements; slots above the new size stay allocated.
  YArray& operator=(const YArray& other) {
    if (this == &other) return *this;
    if (other.size_ > size_) bumpsize(other.size_);
    size_ = other.size_;
    for (std::int32_t i = 0; i < size_; ++i) data[i] = other.data[i];
    return *this;
  }
  YArray& operator=(YArray&& other) noexcept {
    std::swap(size_, other.size_);
    std::swap(capacity, other.capacity);
    std::swap(data, other.data);
    return *this;
  }

  int size() const { return size_; }

  // The element at `i`, which must not be negative; an index at or past the end makes the array
  // longer, and all slots up to it live.
  T& operator[](int i) { return i < size_ ? data[i] : bumpsize(i); }
  // The element at an index that the caller knows to be live.
  T& at(int i) const { return data[i]; }
  // Adds an element at the end and answers it.
  T& end() { return bumpsize(size_); }

  operator const T*() const { return data; }  // NOLINT(google-explicit-constructor)
  const T* operator()() const { return data; }

  // Makes the size n; shrinking destroys nothing, and the slot at index n exists afterwards.
  void resize(int n) {
    bumpsize(n);
    size_ = n;
  }

  // Takes the element at `i` out and closes the gap by assignment, so that the last slot keeps its
  // old content; 0 when there is no such element.
  YWord remove(int i) {
    if (i < 0 || i >= size_) return 0;
    for (std::int32_t k = i; k + 1 < size_; ++k) data[k] = data[k + 1];
    --size_;
    return 1;
  }

  // Frees the allocation, unless the size is 0 already.
  void removeAll() {
    if (size_ == 0) return;
    delete[] data;
    data = nullptr;
    size_ = 0;
    capacity = 0;
  }

  // Insert in front of index i (0 to size), behind index i (0 to size - 1), at the end. 0 and no
  // change for a bad index.
  YWord insertBefore(int i, const T& e) {
    if (i < 0 || i > size_) return 0;
    T kept(e);  // an element of this array would move
    const std::int32_t old = size_;
    bumpsize(old + 1);
    size_ = old + 1;
    for (std::int32_t k = old; k > i; --k) data[k] = data[k - 1];
    data[i] = std::move(kept);
    return 1;
  }
  YWord insertAfter(int i, const T& e) {
    if (i < 0 || i >= size_) return 0;
    return insertBefore(i + 1, e);
  }
  YWord append(const T& e) { return insertBefore(size_, e); }

  // qsort and bsearch over the live elements: `cmp` gets pointers to elements, so pointers to
  // pointers for an array of pointers. Elements are moved as raw bytes by the sort.
  void sort(int (*cmp)(const void*, const void*)) {
    if (data != nullptr) std::qsort(static_cast<void*>(data), sizeOf(size_), sizeof(T), cmp);
  }
  YWord insertSorted(const T& e, int (*cmp)(const void*, const void*), unsigned long flag) {
    const int place = YArrayBinFind(&e, data, static_cast<unsigned int>(size_),
                                    static_cast<unsigned int>(sizeof(T)), cmp, flag);
    return place == -1 ? 0 : insertBefore(place, e);
  }
  // The index of an element that compares equal to `key`, or -1.
  int search(const void* key, int (*cmp)(const void*, const void*)) const {
    if (data == nullptr) return -1;
    const void* found = std::bsearch(key, data, sizeOf(size_), sizeof(T), cmp);
    return found == nullptr ? -1 : static_cast<int>(static_cast<const T*>(found) - data);
  }

 protected:
  // Makes the slot at `i` live and answers it. Where the allocation is too small it is replaced by
  // one of i plus a step, the step being the old capacity but at least 1 and at most 256.
  T& bumpsize(int i) {
    if (i < 0) i = 0;
    if (i >= capacity) grow(i);
    if (i >= size_) size_ = i + 1;
    return data[i];
  }

  std::int32_t size_ = 0;     // live elements
  std::int32_t capacity = 0;  // slots allocated
  T* data = nullptr;          // the allocation, or null

 private:
  static std::size_t sizeOf(std::int32_t n) { return static_cast<std::size_t>(n); }

  void grow(std::int32_t i) {
    const std::int32_t old = capacity < 1 ? 1 : capacity;
    const std::int32_t wanted = i + (old > 256 ? 256 : old);
    T* bigger = YChecked(new (std::nothrow) T[sizeOf(wanted)]);
    for (std::int32_t k = 0; k < size_; ++k) bigger[k] = std::move(data[k]);
    delete[] data;
    data = bigger;
    capacity = wanted;
  }
};

#endif  // FOUNDATION_YARRAY_H_
