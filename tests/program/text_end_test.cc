// Compares how previews say that a text ends with the lexer, on random texts.

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "foundation/YErr.h"
#include "foundation/YErrCodes.h"
#include "parser/YcluiParser.h"
#include "parser/YcluiPreview.h"
#include "program/CluiTextEnd.h"
#include "tests/support/words.h"

namespace {

// The number of tokens that the lexer refuses, and whether the last one was not closed.
struct Refusals {
  int count = 0;
  bool isUnclosed = false;
};

Refusals RefusalsOf(YcluiLex& lex, const std::string& text) {
  Refusals refusals;
  lex.setString(text.c_str());
  for (bool goesOn = true; goesOn && lex.more() != 0;) {
    YcluiToken token;
    const std::uint64_t before = YErr.count();
    if (lex.getNextToken(token) == 0) ++refusals.count;
    if (YErr.count() > before) refusals.isUnclosed = YErr.code(0) == YErrEndOfInput;
    goesOn = token.underConstruction() == 0;
  }
  return refusals;
}

// Whether the last token is refused only because the text ends there.
bool CanContinue(YcluiLex& lex, const std::string& text, int refusals) {
  for (const char* more : {"a", "1", ",1"}) {
    if (RefusalsOf(lex, text + more).count < refusals) return true;
  }
  return false;
}

bool IsOpen(YcluiTextEnding ending) {
  return ending == YcluiEndsInQuote || ending == YcluiEndsInEscape;
}

bool Announces(YcluiTextEnding ending) {
  return ending == YcluiEndsAfterComma || ending == YcluiEndsInPoint;
}

TEST(TextEnd, AgreesWithTheLexer) {
  YcluiParser parser;
  YcluiLex& lex = *parser.lex();
  Declare(lex, "a:/s b:/ip p:/p c:/fss d e=ee ;", 1);
  parser.setSyntaxGraph(SyntaxOf(lex, "( a: | b: | p: | c: | d | e | ; )*").release());
  const char* const pieces[] = {"a:", "b:", "p:", "c:", "d",        "e",       "f", "1",
                                "2",  ",",  ",",  ",",  "\"",       "'",       " ", " ",
                                "\\", "#",  "\n", ";",  "\x83\x5C", "\x95\x5C"};
  std::mt19937 random(11);
  YcluiPreview preview(parser);
  int endings[6] = {};
  for (int round = 0; round < 50000; ++round) {
    std::string text;
    for (int i = 2 + static_cast<int>(random() % 14); i > 0; --i) {
      text += pieces[random() % std::size(pieces)];
    }
    parser.exhaust();
    preview.read(text.c_str());
    const YcluiTextEnding ending = preview.ending();
    const Refusals refusals = RefusalsOf(lex, text);
    ASSERT_EQ(IsOpen(ending), refusals.isUnclosed) << text;
    ++endings[ending];
    // More text cannot continue a comment, nor a word without its argument, which is refused at
    // once.
    const std::size_t last = text.find_last_not_of(" \n");
    const bool isOver = last != std::string::npos && text[last] == ':';
    if (IsOpen(ending) || isOver || text.find('#') != std::string::npos) continue;
    ASSERT_EQ(Announces(ending), CanContinue(lex, text, refusals.count)) << text;
    ASSERT_TRUE(ending != YcluiEndsAfterComma || CluiMayEndInComma(text)) << text;
  }
  for (const int count : endings) EXPECT_GT(count, 50);
}

}  // namespace
