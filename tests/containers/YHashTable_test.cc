#include "platform/containers/YHashTable.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace {

// Many records share a hash.
struct Record {
  unsigned hashed = 0;
  int number = 0;
  bool isEmpty() const { return number == 0; }
  std::uint64_t hash() const { return hashed; }
};

TEST(YHashTable, DoesAsAMultimapDoes) {
  YHashTable<Record> table;
  std::multimap<unsigned, int> model;
  std::mt19937 random(8);
  for (int step = 1; step < 100000; ++step) {
    const unsigned hash = random() % 300;
    const auto oldest = model.lower_bound(hash);
    const bool isThere = oldest != model.upper_bound(hash);
    // It grows for a while, then shrinks, and is cleared now and then.
    const bool isGrowing = step / 3000 % 2 == 0;
    Record* found = table.find(hash, [hash](const Record& r) { return r.hashed == hash; });
    ASSERT_EQ(found == nullptr ? 0 : found->number, isThere ? oldest->second : 0) << step;
    if (random() % 3 < (isGrowing ? 2U : 1U)) {
      EXPECT_EQ(table.add({hash, step})->number, step);
      model.emplace(hash, step);
    } else if (isThere) {
      table.remove(found);
      model.erase(oldest);
    } else if (random() % 500 == 0) {
      table.clear();
      model.clear();
    }
    ASSERT_EQ(table.count(), model.size());
    if (step % 1000 != 0) continue;
    for (const auto& [key, number] : model) {
      const auto isIt = [wanted = number](const Record& r) { return r.number == wanted; };
      EXPECT_NE(table.find(key, isIt), nullptr);
    }
    std::size_t rows = 0;
    table.forEach([&rows](const Record&) { ++rows; });
    EXPECT_EQ(rows, model.size());
  }
}

TEST(YHashTable, HasRoomForWhatIsReserved) {
  YHashTable<Record> table;
  EXPECT_EQ(table.capacity(), 0U);
  table.reserve(1000);
  const std::size_t room = table.capacity();
  for (int i = 1; i <= 1000; ++i) table.add({static_cast<unsigned>(i), i});
  EXPECT_EQ(table.capacity(), room);
  table.clear();
  EXPECT_EQ(table.capacity(), 0U) << "a large table gives its memory back";
  for (int i = 1; i < 20; ++i) table.add({static_cast<unsigned>(i), i});
  const std::size_t small = table.capacity();
  table.clear();
  EXPECT_EQ(table.capacity(), small);
}

}  // namespace
