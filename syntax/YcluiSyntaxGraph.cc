#include "syntax/YcluiSyntaxGraph.h"

#include <new>

#include "foundation/YMemory.h"
#include "syntax/YcluiNodeSet.h"
#include "syntax/YcluiStepCache.h"
#include "syntax/YcluiSyntaxNodeStk.h"

namespace {

YcluiSyntaxNode* NewStructuralNode() {
  return YChecked(new (std::nothrow) YcluiSyntaxNode);
}

// Stops at closure members, so that nodes that are reached only through them do not change.
void MarkClosure(YcluiSyntaxNode* from) {
  YcluiSyntaxNodeStk work;
  work.push(from);
  while (work.isEmpty() == 0) {
    YcluiSyntaxNode* node = work.pop();
    if (node->kind == YcluiNodeClosure) continue;
    node->setKind(YcluiNodeClosure);
    work.pushSuccessors(*node);
  }
}

}  // namespace

YcluiSyntaxGraph::YcluiSyntaxGraph() : start(NewStructuralNode()), end(NewStructuralNode()) {
  start->append(end);
}

YcluiSyntaxGraph::~YcluiSyntaxGraph() {
  YcluiNodeSet nodes;
  nodes.collectNodes(start);
  nodes.collectNodes(end);
}

YWord YcluiSyntaxGraph::insertAnd(YcluiSyntaxNode* node) {
  if (isEmptied() || node == nullptr) return 0;
  node->takeSuccessors(*start);
  start->append(node);
  return 1;
}

YWord YcluiSyntaxGraph::insertAnd(YcluiSyntaxGraph* graph) {
  if (!canInsert(graph)) return 0;
  graph->end->takeSuccessors(*start);
  start->append(graph->start);
  graph->releaseNodes();
  return 1;
}

YWord YcluiSyntaxGraph::insertOr(YcluiSyntaxNode* node) {
  if (isEmptied() || node == nullptr) return 0;
  const bool hadNone = detachEnd();
  start->append(node);
  node->append(end);
  if (hadNone) searched_ = start->last();
  return 1;
}

YWord YcluiSyntaxGraph::insertOr(YcluiSyntaxGraph* graph) {
  if (!canInsert(graph)) return 0;
  detachEnd();
  YcluiSyntaxNode* fork = NewStructuralNode();
  graph->end->append(end);
  fork->append(graph->start);
  fork->append(start);
  start = fork;
  graph->releaseNodes();
  return 1;
}

YWord YcluiSyntaxGraph::makeClosure() {
  if (isEmptied()) return 0;
  YcluiSyntaxNode* newEnd = NewStructuralNode();
  MarkClosure(start);
  YcluiSyntaxNode* exit = end;
  exit->append(newEnd);
  exit->append(start);
  exit->setKind(YcluiNodeClosure);
  start = exit;
  end = newEnd;
  return 1;
}

void YcluiSyntaxGraph::setPriority(unsigned char priority, unsigned char interruptLimit) {
  if (isEmptied()) return;
  for (YcluiSuccessorIterator i(*start); i.ring != nullptr; ++i) {
    i.node()->priority = priority;
    i.node()->interruptLimit = interruptLimit;
  }
}

bool YcluiSyntaxGraph::canInsert(const YcluiSyntaxGraph* graph) const {
  return !isEmptied() && graph != nullptr && graph != this && !graph->isEmptied();
}

void YcluiSyntaxGraph::releaseNodes() {
  start = nullptr;
  end = nullptr;
}

// Links are added at the end of the list. When the last link is the one of a former search, there
// is nothing new to search. Without this, adding many alternatives would take quadratic time.
bool YcluiSyntaxGraph::detachEnd() {
  const YRing* last = start->last();
  if (last != nullptr && last == searched_ && last->item() != end) return true;
  return start->detach(end) == nullptr;
}

void deleteNodesFrom(YcluiSyntaxNode* node) {
  YcluiNodeSet nodes;
  nodes.collectNodes(node);
}
