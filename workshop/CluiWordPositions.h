// Which words can be where in a command.

#ifndef WORKSHOP_CLUIWORDPOSITIONS_H_
#define WORKSHOP_CLUIWORDPOSITIONS_H_

#include <map>
#include <optional>
#include <set>
#include <vector>

#include "workshop/CluiSyntaxModel.h"
#include "workshop/CluiSyntaxPaths.h"
#include "workshop/CluiTemplate.h"

// Words that work anywhere, and words without a meaning, are left out of account: they shift the
// numbers of the words of a command until they are removed.
class CluiWordPositions {
 public:
  // Both must outlive the object.
  CluiWordPositions(const CluiSyntaxModel& model, const CluiSyntaxPaths& paths);

  // The token nodes at which the word of a form of kind FromStart or FromEnd can have been accepted
  // before `node` accepted the last word of the command, over all paths that lead to the node.
  // Empty when there is none; nothing when there are too many paths to say. The last word itself is
  // not considered, so it is no answer for $$.
  std::optional<std::set<int>> nodesFor(int node, const CluiForm& form);
  // Nodes with the same number here have the same results of nodesFor.
  int keyOf(int node) const { return keys_[static_cast<std::size_t>(node)]; }
  // Whether the form can mean the last word, which `node` has accepted.
  bool canBeAt(int node, const CluiForm& form);

 private:
  static constexpr long FarthestStep = 64;

  const CluiSyntaxModel& model_;
  const CluiSyntaxPaths& paths_;
  std::vector<std::vector<int>> previous_;  // the links, backwards
  std::vector<bool> hasWordBefore_;         // for each node, on some path to it
  std::vector<std::set<int>> levels_;       // the token nodes of the first, second ... word
  std::vector<int> keys_;                   // the farthest node before which there is only one way
  std::map<int, std::set<int>> allBefore_;  // by key

  // Whether a command goes on after the node has accepted a word.
  bool goesOn(int node) const { return paths_.isReached(node) && !paths_.endsCommand(node); }
  std::set<int> nodesAfter(const std::vector<int>& nodes) const;
  std::set<int> nodesBefore(const std::set<int>& nodes) const;
  const std::set<int>& level(std::size_t number);
  const std::set<int>& allBefore(int node);
  void findKeys();
  std::set<int> searchBack(int node) const;
};

#endif  // WORKSHOP_CLUIWORDPOSITIONS_H_
