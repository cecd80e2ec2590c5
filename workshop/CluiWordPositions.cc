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
  const std::set<int> before = allBefore(node);
  std::set<int> both;
  std::copy_if(before.begin(), before.end(), std::inserter(both, both.end()),
               [&](int found) { return there.contains(found); });
  if (there.contains(node)) both.insert(node);
  return both;
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

// The token nodes before the node on any path to it. Words with the same single node before them,
// such as the choices of one repetition, have the same ones.
std::set<int> CluiWordPositions::allBefore(int node) {
  const std::vector<int>& previous = previous_[Index(node)];
  if (previous.size() != 1) return searchBack(node);
  const int key = previous.front();
  const auto known = allBefore_.find(key);
  if (known != allBefore_.end()) return known->second;
  return allBefore_[key] = searchBack(node);
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
