// What a text would do.

#include <algorithm>
#include <random>
#include <vector>

#include "foundation/YCharacters.h"
#include "gtest/gtest.h"
#include "parser/YcluiPreview.h"
#include "tests/parser/CommandLine.h"
#include "tests/support/PreviewCheck.h"
#include "tests/support/allocations.h"
#include "tests/support/codes.h"

namespace {

constexpr const char* Words =
    "go stop box:/ii at:/p say:/s num:/f red=r al->go_stop bad->go_nope open->box:_1, ; help!";
constexpr const char* Syntax =
    "( go{now} | stop | box: ( red | stop )* ; | at: | say: | num: go | red go{a} stop )";

// "word[go]. blank..." with ".": ends a command, "?": supposed, "!code": refused.
std::string Dump(const YcluiPreview& preview, const std::string& text) {
  const char* const names[] = {"",    "comment", "word", "any",   "alias", "var", "str",
                               "flt", "int",     "pt",   "punct", "quote", "bad", "unread"};
  std::string dump;
  for (int i = 0; i < preview.count(); ++i) {
    const YcluiPiece& piece = preview.piece(i);
    if (piece.kind == YcluiPieceBlank) continue;
    if (!dump.empty()) dump += ' ';
    dump += names[piece.kind] + std::string("[") +
            text.substr(piece.begin, piece.end - piece.begin) + "]";
    if (piece.code != YErrNothing) dump += "!" + CodeText(piece.code);
    if (piece.endsCommand) dump += '.';
    if (piece.isSupposed) dump += '?';
  }
  return dump;
}

TEST(Preview, SaysWhatEachPieceMeans) {
  const std::string wide = YCharacters::BytesFromUtf8("say: \u8868 go");
  const std::string widePieces = YCharacters::BytesFromUtf8("word[say:] str[\u8868]. word[go].");
  const struct {
    const char* before;
    const char* text;
    const char* pieces;
  } cases[] = {
      {"", "", ""},
      {"", "go", "word[go]."},
      {"", " Go # to\nstop", "word[Go]. comment[# to] word[stop].?"},
      {"", "nope go", "bad[nope] word[go]."},
      {"", "red red stop", "word[red] bad[red] bad[stop]"},
      {"", "r go stop", "word[r] word[go] word[stop].?"},
      {"", "help red help", "any[help] word[red]? any[help]?"},
      {"", "box: 1 , -2 red;", "word[box:] int[1] punct[,] int[-2] word[red] word[;]."},
      {"", "box: 1,", "word[box:] int[1] punct[,]"},
      {"box: 1,", "2 ;", "int[2] word[;]."},
      {"", "box: 1 go", "word[box:] int[1] unread[go]"},
      {"", "box: 1,x go", "word[box:] int[1] punct[,] bad[x]!number unread[go]"},
      {"", "at: 3,4", "word[at:] pt[3,4]."},
      {"", "at: 3,", "word[at:] bad[3,]!point"},
      {"", "say: \"a b\" go", "word[say:] str[\"a b\"]. word[go]."},
      {"", "say: \"a b go", "word[say:] quote[\"a b go]!end-of-input"},
      {"", "say: 'a' , b,", "word[say:] str['a'] punct[,] str[b] punct[,] bad[]"},
      {"", "say: \"a ${m} b\" go", "word[say:] str[\"a ] bad[${m}]!no-variable unread[b\" go]"},
      {"", "${m}=5 box: ${m},${m} ;",
       "var[${m}=5] word[box:] var[${m}] punct[,] var[${m}] word[;]."},
      {"", "${m}=\"box:\" ${m} 1,2;",
       "var[${m}=\"box:\"] var[${m}] int[1] punct[,] int[2] word[;]."},
      {"", "num: 2.5 go", "word[num:] flt[2.5] word[go]."},
      {"", "num: x", "word[num:] bad[x]!number"},
      {"", "go\\", "bad[go\\]!end-of-input"},
      {"", "al red", "alias[al]. word[red]?"},
      {"", "bad", "bad[bad].?"},
      {"", "open 2 red", "alias[open] int[2] word[red]"},
      {"", "free: a", "bad[free:] str[a]"},
      {"", "red box: 1,2", "word[red] bad[box:] int[1] punct[,] int[2]"},
      {"", "red box: 1,", "word[red] bad[box:] int[1] punct[,]"},
      {"", wide.c_str(), widePieces.c_str()},
  };
  for (const auto& row : cases) {
    CommandLine line(Words, Syntax);
    YcluiPreview preview(line);
    line.interpret(row.before);
    const std::string before = line.traced();
    preview.read(row.text);
    EXPECT_EQ(Dump(preview, row.text), row.pieces) << row.before << "|" << row.text;
    EXPECT_EQ(line.traced(), "");
  }
}

TEST(Preview, KnowsHowATextEnds) {
  const struct {
    const char* text;
    YcluiTextEnding ending;
    bool leavesCommand;
  } cases[] = {
      {"go", YcluiEndsWhole, false},
      {"red ", YcluiEndsWhole, true},
      {"say: \"a", YcluiEndsInQuote, false},
      {"say: a\\", YcluiEndsInEscape, false},
      {"box: 1", YcluiEndsInToken, true},
      {"box: ", YcluiEndsInToken, true},
      {"say: a, # x", YcluiEndsAfterComma, false},
      {"at: 3 ,", YcluiEndsInPoint, false},
      {"at: 3 # x", YcluiEndsInPoint, false},
      {"'\\", YcluiEndsInEscape, false},
      {"at: x", YcluiEndsWhole, false},
      {"nope", YcluiEndsWhole, false},
  };
  CommandLine line(Words, Syntax);
  YcluiPreview preview(line);
  for (const auto& row : cases) {
    preview.read(row.text);
    EXPECT_EQ(preview.ending(), row.ending) << row.text;
    EXPECT_EQ(preview.leavesCommand(), row.leavesCommand) << row.text;
  }
}

// The cursor is "|". What is typed is in brackets, then come the candidates; "*" marks those that
// are accepted anywhere, "=" aliases, "$" variables.
std::string DumpTyping(YcluiPreview& preview, std::string text) {
  const std::size_t cursor = text.find('|');
  text.erase(cursor, 1);
  preview.read(text.c_str());
  const YcluiTyping typing = preview.at(static_cast<std::uint32_t>(cursor));
  std::string dump = "[" + text.substr(typing.begin, typing.end - typing.begin) + "]";
  if (typing.kind == YcluiTypingNothing) dump += " nothing";
  if (typing.kind == YcluiTypingArgument) {
    dump += std::string(" ") + typing.word + std::to_string(typing.argument) + "?sfip"[typing.type];
  }
  const int count = preview.findCandidates();
  for (int i = 0; i < count; ++i) {
    const YcluiCandidate& candidate = preview.candidate(i);
    const char* const marks[] = {"", "*", "=", "$"};
    dump += std::string(" ") + candidate.name + marks[candidate.kind];
  }
  return dump + (typing.isSupposed ? " ?" : "");
}

TEST(Preview, SaysWhatIsBeingTyped) {
  const struct {
    const char* text;
    const char* typing;
  } cases[] = {
      {"|", "[] at: box: go num: red say: stop help* al= bad= open="},
      {"s|", "[s] say: stop"},
      {"S|top go", "[Stop] say: stop"},
      {"red |", "[] go help* al= bad= open="},
      {"red g|x stop", "[gx] go"},
      {"go |", "[] at: box: go num: red say: stop help* al= bad= open= ?"},
      {"nope s|", "[s] say: stop"},
      {"# s|", "[] nothing"},
      {"box:|", "[] box:1i"},
      {"box: 1|2", "[12] box:1i"},
      {"box: 1,|", "[] box:2i"},
      {"open |", "[] box:2i"},
      {"box: 1,2|", "[2] box:2i"},
      {"box: 1,2;|", "[] at: box: go num: red say: stop help* al= bad= open="},
      {"say: \"a b|", "[\"a b] say:1s"},
      {"say: a , |", "[] say:2s"},
      {"at: 3,|", "[3,] at:1p"},
      {"at: 3 , |", "[3 , ] at:1p"},
      {"box: x y|", "[] nothing"},
      {"${p|", "[p] presenttime$"},
      {"${q}=1 say: \"a ${|}", "[] presenttime$ q$"},
      {"box: ${p|r},2", "[pr] presenttime$"},
  };
  CommandLine line(Words, Syntax);
  YcluiPreview preview(line);
  for (const auto& row : cases) EXPECT_EQ(DumpTyping(preview, row.text), row.typing) << row.text;
}

// The candidates of a place are kept until something changes them.
TEST(Preview, NoticesChangesOfTheLanguage) {
  CommandLine line("go stop red", "( go | stop )");
  YcluiPreview preview(line);
  EXPECT_EQ(DumpTyping(preview, "|"), "[] go stop");
  line.setAlias("twice", "go go");
  EXPECT_EQ(DumpTyping(preview, "|"), "[] go stop twice=");
  line.addIndefiniteNode(new YcluiSyntaxNode(line.lex()->keyword("red")->id()));
  EXPECT_EQ(DumpTyping(preview, "|"), "[] go stop red* twice=");
  line.unsetAlias("twice");
  EXPECT_EQ(DumpTyping(preview, "${p|"), "[p] presenttime$");
  EXPECT_EQ(DumpTyping(preview, "|"), "[] go stop red*");
  line.setSyntax("( red | stop )");
  EXPECT_EQ(DumpTyping(preview, "|"), "[] red stop");
}

TEST(Preview, AgreesWithInterpret) {
  for (unsigned seed = 0; seed < 400; ++seed) {
    std::mt19937 random(seed);
    std::vector<std::uint8_t> bytes(600);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
    Choices choices(bytes.data(), bytes.size());
    PreviewCheck check(choices);
    while (choices.more()) ASSERT_EQ(check.step(), "") << seed;
  }
}

TEST(Preview, ReadsWithoutAllocatingOnceWarm) {
  CommandLine line(Words, Syntax);
  YcluiPreview preview(line);
  const char* const text =
      "go box: 1,2 red stop ; al open 3 red nope say: \"a long string, really\", b";
  for (int i = 0; i < 3; ++i) preview.read(text), preview.at(20);
  const long before = Allocations();
  preview.read(text);
  preview.at(20);
  EXPECT_EQ(Allocations(), before);
  const YcluiPreviewState state = preview.state();
  for (int i = 0; i < 3; ++i) preview.read(text, state);
  const long beforeNext = Allocations();
  preview.read(text, state);
  EXPECT_EQ(Allocations(), beforeNext);
}

TEST(Preview, HasNothingToSayWithoutSyntax) {
  YcluiParser parser;
  YcluiPreview preview(parser);
  preview.read("go");
  ASSERT_EQ(preview.count(), 1);
  EXPECT_EQ(preview.piece(0).kind, YcluiPieceUnread);
  EXPECT_EQ(preview.at(2).kind, YcluiTypingNothing);
  EXPECT_EQ(preview.findCandidates(), 0);
  preview.read(nullptr);
  EXPECT_EQ(preview.count(), 0);
}

}  // namespace
