#include "platform/containers/YHashTable.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace {

// Many entries have the same hash.
struct Record {
  unsigned hashed = 0;
  int number = 0;
  bool isEmpty() const { return number == 0; }
  std::uint64_t hash() const { return hashed; }
};

TEST(YHashTable, TheSameAsAMultimap) {
  YHashTable<Record> table;
  std::multimap<unsigned, int> model;
  std::mt19937 random(8);
  for (int step = 1; step < 100000; ++step) {
    const unsigned hash = random() % 300;
    const auto oldest = model.lower_bound(hash);
    const bool isThere = oldest != model.upper_bound(hash);
    // The table grows for a while, then shrinks, and is cleared from time to time.
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

}  // namespace
