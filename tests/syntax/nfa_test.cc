#include "syntax/YcluiNfa.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <random>

#include "foundation/YErr.h"
#include "fuzz/walker_judge.h"
#include "tests/syntax/syntax_script.h"

namespace {

class Walker : public YcluiNfa {
 public:
  std::vector<YcluiSyntaxNode*> next() const {
    Walker listed(*this);
    listed.listNext();
    return {listed.nextNodes(), listed.nextNodes() + listed.nextNodes.count()};
  }
  std::vector<YcluiSyntaxNode*> possible() const {
    YcluiSyntaxNodeP_Array nodes(2);
    if (possibleNodes(nodes) == 0) return {};
    return {nodes(), nodes() + nodes.size()};
  }
};

// Worked by hand; the judge sees to the rest. Each step's answer, with a "." behind it once the
// line is terminated, a "!" where the step was noted as ambiguous.
TEST(Walker, Tables) {
  const char* const rows[][3] = {
      // Token 1, then 2 or 3 4, any number of 5 and 6, and 7.
      {"(7(|6|5*&((43/|2&1", "1345637", "t1 t3 t4 t5 t6 - t7."},
      // A repeated part that stands last is never behind its end; in front it may be left out.
      {"(1*&2", "211", "t2 t1 t1"},
      {"2(1*&", "2", "t2."},
      // Of a sequence that repeats all is possible, though it comes in its order only.
      {"(21*&3", "312", "t3 t1 t2"},
      // Two ways to the end; of plain alternatives the later one is answered, of fragments the
      // earlier one. The shortest command wins, whatever else is alive.
      {"|1|1", "11", "t1'.! -."},
      {"(1/(1/", "1", "t1'.!"},
      {"(1/(21/", "12", "t1'. t2."},
  };
  for (const auto& [script, tokens, answers] : rows) {
    const auto graph = Build(script);
    Names names = NamesOf(*graph);
    names[nullptr] = "-";
    Walker walker;
    walker.syntaxGraph(graph.get());
    std::string told;
    for (const char id : std::string(tokens)) {
      const std::uint64_t errors = YErr.count();
      told += (told.empty() ? "" : " ") + names.at(walker.stepNext(id - '0'));
      told += walker.isTerminated() != 0 ? "." : "";
      told += YErr.count() > errors && YErr.code(0) == YErrAmbiguous ? "!" : "";
    }
    EXPECT_EQ(told, answers);
  }
}

TEST(Walker, WithoutAGraphRefuses) {
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
}

// What a step led to when the graph had another end is no longer so.
TEST(Walker, FollowsTheEndOfTheGraph) {
  const auto graph = Build("(3|2&1");
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

// What the index of the first words tells of those behind them, near and far in memory, goes when
// there is a new one.
TEST(Walker, LooksBehindIndexedWords) {
  for (const std::size_t between : {0, 9000}) {
    YcluiSyntaxGraph graph;
    YcluiSyntaxNode* words[] = {new YcluiSyntaxNode(1), new YcluiSyntaxNode(3),
                                new YcluiSyntaxNode(4)};
    for (YcluiSyntaxNode* word : words) graph.insertOr(word);
    std::vector<std::unique_ptr<YcluiSyntaxNode>> apart(between);
    for (auto& node : apart) node = std::make_unique<YcluiSyntaxNode>();
    Walker walker;
    walker.syntaxGraph(&graph);
    for (const unsigned long added : {5, 6, 7}) {
      words[0]->append(new YcluiSyntaxNode(added));
      for (int i = 0; i < 8; ++i) {
        walker.reset();
        EXPECT_EQ(walker.stepNext(1), words[0]);
        if (i < 4) continue;
        EXPECT_NE(walker.stepNext(added), nullptr) << added;
      }
    }
  }
}

// The ways behind a word that an index knows change where no step has come by.
TEST(Walker, CountsANewWayBehindAnIndexedWord) {
  YcluiSyntaxGraph graph;
  auto* way = new YcluiSyntaxNode;
  graph.insertAnd(way);
  graph.insertAnd(new YcluiSyntaxNode(1));
  for (const unsigned long id : {3, 4}) graph.start->append(new YcluiSyntaxNode(id));
  Walker walker;
  walker.syntaxGraph(&graph);
  for (int i = 0; i < 8; ++i) {
    if (i == 4) way->append(graph.end);
    const std::uint64_t errors = YErr.count();
    walker.reset();
    EXPECT_NE(walker.stepNext(1), nullptr);
    EXPECT_EQ(YErr.count() > errors, i >= 4) << i;
  }
}

// The ways to the end that one counts who knows of no end are no other's.
TEST(Walker, WithoutAGraphRemembersNothing) {
  YcluiSyntaxGraph graph;
  auto* word = new YcluiSyntaxNode(1);
  graph.insertAnd(word);
  for (int i = 0; i < 20; ++i) {
    auto* way = new YcluiSyntaxNode;
    word->append(way);
    way->append(graph.end);
  }
  Walker walker;
  Walker other;
  walker.syntaxGraph(&graph);
  for (Walker* one : {&walker, &other, &walker}) {
    EXPECT_EQ(one->goBack(word), word);
    EXPECT_EQ(one->isTerminated(), one == &walker ? 1U : 0U);
  }
}

// Whoever keeps the answer learns of it, though no step has read behind the repeated word.
TEST(Walker, ToldOfANewSuccessorOfWhatIsPossible) {
  const auto graph = Build("1");
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

// Where ways meet, the number of ways does not show in what the walker keeps.
TEST(Walker, KeepsEachPlaceTwiceAtMost) {
  const auto graph = Build("1");
  YcluiSyntaxNode* node = SuccessorsOf(*graph->start)[0];
  for (int i = 0; i < 2; ++i) node->append(node);
  Walker walker;
  walker.syntaxGraph(graph.get());
  for (int i = 0; i < 16; ++i) EXPECT_EQ(walker.stepNext(1), node);
  EXPECT_EQ(Listed(walker.next(), NamesOf(*graph)), "e t1 e t1");
}

TEST(WalkerJudge, RandomGraphsAndWalks) {
  std::mt19937 random(20);
  for (int trial = 0; trial < 8000; ++trial) {
    std::vector<std::uint8_t> bytes(random() % 50 + 42);
    const bool byHand = trial % 3 == 0;
    const std::size_t graphSigns = random() % 40 + 2;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      bytes[i] = static_cast<std::uint8_t>(random());
      if (i < graphSigns) bytes[i] = static_cast<std::uint8_t>(bytes[i] % (byHand ? 255 : 191) + 1);
    }
    bytes[graphSigns] = 0;
    ASSERT_EQ(JudgeWalk(bytes.data(), bytes.size()), "") << trial;
  }
}

// What follows runs on a small stack, and takes hours when it is not linear.

std::unique_ptr<YcluiSyntaxGraph> Repeated(int n, const std::string& signs, const char* last) {
  std::string script;
  for (int i = 0; i < n; ++i) script += signs;
  return Build(script + last);
}

// One node that is reached by as many links as lead on from it.
std::unique_ptr<YcluiSyntaxGraph> Crossroads(int n) {
  auto graph = Build("1");
  YcluiSyntaxNode* node = SuccessorsOf(*graph->start)[0];
  for (int i = 0; i < n; ++i) {
    graph->start->append(node);
    node->append(graph->end);
  }
  return graph;
}

void* WalkLargeGraphs(void*) {
  // A chain, alternatives, places at which ways part and meet again without a token, crossroads.
  const std::unique_ptr<YcluiSyntaxGraph> graphs[] = {
      Repeated(1000000, "1", ""), Repeated(500000, "|1", ""), Repeated(100000, "((/(/&", "1"),
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
  return nullptr;
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
