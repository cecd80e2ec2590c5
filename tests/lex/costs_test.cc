// What reading costs, and what happens when there is no memory.

#include <gtest/gtest.h>

#include <ctime>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "foundation/YErr.h"
#include "tests/lex/allocations.h"
#include "tests/lex/lex_reader.h"

namespace {

double Seconds(const std::function<void()>& work) {
  const std::clock_t start = std::clock();
  work();
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

// Ten times the input may take ten times as long and some; what is quadratic takes a hundred times.
void ExpectLinear(const char* what, const std::function<void(int)>& work) {
  const double small = Seconds([&] { work(6000); });
  EXPECT_LT(Seconds([&] { work(60000); }), small * 40 + 0.05) << what;
}

void ReadAll(LexReader& reader, const char* text) {
  reader.lex.setString(text);
  while (reader.lex.more() != 0) reader.lex.getNextToken(reader.token);
}

TEST(Costs, AWarmLexerDoesNotAllocate) {
  LexReader reader;
  const char* text =
      "now DELETE go;mix 1,\"quo\\\"ted ${s}\",3,4,5 # c\n ${s}='a longer text' ${s} "
      "${r}[${i}]=2.5 "
      "line:${i},1 name \x83\x5C free: word\\,word,x unknown ${r}[1] name 'open";
  reader.lex.addVariable("i", YAttribValue());
  reader.read("${i}=1");
  YcluiToken copy;
  const auto round = [&] {
    ReadAll(reader, text);
    reader.lex.pushString(text);
    reader.lex.putString(" now");
    reader.lex.popString();
    copy = reader.token;
    copy.setEchoString("echo");
    copy.wholeString();
  };
  round();
  round();
  const long before = Allocations();
  round();
  EXPECT_EQ(Allocations(), before);
}

TEST(Costs, OfATextAreLinear) {
  // A head and two pieces, each of them many times.
  const char* const table[][3] = {
      {"", "now nowhere ", ""},         {"x:1", ",1", " y"}, {"", "ab\\c\x81\x40", " now"},
      {"${v}=1 name '", "${v}\\x", ""}, {"${", "a", "b"},    {"", "#c\n", "#"},
  };
  for (const auto& row : table) {
    ExpectLinear(row[1], [&](int n) {
      std::string text = row[0];
      for (int i = 0; i < n; ++i) text += row[1];
      for (int i = 0; i < n; ++i) text += row[2];
      LexReader reader;
      ReadAll(reader, text.c_str());
    });
  }
  ExpectLinear("an array that grows", [](int n) {
    YcluiLex lex;
    for (int i = 0; i < n; ++i) lex.addVariable("a", YAttribValue(), static_cast<unsigned>(i));
    EXPECT_EQ(lex.variable("a")->elementCount(), static_cast<unsigned>(n));
  });
}

// Every keyword is filed under the same abbreviation, and all share long prefixes.
TEST(Costs, OfAWordDoNotGrowWithTheTable) {
  ExpectLinear("words", [](int n) {
    n /= 4;
    YcluiLex lex;
    const auto word = [](int i) { return "Word" + std::to_string(i); };
    for (int i = 0; i < n; ++i) lex.addKeyword((word(i) + "x").c_str(), "w", 0);
    for (int i = 0; i < n; ++i) {
      EXPECT_NE(lex.keyword((word(i) + "x").c_str()), nullptr);
      EXPECT_EQ(lex.keyword((word(i) + "y").c_str()), nullptr);
      EXPECT_NE(lex.keyword(5000U + static_cast<unsigned>(i)), nullptr);
    }
    for (int i = 0; i < n; ++i) lex.delKeyword(("word" + std::to_string(i) + "x").c_str());
    EXPECT_EQ(lex.keyword("w"), nullptr);
  });
}

TEST(Costs, ALexerWithoutTablesRefusesEverything) {
  for (const unsigned int code : {YErrNoWordTable, YErrNoVariableTable}) {
    FailAllocation(code == YErrNoWordTable ? 0 : 1);
    YcluiLex lex;
    ASSERT_TRUE(FailAllocation(-1));
    EXPECT_TRUE(YErr.code(0) == code && YErr.severity(0) == YErrFatal);
    YcluiToken token;
    const YAttribValue value;
    lex.reset();
    EXPECT_FALSE(lex.setString("now") || lex.putString("now") || lex.pushString("now") ||
                 lex.popString() || lex.more() || lex.getNextToken(token) ||
                 lex.addKeyword("a", nullptr, 0) || lex.addKeyword("a", 0, nullptr, 0) ||
                 lex.addKeyword(';', 0) || lex.delKeyword("a") || lex.addAlias("a", "b") ||
                 lex.delAlias("a") || lex.keyword(8U) || lex.keyword("a") || lex.variable("a") ||
                 lex.addVariable("a", value) || lex.addVariable("a", value, 1) ||
                 lex.addVariable("a", 1, &value));
  }
}

// Whichever allocation of an operation fails, the code is pushed and the lexer goes on.
TEST(Costs, RecordsWithoutMemory) {
  const YAttribValue value;
  const YcluiValueType type = YcluiValueString;
  const std::vector<std::function<void(YcluiLex&)>> operations = {
      [](YcluiLex& lex) { lex.addKeyword("word", "w", 0); },
      [&](YcluiLex& lex) { lex.addKeyword("word", 1, &type, 0); },
      [](YcluiLex& lex) { lex.addAlias("word", "text"); },
      [&](YcluiLex& lex) { lex.addVariable("word", value); },
      [&](YcluiLex& lex) { lex.addVariable("word", value, 3); },
  };
  for (const auto& operation : operations) {
    for (const int allocation : {0, 1}) {  // the record, its name
      YcluiLex lex;
      FailAllocation(allocation);
      operation(lex);
      EXPECT_TRUE(FailAllocation(-1));
      EXPECT_TRUE(YErr.code(0) == YErrNoMemory && YErr.severity(0) == YErrFatal);
      EXPECT_TRUE(lex.keyword("word") == nullptr && lex.variable("word") == nullptr);
      EXPECT_NE(lex.addKeyword("word", "w", 0), 0U);
    }
  }
  YcluiToken token("x");
  FailAllocation(0);
  EXPECT_EQ(token.setEchoString("y"), 0U);
  EXPECT_STREQ(token.echoString(), "x");
}

// A word whose name alone found no memory has the empty name, and there is only one of those.
TEST(Costs, AWordWithoutAName) {
  YcluiLex lex;
  FailAllocation(1);
  EXPECT_EQ(lex.addKeyword("one", nullptr, 0), 5000U);
  FailAllocation(1);
  EXPECT_EQ(lex.addKeyword("two", nullptr, 0), 0U);
  EXPECT_TRUE(FailAllocation(-1) && YErr.code(0) == YErrNoMemory);
  EXPECT_STREQ(lex.keyword(5000U), "");
  EXPECT_EQ(lex.delKeyword(""), 1U);
}

TEST(Costs, AnyBytesCanBeRead) {
  std::mt19937 random(29);
  const std::string common = "nowl:12,;${}[]='\"\\# \n\x83\x5C";
  for (int round = 0; round < 3000; ++round) {
    std::string bytes(random() % 200, 'x');
    for (char& c : bytes) {
      c = random() % 4 == 0 ? static_cast<char>(random()) : common[random() % common.size()];
    }
    LexAnything(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  }
}

}  // namespace
