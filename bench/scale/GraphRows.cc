#include <memory>

#include "bench/scale/Rows.h"
#include "syntax/YcluiNfa.h"

namespace {

std::uint32_t IdOf(long node) {
  constexpr long FirstId = 5000;
  constexpr long Ids = 7;
  return static_cast<std::uint32_t>(FirstId + node % Ids);
}

// Sequences of token nodes.
struct Chains {
  Chains(long chainLength, long chains)
      : length(chainLength), graphs(static_cast<std::size_t>(chains)) {}

  long length;
  std::vector<std::unique_ptr<YcluiSyntaxGraph>> graphs;

  bool build() {
    for (auto& graph : graphs) {
      graph = std::make_unique<YcluiSyntaxGraph>();
      for (long i = length; i > 0; --i) graph->insertAnd(new YcluiSyntaxNode(IdOf(i)));
    }
    return true;
  }
  bool walk() const {
    bool isRight = true;
    for (const auto& graph : graphs) {
      YcluiNfa walker;
      walker.syntaxGraph(graph.get());
      for (long i = 1; i <= length; ++i) isRight = walker.stepNext(IdOf(i)) != nullptr && isRight;
      isRight = walker.isTerminated() != 0 && isRight;
    }
    return isRight;
  }
  bool destroy() {
    for (auto& graph : graphs) graph.reset();
    return true;
  }
};

Work Built(long length, long chains) {
  const auto all = std::make_shared<Chains>(length, chains);
  return {[all] { return all->build(); }, [all] { all->destroy(); }};
}

Work Walked(long length, long chains) {
  const auto all = std::make_shared<Chains>(length, chains);
  all->build();
  return {[all] { return all->walk(); }};
}

Work Destroyed(long length, long chains) {
  const auto all = std::make_shared<Chains>(length, chains);
  return {[all] { return all->destroy(); }, [all] { all->build(); }};
}

}  // namespace

std::vector<Row> GraphRows() {
  return {
      {"a chain of nodes built", "node", 1000, 1000000, &Built},
      {"a chain walked", "node", 1000, 1000000, &Walked},
      {"a chain destroyed", "node", 1000, 1000000, &Destroyed},
  };
}
