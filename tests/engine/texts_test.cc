// Running texts: values, messages and output.

#include <cstdio>
#include <cstring>
#include <iterator>
#include <random>
#include <string>

#include "foundation/YCharacters.h"
#include "foundation/YEncoding.h"
#include "tests/engine/engine_fixture.h"
#include "tests/support/Rows.h"

namespace {

using TextsTest = EngineTest;

class TextsOfTable : public EngineTest, public testing::WithParamInterface<Row> {};

TEST_P(TextsOfTable, HaveTheExpectedResult) {
  if (IsOfOtherEncoding(GetParam(), !YEncoding::IsDoubleByte())) GTEST_SKIP();
  std::string given;
  for (const auto& [mark, text] : GetParam().lines) {
    if (mark == '<') given = text;
    if (mark != '|') continue;
    EXPECT_EQ(Eval(given), text) << given;
  }
}

INSTANTIATE_TEST_SUITE_P(, TextsOfTable, testing::ValuesIn(RowsOf({TEXTS})), NameOfRow);

// A call with constant arguments is applied without the expander; inside `begin` it is expanded.
TEST_F(TextsTest, PlainCallsHaveTheResultOfGuile) {
  Eval("(define (rest-of . all) all) (define var 1)");
  Eval("(define-syntax mac (syntax-rules () ((_ x) 'x)))");
  for (const char* call : {"(values)", "(exit 4)", "(string-set! \"abc\" 0 #\\x)", "\n ( car '(1))",
                           "\n (car '(1)) ", "(rest-of 'a 'b . c)", "(var 1)", "(nothing 1)",
                           "(mac a)", "(quote a)", "(quote 1 2)", "(t-add 1 2)", "(t-refuse 'a)"}) {
    EXPECT_EQ(Eval(call), Eval("(begin " + std::string(call) + ")")) << call;
  }
  EXPECT_EQ(Eval("(define (vector-copy . all) 'mine) (vector-copy 1 2)"), "+mine");
  Eval("(read-hash-extend #\\t (lambda (c port) 5))");
  EXPECT_EQ(Eval("(rest-of #t #f)"), "+(5 #f)");
  Eval("(read-hash-extend #\\t #f)");
  Eval("(define-syntax quote (syntax-rules () ((_ x) 7)))");
  EXPECT_EQ(Eval("(rest-of 'a)"), "+(7)");
  Eval("(module-remove! (current-module) (string->symbol \"quote\"))");
  EXPECT_EQ(Eval("(rest-of 'a)"), "+(a)");
}

// Runs a call as a plain call, and as the second expression of a text, which Guile reads. Returns
// "agree" or the two results.
std::string ReadTwice(const std::string& text) {
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
                                 "1." + digits,
                                 "0." + zeros + "1",
                                 "1" + zeros + ".0",
                                 "9007199254740993.0",
                                 "123456789012345678",
                                 "12345678901234567890"};
  for (const std::string& number : numbers) {
    for (const char* sign : {"", "-", "+"}) {
      EXPECT_EQ(ReadTwice("(keep " + (sign + number) + ")"), "agree") << number;
    }
  }
  // An argument has characters of one kind; the last kind is a mixture.
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
    EXPECT_EQ(ReadTwice(text), "agree") << text;
  }
}

TEST_F(TextsTest, AFailureIsReportedOnceByTheInnermostText) {
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

TEST_F(TextsTest, TheTextListenerReceivesEveryText) {
  static std::string seen;
  ScmVM::setTextListener([](void*, const char* text) { seen += std::string(text) + ";"; }, nullptr);
  Eval("(t-eval \"1\")");
  ScmVM::setTextListener(nullptr, nullptr);
  EXPECT_EQ(seen, "(t-eval \"1\");1;");
}

TEST_F(TextsTest, TheBufferIsNeverOverrun) {
  const char* const text = "(string #\\a #\\x3042 #\\z)";
  const std::string value = YCharacters::BytesFromUtf8("\"a\u3042z\"");
  for (long size = 0; size < 7; ++size) {
    YStatus status{0};
    char buffer[9];
    std::memset(buffer, '#', sizeof buffer);
    const long length = ScmVMExternal::ExecuteString(text, buffer, size, status);
    EXPECT_TRUE(YStatusIsGood(status));
    EXPECT_EQ(buffer[size], '#');
    if (size == 0) continue;
    const bool isCut = size > 3 && size < static_cast<long>(value.size()) - 1;
    EXPECT_EQ(buffer, value.substr(0, isCut ? 2 : static_cast<std::size_t>(size - 1))) << size;
    EXPECT_EQ(length, static_cast<long>(std::strlen(buffer)));
  }
  YStatus status{0};
  EXPECT_EQ(ScmVMExternal::ExecuteString("(car 1)", nullptr, 100, status), 0);
  EXPECT_FALSE(YStatusIsGood(status));
}

// Output of scripts and of C++ code is in the order of writing.
void SayInCpp(std::uint32_t, YStatus&) {
  std::fputs("[c++]", stdout);
}

TEST_F(TextsTest, OutputKeepsItsOrder) {
  ScmVM::bindProcedure("say", &SayInCpp, 0, 0);
  testing::internal::CaptureStdout();
  std::fputs("a", stdout);
  Eval(YCharacters::BytesFromUtf8("(display \"b\u3042\") (say) (display \"c\\n\") (say)").c_str());
  std::fputs("d", stdout);
  Eval("(display \"e\") (car 1)");
  std::fputs("f", stdout);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "ab\xE3\x81\x82[c++]c\n[c++]def");
}

}  // namespace
