// Texts that would not end by themselves. After each the engine works on.

#include <sys/syscall.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "tests/engine/engine_fixture.h"

namespace {

int bytesToWaitAfter = 0;  // of those that are written one by one

}  // namespace

// In the place of the library's: a thread that wakes another one may lose its processor to it.
extern "C" __attribute__((visibility("default"))) ssize_t write(int file, const void* bytes,
                                                                size_t count) {
  const ssize_t written = syscall(SYS_write, file, bytes, count);
  if (count == 1 && bytesToWaitAfter > 0) {
    --bytesToWaitAfter;
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return written;
}

namespace {

using LimitsTest = EngineTest;

// A busy machine is one on which a message reaches another thread before this one goes on.
TEST_F(LimitsTest, EndlessRecursionOnABusyMachine) {
  bytesToWaitAfter = 100;
  Eval("(define (f n) (dynamic-wind (lambda () 0) (lambda () (f n) 1) (lambda () 0)))");
  EXPECT_EQ(Eval("(f 1)"), "-the recursion is too deep");
  EXPECT_LT(bytesToWaitAfter, 100);
  bytesToWaitAfter = 0;
}

TEST_F(LimitsTest, EndlessRecursion) {
  const std::string ending = "the recursion is too deep";
  for (const char* define : {
           "(define (f n) (+ 1 (f n)))",
           "(define (f n) (sort (list 1 2) (lambda (a b) (f n) #t)))",
           "(define (f n) (cons 1 (eval '(f 1) (current-module))))",
           "(define (f n) (dynamic-wind (lambda () 0) (lambda () (f n) 1) (lambda () 0)))",
           "(define (f n) (dynamic-wind list (lambda () (sort '(1 2) (lambda x (f n)))) list))",
       }) {
    Eval(define);
    EXPECT_EQ(Eval("(f 1)"), "-" + ending) << define;
    EXPECT_EQ(Eval("(t-eval \"(f 1)\")"), "+\"-" + ending + "\"") << define;
    EXPECT_EQ(Eval("(catch #t (lambda () (f 1)) (lambda x 'caught))"), "+caught") << define;
  }
  EXPECT_EQ(Eval("(let loop ((n 100000)) (if (= n 0) 0 (+ 1 (loop (- n 1)))))"), "+100000");
}

TEST_F(LimitsTest, EndlessNesting) {
  Eval("(define depth 0) (define (h) (set! depth (+ depth 1)) (t-eval \"(h)\"))");
  EXPECT_EQ(Eval("(h) (> depth 500)"), "+#t");
  ASSERT_EQ(errors.size(), 1U);
  EXPECT_EQ(errors[0].message, "the recursion is too deep");
}

TEST_F(LimitsTest, EndlessMemory) {
  Eval("(define kept '())");
  const std::string ending = "out of memory: the scripts hold more than they may";
  for (const char* text : {
           "(let loop ((l '())) (loop (cons 1 l)))",
           "(make-vector 100000000 1)",
           "(let loop ((s \"abc\")) (loop (string-append s s)))",
           "(let loop ((l '())) (loop (cons (make-vector 10000 0) l)))",
           "(catch #t (lambda () (let loop ((l '())) (loop (cons 1 l)))) (lambda x 1))",
           "(t-eval \"(make-vector 100000000 1)\") (let loop ((l '())) (loop (cons 1 l)))",
           "(let loop () (t-eval \"(set! kept (cons (make-vector 9999) kept))\") (loop))",
       }) {
    EXPECT_EQ(Eval(text), "-" + ending) << text;
    EXPECT_EQ(Eval("(set! kept '()) (t-eval \"(vector-length (make-vector 100000 1))\")"),
              "+\"+100000\"");
  }
  EXPECT_EQ(Eval("(vector-length (make-vector 1000000 1))"), "+1000000");
}

TEST_F(LimitsTest, Interrupts) {
  std::signal(SIGALRM, [](int) { ScmVM::interrupt(); });
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  Eval("(use-modules (ice-9 rdelim)) (define waiting (fdopen " + std::to_string(ends[0]) +
       " \"r\"))");
  for (const char* text : {
           "(let loop () (loop))",
           "(let loop () (catch #t (lambda () (let again () (again))) (lambda x 1)) (loop))",
           "(sleep 100)",
           "(read-line waiting)",
           "(t-eval \"(let loop () (loop))\")",
           "(let loop () (t-eval \"(t-eval \\\"(let loop () (loop))\\\")\") (loop))",
           "(let loop () (t-eval \"0\") (loop))",
           "(dynamic-wind list (lambda () (let loop () (loop))) (lambda () (t-eval \"1\")))",
       }) {
    errors.clear();
    const auto begin = std::chrono::steady_clock::now();
    ualarm(50000, 0);
    EXPECT_EQ(Eval(text), "-interrupted") << text;
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5)) << text;
    ASSERT_EQ(errors.size(), 1U) << text;
    EXPECT_TRUE(errors[0].interrupted);
    EXPECT_EQ(Eval("(t-add 1 2)"), "+3");
  }
  ScmVM::interrupt();
  EXPECT_EQ(Eval("(let loop ((n 100000)) (if (> n 0) (loop (- n 1)) n))"), "+0");
}

// Another thread gets nothing, and harms nothing.
TEST_F(LimitsTest, OneThread) {
  std::string answer;
  std::thread([&answer] { answer = Eval("(+ 1 2)"); }).join();
  EXPECT_EQ(answer, "-");
  EXPECT_EQ(Eval("(use-modules (ice-9 threads)) (join-thread (call-with-new-thread (lambda () "
                 "(catch #t (lambda () (t-add 1 2)) (lambda (key who text . x) text)))))"),
            "+\"runs in the engine's thread only\"");
}

}  // namespace
