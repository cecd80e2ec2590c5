// The word dictionary.

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>

#include "foundation/YEncoding.h"
#include "fuzz/lexer_reference.h"
#include "lex/YcluiLex.h"
#include "lex/YcluiPlainKeyword.h"
#include "lex/YcluiWordTable.h"

namespace {

// The name and the id of a record.
std::string Shown(const YcluiKeyword* record) {
  return record == nullptr ? "-" : record->name() + (" " + std::to_string(record->id()));
}

TEST(Words, AreFoundByTheirAcceptedForms) {
  const struct {
    const char *name, *abbreviation, *found, *notFound;
  } rows[] = {
      {"Delete", "DEL", "del DELE delet delete", "de d deletes delx"},
      {"delete", "", "d de Delete", "x deletes"},
      {"delete", nullptr, "delete DELETE", "d delet"},
      {"delete", "delete", "delete", "delet"},
      {"delete", "let", "", "delete let d"},
      {"del", "delete", "", "del delete dele"},
      {"e\u00C9", "e", "E\u00C9", "e\u00E9"},
      {"a\x83\x41", "a", "a A\x83\x41", YEncoding::IsDoubleByte() ? "a\x83\x61" : ""},
  };
  for (const auto& row : rows) {
    YcluiWordTable words(5000);
    EXPECT_EQ(words.addKeyword(row.name, row.abbreviation, 0), 5000U);
    for (const char* given : {row.found, row.notFound}) {
      std::istringstream in(given);
      for (std::string word; in >> word;) {
        EXPECT_EQ(words.findInAnyCase(word) != nullptr, given == row.found) << row.name << word;
      }
    }
  }
}

TEST(Words, IdsDelimitersAndMissingTypes) {
  YcluiLex lex;
  EXPECT_EQ(lex.addKeyword("far", nullptr, 0x7000007), 7U);
  EXPECT_EQ(lex.addAlias("q", ""), 1U);
  EXPECT_EQ(lex.keyword("q")->aliasText(), nullptr);
  EXPECT_STREQ(lex.keyword(8U), "q");
  EXPECT_EQ(lex.delAlias("q"), 1U);
  EXPECT_EQ(lex.wordChanges(), 3U);
  EXPECT_EQ(lex.addKeyword('\0', 0) + lex.delAlias("far"), 0U);
  EXPECT_EQ(lex.addKeyword(';', 0), 5001U);
  EXPECT_EQ(lex.addKeyword(';', 0), 0U);
  // Types that are not given declare no arguments.
  EXPECT_EQ(lex.addKeyword("bare", 3, nullptr, 9000), 9000U);
  EXPECT_EQ(lex.keyword("bare")->argTypes(), nullptr);
  EXPECT_EQ(YcluiToken(*lex.keyword("bare")).type(), YcluiTokenArgKeyword);
}

// Like any set of records: the first one of the same hash value that accepts the name of the probe.
TEST(Words, SearchByProbe) {
  std::mt19937 random(5);
  YcluiWordTable table(5000);
  for (int step = 0; step < 3000; ++step) {
    std::string name(random() % 6, 'a');
    for (char& c : name) c = "aabbc"[random() % 5];
    const std::string shortest = name.substr(0, random() % 4);
    const YcluiPlainKeyword probe(name.c_str(), random() % 3 == 0 ? nullptr : shortest.c_str(), 0);
    const YAssoc* first = nullptr;
    for (YAssocSetItr i(table); i.item != nullptr && first == nullptr; ++i) {
      if (i.item->hashKey() == probe.hashKey() && i.item->equals(&probe) != 0) first = i.item;
    }
    ASSERT_EQ(table.search(&probe), first) << name << ' ' << shortest;
    ASSERT_EQ(table.contains(&probe), first == nullptr ? 0U : 1U);
    if (step % 3 == 0) table.addKeyword(name.c_str(), probe.abbreviation(), 0);
    if (step % 5 == 0) table.delKeyword(name.c_str());
  }
}

// So many words that some have the same key and share an entry of the index.
TEST(Words, ManyWordsWithCollisions) {
  YcluiWordTable table(1);
  const int count = 150000;
  const auto name = [](int i) { return "w" + std::to_string(i * 7919L); };
  for (int i = 0; i < count; ++i) table.addKeyword(name(i).c_str(), nullptr, 0);
  for (int i = 0; i < count; i += 2) EXPECT_EQ(table.delKeyword(name(i).c_str()), 1U) << i;
  for (int i = 0; i < count; ++i) {
    const std::string shown = i % 2 == 0 ? "-" : name(i) + " " + std::to_string(i + 1);
    EXPECT_EQ(Shown(table.find(name(i).c_str())), shown);
  }
}

// Many words with common prefixes, and look-ups between the changes.
TEST(Words, TheSameAsTheReference) {
  std::mt19937 random(11);
  const auto word = [&random](std::size_t longest) {
    std::string text(random() % (longest + 1), 'a');
    for (char& c : text) c = "aabbA\x83"[random() % 6];
    return text;
  };
  for (int table = 0; table < 40; ++table) {
    std::string operations;
    for (int step = 0; step < 400; ++step) {
      const char letter = "KKkkkkkaaddu"[random() % 12];
      const std::string name = word(6);
      operations += letter + name + '~';
      if (letter == 'k')
        operations += (random() % 4 == 0 ? word(7) : name.substr(0, random() % 4)) + '~';
      if (letter == 'a') operations += "x~";
      if (letter == 'k' || letter == 'K') operations += static_cast<char>(random() % 101);
      operations += 't';
      for (int i = 0; i < 6; ++i) operations += word(7) + ' ';
      operations += '~';
    }
    ASSERT_EQ(CompareLexers(operations), "");
  }
}

}  // namespace
