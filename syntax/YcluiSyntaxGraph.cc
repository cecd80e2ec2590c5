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

// Stops at members of closures made before, so what can be reached only through them stays as it
// is.
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
  if (isEmptied() != 0 || node == nullptr) return 0;
  node->takeSuccessors(*start);
  start->append(node);
  return 1;
}

YWord YcluiSyntaxGraph::insertAnd(YcluiSyntaxGraph* graph) {
  if (canTake(graph) == 0) return 0;
  graph->end->takeSuccessors(*start);
  start->append(graph->start);
  graph->handOver();
  return 1;
}

YWord YcluiSyntaxGraph::insertOr(YcluiSyntaxNode* node) {
  if (isEmptied() != 0 || node == nullptr) return 0;
  const bool thereWasNone = detachEnd();
  start->append(node);
  node->append(end);
  if (thereWasNone) searched_ = start->last();
  return 1;
}

YWord YcluiSyntaxGraph::insertOr(YcluiSyntaxGraph* graph) {
  if (canTake(graph) == 0) return 0;
  detachEnd();
  YcluiSyntaxNode* fork = NewStructuralNode();
  graph->end->append(end);
  fork->append(graph->start);
  fork->append(start);
  start = fork;
  graph->handOver();
  return 1;
}

YWord YcluiSyntaxGraph::makeClosure() {
  if (isEmptied() != 0) return 0;
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
  if (isEmptied() != 0) return;
  for (YcluiSuccessorIterator i(*start); i.ring != nullptr; ++i) {
    i.node()->priority = priority;
    i.node()->interruptLimit = interruptLimit;
  }
}

YWord YcluiSyntaxGraph::canTake(const YcluiSyntaxGraph* graph) const {
  if (isEmptied() != 0 || graph == nullptr || graph == this) return 0;
  return graph->isEmptied() != 0 ? 0 : 1;
}

void YcluiSyntaxGraph::handOver() {
  start = nullptr;
  end = nullptr;
}

// Links are added at the end of a list, so behind a last link that was searched before nothing can
// be found. Without that, each of many alternatives would look through all those before it.
bool YcluiSyntaxGraph::detachEnd() {
  const YRing* last = start->last();
  if (last != nullptr && last == searched_ && last->item() != end) return true;
  return start->detach(end) == nullptr;
}

void deleteNodesFrom(YcluiSyntaxNode* node) {
  YcluiNodeSet nodes;
  nodes.collectNodes(node);
}
