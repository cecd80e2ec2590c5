// The walker.
//
// Taken literally, a step pops nodes off one list, to which structural nodes add their successors
// at the other end, and after every match it walks all paths to the end of the graph. On a graph
// whose paths part and meet again, the number of paths, of matches and of entries in nextNodes
// doubles with every parting. Three things keep a step linear without changing what it returns:
//
// Each structural node is opened at its first visit (findMatches).
//
// Of a node that is visited several times among the matches, or is several times in nextNodes, only
// the first and the last place are kept (KeepFirstAndLast). Nothing else can be observed:
//   - The node returned is the one that was visited last of all.
//   - A structural node is opened where it is visited first. nextNodes are read from the top, so
//     that is its last place there.
//   - Two matches of one node with a path to the end are more than one path, as any number above.
//   - The places left out change nothing in later steps either. What is visited in a step are
//     nextNodes, reversed, and a queue that depends on the order of the first openings only; the
//     matches are picked from these, and the new nextNodes are their successor lists in a row. The
//     first and the last place of a node in such a row are in the first and the last occurrence of
//     some matched node, which are kept, and in the order of those.
//
// Paths are counted up to 2, once for each node (endsAfter).
//
// What is visited in a step does not depend on the token, so the steps from one place can be cached
// together (YcluiStepCache). Without the cache every operation returns the same, only later.

#include "syntax/YcluiNfa.h"

#include <algorithm>
#include <new>

#include "foundation/YErr.h"
#include "foundation/YMemory.h"
#include "syntax/YcluiNodeNotes.h"
#include "syntax/YcluiStepCache.h"

namespace {

// The number of a node whose paths are being counted: it is on the path that is looked at.
constexpr std::int32_t Counting = -1;
// More paths than this make no difference.
constexpr int MostEnds = 2;
// Looking at so many links takes no longer than a search in a table.
constexpr int FewLinks = 16;
// How far to follow nodes with one successor: more than fragments are nested, and an end to cycles.
constexpr int MostHops = 64;
// Lists that a large state needed while it was learned are freed, since they are not needed again.
constexpr int MostKept = 64;
// For findMatches: nodes of all ids match.
constexpr std::uint32_t AnyToken = 0;

// The successor of a node with one link, null for any other.
YcluiSyntaxNode* OnlySuccessor(const YcluiSyntaxNode& node) {
  const YRing* first = node.first();
  if (first == nullptr || first != node.last()) return nullptr;
  return static_cast<YcluiSyntaxNode*>(first->item());
}

// Whether the walk to the end of the graph passes the node.
bool IsPassable(const YcluiSyntaxNode& node) {
  return node.tokenId == 0 && node.kind != YcluiNodeClosure;
}

// Whether it is known where the step leads.
bool HasPlaces(const YcluiCachedStep& step) {
  return step.isSingle || (step.next != nullptr && step.next->placeCount > 0);
}

const char* TextOfAction(const YcluiSyntaxNode& node) {
  return node.action == nullptr ? nullptr : node.action->buffer;
}

// What the walk under way has noted. Walks neither nest nor call anybody.
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
    if (last >= 0) last = ~last;  // the first place has been passed
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
  clearPlaces();
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
  return step->ends >= 0 && HasPlaces(*step) ? take(*step) : walk(id, step);
}

YcluiSyntaxNode* YcluiNfa::goBack(YcluiSyntaxNode* node) {
  clearPlaces();
  currentNode = node;
  terminated = 0;
  if (node == nullptr) return nullptr;
  if (node->tokenId != 0) {
    behind = node;
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
      taken != nullptr && taken->node == &accepted && takenGeneration == generation();
  return isCached ? taken->action : TextOfAction(accepted);
}

// The order is that of one list whose top is popped and under which structural nodes put their
// successors: first what is pushed here, then nextNodes, then the queue.
YWord YcluiNfa::possibleNodes(YcluiSyntaxNodeP_Array& nodes) const {
  if (graph == nullptr || terminated != 0) return 0;
  YcluiSyntaxNodeStk found;
  YcluiSyntaxNodeStk pushed;
  YcluiSyntaxNodeStk queue;
  if (behind != nullptr) {
    depend(behind);
    pushed.pushSuccessors(*behind);
  }
  int waiting = behind != nullptr ? 0 : nextNodes.count();
  int read = 0;
  Notes.clear();
  while (pushed.isEmpty() == 0 || waiting > 0 || read < queue.count()) {
    YcluiSyntaxNode* node = pushed.isEmpty() == 0 ? pushed.pop()
                            : waiting > 0         ? nextNodes.at(--waiting)
                                                  : queue.at(read++);
    if (!Notes.add(node)) continue;
    depend(node);
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

const YcluiSyntaxNode* YcluiNfa::place() const {
  return here().node;
}

std::uint64_t YcluiNfa::generation() const {
  return graph == nullptr ? 0 : steps().generation(graph->end);
}

// --- Places

void YcluiNfa::clearPlaces() {
  nextNodes.clear();
  behind = nullptr;
  taken = nullptr;
}

void YcluiNfa::listNext() {
  if (behind == nullptr || nextNodes.isEmpty() == 0) return;
  nextNodes.pushSuccessors(*behind);
  KeepFirstAndLast(nextNodes);
}

void YcluiNfa::standAfterMatches() {
  clearPlaces();
  if (matchedNodes.count() == 1) {
    behind = matchedNodes.at(0);
    return;
  }
  for (int i = 0; i < matchedNodes.count(); ++i) nextNodes.pushSuccessors(*matchedNodes.at(i));
  KeepFirstAndLast(nextNodes);
}

// --- The plain walk

// The places are read from the top, then the queue that grows after them. Without a match the
// walker stays where it is.
void YcluiNfa::findMatches(std::uint32_t tokenId) {
  matchedNodes.clear();
  workNodes.clear();
  listNext();
  if (behind != nullptr) depend(behind);
  Notes.clear();
  for (int i = nextNodes.count(); i > 0; --i) visit(nextNodes.at(i - 1), tokenId);
  for (int i = 0; i < workNodes.count(); ++i) visit(workNodes.at(i), tokenId);
  KeepFirstAndLast(matchedNodes);
}

void YcluiNfa::visit(YcluiSyntaxNode* node, std::uint32_t tokenId) {
  depend(node);
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

// The paths from the node to the end of the graph, up to MostEnds; what was counted since the notes
// were cleared counts. Depth first: a node stays on the list below its successors, and its number
// is worked out when it is on top again. A successor that is still Counting is then before the node
// on the same path.
int YcluiNfa::endsAfter(YcluiSyntaxNode* node) {
  depend(node);
  if (node->kind == YcluiNodeClosure) return 0;
  workNodes.clear();
  workNodes.push(node);
  while (workNodes.isEmpty() == 0) {
    YcluiSyntaxNode* top = workNodes.top();
    if (Notes.add(top, Counting)) {
      for (YcluiSuccessorIterator i(*top); i.ring != nullptr; ++i) {
        depend(i.node());
        if (IsPassable(*i.node()) && Notes.find(i.node()) == nullptr) workNodes.push(i.node());
      }
      continue;
    }
    if (*Notes.find(top) == Counting) *Notes.find(top) = sumOfEnds(*top);
    workNodes.drop();
  }
  return *Notes.find(node);
}

int YcluiNfa::sumOfEnds(const YcluiSyntaxNode& node) {
  int ends = 0;
  for (YcluiSuccessorIterator i(node); i.ring != nullptr && ends < MostEnds; ++i) {
    const YcluiSyntaxNode* next = i.node();
    if (!IsPassable(*next) || *Notes.find(next) == Counting) continue;
    ends += *Notes.find(next) + (graph != nullptr && next == graph->end ? 1 : 0);
  }
  return std::min(ends, MostEnds);
}

YcluiSyntaxNode* YcluiNfa::walk(std::uint32_t tokenId, YcluiCachedStep* step) {
  findMatches(tokenId);
  if (matchedNodes.isEmpty() != 0) return nullptr;
  YcluiSyntaxNode* answer = matchedNodes.top();
  const int ends = endsAfterMatches();
  standAfterMatches();
  if (step != nullptr) {
    step->ends = static_cast<std::int8_t>(ends);
    step->action = steps().keptText(TextOfAction(*answer));
    taken = step;
  }
  return arrive(answer, ends);
}

YcluiSyntaxNode* YcluiNfa::arrive(YcluiSyntaxNode* node, int ends) {
  currentNode = node;
  if (ends > 0) terminated = 1;
  // Last of all: the host's listener may use this walker.
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

void YcluiNfa::depend(const YcluiSyntaxNode* node) const {
  if (graph != nullptr) steps().depend(node);
}

// All places that lead on to one structural node only are that node, so that they share its state.
YcluiPlace YcluiNfa::here() const {
  const bool isNode =
      behind != nullptr || (nextNodes.count() == 1 && nextNodes.at(0)->tokenId == 0);
  if (!isNode) return {nullptr, &nextNodes};
  YcluiSyntaxNode* node = behind != nullptr ? behind : nextNodes.at(0);
  for (int i = 0; i < MostHops; ++i) {
    depend(node);
    YcluiSyntaxNode* next = OnlySuccessor(*node);
    if (next == nullptr || next->tokenId != 0) break;
    node = next;
  }
  return {node, nullptr};
}

// Null where the step has to be walked.
YcluiWalkState* YcluiNfa::cachedState() {
  if (graph == nullptr) return nullptr;
  YcluiStepCache& cache = steps();
  const std::uint64_t generation = cache.generation(graph->end);
  if (takenGeneration != generation) taken = nullptr;
  takenGeneration = generation;
  if (taken != nullptr && taken->next != nullptr) return taken->next;
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
  if (taken != nullptr) taken->next = state;
  return state;
}

YcluiSyntaxNode* YcluiNfa::take(YcluiCachedStep& step) {
  clearPlaces();
  taken = &step;
  if (step.isSingle) {
    behind = step.node;
  } else {
    YcluiWalkState& next = *step.next;
    for (std::uint32_t i = 0; i < next.placeCount; ++i) nextNodes.push(next.places()[i]);
  }
  return arrive(step.node, step.ends);
}
