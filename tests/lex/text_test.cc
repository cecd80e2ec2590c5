// The text, the cursor and the suspended texts.

#include <gtest/gtest.h>

#include <string>

#include "foundation/YErr.h"
#include "tests/support/lex_reader.h"

namespace {

TEST(Text, IsAppendedAndDropped) {
  LexReader reader;
  YcluiLex& lex = reader.lex;
  const auto next = [&] { return lex.getNextToken(reader.token); };
  lex.putString("now n");
  EXPECT_EQ(next(), 1U);
  lex.putString((std::string(5000, 'n') + " now # open ").c_str());
  EXPECT_EQ(next(), 0U);
  EXPECT_TRUE(lex.tokenOffset() == 4 && lex.cursorOffset() == 5005);
  EXPECT_EQ(next(), 1U);
  lex.putString("swallowed\nnow now");
  EXPECT_EQ(next(), 1U);
  lex.reset();
  EXPECT_EQ(next(), 0U);
  lex.putString(" now");
  EXPECT_EQ(next(), 1U);
  EXPECT_EQ(next(), 0U);
  // An exhausted text is read again from its start.
  lex.setString("# gone");
  lex.putString("\nnow");
  EXPECT_EQ(next(), 1U);
}

TEST(Text, IsSuspendedAndComesBackAsItStood) {
  LexReader reader;
  YcluiLex& lex = reader.lex;
  EXPECT_EQ(lex.popString(), 0U);
  lex.setString("now  # c\n now");
  EXPECT_EQ(lex.getNextToken(reader.token), 1U);
  EXPECT_EQ(lex.pushString("del"), 1U);
  lex.putString("ete");
  EXPECT_EQ(lex.getNextToken(reader.token), 1U);
  EXPECT_STREQ(reader.token.string(), "delete");
  EXPECT_EQ(lex.suspendedTexts(), 1);
  EXPECT_EQ(lex.popString(), 1U);
  EXPECT_EQ(lex.cursorOffset(), 3U);  // in front of what is skipped
  EXPECT_EQ(lex.getNextToken(reader.token), 1U);
  // An exhausted text, be it by a comment or by a fault, stays exhausted.
  for (const char* text : {"", "# gone", "name 'open"}) {
    lex.setString(text);
    lex.getNextToken(reader.token);
    EXPECT_EQ(lex.pushString("now"), 1U);
    EXPECT_EQ(lex.popString(), 1U);
    EXPECT_EQ(lex.more(), 0U) << text;
  }
}

TEST(Text, IsNotSuspendedWithoutBound) {
  YcluiLex lex;
  int texts = 0;
  while (texts < 1000 && lex.pushString("now") != 0) ++texts;
  EXPECT_EQ(texts, YcluiMostSuspendedTexts);
  EXPECT_TRUE(YErr.code(0) == YErrTooDeep && YErr.severity(0) == YErrError);
  while (lex.popString() != 0) --texts;
  EXPECT_EQ(texts, 0);
}

}  // namespace
