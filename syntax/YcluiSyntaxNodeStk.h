// The containers of node pointers: the walker's stack, and the array in which it answers.

#ifndef SYNTAX_YCLUISYNTAXNODESTK_H_
#define SYNTAX_YCLUISYNTAXNODESTK_H_

#include "foundation/YStack.h"

class YcluiSyntaxNode;

using YcluiSyntaxNodeP_Array = YArray<YcluiSyntaxNode*>;

// A stack of nodes that it does not own.
class YQRT_API YcluiSyntaxNodeStk : public YStack<YcluiSyntaxNode*> {
 public:
  YcluiSyntaxNodeStk() = default;
  explicit YcluiSyntaxNodeStk(int n) : YStack(n) {}

  // As in every stack, but the room doubles at any size: a walk over a million nodes stays linear.
  YWord push(YcluiSyntaxNode* node);
  // Pushes the successors of the node, in the order of its list.
  void pushSuccessors(const YcluiSyntaxNode& node);

  // Puts the node under all others, which move up by one: costs the depth of the stack. Answers 1.
  YWord put(YcluiSyntaxNode* node);

  // Exchanges entries and room with the other stack, without copying.
  void swap(YcluiSyntaxNodeStk& other) noexcept;
};

#endif  // SYNTAX_YCLUISYNTAXNODESTK_H_
