#include "syntax/YcluiSyntaxNode.h"

#include <memory>

#include "foundation/YBlockPool.h"
#include "foundation/YErr.h"

template class YPooled<YcluiSyntaxNode>;

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

YWord YcluiSyntaxNode::setAction(const char* text) {
  changes_.note();
  if (action != nullptr) return action->assign(text);
  std::unique_ptr<YString> made(new (std::nothrow) YString);
  if (made == nullptr || made->tryAssign(text) == 0) return cluiFatal(YErrNoMemory);
  action = made.release();
  return 1;
}
