// The walker over a syntax graph.

#ifndef SYNTAX_YCLUINFA_H_
#define SYNTAX_YCLUINFA_H_

#include <cstdint>

#include "foundation/YTypes.h"
#include "syntax/YcluiSyntaxGraph.h"
#include "syntax/YcluiSyntaxNodeStk.h"

struct YcluiCachedStep;
struct YcluiPlace;
struct YcluiWalkState;

// Takes token ids and follows every path through the graph that they allow at once, so that two
// commands may begin with the same words and part only later. It owns neither the graph nor the
// indefinite nodes, and a copy walks on from the same place by itself.
//
// Every operation is linear in the part of the graph that it reaches and does not recurse. What
// steps have found is cached with the graph, for all walkers over it, until the graph changes:
// where the cache has room, a step from a place that was visited twice costs one search, and
// allocates nothing. All walkers of a process run, and all graphs that were walked are changed, in
// one thread.
class YQRT_API YcluiNfa {
 public:
  YcluiNfa() = default;
  YcluiNfa(const YcluiNfa&) = default;
  YcluiNfa& operator=(const YcluiNfa&) = default;
  ~YcluiNfa() = default;

  // Stores the graph, null for none, and resets. Returns what `reset` returns.
  YWord syntaxGraph(YcluiSyntaxGraph* walked);
  YcluiSyntaxGraph* syntaxGraph() const { return graph; }

  // Stores the structural node, null for none, whose successors are accepted anywhere in a line. A
  // walk that is under way goes on.
  void setIndefiniteNode(YcluiSyntaxNode* root) { indefiniteRoot = root; }
  // The first indefinite node for the token, or null.
  YcluiSyntaxNode* indefiniteNode(const unsigned long& tokenId) const;

  // Goes to the start of the graph and clears the termination. 0 without a graph, or with one whose
  // nodes were moved to another: then nothing but indefinite nodes is accepted.
  YWord reset();

  // Takes a token and returns the node that accepted it; null for a refusal, which changes nothing
  // and records no code.
  //
  // An indefinite node comes before every node of the graph and changes nothing either. Otherwise
  // nodes are visited in this order: those at which the walker is, the one noted last first, then
  // the successors of structural nodes, breadth first. Each structural node is opened at its first
  // visit. Every visited node of the token's id matches, and the walk goes on after all of them;
  // the one visited last is returned. Priorities play no part.
  //
  // The line is terminated when a match has a token-free path to the end of the graph. Such a path
  // neither begins at a closure member nor passes one, and goes round a cycle of plain structural
  // nodes once. When there is more than one path in a step, YErrAmbiguous is recorded as YErrNote,
  // last of all, and the step counts all the same.
  YcluiSyntaxNode* stepNext(const unsigned long& tokenId);

  // Leaves the walker as if the node had just accepted a token, `isTerminated` included, and
  // returns it. That is exact where one node matched in the step that is undone; where several did,
  // only the paths after this one come back. The start of the graph gives what `reset` gives. Null
  // refuses everything but indefinite nodes until the next reset or goBack.
  YcluiSyntaxNode* goBack(YcluiSyntaxNode* node);

  // 1 when an accepted token since the last reset, or the node gone back to, had a token-free path
  // to the end. Later tokens do not clear it.
  YWord isTerminated() const { return terminated; }

  // The node that accepted the last token; after a reset the start of the graph.
  YcluiSyntaxNode* currentSyntaxNode() const { return currentNode; }

  // The text of the action of a node that stepNext returned, null when it has none. Faster than
  // asking the node, as long as no other token was taken.
  const char* actionText(const YcluiSyntaxNode& accepted) const;

  // Fills `nodes` with the token nodes that could accept the next token, each once; no indefinite
  // ones. A member of a repeated part brings what follows it along, so of a sequence that repeats
  // all is listed, though it is accepted in its order only. 0 without a graph or when terminated,
  // and `nodes` stays as it was.
  YWord possibleNodes(YcluiSyntaxNodeP_Array& nodes) const;

  // A node that identifies the state of the walker: where this and the generation are the same, the
  // same nodes are possible. Null where the state is more than one node. The generation is never
  // the same for two graphs, nor for a graph before and after a change; 0 without a graph.
  const YcluiSyntaxNode* place() const;
  std::uint64_t generation() const;

 protected:
  YcluiSyntaxGraph* graph = nullptr;
  YcluiSyntaxNode* indefiniteRoot = nullptr;
  YWord terminated = 0;
  YcluiSyntaxNode* currentNode = nullptr;
  YcluiSyntaxNodeStk nextNodes;     // where the next token is sought, the top first; see listNext
  YcluiSyntaxNodeStk workNodes;     // work list of a walk
  YcluiSyntaxNodeStk matchedNodes;  // the matches of a step, in the order of their visits

  // After a single match nextNodes stays empty until a walk needs the list.
  void listNext();

 private:
  YcluiSyntaxNode* behind = nullptr;  // the token node whose successors are nextNodes, or null
  // The cached step that led here, of that generation of the cache; null when there is none.
  YcluiCachedStep* taken = nullptr;
  std::uint64_t takenGeneration = 0;

  void clearPlaces();
  void standAfterMatches();
  void findMatches(std::uint32_t tokenId);
  void visit(YcluiSyntaxNode* node, std::uint32_t tokenId);
  int endsAfterMatches();
  int endsAfter(YcluiSyntaxNode* node);
  int sumOfEnds(const YcluiSyntaxNode& node);
  YcluiSyntaxNode* walk(std::uint32_t tokenId, YcluiCachedStep* step);
  YcluiSyntaxNode* take(YcluiCachedStep& step);
  YcluiSyntaxNode* arrive(YcluiSyntaxNode* node, int ends);

  YcluiStepCache& steps() const;
  void depend(const YcluiSyntaxNode* node) const;
  YcluiPlace here() const;
  YcluiWalkState* cachedState();
};

#endif  // SYNTAX_YCLUINFA_H_
