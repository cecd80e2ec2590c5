#include "terminal/YcluiCells.h"

#include <gtest/gtest.h>

#include "foundation/YCharacters.h"
#include "terminal/YcluiWrap.h"

namespace {

std::string Shown(const YcluiCells& cells) {
  std::string shown;
  for (const YcluiCell& cell : cells) {
    if (!shown.empty()) shown += ' ';
    YCharacters::AppendUtf8(cell.text, shown);
    shown += "/" + std::to_string(cell.width);
  }
  return shown;
}

TEST(Cells, AreUnitsWithTheirWidths) {
  const struct {
    std::u32string characters;
    const char* cells;
  } rows[] = {
      {U"", ""},
      {U"a~", "a/1 ~/1"},
      {U"表ｱ", "表/2 ｱ/1"},
      {U"\t\n\x7F", "^I/2 ^J/2 ^?/2"},
      {U"e\u0301\u0302x", "e\u0301\u0302/1 x/1"},
      {U"表\u0301", "表\u0301/2"},
      {U"\u0301a", " \u0301/1 a/1"},                   // a mark with nothing to be on
      {U"\n\u0301", "^J/2  \u0301/1"},                 // or with nothing that is shown
      {U"\U0010FE81\U0010FEFF", "\uFFFD/1 \uFFFD/1"},  // lone bytes
      {U"\U0001F469\u200D\U0001F4BBx", "\U0001F469\u200D\U0001F4BB/4 x/1"},
      {U"\U0001F44B\U0001F3FD\U0001F44B", "\U0001F44B\U0001F3FD/4 \U0001F44B/2"},
      {U"\U0001F1E9\U0001F1EA\U0001F1F0", "\U0001F1E9\U0001F1EA/2 \U0001F1F0/1"},
      {U"\u0915\u094D\u200D\u0937", "\u0915\u094D\u200D/1 \u0937/1"},  // joined letters
      {U"\u1112\u1161\u11ABx", "\u1112\u1161\u11AB/2 x/1"},            // a syllable of Hangul
      {U"\u0085\u2028", "\uFFFD/1 \uFFFD/1"},
  };
  for (const auto& row : rows) EXPECT_EQ(Shown(YcluiCells(row.characters)), row.cells);
}

TEST(Cells, HaveOffsetsAndColumns) {
  const std::string text = "a" + YCharacters::BytesFromUtf8("表") + "\x01z";
  const std::size_t wide = text.size() - 3;  // the bytes of the second unit
  const YcluiCells cells{std::string_view(text)};
  ASSERT_EQ(cells.size(), 4U);
  EXPECT_EQ(cells.bytes(), text.size());
  EXPECT_EQ(cells.width(), 6U);
  EXPECT_EQ(cells.columnOf(1), 1U);
  EXPECT_EQ(cells.columnOf(2), 1U);  // inside it
  EXPECT_EQ(cells.columnOf(1 + wide), 3U);
  EXPECT_EQ(cells.columnOf(2 + wide), 5U);
  EXPECT_EQ(cells.columnOf(99), 6U);
  EXPECT_FALSE(cells.isBetween(2));
  EXPECT_TRUE(cells.isBetween(text.size()));
  EXPECT_FALSE(cells.isBetween(text.size() + 1));
}

TEST(Cells, KnowWordsOfAnyScript) {
  for (const char32_t c : U"a7_é表かｱ１") EXPECT_EQ(YcluiCells::IsOfWord(c), c != 0) << int(c);
  for (const char32_t c : U" :-.。　\n\U0010FE81") EXPECT_FALSE(YcluiCells::IsOfWord(c)) << int(c);
  for (const char32_t c : U" 　\t\n") EXPECT_EQ(YcluiCells::IsSpace(c), c != 0) << int(c);
}

// What is printed is broken where it may be read on, and none of it is lost.
TEST(Wrap, BreaksWhereOneMayReadOn) {
  const struct {
    std::u32string line;
    const char* rows;
  } rows[] = {
      {U"", "|"},
      {U"abcd efghi", "abcd efghi|"},
      {U"abcd efghij k", "abcd|efghij k|"},
      {U"  abcd   efghij", "  abcd|efghij|"},
      {U"abcdefghijklm nop", "abcdefghijklm|nop|"},
      {U"abcdefghij     ", "abcdefghij     |"},
      {U"abc\tde f", "abc^Ide|f|"},
      {U"表表表表表表", "表表表表表|表|"},
      {U"a表表表表。", "a表表表|表。|"},
      {U"表表表表「表」", "表表表表|「表」|"},
      {U"abcdefg ｱｲｳ", "abcdefg|ｱｲｳ|"},
  };
  for (const auto& row : rows) {
    const YcluiCells cells{std::u32string_view(row.line)};
    std::string shown;
    for (const YcluiWrappedRow& part : YcluiWrap::Rows(cells, 10)) {
      for (std::size_t i = part.begin; i < part.end; ++i) {
        YCharacters::AppendUtf8(cells[i].text, shown);
      }
      shown += '|';
    }
    EXPECT_EQ(shown, row.rows);
  }
}

}  // namespace
