// Destruction of the nodes of a graph.

#ifndef SYNTAX_YCLUINODESET_H_
#define SYNTAX_YCLUINODESET_H_

#include "platform/containers/YLinkList.h"

class YcluiSyntaxNode;

// A set of nodes that are destroyed with it. All nodes are collected before the first one is
// destroyed, because a node may be reached by any number of links. Collecting moves the links of
// the nodes into the set; it allocates one link for each call and does not recurse.
class YcluiNodeSet final : private YLinkList {
 public:
  YcluiNodeSet() = default;
  ~YcluiNodeSet();

  // Adds the node and all that can be reached from it, except those that are in the set. Does
  // nothing for null.
  void collectNodes(YcluiSyntaxNode* node);
};

#endif  // SYNTAX_YCLUINODESET_H_
