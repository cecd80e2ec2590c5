#include "terminal/YcluiColours.h"

#include <gtest/gtest.h>

namespace {

using Kind = YcluiTextKind;

TEST(Colours, AreReadFromATextOfSettings) {
  YcluiColours colours;
  std::string error;
  EXPECT_TRUE(colours.read("", error));
  EXPECT_TRUE(
      colours.read("  word=bold,bright-blue hint=plain\thelp=dim,underline "
                   "refused=plain supposed=cyan ",
                   error));
  EXPECT_EQ(error, "");
  EXPECT_EQ(colours.of(Kind::Word), (YcluiStyle{.colour = 12, .bold = true}));
  EXPECT_EQ(colours.of(Kind::Hint), YcluiStyle{});
  EXPECT_EQ(colours.of(Kind::ListHelp), (YcluiStyle{.dim = true, .underline = true}));
  EXPECT_EQ(colours.of(Kind::Refused), (YcluiStyle{.underline = true}));
  EXPECT_EQ(colours.ofSupposed(Kind::Word), (YcluiStyle{.colour = 6, .bold = true}));
}

TEST(Colours, ReportWhatIsWrongAndStay) {
  const char* const rows[][2] = {
      {"hint=bold wrd=bold", "unknown kind of text \"wrd\"; the kinds are blank, comment, word"},
      {"hint=bold word", "expected KIND=STYLE, found \"word\""},
      {"hint=bold word=bold,reed",
       "unknown style \"reed\" in \"word=bold,reed\"; a style is plain"},
      {"word=", "unknown style \"\" in \"word=\""},
      {"word=bright-", "unknown style \"bright-\""},
      {"word=red,", "unknown style \"\""},
      {"=red", "unknown kind of text \"\""},
  };
  const YcluiStyle hint = YcluiColours().of(Kind::Hint);
  for (const auto& [settings, expected] : rows) {
    YcluiColours colours;
    std::string error;
    EXPECT_FALSE(colours.read(settings, error)) << settings;
    EXPECT_EQ(error.substr(0, std::string(expected).size()), expected);
    EXPECT_EQ(colours.of(Kind::Hint), hint) << settings;
  }
}

TEST(Colours, UnderlineWhatIsRefused) {
  EXPECT_TRUE(YcluiColours().of(Kind::Refused).underline);
}

}  // namespace
