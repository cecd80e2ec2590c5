#include "foundation/YString.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <random>
#include <string>

namespace {

std::string Text(const YString& s) {
  return std::string(s.buffer, s.length);
}

TEST(YString, HasRoomAsAskedFor) {
  const YString none;
  YString zero(0);
  YString some(3);
  for (const YString* s : {&none, static_cast<const YString*>(&zero)}) {
    EXPECT_STREQ(s->buffer, "");
    EXPECT_TRUE(s->length == 0 && s->capacity == 0);
  }
  EXPECT_TRUE(*some.buffer == '\0' && some.length == 0);
  for (int i = 0; i < 3; ++i) some[i] = 'x';
  EXPECT_STREQ(some.buffer, "xxx");
  EXPECT_EQ(some.length, 0U);
  EXPECT_EQ(YString("abc").capacity, 4U);
  EXPECT_EQ(YString("abc", 2).capacity, 3U);
  const YString null(static_cast<const char*>(nullptr));
  EXPECT_TRUE(null.length == 0 && *null.buffer == '\0');
  zero.expand(4);
  EXPECT_TRUE(zero.capacity == 4 && zero == "");
  zero.expand(2);
  EXPECT_EQ(zero.capacity, 4U);
  zero.expandDelta(32);
  EXPECT_EQ(zero.capacity, 36U);
}

TEST(YString, SpareCharacterTakesWhatLiesOutside) {
  YString s("abc");
  for (const int i : {3, 4, -1, INT_MIN}) {
    s[i] = static_cast<char>('0' + i % 10);
    EXPECT_EQ(s[INT_MAX], static_cast<char>('0' + i % 10));
    EXPECT_EQ(static_cast<const YString&>(s)[i], YString::_out_range_rescue);
  }
  EXPECT_STREQ(s.buffer, "abc");
  s[2] = 'd';
  EXPECT_STREQ(s.buffer, "abd");
  YString zero(0);
  EXPECT_EQ(&zero[0], &YString::_out_range_rescue);
}

TEST(YString, AppendsNumbersAndBytes) {
  YString s;
  s << 'a' << "b" << static_cast<const char*>(nullptr) << INT_MIN << ' ' << UINT_MAX << ' '
    << LONG_MIN << ' ' << ULONG_MAX << ' ' << 0.5;
  EXPECT_STREQ(s.buffer, "ab-2147483648 4294967295 -9223372036854775808 18446744073709551615 0.5");
  s << '\0' << "tail";
  EXPECT_EQ(s.length, std::strlen(s.buffer) + 5);
}

TEST(YString, ComparesAndFoldsTexts) {
  YString a(
      "Name\x83"
      "A");
  EXPECT_EQ(a == YString("Name\x83"
                         "A"),
            1U);
  EXPECT_EQ(a != YString("name\x83"
                         "A"),
            1U);
  a.toLower();
  EXPECT_EQ(a == "name\x83"
                 "A",
            1U);
  EXPECT_EQ(a != "name\x83"
                 "A",
            0U);
  a.buffer[4] = '\0';  // a text that was cut is compared as its readers see it
  EXPECT_EQ(a == YString("name"), 1U);
  EXPECT_EQ(YString() == static_cast<const char*>(nullptr), 1U);
  YString().toLower();
}

TEST(YString, AppendingIsLinear) {
  YString s;
  int moves = 0;
  for (int i = 0; i < 1000000; ++i) {
    const std::uint32_t before = s.capacity;
    if (i % 2 == 0) s << 'x';
    if (i % 2 != 0) s.concat("yz");
    if (s.capacity != before) ++moves;
  }
  EXPECT_EQ(s.length, 1500000U);
  EXPECT_LE(moves, 25);
}

// Random operations on a string and on the standard one, sources inside the string included.
TEST(YString, DoesAsTheModelDoes) {
  std::mt19937 random(11);
  const auto below = [&](std::size_t n) { return static_cast<int>(random() % n); };
  YString s;
  std::string model;
  for (int round = 0; round < 50000; ++round) {
    const int from = below(model.size() + 1);
    const int n = below(model.size() - from + 1);
    const char byte = static_cast<char>(below(4));
    const std::string text(below(9), static_cast<char>('a' + below(26)));
    switch (below(model.size() > 400 ? 7 : 14)) {
      case 0:
        s.assign(text.c_str()), model = text;
        break;
      case 1:
        s.assign(s.buffer + from, n), model = model.substr(from, n);
        break;
      case 2:
        s = YString(text.c_str()), model = text;
        break;
      case 3:
        s.truncate(from), model.resize(from);
        break;
      case 4:
        s.assign(nullptr), model.clear();
        break;
      case 5:
        s = YString(s.buffer, n), model.resize(n);
        break;
      case 6:
        s.assign(s);
        break;
      case 7:
        s.concat(s.buffer + from, n), model += model.substr(from, n);
        break;
      case 8:
        s << s, model += model;
        break;
      case 9:
        s << byte, model += byte;
        break;
      case 10:
        s.concat(text.c_str()), model += text;
        break;
      case 11:
        s << round, model += std::to_string(round);
        break;
      case 12:
        s.expand(n), s.expandDelta(byte);
        break;
      default:
        s = YString(s) << text.c_str(), model += text;
        break;
    }
    ASSERT_EQ(Text(s), model) << round;
    ASSERT_EQ(s.buffer[s.length], '\0');
    ASSERT_TRUE(s.capacity == 0 ? model.empty() : s.capacity > s.length);
    const std::size_t found = model.find(byte, from);
    ASSERT_EQ(s.index(byte, from), found == std::string::npos ? -1 : static_cast<int>(found));
  }
}

}  // namespace
