#include <memory>
#include <unordered_set>

#include "bench/Row.h"
#include "syntax/YcluiNfa.h"

namespace {

constexpr long FirstId = 5000;
constexpr long Ids = 7;

// A sequence of token nodes, built from its back as all sequences are.
class Chain : public Work {
 protected:
  explicit Chain(long nodes) : nodes_(nodes) {}
  void build() {
    graph_ = std::make_unique<YcluiSyntaxGraph>();
    for (long i = nodes_; i > 0; --i) {
      graph_->insertAnd(new YcluiSyntaxNode(static_cast<unsigned long>(FirstId + i % Ids)));
    }
  }

  long nodes_;
  std::unique_ptr<YcluiSyntaxGraph> graph_;
};

class ChainBuilt : public Chain {
 public:
  explicit ChainBuilt(long nodes) : Chain(nodes) {}
  void prepare() override { graph_.reset(); }
  void run() override { build(); }
  bool isDone() const override { return graph_->start->first() != nullptr; }
};

class ChainWalked : public Chain {
 public:
  explicit ChainWalked(long nodes) : Chain(nodes) {}
  void prepare() override {
    if (graph_ == nullptr) build();
    walker_.syntaxGraph(graph_.get());
  }
  void run() override {
    taken_ = 0;
    for (long i = 1; i <= nodes_; ++i) {
      const auto id = static_cast<unsigned long>(FirstId + i % Ids);
      if (walker_.stepNext(id) != nullptr) ++taken_;
    }
  }
  bool isDone() const override { return taken_ == nodes_ && walker_.isTerminated() != 0; }

 private:
  YcluiNfa walker_;
  long taken_ = 0;
};

class ChainDestroyed : public Chain {
 public:
  explicit ChainDestroyed(long nodes) : Chain(nodes) {}
  void prepare() override { build(); }
  void run() override { graph_.reset(); }
  bool isDone() const override { return graph_ == nullptr; }
};

// The least that a chain in as much memory can cost: two allocations for each node, one for what it
// holds and one for the link to the next.
class PlainList : public Work {
 protected:
  struct Node;
  struct Link {
    Node* node = nullptr;
    void* others[3] = {};
  };
  struct Node {
    Link* link = nullptr;
    char rest[sizeof(YcluiSyntaxNode) - sizeof(Link*)] = {};
  };

  explicit PlainList(long nodes) : nodes_(nodes) {}
  ~PlainList() override { destroy(); }
  void build() {
    for (long i = 0; i < nodes_; ++i) first_ = new Node{new Link{first_, {}}, {}};
  }
  void destroy() {
    while (first_ != nullptr) {
      const std::unique_ptr<Node> node(first_);
      const std::unique_ptr<Link> link(node->link);
      first_ = link->node;
    }
  }

  long nodes_;
  Node* first_ = nullptr;
};

class ListBuilt : public PlainList {
 public:
  explicit ListBuilt(long nodes) : PlainList(nodes) {}
  void prepare() override { destroy(); }
  void run() override { build(); }
  bool isDone() const override { return first_ != nullptr; }
};

class ListWalked : public PlainList {
 public:
  explicit ListWalked(long nodes) : PlainList(nodes) {}
  void prepare() override {
    if (first_ == nullptr) build();
  }
  void run() override {
    met_ = 0;
    for (Node* node = first_; node != nullptr; node = node->link->node) {
      ++node->rest[sizeof node->rest - 1];
      ++met_;
    }
  }
  bool isDone() const override { return met_ == nodes_; }

 private:
  long met_ = 0;
};

// By way of a set of the nodes, as a syntax is, since its nodes may lead to one another as they
// like.
class ListDestroyed : public PlainList {
 public:
  explicit ListDestroyed(long nodes) : PlainList(nodes) {}
  void prepare() override { build(); }
  void run() override {
    std::unordered_set<const Node*> met;
    for (const Node* node = first_; node != nullptr; node = node->link->node) met.insert(node);
    destroy();
  }
  bool isDone() const override { return first_ == nullptr; }
};

}  // namespace

std::vector<Row> GraphRows() {
  constexpr long Few = 1000;
  constexpr long Many = 1000000;
  return {
      RowOf<ChainBuilt>("a chain built", "node", Few, Many, 1.5),
      RowOf<ListBuilt>("a plain list built", "node", Few, Many, 0),
      RowOf<ChainWalked>("a chain walked", "node", Few, Many, 1.5),
      RowOf<ListWalked>("a plain list walked", "node", Few, Many, 0),
      RowOf<ChainDestroyed>("a chain destroyed", "node", Few, Many, 1.5),
      RowOf<ListDestroyed>("a plain list destroyed", "node", Few, Many, 0),
  };
}
