#include "parser/YcluiFrames.h"

#include <new>

YcluiFrames::~YcluiFrames() {
  dropAll();
  freeRetired();
  delete graph_;
  deleteIndefinites();
}

// --- Syntax

void YcluiFrames::replaceSyntax(YcluiSyntaxGraph* graph) {
  if (graph_ != nullptr) retiredGraphs_.push(graph_);
  recall(*graph);
  graph_ = graph;
  dropAll();
  replaceIndefiniteRoot();
}

void YcluiFrames::addIndefinite(YcluiSyntaxNode* node) {
  if (indefiniteRoot_ == nullptr || node == nullptr) return;
  if (node->kind == YcluiNodeClosure) YcluiSyntaxNode::NoteChange();
  node->kind = YcluiNodeIndefinite;
  indefiniteRoot_->append(node);
}

// A graph that is set again before it is destroyed is in use again.
void YcluiFrames::recall(const YcluiSyntaxGraph& graph) {
  for (int i = 0; i < retiredGraphs_.count(); ++i) {
    if (retiredGraphs_.at(i) != &graph) continue;
    retiredGraphs_.at(i) = retiredGraphs_.topSlot();
    retiredGraphs_.drop();
    return;
  }
}

// The previous root keeps its nodes until it is freed, since the token that is being processed may
// be at one of them.
void YcluiFrames::replaceIndefiniteRoot() {
  auto* root = YChecked(new (std::nothrow) YcluiSyntaxNode);
  if (indefiniteRoot_ != nullptr) retiredRoots_.push(indefiniteRoot_);
  indefiniteRoot_ = root;
}

void YcluiFrames::freeRetired() {
  for (; retiredGraphs_.isEmpty() == 0; retiredGraphs_.drop()) delete retiredGraphs_.topSlot();
  for (; retiredRoots_.isEmpty() == 0; retiredRoots_.drop()) freeRoot(retiredRoots_.topSlot());
}

// Destroys the root only; its nodes become successors of formerRoot_.
void YcluiFrames::freeRoot(YcluiSyntaxNode* root) {
  if (formerRoot_ == nullptr) formerRoot_ = YChecked(new (std::nothrow) YcluiSyntaxNode);
  formerRoot_->takeSuccessors(*root);
  delete root;
}

// Destroys them in one call, since a node may be a successor of several roots.
void YcluiFrames::deleteIndefinites() {
  if (formerRoot_ != nullptr) indefiniteRoot_->append(formerRoot_);
  deleteNodesFrom(indefiniteRoot_);
}

// --- Frames

bool YcluiFrames::push(const char* prefix, bool isIndependent) {
  auto* frame = new (std::nothrow) YcluiLineParser(prefix);
  if (frame == nullptr) return false;
  frame->own.isIndependent = isIndependent;
  frame->syntaxGraph(graph_);
  frame->setIndefiniteNode(indefiniteRoot_);
  stack_.push(frame);
  return true;
}

void YcluiFrames::drop() {
  YcluiLineParser* frame = stack_.topSlot();
  stack_.drop();
  if (frame->own.users == 0) {
    delete frame;
  } else {
    frame->own.isGone = true;
  }
}

void YcluiFrames::dropAll() {
  while (stack_.isEmpty() == 0) drop();
}

// --- Priorities

const YcluiSyntaxNode* YcluiFrames::interruptedNode() const {
  for (int i = stack_.count() - 2; i >= 0; --i) {
    if (stack_.at(i + 1)->own.isIndependent) return nullptr;
    const YcluiSyntaxNode* node = stack_.at(i)->firstNode();
    if (node != nullptr) return node;
  }
  return nullptr;
}

bool YcluiFrames::admits(const YcluiLineParser& frame, const YcluiSyntaxNode& accepted) const {
  const YcluiSyntaxNode* interrupted = interruptedNode();
  if (interrupted == nullptr) return true;
  const YcluiSyntaxNode* first = frame.firstNode();
  if (first == nullptr && accepted.kind != YcluiNodeIndefinite) first = &accepted;
  return first == nullptr || interrupted->admitsInterruptBy(*first) != 0;
}
