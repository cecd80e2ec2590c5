// Variable forms in texts, and variables by name.

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "foundation/YErr.h"
#include "tests/support/lex_reader.h"

namespace {

// One lexer reads the texts in their order.
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
      {"scale ${a}", "!number"},
      {"${a}=-3 line:${a},1", "set !number"},
      {"${a}=.5 ${a}", "set {.5}"},
      {"${a}=3abc ${a}", "set ?abc {3}"},
      {"${a}= 3", "set ?3"},
      {"name ${a}", "name(s)"},
      {"${a}=x,y", "set ?,y"},
      {"${a} =3", "{x} ?=3"},
      {"name ${a}=3", "name(sx) ?=3"},
      {"${a}=3e9 line:${a},1", "set !out-of-range"},
      {"${}=1 ${}", "set {1}"},
      {"${presenttime}=1 ${nothing}", "set !no-variable"},
      {"${a", "!end-of-input"},
      {"${a}=", "!end-of-input"},
      {"${my_var}", "!closing-brace"},
      {"${a}", "{3000000000}"},
  });
}

TEST(Variables, Arrays) {
  CheckInTurn({
      {"${r}[2]=x ${r}[2.9] ${r}[3]", "set {x} !outside-array"},
      {"${r}[0]", "!no-text"},
      {"name ${r}[1]", "!number"},
      {"${i}=5 ${r}[${i}]=y ${r}[${i}]", "set set {y}"},
      {"${r}[-1]", "!outside-array"},
      {"${r}[-1]=1 now", "!outside-array"},
      {"${r}[65536]=1", "!outside-array"},
      {"${new}[-1]=1", "!outside-array"},
      {"${new}[65535]=1 ${new}[65535]", "set {1}"},
      {"${r}", "!kind"},
      {"${r}=1", "!kind"},
      {"${i}[0]", "!kind"},
      {"${r}[1", "!end-of-input"},
      {"${r}[1 ]", "!closing-brace"},
      {"${s}=x ${r}[${s}]", "set !number"},
  });
}

TEST(Variables, ExpansionIsLimited) {
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
    EXPECT_EQ(reader.read(text), "!too-long") << text;
  }
  std::string many;  // 4 GiB, if the text were made
  for (int i = 0; i < 256; ++i) many += "${a}";
  EXPECT_EQ(reader.read("name '" + many + "'"), "!too-long");
  EXPECT_EQ(length(), bound);
  EXPECT_EQ(reader.read("name ${a}").size(), bound + 7);
  // The texts of aliases and references are counted together while a text is suspended.
  EXPECT_EQ(reader.read("${a} ${a}").size(), 2 * bound + 5);
  reader.lex.pushString("");
  EXPECT_EQ(reader.read("go now ${a} now"), "!too-long now !too-long");
  reader.lex.popString();
  EXPECT_EQ(reader.read("go"), "{now ;}");
  EXPECT_EQ(reader.read("${a}=\"" + literal + "\" ${b}=${a}"),
            "set set");  // the limit is for expansion only
  EXPECT_EQ(length(), bound + 1);
  EXPECT_EQ(reader.read("name ${a}"), "!too-long");
  EXPECT_EQ(reader.read("name '" + literal + "'").size(), bound + 8);
}

TEST(Variables, NestedForms) {
  LexReader reader;
  EXPECT_EQ(reader.read("${a}[0]=0"), "set");
  EXPECT_EQ(reader.read(Nested(1 + YcluiMostIndexNesting)), "{0}");
  EXPECT_EQ(reader.read(Nested(20000)), "!too-deep");
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
  EXPECT_EQ(YErr.count(), codes);  // the kind is checked first

  EXPECT_EQ(lex.addVariable("arr", one, 2), 1U);
  YcluiVariable* array = lex.variable("arr");
  EXPECT_EQ(array->elementCount(), 3U);
  EXPECT_EQ(lex.addVariable("arr", 2, both), 1U);
  EXPECT_EQ(Shown(*array->element(1)) + Shown(*array->element(2)), "stwosone");
  EXPECT_TRUE(array->element(3) == nullptr && array->valuePointer() == nullptr);
  EXPECT_EQ(lex.addVariable("arr", *array->element(1), 100), 1U);  // the array moves
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
