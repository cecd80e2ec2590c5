// Containers of node pointers: the stack of the walker, and the array of its results.

#ifndef SYNTAX_YCLUISYNTAXNODESTK_H_
#define SYNTAX_YCLUISYNTAXNODESTK_H_

#include "foundation/YStack.h"

class YcluiSyntaxNode;

using YcluiSyntaxNodeP_Array = YArray<YcluiSyntaxNode*>;

// A stack of nodes. It does not own them.
class YQRT_API YcluiSyntaxNodeStk : public YStack<YcluiSyntaxNode*> {
 public:
  YcluiSyntaxNodeStk() = default;
  explicit YcluiSyntaxNodeStk(int n) : YStack(n) {}

  // Pushes a node. Unlike that of YStack, the capacity doubles at any size, so that pushing many
  // nodes is linear.
  YWord push(YcluiSyntaxNode* node);
  // Pushes the successors of the node, in the order of its list.
  void pushSuccessors(const YcluiSyntaxNode& node);

  // Inserts the node at the bottom; linear in the size of the stack. Returns 1.
  YWord put(YcluiSyntaxNode* node);

  // Exchanges the contents of two stacks without copying them.
  void swap(YcluiSyntaxNodeStk& other) noexcept;
};

#endif  // SYNTAX_YCLUISYNTAXNODESTK_H_
