#include "syntax/YcluiSyntaxNode.h"

#include <new>

#include "foundation/YErr.h"

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
  delete action;
}

YWord YcluiSyntaxNode::setAction(const char* text) {
  if (action != nullptr) return action->assign(text);
  action = new (std::nothrow) YString(text);
  return action != nullptr ? 1 : cluiFatal(YErrNoMemory);
}
