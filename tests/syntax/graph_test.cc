#include <gtest/gtest.h>

#include "foundation/YErr.h"
#include "syntax/YcluiSyntaxNodeStk.h"
#include "tests/support/allocations.h"
#include "tests/support/syntax.h"

namespace {

TEST(Graph, Fragments) {
  const char* const rows[][2] = {
      {"", "s>e; e>"},
      {"1 2", "s>t1; t1>t2; t2>e; e>"},
      {"2 | 1", "s>t1 t2; t1>e; t2>e; e>"},
      {"2 | [ 1 ]", "s>t1 t2; t1>e; t2>e; e>"},
      {"( 1 2 )", "s>A; A>t1; t1>t2; t2>B; B>e; e>"},
      {"[ 1 ] | [ ]", "s>A B; A>t1; B>; t1>C; C>e; e>"},
      {"[ 2 ] | [ 1 ]", "s>A B; A>t2; B>t1; t2>C; t1>e; C>e; e>"},
      // Repetition leads out first and back second; a new alternative replaces the link to the end.
      {"[ 1 ]*", "s*>e A; e>; A*>t1; t1*>s"},
      {"2 | [ 1 ]*", "s*>A t2; A*>t1; t2>e; t1*>s; e>"},
      {"[ 1 ]**", "s*>e A; e>; A*>s B; B*>t1; t1*>A"},
      // What follows a repeated part is not reached by a repetition around it.
      {"[ ( ( 1 )* 2 ) ]*", "s*>e A; e>; A*>B; B*>C; C*>D E; D>t2; E*>t1; t2>F; t1*>C; F>s"},
  };
  for (const auto& [text, dump] : rows) EXPECT_EQ(Dump(*SyntaxOf(text)), dump) << text;
}

// Each insertion removes the first link to the end, wherever it is in the list.
TEST(Graph, AnAlternativeRemovesTheFirstLinkToTheEnd) {
  const auto graph = SyntaxOf("3 | 2 | 1");
  graph->start->append(graph->end);
  graph->start->append(graph->end);
  graph->insertOr(new YcluiSyntaxNode(4));
  EXPECT_EQ(Listed(SuccessorsOf(*graph->start), NamesOf(*graph)), "t1 t2 t3 e t4");
  graph->insertOr(new YcluiSyntaxNode(5));
  graph->insertOr(new YcluiSyntaxNode(6));
  // The new link probably has the address of the removed one.
  auto* last = static_cast<YcluiSyntaxNode*>(graph->start->last()->item());
  graph->start->detach(static_cast<void*>(last));
  graph->start->append(graph->end);
  delete last;
  graph->insertOr(new YcluiSyntaxNode(7));
  EXPECT_EQ(Listed(SuccessorsOf(*graph->start), NamesOf(*graph)), "t1 t2 t3 t4 t5 t7");
}

TEST(Graph, RefusesEmptiedGraphsAndItself) {
  YcluiSyntaxGraph whole;
  YcluiSyntaxGraph part;
  YcluiSyntaxNode node(1);
  ASSERT_EQ(whole.insertAnd(&part), 1U);
  const std::string before = Dump(whole);
  EXPECT_EQ(part.start, nullptr);
  EXPECT_EQ(whole.insertAnd(&part) + whole.insertOr(&part), 0U);
  EXPECT_EQ(part.insertAnd(&whole) + part.insertOr(&whole), 0U);
  EXPECT_EQ(whole.insertAnd(&whole) + whole.insertOr(&whole), 0U);
  EXPECT_EQ(part.insertAnd(&node) + part.insertOr(&node) + part.makeClosure(), 0U);
  part.setPriority(1, 1);
  EXPECT_EQ(Dump(whole), before);
  EXPECT_EQ(node.first(), nullptr);
}

TEST(Graph, PriorityReachesOneLevel) {
  const auto graph = SyntaxOf("2 | [ [ 1 ] | [ ] ]");
  graph->setPriority(3, 4);
  std::vector<YcluiSyntaxNode*> reached;
  for (YcluiSyntaxNode* node : NodesOf(*graph)) {
    if (node->priority == 3 && node->interruptLimit == 4) reached.push_back(node);
  }
  EXPECT_EQ(reached, SuccessorsOf(*graph->start));
}

TEST(Node, CopyHasItsOwnActionAndNoSuccessors) {
  YcluiSyntaxNode node(0x100000005, "do $1");
  node.kind = YcluiNodeIndefinite;
  node.priority = 200;
  node.append(&node);
  const YcluiSyntaxNode copy(node);
  node.setAction("else");
  EXPECT_EQ(copy.tokenId, 5U);
  EXPECT_STREQ(copy.action->buffer, "do $1");
  EXPECT_EQ(copy.kind, YcluiNodeIndefinite);
  EXPECT_EQ(copy.priority, 200);
  EXPECT_EQ(copy.first(), nullptr);
}

TEST(Node, ActionWithoutMemory) {
  FailAnyAllocation(0);
  EXPECT_EQ(YcluiSyntaxNode(1, "(too long for the string itself)").action, nullptr);
  EXPECT_TRUE(YErr.code(0) == YErrNoMemory && YErr.severity(0) == YErrFatal);
}

TEST(NodeStack, PutInsertsAtTheBottom) {
  YcluiSyntaxNode nodes[400];
  YcluiSyntaxNodeStk stack;
  for (YcluiSyntaxNode& node : nodes) stack.put(&node);
  EXPECT_TRUE(stack.size() == 400 && stack.bottom() == &nodes[399]);
  for (YcluiSyntaxNode& node : nodes) EXPECT_EQ(stack.pop(), &node);
}

}  // namespace
