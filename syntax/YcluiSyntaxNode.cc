#include "syntax/YcluiSyntaxNode.h"

#include <memory>

#include "foundation/YBlockPool.h"
#include "foundation/YErr.h"
#include "foundation/YMemory.h"

namespace {

constinit YBlockPool Pool(sizeof(YcluiSyntaxNode));

}  // namespace

YcluiSyntaxNode::YcluiSyntaxNode(unsigned long id, const char* actionText)
    : tokenId(static_cast<std::uint32_t>(id)) {
  if (actionText != nullptr) setAction(actionText);
}

YcluiSyntaxNode::YcluiSyntaxNode(const YcluiSyntaxNode& other)
    : YLinkList(),
      tokenId(other.tokenId),
      kind(other.kind),
      priority(other.priority),
      interruptLimit(other.interruptLimit) {
  if (other.action != nullptr) setAction(other.action->buffer);
}

YcluiSyntaxNode::~YcluiSyntaxNode() {
  changes_.note();
  delete action;
}

void* YcluiSyntaxNode::operator new(std::size_t size) {
  return YChecked(Pool.take(size));
}

void* YcluiSyntaxNode::operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return Pool.take(size);
}

void YcluiSyntaxNode::operator delete(void* node, std::size_t size) {
  Pool.give(node, size);
}

YWord YcluiSyntaxNode::setAction(const char* text) {
  changes_.note();
  if (action != nullptr) return action->assign(text);
  std::unique_ptr<YString> made(new (std::nothrow) YString);
  if (made == nullptr || made->tryAssign(text) == 0) return cluiFatal(YErrNoMemory);
  action = made.release();
  return 1;
}
