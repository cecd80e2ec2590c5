// The walker over a syntax graph.

#ifndef SYNTAX_YCLUINFA_H_
#define SYNTAX_YCLUINFA_H_

#include "foundation/YTypes.h"
#include "syntax/YcluiSyntaxGraph.h"
#include "syntax/YcluiSyntaxNodeStk.h"

class YcluiIdIndex;
struct YcluiNodeRow;

// Takes token ids and follows every way through the graph that they allow at once, so that two
// commands may begin with the same words and part only later. It owns neither the graph nor the
// indefinite nodes, and a copy walks on from the same place by itself.
//
// Every operation is linear in the part of the graph that it reaches and does not recurse. A step
// at a place with many alternatives looks at all of them the first two times only: from then on it
// costs what it matches, until the graph changes there, whichever walker comes by. So it is for
// indefinite nodes, which may become more. What is remembered for that stays in proportion to the
// graph and goes with its nodes.
//
// Once places and stacks have been used as a step needs them, steps do not allocate. All walkers of
// a process run, and all graphs that were walked are changed, in one thread.
class YQRT_API YcluiNfa {
 public:
  YcluiNfa() = default;
  YcluiNfa(const YcluiNfa&) = default;
  YcluiNfa& operator=(const YcluiNfa&) = default;
  ~YcluiNfa() = default;

  // Stores the graph, null for none, and resets. Answers what `reset` answers.
  YWord syntaxGraph(YcluiSyntaxGraph* walked);
  YcluiSyntaxGraph* syntaxGraph() const { return graph; }

  // Stores the structural node, null for none, whose successors are accepted at any place of a
  // line. A walk that is under way goes on.
  void setIndefiniteNode(YcluiSyntaxNode* root) { indefiniteRoot = root; }
  // The first indefinite node for the token, or null.
  YcluiSyntaxNode* indefiniteNode(const unsigned long& tokenId) const;

  // Goes to the start of the graph and clears the termination. 0 without a graph, or with one whose
  // nodes have gone to another: then nothing but indefinite nodes is accepted.
  YWord reset();

  // Takes a token and answers the node that accepted it; null for a refusal, which changes nothing
  // and records no code.
  //
  // An indefinite node goes before every node of the graph and changes nothing either. Otherwise
  // nodes come up in this order: the places at which the walker stands, the one noted last first,
  // then the successors of structural nodes, breadth first. Each structural node is opened the
  // first time that it comes up. Every node of the token's id that comes up matches, and the walk
  // goes on behind all of them; the one that came up last is answered. Priorities play no part.
  //
  // The line is terminated when a match has a token-free way to the end of the graph. Such a way
  // neither begins at a closure member nor passes one, and on a cycle of plain structural nodes it
  // is followed round once. When there is more than one way in a step, YErrAmbiguous is recorded as
  // YErrNote, last of all, and the step counts all the same.
  YcluiSyntaxNode* stepNext(const unsigned long& tokenId);

  // Stands as if the node had just accepted a token, `isTerminated` included, and answers it. That
  // is exact where one node matched in the step that is gone back to; where several did, only the
  // ways behind this one come back. The start of the graph gives what `reset` gives. Null refuses
  // everything but indefinite nodes until the next reset or goBack.
  YcluiSyntaxNode* goBack(YcluiSyntaxNode* node);

  // 1 when an accepted token since the last reset, or the node gone back to, had a token-free way
  // to the end. Later tokens do not clear it.
  YWord isTerminated() const { return terminated; }

  // The node that accepted the last token; behind a reset the start of the graph.
  YcluiSyntaxNode* currentSyntaxNode() const { return currentNode; }

  // 1 when the node is known to have no action, without a look at it, which may have to wait for
  // memory. That is so of one that accepted the last token in a step that was looked up.
  YWord isSilent(const YcluiSyntaxNode* node) const {
    return node == told.node && told.isSilent && holdsTold() ? 1 : 0;
  }

  // Fills `nodes` with the token nodes that could accept the next token, each once; no indefinite
  // ones. A member of a repeated part brings what follows it along, so of a sequence that repeats
  // all is listed, though it is accepted in its order only. 0 without a graph or when terminated,
  // and `nodes` stays as it was.
  YWord possibleNodes(YcluiSyntaxNodeP_Array& nodes) const;

  // A node that says where the walker stands: wherever this is the same, and not null, the same
  // nodes are possible. Null where it depends on several nodes. Means nothing any more when
  // YcluiSyntaxNode::Changes() is another number.
  const YcluiSyntaxNode* place() const {
    return behind == nullptr ? onlyPlace : PlaceBehind(behind);
  }

 protected:
  YcluiSyntaxGraph* graph = nullptr;
  YcluiSyntaxNode* indefiniteRoot = nullptr;
  YWord terminated = 0;
  YcluiSyntaxNode* currentNode = nullptr;
  YcluiSyntaxNodeStk nextNodes;     // where the next token is sought, the top first; see listNext
  YcluiSyntaxNodeStk workNodes;     // work lists of a step
  YcluiSyntaxNodeStk savedNodes;    // during a step, nextNodes as it found them
  YcluiSyntaxNodeStk matchedNodes;  // the matches of a step, in the order of their coming up

  // Behind a single node nextNodes is empty until something needs the list.
  void listNext();

 private:
  YcluiSyntaxNode* behind = nullptr;  // the token node whose successors are nextNodes; or null
  // Set when a step depends on one node: a structural one that is the only place, or the token node
  // behind which the walker stands. With `behind`, nothing until a step asks what follows it.
  YcluiSyntaxNode* onlyPlace = nullptr;
  int looked = 0;  // links that the present step has looked at
  // What an index told of the node that it led to last.
  struct Told {
    const YcluiSyntaxNode* node = nullptr;
    std::uint64_t era = 0;  // in which it holds
    bool isSilent = false;
    YcluiSyntaxNode* ahead[YcluiSyntaxNode::InPair] = {};  // the pair behind it; null when unknown
    std::int8_t aheadEnds[YcluiSyntaxNode::InPair] = {};
  };
  Told told;
  bool holdsTold() const { return graph != nullptr && graph->era() == told.era; }

  void clearPlaces();
  int findMatches(unsigned long tokenId);
  void walkMatches(unsigned long tokenId);
  void meet(YcluiSyntaxNode* node, unsigned long tokenId, std::uint64_t serial);
  void open(const YcluiSyntaxNode& node, unsigned long tokenId);
  void standBehindMatches();
  int endsBehindMatches();
  int endsBehind(YcluiSyntaxNode* node);
  bool hasPlainWays(const YcluiSyntaxNode& node) const;
  int memorizedWaysBehind(YcluiSyntaxNode* node);
  int waysBehind(YcluiSyntaxNode* node, std::uint64_t serial);
  int sumOfWays(const YcluiSyntaxNode& node) const;

  const YcluiSyntaxNode* graphEnd() const { return graph == nullptr ? nullptr : graph->end; }
  // Whether what is remembered at the node holds for this walk.
  bool holds(const YcluiSyntaxNode& node) const {
    return graph != nullptr && node.era_ == graph->era();
  }
  bool renew(YcluiSyntaxNode& node) const;
  static YcluiNodeIndex& IndexOf(YcluiSyntaxNode* node);
  YcluiSyntaxNode* indexedIndefiniteNode(unsigned long tokenId) const;
  YcluiSyntaxNode* knownStep();
  int takeKnown(YcluiSyntaxNode* from, unsigned long tokenId);
  int takeOfPair(YcluiSyntaxNode* const* pair, const std::int8_t* ends, unsigned long tokenId);
  bool knowsPairAhead() const;
  int takeIndexed(YcluiIdIndex& matches, unsigned long tokenId);
  void noteRow(YcluiNodeRow& row);
  void noteAhead(YcluiNodeRow& row) const;
  void take(const YcluiNodeRow& row);
  int takeWalking(unsigned long tokenId);
  bool knowsStepFrom(YcluiSyntaxNode* from);
  static bool ArePair(const YcluiSyntaxNodeStk& nodes);
  void learnPair(YcluiSyntaxNode* from);
  void noteStep();
  void learnStepFrom(YcluiSyntaxNode* from);
  bool collectMatches(YcluiSyntaxNode* from, bool isForIndex);
  static void PushPlaces(YcluiSyntaxNode* from, YcluiSyntaxNodeStk& nodes);
  static YcluiSyntaxNode* PlaceBehind(YcluiSyntaxNode* node);
  static bool cover(YcluiSyntaxNode* node);

  static std::uint64_t NewSerial();
  static void NoteReading(YcluiSyntaxNode* node);
  static bool Mark(YcluiSyntaxNode* node, std::uint64_t serial);
  static void KeepFirstAndLast(YcluiSyntaxNodeStk& nodes);
};

#endif  // SYNTAX_YCLUINFA_H_
