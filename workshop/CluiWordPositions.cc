#include "workshop/CluiWordPositions.h"

#include <algorithm>
#include <iterator>

namespace {

std::size_t Index(int number) {
  return static_cast<std::size_t>(number);
}

}  // namespace

CluiWordPositions::CluiWordPositions(const CluiSyntaxModel& model, const CluiSyntaxPaths& paths)
    : model_(model), paths_(paths) {
  const std::vector<CluiModelNode>& nodes = model_.nodes();
  previous_.resize(nodes.size());
  hasWordBefore_.resize(nodes.size());
  keys_.resize(nodes.size());
  std::vector<int> work;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    for (const int next : nodes[i].next) previous_[Index(next)].push_back(static_cast<int>(i));
    if (nodes[i].tokenId != 0 && goesOn(static_cast<int>(i))) work.push_back(static_cast<int>(i));
  }
  while (!work.empty()) {
    const int node = work.back();
    work.pop_back();
    for (const int next : nodes[Index(node)].next) {
      if (hasWordBefore_[Index(next)]) continue;
      hasWordBefore_[Index(next)] = true;
      if (nodes[Index(next)].tokenId == 0) work.push_back(next);
    }
  }
  findKeys();
}

// Follows the links backwards from each node while there is only one. The key is the node at which
// they fork or begin, or the complement of a token node on the way.
void CluiWordPositions::findKeys() {
  std::vector<bool> isKnown(keys_.size());
  std::vector<int> chain;
  for (std::size_t i = 0; i < keys_.size(); ++i) {
    int node = static_cast<int>(i);
    int key = node;
    for (chain.clear();; node = key) {
      key = node;
      if (isKnown[Index(node)]) {
        key = keys_[Index(node)];
        break;
      }
      chain.push_back(node);
      if (previous_[Index(node)].size() != 1) break;
      key = previous_[Index(node)].front();
      if (model_.nodes()[Index(key)].tokenId != 0) {
        key = ~key;
        break;
      }
    }
    for (const int each : chain) {
      keys_[Index(each)] = key;
      isKnown[Index(each)] = true;
    }
  }
}

std::optional<std::set<int>> CluiWordPositions::nodesFor(int node, const CluiForm& form) {
  if (form.kind == CluiForm::Kind::FromEnd) {
    if (form.number > FarthestStep) return std::nullopt;
    std::set<int> nodes = {node};
    for (long i = 0; i < form.number; ++i) nodes = nodesBefore(nodes);
    return nodes;
  }
  for (long i = 0; i < form.number; ++i) {
    if (i > FarthestStep) return std::nullopt;
    if (level(static_cast<std::size_t>(i)).empty()) return std::set<int>();
  }
  const std::set<int>& there = level(static_cast<std::size_t>(form.number));
  const std::set<int>& before = allBefore(node);
  std::set<int> both;
  std::copy_if(before.begin(), before.end(), std::inserter(both, both.end()),
               [&](int found) { return there.contains(found); });
  return both;
}

bool CluiWordPositions::canBeAt(int node, const CluiForm& form) {
  if (form.kind == CluiForm::Kind::FromEnd) return form.number == 0;
  return form.number <= FarthestStep && level(static_cast<std::size_t>(form.number)).contains(node);
}

// The reached token nodes that can accept the word after these nodes.
std::set<int> CluiWordPositions::nodesAfter(const std::vector<int>& nodes) const {
  std::set<int> found;
  std::vector<int> work = nodes;
  std::set<int> seen;
  while (!work.empty()) {
    const int node = work.back();
    work.pop_back();
    for (const int next : model_.nodes()[Index(node)].next) {
      if (!seen.insert(next).second) continue;
      if (model_.nodes()[Index(next)].tokenId == 0) {
        work.push_back(next);
      } else if (paths_.isReached(next)) {
        found.insert(next);
      }
    }
  }
  return found;
}

// The token nodes that can have accepted the word before these nodes.
std::set<int> CluiWordPositions::nodesBefore(const std::set<int>& nodes) const {
  std::set<int> found;
  std::vector<int> work(nodes.begin(), nodes.end());
  std::set<int> seen;
  while (!work.empty()) {
    const int node = work.back();
    work.pop_back();
    if (!hasWordBefore_[Index(node)]) continue;
    for (const int previous : previous_[Index(node)]) {
      if (!seen.insert(previous).second) continue;
      if (model_.nodes()[Index(previous)].tokenId == 0) {
        work.push_back(previous);
      } else if (goesOn(previous)) {
        found.insert(previous);
      }
    }
  }
  return found;
}

const std::set<int>& CluiWordPositions::level(std::size_t number) {
  if (levels_.empty()) levels_.push_back(nodesAfter({model_.start()}));
  while (levels_.size() <= number) {
    std::vector<int> going;
    std::copy_if(levels_.back().begin(), levels_.back().end(), std::back_inserter(going),
                 [&](int node) { return goesOn(node); });
    levels_.push_back(nodesAfter(going));
  }
  return levels_[number];
}

// The token nodes before the node on any path to it.
const std::set<int>& CluiWordPositions::allBefore(int node) {
  const auto [entry, isNew] = allBefore_.try_emplace(keyOf(node));
  if (isNew) entry->second = searchBack(node);
  return entry->second;
}

std::set<int> CluiWordPositions::searchBack(int node) const {
  std::set<int> found;
  std::vector<int> work = {node};
  while (!work.empty()) {
    const int at = work.back();
    work.pop_back();
    if (!hasWordBefore_[Index(at)]) continue;
    for (const int previous : previous_[Index(at)]) {
      const bool isWord = model_.nodes()[Index(previous)].tokenId != 0;
      if (isWord && !goesOn(previous)) continue;
      if (found.insert(previous).second) work.push_back(previous);
    }
  }
  std::erase_if(found, [&](int at) { return model_.nodes()[Index(at)].tokenId == 0; });
  return found;
}
