// Texts: values, messages, escapes, and what they print.

#include <cstdio>
#include <cstring>

#include "tests/engine/engine_fixture.h"

namespace {

using TextsTest = EngineTest;

TEST_F(TextsTest, Values) {
  ExpectEach({
      {"", "+#<unspecified>"},
      {"1 2 (+ 1 2)", "+3"},
      {"(< 1 2)", "+#t"},
      {"(< 2 1)", "+#f"},
      {"(- 1 2)", "+-1"},
      {"'(a \"b\" #\\c 1.5)", "+(a \"b\" #\\c 1.5)"},
      {"(let ((l (list 1))) (set-cdr! l l) l)", "+(1 . #0#)"},
      {"(define-syntax twice (syntax-rules () ((_ x) (list x x)))) (twice 3)", "+(3 3)"},
      {"(exit)", "+"},
      {"(quit 0)", "+"},
      {"(string-length (make-string 1000000 #\\x))", "+1000000"},
      {"(define-module (scratch)) (use-modules (srfi srfi-1) (rnrs)) (fold + 0 '(1 2))", "+3"},
  });
  EXPECT_EQ(Eval("(make-string 5000 #\\x)").size(), 256U);
  EXPECT_EQ(Eval("(iota 1000000)").size(), 256U);
  EXPECT_TRUE(errors.empty());
}

// A call on constants is read and applied at once, any other expression goes to Guile's reader and
// is expanded first.
TEST_F(TextsTest, BothWaysOfACallAgree) {
  Eval(
      "(define (rest-of . all) all) (define var 1) (define-syntax mac (syntax-rules () ((_ x) "
      "'x)))");
  for (const char* call :
       {"(rest-of 1 \"a\" #\\b #t 'c '(d . e) 1/2 2.5)",
        "(rest-of)",
        "(rest-of '())",
        "(car 5)",
        "(car)",
        "(var 1)",
        "(nothing 1)",
        "(mac 1)",
        "(t-add 1 2)",
        "(t-add 1 \"a\")",
        "(t-add 1)",
        "(exit 4)",
        "(rest-of 1 . 2)",
        "(rest-of ())",
        "(rest-of 'a 'b . c)",
        "(quote 1)",
        "(string-append \"a\" 'b)",
        "(t-refuse)",
        "(values)",
        "(quote)",
        "(rest-of (quote 1 2))",
        "\n ( rest-of\t1 )\r\f",
        "(rest-of 1)2",
        "(rest-of 1) (rest-of 2)",
        "(rest-of 1;c\n)",
        "(REST-OF 1)",
        "(rest-of +7 -8 +-9 - -0 007 123456789012345678 9223372036854775808 1/2)",
        "(rest-of 1.5 -0.25 +0.1 0.3000000000000000444 -0.0)",
        "(rest-of 1e3 .5 5. 1.5e3)",
        "(rest-of \"\" \"two\nlines\" \"a\\\\b\\\"c\")",
        "(rest-of \"a\\n\")",
        "(rest-of \"a\"\"b\")",
        "(rest-of \"\x83\x5c\")",
        "(rest-of #t #f 'a-b.c!)",
        "(rest-of #true #:key 'A '5)",
        "(string-set! \"abc\" 0 #\\x)"}) {
    const std::string fast = Eval(call);
    EXPECT_EQ(fast, Eval(std::string("(begin ") + call + ")")) << call;
  }
  EXPECT_EQ(Eval("(define (vector-copy . all) 'mine) (vector-copy 1 2)"), "+mine");
  Eval("(read-hash-extend #\\t (lambda (c port) 5))");
  EXPECT_EQ(Eval("(rest-of #t #f)"), "+(5 #f)");
  Eval("(read-hash-extend #\\t #f)");
}

TEST_F(TextsTest, NothingLeavesThroughAPrimitive) {
  const std::string left = "the text tried to leave through the procedure that runs it";
  const std::string barrier = "%continuation-call: invoking continuation would cross";
  EXPECT_EQ(Eval("(call-with-prompt 'p (lambda () (t-eval \"(abort-to-prompt 'p 1)\")) "
                 "(lambda (k . x) 'escaped))"),
            "+\"-" + left + "\"");
  // Two levels down, with a winder that has its say on the way.
  EXPECT_EQ(Eval("(define out '()) (list (call-with-prompt 'p (lambda () (t-eval \"(t-eval "
                 "\\\"(dynamic-wind (lambda () 0) (lambda () (abort-to-prompt 'p)) "
                 "(lambda () (set! out 'wound)))\\\")\")) list) out)"),
            "+(\"+\\\"-" + left + "\\\"\" wound)");
  EXPECT_EQ(Eval("(define k 0) (call/cc (lambda (c) (set! k c) (t-eval \"(k 5)\")))").substr(0, 56),
            ("+\"-" + barrier).substr(0, 56));
  Eval("(t-eval \"(call/cc (lambda (c) (set! k c)))\")");
  EXPECT_EQ(Eval("(k 5)").substr(0, 50), ("-" + barrier).substr(0, 50));
  ExpectEach({
      {"(with-exception-handler (lambda (e) 'mine) (lambda () (t-eval \"(raise-exception 'q)\")))",
       "+\"-uncaught q\""},
      {"(catch #t (lambda () (t-eval \"(car 7)\")) (lambda x 'caught))",
       "+\"-car: Wrong type (expecting pair): 7\""},
      {"(list (t-eval \"(exit)\") (t-eval \"(exit 1)\"))",
       "+(\"+\" \"-the text ended by exit with 1\")"},
      // A generator that yields into its own text, and one that would yield through the primitive.
      {"(define (yield x) (abort-to-prompt 'gen x)) "
       "(call-with-prompt 'gen (lambda () (+ 1 (yield 2))) (lambda (k x) (k (* 10 x))))",
       "+21"},
      {"(call-with-prompt 'gen (lambda () (t-eval \"(+ 1 (yield 2))\")) (lambda (k x) (k x)))",
       "+\"-the text tried to leave through the procedure that runs it\""},
      {"(+ 1 2)", "+3"},
  });
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
