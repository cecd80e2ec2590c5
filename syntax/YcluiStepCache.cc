#include "syntax/YcluiStepCache.h"

#include <algorithm>
#include <utility>

namespace {

// A search through so many steps, which lie side by side, is as fast as that of a table.
constexpr int FewSteps = 8;
// The bound of the memory: cached steps for each node that was read. Places that share no state
// could otherwise fill the square of the graph.
constexpr std::uint64_t MostStepsPerNode = 2;
constexpr std::uint64_t StepsOfSmallGraph = 64;

// Where the arena gets its memory.
class CheckedMemory final : public std::pmr::memory_resource {
  void* do_allocate(std::size_t size, std::size_t) override {
    return YAllocator<char>().allocate(size);
  }
  void do_deallocate(void* memory, std::size_t size, std::size_t) override {
    YAllocator<char>().deallocate(static_cast<char*>(memory), size);
  }
  bool do_is_equal(const memory_resource& other) const noexcept override { return this == &other; }
};
CheckedMemory Memory;

std::uint64_t HashOf(const YcluiSyntaxNodeStk& list) {
  std::uint64_t hash = static_cast<std::uint64_t>(list.count());
  for (int i = 0; i < list.count(); ++i) {
    hash = hash * 0x100000001B3U ^ reinterpret_cast<std::uintptr_t>(list.at(i)) >> 4;
  }
  return hash;
}

}  // namespace

YcluiStepCache::YcluiStepCache() : memory_(&Memory) {}

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
    const YcluiWalkState& state = *list.state;
    return std::equal(state.places, state.places + state.placeCount, (*place.list)(),
                      (*place.list)() + place.list->count());
  });
  shouldLearn = known == nullptr && !isFull_;
  return known == nullptr ? nullptr : known->state;
}

YcluiWalkState* YcluiStepCache::learn(const YcluiPlace& place, const YcluiSyntaxNodeStk& matches) {
  const int listed = place.node == nullptr ? place.list->count() : 0;
  used_ += static_cast<std::uint64_t>(matches.count() + listed);
  isFull_ = used_ > MostStepsPerNode * nodesRead_ + StepsOfSmallGraph;
  if (isFull_) return nullptr;
  YcluiWalkState& state = makeState(place, matches);
  for (int i = 0; i < matches.count(); ++i) {
    YcluiSyntaxNode* node = matches.at(i);
    YcluiCachedStep* step = state.step(node->tokenId);
    if (step != nullptr) {
      step->node = node;
      step->isSingle = false;
      continue;
    }
    const YcluiCachedStep added{.id = node->tokenId, .node = node};
    state.many != nullptr ? static_cast<void>(state.many->add(added))
                          : static_cast<void>(state.few[state.fewCount++] = added);
  }
  return &state;
}

YcluiWalkState& YcluiStepCache::makeState(const YcluiPlace& place,
                                          const YcluiSyntaxNodeStk& matches) {
  auto* state = make<YcluiWalkState>(1);
  if (matches.count() > FewSteps) {
    manySteps_.push_back(std::unique_ptr<Steps>(YChecked(new (std::nothrow) Steps)));
    state->many = manySteps_.back().get();
  } else {
    state->few = make<YcluiCachedStep>(static_cast<std::size_t>(matches.count()));
  }
  if (place.node != nullptr) {
    const Single probe{place.node};
    singles_
        .find(probe.hash(), [&place](const Single& single) { return single.node == place.node; })
        ->state = state;
    return *state;
  }
  state->placeCount = static_cast<std::uint32_t>(place.list->count());
  state->places = make<YcluiSyntaxNode*>(state->placeCount);
  std::copy_n((*place.list)(), state->placeCount, state->places);
  lists_.add({HashOf(*place.list), state});
  return *state;
}

void YcluiStepCache::renew(const YcluiSyntaxNode* graphEnd) {
  static std::uint64_t lastGeneration = 0;
  forget();
  seenChanges_ = changes_.changes();
  end_ = graphEnd;
  generation_ = ++lastGeneration;
}

void YcluiStepCache::forget() {
  singles_.clear();
  lists_.clear();
  manySteps_.clear();
  memory_.release();
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
  depend(&root);
  for (YcluiSuccessorIterator i(root); i.ring != nullptr; ++i) {
    depend(i.node());
    successors_.add({i.node()});
  }
  successorRoot_ = &root;
  successorChanges_ = changes_.changes();
}

template <class T>
T* YcluiStepCache::make(std::size_t count) {
  auto* made = static_cast<T*>(memory_.allocate(count * sizeof(T), alignof(T)));
  std::uninitialized_default_construct_n(made, count);
  return made;
}
