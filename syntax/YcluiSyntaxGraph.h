// A command syntax, or a fragment of one.

#ifndef SYNTAX_YCLUISYNTAXGRAPH_H_
#define SYNTAX_YCLUISYNTAXGRAPH_H_

#include <memory>

#include "syntax/YcluiSyntaxNode.h"

class YcluiStepCache;

// A graph owns every node that can be reached from `start` or `end`, and no node belongs to two
// graphs. Insertions move nodes into the graph. Sequences are built from the back; for `b ( c | d
// )`:
//
//   YcluiSyntaxGraph graph;
//   YcluiSyntaxGraph part;
//   part.insertOr(new YcluiSyntaxNode(c));
//   part.insertOr(new YcluiSyntaxNode(d));
//   graph.insertAnd(&part);                   // `part` is emptied
//   graph.insertAnd(new YcluiSyntaxNode(b));
//
// A graph whose nodes were moved into another one is emptied: its `start` and `end` are null, its
// operations return 0 and change nothing, and it cannot be inserted. Inserting an emptied graph,
// null, or a graph into itself also returns 0 and changes nothing; the caller still owns the
// argument.
//
// While the graph changes, no walker may be in it; a walker calls reset or goBack afterwards. An
// insertion takes constant time. makeClosure and the destructor are linear in the nodes and links
// that they reach and do not recurse. Running out of memory ends the process.
class YQRT_API YcluiSyntaxGraph {
 public:
  YcluiSyntaxNode* start;  // the structural node at which a walker starts
  YcluiSyntaxNode* end;    // the structural node at which a line is complete

  // The empty sequence: `start`, which leads to `end`.
  YcluiSyntaxGraph();
  YcluiSyntaxGraph(const YcluiSyntaxGraph&) = delete;
  YcluiSyntaxGraph& operator=(const YcluiSyntaxGraph&) = delete;
  // Destroys all nodes of the graph.
  ~YcluiSyntaxGraph();

  // Sequence: inserts the node or the fragment before the present content. Returns 1.
  YWord insertAnd(YcluiSyntaxNode* node);
  YWord insertAnd(YcluiSyntaxGraph* graph);

  // Alternative: a node is added after the present alternatives; a fragment gets a new `start` that
  // leads first to the fragment and then to the former start. If `start` has a direct link to
  // `end`, the first such link is removed, so that the first alternative replaces the empty
  // sequence. Returns 1.
  YWord insertOr(YcluiSyntaxNode* node);
  YWord insertOr(YcluiSyntaxGraph* graph);

  // Repetition: the graph then accepts its content any number of times, or not at all. The former
  // end becomes `start`; it leads first to the new end and then back to the former start. All nodes
  // that can be reached from the former start become closure members; the search stops at nodes
  // that are closure members already. Returns 1.
  YWord makeClosure();

  // Sets priority and limit of the direct successors of `start`.
  void setPriority(unsigned char priority, unsigned char interruptLimit);

 private:
  friend class YcluiNfa;

  // The last link of `start` at the time when no link led to `end`. It may be dangling, so it is
  // compared and never followed.
  const YRing* searched_ = nullptr;
  // The cache of all walkers over the graph; created by the first of them.
  std::unique_ptr<YcluiStepCache> steps_;

  bool isEmptied() const { return start == nullptr || end == nullptr; }
  bool canInsert(const YcluiSyntaxGraph* graph) const;
  void releaseNodes();
  // Removes the first link from `start` to `end`. Returns whether there was none.
  bool detachEnd();
};

// Destroys the node and all that can be reached from it. Does nothing for null.
YQRT_API void deleteNodesFrom(YcluiSyntaxNode* node);

#endif  // SYNTAX_YCLUISYNTAXGRAPH_H_
