#include "foundation/YFileName.h"

#include <gtest/gtest.h>

#include <clocale>

namespace {

// File names are UTF-8 in a UTF-8 locale, and also in one that has ASCII only.
class YFileNameTest : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override { ASSERT_NE(std::setlocale(LC_CTYPE, GetParam()), nullptr); }
  void TearDown() override { std::setlocale(LC_CTYPE, "C"); }
};
INSTANTIATE_TEST_SUITE_P(Locales, YFileNameTest, testing::Values("C.utf8", "C"));

TEST_P(YFileNameTest, OfTexts) {
  std::string many;
  std::string manyUtf8;
  for (int i = 0; i < 3000; ++i) {
    many += i % 1500 == 0 ? "\x80" : "\x95\x5C\x61";
    manyUtf8 += i % 1500 == 0 ? "\x80" : "\u8868a";
  }
  const std::string rows[][2] = {
      {"", ""},
      {"a\\b~", "a\\b~"},
      {"\x95\x5C/\xB1", "\u8868/\uFF71"},
      {"\x81", "\x81"},
      {"\x81/\x95\x5C", "\x81/\u8868"},
      {many, manyUtf8},
  };
  for (const auto& [text, name] : rows) {
    EXPECT_EQ(YFileName::FromText(text), name);
    std::string back;
    EXPECT_TRUE(YFileName::ToText(name, back));
    EXPECT_EQ(back, text);
  }
  std::string text = "kept";
  EXPECT_FALSE(YFileName::ToText("\u8868/\u00E9", text));
  EXPECT_EQ(text, "kept");
}

TEST_P(YFileNameTest, InUtf8) {
  const char* const rows[][2] = {
      {"\u8868/\u00E9\uF795", "\u8868/\u00E9\uF795"},
      {"\xE8\xA1/\x95", "\U0010FEE8\U0010FEA1/\U0010FE95"},
  };
  for (const auto& [name, utf8] : rows) {
    EXPECT_EQ(YFileName::ToUtf8(name), utf8);
    EXPECT_EQ(YFileName::FromUtf8(utf8), name);
  }
}

}  // namespace
