#include "foundation/YArray.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <vector>

#include "foundation/YStack.h"
#include "foundation/YString_Array.h"

namespace {

template <class T>
class Open : public YStack<T> {
 public:
  using YStack<T>::YStack;
  using YStack<T>::capacity;
  using YStack<T>::data;
};

int CompareInts(const void* a, const void* b) {
  return *static_cast<const int*>(a) - *static_cast<const int*>(b);
}

std::vector<int> Items(const YArray<int>& a) {
  return std::vector<int>(a(), a() + a.size());
}

TEST(YArray, GrowsByItsCapacityUpTo256) {
  Open<int> assigned;
  Open<int> appended;
  std::set<int> capacities[2];
  for (int i = 0; i < 1100; ++i) {
    assigned[i] = i;
    appended.append(i);
    capacities[0].insert(assigned.capacity);
    capacities[1].insert(appended.capacity);
  }
  for (int i = 0; i < 1100; ++i) EXPECT_TRUE(assigned.at(i) == i && appended.at(i) == i) << i;
  std::set<int> steps = {1, 2, 4, 8, 16, 32, 64, 128, 256, 512, 768, 1024, 1280};
  EXPECT_EQ(capacities[0], steps);
  steps.erase(1);  // an insertion reserves one slot more than it uses
  EXPECT_EQ(capacities[1], steps);
}

TEST(YArray, SizeAndCapacity) {
  YString_Array a;
  a[5] = "five";
  EXPECT_TRUE(a.size() == 6 && a.capacity == 6 && a[0].length == 0);
  a.end() = "six";
  EXPECT_EQ(a.size(), 7);
  a.resize(3);
  EXPECT_TRUE(a.size() == 3 && a.data[6] == "six");  // shrinking destroys nothing
  a.resize(0);
  a.removeAll();
  EXPECT_NE(a(), nullptr);  // size 0 keeps its allocation
  YString_Array b;
  b.resize(3);
  EXPECT_TRUE(b.size() == 3 && b.capacity == 4);
  b.removeAll();
  EXPECT_TRUE(b() == nullptr && b.size() == 0 && b.capacity == 0);
  EXPECT_TRUE(YArray<int>(0)() == nullptr && YArray<int>(4).size() == 4);
}

TEST(YArray, InsertsAndRemovesInRangeOnly) {
  Open<int> a;
  EXPECT_EQ(a.insertBefore(1, 9) + a.insertBefore(-1, 9) + a.insertAfter(0, 9) + a.remove(0), 0U);
  EXPECT_EQ(a.capacity, 0);
  EXPECT_EQ(a.insertBefore(0, 3) + a.insertBefore(0, 1) + a.insertAfter(0, 2) + a.append(4), 4U);
  EXPECT_EQ(Items(a), (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(a.remove(4), 0U);
  EXPECT_EQ(a.remove(1) + a.remove(2), 2U);
  EXPECT_EQ(Items(a), (std::vector<int>{1, 3}));
  EXPECT_EQ(a.data[3], 4);  // the last slot keeps its content
}

// The inserted value may be an element that moves or whose array grows.
TEST(YArray, InsertsItsOwnElements) {
  const auto compare = [](const void* a, const void* b) {
    return std::strcmp(static_cast<const YString*>(a)->buffer,
                       static_cast<const YString*>(b)->buffer);
  };
  Open<YString> s;
  for (int i = 0; i < 300; ++i) s.push(i == 0 ? "first" : s.topSlot());
  EXPECT_TRUE(s.top() == "first");
  YArray<YString> a;
  a.append("a");
  a.append("b");
  for (int i = 0; i < 300; ++i) a.insertBefore(1, a.at(a.size() - 1));
  for (int i = 0; i < 300; ++i) EXPECT_EQ(a.insertSorted(a.at(1), compare, 1), 1U);
  for (int i = 1; i < a.size(); ++i) EXPECT_TRUE(a.at(i) == "b") << i;
  const YArray<YString>& constant = a;
  constant.at(0) = "c";
  EXPECT_TRUE(a.at(0) == "c");
}

TEST(YArray, SortsAndFinds) {
  YArray<int> a;
  const int two = 2;
  EXPECT_EQ(a.search(&two, CompareInts), -1);
  for (const int i : {5, 1, 3, 1}) a.append(i);
  a.sort(CompareInts);
  EXPECT_EQ(a.insertSorted(2, CompareInts, 0), 1U);
  EXPECT_EQ(a.search(&two, CompareInts), 2);
  EXPECT_EQ(a.insertSorted(5, CompareInts, 0), 0U);
  EXPECT_EQ(a.insertSorted(5, CompareInts, 1) + a.insertSorted(0, CompareInts, 0), 2U);
  EXPECT_EQ(Items(a), (std::vector<int>{0, 1, 1, 2, 3, 5, 5}));
  EXPECT_EQ(YArrayBinFind(&a.at(1), a(), 7, sizeof(int), CompareInts, 1), 3);
}

TEST(YStack, KeepsItsSlots) {
  Open<YString> s;
  s.push("a long text");
  s.push("top");
  const char* buffer = s.data[0].buffer;
  EXPECT_TRUE(s.top() == "top" && s.bottom() == "a long text");
  EXPECT_TRUE(s.pop() == "top" && s.pop() == "a long text");
  EXPECT_TRUE(s.pop() == "a long text" && s.top() == "a long text");  // of an empty stack: slot 0
  EXPECT_TRUE(s.isEmpty() == 1 && s.count() == 0 && s.size() == 2);
  s.push("short");
  EXPECT_EQ(s.data[0].buffer, buffer);
  EXPECT_TRUE(s.extend() == "top");
  s.topSlot() = "in place";
  const Open<YString> copy(s);
  EXPECT_TRUE(copy.count() == 2 && copy.top() == "in place");
  for (int i = 0; i < 3; ++i) s.drop();
  EXPECT_TRUE(s.count() == 0 && s.size() == 2);
}

}  // namespace
