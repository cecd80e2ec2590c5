// What is shown about words and their arguments.

#include <limits>
#include <string>

#include "foundation/YCharacters.h"
#include "gtest/gtest.h"
#include "parser/YcluiHelp.h"
#include "parser/YcluiParser.h"

namespace {

std::string Shown(const char* text) {
  return text == nullptr ? "none" : text;
}

std::string ValuesOf(const YcluiHelp& help, std::uint32_t id, int index, const char* typed) {
  YString_Array values;
  values.end() = "old";
  help.findValues(id, index, typed, values);
  std::string all;
  for (int i = 0; i < values.size(); ++i)
    all += std::string(i == 0 ? "" : " ") + values.at(i).buffer;
  return all;
}

std::string RangeOf(const YcluiHelp& help, std::uint32_t id, int index) {
  double low = 7;
  double high = 8;
  const bool isThere = help.range(id, index, low, high);
  return (isThere ? "" : "no ") + std::to_string(low) + " " + std::to_string(high);
}

YString_Array ListOf(std::initializer_list<const char*> texts) {
  YString_Array list;
  for (const char* text : texts) list.end() = text;
  return list;
}

TEST(Help, EachEntryIsSetAndRemovedAlone) {
  const YcluiParser parser;
  YcluiHelp& help = parser.help();
  char text[] = "draws a box";
  EXPECT_EQ(1U, help.setText(5, text));
  EXPECT_EQ(1U, help.setArgument(5, 2, "WIDTH", text));
  text[0] = '?';
  help.setText(5, help.text(5));
  EXPECT_EQ("draws a box", Shown(help.text(5)));
  EXPECT_EQ("draws a box", Shown(help.argumentText(5, 2)));
  EXPECT_EQ("none", Shown(help.argumentText(5, 1)));
  EXPECT_EQ("none", Shown(help.text(2)));
  help.setRange(5, 2, -1, 9);
  help.setFileName(5, 2, true);
  help.setArgument(5, 2, "HEIGHT", nullptr);
  EXPECT_EQ("HEIGHT", Shown(help.argumentName(5, 2)));
  EXPECT_EQ("none", Shown(help.argumentText(5, 2)));
  EXPECT_EQ(RangeOf(help, 5, 2), "-1.000000 9.000000");
  help.removeRange(5, 2);
  EXPECT_EQ(RangeOf(help, 5, 2), "no 7.000000 8.000000");
  EXPECT_TRUE(help.isFileName(5, 2));
  help.setFileName(5, 2, false);
  EXPECT_FALSE(help.isFileName(5, 2));
  help.setText(5, nullptr);
  EXPECT_EQ("none", Shown(help.text(5)));
  EXPECT_EQ("HEIGHT", Shown(help.argumentName(5, 2)));
}

TEST(Help, IdsAreCutAndWhatNoTokenHasIsRefused) {
  YcluiHelp help;
  EXPECT_EQ(1U, help.setText(0x7000005, "cut"));
  EXPECT_EQ("cut", Shown(help.text(5)));
  EXPECT_EQ("cut", Shown(help.text(0xFF000005)));
  const int most = std::numeric_limits<int>::max();
  EXPECT_EQ(1U, help.setArgument(5, most, "LAST", ""));
  EXPECT_EQ("LAST", Shown(help.argumentName(5, most)));
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const struct {
    std::uint32_t id;
    int index;
    double low, high;
  } rows[] = {{0, 1, 0, 1}, {0x1000000, 1, 0, 1}, {5, 0, 0, 1},  {5, -1, 0, 1},
              {5, 1, 1, 0}, {5, 1, nan, 1},       {5, 1, 0, nan}};
  for (const auto& row : rows) {
    EXPECT_EQ(0U, help.setRange(row.id, row.index, row.low, row.high));
    EXPECT_EQ(RangeOf(help, row.id, row.index), "no 7.000000 8.000000");
    if (row.id == 5 && row.index == 1) continue;
    EXPECT_EQ(0U, help.setArgument(row.id, row.index, "N", "t"));
    EXPECT_EQ(0U, help.setFileName(row.id, row.index, true));
    EXPECT_EQ(0U, help.removeRange(row.id, row.index));
    EXPECT_EQ(0U, help.setValues(row.id, row.index, ListOf({"a"})));
    EXPECT_EQ("none", Shown(help.argumentName(row.id, row.index)));
    EXPECT_FALSE(help.hasValues(row.id, row.index));
    EXPECT_FALSE(help.isFileName(row.id, row.index));
  }
  EXPECT_EQ(0U, help.setText(0, "t"));
  EXPECT_EQ("none", Shown(help.text(0)));
  EXPECT_EQ("cut", Shown(help.text(5)));
}

TEST(Help, ManyEntriesAreFoundAgain) {
  YcluiHelp help;
  for (unsigned id = 1; id <= 1000; ++id) {
    for (int k = 1; k <= 3; ++k) {
      help.setArgument(id, k, (std::to_string(id) + "." + std::to_string(k)).c_str(), nullptr);
    }
  }
  for (unsigned id = 1; id <= 1000; ++id) {
    EXPECT_EQ(std::to_string(id) + ".3", Shown(help.argumentName(id, 3)));
  }
}

TEST(Help, ValuesOfAListBeginWithWhatIsTyped) {
  YcluiHelp help;
  // In Shift_JIS the second byte of the characters is the letter "A" or "a".
  const std::string upper = YCharacters::BytesFromUtf8("s\u30A2");
  const std::string lower = YCharacters::BytesFromUtf8("s\u30C1");
  help.setValues(5, 1, ListOf({"Solid", "sparse", "dashed", upper.c_str(), lower.c_str()}));
  EXPECT_TRUE(help.hasValues(5, 1));
  EXPECT_EQ(ValuesOf(help, 5, 1, nullptr), "Solid sparse dashed " + upper + " " + lower);
  EXPECT_EQ(ValuesOf(help, 5, 1, "S"), "Solid sparse " + upper + " " + lower);
  EXPECT_EQ(ValuesOf(help, 5, 1, upper.c_str()), upper);
  EXPECT_EQ(ValuesOf(help, 5, 1, "solid2"), "");
  EXPECT_EQ(ValuesOf(help, 5, 2, ""), "");
  help.setValues(5, 1, YString_Array());
  EXPECT_FALSE(help.hasValues(5, 1));
  EXPECT_EQ(ValuesOf(help, 5, 1, ""), "");
}

struct Parser final : YcluiParser {};

// A function of a host, which destroys a parser if it has one.
struct Source {
  Parser* parser = nullptr;
  std::string typed;
  int released = 0;

  static void Add(void* data, const char* typed, YString_Array& values) {
    auto& source = *static_cast<Source*>(data);
    source.typed = typed;
    delete source.parser;
    values.end() = "one";
    values.end() = "two";
    values.end() = "One";
  }
  static void Release(void* data) { ++static_cast<Source*>(data)->released; }
};

TEST(Help, AFunctionIsReleasedOnceWhenItIsReplacedOrTheParserGoes) {
  Source sources[3];
  auto* parser = new Parser;
  YcluiHelp& help = parser->help();
  help.setValues(5, 1, ListOf({"fixed"}));
  EXPECT_EQ(0U, help.setValues(5, 0, Source::Add, &sources[0], Source::Release));
  EXPECT_EQ(1U, help.setValues(5, 1, Source::Add, &sources[0], Source::Release));
  EXPECT_TRUE(help.hasValues(5, 1));
  EXPECT_EQ(ValuesOf(help, 5, 1, "o"), "one One");
  EXPECT_EQ(sources[0].typed, "o");
  help.setValues(5, 1, Source::Add, &sources[1], Source::Release);
  EXPECT_EQ(ValuesOf(help, 5, 1, nullptr), "one two One");
  EXPECT_EQ(sources[1].typed, "");
  help.setValues(5, 1, ListOf({"fixed"}));
  EXPECT_EQ(ValuesOf(help, 5, 1, ""), "fixed");
  help.setValues(5, 1, Source::Add, &sources[2], Source::Release);
  sources[2].parser = parser;
  EXPECT_EQ(sources[2].released, 0);
  EXPECT_EQ(ValuesOf(help, 5, 1, "ON"), "one One");  // destroys the parser
  for (const Source& source : sources) EXPECT_EQ(source.released, 1);
}

TEST(Help, ANullFunctionRemovesTheValues) {
  Source source;
  YcluiHelp help;
  help.setValues(5, 1, Source::Add, &source, Source::Release);
  help.setValues(5, 1, nullptr, nullptr);
  EXPECT_EQ(source.released, 1);
  EXPECT_FALSE(help.hasValues(5, 1));
  EXPECT_EQ(ValuesOf(help, 5, 1, ""), "");
}

}  // namespace
