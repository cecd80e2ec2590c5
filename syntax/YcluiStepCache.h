// The steps of a walker over one graph, cached. Internal to the walker.

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

// What one token leads to from a state. `node` is there from the beginning; the rest is filled in
// when the step is taken for the first time.
struct YcluiCachedStep {
  std::uint32_t id = 0;   // 0 in an empty row
  std::int8_t ends = -1;  // paths to the end of the graph, 0 to 2; -1 when not counted yet
  bool isSingle = true;   // no other node matches the id
  YcluiSyntaxNode* node = nullptr;  // the node that accepts the token
  const char* action = nullptr;     // the text of its action; null when it has none
  YcluiWalkState* next = nullptr;   // null when not known yet

  bool isEmpty() const { return id == 0; }
  std::uint64_t hash() const { return id; }
};

// A state of the walker: a list of nodes from which the next token is sought, with the steps of all
// tokens that are accepted there. Any other token is refused.
//
// Few steps, and the list of a state that is no single place (see YcluiPlace), follow the state in
// memory, so that a step at random in a large graph reads little of it.
struct YcluiWalkState {
  YHashTable<YcluiCachedStep>* many = nullptr;  // the steps, or null where there are few
  std::uint32_t fewCount = 0;
  std::uint32_t placeCount = 0;

  YcluiCachedStep* few() { return reinterpret_cast<YcluiCachedStep*>(this + 1); }
  YcluiSyntaxNode** places() { return reinterpret_cast<YcluiSyntaxNode**>(few() + fewCount); }

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

// Where a walker is: at a structural node, after a token node, or, when `node` is null, at a list
// of nodes, the last one being looked at first.
struct YcluiPlace {
  YcluiSyntaxNode* node = nullptr;
  const YcluiSyntaxNodeStk* list = nullptr;
};

// A deterministic automaton that is built as the walkers of a graph need it, as regular expression
// engines keep one behind their nondeterministic walk: a place that is visited for the second time
// becomes a state, whose steps cost one search each from then on.
//
// A change of any node that was read, or another end of the graph, empties the cache; the memory is
// bounded in proportion to the nodes that were read, and where it is full, steps are walked. States
// and steps are valid as long as `generation` is the same, texts and nodes of a step as well.
class YcluiStepCache {
 public:
  YcluiStepCache() = default;
  YcluiStepCache(const YcluiStepCache&) = delete;
  YcluiStepCache& operator=(const YcluiStepCache&) = delete;
  ~YcluiStepCache() = default;

  // Empties the cache if something changed since it was filled. Returns the generation of what it
  // holds: a number that no other content of any cache has.
  std::uint64_t generation(const YcluiSyntaxNode* graphEnd) {
    if (changes_.changes() != seenChanges_ || graphEnd != end_) renew(graphEnd);
    return generation_;
  }

  // The state of the place, or null. Sets `shouldLearn` when the caller should collect the matches
  // of all tokens there and have them learned.
  YcluiWalkState* find(const YcluiPlace& place, bool& shouldLearn);
  // Makes a state of the place, given the nodes that match there, whatever the token, in the order
  // of a step. Null when the cache is full.
  YcluiWalkState* learn(const YcluiPlace& place, const YcluiSyntaxNodeStk& matches);

  // The text to be kept in a cached step: a copy beside the states, where there is room for it.
  const char* keptText(const char* text);

  // Has the cache emptied when the node changes.
  void depend(const YcluiSyntaxNode* node) {
    if (node->countChangesIn(changes_)) ++nodesRead_;
  }

  // The first successor of the root that accepts the token, or null. The root may be any node.
  YcluiSyntaxNode* successor(const YcluiSyntaxNode& root, std::uint32_t tokenId);

 private:
  using Steps = YHashTable<YcluiCachedStep>;
  struct Single {
    const YcluiSyntaxNode* node = nullptr;
    YcluiWalkState* state = nullptr;  // null after the first visit
    bool isEmpty() const { return node == nullptr; }
    std::uint64_t hash() const { return reinterpret_cast<std::uintptr_t>(node) >> 4; }
  };
  struct List {
    std::uint64_t key = 0;
    YcluiWalkState* state = nullptr;
    bool isEmpty() const { return state == nullptr; }
    std::uint64_t hash() const { return key; }
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
  std::uint64_t used_ = 0;  // steps, and nodes of lists
  bool isFull_ = false;
  YHashTable<Single> singles_;
  YHashTable<List> lists_;
  std::vector<std::unique_ptr<Steps>, YAllocator<std::unique_ptr<Steps>>> manySteps_;
  YArena memory_;  // of states, their lists and few steps

  const YcluiSyntaxNode* successorRoot_ = nullptr;
  std::uint64_t successorChanges_ = 0;
  YHashTable<Successor> successors_;

  void renew(const YcluiSyntaxNode* graphEnd);
  void forget();
  void use(std::uint64_t steps);
  YcluiWalkState& makeState(std::uint32_t steps, std::uint32_t places);
  void add(YcluiWalkState& state, YcluiSyntaxNode* match);
  void file(YcluiWalkState& state, const YcluiPlace& place);
  void readSuccessors(const YcluiSyntaxNode& root);
};

#endif  // SYNTAX_YCLUISTEPCACHE_H_
