// The syntax, the frames that walk it, and the life and death of parsers.

#include <new>
#include <typeinfo>

#include "foundation/YErr.h"
#include "parser/YcluiParser.h"
#include "parser/YcluiParserScopes.h"

pYcluiParser_Stack* YcluiParser::Mortuary = nullptr;
YcluiParser* YcluiParser::FirstLive = nullptr;
YcluiParser* YcluiParser::LastLive = nullptr;

// --- Syntax

void YcluiParser::setSyntaxGraph(YcluiSyntaxGraph* newGraph) {
  if (newGraph == nullptr) return;
  const Running scope(*this);
  if (graph != nullptr && graph != newGraph) retiredGraphs.push(graph);
  graph = newGraph;
  dropAllFrames();
  replaceIndefiniteRoot();
  YcluiLineParser* frame = makeFrame("");
  if (frame == nullptr) {
    cluiFatal(YErrNoMemory);
    return;
  }
  frames.push(frame);
}

void YcluiParser::addIndefiniteNode(YcluiSyntaxNode* node) {
  if (indefiniteRoot == nullptr || node == nullptr) return;
  if (node->kind == YcluiNodeClosure) YcluiSyntaxNode::NoteChange();
  node->kind = YcluiNodeIndefinite;
  indefiniteRoot->append(node);
}

// A new root for the indefinite nodes to come. The one of before keeps its nodes until it is freed,
// since a token that is on its way still steps through them.
void YcluiParser::replaceIndefiniteRoot() {
  candidates.forget();
  YcluiSyntaxNode* root = YChecked(new (std::nothrow) YcluiSyntaxNode);
  if (indefiniteRoot != nullptr) retiredRoots.push(indefiniteRoot);
  indefiniteRoot = root;
}

// Its nodes are kept under another root.
void YcluiParser::freeRoot(YcluiSyntaxNode* root) {
  if (formerIndefinites == nullptr) {
    formerIndefinites = YChecked(new (std::nothrow) YcluiSyntaxNode);
  }
  formerIndefinites->takeSuccessors(*root);
  delete root;
}

// All of them at once: a node may have been added to several syntaxes.
void YcluiParser::deleteIndefiniteNodes() {
  if (formerIndefinites != nullptr) indefiniteRoot->append(formerIndefinites);
  deleteNodesFrom(indefiniteRoot);
}

void YcluiParser::freeRetired() {
  for (; retiredGraphs.isEmpty() == 0; retiredGraphs.drop()) delete retiredGraphs.topSlot();
  for (; retiredRoots.isEmpty() == 0; retiredRoots.drop()) freeRoot(retiredRoots.topSlot());
}

// --- Frames

YWord YcluiParser::pushFrame() {
  const YcluiLineParser* below = currentFrame();
  if (below == nullptr) return 0;
  YcluiLineParser* frame = makeFrame(below->wholeLine());
  if (frame == nullptr) return cluiFatal(YErrNoMemory);
  frames.push(frame);
  return 1;
}

YWord YcluiParser::popFrame() {
  if (frames.count() <= 1) {
    reset();
    return 0;
  }
  const Running scope(*this);
  dropFrame();
  writeToLog("\n");
  echoCallback();
  return 0;
}

// An empty frame over the present syntax; null when there is no memory for it, or when there was
// none for what reads the tokens.
YcluiLineParser* YcluiParser::makeFrame(const char* prefix) const {
  if (lexer == nullptr || workToken == nullptr) return nullptr;
  auto* frame = new (std::nothrow) YcluiLineParser(prefix);
  if (frame == nullptr) return nullptr;
  frame->syntaxGraph(graph);
  frame->setIndefiniteNode(indefiniteRoot);
  return frame;
}

void YcluiParser::dropFrame() {
  YcluiLineParser* frame = frames.topSlot();
  frames.drop();
  if (frame->own.users == 0) {
    delete frame;
  } else {
    frame->own.isGone = true;
  }
}

void YcluiParser::dropAllFrames() {
  while (frames.isEmpty() == 0) dropFrame();
}

// --- Priorities

// The node on which the command began that the current frame interrupts; null without one.
const YcluiSyntaxNode* YcluiParser::interruptedNode() const {
  for (int i = frames.count() - 2; i >= 0; --i) {
    const YcluiSyntaxNode* node = frames.at(i)->firstNode();
    if (node != nullptr) return node;
  }
  return nullptr;
}

// Whether the interrupted command lets the one in the frame, which holds the accepted token, go on.
YWord YcluiParser::admits(const YcluiLineParser& frame, const YcluiSyntaxNode& accepted) const {
  const YcluiSyntaxNode* interrupted = interruptedNode();
  if (interrupted == nullptr) return 1;
  const YcluiSyntaxNode* first = frame.firstNode();
  if (first == nullptr && accepted.kind != YcluiNodeIndefinite) first = &accepted;
  return first == nullptr ? 1 : interrupted->admitsInterruptBy(*first);
}

// --- The mortuary

void YcluiParser::CreateMortuary() {
  if (Mortuary == nullptr) Mortuary = new (std::nothrow) pYcluiParser_Stack;
}

void YcluiParser::DestroyMortuary() {
  delete Mortuary;
  Mortuary = nullptr;
}

void YcluiParser::AddDeadBody(YcluiParser* parser) {
  if (Mortuary == nullptr || parser == nullptr || IsBody(parser)) return;
  Mortuary->push(parser);
  parser->condemned = 1;
}

void YcluiParser::CleanupMortuary() {
  if (Mortuary == nullptr) return;
  for (int i = Mortuary->count() - 1; i >= 0; --i) {
    YcluiParser* body = Mortuary->at(i);
    if (body->running != 0) continue;
    TakeBody(body);
    if (typeid(*body) != typeid(YcluiParser)) continue;
    body->YcluiParser::~YcluiParser();
    ::operator delete(body);
    if (Mortuary == nullptr) return;
    i = Mortuary->count();  // what follows a parser may have changed the mortuary
  }
}

bool YcluiParser::IsBody(const YcluiParser* parser) {
  for (int i = 0; i < Mortuary->count(); ++i) {
    if (Mortuary->at(i) == parser) return true;
  }
  return false;
}

// Takes the parser out of the mortuary, if it is there.
void YcluiParser::TakeBody(const YcluiParser* parser) {
  int kept = 0;
  for (int i = 0; i < Mortuary->count(); ++i) {
    if (Mortuary->at(i) != parser) Mortuary->at(kept++) = Mortuary->at(i);
  }
  if (kept < Mortuary->count()) Mortuary->drop();
}

// --- Live parsers

void YcluiParser::joinLive() {
  previousLive = LastLive;
  (LastLive == nullptr ? FirstLive : LastLive->nextLive) = this;
  LastLive = this;
}

void YcluiParser::leaveLive() {
  (previousLive == nullptr ? FirstLive : previousLive->nextLive) = nextLive;
  (nextLive == nullptr ? LastLive : nextLive->previousLive) = previousLive;
}

// Who is told may try to delete the parser: it waits in the mortuary like one that runs.
void YcluiParser::tellGone() {
  const Running scope(*this);
  if (sysGoneProc != nullptr) sysGoneProc(sysGoneData);
}

void YcluiParser::leaveMortuary() {
  if (Mortuary != nullptr && condemned != 0) TakeBody(this);
}

YcluiParser* YcluiParser::FindLive(long address) {
  for (YcluiParser* parser = FirstLive; parser != nullptr; parser = parser->nextLive) {
    if (reinterpret_cast<long>(parser) == address) {
      return parser->condemned != 0 ? nullptr : parser;
    }
  }
  return nullptr;
}

YcluiParser* YcluiParser::Live(int index) {
  for (YcluiParser* parser = FirstLive; parser != nullptr; parser = parser->nextLive) {
    if (parser->condemned == 0 && index-- == 0) return parser;
  }
  return nullptr;
}
