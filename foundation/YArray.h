// The growing array that all parts of the library use.

#ifndef FOUNDATION_YARRAY_H_
#define FOUNDATION_YARRAY_H_

#include <cstdlib>
#include <new>
#include <type_traits>
#include <utility>

#include "foundation/YMemory.h"
#include "foundation/YTypes.h"

// The index at which `key` belongs in a sorted array of `count` elements: after all elements that
// compare equal. Returns -1 when `flag` is 0 and an element compares equal, so that a caller can
// avoid inserting it twice.
YQRT_API int YArrayBinFind(const void* key, const void* base, unsigned int count,
                           unsigned int elementSize, int (*cmp)(const void*, const void*),
                           unsigned long flag);

// An array that grows when it is indexed past its end, even by a read.
//
// Every slot of the allocation is default-constructed; a slot of a pointer or number type has no
// defined value until it is written. An array of pointers does not own what they point to. An
// inserted value may be an element of the same array. Running out of memory ends the process.
template <class T>
class YArray {
 public:
  YArray() = default;
  // An array of `n` live elements; empty for an `n` below 1.
  explicit YArray(int n) {
    if (n >= 1) bumpsize(n - 1);
  }
  YArray(const YArray& other) { *this = other; }
  YArray(YArray&& other) noexcept
      : size_(std::exchange(other.size_, 0)),
        capacity(std::exchange(other.capacity, 0)),
        data(std::exchange(other.data, nullptr)) {}
  ~YArray() { delete[] data; }

  // Copies the live elements. The allocation never shrinks.
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

  // The element at `i`, which must not be negative. An index at or past the end extends the array
  // up to and including `i`.
  T& operator[](int i) { return i < size_ ? data[i] : bumpsize(i); }
  // The element at `i`, which must be below size(): nothing is checked.
  T& at(int i) const { return data[i]; }
  // Adds an element at the end and returns it.
  T& end() { return bumpsize(size_); }

  operator const T*() const { return data; }  // NOLINT(google-explicit-constructor)
  const T* operator()() const { return data; }

  // Sets the size to `n`. Shrinking destroys no element, and slot `n` is allocated afterwards.
  void resize(int n) {
    bumpsize(n);
    size_ = n;
  }

  // Removes the element at `i` and moves those after it down by assignment, so that the freed last
  // slot keeps its content. Returns 0 when there is no element `i`.
  YWord remove(int i) {
    if (i < 0 || i >= size_) return 0;
    for (std::int32_t k = i; k + 1 < size_; ++k) data[k] = data[k + 1];
    --size_;
    return 1;
  }

  // Frees the allocation, unless the size is already 0.
  void removeAll() {
    if (size_ == 0) return;
    delete[] data;
    data = nullptr;
    size_ = 0;
    capacity = 0;
  }

  // Insert before index i (0 to size), after index i (0 to size - 1), at the end. Return 0 and
  // change nothing for an index outside those ranges.
  YWord insertBefore(int i, const T& e) {
    if (i < 0 || i > size_) return 0;
    T kept(e);  // `e` may be an element of this array, which is about to move
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

  // qsort and bsearch over the live elements. `cmp` receives pointers to elements, hence pointers
  // to pointers for an array of pointers. The sort moves elements as raw bytes.
  void sort(int (*cmp)(const void*, const void*)) {
    if (data != nullptr) std::qsort(static_cast<void*>(data), sizeOf(size_), sizeof(T), cmp);
  }
  YWord insertSorted(const T& e, int (*cmp)(const void*, const void*), unsigned long flag) {
    const int index = YArrayBinFind(&e, data, static_cast<unsigned int>(size_),
                                    static_cast<unsigned int>(sizeof(T)), cmp, flag);
    return index == -1 ? 0 : insertBefore(index, e);
  }
  // The index of an element that compares equal to `key`, or -1.
  int search(const void* key, int (*cmp)(const void*, const void*)) const {
    if (data == nullptr) return -1;
    const void* found = std::bsearch(key, data, sizeOf(size_), sizeof(T), cmp);
    return found == nullptr ? -1 : static_cast<int>(static_cast<const T*>(found) - data);
  }

 protected:
  // Extends the array to include slot `i` and returns it. An allocation that is too small is
  // replaced by one of `i` slots plus the old capacity, of which at least 1 and at most 256 are
  // added.
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
