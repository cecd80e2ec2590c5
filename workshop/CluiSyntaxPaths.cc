#include "workshop/CluiSyntaxPaths.h"

#include <algorithm>
#include <utility>

namespace {

constexpr signed char Unknown = -2;
constexpr signed char Counting = -1;
constexpr int MostEnds = 2;

std::size_t Index(int number) {
  return static_cast<std::size_t>(number);
}

}  // namespace

CluiSyntaxPaths::CluiSyntaxPaths(const CluiSyntaxModel& model, std::set<std::uint32_t> anywhere)
    : model_(model), anywhere_(std::move(anywhere)) {
  const std::size_t count = model_.nodes().size();
  ends_.resize(count);
  reached_.resize(count);
  visitedAt_.resize(count);
  std::vector<signed char> counts(count, Unknown);
  for (std::size_t i = 0; i < count; ++i) {
    const CluiModelNode& node = model_.nodes()[i];
    const bool mayEnd = node.tokenId != 0 && !node.isRepeated;
    ends_[i] = mayEnd ? static_cast<char>(countEnds(static_cast<int>(i), counts)) : 0;
  }
  explore();
  findLive();
}

// The number of paths from the node to the end that need no word and contain no repeated part.
int CluiSyntaxPaths::countEnds(int node, std::vector<signed char>& counts) const {
  signed char& count = counts[Index(node)];
  if (count != Unknown) return std::max<int>(count, 0);
  count = Counting;
  int ends = 0;
  for (const int next : model_.nodes()[Index(node)].next) {
    const CluiModelNode& successor = model_.nodes()[Index(next)];
    if (successor.tokenId != 0 || successor.isRepeated) continue;
    ends += next == model_.end() ? 1 : countEnds(next, counts);
  }
  count = static_cast<signed char>(std::min(ends, MostEnds));
  return count;
}

// The token nodes that can accept the next word.
std::vector<int> CluiSyntaxPaths::nodesFrom(const State& state) {
  ++visitNumber_;
  std::vector<int> found;
  std::vector<int> work;
  const auto open = [&](int node) {
    if (std::exchange(visitedAt_[Index(node)], visitNumber_) != visitNumber_) work.push_back(node);
  };
  for (const int node : state) open(node);
  while (!work.empty()) {
    const int number = work.back();
    work.pop_back();
    if (model_.nodes()[Index(number)].tokenId != 0) {
      found.push_back(number);
      continue;
    }
    for (const int next : model_.nodes()[Index(number)].next) open(next);
  }
  std::sort(found.begin(), found.end());
  return found;
}

template <class Visit>
void CluiSyntaxPaths::eachStep(const State& state, const Visit& visit) {
  std::vector<int> nodes = nodesFrom(state);
  visits_ += nodes.size() + 1;
  const auto idOf = [&](int node) { return model_.nodes()[Index(node)].tokenId; };
  std::stable_sort(nodes.begin(), nodes.end(), [&](int a, int b) { return idOf(a) < idOf(b); });
  for (std::size_t begin = 0, end = 0; begin < nodes.size(); begin = end) {
    const std::uint32_t id = idOf(nodes[begin]);
    for (end = begin; end < nodes.size() && idOf(nodes[end]) == id;) ++end;
    if (!anywhere_.contains(id)) visit(id, nodes.data() + begin, nodes.data() + end);
  }
}

// Structural nodes with one successor are skipped, so that words that lead to the same place share
// a state.
int CluiSyntaxPaths::stateAfter(const int* begin, const int* end) {
  State state;
  for (const int* node = begin; node != end; ++node) {
    for (int next : model_.nodes()[Index(*node)].next) {
      std::size_t hops = 0;
      while (model_.nodes()[Index(next)].tokenId == 0 &&
             model_.nodes()[Index(next)].next.size() == 1 && hops++ < model_.nodes().size()) {
        next = model_.nodes()[Index(next)].next[0];
      }
      state.push_back(next);
    }
  }
  std::sort(state.begin(), state.end());
  state.erase(std::unique(state.begin(), state.end()), state.end());
  const auto found = numbers_.find(state);
  return found == numbers_.end() ? add(std::move(state), {-1, 0}) : found->second;
}

int CluiSyntaxPaths::add(State state, Origin origin) {
  const int number = static_cast<int>(states_.size());
  states_.push_back(&numbers_.emplace(std::move(state), number).first->first);
  origins_.push_back(origin);
  previous_.emplace_back();
  isLive_.push_back(false);
  return number;
}

void CluiSyntaxPaths::explore() {
  if (model_.nodes().empty()) return;
  add({model_.start()}, {-1, 0});
  for (int at = 0; at < static_cast<int>(states_.size()); ++at) {
    if (visits_ > MostVisits || states_.size() > MostStates) {
      isComplete_ = false;
      return;
    }
    eachStep(*states_[Index(at)], [&](std::uint32_t id, const int* begin, const int* end) {
      bool isEnd = false;
      for (const int* node = begin; node != end; ++node) {
        reached_[Index(*node)] = true;
        isEnd = isEnd || endsCommand(*node);
      }
      if (isEnd) {
        isLive_[Index(at)] = true;
        return noteEnds(at, begin, end);
      }
      const int next = stateAfter(begin, end);
      if (origins_[Index(next)].state < 0 && next != 0) origins_[Index(next)] = {at, id};
      std::vector<int>& previous = previous_[Index(next)];
      if (previous.empty() || previous.back() != at) previous.push_back(at);
    });
  }
}

void CluiSyntaxPaths::findLive() {
  std::vector<int> work;
  for (std::size_t i = 0; i < isLive_.size(); ++i) {
    if (isLive_[i]) work.push_back(static_cast<int>(i));
  }
  while (!work.empty()) {
    const int state = work.back();
    work.pop_back();
    for (const int previous : previous_[Index(state)]) {
      if (isLive_[Index(previous)]) continue;
      isLive_[Index(previous)] = true;
      work.push_back(previous);
    }
  }
}

void CluiSyntaxPaths::noteEnds(int state, const int* begin, const int* end) {
  std::vector<int> nodes;
  std::copy_if(begin, end, std::back_inserter(nodes), [&](int node) { return endsCommand(node); });
  if (nodes.size() < 2 || !knownEnds_.insert(nodes).second) return;
  std::vector<std::uint32_t> before = wordsTo(state);
  sharedEnds_.push_back({std::move(nodes), std::move(before)});
}

std::vector<std::uint32_t> CluiSyntaxPaths::wordsTo(int state) const {
  std::vector<std::uint32_t> words;
  for (; state > 0; state = origins_[Index(state)].state) {
    words.push_back(origins_[Index(state)].tokenId);
  }
  std::reverse(words.begin(), words.end());
  return words;
}

std::vector<int> CluiSyntaxPaths::endlessNodes() {
  std::set<int> endless;
  std::set<int> before;  // the live states before dead ones
  for (std::size_t i = 0; i < states_.size(); ++i) {
    if (!isLive_[i]) before.insert(previous_[i].begin(), previous_[i].end());
  }
  for (const int state : before) {
    if (!isLive_[Index(state)]) continue;
    eachStep(*states_[Index(state)], [&](std::uint32_t, const int* begin, const int* end) {
      const bool isEnd = std::any_of(begin, end, [&](int node) { return endsCommand(node); });
      if (!isEnd && !isLive_[Index(stateAfter(begin, end))]) endless.insert(begin, end);
    });
  }
  return {endless.begin(), endless.end()};
}

std::vector<std::pair<int, int>> CluiSyntaxPaths::unreachedNodes() const {
  const std::size_t count = model_.nodes().size();
  std::vector<int> after(count, -2);  // the reached token node before it
  std::vector<int> work;
  const auto open = [&](int node, int origin) {
    for (const int next : model_.nodes()[Index(node)].next) {
      if (after[Index(next)] != -2) continue;
      after[Index(next)] = origin;
      if (model_.nodes()[Index(next)].tokenId == 0) work.push_back(next);
    }
  };
  const auto openAll = [&](int node, int origin) {
    open(node, origin);
    while (!work.empty()) {
      const int next = work.back();
      work.pop_back();
      open(next, origin);
    }
  };
  openAll(model_.start(), -1);
  for (std::size_t i = 0; i < count; ++i) {
    if (model_.nodes()[i].tokenId != 0 && reached_[i]) {
      openAll(static_cast<int>(i), static_cast<int>(i));
    }
  }
  std::vector<std::pair<int, int>> unreached;
  for (std::size_t i = 0; i < count; ++i) {
    const bool isToken = model_.nodes()[i].tokenId != 0;
    if (isToken && !reached_[i] && after[i] != -2) {
      unreached.emplace_back(static_cast<int>(i), after[i]);
    }
  }
  return unreached;
}
