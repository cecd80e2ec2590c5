#include "syntax/YcluiSyntaxNodeStk.h"

#include <utility>

#include "syntax/YcluiSyntaxNode.h"

YWord YcluiSyntaxNodeStk::push(YcluiSyntaxNode* node) {
  if (count_ == capacity) {
    const std::int32_t used = size_;
    bumpsize(2 * count_);
    size_ = used;
  }
  return YStack::push(node);
}

void YcluiSyntaxNodeStk::pushSuccessors(const YcluiSyntaxNode& node) {
  for (YcluiSuccessorIterator i(node); i.ring != nullptr; ++i) push(i.node());
}

YWord YcluiSyntaxNodeStk::put(YcluiSyntaxNode* node) {
  push(node);
  for (std::int32_t i = count_ - 1; i > 0; --i) data[i] = data[i - 1];
  data[0] = node;
  return 1;
}

void YcluiSyntaxNodeStk::swap(YcluiSyntaxNodeStk& other) noexcept {
  std::swap(size_, other.size_);
  std::swap(capacity, other.capacity);
  std::swap(data, other.data);
  std::swap(count_, other.count_);
}
