// Compares CluiEndOf and previews with the lexer on random texts.

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

enum class End { Whole, Open, Announces };

End EndOf(CluiTextEnd::Kind kind) {
  if (kind == CluiTextEnd::Whole) return End::Whole;
  const bool isOpen = kind == CluiTextEnd::Quote || kind == CluiTextEnd::Escape;
  return isOpen ? End::Open : End::Announces;
}

End EndOf(YcluiTextEnding ending) {
  if (ending == YcluiEndsWhole || ending == YcluiEndsInToken) return End::Whole;
  const bool isOpen = ending == YcluiEndsInQuote || ending == YcluiEndsInEscape;
  return isOpen ? End::Open : End::Announces;
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
  int kinds[5] = {};
  for (int round = 0; round < 50000; ++round) {
    std::string text;
    for (int i = 2 + static_cast<int>(random() % 14); i > 0; --i) {
      text += pieces[random() % std::size(pieces)];
    }
    const CluiTextEnd::Kind kind = CluiEndOf(parser, text, {}).kind;
    parser.exhaust();
    preview.read(text.c_str());
    const Refusals refusals = RefusalsOf(lex, text);
    const bool isOpen = EndOf(kind) == End::Open;
    const bool agree = EndOf(kind) == EndOf(preview.ending());
    ASSERT_TRUE(agree || text.find('#') != std::string::npos) << text;
    ASSERT_EQ(isOpen, refusals.isUnclosed) << text;
    ++kinds[kind];
    // More text cannot continue a comment, nor a word without its argument, which is refused at
    // once.
    const std::size_t last = text.find_last_not_of(" \n");
    const bool isOver = last != std::string::npos && text[last] == ':';
    if (isOpen || isOver || text.find('#') != std::string::npos) continue;
    const bool announces = EndOf(kind) == End::Announces;
    ASSERT_EQ(announces, CanContinue(lex, text, refusals.count)) << text;
    ASSERT_TRUE(kind != CluiTextEnd::Comma || CluiMayEndInComma(text)) << text;
  }
  for (const int count : kinds) EXPECT_GT(count, 50);
}

}  // namespace
