// A stack that keeps its slots when it shrinks.

#ifndef FOUNDATION_YSTACK_H_
#define FOUNDATION_YSTACK_H_

#include "foundation/YArray.h"

// The elements have the indices 0 to count() - 1; the last one is the top. A popped slot keeps its
// content and the next push assigns to it, so a stack allocates only when it grows deeper than
// before.
//
// pop, top and bottom return a copy. On an empty stack they return a copy of slot 0, which must
// have held an element; callers test isEmpty first.
template <class T>
class YStack : public YArray<T> {
 public:
  YStack() = default;
  explicit YStack(int n) : YArray<T>(n) {}
  YStack(const YStack&) = default;
  YStack& operator=(const YStack&) = default;

  int count() const { return count_; }
  YWord isEmpty() const { return count_ < 1 ? 1 : 0; }
  void clear() { count_ = 0; }

  YWord push(const T& e) {
    if (count_ < this->size_) {
      this->data[count_] = e;
    } else {
      T kept(e);  // `e` may be an element of this stack, which is about to move
      this->bumpsize(count_) = std::move(kept);
    }
    ++count_;
    return 1;
  }
  T pop() {
    if (count_ > 0) --count_;
    return this->data[count_];
  }
  T top() const { return this->data[count_ > 0 ? count_ - 1 : 0]; }
  T bottom() const { return this->data[0]; }

  // The top itself. The stack must not be empty. The reference is valid until the next push.
  T& topSlot() { return this->data[count_ - 1]; }
  const T& topSlot() const { return this->data[count_ - 1]; }
  // Adds a new top without assigning to it; the caller overwrites what its slot last held.
  T& extend() {
    T& slot = count_ < this->size_ ? this->data[count_] : this->bumpsize(count_);
    ++count_;
    return slot;
  }
  // Removes the top without copying it. Does nothing on an empty stack.
  void drop() {
    if (count_ > 0) --count_;
  }

 protected:
  std::int32_t count_ = 0;
};

#endif  // FOUNDATION_YSTACK_H_
