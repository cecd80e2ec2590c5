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
  // when `node` has accepted the last word of the command. The command of each path that leads to
  // `node` is considered; the set is empty when none has such a word. Nothing when there are too
  // many paths to say.
  std::optional<std::set<int>> nodesFor(int node, const CluiForm& form);

 private:
  static constexpr long FarthestStep = 64;

  const CluiSyntaxModel& model_;
  const CluiSyntaxPaths& paths_;
  std::vector<std::vector<int>> previous_;  // the links, backwards
  std::vector<bool> hasWordBefore_;         // for each node, on some path to it
  std::vector<std::set<int>> levels_;       // the token nodes of the first, second ... word
  std::map<int, std::set<int>> allBefore_;  // of the structural node before a word

  // Whether a command goes on after the node has accepted a word.
  bool goesOn(int node) const { return paths_.isReached(node) && !paths_.endsCommand(node); }
  std::set<int> nodesAfter(const std::vector<int>& nodes) const;
  std::set<int> nodesBefore(const std::set<int>& nodes) const;
  const std::set<int>& level(std::size_t number);
  std::set<int> allBefore(int node);
  std::set<int> searchBack(int node) const;
};

#endif  // WORKSHOP_CLUIWORDPOSITIONS_H_
