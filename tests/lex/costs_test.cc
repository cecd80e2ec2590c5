// What reading costs, and what happens when there is no memory.

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "foundation/YErr.h"
#include "tests/lex/allocations.h"
#include "tests/lex/lex_reader.h"

namespace {

double Seconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

std::string Repeated(const std::string& text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
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

// Ten times the input may take ten times as long and some; what is quadratic takes a hundred times.
TEST(Costs, AreLinear) {
  struct Row {
    const char* what;
    std::function<std::string(int)> text;
  };
  const Row table[] = {
      {"many words", [](int n) { return Repeated("now nowhere ", n); }},
      {"many arguments", [](int n) { return "x:1" + Repeated(",1", n); }},
      {"unknown words behind them",
       [](int n) { return "x:1" + Repeated(",1", n) + Repeated(" y", n); }},
      {"one long word", [](int n) { return Repeated("ab\\c\x81\x40", n); }},
      {"one long string", [](int n) { return "${v}=1 name '" + Repeated("${v}\\x", n) + "'"; }},
      {"one long name", [](int n) { return "${" + Repeated("a", n) + "}=1"; }},
      {"comments", [](int n) { return Repeated("#c\n", n) + "now"; }},
      {"an array that grows",
       [](int n) {
         std::string all;
         for (int i = 0; i < n && i < 65536; ++i) all += "${a}[" + std::to_string(i) + "]=1 ";
         return all;
       }},
  };
  for (const Row& row : table) {
    const std::string small = row.text(6000);
    const std::string large = row.text(60000);
    const double smallTime = Seconds([&] {
                               for (int i = 0; i < 4; ++i)
                                 ReadAll(*std::make_unique<LexReader>(), small.c_str());
                             }) /
                             4;
    const double largeTime =
        Seconds([&] { ReadAll(*std::make_unique<LexReader>(), large.c_str()); });
    EXPECT_LT(largeTime, smallTime * 40 + 0.05) << row.what;
  }
}

TEST(Costs, OfAWordDoNotGrowWithTheTable) {
  // Every keyword is filed under the same abbreviation, and all share long prefixes.
  const auto fill = [](int n) {
    YcluiLex lex;
    for (int i = 0; i < n; ++i) {
      lex.addKeyword(("word" + std::to_string(i) + "x").c_str(), "w", 0);
      lex.addKeyword(("plain" + std::to_string(i)).c_str(), nullptr, 0);
    }
    for (int i = 0; i < n; ++i) {
      EXPECT_NE(lex.keyword(("WORD" + std::to_string(i) + "x").c_str()), nullptr);
      EXPECT_EQ(lex.keyword(("word" + std::to_string(i) + "y").c_str()), nullptr);
      EXPECT_NE(lex.keyword(5000U + static_cast<std::uint32_t>(i)), nullptr);
    }
    for (int i = 0; i < n; ++i) lex.delKeyword(("word" + std::to_string(i) + "x").c_str());
    EXPECT_EQ(lex.keyword("w"), nullptr);
  };
  const double small = Seconds([&] { fill(2000); });
  EXPECT_LT(Seconds([&] { fill(20000); }), small * 40 + 0.05);
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
      [](YcluiLex& lex) {
        YcluiToken token("x");
        lex.setString("${word}=1");
        lex.getNextToken(token);
      },
      [](YcluiLex&) {
        YcluiToken token("x");
        const YWord set = token.setEchoString("y");
        EXPECT_STREQ(token.echoString(), set != 0 ? "y" : "x");
      },
  };
  int failures = 0;
  for (const auto& operation : operations) {
    for (int i = 0;; ++i) {
      YcluiLex lex;
      FailAllocation(i);
      operation(lex);
      if (!FailAllocation(-1)) break;
      ++failures;
      EXPECT_TRUE(YErr.code(0) == YErrNoMemory && YErr.severity(0) == YErrFatal);
      EXPECT_TRUE(lex.keyword("word") == nullptr && lex.variable("word") == nullptr);
      EXPECT_EQ(lex.addKeyword("word", "w", 0) != 0, true);
      EXPECT_NE(lex.keyword("wo"), nullptr);
    }
  }
  EXPECT_EQ(failures, 13);
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
