#include "foundation/YArray.h"

#include <gtest/gtest.h>

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

TEST(YArray, GrowsByItsCapacityAndNoMoreThan256) {
  Open<int> indexed;
  Open<int> appended;
  std::vector<int> indexedSteps;
  std::vector<int> appendedSteps;
  for (int i = 0; i < 1100; ++i) {
    indexed[i] = i;
    appended.append(i);
    if (indexedSteps.empty() || indexedSteps.back() != indexed.capacity) {
      indexedSteps.push_back(indexed.capacity);
    }
    if (appendedSteps.empty() || appendedSteps.back() != appended.capacity) {
      appendedSteps.push_back(appended.capacity);
    }
  }
  EXPECT_EQ(indexedSteps,
            (std::vector<int>{1, 2, 4, 8, 16, 32, 64, 128, 256, 512, 768, 1024, 1280}));
  EXPECT_EQ(appendedSteps, (std::vector<int>{2, 4, 8, 16, 32, 64, 128, 256, 512, 768, 1024, 1280}));
  for (int i = 0; i < 1100; ++i) ASSERT_TRUE(indexed.at(i) == i && appended.at(i) == i);
}

TEST(YArray, LivesAsFarAsItWasAsked) {
  YString_Array a;
  EXPECT_EQ(a(), nullptr);
  a[5] = "five";
  EXPECT_EQ(a.size(), 6);
  EXPECT_EQ(a.capacity, 6);
  EXPECT_EQ(a[0].length, 0U);
  a.end() = "six";
  EXPECT_EQ(a.size(), 7);
  a.resize(3);
  EXPECT_EQ(a.size(), 3);
  EXPECT_TRUE(a.data[6] == "six");  // shrinking destroys nothing
  a.resize(0);
  a.removeAll();
  EXPECT_NE(a(), nullptr);  // size 0 keeps its allocation
  YString_Array b;
  b.resize(3);
  EXPECT_EQ(b.size(), 3);
  EXPECT_EQ(b.capacity, 4);
  b.removeAll();
  EXPECT_TRUE(b() == nullptr && b.size() == 0 && b.capacity == 0);
  EXPECT_EQ(YArray<int>(0)(), nullptr);
  EXPECT_EQ(YArray<int>(4).size(), 4);
}

TEST(YArray, InsertsAndRemovesInRangeOnly) {
  Open<int> a;
  EXPECT_EQ(a.insertBefore(1, 9), 0U);
  EXPECT_EQ(a.insertBefore(-1, 9), 0U);
  EXPECT_EQ(a.insertAfter(0, 9), 0U);
  EXPECT_EQ(a.remove(0), 0U);
  EXPECT_EQ(a.capacity, 0);
  EXPECT_EQ(a.insertBefore(0, 3), 1U);
  EXPECT_EQ(a.insertBefore(0, 1), 1U);
  EXPECT_EQ(a.insertAfter(0, 2), 1U);
  EXPECT_EQ(a.append(4), 1U);
  EXPECT_EQ(std::vector<int>(a(), a() + a.size()), (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(a.remove(4), 0U);
  EXPECT_EQ(a.remove(1), 1U);
  EXPECT_EQ(a.remove(2), 1U);
  EXPECT_EQ(std::vector<int>(a(), a() + 4), (std::vector<int>{1, 3, 4, 4}));
  EXPECT_EQ(a.size(), 2);
}

TEST(YArray, SortsAndFinds) {
  YArray<int> a;
  const int two = 2;
  EXPECT_EQ(a.search(&two, CompareInts), -1);
  a.sort(CompareInts);
  for (const int i : {5, 1, 3, 1}) a.append(i);
  a.sort(CompareInts);
  EXPECT_EQ(a.search(&two, CompareInts), -1);
  EXPECT_EQ(a.insertSorted(2, CompareInts, 0), 1U);
  EXPECT_EQ(a.search(&two, CompareInts), 2);
  EXPECT_EQ(a.insertSorted(5, CompareInts, 0), 0U);
  EXPECT_EQ(a.insertSorted(5, CompareInts, 1), 1U);
  EXPECT_EQ(a.insertSorted(0, CompareInts, 0), 1U);
  EXPECT_EQ(std::vector<int>(a(), a() + a.size()), (std::vector<int>{0, 1, 1, 2, 3, 5, 5}));
  const int one = 1;
  EXPECT_EQ(YArrayBinFind(&one, a(), 7, sizeof(int), CompareInts, 1), 3);  // behind its equals
}

TEST(YArray, CopiesLiveElementsIntoItsOwnSlots) {
  YString_Array a;
  a[1] = "b";
  YString_Array b;
  b[7] = "kept";
  b = a;
  EXPECT_EQ(b.size(), 2);
  EXPECT_TRUE(b[1] == "b" && b.data[7] == "kept");
  a[1] = "changed";
  EXPECT_TRUE(b[1] == "b");
  const YString* slots = a.data;
  const YString_Array moved(std::move(a));
  EXPECT_EQ(moved.data, slots);
}

TEST(YStack, KeepsItsSlots) {
  Open<YString> s;
  s.push("a long enough text to be told from others");
  s.push("top");
  const char* room = s.data[0].buffer;
  EXPECT_TRUE(s.top() == "top" && s.bottom() == "a long enough text to be told from others");
  EXPECT_TRUE(s.pop() == "top");
  EXPECT_TRUE(s.pop() == s.data[0]);
  EXPECT_EQ(s.isEmpty(), 1U);
  EXPECT_TRUE(s.pop() == s.data[0] && s.top() == s.data[0]);  // an empty stack answers its slot 0
  EXPECT_EQ(s.count(), 0);
  EXPECT_EQ(s.size(), 2);
  s.push("short");
  EXPECT_EQ(s.data[0].buffer, room);
  EXPECT_TRUE(s.extend() == "top");
  s.topSlot() = "written in place";
  Open<YString> copy(s);
  EXPECT_TRUE(copy.count() == 2 && copy.top() == "written in place");
  s.drop();
  s.drop();
  s.drop();
  EXPECT_EQ(s.count(), 0);
  copy.clear();
  EXPECT_EQ(copy.size(), 2);
  Open<int> sized(3);
  EXPECT_TRUE(sized.count() == 0 && sized.size() == 3);
}

}  // namespace
