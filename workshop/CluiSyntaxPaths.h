// What a walker can do on a syntax: all steps from all states that it can be in.

#ifndef WORKSHOP_CLUISYNTAXPATHS_H_
#define WORKSHOP_CLUISYNTAXPATHS_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "workshop/CluiSyntaxModel.h"

// Follows the steps of all words from the beginning of a command, each until the command ends. A
// state is the set of nodes after which the next word can come. The exploration stops when it has
// looked at MostVisits nodes or found MostStates states, so it takes seconds at most; the results
// are then incomplete.
class CluiSyntaxPaths {
 public:
  static constexpr std::size_t MostVisits = 30'000'000;
  static constexpr std::size_t MostStates = 200'000;

  // A step by which several nodes end a command, and the words before it.
  struct SharedEnd {
    std::vector<int> nodes;
    std::vector<std::uint32_t> before;
  };

  // Words of `anywhere` come before those of the syntax. The model must outlive the object.
  CluiSyntaxPaths(const CluiSyntaxModel& model, std::set<std::uint32_t> anywhere);

  bool isComplete() const { return isComplete_; }
  // Whether some command gets to that token node.
  bool isReached(int node) const { return reached_[static_cast<std::size_t>(node)]; }
  // Whether a command is over when the node accepts a word, whatever else accepts it.
  bool endsCommand(int node) const { return ends_[static_cast<std::size_t>(node)] > 0; }
  // The token nodes that can come first.
  std::vector<int> firstNodes() { return nodesFrom({model_.start()}); }

  // Each set of nodes once.
  const std::vector<SharedEnd>& sharedEnds() const { return sharedEnds_; }
  // The nodes after which a command cannot end any more, while it could before them. REQUIRES: the
  // exploration is complete.
  std::vector<int> endlessNodes();
  // Whether no command ends.
  bool isEndless() const { return !isLive_[0]; }
  // The token nodes that are not reached although a node before them is, and that one; -1 for the
  // start.
  std::vector<std::pair<int, int>> unreachedNodes() const;

 private:
  using State = std::vector<int>;  // sorted numbers of nodes
  struct Origin {
    int state;
    std::uint32_t tokenId;
  };

  const CluiSyntaxModel& model_;
  std::set<std::uint32_t> anywhere_;
  bool isComplete_ = true;
  std::size_t visits_ = 0;
  std::vector<std::size_t> visitedAt_;  // for each node the last search that visited it
  std::size_t visitNumber_ = 0;
  std::vector<char> ends_;  // for each token node the number of paths to the end, 2 for more
  std::vector<bool> reached_;
  std::vector<SharedEnd> sharedEnds_;

  std::map<State, int> numbers_;
  std::vector<const State*> states_;
  std::vector<Origin> origins_;             // by which step each state was reached first
  std::vector<std::vector<int>> previous_;  // the states before each state
  std::vector<bool> isLive_;                // whether a command can end from there
  std::set<std::vector<int>> knownEnds_;

  int countEnds(int node, std::vector<signed char>& counts) const;
  std::vector<int> nodesFrom(const State& state);
  // Calls visit(id, begin, end) with the nodes of each id that can come next.
  template <class Visit>
  void eachStep(const State& state, const Visit& visit);
  int stateAfter(const int* begin, const int* end);
  int add(State state, Origin origin);
  void explore();
  void findLive();
  void noteEnds(int state, const int* begin, const int* end);
  std::vector<std::uint32_t> wordsTo(int state) const;
};

#endif  // WORKSHOP_CLUISYNTAXPATHS_H_
