#include "syntax/YcluiNodeSet.h"

#include "syntax/YcluiSyntaxNode.h"

namespace {

// The kind of a node that is in a set already.
constexpr auto Collected = static_cast<YcluiNodeKind>(0xFFFF);

}  // namespace

YcluiNodeSet::~YcluiNodeSet() {
  for (YLinkListIterator i(*this); i.ring != nullptr; ++i) {
    delete static_cast<YcluiSyntaxNode*>(i.current());
  }
}

// The first link to each node stays and holds it; the node's own links then wait at the end.
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
