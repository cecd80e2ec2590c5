// The graph of a recorded syntax, with the part of the script to which each node belongs.

#ifndef WORKSHOP_CLUISYNTAXMODEL_H_
#define WORKSHOP_CLUISYNTAXMODEL_H_

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "syntax/YcluiSyntaxGraph.h"
#include "workshop/CluiGrammar.h"

// A node of the graph. The parts belong to the syntax that the model was made of.
struct CluiModelNode {
  std::uint32_t tokenId = 0;  // 0: structural
  bool isRepeated = false;    // belongs to a repeated part
  std::vector<int> next;
  const CluiFragment* call = nullptr;      // of a token node: the call around the word
  const CluiFragment* code = nullptr;      // its code, null when it has none
  const CluiFragment* priority = nullptr;  // its priorities, null when it has the usual ones
};

// Joins the parts as the primitives do, so that the graph is that of the parser.
class CluiSyntaxModel {
 public:
  // A part of a call.
  struct Part {
    const CluiFragment* part;
    const CluiFragment* call;
  };
  // Code after a fragment, which belongs to an earlier word of the call.
  struct Displaced {
    Part code;
    std::uint32_t tokenId;  // of that word
  };

  // `syntax` must outlive the model.
  explicit CluiSyntaxModel(const CluiFragment& syntax);
  CluiSyntaxModel(const CluiSyntaxModel&) = delete;
  CluiSyntaxModel& operator=(const CluiSyntaxModel&) = delete;

  // False when the syntax has parts that were not recorded; then there are no nodes.
  bool isComplete() const { return isComplete_; }

  // The nodes, and the numbers of the first and the last. All token nodes are numbered, also those
  // that no path reaches.
  const std::vector<CluiModelNode>& nodes() const { return nodes_; }
  int start() const { return start_; }
  int end() const { return end_; }
  // For a walker: its graph, and the number of a node.
  YcluiSyntaxGraph& graph() { return *graph_; }
  int numberOf(const YcluiSyntaxNode* node) const;

  // Code that no word has, since there is none before it or another code is nearer to it.
  const std::vector<Part>& lostCode() const { return lostCode_; }
  const std::vector<Displaced>& displacedCode() const { return displacedCode_; }
  // All priorities.
  const std::vector<Part>& priorities() const { return priorities_; }

 private:
  using Graph = std::unique_ptr<YcluiSyntaxGraph>;

  bool isComplete_ = true;
  Graph graph_;
  std::unordered_map<const YcluiSyntaxNode*, CluiModelNode> words_;
  std::unordered_map<const YcluiSyntaxNode*, int> numbers_;
  std::vector<CluiModelNode> nodes_;
  int start_ = 0;
  int end_ = 0;
  std::vector<Part> lostCode_;
  std::vector<Displaced> displacedCode_;
  std::vector<Part> priorities_;

  Graph build(const CluiFragment& call);
  void setPriority(const YcluiSyntaxGraph& graph, const CluiFragment& priority);
  void number();
};

#endif  // WORKSHOP_CLUISYNTAXMODEL_H_
