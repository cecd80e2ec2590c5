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
  if (graph_ != nullptr && graph_ != graph) retiredGraphs_.push(graph_);
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

// The previous root keeps its nodes until it is freed, since a token that is being processed still
// steps through them.
void YcluiFrames::replaceIndefiniteRoot() {
  auto* root = YChecked(new (std::nothrow) YcluiSyntaxNode);
  if (indefiniteRoot_ != nullptr) retiredRoots_.push(indefiniteRoot_);
  indefiniteRoot_ = root;
}

void YcluiFrames::freeRetired() {
  for (; retiredGraphs_.isEmpty() == 0; retiredGraphs_.drop()) delete retiredGraphs_.topSlot();
  for (; retiredRoots_.isEmpty() == 0; retiredRoots_.drop()) freeRoot(retiredRoots_.topSlot());
}

// Its nodes are kept under another root.
void YcluiFrames::freeRoot(YcluiSyntaxNode* root) {
  if (formerRoot_ == nullptr) formerRoot_ = YChecked(new (std::nothrow) YcluiSyntaxNode);
  formerRoot_->takeSuccessors(*root);
  delete root;
}

// All of them at once: a node may have been added to several syntaxes.
void YcluiFrames::deleteIndefinites() {
  if (formerRoot_ != nullptr) indefiniteRoot_->append(formerRoot_);
  deleteNodesFrom(indefiniteRoot_);
}

// --- Frames

bool YcluiFrames::push(const char* prefix) {
  auto* frame = new (std::nothrow) YcluiLineParser(prefix);
  if (frame == nullptr) return false;
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
