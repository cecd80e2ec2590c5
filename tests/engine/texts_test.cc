// Texts: values, messages, escapes, and what they print.

#include <cstdio>
#include <cstring>
#include <sstream>

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
  Eval("(define (rest-of . all) all) (define var 1)");
  Eval("(define-syntax mac (syntax-rules () ((_ x) 'x)))");
  const std::string heads =
      "rest-of|car|var|nothing|mac|t-add|t-refuse|string-append|quote|REST-OF";
  const std::string rests =
      "|1|5|'()|1 \"a\" #\\b #t 'c '(d . e) 1/2 2.5|1 2|1 \"a\"|\"a\" 'b|1 . 2|()|'a 'b . c|"
      "(quote 1 2)|\t1 )\r\f|1)2|1) (rest-of 2|1;c\n|+7 -8 +-9 - -0 007|123456789012345678|"
      "9223372036854775808 1/2|1.5 -0.25 +0.1 0.3000000000000000444 -0.0|1e3 .5 5. 1.5e3|"
      "\"\" \"two\nlines\" \"a\\\\b\\\"c\"|\"a\\n\"|\"a\"\"b\"|\"\x83\x5C\"|#t #f 'a-b.c!|"
      "#true #:key 'A '5";
  std::istringstream eachHead(heads);
  for (std::string head, rest; std::getline(eachHead, head, '|');) {
    std::istringstream eachRest(rests);
    while (std::getline(eachRest, rest, '|')) {
      const std::string call = "( " + head + " " + rest + ")";
      EXPECT_EQ(Eval(call), Eval("(begin " + call + ")")) << call;
    }
  }
  for (const char* call :
       {"(values)", "(exit 4)", "(string-set! \"abc\" 0 #\\x)", "\n (car '(1))"}) {
    EXPECT_EQ(Eval(call), Eval("(begin " + std::string(call) + ")")) << call;
  }
  EXPECT_EQ(Eval("(define (vector-copy . all) 'mine) (vector-copy 1 2)"), "+mine");
  Eval("(read-hash-extend #\\t (lambda (c port) 5))");
  EXPECT_EQ(Eval("(rest-of #t #f)"), "+(5 #f)");
  Eval("(read-hash-extend #\\t #f)");
}

TEST_F(TextsTest, NothingLeavesThroughAPrimitive) {
  Eval("(define out '()) (define k 0) (define (yield x) (abort-to-prompt 'p x))");
  const std::string left = "the text tried to leave through the procedure that runs it";
  const std::string barrier = "%continuation-call: invoking continuation would cross";
  const std::pair<const char*, std::string> rows[] = {
      {"(call-with-prompt 'p (lambda () (t-eval \"(yield 1)\")) (lambda (k . x) 'escaped))",
       "+\"-" + left},
      // Two levels down, with a winder that has its say on the way.
      {"(list (call-with-prompt 'p (lambda () (t-eval \"(t-eval \\\"(dynamic-wind (lambda () 0) "
       "(lambda () (yield 1)) (lambda () (set! out 'wound)))\\\")\")) list) out)",
       "+(\"+\\\"-" + left + "\\\"\" wound)"},
      {"(call/cc (lambda (c) (set! k c) (t-eval \"(k 5)\")))", "+\"-" + barrier},
      {"(t-eval \"(call/cc (lambda (c) (set! k c)))\")", "+"},
      {"(k 5)", "-" + barrier},
      {"(with-exception-handler (lambda (e) 'mine) (lambda () (t-eval \"(raise-exception 'q)\")))",
       "+\"-uncaught q\""},
      {"(catch #t (lambda () (t-eval \"(car 7)\")) (lambda x 'caught))",
       "+\"-car: Wrong type (expecting pair): 7\""},
      {"(list (t-eval \"(exit)\") (t-eval \"(exit 1)\"))",
       "+(\"+\" \"-the text ended by exit with 1\")"},
      // A generator that yields into its own text, and one that would yield through the primitive.
      {"(call-with-prompt 'p (lambda () (+ 1 (yield 2))) (lambda (k x) (k (* 10 x))))", "+21"},
      {"(call-with-prompt 'p (lambda () (t-eval \"(+ 1 (yield 2))\")) (lambda (k x) (k x)))",
       "+\"-" + left},
      {"(+ 1 2)", "+3"},
  };
  for (const auto& [text, ending] : rows) {
    EXPECT_EQ(Eval(text).substr(0, ending.size()), ending) << text;
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
