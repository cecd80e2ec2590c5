// A command syntax, or a fragment of one.

#ifndef SYNTAX_YCLUISYNTAXGRAPH_H_
#define SYNTAX_YCLUISYNTAXGRAPH_H_

#include <memory>

#include "syntax/YcluiSyntaxNode.h"

class YcluiStepCache;

// A graph owns every node that can be reached from `start` or `end`, and no node belongs to two
// graphs. What is inserted passes into its ownership:
//
//   auto* part = new YcluiSyntaxGraph;  // c or d
//   part->insertOr(new YcluiSyntaxNode(c));
//   part->insertOr(new YcluiSyntaxNode(d));
//   graph.insertAnd(part);  // built from the back: behind `b` comes the alternative
//   delete part;            // empty by now
//   graph.insertAnd(new YcluiSyntaxNode(b));
//
// A graph whose nodes have passed into another one has null `start` and `end`. It can only be
// destroyed: all operations on it answer 0 and change nothing, and so do those that are given it,
// or the graph itself, or null. Nobody has taken over what such a call was given.
//
// A graph must not be changed while a walker stands on it; one that resets or goes back behind the
// change walks the graph as it is then. Building costs constant time for each insertion,
// makeClosure and the destructor cost the nodes and links that they reach; none of them recurses.
// Nodes that cannot be allocated end the process.
class YQRT_API YcluiSyntaxGraph {
 public:
  YcluiSyntaxNode* start;  // the structural node at which a walk begins
  YcluiSyntaxNode* end;    // the structural node whose reaching ends a line

  // The empty sequence: `start`, which leads to `end`.
  YcluiSyntaxGraph();
  YcluiSyntaxGraph(const YcluiSyntaxGraph&) = delete;
  YcluiSyntaxGraph& operator=(const YcluiSyntaxGraph&) = delete;
  // Destroys each node once, whatever the links.
  ~YcluiSyntaxGraph();

  // Sequence: puts the node, or the fragment, in front of all that is there. Answers 1.
  YWord insertAnd(YcluiSyntaxNode* node);
  YWord insertAnd(YcluiSyntaxGraph* graph);

  // Alternative. A node comes behind the alternatives that are there; of a fragment and what is
  // there, a new start leads to the fragment first. The first link from `start` straight to `end`
  // goes, so that the first alternative takes the place of the empty sequence. Answers 1.
  YWord insertOr(YcluiSyntaxNode* node);
  YWord insertOr(YcluiSyntaxGraph* graph);

  // Repetition: turns the graph into any number of repetitions of itself, none included. `start` is
  // then what was the end: it leads out first, and back to what was the start second. What can be
  // reached from the start becomes a closure member, up to parts that are repeated already, which
  // are not walked through. Answers 1.
  YWord makeClosure();

  // Sets both bytes of the nodes that directly follow `start`, and of no others.
  void setPriority(unsigned char priority, unsigned char interruptLimit);

 private:
  // The last link of `start` when none of them led to `end`; only compared, never followed.
  const YRing* searched_ = nullptr;
  // What the walkers of the graph have in common; made by the first of them.
  friend class YcluiNfa;
  std::unique_ptr<YcluiStepCache> steps_;

  YWord isEmptied() const { return start == nullptr || end == nullptr ? 1 : 0; }
  YWord canTake(const YcluiSyntaxGraph* graph) const;
  void handOver();
  // Removes the first link from `start` to `end`. True when there was none.
  bool detachEnd();
};

// Destroys the node and all that can be reached from it; nothing for null.
YQRT_API void deleteNodesFrom(YcluiSyntaxNode* node);

#endif  // SYNTAX_YCLUISYNTAXGRAPH_H_
