#include "platform/general/YSet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "platform/general/YDictionary.h"
#include "platform/general/YLinkList.h"
#include "platform/general/YtString.h"

namespace {

// Records of a number, many of which share a hash value.
class Record : public YAssoc {
 public:
  explicit Record(int n) : YAssoc(nullptr, nullptr), number(n) {}
  unsigned long hashKey() override { return static_cast<unsigned long>(number % 5); }
  YWord equals(const YAssoc* other) override { return number == numberOf(other) ? 1 : 0; }
  YWord equalsKey(const void* k) override { return *static_cast<const int*>(k) <= number ? 1 : 0; }

  static int numberOf(const void* record) { return static_cast<const Record*>(record)->number; }

  int number;
};

// A record that accepts every number up to its own.
class Limit : public Record {
 public:
  Limit(int n, unsigned long hash) : Record(n), hash_(hash) {}
  unsigned long hashKey() override { return hash_; }
  YWord equals(const YAssoc* other) override { return numberOf(other) <= number ? 1 : 0; }

 private:
  unsigned long hash_;
};

TEST(YSet, DoesAsAPlainVectorDoes) {
  YDictionary set;
  std::vector<Record> all;
  for (int i = 0; i < 400; ++i) all.emplace_back(i % 300);
  std::vector<Record*> model;
  std::mt19937 random(3);
  for (int round = 0; round < 40000; ++round) {
    Record* record = &all[random() % all.size()];
    const auto here = std::find(model.begin(), model.end(), record);
    const auto equal = std::find_if(model.begin(), model.end(),
                                    [&](Record* r) { return r->number == record->number; });
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
    for (Record* r : model) {
      ASSERT_EQ(i.item, r);
      ++i;
    }
    ASSERT_EQ(i.item, nullptr);
  }
}

TEST(YSet, TheFirstThatAcceptsWinsAtAnySize) {
  YDictionary set;
  for (int i = 0; i < 1000; ++i) ASSERT_NE(set.attach(new Limit(i, 2UL + i)), nullptr);
  for (int i = 1; i <= 100; ++i) ASSERT_NE(set.attach(new Limit(i, 1)), nullptr);
  Limit probe(0, 1);
  EXPECT_EQ(set.attach(&probe), nullptr);  // one that is there accepts it
  for (int i = 1; i <= 50; ++i) {
    Record* first = static_cast<Record*>(set.search(&probe));
    ASSERT_EQ(Record::numberOf(first), i);
    ASSERT_EQ(set.detach(first), first);
    delete first;
  }
  for (unsigned long hash = 1002; hash < 9000; ++hash) {
    const Limit other(0, hash);  // accepted by all, but of a hash value that none of them has
    ASSERT_EQ(set.search(&other), nullptr);
  }
  const int key = 999;
  const int none = 1000;
  EXPECT_EQ(Record::numberOf(set.searchByKey(&key)), 999);
  EXPECT_EQ(set.searchByKey(&none), nullptr);
  set.deleteAll();
}

// Deletes its items by writing into them, and looks for them while they go.
class Watching : public YSet {
 public:
  ~Watching() { deleteAll(); }
  void deleteIt(void* item) override {
    *static_cast<int*>(item) += contains(item) == 0 && count() == 0 ? 1 : 100;
  }
};

TEST(YSet, HoldsPlainPointersByIdentity) {
  int items[100] = {};
  {
    Watching set;
    EXPECT_TRUE(set.attach(nullptr) == nullptr && set.detach(items) == nullptr);
    for (int& i : items) EXPECT_EQ(set.attach(&i), &i);
    EXPECT_EQ(set.attach(items), nullptr);
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

std::string ItemsOf(const YLinkList& list) {
  std::string items;
  for (YLinkListIterator i(list); i.ring != nullptr; ++i) items += *static_cast<char*>(i.current());
  return items;
}

TEST(YLinkList, KeepsTheOrderThroughEverything) {
  char letters[] = "abcx";
  char* a = letters;
  char* c = letters + 2;
  YLinkList list;
  EXPECT_EQ(list.first(), nullptr);
  for (char* item : {a, letters + 1, a, c}) EXPECT_EQ(list.append(item), item);
  EXPECT_EQ(list.detach(letters + 3), nullptr);
  EXPECT_EQ(list.detach(a), a);
  EXPECT_EQ(ItemsOf(list), "bac");
  YLinkList target;
  target.append(a);
  while (list.first() != nullptr) target.attach(list.detach(list.first()));
  EXPECT_EQ(ItemsOf(target), "abac");
  EXPECT_EQ(list.last(), nullptr);
  EXPECT_EQ(target.detach(c), c);
  EXPECT_EQ(target.last()->item(), a);
  list.append(c);
  EXPECT_EQ(ItemsOf(list), "c");
}

TEST(YtString, HashesAndFolds) {
  EXPECT_EQ(YHashText("foobar"), 0x85944171F73967E8U);
  EXPECT_EQ(YtString("a").hash(), 0xAF63DC4C8601EC8CU);
  char text[] = "K\x83KEY";
  Ycvl(text);
  EXPECT_STREQ(text, "k\x83Key");
}

}  // namespace
