// Script libraries: opening them, their primitives, and what an error of one says.

#include <dlfcn.h>

#include "tests/engine/engine_fixture.h"

namespace {

using LibraryTest = EngineTest;

TEST_F(LibraryTest, PrimitivesTakeAndGive) {
  ExpectEach({
      {"(t-add 1 2)", "+3"},
      {"(map t-add '(1 2) '(3 4))", "+(4 6)"},
      {"(t-join \"a\" \"\" \"bc\")", "+\"abc\""},
      {"(t-types 1 (expt 2 62) (expt 2 63) 1.5 #\\a \"s\" '(1) '() #f 1/2 (t-handle 0))",
       "+\"h...n.p.t.c.d..l.ls.\""},
      {"(t-pair->list '(1 . 2))", "+(1 2)"},
      {"(map t-char (list #\\a #\\xFF71 #\\x3042 #\\xF7FF))", "+(97 177 33440 255)"},
      {"(t-half 5.0)", "+2.5"},
      {"(list (t-not #f) (t-not #t))", "+(#t #f)"},
      {"(t-quiet 1 2 3)", "+#<unspecified>"},
      {"(t-several)", "+1000"},
      {"(t-one-or-two 1 2)", "+#t"},
      {"(list (- (expt 2 63)) (t-add (- (expt 2 63)) 0))",
       "+(-9223372036854775808 -9223372036854775808)"},
  });
}

TEST_F(LibraryTest, ErrorsSayWhatTheEngineKnows) {
  ExpectEach({
      {"(t-add 1 \"x\")", "-t-add: argument 2 must be an integer, not \"x\""},
      {"(t-add 'a 2)", "-t-add: argument 1 must be an integer, not a"},
      {"(t-add 1 (expt 2 63))",
       "-t-add: argument 2 must be an integer of 64 bits, not 9223372036854775808"},
      {"(t-join \"a\" 2 \"c\")", "-t-join: argument 2 must be a string, not 2"},
      {"(t-join (string #\\a #\\nul) \"\" \"\")",
       "-t-join: argument 1 must be a string without NUL characters, not \"a\\x00\""},
      {"(t-join \"\" \"\" (string #\\x1F600))",
       "-t-join: argument 3 must be a string of Shift_JIS characters, not \"?\""},
      {"(t-char #\\xA5)", "-t-char: argument 1 must be a Shift_JIS character, not #\\?"},
      {"(t-char 97)", "-t-char: argument 1 must be a character, not 97"},
      {"(t-half 5)", "-t-half: argument 1 must be a real number with a point, not 5"},
      {"(t-not '())", "-t-not: argument 1 must be #t or #f, not ()"},
      {"(t-handle-number 1)", "-t-handle-number: argument 1 must be a handle, not 1"},
      {"(t-pair->list '(a . 2))", "-t-pair->list: argument 1 must be an integer, not a"},
      {"(t-pair->list '(1 . b))", "-t-pair->list: argument 1 must be an integer, not b"},
      {"(t-pair->list '(1 2 . 3))", "-t-pair->list: argument 1 must be an integer, not (2 . 3)"},
      {"(t-pair->list 7)", "+(7 7)"},
      {"(t-element 1 'x)",
       "-t-element: argument 2 must be a token id, a string, a fragment or a priority pair, not x"},
      {"(t-add 1)", "-t-add: takes 2 arguments, 1 given"},
      {"(t-eval)", "-t-eval: takes 1 argument, 0 given"},
      {"(t-one-or-two)", "-t-one-or-two: takes at least 1 argument, 0 given"},
      {"(t-one-or-two 1 2 3)", "-t-one-or-two: takes 1 to 2 arguments, 3 given"},
      {"(t-refuse 1 2)", "-t-refuse: refused its arguments"},
      {"(t-greedy 1 2)", "-t-greedy: found too few arguments"},
      {"(t-throw)", "-t-throw: failed: no room"},
      {"(catch 'wrong-type-arg (lambda () (t-add 1 #f)) (lambda x 'caught))", "+caught"},
      {"(t-add 1 2)", "+3"},
  });
}

TEST_F(LibraryTest, Handles) {
  ExpectEach({
      {"(t-handle 0)", "+#<handle null>"},
      {"(t-handle 255)", "+#<handle 0xff>"},
      {"(map t-handle-number (list (t-handle 0) (t-handle 77)))", "+(0 77)"},
      {"(list (equal? (t-handle 5) (t-handle 5)) (equal? (t-handle 5) (t-handle 6)))", "+(#t #f)"},
  });
  Eval("(do ((i 0 (+ i 1))) ((= i 1000)) (t-handle 8)) (gc)");
  // The collector hands them over from a thread of its own.
  Eval(
      "(let loop ((n 200)) (if (and (> n 0) (< (t-finalised) 900)) "
      "(begin (gc) (usleep 5000) (t-eval \"0\") (loop (- n 1)))))");
  EXPECT_EQ(Eval("(> (t-finalised) 900)"), "+#t");
}

TEST_F(LibraryTest, BrokenLibrariesAreRefused) {
  const struct {
    const char* file;
    const char* name;
    const char* error;
  } cases[] = {
      {"/nowhere/lib.so", "lib-TEST", "/nowhere/lib.so: cannot open shared object file"},
      {HEADLESS_LIBRARY, "lib-TEST", HEADLESS_LIBRARY " has no CluiLibCleanup"},
      {OTHER_LIBRARY, "lib-TEST", OTHER_LIBRARY " is the library \"lib-OTHER\", not \"lib-TEST\""},
      {TWICE_LIBRARY, "lib-TEST",
       TWICE_LIBRARY ": row 18 of its table has a name that an earlier row has"},
  };
  for (const auto& c : cases) {
    std::string error;
    EXPECT_EQ(ScmVM::openLibrary(c.file, c.name, error), 0U);
    EXPECT_EQ(error.substr(0, std::string(c.error).size()), c.error);
  }
}

TEST_F(LibraryTest, ALibraryIsInitializedOnceAndCleanedUpOnce) {
  std::string error;
  EXPECT_EQ(ScmVM::openLibrary(SOUND_LIBRARY, "lib-TEST", error), 1U);
  void* const library = dlopen(SOUND_LIBRARY, RTLD_NOW);
  const auto initialized = reinterpret_cast<int (*)()>(dlsym(library, "TestInitialized"));
  EXPECT_EQ(initialized(), 1);
  ScmVM::closeLibraries();
  EXPECT_EQ(initialized(), 0);
}

}  // namespace
