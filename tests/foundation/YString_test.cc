#include "foundation/YString.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace {

TEST(YString, ReservesMemory) {
  YString zero(0);
  EXPECT_TRUE(zero == "" && zero.length == 0 && zero.capacity == 0);
  zero.expand(4);
  zero.expand(2);
  EXPECT_TRUE(zero == "" && zero.capacity == 4);
  zero.expandDelta(32);
  EXPECT_EQ(zero.capacity, 36U);
  YString some(3);
  EXPECT_TRUE(some == "");
  for (int i = 0; i < 3; ++i) some[i] = 'x';
  EXPECT_TRUE(some == "xxx" && some.length == 0);
  EXPECT_TRUE(YString(some).length == 3 && some.index('x', 2) == 2 && (zero << some) == "xxx");
  EXPECT_TRUE(YString("abc").capacity == 4 && YString("abc", 2).capacity == 3);
  EXPECT_TRUE(YString(static_cast<const char*>(nullptr)) == "");
}

TEST(YString, OtherIndicesGiveTheSpareCharacter) {
  YString s("abc");
  for (const int i : {3, 4, -1, INT_MIN}) {
    s[i] = static_cast<char>('0' + i % 10);
    EXPECT_EQ(static_cast<const YString&>(s)[INT_MAX], static_cast<char>('0' + i % 10));
  }
  EXPECT_STREQ(s.buffer, "abc");
}

TEST(YString, AppendsNumbersAndBytes) {
  YString s;
  s << 'a' << "b" << static_cast<const char*>(nullptr) << INT_MIN << ' ' << UINT_MAX << ' '
    << LONG_MIN << ' ' << ULONG_MAX << ' ' << 0.5;
  EXPECT_STREQ(s.buffer, "ab-2147483648 4294967295 -9223372036854775808 18446744073709551615 0.5");
}

TEST(YString, ComparesAndFoldsTexts) {
  YString a("Name\x83\x41");
  EXPECT_TRUE(a == YString("Name\x83\x41") && a != YString("name\x83\x41"));
  a.toLower();
  EXPECT_TRUE(a == "name\x83\x41");
  EXPECT_FALSE(a != "name\x83\x41");
  a.buffer[4] = '\0';  // a NUL that the caller writes ends the text
  EXPECT_TRUE(a == YString("name"));
  EXPECT_TRUE(YString() == static_cast<const char*>(nullptr));
}

TEST(YString, AppendingIsLinear) {
  YString s;
  int moves = 0;
  for (int i = 0; i < 500000; ++i) {
    const std::uint32_t before = s.capacity;
    (s << 'x').concat("yz");
    if (s.capacity != before) ++moves;
  }
  EXPECT_EQ(s.length, 1500000U);
  EXPECT_LE(moves, 25);
}

// Random operations on a string and on a standard one, also with sources inside the string.
TEST(YString, TheSameAsAStandardString) {
  std::mt19937 random(11);
  const auto below = [&](std::size_t n) { return static_cast<int>(random() % n); };
  YString s;
  std::string model;
  std::string text;
  int from = 0;
  int n = 0;
  char byte = 0;
  const std::vector<std::function<void()>> operations = {
      [&] { s.assign(text.c_str()), model = text; },
      [&] { s.assign(s.buffer + from, n), model = model.substr(from, n); },
      [&] { s = YString(text.c_str()), model = text; },
      [&] { s.truncate(from), model.resize(from); },
      [&] { s.assign(nullptr), model.clear(); },
      [&] { s = YString(s.buffer, n), model.resize(n); },
      [&] { s.assign(s); },
      [&] { s = YString(YString(std::move(s))); },
      // The operations above do not lengthen the text.
      [&] { s.concat(s.buffer + from, n), model += model.substr(from, n); },
      [&] { s << s, model += model; },
      [&] { s << byte, model += byte; },
      [&] { s << from, model += std::to_string(from); },
      [&] { s.expand(n), s.expandDelta(byte); },
      [&] { s = YString(s) << text.c_str(), model += text; },
  };
  for (int round = 0; round < 50000; ++round) {
    from = below(model.size() + 1);
    n = below(model.size() - from + 1);
    byte = static_cast<char>(below(4));
    text.assign(below(9), static_cast<char>('a' + below(26)));
    operations[below(model.size() > 400 ? 8 : operations.size())]();
    ASSERT_EQ(std::string(s.buffer, s.length), model) << round;
    ASSERT_EQ(s.buffer[s.length], '\0');
    ASSERT_TRUE(s.capacity == 0 ? model.empty() : s.capacity > s.length);
    const std::size_t found = model.find(byte, from);
    ASSERT_EQ(s.index(byte, from), found == std::string::npos ? -1 : static_cast<int>(found));
  }
}

}  // namespace
