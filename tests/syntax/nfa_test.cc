#include "syntax/YcluiNfa.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <random>

#include "foundation/YErr.h"
#include "fuzz/walker_reference.h"
#include "tests/support/syntax.h"

namespace {

class Walker : public YcluiNfa {
 public:
  std::vector<YcluiSyntaxNode*> possible() const {
    YcluiSyntaxNodeP_Array nodes(2);
    if (possibleNodes(nodes) == 0) return {};
    return {nodes(), nodes() + nodes.size()};
  }
};

// Results worked out by hand: the node that accepts each token, with a "." once the line is
// terminated and a "!" when the step is ambiguous. Each walk is repeated, so that it is simulated,
// then cached, then looked up.
TEST(Walker, Tables) {
  const char* const rows[][3] = {
      {"1 ( 2 | 3 4 ) ( 5 | 6 )* 7", "1345637", "t1 t3 t4 t5 t6 - t7."},
      // A repeated part at the end never terminates the line; at the beginning it may be omitted.
      {"2 ( 1 )*", "211", "t2 t1 t1"},
      {"( 1 )* 2", "2", "t2."},
      // The words of a repeated sequence are accepted in their order only.
      {"3 ( 1 2 )*", "312", "t3 t1 t2"},
      // Two paths to the end; of nodes the one inserted later is returned, of fragments the one
      // inserted earlier. The shortest command wins, whatever else may follow.
      {"1 | 1", "11", "t1'.! -."},
      {"[ 1 ] | [ 1 ] | [ ]", "1", "t1'.!"},
      {"1 2 | [ 1 ] | [ ]", "12", "t1'. t2."},
      // Several matches, only one of which leads to the next token.
      {"1 2 4 | 1 3 5 | 1 2 3 6", "1236", "t1'' t2 t3' t6."},
      {"1 2 4 | 1 3 5 | 1 2 3 6", "135", "t1'' t3 t5."},
  };
  for (const auto& [syntax, tokens, accepted] : rows) {
    const auto graph = SyntaxOf(syntax);
    Names names = NamesOf(*graph);
    names[nullptr] = "-";
    Walker walker;
    walker.syntaxGraph(graph.get());
    for (int visit = 1; visit <= 4; ++visit) {
      std::string steps;
      walker.reset();
      for (const char id : std::string(tokens)) {
        const std::uint64_t errors = YErr.count();
        steps += (steps.empty() ? "" : " ") + names.at(walker.stepNext(id - '0'));
        steps += walker.isTerminated() != 0 ? "." : "";
        steps += YErr.count() > errors && YErr.code(0) == YErrAmbiguous ? "!" : "";
      }
      EXPECT_EQ(steps, accepted) << syntax << ", visit " << visit;
    }
  }
}

TEST(Walker, WithoutAGraph) {
  Walker walker;
  YcluiSyntaxNodeP_Array nodes(2);
  YcluiSyntaxGraph whole;
  YcluiSyntaxGraph emptied;
  whole.insertAnd(&emptied);
  for (YcluiSyntaxGraph* graph : {static_cast<YcluiSyntaxGraph*>(nullptr), &emptied}) {
    EXPECT_EQ(walker.syntaxGraph(graph), 0U);
    EXPECT_EQ(walker.stepNext(1), nullptr);
  }
  EXPECT_EQ(Walker().possibleNodes(nodes), 0U);
  EXPECT_EQ(nodes.size(), 2);
  // Without a graph no node terminates the line.
  const auto graph = SyntaxOf("1");
  Walker other;
  other.goBack(SuccessorsOf(*graph->start)[0]);
  EXPECT_EQ(other.isTerminated(), 0U);
}

TEST(Walker, NoticesANewEndOfTheGraph) {
  const auto graph = SyntaxOf("1 ( 2 | 3 )");
  YcluiSyntaxNode other;
  YcluiSyntaxNode* end = graph->end;
  Walker walker;
  for (const bool isOther : {false, false, false, true, true, true}) {
    graph->end = isOther ? &other : end;
    walker.syntaxGraph(graph.get());
    EXPECT_NE(walker.stepNext(1), nullptr);
    EXPECT_NE(walker.stepNext(2), nullptr);
    EXPECT_EQ(walker.isTerminated(), isOther ? 0U : 1U);
  }
  graph->end = end;
}

TEST(Walker, GenerationDependsOnPossibleNodes) {
  const auto graph = SyntaxOf("1");
  YcluiSyntaxNode* word = SuccessorsOf(*graph->start)[0];
  word->kind = YcluiNodeClosure;
  word->append(new YcluiSyntaxNode(5));
  Walker walker;
  walker.syntaxGraph(graph.get());
  EXPECT_EQ(walker.stepNext(1), word);
  EXPECT_EQ(walker.possible().size(), 1U);
  const std::uint64_t generation = walker.generation();
  word->append(new YcluiSyntaxNode(3));
  EXPECT_NE(walker.generation(), generation);
}

// Two languages of 20,000 words. A change of one does not empty the cache of the other.
TEST(StepCache, AChangeEmptiesTheCacheOfItsGraphOnly) {
  std::string words = "1{do}";
  for (int id = 2; id <= 20000; ++id) words += " | " + std::to_string(id) + "{do}";
  const std::unique_ptr<YcluiSyntaxGraph> graphs[] = {SyntaxOf(words), SyntaxOf(words)};
  Walker walkers[2];
  // Whether the step is cached: then the text of its action is a copy.
  const auto isCached = [&walkers](int i, unsigned long id) {
    walkers[i].reset();
    const YcluiSyntaxNode* node = walkers[i].stepNext(id);
    return walkers[i].actionText(*node) != node->action->buffer;
  };
  for (int i = 0; i < 2; ++i) {
    walkers[i].syntaxGraph(graphs[i].get());
    EXPECT_FALSE(isCached(i, 1));
    EXPECT_TRUE(isCached(i, 1) && isCached(i, 2));
  }
  const std::uint64_t generations[] = {walkers[0].generation(), walkers[1].generation()};
  EXPECT_NE(generations[0], generations[1]);
  graphs[1]->insertOr(new YcluiSyntaxNode(30000, "do"));
  EXPECT_EQ(walkers[0].generation(), generations[0]);
  EXPECT_NE(walkers[1].generation(), generations[1]);
  EXPECT_TRUE(isCached(0, 2) && isCached(0, 1));
  EXPECT_FALSE(isCached(1, 30000));
  EXPECT_TRUE(isCached(1, 30000) && isCached(1, 1));
}

// Every node is a successor of every other one, which makes more steps than the cache may hold.
TEST(StepCache, StepsWithAFullCache) {
  constexpr unsigned long Words = 60;
  YcluiSyntaxGraph graph;
  std::vector<YcluiSyntaxNode*> nodes;
  for (unsigned long id = 1; id <= Words; ++id) {
    nodes.push_back(new YcluiSyntaxNode(id, "action"));
    graph.insertOr(nodes.back());
  }
  for (YcluiSyntaxNode* node : nodes) {
    for (YcluiSyntaxNode* next : nodes) node->append(next);
  }
  Walker walker;
  walker.syntaxGraph(&graph);
  std::mt19937 random(4);
  int copies = 0;  // the text of a cached step is a copy
  for (int i = 0; i < 20000; ++i) {
    const unsigned long id = random() % (Words + 1) + 1;
    YcluiSyntaxNode* accepted = id > Words ? nullptr : nodes[id - 1];
    ASSERT_EQ(walker.stepNext(id), accepted) << i;
    if (accepted == nullptr) continue;
    ASSERT_STREQ(walker.actionText(*accepted), "action");
    if (walker.actionText(*accepted) != accepted->action->buffer) ++copies;
  }
  EXPECT_GT(copies, 0);
  EXPECT_LT(copies, 10000) << "the cache was not full";
  nodes[0]->append(graph.end);
  for (int visit = 0; visit < 4; ++visit) {
    walker.reset();
    EXPECT_EQ(walker.stepNext(1), nodes[0]);
  }
  EXPECT_NE(walker.actionText(*nodes[0]), nodes[0]->action->buffer)
      << "the change did not empty it";
}

TEST(Walker, TheSameAsTheReference) {
  std::mt19937 random(20);
  for (int trial = 0; trial < 8000; ++trial) {
    std::vector<std::uint8_t> bytes(random() % 50 + 26);
    const bool byHand = trial % 3 == 0;
    const std::size_t graphSigns = random() % 24 + 2;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      bytes[i] = static_cast<std::uint8_t>(random());
      if (i < graphSigns) bytes[i] = static_cast<std::uint8_t>(bytes[i] % (byHand ? 255 : 191) + 1);
    }
    bytes[graphSigns] = 0;
    ASSERT_EQ(CompareWalkers(bytes.data(), bytes.size()), "") << trial;
  }
}

// The rest runs on a small stack, and would take hours if it were not linear.

std::unique_ptr<YcluiSyntaxGraph> Repeated(int n, const std::string& part) {
  std::string syntax = "1";
  for (int i = 0; i < n; ++i) syntax += part;
  return SyntaxOf(syntax);
}

// One node with n links to it and n links from it.
std::unique_ptr<YcluiSyntaxGraph> Crossroads(int n) {
  auto graph = SyntaxOf("1");
  YcluiSyntaxNode* node = SuccessorsOf(*graph->start)[0];
  for (int i = 0; i < n; ++i) {
    graph->start->append(node);
    node->append(graph->end);
  }
  return graph;
}

void* WalkLargeGraphs(void*) {
  // A chain, alternatives, paths that fork and join without a token, one node with all links.
  const std::unique_ptr<YcluiSyntaxGraph> graphs[] = {
      Repeated(999999, " 1"), Repeated(499999, " | 1"), Repeated(100000, " ( | )"),
      Crossroads(100000)};
  for (const auto& graph : graphs) {
    Walker walker;
    walker.syntaxGraph(graph.get());
    EXPECT_NE(walker.stepNext(1), nullptr);
    EXPECT_EQ(walker.stepNext(2), nullptr);
    EXPECT_EQ(walker.isTerminated(), graph == graphs[0] ? 0U : 1U);
    walker.goBack(graph->start);
    EXPECT_EQ(walker.possible().size(), graph == graphs[1] ? 500000U : 1U);
    graph->makeClosure();
    walker.reset();
    for (int i = 0; i < 3; ++i) EXPECT_NE(walker.stepNext(1), nullptr);
    EXPECT_EQ(walker.possible().empty(), false);
  }
  // Each of many words once: the first step with a word, which begins one command or two, does not
  // visit the others.
  std::string words = "1 1";
  for (int id = 2; id <= 100000; ++id) {
    const std::string word = " | " + std::to_string(id);
    words += word + " 1" + (id % 2 == 0 ? word + " 2" : "");
  }
  const auto language = SyntaxOf(words);
  Walker walker;
  for (unsigned long id = 1; id <= 100000; ++id) {
    walker.syntaxGraph(language.get());
    EXPECT_NE(walker.stepNext(id), nullptr);
    EXPECT_NE(walker.stepNext(id % 2 == 0 ? 2 : 1), nullptr);
  }
  return nullptr;
}

// A change of nodes that two caches have read empties both.
TEST(Walker, IndefiniteNodesOfTwoGraphs) {
  const std::unique_ptr<YcluiSyntaxGraph> graphs[] = {SyntaxOf("1"), SyntaxOf("2")};
  YcluiSyntaxNode root;
  std::vector<std::unique_ptr<YcluiSyntaxNode>> nodes;
  for (unsigned long id = 100; id < 123; ++id) {
    if (id < 122) nodes.push_back(std::make_unique<YcluiSyntaxNode>(id));
    if (id < 122) root.append(nodes.back().get());
    for (const auto& graph : graphs) {
      Walker walker;
      walker.syntaxGraph(graph.get());
      walker.setIndefiniteNode(&root);
      EXPECT_EQ(walker.indefiniteNode(id), id < 122 ? nodes.back().get() : nullptr) << id;
    }
  }
}

TEST(Walker, LargeGraphs) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, 256 * 1024);
  pthread_t thread;
  ASSERT_EQ(pthread_create(&thread, &attributes, WalkLargeGraphs, nullptr), 0);
  pthread_join(thread, nullptr);
}

}  // namespace
