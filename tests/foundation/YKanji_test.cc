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

TEST(YKanji, LeadAndTrailBytesEndWhereTheyShould) {
  for (const int byte : {0x81, 0x9F, 0xE0, 0xFC}) EXPECT_TRUE(YIsKanjiLead(byte)) << byte;
  for (const int byte : {0x80, 0xA0, 0xDF, 0xFD}) EXPECT_FALSE(YIsKanjiLead(byte)) << byte;
  for (const int byte : {0x40, 0x7E, 0x80, 0xFC}) EXPECT_TRUE(YIsKanjiTrail(byte)) << byte;
  for (const int byte : {0x3F, 0x7F, 0xFD}) EXPECT_FALSE(YIsKanjiTrail(byte)) << byte;
}

// Every text of up to six bytes out of one of each sort, asked for in one walk and byte by byte.
TEST(YKanji, WalkAndSingleQuestionsAgree) {
  const std::string sorts("\x81\xFC\x5C\x80 \xFD", 6);
  for (int length = 0, count = 1; length <= 6; ++length, count *= 6) {
    for (int number = 0; number < count; ++number) {
      std::string text;
      for (int i = 0, rest = number; i < length; ++i, rest /= 6) text += sorts[rest % 6];
      std::string walked;
      std::string asked;
      YKanjiWalk walk;
      for (int i = 0; i < length; ++i) {
        walked += static_cast<char>('0' + walk.next(text.c_str() + i));
        asked += static_cast<char>('0' + YCheckKanji(text.c_str(), i));
      }
      ASSERT_EQ(walked, ClassesOf(text)) << number << " of length " << length;
      ASSERT_EQ(asked, walked) << number << " of length " << length;
      ASSERT_EQ(YCheckKanji(text.c_str(), length), 0);
    }
  }
}

TEST(YKanji, StartsAndFolding) {
  EXPECT_TRUE(IsKanjiStart("\x83\x5C") && IsKanjiStart("\x83"));
  EXPECT_FALSE(IsKanjiStart("\x83 ") || IsKanjiStart("A") || IsKanjiStart(""));
  char text[] =
      "AZ@[\x83"
      "A\x83\x5C"
      "B\x83 C\xB1"
      "D\xFC\xFC"
      "E\x81";
  YFoldCase(text);
  EXPECT_STREQ(text,
               "az@[\x83"
               "A\x83\x5C"
               "b\x83 c\xB1"
               "d\xFC\xFC"
               "e\x81");
}

}  // namespace
