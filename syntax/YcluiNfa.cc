// The walker.
//
// This is a simulation of a nondeterministic automaton. The simplest form of a step pops nodes off
// one list; a structural node puts its successors at the other end of the list, and after every
// match all paths to the end of the graph are followed. On a graph whose paths fork and join, the
// numbers of paths, of matches and of entries in nextNodes double with every fork. Three measures
// make a step linear and do not change its results:
//
// 1. A structural node contributes its successors at its first visit only (findMatches).
//
// 2. Of the occurrences of a node in the list of matches, and of those in nextNodes, only the first
//    and the last are kept (KeepFirstAndLast). The others have no effect:
//    - The node that is returned is the last match.
//    - A structural node contributes its successors at its first visit. nextNodes is read from the
//      top, so that is its last occurrence there.
//    - Two matches of one node with a path to the end are more than one path already.
//    - Later steps are the same too. A step visits nextNodes in reverse and then a queue, whose
//      order depends only on the first visits of structural nodes. The matches are some of the
//      visited nodes, and the new nextNodes is the concatenation of their successor lists. So the
//      first and the last occurrence of a node in the new nextNodes come from the first or the last
//      occurrence of a match, and those are kept in their order.
//
// 3. Paths to the end are counted once for each node, and no further than 2 (endsAfter).
//
// The nodes that a step visits do not depend on the token, so the steps of all tokens from one
// place are cached together (YcluiStepCache). The cache changes no result. fuzz/walker_reference.cc
// implements the simplest form, and tests compare both on random graphs.

#include "syntax/YcluiNfa.h"

#include <algorithm>
#include <new>

#include "foundation/YErr.h"
#include "foundation/YMemory.h"
#include "syntax/YcluiNodeNotes.h"
#include "syntax/YcluiStepCache.h"

namespace {

// The number of a node whose paths are being counted: it is on the path that is being followed.
constexpr std::int32_t Counting = -1;
// The number of paths above which counting stops.
constexpr int MostEnds = 2;
// A search through so many links takes no longer than a search in a table.
constexpr int FewLinks = 16;
// The number of nodes with one successor that `here` follows. Fragments are nested less deeply, and
// it ends a cycle.
constexpr int MostHops = 64;
// Work lists that became longer than this while a state was learned are freed. The steps from a
// cached state do not need them.
constexpr int MostKept = 64;
// For findMatches: token nodes of every id match.
constexpr std::uint32_t AnyToken = 0;

// The successor of a node with one link, null for any other.
YcluiSyntaxNode* OnlySuccessor(const YcluiSyntaxNode& node) {
  const YRing* first = node.first();
  if (first == nullptr || first != node.last()) return nullptr;
  return static_cast<YcluiSyntaxNode*>(first->item());
}

// Whether a path to the end of the graph may contain the node after its first one.
bool IsPassable(const YcluiSyntaxNode& node) {
  return node.tokenId == 0 && node.kind != YcluiNodeClosure;
}

// Whether the place to which the step leads is cached.
bool LeadsToKnownPlace(const YcluiCachedStep& step) {
  return step.isSingle || (step.next != nullptr && step.next->nodeCount > 0);
}

const char* TextOfAction(const YcluiSyntaxNode& node) {
  return node.action == nullptr ? nullptr : node.action->buffer;
}

// The numbers of the nodes that the current search has visited: whoever begins a search clears it.
// It is shared by all walkers, because no operation calls back or is called during another one.
thread_local YcluiNodeNotes Notes;

void KeepFirstAndLast(YcluiSyntaxNodeStk& nodes) {
  const int all = nodes.count();
  if (all < 3) return;
  Notes.clear();
  Notes.reserve(static_cast<std::size_t>(all));
  for (int i = 0; i < all; ++i) {
    if (!Notes.add(nodes.at(i), i)) *Notes.find(nodes.at(i)) = i;
  }
  nodes.clear();
  for (int i = 0; i < all; ++i) {
    YcluiSyntaxNode* node = nodes.at(i);
    std::int32_t& last = *Notes.find(node);
    if (last >= 0 || last == ~i) nodes.push(node);
    if (last >= 0) last = ~last;  // the first occurrence is kept
  }
}

}  // namespace

YWord YcluiNfa::syntaxGraph(YcluiSyntaxGraph* walked) {
  graph = walked;
  return reset();
}

YcluiSyntaxNode* YcluiNfa::indefiniteNode(const unsigned long& tokenId) const {
  if (indefiniteRoot == nullptr) return nullptr;
  int links = 0;
  for (YcluiSuccessorIterator i(*indefiniteRoot); i.ring != nullptr; ++i) {
    if (i.node()->tokenId == tokenId) return i.node();
    if (++links > FewLinks && graph != nullptr) return steps().successor(*indefiniteRoot, tokenId);
  }
  return nullptr;
}

YWord YcluiNfa::reset() {
  clearPlace();
  if (graph == nullptr || graph->start == nullptr) return 0;
  currentNode = graph->start;
  nextNodes.push(graph->start);
  terminated = 0;
  return 1;
}

YcluiSyntaxNode* YcluiNfa::stepNext(const unsigned long& tokenId) {
  if (YcluiSyntaxNode* indefinite = indefiniteNode(tokenId)) return indefinite;
  const auto id = static_cast<std::uint32_t>(tokenId);
  if (id == 0 || id != tokenId) return nullptr;
  YcluiWalkState* state = cachedState();
  if (state == nullptr) return walk(id, nullptr);
  YcluiCachedStep* step = state->step(id);
  if (step == nullptr) return nullptr;
  return step->ends >= 0 && LeadsToKnownPlace(*step) ? follow(*step) : walk(id, step);
}

YcluiSyntaxNode* YcluiNfa::goBack(YcluiSyntaxNode* node) {
  clearPlace();
  currentNode = node;
  terminated = 0;
  if (node == nullptr) return nullptr;
  if (node->tokenId != 0) {
    predecessor = node;
  } else {
    nextNodes.pushSuccessors(*node);
    KeepFirstAndLast(nextNodes);
  }
  const bool isStart = graph != nullptr && node == graph->start;
  Notes.clear();
  if (!isStart && endsAfter(node) > 0) terminated = 1;
  return node;
}

const char* YcluiNfa::actionText(const YcluiSyntaxNode& accepted) const {
  const bool isCached =
      lastStep != nullptr && lastStep->node == &accepted && lastGeneration == generation();
  return isCached ? lastStep->action : TextOfAction(accepted);
}

// The order is that of a single list from whose top nodes are popped: a token node in a repeated
// part pushes its successors on top, a structural node puts them at the bottom. Here these are
// `pushed`, nextNodes and `queue`.
YWord YcluiNfa::possibleNodes(YcluiSyntaxNodeP_Array& nodes) const {
  if (graph == nullptr || terminated != 0) return 0;
  YcluiSyntaxNodeStk found;
  YcluiSyntaxNodeStk pushed;
  YcluiSyntaxNodeStk queue;
  if (predecessor != nullptr) {
    dependOn(predecessor);
    pushed.pushSuccessors(*predecessor);
  }
  int unread = predecessor != nullptr ? 0 : nextNodes.count();
  int fromQueue = 0;
  Notes.clear();
  while (pushed.isEmpty() == 0 || unread > 0 || fromQueue < queue.count()) {
    YcluiSyntaxNode* node = pushed.isEmpty() == 0 ? pushed.pop()
                            : unread > 0          ? nextNodes.at(--unread)
                                                  : queue.at(fromQueue++);
    if (!Notes.add(node)) continue;
    dependOn(node);
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

YWord YcluiNfa::acceptingNodes(YcluiSyntaxNodeP_Array& nodes) const {
  if (graph == nullptr || terminated != 0) return 0;
  YcluiNfa walker(*this);
  walker.findMatches(AnyToken);
  const YcluiSyntaxNodeStk& found = walker.matchedNodes;
  nodes.resize(found.count());
  for (int i = 0; i < found.count(); ++i) nodes[i] = found.at(i);
  return 1;
}

const YcluiSyntaxNode* YcluiNfa::place() const {
  return here().node;
}

std::uint64_t YcluiNfa::generation() const {
  return graph == nullptr ? 0 : steps().generation(graph->end);
}

bool YcluiNfa::isWith(const YcluiNfa& other) const {
  if (graph != other.graph || indefiniteRoot != other.indefiniteRoot) return false;
  if (terminated != other.terminated || currentNode != other.currentNode) return false;
  if (predecessor != nullptr || other.predecessor != nullptr) {
    return predecessor == other.predecessor;
  }
  if (nextNodes.count() != other.nextNodes.count()) return false;
  for (int i = 0; i < nextNodes.count(); ++i) {
    if (nextNodes.at(i) != other.nextNodes.at(i)) return false;
  }
  return true;
}

// --- The place

void YcluiNfa::clearPlace() {
  nextNodes.clear();
  predecessor = nullptr;
  lastStep = nullptr;
}

void YcluiNfa::listNext() {
  if (predecessor == nullptr || nextNodes.isEmpty() == 0) return;
  nextNodes.pushSuccessors(*predecessor);
  KeepFirstAndLast(nextNodes);
}

void YcluiNfa::moveAfterMatches() {
  clearPlace();
  if (matchedNodes.count() == 1) {
    predecessor = matchedNodes.at(0);
    return;
  }
  for (int i = 0; i < matchedNodes.count(); ++i) nextNodes.pushSuccessors(*matchedNodes.at(i));
  KeepFirstAndLast(nextNodes);
}

// --- A step without the cache

// Visits nextNodes from the top, then workNodes as a queue to which structural nodes append their
// successors. Does not change the place.
void YcluiNfa::findMatches(std::uint32_t tokenId) {
  matchedNodes.clear();
  workNodes.clear();
  listNext();
  if (predecessor != nullptr) dependOn(predecessor);
  Notes.clear();
  for (int i = nextNodes.count(); i > 0; --i) visit(nextNodes.at(i - 1), tokenId);
  for (int i = 0; i < workNodes.count(); ++i) visit(workNodes.at(i), tokenId);
  KeepFirstAndLast(matchedNodes);
}

void YcluiNfa::visit(YcluiSyntaxNode* node, std::uint32_t tokenId) {
  dependOn(node);
  if (node->tokenId == 0) {
    if (Notes.add(node)) workNodes.pushSuccessors(*node);
  } else if (node->tokenId == tokenId || tokenId == AnyToken) {
    matchedNodes.push(node);
  }
}

int YcluiNfa::endsAfterMatches() {
  Notes.clear();
  int ends = 0;
  for (int i = 0; i < matchedNodes.count(); ++i) ends += endsAfter(matchedNodes.at(i));
  return std::min(ends, MostEnds);
}

// Returns the number of paths from the node to the end of the graph, at most MostEnds, and stores
// the numbers of all nodes on these paths in Notes; numbers that are in Notes already are used. The
// search is depth first: a node stays on workNodes below its successors, and its number is computed
// when it is at the top again. A successor that is still Counting then is an earlier node of the
// same path.
int YcluiNfa::endsAfter(YcluiSyntaxNode* node) {
  dependOn(node);
  if (node->kind == YcluiNodeClosure) return 0;
  workNodes.clear();
  workNodes.push(node);
  while (workNodes.isEmpty() == 0) {
    YcluiSyntaxNode* top = workNodes.top();
    if (Notes.add(top, Counting)) {
      for (YcluiSuccessorIterator i(*top); i.ring != nullptr; ++i) {
        dependOn(i.node());
        if (IsPassable(*i.node()) && Notes.find(i.node()) == nullptr) workNodes.push(i.node());
      }
      continue;
    }
    if (*Notes.find(top) == Counting) *Notes.find(top) = sumOfEnds(*top);
    workNodes.drop();
  }
  return *Notes.find(node);
}

// REQUIRES: the passable successors of the node are in Notes.
int YcluiNfa::sumOfEnds(const YcluiSyntaxNode& node) {
  int ends = 0;
  for (YcluiSuccessorIterator i(node); i.ring != nullptr && ends < MostEnds; ++i) {
    const YcluiSyntaxNode* next = i.node();
    if (!IsPassable(*next) || *Notes.find(next) == Counting) continue;
    ends += *Notes.find(next) + (graph != nullptr && next == graph->end ? 1 : 0);
  }
  return std::min(ends, MostEnds);
}

// Makes a step that is not cached completely, and completes `step` unless it is null.
YcluiSyntaxNode* YcluiNfa::walk(std::uint32_t tokenId, YcluiCachedStep* step) {
  if (step != nullptr) {
    steps().getMatches(*step, matchedNodes);
  } else {
    findMatches(tokenId);
  }
  if (matchedNodes.isEmpty() != 0) return nullptr;
  YcluiSyntaxNode* accepting = matchedNodes.top();
  const int ends = endsAfterMatches();
  moveAfterMatches();
  if (step != nullptr) {
    step->ends = static_cast<std::int8_t>(ends);
    step->action = steps().keptText(TextOfAction(*accepting));
    lastStep = step;
  }
  return arrive(accepting, ends);
}

YcluiSyntaxNode* YcluiNfa::arrive(YcluiSyntaxNode* node, int ends) {
  currentNode = node;
  if (ends > 0) terminated = 1;
  // This comes last because a listener of the error manager may use the walker.
  if (ends > 1) cluiNote(YErrAmbiguous);
  return node;
}

// --- The cache

YcluiStepCache& YcluiNfa::steps() const {
  if (graph->steps_ == nullptr) {
    graph->steps_.reset(YChecked(new (std::nothrow) YcluiStepCache));
  }
  return *graph->steps_;
}

void YcluiNfa::dependOn(const YcluiSyntaxNode* node) const {
  if (graph != nullptr) steps().dependOn(node);
}

// A place from which all paths lead through one structural node is identified by that node, so that
// such places share a state.
YcluiPlace YcluiNfa::here() const {
  const bool isNode =
      predecessor != nullptr || (nextNodes.count() == 1 && nextNodes.at(0)->tokenId == 0);
  if (!isNode) return {nullptr, &nextNodes};
  YcluiSyntaxNode* node = predecessor != nullptr ? predecessor : nextNodes.at(0);
  for (int i = 0; i < MostHops; ++i) {
    dependOn(node);
    YcluiSyntaxNode* next = OnlySuccessor(*node);
    if (next == nullptr || next->tokenId != 0) break;
    node = next;
  }
  return {node, nullptr};
}

// Returns the cached state of the place; null when the step cannot use the cache.
YcluiWalkState* YcluiNfa::cachedState() {
  if (graph == nullptr) return nullptr;
  YcluiStepCache& cache = steps();
  const std::uint64_t generation = cache.generation(graph->end);
  if (lastGeneration != generation) lastStep = nullptr;
  lastGeneration = generation;
  if (lastStep != nullptr && lastStep->next != nullptr) return lastStep->next;
  const YcluiPlace place = here();
  bool shouldLearn = false;
  YcluiWalkState* state = cache.find(place, shouldLearn);
  if (shouldLearn) {
    findMatches(AnyToken);
    Notes.clear();
    state = cache.learn(place, matchedNodes);
    if (matchedNodes.count() > MostKept) {
      YcluiSyntaxNodeStk().swap(matchedNodes);
      YcluiSyntaxNodeStk().swap(workNodes);
    }
  }
  if (lastStep != nullptr) lastStep->next = state;
  return state;
}

YcluiSyntaxNode* YcluiNfa::follow(YcluiCachedStep& step) {
  clearPlace();
  lastStep = &step;
  if (step.isSingle) {
    predecessor = step.node;
  } else {
    YcluiWalkState& next = *step.next;
    for (std::uint32_t i = 0; i < next.nodeCount; ++i) nextNodes.push(next.nodes()[i]);
  }
  return arrive(step.node, step.ends);
}
