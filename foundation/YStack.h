// The stacks of the system: arrays that keep their slots when they shrink.

#ifndef FOUNDATION_YSTACK_H_
#define FOUNDATION_YSTACK_H_

#include "foundation/YArray.h"

// The elements are those at index 0 to count() - 1, the last being the top. A slot that was popped
// keeps its content, and the next push is written into it by assignment, so a stack that has been
// deep once never allocates again at that depth.
//
// pop, top and bottom need an element or, on an empty stack, at least a slot that has held one, of
// which they answer a copy. Callers test isEmpty first.
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
      T kept(e);  // an element of this stack would move
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

  // The top in its place, without a copy. The stack must not be empty; good until the next push.
  T& topSlot() { return this->data[count_ - 1]; }
  const T& topSlot() const { return this->data[count_ - 1]; }
  // Makes a new top of whatever its slot holds, to be filled by the caller.
  T& extend() {
    T& slot = count_ < this->size_ ? this->data[count_] : this->bumpsize(count_);
    ++count_;
    return slot;
  }
  // Drops the top without a copy; nothing on an empty stack.
  void drop() {
    if (count_ > 0) --count_;
  }

 protected:
  std::int32_t count_ = 0;
};

#endif  // FOUNDATION_YSTACK_H_
