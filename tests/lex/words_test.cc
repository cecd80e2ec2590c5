// The word dictionary.

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <utility>

#include "foundation/YErr.h"
#include "lex/YcluiAlias.h"
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
      {"a\x83\x41", "a", "a A\x83\x41", "a\x83\x61"},
  };
  for (const auto& row : rows) {
    YcluiWordTable words(5000);
    EXPECT_EQ(words.addKeyword(row.name, row.abbreviation, 0), 5000U);
    for (const char* given : {row.found, row.notFound}) {
      std::istringstream in(given);
      for (std::string word; in >> word;) {
        EXPECT_EQ(words.findInAnyCase(word).record != nullptr, given == row.found)
            << row.name << word;
      }
    }
  }
}

TEST(Words, OfOneByteAndWithoutTypes) {
  YcluiLex lex;
  EXPECT_EQ(lex.addKeyword("far", nullptr, 0x7000007), 7U);
  EXPECT_EQ(lex.addAlias("q", ""), 1U);
  EXPECT_EQ(lex.keyword("q")->aliasText(), nullptr);
  EXPECT_STREQ(lex.keyword(8U), "q");
  EXPECT_EQ(lex.addKeyword('\0', 0) + lex.delAlias("far"), 0U);
  EXPECT_EQ(lex.addKeyword(';', 0), 5001U);
  EXPECT_EQ(lex.addKeyword(';', 0), 0U);
  // Types that are not given declare no arguments.
  EXPECT_EQ(lex.addKeyword("bare", 3, nullptr, 9000), 9000U);
  EXPECT_EQ(lex.keyword("bare")->argTypes(), nullptr);
  EXPECT_EQ(YcluiToken(*lex.keyword("bare")).type(), YcluiTokenArgKeyword);
}

// What an operation answers, and the code that it pushes.
using Told = std::pair<std::uint32_t, unsigned int>;

// The dictionary as it is told: a set that is probed by hash, then a walk over all its records.
class SlowTable : public YDictionary {
 public:
  ~SlowTable() { deleteAll(); }

  YcluiKeyword* find(const char* key) const {
    YcluiKeyword probe(key, 0, YcluiTokenKeyword);
    void* found = search(static_cast<YAssoc*>(&probe));
    if (found == nullptr) found = searchByKey(key);
    return static_cast<YcluiKeyword*>(static_cast<YAssoc*>(found));
  }
  const char* keyword(std::uint32_t id) const {
    YAssocSetItr i(*this);
    while (i.item != nullptr && static_cast<YcluiKeyword*>(i.item)->id() != id) ++i;
    return i.item == nullptr ? nullptr : static_cast<YcluiKeyword*>(i.item)->name();
  }
  Told add(YcluiKeyword* record, const char* name) {
    const YcluiKeyword* known = find(name);
    const bool isAlias = record->type() == YcluiTokenAlias;
    if (known == nullptr && attach(static_cast<YAssoc*>(record)) != nullptr) {
      if (!isAlias) ++nextId;
      return {record->id(), 0};
    }
    delete record;
    if (known == nullptr) return {0, 0};
    if (!isAlias) return {0, YErrNameExists};
    return {0, known->type() == YcluiTokenAlias ? YErrIsAlias : YErrIsWord};
  }
  Told remove(const char* name, bool isAlias) {
    YcluiKeyword* record = find(name);
    if (record == nullptr || (record->type() == YcluiTokenAlias) != isAlias) {
      return {0, isAlias ? YErrNoSuchAlias : YErrNoSuchWord};
    }
    detach(static_cast<YAssoc*>(record));
    delete record;
    return {1, 0};
  }

  std::uint32_t nextId = 5000;
};

// So many that the keys of some meet, whose words then share a row of the index.
TEST(Words, StayApartAmongMany) {
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

TEST(Words, AreFoundAsByAPlainWalk) {
  std::mt19937 random(11);
  const auto word = [&](std::size_t longest) {
    std::string text(random() % (longest + 1), 'a');
    for (char& c : text) c = "aabbA\x83"[random() % 6];
    return text;
  };
  for (int table = 0; table < 60; ++table) {
    YcluiWordTable fast(5000);
    SlowTable slow;
    for (int step = 0; step < 500; ++step) {
      const std::string name = word(6);
      std::string shortest = random() % 4 == 0 ? word(7) : name.substr(0, random() % 4);
      const char* abbreviation = random() % 3 == 0 ? nullptr : shortest.c_str();
      const std::uint32_t id = random() % 101;
      const char* n = name.c_str();
      const std::uint64_t before = YErr.count();
      const auto told = [before](std::uint32_t answer) {
        return Told(answer, YErr.count() == before ? 0 : YErr.code(0));
      };
      switch (random() % 5) {
        case 0:
          ASSERT_EQ(told(fast.delKeyword(n)), slow.remove(n, false));
          break;
        case 1:
          ASSERT_EQ(told(fast.delAlias(n)), slow.remove(n, true));
          break;
        case 2:
          ASSERT_EQ(told(fast.addAlias(n, "x")), slow.add(new YcluiAlias(n, "x"), n));
          break;
        default:
          const std::uint32_t given = id != 0 ? id : slow.nextId;
          ASSERT_EQ(told(fast.addKeyword(n, abbreviation, id)),
                    slow.add(new YcluiPlainKeyword(n, abbreviation, given), n));
      }
      for (int i = 0; i < 8; ++i) {
        const std::string key = word(7);
        ASSERT_EQ(Shown(fast.find(key.c_str())), Shown(slow.find(key.c_str()))) << key;
        const auto wanted = static_cast<std::uint32_t>(i) + 1;
        ASSERT_STREQ(fast.keyword(wanted), slow.keyword(wanted));
      }
    }
  }
}

}  // namespace
