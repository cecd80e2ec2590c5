// The nodes of a graph that is to be destroyed, each once.

#ifndef SYNTAX_YCLUINODESET_H_
#define SYNTAX_YCLUINODESET_H_

#include "platform/general/YSet.h"

class YcluiSyntaxNode;

// Owns its nodes: they are destroyed with it. All are collected before the first one goes, since
// the way to a node leads through the lists of the others.
class YcluiNodeSet final : public YSet {
 public:
  YcluiNodeSet() = default;
  ~YcluiNodeSet() { deleteAll(); }

  // Attaches the node and all that can be reached from it, but for what can be reached only through
  // nodes that the set holds already. Nothing for null. Does not recurse.
  void collectNodes(YcluiSyntaxNode* node);

  // Destroys the node.
  void deleteIt(void* item) override;
};

#endif  // SYNTAX_YCLUINODESET_H_
