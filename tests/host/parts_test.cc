// What the table of cases cannot reach, or would need a row for each little thing.

#include <gtest/gtest.h>

#include <random>

#include "host/CluiEncoding.h"
#include "host/CluiLine.h"
#include "host/CluiLiteral.h"
#include "host/CluiNearest.h"
#include "host/CluiReport.h"

namespace {

TEST(Encoding, ShowsWhatIsNoCharacter) {
  CluiEncoding encoding;
  std::string error;
  ASSERT_TRUE(encoding.open("UTF-8", error));
  EXPECT_EQ(encoding.fromUser("a\xFF\xE8\xA1\xA8\xE8"), L"a\uFFFD\u8868\uFFFD");
  ASSERT_TRUE(encoding.open("CP932", error));
  EXPECT_EQ(encoding.toUser(L"a\u2603\u8868"), "a?\x95\x5C");
}

TEST(Nearest, CountsSlips) {
  const struct {
    const wchar_t *a, *b;
    int distance;
  } rows[] = {
      {L"circle", L"CIRCLE", 0}, {L"cicle", L"circle", 1},   {L"cricle", L"circle", 1},
      {L"xircle", L"circle", 1}, {L"circles", L"circle", 1}, {L"", L"ab", 2},
      {L"abcd", L"badc", 2},     {L"abc", L"xyz", 3},        {L"abcdef", L"uvwxyz", 4},
      {L"ab", L"abcdefgh", 4},
  };
  for (const auto& row : rows) EXPECT_EQ(CluiDistance(row.a, row.b, 3), row.distance) << row.a;
}

TEST(Nearest, NamesOnlyWhatMayBeMeant) {
  const std::vector<std::wstring> words = {L"lime",       L"a",    L"line:", L"lane:", L"radius:",
                                           L"rectangle:", L"rage", L"lanez", L"lens:"};
  const struct {
    const wchar_t *typed, *nearest;
  } rows[] = {
      {L"line", L"line:"},
      {L"lnie", L"line:"},
      {L"lien:", L"line:"},
      {L"lxne:", L"line:"},
      {L"b", L""},
      {L"lxyz", L""},
      {L"rdus:", L"radius:"},
      {L"rextnagl:", L"rectangle:"},
      {L"rafe", L"rage"},
      {L"lixe:", L"line:"},  // ends alike
      {L"lixe", L"lime"},
      {L"lanes:", L"lane:"},  // which can come here
      {L"lens", L"lens:"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(CluiNearest(row.typed, words, 6), row.nearest) << row.typed;
}

// Whatever is near enough may be meant; what is told at a glance is not near.
TEST(Nearest, MissesNothingAtAGlance) {
  std::mt19937 random(3);
  const auto word = [&] {
    std::string text(1 + random() % 10, ' ');
    for (char& c : text) c = "abABcd:\x95"[random() % (random() % 9 == 0 ? 8 : 6)];
    return text;
  };
  int spared = 0;
  CluiEncoding encoding;
  std::string error;
  ASSERT_TRUE(encoding.open("UTF-8", error));
  for (int i = 0; i < 5000; ++i) {
    const std::string typed = word();
    const std::string other = word();
    if (CluiNearGlance(typed).mayBeMeant(other)) continue;
    ++spared;
    EXPECT_EQ(CluiNearest(encoding.fromSystem(typed), {encoding.fromSystem(other)}, 1), L"");
  }
  EXPECT_GT(spared, 1000);
}

TEST(Excerpt, PutsTheCaretByWidth) {
  const struct {
    std::wstring line;
    std::size_t character;
    std::wstring text, caret;
  } rows[] = {
      {L"abc\r\n", 1, L"abc", L" ^"},
      {L"abc\n", 9, L"abc", L"   ^"},
      {L"a\u8868\tb\uFF71c", 5, L"a\u8868\tb\uFF71c", L"   \t  ^"},
      {L"\x1B[2J", 2, L"?[2J", L"  ^"},
      {std::wstring(100, L'a') + L"b" + std::wstring(100, L'c'), 100,
       L"..." + std::wstring(60, L'a') + L"b" + std::wstring(59, L'c') + L"...",
       std::wstring(63, L' ') + L"^"},
  };
  for (const auto& row : rows) {
    const CluiExcerpt excerpt = CluiExcerptOf(row.line, row.character);
    EXPECT_EQ(excerpt.text, row.text);
    EXPECT_EQ(excerpt.caret, row.caret);
  }
}

TEST(Line, FindsCharactersOfThisLineAndTheOneBefore) {
  CluiEncoding encoding;
  CluiLine line(encoding);
  line.restart();
  std::string first =
      "\x95\x5C"
      "ab 2\n";
  std::string second =
      "c\x95\x5C"
      "d\n";
  line.take(first, 1);
  line.take(second, 4);
  const struct {
    int offset;
    std::size_t line, character;
  } rows[] = {
      {0, 4, 0}, {3, 4, 2}, {1, 4, 1}, {99, 4, 1}, {-2, 1, 4}, {-100, 1, 0},
  };
  for (const auto& row : rows) {
    const CluiSpot spot = line.spotOf(row.offset);
    EXPECT_EQ(spot.line, row.line) << row.offset;
    EXPECT_EQ(spot.character, row.character) << row.offset;
  }
}

TEST(Literal, FindsAnArgument) {
  const struct {
    const char* text;
    int index;
    std::size_t offset;
    std::size_t cut = std::string::npos;
  } rows[] = {
      {" 1 # c\n ,x", 2, 8, 7},
      {" 1 ,\n x", 2, 6, 5},
      {" 1, x", 1, 1},
      {" 1, x", 2, 4},
      {" \"a,\\\"b\" , x", 2, 11},
      {" ${a}[${b}],x", 2, 12},
      {" 1 # c,\n,x", 2, 9},
      {" \x95\x5C,x", 2, 4},
      {" a\\,b,x", 2, 6},
      {" 1", 2, 2},
      {"", 1, 0},
  };
  for (const auto& row : rows) {
    const auto place = CluiFindArgument(row.text, 0, row.cut, row.index, nullptr);
    EXPECT_EQ(place.offset, row.offset) << row.text;
  }
}

}  // namespace
