#include "platform/general/YSet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

#include "platform/general/YDictionary.h"
#include "platform/general/YLinkList.h"
#include "platform/general/YtString.h"

namespace {

// Records of a number, many of which share a hash value.
class Record : public YAssoc {
 public:
  Record(int n, const YSet* home) : YAssoc(nullptr, nullptr), number(n), home_(home) {}
  ~Record() override {
    // Whoever looks for it while it goes must not find it, nor another that is gone.
    if (home_ != nullptr && (home_->count() != 0 || home_->contains(this) != 0)) number = -1;
    Gone.push_back(number);
  }

  unsigned long hashKey() override { return static_cast<unsigned long>(number % 5); }
  YWord equals(const YAssoc* other) override {
    return number == static_cast<const Record*>(other)->number ? 1 : 0;
  }
  YWord equalsKey(const void* k) override { return *static_cast<const int*>(k) <= number ? 1 : 0; }

  int number;
  static std::vector<int> Gone;

 private:
  const YSet* home_;
};

std::vector<int> Record::Gone;

TEST(YSet, DoesAsAPlainVectorDoes) {
  YDictionary set;
  std::vector<std::unique_ptr<Record>> all;
  for (int i = 0; i < 400; ++i) all.push_back(std::make_unique<Record>(i % 300, nullptr));
  std::vector<Record*> model;
  std::mt19937 random(3);
  for (int round = 0; round < 40000; ++round) {
    Record* record = all[random() % all.size()].get();
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

// A record that accepts every number up to its own; all share one hash value.
class Limit : public Record {
 public:
  explicit Limit(int n) : Record(n, nullptr) {}
  unsigned long hashKey() override { return 1; }
  YWord equals(const YAssoc* other) override {
    return static_cast<const Record*>(other)->number <= number ? 1 : 0;
  }
};

TEST(YSet, TheFirstThatAcceptsWinsAtAnySize) {
  YDictionary set;
  for (int i = 1; i <= 100; ++i) ASSERT_NE(set.attach(new Limit(i)), nullptr);
  Limit probe(0);
  Limit* late = new Limit(50);
  EXPECT_EQ(set.attach(late), nullptr);  // one that is there accepts it
  delete late;
  for (int i = 1; i <= 50; ++i) {
    Record* first = static_cast<Record*>(set.search(&probe));
    ASSERT_NE(first, nullptr);
    ASSERT_EQ(first->number, i);
    delete static_cast<Record*>(set.detach(first));
  }
  const int key = 70;
  EXPECT_EQ(static_cast<Record*>(set.searchByKey(&key))->number, 70);
  const int none = 101;
  EXPECT_EQ(set.searchByKey(&none), nullptr);
  set.deleteAll();
}

TEST(YSet, DeletesAllOnceAndInOrder) {
  YDictionary set;
  Record::Gone.clear();
  std::vector<int> numbers;
  for (int i = 0; i < 40; ++i) {
    set.attach(new Record(i, &set));
    numbers.push_back(i);
  }
  set.deleteAll();
  EXPECT_EQ(Record::Gone, numbers);
  EXPECT_EQ(YAssocSetItr(set).item, nullptr);
  Record again(1, nullptr);
  EXPECT_EQ(set.attach(&again), &again);
}

TEST(YSet, HoldsPlainPointersByIdentity) {
  int items[100];
  YSet set;
  EXPECT_EQ(set.attach(nullptr), nullptr);
  EXPECT_EQ(set.detach(items), nullptr);
  for (int& i : items) EXPECT_EQ(set.attach(&i), &i);
  EXPECT_EQ(set.attach(items), nullptr);
  EXPECT_EQ(set.detach(items), items);
  const std::unique_ptr<YSet> copy(set.copy());
  EXPECT_EQ(copy->count(), 99U);
  EXPECT_TRUE(copy->contains(items + 1) != 0 && copy->contains(items) == 0);
}

std::vector<char> ItemsOf(const YLinkList& list) {
  std::vector<char> items;
  for (YLinkListIterator i(list); i.ring != nullptr; ++i) {
    items.push_back(*static_cast<char*>(i.current()));
  }
  return items;
}

TEST(YLinkList, KeepsTheOrderThroughEverything) {
  char a = 'a';
  char b = 'b';
  char c = 'c';
  char other = 'x';
  YLinkList list;
  EXPECT_EQ(list.first(), nullptr);
  for (char* item : {&a, &b, &a, &c}) EXPECT_EQ(list.append(item), item);
  EXPECT_EQ(list.detach(&other), nullptr);
  EXPECT_EQ(list.detach(&a), &a);
  EXPECT_EQ(ItemsOf(list), (std::vector<char>{'b', 'a', 'c'}));
  YLinkList target;
  target.append(&a);
  while (list.first() != nullptr) target.attach(list.detach(list.first()));
  EXPECT_EQ(ItemsOf(target), (std::vector<char>{'a', 'b', 'a', 'c'}));
  EXPECT_EQ(list.last(), nullptr);
  EXPECT_EQ(target.detach(&c), &c);
  EXPECT_EQ(target.last()->item(), &a);
  list.append(&c);
  EXPECT_EQ(ItemsOf(list), (std::vector<char>{'c'}));
}

TEST(YtString, HashesAndFolds) {
  EXPECT_EQ(YHashText(""), 0xCBF29CE484222325U);
  EXPECT_EQ(YHashText("foobar"), 0x85944171F73967E8U);
  EXPECT_EQ(YtString("a").hash(), 0xAF63DC4C8601EC8CU);
  char text[] = "K\x83KEY";
  YString same(text);
  Ycvl(text);
  same.toLower();
  EXPECT_STREQ(text, same.buffer);
}

}  // namespace
