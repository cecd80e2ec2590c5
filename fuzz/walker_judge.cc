// The judge does what the walker's contract says, word by word, with plain lists and sets and
// without any bound on what it keeps. Each of its steps is held against a second one that remembers
// nothing about what it opened, wherever that comes to the same: where no structural node came up
// twice.

#include "fuzz/walker_judge.h"

#include <algorithm>
#include <deque>
#include <map>
#include <set>
#include <vector>

#include "foundation/YErr.h"
#include "syntax/YcluiNfa.h"
#include "tests/syntax/syntax_script.h"

namespace {

using Node = YcluiSyntaxNode;
using NodeList = std::vector<Node*>;

constexpr int MostWork = 500;  // beyond it a walk is given up: it grows without bound

class Walker : public YcluiNfa {
 public:
  NodeList next() const { return NodeList(nextNodes(), nextNodes() + nextNodes.count()); }
};

struct Step {
  Node* answer = nullptr;
  NodeList next;
  int ends = 0;         // ways to the end; the judge stops counting at 2
  bool twice = false;   // a structural node came up twice
  int work = MostWork;  // what may still be done
};

bool Passes(const Node& node) {
  return node.tokenId == 0 && node.kind != YcluiNodeClosure;
}

class Judge {
 public:
  Judge(const YcluiSyntaxGraph& graph, const Node& root) : graph_(graph), root_(root) { reset(); }

  NodeList next;
  Node* current = nullptr;
  bool terminated = false;

  void reset() {
    next = {graph_.start};
    current = graph_.start;
    terminated = false;
  }

  void goBack(Node* node) {
    next = node == nullptr ? NodeList() : SuccessorsOf(*node);
    current = node;
    std::map<const Node*, int> known;
    terminated = node != nullptr && node != graph_.start && node->kind != YcluiNodeClosure &&
                 ways(*node, known) > 0;
  }

  Node* indefinite(std::uint32_t id) const {
    for (Node* node : SuccessorsOf(root_)) {
      if (node->tokenId == id) return node;
    }
    return nullptr;
  }

  Step step(std::uint32_t id, bool openOnce) const {
    Step step;
    std::deque<Node*> waiting(next.begin(), next.end());
    std::set<Node*> opened;
    std::map<const Node*, int> known;
    while (!waiting.empty() && --step.work > 0) {
      Node* node = waiting.back();
      waiting.pop_back();
      if (node->tokenId == 0) {
        const bool first = opened.insert(node).second;
        if (!first) step.twice = true;
        if (!first && openOnce) continue;
        for (Node* after : SuccessorsOf(*node)) waiting.push_front(after);
      } else if (node->tokenId == id) {
        step.answer = node;
        for (Node* after : SuccessorsOf(*node)) step.next.push_back(after);
        if (node->kind == YcluiNodeClosure) continue;
        step.ends += openOnce ? ways(*node, known) : allWays(*node, step.work);
      }
    }
    step.ends = std::min(step.ends, 2);
    return step;
  }

  NodeList possible() const {
    NodeList found;
    std::deque<Node*> waiting(next.begin(), next.end());
    std::set<Node*> seen;
    while (!waiting.empty()) {
      Node* node = waiting.back();
      waiting.pop_back();
      if (!seen.insert(node).second) continue;
      if (node->tokenId != 0) found.push_back(node);
      for (Node* after : SuccessorsOf(*node)) {
        if (node->tokenId == 0) waiting.push_front(after);
        if (node->tokenId != 0 && node->kind == YcluiNodeClosure) waiting.push_back(after);
      }
    }
    return found;
  }

 private:
  const YcluiSyntaxGraph& graph_;
  const Node& root_;

  // Each node's ways worked out once, what leads back adding nothing.
  int ways(const Node& node, std::map<const Node*, int>& known) const {
    known[&node] = -1;
    int sum = 0;
    const NodeList after = SuccessorsOf(node);
    for (auto i = after.rbegin(); i != after.rend(); ++i) {
      if (!Passes(**i) || (known.count(*i) != 0 && known[*i] < 0)) continue;
      sum += (known.count(*i) != 0 ? known[*i] : ways(**i, known)) + (*i == graph_.end ? 1 : 0);
    }
    return known[&node] = std::min(sum, 2);
  }

  // Every way walked by itself.
  int allWays(const Node& node, int& work) const {
    int ends = 0;
    NodeList waiting = SuccessorsOf(node);
    while (!waiting.empty() && --work > 0) {
      const Node* after = waiting.back();
      waiting.pop_back();
      if (!Passes(*after)) continue;
      if (after == graph_.end) ++ends;
      for (Node* more : SuccessorsOf(*after)) waiting.push_back(more);
    }
    return ends;
  }
};

// What the walker keeps of a list: of each node the first and the last place.
NodeList FirstAndLast(const NodeList& list) {
  NodeList kept;
  for (auto i = list.begin(); i != list.end(); ++i) {
    const bool isFirst = std::find(list.begin(), i, *i) == i;
    const bool isLast = std::find(i + 1, list.end(), *i) == list.end();
    if (isFirst || isLast) kept.push_back(*i);
  }
  return kept;
}

// One walk, the walker and the judge side by side.
class Trial {
 public:
  explicit Trial(YcluiSyntaxGraph& graph) : judge_(graph, root_) {
    root_.append(&indefinite_);
    walker_.syntaxGraph(&graph);
    walker_.setIndefiniteNode(&root_);
  }

  // False when the walk ends here, with the difference in `difference` if there is one.
  bool step(std::uint32_t id) {
    const std::uint64_t errors = YErr.count();
    Node* answer = walker_.stepNext(id);
    const std::uint64_t notes = YErr.count() - errors;
    if (judge_.indefinite(id) != nullptr) {
      return same(answer == judge_.indefinite(id) && notes == 0, "indefinite node");
    }
    const Step step = judge_.step(id, true);
    const Step plain = judge_.step(id, false);
    if (step.work <= 0 || step.next.size() > MostWork) return false;
    const bool comparable = plain.work > 0 && !plain.twice;
    if (comparable &&
        !same(plain.answer == step.answer && plain.next == step.next && plain.ends == step.ends,
              "the two judges")) {
      return false;
    }
    if (step.answer != nullptr) {
      judge_.next = step.next;
      judge_.current = step.answer;
    }
    if (step.ends > 0) judge_.terminated = true;
    return same(answer == step.answer, "answer") &&
           same(notes == (step.ends > 1 ? 1U : 0U), "note") && agree();
  }

  bool goBack(Node* node) {
    judge_.goBack(node);
    if (!same(walker_.goBack(node) == node, "goBack") || walker_.next() != judge_.next) {
      return same(false, "next nodes behind goBack");
    }
    return agree();
  }

  bool reset() {
    judge_.reset();
    return same(walker_.reset() == 1, "reset") && agree();
  }

  bool copy() {
    const Walker other(walker_);
    walker_.reset();
    walker_ = other;
    return agree();
  }

  std::string difference;

 private:
  Node root_{0};
  Node indefinite_{4};
  Walker walker_;
  Judge judge_;

  bool same(bool holds, const char* what) {
    if (!holds) difference = what;
    return holds;
  }

  bool agree() {
    const NodeList next = walker_.next();
    YcluiSyntaxNodeP_Array possible(3);
    const bool listed = walker_.possibleNodes(possible) != 0;
    return same(FirstAndLast(next) == FirstAndLast(judge_.next), "next nodes") &&
           same(walker_.currentSyntaxNode() == judge_.current, "current node") &&
           same(walker_.isTerminated() == (judge_.terminated ? 1U : 0U), "terminated") &&
           same(listed == !judge_.terminated, "possibleNodes") &&
           same(listed ? NodeList(possible(), possible() + possible.size()) == judge_.possible()
                       : possible.size() == 3,
                "possible nodes");
  }
};

// Links made by hand go where no fragment could lead: cycles of structural nodes, ways out of the
// middle of a repeated part, the same link many times.
void Link(YcluiSyntaxGraph& graph, const std::vector<std::uint8_t>& ends) {
  const NodeList nodes = NodesOf(graph);
  for (std::size_t i = 0; i + 1 < ends.size(); i += 2) {
    nodes[ends[i] % nodes.size()]->append(nodes[ends[i + 1] % nodes.size()]);
  }
}

bool Move(Trial& trial, std::uint8_t byte, const NodeList& nodes) {
  const unsigned rest = byte / 8U;
  if (byte % 8 == 7) return trial.copy();
  if (byte % 8 == 6) return trial.reset();
  if (byte % 8 == 5) return trial.goBack(rest == 31 ? nullptr : nodes[rest % nodes.size()]);
  return trial.step(rest % 5);
}

}  // namespace

std::string JudgeWalk(const std::uint8_t* bytes, std::size_t count) {
  std::string script;
  std::vector<std::uint8_t> links;
  std::size_t i = 0;
  for (; i < count && bytes[i] != 0; ++i) {
    if (bytes[i] >= 192 && i + 2 < count) {
      links.insert(links.end(), {bytes[i + 1], bytes[i + 2]});
      i += 2;
    } else {
      script += JudgeSigns[bytes[i] % 16];
    }
  }
  const auto graph = Build(script);
  Link(*graph, links);
  const NodeList nodes = NodesOf(*graph);
  Trial trial(*graph);
  for (++i; i < count && Move(trial, bytes[i], nodes); ++i) {
  }
  return trial.difference;
}
