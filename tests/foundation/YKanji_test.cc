#include "foundation/YKanji.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// The classes of a text, character by character from its start.
std::string ClassesOf(const std::string& text) {
  std::string classes;
  while (classes.size() < text.size()) {
    const std::size_t i = classes.size();
    const bool lead = YIsKanjiLead(static_cast<unsigned char>(text[i]));
    if (lead && i + 1 == text.size()) return classes + '1';
    const bool pair = lead && YIsKanjiTrail(static_cast<unsigned char>(text[i + 1]));
    classes += pair ? "34" : "0";
  }
  return classes;
}

TEST(YKanji, RangesOfLeadAndTrailBytes) {
  for (const int byte : {0x81, 0x9F, 0xE0, 0xFC}) EXPECT_TRUE(YIsKanjiLead(byte)) << byte;
  for (const int byte : {0x80, 0xA0, 0xDF, 0xFD}) EXPECT_FALSE(YIsKanjiLead(byte)) << byte;
  for (const int byte : {0x40, 0x7E, 0x80, 0xFC}) EXPECT_TRUE(YIsKanjiTrail(byte)) << byte;
  for (const int byte : {0x3F, 0x7F, 0xFD}) EXPECT_FALSE(YIsKanjiTrail(byte)) << byte;
}

// All texts of up to six bytes, with one byte of each class, classified in one walk and one by one.
TEST(YKanji, ClassesOfBytes) {
  const std::string sorts("\x81\xFC\x5C\x80 \xFD");
  for (int length = 0, count = 1; length <= 6; ++length, count *= 6) {
    for (int number = 0; number < count; ++number) {
      std::string text;
      for (int i = 0, rest = number; i < length; ++i, rest /= 6) text += sorts[rest % 6];
      std::string expected = ClassesOf(text) + '0';
      YKanjiWalk walk;
      for (int i = 0; i <= length; ++i) {
        ASSERT_EQ(walk.next(text.c_str() + i), expected[i] - '0') << number << " at " << i;
        ASSERT_EQ(YCheckKanji(text.c_str(), i), expected[i] - '0') << number << " at " << i;
      }
    }
  }
}

TEST(YKanji, StartsAndFolding) {
  EXPECT_TRUE(IsKanjiStart("\x83\x5C") && IsKanjiStart("\x83"));
  EXPECT_FALSE(IsKanjiStart("\x83 ") || IsKanjiStart("A") || IsKanjiStart(""));
  std::string text = "AZ@[\x83\x41\x83\x5C\x42\x83 C\xB1\x44\xFC\xFC\x45\x81";
  YFoldCase(text.data());
  EXPECT_EQ(text, "az@[\x83\x41\x83\x5C\x62\x83 c\xB1\x64\xFC\xFC\x65\x81");
}

}  // namespace
