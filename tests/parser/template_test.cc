// Command templates: the text of a command, filled in from its tokens.

#include "parser/YcluiCommandTemplate.h"

#include "foundation/YcluiLimits.h"
#include "gtest/gtest.h"
#include "tests/support/words.h"

namespace {

// The words line, 10 and abc, "all:" with one argument of each type, and a dummy token.
YcluiToken_Stack Tokens() {
  YcluiLex lex;
  Declare(lex, "line 10 abc all:/ifps");
  lex.setString("line 10 abc all: -1, 0.1, 10,-20, 'a\\\\\"$0'");
  YcluiToken_Stack tokens;
  for (YcluiToken token; lex.more() != 0;) {
    lex.getNextToken(token);
    tokens.push(token);
  }
  tokens.push(YcluiToken("dummy"));
  return tokens;
}

std::string Filled(const std::string& commandTemplate, const YcluiToken_Stack& tokens) {
  YString result;
  YcluiFillTemplate(commandTemplate.c_str(), 0xFFFFFFFE, 4711, tokens, result);
  return result.buffer;
}

TEST(Template, Forms) {
  const char* const cases[][2] = {
      // No forms.
      {"", ""},
      {"$x$y$", "$x$y$"},
      {"a\\$1", "a\\$1"},
      {"\\\\$1", "\\\\10"},
      {"$\\$1", "$\\10"},
      {"end\\", "end\\"},
      // Which token.
      {"(f $0 $1)", "(f line 10)"},
      {"$$", "dummy"},
      {"$-1|$-2|$-4", "all:|abc|line"},
      {"$-0|$-5|$5", "line||"},
      {"$01$2", "10abc"},
      {"$-x", "line-x"},
      {"$99999999999999999999|$-99999999999999999999|$4294967296", "||"},
      {"$c$p", "-24711"},
      {"$c#$p[0]", "-2#4711[0]"},
      // Which part.
      {"$0#$$#$4#", "500000"},
      {"$3[0] $3[1] $3[2] $3[3]", "-1 0.1 10 -20 a\\\"$0"},
      {"$3[4]|$0[0]|$3[-3]|$3[99999999999999999999]", "|||"},
      {"$3[-1]$3[-2]", "all:5003"},
      {"$3[]|$3[ +1)|$3[x|", "-1|0.1|-1|"},
      {"$3[", "-1"},
      {"$-1[0]]", "-1]"},
  };
  const YcluiToken_Stack tokens = Tokens();
  for (const auto& [given, filled] : cases) EXPECT_EQ(Filled(given, tokens), filled) << given;
  EXPECT_EQ(Filled("$0$$$-1$-0#|", YcluiToken_Stack()), "|");
}

TEST(Template, TheLengthIsLimited) {
  YcluiToken_Stack tokens;
  tokens.push(YcluiToken(std::string(YcluiLongestExpansion / 2, 'x').c_str()));
  const auto fits = [&](const std::string& commandTemplate) {
    YString result;
    const bool isFilled = YcluiFillTemplate(commandTemplate.c_str(), 0, 0, tokens, result);
    EXPECT_LT(result.length, YcluiLongestExpansion * 2);
    return isFilled;
  };
  EXPECT_TRUE(fits("$0$0"));
  EXPECT_FALSE(fits("$0$0$0") || fits("$0 $0") || fits("$0$0 ") || fits("$0$0$c"));
  const std::string literal(YcluiLongestExpansion + 1, 'x');
  EXPECT_TRUE(fits(literal));
  EXPECT_FALSE(fits(literal + "$c"));
}

}  // namespace
