#include "syntax/YcluiStepCache.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <new>
#include <utility>

namespace {

// A linear search through so many adjacent steps is as fast as a search in a table.
constexpr std::uint32_t FewSteps = 8;
// The limit of the memory, in steps for each node that was read. Without it the cache could grow
// with the square of the graph.
constexpr std::uint64_t MostStepsPerNode = 2;
constexpr std::uint64_t StepsOfSmallGraph = 64;
constexpr std::size_t LongestKeptText = 128;

std::uint64_t HashOf(const YcluiSyntaxNodeStk& list) {
  std::uint64_t hash = static_cast<std::uint64_t>(list.count());
  for (int i = 0; i < list.count(); ++i) {
    hash = hash * 0x100000001B3U ^ reinterpret_cast<std::uintptr_t>(list.at(i)) >> 4;
  }
  return hash;
}

}  // namespace

YcluiWalkState* YcluiStepCache::find(const YcluiPlace& place, bool& shouldLearn) {
  shouldLearn = false;
  if (place.node != nullptr) {
    const Single probe{place.node};
    const Single* known = singles_.find(
        probe.hash(), [&place](const Single& single) { return single.node == place.node; });
    if (known == nullptr) {
      if (!isFull_) singles_.add(probe);
      return nullptr;
    }
    shouldLearn = known->state == nullptr && !isFull_;
    return known->state;
  }
  const List* known = lists_.find(HashOf(*place.list), [&place](const List& list) {
    YcluiWalkState& state = *list.state;
    return std::equal(state.nodes(), state.nodes() + state.nodeCount, (*place.list)(),
                      (*place.list)() + place.list->count());
  });
  shouldLearn = known == nullptr && !isFull_;
  return known == nullptr ? nullptr : known->state;
}

YcluiWalkState* YcluiStepCache::learn(const YcluiPlace& place, const YcluiSyntaxNodeStk& matches) {
  const auto steps = static_cast<std::uint32_t>(matches.count());
  const auto nodes =
      place.node == nullptr ? static_cast<std::uint32_t>(place.list->count()) : std::uint32_t{0};
  addUse(steps + nodes);
  if (isFull_) return nullptr;
  YcluiWalkState& state = makeState(steps, nodes);
  for (int i = matches.count(); i > 0; --i) add(state, matches.at(i - 1));
  store(state, place);
  return &state;
}

void YcluiStepCache::addUse(std::uint64_t steps) {
  used_ += steps;
  if (used_ > MostStepsPerNode * nodesRead_ + StepsOfSmallGraph) isFull_ = true;
}

YcluiWalkState& YcluiStepCache::makeState(std::uint32_t steps, std::uint32_t nodes) {
  const std::uint32_t few = steps > FewSteps ? 0 : steps;
  void* memory = memory_.take(sizeof(YcluiWalkState) + few * sizeof(YcluiCachedStep) +
                              nodes * sizeof(YcluiSyntaxNode*));
  auto* state = new (memory) YcluiWalkState;
  state->fewCount = few;
  state->nodeCount = nodes;
  std::uninitialized_default_construct_n(state->few(), few);
  if (steps > FewSteps) {
    manySteps_.push_back(std::unique_ptr<Steps>(YChecked(new (std::nothrow) Steps)));
    state->many = manySteps_.back().get();
    state->many->reserve(steps);
  }
  return *state;
}

// Adds the matches from the last to the first: of several of one id, the last accepts the token.
void YcluiStepCache::add(YcluiWalkState& state, YcluiSyntaxNode* match) {
  YcluiCachedStep* step = state.step(match->tokenId);
  if (step != nullptr) {
    addEarlier(*step, match);
    return;
  }
  const YcluiCachedStep added{.id = match->tokenId, .node = match};
  if (state.many != nullptr) {
    state.many->add(added);
  } else {
    *state.step(0) = added;  // the first empty one
  }
}

void YcluiStepCache::addEarlier(YcluiCachedStep& step, YcluiSyntaxNode* match) {
  if (step.isSingle) {
    step.isSingle = false;
    addUse(1);  // the entry; `learn` counted the matches
    several_.add({&step, makeMatch(step.node, nullptr)});
  }
  Several* matches = several(step);
  matches->first = makeMatch(match, matches->first);
}

const YcluiStepCache::Match* YcluiStepCache::makeMatch(YcluiSyntaxNode* node, const Match* next) {
  return new (memory_.take(sizeof(Match))) Match{node, next};
}

YcluiStepCache::Several* YcluiStepCache::several(const YcluiCachedStep& step) {
  return several_.find(Several{&step}.hash(),
                       [&step](const Several& matches) { return matches.step == &step; });
}

void YcluiStepCache::getMatches(const YcluiCachedStep& step, YcluiSyntaxNodeStk& matches) {
  matches.clear();
  if (step.isSingle) {
    matches.push(step.node);
    return;
  }
  for (const Match* i = several(step)->first; i != nullptr; i = i->next) matches.push(i->node);
}

void YcluiStepCache::store(YcluiWalkState& state, const YcluiPlace& place) {
  if (place.node != nullptr) {
    singles_
        .find(Single{place.node}.hash(),
              [&place](const Single& single) { return single.node == place.node; })
        ->state = &state;
    return;
  }
  std::copy_n((*place.list)(), state.nodeCount, state.nodes());
  lists_.add({HashOf(*place.list), &state});
}

const char* YcluiStepCache::keptText(const char* text) {
  const std::size_t size = text == nullptr ? 0 : std::strlen(text) + 1;
  if (size == 0 || size > LongestKeptText || isFull_) return text;
  addUse(1 + size / sizeof(YcluiCachedStep));
  return static_cast<char*>(std::memcpy(memory_.take(size), text, size));
}

void YcluiStepCache::renew(const YcluiSyntaxNode* graphEnd) {
  static std::atomic<std::uint64_t> lastGeneration = 0;
  clear();
  seenChanges_ = changes_.changes();
  end_ = graphEnd;
  generation_ = 1 + lastGeneration.fetch_add(1, std::memory_order_relaxed);
}

void YcluiStepCache::clear() {
  singles_.clear();
  lists_.clear();
  manySteps_.clear();
  several_.clear();
  memory_.clear();
  used_ = 0;
  isFull_ = false;
}

YcluiSyntaxNode* YcluiStepCache::successor(const YcluiSyntaxNode& root, std::uint32_t tokenId) {
  if (successorRoot_ != &root || successorChanges_ != changes_.changes()) readSuccessors(root);
  const Successor* found = successors_.find(tokenId, [tokenId](const Successor& successor) {
    return successor.node->tokenId == tokenId;
  });
  return found == nullptr ? nullptr : found->node;
}

void YcluiStepCache::readSuccessors(const YcluiSyntaxNode& root) {
  successors_.clear();
  dependOn(&root);
  for (YcluiSuccessorIterator i(root); i.ring != nullptr; ++i) successors_.add({i.node()});
  successorRoot_ = &root;
  successorChanges_ = changes_.changes();
}
