#include "workshop/CluiSyntaxModel.h"

#include <utility>

using Kind = CluiFragment::Kind;

CluiSyntaxModel::CluiSyntaxModel(const CluiFragment& syntax) {
  graph_ = build(syntax);
  if (isComplete_) number();
}

int CluiSyntaxModel::numberOf(const YcluiSyntaxNode* node) const {
  return numbers_.at(node);
}

// A call joins its parts from the last to the first. Code waits for the word before it, also when a
// fragment is between them.
CluiSyntaxModel::Graph CluiSyntaxModel::build(const CluiFragment& call) {
  auto graph = std::make_unique<YcluiSyntaxGraph>();
  const auto insert = [&](auto* part) {
    call.kind == Kind::Sequence ? graph->insertAnd(part) : graph->insertOr(part);
  };
  if (call.parts.empty()) isComplete_ = false;
  const CluiFragment* code = nullptr;
  bool isDisplaced = false;
  for (std::size_t i = call.parts.size(); i > 0; --i) {
    const CluiFragment& part = call.parts[i - 1];
    if (part.kind == Kind::Word) {
      auto* const node = new YcluiSyntaxNode(part.tokenId);
      words_[node] = {part.tokenId, false, {}, &call, code, nullptr};
      if (isDisplaced) displacedCode_.push_back({{code, &call}, part.tokenId});
      insert(node);
      code = nullptr;
      isDisplaced = false;
    } else if (part.kind == Kind::Code) {
      if (code != nullptr) lostCode_.push_back({code, &call});
      code = &part;
      isDisplaced = false;
    } else if (part.kind == Kind::Priority) {
      priorities_.push_back({&part, &call});
      setPriority(*graph, part);
    } else {
      const Graph inner = build(part);
      insert(inner.get());
      isDisplaced = code != nullptr;
    }
  }
  if (code != nullptr) lostCode_.push_back({code, &call});
  if (call.kind == Kind::Repetition) graph->makeClosure();
  return graph;
}

void CluiSyntaxModel::setPriority(const YcluiSyntaxGraph& graph, const CluiFragment& priority) {
  for (YcluiSuccessorIterator i(*graph.start); i.ring != nullptr; ++i) {
    const auto word = words_.find(i.node());
    if (word != words_.end()) word->second.priority = &priority;
  }
}

void CluiSyntaxModel::number() {
  std::vector<const YcluiSyntaxNode*> found;
  const auto add = [&](const YcluiSyntaxNode* node) {
    const auto [entry, isNew] = numbers_.emplace(node, static_cast<int>(found.size()));
    if (isNew) found.push_back(node);
    return entry->second;
  };
  start_ = add(graph_->start);
  end_ = add(graph_->end);
  for (std::size_t i = 0; i < found.size(); ++i) {
    const YcluiSyntaxNode* const node = found[i];
    const auto word = words_.find(node);
    nodes_.push_back(word == words_.end() ? CluiModelNode() : word->second);
    nodes_[i].isRepeated = node->kind == YcluiNodeClosure;
    for (YcluiSuccessorIterator next(*node); next.ring != nullptr; ++next) {
      nodes_[i].next.push_back(add(next.node()));
    }
  }
}
