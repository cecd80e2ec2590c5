#include "syntax/YcluiSyntaxNode.h"

#include <new>
#include <utility>

#include "foundation/YErr.h"
#include "syntax/YcluiNodeMemo.h"

namespace {

// The mark of a node that is about to go; walks have lower numbers.
constexpr std::uint64_t Collected = ~std::uint64_t{0};

}  // namespace

std::uint64_t YcluiSyntaxNode::ChangeCount = 0;

YcluiSyntaxNode::YcluiSyntaxNode(unsigned long id, const char* actionText)
    : tokenId(static_cast<std::uint32_t>(id)), coverRound_(0), covers_(0) {
  if (actionText != nullptr) setAction(actionText);
}

YcluiSyntaxNode::YcluiSyntaxNode(const YcluiSyntaxNode& other)
    : YLinkList(),
      tokenId(other.tokenId),
      kind(other.kind),
      priority(other.priority),
      interruptLimit(other.interruptLimit),
      coverRound_(0),
      covers_(0) {
  if (other.action != nullptr) setAction(other.action->buffer);
}

YcluiSyntaxNode::~YcluiSyntaxNode() {
  noteGain();
  delete memo_;
  delete action;
}

YWord YcluiSyntaxNode::setAction(const char* text) {
  if (action != nullptr) return action->assign(text);
  action = new (std::nothrow) YString(text);
  return action != nullptr ? 1 : cluiFatal(YErrNoMemory);
}

// What is remembered of indefinite nodes follows a list that grows, and none that loses a link.
void YcluiSyntaxNode::noteLoss() {
  noteGain();
  delete std::exchange(memo_, nullptr);
}

bool YcluiSyntaxNode::collect() {
  if (mark_ == Collected) return false;
  noteGain();
  mark_ = Collected;
  return true;
}
