// The reference implements the contract of the walker literally, with unlimited lists and sets and
// without a cache, on graphs that change during the walk. When no structural node is visited twice,
// each step is also compared with one in which structural nodes contribute their successors at
// every visit.

#include "fuzz/walker_reference.h"

#include <algorithm>
#include <deque>
#include <map>
#include <memory>
#include <set>
#include <utility>
#include <vector>

#include "foundation/YErr.h"
#include "syntax/YcluiNfa.h"
#include "tests/support/Choices.h"
#include "tests/support/syntax.h"

namespace {

using Node = YcluiSyntaxNode;
using NodeList = std::vector<Node*>;

constexpr int MostWork = 500;  // a walk with more visits in one step is given up
constexpr unsigned Wide = 18;  // more successors than the walker searches linearly

class Walker : public YcluiNfa {
 public:
  // Uses a copy, because listNext changes the walker.
  NodeList next() const {
    Walker listed(*this);
    listed.listNext();
    return NodeList(listed.nextNodes(), listed.nextNodes() + listed.nextNodes.count());
  }
};

struct Step {
  Node* accepted = nullptr;
  NodeList next;
  int ends = 0;         // paths to the end, counted up to 2
  bool twice = false;   // a structural node was visited twice
  int work = MostWork;  // visits left
};

bool Passes(const Node& node) {
  return node.tokenId == 0 && node.kind != YcluiNodeClosure;
}

class Reference {
 public:
  Reference(const YcluiSyntaxGraph& graph, const Node& indefiniteRoot)
      : root(&indefiniteRoot), graph_(graph) {
    reset();
  }

  const Node* root;
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
                 paths(*node, known) > 0;
  }

  Node* indefinite(std::uint32_t id) const {
    for (Node* node : SuccessorsOf(*root)) {
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
        step.accepted = node;
        for (Node* after : SuccessorsOf(*node)) step.next.push_back(after);
        if (node->kind == YcluiNodeClosure) continue;
        step.ends += openOnce ? paths(*node, known) : allPaths(*node, step.work);
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

  // Counts the paths from each node once; a cycle adds none.
  int paths(const Node& node, std::map<const Node*, int>& known) const {
    known[&node] = -1;
    int sum = 0;
    const NodeList after = SuccessorsOf(node);
    for (auto i = after.rbegin(); i != after.rend(); ++i) {
      if (!Passes(**i) || (known.count(*i) != 0 && known[*i] < 0)) continue;
      sum += (known.count(*i) != 0 ? known[*i] : paths(**i, known)) + (*i == graph_.end ? 1 : 0);
    }
    return known[&node] = std::min(sum, 2);
  }

  // Follows each path separately.
  int allPaths(const Node& node, int& work) const {
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

// The walker keeps the first and the last occurrence of each node.
NodeList FirstAndLast(const NodeList& list) {
  NodeList kept;
  for (auto i = list.begin(); i != list.end(); ++i) {
    const bool isFirst = std::find(list.begin(), i, *i) == i;
    const bool isLast = std::find(i + 1, list.end(), *i) == list.end();
    if (isFirst || isLast) kept.push_back(*i);
  }
  return kept;
}

// Adds nodes between two others: some structural, some with ids that are used by steps, most with
// other ids.
void Widen(Node& from, Node& to, unsigned pattern) {
  for (unsigned i = 0; i < Wide; ++i) {
    auto* node = new Node(i % 4 == pattern % 4 ? i / 4 % 4 : 10 + i);
    node->append(&to);
    from.append(node);
  }
}

// A graph that also owns the nodes that a change has made unreachable.
class KeptGraph {
 public:
  explicit KeptGraph(std::unique_ptr<YcluiSyntaxGraph> graph) : graph_(std::move(graph)) { keep(); }
  ~KeptGraph() {
    keep();
    for (Node* node : all_) graph_->start->append(node);
  }

  YcluiSyntaxGraph& operator*() const { return *graph_; }
  Node& node(unsigned number) const {
    const NodeList nodes = NodesOf(*graph_);
    return *nodes[number % nodes.size()];
  }

  void change(unsigned how, unsigned a, unsigned b) {
    Node& node = this->node(a);
    const bool isInner = &node != graph_->start && &node != graph_->end;
    keep();
    switch (how % 9) {
      case 0:
        graph_->insertOr(new Node(b % 4 + 1));
        break;
      case 1:
        graph_->insertAnd(new Node(b % 4 + 1));
        break;
      case 2:
        graph_->insertOr(SyntaxOf("3 | [ 2 ( 1 )* ]").get());
        break;
      case 3:
        graph_->makeClosure();
        break;
      case 4:
        node.append(&this->node(b));
        break;
      case 5:
        node.detach(&this->node(b));
        break;
      case 6:
        Widen(node, this->node(b), a);
        break;
      case 7:
        if (isInner) remove(node);
        break;
      default:
        if (isInner) node.tokenId = b % 4;
        node.kind = b < 128 ? YcluiNodePlain : YcluiNodeClosure;
        Node::NoteChange();
    }
  }

 private:
  std::unique_ptr<YcluiSyntaxGraph> graph_;
  std::set<Node*> all_;

  void keep() {
    for (Node* node : NodesOf(*graph_)) all_.insert(node);
    all_.insert(graph_->end);
  }
  void remove(Node& node) {
    for (Node* from : all_) {
      while (from->detach(&node) != nullptr) {
      }
    }
    all_.erase(&node);
    for (Node* after : SuccessorsOf(node)) graph_->start->append(after);
    delete &node;
  }
};

// One walk, by the walker and by the reference.
class Trial {
 public:
  explicit Trial(YcluiSyntaxGraph& graph) : graph_(graph), reference_(graph, root_) {
    addIndefinite(4);
    walker_.syntaxGraph(&graph);
    walker_.setIndefiniteNode(&root_);
  }
  ~Trial() { deleteNodesFrom(&indefinites_); }
  Trial(const Trial&) = delete;
  Trial& operator=(const Trial&) = delete;

  // False when the walk ends here, with the difference in `difference` if there is one.
  bool step(std::uint32_t id) {
    const std::uint64_t errors = YErr.count();
    Node* accepted = walker_.stepNext(id);
    const std::uint64_t notes = YErr.count() - errors;
    if (reference_.indefinite(id) != nullptr) {
      return same(accepted == reference_.indefinite(id) && notes == 0, "indefinite node");
    }
    const Step step = reference_.step(id, true);
    const Step plain = reference_.step(id, false);
    if (step.work <= 0 || step.next.size() > MostWork) return false;
    const bool comparable = plain.work > 0 && !plain.twice;
    if (comparable &&
        !same(plain.accepted == step.accepted && plain.next == step.next && plain.ends == step.ends,
              "the two references")) {
      return false;
    }
    if (step.accepted != nullptr) {
      reference_.next = step.next;
      reference_.current = step.accepted;
    }
    if (step.ends > 0) reference_.terminated = true;
    return same(accepted == step.accepted, "accepted node") &&
           same(notes == (step.ends > 1 ? 1U : 0U), "note") && agree();
  }

  bool goBack(Node* node) {
    reference_.goBack(node);
    return same(walker_.goBack(node) == node, "goBack") && agree();
  }

  bool reset() {
    reference_.reset();
    return same(walker_.reset() == 1, "reset") && agree();
  }

  bool copy() {
    const Walker other(walker_);
    walker_.reset();
    walker_ = other;
    return agree();
  }

  // From the start four times, so that the step is cached.
  bool stepAgain(std::uint32_t id) {
    for (int i = 0; i < 4; ++i) {
      if (!reset() || !step(id)) return false;
    }
    return true;
  }

  // Adds or removes indefinite nodes, or sets another root, which may be a node of the graph.
  bool changeIndefinites(unsigned how) {
    switch (how % 4) {
      case 0:
        for (unsigned i = 0; i < Wide; ++i) addIndefinite(20 + i);
        break;
      case 1:
        addIndefinite(how / 4 % 5);
        break;
      case 2:
        if (root_.first() != nullptr) root_.detach(root_.first()->item());
        break;
      default:
        setIndefiniteRoot(reference_.root == &root_ ? *graph_.start : root_);
    }
    return agree();
  }

  void setIndefiniteRoot(Node& root) {
    walker_.setIndefiniteNode(&root);
    reference_.root = &root;
  }
  Node& ownIndefiniteRoot() { return root_; }

  // Not called after every step, because possibleNodes makes the cache depend on more nodes.
  bool agreeOnPossible() {
    YcluiSyntaxNodeP_Array possible(3);
    const bool listed = walker_.possibleNodes(possible) != 0;
    return same(listed == !reference_.terminated, "possibleNodes") &&
           same(listed ? NodeList(possible(), possible() + possible.size()) == reference_.possible()
                       : possible.size() == 3,
                "possible nodes");
  }

  std::string difference;

 private:
  YcluiSyntaxGraph& graph_;
  Node root_{0};
  Node& indefinites_ = *new Node;  // leads to all of them
  Walker walker_;
  Reference reference_;

  void addIndefinite(unsigned long id) {
    auto* node = new Node(id);
    node->kind = YcluiNodeIndefinite;
    root_.append(node);
    indefinites_.append(node);
  }

  bool same(bool holds, const char* what) {
    if (!holds) difference = what;
    return holds;
  }

  bool agree() {
    const NodeList next = walker_.next();
    return same(FirstAndLast(next) == FirstAndLast(reference_.next), "next nodes") &&
           same(walker_.currentSyntaxNode() == reference_.current, "current node") &&
           same(walker_.isTerminated() == (reference_.terminated ? 1U : 0U), "terminated");
  }
};

bool Change(Trial& trial, KeptGraph& graph, unsigned how, Choices& choices) {
  const unsigned a = choices.byte();
  const unsigned b = choices.byte();
  trial.setIndefiniteRoot(trial.ownIndefiniteRoot());
  graph.change(how, a, b);
  return b % 4 != 0 ? trial.reset() : trial.goBack(&graph.node(a));
}

bool Move(Trial& trial, KeptGraph& graph, Choices& choices) {
  const unsigned byte = choices.byte();
  const unsigned rest = byte / 8;
  switch (byte % 8) {
    case 1:
      return trial.step(rest % 5) && (rest < 16 || trial.agreeOnPossible());
    case 2:
      return trial.stepAgain(rest % 5);
    case 3:
      return Change(trial, graph, rest, choices);
    case 4:
      return trial.changeIndefinites(rest);
    case 5:
      return trial.goBack(rest == 31 ? nullptr : &graph.node(rest));
    case 6:
      return trial.reset();
    case 7:
      return trial.copy() && (rest < 16 || trial.agreeOnPossible());
    default:
      return trial.step(rest % 5);
  }
}

// A link that no fragment has: for cycles of structural nodes, paths out of the middle of a
// repeated part, multiple links between two nodes.
struct Link {
  bool isWide;
  unsigned from;
  unsigned to;
};

std::unique_ptr<YcluiSyntaxGraph> ReadGraph(Choices& choices) {
  std::string text;
  std::vector<Link> links;
  while (const unsigned byte = choices.byte()) {
    if (byte < 192) {
      text += GraphSigns[byte % 16];
    } else {
      const unsigned from = choices.byte();
      links.push_back({byte >= 240, from, choices.byte()});
    }
  }
  auto graph = SyntaxOf(text);
  const NodeList nodes = NodesOf(*graph);
  for (const Link& link : links) {
    Node& from = *nodes[link.from % nodes.size()];
    Node& to = *nodes[link.to % nodes.size()];
    link.isWide ? Widen(from, to, link.from) : static_cast<void>(from.append(&to));
  }
  return graph;
}

}  // namespace

std::string CompareWalkers(const std::uint8_t* bytes, std::size_t count) {
  Choices choices(bytes, count);
  KeptGraph graph(ReadGraph(choices));
  Trial trial(*graph);
  while (choices.more() && Move(trial, graph, choices)) {
  }
  return trial.difference;
}
