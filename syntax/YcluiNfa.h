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

// Consumes token ids and follows all paths through the graph that accept them at the same time, so
// that several commands may begin with the same words. The place of a walker is the set of nodes
// that it has reached; their successors can accept the next token. A walker owns neither the graph
// nor the indefinite nodes. A copy has the same place and is independent of the original.
//
// Every operation is linear in the part of the graph that it reaches and does not recurse. The
// results of steps are cached with the graph, for all its walkers, until the graph changes. From
// the third visit of a place on, a step that was made before is one search and does not allocate,
// unless the cache is full. A graph, with its walkers and the nodes that they read, is used by one
// thread at a time.
class YQRT_API YcluiNfa {
 public:
  YcluiNfa() = default;
  YcluiNfa(const YcluiNfa&) = default;
  YcluiNfa& operator=(const YcluiNfa&) = default;
  ~YcluiNfa() = default;

  // Sets the graph, or none when null, and resets. Returns the result of `reset`.
  YWord syntaxGraph(YcluiSyntaxGraph* walked);
  YcluiSyntaxGraph* syntaxGraph() const { return graph; }

  // Sets the structural node whose successors are the indefinite nodes, which are accepted anywhere
  // in a line; null for none. The place does not change.
  void setIndefiniteNode(YcluiSyntaxNode* root) { indefiniteRoot = root; }
  // The first indefinite node that accepts the token, or null.
  YcluiSyntaxNode* indefiniteNode(const unsigned long& tokenId) const;

  // Moves to the start of the graph and clears isTerminated. Returns 0 when there is no graph or
  // its nodes were moved to another one; only indefinite nodes are accepted then.
  YWord reset();

  // Consumes a token and returns the node that accepts it. Returns null when none does; then
  // nothing changes and no code is recorded.
  //
  // An indefinite node takes precedence over the graph, and the place does not change. Otherwise
  // the step visits nextNodes from the top, and then, breadth first, the successors of the
  // structural nodes among them. A structural node contributes its successors at its first visit
  // only. Every visited node with the token's id matches. The new place is after all matches, and
  // the match visited last is returned. Priorities have no influence.
  //
  // The line is terminated when a match has a path to the end of the graph that needs no token.
  // Such a path contains no closure member, its first node included, and no node twice. When the
  // matches of a step have more than one such path, YErrAmbiguous is recorded as YErrNote; the step
  // is valid all the same.
  YcluiSyntaxNode* stepNext(const unsigned long& tokenId);

  // Moves to the place after the node, as if it alone had just accepted a token, and returns it.
  // isTerminated is set accordingly. This undoes steps exactly when the node was the only match of
  // its step; if there were others, the paths after them are lost. The start of the graph has the
  // effect of `reset`. After null, only indefinite nodes are accepted until the next reset or
  // goBack.
  YcluiSyntaxNode* goBack(YcluiSyntaxNode* node);

  // 1 when the line is complete: a token accepted since the last reset, or the node of the last
  // goBack, had a path to the end that needs no token. Later tokens do not clear it.
  YWord isTerminated() const { return terminated; }

  // The node of the graph that accepted the last token, or the node of goBack; after a reset the
  // start of the graph.
  YcluiSyntaxNode* currentSyntaxNode() const { return currentNode; }

  // The text of the action of a node that stepNext returned, null when it has none. For the node of
  // the last step this is faster than reading the node.
  const char* actionText(const YcluiSyntaxNode& accepted) const;

  // Sets `nodes` to the token nodes that could accept the next token, each once, without indefinite
  // ones. After a member of a repeated part its successors are listed too, so all words of a
  // repeated sequence are, although they are accepted only in their order. Returns 0 and leaves
  // `nodes` unchanged when there is no graph or the line is terminated.
  YWord possibleNodes(YcluiSyntaxNodeP_Array& nodes) const;
  // The same with the token nodes that do accept the next token, in the order in which a step
  // visits them. One that is visited several times is there twice, where it is visited first and
  // last: of several nodes of one id, a step returns the last one of these.
  YWord acceptingNodes(YcluiSyntaxNodeP_Array& nodes) const;

  // A key for results that depend on the place: for the same node and generation, possibleNodes
  // gives the same nodes. `place` is null when no single node identifies the place. No two graphs
  // have the same generation, nor has a graph before and after a change; it is 0 without a graph.
  const YcluiSyntaxNode* place() const;
  std::uint64_t generation() const;

  // Whether the other walker is in the same graph at the same place, so that all further steps of
  // both have the same results. It may be false for places that differ in their making only.
  bool isWith(const YcluiNfa& other) const;

 protected:
  YcluiSyntaxGraph* graph = nullptr;
  YcluiSyntaxNode* indefiniteRoot = nullptr;
  YWord terminated = 0;
  YcluiSyntaxNode* currentNode = nullptr;
  YcluiSyntaxNodeStk nextNodes;     // the candidates for the next token; see listNext
  YcluiSyntaxNodeStk workNodes;     // work list of a step
  YcluiSyntaxNodeStk matchedNodes;  // the matches of a step, in the order of their visits

  // Fills nextNodes. After a single match this is postponed until a step needs the list.
  void listNext();

 private:
  // The single token node whose successors are nextNodes; null when there is none.
  YcluiSyntaxNode* predecessor = nullptr;
  // The cached step that led to this place, null when there is none. It is valid in that generation
  // of the cache only.
  YcluiCachedStep* lastStep = nullptr;
  std::uint64_t lastGeneration = 0;

  void clearPlace();
  void moveAfterMatches();
  void findMatches(std::uint32_t tokenId);
  void visit(YcluiSyntaxNode* node, std::uint32_t tokenId);
  int endsAfterMatches();
  int endsAfter(YcluiSyntaxNode* node);
  int sumOfEnds(const YcluiSyntaxNode& node);
  YcluiSyntaxNode* walk(std::uint32_t tokenId, YcluiCachedStep* step);
  YcluiSyntaxNode* follow(YcluiCachedStep& step);
  YcluiSyntaxNode* arrive(YcluiSyntaxNode* node, int ends);

  YcluiStepCache& steps() const;
  void dependOn(const YcluiSyntaxNode* node) const;
  YcluiPlace here() const;
  YcluiWalkState* cachedState();
};

#endif  // SYNTAX_YCLUINFA_H_
