// What keys do to a line, and what a user sees of it.

#include "terminal/YcluiLineEditor.h"

#include <gtest/gtest.h>

#include <random>

#include "terminal/YcluiMistake.h"
#include "terminal/YcluiPainter.h"
#include "terminal/YcluiPrompt.h"
#include "tests/support/WorkingFolder.h"
#include "tests/terminal/EditorSession.h"

namespace {

struct Row {
  const char* keys;
  const char* seen;
};

template <std::size_t N>
void Check(const Row (&rows)[N], const std::string& history = "") {
  for (const Row& row : rows) {
    EditorSession session(history);
    EXPECT_EQ(session.type(row.keys), row.seen) << row.keys;
  }
}

TEST(LineEditor, Edits) {
  Check({
      {"ab cd<Left><Left><Right>x", "ab cx|d"},
      {"ab<Home>x<End>y<Home><Left>", "|xaby !"},
      {"ab cd<C-a><C-f>x<C-e><C-b>y", "axb cy|d"},
      {"abc<Home><Delete><End><C-b><C-d>", "b|"},
      {"abc<Left><BS><BS><BS>", "|c !"},
      {"ab cd<Left><C-k><Home><C-y>", "d|ab c"},
      {"ab cd<Left><C-u><C-y><C-y>", "ab cab c|d"},
      {"ab, cd<C-w><C-w>", "|"},
      {"ab, cd<M-BS><M-BS>", "|"},
      {"x.y zz<M-b><M-b><M-d>", "x.| zz"},
      {"x.y zz<WordLeft><WordLeft>!<WordRight>+", "x.!y+| zz"},
      {"ab cd<Home><M-f><C-k><M-d>", "ab| !"},
      {"abc<C-t><Left><Left><C-t>", "ca|b"},
      {"1 2 3<C-w><Left><C-w><C-y><M-y>", "1 3| "},
      {"ab<M-y>", "ab| !"},
      {"ab cd<C-_>", "ab |"},
      {"ab<C-_><C-_>", "| !"},
      {"ab<C-_><M-_><M-_>", "ab| !"},
      {"ab<C-g>", "ab| !"},
      {"ab<M-q>", "ab| !"},
      {"ab<C-l>", "ab| = Clear"},
      {"ab<C-z>", "ab| = Suspend"},
      {"ab<C-c>", "ab| = Interrupt"},
      {"ab<C-d>", "ab| !"},
      {"<C-d>", "| = Leave"},
      {"<P:go\nstop>", "go\nstop|"},
      {"<P:go\nstop><Return>", "go\nstop| = Line"},
      {"go # why?<Return>", "go # why?| = Line"},
      {"<Return>", "| = Line"},
  });
}

TEST(LineEditor, Completes) {
  Check({
      {"sto<Tab>", "stop |"},
      {"sto<Tab> x", "stop x|"},
      {"bo<Tab>", "box:|{ WIDTH: an integer from 1 to 100, in metres}"},
      {"sto x<Left><Left><Tab>", "stop |x"},
      {"g<Tab>", "go|"},
      {"g<Tab><Tab>", "go| / [go]    goes / gone"},
      {"xyz<Tab>", "xyz| !"},
      {"box: 1<Tab>", "box: 1| / WIDTH: an integer from 1 to 100, in metres !"},
      {"un<Tab><Tab>", "un| / anywhere: / [undo]  takes back / unit"},
      {"t<Tab>", "twice |"},
      {"GO<Tab>", "GO| !"},
      {"<Tab>", "| !"},
      {"<Tab><Tab>", "| / [at:] / box: / go      goes / gone / load: / paint: / stop / and 5 more"},
      {"<Tab><Tab><Tab><Tab><Return>", "go |"},
      {"<Tab><Tab><BackTab><Return>", "twice |"},
      {"<Tab><Tab><Down><Down><Up><Return>", "box:|{ WIDTH: an integer from 1 to 100, in metres}"},
      {"<Tab><Tab><Right><Left><Return>", "at:|{ argument 1: a point}"},
      {"<Tab><Tab><Escape>", "|"},
      {"<Tab><Tab>s", "s|{top}"},
      {"?", "| / at: / box: / go      goes / gone / load: / paint: / stop / and 5 more"},
      {"?s", "s|{top}"},
      {"g?", "g| / go    goes / gone"},
      {"nix?", "nix| !"},
      {"box: ?", "box: | / WIDTH: an integer from 1 to 100, in metres"},
      {"paint: ?", "paint: ?|"},
      {"paint: who?", "paint: who?|"},
      {"go # ?", "go # ?|"},
      {"${?", "${| / presenttime  width        window"},
      {"${wi<Tab><Tab><Tab><Return>", "${window}|"},
      {"box: ${wid<Tab>", "box: ${width}|"},
      {"box: ${wid}<Left><Tab>", "box: ${width}|"},
      {"paint: r<Tab>", "paint: red|"},
      {"paint: R<Tab>", "paint: red|"},
      {"paint: s<Tab>", "paint: s| !"},
      {"paint: se<Tab><Tab>", "paint: \"sea | / argument 1: a string / [sea blue]   sea green"},
      {"paint: se<Tab><Tab><Tab><Return>", "paint: \"sea green\"|"},
      {"paint: sa<Tab>", "paint: \"say \\\"x\\\"\"|"},
      {"paint: \"r<Tab>", "paint: \"red\"|"},
      {"paint: \"r\"<Left><Tab>", "paint: \"red\"|"},
      {"paint: 'r<Tab>", "paint: \"red\"|"},
  });
}

TEST(LineEditor, ListsInGroups) {
  EditorSession session;
  session.room = 20;
  EXPECT_EQ(session.type("box: 1,2 ?"),
            "box: 1,2 | / red / anywhere: / undo   takes back / unit / aliases: / big    = box: "
            "1,2 / twice  = go go");
  session.room = 3;
  EXPECT_EQ(session.type("<Tab><Tab><BackTab>"),
            "| / aliases: / big     = box: 1,2 / [twice]   = go go");
  session.room = 1;
  EXPECT_EQ(session.type("<Tab><Tab><Down>"), "| / [box:]");
}

TEST(LineEditor, TypesAQuestionMarkThatIsPartOfAWord) {
  EditorSession session;
  const auto id = session.parser.lex()->addKeyword("why?", nullptr, 0);
  session.parser.addIndefiniteNode(new YcluiSyntaxNode(id));
  EXPECT_EQ(session.type("why?"), "why?|");
  EXPECT_EQ(session.type("wh?"), "wh| / anywhere: / why?");
}

TEST(LineEditor, CompletesFileNames) {
  WorkingFolder folder;
  std::filesystem::create_directory("plans");
  WriteFile("plans/house one.cmd", "");
  WriteFile("plain", "");
  WriteFile(".hidden", "");
  Check({
      {"load: <Tab>", "load: pla|"},
      {"load: pla<Tab><Tab>", "load: pla| / argument 1: a file name / [plain]   plans/"},
      {"load: plan<Tab>", "load: plans/|{house one.cmd}"},
      {"load: plans/<Tab>", "load: \"plans/house one.cmd\"|"},
      {"load: plans/h<Right>", "load: \"plans/house one.cmd\"|"},
      {"load: .<Tab>", "load: .hidden|"},
      {"load: none<Tab>", "load: none| / argument 1: a file name !"},
  });
}

TEST(LineEditor, Hints) {
  Check(
      {
          {"s", "s|{top}"},
          {"s<Right>", "stop |"},
          {"sx<Left>", "s|x"},
          {"s<End><Left><End>", "stop |"},
          {"go", "go|{ # first}"},
          {"go<End>", "go # first|"},
          {"goz", "goz|"},
          {"box:", "box:|{ WIDTH: an integer from 1 to 100, in metres}"},
          {"box: <Right>", "box: |{WIDTH: an integer from 1 to 100, in metres} !"},
          {"box: 1,", "box: 1,|{ HEIGHT: an integer}"},
          {"box: 1, ", "box: 1, |{HEIGHT: an integer}"},
          {"wait: ", "wait: |{SECONDS: a number from 0.5}"},
          {"box: 500", "box: 500|{  out of range: 1 to 100}"},
          {"box: 50", "box: 50|"},
          {"box: 500,2 red", "box: 500,2 red| / 500 is out of range: 1 to 100"},
          {"box: 500,2 red<Return>", "box: 500,2 red| = Line"},
          {"wait: 0.1", "wait: 0.1|{  out of range: 0.5 or more}"},
          {"paint: re", "paint: re|{d}"},
          {"paint: RE<Right>", "paint: red|"},
          {"paint: \"sea b", "paint: \"sea b|{lue}"},
          {"paint: sa", "paint: sa|{y \"x\"}"},
      },
      "go # first\ngozilla\n");
}

// A host that sends each word at its end: the parser has read what is before the text.
TEST(LineEditor, EditsAWordAfterThoseThatWereSent) {
  const struct {
    const char* sent;
    bool endsInArgument;
    const char* keys;
    const char* seen;
  } rows[] = {
      {"box: ", false, "", "|{WIDTH: an integer from 1 to 100, in metres}"},
      {"box: 1", true, "", "|{HEIGHT: an integer}"},
      {"box: 1", true, ",", ",|{ HEIGHT: an integer}"},
      {"box: 1", true, ",x", ",x|"},
      {"box: 1,2 ", false, "", "|{red}"},
      {"box: 1,2 ", false, "<Right>", "red|"},
      {"box: 1,2 ", false, "r<Tab>", "red|"},
      {"box: 1,2 ", false, "r<Tab><C-_><C-_>", "|{red}"},
      {"box: 1,2 ", false, "re<Tab><Tab><Tab>", "red| / [red]"},
      {"wait: 1 ", false, "<C-_>", "| !"},
  };
  for (const auto& row : rows) {
    EditorSession session("box: 1,2 red\nbox: 1,2 nix\n");
    session.parser.interpret(row.sent);
    session.editor.beginAfter({row.sent, row.sent, row.endsInArgument});
    for (const YcluiKey& key : KeysOf(row.keys)) session.editor.handle(key);
    EXPECT_EQ(session.seen(), row.seen) << row.sent << row.keys;
    EXPECT_EQ(session.editor.picture().prompt.text(), std::string("... ") + row.sent + " ");
  }
}

TEST(LineEditor, RecallsLines) {
  Check(
      {
          {"<Up>", "stop # b|"},
          {"<Up><Up><Down>", "stop # b|"},
          {"<Up><Down>", "|"},
          {"go<Up><Up>", "go # a|"},
          {"go<Up><Up><Up>", "go # a| !"},
          {"go<Up><Down>", "go|{ne # c}"},
          {"<Down>", "| !"},
          {"<C-p><C-p><C-n>", "stop # b|"},
          {"<C-r>", "search \"\": |"},
          {"x<C-r># a", "search \"# a\": go |# a"},
          {"<C-r>go<C-r>", "search \"go\": |go # a"},
          {"<C-r>go<C-r><C-s>", "search \"go\": |gone # c"},
          {"<C-r>go<C-r><C-r>", "search \"go\": |go # a / no further line contains \"go\" !"},
          {"<C-r>goz", "search \"goz\": |gone # c / no further line contains \"goz\" !"},
          {"<C-r>goz<BS>", "search \"go\": |gone # c"},
          {"<C-r><BS>", "search \"\": | !"},
          {"x<C-r>go<C-r><BS><BS>", "search \"\": x|"},
          {"ab<Left><C-r># a<C-g>", "a|b"},
          {"ab<C-r># a<C-c>", "ab|"},
          {"ab<C-r># a<C-g><C-_>", "|"},
          {"ab<C-r># a<Escape>", "go |# a"},
          {"ab<C-r># a<Escape><C-_>", "ab|"},
          {"ab<C-r># a<End>", "go # a|"},
          {"ab<C-r># a<Return>", "go |# a = Line"},
          {"ab<C-r># a<C-k>", "go |{# a}"},
          {"go # x<Return><Up>", "go # x|"},
          {" stop # x<Return><Up>", "stop # b|"},
          {"xyz<Return><C-c><Up>", "xyz|"},
          {"half<C-c><Up>", "half|"},
          {"half<C-d><C-u>", "|"},
      },
      "go # a\ngone # c\nstop # b\n");
}

TEST(LineEditor, KeepsALineWithAMistake) {
  Check({
      {"stop nix go<Return>",
       "stop |nix go / no such word \"nix\"; expected at:, box:, go, gone, load:, / paint:, stop, "
       "wait:, undo, unit, big, twice !"},
      {"box: 1,x red<Return>",
       "box: 1,|x red / argument 2 of \"box:\": expected an integer, found \"x\" !"},
      {"box: 1,2 stop<Return>",
       "box: 1,2 |stop / \"stop\" is not allowed here; expected red, undo, unit, big, / twice !"},
      {"wait: 2 box: x<Return>",
       "wait: 2 |box: x / \"box:\" is not allowed here; expected stop, undo, unit, big, / twice !"},
      {"paint: \"red<Return>", "paint: \"red| / argument 1 of \"paint:\": unterminated string !"},
      {"go nix<Return>", "go nix| = Line"},
      {"nix go<Return>",
       "|nix go / no such word \"nix\"; expected at:, box:, go, gone, load:, / paint:, stop, "
       "wait:, undo, unit, big, twice !"},
      {"box: 1,<Return>", "box: 1,\n|{HEIGHT: an integer}"},
      {"box: 1,<Return>2 red<Return>", "box: 1,\n2 red| = Line"},
      {"box: <Return>", "box: | = Line"},
      {"at: 1,<Return>", "at: 1,\n|"},
      {"nix at: 1, <Return>",
       "|nix at: 1,  / no such word \"nix\"; expected at:, box:, go, gone, load:, / paint:, stop, "
       "wait:, undo, unit, big, twice !"},
      {"load:<Return>", "load:| = Line"},
      {"box: 1,2<Return>s", "s|"},
      {"box: 1,2<Return>re", "re|{d}"},
  });
}

TEST(LineEditor, ShowsAHalfTypedWordAsPlainText) {
  for (const std::string keys : {"gx", "g", "sto", "sto?", "g<Tab><Tab>", "un<Tab><Tab><Tab>"}) {
    EditorSession session;
    session.type(keys);
    const YcluiStyle style = session.editor.picture().line.styleAt(0);
    EXPECT_EQ(style == session.editor.colours().of(YcluiTextKind::Refused), keys == "gx") << keys;
  }
}

// --- Random keys

constexpr std::size_t Width = 20;

// What must hold of any picture.
void CheckPicture(EditorSession& session, YcluiLineEditor::Request request) {
  YcluiPicture picture = session.editor.picture();
  session.editor.addRows(picture, Width, session.room);
  const std::string& text = session.editor.text();
  ASSERT_EQ(picture.line.text(), text);
  ASSERT_TRUE(YcluiCells(text).isBetween(picture.cursor));
  ASSERT_LE(picture.rows.size(), session.room);
  for (const YcluiStyledText& row : picture.rows) {
    const YcluiCells cells{std::string_view(row.text())};
    ASSERT_LE(cells.width(), Width) << row.text();
    ASSERT_EQ(row.text().find('\n'), row.text().npos);
  }

  YcluiPreview preview(session.parser);
  preview.read(text.c_str());
  const YcluiStyledText plain = YcluiPaint(preview, text, text.npos, session.editor.colours());
  for (int i = 0; i < preview.count(); ++i) {
    const YcluiPiece& piece = preview.piece(i);
    const bool isUnfinished = piece.kind == YcluiPieceRefused &&
                              (piece.end == picture.cursor || piece.end == text.size());
    if (isUnfinished || piece.begin == piece.end) continue;
    ASSERT_EQ(picture.line.styleAt(piece.begin), plain.styleAt(piece.begin)) << text;
  }
  const bool isSent = request == YcluiLineEditor::Request::Line;
  ASSERT_FALSE(isSent && YcluiFirstMistake(preview) >= 0) << text;
}

// All of the line can be undone, and done again.
void CheckUndo(EditorSession& session) {
  const auto press = [&session](const char* key) {
    session.editor.handle(KeysOf(key)[0]);
    return !session.editor.rings();
  };
  press("<Escape>");  // ends a search or a list
  press("x");         // there is nothing to redo then
  const std::string text = session.editor.text();
  while (press("<C-_>")) {
  }
  ASSERT_EQ(session.editor.text(), "");
  while (press("<M-_>")) {
  }
  ASSERT_EQ(session.editor.text(), text);
}

YcluiKey RandomKey(std::mt19937& random) {
  static const std::vector<YcluiKey> keys = [] {
    std::vector<YcluiKey> list = KeysOf(
        "<Left><Right><Up><Down><Home><End><Delete><BS><Tab><Tab><Tab><BackTab><Return><Escape>"
        "<WordLeft><WordRight><M-b><M-f><M-d><M-y><M-_><M-BS><M-x><P:go\nstop ><P:\x95><P:\x5C>"
        "<P:box: 1,><P:paint: s><P:load: ><P:wait: 0><P:${w><P:# \x95\x5C>");
    for (char letter = 'a'; letter <= 'z'; ++letter) {
      list.push_back({YcluiKey::Control, YcluiKeyName::None, letter, ""});
    }
    list.push_back({YcluiKey::Control, YcluiKeyName::None, '_', ""});
    for (const YcluiKey& key : KeysOf("   gostpbxadlun:::123450,,,..\"'\\#${}?;-\x95\x5C\xB1")) {
      list.insert(list.end(), 3, key);
    }
    return list;
  }();
  return keys[random() % keys.size()];
}

TEST(LineEditor, SurvivesRandomKeys) {
  using Request = YcluiLineEditor::Request;
  WorkingFolder folder;
  WriteFile("a file", "");
  for (unsigned seed = 0; seed < 40; ++seed) {
    std::mt19937 random(seed);
    EditorSession session("go # a\nbox: 1,\nstop # \x95\x5C\n");
    session.room = 1 + seed % 9;
    for (int step = 0; step < 500; ++step) {
      SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(step));
      const Request request = session.editor.handle(RandomKey(random));
      CheckPicture(session, request);
      if (request == Request::None && step % 50 == 49) CheckUndo(session);
      if (HasFatalFailure()) return;
      if (request == Request::Line)
        session.parser.interpret((session.editor.text() + "\n").c_str());
      if (request == Request::Interrupt) YcluiGiveUp(session.parser);
      if (request == Request::Line || request == Request::Interrupt || request == Request::Leave) {
        session.editor.begin();
      }
    }
  }
}

}  // namespace
