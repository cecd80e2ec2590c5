// The nodes of a graph that is being destroyed, each once.

#ifndef SYNTAX_YCLUINODESET_H_
#define SYNTAX_YCLUINODESET_H_

#include "platform/containers/YLinkList.h"

class YcluiSyntaxNode;

// Owns its nodes, which are destroyed with it. All are collected before the first one is destroyed,
// since any of them may lead to any other. Their links become those of the set, so collecting
// allocates nothing but one link a call, and does not recurse.
class YcluiNodeSet final : private YLinkList {
 public:
  YcluiNodeSet() = default;
  ~YcluiNodeSet();

  // Takes the node and all that can be reached from it, but for what is collected already. Nothing
  // for null.
  void collectNodes(YcluiSyntaxNode* node);
};

#endif  // SYNTAX_YCLUINODESET_H_
