// The tokens of texts: words, arguments, literals, double-byte text.

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include "foundation/YEncoding.h"
#include "foundation/YErr.h"
#include "fuzz/lexer_reference.h"
#include "tests/support/lex_reader.h"

namespace {

// Each text is read by a new lexer. TheSameAsTheReference covers the same on random texts; these
// results were worked out by hand.
const LexCase Table[] = {
    // Words
    {"", ""},
    {" \t\n\v\f\r # only a comment", ""},
    {"now\n#comment\n now", "now now"},
    {"NOW Dele DEL de deletes", "now delete delete ?de ?deletes"},
    {"a,b \"now now\" $ $x a}[=", "?a,b ?\"now ?now\" ?$ ?$x ?a}[="},
    {"now;now ;;", "now ; now ; ;"},
    {"n\\ow a\\ b a\\;b \\#x a\\:b \\${x}", "now ?a b ?a;b ?#x ?a:b ?${x}"},
    {"now a\\", "now !end-of-input"},
    {"go Nothing", "{now ;} {}"},
    {"now${now}", "now !no-variable"},
    {"\xA0now\x85 \x80 \xFF", "?\xA0now\x85 ?\x80 ?\xFF"},  // white space in other encodings
    // Unknown words
    {"a:b c", "free:a:(sb) ?c"},
    {"a:b,,c,#\nd", "free:a:(sb,s,sc,sd)"},
    {"a:", "?a:"},
    {"a:;", "free:a:(s) ;"},
    {"a:b:c", "free:a:(sb:c)"},
    // Declared arguments
    {"line:1e3,12abc", "line:(i1000,i12) ?abc"},
    {"line: 1 , #c\n 2", "line:(i1,i2)"},
    {"line:1,2,3, 4 now", "line:(i1,i2,s3,s4) now"},
    {"line:1,2,", "?line:"},
    {"line:1,", "line:(i1)..."},
    {"name a:b;", "name(sa:b) ;"},
    {"name ;", "name(s) ;"},
    {"mix 1,,2,3,4", "mix(i1,s,p2;3,d4)"},
    {"scale 1 odd now", "scale(d1) odd(~) now"},
    {"line:3.9,-3.9", "line:(i3,i-3)"},
    {"line:-2147483648,2147483647", "line:(i-2147483648,i2147483647)"},
    {"line:2147483647.5,1", "!out-of-range"},
    {"line:1,-1e999", "!out-of-range"},
    {"line:0x10,1", "line:(i0)...|x10,1"},
    {"at 10 , 20 now", "at(p10;20) now"},
    {"at 10 20", "!point/warning"},
    {"at 10,x", "!number!point/warning"},
    {"at 3e9,1", "!out-of-range!point/warning"},
    // Quoted strings
    {"name \"it's; # \\n \\\" \\${y}\" now", "name(sit's; # n \" ${y}) now"},
    {"name ''", "name(s)"},
    {"name 'a''b'", "name(sa) ?'b'"},
    {"name 'a\\", "!end-of-input"},
    {"${s}='x y' name \"<${s}>${s}\"", "set name(s<x y>x y)"},
    {"${n}=2.50 name '${n}${n}'", "set name(s2.52.5)"},
    {"${n}=2 name '${n}", "set !end-of-input"},
    {"${n}=2 name 'a${m}' now", "set !no-variable"},
};

// A trail byte with the value of a backslash, a brace or a letter has no meaning of its own.
const LexCase InShiftJis[] = {
    {"\x83\x5C now", "?\x83\x5C now"},
    {"\x81\x7D\x81\x5B now", "?\x81\x7D\x81\x5B now"},
    {"name \"\x83\x5C\" now", "name(s\x83\x5C) now"},
    {"name \x81\x40;\\\x81;", "name(s\x81\x40) ; ?\x81 ;"},  // a backslash protects one byte
    {"name '\x81\"'", "name(s\x81\")"},                      // no trail byte: two characters
    {"now\x81", "!end-of-input"},
    {"name '\x81", "!end-of-input"},
    {"line:1\x81\x40", "line:(i1)...|\x81\x40"},
    {"NOW\x83\x41 \x83\x81:x", "?NOW\x83\x41 free:\x83\x81:(sx)"},
};

// No byte above 0x7F has a meaning, be it part of a character or not. Only ASCII letters are
// folded.
const LexCase InUtf8[] = {
    {"now\u3042 now\xE3;\xE3\x81", "?now\u3042 ?now\xE3 ; ?\xE3\x81"},
    {"name \"\u00E9\\\"\x83\\\\\" now", "name(s\u00E9\"\x83\\) now"},
    {"name '\x81' now", "name(s\x81) now"},
    {"now\x81", "?now\x81"},
    {"line:1\u3000", "line:(i1)...|\u3000"},
    {"NOW\u00C9 \u00DF:\u044F,e\u0301", "?NOW\u00C9 free:\u00DF:(s\u044F,se\u0301)"},
    {"\xF0\x9F\x98\x80\\ \xED\x95\x9C", "?\xF0\x9F\x98\x80 \xED\x95\x9C"},
};

TEST(Tokens, OfTexts) {
  for (const LexCase& row : Table) EXPECT_EQ(LexReader().read(row.text), row.shown) << row.text;
  const bool isDouble = YEncoding::IsDoubleByte();
  for (const LexCase& row : isDouble ? std::span<const LexCase>(InShiftJis) : InUtf8)
    EXPECT_EQ(LexReader().read(row.text), row.shown) << row.text;
}

// A caret below the start of each argument, and an "x" below what failed.
const LexCase Faults[] = {
    {"now nope", "    x"},
    {"now a\\", "    x"},
    {"line: 1 , y now", "      ^   x"},
    {"line:1,2,", "     ^ ^ x"},
    {"a:#c\n", "  x"},
    {"mix 1,a,2;3", "    ^ ^ x"},
    {"at 10,y", "   x"},
    {"name 'a${m}' now", "     ^ x"},
    {"name 'open", "     x"},
    {"name ${m}", "     x"},
    {"line: ${m", "      x"},
    {"line: 1,${m}[${z}[y]]", "      ^ ^         x"},
    {"${m}[4", "x"},
    {"${m}[y", "     x"},
    {"${m}= ${z}='open", "           x"},
    {"${z}[-1]=5", "x"},
};

TEST(Tokens, OffsetsOfArgumentsAndFaults) {
  for (const LexCase& row : Faults) {
    LexReader reader;
    reader.lex.setString(row.text);
    while (reader.lex.more() != 0) {
      EXPECT_EQ(reader.lex.faultOffset(), -1) << row.text;
      reader.lex.getNextToken(reader.token);
    }
    std::string marks(std::strlen(row.text) + 1, ' ');
    for (int i = 1; reader.lex.argumentOffset(i) >= 0; ++i)
      marks[reader.lex.argumentOffset(i)] = '^';
    const long fault = reader.lex.faultOffset();
    ASSERT_GE(fault, 0) << row.text;
    marks[static_cast<std::size_t>(fault)] = 'x';
    EXPECT_EQ(marks.substr(0, marks.find_last_not_of(' ') + 1), row.shown) << row.text;
    EXPECT_STREQ(reader.lex.faultText(), row.text + fault);
  }
}

TEST(Tokens, ContinueInTheNextText) {
  LexReader reader;
  EXPECT_EQ(reader.read("line:"), "line:...");
  EXPECT_EQ(reader.read("  1 # more"), "line:(i1)...");
  EXPECT_EQ(reader.read(",5"), "!number");
  EXPECT_FALSE(reader.lex.faultIsSeparated());
  EXPECT_EQ(reader.read("line: 1 2"), "line:(i1)...|2");
  EXPECT_EQ(reader.lex.argumentOffset(1), 6);
  EXPECT_EQ(reader.read("3 now"), "line:(i1,i23) now");
  EXPECT_EQ(reader.read("line: 1,"), "line:(i1)...");
  EXPECT_EQ(reader.read(" y"), "!number");
  EXPECT_TRUE(reader.lex.faultIsSeparated() && reader.lex.faultArgument() == 2);
  EXPECT_TRUE(reader.lex.argumentOffset(1) == -1 && reader.lex.argumentOffset(2) == 1);
  // When the word is deleted under construction, its arguments are read anew as strings.
  EXPECT_EQ(reader.read("line: 1"), "line:(i1)...");
  EXPECT_EQ(reader.lex.delKeyword("line:"), 1U);
  EXPECT_EQ(reader.read("2, 3 now"), "line:(s2,s3) now");
}

TEST(Tokens, SuspendedTextsAreLimited) {
  YcluiLex lex;
  int texts = 0;
  while (texts < 1000 && lex.pushString("now") != 0) ++texts;
  EXPECT_EQ(texts, YcluiMostSuspendedTexts);
  EXPECT_TRUE(YErr.code(0) == YErrTooDeep && YErr.severity(0) == YErrError);
  while (lex.popString() != 0) --texts;
  EXPECT_EQ(texts, 0);
}

TEST(Tokens, CopiesAndEchoTexts) {
  YcluiToken none;
  EXPECT_TRUE(none.argc() == 1 && none.string() == nullptr && none == YcluiIdNone);
  EXPECT_TRUE(none[0] != nullptr && none[1] == nullptr && none[-1] == nullptr);
  EXPECT_STREQ(none.wholeString(), "");

  YcluiToken word("abc");
  EXPECT_TRUE(word == none && word.type() == YcluiTokenKeyword);
  EXPECT_STREQ(word.echoString(), "abc");
  EXPECT_EQ(word.setEchoString("shown"), 1U);
  EXPECT_EQ(word.setEchoString(word.echoString() + 2), 1U);
  YcluiToken copy(word);
  EXPECT_STREQ(copy.echoString(), "own");
  EXPECT_STREQ(copy.wholeString(), "abc");
  copy = none;
  EXPECT_STREQ(copy.echoString(), "");
  EXPECT_EQ(copy.setEchoString(nullptr), 1U);
  copy = YcluiToken("moved");
  EXPECT_STREQ(copy.echoString(), "moved");
  LexReader reader;
  reader.token.setEchoString("shown");
  EXPECT_EQ(reader.read("now"), "now");
  EXPECT_STREQ(reader.token.echoString(), "now");
}

// Texts of pieces that have a meaning, and all other operations. A "~" ends a text.
TEST(Tokens, TheSameAsTheReference) {
  std::vector<std::string> pieces;
  std::istringstream all(
      " | "
      "|\n|#|$|${|}|[|]|=|\"|'|\\|,|,|:|;|.|-|0|1|2|3.9|1e3|4e9|2147483647.5|-2147483648|65536|go|"
      "GO|DEL|delete|line:|name |at 1,|mix |odd |f 1|a|B|x:|al "
      "|${a}|${A}=|${r}[|${r}[${a}]|${n}|${n}=\"7\"|${p}|${s}=|\"${s}|\x83\\|\x81|\xFF|\x83\x41");
  for (std::string piece; std::getline(all, piece, '|');) pieces.push_back(piece);
  const std::vector<std::string> names = {"delete", "DELETE", "Del", "dE", "",
                                          "a",      "B",      "x:",  "al", "r"};
  const std::string declared =
      "Kgo~~kDelete~DEL~~wline:~33~wname~1~wat~4~wodd~5~wmix~3142~wf~22~aal~go "
      "line:1~vn~3~vp~,~;;~";
  const std::string letters = "ttttttttttppgggggKkkwwaddu;vvil(()rx";
  std::mt19937 random(12);
  const auto some = [&random](const std::vector<std::string>& of, unsigned most) {
    std::string made;
    for (unsigned n = random() % most; n > 0; --n) made += of[random() % of.size()];
    return made + '~';
  };
  for (int trial = 0; trial < 20000; ++trial) {
    std::string operations = declared;
    for (int i = 0; i < 10; ++i) {
      const char letter = letters[random() % letters.size()];
      const auto isOf = [letter](const char* set) { return std::strchr(set, letter) != nullptr; };
      operations += letter;
      if (isOf("tp(;")) operations += some(pieces, 9);
      if (isOf("Kkwaduvil")) operations += names[random() % names.size()] + '~';
      if (letter == 'k') operations += names[random() % names.size()] + '~';
      if (isOf("Kk")) operations += static_cast<char>(random() % 2 * (random() % 12));
      if (letter == 'w') operations += std::to_string(random() % 10000) + '~';
      if (isOf("avil")) operations += some(pieces, 4);
      if (isOf("il")) operations += static_cast<char>(random() % 5);
    }
    ASSERT_EQ(CompareLexers(operations), "") << trial;
  }
}

}  // namespace
