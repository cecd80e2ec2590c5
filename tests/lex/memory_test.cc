// Reading without allocating, and running out of memory.

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "foundation/YErr.h"
#include "tests/support/allocations.h"
#include "tests/support/lex_reader.h"

namespace {

TEST(Memory, AWarmLexerDoesNotAllocate) {
  LexReader reader;
  const char* text =
      "now DELETE go;mix 1,\"quo\\\"ted ${s}\",3,4,5 # c\n ${s}='a longer text' ${s} "
      "${r}[${i}]=2.5 "
      "line:${i},1 name \x83\x5C free: word\\,word,x unknown ${r}[1] name 'open";
  reader.lex.addVariable("i", YAttribValue());
  reader.read("${i}=1");
  YcluiToken copy;
  const auto round = [&] {
    reader.lex.setString(text);
    while (reader.lex.more() != 0) reader.lex.getNextToken(reader.token);
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

TEST(Memory, AllOperationsFailWithoutTables) {
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

// Too long to be stored in its record.
constexpr char Word[] = "a-word-of-thirty-two-characters!";

// No memory for the record or for its name: the code is recorded and the lexer stays usable.
TEST(Memory, RecordsWithoutMemory) {
  const YAttribValue value;
  const YcluiValueType type = YcluiValueString;
  const struct {
    std::function<void(YcluiLex&)> operation;
    bool (*fail)(int index);
    int index;
  } rows[] = {
      {[](YcluiLex& lex) { lex.addKeyword(Word, "a", 0); }, FailAllocation, 0},
      {[&](YcluiLex& lex) { lex.addKeyword(Word, 1, &type, 0); }, FailAlignedAllocation, 0},
      {[&](YcluiLex& lex) { lex.addKeyword(Word, 1, &type, 0); }, FailAllocation, 0},
      {[](YcluiLex& lex) { lex.addAlias(Word, "text"); }, FailAlignedAllocation, 0},
      {[](YcluiLex& lex) { lex.addAlias(Word, "text"); }, FailAllocation, 0},
      {[&](YcluiLex& lex) { lex.addVariable(Word, value); }, FailAllocation, 0},
      {[&](YcluiLex& lex) { lex.addVariable(Word, value); }, FailAllocation, 1},
      {[&](YcluiLex& lex) { lex.addVariable(Word, value, 3); }, FailAllocation, 0},
      {[&](YcluiLex& lex) { lex.addVariable(Word, value, 3); }, FailAllocation, 1},
  };
  for (const auto& row : rows) {
    YcluiLex lex;
    row.fail(row.index);
    row.operation(lex);
    EXPECT_TRUE(row.fail(-1)) << &row - rows;
    EXPECT_TRUE(YErr.code(0) == YErrNoMemory && YErr.severity(0) == YErrFatal);
    EXPECT_TRUE(lex.keyword(Word) == nullptr && lex.variable(Word) == nullptr);
    EXPECT_NE(lex.addKeyword(Word, "a", 0), 0U);
  }
  YcluiToken token("x");
  FailAllocation(0);
  EXPECT_EQ(token.setEchoString("y"), 0U);
  EXPECT_STREQ(token.echoString(), "x");
  EXPECT_TRUE(YErr.code(0) == YErrNoMemory && YErr.severity(0) == YErrFatal);
}

// Plain words come from a pool, which allocates from time to time.
TEST(Memory, NoMemoryForThePoolOfWords) {
  YcluiLex lex;
  FailAlignedAllocation();
  int words = 0;
  while (lex.addKeyword(("w" + std::to_string(words)).c_str(), nullptr, 0) != 0) ++words;
  EXPECT_TRUE(FailAlignedAllocation(-1) && YErr.code(0) == YErrNoMemory);
  EXPECT_NE(lex.addKeyword("more", nullptr, 0), 0U);
}

// A word for whose name there was no memory has the empty name; there can be only one such word.
TEST(Memory, AWordWithoutAName) {
  YcluiLex lex;
  FailAllocation();
  EXPECT_EQ(lex.addKeyword(Word, nullptr, 0), 5000U);
  FailAllocation();
  EXPECT_EQ(lex.addKeyword(Word + 1, nullptr, 0), 0U);
  EXPECT_TRUE(FailAllocation(-1) && YErr.code(0) == YErrNoMemory);
  EXPECT_STREQ(lex.keyword(5000U), "");
  EXPECT_EQ(lex.delKeyword(""), 1U);
}

}  // namespace
