// The word dictionary.

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "foundation/YErr.h"
#include "lex/YcluiAlias.h"
#include "lex/YcluiLex.h"
#include "lex/YcluiPlainKeyword.h"
#include "lex/YcluiWordTable.h"

namespace {

std::string NameOf(const YcluiKeyword* record) {
  return record == nullptr ? "-" : record->name();
}

TEST(Words, AreFoundByTheirAcceptedForms) {
  struct Row {
    const char* name;
    const char* abbreviation;
    const char* found;
    const char* notFound;
  };
  const Row table[] = {
      {"Delete", "DEL", "del DELE delet delete", "de d deletes delx"},
      {"delete", "", "d de Delete", "x deletes"},
      {"delete", nullptr, "delete DELETE", "d delet"},
      {"delete", "delete", "delete", "delet"},
      {"delete", "let", "", "delete let d"},
      {"del", "delete", "", "del delete dele"},
      {"a\x83\x41", "a", "a A\x83\x41", "a\x83\x61"},
  };
  for (const Row& row : table) {
    YcluiLex lex;
    EXPECT_EQ(lex.addKeyword(row.name, row.abbreviation, 0), 5000U);
    YcluiToken token;
    for (const bool accepted : {true, false}) {
      lex.setString(accepted ? row.found : row.notFound);
      while (lex.more() != 0) {
        EXPECT_EQ(lex.getNextToken(token) != 0, accepted) << row.name << token.string();
        EXPECT_EQ(token == 5000U, accepted ? 1U : 0U);
      }
    }
  }
}

TEST(Words, AreAddedAndDeleted) {
  YcluiLex lex;
  std::uint64_t count = YErr.count();
  const auto failsWith = [&](unsigned int code, YWord answer) {
    const bool pushed = YErr.count() == count + (code == 0 ? 0 : 1);
    count = YErr.count();
    return answer == 0 && pushed && (code == 0 || YErr.code(0) == code);
  };
  EXPECT_EQ(lex.addKeyword("delete", "del", 0), 5000U);
  EXPECT_TRUE(failsWith(YErrNameExists, lex.addKeyword("dele", nullptr, 0)));
  EXPECT_EQ(lex.addKeyword("far", nullptr, 0x7000007), 7U);
  EXPECT_EQ(lex.addKeyword("delay", "del", 0), 5002U);
  EXPECT_EQ(NameOf(lex.keyword("dela")), "delay");
  EXPECT_EQ(NameOf(lex.keyword("del")), "delete");  // the first added
  EXPECT_EQ(lex.addAlias("q", ""), 1U);
  EXPECT_EQ(lex.keyword("q")->aliasText(), nullptr);
  EXPECT_STREQ(lex.keyword(8U), "q");
  EXPECT_TRUE(failsWith(YErrIsAlias, lex.addAlias("Q", "x")));
  EXPECT_TRUE(failsWith(YErrIsWord, lex.addAlias("delet", "x")));
  EXPECT_TRUE(failsWith(YErrNoSuchWord, lex.delKeyword("q")));
  EXPECT_TRUE(failsWith(YErrNoSuchWord, lex.delKeyword("delx")));
  EXPECT_TRUE(failsWith(YErrNoSuchAlias, lex.delAlias("far")));
  EXPECT_TRUE(failsWith(YErrNoSuchAlias, lex.delAlias("x")));
  EXPECT_EQ(lex.delAlias("Q"), 1U);
  // Capitals keep a longer form from being found; what is then added clashes if filed alike.
  EXPECT_TRUE(failsWith(YErrNoSuchWord, lex.delKeyword("DELETE")));
  EXPECT_TRUE(failsWith(0, lex.addKeyword("DELET", "del", 0)));
  EXPECT_EQ(lex.addKeyword("DELET", "dele", 0), 5003U);
  EXPECT_EQ(lex.delKeyword("del"), 1U);
  EXPECT_EQ(NameOf(lex.keyword("del")), "delay");
  EXPECT_EQ(lex.keyword(5000U), nullptr);
  // A keyword of one byte, twice.
  EXPECT_TRUE(failsWith(0, lex.addKeyword('\0', 0)));
  EXPECT_EQ(lex.addKeyword(';', 0), 5004U);
  EXPECT_TRUE(failsWith(YErrNameExists, lex.addKeyword(';', 0)));
  // Types that are not given declare no arguments.
  EXPECT_EQ(lex.addKeyword("bare", 3, nullptr, 9000), 9000U);
  EXPECT_EQ(lex.keyword("bare")->argTypes(), nullptr);
  EXPECT_EQ(YcluiToken(*lex.keyword("bare")).type(), YcluiTokenArgKeyword);
}

// The dictionary as it is told: a set that is probed by hash, then a walk over all its records.
class SlowTable : public YDictionary {
 public:
  ~SlowTable() { deleteAll(); }

  YcluiKeyword* find(const char* key) const {
    YcluiKeyword probe(key, 0, YcluiTokenKeyword);
    void* found = search(static_cast<YAssoc*>(&probe));
    if (found != nullptr) return static_cast<YcluiKeyword*>(static_cast<YAssoc*>(found));
    for (YAssocSetItr i(*this); i.item != nullptr; ++i) {
      YcluiKeyword* record = static_cast<YcluiKeyword*>(i.item);
      if (record->matches(key) != 0) return record;
    }
    return nullptr;
  }
  const char* keyword(std::uint32_t id) const {
    for (YAssocSetItr i(*this); i.item != nullptr; ++i) {
      if (static_cast<YcluiKeyword*>(i.item)->id() == id) {
        return static_cast<YcluiKeyword*>(i.item)->name();
      }
    }
    return nullptr;
  }
  std::uint32_t add(YcluiKeyword* record, const char* name) {
    if (find(name) == nullptr && attach(static_cast<YAssoc*>(record)) != nullptr) {
      return record->id();
    }
    delete record;
    return 0;
  }
  YWord remove(const char* name, bool alias) {
    YcluiKeyword* record = find(name);
    if (record == nullptr || (record->type() == YcluiTokenAlias) != alias) return 0;
    detach(static_cast<YAssoc*>(record));
    delete record;
    return 1;
  }
};

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
      const std::uint32_t id = 1 + random() % 100;
      const char* n = name.c_str();
      switch (random() % 5) {
        case 0:
          ASSERT_EQ(fast.delKeyword(n), slow.remove(n, false));
          break;
        case 1:
          ASSERT_EQ(fast.delAlias(n), slow.remove(n, true));
          break;
        case 2:
          ASSERT_EQ(fast.addAlias(n, "x"), slow.add(new YcluiAlias(n, "x"), n));
          break;
        default:
          ASSERT_EQ(fast.addKeyword(n, abbreviation, id),
                    slow.add(new YcluiPlainKeyword(n, abbreviation, id), n));
      }
      for (int i = 0; i < 8; ++i) {
        const std::string key = word(7);
        const YcluiKeyword* a = fast.find(key.c_str());
        const YcluiKeyword* b = slow.find(key.c_str());
        ASSERT_EQ(NameOf(a), NameOf(b)) << key;
        ASSERT_EQ(a == nullptr ? 0 : a->id(), b == nullptr ? 0 : b->id()) << key;
        const char* byId = slow.keyword(static_cast<std::uint32_t>(i) + 1);
        ASSERT_STREQ(fast.keyword(static_cast<std::uint32_t>(i) + 1), byId);
      }
    }
  }
}

}  // namespace
