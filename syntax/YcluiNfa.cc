// The walker.
//
// Taken by its word, a step pops nodes off one list, to which structural nodes add their successors
// at the other end, and behind every match walks all ways to the end of the graph. On a graph whose
// ways part and meet again, the number of ways, of matches and of entries in nextNodes then doubles
// with every parting. Three things keep a step linear and its answers what they would be:
//
// Each structural node is opened the first time that it comes up (findMatches).
//
// Of a node that comes up several times among the matches, or stands several times in nextNodes,
// only the first and the last place are kept (KeepFirstAndLast). Nothing else can be seen:
//   - The node answered is the one that came up last of all.
//   - A structural node is opened where it comes up first. nextNodes are read from the top, so that
//     is its last place there.
//   - Two matches of one node with a way to the end are more than one way, as any number above.
//   - The places left out change nothing in later steps either. What is popped in a step are
//     nextNodes, reversed, and a queue that depends on the order of the first openings only; the
//     matches are picked from these, and the new nextNodes are their successor lists in a row. The
//     first and the last place of a node in such a row lie in the first and the last occurrence of
//     some matched node, which are kept, and in the order of those.
//
// Ways are counted up to 2, once for each node (waysBehind).

#include "syntax/YcluiNfa.h"

#include <algorithm>

#include "foundation/YErr.h"

namespace {

// A node's note while its ways are being counted: it stands on the way that is looked at.
constexpr std::int32_t Counting = -1;
// One way more than this makes no difference.
constexpr int MostWays = 2;

// Whether the walk to the end of the graph passes the node.
bool IsPassable(const YcluiSyntaxNode& node) {
  return node.tokenId == 0 && node.kind != YcluiNodeClosure;
}

}  // namespace

YWord YcluiNfa::syntaxGraph(YcluiSyntaxGraph* walked) {
  graph = walked;
  return reset();
}

YcluiSyntaxNode* YcluiNfa::indefiniteNode(const unsigned long& tokenId) const {
  if (indefiniteRoot == nullptr) return nullptr;
  for (YcluiSuccessorIterator i(*indefiniteRoot); i.ring != nullptr; ++i) {
    if (i.node()->tokenId == tokenId) return i.node();
  }
  return nullptr;
}

YWord YcluiNfa::reset() {
  nextNodes.clear();
  if (graph == nullptr || graph->start == nullptr) return 0;
  currentNode = graph->start;
  nextNodes.push(graph->start);
  terminated = 0;
  return 1;
}

YcluiSyntaxNode* YcluiNfa::stepNext(const unsigned long& tokenId) {
  YcluiSyntaxNode* indefinite = indefiniteNode(tokenId);
  if (indefinite != nullptr) return indefinite;

  savedNodes.swap(nextNodes);
  findMatches(tokenId);
  if (matchedNodes.isEmpty() != 0) {
    nextNodes.swap(savedNodes);
    return nullptr;
  }

  YcluiSyntaxNode* answer = matchedNodes.top();
  currentNode = answer;
  KeepFirstAndLast(matchedNodes);
  standBehindMatches();
  const int ends = endsBehindMatches();
  if (ends > 0) terminated = 1;
  // Last of all: the host's listener may use this walker.
  if (ends > 1) cluiNote(YErrAmbiguous);
  return answer;
}

YcluiSyntaxNode* YcluiNfa::goBack(YcluiSyntaxNode* node) {
  nextNodes.clear();
  currentNode = node;
  terminated = 0;
  if (node == nullptr) return nullptr;
  nextNodes.pushSuccessors(*node);
  const bool isStart = graph != nullptr && node == graph->start;
  if (!isStart && waysBehind(node, NewSerial()) > 0) terminated = 1;
  return node;
}

// The order is that of one list whose top is popped and under which structural nodes put their
// successors: first what is pushed here, then nextNodes, then the queue.
YWord YcluiNfa::possibleNodes(YcluiSyntaxNodeP_Array& nodes) const {
  if (graph == nullptr || terminated != 0) return 0;
  const std::uint64_t serial = NewSerial();
  YcluiSyntaxNodeStk found;
  YcluiSyntaxNodeStk pushed;
  YcluiSyntaxNodeStk queue;
  int waiting = nextNodes.count();
  int taken = 0;
  while (pushed.isEmpty() == 0 || waiting > 0 || taken < queue.count()) {
    YcluiSyntaxNode* node = pushed.isEmpty() == 0 ? pushed.pop()
                            : waiting > 0         ? nextNodes.at(--waiting)
                                                  : queue.at(taken++);
    if (!Mark(node, serial)) continue;
    if (node->tokenId == 0) {
      queue.pushSuccessors(*node);
      continue;
    }
    found.push(node);
    if (node->kind == YcluiNodeClosure) pushed.pushSuccessors(*node);
  }
  nodes.resize(found.count());
  for (int i = 0; i < found.count(); ++i) nodes[i] = found.at(i);
  return 1;
}

// What waits is read from the top, and then the queue that grows behind it.
void YcluiNfa::findMatches(unsigned long tokenId) {
  matchedNodes.clear();
  workNodes.clear();
  const std::uint64_t serial = NewSerial();
  for (int i = savedNodes.count(); i > 0; --i) meet(savedNodes.at(i - 1), tokenId, serial);
  for (int i = 0; i < workNodes.count(); ++i) meet(workNodes.at(i), tokenId, serial);
}

void YcluiNfa::meet(YcluiSyntaxNode* node, unsigned long tokenId, std::uint64_t serial) {
  if (node->tokenId == 0) {
    if (Mark(node, serial)) open(*node, tokenId);
  } else if (node->tokenId == tokenId) {
    matchedNodes.push(node);
  }
}

// Nodes of other ids would be dropped when they come up; among thousands of alternatives it pays to
// leave them out at once.
void YcluiNfa::open(const YcluiSyntaxNode& node, unsigned long tokenId) {
  for (YcluiSuccessorIterator i(node); i.ring != nullptr; ++i) {
    const std::uint32_t id = i.node()->tokenId;
    if (id == 0 || id == tokenId) workNodes.push(i.node());
  }
}

void YcluiNfa::standBehindMatches() {
  nextNodes.clear();
  for (int i = 0; i < matchedNodes.count(); ++i) nextNodes.pushSuccessors(*matchedNodes.at(i));
  KeepFirstAndLast(nextNodes);
}

int YcluiNfa::endsBehindMatches() {
  const std::uint64_t serial = NewSerial();
  int ends = 0;
  for (int i = 0; i < matchedNodes.count(); ++i) ends += waysBehind(matchedNodes.at(i), serial);
  return ends;
}

// The ways from behind the node to the end of the graph, up to MostWays. Depth first: a node stays
// on the list below its successors, and is counted when it is on top again. A successor that is
// still Counting then stands before the node on the same way.
int YcluiNfa::waysBehind(YcluiSyntaxNode* node, std::uint64_t serial) {
  if (node->kind == YcluiNodeClosure) return 0;
  workNodes.clear();
  workNodes.push(node);
  while (workNodes.isEmpty() == 0) {
    YcluiSyntaxNode* top = workNodes.top();
    if (Mark(top, serial)) {
      top->note_ = Counting;
      for (YcluiSuccessorIterator i(*top); i.ring != nullptr; ++i) {
        if (IsPassable(*i.node()) && i.node()->mark_ != serial) workNodes.push(i.node());
      }
      continue;
    }
    if (top->note_ == Counting) top->note_ = sumOfWays(*top);
    workNodes.drop();
  }
  return node->note_;
}

int YcluiNfa::sumOfWays(const YcluiSyntaxNode& node) const {
  int ways = 0;
  for (YcluiSuccessorIterator i(node); i.ring != nullptr && ways < MostWays; ++i) {
    const YcluiSyntaxNode* next = i.node();
    if (!IsPassable(*next) || next->note_ == Counting) continue;
    ways += next->note_ + (graph != nullptr && next == graph->end ? 1 : 0);
  }
  return std::min(ways, MostWays);
}

std::uint64_t YcluiNfa::NewSerial() {
  static std::uint64_t last = 0;
  return ++last;
}

// Whether the walk of that number comes by the node for the first time.
bool YcluiNfa::Mark(YcluiSyntaxNode* node, std::uint64_t serial) {
  if (node->mark_ == serial) return false;
  node->mark_ = serial;
  return true;
}

void YcluiNfa::KeepFirstAndLast(YcluiSyntaxNodeStk& nodes) {
  const int all = nodes.count();
  for (int i = 0; i < all; ++i) nodes.at(i)->note_ = i;
  const std::uint64_t serial = NewSerial();
  nodes.clear();
  for (int i = 0; i < all; ++i) {
    YcluiSyntaxNode* node = nodes.at(i);
    if (Mark(node, serial) || node->note_ == i) nodes.push(node);
  }
}
