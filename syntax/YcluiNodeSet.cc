#include "syntax/YcluiNodeSet.h"

#include "syntax/YcluiSyntaxNode.h"
#include "syntax/YcluiSyntaxNodeStk.h"

void YcluiNodeSet::collectNodes(YcluiSyntaxNode* node) {
  YcluiSyntaxNodeStk work;
  work.push(node);
  while (work.isEmpty() == 0) {
    YcluiSyntaxNode* reached = work.pop();
    if (attach(reached) != nullptr) work.pushSuccessors(*reached);
  }
}

void YcluiNodeSet::deleteIt(void* item) {
  delete static_cast<YcluiSyntaxNode*>(item);
}
