#include "syntax/YcluiSyntaxNode.h"

#include <cstring>
#include <new>
#include <utility>

#include "foundation/YBlockPool.h"
#include "foundation/YErr.h"
#include "foundation/YMemory.h"
#include "syntax/YcluiNodeIndex.h"

namespace {

// The mark of a node that is about to go; walks have lower numbers.
constexpr std::uint64_t Collected = ~std::uint64_t{0};

// What one step reads would not stand in one line of memory in a larger node.
static_assert(sizeof(YcluiSyntaxNode) == 128);
constinit YBlockPool Pool(sizeof(YcluiSyntaxNode));

}  // namespace

std::uint64_t YcluiSyntaxNode::ChangeCount = 0;

YcluiSyntaxNode::YcluiSyntaxNode(unsigned long id, const char* actionText)
    : coverRound_(0), covers_(0), tokenId(static_cast<std::uint32_t>(id)) {
  if (actionText != nullptr) setAction(actionText);
}

YcluiSyntaxNode::YcluiSyntaxNode(const YcluiSyntaxNode& other)
    : YLinkList(),
      kind(other.kind),
      priority(other.priority),
      interruptLimit(other.interruptLimit),
      coverRound_(0),
      covers_(0),
      tokenId(other.tokenId) {
  if (other.action != nullptr) setAction(other.action->buffer);
}

YcluiSyntaxNode::~YcluiSyntaxNode() {
  noteGain();
  delete index_;
  if (action != &text_) delete action;
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

// A walker may have taken the node for one without an action.
YWord YcluiSyntaxNode::setAction(const char* text) {
  if (action != nullptr) return action->assign(text);
  noteGain();
  if (text != nullptr) makeRoomFor(text);
  if (text_.tryAssign(text) == 0) return cluiFatal(YErrNoMemory);
  action = &text_;
  return 1;
}

// A short text costs no allocation, and who reads the node has read the text. What was remembered
// in its place holds no more.
void YcluiSyntaxNode::makeRoomFor(const char* text) {
  const std::size_t size = std::strlen(text) + 1;
  char* odd = room_ + 1;
  if (size > sizeof room_ - 1) return;
  step_ = Step::Unknown;
  text_.lend(odd, static_cast<std::uint32_t>(size));
}

void YcluiSyntaxNode::keepPair(YcluiSyntaxNode* first, YcluiSyntaxNode* second) {
  text_.leaveRoom();
  pair_[0] = first;
  pair_[1] = second;
  step_ = Step::Pair;
}

// What is remembered of indefinite nodes follows a list that grows, and none that loses a link.
void YcluiSyntaxNode::noteLoss() {
  noteGain();
  delete std::exchange(index_, nullptr);
}

bool YcluiSyntaxNode::collect() {
  if (mark_ == Collected) return false;
  noteGain();
  mark_ = Collected;
  return true;
}
