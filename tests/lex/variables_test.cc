// Variable forms in texts, and variables by name.

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "foundation/YErr.h"
#include "tests/lex/lex_reader.h"

namespace {

// The texts in their order, with one lexer.
void CheckInTurn(const std::vector<LexCase>& table) {
  LexReader reader;
  for (const LexCase& row : table) EXPECT_EQ(reader.read(row.text), row.shown) << row.text;
}

std::string Nested(int levels) {
  std::string form;
  for (int i = 0; i < levels; ++i) form += "${a}[";
  return form + "0" + std::string(static_cast<std::size_t>(levels), ']');
}

TEST(Variables, Simple) {
  CheckInTurn({
      {"${a}=3", "set"},
      {"${A}", "{3}"},
      {"${\\a}${a\\}", "{3} {3}"},
      {"${b}=${a} ${a}=4 ${b} ${a}", "set set {3} {4}"},
      {"scale ${a} line:${a},${b}", "scale(d4) line:(i4,i3)"},
      {"${a}=\"3\" ${a}", "set {3}"},
      {"scale ${a}", "!2051"},
      {"${a}=-3 line:${a},1", "set !2051"},
      {"${a}=.5 ${a}", "set {.5}"},
      {"${a}=3abc ${a}", "set ?abc {3}"},
      {"${a}= 3", "set ?3"},
      {"name ${a}", "name(s)"},
      {"${a}=x,y", "set ?,y"},
      {"${a} =3", "{x} ?=3"},
      {"name ${a}=3", "name(sx) ?=3"},
      {"${a}=3e9 line:${a},1", "set !2060"},
      {"${}=1 ${}", "set {1}"},
      {"${presenttime}=1 ${nothing}", "set !2086"},
      {"${a", "!2050"},
      {"${a}=", "!2050"},
      {"${my_var}", "!2087"},
      {"${a}", "{3000000000}"},
  });
}

TEST(Variables, Arrays) {
  CheckInTurn({
      {"${r}[2]=x ${r}[2.9] ${r}[3]", "set {x} !2055"},
      {"${r}[0]", "!2084"},
      {"name ${r}[1]", "!2051"},
      {"${i}=5 ${r}[${i}]=y ${r}[${i}]", "set set {y}"},
      {"${r}[-1]", "!2055"},
      {"${r}[-1]=1 now", "!2055"},
      {"${r}[65536]=1", "!2055"},
      {"${new}[-1]=1", "!2055"},
      {"${new}[65535]=1 ${new}[65535]", "set {1}"},
      {"${r}", "!2085"},
      {"${r}=1", "!2085"},
      {"${i}[0]", "!2085"},
      {"${r}[1", "!2050"},
      {"${r}[1 ]", "!2087"},
      {"${s}=x ${r}[${s}]", "set !2051"},
  });
}

TEST(Variables, TextsDoNotGrowWithoutBound) {
  LexReader reader;
  const std::size_t bound = YcluiLongestExpansion;
  const std::string literal(bound + 1, 'x');
  const auto length = [&] {
    return std::strlen(reader.lex.variable("a")->valuePointer()->GetString());
  };
  reader.lex.addVariable("a", YAttribValue(literal.c_str(), bound / 2));
  EXPECT_EQ(reader.read("${a}=\"${a}${a}\""), "set");
  EXPECT_EQ(length(), bound);
  for (const char* text : {"${a}=\"${a}${a}\"", "${a}=\"${a}x\"", "${a}='x${a}'", "a: ${a},x,${a}",
                           "name 'x${a}'", "a: '${a}',\"${a}\""}) {
    EXPECT_EQ(reader.read(text), "!2063") << text;
  }
  std::string many;  // 4 GiB, if the text were made
  for (int i = 0; i < 256; ++i) many += "${a}";
  EXPECT_EQ(reader.read("name '" + many + "'"), "!2063");
  EXPECT_EQ(length(), bound);
  EXPECT_EQ(reader.read("name ${a}").size(), bound + 7);
  // What is to be read in place of a token counts together while a text is suspended.
  EXPECT_EQ(reader.read("${a} ${a}").size(), 2 * bound + 5);
  reader.lex.pushString("");
  EXPECT_EQ(reader.read("go now ${a} now"), "!2063 now !2063");
  reader.lex.popString();
  EXPECT_EQ(reader.read("go"), "{now ;}");
  EXPECT_EQ(reader.read("${a}=\"" + literal + "\" ${b}=${a}"), "set set");  // given, not grown
  EXPECT_EQ(length(), bound + 1);
  EXPECT_EQ(reader.read("name ${a}"), "!2063");
  EXPECT_EQ(reader.read("name '" + literal + "'").size(), bound + 8);
}

TEST(Variables, FormsInEachOthersIndex) {
  LexReader reader;
  EXPECT_EQ(reader.read("${a}[0]=0"), "set");
  EXPECT_EQ(reader.read(Nested(1 + YcluiMostIndexNesting)), "{0}");
  EXPECT_EQ(reader.read(Nested(20000)), "!2052");
  EXPECT_EQ(reader.read(Nested(3)), "{0}");
}

TEST(Variables, ByName) {
  YcluiLex lex;
  const YAttribValue one("one", 0);
  const YAttribValue two("two", 0);
  const YAttribValue both[] = {one, two};

  EXPECT_EQ(lex.addVariable("My_Var", one), 1U);
  EXPECT_EQ(lex.addVariable("my_var", two), 1U);
  EXPECT_EQ(Shown(*lex.variable("MY_VAR")->valuePointer()), "stwo");
  const std::uint64_t codes = YErr.count();
  EXPECT_EQ(lex.addVariable("my_var", one, 0) + lex.addVariable("my_var", one, 70000), 0U);
  EXPECT_EQ(lex.addVariable("my_var", 2, both), 0U);
  EXPECT_EQ(YErr.count(), codes);  // the kind is asked first

  EXPECT_EQ(lex.addVariable("arr", one, 2), 1U);
  YcluiVariable* array = lex.variable("arr");
  EXPECT_EQ(array->elementCount(), 3U);
  EXPECT_EQ(lex.addVariable("arr", 2, both), 1U);
  EXPECT_EQ(Shown(*array->element(1)) + Shown(*array->element(2)), "stwosone");
  EXPECT_TRUE(array->element(3) == nullptr && array->valuePointer() == nullptr);
  EXPECT_EQ(lex.addVariable("arr", *array->element(1), 100), 1U);  // which moves
  EXPECT_EQ(lex.addVariable("arr", 100, array->element(1)), 1U);
  EXPECT_EQ(Shown(*array->element(0)) + Shown(*array->element(99)), "stwostwo");
  EXPECT_EQ(lex.addVariable("arr", one), 0U);
  for (const std::uint32_t bad : {YcluiMostElements, 0xffffffffU}) {
    EXPECT_EQ(lex.addVariable("arr", one, bad), 0U);
    EXPECT_EQ(lex.addVariable("other", one, bad) + lex.addVariable("other", bad | 1, both), 0U);
    EXPECT_TRUE(YErr.code(0) == YErrOutsideArray && YErr.severity(0) == YErrWarning);
  }
  EXPECT_EQ(lex.variable("other"), nullptr);
  EXPECT_EQ(lex.addVariable("none", 0, nullptr), 1U);
  EXPECT_EQ(lex.variable("none")->elements(), nullptr);

  EXPECT_EQ(std::string(lex.variable("PresentTime")->valuePointer()->GetString()).size(), 24U);
}

}  // namespace
