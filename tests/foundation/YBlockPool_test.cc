#include "foundation/YBlockPool.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace {

TEST(YBlockPool, BlocksAreApartAndBeginAtALine) {
  YBlockPool pool(128);
  for (int round = 0; round < 2; ++round) {
    std::vector<void*> blocks;
    for (int i = 0; i < 3000; ++i) {
      void* block = pool.take(i % 100 == 7 ? 200 : 128);
      EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 64, 0U);
      std::memset(block, i % 251, 128);
      blocks.push_back(block);
      if (i % 3 != 0) continue;
      pool.give(blocks[static_cast<std::size_t>(i / 2)], i / 2 % 100 == 7 ? 200 : 128);
      blocks[static_cast<std::size_t>(i / 2)] = nullptr;
    }
    for (std::size_t i = 0; i < blocks.size(); ++i) {
      if (blocks[i] == nullptr) continue;
      EXPECT_EQ(*static_cast<unsigned char*>(blocks[i]), i % 251);
      EXPECT_EQ(static_cast<unsigned char*>(blocks[i])[127], i % 251);
    }
    for (std::size_t i = 0; i < blocks.size(); ++i) pool.give(blocks[i], i % 100 == 7 ? 200 : 128);
  }
}

}  // namespace
