#include "syntax/YcluiIdIndex.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <random>

#include "syntax/YcluiSyntaxNode.h"

namespace {

// Ids side by side and far apart, upwards and downwards, and both in one index.
TEST(IdIndex, FindsWhatWasAddedInItsOrder) {
  const struct {
    std::uint32_t first;
    std::int32_t step;
    std::uint32_t random;
    int count;
  } rows[] = {
      {1, 1, 0, 3},           {5000, 1, 0, 4000},      {9000, -1, 0, 4000},
      {0, 1 << 12, 0, 3000},  {5000, 1, 1 << 24, 900}, {40, 1, 60, 900},
      {1, 3, 5, 2000},        {1, 0, 0, 300},          {0xFFFFFF, -1, 0, 2000},
      {1 << 23, 1, 9, 20000},
  };
  std::minstd_rand numbers(1);
  for (const auto& row : rows) {
    YcluiIdIndex index;
    std::map<std::uint32_t, std::vector<YcluiSyntaxNode*>> added;
    std::vector<std::unique_ptr<YcluiSyntaxNode>> nodes;
    std::uint32_t id = row.first;
    for (int i = 0; i < row.count; ++i, id += static_cast<std::uint32_t>(row.step)) {
      const bool isOther = row.random > 0 && numbers() % 3 == 0;
      nodes.push_back(std::make_unique<YcluiSyntaxNode>(isOther ? numbers() % row.random : id));
      index.add(nodes.back().get());
      added[nodes.back()->tokenId].push_back(nodes.back().get());
    }
    for (const auto& [known, list] : added) {
      const YcluiNodeRow* found = index.find(known);
      ASSERT_NE(found, nullptr) << row.first << ": " << known;
      YcluiSyntaxNodeStk all;
      all.push(found->node);
      index.pushOthers(*found, all);
      EXPECT_EQ(std::vector<YcluiSyntaxNode*>(all(), all() + all.count()), list) << known;
      EXPECT_EQ(index.find(known + 1) != nullptr, added.count(known + 1) == 1) << known;
    }
    EXPECT_EQ(index.find(row.first - 1) != nullptr, added.count(row.first - 1) == 1);
  }
}

}  // namespace
