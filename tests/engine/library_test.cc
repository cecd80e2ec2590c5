// Opening script libraries, and handles with a finaliser.

#include <dlfcn.h>

#include "tests/engine/engine_fixture.h"

namespace {

using LibraryTest = EngineTest;

TEST_F(LibraryTest, FinalisersOfCollectedHandlesRun) {
  Eval("(do ((i 0 (+ i 1))) ((= i 1000)) (t-handle 8)) (gc)");
  // The collector finds them in a thread of its own, so this waits.
  Eval(
      "(let loop ((n 200)) (if (and (> n 0) (< (t-finalised) 900)) "
      "(begin (gc) (usleep 5000) (t-eval \"0\") (loop (- n 1)))))");
  EXPECT_EQ(Eval("(> (t-finalised) 900)"), "+#t");
}

TEST_F(LibraryTest, BrokenLibrariesAreRefused) {
  const char* const cases[][2] = {
      {"/nowhere/lib.so", ": cannot open shared object file"},
      {HEADLESS_LIBRARY, " has no CluiLibCleanup"},
      {OTHER_LIBRARY, " is the library \"lib-OTHER\", not \"lib-TEST\""},
      {TWICE_LIBRARY, ": row 18 of its table has a name that an earlier row has"},
  };
  for (const auto& [file, wrong] : cases) {
    std::string error;
    EXPECT_EQ(ScmVM::openLibrary(file, "lib-TEST", error), 0U);
    EXPECT_TRUE(error.starts_with(std::string(file) + wrong)) << error;
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
