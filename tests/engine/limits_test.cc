// Texts that do not end by themselves. After each of them the engine works.

#include <sys/syscall.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "tests/engine/engine_fixture.h"

namespace {

int delayedBytes = 0;  // number of single bytes after which `write` waits

}  // namespace

// Replaces the function of the C library. Waiting gives the processor to the thread that reads the
// byte.
extern "C" __attribute__((visibility("default"))) ssize_t write(int file, const void* bytes,
                                                                size_t count) {
  const ssize_t written = syscall(SYS_write, file, bytes, count);
  if (count == 1 && delayedBytes > 0) {
    --delayedBytes;
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return written;
}

namespace {

using LimitsTest = EngineTest;

// On a busy machine a request can reach the other thread before this one continues.
TEST_F(LimitsTest, EndlessRecursionOnABusyMachine) {
  delayedBytes = 100;
  Eval("(define (f n) (dynamic-wind (lambda () 0) (lambda () (f n) 1) (lambda () 0)))");
  EXPECT_EQ(Eval("(f 1)"), "-the recursion is too deep");
  EXPECT_LT(delayedBytes, 100);
  delayedBytes = 0;
}

TEST_F(LimitsTest, EndlessRecursion) {
  const std::string ending = "the recursion is too deep";
  for (const char* define : {
           "(define (f n) (+ 1 (f n)))",
           "(define (f n) (sort (list 1 2) (lambda (a b) (f n) #t)))",
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

// In another thread a text fails and has no effect, and the stack is empty.
TEST_F(LimitsTest, OneThread) {
  std::string result;
  YStatus status{1};
  ScmVMExternal::StackPushLong(7);
  std::thread([&] {
    result = Eval("(+ 1 2)");
    ScmVMExternal::StackPushLong(8);
    ScmVMExternal::VMEAssertIsALong(1, status, -1);
    ScmVMExternal::VMESetErrorBadType(YScmArgLong, status, -1);
  }).join();
  EXPECT_TRUE(result == "-" && !YStatusIsGood(status));
  status.word = 1;
  EXPECT_TRUE(ScmVMExternal::StackPopLong(status) == 7 && YStatusIsGood(status));
  EXPECT_EQ(Eval("(use-modules (ice-9 threads)) (join-thread (call-with-new-thread (lambda () "
                 "(catch #t (lambda () (t-add 1 2)) (lambda (key who text . x) text)))))"),
            "+\"runs in the engine's thread only\"");
}

}  // namespace
