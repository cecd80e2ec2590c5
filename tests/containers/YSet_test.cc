#include "platform/containers/YSet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <vector>

#include "platform/containers/YDictionary.h"
#include "platform/containers/YLinkList.h"

namespace {

// Records of a number. A record matches its neighbours too, and many records of other hash values.
class Record : public YAssoc {
 public:
  explicit Record(int n) : YAssoc(nullptr, nullptr), number(n) {}
  unsigned long hashKey() const override { return static_cast<unsigned long>(number / 3); }
  YWord equals(const YAssoc* other) const override {
    return std::abs(number - static_cast<const Record*>(other)->number) % 100 <= 1 ? 1 : 0;
  }
  YWord equalsKey(const void* k) const override {
    return *static_cast<const int*>(k) <= number ? 1 : 0;
  }

  int number;
};

// At any size, the first record that matches is found.
TEST(YSet, TheSameAsAVector) {
  YDictionary set;
  std::vector<Record> all;
  all.reserve(4000);
  for (int i = 0; i < 4000; ++i) all.emplace_back(i % 3000);
  std::vector<Record*> model;
  std::mt19937 random(3);
  for (int round = 0; round < 40000; ++round) {
    Record* record = &all[random() % all.size()];
    const auto here = std::find(model.begin(), model.end(), record);
    const auto equal = std::find_if(model.begin(), model.end(), [&](Record* r) {
      return r->hashKey() == record->hashKey() && r->equals(record) != 0;
    });
    ASSERT_EQ(set.search(record), equal == model.end() ? nullptr : *equal);
    if (random() % 3 == 0) {
      ASSERT_EQ(set.detach(record), here == model.end() ? nullptr : record);
      if (here != model.end()) model.erase(here);
    } else {
      ASSERT_EQ(set.attach(record), equal == model.end() ? record : nullptr);
      if (equal == model.end()) model.push_back(record);
    }
    ASSERT_EQ(set.count(), model.size());
    if (round % 100 != 0) continue;
    YAssocSetItr i(set);
    YAssoc* byKey = nullptr;
    for (Record* r : model) {
      ASSERT_EQ(i.item, r);
      ++i;
      if (byKey == nullptr && r->number >= record->number) byKey = r;
    }
    ASSERT_EQ(i.item, nullptr);
    ASSERT_EQ(set.searchByKey(&record->number), byKey);
  }
  EXPECT_GT(set.count(), 500U);
}

TEST(YChain, AttachAll) {
  YRing rings[] = {YRing(nullptr), YRing(nullptr)};
  YChain one;
  YChain other;
  other.attach(rings);
  one.attachAll(other);
  one.attachAll(one);
  one.attach(rings + 1);
  other.attach(one.detach(rings));
  EXPECT_TRUE(other.first() == rings && other.next(rings) == nullptr && one.first() == rings + 1);
  other.attachAll(one);
  EXPECT_TRUE(other.next(rings) == rings + 1 && other.last() == rings + 1 &&
              one.first() == nullptr);
}

// Marks the items that it deletes, and checks that they are no longer in the set.
class Watching : public YSet {
 public:
  ~Watching() { deleteAll(); }
  void deleteIt(void* item) override {
    *static_cast<int*>(item) += contains(item) == 0 && count() == 0 ? 1 : 100;
  }
};

TEST(YSet, ComparesAddressesByDefault) {
  int items[100] = {};
  {
    Watching set;
    EXPECT_EQ(set.attach(nullptr), nullptr);
    for (int& i : items) EXPECT_EQ(set.attach(&i), &i);
    EXPECT_EQ(set.detach(items), items);
    YSet* copy = set.copy();
    EXPECT_EQ(copy->count(), 99U);
    EXPECT_TRUE(copy->contains(items + 1) != 0 && copy->contains(items) == 0);
    copy->YSet::~YSet();
    operator delete(copy);
    set.deleteAll();
    EXPECT_EQ(set.attach(items), items);
  }
  for (const int i : items) EXPECT_EQ(i, 1);
}

}  // namespace
