// Refusals with their places, streams and files, and what the user is shown.

#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "gtest/gtest.h"
#include "parser/YcluiHelp.h"
#include "parser/YcluiParser.h"
#include "tests/language/Trace.h"
#include "tests/support/WorkingFolder.h"

namespace {

using yqrtClui::integer;
using yqrtClui::Language;
using yqrtClui::number;
using yqrtClui::point;
using yqrtClui::Refusal;
using yqrtClui::Result;
using yqrtClui::text;
using yqrtClui::word;

class Refusals : public testing::Test {
 protected:
  Refusals() {
    language_.command(word("go"), [this] { trace_("go"); });
    language_.command(word("set:", text("NAME").values({"hall", "kitchen"}),
                           integer("LEVEL").range(0, 9).help("in percent")),
                      [this](std::string_view name, int level) { trace_(name, level); });
    language_.command(word("scale:", number("FACTOR").range(0.5, 2)), [](double) {});
    language_.command(word("from:", point("A")) >> word("to:", point("B")), [](auto, auto) {});
    language_.command(word("fail:", text("WHY")), [](std::string why) { return why; });
    language_.command(word("open:", text("FILE").suggest([] {
                        return std::vector<const char*>{"a.txt", "b.txt"};
                      })).help("opens a file"),
                      [](std::string_view) {});
    language_.command(word("bad:", text("A").suggest([]() -> std::vector<std::string> {
                        throw std::runtime_error("no values");
                      })),
                      [](std::string_view) {});
    language_.parser().setAlias("both", "go nonsense go");
  }

  std::string feed(const std::string& typed) {
    const Result result = language_.feed(typed);
    std::string refusals;
    for (const Refusal& each : result.refusals) refusals += each.text() + "\n";
    return refusals + trace_.taken() + (result.isUnfinished ? " unfinished" : "");
  }

  Trace trace_;
  Language language_;
};

TEST_F(Refusals, HavePlaceAndExpectation) {
  const std::string all = "expected go, set:, scale:, from:, fail:, open: or bad:\n";
  const struct {
    std::string typed;
    std::string expected;
  } rows[] = {
      {"go nonsense go", "1:4: unknown word \"nonsense\"; " + all + "go;go;"},
      {"go\n  to:1,2\ngo", "2:3: \"to:\" is not allowed here; " + all + "go;go;"},
      {"other:1 go", "1:1: unknown word \"other:\"; " + all + "go;"},
      {"go both go", "1:4: unknown word \"nonsense\"; " + all + "go;go;go;go;"},
      {"go set:cellar,5 go",
       "1:8: argument 1 of \"set:\" (NAME): \"cellar\" is none of its values; expected hall or "
       "kitchen\ngo;go;"},
      {"set:hall,10",
       "1:10: argument 2 of \"set:\" (LEVEL): expected an integer from 0 to 9, "
       "found \"10\"\n"},
      {"set: hall, much go\ngo",
       "1:12: argument 2 of \"set:\" (LEVEL): expected an integer from 0 "
       "to 9, found \"much\"\ngo;"},
      {"set:hall,1,2", "1:12: \"set:\" has 2 arguments, found \"2\" as another\n"},
      {"set:hall,\n7", "hall7;"},
      {"scale:0.25",
       "1:7: argument 1 of \"scale:\" (FACTOR): expected a number from 0.5 to 2, "
       "found \"0.25\"\n"},
      {"from:1", "1:6: argument 1 of \"from:\" (A): expected a point, such as 12,34\n"},
      {"set:hall,99999999999",
       "1:10: argument 2 of \"set:\" (LEVEL): the number is too large for "
       "an integer\n"},
      {"fail:\"it failed\" go fail:''", "1:1: it failed\ngo;"},
      {"fail:\"open", "1:6: argument 1 of \"fail:\" (WHY): the closing quote is missing\n"},
      {std::string("go \0go\ngo", 9), "1:4: a NUL; the line is not read\ngo;"},
      {"\x88\xA0 go", "1:1: unknown word \"\x88\xA0\"; " + all + "go;"},
      {"go \x88\xA0 \xB1 x go", "1:4: unknown word \"\x88\xA0\"; " + all +
                                    "1:6: unknown word \"\xB1\"; " + all +
                                    "1:8: unknown word \"x\"; " + all + "go;go;"},
      {"", ""},
      {"# nothing", ""},
      {"from:1,2", " unfinished"},
      {"go to:3,4", "1:1: \"go\" is not allowed here; expected to:\n"},
      {"set:hall", " unfinished"},
      {"5", "hall5;"},
  };
  for (const auto& row : rows) EXPECT_EQ(row.expected, feed(row.typed)) << row.typed;
}

TEST_F(Refusals, OffsetsCountInTheWholeText) {
  const Result result = language_.feed("go\ngo nonsense\nset:x,1\n");
  ASSERT_EQ(2U, result.refusals.size());
  EXPECT_EQ(6U, result.refusals[0].offset);
  EXPECT_EQ("nonsense", result.refusals[0].found);
  EXPECT_EQ(Refusal::Kind::BadArgument, result.refusals[1].kind);
  EXPECT_EQ(19U, result.refusals[1].offset);
  EXPECT_EQ(2U, result.commands);
}

TEST_F(Refusals, AreCountedWhenTheyAreTooMany) {
  std::string typed;
  for (int i = 0; i < 150; ++i) typed += "x\n";
  int handled = 0;
  language_.onRefusal([&handled](const Refusal&) { ++handled; });
  const Result result = language_.feed(typed);
  EXPECT_EQ(150U, result.refused);
  EXPECT_EQ(100U, result.refusals.size());
  EXPECT_EQ(150, handled);
}

TEST_F(Refusals, StreamsAndFilesAreWhole) {
  std::istringstream stream("go\r\ngo x\nfrom:1,2");
  Result result = language_.feed(stream);
  EXPECT_EQ("go;go;", trace_.taken());
  ASSERT_EQ(2U, result.refusals.size());
  EXPECT_EQ("name:2:4: unknown word \"x\"", result.refusals[0].text("name").substr(0, 26));
  EXPECT_EQ("3:9: the text ends inside the command \"from:1,2\"; expected to:",
            result.refusals[1].text());
  EXPECT_TRUE(language_.feed("go").isGood());  // nothing is left of it

  const WorkingFolder folder;
  std::ofstream("a.cmd") << "go\nset:hall,3\n";
  EXPECT_TRUE(language_.feedFile("a.cmd").isGood());
  EXPECT_EQ("go;go;hall3;", trace_.taken());
  result = language_.feedFile("missing.cmd");
  EXPECT_EQ("the file \"missing.cmd\" cannot be opened", result.refusals.at(0).text());
}

TEST_F(Refusals, HelpAndValuesAreShown) {
  const struct {
    const char* typed;
    const char* expected;
  } rows[] = {
      {"go s", "scale: |set: |"},    {"from:1,2 t", "to: |"},
      {"set:", "hall|kitchen|"},     {"set:K", "kitchen|"},
      {"open:", "a.txt|b.txt|"},     {"bad:", ""},
      {"op", "open: opens a file|"}, {"from:", ""},
  };
  for (const auto& row : rows) {
    std::string shown;
    for (const auto& each : language_.complete(row.typed)) {
      const bool isWord = each.text.back() == ':';
      shown += each.text + (isWord ? " " : "") + each.help + "|";
    }
    EXPECT_EQ(row.expected, shown) << row.typed;
  }
  EXPECT_EQ("", trace_.taken());
  const std::uint32_t set = language_.parser().makeToken("set:").id();
  const YcluiHelp& help = language_.parser().help();
  double low = -1;
  double high = -1;
  EXPECT_TRUE(help.range(set, 2, low, high));
  EXPECT_EQ("LEVEL in percent 0 9", std::string(help.argumentName(set, 2)) + " " +
                                        help.argumentText(set, 2) + " " + std::to_string(int(low)) +
                                        " " + std::to_string(int(high)));
}

}  // namespace
