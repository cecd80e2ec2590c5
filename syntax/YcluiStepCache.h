// The cached steps of the walkers over one graph. Internal to the walker.

#ifndef SYNTAX_YCLUISTEPCACHE_H_
#define SYNTAX_YCLUISTEPCACHE_H_

#include <cstdint>
#include <memory>
#include <vector>

#include "foundation/YArena.h"
#include "foundation/YMemory.h"
#include "platform/containers/YHashTable.h"
#include "syntax/YcluiChangeCount.h"
#include "syntax/YcluiSyntaxNode.h"
#include "syntax/YcluiSyntaxNodeStk.h"

struct YcluiWalkState;

// A transition: the step from a state with one token. `id`, `isSingle` and `node` are set when the
// state is made, the other fields when the step is made for the first time.
struct YcluiCachedStep {
  std::uint32_t id = 0;   // of the token; 0 in an empty entry
  std::int8_t ends = -1;  // paths to the end of the graph, 0 to 2; -1 when not counted yet
  bool isSingle = true;   // whether `node` is the only match
  YcluiSyntaxNode* node = nullptr;  // the node that accepts the token, the last match
  const char* action = nullptr;     // the text of its action; null when it has none
  YcluiWalkState* next = nullptr;   // the state of the new place; null when it has none yet

  bool isEmpty() const { return id == 0; }
  std::uint64_t hash() const { return id; }
};

// The state of a place: the steps of all tokens that are accepted there. Every other token is
// refused.
//
// A state is followed in memory by its steps, if they are few, and then by the nodes of its place,
// if that is a list. So a step in a large graph touches few cache lines:
//
//   | YcluiWalkState | YcluiCachedStep * fewCount | YcluiSyntaxNode* * nodeCount |
struct YcluiWalkState {
  YHashTable<YcluiCachedStep>* many = nullptr;  // the steps if they are many, else null
  std::uint32_t fewCount = 0;
  std::uint32_t nodeCount = 0;

  YcluiCachedStep* few() { return reinterpret_cast<YcluiCachedStep*>(this + 1); }
  YcluiSyntaxNode** nodes() { return reinterpret_cast<YcluiSyntaxNode**>(few() + fewCount); }

  // The step of a token, or null.
  YcluiCachedStep* step(std::uint32_t id) {
    if (many != nullptr) {
      return many->find(id, [id](const YcluiCachedStep& step) { return step.id == id; });
    }
    for (std::uint32_t i = 0; i < fewCount; ++i) {
      if (few()[i].id == id) return &few()[i];
    }
    return nullptr;
  }
};

// The place of a walker: at the structural node `node`, after the token node `node`, or, when
// `node` is null, at the nodes of `list`, of which the last one is visited first.
struct YcluiPlace {
  YcluiSyntaxNode* node = nullptr;
  const YcluiSyntaxNodeStk* list = nullptr;
};

// A deterministic automaton that is built on demand from the nondeterministic one that the walker
// simulates, as in regular expression engines:
//   - The first visit of a place that is a single node is only recorded, since most places of a
//     large syntax are visited once. The second visit makes a state. A place that is a list gets a
//     state at its first visit.
//   - A state has the matches of every token from the start, so that the first step with a token
//     does not search them again. Where the step leads, and whether it ends the line, is added when
//     the walker makes the step for the first time.
//   - The walker reports every node that it reads. A change of such a node, or of the end of the
//     graph, empties the cache.
//   - The memory is limited in proportion to the number of nodes read. When the cache is full, it
//     keeps what it has, and other steps are simulated.
//
// States, and the nodes and texts of steps, are valid as long as `generation` returns the same.
class YcluiStepCache {
 public:
  YcluiStepCache() = default;
  YcluiStepCache(const YcluiStepCache&) = delete;
  YcluiStepCache& operator=(const YcluiStepCache&) = delete;
  ~YcluiStepCache() = default;

  // Empties the cache if a node or the end of the graph changed. Returns the generation of its
  // content, a number that is different after each change and in each cache.
  std::uint64_t generation(const YcluiSyntaxNode* graphEnd) {
    if (changes_.changes() != seenChanges_ || graphEnd != end_) renew(graphEnd);
    return generation_;
  }

  // The state of the place, or null. Sets `shouldLearn` to whether the caller should call `learn`.
  YcluiWalkState* find(const YcluiPlace& place, bool& shouldLearn);
  // Makes and returns the state of a place for which `find` set `shouldLearn`. `matches` are the
  // token nodes that a step from there visits, whatever the token, in their order. Returns null
  // when the cache is full.
  YcluiWalkState* learn(const YcluiPlace& place, const YcluiSyntaxNodeStk& matches);

  // Sets `matches` to the nodes that match the token of the step, in the order of the `matches` of
  // `learn`. REQUIRES: the step is of a state of this generation.
  void getMatches(const YcluiCachedStep& step, YcluiSyntaxNodeStk& matches);

  // Copies the text next to the states, so that a step reads it without touching the node. Returns
  // the copy; the text itself when it is null or long or the cache is full.
  const char* keptText(const char* text);

  // Records that the content depends on the node: a change of it empties the cache.
  void dependOn(const YcluiSyntaxNode* node) {
    if (node->countChangesIn(changes_)) ++nodesRead_;
  }

  // The first successor of the root that accepts the token, or null. This is a separate index of
  // one node at a time, for the indefinite nodes of a parser.
  YcluiSyntaxNode* successor(const YcluiSyntaxNode& root, std::uint32_t tokenId);

 private:
  using Steps = YHashTable<YcluiCachedStep>;
  struct Single {
    const YcluiSyntaxNode* node = nullptr;
    YcluiWalkState* state = nullptr;  // null until the second visit
    bool isEmpty() const { return node == nullptr; }
    std::uint64_t hash() const { return reinterpret_cast<std::uintptr_t>(node) >> 4; }
  };
  struct List {
    std::uint64_t key = 0;
    YcluiWalkState* state = nullptr;
    bool isEmpty() const { return state == nullptr; }
    std::uint64_t hash() const { return key; }
  };
  struct Match {
    YcluiSyntaxNode* node;
    const Match* next;
  };
  // The matches of a step that is not single, in their order.
  struct Several {
    const YcluiCachedStep* step = nullptr;
    const Match* first = nullptr;
    bool isEmpty() const { return step == nullptr; }
    std::uint64_t hash() const { return reinterpret_cast<std::uintptr_t>(step) >> 4; }
  };
  struct Successor {
    YcluiSyntaxNode* node = nullptr;
    bool isEmpty() const { return node == nullptr; }
    std::uint64_t hash() const { return node->tokenId; }
  };

  YcluiChangeCount changes_ = YcluiChangeCount::New();
  std::uint64_t seenChanges_ = 0;
  const YcluiSyntaxNode* end_ = nullptr;
  std::uint64_t generation_ = 0;
  std::uint64_t nodesRead_ = 0;
  std::uint64_t used_ = 0;  // memory in units of a step
  bool isFull_ = false;
  YHashTable<Single> singles_;  // places that are single nodes
  YHashTable<List> lists_;      // places that are lists
  std::vector<std::unique_ptr<Steps>, YAllocator<std::unique_ptr<Steps>>> manySteps_;
  YHashTable<Several> several_;  // the matches of steps that are not single
  YArena memory_;                // of states, matches and texts

  const YcluiSyntaxNode* successorRoot_ = nullptr;
  std::uint64_t successorChanges_ = 0;
  YHashTable<Successor> successors_;

  void renew(const YcluiSyntaxNode* graphEnd);
  void clear();
  void addUse(std::uint64_t steps);
  YcluiWalkState& makeState(std::uint32_t steps, std::uint32_t nodes);
  void add(YcluiWalkState& state, YcluiSyntaxNode* match);
  void addEarlier(YcluiCachedStep& step, YcluiSyntaxNode* match);
  Several* several(const YcluiCachedStep& step);
  const Match* makeMatch(YcluiSyntaxNode* node, const Match* next);
  void store(YcluiWalkState& state, const YcluiPlace& place);
  void readSuccessors(const YcluiSyntaxNode& root);
};

#endif  // SYNTAX_YCLUISTEPCACHE_H_
