#include "syntax/YcluiNodeSet.h"

#include "syntax/YcluiSyntaxNode.h"

namespace {

// Marks a node that is in a set.
constexpr auto Collected = static_cast<YcluiNodeKind>(0xFFFF);

}  // namespace

YcluiNodeSet::~YcluiNodeSet() {
  for (YLinkListIterator i(*this); i.ring != nullptr; ++i) {
    delete static_cast<YcluiSyntaxNode*>(i.current());
  }
}

// The list of the set is also the work list: the first link to a node remains and the node's own
// links are moved to the end; other links to the node are deleted.
void YcluiNodeSet::collectNodes(YcluiSyntaxNode* node) {
  if (node == nullptr) return;
  YRing* before = last();
  append(node);
  for (YRing* ring = last(); ring != nullptr; ring = before == nullptr ? first() : next(before)) {
    auto* reached = static_cast<YcluiSyntaxNode*>(ring->item());
    if (reached->kind == Collected) {
      delete detachAfter(before == nullptr ? ring : before);
      continue;
    }
    reached->kind = Collected;
    attachAll(*reached);
    before = ring;
  }
}
