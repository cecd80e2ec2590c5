#include "syntax/YcluiNodeSet.h"

#include "syntax/YcluiSyntaxNode.h"

YcluiNodeSet::~YcluiNodeSet() {
  for (YLinkListIterator i(*this); i.ring != nullptr; ++i) {
    delete static_cast<YcluiSyntaxNode*>(i.current());
  }
}

// The links that lead to a node for the first time stay, and hold the node; its own links then wait
// behind all others.
void YcluiNodeSet::collectNodes(YcluiSyntaxNode* node) {
  if (node == nullptr) return;
  append(node);
  for (YRing* ring = last(); ring != nullptr;) {
    auto* reached = static_cast<YcluiSyntaxNode*>(ring->item());
    const bool isNew = reached->collect();
    if (isNew) attachAll(*reached);
    YRing* next = ring->next();
    if (!isNew) delete detach(ring);
    ring = next;
  }
}
