// Texts: values, messages, escapes, and what they print.

#include <cstdio>
#include <cstring>
#include <iterator>
#include <random>
#include <sstream>
#include <string>

#include "tests/engine/engine_fixture.h"
#include "tests/support/Rows.h"

namespace {

using TextsTest = EngineTest;

class TextsOfTable : public EngineTest, public testing::WithParamInterface<Row> {};

TEST_P(TextsOfTable, EndAsTheirRowSays) {
  std::string given;
  for (const auto& [mark, text] : GetParam().lines) {
    if (mark == '<') given = text;
    if (mark != '|') continue;
    EXPECT_EQ(Eval(given), text) << given;
  }
}

INSTANTIATE_TEST_SUITE_P(, TextsOfTable, testing::ValuesIn(RowsOf({TEXTS})), NameOfRow);

// A call on constants is read and applied at once, any other expression goes to Guile's reader and
// is expanded first.
TEST_F(TextsTest, BothWaysOfACallAgree) {
  Eval("(define (rest-of . all) all) (define var 1)");
  Eval("(define-syntax mac (syntax-rules () ((_ x) 'x)))");
  const std::string heads =
      "rest-of|car|var|nothing|mac|t-add|t-refuse|string-append|quote|REST-OF";
  const std::string rests =
      "|1|5|'()|1 \"a\" #\\b #t 'c '(d . e) 1/2 2.5|1 2|1 \"a\"|\"a\" 'b|1 . 2|()|'a 'b . c|"
      "(quote 1 2)|1) (rest-of 2|9223372036854775808 1/2|#t #f 'a-b.c!|#true #:key 'A '5";
  std::istringstream eachHead(heads);
  for (std::string head, rest; std::getline(eachHead, head, '|');) {
    std::istringstream eachRest(rests);
    while (std::getline(eachRest, rest, '|')) {
      std::string call = "(" + head + " ";
      call += rest + ")";
      EXPECT_EQ(Eval(call), Eval("(begin " + call + ")")) << call;
    }
  }
  for (const char* call : {"(values)", "(exit 4)", "(string-set! \"abc\" 0 #\\x)", "\n ( car '(1))",
                           "\n (car '(1)) "}) {
    EXPECT_EQ(Eval(call), Eval("(begin " + std::string(call) + ")")) << call;
  }
  EXPECT_EQ(Eval("(define (vector-copy . all) 'mine) (vector-copy 1 2)"), "+mine");
  Eval("(read-hash-extend #\\t (lambda (c port) 5))");
  EXPECT_EQ(Eval("(rest-of #t #f)"), "+(5 #f)");
  Eval("(read-hash-extend #\\t #f)");
}

// What a text does when the short way reads it, and as the second expression of a text, which
// leaves it to Guile: "agree", or the two results.
std::string ReadBothWays(const std::string& text) {
  Eval("(start)");
  const std::string plain = Eval(text);
  Eval("(start)");
  const std::string guile = Eval("*unspecified* " + text);
  const std::string kept = Eval("(compare)");
  return plain == guile && kept == "+same" ? "agree" : plain + " and " + guile + kept;
}

TEST_F(TextsTest, PlainCallsAreReadAsGuileReadsThem) {
  Eval("(define before 0) (define kept 0) (define (keep . all) (set! kept all))");
  Eval("(define (start) (set! before kept) (set! kept 'none))");
  Eval("(define (compare) (if (equal? before kept) 'same (list before kept)))");
  const std::string digits(400, '7');
  const std::string zeros(320, '0');
  const std::string numbers[] = {digits,
                                 digits + ".5",
                                 "0." + digits,
                                 "1." + digits,
                                 "0." + zeros + "1",
                                 "0." + zeros + "0",
                                 "1" + zeros + ".0",
                                 "17976931348623158" + std::string(292, '0') + ".5",
                                 "9007199254740993.0",
                                 "0.500000000000000166533453693773481063544750213623046875",
                                 "123456789012345678",
                                 "12345678901234567890"};
  for (const std::string& number : numbers) {
    for (const char* sign : {"", "-", "+"}) {
      EXPECT_EQ(ReadBothWays("(keep " + (sign + number) + ")"), "agree") << number;
    }
  }
  // An argument is made of the signs of one kind; the last kind is anything.
  const std::string kinds[] = {"+-..0012359e/", "ab-+.@!$%&*/<=>?^_~09", "ab\x83\x5C \\\\\"\n;'#",
                               "tfTe()", "()'\"\\#;:|,`[]{}.aA1 \v\xA0\x83\x5C"};
  const std::string opening[] = {"", "'", "\"", "#", ""};
  const std::string closing[] = {"", "", "\"", "", ""};
  const std::string blanks = "     \t\n\r\f\v;";
  std::mt19937 random(7);
  const auto some = [&random](const std::string& signs, unsigned most) {
    std::string made;
    for (unsigned n = random() % most; n > 0; --n) made += signs[random() % signs.size()];
    return made;
  };
  for (int trial = 0; trial < 6000; ++trial) {
    std::string text = some(blanks, 2) + "(" + (random() % 4 != 0 ? "keep" : some(kinds[1], 4));
    for (unsigned n = random() % 4; n > 0; --n) {
      const unsigned kind = random() % std::size(kinds);
      text += blanks[random() % blanks.size()];
      text += opening[kind] + some(kinds[kind], 6) + closing[kind];
    }
    text += some(blanks, 2) + (random() % 8 != 0 ? ")" : "") + some(blanks, 2);
    EXPECT_EQ(ReadBothWays(text), "agree") << text;
  }
}

TEST_F(TextsTest, AFailureIsToldOnceFromTheInnermostPlace) {
  Eval("(list (t-eval \"(t-eval \\\"(car 1)\\\")\") 2)");
  ASSERT_EQ(errors.size(), 1U);
  EXPECT_EQ(errors[0].text, "(car 1)");
  EXPECT_EQ(errors[0].message, "car: Wrong type (expecting pair): 1");
  EXPECT_EQ(errors[0].file, "");
  errors.clear();
  Eval("(begin (t-eval \"(car 1)\") (t-refuse))");
  ASSERT_EQ(errors.size(), 2U);
  EXPECT_EQ(errors[1].message, "t-refuse: refused its arguments");
}

TEST_F(TextsTest, TheTextListenerSeesEveryText) {
  static std::string seen;
  ScmVM::setTextListener([](void*, const char* text) { seen += std::string(text) + ";"; }, nullptr);
  Eval("(t-eval \"1\")");
  ScmVM::setTextListener(nullptr, nullptr);
  EXPECT_EQ(seen, "(t-eval \"1\");1;");
}

TEST_F(TextsTest, TheBufferIsNeverOverrun) {
  const char* const text = "(string #\\a #\\x3042 #\\z)";  // "a<82 A0>z" with its quotes
  const char* const cut[] = {"", "", "\"", "\"a", "\"a", "\"a\x82\xA0", "\"a\x82\xA0z"};
  for (long size = 0; size < 7; ++size) {
    YStatus status{0};
    char buffer[9];
    std::memset(buffer, '#', sizeof buffer);
    const long length = ScmVMExternal::ExecuteString(text, buffer, size, status);
    EXPECT_TRUE(YStatusIsGood(status));
    EXPECT_EQ(buffer[size], '#');
    if (size == 0) continue;
    EXPECT_STREQ(buffer, cut[size]) << size;
    EXPECT_EQ(length, static_cast<long>(std::strlen(cut[size])));
  }
  YStatus status{0};
  EXPECT_EQ(ScmVMExternal::ExecuteString("(car 1)", nullptr, 100, status), 0);
  EXPECT_FALSE(YStatusIsGood(status));
}

// What scripts print and what C++ prints arrives in the order in which it was written.
void SayInCpp(std::uint32_t, YStatus&) {
  std::fputs("[c++]", stdout);
}

TEST_F(TextsTest, OutputKeepsItsOrder) {
  ScmVM::bindProcedure("say", &SayInCpp, 0, 0);
  testing::internal::CaptureStdout();
  std::fputs("a", stdout);
  Eval("(display \"b\x82\xA0\") (say) (display \"c\\n\") (say)");
  std::fputs("d", stdout);
  Eval("(display \"e\") (car 1)");
  std::fputs("f", stdout);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "ab\xE3\x81\x82[c++]c\n[c++]def");
}

}  // namespace
